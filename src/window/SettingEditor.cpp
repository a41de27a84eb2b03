// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/SettingEditor.h"

#include "platform/Messages.h"
#include "widgets/FormHelpers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

namespace tessaranth {

namespace {

using Type = SettingRow::Type;

bool isPath(const SettingRow& row) { return row.type == Type::Folder || row.type == Type::File; }

QString plainCaption(const SettingRow& row) { return QString(row.caption).remove(u'&').remove(u':'); }

QColor colourOf(const QString& text) {
    const uint value = text.toUInt();
    return QColor(int(value & 0xff), int(value >> 8 & 0xff), int(value >> 16 & 0xff));
}

} // namespace

void showColour(QPushButton* button, const QColor& colour) {
    QPixmap swatch(44, 16);
    swatch.fill(colour);
    QPainter painter(&swatch);
    painter.setPen(QColor(0x80, 0x80, 0x80));
    painter.drawRect(swatch.rect().adjusted(0, 0, -1, -1));
    painter.end();
    button->setIcon(swatch);
    button->setIconSize(swatch.size());
    button->setToolTip(colour.name());
}

SettingEditor::SettingEditor(const SettingRow& row, Messages& messages, QWidget* parent)
    : QWidget(parent), m_row(row), m_messages(messages) {
    setObjectName(row.section + u'/' + row.key);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_control = buildControl();
    m_control->setObjectName(row.key);
    m_control->setAccessibleName(plainCaption(row));
    const bool isWide = row.type == Type::Text || isPath(row) || row.type == Type::Password;
    layout->addWidget(m_control, isWide ? 1 : 0);
    if (isPath(row)) {
        auto* browse = new QToolButton;
        browse->setText(QStringLiteral("..."));
        browse->setObjectName(row.key + QStringLiteral("Browse"));
        browse->setAccessibleName(tr("Choose: %1").arg(plainCaption(row)));
        connect(browse, &QToolButton::clicked, this, &SettingEditor::choosePath);
        layout->addWidget(browse);
    } else if (!isWide) {
        layout->addStretch();
    }
    setFocusProxy(m_control);
}

QWidget* SettingEditor::buildControl() {
    switch (m_row.type) {
    case Type::Flag:
        return new QCheckBox(m_row.caption);
    case Type::Choice: {
        auto* list = new QComboBox;
        list->addItems(m_row.captions);
        return list;
    }
    case Type::Colour: {
        auto* button = new QPushButton;
        connect(button, &QPushButton::clicked, this, &SettingEditor::chooseColour);
        return button;
    }
    default: {
        auto* line = new QLineEdit;
        if (m_row.type == Type::Password)
            line->setEchoMode(QLineEdit::PasswordEchoOnEdit);
        if (m_row.type == Type::Number)
            line->setMaximumWidth(90);
        return line;
    }
    }
}

void SettingEditor::addTo(QFormLayout* layout) {
    if (m_row.type == Type::Flag) {
        layout->addRow(this);
    } else {
        auto* label = new QLabel(m_row.caption);
        label->setBuddy(m_control);
        layout->addRow(label, this);
    }
    if (!m_row.hint.isEmpty()) {
        layout->addRow(m_row.type == Type::Flag ? nullptr : new QLabel, FormHelpers::quietLabel(m_row.hint));
    }
}

QString SettingEditor::value() const {
    switch (m_row.type) {
    case Type::Flag:
        return static_cast<QCheckBox*>(m_control)->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    case Type::Choice:
        return m_row.choices.value(static_cast<QComboBox*>(m_control)->currentIndex());
    case Type::Colour:
        return m_colour;
    default:
        return static_cast<QLineEdit*>(m_control)->text().trimmed();
    }
}

void SettingEditor::setValue(const QString& value) {
    const QString shown = settingOr(m_row, value);
    switch (m_row.type) {
    case Type::Flag:
        static_cast<QCheckBox*>(m_control)->setChecked(shown == u"1");
        break;
    case Type::Choice:
        static_cast<QComboBox*>(m_control)->setCurrentIndex(int(m_row.choices.indexOf(shown)));
        break;
    case Type::Colour:
        m_colour = shown;
        showColour(static_cast<QPushButton*>(m_control), colourOf(shown));
        break;
    default:
        static_cast<QLineEdit*>(m_control)->setText(shown);
    }
}

void SettingEditor::choosePath() {
    FileRequest request;
    request.mode = m_row.type == Type::Folder ? FileRequest::Mode::Folder : FileRequest::Mode::Open;
    request.title = plainCaption(m_row);
    request.folder = m_row.type == Type::Folder ? value() : QFileInfo(value()).path();
    if (m_row.key == u"Database") {
        request.filterName = QStringLiteral("Tessaranth.tsb");
        request.patterns = {QStringLiteral("Tessaranth.tsb")};
    }
    const QStringList chosen = m_messages.chooseFiles(request);
    if (!chosen.isEmpty())
        setValue(chosen.front());
}

void SettingEditor::chooseColour() {
    if (const auto colour = m_messages.chooseColour(plainCaption(m_row), colourOf(m_colour)))
        setValue(QString::number(colour->blue() << 16 | colour->green() << 8 | colour->red()));
}

} // namespace tessaranth
