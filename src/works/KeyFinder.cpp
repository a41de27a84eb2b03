// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/KeyFinder.h"

#include "store/Connection.h"
#include "store/TextOrder.h"

#include <QStringList>

namespace tessaranth {

namespace {

/// The words of a text; signs of music become words, and what else is no letter parts them: "E♭-major".
QStringList wordsOf(QString text) {
    text.replace(QChar(0x266D), QStringLiteral(" flat ")).replace(QChar(0x266F), QStringLiteral(" sharp "));
    for (QChar& c : text)
        if (!c.isLetterOrNumber() && !c.isMark())
            c = u' ';
    return text.split(u' ', Qt::SkipEmptyParts);
}

QString folded(const QStringList& words, qsizetype from, qsizetype count) {
    return TextOrder::fold(words.mid(from, count).join(u' '));
}

} // namespace

KeyFinder::KeyFinder(Connection& connection) {
    Query run = connection.query(QStringLiteral("SELECT KeyID, KeyName FROM WKeys ORDER BY LangID, KeyID"));
    while (run.next()) {
        const QStringList words = wordsOf(run.text(1));
        // A name of one word would be found in titles that name no key.
        if (words.size() < 2 || run.integer(0) == 0)
            continue;
        m_keys.insert(folded(words, 0, words.size()), run.integer(0));
        m_longest = qMax(m_longest, words.size());
    }
}

qint64 KeyFinder::keyOf(const QString& title) const {
    const QStringList words = wordsOf(title);
    qint64 found = 0;
    for (qsizetype from = 0; from < words.size(); ++from)
        for (qsizetype count = qMin(m_longest, words.size() - from); count > 1; --count)
            if (const qint64 key = m_keys.value(folded(words, from, count))) {
                if (found != 0 && found != key)
                    return 0;
                found = key;
                from += count - 1;
                break;
            }
    return found;
}

} // namespace tessaranth
