// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CardOwner.h"

#include "items/CMIT.h"
#include "store/Session.h"

#include <QCoreApplication>

namespace tessaranth {

QString CardOwner::condition() const {
    return QStringLiteral("RelatedCat = '%1' AND RelatedID = %2").arg(quoted(code)).arg(id);
}

bool CardOwner::require(Session& session) const {
    const ItemKind* kind = itemKind(code);
    if (kind && kind->isCard() && CMIT(session).exists(kind->number, id))
        return true;
    session.messages().warning(
        applicationTitle, QCoreApplication::translate("CardOwner", "This card has been deleted meanwhile."));
    return false;
}

} // namespace tessaranth
