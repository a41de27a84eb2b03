// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

namespace tessaranth {

class IconStore;
struct MediaFile;

/// What is recorded of a media file, and what became of the file since.
class frmMediaProperties final : public QDialog {
    Q_OBJECT

public:
    frmMediaProperties(const IconStore& icons, const MediaFile& file, QWidget* parent = nullptr);
};

} // namespace tessaranth
