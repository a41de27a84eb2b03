// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Messages.h"

#include <QDialog>

class QLineEdit;

namespace tessaranth {

class IconStore;

/// The shared name input: a heading, one labelled line, and a button that carries the action's name and is
/// enabled while the line holds more than blanks.
class frmInput final : public QDialog {
    Q_OBJECT

public:
    frmInput(const NameRequest& request, const IconStore* icons, QWidget* parent = nullptr);
    QString name() const; ///< trimmed

private:
    QLineEdit* m_edit = nullptr;
};

} // namespace tessaranth
