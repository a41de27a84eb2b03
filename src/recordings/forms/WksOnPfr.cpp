// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/WksOnPfr.h"

#include "widgets/FormHelpers.h"
#include "widgets/ItemListModel.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>

namespace tessaranth {

WksOnPfr::WksOnPfr(const IconStore& icons, std::vector<RecordingLists::Performed> performers, size_t current,
                   QWidget* parent)
    : QDialog(parent), m_performers(std::move(performers)), m_current(current) {
    setObjectName(QStringLiteral("WksOnPfr"));
    setWindowTitle(tr("Performed works on recording"));
    buildUi(icons);
    fill();
}

void WksOnPfr::buildUi(const IconStore& icons) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(icons, QStringLiteral("p"), QStringLiteral(" "), windowTitle()));
    m_model = new ItemListModel(icons, this);
    m_view = FormHelpers::itemView(this, QStringLiteral("lvWorks"), m_model, false);
    m_view->setAccessibleName(windowTitle());
    layout->addWidget(m_view, 1);
    m_count = new QLabel;
    m_count->setObjectName(QStringLiteral("count"));
    layout->addWidget(m_count);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
    const auto step = [&](const QString& caption, const char* name, const char* key, int places) {
        QPushButton* button = box->addButton(caption, QDialogButtonBox::ActionRole);
        button->setObjectName(QLatin1String(name));
        connect(new QShortcut(QKeySequence(QLatin1String(key)), this), &QShortcut::activated, button,
                &QPushButton::click);
        connect(button, &QPushButton::clicked, this, [this, places] { go(places); });
        return button;
    };
    m_back = step(tr("&Back"), "cmdBack", "Alt+Left", -1);
    m_back->setToolTip(tr("The performer before this one  (Alt+Left)"));
    m_forward = step(tr("&Forward"), "cmdForward", "Alt+Right", 1);
    m_forward->setToolTip(tr("The performer behind this one  (Alt+Right)"));
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(box);
    resize(620, 380);
}

void WksOnPfr::go(int step) {
    m_current += size_t(step);
    fill();
}

void WksOnPfr::fill() {
    const RecordingLists::Performed& performer = m_performers[m_current];
    findChild<QLabel*>(QStringLiteral("heading"))->setText(performer.name);
    m_model->setList(performer.works);
    FormHelpers::fitColumns(m_view);
    m_count->setText(tr("Works: %1").arg(m_model->rowCount()));
    m_back->setEnabled(m_current > 0);
    m_forward->setEnabled(m_current + 1 < m_performers.size());
}

} // namespace tessaranth
