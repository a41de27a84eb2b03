// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTreeWidget>
#include <algorithm>
#include <vector>

namespace tessaranth {

/// Rows in an order that the user changes by dragging. It moves nothing itself: whoever fills it reorders
/// what it stands for and fills it again.
class OrderedTree final : public QTreeWidget {
    Q_OBJECT

public:
    OrderedTree(QWidget* parent, const QString& objectName, const QString& accessibleName,
                const QStringList& headings);

    /// Numbers of the selected top rows, upwards.
    std::vector<int> selectedRows() const;
    /// Selects top rows and nothing else; the first of them becomes the current one.
    void selectRows(const std::vector<int>& rows);
    /// Columns as wide as what they show, the given one as wide as there is room.
    void fitColumns(int stretched);

signals:
    /// The selected rows were dropped before a row, or behind it; without one, behind the last. Connect
    /// queued: the drag is still going on.
    void rowsDropped(QTreeWidgetItem* target, bool behind);

protected:
    void dropEvent(QDropEvent* event) override;
};

/// Moves some elements, given by their numbers upwards, so that they stand together before the one that is
/// number `target` now (its size: at the end). Answers with the number of the first of them.
template<typename Element>
int moveElements(std::vector<Element>& all, const std::vector<int>& numbers, int target) {
    std::vector<Element> moved, kept;
    int before = 0;
    for (int i = 0; i < int(all.size()); ++i) {
        const bool moves = std::binary_search(numbers.begin(), numbers.end(), i);
        (moves ? moved : kept).push_back(std::move(all[size_t(i)]));
        before += !moves && i < target;
    }
    kept.insert(kept.begin() + before, std::make_move_iterator(moved.begin()),
                std::make_move_iterator(moved.end()));
    all = std::move(kept);
    return before;
}

/// Removes some elements, given by their numbers upwards. Answers with the number of the one to be selected
/// then: in the place of the first that is gone, or the last; none when nothing is left.
template<typename Element>
std::vector<int> removeElements(std::vector<Element>& all, const std::vector<int>& numbers) {
    for (size_t i = numbers.size(); i-- > 0;)
        all.erase(all.begin() + numbers[i]);
    return all.empty() ? std::vector<int>() : std::vector{std::min(numbers.front(), int(all.size()) - 1)};
}

/// The numbers from `first` on, so many.
std::vector<int> numbersFrom(int first, size_t count);

} // namespace tessaranth
