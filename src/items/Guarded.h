// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Errors.h"
#include "store/Session.h"

namespace tessaranth {

/// Runs an operation that answers with true or false; an error is told to the user and answered with false.
template<typename Job>
bool guarded(Session& session, const Job& job) {
    try {
        return job();
    } catch (const Error& error) {
        session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

} // namespace tessaranth
