// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ActionTable.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"

#include <QDialog>

class QLabel;

namespace tessaranth {

class OpenCards;

/// Takes care of one of the lookup lists: genres, labels, sources or carrier types.
class frmListManager final : public QDialog {
    Q_OBJECT

public:
    /// `kind` is 5 to 8; `cards` may be null.
    frmListManager(const FormContext& context, int kind, OpenCards* cards, QWidget* parent = nullptr);
    /// True once the list was changed: what shows its names is out of date.
    bool hasChanged() const { return m_changed; }

private:
    void buildUi();
    void fill();
    qsizetype selectedCount() const;
    /// Reads the list again and selects an item, or the row that took the place of the one selected.
    void refresh(qint64 id);
    void create();
    void rename();
    void remove();
    void merge();

    FormContext m_context;
    int m_kind;
    OpenCards* m_cards;
    bool m_changed = false;
    FormHelpers::NarrowedList m_list;
    QLabel* m_count = nullptr;
    ActionTable m_commands;
};

} // namespace tessaranth
