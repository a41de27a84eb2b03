// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/Person.h"

#include <algorithm>

namespace tessaranth {

QString personName(const QString& last, const QString& first) {
    return last.trimmed() + (first.trimmed().isEmpty() ? QString() : QStringLiteral(", ") + first.trimmed());
}

QString yearsText(const QString& birth, const QString& death) {
    const QString unknown = QStringLiteral("?");
    return (birth.isEmpty() ? unknown : birth) + u'-' + (death.isEmpty() ? unknown : death);
}

bool isYear(const QString& text) {
    return text.isEmpty() || (text.size() == 4 && std::all_of(text.begin(), text.end(), [](QChar c) {
                                  return c >= u'0' && c <= u'9';
                              }));
}

QString cleanName(const QString& text) {
    QString result = text;
    for (QChar& c : result)
        if (c.category() == QChar::Other_Control)
            c = u' ';
    return result.trimmed();
}

} // namespace tessaranth
