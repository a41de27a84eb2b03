// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmMediaPath.h"

#include "items/OpenCards.h"
#include "platform/Volumes.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/Reading.h"
#include "widgets/WindowProgress.h"

#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tessaranth {

namespace {
const QString anyDrive = QStringLiteral("Any");
} // namespace

frmMediaPath::frmMediaPath(const FormContext& context, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_cards(cards), m_locations(context.session) {
    setObjectName(QStringLiteral("frmMediaPath"));
    setWindowTitle(QStringLiteral("Media files locations update"));
    buildUi();
    readInto(this, context.session, [this] { m_oldDrive->addItems(m_locations.drives()); });
    enable();
}

void frmMediaPath::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(
        m_context.icons, QStringLiteral("Media"), windowTitle(),
        QStringLiteral("All the paths that meet the entered requirements will be updated")));
    m_byDrive = new QRadioButton(tr("The files are on another &drive"));
    m_byDrive->setObjectName(QStringLiteral("optDrive"));
    m_byDrive->setChecked(true);
    m_byFolder = new QRadioButton(tr("The files are in another &folder"));
    m_byFolder->setObjectName(QStringLiteral("optFolder"));
    connect(m_byDrive, &QRadioButton::toggled, this, &frmMediaPath::enable);
    layout->addWidget(m_byDrive);
    layout->addWidget(driveFields());
    layout->addWidget(m_byFolder);
    layout->addWidget(folderFields());
    layout->addStretch();
    m_update = FormHelpers::buttonRow(this, layout, tr("&Update"), QStringLiteral("cmdUpdate"));
    connect(m_update, &QPushButton::clicked, this, &frmMediaPath::run);
    setMinimumWidth(520);
}

QComboBox* frmMediaPath::driveBox(const QString& name, const QString& spoken, const QStringList& drives) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setAccessibleName(spoken);
    box->setEditable(true); // a drive that is not connected now can be written
    box->addItems(drives);
    connect(box, &QComboBox::currentTextChanged, this, &frmMediaPath::enable);
    return box;
}

QWidget* frmMediaPath::driveFields() {
    m_driveFields = new QWidget;
    m_oldDrive = driveBox(QStringLiteral("cmbOldDrive"), tr("Old drive"), {anyDrive});
    m_newDrive = driveBox(QStringLiteral("cmbNewDrive"), tr("New drive"), driveNames());
    m_newDrive->setCurrentText({});
    auto* fields = new QFormLayout(m_driveFields);
    fields->addRow(tr("&Old drive:"), m_oldDrive);
    fields->addRow(tr("&New drive:"), m_newDrive);
    return m_driveFields;
}

QWidget* frmMediaPath::folderFields() {
    m_folderFields = new QWidget;
    auto* fields = new QFormLayout(m_folderFields);
    const auto add = [&](const QString& caption, const QString& spoken, const char* name, const char* browse,
                         const QString& browseCaption) {
        QLineEdit* edit = FormHelpers::lineEdit(this, QLatin1String(name), spoken, 250);
        connect(edit, &QLineEdit::textChanged, this, &frmMediaPath::enable);
        auto* choose = new QPushButton(browseCaption);
        choose->setObjectName(QLatin1String(browse));
        choose->setAutoDefault(false);
        connect(choose, &QPushButton::clicked, this, [this, edit, spoken] { chooseFolder(edit, spoken); });
        auto* row = new QHBoxLayout;
        row->addWidget(edit, 1);
        row->addWidget(choose);
        auto* label = new QLabel(caption);
        label->setBuddy(edit);
        fields->addRow(label, row);
        return edit;
    };
    m_oldFolder = add(tr("O&ld folder:"), tr("Beginning of the old path"), "txtOldFolder", "cmdOldFolder",
                      tr("&Browse..."));
    m_newFolder = add(tr("N&ew folder:"), tr("Beginning of the new path"), "txtNewFolder", "cmdNewFolder",
                      tr("B&rowse..."));
    return m_folderFields;
}

void frmMediaPath::chooseFolder(QLineEdit* edit, const QString& title) {
    FileRequest request;
    request.mode = FileRequest::Mode::Folder;
    request.title = title;
    request.folder = edit->text();
    const QStringList folder = m_context.session.messages().chooseFiles(request);
    if (!folder.isEmpty())
        edit->setText(QDir::toNativeSeparators(folder.front()));
}

LocationChange frmMediaPath::change() const {
    if (m_byFolder->isChecked())
        return LocationChange::byFolder(m_oldFolder->text().trimmed(), m_newFolder->text().trimmed());
    const QString old = m_oldDrive->currentText().trimmed();
    return LocationChange::byDrive(old == anyDrive ? QString() : old, m_newDrive->currentText().trimmed());
}

void frmMediaPath::enable() {
    if (!m_update)
        return; // the fields are still being made
    m_driveFields->setEnabled(m_byDrive->isChecked());
    m_folderFields->setEnabled(m_byFolder->isChecked());
    const bool hasOld = m_byFolder->isChecked() ? !m_oldFolder->text().trimmed().isEmpty()
                                                : !m_oldDrive->currentText().trimmed().isEmpty();
    m_update->setEnabled(hasOld && !change().to.isEmpty());
}

void frmMediaPath::run() {
    bool updated = false;
    {
        WindowProgress progress(this);
        updated = m_locations.update(change(), progress);
    }
    if (!updated)
        return;
    if (m_cards)
        for (const QString& card : m_locations.changedCards())
            m_cards->reloadCard(card);
    accept();
}

} // namespace tessaranth
