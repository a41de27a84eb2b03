// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QObject>
#include <QPointer>
#include <vector>

class QAction;
class QWidget;

namespace tessaranth {

class OpenCards;
class Toolbox;
class frmClass;
class frmRecCheck;

/// What the tool box does with the cards of its list: new, edit, delete, merge. Each command is enabled by
/// the kind shown and by how many rows are selected.
class ItemActions final : public QObject {
    Q_OBJECT

public:
    ItemActions(const FormContext& context, Toolbox& toolbox, OpenCards& cards, QWidget* window);

    void create(int kind);
    /// The window that takes care of a lookup list (kinds 5 to 8).
    void manage(int kind);
    /// Brings many composers or performers in from the reference archive.
    void importMany(int kind);
    /// The window of the classifications.
    void manageClasses();
    /// The window of the recordings' missing parts.
    void checkRecordings();

private:
    enum class Selection { Any, Some, One, Filtered };
    /// One command: what it looks like, when it can be given and what it does.
    struct Row {
        const char* key;
        const char* iconKey;
        const char* text;
        const char* tip;    ///< in the menu
        const char* barTip; ///< on the tool bar; empty: not there
        const char* shortcut;
        unsigned kinds; ///< a bit for each kind of card that it is for
        Selection selection;
        void (ItemActions::*run)();
    };
    static const std::vector<Row>& rows();
    void addActions();
    void enable();
    static void bringUp(QWidget* form);
    /// Shows the editor of a kind of card; the id of what was saved, or 0. `id` 0 adds a card.
    qint64 runEditor(int kind, qint64 id);
    void createOne();
    void edit();
    void remove();
    void merge();
    void manageCatalog();
    void addWork();
    void classify();
    void refresh();
    void goToCards();
    void filter();
    void removeFilter();

    FormContext m_context;
    Toolbox& m_toolbox;
    OpenCards& m_cards;
    QWidget* m_window;
    std::vector<QAction*> m_actions; ///< one for each row
    QPointer<frmClass> m_classes;    ///< while it is open
    frmRecCheck* m_check = nullptr;  ///< since it was open for the first time
};

} // namespace tessaranth
