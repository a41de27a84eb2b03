// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;

namespace tessaranth {

class OrderedTree;

/// The tracks of the recording, disc by disc.
class RecTracksTab final : public RecTab {
    Q_OBJECT

public:
    explicit RecTracksTab(RecContext& context);

    bool isChanged() const override { return isListChanged() || isTyped(); }
    bool apply() override;
    QWidget* firstField() const override;
    /// Puts the tracks that a text holds behind those that are there.
    void addText(const QString& text);

protected:
    void read() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildDisc(QBoxLayout* layout);
    void buildList(QBoxLayout* layout);
    void buildInput(QBoxLayout* layout);
    QString discId() const;
    bool isListChanged() const { return m_tracks != m_read || discId() != m_readId; }
    bool isTyped() const;
    bool takeTyped();
    void takeSelected();
    void clearInput();
    void fillDiscs();
    void changeDisc();
    void showDisc();
    void show(const std::vector<int>& selected);
    void showTotal();
    void copySelected();
    void enable();
    std::optional<Track> typed();
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
    Track m_copied;        ///< what the input was filled with; anything else in it was typed
    int m_copiedFrom = -1; ///< the row of that track; -1 when the input was empty
    QComboBox* m_discs = nullptr;
    QLineEdit* m_discId = nullptr;
    QLabel* m_total = nullptr;
    OrderedTree* m_list = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_length = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_set = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QPushButton* m_works = nullptr;
};

} // namespace tessaranth
