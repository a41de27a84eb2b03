// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Errors.h"
#include "store/Session.h"

#include <type_traits>

namespace tessaranth {

/// What is carried out between two questions to the user. An operation that another one calls is a part of
/// it: when the part fails, the whole does, and is told once.
class Operation {
public:
    Operation();
    ~Operation() { end(); }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    bool isPart() const { return m_isPart; }
    void end(); ///< may be called again

    /// While it lives, whatever begins is no part of what is under way: an event that arrives while an
    /// operation waits for an answer or shows its progress.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        int m_depth;
    };

private:
    bool m_isPart;
    bool m_isOpen = true;
};

/// While it lives, failures are told once: a window reads several parts, of which each says for itself that
/// it cannot be read.
class ToldOnce {
public:
    ToldOnce();
    ~ToldOnce();
    ToldOnce(const ToldOnce&) = delete;
    ToldOnce& operator=(const ToldOnce&) = delete;
    /// True outside of any, and for the first failure within one.
    static bool mayTell();

private:
    bool m_isOutermost;
};

/// Runs an operation; an error is told to the user, in the words of `failure` where there are some, and
/// answered with false. One that answers with nothing has succeeded when it ends. In an operation that is
/// part of another the error ends the other as well, which tells it.
template<typename Job>
bool guarded(Session& session, const Job& job, const QString& failure = {}) {
    const auto run = [&job] {
        if constexpr (std::is_void_v<std::invoke_result_t<const Job&>>) {
            job();
            return true;
        } else {
            return job();
        }
    };
    Operation operation;
    if (operation.isPart())
        return run();
    QString reason;
    try {
        return run();
    } catch (const Error& error) {
        reason = failure.isEmpty() ? error.reason() : failure;
    }
    operation.end();
    if (ToldOnce::mayTell())
        session.messages().warning(applicationTitle, reason);
    return false;
}

} // namespace tessaranth
