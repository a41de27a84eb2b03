// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/frmImportedCatalogs.h"

#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/WindowProgress.h"
#include "works/CatalogFile.h"
#include "works/ComposerCatalog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmImportedCatalogs::frmImportedCatalogs(const FormContext& context, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_session(context.session), m_cards(cards) {
    setObjectName(QStringLiteral("frmImportedCatalogs"));
    setWindowTitle(tr("Imported composers catalogs"));
    buildUi(context.icons);
    fill();
}

void frmImportedCatalogs::buildUi(const IconStore& icons) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(icons, QStringLiteral("Catalog"), windowTitle(),
                          tr("Removing a catalog deletes the works that came with it and stand on no "
                             "recording.")));
    m_model = new ItemListModel(icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvCatalogs"), m_model, false);
    m_view->setAccessibleName(windowTitle());
    layout->addWidget(m_view, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_remove = buttons->addButton(tr("&Remove..."), QDialogButtonBox::ActionRole);
    m_remove->setObjectName(QStringLiteral("cmdRemove"));
    m_remove->setToolTip(QStringLiteral("Remove imported catalog"));
    connect(m_remove, &QPushButton::clicked, this, &frmImportedCatalogs::remove);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    resize(640, 360);
}

void frmImportedCatalogs::fill() {
    ItemList list;
    if (ComposerCatalog::importedCatalogs(m_session, list))
        m_model->setList(std::move(list));
    FormHelpers::fitColumns(m_view);
    m_view->setCurrentIndex(m_model->index(0, 0));
    m_remove->setEnabled(m_model->rowCount() > 0);
}

void frmImportedCatalogs::remove() {
    const qint64 composer = m_model->id(m_view->currentIndex());
    CatalogFile file(m_session, composer, m_cards);
    if (composer == 0 || !file.confirmRemoval())
        return;
    WindowProgress progress(this, false);
    if (file.removeImported(progress))
        fill();
}

} // namespace tessaranth
