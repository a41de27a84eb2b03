// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmNewLabel.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"

#include <QClipboard>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

constexpr QSize logoBox(180, 120);
const QString folderKind = QStringLiteral("Label");

} // namespace

frmNewLabel::frmNewLabel(const FormContext& context, qint64 id, QWidget* parent)
    : EditForm(context, parent), m_labels(context.session), m_id(id) {
    setObjectName(QStringLiteral("frmNewLabel"));
    setWindowTitle(id == 0 ? QStringLiteral(" Add new label") : QStringLiteral(" Edit label"));
    buildUi();
    if (id != 0)
        m_name->setText(CMIT(context.session).nameOf(ItemKind::Label, id));
    m_stored = m_name->text();
    showLogo(m_labels.logo(id));
}

void frmNewLabel::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("Label"), QStringLiteral("Label"),
                          QStringLiteral("Add or edit a label\nYou may also import the label logo.")));
    m_name = FormHelpers::lineEdit(
        this, QStringLiteral("txtName"), tr("Label name"),
        m_context.session.fields().width(QStringLiteral("Labels"), QStringLiteral("LabelName")));
    auto* fields = new QFormLayout;
    fields->addRow(tr("&Name:"), m_name);
    fields->addRow(tr("Logo:"), logoRow());
    layout->addLayout(fields);
    layout->addStretch();
    addButtons(layout);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &frmNewLabel::enable);
    m_name->setFocus();
}

QWidget* frmNewLabel::logoRow() {
    m_logo = new QLabel;
    m_logo->setObjectName(QStringLiteral("picLogo"));
    m_logo->setAccessibleName(tr("Logo"));
    m_logo->setFixedSize(logoBox + QSize(8, 8));
    m_logo->setAlignment(Qt::AlignCenter);
    m_logo->setFrameShape(QFrame::StyledPanel);
    auto* import = button(tr("&Import image from file"), QStringLiteral("cmdImport"));
    connect(import, &QPushButton::clicked, this, &frmNewLabel::importLogo);
    m_paste = button(tr("&Paste image from clipboard"), QStringLiteral("cmdPaste"));
    connect(m_paste, &QPushButton::clicked, this, &frmNewLabel::pasteLogo);
    m_clear = button(tr("&Remove the logo"), QStringLiteral("cmdClear"));
    connect(m_clear, &QPushButton::clicked, this, [this] {
        setLogo({LogoChange::What::Remove, {}});
        m_name->setFocus();
    });
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(import);
    buttons->addWidget(m_paste);
    buttons->addWidget(m_clear);
    buttons->addWidget(specialCharacters(m_name));
    buttons->addStretch();
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(m_logo, 0, Qt::AlignTop);
    layout->addLayout(buttons, 1);
    return row;
}

void frmNewLabel::importLogo() {
    FileRequest request;
    request.title = QStringLiteral("Add label image");
    request.folder = m_context.session.configuration().lastFolder(folderKind);
    request.filterName = QStringLiteral("Images (*.bmp;*.jpg;*.gif)");
    request.patterns = {QStringLiteral("*.bmp"), QStringLiteral("*.jpg"), QStringLiteral("*.gif")};
    const QStringList files = m_context.session.messages().chooseFiles(request);
    if (files.isEmpty())
        return;
    m_context.session.configuration().setLastFolder(folderKind, files.front());
    const QByteArray bytes = m_labels.importLogo(files.front());
    if (!bytes.isEmpty())
        setLogo({LogoChange::What::Replace, bytes});
}

void frmNewLabel::pasteLogo() {
    const QByteArray bytes = m_labels.pastedLogo(QGuiApplication::clipboard()->image());
    if (!bytes.isEmpty())
        setLogo({LogoChange::What::Replace, bytes});
}

void frmNewLabel::setLogo(LogoChange change) {
    m_change = std::move(change);
    showLogo(m_change.bytes);
}

void frmNewLabel::showLogo(const QByteArray& bytes) {
    const QImage image = LabelEditor::decoded(bytes, logoBox);
    if (image.isNull())
        m_logo->setText(bytes.isEmpty() ? tr("No logo") : QStringLiteral("Missed file"));
    else
        m_logo->setPixmap(QPixmap::fromImage(image));
    m_clear->setEnabled(!bytes.isEmpty());
    enable();
}

void frmNewLabel::enable() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    m_paste->setEnabled(data && data->hasImage());
}

bool frmNewLabel::isChanged() const {
    return m_name->text() != m_stored || m_change.what != LogoChange::What::Keep;
}

bool frmNewLabel::save() {
    m_name->setFocus();
    return m_labels.save(m_id, m_name->text(), m_change);
}

} // namespace tessaranth
