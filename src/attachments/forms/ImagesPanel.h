// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardImages.h"
#include "attachments/forms/PagedPanel.h"

namespace tessaranth {

class PictureBox;

/// The pictures of a card, one at a time. Picture files can be dropped on it; its commands stand in its
/// context menu as well.
class ImagesPanel final : public PagedPanel {
    Q_OBJECT

public:
    explicit ImagesPanel(const CardContext& context, QWidget* parent = nullptr);

signals:
    /// The user wants to see pictures of a card larger: one window, beginning with the one of this index.
    void openPictures(const QString& code, qint64 id, int index);

protected:
    void showCurrent() override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    ImagesPanel(const CardContext& context, std::unique_ptr<CardImages> images, QWidget* parent);
    void addCommands();
    QWidget* buildBox();
    void addFiles(const QStringList& files);
    void ImagesAllToPic();
    void copy();

    std::unique_ptr<CardImages> m_images;
    PictureBox* m_box = nullptr;
};

} // namespace tessaranth
