// SPDX-License-Identifier: GPL-3.0-or-later
#include "classes/forms/frmClassItem.h"

#include "widgets/CheckedList.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"
#include "widgets/ItemListModel.h"
#include "widgets/Reading.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

frmClassItem::frmClassItem(Classification& classes, const IconStore& icons, const std::vector<qint64>& cards,
                           const QString& name, QWidget* parent)
    : QDialog(parent), m_classes(classes) {
    setObjectName(QStringLiteral("frmClassItem"));
    setWindowTitle(QStringLiteral(" Item classification"));
    const bool several = cards.size() != 1;
    buildUi(icons, several ? QString::number(cards.size()) : name, several);
    readInto(this, classes.session(), [&] {
        m_model->setList(classes.subCategories());
        check(cards);
    });
    m_hint->setVisible(!isUnreadable(this) && m_model->rowCount() == 0);
    FormHelpers::fitColumns(m_view);
    if (m_model->rowCount() > 0)
        m_view->setCurrentIndex(m_checks->index(0, 0));
    m_view->setFocus();
}

void frmClassItem::buildUi(const IconStore& icons, const QString& name, bool several) {
    auto* layout = new QVBoxLayout(this);
    const QString prompt = m_classes.prompt(several) + name;
    layout->addWidget(FormHelpers::head(
        icons, QStringLiteral("Class"), several ? QStringLiteral("Multiple items classification") : prompt,
        several ? prompt + u'\n' +
                      tr("A half-checked box is of some of them only; left so, each card stays as it is.")
                : tr("Check the sub-categories that the card is to be in.")));
    m_model = new ItemListModel(icons, this);
    m_checks = new CheckedList(m_model);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvSubCategories"), m_model, true);
    m_view->setModel(m_checks);
    m_view->setAccessibleName(tr("Sub-categories"));
    layout->addWidget(m_view, 1);
    m_hint = FormHelpers::quietLabel(
        tr("There are no sub-categories yet. \"Manage classifications\" makes them."));
    layout->addWidget(m_hint);

    // The box stands in the first column, and the row's other column can have the focus.
    auto* toggle = new QAction(tr("Check or uncheck"), m_view);
    toggle->setShortcut(Qt::Key_Space);
    toggle->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(toggle);
    connect(toggle, &QAction::triggered, this, [this] {
        for (const QModelIndex& row : m_view->selectionModel()->selectedRows())
            m_checks->toggle(row);
    });
    QPushButton* ok = FormHelpers::buttonRow(this, layout, tr("&OK"), QStringLiteral("cmdOk"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    resize(520, 480);
}

void frmClassItem::check(const std::vector<qint64>& cards) {
    QSet<qint64> all;
    QSet<qint64> some;
    const QHash<qint64, int> counts = m_classes.memberships(cards);
    for (auto count = counts.begin(); count != counts.end(); ++count)
        (count.value() == int(cards.size()) ? all : some).insert(count.key());
    m_checks->setChecked(all);
    m_checks->setMixed(some);
}

QSet<qint64> frmClassItem::checked() const { return m_checks->checked(); }

QSet<qint64> frmClassItem::halfChecked() const { return m_checks->halfChecked(); }

bool frmClassItem::classify(Classification& classes, const IconStore& icons, const std::vector<qint64>& cards,
                            const QString& name, QWidget* parent) {
    if (cards.empty())
        return false;
    frmClassItem form(classes, icons, cards, name, parent);
    return form.exec() == QDialog::Accepted && classes.assign(cards, form.checked(), form.halfChecked());
}

} // namespace tessaranth
