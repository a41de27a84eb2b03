// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CommandTarget.h"
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
class CardPanel : public QWidget, public CommandMap {
    Q_OBJECT

public:
    explicit CardPanel(const CardContext& context, QWidget* parent = nullptr)
        : QWidget(parent), m_context(context) {}

    /// Reads again what it shows; what was selected stays selected where it still exists.
    virtual void load() = 0;
    /// What its label says, such as "Media title (3)".
    virtual QString heading() const = 0;

signals:
    /// Another heading, another selection, or another answer to `canRun`.
    void changed();

protected:
    CardContext m_context;
};

} // namespace tessaranth
