// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace tessaranth {

/// Programs of the user's system that the menus start.
enum class Program { Volume, TextEditor, RichTextEditor, Browser };

/// Command lines of what commonly does it on this system, the first that is installed is taken.
QStringList programCandidates(Program program);
/// Starts the first of them that there is; its name, or an empty text when none is there.
QString startFirst(const QStringList& commandLines);

/// True when opening the file would run it, or hand it to what runs programs, on any of the systems: told by
/// its name, by what its beginning says and, of a link, by what it leads to.
bool wouldRun(const QString& path);

} // namespace tessaranth
