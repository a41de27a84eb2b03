// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProfileFile.h"

#include "platform/CodePages.h"
#include "platform/Errors.h"
#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "platform/FolderLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

// The INI libraries at hand (SimpleIni, QSettings) read a file into a map and write the map out again. Lines
// they do not understand, NUL bytes, the order and the line ends go lost that way, and one changed colour
// rewrites what another program or the user put there. So the bytes themselves are the model here.

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("ProfileFile", text); }

constexpr qsizetype longestValue = 255;
constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

QByteArrayView trimmed(QByteArrayView text) {
    constexpr QByteArrayView blanks(" \t\r\v\f");
    while (!text.isEmpty() && blanks.contains(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && blanks.contains(text.back()))
        text.chop(1);
    return text;
}

bool isQuoted(QByteArrayView text) {
    return text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
}

/// The text as it can stand on a line; quoted where reading would otherwise take something from it.
QString asLine(const QString& text) {
    QString line = text;
    for (QChar& c : line) {
        if (c == u'\r' || c == u'\n' || c == u'\0')
            c = u' ';
    }
    const QByteArray bytes = line.toUtf8();
    return trimmed(bytes).size() != bytes.size() || isQuoted(bytes) ? u'"' + line + u'"' : line;
}

/// One line of the bytes, by offsets: the line break is in [end, next).
struct Line {
    qsizetype begin = 0;
    qsizetype end = 0;
    qsizetype next = 0;
};

/// The bytes of a file, and how to find and change a value in them.
class Document {
public:
    explicit Document(QByteArray bytes) : m_bytes(std::move(bytes)), m_isUtf8(CodePages::isUtf8(m_bytes)) {}

    const QByteArray& bytes() const { return m_bytes; }
    QString value(const QString& section, const QString& key) const;
    bool setValue(const QString& section, const QString& key, const QString& value);

private:
    /// Where a key stands, or where it would go.
    struct Place {
        bool hasSection = false;
        qsizetype valueBegin = -1; ///< behind the "="; -1 when the key is missing
        qsizetype valueEnd = -1;
        qsizetype insertAt = 0; ///< behind the last line of the section that is not blank
    };

    QByteArrayView view(qsizetype begin, qsizetype end) const {
        return QByteArrayView(m_bytes).sliced(begin, end - begin);
    }
    QString decoded(QByteArrayView bytes) const {
        return CodePages::decode(bytes, m_isUtf8 ? CodePages::utf8 : 1252);
    }
    bool isName(QByteArrayView bytes, const QString& name) const {
        return decoded(trimmed(bytes)).compare(name, Qt::CaseInsensitive) == 0;
    }
    bool nextLine(Line& line) const;
    Place find(const QString& section, const QString& key) const;
    QByteArray encoded(const QString& text) const {
        return m_isUtf8 ? text.toUtf8() : CodePages::toWindows1252(text).value_or(QByteArray());
    }
    QByteArray lineBreak() const;
    void becomeUtf8();

    QByteArray m_bytes;
    bool m_isUtf8;
};

bool Document::nextLine(Line& line) const {
    if (line.next >= m_bytes.size())
        return false;
    line.begin = line.next;
    const qsizetype found = m_bytes.indexOf('\n', line.begin);
    line.end = found < 0 ? m_bytes.size() : found;
    line.next = found < 0 ? line.end : found + 1;
    if (found > line.begin && m_bytes[found - 1] == '\r')
        --line.end;
    return true;
}

Document::Place Document::find(const QString& section, const QString& key) const {
    Place place;
    bool isInside = false;
    Line line;
    line.next = m_bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (nextLine(line)) {
        const QByteArrayView text = trimmed(view(line.begin, line.end));
        if (text.isEmpty())
            continue;
        const qsizetype close = text.front() == '[' ? text.lastIndexOf(']') : -1;
        if (close > 0) {
            if (isInside)
                return place; // a second section of the same name does not count
            isInside = isName(text.sliced(1, close - 1), section);
            place.hasSection = isInside;
        }
        if (!isInside)
            continue;
        place.insertAt = line.next;
        const qsizetype sign = close > 0 || text.front() == ';' ? -1 : text.indexOf('=');
        if (sign > 0 && isName(text.first(sign), key)) {
            place.valueBegin = text.data() - m_bytes.constData() + sign + 1;
            place.valueEnd = line.end;
            return place;
        }
    }
    return place;
}

QString Document::value(const QString& section, const QString& key) const {
    const Place place = find(section, key);
    if (place.valueBegin < 0)
        return {};
    QByteArrayView bytes = trimmed(view(place.valueBegin, place.valueEnd));
    if (isQuoted(bytes))
        bytes = bytes.sliced(1, bytes.size() - 2);
    // No encoding takes more than three bytes for what will be one of the characters kept.
    const QString text = decoded(bytes.first(qMin(bytes.size(), (longestValue + 1) * 3)));
    const bool splitsPair = text.size() > longestValue && text[longestValue - 1].isHighSurrogate();
    return text.left(longestValue - (splitsPair ? 1 : 0));
}

bool Document::setValue(const QString& section, const QString& key, const QString& value) {
    if (section.isEmpty() || key.isEmpty())
        return false;
    const QString line = asLine(value);
    // Text that Windows-1252 does not have turns the whole file into UTF-8.
    if (!m_isUtf8 && !CodePages::toWindows1252(section + key + line))
        becomeUtf8();
    const Place place = find(section, key);
    if (place.valueBegin >= 0) {
        m_bytes.replace(place.valueBegin, place.valueEnd - place.valueBegin, encoded(line));
    } else {
        const QByteArray end = lineBreak();
        QByteArray added = encoded(key + u'=' + line) + end;
        if (!place.hasSection)
            added.prepend(encoded(u'[' + section + u']') + end);
        const qsizetype at = place.hasSection ? place.insertAt : m_bytes.size();
        const bool isLineOpen = at > 0 && m_bytes[at - 1] != '\n' && m_bytes != byteOrderMark;
        m_bytes.insert(at, isLineOpen ? end + added : added);
    }
    // Bytes of Windows-1252 can happen to be valid UTF-8 once the last one that was not has gone.
    if (!m_isUtf8 && CodePages::isUtf8(m_bytes))
        becomeUtf8();
    const Place written = find(section, key);
    return written.valueBegin >= 0 && decoded(view(written.valueBegin, written.valueEnd)) == line;
}

QByteArray Document::lineBreak() const {
    const qsizetype first = m_bytes.indexOf('\n');
    return first < 0 || (first > 0 && m_bytes[first - 1] == '\r') ? "\r\n" : "\n";
}

void Document::becomeUtf8() {
    const qsizetype mark = m_bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    m_bytes.replace(mark, m_bytes.size() - mark,
                    CodePages::decode(view(mark, m_bytes.size()), 1252).toUtf8());
    m_isUtf8 = true;
}

/// What a configuration can be at most; more is no configuration.
constexpr qint64 largestFile = 256LL << 20;

QByteArray readWhole(const QString& path) {
    return isTaken(path) ? readFile(path, largestFile) : QByteArray();
}

} // namespace

bool ProfileFile::exists() const { return isPlainFile(m_path, Links::Follow); }

QString ProfileFile::read(const QString& section, const QString& key) const {
    try {
        return Document(readWhole(m_path)).value(section.trimmed(), key.trimmed());
    } catch (const FileError&) {
        return {}; // told once, by `fault`
    }
}

QString ProfileFile::fault() const {
    try {
        readWhole(m_path);
        return {};
    } catch (const FileError& error) {
        return error.reason();
    }
}

bool ProfileFile::attempt(const std::function<void()>& work) {
    m_failure.clear();
    try {
        work();
    } catch (const FileError& error) {
        m_failure = error.reason();
    }
    return m_failure.isEmpty();
}

bool ProfileFile::write(const std::vector<Entry>& entries) {
    return attempt([&] { change(entries, false); });
}

bool ProfileFile::create(const std::vector<Entry>& entries) {
    return attempt([&] { change(entries, true); });
}

// Read, changed and written under one lock: another process may be writing another key.
void ProfileFile::change(const std::vector<Entry>& entries, bool onlyNew) {
    const auto refuse = [this](const char* reason) {
        throw FileError(tr("%1 cannot be written: %2").arg(QDir::toNativeSeparators(m_path), tr(reason)));
    };
    const FolderLock lock(QFileInfo(m_path).path());
    if (!lock.isFree())
        refuse(QT_TRANSLATE_NOOP("ProfileFile", "another program is writing it"));
    if (onlyNew && exists())
        return;
    const QByteArray before = readWhole(m_path);
    Document document(before);
    for (const Entry& entry : entries) {
        if (!document.setValue(entry.section.trimmed(), entry.key.trimmed(), entry.value))
            refuse(QT_TRANSLATE_NOOP("ProfileFile", "a section or a key has no fit name"));
    }
    if (document.bytes() != before || !exists())
        writeFile(m_path, document.bytes());
}

} // namespace tessaranth
