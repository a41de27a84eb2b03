// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QDialog>

class QPushButton;
class QTreeView;

namespace tessaranth {

class ItemListModel;

/// The editor of the names of the musical keys.
class frmKeys final : public QDialog {
    Q_OBJECT

public:
    frmKeys(const FormContext& context, QWidget* parent = nullptr);

private:
    void buildUi();
    void refresh();
    void rename();

    FormContext m_context;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QPushButton* m_rename = nullptr;
};

} // namespace tessaranth
