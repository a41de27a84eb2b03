// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/RecTab.h"

class QLineEdit;

namespace tessaranth {

/// What a recording takes from a lookup list: the name that is chosen, a command that opens the list and one
/// that chooses nothing.
class RecLookupField final : public QWidget {
    Q_OBJECT

public:
    /// `kind` is that of the list. The commands are named `noun` with "cmd" and "cmdClear" before it.
    RecLookupField(const RecContext& context, int kind, const QString& noun, const QString& listTitle);

    qint64 id() const { return m_id; }
    void setId(qint64 id); ///< 0 for none
    QToolButton* chooser() const { return m_choose; }

signals:
    void changed();

private:
    void choose();

    const RecContext& m_context;
    int m_kind;
    QString m_listTitle;
    qint64 m_id = 0;
    QLineEdit* m_name = nullptr;
    QToolButton* m_choose = nullptr;
    QToolButton* m_clear = nullptr;
};

} // namespace tessaranth
