// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Errors.h"

namespace SQLite {
class Exception;
}

namespace tessaranth {

/// A statement could not be read or run. `position` is the offset in the statement's text where the
/// dialect could not go on, or -1 when the database refused it.
class SqlError : public Error {
public:
    explicit SqlError(const QString& reason, qsizetype position = -1) : Error(reason), m_position(position) {}
    qsizetype position() const { return m_position; }

    /// True when not the statement is at fault but the disk: full, failing, or the file damaged. Nothing of
    /// an operation may stand then, so such a failure is never skipped.
    bool isStorageFailure() const { return m_storageFailure; }
    /// Of the storage failures the one where the file itself is at fault.
    bool isDamage() const { return m_damage; }
    static SqlError storageFailure(const QString& reason, bool damage) {
        SqlError error(reason);
        error.m_storageFailure = true;
        error.m_damage = damage;
        return error;
    }

private:
    qsizetype m_position;
    bool m_storageFailure = false;
    bool m_damage = false;
};

/// Why SQLite failed, in words for the user.
QString reasonOf(const SQLite::Exception& error);

} // namespace tessaranth
