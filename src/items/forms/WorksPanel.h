// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/ListPanel.h"

namespace tessaranth {

/// The panel "Comp": a composer's works.
class WorksPanel final : public ListPanel {
    Q_OBJECT

public:
    explicit WorksPanel(const CardContext& context, QWidget* parent = nullptr);

protected:
    bool readList(ItemList& list) override;

private:
    void paint();
    void edit(qint64 work); ///< 0: New_Work
    void remove();          ///< Remove_Work
    void listRecordings();
    void manageCatalog();
};

} // namespace tessaranth
