// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <utility>

namespace tessaranth {

class Configuration;

/// How the user arranged the windows, in pixels: the size of a dialog, the widths of a list's columns, the
/// parts of a divided area. Kept in the configuration, which is written when the program ends.
class Arrangements {
public:
    static constexpr const char* forms = "Forms";         ///< section of dialogs and lists
    static constexpr const char* splitters = "Splitters"; ///< section of divided areas

    explicit Arrangements(Configuration& configuration) : m_configuration(configuration) {}

    /// Empty when the user never arranged it, or when the file holds no such numbers.
    QList<int> read(const char* section, const QString& name) const;
    void keep(const char* section, const QString& name, const QList<int>& pixels);
    bool save(); ///< false when the configuration could not be written

private:
    using Place = std::pair<QString, QString>;

    Configuration& m_configuration;
    QHash<Place, QList<int>> m_changed;
};

} // namespace tessaranth
