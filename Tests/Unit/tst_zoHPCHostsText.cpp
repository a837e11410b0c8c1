#include "zoTestCase.h"

#include <zoHPCHostsText.h>
#include <zoHPCNumberedName.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QRegularExpression>

// The splitting of hosts text into tokens, and numbered host names.
class tst_zoHPCHostsText final : public zoTestCase
{
    Q_OBJECT

private slots:
    void splitsIntoTokens_data();
    void splitsIntoTokens();
    void agreesWithTheRegularExpressions_data();
    void agreesWithTheRegularExpressions();
    void hostNameKeepsLettersDigitsDashAndDot_data();
    void hostNameKeepsLettersDigitsDashAndDot();
    void readsTheRenderOption_data();
    void readsTheRenderOption();
    void countsNamesUp_data();
    void countsNamesUp();
    void numberedNameAgreesWithTheRegularExpression();
};

namespace
{
// The definition of the format: ten rewritings of the whole text.
QStringList referenceTokens(QString text)
{
    const auto replace = [&text](const char* pattern, const char* by) {
        text.replace(QRegularExpression(QString::fromLatin1(pattern)), QString::fromLatin1(by));
    };
    replace("(\\[[^\\]]*)forwards=([^,\\]]*)([^\\]]*\\])", "\\1\\3 { \\2 }");
    replace("\\s*\\[", "[");
    replace("\\s*[{(]\\s*", " { ");
    replace("\\s*[})]\\s*", " } ");
    text.replace(QLatin1Char('|'), QLatin1Char(' '));
    text.replace(QLatin1Char(','), QLatin1Char(' '));
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    replace("\\s+", " ");
    bool inBlock = false;
    for (QChar& c : text) {
        if (c == QLatin1Char('['))
            inBlock = true;
        else if (c == QLatin1Char(']'))
            inBlock = false;
        else if (inBlock && c == QLatin1Char(' '))
            c = QLatin1Char(',');
    }
    return text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
}
} // namespace

void tst_zoHPCHostsText::splitsIntoTokens_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("tokens");

    QTest::newRow("empty") << "" << QStringList();
    QTest::newRow("blanks-only") << " \t\r\n" << QStringList();
    QTest::newRow("separators") << "a,b|c\td\ne" << QStringList{"a", "b", "c", "d", "e"};
    QTest::newRow("braces-part") << "a{b(c)}d" << QStringList{"a", "{", "b", "{", "c", "}", "}", "d"};
    QTest::newRow("block-sticks") << "a  [x=1, y=2] b" << QStringList{"a[x=1,y=2]", "b"};
    QTest::newRow("comma-parts-block") << "a, b ,[x]" << QStringList{"a", "b", "[x]"};
    QTest::newRow("block-after-brace") << "{ [x] a" << QStringList{"{", "[x]", "a"};
    QTest::newRow("blanks-in-block") << "[a = 1]" << QStringList{"[a,=,1]"};
    QTest::newRow("braces-in-block") << "a[x={1}]" << QStringList{"a[x=,{,1,},]"};
    QTest::newRow("block-never-closed") << "a[x b " << QStringList{"a[x,b,"};
    QTest::newRow("text-behind-block") << "a[x]b" << QStringList{"a[x]b"};
    QTest::newRow("forwards") << "gw1[rt=0,forwards=a b]" << QStringList{"gw1[rt=0,]", "{", "a", "b", "}"};
    QTest::newRow("forwards-with-bars")
        << "gw1[forwards=a|b,rt=0]" << QStringList{"gw1[,rt=0]", "{", "a", "b", "}"};
    QTest::newRow("last-forwards-counts")
        << "g[forwards=a,forwards=b]" << QStringList{"g[forwards=a,]", "{", "b", "}"};
    QTest::newRow("forwards-outside-block") << "forwards=a" << QStringList{"forwards=a"};
    QTest::newRow("worked-example") << "gpu01 - gpu04, viz1[rt=0] { ib01 ib02 }\n{ wall1 - wall3 }"
                                    << QStringList{"gpu01", "-",     "gpu04", "viz1[rt=0]", "{",
                                                   "ib01",  "ib02",  "}",     "{",          "wall1",
                                                   "-",     "wall3", "}"};
}

void tst_zoHPCHostsText::splitsIntoTokens()
{
    QFETCH(QString, text);
    QFETCH(QStringList, tokens);

    QCOMPARE(zoHPCHostsText::tokens(text), tokens);
    QCOMPARE(referenceTokens(text), tokens);
}

void tst_zoHPCHostsText::agreesWithTheRegularExpressions_data()
{
    QTest::addColumn<QStringList>("alphabet");
    QTest::addColumn<int>("length");

    const QStringList brackets{"[", "]", "{", "}", "(", ")", ",", "|", " ", "a"};
    QStringList all = brackets;
    all << "-"
        << "="
        << "\t"
        << "\n"
        << "\r"
        << "\v"
        << "\f"
        << "forwards="
        << "rt=0"
        << "n1"
        << "/"
        << "_";
    QStringList odd = all;
    odd << QString(QChar(0xa0)) << QString(QChar(0x85)) << QString(QChar(0x2028)) << QString(QChar(0x3000))
        << QString(QChar(0)) << QString(QChar(0xfeff)) << QString::fromUtf8("ä") << QString::fromUtf8("😀");
    QTest::newRow("brackets-short") << brackets << 6;
    QTest::newRow("brackets-long") << brackets << 40;
    QTest::newRow("forwards") << QStringList{"[", "]", "forwards=", "forward", ",", " ", "{", "x"} << 14;
    QTest::newRow("everything") << all << 30;
    QTest::newRow("beyond-ascii") << odd << 30;
}

void tst_zoHPCHostsText::agreesWithTheRegularExpressions()
{
    QFETCH(QStringList, alphabet);
    QFETCH(int, length);
    QRandomGenerator random(4711);

    for (int i = 0; i < 4000; ++i) {
        QString text;
        const int count = random.bounded(length + 1);
        for (int k = 0; k < count; ++k)
            text += alphabet.at(random.bounded(alphabet.size()));
        const QStringList expected = referenceTokens(text);
        const QStringList actual = zoHPCHostsText::tokens(text);
        QVERIFY2(actual == expected, qPrintable(QStringLiteral("'%1' gives <%2>, not <%3>")
                                                    .arg(text, actual.join(QLatin1String("> <")),
                                                         expected.join(QLatin1String("> <")))));
    }
}

void tst_zoHPCHostsText::hostNameKeepsLettersDigitsDashAndDot_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << "node-1.lan"
                           << "node-1.lan";
    QTest::newRow("underscore") << "node_1"
                                << "node1";
    QTest::newRow("colon") << "a:b"
                           << "ab";
    QTest::newRow("block-cut-off") << "a_b[c]d"
                                   << "ab";
    QTest::newRow("digits-of-other-scripts") << QString::fromUtf8("n٣1") << "n1";
    QTest::newRow("letters-of-other-scripts") << QString::fromUtf8("nä1") << "n1";
    QTest::newRow("nothing-left") << "_"
                                  << "";
}

void tst_zoHPCHostsText::hostNameKeepsLettersDigitsDashAndDot()
{
    QFETCH(QString, token);
    QFETCH(QString, name);

    QCOMPARE(zoHPCHostsText::hostName(token), name);
}

void tst_zoHPCHostsText::readsTheRenderOption_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("value");

    QTest::newRow("no-block") << "a" << false << "";
    QTest::newRow("other-key") << "a[art=1]" << false << "";
    QTest::newRow("key") << "a[rt=0]" << true << "0";
    QTest::newRow("key-in-upper-case") << "a[RT=FALSE]" << true << "FALSE";
    QTest::newRow("last-counts") << "a[rt=0,Rt=1]" << true << "1";
    QTest::newRow("no-value") << "a[rt]" << true << "";
    QTest::newRow("value-holds-equals") << "a[rt=0=1]" << true << "0=1";
    QTest::newRow("brackets-dropped") << "a[x]b[,rt=0]" << true << "0";
}

void tst_zoHPCHostsText::readsTheRenderOption()
{
    QFETCH(QString, token);
    QFETCH(bool, found);
    QFETCH(QString, value);
    QString read;

    QCOMPARE(zoHPCHostsText::renderOption(token, read), found);
    QCOMPARE(read, value);
}

void tst_zoHPCHostsText::countsNamesUp_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("next");

    QTest::newRow("padding-kept") << "node07" << 3 << "node10";
    QTest::newRow("wide-padding-kept") << "n001" << 1 << "n002";
    QTest::newRow("grows-without-padding") << "n9" << 1 << "n10";
    QTest::newRow("padding-used-up") << "n099" << 1 << "n100";
    QTest::newRow("padding-overflows") << "n099" << 901 << "n1000";
    QTest::newRow("no-digits") << "host" << 2 << "2";
    QTest::newRow("digits-only") << "5" << 2 << "2";
    QTest::newRow("empty") << "" << 1 << "1";
    QTest::newRow("single-zero") << "n0" << 1 << "n1";
    QTest::newRow("twelve-zeros-at-most") << "n00000000000000000" << 1 << "n0000000000001";
    QTest::newRow("largest-number") << "n2147483647" << 1 << "n2147483648";
    QTest::newRow("number-too-large") << "n2147483648" << 1 << "n1";
    QTest::newRow("percent-sign") << "%1x1" << 1 << "%1x2";
    QTest::newRow("digits-of-other-scripts") << QString::fromUtf8("n٣") << 1 << "1";
}

void tst_zoHPCHostsText::countsNamesUp()
{
    QFETCH(QString, name);
    QFETCH(int, offset);
    QFETCH(QString, next);

    QCOMPARE(zoHPCNumberedName(name).name(offset), next);
}

void tst_zoHPCHostsText::numberedNameAgreesWithTheRegularExpression()
{
    const QRegularExpression pattern(QStringLiteral("^(.*[^0-9])([0-9]+)$"));
    const QStringList alphabet{"0", "1", "9", "a", "-", "\n", QString::fromUtf8("ä"), QString::fromUtf8("٣")};
    QRandomGenerator random(815);

    for (int i = 0; i < 5000; ++i) {
        QString name;
        for (int k = random.bounded(7); k > 0; --k)
            name += alphabet.at(random.bounded(alphabet.size()));
        const QRegularExpressionMatch match = pattern.match(name);
        const zoHPCNumberedName numbered(name);
        QCOMPARE(numbered.prefix().toString(), match.captured(1));
        QCOMPARE(numbered.digits().toString(), match.captured(2));
    }
}

ZO_TEST_MAIN(tst_zoHPCHostsText)
#include "tst_zoHPCHostsText.moc"
