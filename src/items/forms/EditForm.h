// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QDialog>

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace tessaranth {

/// A small editor of one item: its fields, Save and Cancel. Closing it with changes asks about them.
class EditForm : public QDialog {
    Q_OBJECT

public:
    void reject() override;

protected:
    EditForm(const FormContext& context, QWidget* parent) : QDialog(parent), m_context(context) {}

    virtual bool isChanged() const = 0;
    virtual bool save() = 0; ///< false: refused, and the user knows why
    /// The last row: a button that saves and closes, which is returned, and Cancel.
    QPushButton* addButtons(QVBoxLayout* layout, const QString& caption = tr("&Save"));
    /// A button that opens the character map and writes what was picked into a line, or into the field that
    /// has the focus when none is given.
    QPushButton* specialCharacters(QLineEdit* line = nullptr);
    QPushButton* button(const QString& caption, const QString& name);

    FormContext m_context;
};

} // namespace tessaranth
