// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/ColourScheme.h"
#include "support/TestHome.h"
#include "widgets/IconStore.h"
#include "window/ColoursPage.h"
#include "window/frmSettings.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <cmath>

using namespace tessaranth;

class TestSettings : public QObject {
    Q_OBJECT

    struct Form : TestHome {
        Form() : icons(TESSARANTH_SHARE "/tsrthres.dll") {
            useTemplate();
            start();
            form = std::make_unique<frmSettings>(FormContext{*session, icons});
            form->applied = [this] { ++timesApplied; };
            form->show();
        }
        template<typename Widget>
        Widget* find(const char* name) const {
            return form->findChild<Widget*>(QLatin1String(name));
        }
        void type(const char* key, const QString& text) const { find<QLineEdit>(key)->setText(text); }
        void save() const { QTest::mouseClick(find<QPushButton>("cmdSave"), Qt::LeftButton); }
        QString read(const char* section, const char* key) const {
            return session->configuration().read(QLatin1String(section), QLatin1String(key));
        }
        IconStore icons;
        std::unique_ptr<frmSettings> form;
        int timesApplied = 0;
    };

    // Contrast of two colours, 1 to 21 (WCAG 2.1, relative luminance).
    static double contrast(const QColor& one, const QColor& other) {
        const auto luminance = [](const QColor& colour) {
            const auto linear = [](double c) {
                return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
                   0.0722 * linear(colour.blueF());
        };
        const double a = luminance(one);
        const double b = luminance(other);
        return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
    }

private slots:
    void storesWhatIsValidOnly_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("isValid");
        QTest::newRow("port") << "Port"
                              << "8080" << true;
        QTest::newRow("port 0") << "Port"
                                << "0" << false;
        QTest::newRow("port in words") << "Port"
                                       << "http" << false;
        QTest::newRow("no port") << "Port"
                                 << "" << true;
        QTest::newRow("a font size out of range") << "TextFontSize"
                                                  << "500" << false;
        QTest::newRow("longer than can be read back") << "Address" << QString(256, 'x') << false;
        QTest::newRow("no folder of pictures") << "Images"
                                               << "" << false;
        QTest::newRow("half a path") << "Images"
                                     << "pictures" << false;
        QTest::newRow("another catalog that is not there") << "Database"
                                                           << "/nowhere/Tessaranth.tsb" << false;
    }
    void storesWhatIsValidOnly() {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(bool, isValid);
        Form form;
        const QByteArray before = bytesOf(form.session->configuration().path());
        form.type(qPrintable(key), value);
        form.save();
        QCOMPARE(form.messages.told.size(), isValid ? 0 : 1);
        QCOMPARE(form.form->isVisible(), !isValid);
        QCOMPARE(form.timesApplied, isValid ? 1 : 0);
        if (!isValid) {
            QCOMPARE(bytesOf(form.session->configuration().path()), before);
            form.messages.willAnswer(Answer::No);
            form.form->reject();
        }
    }

    void movesTheFilesOfAFolder() {
        Form form;
        const QString before = form.session->dataFolder(Session::Folder::Images);
        QDir().mkpath(before);
        for (const char* name : {"1", "2"}) {
            QFile file(before + u'/' + QLatin1String(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("picture") == 7);
        }
        const QString other = form.file(QStringLiteral("elsewhere"));
        QDir().mkpath(other);
        QFile taken(other + QStringLiteral("/2"));
        QVERIFY(taken.open(QIODevice::WriteOnly));
        taken.close();
        form.type("Images", other);
        form.messages.willAnswer(Answer::Yes);
        form.save();
        QCOMPARE(form.messages.told.size(), 1); // a file of that name is there: nothing moves
        QCOMPARE(QDir(before).entryList(QDir::Files), QStringList({"1", "2"}));
        QCOMPARE(form.session->dataFolder(Session::Folder::Images), before);

        QVERIFY(taken.remove());
        form.messages.willAnswer(Answer::Yes);
        form.save();
        QCOMPARE(QDir(other).entryList(QDir::Files), QStringList({"1", "2"}));
        QCOMPARE(form.session->dataFolder(Session::Folder::Images), other);
    }

    void theLookChangesWhatIsShownAndKeepsTheColours() {
        Form form;
        Configuration& configuration = form.session->configuration();
        const QColor classic = configuration.colour("RecBC");
        form.find<QComboBox>("Look")->setCurrentIndex(int(Look::Dark));
        form.save();
        QCOMPARE(configuration.colour("RecBC"), schemeColour(Look::Dark, "RecBC"));
        QCOMPARE(configuration.classicColour("RecBC"), classic);

        configuration.setColour("RecBC", Qt::magenta);
        configuration.write("Misc", "Look", "nonsense");
        QCOMPARE(configuration.colour("RecBC"), QColor(Qt::magenta));
        frmSettings again({*form.session, form.icons});
        QTest::mouseClick(again.findChild<QPushButton*>("cmdDefault"), Qt::LeftButton);
        QTest::mouseClick(again.findChild<QPushButton*>("cmdSave"), Qt::LeftButton);
        QCOMPARE(configuration.colour("RecBC"), classic);
    }

    void everySchemeIsReadable() {
        for (const Look look : {Look::Light, Look::Dark})
            for (const char* prefix : {"Cps", "Pfr", "Rec", "Cus"})
                for (const char* text : {"FC", "LC"})
                    for (const char* back : {"BC", "HC"}) {
                        const auto colour = [&](const char* part) {
                            return schemeColour(look, QLatin1String(prefix) + QLatin1String(part));
                        };
                        QVERIFY2(contrast(colour(text), colour(back)) >= 4.5, prefix);
                    }
    }
};

QTEST_MAIN(TestSettings)
#include "test_settings.moc"
