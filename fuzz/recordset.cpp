// SPDX-License-Identifier: GPL-3.0-or-later
// Record-set files: one that can be read is written so that it reads the same again.
#include "store/Recordset.h"
#include "Demand.h"
#include "platform/Errors.h"

#include <QFile>
#include <QTemporaryDir>

using namespace tessaranth;

namespace {

void demandEqual(const Recordset& a, const Recordset& b) {
    demand(a.fields().size() == b.fields().size(), "as many fields");
    for (size_t field = 0; field < a.fields().size(); ++field)
        demand(a.fields()[field].name == b.fields()[field].name &&
                   a.fields()[field].type == b.fields()[field].type,
               "the same fields");
    demand(a.rowCount() == b.rowCount(), "as many rows");
    for (int row = 0; row < a.rowCount(); ++row)
        for (int field = 0; field < int(a.fields().size()); ++field)
            demand(a.value(row, field).toText() == b.value(row, field).toText(), "the same cells");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    static const QTemporaryDir folder;
    const QString given = folder.filePath(QStringLiteral("given.xml"));
    const QString written = folder.filePath(QStringLiteral("written.xml"));
    QFile file(given);
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    try {
        const Recordset rows = Recordset::load(given, 10'000);
        rows.save(written);
        try {
            demandEqual(rows, Recordset::load(written));
        } catch (const Error& error) {
            demand(false, error.what());
        }
    } catch (const Error&) {
        // Refused with a reason.
    }
    return 0;
}
