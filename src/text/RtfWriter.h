// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/RtfReader.h"

#include <QStringList>
#include <vector>

namespace tessaranth {

/// Writes a document in Rich Text Format (specification 1.9.1) in seven bits: characters of Windows-1252 as
/// its bytes, which are named as such, all others as \uN.
class RtfWriter final : public RtfSink {
public:
    /// Line feeds in the text are new lines within the paragraph, like U+2028.
    void text(const QString& text, const RtfStyle& style) override;
    void picture(const RtfPicture& picture, const RtfStyle& style) override;
    void endParagraph(const RtfParagraph& paragraph, const RtfStyle& mark) override;
    /// The document with all paragraphs that have ended.
    QByteArray document() const;

private:
    void setStyle(const RtfStyle& style);
    int colourNumber(QRgb colour);

    QStringList m_fonts;
    std::vector<QRgb> m_colours;
    std::optional<RtfStyle> m_style; ///< of what was written last
    QString m_link;                  ///< of the last link
    qsizetype m_linkEnd = -1;        ///< where it ended, counted over all that was written
    QByteArray m_paragraph;
    QByteArray m_body;
};

} // namespace tessaranth
