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
    void New_Work() { Edit_Work(0); }
    void Edit_Work(qint64 work);
    void Remove_Work();
    void listRecordings();
    void Manage_Catalog();
};

} // namespace tessaranth
