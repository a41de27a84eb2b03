// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/FileAlignment.h"
#include "widgets/FormContext.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class QTreeView;
class QVBoxLayout;

namespace tessaranth {

class CheckedList;
class ItemListModel;
class OpenCards;

/// Shows what does not fit together between the catalog and its data folders, and repairs what is ticked:
/// rows without their file are deleted, files without their row set aside.
class frmAlign final : public QDialog {
    Q_OBJECT

public:
    frmAlign(const FormContext& context, OpenCards* cards, QWidget* parent = nullptr);

    /// Compares again; nothing is ticked then.
    void load();

private:
    /// One of the two lists, with the box that ticks all of its rows.
    struct Side {
        ItemListModel* model = nullptr;
        CheckedList* checks = nullptr;
        QTreeView* view = nullptr;
        QCheckBox* all = nullptr;
        QLabel* state = nullptr;
        const char* counted = nullptr; ///< what its rows are called
    };
    void buildUi();
    void addSide(QVBoxLayout* layout, Side& side, const QString& caption, const QString& name);
    void showFindings();
    void tickAll(Side& side, bool on);
    void count();
    void repair();

    FormContext m_context;
    OpenCards* m_cards;
    FileAlignment m_alignment;
    FileAlignment::Findings m_findings;
    Side m_lost, m_stray;
    QLabel* m_note = nullptr;
    QPushButton* m_repair = nullptr;
};

} // namespace tessaranth
