// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/frmRecList.h"

#include "items/OpenCards.h"
#include "recordings/RecordingLists.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmRecList::frmRecList(const FormContext& context, qint64 work, const QString& workName, OpenCards* cards,
                       QWidget* parent)
    : QDialog(parent), m_session(context.session), m_cards(cards) {
    setObjectName(QStringLiteral("frmRecList"));
    setWindowTitle(QStringLiteral("Recordings that contains this work"));
    buildUi(context.icons, workName);
    fill(work);
}

void frmRecList::buildUi(const IconStore& icons, const QString& workName) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(
        icons, QStringLiteral("Recordings"), QStringLiteral(" Recordings list for: ") + workName,
        m_cards ? QStringLiteral("Double-click on item to show the related card.")
                : QStringLiteral("Double-click item to select")));
    m_model = new ItemListModel(icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvRecordings"), m_model, false);
    m_view->setAccessibleName(windowTitle());
    connect(m_view, &QTreeView::activated, this, &frmRecList::take);
    layout->addWidget(m_view, 1);
    m_state = FormHelpers::quietLabel({});
    layout->addWidget(m_state);
    QPushButton* take = FormHelpers::buttonRow(this, layout, m_cards ? tr("&Open card") : tr("&Select"),
                                               QStringLiteral("cmdOk"));
    connect(take, &QPushButton::clicked, this, &frmRecList::take);
    resize(620, 420);
}

void frmRecList::fill(qint64 work) {
    ItemList list;
    readInto(m_view, m_session, [&] { RecordingLists::withWork(m_session, work, list); });
    m_model->setList(std::move(list));
    FormHelpers::fitColumns(m_view);
    m_view->setCurrentIndex(m_model->index(0, 0));
    m_state->setText(tr("Recordings: ") + QString::number(m_model->rowCount()));
}

void frmRecList::take() {
    m_id = m_model->id(m_view->currentIndex());
    if (m_id == 0)
        return;
    accept();
    if (m_cards)
        m_cards->openCard(QStringLiteral("Rec"), m_id);
}

} // namespace tessaranth
