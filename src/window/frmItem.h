// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/CardHeading.h"
#include "items/forms/CardPanel.h"
#include "widgets/CardColours.h"
#include "widgets/ChildWindow.h"

#include <QMap>

class QPushButton;
class QSplitter;
class QStackedWidget;

namespace tessaranth {

class CardBand;
class CardTabs;
class ElidedLabel;
class RecContentsPanel;

/// The card of a composer, performer, recording or user-defined item. It opens on the panel on which it was
/// left, and remembers the one that it shows when it closes. Panels come into being when they are shown
/// first.
class frmItem final : public ChildWindow {
    Q_OBJECT

public:
    enum class State { Shown, PanelHidden, Gone };

    explicit frmItem(const CardContext& context, QWidget* parent = nullptr);

    qint64 Id() const { return m_context.id; }
    QString Tipo() const { return m_context.code; }
    State Status() const { return m_status; }
    QString Panel() const { return m_panel; }

    Kind kind() const override { return Kind::Card; }
    QString key() const override;
    QString iconKey() const override;
    QString panel() const override { return m_panel; }
    bool reload() override;
    bool knows(const QString& command) const override { return targetOf(command) != nullptr; }
    bool canRun(const QString& command) const override;
    void run(const QString& command) override;

    /// False for the name of a panel that a card of this kind does not have.
    bool showPanel(const QString& name);
    void setPanelHidden(bool hidden);
    void ModificaItem(); ///< opens the editor of the card's kind

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void LeggiColoriForm();
    void buildUi();
    void buildAreas();
    void fitAreas();
    QWidget* buildClassification();
    QWidget* buildPanelBar();
    void placeSplitters();
    void addCommands();
    void showHeading();
    void LoadClassificazione();
    void classify();
    CardPanel* panelNamed(const QString& name);
    RecContentsPanel* contents() const;
    void followPanel();
    void saveState();
    /// Whoever carries out a command now: the card itself or one of the areas in sight; else nullptr.
    CommandTarget* targetOf(const QString& command) const;

    CardContext m_context;
    mutable ActionTable m_own;
    CardHeading m_heading;
    CardColours m_colours;
    State m_status = State::Shown;
    QString m_panel;
    QMap<QString, CardPanel*> m_panels;
    std::vector<CardPanel*> m_areas; ///< above the panel bar: pictures and the current document
    CardBand* m_band = nullptr;
    ElidedLabel* m_classes = nullptr;
    CardTabs* m_tabs = nullptr;
    ElidedLabel* m_panelHeading = nullptr;
    QPushButton* m_toggle = nullptr;
    QSplitter* m_split = nullptr;
    QSplitter* m_upper = nullptr;
    QStackedWidget* m_stack = nullptr;
    QWidget* m_blank = nullptr;
};

} // namespace tessaranth
