// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmNewWeb.h"

#include "store/Session.h"
#include "widgets/FormHelpers.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace tessaranth {

frmNewWeb::frmNewWeb(const FormContext& context, const CardOwner& card, qint64 id, QWidget* parent)
    : EditForm(context, parent), m_links(context.session, card) {
    setObjectName(QStringLiteral("frmNewWeb"));
    setWindowTitle(id == 0 ? QStringLiteral("Add a card-related web link")
                           : QStringLiteral("Edit a card-related web link"));
    if (id != 0)
        m_stored = m_links.link(id);
    buildUi();
    m_url->setText(m_stored.url);
    m_alias->setText(m_stored.alias);
    // What one line cannot show as it stands must not count as the user's change.
    m_stored.url = m_url->text();
    m_stored.alias = m_alias->text();
}

void frmNewWeb::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(m_context.icons, QStringLiteral("Web"), QStringLiteral("Web"),
                                        QStringLiteral("Type or paste the URL and an alias (significative "
                                                       "name)")));
    m_url = FormHelpers::lineEdit(this, QStringLiteral("txtUrl"), QStringLiteral("URL"), 0);
    m_url->setPlaceholderText(QStringLiteral("https://"));
    m_alias = FormHelpers::lineEdit(
        this, QStringLiteral("txtAlias"), QStringLiteral("Alias"),
        m_context.session.fields().width(QStringLiteral("Web"), QStringLiteral("Alias")));
    m_alias->setPlaceholderText(tr("Left empty, the URL is shown"));
    auto* fields = new QFormLayout;
    fields->addRow(tr("&URL:"), m_url);
    fields->addRow(tr("&Alias:"), m_alias);
    layout->addLayout(fields);
    layout->addStretch();
    addButtons(layout);
    m_url->setFocus();
}

bool frmNewWeb::isChanged() const {
    return m_url->text() != m_stored.url || m_alias->text() != m_stored.alias;
}

bool frmNewWeb::save() {
    WebLink link{m_stored.id, m_url->text(), m_alias->text()};
    if (link.url.trimmed().isEmpty())
        m_url->setFocus();
    return m_links.save(link);
}

} // namespace tessaranth
