// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/CardListPanel.h"

namespace tessaranth {

/// The panel "Rec": the recordings of a composer or performer.
class RecordingsPanel final : public CardListPanel {
    Q_OBJECT

public:
    explicit RecordingsPanel(const CardContext& context, QWidget* parent = nullptr);

private:
    bool read(ItemList& list) override;
    void open(qint64 id) override;
};

} // namespace tessaranth
