// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/FileCheck.h"

#include "store/Session.h"

#include <QDir>
#include <QSet>

namespace tessaranth {

namespace {

// One listing of the folder instead of a question a file: a folder of covers can hold tens of thousands.
void addMissing(Session& session, const QString& statement, Session::Folder kind, QStringList& missing) {
    const QString folder = session.dataFolder(kind);
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    const QSet<QString> present(names.begin(), names.end());
    Query ids = session.connection().query(statement);
    while (ids.next()) {
        const QString name = QString::number(ids.integer(0));
        if (!present.contains(name))
            missing.push_back(folder + u'/' + name);
    }
}

} // namespace

QStringList missingFiles(Session& session) {
    QStringList missing;
    addMissing(session, QStringLiteral("SELECT ImageID FROM Images ORDER BY ImageID"),
               Session::Folder::Images, missing);
    addMissing(session, QStringLiteral("SELECT CardID FROM Cards ORDER BY CardID"),
               Session::Folder::Documents, missing);
    return missing;
}

} // namespace tessaranth
