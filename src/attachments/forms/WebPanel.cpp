// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/WebPanel.h"

#include "attachments/forms/frmNewWeb.h"

namespace tessaranth {

WebPanel::WebPanel(const CardContext& context, QWidget* parent)
    : ListPanel(context,
                {QStringLiteral("lvWeb"), QStringLiteral("Alias"), tr("Web links"),
                 tr("No web links yet.\nPress Ins to add one.")},
                parent),
      m_links(context.session, {context.code, context.id}) {
    const auto one = [this] { return hasOne(); };
    addEntry(
        QStringLiteral("mnuCardWebOpen"), tr("&Go to web page"), {}, [this] { m_links.OpenWeb(theOne()); },
        one);
    addEntry(QStringLiteral("mnuCardWebAdd"), tr("&Add..."), QStringLiteral("Ins"), [this] { New_Web(); });
    addEntry(
        QStringLiteral("mnuCardWebEdit"), tr("&Edit..."), QStringLiteral("F2"),
        [this] { Edit_Web(theOne()); }, one);
    addEntry(
        QStringLiteral("mnuCardWebRemove"), tr("Re&move..."), QStringLiteral("Del"),
        [this] {
            if (m_links.Remove_Web(selected()))
                load();
        },
        [this] { return hasSome(); });
    setDefaultCommand(QStringLiteral("mnuCardWebOpen"));
    load();
}

void WebPanel::Edit_Web(qint64 id) {
    frmNewWeb form(m_context, {m_context.code, m_context.id}, id, this);
    if (form.exec() == QDialog::Accepted)
        load();
}

} // namespace tessaranth
