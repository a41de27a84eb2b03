// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardImages.h"
#include "items/forms/CardPanel.h"

class QAction;
class QLabel;

namespace tessaranth {

class PictureBox;

/// The pictures of a card, one at a time. Picture files can be dropped on it; its commands stand in its
/// context menu as well.
class ImagesPanel final : public CardPanel {
    Q_OBJECT

public:
    explicit ImagesPanel(const CardContext& context, QWidget* parent = nullptr);

    void load() override;
    QString heading() const override; ///< "Images (3)"

    int index() const { return m_index; } ///< of the picture shown, from 0; -1 when the card has none
    void showImage(int index);

signals:
    /// The user wants to see pictures of a card larger: one window, beginning with the one of this index.
    void openPictures(const QString& code, qint64 id, int index);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildUi();
    void addCommands();
    void addEntry(const QString& key, const QString& caption, const QString& shortcut, const QString& iconKey,
                  std::function<void()> what, std::function<bool()> when = {});
    qint64 current() const;
    bool hasCurrent() const { return m_index >= 0; }
    bool hasReadableFile() const;
    void loadAt(qint64 id);
    void showCurrent();
    void openAll();
    void sort();
    void copy();
    void enable();

    CardImages m_images;
    ItemList m_list;
    int m_index = -1;
    PictureBox* m_box = nullptr;
    QLabel* m_position = nullptr;
    QLabel* m_title = nullptr;
    std::vector<std::pair<QString, QAction*>> m_entries;
};

} // namespace tessaranth
