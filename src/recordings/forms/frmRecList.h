// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QTreeView;

namespace tessaranth {

class IconStore;
struct FormContext;
class ItemListModel;
class OpenCards;
class Session;

/// The recordings that contain a work. Double-click (or Enter) opens the card of one, or chooses it.
class frmRecList final : public QDialog {
    Q_OBJECT

public:
    /// `workName` stands in the heading. With `cards` a recording's card is opened; without, it is chosen.
    frmRecList(const FormContext& context, qint64 work, const QString& workName, OpenCards* cards = nullptr,
               QWidget* parent = nullptr);

    qint64 id() const { return m_id; } ///< of the recording taken; 0 when there was none

private:
    void buildUi(const IconStore& icons, const QString& workName);
    void fill(qint64 work);
    void take();

    Session& m_session;
    OpenCards* m_cards;
    qint64 m_id = 0;
    ItemListModel* m_model = nullptr;
    QTreeView* m_view = nullptr;
    QLabel* m_state = nullptr;
};

} // namespace tessaranth
