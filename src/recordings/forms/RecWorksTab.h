// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/WorkOrder.h"
#include "recordings/forms/RecTab.h"
#include "store/ItemList.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QTreeWidgetItem;

namespace tessaranth {

class OrderedTree;

/// The works on the recording: beneath their composers, or in the order of the disc, where they move freely.
class RecWorksTab final : public RecTab {
    Q_OBJECT

public:
    explicit RecWorksTab(RecContext& context);

    bool isChanged() const override;
    bool apply() override;
    QString obstacle() const override;
    QWidget* firstField() const override;

protected:
    void read() override;

private:
    void buildChoice(QBoxLayout* layout);
    void buildOrder(QBoxLayout* layout);
    void buildTree(QBoxLayout* layout);
    void buildExcerpt(QBoxLayout* layout);
    void fillComposers();
    void fillCategories();
    bool readComposersWorks(ItemList& list) const;
    void show(const std::vector<int>& selected);
    bool isInOrder() const;
    void arrangeColumns();
    void addComposer(const ComposerNode& composer);
    void addItem(QTreeWidgetItem* parent, int work);
    std::vector<int> shownOrder() const;
    QString performersOf(const PlacedWork& work) const;
    void selectWorks(const std::vector<int>& works);
    int currentWork() const;
    std::vector<int> selectedWorks() const;
    std::vector<int> worksOf(qint64 composer) const;
    void showMoved(const std::vector<int>& moved);
    void followSelection();
    void enable();
    void addWorks();
    void removeWorks();
    void moveBy(int step);
    void drop(QTreeWidgetItem* target, bool behind);
    void step(int places);
    void setExcerpt(const QString& text);

    std::vector<PlacedWork> m_works; ///< in the order of the disc
    std::vector<PlacedWork> m_read;
    std::vector<RecordingArtist> m_performers;
    QComboBox* m_composer = nullptr;
    QComboBox* m_category = nullptr;
    OrderedTree* m_tree = nullptr;
    QLineEdit* m_excerpt = nullptr;
    QCheckBox* m_order = nullptr;
    bool m_isOrderChosen = false; ///< by the user; else the recording tells how it opens
    QCheckBox* m_all = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
};

} // namespace tessaranth
