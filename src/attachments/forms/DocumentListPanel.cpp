// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/DocumentListPanel.h"

#include <QTreeView>

namespace tessaranth {

DocumentListPanel::DocumentListPanel(const CardContext& context, QWidget* parent)
    : ListPanel(context,
                {QStringLiteral("lvDocs"), QStringLiteral("Title"), tr("Documents"),
                 tr("No documents yet.\nThe area above takes them: press Ins there, or choose Add in the "
                    "Card menu.")},
                parent),
      m_documents(context.session, {context.code, context.id}) {
    connect(view()->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (hasOne())
            emit chosen(theOne());
    });
    load();
}

} // namespace tessaranth
