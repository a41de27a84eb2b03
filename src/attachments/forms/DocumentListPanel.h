// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardDocuments.h"
#include "items/forms/ListPanel.h"

namespace tessaranth {

/// The titles of a card's documents; the one that is chosen is shown elsewhere on the card.
class DocumentListPanel final : public ListPanel {
    Q_OBJECT

public:
    explicit DocumentListPanel(const CardContext& context, QWidget* parent = nullptr);

signals:
    void chosen(qint64 id);

protected:
    bool readList(ItemList& list) override { return m_documents.LoadDocs(list); }

private:
    CardDocuments m_documents;
};

} // namespace tessaranth
