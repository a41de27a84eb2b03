// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace tessaranth {

/// An INI file read and written key by key, as the private-profile functions of Windows do: sections and
/// keys compare without regard to case, the first one counts, a value is cut at 255 characters when read.
/// A write changes the one line it concerns and keeps every other byte of the file, comments and lines
/// that are no keys included. Text is UTF-8 where the bytes are valid UTF-8, else Windows-1252.
/// Values are trimmed and lose one pair of quotes around them when read, so a value that would change by
/// that is written between quotes; line breaks and NUL in a value become blanks.
class ProfileFile {
public:
    struct Entry {
        QString section;
        QString key;
        QString value;
    };

    explicit ProfileFile(QString path) : m_path(std::move(path)) {}

    const QString& path() const { return m_path; }
    bool exists() const;

    /// The stored text, or an empty one when the key, the section or the file is missing.
    QString read(const QString& section, const QString& key) const;
    /// False when the file could not be written, or when section or key is empty or could not be found
    /// again; the file is then as before.
    bool write(const QString& section, const QString& key, const QString& value) {
        return write({{section, key, value}});
    }
    /// Several at once: all of them are written, or none.
    bool write(const std::vector<Entry>& entries);

private:
    QString m_path;
};

} // namespace tessaranth
