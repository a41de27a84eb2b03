// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Errors.h"

namespace tessaranth {

/// A statement could not be read or run. `position` is the offset in the statement's text where the
/// dialect could not go on, or -1 when the database refused it.
class SqlError : public Error {
public:
    explicit SqlError(const QString& reason, qsizetype position = -1) : Error(reason), m_position(position) {}
    qsizetype position() const { return m_position; }

private:
    qsizetype m_position;
};

} // namespace tessaranth
