// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/EditForm.h"

#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/frmCharmap.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

QPushButton* EditForm::addButtons(QVBoxLayout* layout, const QString& caption) {
    QPushButton* done = FormHelpers::buttonRow(this, layout, caption, QStringLiteral("cmdSave"));
    connect(done, &QPushButton::clicked, this, [this] {
        if (save())
            accept();
    });
    setMinimumWidth(460);
    return done;
}

QPushButton* EditForm::button(const QString& caption, const QString& name) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setAutoDefault(false);
    return made;
}

QPushButton* EditForm::specialCharacters(QLineEdit* line) {
    QPushButton* special = button(tr("Special c&haracters"), QStringLiteral("cmdCharmap"));
    special->setFocusPolicy(Qt::NoFocus); // the field that gets the character keeps the focus
    connect(special, &QPushButton::clicked, this, [this, line] {
        if (line)
            line->setFocus();
        frmCharmap::insertInto(focusWidget(), m_context.icons, this);
    });
    return special;
}

void EditForm::reject() {
    using FormHelpers::Unsaved;
    const Unsaved changes =
        isChanged() ? FormHelpers::settleUnsaved(m_context.session.messages(), windowTitle().trimmed(),
                                                 QStringLiteral("Do you want to save the changes?"),
                                                 [this] { return save(); })
                    : Unsaved::Dropped;
    if (changes == Unsaved::Saved)
        accept();
    else if (changes == Unsaved::Dropped)
        QDialog::reject();
}

} // namespace tessaranth
