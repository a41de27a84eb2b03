// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecTracksTab.h"

#include "recordings/forms/frmTrackToWorklist.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/OrderedTree.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tessaranth {

namespace {

const QString noLength = QStringLiteral("00.00");

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
    setTabOrder(m_name, m_length);
    setTabOrder(m_length, m_add);
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
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &RecTracksTab::copySelected);
    connect(
        m_list, &OrderedTree::rowsDropped, this,
        [this](QTreeWidgetItem* target, bool behind) {
            move(target ? m_list->indexOfTopLevelItem(target) + behind : int(m_tracks.size()));
        },
        Qt::QueuedConnection);
}

void RecTracksTab::buildInput(QBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    m_name = FormHelpers::lineEdit(
        this, QStringLiteral("txtTrack"), tr("Name of the track"),
        m_context.session.fields().width(QStringLiteral("Tracks"), QStringLiteral("TrackName")));
    m_length = FormHelpers::lineEdit(this, QStringLiteral("meb"), tr("Length, minutes and seconds"), 0);
    m_length->setInputMask(QStringLiteral("99.99"));
    m_length->setText(noLength);
    constexpr int lengthWidth = 64;
    m_length->setFixedWidth(lengthWidth);
    const auto button = [&](const QString& text, const char* name, const QString& tip,
                            void (RecTracksTab::*run)()) {
        auto* made = new QPushButton(text);
        made->setObjectName(QLatin1String(name));
        made->setToolTip(tip);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, run);
        return made;
    };
    m_add = button(tr("Add &track"), "cmdTrackAdd", tr("Add new tracks  (Enter)"), &RecTracksTab::addTrack);
    m_set = button(tr("&Set"), "cmdTrackSet", tr("Set the current values  (Ctrl+Enter)"),
                   &RecTracksTab::setTrack);
    row->addWidget(caption(tr("Na&me:"), m_name));
    row->addWidget(m_name, 1);
    row->addWidget(caption(tr("&Length:"), m_length));
    row->addWidget(m_length);
    row->addWidget(m_add);
    row->addWidget(m_set);
    layout->addLayout(row);
    for (QLineEdit* edit : {m_name, m_length}) {
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textChanged, this, &RecTracksTab::enable);
        connect(edit, &QLineEdit::textChanged, this, &RecTab::changed);
    }
}

QWidget* RecTracksTab::firstField() const { return m_name; }

QString RecTracksTab::discId() const { return m_discId->text().trimmed(); }

// ---- discs

void RecTracksTab::load() {
    clearInput();
    fillDiscs();
    showDisc();
}

void RecTracksTab::fillDiscs() {
    const QSignalBlocker blocker(m_discs);
    const int discs = qMax(1, m_context.editor.specs().units);
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
    takeSelected();
    if (isListChanged() &&
        FormHelpers::settleUnsaved(m_context.session.messages(), QStringLiteral("Unload form"),
                                   QStringLiteral("Do you want to save the changes?"),
                                   [this] { return apply(); }) == FormHelpers::Unsaved::Kept) {
        const QSignalBlocker blocker(m_discs);
        m_discs->setCurrentIndex(m_disc - 1);
        return;
    }
    m_disc = wanted;
    const QSignalBlocker blocker(m_discs); // saving has filled it again
    m_discs->setCurrentIndex(wanted - 1);
    showDisc();
}

void RecTracksTab::showDisc() {
    m_tracks = m_read = m_context.editor.tracks(m_disc);
    m_readId = m_context.editor.discId(m_disc).trimmed();
    m_discId->setText(m_readId);
    if (m_copiedFrom >= 0 || !isTyped())
        clearInput();
    show({});
}

bool RecTracksTab::apply() {
    if (isTyped() && !takeTyped())
        return false;
    const auto tracks = m_tracks != m_read ? std::optional(m_tracks) : std::nullopt;
    const auto id = discId() != m_readId ? std::optional(discId()) : std::nullopt;
    if (!m_context.editor.applyTracks(m_disc, tracks, id))
        return false;
    const std::vector<int> selected = m_list->selectedRows();
    m_tracks = m_read = m_context.editor.tracks(m_disc);
    m_readId = m_context.editor.discId(m_disc).trimmed();
    m_discId->setText(m_readId);
    show(selected);
    return true;
}

// ---- showing

void RecTracksTab::show(const std::vector<int>& selected) {
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
        QList<QTreeWidgetItem*> items;
        int number = 0;
        for (const Track& track : m_tracks) {
            auto* item = new QTreeWidgetItem({QString::number(++number), track.name, track.length});
            item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
            item->setTextAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
            item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
            items.push_back(item);
        }
        m_list->addTopLevelItems(items);
        m_list->fitColumns(1);
        if (!selected.empty())
            m_list->selectRows(selected);
    }
    if (!selected.empty())
        copySelected();
    showTotal();
    enable();
    emit changed();
}

void RecTracksTab::showTotal() {
    const QString time = totalLength(m_tracks);
    m_total->setText(tr("Tracks: %1").arg(m_tracks.size()) +
                     (time.isEmpty() ? QString() : QStringLiteral("     ") + tr("Total time: %1").arg(time)));
}

void RecTracksTab::copySelected() {
    takeSelected();
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.size() == 1) {
        m_copiedFrom = rows.front();
        const Track& track = m_tracks[size_t(m_copiedFrom)];
        m_name->setText(track.name);
        m_length->setText(track.length.isEmpty() ? noLength : QString(track.length).replace(u':', u'.'));
        m_copied = {track.name.trimmed(), m_length->text()};
    }
    enable();
    emit changed();
}

void RecTracksTab::enable() {
    const std::vector<int> rows = m_list->selectedRows();
    const bool fit =
        !m_name->text().trimmed().isEmpty() && !m_length->text().isEmpty() && isLength(m_length->text());
    if (isLength(m_length->text()))
        FormHelpers::markRefused(m_length, false);
    m_add->setEnabled(!m_name->text().trimmed().isEmpty());
    m_set->setEnabled(fit && rows.size() == 1);
    m_remove->setEnabled(!rows.empty());
    m_up->setEnabled(!rows.empty() && rows.front() > 0);
    m_works->setEnabled(!rows.empty());
    m_down->setEnabled(!rows.empty() && rows.back() + 1 < int(m_tracks.size()));
}

// ---- what is typed, but not in the list yet

bool RecTracksTab::isTyped() const {
    return !m_name->text().trimmed().isEmpty() &&
           Track{m_name->text().trimmed(), m_length->text()} != m_copied;
}

void RecTracksTab::clearInput() {
    m_name->clear();
    m_length->setText(noLength);
    m_copied = {};
    m_copiedFrom = -1;
}

// Whoever saves means what is seen: a track that was changed, or one more.
bool RecTracksTab::takeTyped() {
    const std::optional<Track> track = typed();
    if (!track)
        return false;
    if (m_copiedFrom < 0) {
        m_tracks.push_back(*track);
        clearInput();
        return true;
    }
    m_tracks[size_t(m_copiedFrom)] = *track;
    m_copied = {track->name, m_length->text()};
    QTreeWidgetItem* item = m_list->topLevelItem(m_copiedFrom);
    item->setText(1, track->name);
    item->setText(2, track->length);
    return true;
}

// A changed name is not lost when another track is chosen, nor with a command on the rows.
void RecTracksTab::takeSelected() {
    if (m_copiedFrom >= 0 && isTyped() && isLength(m_length->text()))
        takeTyped();
}

// ---- changes

std::optional<Track> RecTracksTab::typed() {
    const QString name = m_name->text().trimmed();
    QString length = m_length->text();
    if (name.isEmpty())
        return std::nullopt;
    if (length.size() != noLength.size() || !isLength(length)) {
        FormHelpers::markRefused(m_length, true);
        m_length->setFocus();
        m_length->selectAll();
        return std::nullopt;
    }
    return Track{name, length.replace(u'.', u':')};
}

void RecTracksTab::addTrack() {
    const std::optional<Track> track = typed();
    if (!track)
        return;
    m_tracks.push_back(*track);
    clearInput();
    show({});
    m_list->scrollToBottom();
    m_name->setFocus();
}

void RecTracksTab::setTrack() {
    const std::vector<int> rows = m_list->selectedRows();
    const std::optional<Track> track = rows.size() == 1 ? typed() : std::nullopt;
    if (!track)
        return;
    takeTyped();
    show(rows);
}

void RecTracksTab::removeTracks() {
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.empty())
        return;
    clearInput();
    show(removeElements(m_tracks, rows));
}

void RecTracksTab::move(int target) {
    const std::vector<int> rows = m_list->selectedRows();
    if (rows.empty() || target < 0 || target > int(m_tracks.size()))
        return;
    takeSelected();
    m_copiedFrom = -1;
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
    takeSelected();
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
    takeSelected();
    QStringList names;
    for (const int row : m_list->selectedRows())
        names.push_back(m_tracks[size_t(row)].name);
    frmTrackToWorklist(m_context, m_context.editor, names, this).exec();
}

// Enter adds what is typed; several lines pasted into the name are tracks.
bool RecTracksTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (key->modifiers() & Qt::ControlModifier)
                m_set->click();
            else
                addTrack();
            return true;
        }
        if (watched == m_name && key->matches(QKeySequence::Paste) &&
            QApplication::clipboard()->text().trimmed().contains(u'\n')) {
            paste();
            return true;
        }
    }
    return RecTab::eventFilter(watched, event);
}

} // namespace tessaranth
