// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ActionTable.h"
#include "widgets/FormContext.h"

#include <QWidget>

namespace tessaranth {

class OpenCards;

/// The card that a panel belongs to. The references outlive the panel.
struct CardContext : FormContext {
    OpenCards& cards;
    QString code; ///< "Cps", "Pfr", "Rec", "UserDef" or, for a work, "Comp"
    qint64 id = 0;
};

/// One area of an item card: its pictures, its document, its works, ... It reads its rows itself and carries
/// out the commands of the Card menu that are about them.
class CardPanel : public QWidget, public CommandTarget {
    Q_OBJECT

public:
    explicit CardPanel(const CardContext& context, QWidget* parent = nullptr)
        : QWidget(parent), m_context(context), m_actions(this, context.icons) {}

    bool knows(const QString& key) const override { return m_actions.knows(key); }
    bool canRun(const QString& key) const override { return m_actions.canRun(key); }
    void run(const QString& key) override { m_actions.run(key); }

    /// Reads again what it shows; what was selected stays selected where it still exists.
    virtual void load() = 0;
    /// What its label says, such as "Media title (3)".
    virtual QString heading() const = 0;

signals:
    /// Another heading, another selection, or another answer to `canRun`.
    void changed();

protected:
    CardContext m_context;
    ActionTable m_actions;
};

} // namespace tessaranth
