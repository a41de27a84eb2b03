// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/Person.h"

namespace tessaranth {

QString personName(const QString& last, const QString& first) {
    return last.trimmed() + (first.trimmed().isEmpty() ? QString() : QStringLiteral(", ") + first.trimmed());
}

QString yearsText(const QString& birth, const QString& death) {
    const QString unknown = QStringLiteral("?");
    return (birth.isEmpty() ? unknown : birth) + u'-' + (death.isEmpty() ? unknown : death);
}

} // namespace tessaranth
