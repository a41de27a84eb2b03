// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tour/Tour.h"
#include "support/TestHome.h"
#include "widgets/CardColours.h"
#include "widgets/IconStore.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

using namespace tessaranth;

/// Every window of the tour: can it be read, heard and worked with by keyboard?
class TestAccessibility : public QObject {
    Q_OBJECT

private slots:
    void everyWindow();

private:
    void visit(QWidget& window, const QString& name);
    void fault(const QString& name, const QWidget* widget, const QString& what);
    QSet<QString> m_faults; // once each: the frame is in many pictures
};

namespace {

/// Pieces that Qt puts into its own widgets.
bool isInner(const QWidget* widget) {
    const QWidget* parent = widget->parentWidget();
    return widget->objectName().startsWith("qt_") || qobject_cast<const QHeaderView*>(widget) ||
           qobject_cast<const QComboBox*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent) ||
           qobject_cast<const QLineEdit*>(parent) || qobject_cast<const QMdiSubWindow*>(parent) ||
           qobject_cast<const QMenuBar*>(parent) || qobject_cast<const QAbstractItemView*>(parent) ||
           (qobject_cast<const QToolButton*>(widget) && qobject_cast<const QTabBar*>(parent));
}

/// Of several cards in the frame only the one in front can be worked with.
bool isBehind(const QWidget* widget) {
    for (const QWidget* parent = widget; parent; parent = parent->parentWidget())
        if (const auto* frame = qobject_cast<const QMdiSubWindow*>(parent))
            return frame->mdiArea()->activeSubWindow() != frame;
    return false;
}

bool isControl(const QWidget* widget) {
    return widget->inherits("QAbstractButton") || widget->inherits("QLineEdit") ||
           widget->inherits("QTextEdit") || widget->inherits("QPlainTextEdit") ||
           widget->inherits("QComboBox") || widget->inherits("QAbstractItemView") ||
           widget->inherits("QAbstractSpinBox") || widget->inherits("QTabBar") || widget->inherits("QSlider");
}

QString spokenName(QWidget* widget) {
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    return spoken ? spoken->text(QAccessible::Name).trimmed() : QString();
}

/// The contrast of a widget's text with what lies behind it; large for one that shows no text of its own.
double textContrast(const QWidget* widget) {
    QPalette::ColorRole text = widget->foregroundRole();
    const QWidget* ground = widget;
    QPalette::ColorRole back = QPalette::Button;
    if (widget->inherits("QAbstractItemView") || widget->inherits("QLineEdit") ||
        widget->inherits("QTextEdit") || widget->inherits("QPlainTextEdit")) {
        text = QPalette::Text;
        back = QPalette::Base;
    } else if (qobject_cast<const QLabel*>(widget) || widget->inherits("QCheckBox") ||
               widget->inherits("QRadioButton")) {
        while (!ground->isWindow() && !ground->autoFillBackground())
            ground = ground->parentWidget();
        back = ground->backgroundRole();
    } else if (!widget->inherits("QPushButton")) {
        return 21;
    }
    return contrast(widget->palette().color(text), ground->palette().color(back));
}

/// The caption, with the mark of its mnemonic, of what has one on its own.
QString captionOf(const QWidget* widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return qobject_cast<const QToolButton*>(widget) ? QString() : button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return box->title();
    const auto* label = qobject_cast<const QLabel*>(widget);
    return label && label->buddy() ? label->text() : QString();
}

bool isClipped(const QWidget* widget) {
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool isText = label && !label->text().isEmpty() && !label->inherits("tessaranth::ElidedLabel");
    const bool isButton =
        widget->inherits("QPushButton") || widget->inherits("QCheckBox") || widget->inherits("QRadioButton");
    if (!isText && !isButton)
        return false;
    if (label && label->wordWrap())
        return label->heightForWidth(label->width()) > label->height() + 1;
    // A style would have every button as wide as "Cancel"; less is enough for "...".
    if (const auto* button = qobject_cast<const QPushButton*>(widget)) {
        const int icon = button->icon().isNull() ? 0 : button->iconSize().width() + 4;
        constexpr int frame = 6;
        return button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + icon + frame >
               button->width();
    }
    return widget->sizeHint().width() > widget->width() + 1;
}

} // namespace

void TestAccessibility::fault(const QString& name, const QWidget* widget, const QString& what) {
    const QString text =
        QString("%1 %2 of %3: %4")
            .arg(QString(widget->metaObject()->className()), widget->objectName(),
                 widget->window()->objectName().isEmpty() ? name : widget->window()->objectName(), what);
    if (!m_faults.contains(text))
        qWarning("%s: %s", qPrintable(name), qPrintable(text));
    m_faults.insert(text);
}

void TestAccessibility::visit(QWidget& window, const QString& name) {
    QHash<QString, QString> letters;
    const auto take = [&](const QWidget* widget, const QString& caption) {
        const QString letter = QKeySequence::mnemonic(caption).toString();
        if (letter.isEmpty())
            return;
        if (letters.contains(letter))
            fault(name, widget, QString("%1 of \"%2\" and of \"%3\"").arg(letter, caption, letters[letter]));
        letters.insert(letter, caption);
    };
    if (const auto* menu = qobject_cast<QMenu*>(&window))
        for (const QAction* action : menu->actions())
            take(menu, action->text());
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || isBehind(widget))
            continue;
        if (const auto* bar = qobject_cast<QMenuBar*>(widget))
            for (const QAction* action : bar->actions())
                take(bar, action->text());
        if (const auto* tabs = qobject_cast<QTabBar*>(widget))
            for (int tab = 0; tab < tabs->count(); ++tab)
                take(tabs, tabs->tabText(tab));
        if (isInner(widget))
            continue;
        take(widget, captionOf(widget));
        if (isControl(widget) && spokenName(widget).isEmpty())
            fault(name, widget, "has no name");
        constexpr double leastContrast = 4; // as the cards' colours promise
        if (widget->isEnabled() && textContrast(widget) < leastContrast)
            fault(name, widget, QString("has a contrast of %1").arg(textContrast(widget)));
        if (isClipped(widget))
            fault(name, widget, "is clipped: " + widget->property("text").toString());
    }
}

void TestAccessibility::everyWindow() {
    TestHome home;
    home.useSample();
    QVERIFY(home.start().started);
    const IconStore icons(home.file("tsrthres.dll"));
    const QStringList files = runTour({*home.session, icons}, home.file("tour"),
                                      [this](QWidget& shown, const QString& name) { visit(shown, name); });
    QVERIFY(files.size() > 400); // in three looks
    for (const QString& file : files) {
        const QImage picture(file);
        QVERIFY2(picture.width() > 60 && picture.height() > 40, qPrintable(file));
    }
    QCOMPARE(QStringList(m_faults.begin(), m_faults.end()), QStringList());
}

QTEST_MAIN(TestAccessibility)
#include "test_accessibility.moc"
