// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QPushButton;
class QTreeView;

namespace tessaranth {

struct FormContext;
class ItemListModel;
class Session;

/// The characters of a work. They are written to the catalog at once, so the work must be in it.
class WorkCharactersTab final : public QWidget {
    Q_OBJECT

public:
    /// `saved` gives the work's key, saving a new work first; 0 when that was refused.
    WorkCharactersTab(const FormContext& context, std::function<qint64()> saved, QWidget* parent = nullptr);

    void setWork(qint64 work); ///< 0 for one that is not in the catalog yet

private:
    QPushButton* button(const QString& caption, const QString& objectName, void (WorkCharactersTab::*run)());
    void refresh();
    void enable();
    void note(const QString& text);
    bool save();
    QString inputName(const QString& title, const QString& prompt, const QString& action,
                      const QString& text);
    void add();
    void rename();
    void remove();
    void importFile();

    Session& m_session;
    std::function<qint64()> m_saved;
    qint64 m_work = 0;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_note = nullptr;
    QPushButton* m_rename = nullptr;
    QPushButton* m_remove = nullptr;
};

} // namespace tessaranth
