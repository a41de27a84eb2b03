// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

class QBoxLayout;

namespace tessaranth {

class OrderedTree;

/// The composers and, in their order, the performers of the recording.
class RecArtistsTab final : public RecTab {
    Q_OBJECT

public:
    explicit RecArtistsTab(RecContext& context);

    bool isChanged() const override { return isChanged(m_composers) || isChanged(m_performers); }
    bool apply() override;
    QWidget* firstField() const override;

protected:
    void read() override;

private:
    /// One of the two lists, on the screen and in the catalog.
    struct Artists {
        int kind;
        OrderedTree* tree = nullptr;
        std::vector<QPushButton*> forSelection; ///< commands that need selected rows
        std::vector<RecordingArtist> shown;
        std::vector<qint64> read;
    };
    static std::vector<qint64> idsOf(const std::vector<RecordingArtist>& artists);
    static bool isChanged(const Artists& artists) { return idsOf(artists.shown) != artists.read; }
    void build(Artists& artists, QBoxLayout* layout, const QString& caption, const QStringList& headings);
    void buildCommands(QBoxLayout* composers, QBoxLayout* performers);
    void show(Artists& artists, const std::vector<int>& selected = {});
    void enable(const Artists& artists);
    void add(Artists& artists, const QString& listTitle);
    void remove(Artists& artists);
    void move(int target);
    void moveUp();
    void moveDown();
    void showPerformedWorks();

    Artists m_composers;
    Artists m_performers;
};

} // namespace tessaranth
