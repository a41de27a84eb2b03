// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace tessaranth {

class IconStore;
class Session;

/// A small editor of one item: its fields, Save and Cancel. Closing it with changes asks about them.
class EditForm : public QDialog {
    Q_OBJECT

public:
    void reject() override;

protected:
    EditForm(Session& session, const IconStore& icons, QWidget* parent)
        : QDialog(parent), m_session(session), m_icons(icons) {}

    virtual bool isChanged() const = 0;
    virtual bool save() = 0; ///< false: refused, and the user knows why
    /// The last row: a button that saves and closes, and Cancel.
    void addButtons(QVBoxLayout* layout, const QString& caption = tr("&Save"));
    /// A button that opens the character map and writes what was picked into a line.
    QPushButton* specialCharacters(QLineEdit* line);
    QPushButton* button(const QString& caption, const QString& name);

    Session& m_session;
    const IconStore& m_icons;
};

} // namespace tessaranth
