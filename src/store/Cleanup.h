// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"

#include <QString>
#include <functional>

namespace tessaranth {

class Session;

/// Removes rows that lost their owner, in eleven steps, each one transaction, and keeps a log of them in
/// Cleanup.log in the application folder.
class Cleanup {
public:
    struct StepResult {
        QString progressText; ///< for example "Cleaning orphan tracks: "
        QString resultText;   ///< "No orphan tracks." or "3 orphan tracks cleaned."
        int count = 0;
    };

    explicit Cleanup(Session& session) : m_session(session) {}

    /// `stepDone` is called after each step. False when a step failed, which is reported, or when the user
    /// stopped between two steps; the steps before it stand.
    bool run(Progress& progress, const std::function<void(const StepResult&)>& stepDone = {});

private:
    Session& m_session;
};

} // namespace tessaranth
