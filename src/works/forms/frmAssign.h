// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "works/ComposerCatalog.h"

#include <QDialog>

class QLineEdit;
class QPushButton;
class QTreeView;

namespace tessaranth {

class IconStore;
class ItemListModel;

/// Asks for the genre or main work that works are to be put under. Accepted with a node chosen.
class frmAssign final : public QDialog {
    Q_OBJECT

public:
    frmAssign(ComposerCatalog& catalog, const CatalogBranch& branch, const IconStore& icons,
              QWidget* parent = nullptr);
    qint64 node() const;

private:
    void buildUi(const IconStore& icons);
    void fill();

    const CatalogBranch& m_branch;
    std::vector<ComposerCatalog::Node> m_nodes;
    ItemListModel* m_model = nullptr;
    QLineEdit* m_filter = nullptr;
    QTreeView* m_view = nullptr;
    QPushButton* m_assign = nullptr;
};

} // namespace tessaranth
