// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

namespace tessaranth {

class Messages;

/// The application of a program with windows. What an event lets escape as an exception is told to the user
/// and ends that event only: what he has typed elsewhere is not lost with the program.
class GuardedApplication final : public QApplication {
public:
    using QApplication::QApplication;
    void setMessages(Messages* messages) { m_messages = messages; } ///< must outlive its use; may be null
    bool notify(QObject* receiver, QEvent* event) override;

private:
    void tell(const QString& reason);

    Messages* m_messages = nullptr;
    bool m_isTelling = false;
};

} // namespace tessaranth
