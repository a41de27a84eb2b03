// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/LikePattern.h"
#include "store/TextOrder.h"

#include <QTest>
#include <algorithm>
#include <random>

using namespace tessaranth;

namespace {

/// Compares in both encodings, which must agree, and checks that the key of hash sets agrees too.
int compared(const QString& a, const QString& b) {
    const int result = TextOrder::compare(a, b);
    const int bytes = TextOrder::compareUtf8(a.toStdString(), b.toStdString());
    if (result != bytes)
        qFatal("UTF-8 %d and UTF-16 %d differ on %s, %s", bytes, result, qPrintable(a), qPrintable(b));
    if ((TextOrder::fold(a) == TextOrder::fold(b)) != (result == 0))
        qFatal("the key and the order differ on %s, %s", qPrintable(a), qPrintable(b));
    return result;
}

} // namespace

class TextOrderTest : public QObject {
    Q_OBJECT
private slots:
    void order_data();
    void order();
    void equal_data();
    void equal();
    void everyLetterWithItsForms();
    void latinLettersStayApart();
    void anyBytesHaveOnePlace();
    void naturalOrder();
    void like_data();
    void like();
    void likeEndsSoon();
};

void TextOrderTest::order_data() {
    QTest::addColumn<QStringList>("ascending");
    QTest::newRow("accents beside their letter") << QStringList{"Faure", "Fauré", "Faureb", "Faurz", "Fb"};
    QTest::newRow("first difference in accents") << QStringList{"cote", "coté", "côte", "côté"};
    QTest::newRow("letters before accents") << QStringList{"Résumé", "Resumea", "Résumés"};
    QTest::newRow("case never") << QStringList{"a", "B", "c", "D"};
    QTest::newRow("ligatures as their letters")
        << QStringList{"Caesar", "Cæsar", "Caf", "Coda", "Cœur", "Cog", "Strasse", "Straße", "Strasser"};
    QTest::newRow("strokes") << QStringList{"da", "đa", "db", "la", "ła", "lb", "oa", "øa", "ob"};
    QTest::newRow("kinds") << QStringList{"", " a", "'a", "(a", "+a", "0a", "9", "a", "z", "ω", "я", "中"};
    QTest::newRow("other scripts") << QStringList{"Άλφα", "Βήτα", "Чайковский", "Шостакович", "אב"};
    QTest::newRow("outside the basic plane") << QStringList{"z", QString::fromUcs4(U"\U00010428"), "\ue000"};
}

void TextOrderTest::order() {
    QFETCH(QStringList, ascending);
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype j = 0; j < ascending.size(); ++j) {
            const int expected = i < j ? -1 : i > j;
            const int result = compared(ascending[i], ascending[j]);
            QVERIFY2((result < 0) == (expected < 0) && (result > 0) == (expected > 0),
                     qPrintable(ascending[i] + " / " + ascending[j]));
        }
    }
}

void TextOrderTest::equal_data() {
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::newRow("accented capital") << "É"
                                      << "é";
    QTest::newRow("decomposed") << "Dvořák"
                                << "DVOR\u030cA\u0301K";
    QTest::newRow("marks in any order") << "a\u0323\u0302"
                                        << "a\u0302\u0323";
    QTest::newRow("two marks composed") << "\u1ead"
                                        << "\u00e2\u0323";
    QTest::newRow("capital sharp s") << "STRAẞE"
                                     << "straße";
    QTest::newRow("final sigma") << "ΣΊΣΥΦΟΣ"
                                 << "Σίσυφος";
    QTest::newRow("Cyrillic") << "ЩЕДРИЙ"
                              << "щедрии\u0306";
    QTest::newRow("Korean") << "한"
                            << "\u1112\u1161\u11ab";
    QTest::newRow("Deseret") << QString::fromUcs4(U"\U00010400") << QString::fromUcs4(U"\U00010428");
}

void TextOrderTest::equal() {
    QFETCH(QString, a);
    QFETCH(QString, b);
    QCOMPARE(compared(a, b), 0);
    QCOMPARE(compared("x" + a + "y", "X" + b + "Y"), 0);
    QVERIFY(compared(a + "a", b + "b") < 0);
    QVERIFY(LikePattern(QStringView(a)).matches(QStringView(b)));
    QVERIFY(LikePattern(QStringView("_" + a + "%")).matches(QStringView("x" + b + "y")));
}

void TextOrderTest::everyLetterWithItsForms() {
    for (char32_t c = 1; c < 0x20000; ++c) {
        if (QChar::isSurrogate(c) || QChar::category(c) == QChar::Other_NotAssigned)
            continue;
        const QString text = "a" + QString::fromUcs4(&c, 1);
        for (const QString& form : {text.normalized(QString::NormalizationForm_D),
                                    text.normalized(QString::NormalizationForm_C), text.toLower()})
            QVERIFY2(compared(text, form) == 0, qPrintable(QString::number(c, 16)));
    }
}

void TextOrderTest::latinLettersStayApart() {
    QHash<QString, QChar> seen;
    for (char16_t c = 'a'; c < 0x250; ++c) {
        const QChar letter(c);
        if (!letter.isLetter() || letter.toCaseFolded() != letter)
            continue;
        const QString key = TextOrder::fold(QString(letter));
        QVERIFY2(!seen.contains(key), qPrintable(QString(letter) + " is " + seen.value(key)));
        seen.insert(key, letter);
        if (c >= 0xdf && c < 0x180)
            QVERIFY2(compared("a", letter) <= 0 && compared(letter, QString("zz")) < 0, qPrintable(letter));
    }
}

void TextOrderTest::anyBytesHaveOnePlace() {
    std::vector<std::string> texts{std::string("a\0b", 3),
                                   "a",
                                   "\xff",
                                   "\xc3",
                                   "\xc3\xa9",
                                   "e\xcc\x81",
                                   "\xed\xa0\x80",
                                   "\xf0\x9f",
                                   "\xc0\xaf",
                                   std::string(100, '\xcc') + "\x81"};
    std::mt19937 random(11);
    const std::string bytes("aEe.1\xc3\xa9\xcc\x81\xa3\xff\0", 12);
    for (int i = 0; i < 150; ++i) {
        std::string text;
        for (unsigned length = random() % 7; length > 0; --length)
            text += bytes[random() % bytes.size()];
        texts.push_back(text);
    }
    for (const auto& a : texts) {
        for (const auto& b : texts) {
            const int ab = TextOrder::compareUtf8(a, b);
            QCOMPARE(TextOrder::compareUtf8(b, a), -ab);
            for (const auto& c : texts) {
                if (ab <= 0 && TextOrder::compareUtf8(b, c) <= 0)
                    QVERIFY(TextOrder::compareUtf8(a, c) <= 0);
            }
        }
    }
    const QString high(QChar(0xd800)), low(QChar(0xdc00));
    QVERIFY(TextOrder::compare(high, low) < 0);
    QVERIFY(TextOrder::fold(high) != TextOrder::fold(low));
}

void TextOrderTest::naturalOrder() {
    const QStringList ascending{"",
                                "BWV 7",
                                "BWV 1001",
                                "BWV 1001a",
                                "K. 6",
                                "K. 16",
                                "k. 16a",
                                "K. 17",
                                "K. 100",
                                "K. 105",
                                "No. 99999999999999999999999",
                                "No. 100000000000000000000000",
                                "Op. 2",
                                "Öp. 2",
                                "Op. 10",
                                "Op. 18 No. 2",
                                "Op. 18 No. 10"};
    QStringList sorted = ascending;
    std::shuffle(sorted.begin(), sorted.end(), std::mt19937(3));
    std::sort(sorted.begin(), sorted.end(),
              [](const QString& a, const QString& b) { return TextOrder::compareNatural(a, b) < 0; });
    QCOMPARE(sorted, ascending);
    QVERIFY(TextOrder::compareNatural(u"K. 016", u"K. 16") != 0);
    QVERIFY(TextOrder::compareNatural(u"K. 016", u"K. 17") < 0);
    QCOMPARE(TextOrder::compareNatural(u"OP. 1 É", u"op. 1 e\u0301"), 0);
}

void TextOrderTest::like_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QStringList>("matching");
    QTest::addColumn<QStringList>("others");
    const auto row = [](const char* pattern, const QStringList& matching, const QStringList& others) {
        QTest::newRow(pattern) << QString::fromUtf8(pattern) << matching << others;
    };
    row("", {""}, {"a"});
    row("abc", {"abc", "ABC"}, {"ab", "abcd", "xabc", "ábc"});
    row("ab%", {"ab", "ABc", "abéà"}, {"a", "xab", "aḃ"});
    row("%ab%", {"ab", "xxaab", "éab", "aaabé"}, {"a", "axb", "ab\u0301"});
    row("%é", {"É", "cafe\u0301"}, {"cafe", "é "});
    row("%a%b_%", {"abc", "xaxbx", "abb"}, {"ab", "ba"});
    row("_", {"a", "é", "e\u0301", "ß", "한", "\U0001f3b5"}, {"", "ab", "ss"});
    row("a%%%b", {"ab", "axb"}, {"a", "abx"});
    row("чай%", {"Чайковский"}, {"чаи"});
    row("straße", {"STRAẞE"}, {"strasse"});
    row("100[%]", {"100%"}, {"100", "1000"});
    row("[[]a_[_]", {"[ab_"}, {"ab_", "[abc"});
    row("[a-c]x", {"ax", "Bx", "cX", "àx"}, {"dx", "x", "-x"});
    row("[!a-c]%", {"d", "é", "1"}, {"a", "B", ""});
    row("[aé-]", {"A", "É", "-"}, {"e", "b"});
    row("[-a]", {"-", "a"}, {"b"});
    row("[а-в]", {"Б"}, {"г", "b"});
    row("[ab", {"[AB"}, {"a", "b"});
    row("a[!]b[]", {"a!b"}, {"ab", "axb"});
    row("[c-a]", {}, {"a", "b", "c"});
}

void TextOrderTest::like() {
    QFETCH(QString, pattern);
    QFETCH(QStringList, matching);
    QFETCH(QStringList, others);
    const LikePattern wide{QStringView(pattern)};
    const LikePattern bytes(pattern.toStdString());
    for (const QString& text : matching) {
        QVERIFY2(wide.matches(QStringView(text)), qPrintable(text));
        QVERIFY2(bytes.matches(text.toStdString()), qPrintable(text));
    }
    for (const QString& text : others) {
        QVERIFY2(!wide.matches(QStringView(text)), qPrintable(text));
        QVERIFY2(!bytes.matches(text.toStdString()), qPrintable(text));
    }
}

void TextOrderTest::likeEndsSoon() {
    QString pattern;
    for (int i = 0; i < 60; ++i)
        pattern += "%a";
    const std::string text = std::string(10'000, 'a') + "b";
    QVERIFY(!LikePattern((pattern + "%c").toStdString()).matches(text));
    QVERIFY(LikePattern((pattern + "%b").toStdString()).matches(text));
}

QTEST_APPLESS_MAIN(TextOrderTest)
#include "test_textorder.moc"
