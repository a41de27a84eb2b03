// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/OpenCards.h"
#include "widgets/FormContext.h"

#include <QMainWindow>
#include <memory>

class QDockWidget;

namespace tessaranth {

class CardWindows;
class ChildWindow;
class Commands;
class Help;
class ItemActions;
class MaintenanceActions;
class MdiArea;
class OutsideCommands;
class TabStrip;
class Toolbox;
struct CardContext;

/// The frame: menus, tool bars, the tool box and the area of the card windows. It puts its collaborators
/// together and leaves the work to them.
class MainWindow final : public QMainWindow, public OpenCards {
    Q_OBJECT

public:
    /// Exit code of a program that is to be started again.
    static constexpr int restartCode = 1000;

    MainWindow(const FormContext& context, QWidget* parent = nullptr);
    ~MainWindow() override;

    Toolbox* toolbox() const { return m_toolbox; }
    CardWindows& cards() const { return *m_cards; }
    const Commands& commands() const { return *m_commands; }
    void openCard(const QString& code, qint64 id) override;
    void closeCard(const QString& key) override;
    void reloadCard(const QString& key) override;
    /// Brings the window to the front, for a second start of the program.
    void comeForward();
    void showNotice(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildUi();
    void buildCards();
    ChildWindow* makeCard(const CardContext& context);
    void buildCommands();
    void applySettings();
    void restart();

    FormContext m_context;
    MdiArea* m_area = nullptr;
    TabStrip* m_tabs = nullptr;
    QDockWidget* m_dock = nullptr;
    Toolbox* m_toolbox = nullptr;
    std::unique_ptr<CardWindows> m_cards;
    std::unique_ptr<ItemActions> m_items;
    std::unique_ptr<MaintenanceActions> m_maintenance;
    std::unique_ptr<OutsideCommands> m_outside;
    std::unique_ptr<Help> m_help;
    std::unique_ptr<Commands> m_commands;
    bool m_restarting = false;
};

} // namespace tessaranth
