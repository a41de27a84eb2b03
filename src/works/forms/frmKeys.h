// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QPushButton;
class QTreeView;

namespace tessaranth {

class IconStore;
class ItemListModel;
class Session;

/// The editor of the names of the musical keys.
class frmKeys final : public QDialog {
    Q_OBJECT

public:
    frmKeys(Session& session, const IconStore& icons, QWidget* parent = nullptr);

private:
    void buildUi();
    void refresh();
    void rename();

    Session& m_session;
    const IconStore& m_icons;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QPushButton* m_rename = nullptr;
};

} // namespace tessaranth
