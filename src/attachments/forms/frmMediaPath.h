// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/MediaLocations.h"
#include "widgets/FormContext.h"

#include <QDialog>

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tessaranth {

class OpenCards;

/// Puts another drive or folder at the beginning of the recorded places of media files.
class frmMediaPath final : public QDialog {
    Q_OBJECT

public:
    /// `cards`: those whose media changed are asked to reload; may be null.
    frmMediaPath(const FormContext& context, OpenCards* cards, QWidget* parent = nullptr);

private:
    void buildUi();
    QWidget* driveFields();
    QWidget* folderFields();
    QComboBox* driveBox(const QString& name, const QString& spoken, const QStringList& drives);
    void chooseFolder(QLineEdit* edit, const QString& title);
    LocationChange change() const;
    void enable();
    void run();

    FormContext m_context;
    OpenCards* m_cards;
    MediaLocations m_locations;
    QRadioButton* m_byDrive = nullptr;
    QRadioButton* m_byFolder = nullptr;
    QWidget* m_driveFields = nullptr;
    QWidget* m_folderFields = nullptr;
    QComboBox* m_oldDrive = nullptr;
    QComboBox* m_newDrive = nullptr;
    QLineEdit* m_oldFolder = nullptr;
    QLineEdit* m_newFolder = nullptr;
    QPushButton* m_update = nullptr;
};

} // namespace tessaranth
