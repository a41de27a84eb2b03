// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

#include <QWidget>

class QLineEdit;
class QToolButton;

namespace tessaranth {

/// What a recording takes from a lookup list: the name that is chosen, a command that opens the list and one
/// that chooses nothing. Typing into the name opens the list, narrowed by what is typed.
class RecLookupField final : public QWidget {
    Q_OBJECT

public:
    /// `kind` is that of the list. The commands are named `noun` with "cmd" and "cmdClear" before it.
    RecLookupField(const RecContext& context, int kind, const QString& noun, const QString& listTitle);

    qint64 id() const { return m_id; }
    void setId(qint64 id); ///< 0 for none
    QToolButton* chooser() const { return m_choose; }
    QLineEdit* nameBox() const { return m_name; }

signals:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(const QString& typed = {});
    void clear();

    const RecContext& m_context;
    int m_kind;
    QString m_listTitle;
    qint64 m_id = 0;
    QLineEdit* m_name = nullptr;
    QToolButton* m_choose = nullptr;
    QToolButton* m_clear = nullptr;
};

} // namespace tessaranth
