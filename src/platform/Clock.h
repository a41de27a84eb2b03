// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

namespace tessaranth {

/// Where "now" comes from, so that tests can set it.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0; ///< local time
};

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

} // namespace tessaranth
