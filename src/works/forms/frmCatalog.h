// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ActionTable.h"
#include "widgets/FormContext.h"
#include "works/CatalogFile.h"
#include "works/ComposerCatalog.h"

#include <QDialog>
#include <functional>

class QAction;
class QLabel;
class QMenu;
class QMenuBar;
class QToolBar;
class QTreeView;

namespace tessaranth {

class CatalogTree;
class ItemListModel;
class OpenCards;

/// A composer's catalog: genres and main works at the left, the works of the chosen one at the right. Works
/// are put elsewhere by dragging them onto the tree or by the Assign commands.
class frmCatalog final : public QDialog {
    Q_OBJECT

public:
    /// `cards`: the windows to be closed with works that are deleted; may be null.
    frmCatalog(const FormContext& context, qint64 composer, OpenCards* cards, QWidget* parent = nullptr);

private:
    using Branch = CatalogBranch::Number;
    /// One command of the window; menus, tool bar, context menus and short cuts are made from the table.
    struct Entry {
        QString key; ///< the action's objectName; empty for a separator
        QMenu* menu;
        QString iconKey;
        QString text;
        QString tip;
        QString shortcut;
        std::function<void()> run;
        std::function<bool()> possible; ///< empty: always
        QString toolBarText;            ///< empty: not on the tool bar
    };

    void buildUi();
    QWidget* buildWorks();
    void buildCommands();
    void buildBranchCommands(const CatalogBranch& branch);
    void buildWorkCommands();
    void buildFileCommands();
    void add(Entry entry);
    void addContextMenus();
    void enable();
    void refresh();
    void fillWorks();
    std::vector<qint64> selectedWorks() const;
    void selectWorks(const std::vector<qint64>& ids);

    void assign(const CatalogBranch& branch);
    void drop(Branch branch, qint64 node, const QList<qint64>& works);
    void editWork(qint64 work);
    void deleteWorks();
    void exportFile();
    void importFile();
    void removeImported();

    FormContext m_context;
    qint64 m_composer;
    OpenCards* m_cards;
    ComposerCatalog m_catalog;
    CatalogFile m_file;
    CatalogTree* m_tree = nullptr;
    ItemListModel* m_model = nullptr;
    QTreeView* m_works = nullptr;
    QLabel* m_count = nullptr;
    QMenuBar* m_menus = nullptr;
    QToolBar* m_bar = nullptr;
    QMenu* m_branchMenus[2]{};
    QMenu* m_workMenu = nullptr;
    QMenu* m_fileMenu = nullptr;
    ActionTable m_commands;
};

} // namespace tessaranth
