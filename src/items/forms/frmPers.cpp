// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmPers.h"

#include "items/CMIT.h"
#include "items/CardHeading.h"
#include "items/forms/frmPersSearch.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/frmCharmap.h"

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
    : QDialog(parent), m_context(context), m_kind(kind) {
    setObjectName(QStringLiteral("frmPers"));
    const QString noun =
        kind == ItemKind::Composer ? QStringLiteral(" composer") : QStringLiteral(" performer");
    setWindowTitle((id == 0 ? QStringLiteral(" New") : QStringLiteral(" Edit")) + noun);
    buildUi();
    if (id != 0)
        m_stored = CMIT(context.session).person(kind, id);
    show(m_stored);
}

void frmPers::buildUi() {
    const ItemKind& kind = *itemKind(m_kind);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, kind.iconKey, windowTitle().trimmed(), hintOf(m_kind)));

    auto* fields = new QFormLayout;
    const auto field = [&](QLineEdit*& edit, const char* name, const char* column, const QString& caption) {
        const int width = m_context.session.fields().width(kind.table, QLatin1String(column));
        edit = FormHelpers::lineEdit(this, QLatin1String(name), QString(caption).remove(u'&').remove(u':'),
                                     width);
        fields->addRow(caption, edit);
        connect(edit, &QLineEdit::textChanged, this, &frmPers::checkYears);
    };
    const QString code = kind.code;
    field(m_last, "txtLname", qPrintable(code + "Lname"), tr("&Last Name:"));
    field(m_first, "txtFname", qPrintable(code + "Fname"), tr("&First Name:"));
    field(m_born, "txtB", qPrintable(code + "B"), tr("&Born:"));
    field(m_died, "txtD", qPrintable(code + "D"), tr("&Death:"));
    for (QLineEdit* year : {m_born, m_died}) {
        year->setMaxLength(4);
        year->setMaximumWidth(80);
        year->setPlaceholderText(tr("year"));
    }
    if (m_kind == ItemKind::Composer) {
        field(m_acronym, "txtCatAcr", "CatAcr", tr("C&atalog:"));
        m_acronym->setMaximumWidth(160);
        m_acronym->setPlaceholderText(tr("for example BWV"));
    }
    layout->addLayout(fields);
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("dateNote"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->hide();
    layout->addWidget(m_note);

    auto* tools = new QHBoxLayout;
    auto* archive =
        new QPushButton(m_kind == ItemKind::Composer ? tr("&Import composer from internal list")
                                                     : tr("&Import performer from internal list"));
    archive->setObjectName(QStringLiteral("cmdInternalList"));
    archive->setAutoDefault(false);
    connect(archive, &QPushButton::clicked, this, &frmPers::importFromArchive);
    auto* special = new QPushButton(tr("Special &characters"));
    special->setObjectName(QStringLiteral("cmdCharmap"));
    special->setAutoDefault(false);
    special->setFocusPolicy(Qt::NoFocus); // the field that gets the character keeps the focus
    connect(special, &QPushButton::clicked, this, &frmPers::insertSpecial);
    tools->addWidget(archive);
    tools->addWidget(special);
    tools->addStretch();
    layout->addLayout(tools);
    layout->addStretch();

    m_save = FormHelpers::buttonRow(this, layout, tr("&Save"), QStringLiteral("cmdSave"));
    connect(m_save, &QPushButton::clicked, this, [this] {
        if (save())
            accept();
    });
    setMinimumWidth(520);
    m_last->setFocus();
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
    checkYears();
}

bool frmPers::isChanged() const {
    const Person now = typed();
    return now.last != m_stored.last || now.first != m_stored.first || now.born != m_stored.born ||
           now.died != m_stored.died || now.acronym != m_stored.acronym;
}

// A field that cannot be stored as it is turns yellow; the last name alone decides whether one can save.
void frmPers::checkYears() {
    for (QLineEdit* year : {m_born, m_died})
        year->setStyleSheet(isYear(year->text().trimmed())
                                ? QString()
                                : QStringLiteral("background: rgb(255, 255, 0); color: black"));
    m_save->setEnabled(!m_last->text().trimmed().isEmpty());
}

bool frmPers::save() {
    for (QLineEdit* year : {m_born, m_died}) {
        if (!isYear(year->text().trimmed())) {
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

void frmPers::insertSpecial() {
    auto* target = qobject_cast<QLineEdit*>(focusWidget());
    frmCharmap form(m_context.icons, this);
    if (form.exec() == QDialog::Accepted && target)
        target->insert(form.characters());
}

void frmPers::reject() {
    FormHelpers::closeForm(this, m_context.session.messages(), isChanged(), [this] { return save(); });
}

} // namespace tessaranth
