// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

#include <QDialog>

class QLabel;
class QShortcut;
class QStackedWidget;
class QTabWidget;
class QVBoxLayout;

namespace tessaranth {

class RecSpecsTab;

/// The editor of a recording, new (id 0) or existing, one tab for each part of it. A tab is saved by itself;
/// nobody leaves one with unsaved edits without being asked. Accepted when something was saved. Does not open
/// on a recording that is gone; one that goes meanwhile is told, and what was typed stays to be copied.
class frmRec final : public QDialog {
    Q_OBJECT

public:
    /// `cards` may be null.
    frmRec(const FormContext& context, qint64 recording, OpenCards* cards, QWidget* parent = nullptr);
    ~frmRec() override;

    qint64 id() const { return m_editor.id(); } ///< 0 while the recording is not in the catalog
    int exec() override;
    void reject() override;

private:
    bool isGone();
    void buildUi();
    void addTab(RecTab* tab, const QString& caption);
    void buildButtons(QVBoxLayout* layout);
    RecTab* current() const;
    void changeTab(int index);
    void showTab();
    void showHead(); ///< throws SqlError
    static QString unreadable();
    void enable();
    bool leave();
    bool apply();
    bool settleDoubles();
    void revert();

    RecordingEditor m_editor;
    RecContext m_context;
    std::vector<RecTab*> m_all;
    std::vector<QStackedWidget*> m_pages; ///< of each tab: itself, or why it cannot be used yet
    std::vector<QShortcut*> m_idleKeys;   ///< of each tab: takes its key while it is disabled
    int m_shown = 0;                      ///< the tab that is left when another one is chosen
    QString m_obstacle;                   ///< why the tab that is shown cannot be used; empty when it can
    bool m_saved = false;
    QTabWidget* m_tabs = nullptr;
    QLabel* m_title = nullptr;
    RecSpecsTab* m_specs = nullptr;
    QPushButton* m_apply = nullptr;
    QPushButton* m_cancel = nullptr;
};

} // namespace tessaranth
