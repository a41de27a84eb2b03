// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Messages.h"

class QWidget;

namespace tessaranth {

class IconStore;

/// Tells and asks with dialogs over the active window. Texts are shown as plain text.
class WindowMessages final : public Messages {
public:
    void setIcons(const IconStore* icons) { m_icons = icons; }

    void tell(MessageIcon icon, const QString& title, const QString& text) override;
    Answer ask(const Question& question) override;
    QString inputName(const NameRequest& request) override;
    QStringList chooseFiles(const FileRequest& request) override;
    std::optional<QColor> chooseColour(const QString& title, const QColor& current) override;

private:
    const IconStore* m_icons = nullptr;
};

} // namespace tessaranth
