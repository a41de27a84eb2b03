// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardLinks.h"
#include "items/forms/EditForm.h"

namespace tessaranth {

/// A web link of a card: its address and its alias.
class frmNewWeb final : public EditForm {
    Q_OBJECT

public:
    /// `id` 0 adds a link.
    frmNewWeb(const FormContext& context, const CardOwner& card, qint64 id, QWidget* parent = nullptr);

protected:
    bool isChanged() const override;
    bool save() override;

private:
    void buildUi();

    CardLinks m_links;
    WebLink m_stored;
    QLineEdit* m_url = nullptr;
    QLineEdit* m_alias = nullptr;
};

} // namespace tessaranth
