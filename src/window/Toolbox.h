// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/ItemKind.h"
#include "widgets/FormContext.h"

#include <QHash>
#include <QTimer>
#include <QWidget>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QToolBar;
class QTabBar;
class QTreeView;

namespace tessaranth {

class BrowseTree;
class ItemListModel;

/// The tool box at the left of the main window: the cards of one kind at a time, narrowed as one types; or
/// the classifications, to browse in.
class Toolbox final : public QWidget {
    Q_OBJECT

public:
    Toolbox(const FormContext& context, QWidget* parent = nullptr);

    int kind() const;
    void showKind(int kind);
    BrowseTree& browse() const { return *m_browse; }
    void showBrowse(bool browse);
    /// Reads the list again and keeps what was selected.
    void refresh();
    std::vector<qint64> selectedIds() const;
    QStringList selectedNames() const;
    void select(qint64 id);
    QTreeView* view() const { return m_view; }
    ItemListModel* model() const { return m_model; }
    /// Puts actions into the tool bar above the list and into its context menu.
    void setActions(const QList<QAction*>& onBar, const QList<QAction*>& inMenu);
    bool isFiltered() const;
    void focusFilter();
    void clearFilter();
    /// Writes how each list is sorted and how wide its columns are to the configuration.
    void saveColumns();

signals:
    void kindChanged();
    void selectionChanged();
    void activated(qint64 id);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildUi();
    QWidget* buildModes();
    void PopolaLV2(); ///< fills the list with the cards of the chosen kind
    void openFirst();
    void fitColumns();
    void noteColumns();
    void restoreColumns();
    void showState();

    /// How the user has left the columns of a list; -1 where nothing was chosen.
    struct Columns {
        int sorted = -1;
        int order = 0;
        int width = -1; ///< of the second column, in pixels
    };

    FormContext m_context;
    ItemListModel* m_model = nullptr;
    QTabBar* m_modes = nullptr;
    BrowseTree* m_browse = nullptr;
    QComboBox* m_kinds = nullptr;
    QLineEdit* m_filter = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_empty = nullptr;
    QLabel* m_count = nullptr;
    QToolBar* m_bar = nullptr;
    QTimer m_typing;
    QHash<int, Columns> m_columns; ///< by kind
    bool m_isFitting = false;
};

} // namespace tessaranth
