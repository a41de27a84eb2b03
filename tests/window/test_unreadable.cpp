// SPDX-License-Identifier: GPL-3.0-or-later
// A read that fails is never an empty window: each table in turn is made unreadable under each window.
#include "attachments/forms/frmNewWeb.h"
#include "classes/forms/frmClass.h"
#include "items/forms/frmListManager.h"
#include "items/forms/frmNewLabel.h"
#include "items/forms/frmPers.h"
#include "recordings/forms/frmRec.h"
#include "recordings/forms/frmRecCheck.h"
#include "support/BrokenTable.h"
#include "support/ItemCatalog.h"
#include "widgets/IconStore.h"
#include "window/frmItem.h"
#include "works/forms/frmCatalog.h"
#include "works/forms/frmKeys.h"
#include "works/forms/frmWork.h"
#include "works/forms/frmWorkEditor.h"

#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeView>

using namespace tessaranth;

namespace {

using Window = std::unique_ptr<QWidget>;
using Opener = std::function<Window(const FormContext& context, OpenCards& cards)>;

/// What can be read in a window: texts of labels and fields, cells of lists.
QStringList textsOf(const QWidget* window) {
    QStringList texts;
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (label->isVisibleTo(window))
            texts << label->text();
    for (const QLineEdit* edit : window->findChildren<QLineEdit*>())
        if (edit->isVisibleTo(window))
            texts << edit->text();
    for (const QTreeView* view : window->findChildren<QTreeView*>())
        for (int row = 0; view->isVisibleTo(window) && row < view->model()->rowCount(); ++row)
            for (int column = 0; column < view->model()->columnCount(); ++column)
                texts << view->model()->index(row, column).data().toString();
    return texts;
}

/// Whether a window says, in front or on one of its tabs, that something cannot be read.
bool saysSo(QWidget* window) {
    if (textsOf(window).join('|').contains("cannot be read") || window->findChild<QLabel*>("unreadable"))
        return true;
    auto* tabs = window->findChild<QTabWidget*>("tabs");
    for (int tab = 0; tabs && tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        if (textsOf(window).join('|').contains("cannot be read"))
            return true;
    }
    return false;
}

Opener card(const char* code, qint64 id, const char* panel) {
    return [=](const FormContext& context, OpenCards& cards) {
        auto window = std::make_unique<frmItem>(CardContext{context, cards, code, id});
        window->showPanel(panel);
        return window;
    };
}

Opener recordingTab(int tab) {
    return [=](const FormContext& context, OpenCards& cards) {
        auto window = std::make_unique<frmRec>(context, 1, &cards);
        window->findChild<QTabWidget*>("tabs")->setCurrentIndex(tab);
        return window;
    };
}

const std::vector<std::pair<const char*, Opener>>& windows() {
    static const std::vector<std::pair<const char*, Opener>> all{
        {"card of a composer, works", card("Cps", 1, "Comp")},
        {"card of a composer, recordings", card("Cps", 1, "Rec")},
        {"card of a performer", card("Pfr", 1, "Rec")},
        {"card of a recording", card("Rec", 1, "RecContents")},
        {"media", card("Rec", 1, "Media")},
        {"links", card("Rec", 1, "Web")},
        {"relations", card("UserDef", 1, "Rel")},
        {"documents", card("Cps", 1, "Docs")},
        {"recording, specifications", recordingTab(0)},
        {"recording, artists", recordingTab(1)},
        {"recording, works", recordingTab(2)},
        {"recording, cast", recordingTab(3)},
        {"recording, tracks", recordingTab(4)},
        {"work",
         [](const auto& context, OpenCards& cards) {
             return std::make_unique<frmWork>(CardContext{context, cards, "Comp", 1});
         }},
        {"work editor",
         [](const auto& context, OpenCards&) { return std::make_unique<frmWorkEditor>(context, 1, 1); }},
        {"composer's catalog",
         [](const auto& context, OpenCards&) { return std::make_unique<frmCatalog>(context, 1, nullptr); }},
        {"person editor",
         [](const auto& context, OpenCards&) {
             return std::make_unique<frmPers>(context, ItemKind::Composer, 1);
         }},
        {"label editor",
         [](const auto& context, OpenCards&) { return std::make_unique<frmNewLabel>(context, 1); }},
        {"link editor",
         [](const auto& context, OpenCards&) {
             return std::make_unique<frmNewWeb>(context, CardOwner{"Rec", 1}, 1);
         }},
        {"genres",
         [](const auto& context, OpenCards& cards) {
             return std::make_unique<frmListManager>(context, ItemKind::Genre, &cards);
         }},
        {"keys", [](const auto& context, OpenCards&) { return std::make_unique<frmKeys>(context); }},
        {"classifications",
         [](const auto& context, OpenCards& cards) { return std::make_unique<frmClass>(context, cards); }}};
    return all;
}

} // namespace

class TestUnreadable : public QObject {
    Q_OBJECT

private slots:
    void everyWindow_data();
    void everyWindow();
};

void TestUnreadable::everyWindow_data() {
    QTest::addColumn<int>("number");
    for (size_t i = 0; i < windows().size(); ++i)
        QTest::newRow(windows()[i].first) << int(i);
}

void TestUnreadable::everyWindow() {
    QFETCH(int, number);
    ItemCatalog catalog(true);
    const IconStore icons(catalog.file("tsrthres.dll"));
    const FormContext context(*catalog.session, icons);
    FakeCards cards;
    Connection& connection = catalog.session->connection();
    const auto open = [&] {
        Window window = windows()[size_t(number)].second(context, cards);
        window->show();
        return window;
    };
    const QStringList whole = textsOf(open().get());
    QCOMPARE(catalog.messages.told, QStringList());
    int failures = 0;
    for (const CatalogTable& table : catalogTables()) {
        const BrokenTable broken(connection, table);
        const qint64 before = connection.changesOfSession();
        catalog.messages.told.clear();
        const Window window = open();
        const QStringList shown = textsOf(window.get());
        const QByteArray seen = qPrintable(QString(table.table) + ": " + catalog.messages.told.join('|') +
                                           "\n" + shown.join('|'));
        QCOMPARE(connection.changesOfSession(), before);
        if (catalog.messages.told.isEmpty()) {
            QVERIFY2(shown == whole, seen);
            continue;
        }
        ++failures;
        // Opening is one operation, going on to a tab or panel another.
        QVERIFY2(catalog.messages.told.size() <= 2, seen);
        // What is not in front, such as another tab, says so when it comes there.
        QVERIFY2(saysSo(window.get()), seen);
        for (const QString& text : shown)
            QVERIFY2(whole.contains(text) || !(text.startsWith("No ") && text.contains(" yet.")), seen);
    }
    QVERIFY(failures > 0);
}

QTEST_MAIN(TestUnreadable)
#include "test_unreadable.moc"
