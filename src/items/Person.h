// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Fields.h"

#include <QString>

namespace tessaranth {

/// A composer or performer as the person editor sees one. `acronym` is of composers only.
struct Person {
    qint64 id = 0; ///< 0 for a new one
    QString last;
    QString first;
    QString born; ///< four digits or empty, or what another program stored
    QString died; ///< likewise
    QString acronym;

    bool operator==(const Person&) const = default;
};

/// "Last, First", trimmed; the last name alone where there is no other.
QString personName(const QString& last, const QString& first);

/// The years shown after a name: birth, "-" and death, each "?" when it is empty.
QString yearsText(const QString& birth, const QString& death);

} // namespace tessaranth
