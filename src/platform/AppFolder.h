// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// The places from which the application folder is chosen.
struct AppFolderChoice {
    QString fromEnvironment; ///< value of TESSARANTH_HOME
    QString programFolder;   ///< where the executable stands
    QString userFolder;      ///< the platform's folder for this user's data of the program
};

/// The folder that holds configuration, catalog and companion files, without a trailing separator: the one
/// from the environment when set, else that of the program when it holds tsc.cfg or can be written (a folder
/// of system programs never counts as writable), else the user's.
QString appFolder(const AppFolderChoice& choice);
QString appFolder(); ///< of this process

/// The folder of the data installed with the program; empty when there is none.
QString shareFolder(const QString& programFolder);
QString shareFolder(); ///< of this process

/// Whether the first start puts an empty catalog into the folder: not when one is about to be written there.
enum class FirstStart { WithCatalog, WithoutCatalog };

/// Copies what the program ships into the application folder. At the first start, told by the missing
/// configuration file, that is every companion file and, where there is none, the empty catalog; later only
/// companion files of which a newer one is shipped: one that the user has lost is reported by start-up, not
/// brought back. Several processes may call it at once. The reason of a failure, empty when all went well;
/// what is not shipped is no failure.
QString fillAppFolder(const QString& applicationFolder, const QString& shareFolder,
                      FirstStart firstStart = FirstStart::WithCatalog);

} // namespace tessaranth
