// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace tessaranth {

/// Told by long runs how far they are, and asked whether to stop. Runs call it once a record; an
/// implementation decides how often it really redraws.
class Progress {
public:
    virtual ~Progress() = default;
    /// Starts a stage; the percentage goes back to 0.
    virtual void stage(const QString& text) = 0;
    /// 0 to 100 within the current stage.
    virtual void percentage(int value) = 0;
    /// True once the user asked to stop; the run then ends at the next safe point.
    virtual bool stopped() const = 0;

    /// Share of `done` in `total` as the percentage; a total of 0 counts as complete.
    void step(qint64 done, qint64 total) { percentage(total > 0 ? int(done * 100 / total) : 100); }
};

/// For callers that show nothing and never stop.
class NoProgress final : public Progress {
public:
    void stage(const QString&) override {}
    void percentage(int) override {}
    bool stopped() const override { return false; }
};

} // namespace tessaranth
