// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/CardPanel.h"

class QLabel;
class QSplitter;
class QStackedWidget;
class QTreeView;

namespace tessaranth {

class CardTabs;
class ElidedLabel;
class ItemListModel;
class SpecsView;

/// The panel "RecContents" of a recording: its specifications at the left; its works, tracks and artists at
/// the right, one of them in front.
class RecContentsPanel final : public CardPanel {
    Q_OBJECT

public:
    enum Area { Works, Tracks, Artists };

    explicit RecContentsPanel(const CardContext& context, QWidget* parent = nullptr);

    void load() override; ///< RefreshRecordingContents
    QString heading() const override { return m_heading; }

    /// LastStateRec and LastStateRecSplitterPos. A number that names no area gives the works.
    int area() const;
    int splitterPercent() const;
    void restore(int area, int splitterPercent);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct List {
        QTreeView* view = nullptr;
        ItemListModel* model = nullptr;
    };
    void buildUi();
    List buildList(Area area, const QString& objectName, const QString& name);
    void addCommands();
    void bringToFront(int area);
    void loadArtists();
    void loadWorks();
    void loadTracks();
    QString selectedArtist() const; ///< the code of the person selected in front; empty for none
    void GoToArtistCard();
    void manage();
    void placeSplitter();
    void fitWorks();

    SpecsView* m_specs = nullptr;
    QSplitter* m_splitter = nullptr;
    CardTabs* m_tabs = nullptr;
    QStackedWidget* m_areas = nullptr;
    ElidedLabel* m_performers = nullptr;
    List m_lists[3];
    QString m_heading;
    int m_percent = 50;
};

} // namespace tessaranth
