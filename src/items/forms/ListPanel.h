// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/CardPanel.h"
#include "store/ItemList.h"

class QLabel;
class QTreeView;

namespace tessaranth {

class ItemListModel;

/// A panel of an item card that is one list. Its commands stand in the list's context menu as well, under the
/// same keys; an empty list says how it is filled. Column widths are those that the user gave the list on any
/// card of the kind while the program runs.
class ListPanel : public CardPanel {
    Q_OBJECT

public:
    void load() override;
    QString heading() const override;                           ///< "Alias (3)"
    bool eventFilter(QObject* watched, QEvent* event) override; ///< fits the text of an empty list

protected:
    struct Words {
        QString name;    ///< objectName of the list
        QString heading; ///< before the number of rows
        QString spoken;  ///< accessible name of the list
        QString empty;   ///< what an empty list says
    };
    ListPanel(const CardContext& context, const Words& words, QWidget* parent);

    virtual bool readList(ItemList& list) = 0;
    /// A command that is in the context menu too, in the order of these calls.
    void addEntry(const QString& key, const QString& caption, const QString& shortcut,
                  std::function<void()> what, std::function<bool()> when = {});
    /// What Enter and a double-click do.
    void setDefaultCommand(const QString& key);

    std::vector<qint64> selected() const;
    qint64 theOne() const; ///< the id of the only row selected, or 0
    bool hasOne() const { return theOne() != 0; }
    bool hasSome() const { return !selected().empty(); }
    QTreeView* view() const { return m_view; }
    /// Asks again which commands are possible.
    void enable();

private:
    void select(const std::vector<qint64>& ids);
    QString arrangementKey() const;
    void restoreWidths();
    void keepWidths(int column);
    void fitEmptyText();

    Words m_words;
    bool m_fitting = false; ///< widths change though the user did not change them
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_empty = nullptr;
};

} // namespace tessaranth
