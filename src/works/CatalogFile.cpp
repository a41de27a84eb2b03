// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/CatalogFile.h"

#include "items/Attachments.h"
#include "items/Person.h"
#include "platform/AppFolder.h"
#include "platform/Progress.h"
#include "store/CatalogWriter.h"
#include "store/Session.h"
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

template<typename Job>
bool CatalogFile::guarded(const Job& job) {
    try {
        return job();
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

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
    return guarded([&] {
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
    return isClassified() && guarded([&] {
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

bool CatalogFile::isFit(Recordset& rows, Progress& progress) {
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

void CatalogFile::addRows(const Recordset& rows, const QString& file, Progress& progress) {
    Connection& connection = m_session.connection();
    CatalogWriter writer(connection);
    const Recordset::Assignments mark{{QStringLiteral("wkl"), true}};
    for (int row = 0; row < rows.rowCount() && !progress.stopped(); ++row) {
        Recordset::Assignments values = mark;
        values.emplace_back(QStringLiteral("CpsID"), m_composer);
        const auto text = [&](const char* field) {
            return cleanName(rows.value(row, QLatin1String(field)).toText());
        };
        for (const char* field : {"CompTitle", "CompSubTitle", "CompNbr", "CompYear"})
            values.emplace_back(QLatin1String(field), text(field));
        values.emplace_back(QStringLiteral("GenreID"),
                            writer.lookup(QStringLiteral("Genres"), text("GenreName")));
        const auto ofComposer = [&](const char* table, const char* field) {
            return writer.lookup(QLatin1String(table), text(field), m_composer, mark);
        };
        values.emplace_back(QStringLiteral("MainWorkID"), ofComposer("MainWorks", "MainWorkName"));
        values.emplace_back(QStringLiteral("CpsGenreID"), ofComposer("CpsGenres", "CpsGenreName"));
        writer.add(QStringLiteral("Compositions"), values);
        progress.step(row + 1, rows.rowCount());
    }
    const QString table = QStringLiteral("Catalogs");
    const auto cut = [&](const QString& column, const QString& text) {
        return std::pair<QString, Value>(column, m_session.fields().cut(table, column, text));
    };
    writer.add(table, {{QStringLiteral("CpsID"), m_composer},
                       cut(QStringLiteral("CpsName"), composerName()),
                       cut(QStringLiteral("FileName"), QFileInfo(file).fileName()),
                       {QStringLiteral("DateAdded"),
                        m_session.clock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))}});
}

bool CatalogFile::importFrom(const QString& path, Progress& progress) {
    std::optional<Recordset> rows;
    try {
        rows = Recordset::load(path, maxRows);
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle,
                                     QStringLiteral("Invalid Catalog file!\n") + error.reason());
        return false;
    }
    m_session.configuration().setLastFolder(QStringLiteral("Catalog"), path);
    return guarded([&] {
        if (composerName().isEmpty())
            throw Error(tr("This card has been deleted meanwhile."));
        if (!isFit(*rows, progress))
            return false;
        progress.stage(QStringLiteral("Updating Data....."));
        Transaction transaction(m_session.connection());
        addRows(*rows, path, progress);
        if (progress.stopped())
            return false;
        transaction.commit();
        m_session.messages().information(applicationTitle, QStringLiteral("Done."));
        return true;
    });
}

// ---- removal

bool CatalogFile::confirmRemoval() {
    Question question;
    question.title = QStringLiteral("Remove catalog");
    question.text = QStringLiteral("Warning. All works, mainworks and genres imported\nwith the current "
                                   "catalog will be deleted. Confirm?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    question.icon = MessageIcon::Warning;
    return m_session.messages().ask(question) == Answer::Yes;
}

bool CatalogFile::removeImported(Progress& progress) {
    Connection& connection = m_session.connection();
    const QString ofComposer = QStringLiteral(" WHERE CpsID = ") + QString::number(m_composer);
    const QString works =
        QStringLiteral("(SELECT CompID FROM Compositions") + ofComposer + QStringLiteral(" AND wkl = True)");
    const bool removed = guarded([&] {
        QStringList files;
        Transaction transaction(connection);
        progress.stage(QStringLiteral("Deleting works.."));
        connection.execute(QStringLiteral("DELETE FROM CompOnRecPfr WHERE CompOnRecID IN "
                                          "(SELECT CompOnRecID FROM CompOnRec WHERE CompID IN ") +
                           works + u')');
        connection.execute(QStringLiteral("DELETE FROM CompOnRec WHERE CompID IN ") + works);
        connection.execute(QStringLiteral("DELETE FROM Personages WHERE CompID IN ") + works);
        Attachments(m_session).deleteDocuments(
            QStringLiteral("SELECT * FROM Cards WHERE RelatedCat = 'Comp' AND RelatedID IN ") + works, files);
        connection.execute(QStringLiteral("DELETE FROM Compositions") + ofComposer +
                           QStringLiteral(" AND wkl = True"));
        // A genre or main work that the user has put works of his own under stays, and is his from now on:
        // without it those works would lose their place. The next removal must not take it either.
        for (const CatalogBranch& branch : catalogBranches()) {
            const QString used = QStringLiteral(" IN (SELECT %1 FROM Compositions%2 AND %1 > 0)")
                                     .arg(branch.names.key, ofComposer);
            connection.execute(QStringLiteral("UPDATE %1 SET wkl = False").arg(branch.names.table) +
                               ofComposer + QStringLiteral(" AND ") + branch.names.key + used);
        }
        const CatalogBranch& mainWorks = catalogBranches()[CatalogBranch::MainWorks];
        const CatalogBranch& genres = catalogBranches()[CatalogBranch::Genres];
        for (const auto& [branch, text] :
             {std::pair{&mainWorks, "Deleting mainworks.."}, std::pair{&genres, "Deleting genres.."}}) {
            progress.stage(QLatin1String(text));
            connection.execute(QStringLiteral("DELETE FROM ") + branch->names.table + ofComposer +
                               QStringLiteral(" AND wkl = True"));
        }
        connection.execute(QStringLiteral("DELETE FROM Catalogs") + ofComposer);
        transaction.commit();
        Attachments::removeFiles(files);
        return true;
    });
    if (removed)
        progress.stage(QStringLiteral("Refresh.."));
    return removed;
}

} // namespace tessaranth
