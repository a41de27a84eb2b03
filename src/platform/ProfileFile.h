// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
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

    /// The stored text, or an empty one when the key, the section or the file is missing or cannot be read.
    QString read(const QString& section, const QString& key) const;
    /// Why a file that is there cannot be read; empty when it can, or when there is none.
    QString fault() const;
    /// False when the file could not be written, or when section or key is empty or could not be found
    /// again; the file is then as before. What other processes write meanwhile is kept.
    bool write(const QString& section, const QString& key, const QString& value) {
        return write({{section, key, value}});
    }
    /// Several at once: all of them are written, or none.
    bool write(const std::vector<Entry>& entries);
    /// Writes a new file; one that another process has made meanwhile stays as it is, which is no failure.
    bool create(const std::vector<Entry>& entries);
    /// Why the last write failed, with the name of the file.
    const QString& failure() const { return m_failure; }

private:
    bool attempt(const std::function<void()>& work);
    void change(const std::vector<Entry>& entries, bool onlyNew);

    QString m_path;
    QString m_failure;
};

} // namespace tessaranth
