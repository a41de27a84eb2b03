// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QDialog;

namespace tessaranth {

class Arrangements;

/// Gives every dialog of the program the size that the user gave the last one of its class. Sits on the
/// application, so that a new form has nothing to do for it.
class DialogSizes final : public QObject {
    Q_OBJECT

public:
    explicit DialogSizes(Arrangements& arrangements, QObject* parent = nullptr);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Arrangements& m_arrangements;
};

} // namespace tessaranth
