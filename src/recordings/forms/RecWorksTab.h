// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"
#include "store/ItemList.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QTreeWidgetItem;

namespace tessaranth {

class OrderedTree;

/// The works on the recording, in their order, beneath their composers.
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
    void buildTree(QBoxLayout* layout);
    void buildExcerpt(QBoxLayout* layout);
    void fillComposers();
    void fillCategories();
    bool readComposersWorks(ItemList& list) const;
    void show(const std::vector<int>& selected);
    void addItem(QTreeWidgetItem* composer, int work);
    QString performersOf(const PlacedWork& work) const;
    void selectWorks(const std::vector<int>& works);
    int currentWork() const;
    std::vector<int> selectedWorks() const;
    std::vector<int> worksOf(qint64 composer) const;
    void followSelection();
    void enable();
    void addWorks();
    void removeWorks();
    void moveBy(int step);
    void moveTo(const std::vector<int>& works, int target);
    void drop(QTreeWidgetItem* target, bool behind);
    void step(int places);
    void setExcerpt(const QString& text);

    std::vector<PlacedWork> m_works; ///< the works of one composer stand together
    std::vector<PlacedWork> m_read;
    std::vector<RecordingArtist> m_performers;
    QComboBox* m_composer = nullptr;
    QComboBox* m_category = nullptr;
    OrderedTree* m_tree = nullptr;
    QLineEdit* m_excerpt = nullptr;
    QCheckBox* m_all = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
};

} // namespace tessaranth
