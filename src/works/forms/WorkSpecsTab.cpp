// SPDX-License-Identifier: GPL-3.0-or-later
#include "works/forms/WorkSpecsTab.h"

#include "items/CMIT.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "works/CWKS.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tessaranth {

namespace {

qint64 chosen(const QComboBox* combo) { return combo->currentData().toLongLong(); }

// What is not in the list counts as none: its row has gone.
void choose(QComboBox* combo, qint64 id) { combo->setCurrentIndex(qMax(0, combo->findData(id))); }

QString spoken(QString caption) { return caption.remove(u'&').remove(u':'); }

} // namespace

WorkSpecsTab::WorkSpecsTab(Session& session, qint64 composer, QWidget* parent)
    : QWidget(parent), m_session(session), m_groups(session, composer), m_composer(composer) {
    setObjectName(QStringLiteral("tabSpecs"));
    auto* fields = new QFormLayout(this);
    buildTexts(fields);
    buildCombos(fields);
    fillGroups(WorkGroups::MainWorks);
    fillGroups(WorkGroups::Genres);
    fillGenres();
    fillKeys();
}

void WorkSpecsTab::buildTexts(QFormLayout* fields) {
    const auto edit = [this](const char* name, const char* column, const QString& caption) {
        return FormHelpers::lineEdit(
            this, QLatin1String(name), spoken(caption),
            m_session.fields().width(QStringLiteral("Compositions"), QLatin1String(column)));
    };
    m_title = edit("txtTitle", "CompTitle", tr("&Title:"));
    fields->addRow(tr("&Title:"), m_title);
    connect(m_title, &QLineEdit::textEdited, this, [this] { FormHelpers::markRefused(m_title, false); });
    m_subtitle = edit("txtSubTitle", "CompSubTitle", tr("S&ubtitle:"));
    fields->addRow(tr("S&ubtitle:"), m_subtitle);

    m_number = edit("txtNbr", "CompNbr", tr("&Opus:"));
    auto* acronym = new QLabel(CWKS(m_session).acronym(m_composer));
    acronym->setObjectName(QStringLiteral("acronym"));
    acronym->setTextFormat(Qt::PlainText);
    acronym->setVisible(!acronym->text().isEmpty());
    auto* caption = new QLabel(tr("&Opus:"));
    caption->setBuddy(m_number);
    auto* number = new QHBoxLayout;
    number->addWidget(acronym);
    number->addWidget(m_number);
    number->addStretch(1);
    fields->addRow(caption, number);
    m_year = edit("txtYear", "CompYear", tr("&Year:"));
    fields->addRow(tr("&Year:"), m_year);
    constexpr int shortField = 220;
    m_number->setFixedWidth(shortField);
    m_year->setFixedWidth(shortField);
}

QComboBox* WorkSpecsTab::combo(QFormLayout* fields, const QString& caption, const QString& objectName,
                               const QString& newCaption, const QString& newTip,
                               const std::function<qint64()>& create) {
    auto* combo = new QComboBox;
    combo->setObjectName(objectName);
    combo->setAccessibleName(spoken(caption));
    combo->setMaxVisibleItems(20);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(24);
    auto* label = new QLabel(caption);
    label->setBuddy(combo);
    auto* row = new QHBoxLayout;
    row->addWidget(combo, 1);
    if (create) {
        auto* button = new QPushButton(newCaption);
        button->setObjectName(objectName + QStringLiteral("New"));
        button->setAccessibleName(newTip);
        button->setToolTip(newTip);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [combo, create] {
            if (const qint64 id = create())
                choose(combo, id);
            combo->setFocus();
        });
        row->addWidget(button);
    }
    fields->addRow(label, row);
    return combo;
}

void WorkSpecsTab::buildCombos(QFormLayout* fields) {
    const auto group = [this](WorkGroups::Kind kind) {
        return [this, kind] {
            const qint64 id = m_groups.add(kind);
            if (id != 0)
                fillGroups(kind);
            return id;
        };
    };
    m_mainWork = combo(fields, tr("&Main work:"), QStringLiteral("cboMainWork"), tr("&New..."),
                       tr("Add a new main work"), group(WorkGroups::MainWorks));
    m_composerGenre = combo(fields, tr("&Catalog genre:"), QStringLiteral("cboCpsGenre"), tr("N&ew..."),
                            tr("Add a new catalog genre"), group(WorkGroups::Genres));
    m_genre = combo(fields, tr("&Genre:"), QStringLiteral("cboGenre"), tr("Ne&w..."),
                    tr("Add a new global genre"), [this] {
                        const qint64 id = CMIT(m_session).AggiungiItem(ItemKind::Genre);
                        if (id != 0)
                            fillGenres();
                        return id;
                    });
    m_key = combo(fields, tr("&Key:"), QStringLiteral("cboKey"), {}, {}, {});
}

void WorkSpecsTab::fillGroups(WorkGroups::Kind kind) {
    QComboBox* combo = kind == WorkGroups::MainWorks ? m_mainWork : m_composerGenre;
    const qint64 before = chosen(combo);
    combo->clear();
    combo->addItem(tr("Unclassified"), qint64(0));
    for (const WorkGroups::Group& group : m_groups.groups(kind))
        combo->addItem(group.name, group.id);
    choose(combo, before);
}

void WorkSpecsTab::fillGenres() {
    const qint64 before = chosen(m_genre);
    m_genre->clear();
    m_genre->addItem(tr("(none)"), qint64(0));
    ItemList genres;
    if (CMIT(m_session).ElencoInLv(ItemKind::Genre, genres))
        for (int row = 0; row < genres.rowCount(); ++row)
            m_genre->addItem(genres.text(row, 0), genres.id(row));
    choose(m_genre, before);
}

void WorkSpecsTab::fillKeys() {
    m_key->addItem(tr("(none)"), qint64(0));
    for (const KeyName& key : m_session.keyNames())
        m_key->addItem(key.name, key.id);
}

void WorkSpecsTab::show(const Work& work) {
    m_title->setText(work.title);
    m_subtitle->setText(work.subtitle);
    m_number->setText(work.number);
    m_year->setText(work.year);
    choose(m_mainWork, work.mainWork);
    choose(m_composerGenre, work.composerGenre);
    choose(m_genre, work.genre);
    choose(m_key, work.key);
    for (QLineEdit* edit : {m_title, m_subtitle, m_number, m_year})
        edit->setCursorPosition(0);
}

void WorkSpecsTab::read(Work& work) const {
    work.title = m_title->text();
    work.subtitle = m_subtitle->text();
    work.number = m_number->text();
    work.year = m_year->text();
    work.mainWork = chosen(m_mainWork);
    work.composerGenre = chosen(m_composerGenre);
    work.genre = chosen(m_genre);
    work.key = chosen(m_key);
}

void WorkSpecsTab::demandTitle() {
    FormHelpers::markRefused(m_title, true);
    m_title->setFocus();
}

} // namespace tessaranth
