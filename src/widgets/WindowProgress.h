// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Progress.h"

#include <QElapsedTimer>
#include <memory>

class QProgressDialog;
class QWidget;

namespace tessaranth {

/// Progress of a long run in a box with a Stop button. It appears once a run has taken half a second, and
/// gives the event loop its turn at most every 30 ms.
class WindowProgress final : public Progress {
public:
    explicit WindowProgress(QWidget* parent, bool canStop = true);
    ~WindowProgress() override;

    void stage(const QString& text) override;
    void percentage(int value) override;
    bool stopped() const override { return m_stopped; }

private:
    std::unique_ptr<QProgressDialog> m_dialog;
    QString m_text;
    QElapsedTimer m_sinceTurn;
    bool m_stopped = false;
};

} // namespace tessaranth
