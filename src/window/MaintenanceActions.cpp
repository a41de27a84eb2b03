// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/MaintenanceActions.h"

#include "store/Maintenance.h"
#include "store/Session.h"
#include "widgets/WindowProgress.h"
#include "window/frmCleanup.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {
QString tr(const char* text) { return QCoreApplication::translate("MaintenanceActions", text); }
} // namespace

void MaintenanceActions::compact() {
    WindowProgress progress(m_window, false);
    if (Maintenance(m_context.session).compact(progress))
        notice(tr("The catalog has been compacted."));
}

void MaintenanceActions::backup() {
    WindowProgress progress(m_window, false);
    Maintenance maintenance(m_context.session);
    if (maintenance.backup(progress))
        notice(tr("The catalog has been copied to %1.").arg(maintenance.backupPath()));
}

void MaintenanceActions::copyToDestination() {
    WindowProgress progress(m_window, false);
    if (Maintenance(m_context.session).copyToDestination(progress))
        notice(tr("The catalog has been copied."));
}

void MaintenanceActions::empty() {
    Question question;
    question.title = tr("Empty the catalog");
    question.text = tr("Every card of the catalog %1 will be deleted, and its backup with them.\n\n"
                       "Do you want to delete everything?")
                        .arg(m_context.session.databasePath());
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    if (m_context.session.messages().ask(question) != Answer::Yes)
        return;
    WindowProgress progress(m_window, false);
    if (Maintenance(m_context.session).empty(progress))
        changed();
}

void MaintenanceActions::cleanup() {
    frmCleanup form(m_context, m_window);
    if (form.exec() == QDialog::Accepted)
        restart();
}

} // namespace tessaranth
