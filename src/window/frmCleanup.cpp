// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frmCleanup.h"

#include "attachments/FileFaults.h"
#include "store/CatalogCheck.h"
#include "store/Cleanup.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

frmCleanup::frmCleanup(const FormContext& context, QWidget* parent)
    : QDialog(parent), m_session(context.session) {
    setObjectName(QStringLiteral("frmCleanup"));
    setWindowTitle(QStringLiteral("Cleanup"));
    buildUi(context.icons);
}

void frmCleanup::buildUi(const IconStore& icons) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(icons, QStringLiteral("Table"), QStringLiteral("Cleanup of the database"),
                          QStringLiteral("If the cleanup occurs, the program will be restarted")));
    m_warning = new QLabel;
    m_warning->setObjectName(QStringLiteral("warning"));
    QFont bold = m_warning->font();
    bold.setBold(true);
    m_warning->setFont(bold);
    layout->addWidget(m_warning);
    m_steps = new QListWidget;
    m_steps->setObjectName(QStringLiteral("lvSteps"));
    m_steps->setAccessibleName(tr("Steps and their results"));
    m_steps->addItem(
        tr("Rows that lost their owner are looked for in eleven steps. Each step tells here what it "
           "found.\nCheck and repair looks at everything: the file itself, all links, marks and numbers, the "
           "files of pictures and documents, the word index. It asks before it mends anything."));
    m_steps->setWordWrap(true);
    layout->addWidget(m_steps, 1);
    m_bar = new QProgressBar;
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    layout->addWidget(m_bar);
    auto* buttons = new QDialogButtonBox;
    m_start = buttons->addButton(tr("&Start"), QDialogButtonBox::ActionRole);
    m_start->setObjectName(QStringLiteral("cmdStart"));
    m_cancel = buttons->addButton(QDialogButtonBox::Cancel);
    m_cancel->setObjectName(QStringLiteral("cmdCancel"));
    m_repair = buttons->addButton(tr("Check and re&pair"), QDialogButtonBox::ActionRole);
    m_repair->setObjectName(QStringLiteral("cmdRepair"));
    m_repair->setToolTip(
        tr("Look at everything in the catalog; each kind of fault is mended after a question"));
    connect(m_start, &QPushButton::clicked, this, &frmCleanup::clean);
    connect(m_repair, &QPushButton::clicked, this, &frmCleanup::repair);
    connect(m_cancel, &QPushButton::clicked, this, &frmCleanup::reject);
    layout->addWidget(buttons);
    resize(560, 420);
}

void frmCleanup::stage(const QString& text) {
    m_bar->setFormat(text + QStringLiteral(" %p%"));
    percentage(0);
}

void frmCleanup::percentage(int value) {
    if (value == m_bar->value())
        return;
    m_bar->setValue(value);
    QCoreApplication::processEvents();
}

void frmCleanup::addLine(const QString& text) {
    m_steps->addItem(text);
    m_steps->scrollToBottom();
}

void frmCleanup::clean() {
    if (m_done) {
        accept();
        return;
    }
    run([this] {
        Cleanup(m_session).run(*this, [this](const Cleanup::StepResult& result) {
            addLine(result.progressText + result.resultText);
        });
        return true;
    });
}

void frmCleanup::repair() {
    run([this] {
        CatalogCheck check(m_session);
        check.add(fileFaults(m_session));
        const auto outcome = check.repair(*this, [this](const QString& line) { addLine(line); });
        if (outcome.stopped)
            return outcome.mended > 0;
        if (outcome.left > 0)
            addLine(tr("Kinds of faults that are left: %1").arg(outcome.left));
        else
            addLine(outcome.mended > 0 ? tr("The catalog is in order now.") : tr("The catalog is in order."));
        return outcome.mended > 0;
    });
}

void frmCleanup::run(const std::function<bool()>& job) {
    m_running = true;
    m_stopped = false;
    m_start->setEnabled(false);
    m_repair->setEnabled(false);
    m_steps->clear();
    m_warning->setText(QStringLiteral("WARNING: DO NOT PERFORM ANY OTHER OPERATIONS."));
    m_done = job();
    m_running = false;
    m_warning->setText(m_stopped ? tr("Stopped") : QStringLiteral("Done"));
    m_bar->setFormat(QStringLiteral("%p%"));
    m_start->setEnabled(true);
    m_repair->setEnabled(!m_done);
    m_cancel->setEnabled(!m_done);
    if (m_done)
        m_start->setText(tr("&Restart"));
    m_start->setFocus();
}

// While it runs, closing stops it after the step at hand; once it has run the program starts anew in any
// case.
void frmCleanup::reject() {
    if (m_running)
        m_stopped = true;
    else if (m_done)
        accept();
    else
        QDialog::reject();
}

} // namespace tessaranth
