// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeWidgetItem;

namespace tessaranth {

class OrderedTree;
class TrackInput;

/// The tracks of the recording, disc by disc.
class RecTracksTab final : public RecTab {
    Q_OBJECT

public:
    explicit RecTracksTab(RecContext& context);

    bool isChanged() const override;
    bool apply() override;
    QWidget* firstField() const override;
    /// Puts the tracks that a text holds behind those that are there.
    void addText(const QString& text);

protected:
    void read() override;

private:
    void buildDisc(QBoxLayout* layout);
    void buildList(QBoxLayout* layout);
    void buildInput(QBoxLayout* layout);
    QString discId() const;
    bool isListChanged() const { return m_tracks != m_read || discId() != m_readId; }
    bool takeTyped();
    bool settleInput();
    void clearInput();
    void fillDiscs();
    void changeDisc();
    void showDisc();
    void show(const std::vector<int>& selected);
    void showTotal();
    QTreeWidgetItem* newItem(int number) const;
    void followSelection();
    void fillInput();
    void enable();
    void enter(bool stay);
    void addTrack();
    void setTrack();
    void removeTracks();
    void move(int target);
    void paste();
    void makeWorks();

    int m_disc = 1;
    std::vector<Track> m_tracks;
    std::vector<Track> m_read;
    QString m_readId;
    int m_changing = -1; ///< the row of the track that the input shows; -1 for one to come
    QComboBox* m_discs = nullptr;
    QLineEdit* m_discId = nullptr;
    QLabel* m_total = nullptr;
    OrderedTree* m_list = nullptr;
    TrackInput* m_input = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_set = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QPushButton* m_works = nullptr;
};

} // namespace tessaranth
