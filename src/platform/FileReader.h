// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

class QFile;

namespace tessaranth {

/// Whether a link may stand for the file it leads to: the user may choose one, but what lies in a data folder
/// under a number is the program's own, and a link there leads wherever a stranger liked.
enum class Links { Follow, Refuse };

/// True when a file stands there, no folder, pipe, socket or device; none of them is opened to find out.
bool isPlainFile(const QString& path, Links links = Links::Refuse);
/// True when anything stands there, a link to nothing included.
bool isTaken(const QString& path);

/// Opens a file to read it, and only a file: a pipe would wait for its writer for ever. Throws FileError with
/// the file's name and the reason.
void openToRead(QFile& file, Links links = Links::Follow);
/// The whole file; throws FileError, also for one of more than `atMost` bytes.
QByteArray readFile(const QString& path, qint64 atMost, Links links = Links::Follow);

/// The system's words for why the last call on a file failed, as they stand behind a colon.
QString reasonOf(const QFile& file);
QString systemReason(int error); ///< of an errno

} // namespace tessaranth
