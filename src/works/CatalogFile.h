// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

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

    CatalogFile(Session& session, qint64 composer) : m_session(session), m_composer(composer) {}

    QString fileName(); ///< "First_Last.tcat", without what no file may be called

    bool exportTo(const QString& path);
    /// The whole file is checked before anything is added.
    bool importFrom(const QString& path, Progress& progress);
    /// Removes what came from catalog files, without a question.
    bool removeImported(Progress& progress);

    // The questions that come before those.
    bool isClassified();        ///< tells why not
    QString chooseExportPath(); ///< empty when cancelled
    QString chooseImportPath(); ///< likewise
    bool confirmRemoval();

private:
    QString composerName();
    bool isFit(const Recordset& rows, Progress& progress);
    void addRows(const Recordset& rows, const QString& file, Progress& progress);

    Session& m_session;
    qint64 m_composer;
};

} // namespace tessaranth
