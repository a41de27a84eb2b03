// SPDX-License-Identifier: GPL-3.0-or-later
// The recording's own row, and what all parts of the editor share.
#include "recordings/RecordingEditor.h"

#include "items/OpenCards.h"
#include "items/Person.h"
#include "recordings/RecordingEditor.h"
#include "store/Guarded.h"
#include "store/Recordset.h"

#include <QCoreApplication>

#include <algorithm>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("RecordingEditor", text); }

} // namespace

namespace {

QString specsStatement(qint64 id) {
    return QStringLiteral("SELECT ") +
           catalogTable(QStringLiteral("Rec")).editedColumns().join(QStringLiteral(", ")) +
           QStringLiteral(" FROM Rec WHERE RecID = ") + QString::number(id);
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
    question.text = tr("This part of the recording has been changed elsewhere meanwhile.\n"
                       "Do you want to replace it?");
    question.buttons = {Answer::Yes, Answer::No};
    question.defaultButton = Answer::No;
    return m_session.messages().ask(question) == Answer::Yes;
}

bool RecordingEditor::exists() {
    return m_id != 0 && m_session.connection().exists(ofRecording("SELECT RecID FROM Rec WHERE RecID = "));
}

bool RecordingEditor::apply(const QStringList& parts, const QString& words,
                            const std::function<void()>& job) {
    bool stored = false;
    guarded(m_session, [&] {
        requireRecording();
        if (!mayReplace(parts))
            return;
        Transaction transaction(m_session.connection(), words.arg(title()));
        job();
        touch();
        transaction.commit();
        stored = true;
        for (const QString& part : parts)
            remember(part);
    });
    if (stored)
        reloadCard();
    return stored;
}

void RecordingEditor::requireRecording() {
    if (m_id == 0)
        throw Error(tr("Store the specifications of the recording first."));
    if (!m_session.connection().exists(ofRecording("SELECT RecID FROM Rec WHERE RecID = ")))
        throw Error(tr("This recording has been deleted meanwhile."));
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
    const CatalogField& field = catalogTable(QStringLiteral("Rec")).field(QStringLiteral("UnitsNbr"));
    const bool isNumber = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(),
                                                           [](QChar c) { return c >= u'0' && c <= u'9'; });
    const int number = isNumber ? digits.toInt() : 0; // 0 as well for one that no int holds
    if (number < field.least || number > field.most)
        return std::nullopt;
    return number;
}

RecordingSpecs RecordingEditor::specs() {
    RecordingSpecs result;
    if (m_id == 0)
        return result;
    const Recordset row =
        Recordset::open(m_session.connection(), ofRecording("SELECT * FROM Rec WHERE RecID = "));
    if (!row.isEmpty())
        result.read(row, 0);
    return result;
}

RecordingSpecs RecordingEditor::openSpecs() {
    if (m_id != 0)
        remember(specsStatement(m_id));
    return specs();
}

bool RecordingEditor::applySpecs(RecordingSpecs& specs) {
    if (!guarded(m_session, [&] { m_session.fields().fit(specs); }))
        return false;
    bool removeUpperDiscs = false;
    if (m_id != 0 && !settleUpperDiscs(specs, removeUpperDiscs))
        return false;
    if (m_id != 0)
        return apply({specsStatement(m_id)}, tr("Change recording %1"), [&] {
            Recordset rows =
                Recordset::open(m_session.connection(), ofRecording("SELECT * FROM Rec WHERE RecID = "));
            rows.update(0, specs.edited());
            if (removeUpperDiscs)
                removeDiscsAbove(specs.units());
            specs.id = m_id;
        });
    const bool added = guarded(m_session, [&] {
        Connection& connection = m_session.connection();
        Transaction transaction(connection, tr("Add recording %1").arg(specs.title()));
        Recordset rows = Recordset::open(connection, QStringLiteral("SELECT * FROM Rec WHERE 1 = 0"));
        Recordset::Assignments values = specs.edited();
        values.emplace_back(QStringLiteral("AddDate"),
                            m_session.clock().now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        rows.add(values);
        const qint64 id = connection.lastKey();
        connection.execute(QStringLiteral("UPDATE Rec SET ModDate = NOW() WHERE RecID = %1").arg(id));
        transaction.commit();
        m_id = specs.id = id;
        remember(specsStatement(m_id));
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
    const QString barcode = cleanName(specs.text(QStringLiteral("Barcode")));
    const QString number = cleanName(specs.text(QStringLiteral("ProdNbr")));
    if (!barcode.isEmpty())
        add(QStringLiteral("Barcode = '%1'").arg(quoted(barcode)), tr("the barcode %1").arg(barcode));
    const qint64 label = specs.number(QStringLiteral("LabelID"));
    if (label != 0 && !number.isEmpty())
        add(QStringLiteral("LabelID = %1 AND ProdNbr = '%2'").arg(label).arg(quoted(number)),
            tr("the label and the production number %1").arg(number));
    return found;
}

} // namespace tessaranth
