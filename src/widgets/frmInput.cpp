// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/frmInput.h"

#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

frmInput::frmInput(const NameRequest& request, const IconStore* icons, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmInput"));
    setWindowTitle(request.title);
    static const IconStore none{QString()};
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(icons ? *icons : none, request.iconKey, request.heading, {}));
    auto* fields = new QFormLayout;
    m_edit = FormHelpers::lineEdit(this, QStringLiteral("txtName"), request.label, request.maxLength);
    m_edit->setText(request.defaultText);
    m_edit->selectAll();
    fields->addRow(request.label + u':', m_edit);
    layout->addLayout(fields);
    layout->addStretch();
    QPushButton* accept = FormHelpers::buttonRow(this, layout, request.button, QStringLiteral("cmdOk"));
    const auto enable = [this, accept] { accept->setEnabled(!name().isEmpty()); };
    connect(m_edit, &QLineEdit::textChanged, this, enable);
    enable();
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
    setMinimumWidth(420);
}

QString frmInput::name() const { return m_edit->text().trimmed(); }

} // namespace tessaranth
