// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/WorkGroups.h"

#include "items/CardOwner.h"
#include "items/Person.h"
#include "store/Guarded.h"
#include "works/ComposerCatalog.h"

#include <QCoreApplication>

namespace tessaranth {

namespace {

struct Words {
    CatalogBranch::Number branch;
    QString title, prompt, iconKey;
    const NameTable& names() const { return catalogBranches()[branch].names; }
};
const Words words[] = {{CatalogBranch::MainWorks, QStringLiteral("New Main work"),
                        QStringLiteral("Add a new main work"), QStringLiteral("Comp")},
                       {CatalogBranch::Genres, QStringLiteral("New catalog genre"),
                        QStringLiteral("Add a new catalog genre"), QStringLiteral("Genre")}};

} // namespace

std::vector<WorkGroups::Group> WorkGroups::groups(Kind kind) {
    return words[kind].names().rows(m_session, m_composer);
}

qint64 WorkGroups::find(Kind kind, const QString& name) {
    return words[kind].names().find(m_session, m_composer, cleanName(name));
}

qint64 WorkGroups::add(Kind kind) {
    const Words& of = words[kind];
    const NameRequest request{of.title,
                              of.prompt,
                              of.names().label(),
                              QStringLiteral("Add"),
                              of.iconKey,
                              QString(),
                              of.names().maxLength(m_session)};
    const QString name = m_session.messages().inputName(request);
    return name.isEmpty() ? 0 : addNamed(kind, name);
}

qint64 WorkGroups::addNamed(Kind kind, const QString& text) {
    const NameTable& names = words[kind].names();
    qint64 id = 0;
    if (!CardOwner{QStringLiteral("Cps"), m_composer}.require(m_session))
        return 0;
    guarded(m_session, [&] {
        const QString name = names.fit(m_session, text);
        if (names.find(m_session, m_composer, name) != 0) {
            m_session.messages().warning(QStringLiteral("Duplicate record"),
                                         name + QStringLiteral(" is already in archive!"));
            return;
        }
        Transaction transaction(m_session.connection(),
                                QCoreApplication::translate("WorkGroups", "Add %1 to a composer").arg(name));
        const qint64 added = names.add(m_session, m_composer, name);
        transaction.commit();
        id = added;
    });
    return id;
}

} // namespace tessaranth
