// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmPers.h"

#include "items/CMIT.h"
#include "items/CardHeading.h"
#include "items/forms/frmPersSearch.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

QString hintOf(int kind) {
    return kind == ItemKind::Composer
               ? QStringLiteral("Click on Internal List button to fully import a composer")
               : QStringLiteral("In case of single name (e.a. orchestra) use only the Last Name field");
}

} // namespace

frmPers::frmPers(const FormContext& context, int kind, qint64 id, QWidget* parent)
    : EditForm(context, parent), m_kind(kind) {
    setObjectName(QStringLiteral("frmPers"));
    const QString noun =
        kind == ItemKind::Composer ? QStringLiteral(" composer") : QStringLiteral(" performer");
    setWindowTitle((id == 0 ? QStringLiteral(" New") : QStringLiteral(" Edit")) + noun);
    buildUi();
    if (id != 0)
        m_stored = CMIT(context.session).person(kind, id);
    m_stored.id = id; // saving what is gone must not make a new card
    show(m_stored);
}

void frmPers::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(m_context.icons, itemKind(m_kind)->iconKey, windowTitle().trimmed(),
                                        hintOf(m_kind)));
    auto* fields = new QFormLayout;
    addFields(fields);
    layout->addLayout(fields);
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("dateNote"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->hide();
    layout->addWidget(m_note);
    layout->addWidget(toolRow());
    layout->addStretch();
    m_save = addButtons(layout);
    setMinimumWidth(520);
    m_last->setFocus();
}

// No field cuts what is typed, pasted or stored: what is too long is refused on saving, by name.
void frmPers::addFields(QFormLayout* fields) {
    const auto field = [&](QLineEdit*& edit, const char* name, const QString& caption) {
        edit =
            FormHelpers::lineEdit(this, QLatin1String(name), QString(caption).remove(u'&').remove(u':'), 0);
        fields->addRow(caption, edit);
        connect(edit, &QLineEdit::textChanged, this, &frmPers::checkFields);
    };
    field(m_last, "txtLname", tr("&Last Name:"));
    field(m_first, "txtFname", tr("&First Name:"));
    field(m_born, "txtB", tr("&Born:"));
    field(m_died, "txtD", tr("&Death:"));
    for (QLineEdit* year : {m_born, m_died}) {
        year->setMaximumWidth(80);
        year->setPlaceholderText(tr("year"));
    }
    if (m_kind == ItemKind::Composer) {
        field(m_acronym, "txtCatAcr", tr("C&atalog:"));
        m_acronym->setMaximumWidth(160);
        m_acronym->setPlaceholderText(tr("for example BWV"));
    }
}

QWidget* frmPers::toolRow() {
    QPushButton* archive = button(m_kind == ItemKind::Composer ? tr("&Import composer from internal list")
                                                               : tr("&Import performer from internal list"),
                                  QStringLiteral("cmdInternalList"));
    connect(archive, &QPushButton::clicked, this, &frmPers::importFromArchive);
    auto* row = new QWidget;
    auto* tools = new QHBoxLayout(row);
    tools->setContentsMargins({});
    tools->addWidget(archive);
    tools->addWidget(specialCharacters());
    tools->addStretch();
    return row;
}

Person frmPers::typed() const {
    Person person = m_stored;
    person.last = m_last->text();
    person.first = m_first->text();
    person.born = m_born->text();
    person.died = m_died->text();
    if (m_acronym)
        person.acronym = m_acronym->text();
    return person;
}

void frmPers::show(const Person& person) {
    m_last->setText(person.last);
    m_first->setText(person.first);
    m_born->setText(person.born);
    m_died->setText(person.died);
    if (m_acronym)
        m_acronym->setText(person.acronym);
    checkFields();
}

bool frmPers::isChanged() const { return typed() != m_stored; }

// A field that cannot be stored as it is turns yellow; the last name alone decides whether one can save. A
// year that stands in the catalog already is no fault of the user's.
void frmPers::checkFields() {
    for (const auto& [year, stored] : {std::pair{m_born, m_stored.born}, std::pair{m_died, m_stored.died}})
        FormHelpers::markRefused(year, year->text() != stored && !isYear(year->text().trimmed()));
    if (m_save)
        m_save->setEnabled(!m_last->text().trimmed().isEmpty());
}

bool frmPers::save() {
    for (QLineEdit* year : {m_born, m_died}) {
        if (!year->styleSheet().isEmpty()) {
            year->setFocus();
            year->selectAll();
            break;
        }
    }
    Person person = typed();
    const bool isNew = person.id == 0;
    if (!CMIT(m_context.session).ModificaItem(m_kind, person))
        return false;
    m_stored = person;
    if (isNew)
        beginWithMainPanel(m_context.session, itemKind(m_kind)->code, person.id);
    if (isNew && !m_dateNote.isEmpty() && m_context.keepDocument)
        offerDateNote();
    return true;
}

// The fields of the years take four digits; what the archive says beyond them has its place in a document.
void frmPers::offerDateNote() {
    Question question;
    question.title = windowTitle().trimmed();
    question.text =
        tr("The internal list says of the dates: %1\nKeep this as a document of the card?").arg(m_dateNote);
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::Yes;
    if (m_context.session.messages().ask(question) == Answer::Yes)
        m_context.keepDocument(itemKind(m_kind)->code, m_stored.id, m_dateNote, tr("Dates"));
}

void frmPers::importFromArchive() {
    frmPersSearch form(m_context, m_kind, m_last->text(), this);
    if (form.exec() != QDialog::Accepted)
        return;
    Person chosen = form.person();
    chosen.id = m_stored.id;
    show(chosen);
    m_dateNote = form.dateNote();
    m_note->setText(tr("The internal list says of the dates: %1").arg(m_dateNote));
    m_note->setVisible(!m_dateNote.isEmpty());
}

} // namespace tessaranth
