// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Errors.h"
#include "store/Session.h"

#include <type_traits>

namespace tessaranth {

/// Runs an operation; an error is told to the user and answered with false. One that answers with nothing has
/// succeeded when it ends.
template<typename Job>
bool guarded(Session& session, const Job& job) {
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<const Job&>>) {
            job();
            return true;
        } else {
            return job();
        }
    } catch (const Error& error) {
        session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

} // namespace tessaranth
