// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/ItemList.h"
#include "items/forms/CardPanel.h"

#include <vector>

class QTreeView;

namespace tessaranth {

class ItemListModel;

/// A panel that is one list: it keeps what is selected and how it is sorted when it is read again, and column
/// widths for every card of the kind while the program runs.
class CardListPanel : public CardPanel {
    Q_OBJECT

public:
    void load() override;
    QString heading() const override; ///< the first column's caption and the number of rows

protected:
    CardListPanel(const CardContext& context, const QString& objectName, const QString& accessibleName,
                  QWidget* parent);

    /// Reads the rows; false leaves the list as it is.
    virtual bool read(ItemList& list) = 0;
    /// A row was double-clicked, or Enter was pressed on it.
    virtual void open(qint64 id) = 0;

    /// Adds a command that also stands in the list's context menu.
    void addMenuCommand(const QString& key, const QString& caption, const QString& iconKey,
                        std::function<void()> what, std::function<bool()> when = {});
    std::vector<qint64> selected() const;
    bool hasOne() const { return selected().size() == 1; }
    bool hasSome() const { return !selected().empty(); }

    QTreeView* m_view;
    ItemListModel* m_model;

private:
    void select(const std::vector<qint64>& ids);
    void restoreWidths();
    void keepWidths();
    QString widthsKey() const;

    bool m_fitting = false;
};

} // namespace tessaranth
