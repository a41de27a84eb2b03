// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardOwner.h"

#include "items/CMIT.h"
#include "store/Guarded.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CardOwner", text); }

const QString workCode = QStringLiteral("Comp");

QString workRow(qint64 id) {
    return QStringLiteral(" FROM Compositions WHERE CompID = ") + QString::number(id);
}

} // namespace

QString CardOwner::condition() const {
    return QStringLiteral("RelatedCat = '%1' AND RelatedID = %2").arg(quoted(code)).arg(id);
}

QString CardOwner::name(Session& session) const {
    if (code == workCode)
        return session.connection().single(QStringLiteral("SELECT CompTitle") + workRow(id)).toText();
    const ItemKind* kind = itemKind(code);
    return kind ? CMIT(session).nameOf(kind->number, id) : QString();
}

bool CardOwner::require(Session& session) const {
    return guarded(session, [&] {
        const ItemKind* kind = itemKind(code);
        const bool isThere = code == workCode
                                 ? session.connection().exists(QStringLiteral("SELECT *") + workRow(id))
                                 : kind && kind->isCard() && CMIT(session).exists(kind->number, id);
        if (!isThere)
            throw Error(code == workCode ? tr("This work has been deleted meanwhile.")
                                         : tr("This card has been deleted meanwhile."));
    });
}

} // namespace tessaranth
