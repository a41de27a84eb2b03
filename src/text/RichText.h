// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/RtfReader.h"

class QImage;
class QTextCursor;
class QTextDocument;

namespace tessaranth {

/// Documents in Rich Text Format as plain text and as what an editor shows, and back.
namespace RichText {

inline const QString defaultFont = QStringLiteral("Verdana");
constexpr int defaultPoints = 10;

/// Each line a paragraph; NUL and other control characters are left out.
QByteArray fromText(const QString& text);
/// The text of a document, without its formatting, pictures and notes. Bytes that are not RTF are read as a
/// text file. Never fails: what cannot be understood is passed over.
QString toText(const QByteArray& document);

/// What a text document shows, as far as the format's writer goes: lists and tables become paragraphs.
QByteArray fromDocument(const QTextDocument& document);
/// Replaces what a text document held; as `toText` as to bytes that are not RTF. Without undoing. With a
/// limit only so many characters, for a document that is looked at and not kept. Large pictures are shown no
/// finer than their size in the document needs, very large ones not at all; what is written of them stays
/// whole.
RtfOutcome toDocument(const QByteArray& bytes, QTextDocument& document, int limit = 0);
/// What a panel shows of a document without letting its user wait.
constexpr int charactersAtOnce = 100'000;

/// Puts a document where the cursor stands, in place of its selection, as one step to undo. A paragraph that
/// the cursor stands within keeps its alignment.
RtfOutcome insert(const QByteArray& rtf, QTextCursor& cursor);
/// A document with nothing but a picture.
QByteArray fromImage(const QImage& image);

} // namespace RichText

} // namespace tessaranth
