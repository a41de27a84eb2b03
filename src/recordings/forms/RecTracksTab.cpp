// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecTracksTab.h"

#include "recordings/forms/TrackInput.h"
#include "recordings/forms/frmTrackToWorklist.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/OrderedTree.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tessaranth {

namespace {

QLabel* caption(const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

RecTracksTab::RecTracksTab(RecContext& context) : RecTab(context) {
    setObjectName(QStringLiteral("tabTracks"));
    auto* layout = new QVBoxLayout(this);
    buildDisc(layout);
    buildList(layout);
    buildInput(layout);
    setTabOrder(m_input->nameBox(), m_input->lengthBox());
    setTabOrder(m_input->lengthBox(), m_add);
    setTabOrder(m_add, m_set);
}

void RecTracksTab::buildDisc(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    m_discs = new QComboBox;
    m_discs->setObjectName(QStringLiteral("cboDisc"));
    m_discs->setAccessibleName(tr("Disc"));
    m_discs->setMaxVisibleItems(20);
    connect(m_discs, &QComboBox::currentIndexChanged, this, &RecTracksTab::changeDisc);
    m_discId = FormHelpers::lineEdit(
        this, QStringLiteral("txtDiscId"), tr("Disc identifier"),
        m_context.session.fields().width(QStringLiteral("DiscIds"), QStringLiteral("DiscId")));
    constexpr int widestId = 160;
    m_discId->setMaximumWidth(widestId);
    connect(m_discId, &QLineEdit::textChanged, this, &RecTab::changed);
    m_total = new QLabel;
    m_total->setObjectName(QStringLiteral("total"));
    row->addWidget(caption(tr("D&isc:"), m_discs));
    row->addWidget(m_discs);
    row->addSpacing(16);
    row->addWidget(caption(tr("Disc identi&fier:"), m_discId));
    row->addWidget(m_discId, 1);
    row->addStretch(1);
    row->addWidget(m_total);
    layout->addLayout(row);
}

void RecTracksTab::buildList(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    m_list = new OrderedTree(this, QStringLiteral("LvTracks"), tr("Tracks of the disc"),
                             {tr("No."), tr("Name"), tr("Length")});
    row->addWidget(m_list, 1);
    auto* buttons = new QVBoxLayout;
    const auto add = [&](const QString& text, const char* name, const QString& tip, const char* key,
                         const std::function<void()>& run) {
        QPushButton* button = command(m_list, text, name, tip, key, run);
        buttons->addWidget(button);
        return button;
    };
    m_remove = add(tr("&Remove"), "cmdTrackRemove", tr("Remove the selected tracks"), "Del",
                   [this] { removeTracks(); });
    m_up = add(tr("Move &up"), "cmdTrackUp", tr("Move up the selected track"), "Alt+Up",
               [this] { move(m_list->selectedRows().front() - 1); });
    m_down = add(tr("Move &down"), "cmdTrackDown", tr("Move down the selected track"), "Alt+Down",
                 [this] { move(m_list->selectedRows().back() + 2); });
    add(tr("&Paste tracks"), "cmdTrackPaste",
        tr("Add the tracks of the clipboard's text: one a line, with or without number and length"), "Ctrl+V",
        [this] { paste(); });
    buttons->addStretch();
    m_works = add(tr("Tracks to &works..."), "cmdTrackWorks", tr("Turn the selected tracks into works"), "",
                  [this] { makeWorks(); });
    row->addLayout(buttons);
    layout->addLayout(row, 1);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &RecTracksTab::followSelection);
    connect(
        m_list, &OrderedTree::rowsDropped, this,
        [this](QTreeWidgetItem* target, bool behind) {
            move(target ? m_list->indexOfTopLevelItem(target) + behind : int(m_tracks.size()));
        },
        Qt::QueuedConnection);
}

void RecTracksTab::buildInput(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    m_input = new TrackInput(
        m_context.session.fields().width(QStringLiteral("Tracks"), QStringLiteral("TrackName")));
    const auto button = [&](const QString& text, const char* name, const QString& tip,
                            void (RecTracksTab::*run)()) {
        auto* made = new QPushButton(text);
        made->setObjectName(QLatin1String(name));
        made->setToolTip(tip);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, run);
        row->addWidget(made, 0, Qt::AlignTop);
        return made;
    };
    row->addWidget(m_input, 1);
    m_add = button(tr("Add &track"), "cmdTrackAdd", tr("Add new tracks  (Enter)"), &RecTracksTab::addTrack);
    m_set = button(tr("&Set"), "cmdTrackSet",
                   tr("Set the current values  (Enter; with Ctrl the track stays selected)"),
                   &RecTracksTab::setTrack);
    layout->addLayout(row);
    connect(m_input, &TrackInput::edited, this, &RecTracksTab::enable);
    connect(m_input, &TrackInput::edited, this, &RecTab::changed);
    connect(m_input, &TrackInput::entered, this, &RecTracksTab::enter);
    connect(m_input, &TrackInput::linesPasted, this, &RecTracksTab::paste);
}

QWidget* RecTracksTab::firstField() const { return m_input->nameBox(); }

bool RecTracksTab::isChanged() const { return isListChanged() || m_input->isTyped(); }

QString RecTracksTab::discId() const { return m_discId->text().trimmed(); }

// ---- discs

void RecTracksTab::read() {
    clearInput();
    fillDiscs();
    showDisc();
}

void RecTracksTab::fillDiscs() {
    const QSignalBlocker blocker(m_discs);
    const int discs = m_context.editor.discs();
    m_disc = qBound(1, m_disc, discs);
    m_discs->clear();
    for (int disc = 1; disc <= discs; ++disc)
        m_discs->addItem(QStringLiteral("DISC %1").arg(disc));
    m_discs->setCurrentIndex(m_disc - 1);
}

// The tracks of the disc that is left must not go unsaved without a word. The name of a track to come is not
// asked about: it may have been meant for the other disc, and stays.
void RecTracksTab::changeDisc() {
    const int wanted = m_discs->currentIndex() + 1;
    const bool isSettled = m_changing < 0 || settleInput();
    if (!isSettled || (isListChanged() && FormHelpers::settleUnsaved(
                                              m_context.session.messages(), QStringLiteral("Unload form"),
                                              QStringLiteral("Do you want to save the changes?"),
                                              [this] { return apply(); }) == FormHelpers::Unsaved::Kept)) {
        const QSignalBlocker blocker(m_discs);
        m_discs->setCurrentIndex(m_disc - 1);
        return;
    }
    m_disc = qMin(wanted, m_discs->count()); // saving has filled it again
    const QSignalBlocker blocker(m_discs);
    m_discs->setCurrentIndex(m_disc - 1);
    reading([this] { showDisc(); });
}

void RecTracksTab::showDisc() {
    m_tracks = m_read = m_context.editor.tracks(m_disc);
    m_readId = m_context.editor.discId(m_disc).trimmed();
    m_discId->setText(m_readId);
    if (m_changing >= 0)
        clearInput();
    show({});
}

bool RecTracksTab::apply() {
    if (!settleInput())
        return false;
    const auto tracks = m_tracks != m_read ? std::optional(m_tracks) : std::nullopt;
    const auto id = discId() != m_readId ? std::optional(discId()) : std::nullopt;
    if (!m_context.editor.applyTracks(m_disc, tracks, id))
        return false;
    const std::vector<int> selected = m_list->selectedRows();
    reading([&] {
        fillDiscs(); // one above the units is gone with its last track
        m_tracks = m_read = m_context.editor.tracks(m_disc);
        m_readId = m_context.editor.discId(m_disc).trimmed();
        m_discId->setText(m_readId);
        show(selected);
    });
    return true;
}

// ---- showing

QTreeWidgetItem* RecTracksTab::newItem(int number) const {
    const Track& track = m_tracks[size_t(number)];
    auto* item = new QTreeWidgetItem({QString::number(number + 1), track.name, track.length});
    item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
    item->setTextAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
    item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

void RecTracksTab::show(const std::vector<int>& selected) {
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
        QList<QTreeWidgetItem*> items;
        for (int number = 0; number < int(m_tracks.size()); ++number)
            items.push_back(newItem(number));
        m_list->addTopLevelItems(items);
        m_list->fitColumns(1);
        if (!selected.empty())
            m_list->selectRows(selected);
    }
    fillInput();
    showTotal();
    enable();
    emit changed();
}

void RecTracksTab::showTotal() {
    const QString time = totalLength(m_tracks);
    m_total->setText(tr("Tracks: %1").arg(m_tracks.size()) +
                     (time.isEmpty() ? QString() : QStringLiteral("     ") + tr("Total time: %1").arg(time)));
}

// Whoever chooses another track is done with the one in the input; a fault in it is mended first.
void RecTracksTab::followSelection() {
    if (!settleInput()) {
        const QSignalBlocker blocker(m_list);
        m_list->selectRows(m_changing >= 0 ? std::vector{m_changing} : std::vector<int>());
    }
    fillInput();
    enable();
    emit changed();
}

// What was typed for a track to come, and is not in the list yet, stays.
void RecTracksTab::fillInput() {
    if (m_input->isTyped())
        return;
    const std::vector<int> rows = m_list->selectedRows();
    m_changing = rows.size() == 1 ? rows.front() : -1;
    if (m_changing >= 0)
        m_input->show(m_tracks[size_t(m_changing)]);
    else
        m_input->clear();
}

void RecTracksTab::enable() {
    const std::vector<int> rows = m_list->selectedRows();
    m_add->setEnabled(!m_input->nameBox()->text().trimmed().isEmpty());
    m_set->setEnabled(m_input->isFit() && rows.size() == 1);
    m_remove->setEnabled(!rows.empty());
    m_up->setEnabled(!rows.empty() && rows.front() > 0);
    m_works->setEnabled(!rows.empty());
    m_down->setEnabled(!rows.empty() && rows.back() + 1 < int(m_tracks.size()));
}

// ---- what is typed, but not in the list yet

void RecTracksTab::clearInput() {
    m_input->clear();
    m_changing = -1;
}

// What is seen is meant: a track that was changed, or one more.
bool RecTracksTab::takeTyped() {
    const std::optional<Track> track = m_input->take();
    if (!track)
        return false;
    if (m_changing < 0) {
        m_tracks.push_back(*track);
        m_list->addTopLevelItem(newItem(int(m_tracks.size()) - 1));
        clearInput();
    } else {
        m_tracks[size_t(m_changing)] = *track;
        m_input->show(*track);
        QTreeWidgetItem* item = m_list->topLevelItem(m_changing);
        item->setText(1, track->name);
        item->setText(2, track->length);
    }
    showTotal();
    return true;
}

bool RecTracksTab::settleInput() { return !m_input->isTyped() || takeTyped(); }

// ---- changes

void RecTracksTab::enter(bool stay) {
    if (m_changing < 0) {
        addTrack();
        return;
    }
    const int row = m_changing;
    if (!settleInput())
        return;
    // The next name that is typed must not replace this one.
    if (!stay)
        clearInput();
    show(stay ? std::vector{row} : std::vector<int>());
    m_input->nameBox()->setFocus();
}

void RecTracksTab::addTrack() {
    const int changing = std::exchange(m_changing, -1); // the track that was shown stays as it is
    if (!takeTyped()) {
        m_changing = changing;
        return;
    }
    show({});
    m_list->scrollToBottom();
    m_input->nameBox()->setFocus();
}

void RecTracksTab::setTrack() {
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.size() != 1 || !m_input->isFit())
        return;
    m_changing = rows.front();
    takeTyped();
    show(rows);
}

void RecTracksTab::removeTracks() {
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.empty())
        return;
    if (m_changing >= 0)
        clearInput();
    show(removeElements(m_tracks, rows));
}

void RecTracksTab::move(int target) {
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.empty() || target < 0 || target > int(m_tracks.size()) || (m_changing >= 0 && !settleInput()))
        return;
    const int first = moveElements(m_tracks, rows, target);
    show(numbersFrom(first, rows.size()));
}

void RecTracksTab::paste() { addText(QApplication::clipboard()->text()); }

void RecTracksTab::addText(const QString& text) {
    const std::vector<Track> found = tracksOfText(text);
    if (found.empty()) {
        m_context.session.messages().information(tr("Paste tracks"),
                                                 tr("The clipboard holds no text with tracks, one a line."));
        return;
    }
    if (m_changing >= 0 && !settleInput())
        return;
    const int first = int(m_tracks.size());
    m_tracks.insert(m_tracks.end(), found.begin(), found.end());
    show(numbersFrom(first, found.size()));
    if (const QStringList odd = oddLengthsOfText(text); !odd.isEmpty())
        m_context.session.messages().information(tr("Paste tracks"),
                                                 tr("These are no lengths, which are minutes, a colon and "
                                                    "two digits. They were left in the names: %1")
                                                     .arg(odd.mid(0, 10).join(QStringLiteral(", "))));
}

void RecTracksTab::makeWorks() {
    if (m_changing >= 0 && !settleInput())
        return;
    QStringList names;
    for (const int row : m_list->selectedRows())
        names.push_back(m_tracks[size_t(row)].name);
    frmTrackToWorklist(m_context, m_context.editor, names, this).exec();
}

} // namespace tessaranth
