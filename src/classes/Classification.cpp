// SPDX-License-Identifier: GPL-3.0-or-later
#include "classes/Classification.h"

#include "items/ItemKind.h"
#include "items/OpenCards.h"
#include "items/Person.h"
#include "store/Guarded.h"
#include "store/Recordset.h"
#include "store/TextOrder.h"

#include <QCoreApplication>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Classification", text); }

/// The words of the input boxes and of the question for one level.
struct Words {
    const char* addHeading;
    const char* addLabel;
    const char* addTitle;
    const char* renameHeading;
    const char* renameLabel;
    const char* renameTitle;
    const char* removeTitle;
    const char* noun; ///< in the words of an operation
};
const Words words[] = {{"  New category", "Category name", "Add a new category", "  Rename category",
                        "Category name", "Rename category", "Deleting category",
                        QT_TRANSLATE_NOOP("Classification", "category")},
                       {"  New sub-category", "Sub-Category name", "Add a new sub-category",
                        "  Rename sub-category", "Sub-category name", "Rename sub-category",
                        "Deleting sub-category", QT_TRANSLATE_NOOP("Classification", "sub-category")}};

/// What a list reads of a card: the columns of its name, after the first of which it is sorted.
const char* nameColumns(int kind) {
    switch (kind) {
    case ItemKind::Composer:
        return "CpsLname, CpsFname, CpsY";
    case ItemKind::Performer:
        return "PfrLname, PfrFname";
    case ItemKind::Recording:
        return "RecTitle";
    default:
        return "UserDefTitle";
    }
}

} // namespace

Classification::Classification(Session& session, int kind, OpenCards* cards)
    : m_session(session), m_kind(kind),
      m_cards(cards), m_names{NameTable(sql("xxxClass")), NameTable(sql("xxxSubCat"))} {}

// Every statement is written once for all kinds of card. A text of the user is added after this.
QString Classification::sql(const char* text) const {
    return QString::fromLatin1(text).replace(QLatin1String("xxx"), itemKind(m_kind)->code);
}

QString Classification::prompt(bool several) const {
    return QStringLiteral("Classify ") + itemKind(m_kind)->noun +
           (several ? QStringLiteral("s: ") : QStringLiteral(": "));
}

// ---- the tree

std::optional<Classification::Tree> Classification::tree() {
    Tree tree;
    const bool isRead = guarded(m_session, [&] {
        Connection& connection = m_session.connection();
        const auto counts = [&](const char* statement) {
            QHash<qint64, int> cards;
            Query run = connection.queryNative(sql(statement).toUtf8());
            while (run.next())
                cards.insert(run.integer(0), int(run.integer(1)));
            return cards;
        };
        const QHash<qint64, int> inSubCategory =
            counts("SELECT xxxSubCatID, COUNT(DISTINCT xxxID) FROM xxxSubCatJoin GROUP BY xxxSubCatID");
        const QHash<qint64, int> inCategory =
            counts("SELECT s.xxxClassID, COUNT(DISTINCT j.xxxID) FROM xxxSubCat s JOIN xxxSubCatJoin j ON "
                   "j.xxxSubCatID = s.xxxSubCatID GROUP BY s.xxxClassID");
        QHash<qint64, size_t> place;
        for (const NameTable::Row& category : names(Category).rows(m_session, 0)) {
            place.insert(category.id, tree.categories.size());
            tree.categories.push_back({category.id, category.name, inCategory.value(category.id), {}});
        }
        const Recordset subCategories =
            Recordset::open(connection, sql("SELECT * FROM xxxSubCat ORDER BY xxxSubCatName"));
        for (int row = 0; row < subCategories.rowCount(); ++row) {
            const auto owner = place.constFind(subCategories.value(row, sql("xxxClassID")).toInteger());
            const qint64 id = subCategories.value(row, sql("xxxSubCatID")).toInteger();
            if (owner != place.constEnd())
                tree.categories[*owner].subCategories.push_back(
                    {id, subCategories.value(row, sql("xxxSubCatName")).toText().trimmed(),
                     inSubCategory.value(id)});
        }
        tree.cards = int(connection.single(sql("SELECT COUNT(*) FROM xxx")).toInteger());
        tree.unclassified = int(connection
                                    .single(sql("SELECT COUNT(*) FROM xxx WHERE xxxID NOT IN (SELECT xxxID "
                                                "FROM xxxSubCatJoin)"))
                                    .toInteger());
    });
    return isRead ? std::optional(std::move(tree)) : std::nullopt;
}

ItemList Classification::subCategories() {
    ItemList list({{QStringLiteral("Category")}, {QStringLiteral("Sub-category")}});
    Query run = m_session.connection().query(
        sql("SELECT xxxSubCat.xxxSubCatID, xxxClass.xxxClassName, xxxSubCat.xxxSubCatName FROM xxxClass "
            "INNER JOIN xxxSubCat ON xxxClass.xxxClassID = xxxSubCat.xxxClassID ORDER BY "
            "xxxClass.xxxClassName, xxxSubCat.xxxSubCatName"));
    while (run.next())
        list.addRow(run.integer(0), QStringLiteral("TvSubClass"),
                    {run.text(1).trimmed(), run.text(2).trimmed()});
    return list;
}

// ---- lists of cards

QString Classification::nameCell(const Query& run) const {
    QString name = personName(run.text(1), run.columnCount() > 2 ? run.text(2) : QString());
    if (run.columnCount() > 3)
        if (const QString years = run.text(3).trimmed(); !years.isEmpty())
            name += QStringLiteral(" (") + years + u')';
    return name;
}

bool Classification::read(const QString& condition, ItemList& list) {
    return guarded(m_session, [&] {
        const ItemKind& kind = *itemKind(m_kind);
        ItemList found({{kind.list.headings.front()}});
        Query run = m_session.connection().query(sql("SELECT xxxID, ") + QLatin1String(nameColumns(m_kind)) +
                                                 sql(" FROM xxx") + condition + QStringLiteral(" ORDER BY ") +
                                                 kind.nameColumn);
        while (run.next())
            found.addRow(run.integer(0), kind.iconKey, {nameCell(run)});
        list = std::move(found);
    });
}

bool Classification::items(qint64 subCategory, ItemList& list) {
    return read(sql(" WHERE xxxID IN (SELECT xxxID FROM xxxSubCatJoin WHERE xxxSubCatID = ") +
                    QString::number(subCategory) + u')',
                list);
}

bool Classification::itemsOfCategory(qint64 category, ItemList& list) {
    return read(sql(" WHERE xxxID IN (SELECT xxxID FROM xxxSubCatJoin WHERE xxxSubCatID IN (SELECT "
                    "xxxSubCatID FROM xxxSubCat WHERE xxxClassID = ") +
                    QString::number(category) + QStringLiteral("))"),
                list);
}

bool Classification::unclassified(ItemList& list) {
    return read(sql(" WHERE xxxID NOT IN (SELECT xxxID FROM xxxSubCatJoin)"), list);
}

bool Classification::all(ItemList& list) { return read({}, list); }

// The links are read once, card after card as their index holds them, and without the names that they lead
// to: with every card in every category the names of five million links would take most of the time.
bool Classification::globalView(ItemList& list) {
    return guarded(m_session, [&] {
        std::vector<ItemList::Heading> headings{{itemKind(m_kind)->list.headings.front()}};
        QHash<qint64, int> columns;
        for (const NameTable::Row& category : names(Category).rows(m_session, 0)) {
            columns.insert(category.id, int(headings.size()));
            headings.push_back({category.name});
        }
        ItemList found(std::move(headings));
        ItemList cards;
        if (!all(cards))
            return false;
        QHash<qint64, int> rows;
        rows.reserve(cards.rowCount());
        found.reserve(cards.rowCount());
        for (int row = 0; row < cards.rowCount(); ++row)
            rows.insert(cards.id(row), found.addRow(cards.id(row), cards.iconKey(row), {cards.text(row, 0)}));
        fillCells(rows, columns, found);
        list = std::move(found);
        return true;
    });
}

void Classification::fillCells(const QHash<qint64, int>& rows, const QHash<qint64, int>& columns,
                               ItemList& list) {
    struct Sub {
        int column;
        QString name;
    };
    std::vector<Sub> subs; // by name
    QHash<qint64, int> places;
    const Recordset stored =
        Recordset::open(m_session.connection(), sql("SELECT * FROM xxxSubCat ORDER BY xxxSubCatName"));
    for (int row = 0; row < stored.rowCount(); ++row) {
        const int column = columns.value(stored.value(row, sql("xxxClassID")).toInteger(), -1);
        if (column < 0)
            continue;
        places.insert(stored.value(row, sql("xxxSubCatID")).toInteger(), int(subs.size()));
        subs.push_back({column, stored.value(row, sql("xxxSubCatName")).toText().trimmed()});
    }

    std::vector<int> ofCard;
    const auto writeCard = [&](qint64 card) {
        const int row = rows.value(card, -1);
        std::sort(ofCard.begin(), ofCard.end());
        ofCard.erase(std::unique(ofCard.begin(), ofCard.end()), ofCard.end());
        for (const int place : ofCard) {
            const Sub& sub = subs[size_t(place)];
            if (row < 0)
                break;
            const QString& before = list.text(row, sub.column);
            list.setText(row, sub.column, before.isEmpty() ? sub.name : before + u' ' + sub.name);
        }
        ofCard.clear();
    };
    qint64 card = 0;
    Query run =
        m_session.connection().query(sql("SELECT xxxID, xxxSubCatID FROM xxxSubCatJoin ORDER BY xxxID"));
    while (run.next()) {
        if (const qint64 next = run.integer(0); next != card) {
            writeCard(card);
            card = next;
        }
        if (const auto place = places.constFind(run.integer(1)); place != places.constEnd())
            ofCard.push_back(*place);
    }
    writeCard(card);
}

// ---- one card

QString Classification::Line::text() const {
    return category + QStringLiteral(": ") + subCategories.join(QStringLiteral(" / "));
}

std::vector<Classification::Line> Classification::lines(qint64 card) {
    std::vector<Line> lines;
    Query run = m_session.connection().query(
        sql("SELECT xxxClass.xxxClassName, xxxSubCat.xxxSubCatName FROM (xxxClass INNER JOIN xxxSubCat "
            "ON xxxClass.xxxClassID = xxxSubCat.xxxClassID) INNER JOIN xxxSubCatJoin ON "
            "xxxSubCat.xxxSubCatID = xxxSubCatJoin.xxxSubCatID WHERE xxxSubCatJoin.xxxID = ") +
        QString::number(card) + sql(" ORDER BY xxxClass.xxxClassName"));
    while (run.next()) {
        const QString category = run.text(0).trimmed();
        if (lines.empty() || lines.back().category != category)
            lines.push_back({category, {}});
        lines.back().subCategories.push_back(run.text(1).trimmed());
    }
    for (Line& line : lines)
        std::sort(line.subCategories.begin(), line.subCategories.end(),
                  [](const QString& a, const QString& b) { return TextOrder::compare(a, b) < 0; });
    return lines;
}

// ---- categories and sub-categories

qint64 Classification::ownerOf(Level level, qint64 id) {
    if (level == Category)
        return 0;
    return m_session.connection()
        .single(sql("SELECT xxxClassID FROM xxxSubCat WHERE xxxSubCatID = ") + QString::number(id))
        .toInteger();
}

QString Classification::fit(Level level, qint64 owner, const QString& text, qint64 except) {
    QString name = names(level).fit(m_session, text);
    if (names(level).find(m_session, owner, name, except) != 0)
        throw Error(name + QStringLiteral(" alredy exists!"));
    return name;
}

qint64 Classification::addNamed(Level level, qint64 category, const QString& text) {
    qint64 id = 0;
    guarded(m_session, [&] {
        const QString name = fit(level, category, text, 0);
        if (level == SubCategory && names(Category).nameOf(m_session, category).isEmpty())
            throw Error(tr("This category has been deleted meanwhile."));
        Transaction transaction(m_session.connection(), tr("Add %1 %2").arg(tr(words[level].noun), name));
        const qint64 added = names(level).add(m_session, category, name);
        transaction.commit();
        id = added;
    });
    return id;
}

bool Classification::renameTo(Level level, qint64 id, const QString& text) {
    const bool renamed = guarded(m_session, [&] {
        const QString name = fit(level, ownerOf(level, id), text, id);
        Transaction transaction(m_session.connection(), tr("Rename %1 %2").arg(tr(words[level].noun), name));
        const bool found = names(level).rename(m_session, id, name);
        transaction.commit();
        return found;
    });
    if (renamed)
        reload(cardsIn(level, id));
    return renamed;
}

qint64 Classification::add(Level level, qint64 category) {
    const Words& own = words[level];
    const QString name = m_session.messages().inputName({QLatin1String(own.addTitle),
                                                         QLatin1String(own.addHeading),
                                                         QLatin1String(own.addLabel),
                                                         QStringLiteral("Add"),
                                                         QStringLiteral("Class"),
                                                         {},
                                                         names(level).maxLength(m_session)});
    return name.isEmpty() ? 0 : addNamed(level, category, name);
}

bool Classification::rename(Level level, qint64 id) {
    const Words& own = words[level];
    QString old;
    if (!guarded(m_session, [&] { old = names(level).nameOf(m_session, id); }))
        return false;
    const QString name = m_session.messages().inputName(
        {QLatin1String(own.renameTitle), QLatin1String(own.renameHeading), QLatin1String(own.renameLabel),
         QStringLiteral("Rename"), QStringLiteral("Class"), old, names(level).maxLength(m_session)});
    return !name.isEmpty() && renameTo(level, id, name);
}

bool Classification::remove(Level level, qint64 id) {
    QString name;
    std::vector<qint64> cards;
    const auto read = [&] {
        name = names(level).nameOf(m_session, id);
        cards = cardsIn(level, id);
    };
    if (!guarded(m_session, read))
        return false;
    Question question{QLatin1String(words[level].removeTitle),
                      QStringLiteral("Do you want to delete ") + name + u'?',
                      {Answer::Ok, Answer::Cancel},
                      Answer::Cancel};
    if (!cards.empty())
        question.text += QStringLiteral("\n\n") + tr("Cards that lose it: %1").arg(cards.size());
    if (m_session.messages().ask(question) != Answer::Ok)
        return false;
    const bool removed = guarded(m_session, [&] {
        Connection& connection = m_session.connection();
        const QString isNode = names(level).key + QStringLiteral(" = ") + QString::number(id);
        Transaction transaction(connection, tr("Delete %1 %2").arg(tr(words[level].noun), name));
        if (level == Category) {
            connection.execute(sql("DELETE FROM xxxSubCatJoin WHERE xxxSubCatID IN (SELECT xxxSubCatID FROM "
                                   "xxxSubCat WHERE ") +
                               isNode + u')');
            connection.execute(sql("DELETE FROM xxxSubCat WHERE ") + isNode);
        } else {
            connection.execute(sql("DELETE FROM xxxSubCatJoin WHERE ") + isNode);
        }
        connection.execute(QStringLiteral("DELETE FROM ") + names(level).table + QStringLiteral(" WHERE ") +
                           isNode);
        transaction.commit();
    });
    if (removed)
        reload(cards);
    return removed;
}

// ---- which cards are where

std::vector<qint64> Classification::cardsIn(Level level, qint64 id) {
    std::vector<qint64> cards;
    if (!m_cards)
        return cards;
    ItemList list;
    level == Category ? itemsOfCategory(id, list) : items(id, list);
    for (int row = 0; row < list.rowCount(); ++row)
        cards.push_back(list.id(row));
    return cards;
}

void Classification::reload(const std::vector<qint64>& cards) {
    if (m_cards)
        for (const qint64 id : cards)
            m_cards->reloadCard(OpenCards::key(itemKind(m_kind)->code, id));
}

QSet<qint64> Classification::allSubCategories() {
    QSet<qint64> ids;
    Query run = m_session.connection().query(sql("SELECT xxxSubCatID FROM xxxSubCat"));
    while (run.next())
        ids.insert(run.integer(0));
    return ids;
}

QHash<qint64, int> Classification::memberships(const std::vector<qint64>& cards) {
    QHash<qint64, int> counts;
    const QSet<qint64> known = allSubCategories();
    for (const qint64 card : cards) {
        Query run = m_session.connection().query(
            sql("SELECT DISTINCT xxxSubCatID FROM xxxSubCatJoin WHERE xxxID = ") + QString::number(card));
        while (run.next())
            if (known.contains(run.integer(0)))
                ++counts[run.integer(0)];
    }
    return counts;
}

// Rows that stay are not written again.
void Classification::assignOne(qint64 card, const QSet<qint64>& subCategories,
                               const QSet<qint64>& untouched) {
    Recordset rows = Recordset::open(
        m_session.connection(), sql("SELECT * FROM xxxSubCatJoin WHERE xxxID = ") + QString::number(card));
    QSet<qint64> missing = subCategories;
    for (int row = rows.rowCount() - 1; row >= 0; --row) {
        const qint64 id = rows.value(row, sql("xxxSubCatID")).toInteger();
        missing.remove(id);
        if (!subCategories.contains(id) && !untouched.contains(id))
            rows.remove(row);
    }
    for (const qint64 id : missing)
        rows.add({{sql("xxxID"), card}, {sql("xxxSubCatID"), id}});
}

bool Classification::assign(const std::vector<qint64>& cards, const QSet<qint64>& subCategories,
                            const QSet<qint64>& untouched) {
    const bool assigned = guarded(m_session, [&] {
        const QSet<qint64> known = allSubCategories();
        for (const qint64 id : subCategories)
            if (!known.contains(id))
                throw Error(tr("There is no sub-category with the number %1.").arg(id));
        Transaction transaction(m_session.connection(), tr("Classify %1 cards").arg(cards.size()));
        for (const qint64 card : cards)
            if (m_session.connection().exists(sql("SELECT xxxID FROM xxx WHERE xxxID = ") +
                                              QString::number(card)))
                assignOne(card, subCategories, untouched);
        transaction.commit();
    });
    if (assigned)
        reload(cards);
    return assigned;
}

bool Classification::put(const std::vector<qint64>& cards, qint64 subCategory) {
    QSet<qint64> others;
    return guarded(m_session, [&] { others = allSubCategories() - QSet<qint64>{subCategory}; }) &&
           assign(cards, {subCategory}, others);
}

} // namespace tessaranth
