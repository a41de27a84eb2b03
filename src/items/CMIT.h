// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/ItemKind.h"
#include "items/Person.h"
#include "store/ItemList.h"
#include "store/Recordset.h"

#include <functional>
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
    /// The raw rows, columns as in the kind's statement. They replace what was there.
    bool ElencoInMatrice(int kind, std::vector<std::vector<Value>>& rows, const QString& prefix = {});
    /// Replaces what the list held; it stays as it was when the query fails.
    bool ElencoInLv(int kind, ItemList& list, const QString& prefix = {});

    // "Aggiungi": add, "Modifica": change. The reason of a refusal has been told to the user.

    /// Adds a composer or performer, or changes the one whose id is given; `person.id` is set on success.
    /// What is stored already is not checked again. Refused without a last name, with a year of another form
    /// or a text too long, when the card is gone, and when the name is there with the same years or none;
    /// asked about when only the years tell the two apart.
    bool AggiungiItem(int kind, Person& person);
    bool ModificaItem(int kind, Person& person);
    /// The person as stored; an empty one (id 0) when there is none. Throws SqlError.
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

    /// Name of an item for texts: first and last name, title, or name; empty when there is none. Throws
    /// SqlError.
    QString nameOf(int kind, qint64 id);
    bool exists(int kind, qint64 id); ///< throws SqlError

    /// "Conferma eliminazione": asks whether to delete the named items; says how much goes with those ids.
    bool ConfermaEliminazione(int kind, const QStringList& names, const std::vector<qint64>& ids);
    /// "Elimina": deletes items with everything that depends on them, all of them or none. Does not ask.
    /// False when one failed, which is told, or when the user stopped: all are there then as before.
    bool EliminaItem(int kind, const std::vector<qint64>& ids, Progress& progress);

    /// "Migra": asks, moves everything from one item to another of its kind, and deletes the first. False
    /// when the answer is no, when both are the same, or when it failed, in which case nothing was moved.
    bool Migra(int kind, qint64 from, qint64 to);

    /// The windows to be closed or reloaded when an item goes or changes; may be null.
    void setOpenCards(OpenCards* cards) { m_cards = cards; }
    /// Closes the card windows of items that are being deleted.
    void CloseAllOpenFormWork(int kind, const std::vector<qint64>& ids);

private:
    bool onKind(int kind, const std::function<void(const ItemKind&)>& work);
    bool refuse(const QString& text, const QString& title = {});
    void fit(const ItemKind& kind, Person& person, const Person& stored);
    bool mayBeCalled(const ItemKind& kind, const Person& person);
    Person stored(const ItemKind& kind, qint64 id);
    QStringList workCards(int kind, qint64 id);
    bool isFitName(const ItemKind& kind, QString& name, qint64 id);
    void deleteOne(const ItemKind& kind, qint64 id);
    void runStep(const ItemKind& kind, const CascadeStep& step, qint64 id);
    void moveLogo(qint64 from, qint64 to);
    void moveTracks(qint64 from, qint64 to);
    void foldLinks(const ItemKind& kind, qint64 from, qint64 to);

    Session& m_session;
    OpenCards* m_cards = nullptr;
};

} // namespace tessaranth
