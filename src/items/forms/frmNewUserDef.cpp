// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmNewUserDef.h"

#include "items/CMIT.h"
#include "items/CardHeading.h"
#include "items/CustomCards.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

frmNewUserDef::frmNewUserDef(const FormContext& context, qint64 id, OpenCards* cards, QWidget* parent)
    : EditForm(context, parent), m_id(id), m_cards(cards) {
    setObjectName(QStringLiteral("frmNewUserDef"));
    setWindowTitle(id == 0 ? QStringLiteral(" New Custom item") : QStringLiteral(" Edit Custom item"));
    buildUi();
    if (id != 0)
        m_title->setText(CMIT(context.session).nameOf(ItemKind::Custom, id));
    m_stored = m_title->text();
}

void frmNewUserDef::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(m_context.icons, QStringLiteral("User"), windowTitle().trimmed(),
                                        QStringLiteral("Add or edit a custom item")));
    m_title = FormHelpers::lineEdit(
        this, QStringLiteral("txtTitle"), tr("Title"),
        m_context.session.fields().width(QStringLiteral("UserDef"), QStringLiteral("UserDefTitle")));
    auto* fields = new QFormLayout;
    fields->addRow(tr("&Title:"), m_title);
    layout->addLayout(fields);
    layout->addWidget(specialCharacters(m_title), 0, Qt::AlignLeft);
    layout->addStretch();
    addButtons(layout);
    m_title->setFocus();
}

bool frmNewUserDef::isChanged() const { return m_title->text() != m_stored; }

bool frmNewUserDef::save() {
    m_title->setFocus();
    const bool isNew = m_id == 0;
    if (!CustomCards(m_context.session, m_cards).save(m_id, m_title->text()))
        return false;
    if (isNew)
        beginWithMainPanel(m_context.session, QStringLiteral("UserDef"), m_id);
    return true;
}

} // namespace tessaranth
