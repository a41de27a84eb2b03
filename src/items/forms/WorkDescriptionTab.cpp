// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/WorkDescriptionTab.h"

#include "store/Session.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

QPlainTextEdit* textField(QVBoxLayout* layout, const QString& caption, const QString& objectName) {
    auto* edit = new QPlainTextEdit;
    edit->setObjectName(objectName);
    edit->setAccessibleName(QString(caption).remove(u'&').remove(u':'));
    edit->setTabChangesFocus(true);
    auto* label = new QLabel(caption);
    label->setBuddy(edit);
    layout->addWidget(label);
    layout->addWidget(edit, 1);
    return edit;
}

} // namespace

WorkDescriptionTab::WorkDescriptionTab(Session& session, QWidget* parent)
    : QWidget(parent), m_session(session) {
    setObjectName(QStringLiteral("tabDescription"));
    auto* layout = new QVBoxLayout(this);
    m_description = textField(layout, tr("Descr&iption:"), QStringLiteral("txtDescr"));
    m_document =
        textField(layout, tr("&Long description, kept as a document:"), QStringLiteral("txtDocument"));
    auto* row = new QHBoxLayout;
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("documentNote"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    row->addWidget(m_note, 1);
    m_remove = new QPushButton(tr("&Remove description"));
    m_remove->setObjectName(QStringLiteral("cmdRemoveDescr"));
    m_remove->setAutoDefault(false);
    connect(m_remove, &QPushButton::clicked, this, &WorkDescriptionTab::remove);
    row->addWidget(m_remove);
    layout->addLayout(row);
}

void WorkDescriptionTab::show(qint64 work, const QString& description) {
    m_description->setPlainText(description);
    showDocument(work);
}

void WorkDescriptionTab::showDocument(qint64 work) {
    m_work = work;
    WorkDescription::Text found;
    const bool readable = work == 0 || WorkDescription(m_session, work).read(found);
    m_document->setPlainText(found.text);
    found.text = m_document->toPlainText(); // as the field gives it back, to see what the user changed
    m_stored = found;
    m_remove->setEnabled(found.card != 0);
    // Written back as plain text, a formatted document would lose what another editor put into it.
    m_document->setReadOnly(found.formatted || !readable);
    m_note->setText(found.formatted ? tr("This document is formatted. It is shown as plain text and cannot "
                                         "be changed here.")
                                    : QString());
}

QString WorkDescriptionTab::description() const { return m_description->toPlainText(); }

bool WorkDescriptionTab::isDocumentChanged() const { return m_document->toPlainText() != m_stored.text; }

bool WorkDescriptionTab::saveDocument(qint64 work) {
    if (!isDocumentChanged())
        return true;
    m_work = work;
    const QString text = m_document->toPlainText();
    if (text.trimmed().isEmpty()) {
        if (m_stored.card != 0)
            return remove();
    } else if (!WorkDescription(m_session, work).write(text)) {
        return false;
    }
    showDocument(work);
    return true;
}

bool WorkDescriptionTab::remove() {
    if (!WorkDescription(m_session, m_work).remove())
        return false;
    showDocument(m_work);
    m_document->setFocus();
    return true;
}

} // namespace tessaranth
