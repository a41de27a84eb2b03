// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CommandTarget.h"

#include <QWidget>

namespace tessaranth {

/// A window within the frame: an item card, a work card, the query window or a picture viewer. Its
/// windowTitle is also the text of its tab. It carries out the commands of the Show, Card and Tools/Zoom
/// menus while it is the active one.
class ChildWindow : public QWidget, public CommandTarget {
    Q_OBJECT

public:
    enum class Kind { Card, Work, Query, Picture };

    using QWidget::QWidget;

    virtual Kind kind() const = 0;
    /// What tells it apart: "#", the item's code and its id for cards ("#Comp" for works); unique for others.
    virtual QString key() const = 0;
    /// The key of the card that it hangs off and goes with, such as a picture viewer; empty for none.
    virtual QString owner() const { return {}; }
    virtual QString iconKey() const = 0;
    /// The panel that a card shows ("Docs", "Comp", "Rec", "RecContents", "Media", "Web", "Rel"); empty for
    /// other windows.
    virtual QString panel() const { return {}; }
    /// Reads everything again; false when the item is gone, and the window is to be closed then.
    virtual bool reload() = 0;

signals:
    /// Another title, another panel, or another answer to `canRun`.
    void changed();
};

} // namespace tessaranth
