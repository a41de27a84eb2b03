// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QHash>
#include <QWidget>

class QGridLayout;
class QLabel;
class QPushButton;

namespace tessaranth {

class Session;

/// The configured colours: four for each kind of card, those of the works, and the back of the frame.
class ColoursPage final : public QWidget {
    Q_OBJECT

public:
    explicit ColoursPage(Session& session, QWidget* parent = nullptr);

    bool isChanged() const;
    /// False when the configuration file cannot be written.
    bool store();

private:
    void buildKinds(QGridLayout* grid);
    void addButton(QGridLayout* grid, int row, int column, const QString& key, const QString& name);
    void choose(const QString& key, const QString& name);
    void restore();
    void show();

    Session& m_session;
    QHash<QString, QColor> m_colours; ///< by key of the section Colors
    QHash<QString, QPushButton*> m_buttons;
    QHash<QString, QLabel*> m_examples; ///< by colour prefix
};

} // namespace tessaranth
