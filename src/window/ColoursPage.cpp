// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/ColoursPage.h"

#include "items/ItemKind.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "window/SettingEditor.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

struct Part {
    const char* suffix;
    const char* caption;
};

constexpr Part parts[] = {{"BC", QT_TRANSLATE_NOOP("ColoursPage", "Back")},
                          {"FC", QT_TRANSLATE_NOOP("ColoursPage", "Text")},
                          {"HC", QT_TRANSLATE_NOOP("ColoursPage", "Heading")},
                          {"LC", QT_TRANSLATE_NOOP("ColoursPage", "Labels")}};

struct Single {
    const char* key;
    const char* caption;
};

constexpr Single singles[] = {{"MdiBack", QT_TRANSLATE_NOOP("ColoursPage", "Back of the window")},
                              {"WksFC", QT_TRANSLATE_NOOP("ColoursPage", "Text of the works list")},
                              {"WkcFC", QT_TRANSLATE_NOOP("ColoursPage", "Text of work cards")},
                              {"WkcBC", QT_TRANSLATE_NOOP("ColoursPage", "Back of work cards")}};

} // namespace

ColoursPage::ColoursPage(Session& session, QWidget* parent) : QWidget(parent), m_session(session) {
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    buildKinds(grid);
    int row = grid->rowCount();
    grid->setRowMinimumHeight(row++, 12);
    for (const Single& one : singles) {
        grid->addWidget(new QLabel(tr(one.caption)), row, 0);
        addButton(grid, row++, 1, QLatin1String(one.key), tr(one.caption));
    }
    layout->addLayout(grid);
    layout->addWidget(FormHelpers::quietLabel(tr("These are the colours of the classic look.")));
    layout->addStretch();
    auto* factory = new QPushButton(tr("&Default colours"));
    factory->setObjectName(QStringLiteral("cmdDefault"));
    factory->setAutoDefault(false);
    connect(factory, &QPushButton::clicked, this, &ColoursPage::restore);
    layout->addWidget(factory, 0, Qt::AlignLeft);
    show();
}

void ColoursPage::buildKinds(QGridLayout* grid) {
    int column = 1;
    for (const Part& part : parts)
        grid->addWidget(new QLabel(tr(part.caption)), 0, column++, Qt::AlignHCenter);
    int row = 1;
    for (const ItemKind& kind : itemKinds()) {
        if (!kind.isCard())
            continue;
        grid->addWidget(new QLabel(kind.listCaption), row, 0);
        column = 1;
        for (const Part& part : parts)
            addButton(grid, row, column++, kind.colourPrefix + QLatin1String(part.suffix),
                      kind.listCaption + QStringLiteral(": ") + tr(part.caption));
        auto* example = new QLabel;
        example->setObjectName(kind.colourPrefix + QStringLiteral("Example"));
        example->setMargin(6);
        grid->addWidget(example, row++, column);
        m_examples.insert(kind.colourPrefix, example);
    }
    grid->setColumnStretch(column, 1);
}

void ColoursPage::addButton(QGridLayout* grid, int row, int column, const QString& key, const QString& name) {
    auto* button = new QPushButton;
    button->setObjectName(key);
    button->setAccessibleName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, key, name] { choose(key, name); });
    grid->addWidget(button, row, column);
    m_buttons.insert(key, button);
    m_colours.insert(key, m_session.configuration().classicColour(key));
}

void ColoursPage::choose(const QString& key, const QString& name) {
    if (const auto colour = m_session.messages().chooseColour(name, m_colours[key])) {
        m_colours[key] = *colour;
        show();
    }
}

void ColoursPage::restore() {
    for (auto one = m_colours.begin(); one != m_colours.end(); ++one)
        one.value() = m_session.configuration().factoryColour(one.key());
    show();
}

void ColoursPage::show() {
    for (auto one = m_buttons.cbegin(); one != m_buttons.cend(); ++one)
        showColour(one.value(), m_colours[one.key()]);
    for (auto one = m_examples.cbegin(); one != m_examples.cend(); ++one) {
        const auto colour = [&](const char* suffix) {
            return m_colours[one.key() + QLatin1String(suffix)].name();
        };
        one.value()->setStyleSheet(QStringLiteral("background: ") + colour("BC"));
        one.value()->setText(
            QStringLiteral("<span style='background:%1;color:%2'>&nbsp;%3&nbsp;</span> "
                           "<span style='color:%2'>%4</span> <span style='color:%5'>%6</span>")
                .arg(colour("HC"), colour("FC"), tr("Heading"), tr("Text"), colour("LC"), tr("LABEL:")));
    }
}

bool ColoursPage::isChanged() const {
    for (auto one = m_colours.cbegin(); one != m_colours.cend(); ++one)
        if (one.value() != m_session.configuration().classicColour(one.key()))
            return true;
    return false;
}

bool ColoursPage::store() {
    Configuration& configuration = m_session.configuration();
    for (auto one = m_colours.cbegin(); one != m_colours.cend(); ++one)
        if (one.value() != configuration.classicColour(one.key()) &&
            !configuration.setColour(one.key(), one.value()))
            return false;
    return true;
}

} // namespace tessaranth
