// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/CardDocuments.h"

#include "items/Person.h"
#include "platform/CodePages.h"
#include "platform/FileReader.h"
#include "platform/FileWriter.h"
#include "store/Guarded.h"
#include "text/RichText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CardDocuments", text); }

const QString exportKind = QStringLiteral("DocEx");
const QString importKind = QStringLiteral("Doc");

const CardFileKind& documents() {
    static const CardFileKind kind{QStringLiteral("Cards"),
                                   QStringLiteral("CardID"),
                                   QStringLiteral("CardTitle"),
                                   Session::Folder::Documents,
                                   QStringLiteral("Doc"),
                                   QStringLiteral("Document title"),
                                   QStringLiteral("Rename the current document"),
                                   QStringLiteral("Rename document"),
                                   QStringLiteral("Remove document"),
                                   tr("This document has been deleted meanwhile."),
                                   tr("Add document %2 to %1"),
                                   tr("Rename document %2 of %1"),
                                   tr("Replace document %2 of %1"),
                                   tr("Remove document %2 from %1"),
                                   tr("Sort the documents of %1")};
    return kind;
}

/// What a file begins with tells what wrote it.
struct Foreign {
    QByteArrayView beginning;
    const char* reason;
};
const Foreign foreignFiles[] = {
    {"\xD0\xCF\x11\xE0",
     QT_TRANSLATE_NOOP("CardDocuments", "%1 is a document in the old binary format of Word. Open it in "
                                        "a word processor and save it as Rich Text Format (.rtf).")},
    {"PK\x03\x04", QT_TRANSLATE_NOOP("CardDocuments",
                                     "%1 is a compressed document, as newer word processors write. Open it "
                                     "there and save it as Rich Text Format (.rtf).")},
    {"%PDF", QT_TRANSLATE_NOOP("CardDocuments", "%1 is a PDF file and no text.")}};

bool isUtf16(QByteArrayView bytes) { return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"); }

} // namespace

CardDocuments::CardDocuments(Session& session, CardOwner card)
    : m_files(session, std::move(card), documents()), m_session(session) {}

std::optional<QByteArray> CardDocuments::read(qint64 id) {
    std::optional<QByteArray> bytes;
    if (hasFile(id))
        guarded(m_session, [&] { bytes = m_files.bytes(id, maxBytes); });
    return bytes;
}

qint64 CardDocuments::add(const QByteArray& rtf, const QString& title) {
    qint64 id = 0;
    guarded(m_session, [&] {
        m_files.card().require(m_session);
        id = m_files.addBytes(rtf, title);
    });
    return id;
}

qint64 CardDocuments::Save_Doc(const QByteArray& rtf) {
    const QString title = m_files.askTitle(QStringLiteral("Save current document"),
                                           QStringLiteral("Save document"), QStringLiteral("Save"), {});
    return title.isEmpty() ? 0 : add(rtf, title);
}

bool CardDocuments::rewrite(qint64 id, const QByteArray& rtf) {
    return guarded(m_session, [&] { m_files.replaceBytes(id, rtf); });
}

// ---- files of others

QByteArray CardDocuments::imported(const QString& file) {
    QByteArray bytes = readFile(file, maxBytes);
    if (looksLikeRtf(bytes))
        return bytes;
    for (const Foreign& foreign : foreignFiles)
        if (bytes.startsWith(foreign.beginning))
            throw FileError(tr(foreign.reason).arg(QFileInfo(file).fileName()));
    if (!isUtf16(bytes) && bytes.contains('\0'))
        throw FileError(tr("%1 holds binary data and no text.").arg(QFileInfo(file).fileName()));
    return RichText::fromText(CodePages::decodeText(bytes));
}

std::optional<QByteArray> CardDocuments::importText() {
    FileRequest request;
    request.title = QStringLiteral("Import text");
    request.folder = m_session.configuration().lastFolder(importKind);
    request.filterName = QStringLiteral("DocType (*.txt;*.rtf;*.doc)");
    request.patterns = {QStringLiteral("*.txt"), QStringLiteral("*.rtf"), QStringLiteral("*.doc")};
    const QStringList files = m_session.messages().chooseFiles(request);
    std::optional<QByteArray> bytes;
    if (files.isEmpty())
        return bytes;
    m_session.configuration().setLastFolder(importKind, files.front());
    guarded(m_session, [&] { bytes = imported(files.front()); });
    return bytes;
}

qint64 CardDocuments::addFile(const QString& file, const QString& title) {
    std::optional<QByteArray> bytes;
    guarded(m_session, [&] { bytes = imported(file); });
    const QString name = title.isEmpty() ? m_files.titleFrom(QFileInfo(file).completeBaseName()) : title;
    return bytes ? add(*bytes, name) : 0;
}

bool CardDocuments::ExportDocToFile(qint64 id) {
    FileRequest request;
    request.mode = FileRequest::Mode::Save;
    request.title = QStringLiteral("Export document");
    request.folder = m_session.configuration().lastFolder(exportKind);
    request.filterName = QStringLiteral("Rich Text Format (rtf)");
    request.patterns = QStringList{QStringLiteral("*.rtf")};
    request.defaultExtension = QStringLiteral(".rtf");
    const QStringList files = m_session.messages().chooseFiles(request);
    if (files.isEmpty() || !exportTo(id, files.front()))
        return false;
    m_session.configuration().setLastFolder(exportKind, files.front());
    return true;
}

bool CardDocuments::exportTo(qint64 id, const QString& file) {
    return guarded(m_session, [&] {
        if (!hasFile(id))
            throw FileError(QStringLiteral("File not found!"));
        QByteArray bytes = m_files.bytes(id, maxBytes);
        if (!looksLikeRtf(bytes)) // kept as plain text by whoever put it there
            bytes = RichText::fromText(RichText::toText(bytes));
        writeFile(file, bytes);
    });
}

} // namespace tessaranth
