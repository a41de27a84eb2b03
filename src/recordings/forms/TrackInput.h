// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/RecordingEditor.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace tessaranth {

/// The line in which one track is typed: its name and its length, with what is wrong about them below. What
/// is refused stays as it was typed.
class TrackInput final : public QWidget {
    Q_OBJECT

public:
    /// `longestName` in characters, 0 for no limit.
    explicit TrackInput(int longestName);

    /// Shows a track that is in the list; `clear` is for one to come.
    void show(const Track& track);
    void clear();
    /// True while something else stands in it than was shown.
    bool isTyped() const;
    /// True with a name, and with a length or none.
    bool isFit() const;
    /// The track in it. Nothing when it is not fit: that is told, and the box with the fault gets the focus.
    std::optional<Track> take();
    QLineEdit* nameBox() const { return m_name; }
    QLineEdit* lengthBox() const { return m_length; }

signals:
    void edited();
    /// Enter; `stay` with Ctrl.
    void entered(bool stay);
    /// Several lines were pasted into the name.
    void linesPasted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString name() const;
    std::optional<QString> length() const;
    void tellFaults();
    void withdraw();

    Track m_shown;       ///< as the list holds it
    QString m_shownName; ///< as much of its name as the box takes
    QLineEdit* m_name = nullptr;
    QLineEdit* m_length = nullptr;
    QLabel* m_hint = nullptr;
};

} // namespace tessaranth
