// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/frmTrackToWorklist.h"

#include "items/ItemKind.h"
#include "items/forms/frmListChooser.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/Reading.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

enum Column { TitleColumn, RemarkColumn };

struct ReadOnly final : QStyledItemDelegate {
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget*, const QStyleOptionViewItem&, const QModelIndex&) const override {
        return nullptr;
    }
};

} // namespace

frmTrackToWorklist::frmTrackToWorklist(const FormContext& context, RecordingEditor& editor,
                                       const QStringList& names, QWidget* parent)
    : QDialog(parent), m_context(context), m_editor(editor), m_names(names) {
    setObjectName(QStringLiteral("frmTrackToWorklist"));
    setWindowTitle(QStringLiteral("Tracks to Worklist"));
    buildUi();
    const auto read = [this] {
        for (const RecordingArtist& artist : m_editor.composers())
            m_composer->addItem(artist.name, artist.id);
        fill();
    };
    readInto(this, context.session, read);
}

void frmTrackToWorklist::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("Comp"), windowTitle(),
                          QStringLiteral("Edit each track appropriately and choose the composer.")));
    buildList(layout);
    buildComposer(layout);
    m_place = new QCheckBox(tr("&Put the checked works on the recording"));
    m_place->setObjectName(QStringLiteral("chkPlace"));
    connect(m_place, &QCheckBox::toggled, this, &frmTrackToWorklist::enable);
    layout->addWidget(m_place);
    m_ok = FormHelpers::buttonRow(this, layout, QStringLiteral("OK"), QStringLiteral("cmdOk"));
    connect(m_ok, &QPushButton::clicked, this, &frmTrackToWorklist::add);
    resize(620, 480);
}

QPushButton* frmTrackToWorklist::button(const QString& caption, const char* name,
                                        const std::function<void()>& run) {
    auto* made = new QPushButton(caption);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, run);
    return made;
}

void frmTrackToWorklist::buildList(QBoxLayout* layout) {
    m_titles = new QTreeWidget;
    m_titles->setObjectName(QStringLiteral("lvTitles"));
    m_titles->setAccessibleName(tr("Titles"));
    m_titles->setHeaderLabels({tr("Title"), tr("Remark")});
    m_titles->setRootIsDecorated(false);
    m_titles->setItemDelegateForColumn(RemarkColumn, new ReadOnly(m_titles));
    m_titles->header()->setStretchLastSection(false);
    m_titles->header()->setSectionResizeMode(TitleColumn, QHeaderView::Stretch);
    m_titles->header()->setSectionResizeMode(RemarkColumn, QHeaderView::ResizeToContents);
    m_titles->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::SelectedClicked);
    connect(m_titles, &QTreeWidget::itemChanged, this, &frmTrackToWorklist::takeEdit);
    layout->addWidget(m_titles, 1);
    m_merge = new QCheckBox(tr("&Movements of one work are one title"));
    m_merge->setObjectName(QStringLiteral("chkMerge"));
    const bool hasMovements = worksOfTracks(m_names, true).size() < worksOfTracks(m_names, false).size();
    m_merge->setVisible(hasMovements);
    m_merge->setChecked(hasMovements);
    connect(m_merge, &QCheckBox::toggled, this, &frmTrackToWorklist::fill);
    layout->addWidget(m_merge);
    auto* checks = new QHBoxLayout;
    checks->addWidget(button(tr("Check &all"), "cmdCheckAll", [this] { checkAll(Qt::Checked); }));
    checks->addWidget(button(tr("&Uncheck all"), "cmdUncheckAll", [this] { checkAll(Qt::Unchecked); }));
    checks->addStretch();
    layout->addLayout(checks);
}

void frmTrackToWorklist::buildComposer(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(tr("&Composer"));
    m_composer = new QComboBox;
    m_composer->setObjectName(QStringLiteral("cboComposer"));
    m_composer->setAccessibleName(tr("Composer"));
    label->setBuddy(m_composer);
    connect(m_composer, &QComboBox::currentIndexChanged, this, &frmTrackToWorklist::mark);
    row->addWidget(label);
    row->addWidget(m_composer, 1);
    row->addWidget(button(tr("Choose an&other..."), "cmdComposer", [this] { chooseComposer(); }));
    layout->addLayout(row);
}

// ---- the list

void frmTrackToWorklist::fill() {
    m_works = worksOfTracks(m_names, m_merge->isChecked());
    {
        const QSignalBlocker blocker(m_titles);
        m_titles->clear();
        for (TrackWork& work : m_works) {
            if (const auto typed = m_edited.find(work.tracks); typed != m_edited.end())
                work.title = typed->second;
            auto* item = new QTreeWidgetItem(m_titles, {work.title});
            item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
            item->setCheckState(TitleColumn, Qt::Checked);
        }
        m_titles->setCurrentItem(m_titles->topLevelItem(0));
    }
    mark();
}

// What the composer turns out to have is unchecked, and checked again for one who does not have it; all other
// boxes stay as the user left them.
void frmTrackToWorklist::mark() {
    std::vector<TrackWork> found = m_works;
    if (!m_editor.findWorks(composer(), found))
        return;
    const QSignalBlocker blocker(m_titles);
    for (size_t i = 0; i < found.size(); ++i) {
        QTreeWidgetItem* item = m_titles->topLevelItem(int(i));
        const bool isPresent = found[i].work != 0;
        if (isPresent != (m_works[i].work != 0))
            item->setCheckState(TitleColumn, isPresent ? Qt::Unchecked : Qt::Checked);
        QStringList remarks;
        if (found[i].tracks.size() > 1)
            remarks << tr("%1 movements").arg(found[i].tracks.size());
        if (isPresent)
            remarks << tr("in the worklist already");
        item->setText(RemarkColumn, remarks.join(QStringLiteral(", ")));
    }
    m_works = std::move(found);
    enable();
}

void frmTrackToWorklist::takeEdit(QTreeWidgetItem* item, int column) {
    TrackWork& work = m_works[size_t(m_titles->indexOfTopLevelItem(item))];
    if (column != TitleColumn || item->text(TitleColumn) == work.title) {
        enable();
        return;
    }
    work.title = m_edited[work.tracks] = item->text(TitleColumn);
    mark();
}

void frmTrackToWorklist::checkAll(Qt::CheckState state) {
    for (int row = 0; row < m_titles->topLevelItemCount(); ++row)
        m_titles->topLevelItem(row)->setCheckState(TitleColumn, state);
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

std::vector<TrackWork> frmTrackToWorklist::kept() const {
    std::vector<TrackWork> works;
    for (size_t i = 0; i < m_works.size(); ++i)
        if (m_titles->topLevelItem(int(i))->checkState(TitleColumn) == Qt::Checked &&
            !m_works[i].title.trimmed().isEmpty())
            works.push_back(m_works[i]);
    return works;
}

void frmTrackToWorklist::enable() {
    const std::vector<TrackWork> works = kept();
    const bool isAnyNew =
        std::any_of(works.begin(), works.end(), [](const TrackWork& work) { return work.work == 0; });
    m_ok->setEnabled(composer() != 0 && (isAnyNew || (m_place->isChecked() && !works.empty())));
}

void frmTrackToWorklist::add() {
    const int added = m_editor.addWorks(composer(), kept(), m_place->isChecked());
    if (added < 0)
        return;
    m_context.session.messages().information(
        applicationTitle,
        QString::number(added) + QStringLiteral(" works have been added to the ") +
            m_composer->currentText() + QStringLiteral(" worklist.\n") +
            (m_place->isChecked() ? tr("The checked works stand on the recording.")
                                  : QStringLiteral("Now you can easily add these works to the recording.")));
    accept();
}

} // namespace tessaranth
