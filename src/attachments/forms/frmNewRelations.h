// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardRelations.h"
#include "classes/Classification.h"
#include "items/forms/EditForm.h"

#include <QMap>

class QComboBox;
class QLabel;
class QTreeView;

namespace tessaranth {

class CheckedList;
class ItemListModel;

/// Relates a card to others: a composer, performer or recording to custom cards, which are chosen by their
/// categories; a custom card to cards of the other kinds.
class frmNewRelations final : public EditForm {
    Q_OBJECT

public:
    frmNewRelations(const FormContext& context, const CardOwner& card, QWidget* parent = nullptr);
    /// Cards at the other end of what was added or ended.
    const std::vector<CardOwner>& changedCards() const { return m_changedCards; }

protected:
    bool isChanged() const override;
    bool save() override;

private:
    void buildUi();
    void addChoosers(QVBoxLayout* layout);
    void fillSubCategories();
    void fill();
    void narrow();
    void count();

    struct Kind {
        QSet<qint64> before;
        QSet<qint64> now;
    };

    CardRelations m_relations;
    bool m_isCustom;
    Classification::Tree m_classes; ///< what custom cards are chosen by
    QMap<int, Kind> m_kinds;
    int m_kind = 0; ///< of the cards in the list
    ItemList m_all; ///< not yet narrowed
    std::vector<CardOwner> m_changedCards;
    ItemListModel* m_model = nullptr;
    CheckedList* m_checks = nullptr;
    QTreeView* m_view = nullptr;
    QComboBox* m_first = nullptr;  ///< the card type, or the category
    QComboBox* m_second = nullptr; ///< the sub-category
    QLineEdit* m_filter = nullptr;
    QLabel* m_state = nullptr;
};

} // namespace tessaranth
