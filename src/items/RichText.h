// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace tessaranth {

/// Plain text as a rich-text document and back (Rich Text Format Specification 1.9.1).
namespace RichText {

/// Seven-bit RTF; line breaks become paragraphs, what is not ASCII is written as \uN. NUL is left out.
QByteArray fromText(const QString& text);
/// The text of a document, without its formatting, fonts, pictures and notes. Bytes that are not RTF are
/// read as UTF-8. Never fails: what cannot be understood is passed over.
QString toText(const QByteArray& document);

} // namespace RichText

} // namespace tessaranth
