// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frmAbout.h"

#include "store/Session.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <sqlite3.h>

namespace tessaranth {

frmAbout::frmAbout(const FormContext& context, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Tessaranth"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(context.icons, QStringLiteral("Violin"), QStringLiteral("Tessaranth"),
                                        tr("The catalog of your recordings")));
    auto* facts = new QFormLayout;
    const auto fact = [&](const QString& caption, const QString& text) {
        auto* label = new QLabel(text);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        facts->addRow(caption, label);
    };
    fact(tr("Version:"), QStringLiteral(TESSARANTH_VERSION));
    fact(tr("Qt:"), QString::fromLatin1(qVersion()));
    fact(tr("SQLite:"), QString::fromLatin1(sqlite3_libversion()));
    Connection& connection = context.session.connection();
    fact(tr("Catalog:"), context.session.databasePath());
    try {
        fact(tr("Catalog's level:"),
             connection.single(QStringLiteral("SELECT MAX(DbUpgradeCode) FROM DbUpgrades")).toText());
    } catch (const Error&) {
        fact(tr("Catalog's level:"), QStringLiteral("?"));
    }
    fact(tr("Program's folder:"), context.session.applicationFolder());
    fact(tr("Licence:"), tr("GNU General Public License, version 3 or later"));
    layout->addLayout(facts);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMinimumWidth(460);
}

} // namespace tessaranth
