// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QPushButton;
class QTreeView;

namespace tessaranth {

class IconStore;
struct FormContext;
class ItemListModel;
class OpenCards;
class Session;

/// The composer catalogs that were imported from files, each of which can be removed again.
class frmImportedCatalogs final : public QDialog {
    Q_OBJECT

public:
    /// `cards`: the windows to be closed with works that are removed; may be null.
    frmImportedCatalogs(const FormContext& context, OpenCards* cards, QWidget* parent = nullptr);

private:
    void buildUi(const IconStore& icons);
    void fill();
    void remove();

    Session& m_session;
    OpenCards* m_cards;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QPushButton* m_remove = nullptr;
};

} // namespace tessaranth
