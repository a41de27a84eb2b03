// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/SettingsTable.h"

#include <QWidget>

class QFormLayout;
class QPushButton;

namespace tessaranth {

class Messages;

/// Edits one setting: a box to tick, a line, a list or a button, as its type asks for.
class SettingEditor final : public QWidget {
    Q_OBJECT

public:
    SettingEditor(const SettingRow& row, Messages& messages, QWidget* parent = nullptr);

    const SettingRow& row() const { return m_row; }
    void addTo(QFormLayout* layout);
    QString value() const;
    void setValue(const QString& value);

private:
    QWidget* buildControl();
    void choosePath();
    void chooseColour();

    const SettingRow& m_row;
    Messages& m_messages;
    QWidget* m_control = nullptr;
    QString m_colour;
};

/// Paints a button in the colour that it stands for.
void showColour(QPushButton* button, const QColor& colour);

} // namespace tessaranth
