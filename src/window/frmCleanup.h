// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"

#include <QDialog>
#include <functional>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace tessaranth {

class IconStore;
struct FormContext;
class Session;

/// Cleans the catalog step by step and shows what each step found, or checks all of it and mends, after
/// asking, each kind of fault. Accepted when something was changed so; the program is then to be started
/// again.
class frmCleanup final : public QDialog, private Progress {
    Q_OBJECT

public:
    frmCleanup(const FormContext& context, QWidget* parent = nullptr);
    void reject() override;

private:
    void buildUi(const IconStore& icons);
    void clean();
    void repair();
    /// Runs a job with the buttons as they must be meanwhile; true when it changed the catalog.
    void run(const std::function<bool()>& job);
    void addLine(const QString& text);
    void stage(const QString& text) override;
    void percentage(int value) override;
    bool stopped() const override { return m_stopped; }

    Session& m_session;
    QLabel* m_warning = nullptr;
    QListWidget* m_steps = nullptr;
    QProgressBar* m_bar = nullptr;
    QPushButton* m_start = nullptr;
    QPushButton* m_repair = nullptr;
    QPushButton* m_cancel = nullptr;
    bool m_running = false;
    bool m_stopped = false;
    bool m_done = false;
};

} // namespace tessaranth
