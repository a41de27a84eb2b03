// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the sources of RecordingEditor share; nobody else includes it.

#include "items/OpenCards.h"
#include "recordings/RecordingEditor.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <QCoreApplication>

namespace tessaranth {

/// Runs an operation; an error is told to the user and answered with false.
template<typename Job>
bool RecordingEditor::guarded(const Job& job) {
    try {
        job();
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

/// Runs a change of the recording, whole or not at all; `parts` are the statements of what it replaces,
/// `words` name the change with %1 for the recording.
template<typename Job>
bool RecordingEditor::apply(const QStringList& parts, const QString& words, const Job& job) {
    bool stored = false;
    guarded([&] {
        requireRecording();
        if (!mayReplace(parts))
            return;
        Transaction transaction(m_session.connection(), words.arg(title()));
        job();
        touch();
        transaction.commit();
        stored = true;
        for (const QString& part : parts)
            remember(part);
    });
    if (stored)
        reloadCard();
    return stored;
}

inline QString editorText(const char* text) { return QCoreApplication::translate("RecordingEditor", text); }

} // namespace tessaranth
