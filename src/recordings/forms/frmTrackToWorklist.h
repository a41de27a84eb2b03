// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/RecordingEditor.h"
#include "widgets/FormContext.h"

#include <QDialog>
#include <map>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace tessaranth {

/// Makes works of a composer's list out of the names of tracks, and puts them on the recording if wanted.
/// Titles that the composer has already are marked and not checked: they are never added again. Accepted once
/// the works were added.
class frmTrackToWorklist final : public QDialog {
    Q_OBJECT

public:
    /// `names` are those of the selected tracks; the composers of the recording are offered first.
    frmTrackToWorklist(const FormContext& context, RecordingEditor& editor, const QStringList& names,
                       QWidget* parent = nullptr);

    qint64 composer() const; ///< the one chosen, 0 for none

private:
    void buildUi();
    void buildList(QBoxLayout* layout);
    void buildComposer(QBoxLayout* layout);
    QPushButton* button(const QString& caption, const char* name, const std::function<void()>& run);
    void fill();
    void mark();
    void takeEdit(QTreeWidgetItem* item, int column);
    void checkAll(Qt::CheckState state);
    void chooseComposer();
    std::vector<TrackWork> kept() const;
    void enable();
    void add();

    FormContext m_context;
    RecordingEditor& m_editor;
    QStringList m_names;
    std::vector<TrackWork> m_works;               ///< a row of the list each
    std::map<std::vector<int>, QString> m_edited; ///< titles that were typed, by their tracks
    QTreeWidget* m_titles = nullptr;
    QComboBox* m_composer = nullptr;
    QCheckBox* m_merge = nullptr;
    QCheckBox* m_place = nullptr;
    QPushButton* m_ok = nullptr;
};

} // namespace tessaranth
