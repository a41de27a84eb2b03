// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/RecordingEditor.h"
#include "widgets/FormContext.h"

#include <QDialog>

class QComboBox;
class QListWidget;
class QPushButton;

namespace tessaranth {

/// Makes works of a composer's list out of the names of tracks. Accepted once they were added.
class frmTrackToWorklist final : public QDialog {
    Q_OBJECT

public:
    /// `titles` are the names of the selected tracks; the composers of the recording are offered first.
    frmTrackToWorklist(const FormContext& context, RecordingEditor& editor, const QStringList& titles,
                       QWidget* parent = nullptr);

    qint64 composer() const; ///< the one chosen, 0 for none

private:
    void buildUi(const QStringList& titles);
    void checkAll(Qt::CheckState state);
    void chooseComposer();
    QStringList keptTitles() const;
    void enable();
    void add();

    FormContext m_context;
    RecordingEditor& m_editor;
    QListWidget* m_titles = nullptr;
    QComboBox* m_composer = nullptr;
    QPushButton* m_ok = nullptr;
};

} // namespace tessaranth
