// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/frmTrackToWorklist.h"

#include "items/ItemKind.h"
#include "items/forms/frmListChooser.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/Reading.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

frmTrackToWorklist::frmTrackToWorklist(const FormContext& context, RecordingEditor& editor,
                                       const QStringList& titles, QWidget* parent)
    : QDialog(parent), m_context(context), m_editor(editor) {
    setObjectName(QStringLiteral("frmTrackToWorklist"));
    setWindowTitle(QStringLiteral("Tracks to Worklist"));
    buildUi(titles);
    readInto(this, context.session, [this] {
        for (const RecordingArtist& artist : m_editor.composers())
            m_composer->addItem(artist.name, artist.id);
    });
    enable();
}

void frmTrackToWorklist::buildUi(const QStringList& titles) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("Comp"), windowTitle(),
                          QStringLiteral("Edit each track appropriately and choose the composer.")));
    m_titles = new QListWidget;
    m_titles->setObjectName(QStringLiteral("lvTitles"));
    m_titles->setAccessibleName(tr("Titles"));
    m_titles->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::SelectedClicked);
    for (const QString& title : titles) {
        auto* item = new QListWidgetItem(title, m_titles);
        item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    m_titles->setCurrentRow(0);
    connect(m_titles, &QListWidget::itemChanged, this, &frmTrackToWorklist::enable);
    layout->addWidget(m_titles, 1);
    auto* checks = new QHBoxLayout;
    for (const auto& [caption, name, state] :
         {std::tuple{tr("Check &all"), "cmdCheckAll", Qt::Checked},
          std::tuple{tr("&Uncheck all"), "cmdUncheckAll", Qt::Unchecked}}) {
        auto* button = new QPushButton(caption);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, state = state] { checkAll(state); });
        checks->addWidget(button);
    }
    checks->addStretch();
    layout->addLayout(checks);
    auto* composer = new QHBoxLayout;
    auto* label = new QLabel(tr("&Composer"));
    m_composer = new QComboBox;
    m_composer->setObjectName(QStringLiteral("cboComposer"));
    m_composer->setAccessibleName(tr("Composer"));
    label->setBuddy(m_composer);
    connect(m_composer, &QComboBox::currentIndexChanged, this, &frmTrackToWorklist::enable);
    auto* other = new QPushButton(tr("Choose an&other..."));
    other->setObjectName(QStringLiteral("cmdComposer"));
    other->setAutoDefault(false);
    connect(other, &QPushButton::clicked, this, &frmTrackToWorklist::chooseComposer);
    composer->addWidget(label);
    composer->addWidget(m_composer, 1);
    composer->addWidget(other);
    layout->addLayout(composer);
    m_ok = FormHelpers::buttonRow(this, layout, QStringLiteral("OK"), QStringLiteral("cmdOk"));
    connect(m_ok, &QPushButton::clicked, this, &frmTrackToWorklist::add);
    resize(560, 460);
}

void frmTrackToWorklist::checkAll(Qt::CheckState state) {
    for (int row = 0; row < m_titles->count(); ++row)
        m_titles->item(row)->setCheckState(state);
}

void frmTrackToWorklist::chooseComposer() {
    frmListChooser chooser(m_context, ItemKind::Composer, QStringLiteral("  Composers list"), false, this);
    if (chooser.exec() != QDialog::Accepted)
        return;
    int at = m_composer->findData(chooser.id());
    if (at < 0) {
        at = m_composer->count();
        m_composer->addItem(chooser.names().value(0), chooser.id());
    }
    m_composer->setCurrentIndex(at);
}

qint64 frmTrackToWorklist::composer() const { return m_composer->currentData().toLongLong(); }

QStringList frmTrackToWorklist::keptTitles() const {
    QStringList kept;
    for (int row = 0; row < m_titles->count(); ++row) {
        const QListWidgetItem* item = m_titles->item(row);
        if (item->checkState() == Qt::Checked && !item->text().trimmed().isEmpty())
            kept << item->text();
    }
    return kept;
}

void frmTrackToWorklist::enable() { m_ok->setEnabled(composer() != 0 && !keptTitles().isEmpty()); }

void frmTrackToWorklist::add() {
    const int added = m_editor.addWorks(composer(), keptTitles());
    if (added < 0)
        return;
    m_context.session.messages().information(
        applicationTitle,
        QString::number(added) + QStringLiteral(" works have been added to the ") +
            m_composer->currentText() +
            QStringLiteral(" worklist.\nNow you can easily add these works to the recording."));
    accept();
}

} // namespace tessaranth
