// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

class OpenCards;
class Progress;
class Recordset;
class Session;

/// A composer's works as a catalog file (".tcat"): a record set of seven text fields, written from one
/// composer's works and read into another's. Everything is told through the session's messages; an operation
/// that was refused, declined, stopped or that failed answers false and has changed nothing.
class CatalogFile {
public:
    /// More rows than any composer has works; a longer file is refused before it fills the memory.
    static constexpr int maxRows = 100'000;

    /// `cards`: the windows to be closed with works that are removed; may be null.
    CatalogFile(Session& session, qint64 composer, OpenCards* cards = nullptr)
        : m_session(session), m_composer(composer), m_cards(cards) {}

    QString fileName(); ///< "First_Last.tcat", without what no file may be called

    bool exportTo(const QString& path);
    /// The whole file is checked before anything is added. Works that the composer has already, by number and
    /// title, are not added again; the message at the end says how many.
    bool importFrom(const QString& path, Progress& progress);
    /// Removes what came from catalog files, without a question. Works that stand on a recording stay, with
    /// their genres and main works.
    bool removeImported(Progress& progress);

    // The questions that come before those.
    bool isClassified();        ///< tells why not
    QString chooseExportPath(); ///< empty when cancelled
    QString chooseImportPath(); ///< likewise
    bool confirmRemoval();      ///< says how many works go and how many recordings keep theirs

private:
    template<typename Job>
    bool guarded(const Job& job);
    QString composerName();
    bool isFit(Recordset& rows, Progress& progress);
    void remember(const QString& file);
    /// The source of a statement: works that came from files, those on a recording or the others.
    QString importedWorks(bool onRecordings) const;
    void keepUsedBranches();

    Session& m_session;
    qint64 m_composer;
    OpenCards* m_cards;
};

} // namespace tessaranth
