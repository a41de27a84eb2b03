// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Messages.h"

namespace tessaranth {

/// Tells on stderr and answers from the command's flags: a question is answered with yes only where the
/// user said so beforehand.
class CliMessages final : public Messages {
public:
    void assumeYes(bool yes) { m_yes = yes; }
    bool declined() const { return m_declined; } ///< a question was answered with no

    void tell(MessageIcon icon, const QString& title, const QString& text) override;
    Answer ask(const Question& question) override;
    QString inputName(const NameRequest& request) override;
    QStringList chooseFiles(const FileRequest& request) override;
    std::optional<QColor> chooseColour(const QString& title, const QColor& current) override;

    /// Asks on the terminal, where there is one; elsewhere the answer is no.
    static bool confirm(const QString& question);

private:
    bool m_yes = false;
    bool m_declined = false;
};

} // namespace tessaranth
