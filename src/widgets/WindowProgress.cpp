// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/WindowProgress.h"

#include <QCoreApplication>
#include <QProgressDialog>

namespace tessaranth {

namespace {
constexpr qint64 turnEveryMs = 30;
constexpr int showAfterMs = 500;
} // namespace

WindowProgress::WindowProgress(QWidget* parent, bool canStop)
    : m_dialog(std::make_unique<QProgressDialog>(parent)) {
    m_dialog->setObjectName(QStringLiteral("frmProgress"));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setWindowTitle(QStringLiteral("Tessaranth"));
    m_dialog->setMinimumDuration(showAfterMs);
    m_dialog->setMinimumWidth(360);
    m_dialog->setRange(0, 100);
    m_dialog->setAutoReset(false);
    m_dialog->setAutoClose(false);
    m_dialog->setCancelButtonText(canStop ? QCoreApplication::translate("WindowProgress", "Stop")
                                          : QString());
    QObject::connect(m_dialog.get(), &QProgressDialog::canceled, m_dialog.get(),
                     [this] { m_stopped = true; });
    m_sinceTurn.start();
}

WindowProgress::~WindowProgress() = default;

void WindowProgress::stage(const QString& text) {
    m_text = text;
    percentage(0);
}

void WindowProgress::percentage(int value) {
    if (m_sinceTurn.elapsed() < turnEveryMs)
        return;
    m_sinceTurn.restart();
    m_dialog->setLabelText(m_text + QStringLiteral("\nProgress ") + QString::number(value) + u'%');
    m_dialog->setValue(value); // also processes events, as the dialog is modal
}

} // namespace tessaranth
