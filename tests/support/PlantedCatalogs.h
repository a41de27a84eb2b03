// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace tessaranth {

/// A catalog as a stranger or a failing disk could leave it.
struct PlantedCatalog {
    enum class Fate {
        Refused, ///< with `told` in the message, and left as it is
        Opens,   ///< nothing of it can do harm
        Either   ///< damaged bytes: whatever is still sound may be shown
    };
    QString name;
    Fate fate = Fate::Either;
    QString told;
    std::function<void(const QString& file)> spoil; ///< of a sound catalog
};

/// About three hundred: a table of damages, each in its variants.
std::vector<PlantedCatalog> plantedCatalogs();

/// Runs statements as any SQLite tool would, and without its defences.
void plant(const QString& file, const QByteArray& statements);

} // namespace tessaranth
