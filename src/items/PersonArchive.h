// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Person.h"
#include "store/ItemList.h"
#include "store/Recordset.h"

#include <optional>

namespace tessaranth {

class Progress;
class Session;

/// The program's reference archive of composers (tsrcps.dll) or performers (tsrpfr.dll): record sets that
/// come with the program, from which a card is filled in.
class PersonArchive {
public:
    /// Opens the archive of a kind, 1 or 2; nothing when the file cannot be read, which has been told.
    static std::optional<PersonArchive> open(Session& session, int kind);

    /// The rows whose last or first name holds a text; all for an empty one. A row's id is its number + 1.
    ItemList search(const QString& text);
    Person person(qint64 id) const; ///< by the id of a row that `search` gave
    QString dateNote(qint64 id) const;

    struct Summary {
        int added = 0;
        int present = 0; ///< left out, as the catalog has them already
        bool stopped = false;
    };
    /// Adds many persons to the catalog, in one transaction; those whose name is there already are left out.
    /// Nothing was added when `failed`.
    std::optional<Summary> import(const std::vector<qint64>& ids, Progress& progress);

private:
    PersonArchive(Session& session, int kind, Recordset rows)
        : m_session(&session), m_kind(kind), m_rows(std::move(rows)) {}
    QString cell(qint64 id, const QString& field) const;

    Session* m_session;
    int m_kind;
    Recordset m_rows;
};

} // namespace tessaranth
