// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/ComposerCatalog.h"

#include "items/CMIT.h"
#include "items/CardOwner.h"
#include "items/DeletionCounts.h"
#include "store/Guarded.h"
#include "store/Recordset.h"
#include "works/CWKS.h"

#include <QCoreApplication>
#include <QHash>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("ComposerCatalog", text); }

const CatalogBranch branches[] = {
    {CatalogBranch::Genres, QStringLiteral("Catalog genres"), NameTable(QStringLiteral("CpsGenres")),
     QStringLiteral("Catalog genre"), QStringLiteral("New catalog genre"),
     QStringLiteral("Insert a new genre to the composer catalog"),
     QStringLiteral("Rename composer catalog genre"), QStringLiteral("Remove genre(s)"),
     QStringLiteral("The following genre will be removed: "),
     QStringLiteral("The following genres will be removed: "),
     QStringLiteral("Assign selected work(s) to genre")},
    {CatalogBranch::MainWorks, QStringLiteral("Mainworks"), NameTable(QStringLiteral("MainWorks")),
     QStringLiteral("Main work"), QStringLiteral("New Main work"),
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

QString ComposerCatalog::composerName() { return CMIT(m_session).nameOf(ItemKind::Composer, m_composer); }

// ---- lists

std::vector<ComposerCatalog::Node> ComposerCatalog::nodes(Branch number) {
    std::vector<Node> found{{0, QStringLiteral("Unclassified")}};
    const std::vector<Node> named = branches[number].names.rows(m_session, m_composer);
    found.insert(found.end(), named.begin(), named.end());
    return found;
}

bool ComposerCatalog::works(Branch number, std::optional<qint64> node, ItemList& list) {
    const CatalogBranch& branch = branches[number];
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Title")},
                        {QStringLiteral("Opus"), false, true},
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
                QStringLiteral(" AND ") + branch.names.key + QStringLiteral(" = ") + QString::number(*node);
        const Recordset rows = Recordset::open(m_session.connection(),
                                               statement + QStringLiteral(" ORDER BY CompNbr, CompTitle"));
        const auto text = [&](int row, const char* field) {
            return rows.value(row, QLatin1String(field)).toText().trimmed();
        };
        found.reserve(rows.rowCount());
        for (const int row :
             CWKS::catalogueOrder(rows, rows.fieldIndex(QStringLiteral("CompNbr")), acronym)) {
            const bool owned = rows.value(row, QStringLiteral("InCollection")).toBool();
            const int line =
                found.addRow(rows.value(row, QStringLiteral("CompID")).toInteger(), QStringLiteral("Comp"),
                             {text(row, "CompTitle"), CWKS::numberText(acronym, text(row, "CompNbr")),
                              text(row, "CompSubTitle"), text(row, "CompYear"),
                              otherNames.value(rows.value(row, branch.other().names.key).toInteger()),
                              owned ? QStringLiteral("*") : QString()});
            found.setBold(line, owned && bold);
        }
        list = std::move(found);
    });
}

bool ComposerCatalog::hasImportedCatalog() {
    return m_session.connection().exists(QStringLiteral("SELECT * FROM Catalogs WHERE CpsID = ") +
                                         QString::number(m_composer));
}

bool ComposerCatalog::importedCatalogs(Session& session, ItemList& list) {
    return guarded(session, [&] {
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

QString ComposerCatalog::fit(const CatalogBranch& branch, const QString& text, qint64 except) {
    QString name = branch.names.fit(m_session, text);
    if (branch.names.find(m_session, m_composer, name, except) != 0)
        throw Error(name + QStringLiteral(" alredy exists!"));
    return name;
}

qint64 ComposerCatalog::addNamed(Branch number, const QString& text) {
    const CatalogBranch& branch = branches[number];
    qint64 id = 0;
    if (!CardOwner{QStringLiteral("Cps"), m_composer}.require(m_session))
        return 0;
    guarded(m_session, [&] {
        const QString name = fit(branch, text, 0);
        Transaction transaction(m_session.connection(), tr("Add %1 to %2").arg(name, composerName()));
        const qint64 added = branch.names.add(m_session, m_composer, name);
        transaction.commit();
        id = added;
    });
    return id;
}

bool ComposerCatalog::renameTo(Branch number, qint64 node, const QString& text) {
    const CatalogBranch& branch = branches[number];
    return node != 0 && guarded(m_session, [&] {
               const QString name = fit(branch, text, node);
               Transaction transaction(m_session.connection(), tr("Rename %1").arg(name));
               const bool found = branch.names.rename(m_session, node, name);
               transaction.commit();
               return found;
           });
}

QString ComposerCatalog::inputName(const CatalogBranch& branch, const QString& title, const QString& prompt,
                                   const QString& button, const QString& text) {
    return m_session.messages().inputName({title, prompt, branch.names.label(), button,
                                           QStringLiteral("Catalog"), text,
                                           branch.names.maxLength(m_session)});
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
    if (node == 0 || !guarded(m_session, [&] { old = branch.names.nameOf(m_session, node); }))
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
    QString counts;
    const bool read = guarded(m_session, [&] {
        for (const qint64 node : chosen)
            names.push_back(branch.names.nameOf(m_session, node));
        counts = deletionCounts(m_session.connection(), branch.names.table, chosen);
    });
    if (!read || chosen.empty())
        return false;
    if (names.size() > namesShown)
        names = names.mid(0, namesShown) << tr("... (%1 in all)").arg(names.size());
    Question question;
    question.title = branch.removeTitle;
    question.text = (chosen.size() == 1 ? branch.removeOne : branch.removeSeveral) + u'\n' +
                    names.join(u'\n') + QStringLiteral("\nConfirm?") + counts;
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    if (m_session.messages().ask(question) != Answer::Yes)
        return false;
    return guarded(m_session, [&] {
        Transaction transaction(m_session.connection(),
                                tr("Delete %1").arg(names.join(QStringLiteral(", "))));
        for (const qint64 node : chosen) {
            const QString isNode = branch.names.key + QStringLiteral(" = ") + QString::number(node);
            m_session.connection().execute(QStringLiteral("UPDATE Compositions SET ") + branch.names.key +
                                           QStringLiteral(" = 0 WHERE ") + isNode +
                                           QStringLiteral(" AND CpsID = ") + QString::number(m_composer));
            m_session.connection().execute(QStringLiteral("DELETE FROM ") + branch.names.table +
                                           QStringLiteral(" WHERE ") + isNode);
        }
        transaction.commit();
    });
}

bool ComposerCatalog::assign(Branch number, qint64 node, const std::vector<qint64>& works) {
    const CatalogBranch& branch = branches[number];
    return guarded(m_session, [&] {
        constexpr size_t atOnce = 500;
        Transaction transaction(m_session.connection(),
                                tr("Classify %1 works of %2").arg(works.size()).arg(composerName()));
        const std::span<const qint64> all(works);
        for (size_t from = 0; from < all.size(); from += atOnce)
            m_session.connection().execute(
                QStringLiteral("UPDATE Compositions SET %1 = %2 WHERE CpsID = %3 AND CompID IN (")
                    .arg(branch.names.key)
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
