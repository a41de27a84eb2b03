// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardLinks.h"
#include "items/forms/ListPanel.h"

namespace tessaranth {

/// The web links of a card, by their aliases.
class WebPanel final : public ListPanel {
    Q_OBJECT

public:
    explicit WebPanel(const CardContext& context, QWidget* parent = nullptr);

protected:
    bool readList(ItemList& list) override { return m_links.LoadWeb(list); }

private:
    void New_Web() { Edit_Web(0); }
    void Edit_Web(qint64 id);

    CardLinks m_links;
};

} // namespace tessaranth
