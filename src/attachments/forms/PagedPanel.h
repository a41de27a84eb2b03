// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardFiles.h"
#include "items/forms/CardPanel.h"

class QAction;
class QLabel;
class QVBoxLayout;

namespace tessaranth {

/// A panel that shows one of a card's pictures or documents at a time, with a line below it to go through
/// them. Its commands stand in its context menu as well, under the same keys.
class PagedPanel : public CardPanel {
    Q_OBJECT

public:
    void load() override { loadAt(current()); }
    QString heading() const override; ///< "Images (3)"

    int index() const { return m_index; } ///< of the one shown, from 0; -1 when the card has none
    void showPage(int index);
    /// Shows the one of an id, where the card has it.
    void showItem(qint64 id);

signals:
    /// One was added, renamed, moved or removed here.
    void listChanged();

protected:
    struct Words {
        QString commands; ///< beginning of the keys of its commands: "mnuCardImages"
        QString heading;
        QString backIcon, forwardIcon; ///< and objectNames of their buttons
        QString backTip, forwardTip;
        QString backKeys, forwardKeys;
        QString sortTitle, sortHeading;
        QString iconKey;
    };
    PagedPanel(const CardContext& context, CardFiles& files, const Words& words, QWidget* parent);

    virtual void showCurrent() = 0; ///< fills the page
    /// A command that is in the context menu too, in the order of these calls. `name` is the end of its key.
    void addEntry(const QString& name, const QString& caption, const QString& shortcut,
                  const QString& iconKey, std::function<void()> what, std::function<bool()> when = {});
    void addTurning(); ///< the entries that go back and forward
    void addKeeping(); ///< Rename and Remove
    void addSorting();
    /// The page with the line below it. Called once, after the entries were added.
    void buildUi(QWidget* page);

    qint64 current() const { return hasCurrent() ? m_list.id(m_index) : 0; }
    bool hasCurrent() const { return m_index >= 0; }
    bool hasFile() const { return hasCurrent() && m_files.hasFile(current()); }
    int count() const { return m_list.rowCount(); }
    QString currentTitle() const { return hasCurrent() ? m_list.text(m_index, 0) : QString(); }
    /// Reads the list again and shows the one of an id; in place of one that is gone the next.
    void loadAt(qint64 id);
    void loadChanged(qint64 id); ///< after a change made here
    void enable();

private:
    void refresh();
    void sort();
    QAction* entry(const QString& name) const;

    CardFiles& m_files;
    Words m_words;
    ItemList m_list;
    int m_index = -1;
    QLabel* m_position = nullptr;
    QLabel* m_title = nullptr;
};

} // namespace tessaranth
