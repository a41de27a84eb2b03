// SPDX-License-Identifier: GPL-3.0-or-later
// Statements: one is refused with a reason or translated, and translated again in the same way.
#include "store/JetSql.h"
#include "Demand.h"
#include "platform/Errors.h"

#include <QHash>

using namespace tessaranth;

namespace {

class Schema final : public SchemaView {
public:
    QStringList columnsOf(const QString& table) const override { return m_tables.value(table.toLower()); }
    bool isTextColumn(const QString& column) const override {
        return column.endsWith(QLatin1String("name"), Qt::CaseInsensitive) ||
               column.endsWith(QLatin1String("title"), Qt::CaseInsensitive);
    }

private:
    const QHash<QString, QStringList> m_tables{
        {QStringLiteral("cps"),
         {QStringLiteral("CpsID"), QStringLiteral("CpsLname"), QStringLiteral("CpsFname")}},
        {QStringLiteral("rec"),
         {QStringLiteral("RecID"), QStringLiteral("RecTitle"), QStringLiteral("LabelID")}},
        {QStringLiteral("labels"), {QStringLiteral("LabelID"), QStringLiteral("LabelName")}},
        {QStringLiteral("componrec"),
         {QStringLiteral("CompOnRecID"), QStringLiteral("CpsID"), QStringLiteral("RecID")}}};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    static const Schema schema;
    const JetSql fresh(schema);
    const QString statement = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const JetSql::Use use : {JetSql::Use::Plain, JetSql::Use::Updatable}) {
        try {
            const SqlStatement first = fresh.translate(statement, use);
            const SqlStatement again = fresh.translate(statement, use);
            demand(first.sql == again.sql && first.parameters.size() == again.parameters.size(),
                   "a statement is translated as before");
            demand(first.kind == SqlStatement::Kind::ChangeColumn || !first.sql.isEmpty(),
                   "a translated statement says something");
        } catch (const Error& error) {
            demand(!error.reason().isEmpty(), "a refusal has a reason");
        }
    }
    return 0;
}
