// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/CustomCards.h"

#include "items/ItemKind.h"
#include "items/OpenCards.h"
#include "items/Person.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("CustomCards", text); }

} // namespace

bool CustomCards::save(qint64& id, const QString& text) {
    const QString code = itemKind(ItemKind::Custom)->code;
    const QString column = QStringLiteral("UserDefTitle");
    const bool saved = guarded(m_session, [&] {
        const QString title = m_session.fields().fit(code, column, text);
        if (m_session.connection().exists(QStringLiteral("SELECT * FROM UserDef WHERE UserDefTitle LIKE '") +
                                          quotedPattern(title) + QStringLiteral("' AND UserDefID <> ") +
                                          QString::number(id))) {
            m_session.messages().warning(QStringLiteral("Duplicate item"),
                                         QStringLiteral("Item already exists"));
            return false;
        }
        Transaction transaction(
            m_session.connection(),
            (id == 0 ? tr("Add custom item %1") : tr("Change custom item %1")).arg(title));
        Recordset rows =
            Recordset::open(m_session.connection(),
                            QStringLiteral("SELECT * FROM UserDef WHERE UserDefID = ") + QString::number(id));
        if (id == 0) {
            rows.add({{column, title}});
        } else if (rows.isEmpty()) {
            throw Error(tr("This card has been deleted meanwhile."));
        } else {
            rows.update(0, {{column, title}});
        }
        const qint64 added = m_session.connection().lastKey();
        transaction.commit();
        if (id == 0)
            id = added;
        return true;
    });
    if (saved && m_cards)
        m_cards->reloadCard(OpenCards::key(code, id));
    return saved;
}

} // namespace tessaranth
