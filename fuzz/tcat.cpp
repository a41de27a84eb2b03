// SPDX-License-Identifier: GPL-3.0-or-later
// Catalogs of a composer's works: one is refused with a word, or all its works are in the catalog.
#include "Demand.h"
#include "Silent.h"
#include "platform/Clock.h"
#include "platform/Progress.h"
#include "store/CatalogTemplate.h"
#include "store/Session.h"
#include "store/UpgradeSteps.h"
#include "works/CatalogFile.h"

#include <QFile>
#include <QTemporaryDir>

using namespace tessaranth;

namespace {

struct Desk {
    Desk() {
        const QString catalog = folder.filePath(QStringLiteral("Tessaranth.tsb"));
        writeCatalogTemplate(catalog, {});
        session.setConnection(Connection::open(catalog, clock, newestUpgradeCode));
        session.fieldLengths().load(session.connection());
        session.connection().execute(
            QStringLiteral("INSERT INTO Cps (CpsLname, CpsFname) VALUES ('Bach', 'J. S.')"));
    }
    qint64 number(const char* statement) {
        return session.connection().single(QString::fromUtf8(statement)).toInteger();
    }
    QTemporaryDir folder;
    SilentMessages messages;
    SystemClock clock;
    NoProgress progress;
    Session session{folder.path(), messages, clock};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    static Desk desk;
    QFile file(desk.folder.filePath(QStringLiteral("given.tcat")));
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    desk.messages.hasTold = false;
    const Transaction undone(desk.session.connection());
    const bool imported = CatalogFile(desk.session, 1).importFrom(file.fileName(), desk.progress);
    demand(desk.messages.hasTold, "the user hears how it went");
    const qint64 works = desk.number("SELECT COUNT(*) FROM Compositions");
    demand(imported || works == 0, "a refused file leaves nothing");
    demand(desk.number("SELECT COUNT(*) FROM Compositions WHERE CpsGenreID = 0 OR CompTitle = ''") == 0,
           "each work has its title and its genre");
    return 0;
}
