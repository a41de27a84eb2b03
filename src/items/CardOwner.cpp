// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardOwner.h"

#include "items/CMIT.h"
#include "store/Guarded.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

const QString workCode = QStringLiteral("Comp");

QString workRow(qint64 id) {
    return QStringLiteral(" FROM Compositions WHERE CompID = ") + QString::number(id);
}

} // namespace

QString CardOwner::condition() const {
    return QStringLiteral("RelatedCat = '%1' AND RelatedID = %2").arg(quoted(code)).arg(id);
}

QString CardOwner::name(Session& session) const {
    if (code == workCode) {
        QString title;
        guarded(session, [&] {
            title = session.connection().single(QStringLiteral("SELECT CompTitle") + workRow(id)).toText();
        });
        return title;
    }
    const ItemKind* kind = itemKind(code);
    return kind ? CMIT(session).nameOf(kind->number, id) : QString();
}

bool CardOwner::require(Session& session) const {
    const ItemKind* kind = itemKind(code);
    bool isThere = kind && kind->isCard() && CMIT(session).exists(kind->number, id);
    if (code == workCode && !guarded(session, [&] {
            isThere = session.connection().exists(QStringLiteral("SELECT *") + workRow(id));
        }))
        return false;
    if (isThere)
        return true;
    session.messages().warning(
        applicationTitle,
        code == workCode ? QCoreApplication::translate("CardOwner", "This work has been deleted meanwhile.")
                         : QCoreApplication::translate("CardOwner", "This card has been deleted meanwhile."));
    return false;
}

} // namespace tessaranth
