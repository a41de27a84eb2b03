// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/frmWorkEditor.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/frmCharmap.h"
#include "works/forms/WorkCharactersTab.h"
#include "works/forms/WorkDescriptionTab.h"
#include "works/forms/WorkSpecsTab.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

const QString hints[] = {QStringLiteral("At least you must insert the work title."),
                         QStringLiteral("Optionally, you may add here lyrics or description."),
                         QStringLiteral("The work have personages (e.a. a lyric opera).")};

} // namespace

frmWorkEditor::frmWorkEditor(const FormContext& context, qint64 composer, qint64 workId, QWidget* parent)
    : QDialog(parent), m_context(context) {
    setObjectName(QStringLiteral("frmWorkEditor"));
    setWindowTitle(workId == 0 ? QStringLiteral(" New work") : QStringLiteral(" Edit work"));
    if (workId != 0)
        m_stored = CWKS(context.session).work(workId);
    m_stored.id = workId; // saving what is gone must not make a new work
    m_stored.composer = composer;
    buildUi();
    m_specs->show(m_stored);
    m_description->show(m_stored.id, m_stored.description);
    m_characters->setWork(m_stored.id);
    // What the fields cannot show as it stands must not count as the user's change.
    m_stored = typed();
}

QString frmWorkEditor::composerLine() const {
    const Person person = CMIT(m_context.session).person(ItemKind::Composer, m_stored.composer);
    const QString years = yearsText(person.born, person.died);
    return (person.first + u' ' + person.last).trimmed() + QStringLiteral("  (") + years + u')';
}

void frmWorkEditor::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(m_context.icons, QStringLiteral("Comp"), composerLine(), hints[0]));
    m_hint = findChild<QLabel*>(QStringLiteral("hint"));

    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_specs = new WorkSpecsTab(m_context.session, m_stored.composer);
    m_description = new WorkDescriptionTab(m_context, [this] { return savedWork(); });
    m_characters = new WorkCharactersTab(m_context, [this] { return savedWork(); });
    m_tabs->addTab(m_specs, tr("Work speci&fications"));
    m_tabs->addTab(m_description, tr("Work &description"));
    m_tabs->addTab(m_characters, tr("&Personages on work"));
    connect(m_tabs, &QTabWidget::currentChanged, this, &frmWorkEditor::showHint);
    layout->addWidget(m_tabs, 1);

    auto* special = new QPushButton(tr("Special c&haracters"));
    special->setObjectName(QStringLiteral("cmdCharmap"));
    special->setAutoDefault(false);
    special->setFocusPolicy(Qt::NoFocus); // the field that gets the character keeps the focus
    connect(special, &QPushButton::clicked, this,
            [this] { frmCharmap::insertInto(focusWidget(), m_context.icons, this); });
    layout->addWidget(special, 0, Qt::AlignLeft);
    QPushButton* done = FormHelpers::buttonRow(this, layout, tr("&Save"), QStringLiteral("cmdSave"));
    connect(done, &QPushButton::clicked, this, [this] {
        if (save())
            accept();
    });
    resize(620, 520);
    m_specs->findChild<QLineEdit*>(QStringLiteral("txtTitle"))->setFocus();
}

void frmWorkEditor::showHint() { m_hint->setText(hints[m_tabs->currentIndex()]); }

Work frmWorkEditor::typed() const {
    Work work = m_stored;
    m_specs->read(work);
    work.description = m_description->description();
    return work;
}

bool frmWorkEditor::isChanged() const { return typed() != m_stored; }

bool frmWorkEditor::save() {
    const Work fields = typed();
    Work work = fields;
    if (work.title.trimmed().isEmpty()) {
        m_tabs->setCurrentWidget(m_specs);
        m_specs->demandTitle();
    }
    if (!CWKS(m_context.session).ModificaWork(work))
        return false;
    m_stored = fields;
    m_stored.id = work.id;
    m_done = true;
    return true;
}

// The characters and the long description are rows of their own that need the work's key.
qint64 frmWorkEditor::savedWork() {
    if (m_stored.id == 0)
        save();
    return m_stored.id;
}

void frmWorkEditor::reject() {
    using FormHelpers::Unsaved;
    const Unsaved changes =
        isChanged() ? FormHelpers::settleUnsaved(m_context.session.messages(), windowTitle().trimmed(),
                                                 QStringLiteral("Do you want to save the current changes?"),
                                                 [this] { return save(); })
                    : Unsaved::Dropped;
    if (changes == Unsaved::Kept)
        return;
    if (m_done)
        accept();
    else
        QDialog::reject();
}

} // namespace tessaranth
