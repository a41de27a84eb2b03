// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/RecordingLists.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeView;

namespace tessaranth {

class IconStore;
class ItemListModel;

/// What one performer after the other performs on a recording.
class WksOnPfr final : public QDialog {
    Q_OBJECT

public:
    /// Starts with the one of that number among `performers`, of whom there is at least one.
    WksOnPfr(const IconStore& icons, std::vector<RecordingLists::Performed> performers, size_t current,
             QWidget* parent = nullptr);

private:
    void buildUi(const IconStore& icons);
    void go(int step);
    void fill();

    std::vector<RecordingLists::Performed> m_performers;
    size_t m_current;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_count = nullptr;
    QPushButton* m_back = nullptr;
    QPushButton* m_forward = nullptr;
};

} // namespace tessaranth
