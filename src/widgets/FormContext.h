// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

namespace tessaranth {

class IconStore;
class Session;

/// What every window is given: the session, the icons, and what the rooms above its own do for it. Copied by
/// whoever keeps it; what it refers to outlives every window.
struct FormContext {
    FormContext(Session& session, const IconStore& icons) : session(session), icons(icons) {}

    Session& session;
    const IconStore& icons;
    /// Keeps a text as a document of the card with this code and id. Empty where nothing keeps documents.
    std::function<void(const QString& code, qint64 id, const QString& text, const QString& title)>
        keepDocument;
};

} // namespace tessaranth
