// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/EditForm.h"

namespace tessaranth {

class OpenCards;

/// The title of a custom card.
class frmNewUserDef final : public EditForm {
    Q_OBJECT

public:
    /// `id` 0 adds a card; `cards` may be null.
    frmNewUserDef(const FormContext& context, qint64 id, OpenCards* cards, QWidget* parent = nullptr);
    qint64 id() const { return m_id; } ///< of the card that was saved

protected:
    bool isChanged() const override;
    bool save() override;

private:
    void buildUi();

    qint64 m_id;
    OpenCards* m_cards;
    QString m_stored;
    QLineEdit* m_title = nullptr;
};

} // namespace tessaranth
