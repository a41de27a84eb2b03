// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/LookupEditing.h"

#include "items/CMIT.h"
#include "items/forms/frmNewLabel.h"

namespace tessaranth {

qint64 addLookup(Session& session, const IconStore& icons, int kind, QWidget* parent) {
    if (kind != ItemKind::Label)
        return CMIT(session).AggiungiItem(kind);
    frmNewLabel form(session, icons, 0, parent);
    return form.exec() == QDialog::Accepted ? form.id() : 0;
}

bool editLookup(Session& session, const IconStore& icons, int kind, qint64 id, QWidget* parent) {
    if (kind != ItemKind::Label)
        return CMIT(session).ModificaItem(kind, id);
    return frmNewLabel(session, icons, id, parent).exec() == QDialog::Accepted;
}

} // namespace tessaranth
