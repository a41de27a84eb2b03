// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RtfReading.h"

#include <algorithm>

// The control words that are understood (Rich Text Format Specification 1.9.1). Every other one is passed
// over, and so are the groups that begin with one after \*.
namespace tessaranth {

namespace {

/// Longest distance and size in twips that the format's readers accept.
constexpr int longest = 31680;

struct CharacterSet {
    int number;
    int codePage;
};
const CharacterSet characterSets[] = {{0, 1252},   {77, 10000}, {128, 932},  {129, 949},  {134, 936},
                                      {136, 950},  {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255},
                                      {178, 1256}, {186, 1257}, {204, 1251}, {222, 874},  {238, 1250},
                                      {254, 437},  {255, 850}};
constexpr int symbolSet = 2;

int codePageOf(int characterSet) {
    for (const CharacterSet& each : characterSets)
        if (each.number == characterSet)
            return each.codePage;
    return 0;
}

bool isOn(const RtfToken& token) { return !token.hasNumber || token.number != 0; }

int length(const RtfToken& token) { return std::clamp(token.number, -longest, longest); }

} // namespace

// The signs that lists take from the symbol fonts; the rest of those fonts has no use in texts.
QChar RtfReading::symbolOf(uchar byte) {
    switch (byte) {
    case 0xB7:
        return QChar(0x2022);
    case 0xA7:
        return QChar(0x25AA);
    case 0xD8:
        return QChar(0x27A2);
    case 0xFC:
        return QChar(0x2713);
    default:
        return QLatin1Char(char(byte));
    }
}

void RtfReading::unicode(int number) {
    const auto code = char16_t(number);
    const bool isSymbol = code >= 0xF000 && code <= 0xF0FF && m_fonts.value(fontOf(group().style)).hasSymbols;
    put(isSymbol ? symbolOf(uchar(code & 0xFF)) : QChar(code));
    m_toSkip = group().fallbackLength;
}

void RtfReading::setColourPart(int shift, int value) {
    m_colour = (m_colour & ~(0xFFu << shift)) | (QRgb(std::clamp(value, 0, 255)) << shift);
    m_hasColour = true;
}

const QHash<QByteArrayView, RtfReading::Action>& RtfReading::actions() {
    using R = RtfReading;
    using T = const RtfToken;
    static const QHash<QByteArrayView, Action> table = [] {
        QHash<QByteArrayView, Action> all;
        const auto add = [&](std::initializer_list<const char*> names, Action action) {
            for (const char* name : names)
                all.insert(name, action);
        };
        // The document and its tables.
        add({"ansicpg"}, [](R& r, T& t) { r.m_codePage = std::clamp(t.number, 1, 65535); });
        add({"mac"}, [](R& r, T&) { r.m_codePage = 10000; });
        add({"pc"}, [](R& r, T&) { r.m_codePage = 437; });
        add({"pca"}, [](R& r, T&) { r.m_codePage = 850; });
        add({"deff"}, [](R& r, T& t) { r.m_defaultFont = std::max(0, t.number); });
        add({"uc"}, [](R& r, T& t) { r.group().fallbackLength = std::clamp(t.number, 0, 100); });
        add({"u"}, [](R& r, T& t) { r.unicode(t.number); });
        add({"fonttbl"}, [](R& r, T&) { r.group().destination = Destination::Fonts; });
        add({"colortbl"}, [](R& r, T&) { r.group().destination = Destination::Colours; });
        add({"red"}, [](R& r, T& t) { r.setColourPart(16, t.number); });
        add({"green"}, [](R& r, T& t) { r.setColourPart(8, t.number); });
        add({"blue"}, [](R& r, T& t) { r.setColourPart(0, t.number); });
        add({"fcharset"}, [](R& r, T& t) {
            RtfFont& font = r.m_fonts[r.fontOf(r.group().style)];
            font.codePage = codePageOf(t.number);
            font.hasSymbols = t.number == symbolSet;
        });
        add({"cpg"}, [](R& r, T& t) {
            r.m_fonts[r.fontOf(r.group().style)].codePage = std::clamp(t.number, 0, 65535);
        });
        // What is not the document's own text, and what is lost with it.
        add({"stylesheet", "info", "fldtype", "nonshppict", "nonesttables", "objdata", "objclass", "tc", "xe",
             "txe", "rxe", "listpicture", "private"},
            [](R& r, T&) { r.group().destination = Destination::Hidden; });
        add({"header", "headerl", "headerr", "headerf", "footer", "footerl", "footerr", "footerf",
             "footnote"},
            [](R& r, T&) {
                r.group().destination = Destination::Hidden;
                r.m_outcome.simplified = true;
            });
        add({"trowd", "object", "do", "shp"}, [](R& r, T&) { r.m_outcome.simplified = true; });
        // Pictures and fields.
        add({"pict"}, [](R& r, T&) {
            r.group().destination = Destination::Picture;
            r.m_picture = {};
        });
        add({"picwgoal"}, [](R& r, T& t) { r.m_picture.width = std::max(0, length(t)); });
        add({"pichgoal"}, [](R& r, T& t) { r.m_picture.height = std::max(0, length(t)); });
        add({"fldinst"}, [](R& r, T&) { r.group().destination = Destination::Instruction; });
        // Paragraphs.
        add({"par", "sect", "page", "row", "nestrow"}, [](R& r, T&) { r.endParagraph(); });
        add({"cell", "nestcell"},
            [](R& r, T&) { r.m_cellEnded = r.group().destination == Destination::Body; });
        add({"pard"}, [](R& r, T&) { r.group().paragraph = {}; });
        add({"ql"}, [](R& r, T&) { r.group().paragraph.alignment = Qt::AlignLeft; });
        add({"qr"}, [](R& r, T&) { r.group().paragraph.alignment = Qt::AlignRight; });
        add({"qc"}, [](R& r, T&) { r.group().paragraph.alignment = Qt::AlignHCenter; });
        add({"qj"}, [](R& r, T&) { r.group().paragraph.alignment = Qt::AlignJustify; });
        add({"li", "lin"}, [](R& r, T& t) { r.group().paragraph.left = length(t); });
        add({"fi"}, [](R& r, T& t) { r.group().paragraph.first = length(t); });
        // Characters.
        add({"plain"}, [](R& r, T&) {
            const QString link = r.group().style.plain.link;
            r.group().style = {};
            r.group().style.plain.link = link;
        });
        add({"f"}, [](R& r, T& t) { r.group().style.font = std::max(0, t.number); });
        add({"fs"}, [](R& r, T& t) {
            r.group().style.plain.halfPoints = t.hasNumber ? std::clamp(t.number, 2, 1000) : 24;
        });
        add({"b"}, [](R& r, T& t) { r.group().style.plain.bold = isOn(t); });
        add({"i"}, [](R& r, T& t) { r.group().style.plain.italic = isOn(t); });
        add({"ul", "uld", "uldb", "ulw", "ulth", "ulwave", "uldash", "uldashd", "uldashdd"},
            [](R& r, T& t) { r.group().style.plain.underline = isOn(t); });
        add({"ulnone"}, [](R& r, T&) { r.group().style.plain.underline = false; });
        add({"strike", "striked"}, [](R& r, T& t) { r.group().style.plain.strikeOut = isOn(t); });
        add({"super"}, [](R& r, T& t) { r.group().style.plain.script = isOn(t) ? 1 : 0; });
        add({"sub"}, [](R& r, T& t) { r.group().style.plain.script = isOn(t) ? -1 : 0; });
        add({"nosupersub"}, [](R& r, T&) { r.group().style.plain.script = 0; });
        add({"v", "deleted"}, [](R& r, T& t) { r.group().style.hidden = isOn(t); });
        add({"cf"}, [](R& r, T& t) { r.group().style.colour = t.number; });
        add({"highlight", "cb", "chcbpat"}, [](R& r, T& t) { r.group().style.background = t.number; });
        return all;
    }();
    return table;
}

void RtfReading::word(const RtfToken& token, bool starred) {
    struct Sign {
        QByteArrayView word;
        char16_t character;
    };
    static const Sign signs[] = {
        {"tab", u'\t'},        {"line", 0x2028},      {"lquote", 0x2018},  {"rquote", 0x2019},
        {"ldblquote", 0x201C}, {"rdblquote", 0x201D}, {"endash", 0x2013},  {"emdash", 0x2014},
        {"bullet", 0x2022},    {"emspace", 0x2003},   {"enspace", 0x2002}, {"qmspace", 0x2005},
        {"zwj", 0x200D},       {"zwnj", 0x200C},      {"ltrmark", 0x200E}, {"rtlmark", 0x200F}};
    if (group().destination == Destination::Hidden)
        return;
    if (starred && token.text != "shppict" && token.text != "fldinst") {
        group().destination = Destination::Hidden;
        return;
    }
    if (const Action action = actions().value(token.text)) {
        action(*this, token);
        return;
    }
    for (const Sign& sign : signs)
        if (token.text == sign.word)
            put(QChar(sign.character));
}

} // namespace tessaranth
