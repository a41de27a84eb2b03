// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

namespace tessaranth {

struct FormContext;

/// Versions of the program, of what it is built on, and of the open catalog.
class frmAbout final : public QDialog {
    Q_OBJECT

public:
    frmAbout(const FormContext& context, QWidget* parent = nullptr);
};

} // namespace tessaranth
