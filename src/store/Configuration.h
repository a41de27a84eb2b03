// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ProfileFile.h"
#include "store/ColourScheme.h"

#include <QColor>
#include <QStringList>
#include <vector>

namespace tessaranth {

/// The configuration file tsc.cfg: every section, key and default is a row of one table. Values are read
/// from and written to the file at once; there is no copy in memory that could be lost.
class Configuration {
public:
    /// One row of the table. `initial` is the text written into a new file.
    struct Setting {
        QString section;
        QString key;
        QString initial;
    };

    Configuration(const QString& file, const QString& applicationFolder);

    const QString& path() const { return m_file.path(); }
    bool exists() const { return m_file.exists(); }
    QString fault() const { return m_file.fault(); } ///< why it cannot be read; empty when it can
    /// Why the last write failed, with the name of the file.
    const QString& failure() const { return m_file.failure(); }

    /// Every setting of a new file in the order in which it is written; `databasePath` is the value of
    /// "Database".
    std::vector<Setting> defaults(const QString& databasePath) const;
    /// Writes a new file with every default; false when it cannot be written. One that another process has
    /// made meanwhile stays.
    bool create(const QString& databasePath);
    /// Adds the keys that files of older versions lack, each only when its value reads empty.
    void addMissingKeys();

    QString read(const QString& section, const QString& key) const { return m_file.read(section, key); }
    bool write(const QString& section, const QString& key, const QString& value) {
        return m_file.write(section, key, value);
    }
    bool write(const std::vector<ProfileFile::Entry>& entries) { return m_file.write(entries); }
    /// Yes/no values are "1" or "-1" for yes.
    bool flag(const QString& section, const QString& key) const;
    int number(const QString& section, const QString& key, int fallback) const;
    /// The colours that the user chose to see.
    Look look() const { return lookOf(read(QStringLiteral("Misc"), QStringLiteral("Look"))); }
    /// The colour to be shown: of the look, which may be the classic one.
    QColor colour(const QString& key) const;
    /// Colours are stored as blue*65536 + green*256 + red; an unreadable value gives the factory colour of
    /// the key, or black for a key that has none.
    QColor classicColour(const QString& key) const;
    /// The colour that the settings' default button restores.
    QColor factoryColour(const QString& key) const;
    bool setColour(const QString& key, const QColor& colour);

    /// The folder remembered for a kind of file dialog ("Image", "Doc", ...); empty when none.
    QString lastFolder(const QString& kind) const;
    /// Remembers the folder of a file, when that folder exists.
    void setLastFolder(const QString& kind, const QString& fileName);

private:
    ProfileFile m_file;
    QString m_applicationFolder;
};

} // namespace tessaranth
