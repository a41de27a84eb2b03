// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestHome.h"

#include <QMap>
#include <QRandomGenerator>

namespace tessaranth {

/// What the user can do to a catalog, at random but the same for the same seed: through the public
/// operations, on whatever is there, of every kind in turn.
class Operations {
public:
    Operations(TestHome& home, quint32 seed) : m_home(home), m_random(seed) {
        home.messages.willAlwaysAgree();
    }

    /// One operation, which may be refused or find nothing to do; its name.
    QString next();

private:
    struct Entry;
    static const Entry entries[];

    Session& session() { return *m_home.session; }
    int below(int limit) { return int(m_random.bounded(quint32(qMax(limit, 1)))); }
    qint64 any(const QString& query); ///< the first column of a row; 0 where there is none
    qint64 anyOf(int kind);
    std::vector<qint64> some(const QString& query, int most);
    QString word(const QString& beginning); ///< hardly ever the same twice
    struct CardOwner card();

    void person(), deleteItem(), mergeItems(), custom(), lookup(), logo();
    void specs(), artists(), works(), cast(), tracks(), newWorks();
    void work(), deleteWork(), character(), deleteCharacters();
    void group(), assignGroup(), removeGroup(), importCatalog(), removeCatalog(), importPersons();
    void category(), removeCategory(), classify();
    void picture(), document(), removeFile(), media(), removeMedia(), link(), removeLink(), relation(),
        keyName();

    TestHome& m_home;
    QRandomGenerator m_random;
    int m_step = 0;
};

/// Every row of every table as text, sorted, without what only tells how the program was last used; the marks
/// of works that are counted from other tables can be left out.
QMap<QString, QStringList> rowsOf(Session& session, bool withMarks = true);
/// The files of the data folders, without the history's.
QMap<QString, QByteArray> dataFilesOf(const TestHome& home);

} // namespace tessaranth
