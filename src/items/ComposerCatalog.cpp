// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/ComposerCatalog.h"

#include "items/CMIT.h"
#include "items/CWKS.h"
#include "items/Person.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QHash>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("ComposerCatalog", text); }

const CatalogBranch branches[] = {
    {CatalogBranch::Genres, QStringLiteral("Catalog genres"), QStringLiteral("CpsGenres"),
     QStringLiteral("CpsGenreID"), QStringLiteral("CpsGenreName"), QStringLiteral("Catalog genre"),
     QStringLiteral("Genre name"), QStringLiteral("New catalog genre"),
     QStringLiteral("Insert a new genre to the composer catalog"),
     QStringLiteral("Rename composer catalog genre"), QStringLiteral("Remove genre(s)"),
     QStringLiteral("The following genre will be removed: "),
     QStringLiteral("The following genres will be removed: "),
     QStringLiteral("Assign selected work(s) to genre")},
    {CatalogBranch::MainWorks, QStringLiteral("Mainworks"), QStringLiteral("MainWorks"),
     QStringLiteral("MainWorkID"), QStringLiteral("MainWorkName"), QStringLiteral("Main work"),
     QStringLiteral("MainWork name"), QStringLiteral("New Main work"),
     QStringLiteral("Insert a new main work to the composer catalog"),
     QStringLiteral("Rename catalog main work"), QStringLiteral("Remove mainwork(s)"),
     QStringLiteral("The following mainwork will be removed: "),
     QStringLiteral("The following mainworks will be removed: "),
     QStringLiteral("Assign selected work(s) to main work")}};

/// Names shown in a question; with more of them the box would not fit the screen.
constexpr qsizetype namesShown = 20;

QString idList(std::span<const qint64> ids) {
    QStringList texts;
    for (const qint64 id : ids)
        texts.push_back(QString::number(id));
    return texts.join(u',');
}

} // namespace

std::span<const CatalogBranch> catalogBranches() { return branches; }

const CatalogBranch& CatalogBranch::other() const { return branches[number == Genres ? MainWorks : Genres]; }

template<typename Job>
bool ComposerCatalog::guarded(const Job& job) {
    try {
        job();
        return true;
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle, error.reason());
        return false;
    }
}

QString ComposerCatalog::composerName() { return CMIT(m_session).nameOf(ItemKind::Composer, m_composer); }

// ---- lists

std::vector<ComposerCatalog::Node> ComposerCatalog::nodes(Branch number) {
    const CatalogBranch& branch = branches[number];
    std::vector<Node> found{{0, QStringLiteral("Unclassified")}};
    guarded([&] {
        Query run = m_session.connection().query(QStringLiteral("SELECT %1, %2 FROM %3 WHERE CpsID = ")
                                                     .arg(branch.key, branch.nameColumn, branch.table) +
                                                 QString::number(m_composer) + QStringLiteral(" ORDER BY ") +
                                                 branch.nameColumn);
        while (run.next())
            found.push_back({run.integer(0), run.text(1).trimmed()});
    });
    return found;
}

bool ComposerCatalog::works(Branch number, std::optional<qint64> node, ItemList& list) {
    const CatalogBranch& branch = branches[number];
    return guarded([&] {
        ItemList found({{QStringLiteral("Title")},
                        {QStringLiteral("Opus")},
                        {QStringLiteral("Sub title")},
                        {QStringLiteral("Year")},
                        {branch.other().heading},
                        {QStringLiteral("In Collection")}});
        QHash<qint64, QString> otherNames;
        for (const Node& other : nodes(branch.other().number))
            if (other.id != 0)
                otherNames.insert(other.id, other.name);
        const bool bold =
            m_session.configuration().flag(QStringLiteral("Misc"), QStringLiteral("WorkInBold"));
        const QString acronym = CWKS(m_session).acronym(m_composer);
        QString statement =
            QStringLiteral("SELECT * FROM Compositions WHERE CpsID = ") + QString::number(m_composer);
        if (node)
            statement +=
                QStringLiteral(" AND ") + branch.key + QStringLiteral(" = ") + QString::number(*node);
        const Recordset rows = Recordset::open(m_session.connection(),
                                               statement + QStringLiteral(" ORDER BY CompNbr, CompTitle"));
        const auto text = [&](int row, const char* field) {
            return rows.value(row, QLatin1String(field)).toText().trimmed();
        };
        found.reserve(rows.rowCount());
        for (int row = 0; row < rows.rowCount(); ++row) {
            const bool owned = rows.value(row, QStringLiteral("InCollection")).toBool();
            const int line =
                found.addRow(rows.value(row, QStringLiteral("CompID")).toInteger(), QStringLiteral("Comp"),
                             {text(row, "CompTitle"), CWKS::numberText(acronym, text(row, "CompNbr")),
                              text(row, "CompSubTitle"), text(row, "CompYear"),
                              otherNames.value(rows.value(row, branch.other().key).toInteger()),
                              owned ? QStringLiteral("*") : QString()});
            found.setBold(line, owned && bold);
        }
        list = std::move(found);
    });
}

bool ComposerCatalog::hasImportedCatalog() {
    bool has = false;
    guarded([&] {
        has = m_session.connection().exists(QStringLiteral("SELECT * FROM Catalogs WHERE CpsID = ") +
                                            QString::number(m_composer));
    });
    return has;
}

bool ComposerCatalog::importedCatalogs(Session& session, ItemList& list) {
    return ComposerCatalog(session, 0).guarded([&] {
        ItemList found(
            {{QStringLiteral("Composer")}, {QStringLiteral("File")}, {QStringLiteral("Date added")}});
        Query run = session.connection().query(QStringLiteral(
            "SELECT CpsID, CpsName, FileName, DateAdded FROM Catalogs ORDER BY CpsName, DateAdded"));
        while (run.next())
            found.addRow(run.integer(0), QStringLiteral("Catalog"), {run.text(1), run.text(2), run.text(3)});
        list = std::move(found);
    });
}

// ---- names

QString ComposerCatalog::nameOf(const CatalogBranch& branch, qint64 node) {
    return m_session.connection()
        .single(
            QStringLiteral("SELECT %1 FROM %2 WHERE %3 = ").arg(branch.nameColumn, branch.table, branch.key) +
            QString::number(node))
        .toText()
        .trimmed();
}

bool ComposerCatalog::isFit(const CatalogBranch& branch, QString& name, qint64 except) {
    name = cleanName(name);
    if (name.isEmpty())
        return false;
    const int limit = m_session.fieldLengths().maxLength(branch.table, branch.nameColumn);
    if (limit > 0 && name.size() > limit)
        throw Error(tr("%1: at most %2 characters.").arg(branch.label).arg(limit));
    const bool known = m_session.connection().exists(
        QStringLiteral("SELECT * FROM ") + branch.table + QStringLiteral(" WHERE ") + branch.nameColumn +
        QStringLiteral(" LIKE '") + quotedPattern(name) + QStringLiteral("' AND CpsID = ") +
        QString::number(m_composer) + QStringLiteral(" AND %1 <> %2").arg(branch.key).arg(except));
    if (known)
        throw Error(name + QStringLiteral(" alredy exists!"));
    return true;
}

qint64 ComposerCatalog::addNamed(Branch number, const QString& text) {
    const CatalogBranch& branch = branches[number];
    qint64 id = 0;
    guarded([&] {
        QString name = text;
        if (!isFit(branch, name, 0))
            return;
        Recordset rows = Recordset::open(m_session.connection(),
                                         QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(branch.table));
        rows.add({{QStringLiteral("CpsID"), m_composer}, {branch.nameColumn, name}});
        id = m_session.connection().lastKey();
    });
    return id;
}

bool ComposerCatalog::renameTo(Branch number, qint64 node, const QString& text) {
    const CatalogBranch& branch = branches[number];
    bool renamed = false;
    guarded([&] {
        QString name = text;
        if (node != 0 && isFit(branch, name, node))
            renamed = m_session.connection().execute(QStringLiteral("UPDATE ") + branch.table +
                                                     QStringLiteral(" SET ") + branch.nameColumn +
                                                     QStringLiteral(" = '") + quoted(name) +
                                                     QStringLiteral("' WHERE ") + branch.key +
                                                     QStringLiteral(" = ") + QString::number(node)) > 0;
    });
    return renamed;
}

QString ComposerCatalog::inputName(const CatalogBranch& branch, const QString& title, const QString& prompt,
                                   const QString& button, const QString& text) {
    return m_session.messages().inputName(
        {title, prompt, branch.label, button, QStringLiteral("Catalog"), text,
         m_session.fieldLengths().maxLength(branch.table, branch.nameColumn)});
}

qint64 ComposerCatalog::add(Branch number) {
    const CatalogBranch& branch = branches[number];
    const QString name =
        inputName(branch, branch.addTitle, branch.addPrompt, QStringLiteral("Add"), QString());
    return name.isEmpty() ? 0 : addNamed(number, name);
}

bool ComposerCatalog::rename(Branch number, qint64 node) {
    const CatalogBranch& branch = branches[number];
    QString old;
    if (node == 0 || !guarded([&] { old = nameOf(branch, node); }))
        return false;
    const QString name =
        inputName(branch, branch.renamePrompt, branch.renamePrompt, QStringLiteral("Rename"), old);
    return !name.isEmpty() && renameTo(number, node, name);
}

// ---- changes

bool ComposerCatalog::remove(Branch number, const std::vector<qint64>& all) {
    const CatalogBranch& branch = branches[number];
    std::vector<qint64> chosen = all;
    std::erase(chosen, 0);
    QStringList names;
    const bool read = guarded([&] {
        for (const qint64 node : chosen)
            names.push_back(nameOf(branch, node));
    });
    if (!read || chosen.empty())
        return false;
    if (names.size() > namesShown)
        names = names.mid(0, namesShown) << tr("... (%1 in all)").arg(names.size());
    Question question;
    question.title = branch.removeTitle;
    question.text = (chosen.size() == 1 ? branch.removeOne : branch.removeSeveral) + u'\n' +
                    names.join(u'\n') + QStringLiteral("\nConfirm?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    if (m_session.messages().ask(question) != Answer::Yes)
        return false;
    return guarded([&] {
        Transaction transaction(m_session.connection());
        for (const qint64 node : chosen) {
            const QString isNode = branch.key + QStringLiteral(" = ") + QString::number(node);
            m_session.connection().execute(QStringLiteral("UPDATE Compositions SET ") + branch.key +
                                           QStringLiteral(" = 0 WHERE ") + isNode +
                                           QStringLiteral(" AND CpsID = ") + QString::number(m_composer));
            m_session.connection().execute(QStringLiteral("DELETE FROM ") + branch.table +
                                           QStringLiteral(" WHERE ") + isNode);
        }
        transaction.commit();
    });
}

bool ComposerCatalog::assign(Branch number, qint64 node, const std::vector<qint64>& works) {
    const CatalogBranch& branch = branches[number];
    return guarded([&] {
        constexpr size_t atOnce = 500;
        Transaction transaction(m_session.connection());
        const std::span<const qint64> all(works);
        for (size_t from = 0; from < all.size(); from += atOnce)
            m_session.connection().execute(
                QStringLiteral("UPDATE Compositions SET %1 = %2 WHERE CpsID = %3 AND CompID IN (")
                    .arg(branch.key)
                    .arg(node)
                    .arg(m_composer) +
                idList(all.subspan(from, std::min(atOnce, all.size() - from))) + u')');
        transaction.commit();
    });
}

bool ComposerCatalog::unassign(Branch number, const std::vector<qint64>& works) {
    Question question;
    question.title = QStringLiteral("Unassign");
    question.text = QStringLiteral("Do you want to unassign the selected work(s?)");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return !works.empty() && m_session.messages().ask(question) == Answer::Yes && assign(number, 0, works);
}

} // namespace tessaranth
