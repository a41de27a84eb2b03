// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/ItemKind.h"
#include "items/ItemList.h"
#include "store/Recordset.h"

#include <optional>
#include <vector>

namespace tessaranth {

class Session;

/// The item manager: works on items of every kind (ItemKind::Number). An operation that fails reports it
/// through the session's messages and answers false.
class CMIT {
public:
    explicit CMIT(Session& session) : m_session(session) {}

    QString Nome;                 ///< the item's display name
    qint64 Id = 0;                ///< its key
    bool DontGetRecLabel = false; ///< recording lists leave the label out

    // "Elenco": list of the items of a kind, or of those whose name begins with a text.
    std::optional<Recordset> ElencoInRecordset(int kind, const QString& prefix = {});
    /// The raw rows, columns as in the kind's statement.
    bool ElencoInMatrice(int kind, std::vector<std::vector<Value>>& rows, const QString& prefix = {});
    /// Replaces what the list held; it stays as it was when the query fails.
    bool ElencoInLv(int kind, ItemList& list, const QString& prefix = {});

private:
    template<typename Work>
    bool guarded(int kind, const Work& work);

    Session& m_session;
};

} // namespace tessaranth
