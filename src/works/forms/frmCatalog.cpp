// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/frmCatalog.h"

#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemColours.h"
#include "widgets/ItemListModel.h"
#include "widgets/WindowProgress.h"
#include "works/CWKS.h"
#include "works/forms/CatalogTree.h"
#include "works/forms/frmAssign.h"
#include "works/forms/frmWorkEditor.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QSet>
#include <QSplitter>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmCatalog::frmCatalog(const FormContext& context, qint64 composer, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_composer(composer), m_cards(cards),
      m_catalog(context.session, composer), m_file(context.session, composer, cards),
      m_commands(this, context.icons) {
    setObjectName(QStringLiteral("frmCatalog"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(tr("Composer's catalog: %1").arg(m_catalog.composerName()));
    buildUi();
    buildCommands();
    refresh();
    m_works->sortByColumn(1, Qt::AscendingOrder); // by number, as catalogues are read
    m_tree->setFocus();
}

void frmCatalog::buildUi() {
    auto* layout = new QVBoxLayout(this);
    m_menus = new QMenuBar(this);
    layout->setMenuBar(m_menus);
    layout->addWidget(FormHelpers::head(m_context.icons, QStringLiteral("Catalog"), m_catalog.composerName(),
                                        tr("Drag works onto a genre or a main work to put them there.")));
    m_bar = new QToolBar;
    m_bar->setIconSize(QSize(18, 18));
    m_bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_bar->setAccessibleName(tr("Commands of the catalog"));
    layout->addWidget(m_bar);

    auto* splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    m_tree = new CatalogTree(m_context.icons);
    m_tree->setObjectName(QStringLiteral("tvCatalog"));
    m_tree->setAccessibleName(tr("Genres and main works"));
    splitter->addWidget(m_tree);
    splitter->addWidget(buildWorks());
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({280, 620});
    FormHelpers::keepSplitter(splitter, m_context.session.arrangements(), QStringLiteral("frmCatalog"));
    layout->addWidget(splitter, 1);
    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("count"));
    layout->addWidget(m_count);
    resize(940, 600);

    connect(m_tree, &CatalogTree::placeChanged, this, &frmCatalog::fillWorks);
    connect(m_tree, &CatalogTree::itemSelectionChanged, this, &frmCatalog::enable);
    connect(
        m_tree, &CatalogTree::worksDropped, this,
        [this](int branch, qint64 node, const QList<qint64>& works) { drop(Branch(branch), node, works); },
        Qt::QueuedConnection);
}

QWidget* frmCatalog::buildWorks() {
    m_model = new ItemListModel(m_context.icons, this);
    m_works = FormHelpers::itemView(this, QStringLiteral("lvWorks"), m_model, true);
    m_works->setAccessibleName(tr("Works"));
    m_works->setDragEnabled(true);
    m_works->setDragDropMode(QAbstractItemView::DragOnly);
    paintInItemColours(m_works, m_context.session.configuration(), QStringLiteral("Wkc"));
    connect(m_works->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmCatalog::enable);
    connect(m_works, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { editWork(m_model->id(index)); });
    return m_works;
}

// ---- commands

void frmCatalog::add(Entry entry) {
    if (entry.key.isEmpty()) {
        entry.menu->addSeparator();
        return;
    }
    // The tree and the list rename what is chosen in them by the same key.
    const bool isOfPart = entry.shortcut == QLatin1String("F2");
    QAction* action = m_commands.add({entry.key, entry.text, entry.tip, entry.iconKey, entry.shortcut,
                                      std::move(entry.run), std::move(entry.possible), !isOfPart});
    if (isOfPart)
        (entry.menu == m_workMenu ? static_cast<QWidget*>(m_works) : m_tree)->addAction(action);
    entry.menu->addAction(action);
    if (!entry.toolBarText.isEmpty()) {
        action->setIconText(entry.toolBarText);
        m_bar->addAction(action);
    }
}

void frmCatalog::buildCommands() {
    m_fileMenu = m_menus->addMenu(tr("&Catalog"));
    m_branchMenus[CatalogBranch::Genres] = m_menus->addMenu(tr("&Genres"));
    m_branchMenus[CatalogBranch::MainWorks] = m_menus->addMenu(tr("&Main works"));
    m_workMenu = m_menus->addMenu(tr("&Works"));
    for (const CatalogBranch& branch : catalogBranches())
        buildBranchCommands(branch);
    buildWorkCommands();
    buildFileCommands();
    addContextMenus();
}

// The short cuts of both branches are the same: only one branch is chosen at a time, and the commands of the
// other are disabled then.
void frmCatalog::buildBranchCommands(const CatalogBranch& branch) {
    struct Words {
        const char* prefix;
        QString add, addShort, rename, remove, shortcut;
    };
    const Words words[] = {{"mnuGenre", tr("&Add genre..."), tr("Add genre"), tr("&Rename genre..."),
                            tr("R&emove genre(s)..."), QStringLiteral("Ctrl+G")},
                           {"mnuMainWork", tr("&Add main work..."), tr("Add main work"),
                            tr("&Rename main work..."), tr("R&emove main work(s)..."),
                            QStringLiteral("Ctrl+M")}};
    const Words& own = words[branch.number];
    const QString prefix = QLatin1String(own.prefix);
    QMenu* menu = m_branchMenus[branch.number];
    const Branch number = branch.number;
    const auto chosen = [this, number] { return m_tree->selectedNodes(number); };
    add({prefix + QStringLiteral("Add"),
         menu,
         QStringLiteral("New"),
         own.add,
         branch.addPrompt,
         own.shortcut,
         [this, number] {
             if (const qint64 node = m_catalog.add(number)) {
                 m_tree->fill(m_catalog);
                 m_tree->setPlace({number, node});
             }
         },
         {},
         own.addShort});
    add({prefix + QStringLiteral("Rename"),
         menu,
         QStringLiteral("Edit"),
         own.rename,
         branch.renamePrompt,
         QStringLiteral("F2"),
         [this, number, chosen] {
             if (m_catalog.rename(number, chosen().front()))
                 refresh();
         },
         [this, number, chosen] { return m_tree->place().branch == number && chosen().size() == 1; },
         {}});
    add({prefix + QStringLiteral("Remove"),
         menu,
         QStringLiteral("Delete"),
         own.remove,
         branch.removeTitle,
         QStringLiteral("Shift+Del"),
         [this, number, chosen] {
             if (m_catalog.remove(number, chosen()))
                 refresh();
         },
         [this, number, chosen] { return m_tree->place().branch == number && !chosen().empty(); },
         {}});
}

void frmCatalog::buildWorkCommands() {
    const auto some = [this] { return !selectedWorks().empty(); };
    add({QStringLiteral("mnuWorkNew"),
         m_workMenu,
         QStringLiteral("Comp"),
         tr("&New work..."),
         tr("Add new work to current composer"),
         QStringLiteral("Ctrl+N"),
         [this] { editWork(0); },
         {},
         tr("New work")});
    add({QStringLiteral("mnuWorkEdit"),
         m_workMenu,
         QStringLiteral("Edit"),
         tr("&Edit work..."),
         tr("Edit selected work"),
         QStringLiteral("F2"),
         [this] { editWork(selectedWorks().front()); },
         [this] { return selectedWorks().size() == 1; },
         {}});
    add({{}, m_workMenu, {}, {}, {}, {}, {}, {}, {}});
    const std::pair<const char*, QString> assignments[] = {
        {"mnuAssignGenre", QStringLiteral("Ctrl+Shift+G")},
        {"mnuAssignMainWork", QStringLiteral("Ctrl+Shift+M")}};
    for (const CatalogBranch& branch : catalogBranches()) {
        const auto& [key, shortcut] = assignments[branch.number];
        add({QLatin1String(key), m_workMenu, QStringLiteral("Class"),
             branch.assignPrompt + QStringLiteral("..."), branch.assignPrompt, shortcut,
             [this, &branch] { assign(branch); }, some,
             branch.number == CatalogBranch::Genres ? tr("Assign genre") : tr("Assign main work")});
    }
    add({QStringLiteral("mnuUnassign"),
         m_workMenu,
         {},
         tr("&Unassign selected work(s)..."),
         tr("Take the selected work(s) out of the chosen genre or main work"),
         QStringLiteral("Ctrl+U"),
         [this] {
             if (m_catalog.unassign(m_tree->place().branch, selectedWorks()))
                 fillWorks();
         },
         [this, some] { return some() && m_tree->place().node != std::optional<qint64>(0); },
         {}});
    add({{}, m_workMenu, {}, {}, {}, {}, {}, {}, {}});
    add({QStringLiteral("mnuWorkDelete"),
         m_workMenu,
         QStringLiteral("Delete"),
         tr("&Delete work(s)..."),
         tr("Delete the selected work(s)"),
         QStringLiteral("Ctrl+Del"),
         [this] { deleteWorks(); },
         some,
         {}});
}

void frmCatalog::buildFileCommands() {
    add({QStringLiteral("mnuCatalogImport"),
         m_fileMenu,
         QStringLiteral("Catalog"),
         tr("&Import..."),
         QStringLiteral("Import the catalog from a .tcat file"),
         QStringLiteral("Ctrl+I"),
         [this] { importFile(); },
         {},
         tr("Import")});
    add({QStringLiteral("mnuCatalogExport"),
         m_fileMenu,
         {},
         tr("&Export..."),
         QStringLiteral("Export the catalog to a .tcat file"),
         QStringLiteral("Ctrl+E"),
         [this] { exportFile(); },
         {},
         tr("Export")});
    add({QStringLiteral("mnuCatalogRemove"),
         m_fileMenu,
         QStringLiteral("Delete"),
         tr("&Remove imported catalog..."),
         QStringLiteral("Remove imported catalog"),
         {},
         [this] { removeImported(); },
         [this] { return m_catalog.hasImportedCatalog(); },
         {}});
    add({{}, m_fileMenu, {}, {}, {}, {}, {}, {}, {}});
    add({QStringLiteral("mnuCatalogRefresh"),
         m_fileMenu,
         QStringLiteral("Refresh"),
         tr("Re&fresh"),
         tr("Read the catalog again"),
         QStringLiteral("F5"),
         [this] { refresh(); },
         {},
         {}});
    add({QStringLiteral("mnuCatalogClose"),
         m_fileMenu,
         {},
         tr("&Close"),
         tr("Close the window"),
         QStringLiteral("Ctrl+W"),
         [this] { close(); },
         {},
         {}});
}

void frmCatalog::addContextMenus() {
    for (QWidget* view : {static_cast<QWidget*>(m_tree), static_cast<QWidget*>(m_works)})
        view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        m_branchMenus[m_tree->place().branch]->popup(m_tree->viewport()->mapToGlobal(at));
    });
    connect(m_works, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { m_workMenu->popup(m_works->viewport()->mapToGlobal(at)); });
}

void frmCatalog::enable() { m_commands.enable(); }

// ---- lists

void frmCatalog::refresh() { m_tree->fill(m_catalog); }

void frmCatalog::fillWorks() {
    const CatalogTree::Place place = m_tree->place();
    ItemList list;
    if (!m_catalog.works(place.branch, place.node, list))
        return;
    const std::vector<qint64> before = selectedWorks();
    m_model->setList(std::move(list));
    const QHeaderView* header = m_works->header();
    if (header->sortIndicatorSection() >= 0)
        m_model->sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    selectWorks(before);
    FormHelpers::fitColumns(m_works);
    m_works->setColumnWidth(0, qBound(200, m_works->columnWidth(0), 320)); // so that the number is in sight
    m_count->setText(m_model->rowCount() == 0 ? tr("There are no works here.")
                                              : tr("Works: %1").arg(m_model->rowCount()));
    enable();
}

// Works stay selected where they are still shown: those just put under a genre go on to their main work.
void frmCatalog::selectWorks(const std::vector<qint64>& ids) {
    const QSet<qint64> wanted(ids.begin(), ids.end());
    QItemSelection rows;
    for (int row = 0; row < m_model->rowCount() && !wanted.isEmpty(); ++row)
        if (const QModelIndex index = m_model->index(row, 0); wanted.contains(m_model->id(index)))
            rows.select(index, index);
    m_works->selectionModel()->select(rows, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

std::vector<qint64> frmCatalog::selectedWorks() const { return FormHelpers::selectedIds(m_works, m_model); }

// ---- works

void frmCatalog::assign(const CatalogBranch& branch) {
    frmAssign form(m_catalog, branch, m_context.icons, this);
    if (form.exec() == QDialog::Accepted && form.node() != 0 &&
        m_catalog.assign(branch.number, form.node(), selectedWorks()))
        fillWorks();
}

void frmCatalog::drop(Branch branch, qint64 node, const QList<qint64>& dropped) {
    const std::vector<qint64> works(dropped.begin(), dropped.end());
    if (node == 0 ? m_catalog.unassign(branch, works) : m_catalog.assign(branch, node, works))
        fillWorks();
}

// The editor can add genres and main works, so the tree is read again too.
void frmCatalog::editWork(qint64 work) {
    frmWorkEditor editor(m_context, m_composer, work, this);
    if (editor.exec() == QDialog::Accepted)
        refresh();
}

void frmCatalog::deleteWorks() {
    const std::vector<qint64> works = selectedWorks();
    CWKS manager(m_context.session);
    manager.setOpenCards(m_cards);
    if (works.size() == 1 ? manager.EliminaWork(works.front()) : manager.EliminaWorkBatch(works))
        fillWorks();
}

// ---- files

void frmCatalog::exportFile() {
    if (!m_file.isClassified())
        return;
    const QString path = m_file.chooseExportPath();
    if (!path.isEmpty())
        m_file.exportTo(path);
}

void frmCatalog::importFile() {
    const QString path = m_file.chooseImportPath();
    if (path.isEmpty())
        return;
    WindowProgress progress(this);
    if (m_file.importFrom(path, progress))
        refresh();
}

void frmCatalog::removeImported() {
    if (!m_file.confirmRemoval())
        return;
    WindowProgress progress(this, false);
    if (m_file.removeImported(progress))
        refresh();
}

} // namespace tessaranth
