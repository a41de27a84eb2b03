// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace tessaranth {

/// One kind of thing that can be wrong in a catalog: how it is found, and how it is mended.
struct CatalogFault {
    struct Found {
        qint64 count = 0;     ///< 0: nothing is wrong
        QStringList examples; ///< the first few, as a user can look them up
    };
    QString caption; ///< what is wrong, in the plural: "Tracks without a recording"
    /// Looks and changes nothing; throws Error.
    std::function<Found()> find;
    QString question; ///< what mending does, as a question; empty where nothing here can mend it
    QString done;     ///< the same when it is done; %1 stands for the number
    /// Mends all that `find` finds and answers with the number. Runs inside a transaction; throws Error.
    std::function<qint64()> mend;
    /// What must wait until the rows are there for good, such as moving files; may be empty.
    std::function<void()> afterwards = {};
};

using CatalogFaults = std::vector<CatalogFault>;

} // namespace tessaranth
