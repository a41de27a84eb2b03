// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QUtf8StringView>
#include <optional>

namespace tessaranth {

/// Texts of files that were not written in Unicode.
namespace CodePages {

constexpr int utf8 = 65001;

inline bool isUtf8(QByteArrayView bytes) { return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8(); }
/// Bytes in a Windows code page. 1250, 1251, 1252, 28591 (Latin-1) and 65001 are always known, others where
/// the system has converters; bytes of one that is unknown are read as Windows-1252.
QString decode(QByteArrayView bytes, int codePage);
/// A text file: UTF-8 or UTF-16 as its mark says, without one UTF-8 if it is valid, else Windows-1252.
QString decodeText(QByteArrayView bytes);
/// Nothing when a character has no place in Windows-1252.
std::optional<QByteArray> toWindows1252(const QString& text);

} // namespace CodePages

} // namespace tessaranth
