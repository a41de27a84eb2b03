// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CMIT.h"
#include "items/OpenCards.h"
#include "support/TestHome.h"
#include "support/Writing.h"

#include <QTest>

namespace tessaranth {

/// A catalog that is open, empty or the sample, and the item manager on it.
struct ItemCatalog : TestHome {
    explicit ItemCatalog(bool sample = false) {
        sample ? useSample() : useTemplate();
        if (!start().started)
            QTest::qFail("the catalog does not open", __FILE__, __LINE__);
    }
    CMIT items() const { return CMIT(*session); }
    int run(const QString& statement) const { return write(session->connection(), statement); }
    Value single(const QString& statement) const { return session->connection().single(statement); }
    qint64 number(const QString& statement) const { return single(statement).toInteger(); }
    QString text(const QString& statement) const { return single(statement).toText(); }
    qint64 count(const QString& table) const { return number("SELECT COUNT(*) FROM " + table); }
};

/// Remembers what became of cards.
struct FakeCards final : OpenCards {
    void openCard(const QString& code, qint64 id) override { opened << key(code, id); }
    void closeCard(const QString& key) override { closed << key; }
    void reloadCard(const QString& key) override { reloaded << key; }
    QStringList opened, closed, reloaded;
};

} // namespace tessaranth
