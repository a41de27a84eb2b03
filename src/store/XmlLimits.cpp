// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/XmlLimits.h"

#include "platform/Errors.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QRegularExpression>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Recordset", text); }

/// Where in the markup the scan is, byte by byte. A file that is no sound XML may mislead it, but there the
/// parser stops.
class Scan {
public:
    void take(char c) {
        m_line += c == '\n';
        switch (m_place) {
        case Place::Text:
            if (c == '<')
                open();
            break;
        case Place::Opened:
            opened(c);
            break;
        case Place::Tag:
            tag(c);
            break;
        case Place::Quoted:
            if (c == m_quote)
                m_place = Place::Tag;
            else if (++m_length > longestCell)
                m_fault = tr("a cell is longer than %1 KB").arg(longestCell >> 10);
            break;
        case Place::Aside:
            aside(c);
            break;
        }
    }
    const QString& fault() const { return m_fault; }
    int line() const { return m_line; }

private:
    enum class Place { Text, Opened, Tag, Quoted, Aside };

    void open() {
        m_place = Place::Opened;
        m_head.clear();
        m_attributes = 0;
    }

    /// What begins as a comment or an instruction is passed over to its end.
    void opened(char c) {
        m_head += c;
        const auto begins = [this](const char* word) { return QByteArray(word).startsWith(m_head); };
        if (m_head == "?" || m_head == "!--" || m_head == "![CDATA[") {
            m_end = m_head == "?" ? "?>" : m_head == "!--" ? "-->" : "]]>";
            m_head.clear();
            m_place = Place::Aside;
        } else if (m_head.startsWith('!')) {
            if (!begins("!--") && !begins("![CDATA["))
                m_fault = tr("a document type is not allowed");
        } else {
            m_place = Place::Tag;
            tag(c);
        }
    }

    void tag(char c) {
        if (c == '>') {
            m_place = Place::Text;
        } else if (c == '"' || c == '\'') {
            m_place = Place::Quoted;
            m_quote = c;
            m_length = 0;
        } else if (c == '=' && ++m_attributes > mostAttributes) {
            m_fault = tr("an element has more than %1 attributes").arg(mostAttributes);
        }
    }

    void aside(char c) {
        m_head = (m_head + c).right(m_end.size());
        if (m_head == m_end)
            m_place = Place::Text;
    }

    Place m_place = Place::Text;
    QByteArray m_head; ///< what was read last, as far as it matters
    QByteArray m_end;  ///< what closes a comment or an instruction
    char m_quote = 0;
    qint64 m_length = 0;
    int m_attributes = 0;
    int m_line = 1;
    QString m_fault;
};

QString encodingFault(const QByteArray& head) {
    if (head.startsWith("\xFE\xFF") || head.startsWith("\xFF\xFE") || head.left(4).contains('\0'))
        return tr("only UTF-8 is read");
    static const QRegularExpression declared(
        QStringLiteral("^[^<]*<\\?xml[^>]*encoding\\s*=\\s*[\"']([^\"']*)"));
    const QString encoding = declared.match(QString::fromLatin1(head)).captured(1).toUpper();
    static const QStringList known{QString(), QStringLiteral("UTF-8"), QStringLiteral("US-ASCII"),
                                   QStringLiteral("ISO-8859-1"), QStringLiteral("WINDOWS-1252")};
    return known.contains(encoding) ? QString() : tr("the encoding %1 is not read").arg(encoding.left(40));
}

} // namespace

void checkXmlLimits(QIODevice& file, const QString& path) {
    if (file.size() > largestXmlFile)
        throw FileError(
            tr("%1 is too large: a record set has at most %2 MB.").arg(path).arg(largestXmlFile >> 20));
    Scan scan;
    QString fault;
    constexpr qint64 piece = 1 << 20;
    for (bool first = true; fault.isEmpty() && !file.atEnd(); first = false) {
        const QByteArray bytes = file.read(piece);
        if (bytes.isEmpty())
            break;
        if (first)
            fault = encodingFault(bytes.left(200));
        for (qsizetype i = 0; i < bytes.size() && fault.isEmpty(); ++i) {
            scan.take(bytes[i]);
            if (!scan.fault().isEmpty())
                fault = scan.fault();
        }
    }
    if (!fault.isEmpty())
        throw FileError(tr("%1, line %2: %3").arg(path).arg(scan.line()).arg(fault));
    file.seek(0);
}

} // namespace tessaranth
