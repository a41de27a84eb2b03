// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"

#include <QDialog>

class QLabel;

namespace tessaranth {

class OpenCards;

/// Picks the item into which another one of its kind is merged. Accepted when the merge was done.
class frmMigrate final : public QDialog {
    Q_OBJECT

public:
    frmMigrate(const FormContext& context, int kind, qint64 source, OpenCards* cards,
               QWidget* parent = nullptr);
    qint64 target() const; ///< 0 while nothing is selected

private:
    void buildUi();
    void fill();
    void enable();
    void run();

    FormContext m_context;
    int m_kind;
    qint64 m_source;
    OpenCards* m_cards;
    FormHelpers::NarrowedList m_list;
    QLabel* m_from = nullptr;
    QPushButton* m_migrate = nullptr;
};

} // namespace tessaranth
