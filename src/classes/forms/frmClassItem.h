// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "classes/Classification.h"

#include <QDialog>

class QLabel;
class QTreeView;

namespace tessaranth {

class ItemListModel;
class CheckedList;
class IconStore;

/// The sub-categories of one card, or of several at once: a box for each. With several cards a box is
/// half-checked where only some of them are in the sub-category.
class frmClassItem final : public QDialog {
    Q_OBJECT

public:
    frmClassItem(Classification& classes, const IconStore& icons, const std::vector<qint64>& cards,
                 const QString& name, QWidget* parent = nullptr);

    QSet<qint64> checked() const;     ///< the sub-categories to put the cards into
    QSet<qint64> halfChecked() const; ///< those that stay for each card as they are

    /// Shows it for these cards and does what was chosen; false when cancelled or failed. `name` is of a
    /// single card.
    static bool classify(Classification& classes, const IconStore& icons, const std::vector<qint64>& cards,
                         const QString& name, QWidget* parent);

private:
    void buildUi(const IconStore& icons, const QString& name, bool several);
    void check(const std::vector<qint64>& cards);

    Classification& m_classes;
    CheckedList* m_checks = nullptr;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_hint = nullptr; ///< what to do where there is nothing to choose
};

} // namespace tessaranth
