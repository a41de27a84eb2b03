// SPDX-License-Identifier: GPL-3.0-or-later
// The recording's own row, and what all parts of the editor share.
#include "recordings/RecordingEditor.h"

#include "items/Person.h"
#include "recordings/RecordingGuard.h"

#include <algorithm>

namespace tessaranth {

namespace {

constexpr auto specsStatement =
    "SELECT RecTitle, LabelID, SupportID, SourceID, Rating, ProdNbr, Notes, RecSubTitle, Barcode, "
    "LocationCode, UnitsNbr, Spars, RelDate, Price, RefRec FROM Rec WHERE RecID = ";

/// The columns in the order in which they are written; each has one of the three members.
struct Column {
    const char* name;
    const char* caption;
    QString RecordingSpecs::*text = nullptr;
    qint64 RecordingSpecs::*link = nullptr;
};
const Column columns[] = {{"RecTitle", "Title", &RecordingSpecs::title},
                          {"LabelID", "Label", nullptr, &RecordingSpecs::label},
                          {"SupportID", "Support", nullptr, &RecordingSpecs::carrier},
                          {"SourceID", "Source", nullptr, &RecordingSpecs::source},
                          {"Rating", "Rating", &RecordingSpecs::rating},
                          {"ProdNbr", "Production number", &RecordingSpecs::productionNumber},
                          {"Notes", "Notes", &RecordingSpecs::notes},
                          {"RecSubTitle", "Sub title", &RecordingSpecs::subtitle},
                          {"Barcode", "Barcode", &RecordingSpecs::barcode},
                          {"LocationCode", "Location", &RecordingSpecs::location},
                          {"UnitsNbr", "Units"},
                          {"Spars", "SPARS", &RecordingSpecs::spars},
                          {"RelDate", "Release date", &RecordingSpecs::released},
                          {"Price", "Price", &RecordingSpecs::price},
                          {"RefRec", "Reference recording"}};

Recordset::Assignments valuesOf(const RecordingSpecs& specs) {
    Recordset::Assignments values;
    for (const Column& column : columns) {
        const QString name = QLatin1String(column.name);
        if (column.text)
            values.emplace_back(name, specs.*column.text);
        else if (column.link)
            values.emplace_back(name, specs.*column.link);
        else if (name == QLatin1String("UnitsNbr"))
            values.emplace_back(name, specs.units);
        else
            values.emplace_back(name, specs.reference);
    }
    return values;
}

} // namespace

// ---- what all parts share

QString RecordingEditor::ofRecording(const char* statement) const {
    return QLatin1String(statement) + QString::number(m_id);
}

QString RecordingEditor::contentOf(const QString& part) {
    QString content;
    Query run = m_session.connection().query(part);
    while (run.next()) {
        for (int column = 0; column < run.columnCount(); ++column)
            content += run.text(column) + QChar(0x1f);
        content += QChar(0x1e);
    }
    return content;
}

void RecordingEditor::remember(const QString& part) { m_read.insert(part, contentOf(part)); }

// After a change of the editor's own to a part that the caller may have read.
void RecordingEditor::rememberAgain(const QString& part) {
    if (m_read.contains(part))
        remember(part);
}

// A part that was never read is replaced as asked: its caller does not change what was there.
bool RecordingEditor::mayReplace(const QStringList& parts) {
    const bool isAsRead = std::all_of(parts.begin(), parts.end(), [this](const QString& part) {
        const auto read = m_read.constFind(part);
        return read == m_read.constEnd() || *read == contentOf(part);
    });
    if (isAsRead)
        return true;
    Question question;
    question.title = applicationTitle;
    question.text = editorText("This part of the recording has been changed elsewhere meanwhile.\n"
                               "Do you want to replace it?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return m_session.messages().ask(question) == Answer::Yes;
}

bool RecordingEditor::exists() {
    bool found = false;
    guarded([&] {
        found =
            m_id != 0 && m_session.connection().exists(ofRecording("SELECT RecID FROM Rec WHERE RecID = "));
    });
    return found;
}

void RecordingEditor::requireRecording() {
    if (m_id == 0)
        throw Error(editorText("Store the specifications of the recording first."));
    if (!m_session.connection().exists(ofRecording("SELECT RecID FROM Rec WHERE RecID = ")))
        throw Error(editorText("This recording has been deleted meanwhile."));
}

void RecordingEditor::touch() {
    m_session.connection().execute(ofRecording("UPDATE Rec SET ModDate = NOW() WHERE RecID = "));
}

QString RecordingEditor::title() {
    return m_session.connection().single(ofRecording("SELECT RecTitle FROM Rec WHERE RecID = ")).toText();
}

void RecordingEditor::reloadCard() {
    if (m_cards)
        m_cards->reloadCard(OpenCards::key(QStringLiteral("Rec"), m_id));
}

// ---- specifications

const QStringList& RecordingEditor::ratings() {
    static const QStringList texts =
        catalogTable(QStringLiteral("Rec")).field(QStringLiteral("Rating")).choiceTexts();
    return texts;
}

const QStringList& RecordingEditor::sparsCodes() {
    static const QStringList codes =
        catalogTable(QStringLiteral("Rec")).field(QStringLiteral("Spars")).choiceTexts();
    return codes;
}

std::optional<int> RecordingEditor::units(const QString& text) {
    const QString digits = text.trimmed();
    const bool isNumber = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(),
                                                           [](QChar c) { return c >= u'0' && c <= u'9'; });
    const int number = isNumber ? digits.toInt() : 0; // 0 as well for one that no int holds
    if (number < 1 || number > mostUnits)
        return std::nullopt;
    return number;
}

RecordingSpecs RecordingEditor::specs() {
    RecordingSpecs result;
    guarded([&] {
        if (m_id == 0)
            return;
        const Recordset row =
            Recordset::open(m_session.connection(), ofRecording("SELECT * FROM Rec WHERE RecID = "));
        if (row.isEmpty())
            return;
        result.id = m_id;
        for (const Column& column : columns) {
            const Value& value = row.value(0, QLatin1String(column.name));
            if (column.text)
                result.*column.text = value.toText();
            else if (column.link)
                result.*column.link = value.toInteger();
        }
        for (QString* code : {&result.rating, &result.spars})
            if (code->isEmpty())
                *code = QStringLiteral("N/A");
        // Catalogs from before discs were counted have no number here.
        result.units =
            int(std::clamp<qint64>(row.value(0, QStringLiteral("UnitsNbr")).toInteger(), 1, mostUnits));
        result.reference = row.value(0, QStringLiteral("RefRec")).toBool();
        result.added = row.value(0, QStringLiteral("AddDate")).toText();
        result.modified = row.value(0, QStringLiteral("ModDate")).toText();
        remember(ofRecording(specsStatement));
    });
    return result;
}

void RecordingEditor::checkSpecs(RecordingSpecs& specs) {
    for (const Column& column : columns) {
        if (!column.text)
            continue;
        QString& text = specs.*column.text;
        text = m_session.fields().fit(QStringLiteral("Rec"), QLatin1String(column.name), text);
    }
    if (specs.units < 1 || specs.units > mostUnits)
        throw Error(editorText("Units: a whole number from 1 to %1.").arg(mostUnits));
}

bool RecordingEditor::applySpecs(RecordingSpecs& specs) {
    if (!guarded([&] { checkSpecs(specs); }))
        return false;
    bool removeUpperDiscs = false;
    if (m_id != 0 && !settleUpperDiscs(specs, removeUpperDiscs))
        return false;
    if (m_id != 0)
        return apply({ofRecording(specsStatement)}, editorText("Change recording %1"), [&] {
            Recordset rows =
                Recordset::open(m_session.connection(), ofRecording("SELECT * FROM Rec WHERE RecID = "));
            rows.update(0, valuesOf(specs));
            if (removeUpperDiscs)
                removeDiscsAbove(specs.units);
            specs.id = m_id;
        });
    const bool added = guarded([&] {
        Connection& connection = m_session.connection();
        Transaction transaction(connection, editorText("Add recording %1").arg(specs.title));
        Recordset rows = Recordset::open(connection, QStringLiteral("SELECT * FROM Rec WHERE 1 = 0"));
        Recordset::Assignments values = valuesOf(specs);
        values.emplace_back(QStringLiteral("AddDate"),
                            m_session.clock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        rows.add(values);
        const qint64 id = connection.lastKey();
        connection.execute(QStringLiteral("UPDATE Rec SET ModDate = NOW() WHERE RecID = %1").arg(id));
        transaction.commit();
        m_id = specs.id = id;
        remember(ofRecording(specsStatement));
    });
    if (added)
        reloadCard();
    return added;
}

std::vector<RecordingDouble> RecordingEditor::doubles(const RecordingSpecs& specs) {
    std::vector<RecordingDouble> found;
    const auto add = [&](const QString& condition, const QString& reason) {
        Query run = m_session.connection().query(
            QStringLiteral("SELECT RecID, RecTitle FROM Rec WHERE RecID <> %1 AND ").arg(m_id) + condition +
            QStringLiteral(" ORDER BY RecTitle"));
        while (run.next())
            if (std::none_of(found.begin(), found.end(),
                             [&](const RecordingDouble& other) { return other.id == run.integer(0); }))
                found.push_back({run.integer(0), run.text(1).trimmed(), reason});
    };
    guarded([&] {
        const QString barcode = cleanName(specs.barcode);
        const QString number = cleanName(specs.productionNumber);
        if (!barcode.isEmpty())
            add(QStringLiteral("Barcode = '%1'").arg(quoted(barcode)),
                editorText("the barcode %1").arg(barcode));
        if (specs.label != 0 && !number.isEmpty())
            add(QStringLiteral("LabelID = %1 AND ProdNbr = '%2'").arg(specs.label).arg(quoted(number)),
                editorText("the label and the production number %1").arg(number));
    });
    return found;
}

} // namespace tessaranth
