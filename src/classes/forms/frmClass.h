// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "classes/Classification.h"
#include "classes/forms/ClassTree.h"
#include "widgets/ActionTable.h"
#include "widgets/FormContext.h"

#include <QDialog>
#include <functional>

class QAction;
class QLabel;
class QMenuBar;
class QToolBar;
class QTreeView;

namespace tessaranth {

class ItemListModel;

/// The manager of the classifications: the tree of all kinds at the left, the cards of the chosen
/// sub-category or of the global view at the right. Cards are classified by a command or by dragging them
/// onto the tree. It can stay open beside the main window, where it opens cards.
class frmClass final : public QDialog {
    Q_OBJECT

public:
    frmClass(const FormContext& context, OpenCards& cards, QWidget* parent = nullptr);

    /// Cards or classes have changed elsewhere: it reads them again when the user comes back to it.
    void setOutdated() { m_isOutdated = true; }

signals:
    /// Categories or sub-categories were added, renamed or deleted here.
    void classesChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    using Level = Classification::Level;
    /// One command; menus, tool bar and short cuts are made from the table.
    struct Entry {
        const char* key; ///< the action's objectName
        QString menu;
        QString caption;
        QString tip;
        QString iconKey;
        QString shortcut; ///< works in the tree only where the command is about its nodes
        std::function<void()> run;
        std::function<bool()> possible; ///< empty: always
    };

    void buildUi();
    void buildCommands();
    std::vector<Entry> commands();
    QAction* makeAction(const Entry& entry);
    void buildTreeKeys();
    void addContextMenus();
    void enable();

    Classification classes() { return Classification(m_context.session, kind(), &m_cards); }
    int kind() const { return m_tree->place().kind; }
    bool stands(Level level) const;
    void fillList();
    void add(Level level);
    void rename(Level level);
    void remove(Level level);
    void tellChange();
    void classify();
    void drop(int kind, qint64 subCategory, const QList<qint64>& cards);
    void openCard(const QModelIndex& index);
    std::vector<qint64> selectedCards() const;

    FormContext m_context;
    OpenCards& m_cards;
    ClassTree* m_tree = nullptr;
    ItemListModel* m_model = nullptr;
    QTreeView* m_list = nullptr;
    QLabel* m_count = nullptr;
    QMenuBar* m_menus = nullptr;
    QToolBar* m_bar = nullptr;
    ActionTable m_commands;
    bool m_isOutdated = false;
};

} // namespace tessaranth
