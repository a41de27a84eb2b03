// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

namespace tessaranth {

/// The program with its windows.
class Application final : public QApplication {
public:
    using QApplication::QApplication;
    /// What an event starts is an operation of its own, also while another one shows its progress or waits
    /// for an answer.
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace tessaranth
