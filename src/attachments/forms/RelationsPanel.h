// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardRelations.h"
#include "items/forms/ListPanel.h"

namespace tessaranth {

/// The cards that a card is related to.
class RelationsPanel final : public ListPanel {
    Q_OBJECT

public:
    explicit RelationsPanel(const CardContext& context, QWidget* parent = nullptr);

protected:
    bool readList(ItemList& list) override;

private:
    void Manage_Relations();
    void GoToRelationCard();

    CardRelations m_relations;
    std::vector<CardRelations::Related> m_related;
};

} // namespace tessaranth
