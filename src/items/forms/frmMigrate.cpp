// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/forms/frmMigrate.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmMigrate::frmMigrate(const FormContext& context, int kind, qint64 source, OpenCards* cards, QWidget* parent)
    : QDialog(parent), m_context(context), m_kind(kind), m_source(source), m_cards(cards) {
    setObjectName(QStringLiteral("frmMigrate"));
    const QString noun = kind == ItemKind::Custom ? QStringLiteral("Custom") : itemKind(kind)->noun;
    setWindowTitle(QStringLiteral("  Migrate ") + noun);
    buildUi();
    const auto read = [&] {
        m_from->setText(tr("From: %1").arg(CMIT(context.session).nameOf(kind, source)));
        fill();
    };
    readInto(this, context.session, read);
}

void frmMigrate::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        FormHelpers::head(m_context.icons, itemKind(m_kind)->iconKey, windowTitle().trimmed(),
                          QStringLiteral("Assign all selected card related elements to another card.")));
    m_from = new QLabel;
    m_from->setTextFormat(Qt::PlainText);
    m_from->setWordWrap(true);
    layout->addWidget(m_from);
    m_list = FormHelpers::narrowedList(this, m_context.icons,
                                       {QStringLiteral("txtFilter"), tr("Beginning of the target's name"),
                                        tr("To: type the beginning of a name"), QStringLiteral("lvTarget"),
                                        tr("Target")},
                                       false);
    connect(m_list.text, &QLineEdit::textChanged, this, &frmMigrate::fill);
    layout->addWidget(m_list.text);
    connect(m_list.view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmMigrate::enable);
    // Enter in the list reaches the form's default button by itself.
    connect(m_list.view, &QTreeView::doubleClicked, this, &frmMigrate::run);
    layout->addWidget(m_list.view, 1);
    m_migrate = FormHelpers::buttonRow(this, layout, tr("&Migrate"), QStringLiteral("cmdMigrate"));
    connect(m_migrate, &QPushButton::clicked, this, &frmMigrate::run);
    resize(480, 480);
}

void frmMigrate::fill() {
    ItemList list;
    readInto(m_list.view, m_context.session,
             [&] { CMIT(m_context.session).ElencoInLv(m_kind, list, m_list.text->text().trimmed()); });
    m_list.model->setList(std::move(list));
    FormHelpers::fitColumns(m_list.view);
    enable();
}

qint64 frmMigrate::target() const { return m_list.model->id(m_list.view->currentIndex()); }

void frmMigrate::enable() { m_migrate->setEnabled(target() != 0 && target() != m_source); }

void frmMigrate::run() {
    if (!m_migrate->isEnabled())
        return;
    CMIT items(m_context.session);
    items.setOpenCards(m_cards);
    if (items.Migra(m_kind, m_source, target()))
        accept();
}

} // namespace tessaranth
