// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/CardMedia.h"

#include "items/DeletionCounts.h"
#include "items/Person.h"
#include "platform/Programs.h"
#include "platform/Progress.h"
#include "platform/Volumes.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CardMedia", text); }

constexpr qsizetype namesShown = 10;
const QString table = QStringLiteral("Media");

QString byId(qint64 id) { return QStringLiteral(" FROM Media WHERE MediaID = ") + QString::number(id); }

/// What the system knows of a file, cut to the widths of the columns.
Recordset::Assignments factsOf(Session& session, const QFileInfo& file) {
    const QString path = file.absoluteFilePath();
    const Volume volume = volumeOf(path);
    const auto cut = [&](const char* column, const QString& text) {
        const QString name = QString::fromLatin1(column);
        return std::pair<QString, Value>(name, session.fields().cut(table, name, text));
    };
    return {{QStringLiteral("MediaFolder"), QDir::toNativeSeparators(file.absolutePath())},
            {QStringLiteral("MediaSize"), file.size()},
            cut("MediaType", fileTypeName(path)),
            cut("VolumeName", volume.name),
            cut("VolumeType", volume.type)};
}

bool fits(Session& session, const char* column, const QString& text) {
    return session.fields().fits(table, QLatin1String(column), text);
}

/// A name without a place in it: with one the file would lie elsewhere than the card says.
bool isFileName(const QString& name) {
    return !name.isEmpty() && name != u"." && name != u".." && QFileInfo(name).fileName() == name;
}

/// A place that is the same wherever the program was started.
bool isWholePath(const QString& folder) {
    const QString path = QDir::fromNativeSeparators(folder);
    return QDir::isAbsolutePath(path) && !path.split(u'/').contains(QStringLiteral(".."));
}

} // namespace

QString MediaFile::path() const {
    const QString place = QDir::fromNativeSeparators(folder);
    return place.endsWith(u'/') ? place + file : place + u'/' + file;
}

bool CardMedia::LoadMedia(ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{QStringLiteral("Media title")},
                        {QStringLiteral("File name")},
                        {QStringLiteral("Size"), true},
                        {QStringLiteral("Type")},
                        {QStringLiteral("Volume name")},
                        {QStringLiteral("Location")}});
        const Recordset rows = Recordset::open(
            m_session.connection(), QStringLiteral("SELECT * FROM Media WHERE ") + m_card.condition() +
                                        QStringLiteral(" ORDER BY MediaTitle"));
        const char* const columns[] = {"MediaTitle", "MediaFile",  "MediaSize",
                                       "MediaType",  "VolumeName", "MediaFolder"};
        const int key = rows.fieldIndex(QStringLiteral("MediaID"));
        for (int row = 0; row < rows.rowCount(); ++row) {
            found.addRow(rows.value(row, key).toInteger(), QStringLiteral("Media"), {});
            for (int column = 0; column < int(std::size(columns)); ++column)
                found.setText(row, column,
                              rows.value(row, QLatin1String(columns[column])).toText().trimmed());
        }
        list = std::move(found);
        return true;
    });
}

MediaFile CardMedia::media(qint64 id) {
    const Recordset rows = Recordset::open(m_session.connection(), QStringLiteral("SELECT *") + byId(id));
    if (rows.isEmpty())
        return {};
    const auto text = [&rows](const char* column) { return rows.value(0, QLatin1String(column)).toText(); };
    return {id,
            text("MediaTitle"),
            text("MediaFile"),
            text("MediaFolder"),
            rows.value(0, QStringLiteral("MediaSize")).toInteger(),
            text("MediaType"),
            text("VolumeName"),
            text("VolumeType")};
}

void CardMedia::nameSkipped(const QStringList& names, const QString& reason) {
    if (names.isEmpty())
        return;
    QString text = reason + u'\n' + names.mid(0, namesShown).join(u'\n');
    if (names.size() > namesShown)
        text += u'\n' + tr("... (%1 in all)").arg(names.size());
    m_session.messages().warning(applicationTitle, text);
}

int CardMedia::add(const QStringList& files, Progress& progress) {
    QStringList noFiles, tooLong;
    int added = 0;
    const bool done = guarded(m_session, [&] {
        m_card.require(m_session);
        progress.stage(tr("Adding media files"));
        Transaction transaction(m_session.connection(), tr("Add media to %1").arg(m_card.name(m_session)));
        Recordset rows = Recordset::open(m_session.connection(),
                                         QStringLiteral("SELECT * FROM Media WHERE ") + m_card.condition());
        for (qsizetype i = 0; i < files.size() && !progress.stopped(); ++i) {
            const QFileInfo file(files[i]);
            if (!file.isFile()) {
                noFiles << files[i];
            } else if (!fits(m_session, "MediaFile", file.fileName()) ||
                       !fits(m_session, "MediaFolder", file.absolutePath())) {
                tooLong << files[i];
            } else {
                const QString name = cleanName(file.completeBaseName());
                Recordset::Assignments values = factsOf(m_session, file);
                values.insert(values.begin(),
                              {{QStringLiteral("RelatedID"), m_card.id},
                               {QStringLiteral("RelatedCat"), m_card.code},
                               {QStringLiteral("MediaTitle"),
                                m_session.fields().cut(table, QStringLiteral("MediaTitle"),
                                                       name.isEmpty() ? cleanName(file.fileName()) : name)},
                               {QStringLiteral("MediaFile"), file.fileName()}});
                rows.add(values);
                ++added;
            }
            progress.step(i + 1, files.size());
        }
        transaction.commit();
        return true;
    });
    if (!done)
        return -1;
    nameSkipped(noFiles, tr("Not added, since these are no files:"));
    nameSkipped(tooLong, tr("Not added, since the name or the path is too long:"));
    return added;
}

bool CardMedia::rename(qint64 id, const QString& text) {
    return guarded(m_session, [&] {
        const QString title = m_session.fields().fit(table, QStringLiteral("MediaTitle"), text);
        Recordset row =
            Recordset::open(m_session.connection(), QStringLiteral("SELECT MediaTitle") + byId(id));
        if (row.isEmpty())
            throw Error(tr("This item has been deleted meanwhile."));
        Transaction transaction(m_session.connection(), tr("Rename media %1").arg(title));
        row.update(0, {{QStringLiteral("MediaTitle"), title}});
        transaction.commit();
        return true;
    });
}

bool CardMedia::Rename_Media(qint64 id) {
    MediaFile file;
    if (!guarded(m_session, [&] { file = requireMedia(id); }))
        return false;
    NameRequest request;
    request.title = QStringLiteral("Rename the selected media");
    request.heading = QStringLiteral("Rename Media");
    request.label = QStringLiteral("Media title");
    request.button = QStringLiteral("Rename");
    request.iconKey = QStringLiteral("Media");
    request.defaultText = file.title;
    const QString title = m_session.messages().inputName(request);
    return !title.isEmpty() && rename(id, title);
}

bool CardMedia::Remove_Media(const std::vector<qint64>& ids, Progress& progress) {
    Question question;
    question.title = QStringLiteral("Remove media");
    question.text = QStringLiteral("Do you want to remove the selected media?\n"
                                   "Note: This will not affect the files itself. "
                                   "Only database entries will be removed.") +
                    selectedCount(ids.size());
    question.defaultButton = Answer::Cancel;
    if (ids.empty() || m_session.messages().ask(question) != Answer::Ok)
        return false;
    return guarded(m_session, [&] {
        progress.stage(tr("Removing media"));
        Transaction transaction(m_session.connection(),
                                tr("Remove %1 media from %2").arg(ids.size()).arg(m_card.name(m_session)));
        qint64 done = 0;
        for (const qint64 id : ids) {
            m_session.connection().execute(QStringLiteral("DELETE") + byId(id));
            progress.step(++done, qint64(ids.size()));
        }
        transaction.commit();
        return true;
    });
}

int CardMedia::moveTo(const std::vector<qint64>& ids, const QString& folder, Progress& progress) {
    QStringList missing;
    int moved = 0;
    const bool done = guarded(m_session, [&] {
        if (!fits(m_session, "MediaFolder", folder))
            throw Error(tr("The path of the folder is too long."));
        progress.stage(tr("Updating the locations"));
        Transaction transaction(m_session.connection(),
                                tr("Move %1 media of %2").arg(ids.size()).arg(m_card.name(m_session)));
        qint64 seen = 0;
        for (const qint64 id : ids) {
            Recordset row = Recordset::open(m_session.connection(), QStringLiteral("SELECT *") + byId(id));
            progress.step(++seen, qint64(ids.size()));
            if (row.isEmpty())
                continue;
            const QString name = row.value(0, QStringLiteral("MediaFile")).toText();
            const QFileInfo file(folder + u'/' + name);
            if (!isFileName(name) || !file.isFile()) {
                missing << name;
                continue;
            }
            row.update(0, factsOf(m_session, file));
            ++moved;
        }
        transaction.commit();
        return true;
    });
    if (done)
        nameSkipped(missing, tr("Not in this folder, and left as they are:"));
    return done ? moved : -1;
}

MediaFile CardMedia::requireMedia(qint64 id) {
    MediaFile file = media(id);
    if (file.id == 0)
        throw Error(tr("This item has been deleted meanwhile."));
    return file;
}

bool CardMedia::folderIsThere(const MediaFile& file) {
    if (isWholePath(file.folder) && QFileInfo(QDir::fromNativeSeparators(file.folder)).isDir())
        return true;
    m_session.messages().warning(applicationTitle, QStringLiteral("The following location: \n") +
                                                       file.folder + QStringLiteral("\nis not available."));
    return false;
}

// Who made the catalog may have put anything into it: only a link that is played or shown opens at once.
bool CardMedia::confirmRunning(const MediaFile& file) {
    Question question;
    question.title = QStringLiteral("Media");
    question.text =
        tr("This file is a program, or is handed to one that runs it. What it does on this computer "
           "is up to whoever wrote it:") +
        u'\n' + QDir::toNativeSeparators(file.path()) + u'\n' + tr("Open it all the same?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    question.icon = MessageIcon::Warning;
    return m_session.messages().ask(question) == Answer::Yes;
}

bool CardMedia::OpenMediaFile(qint64 id) {
    MediaFile file;
    if (!guarded(m_session, [&] { file = requireMedia(id); }) || !folderIsThere(file))
        return false;
    QString reason;
    if (!isFileName(file.file))
        reason = tr("%1 is not the name of a file. It was not opened.");
    else if (!QFileInfo(file.path()).isFile())
        reason = tr("The file %1 is no longer in its folder.");
    else if (wouldRun(file.path()) && !confirmRunning(file))
        return false;
    else if (!m_session.desktop().openFile(file.path()))
        reason = tr("The system has no program that opens %1.");
    if (!reason.isEmpty())
        m_session.messages().warning(applicationTitle, reason.arg(file.file));
    return reason.isEmpty();
}

bool CardMedia::ExploreMedia(qint64 id) {
    MediaFile file;
    if (!guarded(m_session, [&] { file = requireMedia(id); }) || !folderIsThere(file))
        return false;
    if (m_session.desktop().openFolder(QDir::fromNativeSeparators(file.folder)))
        return true;
    m_session.messages().warning(applicationTitle, tr("The system cannot show %1.").arg(file.folder));
    return false;
}

} // namespace tessaranth
