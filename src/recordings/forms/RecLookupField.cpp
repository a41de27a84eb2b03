// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecLookupField.h"

#include "items/CMIT.h"
#include "items/forms/frmListChooser.h"
#include "store/Guarded.h"
#include "widgets/FormHelpers.h"

#include <QHBoxLayout>
#include <QKeyEvent>
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
    m_name->setToolTip(tr("Type to choose from the list, or press the space bar; Del clears"));
    m_name->installEventFilter(this);
    const auto button = [&](const QString& caption, const QString& objectName, const QString& tip) {
        auto* made = new QToolButton;
        made->setText(caption);
        made->setObjectName(objectName);
        made->setToolTip(tip);
        made->setAccessibleName(tip);
        made->setFocusPolicy(Qt::NoFocus); // the name has the keys
        row->addWidget(made);
        return made;
    };
    row->addWidget(m_name, 1);
    const QString word = noun.toLower();
    m_choose = button(QStringLiteral("..."), QStringLiteral("cmd") + noun, tr("Add/Change the %1").arg(word));
    m_clear = button(QStringLiteral("×"), QStringLiteral("cmdClear") + noun, tr("Clear the %1").arg(word));
    connect(m_choose, &QToolButton::clicked, this, [this] { choose(); });
    connect(m_clear, &QToolButton::clicked, this, &RecLookupField::clear);
    setFocusProxy(m_name);
    setId(0);
}

void RecLookupField::setId(qint64 id) {
    m_name->setText(id == 0 ? QString() : CMIT(m_context.session).nameOf(m_kind, id));
    m_id = id;
    m_name->setCursorPosition(0);
    m_clear->setEnabled(id != 0);
}

void RecLookupField::clear() {
    setId(0);
    emit changed();
}

bool RecLookupField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isPlain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (key->key() == Qt::Key_Delete || key->key() == Qt::Key_Backspace)
        clear();
    else if (key->key() == Qt::Key_Space || key->key() == Qt::Key_F4 || key->key() == Qt::Key_Down)
        choose();
    else if (isPlain && !key->text().isEmpty() && key->text().front().isPrint())
        choose(key->text());
    else
        return QWidget::eventFilter(watched, event);
    return true;
}

void RecLookupField::choose(const QString& typed) {
    frmListChooser form(m_context, m_kind, m_listTitle, false, this);
    form.select(m_id);
    if (!typed.isEmpty())
        form.narrow(typed);
    const qint64 chosen = form.exec() == QDialog::Accepted ? form.id() : m_id;
    if (chosen != m_id || form.hasCreated())
        guarded(m_context.session, [&] { setId(chosen); });
    emit changed();
}

} // namespace tessaranth
