// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestHome.h"

#include <QFile>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

namespace tessaranth {

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TestHome::TestHome() {
    for (const char* name : {"tsrthres.dll", "tsrcps.dll", "tsrpfr.dll", "WKeys.dat"})
        copyShipped(QString::fromLatin1(name), file(QString::fromLatin1(name)));
}

TestHome::~TestHome() { close(); }

void TestHome::copyShipped(const QString& name, const QString& target) {
    QFile::remove(target);
    if (!QFile::copy(QStringLiteral(TESSARANTH_SHARE "/") + name, target))
        QTest::qFail(qPrintable(name + " is not built"), __FILE__, __LINE__);
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
}

void TestHome::useTemplate() { copyShipped(QStringLiteral("Tessaranth.tsb"), catalog()); }
void TestHome::useSample() { copyShipped(QStringLiteral("Sample.tsb"), catalog()); }
void TestHome::useOldest() { useSql(QStringLiteral(TESSARANTH_SOURCE_DIR "/tests/support/oldest.sql")); }

void TestHome::useSql(const QString& sqlFile) {
    QFile::remove(catalog());
    SQLite::Database database(catalog().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec(bytesOf(sqlFile).toStdString());
}

StartResult TestHome::start() {
    close();
    session = std::make_unique<Session>(folder(), messages, clock);
    return Startup(*session, {}, progress).run();
}

void TestHome::close() { session.reset(); }

QStringList TestHome::schemaOf(const QString& catalog) {
    SQLite::Database database(catalog.toStdString(), SQLite::OPEN_READONLY);
    QStringList facts;
    SQLite::Statement columns(database,
                              "SELECT m.name || '.' || c.cid || ' ' || c.name || ' ' || c.type || ' ' || "
                              "c.\"notnull\" || ' ' || COALESCE(c.dflt_value, 'none') || ' ' || c.pk FROM "
                              "sqlite_schema m JOIN pragma_table_info(m.name) c WHERE m.type = 'table' AND "
                              "m.name NOT LIKE 'sqlite%'");
    while (columns.executeStep())
        facts.push_back(QString::fromUtf8(columns.getColumn(0).getText()));
    SQLite::Statement indexes(database,
                              "SELECT 'index ' || name || ' ' || sql FROM sqlite_schema WHERE type = "
                              "'index' AND sql IS NOT NULL");
    while (indexes.executeStep())
        facts.push_back(QString::fromUtf8(indexes.getColumn(0).getText()));
    facts.sort();
    return facts;
}

} // namespace tessaranth
