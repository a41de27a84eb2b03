// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/frmKeys.h"

#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "works/KeyNames.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmKeys::frmKeys(const FormContext& context, QWidget* parent) : QDialog(parent), m_context(context) {
    setObjectName(QStringLiteral("frmKeys"));
    setWindowTitle(tr(" Key names"));
    buildUi();
    refresh();
}

void frmKeys::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(m_context.icons, QStringLiteral("Clef"), windowTitle().trimmed(),
                                        tr("The musical keys as works show them, in your language.")));
    m_model = new ItemListModel(m_context.icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvKeys"), m_model, false);
    m_view->setAccessibleName(tr("Keys"));
    connect(m_view, &QTreeView::activated, this, &frmKeys::rename);
    layout->addWidget(m_view, 1);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
    m_rename = box->addButton(tr("&Rename..."), QDialogButtonBox::ActionRole);
    m_rename->setObjectName(QStringLiteral("cmdRename"));
    m_rename->setAutoDefault(false);
    connect(m_rename, &QPushButton::clicked, this, &frmKeys::rename);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Return renames the current key; it must not close the window.
    box->button(QDialogButtonBox::Close)->setAutoDefault(false);
    layout->addWidget(box);
    resize(380, 520);
}

void frmKeys::refresh() {
    ItemList list;
    if (KeyNames(m_context.session).list(list))
        m_model->setList(std::move(list));
    if (!m_view->currentIndex().isValid())
        m_view->setCurrentIndex(m_model->index(0, 0));
    m_rename->setEnabled(m_model->rowCount() > 0);
}

void frmKeys::rename() {
    const qint64 id = m_model->id(m_view->currentIndex());
    if (id == 0)
        return;
    const QString name = m_context.session.messages().inputName(
        {tr("Rename key"), tr("Rename key"), tr("Key name"), tr("Rename"), QStringLiteral("Clef"),
         m_view->currentIndex().siblingAtColumn(0).data().toString(),
         m_context.session.fields().width(QStringLiteral("WKeys"), QStringLiteral("KeyName"))});
    if (!name.isEmpty() && KeyNames(m_context.session).rename(id, name))
        refresh();
    m_view->setCurrentIndex(m_model->indexOf(id));
}

} // namespace tessaranth
