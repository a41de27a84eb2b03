// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>

class QAction;
class QWidget;

namespace tessaranth {

class IconStore;
class OpenCards;
class Session;
class Toolbox;

/// What the tool box does with the cards of its list: new, edit, delete, merge. Each command is enabled by
/// the kind shown and by how many rows are selected.
class ItemActions final : public QObject {
    Q_OBJECT

public:
    ItemActions(Session& session, const IconStore& icons, Toolbox& toolbox, OpenCards& cards,
                QWidget* window);

    /// In the order of the tool bar.
    const QList<QAction*>& actions() const { return m_actions; }
    void create(int kind);
    /// The window that takes care of a lookup list (kinds 5 to 8).
    void manage(int kind);
    /// Brings many composers or performers in from the reference archive.
    void importMany(int kind);

private:
    QAction* add(const QString& key, const QString& iconKey, const QString& text, const QString& tip,
                 const QString& shortcut, void (ItemActions::*run)());
    void enable();
    void createOne();
    void edit();
    void remove();
    void merge();
    void manageCatalog();
    void addWork();
    void refresh();

    Session& m_session;
    const IconStore& m_icons;
    Toolbox& m_toolbox;
    OpenCards& m_cards;
    QWidget* m_window;
    QList<QAction*> m_actions;
};

} // namespace tessaranth
