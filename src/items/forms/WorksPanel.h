// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/CardListPanel.h"

namespace tessaranth {

/// The panel "Comp": a composer's works.
class WorksPanel final : public CardListPanel {
    Q_OBJECT

public:
    explicit WorksPanel(const CardContext& context, QWidget* parent = nullptr);

private:
    bool read(ItemList& list) override;
    void open(qint64 id) override; ///< ShowWorkAsCard
    void edit(qint64 work);        ///< 0: New_Work
    void remove();                 ///< Remove_Work
    void manageCatalog();
};

} // namespace tessaranth
