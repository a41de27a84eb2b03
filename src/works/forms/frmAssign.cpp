// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/frmAssign.h"

#include "store/TextOrder.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmAssign::frmAssign(ComposerCatalog& catalog, const CatalogBranch& branch, const IconStore& icons,
                     QWidget* parent)
    : QDialog(parent), m_branch(branch) {
    setObjectName(QStringLiteral("frmAssign"));
    setWindowTitle(branch.assignPrompt);
    buildUi(icons);
    readInto(this, catalog.session(), [&] { m_nodes = catalog.nodes(branch.number); });
    std::erase_if(m_nodes, [](const ComposerCatalog::Node& node) { return node.id == 0; });
    fill();
}

void frmAssign::buildUi(const IconStore& icons) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(icons, QStringLiteral("Catalog"), m_branch.assignPrompt, QString()));
    m_filter = FormHelpers::lineEdit(this, QStringLiteral("txtFilter"), tr("Part of the name"), 250);
    m_filter->setPlaceholderText(tr("Type a part of the name"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &frmAssign::fill);
    layout->addWidget(m_filter);
    m_model = new ItemListModel(icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvNodes"), m_model, false);
    m_view->setAccessibleName(m_branch.caption);
    layout->addWidget(m_view, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_assign = buttons->addButton(tr("&Assign"), QDialogButtonBox::AcceptRole);
    m_assign->setObjectName(QStringLiteral("cmdAssign"));
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { m_assign->setEnabled(node() != 0); });
    connect(m_view, &QTreeView::activated, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(420, 440);
}

// The first match is chosen, so that typing and Return are enough.
void frmAssign::fill() {
    const QString wanted = TextOrder::fold(m_filter->text().trimmed());
    ItemList list({{m_branch.heading}});
    for (const ComposerCatalog::Node& node : m_nodes)
        if (TextOrder::fold(node.name).contains(wanted))
            list.addRow(node.id, QStringLiteral("Catalog"), {node.name});
    m_model->setList(std::move(list));
    m_view->setCurrentIndex(m_model->index(0, 0));
    m_assign->setEnabled(node() != 0);
}

qint64 frmAssign::node() const { return m_model->id(m_view->currentIndex()); }

} // namespace tessaranth
