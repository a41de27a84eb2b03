// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmMediaProperties.h"

#include "attachments/CardMedia.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

QString sizeText(qint64 bytes) {
    const QLocale locale;
    return locale.formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat) + QStringLiteral(" (") +
           frmMediaProperties::tr("%1 bytes").arg(locale.toString(bytes)) + u')';
}

QString stateText(const MediaFile& file) {
    const QFileInfo now(file.path());
    if (!now.isFile())
        return frmMediaProperties::tr("Not there now");
    QString text = frmMediaProperties::tr("There, last modified %1")
                       .arg(QLocale().toString(now.lastModified(), QLocale::ShortFormat));
    if (now.size() != file.size)
        text += u'\n' + frmMediaProperties::tr("Its size is %1 now").arg(sizeText(now.size()));
    return text;
}

} // namespace

frmMediaProperties::frmMediaProperties(const IconStore& icons, const MediaFile& file, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmMediaProperties"));
    setWindowTitle(tr("Media file properties"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(icons, QStringLiteral("Media"), file.title, tr("What is recorded of this file")));
    auto* facts = new QFormLayout;
    const std::pair<QString, QString> rows[] = {{QStringLiteral("File name"), file.file},
                                                {QStringLiteral("Location"), file.folder},
                                                {QStringLiteral("Size"), sizeText(file.size)},
                                                {QStringLiteral("Type"), file.type},
                                                {QStringLiteral("Volume name"), file.volumeName},
                                                {tr("Kind of drive"), file.volumeType},
                                                {tr("The file"), stateText(file)}};
    for (const auto& [caption, text] : rows) {
        auto* fact = new QLabel(text);
        fact->setTextFormat(Qt::PlainText);
        fact->setWordWrap(true);
        fact->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        fact->setAccessibleName(caption);
        facts->addRow(caption + u':', fact);
    }
    layout->addLayout(facts);
    layout->addStretch();
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(box);
    setMinimumWidth(480);
}

} // namespace tessaranth
