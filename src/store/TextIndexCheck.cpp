// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/TextIndexCheck.h"

#include "store/Connection.h"

#include <QCoreApplication>
#include <SQLiteCpp/SQLiteCpp.h>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("TextIndexCheck", text); }

/// An index made anew in memory, and its words in the order in which FTS5 keeps them.
class Fresh {
public:
    Fresh(Connection& catalog, const TextIndexTable& table) {
        m_database.exec(TextIndex::definitions().value(table.name).toStdString());
        m_database.exec("BEGIN");
        SQLite::Statement add(m_database,
                              "INSERT INTO " + std::string(table.name) + "(rowid, words) VALUES (?, ?)");
        Query rows = catalog.queryNative(table.select);
        while (rows.next()) {
            add.bind(1, int64_t(rows.integer(0)));
            add.bind(2, rows.text(1).toStdString());
            add.exec();
            add.reset();
        }
        m_database.exec("COMMIT");
        m_database.exec("CREATE VIRTUAL TABLE terms USING fts5vocab(" + std::string(table.name) +
                        ", instance)");
        m_terms = std::make_unique<SQLite::Statement>(m_database, "SELECT term, doc FROM terms");
    }
    /// False behind the last.
    bool next(std::pair<QByteArray, qint64>& entry) {
        if (!m_terms->executeStep())
            return false;
        const SQLite::Column term = m_terms->getColumn(0);
        entry = {QByteArray(term.getText(), term.getBytes()), m_terms->getColumn(1).getInt64()};
        return true;
    }

private:
    SQLite::Database m_database{":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE};
    std::unique_ptr<SQLite::Statement> m_terms;
};

} // namespace

QString TextIndexCheck::compare(const TextIndexTable& table) {
    const QString name = QLatin1String(table.name);
    try {
        Fresh fresh(m_connection, table);
        Query stored = m_connection.indexTerms(table.name);
        const auto nextStored = [&stored](std::pair<QByteArray, qint64>& entry) {
            if (!stored.next())
                return false;
            entry = {stored.text(0).toUtf8(), stored.integer(1)};
            return true;
        };
        // Both come sorted by word and row, so they are laid side by side.
        std::pair<QByteArray, qint64> should, is;
        bool more = fresh.next(should), moreStored = nextStored(is);
        qint64 missing = 0, surplus = 0;
        while (more || moreStored) {
            if (more && (!moreStored || should < is)) {
                ++missing;
                more = fresh.next(should);
            } else if (moreStored && (!more || is < should)) {
                ++surplus;
                moreStored = nextStored(is);
            } else {
                more = fresh.next(should);
                moreStored = nextStored(is);
            }
        }
        return missing + surplus == 0 ? QString()
                                      : tr("%1: %2 words missing, %3 of rows that no longer hold them")
                                            .arg(name)
                                            .arg(missing)
                                            .arg(surplus);
    } catch (const SQLite::Exception& error) {
        return tr("%1: cannot be compared: %2").arg(name, QString::fromUtf8(error.what()));
    } catch (const SqlError& error) {
        return tr("%1: cannot be read: %2").arg(name, error.reason());
    }
}

QStringList TextIndexCheck::faults() {
    const TextIndex index(m_connection);
    if (index.isAbsent())
        return {};
    QStringList faults;
    if (!index.isCurrent())
        faults << tr("parts are missing, left over or of another version");
    const QStringList present = index.present();
    for (const TextIndexTable& table : TextIndex::tables())
        if (present.contains(QLatin1String(table.name)))
            if (const QString fault = compare(table); !fault.isEmpty())
                faults << fault;
    return faults;
}

} // namespace tessaranth
