// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLineEdit;
class QTableWidget;

namespace tessaranth {

class IconStore;

/// The character map: letters that names and titles of the field need and keyboards lack. Accepted with the
/// characters that were picked.
class frmCharmap final : public QDialog {
    Q_OBJECT

public:
    explicit frmCharmap(const IconStore& icons, QWidget* parent = nullptr);
    QString characters() const;

    /// Lets the user pick characters and inserts them into a field, where that is a text of one line or more
    /// that can be changed.
    static void insertInto(QWidget* field, const IconStore& icons, QWidget* parent);

private:
    void fill();

    QTableWidget* m_table = nullptr;
    QLineEdit* m_picked = nullptr;
};

} // namespace tessaranth
