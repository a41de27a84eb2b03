// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <utility>
#include <vector>

class QListWidget;
class QPushButton;

namespace tessaranth {

class IconStore;

/// Puts things with titles into another order: by buttons, by keys and by dragging. Several move together.
class frmOrder final : public QDialog {
    Q_OBJECT

public:
    using Entries = std::vector<std::pair<qint64, QString>>; ///< ids and titles, in their present order

    frmOrder(const IconStore& icons, const QString& title, const QString& heading, const QString& iconKey,
             const Entries& entries, QWidget* parent = nullptr);

    std::vector<qint64> order() const; ///< the ids as they stand in the list now

private:
    enum class Move { First, Up, Down, Last };
    void buildUi(const IconStore& icons, const QString& heading, const QString& iconKey);
    void move(Move where);
    void enableButtons();

    QListWidget* m_list = nullptr;
    std::vector<std::pair<QPushButton*, Move>> m_buttons;
};

} // namespace tessaranth
