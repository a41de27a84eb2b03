// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/RecLookupField.h"

#include "items/CMIT.h"
#include "items/forms/frmListChooser.h"
#include "ui/FormHelpers.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace tessaranth {

RecLookupField::RecLookupField(const RecContext& context, int kind, const QString& noun,
                               const QString& listTitle)
    : m_context(context), m_kind(kind), m_listTitle(listTitle) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    m_name = FormHelpers::lineEdit(this, QStringLiteral("txt") + noun, noun, 0);
    m_name->setReadOnly(true);
    m_name->setFocusPolicy(Qt::ClickFocus);
    const auto button = [&](const QString& caption, const QString& objectName, const QString& tip) {
        auto* made = new QToolButton;
        made->setText(caption);
        made->setObjectName(objectName);
        made->setToolTip(tip);
        made->setAccessibleName(tip);
        made->setFocusPolicy(Qt::StrongFocus);
        row->addWidget(made);
        return made;
    };
    row->addWidget(m_name, 1);
    const QString word = noun.toLower();
    m_choose = button(QStringLiteral("..."), QStringLiteral("cmd") + noun, tr("Add/Change the %1").arg(word));
    m_clear = button(QStringLiteral("×"), QStringLiteral("cmdClear") + noun, tr("Clear the %1").arg(word));
    connect(m_choose, &QToolButton::clicked, this, &RecLookupField::choose);
    connect(m_clear, &QToolButton::clicked, this, [this] {
        setId(0);
        m_choose->setFocus(); // the command is disabled now
        emit changed();
    });
    setId(0);
}

void RecLookupField::setId(qint64 id) {
    m_id = id;
    m_name->setText(id == 0 ? QString() : CMIT(m_context.session).nameOf(m_kind, id));
    m_name->setCursorPosition(0);
    m_clear->setEnabled(id != 0);
}

void RecLookupField::choose() {
    frmListChooser form(m_context.session, m_context.icons, m_kind, m_listTitle, false, this);
    form.select(m_id);
    if (form.exec() == QDialog::Accepted)
        setId(form.id());
    else if (form.hasCreated())
        setId(m_id);
    emit changed();
}

} // namespace tessaranth
