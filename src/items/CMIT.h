// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/ItemKind.h"
#include "items/Person.h"
#include "store/ItemList.h"
#include "store/Recordset.h"

#include <optional>
#include <vector>

namespace tessaranth {

class OpenCards;
class Progress;
class Session;
struct CascadeStep;

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

    // "Aggiungi": add, "Modifica": change. The reason of a refusal has been told to the user.

    /// Adds a composer or performer, or changes the one whose id is given; `person.id` is set on success.
    /// Refused without a last name, with a year of another form, a text too long, or a name that exists.
    bool AggiungiItem(int kind, Person& person);
    bool ModificaItem(int kind, Person& person);
    /// The person as stored; an empty one (id 0) when there is none.
    Person person(int kind, qint64 id);

    /// Asks for the name of a new genre, source, label or carrier type and adds it: its key, or 0 when
    /// cancelled or refused.
    qint64 AggiungiItem(int kind);
    /// Asks for another name of one; false when cancelled or refused.
    bool ModificaItem(int kind, qint64 id);
    qint64 NewSupport() { return AggiungiItem(ItemKind::Support); }
    bool ModificaSupport(qint64 id) { return ModificaItem(ItemKind::Support, id); }
    /// The same with a name that is known already.
    qint64 addNamed(int kind, const QString& name);
    bool rename(int kind, qint64 id, const QString& name);

    /// Display name of an item: last and first name, title, or name; empty when there is none.
    QString nameOf(int kind, qint64 id);
    bool exists(int kind, qint64 id);

    /// "Conferma eliminazione": asks whether to delete the named items.
    bool ConfermaEliminazione(int kind, const QStringList& names);
    /// "Elimina": deletes items with everything that depends on them, one transaction each. Does not ask.
    /// False when one failed; when the user stops, those not yet deleted stay and the answer is true.
    bool EliminaItem(int kind, const std::vector<qint64>& ids, Progress& progress);

    /// "Migra": asks, moves everything from one item to another of its kind, and deletes the first. False
    /// when the answer is no, when both are the same, or when it failed, in which case nothing was moved.
    bool Migra(int kind, qint64 from, qint64 to);

    /// The windows to be closed or reloaded when an item goes or changes; may be null.
    void setOpenCards(OpenCards* cards) { m_cards = cards; }
    /// Closes the card windows of items that are being deleted.
    void CloseAllOpenFormWork(int kind, const std::vector<qint64>& ids);

private:
    template<typename Work>
    bool guarded(int kind, const Work& work);
    bool refuse(const QString& text, const QString& title = {});
    void fit(const ItemKind& kind, Person& person);
    bool isKnown(const ItemKind& kind, const Person& person);
    bool isFitName(const ItemKind& kind, QString& name, qint64 id);
    /// Names the files to be deleted once the rows are gone for good.
    void deleteOne(const ItemKind& kind, qint64 id, QStringList& files);
    void runStep(const ItemKind& kind, const CascadeStep& step, qint64 id, QStringList& files);
    void moveTracks(qint64 from, qint64 to);
    void foldLinks(const ItemKind& kind, qint64 id);

    Session& m_session;
    OpenCards* m_cards = nullptr;
};

} // namespace tessaranth
