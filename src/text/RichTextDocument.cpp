// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RichText.h"
#include "text/RtfWriter.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImage>
#include <QImageReader>
#include <QPixmap>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextOption>
#include <QUrl>

// Between the events of the format and Qt's text documents.
namespace tessaranth::RichText {

namespace {

/// The picture's own file, so that it is written as it was read.
constexpr int pictureBytes = QTextFormat::UserProperty + 1;
constexpr int twipsPerPixel = 15; ///< at 96 pixels to the inch
constexpr double pointsPerPixel = 0.75;

class DocumentSink final : public RtfSink {
public:
    explicit DocumentSink(const QTextCursor& cursor, int limit = 0) : m_cursor(cursor), m_limit(limit) {
        m_cursor.beginEditBlock();
        m_cursor.removeSelectedText();
        m_isWithin = m_cursor.block().length() > 1; // the end of the paragraph counts
    }
    ~DocumentSink() override {
        if (m_hasLongWord)
            setWrapping(*m_cursor.document(), QTextOption::WrapAnywhere);
        m_cursor.endEditBlock();
    }

    void text(const QString& text, const RtfStyle& style) override {
        startParagraph();
        const QString kept = m_limit > 0 ? text.left(std::max(0, m_limit - m_length)) : text;
        m_length += int(text.size());
        watchWords(kept);
        m_cursor.insertText(kept, format(style));
    }
    bool isFull() const override { return m_limit > 0 && m_length > m_limit; }
    void picture(const RtfPicture& picture, const RtfStyle& style) override;
    void endParagraph(const RtfParagraph& paragraph, const RtfStyle& mark) override;

    static void setWrapping(QTextDocument& document, QTextOption::WrapMode mode) {
        QTextOption option = document.defaultTextOption();
        if (option.wrapMode() == mode)
            return;
        option.setWrapMode(mode);
        document.setDefaultTextOption(option);
    }

private:
    void startParagraph();
    void watchWords(const QString& text);
    QVariant shownPicture(const RtfPicture& picture);
    const QTextCharFormat& format(const RtfStyle& style);

    QTextCursor m_cursor;
    bool m_isWithin = false;         ///< in a paragraph that was there before
    bool m_isNew = false;            ///< the next content begins another paragraph
    std::optional<RtfStyle> m_style; ///< that m_format was made for
    QTextCharFormat m_format;
    int m_limit = 0; ///< characters; 0: all
    int m_length = 0;
    int m_wordLength = 0;
    bool m_hasLongWord = false;
    qint64 m_pixelsLeft = 64'000'000; ///< of large pictures, all together
};

// To break lines between words takes time by the square of a word's length: minutes for one of megabytes.
void DocumentSink::watchWords(const QString& text) {
    constexpr int longest = 2000;
    for (const QChar c : text) {
        m_wordLength = c.isSpace() ? 0 : m_wordLength + 1;
        m_hasLongWord = m_hasLongWord || m_wordLength > longest;
    }
}

/// What a text document draws for a picture: its own bytes, decoded when it comes into view; for a large one
/// the picture in the size that is shown, and for one that nobody would wait for nothing.
QVariant DocumentSink::shownPicture(const RtfPicture& picture) {
    constexpr qint64 smallPicture = 4'000'000;
    QBuffer buffer;
    buffer.setData(picture.bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    const qint64 pixels = qint64(size.width()) * size.height();
    if (!size.isEmpty() && pixels <= smallPicture)
        return picture.bytes;
    QSize shown = size;
    if (picture.width > 0 && picture.height > 0)
        shown = QSize(picture.width / twipsPerPixel, picture.height / twipsPerPixel);
    constexpr QSize widest(4000, 4000);
    shown = shown.boundedTo(widest).expandedTo({1, 1});
    m_pixelsLeft -= std::max(pixels, smallPicture);
    QImage image;
    if (!size.isEmpty() && m_pixelsLeft >= 0) {
        reader.setScaledSize(shown);
        image = reader.read();
    }
    if (image.isNull()) {
        image = QImage(1, 1, QImage::Format_RGB32);
        image.fill(Qt::lightGray);
    }
    return image;
}

void DocumentSink::startParagraph() {
    if (!m_isNew)
        return;
    m_cursor.insertBlock(QTextBlockFormat(), m_cursor.charFormat());
    m_isNew = m_isWithin = false;
}

const QTextCharFormat& DocumentSink::format(const RtfStyle& style) {
    if (m_style == style)
        return m_format;
    m_style = style;
    m_format = {};
    if (!style.font.isEmpty())
        m_format.setFontFamilies({style.font});
    m_format.setFontPointSize(style.halfPoints / 2.0);
    if (style.bold)
        m_format.setFontWeight(QFont::Bold);
    if (style.italic)
        m_format.setFontItalic(true);
    if (style.underline)
        m_format.setFontUnderline(true);
    if (style.strikeOut)
        m_format.setFontStrikeOut(true);
    if (style.script != 0)
        m_format.setVerticalAlignment(style.script > 0 ? QTextCharFormat::AlignSuperScript
                                                       : QTextCharFormat::AlignSubScript);
    if (style.colour)
        m_format.setForeground(QColor::fromRgb(*style.colour));
    if (style.background)
        m_format.setBackground(QColor::fromRgb(*style.background));
    if (!style.link.isEmpty()) {
        m_format.setAnchor(true);
        m_format.setAnchorHref(style.link);
    }
    return m_format;
}

void DocumentSink::picture(const RtfPicture& picture, const RtfStyle& style) {
    startParagraph();
    QTextImageFormat image;
    image.merge(format(style));
    // One name for one picture, also when it is pasted into another document.
    image.setName(
        QString::fromLatin1(QCryptographicHash::hash(picture.bytes, QCryptographicHash::Sha1).toHex()));
    image.setProperty(pictureBytes, picture.bytes);
    if (picture.width > 0 && picture.height > 0) {
        image.setWidth(picture.width / double(twipsPerPixel));
        image.setHeight(picture.height / double(twipsPerPixel));
    }
    m_cursor.document()->addResource(QTextDocument::ImageResource, QUrl(image.name()), shownPicture(picture));
    m_cursor.insertImage(image);
}

void DocumentSink::endParagraph(const RtfParagraph& paragraph, const RtfStyle& mark) {
    startParagraph();
    m_isNew = true;
    if (m_isWithin)
        return;
    QTextBlockFormat block;
    block.setAlignment(paragraph.alignment);
    if (paragraph.left != 0)
        block.setLeftMargin(paragraph.left / double(twipsPerPixel));
    if (paragraph.first != 0)
        block.setTextIndent(paragraph.first / double(twipsPerPixel));
    m_cursor.setBlockFormat(block);
    m_cursor.setBlockCharFormat(format(mark));
}

// ---- writing

class DocumentWalk {
public:
    DocumentWalk(const QTextDocument& document, RtfSink& sink) : m_document(document), m_sink(sink) {}
    void run();

private:
    RtfStyle style(const QTextCharFormat& format) const;
    double points(const QTextCharFormat& format) const;
    RtfParagraph paragraph(const QTextBlock& block) const;
    void send(const QTextFragment& fragment);
    QByteArray bytes(const QTextImageFormat& image) const;

    const QTextDocument& m_document;
    RtfSink& m_sink;
};

double DocumentWalk::points(const QTextCharFormat& format) const {
    const QFont font = m_document.defaultFont();
    double size = font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * pointsPerPixel;
    if (format.hasProperty(QTextFormat::FontPointSize))
        size = format.fontPointSize();
    else if (format.hasProperty(QTextFormat::FontPixelSize))
        size = format.intProperty(QTextFormat::FontPixelSize) * pointsPerPixel;
    // Of headings in HTML, from -2 to 4 (QTextFormat::FontSizeAdjustment).
    constexpr double factors[] = {0.7, 0.8, 1.0, 1.2, 1.5, 2.0, 2.4};
    const int step = format.intProperty(QTextFormat::FontSizeAdjustment);
    return step >= -2 && step <= 4 ? size * factors[step + 2] : size;
}

RtfStyle DocumentWalk::style(const QTextCharFormat& format) const {
    RtfStyle style;
    style.font = format.fontFamilies().toStringList().value(0);
    if (style.font.isEmpty())
        style.font = m_document.defaultFont().family();
    style.halfPoints = std::clamp(qRound(points(format) * 2), 2, 1000);
    style.bold = format.fontWeight() >= QFont::DemiBold;
    style.italic = format.fontItalic();
    style.underline = format.fontUnderline();
    style.strikeOut = format.fontStrikeOut();
    if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript)
        style.script = 1;
    else if (format.verticalAlignment() == QTextCharFormat::AlignSubScript)
        style.script = -1;
    if (format.foreground().style() != Qt::NoBrush)
        style.colour = format.foreground().color().rgb();
    if (format.background().style() != Qt::NoBrush && format.background().color().alpha() != 0)
        style.background = format.background().color().rgb();
    if (format.isAnchor())
        style.link = format.anchorHref();
    return style;
}

RtfParagraph DocumentWalk::paragraph(const QTextBlock& block) const {
    const QTextBlockFormat format = block.blockFormat();
    const int across = int(format.alignment() & Qt::AlignHorizontal_Mask);
    RtfParagraph result;
    for (const Qt::AlignmentFlag each : {Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify})
        if ((across & each) != 0)
            result.alignment = each;
    result.left = qRound((format.leftMargin() + format.indent() * m_document.indentWidth()) * twipsPerPixel);
    result.first = qRound(format.textIndent() * twipsPerPixel);
    return result;
}

QByteArray DocumentWalk::bytes(const QTextImageFormat& image) const {
    QByteArray result = image.property(pictureBytes).toByteArray();
    if (!result.isEmpty())
        return result;
    const QVariant resource = m_document.resource(QTextDocument::ImageResource, QUrl(image.name()));
    result = resource.toByteArray();
    if (result.startsWith("\x89PNG") || result.startsWith("\xFF\xD8\xFF"))
        return result;
    QImage pixels = resource.value<QImage>();
    if (pixels.isNull() && resource.userType() == QMetaType::QPixmap)
        pixels = resource.value<QPixmap>().toImage();
    if (pixels.isNull())
        pixels = QImage::fromData(result);
    result.clear();
    QBuffer buffer(&result);
    pixels.save(&buffer, "PNG");
    return result;
}

void DocumentWalk::send(const QTextFragment& fragment) {
    const RtfStyle look = style(fragment.charFormat());
    if (!fragment.charFormat().isImageFormat()) {
        m_sink.text(fragment.text(), look);
        return;
    }
    const QTextImageFormat image = fragment.charFormat().toImageFormat();
    RtfPicture picture{bytes(image), qRound(image.width() * twipsPerPixel),
                       qRound(image.height() * twipsPerPixel)};
    // Equal pictures that follow one another are one fragment.
    for (int i = 0; i < fragment.length() && !picture.bytes.isEmpty(); ++i)
        m_sink.picture(picture, look);
}

void DocumentWalk::run() {
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
        if (const QTextList* list = block.textList())
            m_sink.text(list->itemText(block) + u'\t', style(block.charFormat()));
        for (auto at = block.begin(); !at.atEnd(); ++at)
            send(at.fragment());
        m_sink.endParagraph(paragraph(block), style(block.charFormat()));
    }
}

} // namespace

QByteArray fromDocument(const QTextDocument& document) {
    RtfWriter writer;
    DocumentWalk(document, writer).run();
    return writer.document();
}

RtfOutcome toDocument(const QByteArray& bytes, QTextDocument& document, int limit) {
    const bool canUndo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.clear();
    document.setDefaultFont(QFont(defaultFont, defaultPoints));
    DocumentSink::setWrapping(document, QTextOption::WrapAtWordBoundaryOrAnywhere);
    RtfOutcome outcome;
    {
        DocumentSink sink{QTextCursor(&document), limit};
        const bool isRtf = looksLikeRtf(bytes);
        outcome = readRtf(isRtf ? bytes : fromText(toText(bytes)), sink);
        if (!isRtf)
            outcome.error.clear();
    }
    document.setUndoRedoEnabled(canUndo);
    return outcome;
}

RtfOutcome insert(const QByteArray& rtf, QTextCursor& cursor) {
    DocumentSink sink(cursor);
    return readRtf(rtf, sink);
}

QByteArray fromImage(const QImage& image) {
    RtfPicture picture;
    QBuffer buffer(&picture.bytes);
    image.save(&buffer, "PNG");
    RtfStyle style;
    style.font = defaultFont;
    style.halfPoints = defaultPoints * 2;
    RtfWriter writer;
    if (!picture.bytes.isEmpty())
        writer.picture(picture, style);
    writer.endParagraph({}, style);
    return writer.document();
}

} // namespace tessaranth::RichText
