// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the sources of CMIT share; nobody else includes it.

#include "items/CMIT.h"
#include "store/Session.h"

namespace tessaranth {

/// Runs an operation on a kind; an error is told to the user and answered with false.
template<typename Work>
bool CMIT::guarded(int number, const Work& work) {
    const ItemKind* kind = itemKind(number);
    if (!kind)
        return false;
    try {
        work(*kind);
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

} // namespace tessaranth
