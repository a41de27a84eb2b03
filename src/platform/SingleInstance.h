// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace tessaranth {

/// Keeps the program to one process for each application folder. The lock of a process that ended without
/// giving it back does not count. Needs an event loop in the first process.
class SingleInstance {
public:
    explicit SingleInstance(const QString& applicationFolder);
    ~SingleInstance();

    /// True when this is the only instance. Otherwise the other one has been asked to show itself, and this
    /// one should end. Where the folder takes no lock file the answer is true: the catalog's own exclusive
    /// opening still guards it.
    bool acquire();

    /// Called in the first instance when another one was started.
    std::function<void()> activated;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace tessaranth
