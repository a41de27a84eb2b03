// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Clock.h"
#include "platform/Progress.h"
#include "store/Session.h"
#include "store/Startup.h"
#include "support/ScriptedMessages.h"

#include <QTemporaryDir>

namespace tessaranth {

/// A clock that stands still.
class FixedClock final : public Clock {
public:
    QDateTime now() const override { return time; }
    QDateTime time{QDate(2021, 5, 8), QTime(20, 30, 15)};
};

/// An application folder of its own with the shipped companion files, and a session in it.
class TestHome {
public:
    TestHome();
    ~TestHome();

    QString folder() const { return m_elsewhere.isEmpty() ? m_folder.path() : m_elsewhere; }
    QString file(const QString& name) const { return folder() + u'/' + name; }
    void useFolder(const QString& folder) { m_elsewhere = folder; } ///< another test's
    QString catalog() const { return file(QStringLiteral("Tessaranth.tsb")); }

    void useTemplate(); ///< puts an empty catalog of the current level in place
    void useOldest();   ///< a catalog of the oldest version instead
    void useSample();
    /// Replaces the catalog by one made of SQL in SQLite's own words.
    void useSql(const QString& sqlFile);

    /// Starts a session as the program does, without a splash screen.
    StartResult start();
    void close(); ///< ends the session without maintenance

    /// Names, types, nullability, defaults of all columns, and all indexes: what two catalogs are compared
    /// by.
    static QStringList schemaOf(const QString& catalog);

    ScriptedMessages messages;
    FixedClock clock;
    NoProgress progress;
    std::unique_ptr<Session> session;

private:
    void copyShipped(const QString& name, const QString& target);

    QTemporaryDir m_folder;
    QString m_elsewhere;
};

QByteArray bytesOf(const QString& path);

} // namespace tessaranth
