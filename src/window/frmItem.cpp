// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frmItem.h"

#include "attachments/forms/DocumentListPanel.h"
#include "attachments/forms/DocumentPanel.h"
#include "attachments/forms/ImagesPanel.h"
#include "classes/Classification.h"
#include "classes/forms/frmClassItem.h"
#include "items/CardOwner.h"
#include "items/ItemKind.h"
#include "items/OpenCards.h"
#include "items/forms/CardBand.h"
#include "items/forms/frmNewUserDef.h"
#include "items/forms/frmPers.h"
#include "recordings/forms/RecContentsPanel.h"
#include "recordings/forms/frmRec.h"
#include "store/Session.h"
#include "widgets/CardTabs.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "window/CardPanels.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace tessaranth {

frmItem::frmItem(const CardContext& context, QWidget* parent)
    : ChildWindow(parent), m_context(context), m_own(this, context.icons) {
    setObjectName(QStringLiteral("frmItem"));
    addCommands();
    buildUi();
    LeggiColoriForm();
    if (!readCardHeading(m_context.session, m_context.code, m_context.id, m_heading))
        m_status = State::Gone;
    showHeading();
    showPanel(cardPanelOfState(m_context.code, m_heading.state).name);
}

QString frmItem::key() const { return OpenCards::key(m_context.code, m_context.id); }

QString frmItem::iconKey() const { return itemKind(m_context.code)->iconKey; }

void frmItem::LeggiColoriForm() {
    m_colours = CardColours::read(m_context.session.configuration(), itemKind(m_context.code)->colourPrefix);
    setPalette(m_colours.palette());
    m_band->setColours(m_colours);
    setTextColour(m_classes, m_colours.label);
    setTextColour(m_panelHeading, m_colours.label);
}

// ---- building

void frmItem::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    setAutoFillBackground(true);
    m_band = new CardBand(m_context.icons, iconKey());
    layout->addWidget(m_band);
    layout->addWidget(buildClassification());
    m_split = new QSplitter(Qt::Vertical);
    m_split->setObjectName(QStringLiteral("cardSplitter"));
    m_split->setChildrenCollapsible(false);
    buildAreas();
    auto* lower = new QWidget;
    auto* column = new QVBoxLayout(lower);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buildPanelBar());
    m_stack = new QStackedWidget;
    m_stack->setObjectName(QStringLiteral("panels"));
    m_blank = new QWidget;
    m_stack->addWidget(m_blank);
    column->addWidget(m_stack, 1);
    m_split->addWidget(lower);
    layout->addWidget(m_split, 1);
    resize(860, 600);
    placeSplitters();
}

QWidget* frmItem::buildClassification() {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(6, 1, 8, 1);
    row->setSpacing(6);
    auto* button = new QToolButton;
    button->setObjectName(QStringLiteral("cmdClassify"));
    button->setIcon(m_context.icons.icon(QStringLiteral("Class")));
    button->setAutoRaise(true);
    button->setToolTip(tr("Classify this card"));
    button->setAccessibleName(button->toolTip());
    connect(button, &QToolButton::clicked, this, &frmItem::classify);
    row->addWidget(button);
    m_classes = new ElidedLabel;
    m_classes->setObjectName(QStringLiteral("classification"));
    m_classes->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    row->addWidget(m_classes, 1);
    return line;
}

void frmItem::buildAreas() {
    m_upper = new QSplitter;
    m_upper->setObjectName(QStringLiteral("areaSplitter"));
    m_upper->setChildrenCollapsible(false);
    for (const char* name : {"Images", "Doc"})
        if (CardPanel* area = makeCardPanel(QLatin1String(name), m_context, m_upper)) {
            m_upper->addWidget(area);
            m_areas.push_back(area);
            connect(area, &CardPanel::changed, this, &ChildWindow::changed);
            connect(area, &CardPanel::changed, this, &frmItem::fitAreas);
        }
    m_split->addWidget(m_upper);
}

// In a card between tiles the panel needs the place more than areas that hold nothing; their commands stay.
void frmItem::fitAreas() {
    constexpr int roomForBoth = 300;
    const auto holdsSomething = [](const QWidget* area) {
        const auto* pages = qobject_cast<const PagedPanel*>(area);
        return pages && pages->index() >= 0;
    };
    m_upper->setVisible(height() >= roomForBoth ||
                        std::any_of(m_areas.begin(), m_areas.end(), holdsSomething));
}

void frmItem::resizeEvent(QResizeEvent* event) {
    fitAreas();
    ChildWindow::resizeEvent(event);
}

// A card is divided as the user divided the last one of its kind; before that, one without pictures
// and documents gives their place to the panel.
void frmItem::placeSplitters() {
    const auto* images = m_upper->findChild<ImagesPanel*>();
    const int upper = images && images->index() >= 0 ? 250 : 110;
    m_split->setSizes({upper, 600 - upper});
    m_split->setStretchFactor(0, 0);
    m_split->setStretchFactor(1, 1);
    m_upper->setSizes({2, 3});
    for (QSplitter* splitter : {m_split, m_upper})
        FormHelpers::keepSplitter(splitter, m_context.session.arrangements(),
                                  splitter->objectName() + m_context.code);
}

QWidget* frmItem::buildPanelBar() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 2, 6, 2);
    row->setSpacing(8);
    m_tabs = new CardTabs;
    m_tabs->setObjectName(QStringLiteral("panelTabs"));
    m_tabs->setAccessibleName(tr("Panels of the card"));
    for (const CardPanelKind& kind : cardPanelKinds())
        if (kind.owners.contains(m_context.code)) {
            const int tab = m_tabs->addTab(m_context.icons.icon(kind.iconKey), kind.label(m_context.code));
            m_tabs->setTabData(tab, kind.name);
        }
    connect(m_tabs, &QTabBar::tabBarClicked, this, [this](int tab) {
        if (tab >= 0)
            showPanel(m_tabs->tabData(tab).toString());
    });
    connect(m_tabs, &QTabBar::currentChanged, this,
            [this](int tab) { showPanel(m_tabs->tabData(tab).toString()); });
    row->addWidget(m_tabs, 1);
    m_panelHeading = new ElidedLabel;
    m_panelHeading->setObjectName(QStringLiteral("panelHeading"));
    row->addWidget(m_panelHeading);
    m_toggle = new QPushButton;
    m_toggle->setObjectName(QStringLiteral("cmdTogglePanel"));
    m_toggle->setFlat(true);
    connect(m_toggle, &QPushButton::clicked, this,
            [this] { setPanelHidden(m_status != State::PanelHidden); });
    row->addWidget(m_toggle);
    return bar;
}

void frmItem::addCommands() {
    for (const CardPanelKind& kind : cardPanelKinds())
        if (kind.owners.contains(m_context.code))
            m_own.carry(kind.command, [this, name = kind.name] { showPanel(name); });
    m_own.carry(QStringLiteral("mnuCardEdit"), [this] { ModificaItem(); });
    m_own.carry(QStringLiteral("mnuCardClassify"), [this] { classify(); });
    m_own.carry(QStringLiteral("mnuCardDocList"), [this] { showPanel(QStringLiteral("Docs")); });
}

// ---- showing

void frmItem::showHeading() {
    const bool gone = m_status == State::Gone;
    m_band->show(gone ? tr("This card has been deleted.") : m_heading.name, m_heading.years,
                 m_heading.subTitle, m_heading.type);
    setWindowTitle(m_heading.name);
    setWindowIcon(m_context.icons.icon(iconKey()));
    LoadClassificazione();
}

void frmItem::LoadClassificazione() {
    QStringList texts;
    for (const Classification::Line& line :
         Classification(m_context.session, itemKind(m_context.code)->number).lines(m_context.id))
        texts.push_back(line.text());
    m_classes->setText(texts.isEmpty() ? tr("Unclassified") : texts.join(QStringLiteral("    ")));
}

void frmItem::classify() {
    Classification classes(m_context.session, itemKind(m_context.code)->number, &m_context.cards);
    if (frmClassItem::classify(classes, m_context.icons, {m_context.id}, m_heading.name, window()))
        LoadClassificazione();
}

CardPanel* frmItem::panelNamed(const QString& name) {
    if (CardPanel* known = m_panels.value(name))
        return known;
    CardPanel* made = makeCardPanel(name, m_context, m_stack);
    if (!made)
        return nullptr;
    m_panels.insert(name, made);
    m_stack->addWidget(made);
    connect(made, &CardPanel::changed, this, &frmItem::followPanel);
    const auto* titles = qobject_cast<DocumentListPanel*>(made);
    if (auto* documents = m_upper->findChild<DocumentPanel*>(); titles && documents) {
        connect(titles, &DocumentListPanel::chosen, documents, &DocumentPanel::showItem);
        connect(documents, &DocumentPanel::listChanged, made, &CardPanel::load);
    }
    if (auto* areas = qobject_cast<RecContentsPanel*>(made))
        areas->restore(int(m_heading.contentsState), m_heading.splitter);
    return made;
}

RecContentsPanel* frmItem::contents() const {
    return qobject_cast<RecContentsPanel*>(m_panels.value(QStringLiteral("RecContents")));
}

bool frmItem::showPanel(const QString& name) {
    const CardPanelKind* kind = cardPanelKind(name);
    if (!kind || !kind->owners.contains(m_context.code))
        return false;
    m_panel = name;
    for (int tab = 0; tab < m_tabs->count(); ++tab)
        if (m_tabs->tabData(tab).toString() == name) {
            const QSignalBlocker blocker(m_tabs);
            m_tabs->setCurrentIndex(tab);
        }
    CardPanel* shown = panelNamed(name);
    m_stack->setCurrentWidget(shown ? shown : m_blank);
    setPanelHidden(false);
    return true;
}

void frmItem::setPanelHidden(bool hidden) {
    if (m_status != State::Gone)
        m_status = hidden ? State::PanelHidden : State::Shown;
    m_stack->setVisible(!hidden);
    // What is above gets the place.
    QWidget* lower = m_stack->parentWidget();
    lower->setMaximumHeight(hidden ? lower->layout()->sizeHint().height() : QWIDGETSIZE_MAX);
    m_toggle->setText(hidden ? tr("Show panel") : tr("Hide panel"));
    followPanel();
}

void frmItem::followPanel() {
    const CardPanel* shown = m_panels.value(m_panel);
    m_panelHeading->setText(shown && m_status != State::PanelHidden ? shown->heading() : QString());
    emit changed();
}

bool frmItem::reload() {
    CardHeading fresh;
    if (!readCardHeading(m_context.session, m_context.code, m_context.id, fresh)) {
        m_status = State::Gone;
        showHeading();
        return false;
    }
    m_heading = fresh;
    LeggiColoriForm();
    showHeading();
    for (CardPanel* area : m_areas)
        area->load();
    for (CardPanel* panel : std::as_const(m_panels))
        panel->load();
    followPanel();
    return true;
}

// ---- commands

CommandTarget* frmItem::targetOf(const QString& command) const {
    if (m_own.knows(command))
        return &m_own;
    for (CardPanel* area : m_areas)
        if (area->knows(command))
            return area;
    CardPanel* shown = m_panels.value(m_panel);
    return shown && m_status == State::Shown && shown->knows(command) ? shown : nullptr;
}

bool frmItem::canRun(const QString& command) const {
    const CommandTarget* target = m_status == State::Gone ? nullptr : targetOf(command);
    return target && target->canRun(command);
}

void frmItem::run(const QString& command) {
    if (canRun(command))
        targetOf(command)->run(command);
}

void frmItem::ModificaItem() {
    if (!CardOwner{m_context.code, m_context.id}.require(m_context.session))
        return m_context.cards.closeCard(key());
    const int kind = itemKind(m_context.code)->number;
    std::unique_ptr<QDialog> editor;
    if (kind == ItemKind::Custom)
        editor = std::make_unique<frmNewUserDef>(m_context, m_context.id, &m_context.cards, window());
    else if (kind == ItemKind::Recording)
        editor = std::make_unique<frmRec>(m_context, m_context.id, &m_context.cards, window());
    else
        editor = std::make_unique<frmPers>(m_context, kind, m_context.id, window());
    if (editor->exec() == QDialog::Accepted && !reload())
        m_context.cards.closeCard(key());
}

// ---- closing

void frmItem::saveState() {
    if (m_status == State::Gone)
        return;
    saveCardState(m_context.session, m_context.code, m_context.id, m_panel);
    if (m_context.code != QLatin1String("Rec"))
        return;
    if (const RecContentsPanel* areas = contents())
        saveContentsState(m_context.session, m_context.id, areas->area(), areas->splitterPercent());
    else
        saveContentsState(m_context.session, m_context.id, int(m_heading.contentsState), m_heading.splitter);
}

void frmItem::closeEvent(QCloseEvent* event) {
    saveState();
    ChildWindow::closeEvent(event);
}

} // namespace tessaranth
