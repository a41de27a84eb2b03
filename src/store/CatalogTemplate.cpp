// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/CatalogTemplate.h"

#include "platform/Errors.h"
#include "platform/FileWriter.h"
#include "store/SqlError.h"
#include "store/UpgradeSteps.h"

#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>

namespace tessaranth {

namespace {

std::string schemaText(const QString& name) {
    QFile file(QStringLiteral(":/schema/") + name);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(QStringLiteral("the program was built without ") + name);
    return file.readAll().toStdString();
}

} // namespace

void fillCatalogTemplate(const QString& path, const std::vector<KeyNameLine>& keyNames) {
    try {
        SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        SQLite::Transaction transaction(database);
        database.exec(schemaText(QStringLiteral("catalog.sql")));
        database.exec(schemaText(QStringLiteral("indexes.sql")));
        for (const UpgradeStep& step : upgradeSteps())
            database.exec("INSERT INTO DbUpgrades (DbUpgradeCode) VALUES (" + std::to_string(step.code) +
                          ")");
        SQLite::Statement key(database, "INSERT INTO WKeys (LangID, KeyID, KeyName) VALUES (?, ?, ?)");
        for (const KeyNameLine& line : keyNames) {
            key.bind(1, line.language);
            key.bind(2, line.key);
            key.bind(3, line.name.toStdString());
            key.exec();
            key.reset();
        }
        transaction.commit();
    } catch (const SQLite::Exception& error) {
        throw FileError(path + QStringLiteral(": ") + reasonOf(error));
    }
}

void writeCatalogTemplate(const QString& path, const std::vector<KeyNameLine>& keyNames) {
    FileWriter file(path);
    fillCatalogTemplate(file.temporaryPath(), keyNames);
    file.commit();
}

} // namespace tessaranth
