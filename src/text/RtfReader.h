// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QRgb>
#include <QString>
#include <optional>

namespace tessaranth {

/// How characters look. Lengths of the format are in twips, 1440 to the inch.
struct RtfStyle {
    QString font;
    int halfPoints = 24; ///< 2 to 1000
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    int script = 0; ///< 1: raised, -1: lowered
    std::optional<QRgb> colour;
    std::optional<QRgb> background;
    QString link; ///< where a hyperlink leads

    bool operator==(const RtfStyle&) const = default;
};

struct RtfParagraph {
    Qt::Alignment alignment = Qt::AlignLeft;
    int left = 0;  ///< twips
    int first = 0; ///< twips from there, of the first line

    bool operator==(const RtfParagraph&) const = default;
};

struct RtfPicture {
    QByteArray bytes; ///< a PNG or JPEG file
    int width = 0;    ///< twips; 0: as the file has it
    int height = 0;
};

/// Takes what a document holds, in its order.
class RtfSink {
public:
    virtual ~RtfSink() = default;
    /// Well-formed UTF-16 without control characters but tabs; U+2028 is a new line within the paragraph.
    virtual void text(const QString& text, const RtfStyle& style) = 0;
    virtual void picture(const RtfPicture& picture, const RtfStyle& style) = 0;
    /// `mark`: how the end itself looks, which is how an empty paragraph looks.
    virtual void endParagraph(const RtfParagraph& paragraph, const RtfStyle& mark) = 0;
    /// True when no more is wanted: reading ends.
    virtual bool isFull() const { return false; }
};

struct RtfOutcome {
    QString error; ///< what was wrong with the document, in the user's language; empty when it was sound
    bool simplified = false; ///< tables, footnotes, other pictures ... were flattened or left out
    bool isCut = false;      ///< the sink wanted no more of it
};

bool looksLikeRtf(const QByteArray& bytes);
/// Reads as much as can be understood, also of a document with an error. Each paragraph ends once, the last
/// one as well.
RtfOutcome readRtf(const QByteArray& document, RtfSink& sink);

} // namespace tessaranth
