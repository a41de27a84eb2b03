// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/frmRec.h"

#include "items/CardHeading.h"
#include "items/OpenCards.h"
#include "items/forms/frmListChooser.h"
#include "recordings/forms/RecArtistsTab.h"
#include "recordings/forms/RecCastTab.h"
#include "recordings/forms/RecSpecsTab.h"
#include "recordings/forms/RecTracksTab.h"
#include "recordings/forms/RecWorksTab.h"
#include "store/Guarded.h"
#include "widgets/FormHelpers.h"
#include "widgets/Help.h"
#include "widgets/IconStore.h"
#include "widgets/frmCharmap.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

struct TabWords {
    QString caption, heading, hint;
};
const TabWords words[] = {
    {frmRec::tr("&1 Recording"), QStringLiteral("Recordings"),
     QStringLiteral("Manage recording specifications\nAt least you must insert the recording title.")},
    {frmRec::tr("&2 Artists"), QStringLiteral("Artists"),
     QStringLiteral("Add / Remove artists on recording\n")},
    {frmRec::tr("&3 Works"), QStringLiteral("Work"),
     QStringLiteral(
         "Add / Remove works on recording\nSelect the composer, choose / add a work and add related "
         "performers / personages.")},
    {frmRec::tr("&4 Work details"), QStringLiteral("Work Details"),
     QStringLiteral("Add/Rem Performers/Personages to/from the selected work.\n")},
    {frmRec::tr("&5 Tracks"), QStringLiteral("Track"),
     QStringLiteral("Recording tracks\nManage the tracks of the recording.")}};

const QString unsavedTitle = QStringLiteral("Unload form");
const QString unsavedQuestion = QStringLiteral("Do you want to save the changes?");

QString captionOf(qint64 recording) {
    return recording == 0 ? QStringLiteral(" New recording") : QStringLiteral(" Edit recording");
}

} // namespace

frmRec::frmRec(const FormContext& context, qint64 recording, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_editor(context.session, recording, cards), m_context{context, cards, m_editor} {
    setObjectName(QStringLiteral("frmRec"));
    setWindowTitle(captionOf(recording));
    buildUi();
    showTab();
}

frmRec::~frmRec() = default;

void frmRec::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, QStringLiteral("Recordings"), words[0].heading, words[0].hint));
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_specs = new RecSpecsTab(m_context);
    RecTab* const tabs[] = {m_specs, new RecArtistsTab(m_context), new RecWorksTab(m_context),
                            new RecCastTab(m_context), new RecTracksTab(m_context)};
    for (RecTab* tab : tabs)
        addTab(tab, words[m_all.size()].caption);
    m_title = FormHelpers::quietLabel({});
    m_title->setObjectName(QStringLiteral("title"));
    m_tabs->setCornerWidget(m_title);
    connect(m_tabs, &QTabWidget::currentChanged, this, &frmRec::changeTab);
    layout->addWidget(m_tabs, 1);
    buildButtons(layout);
    resize(800, 600);
}

void frmRec::addTab(RecTab* tab, const QString& caption) {
    auto* page = new QStackedWidget;
    auto* obstacle = new QLabel;
    obstacle->setObjectName(QStringLiteral("obstacle"));
    obstacle->setAlignment(Qt::AlignCenter);
    obstacle->setWordWrap(true);
    page->addWidget(tab);
    page->addWidget(obstacle);
    m_tabs->addTab(page, caption);
    m_all.push_back(tab);
    m_pages.push_back(page);
    connect(tab, &RecTab::changed, this, &frmRec::enable);
    // The key of a tab that is disabled would reach the field with the focus, and type its digit there.
    auto* idle = new QShortcut(QKeySequence::mnemonic(caption), this);
    idle->setEnabled(false);
    m_idleKeys.push_back(idle);
}

void frmRec::buildButtons(QVBoxLayout* layout) {
    auto* row = new QHBoxLayout;
    const auto button = [&](const QString& caption, const char* name, const QString& tip,
                            const std::function<void()>& run) {
        auto* made = new QPushButton(caption);
        made->setObjectName(QLatin1String(name));
        made->setToolTip(tip);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, run);
        row->addWidget(made);
        return made;
    };
    QPushButton* special = button(tr("Sp&ecial characters"), "Charmap", tr("Special characters"),
                                  [this] { frmCharmap::insertInto(focusWidget(), m_context.icons, this); });
    special->setFocusPolicy(Qt::NoFocus); // the field that gets the character keeps the focus
    button(tr("&Help"), "cmdHelp", tr("The help page of this window  (F1)"), [this] { Help::request(this); });
    row->addStretch();
    m_apply = button(tr("&Apply"), "cmdApply", tr("Save this tab  (Ctrl+S)"), [this] { apply(); });
    m_cancel = button(tr("Ca&ncel"), "cmdCancel", tr("Drop the edits of this tab"), [this] { revert(); });
    button(tr("&Close"), "cmdClose", tr("Close the editor  (Esc)"), [this] { reject(); });
    layout->addLayout(row);
    auto* save = new QShortcut(QKeySequence(QStringLiteral("Ctrl+S")), this);
    connect(save, &QShortcut::activated, m_apply, &QPushButton::click);
}

RecTab* frmRec::current() const { return m_all[size_t(m_tabs->currentIndex())]; }

// ---- tabs

bool frmRec::isGone() { return m_editor.id() != 0 && !m_editor.exists(); }

int frmRec::exec() {
    bool isThere = false;
    if (!guarded(m_context.session, [&] { isThere = !isGone(); }))
        return Rejected;
    if (isThere)
        return QDialog::exec();
    m_context.session.messages().warning(windowTitle().trimmed(),
                                         tr("This recording has been deleted meanwhile."));
    return Rejected;
}

// The tab bar has changed already; whoever leaves a tab with edits is asked while that tab is seen.
void frmRec::changeTab(int index) {
    if (index == m_shown)
        return;
    {
        const QSignalBlocker blocker(m_tabs);
        m_tabs->setCurrentIndex(m_shown);
        bool isThere = false;
        if (!guarded(m_context.session, [&] { isThere = !isGone(); }))
            return;
        if (!isThere) { // before anybody drops what was typed
            m_context.session.messages().warning(windowTitle().trimmed(),
                                                 tr("This recording has been deleted meanwhile. This window "
                                                    "shows what was typed last; nothing of "
                                                    "it can be saved."));
            return;
        }
        if (!leave()) {
            current()->firstField()->setFocus();
            return;
        }
        m_tabs->setCurrentIndex(index);
    }
    showTab();
}

bool frmRec::leave() {
    if (!m_obstacle.isEmpty() || !current()->isChanged())
        return true;
    const FormHelpers::Unsaved changes = FormHelpers::settleUnsaved(
        m_context.session.messages(), unsavedTitle, unsavedQuestion, [this] { return apply(); });
    if (changes == FormHelpers::Unsaved::Dropped)
        current()->load();
    return changes != FormHelpers::Unsaved::Kept;
}

// A tab reads its part whenever it is shown: the other tabs, or others, may have changed it.
void frmRec::showTab() {
    const ToldOnce together;
    m_shown = m_tabs->currentIndex();
    m_obstacle.clear();
    const bool isRead = guarded(m_context.session, [this] {
        m_obstacle = current()->obstacle();
        if (m_obstacle.isEmpty())
            current()->load();
        showHead();
    });
    if (!isRead)
        m_obstacle = unreadable();
    enable();
    if (m_obstacle.isEmpty())
        current()->firstField()->setFocus();
}

QString frmRec::unreadable() { return tr("This part of the recording cannot be read."); }

void frmRec::showHead() {
    const TabWords& shown = words[m_shown];
    findChild<QLabel*>(QStringLiteral("heading"))->setText(shown.heading);
    findChild<QLabel*>(QStringLiteral("hint"))->setText(shown.hint);
    setWindowTitle(captionOf(m_editor.id()));
    // The other tabs do not tell which recording they are about.
    constexpr int titleWidth = 280;
    const QString title = m_shown == 0 ? QString() : m_editor.specs().title();
    m_title->setText(m_title->fontMetrics().elidedText(title, Qt::ElideRight, titleWidth));
    m_title->setToolTip(title);
    for (int tab = 1; tab < m_tabs->count(); ++tab) {
        m_tabs->setTabEnabled(tab, m_editor.id() != 0);
        m_idleKeys[size_t(tab)]->setEnabled(m_editor.id() == 0);
    }
}

// Enter saves the specifications; in the other tabs it has a meaning of its own.
void frmRec::enable() {
    if (!current()->isRead() && m_obstacle.isEmpty())
        m_obstacle = unreadable();
    const bool usable = m_obstacle.isEmpty();
    QStackedWidget* page = m_pages[size_t(m_shown)];
    page->setCurrentIndex(usable ? 0 : 1);
    page->findChild<QLabel*>(QStringLiteral("obstacle"))->setText(m_obstacle);
    m_apply->setEnabled(usable && current()->canApply());
    m_cancel->setEnabled(usable && current()->isChanged());
    m_apply->setDefault(m_shown == 0);
}

// ---- saving

// Yes shows the other recording instead of adding this one, No adds it all the same.
bool frmRec::settleDoubles() {
    std::vector<RecordingDouble> doubles;
    if (!guarded(m_context.session, [&] { doubles = m_editor.doubles(m_specs->typed()); }))
        return false;
    if (doubles.empty())
        return true;
    QString text = tr("The collection may hold this recording already:");
    ItemList list({{tr("Title")}, {tr("Both have")}});
    for (const RecordingDouble& other : doubles) {
        list.addRow(other.id, QStringLiteral("Recordings"), {other.title, other.reason});
        constexpr int mostLines = 5;
        if (list.rowCount() <= mostLines)
            text += u'\n' + other.title + QStringLiteral("  (") + other.reason + u')';
    }
    text += QStringLiteral("\n\n") + tr("Do you want to open its card and drop what was typed here?\n"
                                        "No adds this recording all the same.");
    const Answer answer = m_context.session.messages().ask(
        {windowTitle().trimmed(), text, {Answer::Yes, Answer::No, Answer::Cancel}, Answer::Cancel});
    if (answer != Answer::Yes)
        return answer == Answer::No;
    qint64 id = doubles.front().id;
    if (doubles.size() > 1) {
        frmListChooser form(m_context, QStringLiteral("Recordings"), std::move(list),
                            tr("  Recordings that may be the same"), false, this);
        if (form.exec() != QDialog::Accepted)
            return false;
        id = form.id();
    }
    QDialog::reject();
    if (m_context.cards)
        m_context.cards->openCard(QStringLiteral("Rec"), id);
    return false;
}

bool frmRec::apply() {
    if (!current()->canApply()) {
        current()->firstField()->setFocus();
        return false;
    }
    const bool isNew = m_editor.id() == 0;
    if ((isNew && !settleDoubles()) || !current()->apply())
        return false;
    if (isNew)
        beginWithMainPanel(m_context.session, QStringLiteral("Rec"), m_editor.id());
    m_saved = true;
    guarded(m_context.session, [this] { showHead(); });
    enable();
    return true;
}

void frmRec::revert() { showTab(); }

void frmRec::reject() {
    if (!leave() || !isVisible())
        return;
    if (m_saved)
        accept();
    else
        QDialog::reject();
}

} // namespace tessaranth
