// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frmCleanup.h"

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
           "found."));
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
    connect(m_start, &QPushButton::clicked, this, &frmCleanup::run);
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

void frmCleanup::run() {
    if (m_done) {
        accept();
        return;
    }
    m_running = true;
    m_start->setEnabled(false);
    m_steps->clear();
    m_warning->setText(QStringLiteral("WARNING: DO NOT PERFORM ANY OTHER OPERATIONS."));
    Cleanup(m_session).run(*this, [this](const Cleanup::StepResult& result) {
        m_steps->addItem(result.progressText + result.resultText);
        m_steps->scrollToBottom();
    });
    m_running = false;
    m_done = true;
    m_warning->setText(m_stopped ? tr("Stopped") : QStringLiteral("Done"));
    m_bar->setFormat(QStringLiteral("%p%"));
    m_start->setText(tr("&Restart"));
    m_start->setEnabled(true);
    m_start->setFocus();
    m_cancel->setEnabled(false);
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
