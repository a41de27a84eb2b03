// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/CatalogFile.h"

#include "items/Attachments.h"
#include "items/OpenCards.h"
#include "items/Person.h"
#include "platform/AppFolder.h"
#include "platform/Progress.h"
#include "store/Guarded.h"
#include "works/CatalogImport.h"
#include "works/ComposerCatalog.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CatalogFile", text); }

/// The fields of the file, with the column that each is read into and that bounds its length.
struct FileField {
    const char* name;
    const char* table;
    const char* missing; ///< told before the number of a row without it; nullptr where it may be empty
};
const FileField fileFields[] = {{"CompTitle", "Compositions", "Work Title missed in Row: "},
                                {"CompSubTitle", "Compositions", nullptr},
                                {"CompNbr", "Compositions", nullptr},
                                {"MainWorkName", "MainWorks", nullptr},
                                {"CompYear", "Compositions", nullptr},
                                {"CpsGenreName", "CpsGenres", "Catalog Genre missed in Row: "},
                                {"GenreName", "Genres", nullptr}};

} // namespace

QString CatalogFile::composerName() { return ComposerCatalog(m_session, m_composer).composerName(); }

QString CatalogFile::fileName() {
    QString name = composerName();
    for (QChar& c : name)
        if (c.isSpace() || c.category() == QChar::Other_Control || QStringLiteral("/\\:*?\"<>|").contains(c))
            c = u'_';
    return name + QStringLiteral(".tcat");
}

// ---- export

// A genre that is gone counts as none: the works under it would be left out of the file without a word.
bool CatalogFile::isClassified() {
    return guarded(m_session, [&] {
        const bool unclassified = m_session.connection().exists(
            QStringLiteral("SELECT CompID FROM Compositions WHERE CpsID = ") + QString::number(m_composer) +
            QStringLiteral(
                " AND (IsNull(CpsGenreID) OR CpsGenreID NOT IN (SELECT CpsGenreID FROM CpsGenres))"));
        if (unclassified)
            m_session.messages().warning(
                applicationTitle,
                QStringLiteral("Not all the works are classified by Catalog Genre.\nIn order to export the "
                               "Composer Catalog each work must be classified by Catalog Genre."));
        return !unclassified;
    });
}

QString CatalogFile::chooseExportPath() {
    FileRequest request;
    request.mode = FileRequest::Mode::Folder;
    request.title = QStringLiteral("Save the Catalog file \"") + fileName() + QStringLiteral("\" to:");
    request.folder = m_session.configuration().lastFolder(QStringLiteral("Catalog"));
    const QStringList chosen = m_session.messages().chooseFiles(request);
    if (chosen.isEmpty())
        return {};
    QString path = chosen.front() + u'/' + fileName();
    if (!QFileInfo::exists(path))
        return path;
    const Question question{applicationTitle,
                            tr("%1 already exists.\nDo you want to replace it?").arg(path),
                            {Answer::Yes, Answer::No},
                            Answer::No,
                            MessageIcon::Warning};
    return m_session.messages().ask(question) == Answer::Yes ? path : QString();
}

bool CatalogFile::exportTo(const QString& path) {
    return isClassified() && guarded(m_session, [&] {
               const Recordset rows = Recordset::open(
                   m_session.connection(),
                   QStringLiteral("SELECT Compositions.CompTitle, Compositions.CompSubTitle, "
                                  "Compositions.CompNbr, MainWorks.MainWorkName, Compositions.CompYear, "
                                  "CpsGenres.CpsGenreName, Genres.GenreName "
                                  "FROM Genres "
                                  "RIGHT JOIN (CpsGenres "
                                  "INNER JOIN (Compositions "
                                  "LEFT JOIN MainWorks "
                                  "ON Compositions.MainWorkID = MainWorks.MainWorkId) "
                                  "ON CpsGenres.CpsGenreID = Compositions.CpsGenreID) "
                                  "ON Genres.GenreID = Compositions.GenreID "
                                  "WHERE Compositions.CpsId = ") +
                       QString::number(m_composer) + QStringLiteral(" ORDER BY Compositions.CpsGenreID"));
               rows.save(path);
               m_session.configuration().setLastFolder(QStringLiteral("Catalog"), path);
               m_session.messages().information(applicationTitle,
                                                QStringLiteral("The file ") + path +
                                                    QStringLiteral(" has been created correctly."));
               return true;
           });
}

// ---- import

QString CatalogFile::chooseImportPath() {
    FileRequest request;
    request.title = QStringLiteral("Select the Catalog file (*.tcat)");
    request.filterName = QStringLiteral("Catalog files (*.tcat)");
    request.patterns = QStringList{QStringLiteral("*.tcat")};
    request.folder = m_session.configuration().lastFolder(QStringLiteral("Catalog"));
    // The catalogs that come with the program, until the user has shown where he keeps his own.
    const QString shipped = shareFolder() + QStringLiteral("/catalogs");
    if (request.folder.isEmpty() && !shareFolder().isEmpty() && QFileInfo(shipped).isDir())
        request.folder = shipped;
    const QStringList chosen = m_session.messages().chooseFiles(request);
    return chosen.isEmpty() ? QString() : chosen.front();
}

bool CatalogFile::isFit(const Recordset& rows, Progress& progress) {
    const auto refuse = [&](const QString& text) {
        m_session.messages().warning(applicationTitle, text);
        return false;
    };
    if (rows.fields().size() != std::size(fileFields))
        return refuse(QStringLiteral("Invalid Catalog file!"));
    for (const FileField& field : fileFields)
        if (rows.fieldIndex(QLatin1String(field.name)) < 0)
            return refuse(QStringLiteral("Invalid Catalog file!"));
    progress.stage(QStringLiteral("Checking data...."));
    for (int row = 0; row < rows.rowCount(); ++row) {
        if (progress.stopped())
            return false;
        const QString number = QString::number(row + 1);
        for (const FileField& field : fileFields) {
            const QString name = QLatin1String(field.name);
            const QString text = cleanName(rows.value(row, name).toText());
            const QString table = QLatin1String(field.table);
            if (field.missing && text.isEmpty())
                return refuse(QLatin1String(field.missing) + number);
            if (!m_session.fields().fits(table, name, text))
                return refuse(QStringLiteral("Row: ") + number + QStringLiteral(", Field: ") + name +
                              QStringLiteral(": Invalid length\nMust be: ") +
                              QString::number(m_session.fields().width(table, name)));
        }
        progress.step(row + 1, rows.rowCount());
    }
    return true;
}

// A file that comes again has one line in the list of imported catalogs, with its latest date.
void CatalogFile::remember(const QString& file) {
    const QString table = QStringLiteral("Catalogs");
    const auto cut = [&](const char* column, const QString& text) {
        return m_session.fields().cut(table, QLatin1String(column), text);
    };
    const QString name = cut("FileName", QFileInfo(file).fileName());
    const QString now = m_session.clock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const int known = m_session.connection().execute(
        QStringLiteral("UPDATE Catalogs SET DateAdded = '%1' WHERE CpsID = %2").arg(now).arg(m_composer) +
        QStringLiteral(" AND FileName = '") + quoted(name) + u'\'');
    if (known == 0)
        CatalogWriter(m_session.connection())
            .add(table, {{QStringLiteral("CpsID"), m_composer},
                         {QStringLiteral("CpsName"), cut("CpsName", composerName())},
                         {QStringLiteral("FileName"), name},
                         {QStringLiteral("DateAdded"), now}});
}

bool CatalogFile::importFrom(const QString& path, Progress& progress) {
    const auto load = [&] {
        try {
            return Recordset::load(path, maxRows);
        } catch (const Error& error) {
            throw FileError(QStringLiteral("Invalid Catalog file!\n") + error.reason());
        }
    };
    return guarded(m_session, [&] {
        const Recordset rows = load();
        m_session.configuration().setLastFolder(QStringLiteral("Catalog"), path);
        if (composerName().isEmpty())
            throw Error(tr("This card has been deleted meanwhile."));
        if (!isFit(rows, progress))
            return false;
        progress.stage(QStringLiteral("Updating Data....."));
        Transaction transaction(m_session.connection(),
                                tr("Import %1 works of %2").arg(rows.rowCount()).arg(composerName()));
        CatalogImport import(m_session.connection(), m_composer);
        import.add(rows, progress);
        transaction.describe(tr("Import %1 works of %2").arg(import.added()).arg(composerName()));
        if (progress.stopped())
            return false;
        remember(path);
        transaction.commit();
        m_session.messages().information(
            applicationTitle, QStringLiteral("Done.\n") +
                                  tr("%1 new, %2 there already.").arg(import.added()).arg(import.known()));
        return true;
    });
}

// ---- removal

QString CatalogFile::importedWorks(bool onRecordings) const {
    return QStringLiteral(" FROM Compositions WHERE CpsID = %1 AND wkl = True AND CompID %2IN (SELECT CompID "
                          "FROM CompOnRec WHERE CompID > 0)")
        .arg(QString::number(m_composer), onRecordings ? QString() : QStringLiteral("NOT "));
}

bool CatalogFile::confirmRemoval() {
    const auto count = [this](const QString& source) {
        return m_session.connection().single(QStringLiteral("SELECT COUNT(*)") + source).toInteger();
    };
    qint64 going = 0;
    qint64 kept = 0;
    qint64 recordings = 0;
    const bool counted = guarded(m_session, [&] {
        going = count(importedWorks(false));
        kept = count(importedWorks(true));
        recordings =
            count(QStringLiteral(" FROM Rec WHERE RecID IN (SELECT RecID FROM CompOnRec WHERE CompID "
                                 "IN (SELECT CompID") +
                  importedWorks(true) + QStringLiteral("))"));
        return true;
    });
    if (!counted)
        return false;
    Question question;
    question.title = QStringLiteral("Remove catalog");
    question.text = QStringLiteral("Warning. All works, mainworks and genres imported\nwith the current "
                                   "catalog will be deleted. Confirm?") +
                    QStringLiteral("\n\n") + tr("Works that go: %1").arg(going);
    if (kept > 0)
        question.text += u'\n' + tr("Works that stay because they are on recordings: %1 (recordings: %2)")
                                     .arg(kept)
                                     .arg(recordings);
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    question.icon = MessageIcon::Warning;
    return m_session.messages().ask(question) == Answer::Yes;
}

// A genre or main work under which works are left stays, and is the user's own from now on: without it those
// works would lose their place, and the next removal must not take it either.
void CatalogFile::keepUsedBranches() {
    for (const CatalogBranch& branch : catalogBranches())
        m_session.connection().execute(
            QStringLiteral(
                "UPDATE %1 SET wkl = False WHERE CpsID = %3 AND %2 IN (SELECT %2 FROM Compositions "
                "WHERE CpsID = %3 AND %2 > 0)")
                .arg(branch.names.table, branch.names.key, QString::number(m_composer)));
}

bool CatalogFile::removeImported(Progress& progress) {
    Connection& connection = m_session.connection();
    const QString ofComposer = QStringLiteral(" WHERE CpsID = ") + QString::number(m_composer);
    const QString isImported = ofComposer + QStringLiteral(" AND wkl = True");
    const QString works = QStringLiteral("(SELECT CompID FROM Compositions") + isImported + u')';
    std::vector<qint64> gone;
    const bool removed = guarded(m_session, [&] {
        Transaction transaction(connection, tr("Remove the imported catalog of %1").arg(composerName()));
        progress.stage(QStringLiteral("Deleting works.."));
        // Works on recordings become the user's own likewise.
        connection.execute(
            QStringLiteral("UPDATE Compositions SET wkl = False WHERE CompID IN (SELECT CompID") +
            importedWorks(true) + u')');
        Query run = connection.query(QStringLiteral("SELECT CompID FROM Compositions") + isImported);
        while (run.next())
            gone.push_back(run.integer(0));
        connection.execute(QStringLiteral("DELETE FROM Personages WHERE CompID IN ") + works);
        Attachments(m_session).deleteDocuments(
            QStringLiteral("SELECT * FROM Cards WHERE RelatedCat = 'Comp' AND RelatedID IN ") + works);
        connection.execute(QStringLiteral("DELETE FROM Compositions") + isImported);
        keepUsedBranches();
        const CatalogBranch& mainWorks = catalogBranches()[CatalogBranch::MainWorks];
        const CatalogBranch& genres = catalogBranches()[CatalogBranch::Genres];
        for (const auto& [branch, text] :
             {std::pair{&mainWorks, "Deleting mainworks.."}, std::pair{&genres, "Deleting genres.."}}) {
            progress.stage(QLatin1String(text));
            connection.execute(QStringLiteral("DELETE FROM ") + branch->names.table + isImported);
        }
        connection.execute(QStringLiteral("DELETE FROM Catalogs") + ofComposer);
        transaction.commit();
        return true;
    });
    if (!removed)
        return false;
    if (m_cards)
        for (const qint64 work : gone)
            m_cards->closeCard(OpenCards::key(QStringLiteral("Comp"), work));
    progress.stage(QStringLiteral("Refresh.."));
    return true;
}

} // namespace tessaranth
