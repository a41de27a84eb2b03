// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/ItemList.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"

#include <QDialog>
#include <functional>

class QLabel;

namespace tessaranth {

/// Chooses one item, or several, of a list that narrows while one types. Every editor that needs another item
/// (a label, a composer, a work) asks for it here. Where several may be chosen, what was chosen stays so
/// while the list is narrowed to find the next. Accepted when something was chosen.
class frmListChooser final : public QDialog {
    Q_OBJECT

public:
    /// Makes a new item, with the given window above it; answers with its id, or 0 when nothing was made.
    using Creator = std::function<qint64(QWidget*)>;
    /// Fills a list; false leaves the one that is shown.
    using Filler = std::function<bool(ItemList&)>;

    /// All items of a kind (1 to 8), narrowed by the beginning of their names. Persons and the lookup lists
    /// can be added to from here.
    frmListChooser(const FormContext& context, int kind, const QString& title, bool several,
                   QWidget* parent = nullptr);
    /// A list of the caller's, such as one composer's works, narrowed by words that its rows contain.
    frmListChooser(const FormContext& context, const QString& iconKey, ItemList list, const QString& title,
                   bool several, QWidget* parent = nullptr);
    /// Lets the caller's list be added to: `reload` reads it again after `create` made an item.
    void setCreator(Creator create, Filler reload);

    /// Chooses a row, such as the item that the editor holds already; together with the others where several
    /// may be chosen.
    void select(qint64 id);
    /// Narrows the list as if the text had been typed into it.
    void narrow(const QString& text);

    /// What was chosen, in the order in which it was; the names are those of the first column.
    std::vector<qint64> ids() const;
    QStringList names() const;
    qint64 id() const; ///< the first of them, 0 when nothing is chosen
    /// True once an item was added, even if the choice was cancelled then: the caller's lists are out of
    /// date.
    bool hasCreated() const { return m_created; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Chosen {
        qint64 id;
        QString name;
    };
    void buildUi(const QString& iconKey);
    void fill();
    bool readList(ItemList& list) const;
    void showChosen();
    void followSelection();
    void keepCurrent();
    void enable();
    void choose();
    void create();

    FormContext m_context;
    bool m_several;
    int m_kind = 0;
    ItemList m_ready; ///< the caller's whole list; unused when there is a kind
    Creator m_create;
    Filler m_reload;
    bool m_created = false;
    std::vector<Chosen> m_chosen;
    qint64 m_match = 0; ///< the last of them is only the first row that fits what was typed
    bool m_filling = false;
    FormHelpers::NarrowedList m_list;
    QLabel* m_state = nullptr;
    QPushButton* m_new = nullptr;
    QPushButton* m_choose = nullptr;
};

} // namespace tessaranth
