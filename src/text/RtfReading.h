// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/CodePages.h"
#include "text/RtfReader.h"
#include "text/RtfTokens.h"

#include <QCoreApplication>
#include <QHash>
#include <utility>
#include <vector>

namespace tessaranth {

/// One run through a document: what readRtf keeps while it reads.
class RtfReading {
    Q_DECLARE_TR_FUNCTIONS(Rtf)

public:
    RtfReading(const QByteArray& document, RtfSink& sink) : m_tokens(document), m_sink(sink) {}
    RtfOutcome run();

private:
    enum class Destination { Body, Fonts, Colours, Picture, Instruction, Hidden };
    /// Fonts and colours by their numbers, as the tables may stand behind their first use.
    struct Style {
        RtfStyle plain;
        int font = -1; ///< -1: the document's default
        int colour = 0;
        int background = 0;
        bool hidden = false;
        bool operator==(const Style&) const = default;
    };
    struct Group {
        Style style;
        RtfParagraph paragraph;
        Destination destination = Destination::Body;
        int fallbackLength = 1; ///< characters that follow \uN for readers without Unicode
    };
    struct RtfFont {
        QString name;
        int codePage = 0; ///< 0: the document's
        bool hasSymbols = false;
    };
    using Action = void (*)(RtfReading&, const RtfToken&);
    static const QHash<QByteArrayView, Action>& actions();

    Group& group() { return m_groups.back(); }
    void fail(const QString& reason);
    void take(const RtfToken& token);
    void close();
    void symbol(char c);
    void word(const RtfToken& token, bool starred);
    void unicode(int number);
    bool skipFallback();
    void putBytes(QByteArrayView bytes);
    void putHex(QByteArrayView digits);
    void flushBytes();
    void put(const QString& text);
    void append(const QString& text);
    void flushText();
    void endParagraph();
    void putFontName(const QString& text);
    void endFont();
    void endColour();
    void endPicture();
    void endInstruction();
    void setColourPart(int shift, int value);
    int fontOf(const Style& style) const;
    RtfStyle resolved(const Style& raw) const;
    static QString cleaned(const QString& text);
    static QChar symbolOf(uchar byte);

    RtfTokens m_tokens;
    RtfSink& m_sink;
    RtfOutcome m_outcome;
    std::vector<Group> m_groups{Group()};
    bool m_starred = false;
    int m_toSkip = 0;
    int m_codePage = 1252;
    int m_defaultFont = 0;
    QHash<int, RtfFont> m_fonts;
    std::vector<std::optional<QRgb>> m_colours;
    QRgb m_colour = qRgb(0, 0, 0);
    bool m_hasColour = false;
    QByteArray m_bytes; ///< not decoded yet
    QString m_text;     ///< decoded, all in one style
    Style m_textStyle;
    QString m_fontName;
    QString m_instruction;
    RtfPicture m_picture;
    int m_highDigit = -1;
    bool m_hasContent = false; ///< since the last paragraph ended
    bool m_cellEnded = false;  ///< a tab comes before the next cell of the row
};

} // namespace tessaranth
