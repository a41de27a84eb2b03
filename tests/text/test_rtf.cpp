// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/RichText.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using namespace tessaranth;

/// The codec of documents: what it writes comes back whole, and what others wrote, or broke, is read.
class TestRtf final : public QObject {
    Q_OBJECT

private slots:
    void foreignDocuments_data();
    void foreignDocuments();
    void badDocuments_data();
    void badDocuments();
    void formatsComeBack_data();
    void formatsComeBack();
    void picturesComeBack_data();
    void picturesComeBack();
    void plainTextComesBack();
    void othersReadWhatIsWritten_data();
    void othersReadWhatIsWritten();
    void largeDocumentsAreQuick();
};

namespace {

QByteArray rtf(const QByteArray& body) {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Arial;}{\\f1\\fcharset238 Times CE;}"
           "{\\f2\\fcharset204{\\*\\falt X;}Cyr;}{\\f3\\fcharset2 "
           "Symbol;}}{\\colortbl;\\red255\\green0\\blue0;"
           "\\red0\\green0\\blue255;}" +
           body + "}";
}

/// Everything that the tool bar can make, run by run.
QStringList described(const QTextDocument& document) {
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QString line = QString("<%1 %2>")
                           .arg(int(block.blockFormat().alignment()) &
                                (Qt::AlignRight | Qt::AlignHCenter | Qt::AlignJustify))
                           .arg(block.blockFormat().leftMargin());
        const auto run = [&](const QString& text, const QTextCharFormat& format) {
            line += QString("[%1|%2 %3 %4%5%6%7%8 %9")
                        .arg(text, format.fontFamilies().toStringList().value(0))
                        .arg(format.fontPointSize())
                        .arg(format.fontWeight() >= QFont::Bold)
                        .arg(format.fontItalic())
                        .arg(format.fontUnderline())
                        .arg(format.fontStrikeOut())
                        .arg(format.verticalAlignment())
                        .arg(format.foreground().style() ? format.foreground().color().name() : "-");
            line += format.background().style() ? format.background().color().name() : "-";
            line += format.anchorHref() + ']';
        };
        for (auto at = block.begin(); !at.atEnd(); ++at)
            run(at.fragment().text(), at.fragment().charFormat());
        if (block.begin().atEnd())
            run({}, block.charFormat());
        lines << line;
    }
    return lines;
}

QByteArray pictureFile(const char* format) {
    QImage image(5, 3, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

QByteArray pictureIn(const QTextDocument& document) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at)
            if (at.fragment().charFormat().isImageFormat())
                return document
                    .resource(QTextDocument::ImageResource,
                              QUrl(at.fragment().charFormat().toImageFormat().name()))
                    .toByteArray();
    return {};
}

} // namespace

void TestRtf::foreignDocuments_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& body, const QString& text) {
        QTest::newRow(name) << rtf(body) << text;
    };
    row("paragraphs", "\\pard one\\par two\\line three\\par\\par four\\par", "one\ntwo\nthree\n\nfour");
    row("no last end", "a\\par b", "a\nb");
    row("western bytes", "caf\\'e9 \x80 \\'93q\\'94", "café € “q”");
    row("central European font", "\\f1 Dvo\\'f8\\'e1k\\f0 \\'f8", "Dvořákø");
    row("Cyrillic font", "{\\f2 \\'d7\\'e0\\'e9\\'ea\\'ee\\'e2\\'f1\\'ea\\'e8\\'e9}", "Чайковский");
    row("symbols", "{\\f3\\'b7}\\tab x{\\f3\\u-3913 ?}", "•\tx•");
    row("Unicode", "\\u345?\\uc2\\u233\\'65\\'27{\\uc0\\u8364}\\u-10179??\\u-9212??.", "řé€🐄.");
    row("fallback is a word", "\\u8211\\endash x", "–x");
    row("signs", "\\lquote a\\rquote\\~b\\_c\\-d\\emdash\\bullet\\{\\}\\\\",
        "‘a’\u00A0b\u2011c\u00AD"
        "d—•{}\\");
    row("notes and heads are left out",
        "{\\info{\\title T}}{\\header H\\par}{\\*\\unknown {deep} x}a{\\footnote n}b{\\v hidden}c", "abc");
    row("list bullets", "{\\listtext\\tab 1.}{\\*\\pn\\pnlvl}one\\par", "\t1.one");
    row("field", "{\\field{\\*\\fldinst {HYPERLINK \"https://example.org/\"}}{\\fldrslt {\\ul there}}}!",
        "there!");
    row("table",
        "\\trowd\\cellx100\\cellx200\\intbl a\\cell b\\cell\\row\\trowd c\\cell\\cell\\row\\pard end",
        "a\tb\nc\nend");
    row("line ends do not count", "a\r\nb\n \rc\\\nd", "ab c\nd");
    row("colours of no table", "\\cf99\\highlight-3 x", "x");
    QTest::newRow("tables behind their use") << QByteArray("{\\rtf1\\f1 \\'f8{\\fonttbl{\\f1 A;}}}") << "ø";
    QTest::newRow("UTF-8 page") << QByteArray("{\\rtf1\\ansicpg65001 \xC5\x99}") << "ř";
    QTest::newRow("other programs' pages") << QByteArray("{\\rtf1\\ansicpg1251 \\'cc}") << "М";
}

void TestRtf::foreignDocuments() {
    QFETCH(QByteArray, document);
    QTEST(RichText::toText(document), "text");
    QTextDocument shown;
    const RtfOutcome outcome = RichText::toDocument(document, shown);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(shown.toRawText().replace(QChar(QChar::ParagraphSeparator), u'\n').replace(QChar(0x2028), u'\n'),
             RichText::toText(document));
}

void TestRtf::badDocuments_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error"); // a word of it
    QTest::newRow("cut off") << QByteArray("{\\rtf1 text{\\b bo") << "textbo"
                             << "end";
    QTest::newRow("cut off in a sign") << QByteArray("{\\rtf1 text\\'") << "text"
                                       << "end";
    QTest::newRow("cut off in a picture")
        << QByteArray("{\\rtf1 text{\\pict\\pngblip 89504e470d0a1a") << "text"
        << "end";
    QTest::newRow("too many ends") << QByteArray("{\\rtf1 a}}}}b") << "ab"
                                   << "beginning";
    QTest::newRow("10,000 groups") << "{\\rtf1 a" + QByteArray(10'000, '{') + "b" + QByteArray(10'001, '}')
                                   << "a"
                                   << "deep";
    QTest::newRow("lying length") << QByteArray(
                                         "{\\rtf1 a{\\pict\\jpegblip\\bin999999999 \xFF\xD8\xFF}b\\par}")
                                  << "ab"
                                  << "damaged";
    QTest::newRow("negative length") << QByteArray("{\\rtf1 a{\\pict\\bin-5 x}b}") << "ab"
                                     << "damaged";
    QTest::newRow("numbers too large")
        << QByteArray("{\\rtf1\\uc99999999999\\fs99999999999 a\\u99999999999999\\li-99999999999 }") << "a"
        << "";
    QTest::newRow("half pairs") << QByteArray("{\\rtf1 \\u-10179?x\\u-9212?}") << "\uFFFDx\uFFFD"
                                << "";
    QTest::newRow("control characters")
        << QByteArray("{\\rtf1 a\x01\\'00\\u1?\\u-560?b}").replace('\x01', QByteArray("\0\x01", 2)) << "ab"
        << "";
    QTest::newRow("no RTF") << QByteArray("caf\xE9\r\nnext") << "café\nnext"
                            << "";
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE\x59\x01\n\0x\0", 8) << "ř\nx"
                            << "";
    QTest::newRow("nothing") << QByteArray() << ""
                             << "";
}

void TestRtf::badDocuments() {
    QFETCH(QByteArray, document);
    QFETCH(QString, error);
    QTextDocument shown;
    const RtfOutcome outcome = RichText::toDocument(document, shown);
    QVERIFY2(error.isEmpty() ? outcome.error.isEmpty() : outcome.error.contains(error),
             qPrintable(outcome.error));
    QTEST(RichText::toText(document), "text");
    QCOMPARE(shown.toPlainText(), RichText::toText(document));
}

void TestRtf::formatsComeBack_data() {
    QTest::addColumn<QString>("html");
    QTest::newRow("styles")
        << "<p>plain <b>bold <i>both</i></b> <u>under</u> <s>out</s> x<sup>2</sup> y<sub>3</sub></p>";
    QTest::newRow("fonts") << "<p><span style='font-family:\"Courier New\";font-size:12pt'>a</span>"
                              "<span style='font-family:\"Č;\\\\{}\";font-size:8.5pt'>b</span></p>";
    QTest::newRow("colours") << "<p><span style='color:#ff0000'>r</span><span style='color:#010203;"
                                "background-color:#ffff00'>m</span></p>";
    QTest::newRow("paragraphs")
        << "<p align='left'>l</p><p align='center'>c</p><p align='right'>r</p>"
           "<p align='justify'>j</p><p style='margin-left:40px'>in</p><p><br></p><p>z</p>";
    QTest::newRow("characters") << "<p style='white-space:pre-wrap'>a\tb  c \\par {x} é ř 春 🐄 \u200D “”</p>";
    QTest::newRow("link") << "<p><a href='https://example.org/?a=1&amp;b={2}'>there</a></p>";
}

void TestRtf::formatsComeBack() {
    QFETCH(QString, html);
    QTextDocument made, first, second;
    made.setHtml(html);
    const QByteArray bytes = RichText::fromDocument(made);
    QVERIFY(std::none_of(bytes.begin(), bytes.end(), [](char c) { return uchar(c) >= 0x7F; }));
    QCOMPARE(RichText::toDocument(bytes, first).error, QString());
    QCOMPARE(first.toPlainText(), made.toPlainText());
    QCOMPARE(RichText::toDocument(RichText::fromDocument(first), second).error, QString());
    QCOMPARE(described(second), described(first));
    // What HTML leaves to defaults the format names; everything else is as it was made.
    QTextCursor all(&made);
    for (QTextBlock block = made.begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            QTextCharFormat format = at.fragment().charFormat();
            all.setPosition(at.fragment().position());
            all.setPosition(at.fragment().position() + at.fragment().length(), QTextCursor::KeepAnchor);
            if (!format.hasProperty(QTextFormat::FontPointSize))
                format.setFontPointSize(made.defaultFont().pointSizeF());
            QStringList families = format.fontFamilies().toStringList();
            families << made.defaultFont().family();
            format.setFontFamilies({families.front().remove(u';')});
            all.setCharFormat(format);
        }
    const QStringList expected = described(made);
    for (int line = 0; line < expected.size(); ++line)
        if (!expected[line].contains("[|")) // an empty paragraph has no runs of its own
            QCOMPARE(described(first)[line], expected[line]);
}

void TestRtf::picturesComeBack_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("document");
    for (const char* format : {"PNG", "JPG"}) {
        const QByteArray file = pictureFile(format);
        const QByteArray word = qstrcmp(format, "PNG") == 0 ? "\\pngblip" : "\\jpegblip";
        QTest::addRow("%s, hexadecimal", format)
            << file
            << rtf("a{\\*\\shppict{\\pict{\\*\\picprop{\\sp}}" + word + "\\picwgoal75\\pichgoal45\r\n" +
                   file.toHex() + "}}{\\nonshppict{\\pict\\wmetafile8 00}}b");
        QTest::addRow("%s, binary", format)
            << file << rtf("a{\\pict" + word + "\\bin" + QByteArray::number(file.size()) + " " + file + "}b");
    }
    QTest::newRow("of another kind") << QByteArray() << rtf("ab{\\pict\\wmetafile8 0123}");
}

void TestRtf::picturesComeBack() {
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, document);
    QTextDocument first, second;
    const RtfOutcome outcome = RichText::toDocument(document, first);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.simplified, file.isEmpty());
    RichText::toDocument(RichText::fromDocument(first), second);
    QCOMPARE(pictureIn(second), file);
    QCOMPARE(second.toPlainText(), file.isEmpty() ? "ab" : "a\uFFFCb");
}

void TestRtf::plainTextComesBack() {
    const QString text = "Fremd bin ich \\eingezogen {1}\n\tüber 春 🎻\n\nEnde\n";
    QCOMPARE(RichText::toText(RichText::fromText(text)), text);
    QTextDocument document;
    RichText::toDocument(RichText::fromText(text), document);
    QCOMPARE(document.toPlainText(), text);
}

void TestRtf::othersReadWhatIsWritten_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments"); // %1: the document, %2: its folder
    QTest::newRow("LibreOffice") << "soffice"
                                 << QStringList{"--headless",
                                                "-env:UserInstallation=file://%2/profile",
                                                "--convert-to",
                                                "txt:Text (encoded):UTF8",
                                                "--outdir",
                                                "%2",
                                                "%1"};
    QTest::newRow("unrtf") << "unrtf" << QStringList{"--nopict", "--html", "%1"};
}

void TestRtf::othersReadWhatIsWritten() {
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    if (QStandardPaths::findExecutable(program).isEmpty())
        QSKIP(qPrintable(program + " is not installed; what it reads was not checked"));
    QTemporaryDir folder;
    QTextDocument document;
    document.setHtml(
        "<p>Plain <b>bold</b> {braces} \\ end</p><p align='right'>Dvořák, <i>Rusalka</i></p><p>last</p>");
    QFile file(folder.filePath("document.rtf"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(RichText::fromDocument(document));
    file.close();
    for (QString& argument : arguments)
        argument.replace("%1", file.fileName()).replace("%2", folder.path());
    QProcess converter;
    converter.start(program, arguments);
    QVERIFY(converter.waitForFinished(120'000));
    QByteArray output = converter.readAllStandardOutput();
    QFile converted(folder.filePath("document.txt"));
    if (converted.open(QIODevice::ReadOnly))
        output = converted.readAll();
    QString text = QString::fromUtf8(output);
    if (arguments.contains("--html")) {
        document.setHtml(text);
        text = document.toPlainText();
    }
    QVERIFY2(text.contains("Plain bold {braces} \\ end\n") && text.contains("Dvořák, Rusalka\n") &&
                 text.contains("last"),
             output.constData());
}

void TestRtf::largeDocumentsAreQuick() {
    QByteArray body;
    for (int i = 0; body.size() < 1'000'000; ++i)
        body += "\\pard\\ql\\f" + QByteArray::number(i % 3) +
                "\\fs20 Words of a paragraph, {\\b some of them bold}, caf\\'e9 "
                "and \\u345? and {\\cf1\\i others} more, until the line is as long as lines are.\\par\r\n";
    QElapsedTimer timer;
    timer.start();
    QTextDocument document;
    QCOMPARE(RichText::toDocument(rtf(body), document).error, QString());
    qInfo("1 MB of RTF in %lld ms, %d paragraphs", timer.elapsed(), document.blockCount());
    QVERIFY2(timer.elapsed() < 2000, "reading is no longer linear"); // the bench measures; this finds cliffs
}

QTEST_MAIN(TestRtf)
#include "test_rtf.moc"
