// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/LookupEditing.h"

#include "items/CMIT.h"
#include "items/forms/frmNewLabel.h"

namespace tessaranth {

qint64 addLookup(const FormContext& context, int kind, QWidget* parent) {
    if (kind != ItemKind::Label)
        return CMIT(context.session).AggiungiItem(kind);
    frmNewLabel form(context, 0, parent);
    return form.exec() == QDialog::Accepted ? form.id() : 0;
}

bool editLookup(const FormContext& context, int kind, qint64 id, QWidget* parent) {
    if (kind != ItemKind::Label)
        return CMIT(context.session).ModificaItem(kind, id);
    return frmNewLabel(context, id, parent).exec() == QDialog::Accepted;
}

} // namespace tessaranth
