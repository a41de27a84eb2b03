// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/WorkGroups.h"

#include "items/Person.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

struct Words {
    QString table, key, column;
    QString title, prompt, label, iconKey;
};
const Words words[] = {
    {QStringLiteral("MainWorks"), QStringLiteral("MainWorkID"), QStringLiteral("MainWorkName"),
     QStringLiteral("New Main work"), QStringLiteral("Add a new main work"), QStringLiteral("MainWork name"),
     QStringLiteral("Comp")},
    {QStringLiteral("CpsGenres"), QStringLiteral("CpsGenreID"), QStringLiteral("CpsGenreName"),
     QStringLiteral("New catalog genre"), QStringLiteral("Add a new catalog genre"),
     QStringLiteral("Genre name"), QStringLiteral("Genre")}};

} // namespace

template<typename Job>
void WorkGroups::guarded(const Job& job) {
    try {
        job();
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
    }
}

std::vector<WorkGroups::Group> WorkGroups::groups(Kind kind) {
    std::vector<Group> found;
    guarded([&] {
        const Words& of = words[kind];
        const Recordset rows =
            Recordset::open(m_session.connection(),
                            QStringLiteral("SELECT * FROM ") + of.table + QStringLiteral(" WHERE CpsID = ") +
                                QString::number(m_composer) + QStringLiteral(" ORDER BY ") + of.column);
        for (int row = 0; row < rows.rowCount(); ++row)
            found.push_back(
                {rows.value(row, of.key).toInteger(), rows.value(row, of.column).toText().trimmed()});
    });
    return found;
}

qint64 WorkGroups::find(Kind kind, const QString& name) {
    qint64 id = 0;
    guarded([&] {
        const Words& of = words[kind];
        id = m_session.connection()
                 .single(QStringLiteral("SELECT %1 FROM %2 WHERE CpsID = %3 AND ")
                             .arg(of.key, of.table)
                             .arg(m_composer) +
                         of.column + QStringLiteral(" LIKE '") + quotedPattern(cleanName(name)) + u'\'')
                 .toInteger();
    });
    return id;
}

qint64 WorkGroups::add(Kind kind) {
    const Words& of = words[kind];
    const NameRequest request{of.title,
                              of.prompt,
                              of.label,
                              QStringLiteral("Add"),
                              of.iconKey,
                              QString(),
                              m_session.fieldLengths().maxLength(of.table, of.column)};
    const QString name = m_session.messages().inputName(request);
    return name.isEmpty() ? 0 : addNamed(kind, name);
}

qint64 WorkGroups::addNamed(Kind kind, const QString& text) {
    qint64 id = 0;
    guarded([&] {
        const Words& of = words[kind];
        const QString name = cleanName(text);
        if (name.isEmpty())
            return;
        const int limit = m_session.fieldLengths().maxLength(of.table, of.column);
        if (limit > 0 && name.size() > limit)
            throw Error(QCoreApplication::translate("WorkGroups", "%1: at most %2 characters.")
                            .arg(of.label)
                            .arg(limit));
        if (find(kind, name) != 0) {
            m_session.messages().warning(QStringLiteral("Duplicate record"),
                                         name + QStringLiteral(" is already in archive!"));
            return;
        }
        Recordset rows = Recordset::open(m_session.connection(),
                                         QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(of.table));
        rows.add({{QStringLiteral("CpsID"), m_composer}, {of.column, name}});
        id = m_session.connection().lastKey();
    });
    return id;
}

} // namespace tessaranth
