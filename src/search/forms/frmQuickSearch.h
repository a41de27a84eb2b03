// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "search/QuickSearch.h"
#include "widgets/FormContext.h"

#include <QDialog>
#include <QTimer>

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace tessaranth {

class OpenCards;

/// "Quick search in database": finds as one types, grouped by kind; Enter opens the card of the hit.
class frmQuickSearch final : public QDialog {
    Q_OBJECT

public:
    frmQuickSearch(const FormContext& context, OpenCards& cards, QWidget* parent = nullptr);

    /// Makes the word index where the catalog has none, with progress; false when the form cannot be used.
    bool prepare();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildUi();
    void find();
    void addGroup(const QuickSearch::Group& group);
    void step(int direction);
    void openCard(const QTreeWidgetItem* item);

    FormContext m_context;
    OpenCards& m_cards;
    QuickSearch m_search;
    QLineEdit* m_text = nullptr;
    QTreeWidget* m_hits = nullptr;
    QLabel* m_state = nullptr;
    QTimer m_typing;
};

} // namespace tessaranth
