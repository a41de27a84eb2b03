// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Operations.h"

#include "attachments/CardDocuments.h"
#include "attachments/CardImages.h"
#include "attachments/CardLinks.h"
#include "attachments/CardMedia.h"
#include "attachments/CardRelations.h"
#include "classes/Classification.h"
#include "items/CMIT.h"
#include "items/CustomCards.h"
#include "items/LabelEditor.h"
#include "items/PersonArchive.h"
#include "recordings/RecordingEditor.h"
#include "support/CommandLine.h"
#include "support/Pictures.h"
#include "works/CWKS.h"
#include "works/CatalogFile.h"
#include "works/ComposerCatalog.h"
#include "works/KeyNames.h"

#include <QDir>

namespace tessaranth {

struct Operations::Entry {
    const char* name;
    void (Operations::*run)();
};

const Operations::Entry Operations::entries[] = {{"person", &Operations::person},
                                                 {"specs", &Operations::specs},
                                                 {"artists", &Operations::artists},
                                                 {"works", &Operations::works},
                                                 {"cast", &Operations::cast},
                                                 {"tracks", &Operations::tracks},
                                                 {"newWorks", &Operations::newWorks},
                                                 {"deleteItem", &Operations::deleteItem},
                                                 {"mergeItems", &Operations::mergeItems},
                                                 {"custom", &Operations::custom},
                                                 {"lookup", &Operations::lookup},
                                                 {"logo", &Operations::logo},
                                                 {"work", &Operations::work},
                                                 {"deleteWork", &Operations::deleteWork},
                                                 {"character", &Operations::character},
                                                 {"deleteCharacters", &Operations::deleteCharacters},
                                                 {"group", &Operations::group},
                                                 {"assignGroup", &Operations::assignGroup},
                                                 {"removeGroup", &Operations::removeGroup},
                                                 {"importCatalog", &Operations::importCatalog},
                                                 {"removeCatalog", &Operations::removeCatalog},
                                                 {"importPersons", &Operations::importPersons},
                                                 {"category", &Operations::category},
                                                 {"removeCategory", &Operations::removeCategory},
                                                 {"classify", &Operations::classify},
                                                 {"picture", &Operations::picture},
                                                 {"document", &Operations::document},
                                                 {"removeFile", &Operations::removeFile},
                                                 {"media", &Operations::media},
                                                 {"removeMedia", &Operations::removeMedia},
                                                 {"link", &Operations::link},
                                                 {"removeLink", &Operations::removeLink},
                                                 {"relation", &Operations::relation},
                                                 {"keyName", &Operations::keyName}};

QString Operations::next() {
    ++m_step;
    const Entry& entry = entries[below(int(std::size(entries)))];
    (this->*entry.run)();
    return QString::fromLatin1(entry.name);
}

// ---- chance

std::vector<qint64> Operations::some(const QString& query, int most) {
    std::vector<qint64> all;
    Query run = session().connection().query(query);
    while (run.next())
        all.push_back(run.integer(0));
    std::vector<qint64> chosen;
    for (int count = all.empty() ? 0 : 1 + below(most); count > 0 && !all.empty(); --count) {
        const auto at = all.begin() + below(int(all.size()));
        chosen.push_back(*at);
        all.erase(at);
    }
    return chosen;
}

qint64 Operations::any(const QString& query) {
    const std::vector<qint64> one = some(query, 1);
    return one.empty() ? 0 : one.front();
}

qint64 Operations::anyOf(int kind) {
    const ItemKind& what = *itemKind(kind);
    return any(QStringLiteral("SELECT %1 FROM %2").arg(what.key, what.table));
}

QString Operations::word(const QString& beginning) {
    return QStringLiteral("%1 é'%2").arg(beginning).arg(m_random.generate());
}

CardOwner Operations::card() {
    const int kind = 1 + below(5);
    if (kind == 5)
        return {QStringLiteral("Comp"), any(QStringLiteral("SELECT CompID FROM Compositions"))};
    return {itemKind(kind)->code, anyOf(kind)};
}

// ---- items

void Operations::person() {
    const int kind = 1 + below(2);
    CMIT items(session());
    Person person = below(2) ? Person() : items.person(kind, anyOf(kind));
    person.last = word(QStringLiteral("Person"));
    person.born = below(2) ? QStringLiteral("1801") : QString();
    items.ModificaItem(kind, person);
}

void Operations::deleteItem() {
    const int kind = 1 + below(8);
    const ItemKind& what = *itemKind(kind);
    NoProgress progress;
    CMIT(session()).EliminaItem(kind, some(QStringLiteral("SELECT %1 FROM %2").arg(what.key, what.table), 2),
                                progress);
}

void Operations::mergeItems() {
    const int kind = 1 + below(8);
    const qint64 from = anyOf(kind);
    const qint64 to = anyOf(kind);
    if (from == to)
        return;
    CMIT(session()).Migra(kind, from, to);
}

void Operations::custom() {
    qint64 id = below(2) ? 0 : anyOf(ItemKind::Custom);
    CustomCards(session()).save(id, word(QStringLiteral("Custom")));
}

void Operations::lookup() {
    const int kind = ItemKind::Genre + below(4);
    CMIT items(session());
    if (below(2))
        items.addNamed(kind, word(QStringLiteral("Name")));
    else
        items.rename(kind, anyOf(kind), word(QStringLiteral("Name")));
}

void Operations::logo() {
    qint64 id = below(3) ? anyOf(ItemKind::Label) : 0;
    LogoChange change{LogoChange::What(below(3)), encoded(halves({8 + below(9), 8}), "PNG")};
    LabelEditor(session()).save(id, word(QStringLiteral("Label")), change);
}

// ---- recordings

void Operations::specs() {
    RecordingEditor editor(session(), below(2) ? 0 : anyOf(ItemKind::Recording));
    RecordingSpecs specs = editor.specs();
    specs.set("RecTitle", word(QStringLiteral("Recording")));
    specs.set("LabelID", anyOf(ItemKind::Label));
    specs.set("UnitsNbr", 1 + below(3));
    specs.set("Notes", below(2) ? word(QStringLiteral("Notes\n")) : QString());
    editor.applySpecs(specs);
}

void Operations::artists() {
    RecordingEditor(session(), anyOf(ItemKind::Recording))
        .applyArtists(some(QStringLiteral("SELECT CpsID FROM Cps"), 3),
                      some(QStringLiteral("SELECT PfrID FROM Pfr"), 4));
}

void Operations::works() {
    RecordingEditor editor(session(), anyOf(ItemKind::Recording));
    std::vector<PlacedWork> works = editor.works();
    if (below(4) == 0)
        works.clear();
    else if (!works.empty() && below(2))
        works.erase(works.begin() + below(int(works.size())));
    for (const RecordingArtist& composer : editor.composers())
        for (const qint64 work :
             some(QStringLiteral("SELECT CompID FROM Compositions WHERE CpsID = %1").arg(composer.id), 2)) {
            PlacedWork placed;
            placed.composer = composer.id;
            placed.work = work;
            placed.excerpt = below(2) ? word(QStringLiteral("Excerpt")) : QString();
            works.push_back(placed);
        }
    editor.applyWorks(works);
}

void Operations::cast() {
    RecordingEditor editor(session(), any(QStringLiteral("SELECT RecID FROM CompOnRec")));
    const std::vector<PlacedWork> works = editor.works();
    if (works.empty())
        return;
    const PlacedWork& placed = works[size_t(below(int(works.size())))];
    std::vector<Casting> cast;
    for (const RecordingArtist& performer : editor.performers())
        if (below(2))
            cast.push_back(
                {performer.id, any(QStringLiteral("SELECT PersonageID FROM Personages WHERE CompID = %1")
                                       .arg(placed.work))});
    editor.applyCast(placed.id, cast);
}

void Operations::tracks() {
    std::vector<Track> tracks;
    for (int count = below(6); count > 0; --count)
        tracks.push_back({word(QStringLiteral("Track")), QStringLiteral("03:0%1").arg(count)});
    RecordingEditor(session(), anyOf(ItemKind::Recording))
        .applyTracks(1, tracks, QStringLiteral("%1").arg(m_random.generate(), 8, 16, QLatin1Char('0')));
}

void Operations::newWorks() {
    RecordingEditor(session(), anyOf(ItemKind::Recording))
        .addWorks(anyOf(ItemKind::Composer),
                  {{word(QStringLiteral("Work")), {}, 0}, {word(QStringLiteral("Work")), {}, 0}},
                  below(2) != 0);
}

// ---- works

void Operations::work() {
    CWKS works(session());
    Work work = below(2) ? Work() : works.work(any(QStringLiteral("SELECT CompID FROM Compositions")));
    if (work.id == 0)
        work.composer = anyOf(ItemKind::Composer);
    work.title = word(QStringLiteral("Work"));
    work.genre = anyOf(ItemKind::Genre);
    works.ModificaWork(work);
}

void Operations::deleteWork() {
    const std::vector<qint64> ids = some(QStringLiteral("SELECT CompID FROM Compositions"), 3);
    if (ids.empty())
        return;
    if (ids.size() == 1)
        CWKS(session()).EliminaWork(ids.front());
    else
        CWKS(session()).EliminaWorkBatch(ids);
}

void Operations::character() {
    CWKS works(session());
    if (below(3))
        works.addCharacter(any(QStringLiteral("SELECT CompID FROM Compositions")),
                           word(QStringLiteral("Role")));
    else
        works.renameCharacter(any(QStringLiteral("SELECT PersonageID FROM Personages")),
                              word(QStringLiteral("Role")));
}

void Operations::deleteCharacters() {
    CWKS(session()).deleteCharacters(some(QStringLiteral("SELECT PersonageID FROM Personages"), 3));
}

void Operations::group() {
    ComposerCatalog catalog(session(), any(QStringLiteral("SELECT CpsID FROM Compositions")));
    const auto branch = CatalogBranch::Number(below(2));
    if (below(3))
        catalog.addNamed(branch, word(QStringLiteral("Group")));
    else
        catalog.renameTo(branch, catalog.nodes(branch).back().id, word(QStringLiteral("Group")));
}

void Operations::assignGroup() {
    const qint64 composer = any(QStringLiteral("SELECT CpsID FROM Compositions"));
    ComposerCatalog catalog(session(), composer);
    const auto branch = CatalogBranch::Number(below(2));
    catalog.assign(branch, catalog.nodes(branch).back().id,
                   some(QStringLiteral("SELECT CompID FROM Compositions WHERE CpsID = %1").arg(composer), 5));
}

void Operations::removeGroup() {
    ComposerCatalog catalog(session(), any(QStringLiteral("SELECT CpsID FROM CpsGenres")));
    const qint64 node = catalog.nodes(CatalogBranch::Genres).back().id;
    if (node == 0)
        return;
    catalog.remove(CatalogBranch::Genres, {node});
}

void Operations::importCatalog() {
    const QDir catalogs(QStringLiteral(TESSARANTH_SHARE "/catalogs"));
    const QStringList files =
        catalogs.entryList({QStringLiteral("*.tcat")}, QDir::Files, QDir::Size | QDir::Reversed);
    NoProgress progress;
    CatalogFile(session(), anyOf(ItemKind::Composer)).importFrom(catalogs.filePath(files.front()), progress);
}

void Operations::removeCatalog() {
    NoProgress progress;
    CatalogFile(session(), any(QStringLiteral("SELECT CpsID FROM Catalogs"))).removeImported(progress);
}

void Operations::importPersons() {
    const int kind = 1 + below(2);
    if (auto archive = PersonArchive::open(session(), kind)) {
        NoProgress progress;
        archive->import({1 + below(40), 41 + below(40)}, progress);
    }
}

// ---- classes

void Operations::category() {
    const int kind = 1 + below(4);
    Classification classes(session(), kind);
    const QString code = itemKind(kind)->code;
    const qint64 category = any(QStringLiteral("SELECT %1ClassID FROM %1Class").arg(code));
    switch (below(4)) {
    case 0:
        classes.addNamed(Classification::Category, 0, word(QStringLiteral("Class")));
        break;
    case 1:
        classes.renameTo(Classification::Category, category, word(QStringLiteral("Class")));
        break;
    case 2:
        classes.renameTo(Classification::SubCategory,
                         any(QStringLiteral("SELECT %1SubCatID FROM %1SubCat").arg(code)),
                         word(QStringLiteral("Sub")));
        break;
    default:
        classes.addNamed(Classification::SubCategory, category, word(QStringLiteral("Sub")));
    }
}

void Operations::removeCategory() {
    const int kind = 1 + below(4);
    const QString code = itemKind(kind)->code;
    const bool whole = below(2);
    Classification(session(), kind)
        .remove(whole ? Classification::Category : Classification::SubCategory,
                any((whole ? QStringLiteral("SELECT %1ClassID FROM %1Class")
                           : QStringLiteral("SELECT %1SubCatID FROM %1SubCat"))
                        .arg(code)));
}

void Operations::classify() {
    const int kind = 1 + below(4);
    const QString code = itemKind(kind)->code;
    QSet<qint64> into;
    for (const qint64 id : some(QStringLiteral("SELECT %1SubCatID FROM %1SubCat").arg(code), 3))
        into.insert(id);
    Classification(session(), kind).assign(some(QStringLiteral("SELECT %1ID FROM %1").arg(code), 4), into);
}

// ---- what hangs off cards

void Operations::picture() {
    const qint64 image = any(QStringLiteral("SELECT ImageID FROM Images"));
    CardImages images(session(), card());
    const QImage picture = halves({4 + below(30), 6});
    switch (below(4)) {
    case 0:
        images.replace(image, picture);
        break;
    case 1:
        images.rename(image, word(QStringLiteral("Picture")));
        break;
    default:
        images.add(picture, word(QStringLiteral("Picture")));
    }
}

void Operations::document() {
    const qint64 id = any(QStringLiteral("SELECT CardID FROM Cards"));
    CardDocuments documents(session(), card());
    const QByteArray rtf = "{\\rtf1 " + word(QStringLiteral("text")).toLatin1() + '}';
    if (below(3))
        documents.add(rtf, word(QStringLiteral("Document")));
    else
        documents.rewrite(id, rtf);
}

void Operations::removeFile() {
    const bool isImage = below(2);
    Query run = session().connection().query(
        isImage ? QStringLiteral("SELECT ImageID, RelatedCat, RelatedID FROM Images")
                : QStringLiteral("SELECT CardID, RelatedCat, RelatedID FROM Cards"));
    if (!run.next())
        return;
    const CardOwner owner{run.text(1), run.integer(2)};
    const qint64 id = run.integer(0);
    if (isImage)
        CardImages(session(), owner).remove(id);
    else
        CardDocuments(session(), owner).remove(id);
}

void Operations::media() {
    CardMedia media(session(), {QStringLiteral("Rec"), anyOf(ItemKind::Recording)});
    NoProgress progress;
    if (below(2))
        media.add({m_home.file(QStringLiteral("WKeys.dat")), m_home.catalog()}, progress);
    else
        media.rename(any(QStringLiteral("SELECT MediaID FROM Media")), word(QStringLiteral("Media")));
}

void Operations::removeMedia() {
    const std::vector<qint64> ids = some(QStringLiteral("SELECT MediaID FROM Media"), 3);
    if (ids.empty())
        return;
    NoProgress progress;
    CardMedia(session(), {QStringLiteral("Rec"), 1}).Remove_Media(ids, progress);
}

void Operations::link() {
    CardLinks links(session(), {QStringLiteral("Cps"), anyOf(ItemKind::Composer)});
    WebLink link{
        below(2) ? 0 : any(QStringLiteral("SELECT WebID FROM Web")), word(QStringLiteral("http://")), {}};
    links.save(link);
}

void Operations::removeLink() {
    const std::vector<qint64> ids = some(QStringLiteral("SELECT WebID FROM Web"), 2);
    if (ids.empty())
        return;
    CardLinks(session(), {QStringLiteral("Cps"), 1}).Remove_Web(ids);
}

void Operations::relation() {
    const int kind = 1 + below(3);
    CardRelations relations(session(), {QStringLiteral("UserDef"), anyOf(ItemKind::Custom)});
    relations.change(kind, {anyOf(kind), anyOf(kind)}, {anyOf(kind)});
}

void Operations::keyName() {
    KeyNames(session()).rename(any(QStringLiteral("SELECT WKeysID FROM WKeys")), word(QStringLiteral("Key")));
}

// ---- what a catalog is compared by

QMap<QString, QStringList> rowsOf(Session& session, bool withMarks) {
    QMap<QString, QStringList> rows;
    Connection& connection = session.connection();
    for (const QString& table : connection.tables()) {
        if (table == QLatin1String("TsrHistory"))
            continue;
        QStringList columns;
        for (const QString& column : connection.columnsOf(table))
            if (!column.startsWith(QLatin1String("LastState")) &&
                (withMarks || (column != QLatin1String("InCollection") && column != QLatin1String("Pers"))))
                columns << QStringLiteral("quote(%1)").arg(column);
        Query run = connection.queryNative("SELECT " + columns.join(QStringLiteral("||'|'||")).toUtf8() +
                                           " FROM " + table.toUtf8());
        QStringList& found = rows[table];
        while (run.next())
            found << run.text(0);
        found.sort();
    }
    return rows;
}

QMap<QString, QByteArray> dataFilesOf(const TestHome& home) {
    QMap<QString, QByteArray> files;
    for (const auto folder : {Session::Folder::Images, Session::Folder::Documents, Session::Folder::Labels}) {
        const QString path = home.session->dataFolder(folder);
        const QMap<QString, QByteArray> found = filesOf(path);
        for (auto file = found.begin(); file != found.end(); ++file)
            if (!file.key().contains(u'/'))
                files.insert(path + u'/' + file.key(), file.value());
    }
    return files;
}

} // namespace tessaranth
