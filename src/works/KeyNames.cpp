// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/KeyNames.h"

#include "items/Person.h"
#include "store/Guarded.h"
#include "store/KeyNamesFile.h"
#include "store/Recordset.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("KeyNames", text); }

} // namespace

bool KeyNames::list(ItemList& list) {
    return guarded(m_session, [&] {
        ItemList found({{tr("Key")}});
        for (const int language : {interfaceLanguage(), englishLanguage}) {
            Query run = m_session.connection().query(
                QStringLiteral("SELECT WKeysID, KeyName FROM WKeys WHERE LangID = %1 ORDER BY KeyID")
                    .arg(language));
            while (run.next())
                found.addRow(run.integer(0), QStringLiteral("Clef"), {run.text(1)});
            if (found.rowCount() > 0) // as Session::loadKeyNames: English only where nothing else is
                break;
        }
        list = std::move(found);
    });
}

bool KeyNames::rename(qint64 id, const QString& text) {
    return guarded(m_session, [&] {
        const QString name = m_session.fields().fit(QStringLiteral("WKeys"), QStringLiteral("KeyName"), text);
        Recordset rows = Recordset::open(m_session.connection(),
                                         QStringLiteral("SELECT * FROM WKeys WHERE WKeysID = %1").arg(id));
        if (rows.isEmpty())
            return false;
        Transaction transaction(m_session.connection(), tr("Rename key %1").arg(name));
        rows.update(0, {{QStringLiteral("KeyName"), name}});
        transaction.commit();
        m_session.loadKeyNames();
        return true;
    });
}

} // namespace tessaranth
