// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QTimer>
#include <QWidget>
#include <vector>

class QAction;
class QLabel;
class QTreeView;

namespace tessaranth {

class ClassTree;
class ItemListModel;
class OpenCards;

/// The other half of the tool box: the classification of every kind of card as a tree, and below it the cards
/// of the node chosen. Nothing is read before it is seen.
class BrowseTree final : public QWidget {
    Q_OBJECT

public:
    BrowseTree(const FormContext& context, QWidget* parent = nullptr);

    /// Where cards are opened, and told that their classification has changed; set once.
    void setOpenCards(OpenCards* cards) { m_cards = cards; }
    /// Reads what is shown again; nothing while it has never been seen.
    void refresh();
    /// Reads it again soon, once for however many cards have changed.
    void cardChanged();

signals:
    /// Cards or classes have changed elsewhere.
    void outdated();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildUi();
    void fillList();
    void classify();
    void drop(int kind, qint64 subCategory, const QList<qint64>& cards);
    std::vector<qint64> selectedCards() const;

    FormContext m_context;
    OpenCards* m_cards = nullptr;
    ClassTree* m_tree = nullptr;
    ItemListModel* m_model = nullptr;
    QTreeView* m_list = nullptr;
    QLabel* m_count = nullptr;
    QAction* m_classify = nullptr;
    QTimer m_pause; ///< to the event loop's next turn
    bool m_isRead = false;
};

} // namespace tessaranth
