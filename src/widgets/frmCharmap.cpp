// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/frmCharmap.h"

#include "widgets/FormHelpers.h"
#include "widgets/IconStore.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tessaranth {

namespace {

constexpr int columns = 16;
constexpr int cellPixels = 32;

/// What the map offers, in this order: the accented letters of Europe's languages, then the signs of scores
/// and sleeves.
QString offered() {
    QString all;
    const std::pair<char16_t, char16_t> ranges[] = {{0x00C0, 0x00FF}, {0x0100, 0x017F}, {0x0218, 0x021B}};
    for (const auto& [first, last] : ranges)
        for (char16_t c = first; c <= last; ++c)
            if (c != 0x00D7 && c != 0x00F7)
                all += QChar(c);
    return all + QStringLiteral("♭♮♯♪♫°№–—‘’“”„«»…†·•©®™€£½¼¾×÷");
}

} // namespace

frmCharmap::frmCharmap(const IconStore& icons, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmCharmap"));
    setWindowTitle(tr("Special characters"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(icons, QStringLiteral("Charmap"), tr("Special characters"),
                                        tr("Enter or a double-click picks a character.")));
    m_table = new QTableWidget;
    m_table->setObjectName(QStringLiteral("tblCharacters"));
    m_table->setAccessibleName(tr("Characters"));
    m_table->horizontalHeader()->hide();
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    fill();
    layout->addWidget(m_table, 1);
    m_picked = FormHelpers::lineEdit(this, QStringLiteral("txtPicked"), tr("Picked characters"), 250);
    layout->addWidget(m_picked);
    connect(m_table, &QTableWidget::cellActivated, this, [this](int row, int column) {
        if (const QTableWidgetItem* item = m_table->item(row, column))
            m_picked->insert(item->text());
    });
    QPushButton* insert = FormHelpers::buttonRow(this, layout, tr("&Insert"), QStringLiteral("cmdInsert"));
    insert->setDefault(false);
    insert->setAutoDefault(false); // Enter picks the character under the cursor
    connect(insert, &QPushButton::clicked, this, &QDialog::accept);
    resize(columns * cellPixels + 50, 480);
}

void frmCharmap::fill() {
    const QString characters = offered();
    m_table->setColumnCount(columns);
    m_table->setRowCount(int((characters.size() + columns - 1) / columns));
    m_table->horizontalHeader()->setDefaultSectionSize(cellPixels);
    m_table->verticalHeader()->setDefaultSectionSize(cellPixels);
    for (int i = 0; i < characters.size(); ++i) {
        auto* item = new QTableWidgetItem(characters.mid(i, 1));
        item->setTextAlignment(Qt::AlignCenter);
        m_table->setItem(i / columns, i % columns, item);
    }
    m_table->setCurrentCell(0, 0);
}

QString frmCharmap::characters() const {
    if (!m_picked->text().isEmpty())
        return m_picked->text();
    const QTableWidgetItem* item = m_table->currentItem();
    return item ? item->text() : QString();
}

void frmCharmap::insertInto(QWidget* field, const IconStore& icons, QWidget* parent) {
    auto* line = qobject_cast<QLineEdit*>(field);
    auto* text = qobject_cast<QPlainTextEdit*>(field);
    if (!line && !text)
        return;
    frmCharmap form(icons, parent);
    if (form.exec() != QDialog::Accepted)
        return;
    if (line && !line->isReadOnly())
        line->insert(form.characters());
    else if (text && !text->isReadOnly())
        text->insertPlainText(form.characters());
}

} // namespace tessaranth
