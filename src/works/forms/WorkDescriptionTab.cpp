// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/WorkDescriptionTab.h"

#include "attachments/forms/frmRTB.h"
#include "text/RichText.h"
#include "works/WorkDescription.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

namespace tessaranth {

WorkDescriptionTab::WorkDescriptionTab(const FormContext& context, std::function<qint64()> workToDescribe,
                                       QWidget* parent)
    : QWidget(parent), m_context(context), m_workToDescribe(std::move(workToDescribe)) {
    setObjectName(QStringLiteral("tabDescription"));
    auto* layout = new QVBoxLayout(this);
    const auto add = [&](auto* edit, const QString& caption, const QString& objectName) {
        edit->setObjectName(objectName);
        edit->setAccessibleName(QString(caption).remove(u'&').remove(u':'));
        edit->setTabChangesFocus(true);
        auto* label = new QLabel(caption);
        label->setBuddy(edit);
        layout->addWidget(label);
        layout->addWidget(edit, 1);
        return edit;
    };
    m_description = add(new QPlainTextEdit, tr("Descr&iption:"), QStringLiteral("txtDescr"));
    m_document =
        add(new QTextEdit, tr("&Long description, kept as a document:"), QStringLiteral("txtDocument"));
    m_document->setReadOnly(true);
    m_document->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto* row = new QHBoxLayout;
    const auto button = [&](const QString& caption, const QString& objectName,
                            void (WorkDescriptionTab::*what)()) {
        auto* made = new QPushButton(caption);
        made->setObjectName(objectName);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, what);
        row->addWidget(made);
        return made;
    };
    row->addStretch();
    button(tr("&Edit description..."), QStringLiteral("cmdEditDescr"), &WorkDescriptionTab::edit);
    m_remove =
        button(tr("&Remove description"), QStringLiteral("cmdRemoveDescr"), &WorkDescriptionTab::remove);
    layout->addLayout(row);
}

void WorkDescriptionTab::show(qint64 work, const QString& description) {
    m_description->setPlainText(description);
    showDocument(work);
}

void WorkDescriptionTab::showDocument(qint64 work) {
    m_work = work;
    WorkDescription stored(m_context.session, work);
    const qint64 document = work == 0 ? 0 : stored.document();
    const std::optional<QByteArray> text = document == 0 ? std::nullopt : stored.read();
    if (RichText::toDocument(text.value_or(QByteArray()), *m_document->document(), RichText::charactersAtOnce)
            .isCut)
        m_document->append(tr("(The description goes on. \"Edit description\" shows all of it.)"));
    m_document->setPlaceholderText(document == 0 ? tr("No long description yet.")
                                   : text        ? QString()
                                                 : QStringLiteral("File not found!"));
    m_remove->setEnabled(document != 0);
}

QString WorkDescriptionTab::description() const { return m_description->toPlainText(); }

void WorkDescriptionTab::edit() {
    const qint64 work = m_workToDescribe();
    if (work == 0)
        return;
    WorkDescription description(m_context.session, work);
    frmRTB form(m_context, {QStringLiteral("Comp"), work}, frmRTB::Mode::Descr, description.document(), this,
                [&](const QByteArray& rtf) { return description.write(rtf) ? description.document() : 0; });
    form.exec();
    showDocument(work);
}

void WorkDescriptionTab::remove() {
    if (!WorkDescription(m_context.session, m_work).remove())
        return;
    showDocument(m_work);
    m_document->setFocus();
}

} // namespace tessaranth
