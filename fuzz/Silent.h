// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Messages.h"

namespace tessaranth {

/// Answers no question with yes and keeps nothing but whether something was told.
struct SilentMessages final : Messages {
    bool hasTold = false;
    void tell(MessageIcon, const QString&, const QString& text) override { hasTold = !text.isEmpty(); }
    Answer ask(const Question& question) override { return question.buttons.back(); }
    QString inputName(const NameRequest&) override { return {}; }
    QStringList chooseFiles(const FileRequest&) override { return {}; }
    std::optional<QColor> chooseColour(const QString&, const QColor&) override { return std::nullopt; }
};

} // namespace tessaranth
