// SPDX-License-Identifier: GPL-3.0-or-later
#include "recordings/forms/RecSpecsTab.h"

#include "items/ItemKind.h"
#include "recordings/forms/RecLookupField.h"
#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

namespace tessaranth {

namespace {

/// The grid has two halves, each of a caption and a field; some fields take both.
enum Half { Left = 0, Right = 2, Both };

struct TextField {
    const char* objectName;
    const char* column; ///< of Rec
    QString caption;
    QString RecordingSpecs::*value;
    int row;
    Half half;
};
const std::vector<TextField>& textFields() {
    static const std::vector<TextField> fields{
        {"txtTitle", "RecTitle", RecSpecsTab::tr("T&itle:"), &RecordingSpecs::title, 0, Both},
        {"txtSubTitle", "RecSubTitle", RecSpecsTab::tr("S&ub title:"), &RecordingSpecs::subtitle, 1, Both},
        {"txtProdNbr", "ProdNbr", RecSpecsTab::tr("Production nu&mber:"), &RecordingSpecs::productionNumber,
         2, Right},
        {"txtBarcode", "Barcode", RecSpecsTab::tr("&Barcode:"), &RecordingSpecs::barcode, 3, Right},
        {"txtLocation", "LocationCode", RecSpecsTab::tr("&Where kept:"), &RecordingSpecs::location, 4, Right},
        {"txtRelDate", "RelDate", RecSpecsTab::tr("Release &year:"), &RecordingSpecs::released, 5, Right},
        {"txtPrice", "Price", RecSpecsTab::tr("&Price:"), &RecordingSpecs::price, 6, Right}};
    return fields;
}

struct Lookup {
    int kind;
    const char* noun;
    const char* listTitle;
    QString caption;
    qint64 RecordingSpecs::*value;
};
const std::vector<Lookup>& lookups() {
    static const std::vector<Lookup> fields{
        {ItemKind::Support, "Support", "  Supports list", RecSpecsTab::tr("Supp&ort:"),
         &RecordingSpecs::carrier},
        {ItemKind::Source, "Source", "  Sources list", RecSpecsTab::tr("Sou&rce:"), &RecordingSpecs::source},
        {ItemKind::Label, "Label", "  Labels list", RecSpecsTab::tr("&Label:"), &RecordingSpecs::label}};
    return fields;
}

constexpr int firstLookupRow = 2;
constexpr int unitsRow = 5;

QString spoken(QString caption) { return caption.remove(u'&').remove(u':'); }

void addField(QGridLayout* grid, int row, Half half, const QString& caption, QWidget* field, QWidget* buddy) {
    auto* label = new QLabel(caption);
    label->setBuddy(buddy);
    const int column = half == Both ? Left : half;
    grid->addWidget(label, row, column);
    grid->addWidget(field, row, column + 1, 1, half == Both ? 3 : 1);
}

/// Selects the entry with a text; one that the list lacks is added, so that saving does not change it.
void selectText(QComboBox* combo, const QString& text) {
    if (combo->findText(text) < 0)
        combo->addItem(text);
    combo->setCurrentIndex(combo->findText(text));
}

} // namespace

RecSpecsTab::RecSpecsTab(RecContext& context) : RecTab(context) {
    setObjectName(QStringLiteral("tabSpecs"));
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(10);
    grid->setColumnStretch(Left + 1, 3);
    grid->setColumnStretch(Right + 1, 2);
    grid->setColumnMinimumWidth(Right, 130);
    buildTexts(grid);
    buildLookups(grid);
    buildEnd(grid);
    QWidget* order[] = {m_texts[0],
                        m_texts[1],
                        m_lookups[0]->nameBox(),
                        m_lookups[1]->nameBox(),
                        m_lookups[2]->nameBox(),
                        m_units,
                        m_spars,
                        m_rating,
                        m_texts[2],
                        m_texts[3],
                        m_texts[4],
                        m_texts[5],
                        m_texts[6],
                        m_reference,
                        m_notes};
    for (size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void RecSpecsTab::buildTexts(QGridLayout* grid) {
    for (const TextField& field : textFields()) {
        QLineEdit* edit = FormHelpers::lineEdit(
            this, QLatin1String(field.objectName), spoken(field.caption),
            m_context.session.fields().width(QStringLiteral("Rec"), QLatin1String(field.column)));
        connect(edit, &QLineEdit::textChanged, this, &RecTab::changed);
        addField(grid, field.row, field.half, field.caption, edit, edit);
        m_texts.push_back(edit);
    }
    constexpr int longestNumber = 10;
    m_units = FormHelpers::lineEdit(this, QStringLiteral("txtUnits"), tr("Number of discs"), longestNumber);
    m_units->installEventFilter(this);
    connect(m_units, &QLineEdit::textChanged, this, &RecTab::changed);
    addField(grid, unitsRow, Left, tr("Number o&f discs:"), m_units, m_units);
}

void RecSpecsTab::buildLookups(QGridLayout* grid) {
    int row = firstLookupRow;
    for (const Lookup& lookup : lookups()) {
        auto* field = new RecLookupField(m_context, lookup.kind, QLatin1String(lookup.noun),
                                         QLatin1String(lookup.listTitle));
        connect(field, &RecLookupField::changed, this, &RecTab::changed);
        addField(grid, row++, Left, lookup.caption, field, field->chooser());
        m_lookups.push_back(field);
    }
}

QComboBox* RecSpecsTab::combo(QGridLayout* grid, int row, const QString& caption, const char* objectName,
                              const QStringList& entries) {
    auto* made = new QComboBox;
    made->setObjectName(QLatin1String(objectName));
    made->setAccessibleName(spoken(caption));
    made->addItems(entries);
    made->setMaxVisibleItems(20);
    connect(made, &QComboBox::currentIndexChanged, this, &RecTab::changed);
    addField(grid, row, Left, caption, made, made);
    return made;
}

void RecSpecsTab::buildEnd(QGridLayout* grid) {
    int row = unitsRow + 1;
    m_spars = combo(grid, row, tr("&SPARS code:"), "cboSpars", RecordingEditor::sparsCodes());
    m_rating = combo(grid, ++row, tr("Ratin&g:"), "cboRating", RecordingEditor::ratings());
    m_reference = new QCheckBox(tr("&Keep as reference recording"));
    m_reference->setObjectName(QStringLiteral("chkRefRec"));
    m_reference->setIcon(m_context.icons.icon(QStringLiteral("heart")));
    connect(m_reference, &QCheckBox::toggled, this, &RecTab::changed);
    grid->addWidget(m_reference, row, Right, 1, 2);
    m_notes = new QPlainTextEdit;
    m_notes->setObjectName(QStringLiteral("txtNotes"));
    m_notes->setAccessibleName(tr("Notes"));
    m_notes->setTabChangesFocus(true);
    connect(m_notes, &QPlainTextEdit::textChanged, this, &RecTab::changed);
    addField(grid, ++row, Both, tr("No&tes:"), m_notes, m_notes);
    grid->itemAtPosition(row, Left)->setAlignment(Qt::AlignTop);
    grid->setRowStretch(row, 1);
    auto* end = new QHBoxLayout;
    m_dates = new QLabel;
    m_dates->setObjectName(QStringLiteral("dates"));
    end->addWidget(m_dates, 1);
    auto* disc = new QPushButton(tr("Add the &Disc ID"));
    disc->setObjectName(QStringLiteral("cmdDiscId"));
    disc->setToolTip(tr("Drives are not read yet: the identifier can be typed in on the tab of the tracks."));
    disc->setEnabled(false);
    end->addWidget(disc);
    grid->addLayout(end, ++row, Left + 1, 1, 3);
}

QWidget* RecSpecsTab::firstField() const { return m_texts[0]; }

void RecSpecsTab::load() {
    m_read = m_context.editor.specs();
    show(m_read);
    m_shown = typed();
    emit changed();
}

void RecSpecsTab::show(const RecordingSpecs& specs) {
    for (size_t i = 0; i < m_texts.size(); ++i) {
        m_texts[i]->setText(specs.*textFields()[i].value);
        m_texts[i]->setCursorPosition(0);
    }
    for (size_t i = 0; i < m_lookups.size(); ++i)
        m_lookups[i]->setId(specs.*lookups()[i].value);
    m_units->setText(QString::number(specs.units));
    checkUnits();
    selectText(m_spars, specs.spars);
    selectText(m_rating, specs.rating);
    m_reference->setChecked(specs.reference);
    m_notes->setPlainText(specs.notes);
    showDates();
}

void RecSpecsTab::showDates() {
    const RecordingSpecs now = m_context.editor.id() == 0 ? RecordingSpecs() : m_context.editor.specs();
    m_dates->setText(now.added.isEmpty() ? QString()
                                         : tr("Added: %1     Modified: %2").arg(now.added, now.modified));
}

// Units that are refused stand as 0, which differs from every number that could have been read.
RecordingSpecs RecSpecsTab::typed() const {
    RecordingSpecs specs = m_read;
    specs.id = m_context.editor.id();
    for (size_t i = 0; i < m_texts.size(); ++i)
        specs.*textFields()[i].value = m_texts[i]->text();
    for (size_t i = 0; i < m_lookups.size(); ++i)
        specs.*lookups()[i].value = m_lookups[i]->id();
    specs.units = RecordingEditor::units(m_units->text()).value_or(0);
    specs.spars = m_spars->currentText();
    specs.rating = m_rating->currentText();
    specs.reference = m_reference->isChecked();
    specs.notes = m_notes->toPlainText();
    return specs;
}

bool RecSpecsTab::canApply() const { return isChanged() && !m_texts[0]->text().trimmed().isEmpty(); }

bool RecSpecsTab::checkUnits() {
    const bool valid = RecordingEditor::units(m_units->text()).has_value();
    FormHelpers::markRefused(m_units, !valid);
    m_units->setToolTip(valid ? QString() : tr("The number of discs is a whole number from 1 to 999."));
    return valid;
}

// The focus stays in the field while its number is refused, also when the user wants to go elsewhere in the
// window; other windows get it.
bool RecSpecsTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && watched == m_units && !checkUnits()) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            QTimer::singleShot(0, m_units, [this] {
                if (m_units->isVisible() && !checkUnits())
                    m_units->setFocus();
            });
    }
    return RecTab::eventFilter(watched, event);
}

bool RecSpecsTab::apply() {
    if (!checkUnits()) {
        m_units->setFocus();
        m_units->selectAll();
        return false;
    }
    RecordingSpecs specs = typed();
    if (!m_context.editor.applySpecs(specs))
        return false;
    load();
    return true;
}

} // namespace tessaranth
