// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QDialog>

class QLabel;
class QTreeView;

namespace tessaranth {

class ItemListModel;
class OpenCards;

/// Which parts every recording has and which it lacks. It fills itself once it is shown; double-click (or
/// Enter) opens the card of a recording. It can stay open beside the main window, while what it shows is
/// mended.
class frmRecCheck final : public QDialog {
    Q_OBJECT

public:
    frmRecCheck(const FormContext& context, OpenCards& cards, QWidget* parent = nullptr);

    void fill();
    /// Recordings have changed elsewhere: it reads them again when the user comes back to it.
    void setOutdated() { m_filled = false; }
    void done(int result) override; ///< stops the filling and remembers the width of the list

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildUi();
    void fitColumns();
    void openCard();

    FormContext m_context;
    OpenCards& m_cards;
    bool m_closed = false;
    bool m_filled = false;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_state = nullptr;
};

} // namespace tessaranth
