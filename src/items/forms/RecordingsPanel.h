// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/ListPanel.h"

namespace tessaranth {

/// The panel "Rec": the recordings of a composer or performer.
class RecordingsPanel final : public ListPanel {
    Q_OBJECT

public:
    explicit RecordingsPanel(const CardContext& context, QWidget* parent = nullptr);

protected:
    bool readList(ItemList& list) override;
};

} // namespace tessaranth
