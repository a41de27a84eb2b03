// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/RecordingEditor.h"
#include "widgets/FormContext.h"

#include <QWidget>
#include <functional>

class QAbstractItemView;
class QPushButton;

namespace tessaranth {

/// What the tabs of one recording's editor have in common. The references outlive the tabs.
struct RecContext : FormContext {
    OpenCards* cards; ///< may be null
    RecordingEditor& editor;
    qint64 work = 0; ///< CompOnRecID of the work that the user is at; 0 for none
};

/// One tab of the recording's editor: it shows a part of the recording and gathers what the user changes.
class RecTab : public QWidget {
    Q_OBJECT

public:
    explicit RecTab(RecContext& context) : m_context(context) {}

    /// Reads its part of the recording again; edits are gone then. A failure is told.
    void load();
    /// False after a failure: what the tab shows is not what the catalog holds.
    bool isRead() const { return m_isRead; }
    /// True while it shows what the catalog does not hold.
    virtual bool isChanged() const = 0;
    /// False while what is shown must not be saved, though it is changed.
    virtual bool canApply() const { return isChanged(); }
    /// Saves what is changed. False when that was refused; everything stays as typed then.
    virtual bool apply() = 0;
    /// Why the tab cannot be used yet, in a sentence for the user; empty when it can. Throws SqlError.
    virtual QString obstacle() const { return {}; }
    /// Where typing starts.
    virtual QWidget* firstField() const = 0;

signals:
    /// Another answer to isChanged or canApply.
    void changed();

protected:
    /// Reads and shows; throws SqlError.
    virtual void read() = 0;
    /// Runs what reads a part of it again.
    bool reading(const std::function<void()>& job);
    /// A command on the rows of a list; `tip` is its name in the help.
    QPushButton* command(QAbstractItemView* view, const QString& caption, const char* objectName,
                         const QString& tip, const char* key, const std::function<void()>& run);

    RecContext& m_context;

private:
    bool m_isRead = true;
};

} // namespace tessaranth
