// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace tessaranth {

class OpenCards;
class Recordset;
class Session;
struct Question;

/// A work as its editor sees it.
struct Work {
    qint64 id = 0; ///< 0 for a new one
    qint64 composer = 0;
    QString title;
    QString subtitle;
    QString number; ///< without the composer's acronym
    QString year;
    QString description;
    qint64 mainWork = 0;
    qint64 composerGenre = 0;
    qint64 genre = 0;
    qint64 key = 0;
    bool inCollection = false; ///< read only

    bool operator==(const Work&) const = default;
};

/// The works manager. An operation that fails reports it through the session's messages and answers false.
class CWKS {
public:
    explicit CWKS(Session& session) : m_session(session) {}

    // "Elenco": lists, in the order of the catalogue. They replace what the list held.
    bool ElencoInLvS(qint64 composer, ItemList& list); ///< title and number
    bool ElencoInLvC(qint64 composer, ItemList& list); ///< everything; works in the collection marked "*"
    bool PersInLv(qint64 work, ItemList& list);        ///< a work's characters

    Work work(qint64 id); ///< an empty one (id 0) when there is none; throws SqlError
    /// Adds a work, or changes the one whose id is given. Refused without a title, with a text too long
    /// (unless it stands there already), and when the work or its composer is gone.
    bool AggiungiWork(Work& work);
    bool ModificaWork(Work& work);

    /// Deletes a work after a question.
    bool EliminaWork(qint64 id);
    /// Deletes several after one question; their characters stay.
    bool EliminaWorkBatch(const std::vector<qint64>& ids);

    // Characters of a work. `name` is cleaned; an empty one and one that the work has are refused.
    qint64 addCharacter(qint64 work, const QString& name);
    bool renameCharacter(qint64 id, const QString& name);
    bool deleteCharacters(const std::vector<qint64>& ids);
    /// One character a line; those that the work has are passed over. The number added, or -1 on failure.
    int importCharacters(qint64 work, const QString& textFile);

    /// The composer's acronym before a number, such as "BWV 1001"; empty for an empty number.
    static QString numberText(const QString& acronym, const QString& number);
    QString acronym(qint64 composer); ///< throws SqlError
    /// The rows of a record set of one composer's works, by the numbers in a column, in the order of the
    /// catalogue.
    static std::vector<int> catalogueOrder(const Recordset& rows, int numberColumn, const QString& acronym);

    /// The windows to be closed with works that are deleted; may be null.
    void setOpenCards(OpenCards* cards) { m_cards = cards; }

private:
    void fit(Work& work, const Work& stored);
    bool confirm(Question question, const std::vector<qint64>& ids);
    bool deleteWorks(const std::vector<qint64>& ids, bool withCharacters, const QString& words);
    void deleteRows(qint64 id, bool withCharacters);
    bool hasCharacter(qint64 work, const QString& name, qint64 except);
    void markCharacters(qint64 work);
    QString characterName(const QString& text);
    void requireWork(qint64 id);

    Session& m_session;
    OpenCards* m_cards = nullptr;
};

} // namespace tessaranth
