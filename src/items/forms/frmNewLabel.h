// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/LabelEditor.h"
#include "items/forms/EditForm.h"

class QLabel;

namespace tessaranth {

/// The name and the logo of a record label.
class frmNewLabel final : public EditForm {
    Q_OBJECT

public:
    /// `id` 0 adds a label.
    frmNewLabel(const FormContext& context, qint64 id, QWidget* parent = nullptr);
    qint64 id() const { return m_id; } ///< of the label that was saved

protected:
    bool isChanged() const override;
    bool save() override;

private:
    void buildUi();
    QWidget* logoRow();
    void importLogo();
    void pasteLogo();
    void setLogo(LogoChange change);
    void showLogo(const QByteArray& bytes);
    void enable();

    LabelEditor m_labels;
    qint64 m_id;
    QString m_stored;
    LogoChange m_change;
    QLineEdit* m_name = nullptr;
    QLabel* m_logo = nullptr;
    QPushButton* m_paste = nullptr;
    QPushButton* m_clear = nullptr;
};

} // namespace tessaranth
