// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QPushButton;
class QTreeView;

namespace tessaranth {

class IconStore;
struct FormContext;
class ItemListModel;
class Session;

/// The composer catalogs that were imported from files, each of which can be removed again.
class frmImportedCatalogs final : public QDialog {
    Q_OBJECT

public:
    frmImportedCatalogs(const FormContext& context, QWidget* parent = nullptr);

private:
    void buildUi(const IconStore& icons);
    void fill();
    void remove();

    Session& m_session;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QPushButton* m_remove = nullptr;
};

} // namespace tessaranth
