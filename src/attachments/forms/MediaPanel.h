// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardMedia.h"
#include "items/forms/ListPanel.h"

namespace tessaranth {

/// The media files of a card. Files dropped on it are added.
class MediaPanel final : public ListPanel {
    Q_OBJECT

public:
    explicit MediaPanel(const CardContext& context, QWidget* parent = nullptr);

protected:
    bool readList(ItemList& list) override { return m_media.LoadMedia(list); }
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ImportMediaFromFile();
    void ImportMediaFromClipboard();
    void addFiles(const QStringList& files);
    void Update_Media();
    void removeSelected();
    void ShowMediaProperties();

    CardMedia m_media;
};

} // namespace tessaranth
