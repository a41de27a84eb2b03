// SPDX-License-Identifier: GPL-3.0-or-later
#include "attachments/forms/frmNewRelations.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "widgets/CheckedList.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmNewRelations::frmNewRelations(const FormContext& context, const CardOwner& card, QWidget* parent)
    : EditForm(context, parent), m_relations(context.session, card),
      m_isCustom(card.code == itemKind(ItemKind::Custom)->code) {
    setObjectName(QStringLiteral("frmNewRelations"));
    setWindowTitle(QStringLiteral("Relations"));
    const auto read = [&] {
        for (const int kind : m_relations.kinds()) {
            const QSet<qint64> related = m_relations.related(kind);
            m_kinds.insert(kind, {related, related});
        }
        if (!m_isCustom)
            m_classes = *Classification(context.session, ItemKind::Custom).tree();
        buildUi();
        fill();
    };
    readInto(this, context.session, read);
}

void frmNewRelations::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(
        m_context.icons, QStringLiteral("Relations"), QStringLiteral("Build relationships between the cards"),
        m_isCustom ? QStringLiteral("Choose the card type. Check/Uncheck the items.")
                   : QStringLiteral("Select the category and subcategory. Check/Uncheck the items.")));
    addChoosers(layout);
    m_model = new ItemListModel(m_context.icons, this);
    m_checks = new CheckedList(m_model);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvItems"), m_model, false);
    m_view->setModel(m_checks);
    m_view->setAccessibleName(tr("Cards"));
    FormHelpers::moveInList(m_filter, m_view);
    connect(m_checks, &CheckedList::toggled, this, [this] {
        m_kinds[m_kind].now = m_checks->checked();
        count();
    });
    layout->addWidget(m_view, 1);
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("state"));
    layout->addWidget(m_state);
    addButtons(layout, tr("&OK"));
    resize(640, 560);
    m_first->setFocus();
}

void frmNewRelations::addChoosers(QVBoxLayout* layout) {
    m_first = new QComboBox;
    m_first->setObjectName(QStringLiteral("cmbFirst"));
    m_second = new QComboBox;
    m_second->setObjectName(QStringLiteral("cmbSubCat"));
    m_second->setAccessibleName(tr("Sub-category"));
    auto* fields = new QFormLayout;
    if (m_isCustom) {
        m_first->setAccessibleName(tr("Card type"));
        for (const int kind : m_relations.kinds())
            m_first->addItem(m_context.icons.icon(itemKind(kind)->iconKey), itemKind(kind)->listCaption,
                             kind);
        fields->addRow(tr("&Card type:"), m_first);
        m_second->setParent(this);
        m_second->hide();
    } else {
        m_first->setAccessibleName(tr("Category"));
        // Cards that nobody put into a category can be related too.
        m_first->addItem(m_context.icons.icon(QStringLiteral("User")), tr("All custom items"), 0);
        for (const Classification::Node& category : m_classes.categories)
            m_first->addItem(m_context.icons.icon(QStringLiteral("TvClass")), category.name, category.id);
        fields->addRow(tr("&Category:"), m_first);
        fields->addRow(tr("&Sub-category:"), m_second);
        m_second->setEnabled(false);
        connect(m_first, &QComboBox::currentIndexChanged, this, &frmNewRelations::fillSubCategories);
    }
    m_filter = FormHelpers::lineEdit(this, QStringLiteral("txtFilter"), tr("Narrow the list"), 250);
    m_filter->setPlaceholderText(tr("Type a part of the name"));
    m_filter->setClearButtonEnabled(true);
    fields->addRow(tr("&Narrow:"), m_filter);
    layout->addLayout(fields);
    connect(m_first, &QComboBox::currentIndexChanged, this, &frmNewRelations::fill);
    connect(m_second, &QComboBox::currentIndexChanged, this, &frmNewRelations::fill);
    connect(m_filter, &QLineEdit::textChanged, this, &frmNewRelations::narrow);
}

void frmNewRelations::fillSubCategories() {
    const QSignalBlocker blocker(m_second); // the list follows the category, once
    m_second->clear();
    for (const Classification::Node& category : m_classes.categories)
        if (category.id == m_first->currentData().toLongLong())
            for (const Classification::SubNode& sub : category.subCategories)
                m_second->addItem(m_context.icons.icon(QStringLiteral("TvSubClass")), sub.name, sub.id);
    m_second->setEnabled(m_second->count() > 0);
}

void frmNewRelations::fill() {
    const qint64 first = m_first->currentData().toLongLong();
    m_kind = m_isCustom ? int(first) : int(ItemKind::Custom);
    m_all = ItemList();
    readInto(m_view, m_context.session, [&] {
        if (m_isCustom || first == 0)
            CMIT(m_context.session).ElencoInLv(m_kind, m_all);
        else
            Classification(m_context.session, m_kind).items(m_second->currentData().toLongLong(), m_all);
    });
    m_checks->setChecked(m_kinds[m_kind].now);
    narrow();
    FormHelpers::fitColumns(m_view);
}

void frmNewRelations::narrow() {
    m_model->setList(m_all.narrowed(m_filter->text().trimmed()));
    if (m_model->rowCount() > 0)
        m_view->setCurrentIndex(m_checks->index(0, 0));
    count();
}

void frmNewRelations::count() {
    const QString listed = m_model->rowCount() > 0 ? tr("%1 in the list").arg(m_model->rowCount())
                           : m_filter->text().trimmed().isEmpty() ? tr("There are no cards here.")
                                                                  : tr("No match");
    m_state->setText(listed + QStringLiteral(", ") + tr("%1 checked").arg(m_kinds[m_kind].now.size()));
}

bool frmNewRelations::isChanged() const {
    return std::any_of(m_kinds.begin(), m_kinds.end(),
                       [](const Kind& kind) { return kind.before != kind.now; });
}

bool frmNewRelations::save() {
    for (auto kind = m_kinds.begin(); kind != m_kinds.end(); ++kind) {
        const QSet<qint64> added = kind->now - kind->before;
        const QSet<qint64> removed = kind->before - kind->now;
        if (added.isEmpty() && removed.isEmpty())
            continue;
        if (!m_relations.change(kind.key(), added, removed))
            return false;
        kind->before = kind->now;
        for (const qint64 id : added + removed)
            m_changedCards.push_back({itemKind(kind.key())->code, id});
    }
    return true;
}

} // namespace tessaranth
