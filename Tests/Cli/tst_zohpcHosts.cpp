#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

namespace
{
QByteArray fine(const QByteArray& output)
{
    return output + "--- errors\n--- exit code 0\n";
}

QByteArray lines(const char* words)
{
    QByteArray result = QByteArray(words).simplified().replace(' ', '\n');
    return result.isEmpty() ? result : result + '\n';
}
} // namespace

// The hosts commands as whole processes.
class tst_zohpcHosts final : public zoTestCase
{
    Q_OBJECT

private slots:
    void hostsTextExpands_data();
    void hostsTextExpands();
    void bracketsExpand_data();
    void bracketsExpand();
    void badInputIsTold_data();
    void badInputIsTold();
    void placesLeadToTheirSource();
    void namesFoldToHostsText_data();
    void namesFoldToHostsText();
    void namesFoldToBrackets_data();
    void namesFoldToBrackets();
    void foldedTextExpandsToTheSameNames_data();
    void foldedTextExpandsToTheSameNames();
    void treeShowsNetworksAndGateways_data();
    void treeShowsNetworksAndGateways();
    void jsonIsJson_data();
    void jsonIsJson();
    void inputComesFromEverywhere();
    void nulIsRefused();
    void bytesThatAreNoTextAreRefused();
    void bracketsOfAllNamesHaveOneLimit_data();
    void bracketsOfAllNamesHaveOneLimit();
    void namesHaveBracketsOfNumbersOnly_data();
    void namesHaveBracketsOfNumbersOnly();
    void separatorStandsBetweenNames();
    void sortWritesEachNameOnce();
    void deepBracesAreReadAndTooDeepOnesRefused();
    void asManyNamesAsAClusterMayHaveAreWritten();
    void controlCharacterIsNoNumber();
    void namesOfManyNumbersFold();
    void sameBytesInEveryProcess();
};

void tst_zohpcHosts::hostsTextExpands_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("output");

    QTest::newRow("empty") << "" << lines("");
    QTest::newRow("separators") << "a b,c|d\te\nf" << lines("a b c d e f");
    QTest::newRow("braces-are-no-names") << "{ a b } ( c d )" << lines("a b c d");
    QTest::newRow("range") << "n1 - n3" << lines("n1 n2 n3");
    QTest::newRow("range-padded") << "n01 - n03" << lines("n01 n02 n03");
    QTest::newRow("range-grows") << "n099 - n101" << lines("n099 n100 n101");
    QTest::newRow("ranges-chained") << "n1 - n3 - n5" << lines("n1 n2 n3 n4 n5");
    QTest::newRow("range-adjacent") << "n1 - n2" << lines("n1 n2");
    QTest::newRow("range-over-a-gateway") << "n1 { a } - n3" << lines("n1 a n2 n3");
    QTest::newRow("option-without-a-value") << "a[rt] b[RT]" << lines("a b");
    QTest::newRow("options-with-commas-too-many") << "a[,rt=0,] b" << lines("a b");
    QTest::newRow("options-of-a-network-mean-nothing") << "{ [type=x] a }" << lines("a");
    QTest::newRow("parentheses-and-braces") << "( a { b } ) { c ( d ) }" << lines("a b c d");
    QTest::newRow("byte-order-mark") << QString(QChar(0xfeff)) + "a" << lines("a");
    QTest::newRow("options-are-no-names") << "host[rt=0] x [rt=1] y" << lines("host x y");
    QTest::newRow("forwards") << "gw1[rt=0,forwards=a b] c" << lines("gw1 a b c");
    QTest::newRow("behind-a-gateway") << "gpu01 - gpu04, viz1[rt=0] { ib01 ib02 }\n{ wall1 - wall3 }"
                                      << lines("gpu01 gpu02 gpu03 gpu04 viz1 ib01 ib02 wall1 wall2 wall3");
    QTest::newRow("leading-slash-is-left-out") << "/etc/hosts a" << lines("a");
    QTest::newRow("duplicates-stay") << "a b a" << lines("a b a");
}

void tst_zohpcHosts::hostsTextExpands()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, output);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "expand", text});

    QCOMPARE(run.whole(), fine(output));
}

void tst_zohpcHosts::bracketsExpand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("output");

    QTest::newRow("list-and-range") << "gpu[08-11,20]" << lines("gpu08 gpu09 gpu10 gpu11 gpu20");
    QTest::newRow("padding-kept") << "n[098-101]" << lines("n098 n099 n100 n101");
    QTest::newRow("padding-per-range") << "n[01-02,1-2]" << lines("n01 n02 n1 n2");
    QTest::newRow("padding-longer-than-the-end") << "n[0001-2]" << lines("n0001 n0002");
    QTest::newRow("unpadded-grows") << "n[8-11]" << lines("n8 n9 n10 n11");
    QTest::newRow("steps") << "n[1-9/2]" << lines("n1 n3 n5 n7 n9");
    QTest::newRow("steps-padded-past-the-end") << "n[01-10/4]" << lines("n01 n05 n09");
    QTest::newRow("several-in-one-name") << "r[1-2]n[1-2]-ib" << lines("r1n1-ib r1n2-ib r2n1-ib r2n2-ib");
    QTest::newRow("adjacent-brackets") << "n[1-2][3-4]" << lines("n13 n14 n23 n24");
    QTest::newRow("in-front") << "[1-2]a" << lines("1a 2a");
    QTest::newRow("numbers-alone") << "[1-3],x" << lines("1 2 3 x");
    QTest::newRow("order-and-duplicates-kept") << "n[3,1,1]" << lines("n3 n1 n1");
    QTest::newRow("list-of-words") << "gpu[1-2],viz1,io[01]" << lines("gpu1 gpu2 viz1 io01");
    QTest::newRow("blanks-inside") << "n[1, 3 ]" << lines("n1 n3");
    QTest::newRow("blank-before") << "n [1-2]" << lines("n1 n2");
    QTest::newRow("mixed-with-hosts-text")
        << "{ a[1-2] - a5 gw[rt=0] { b[1-2] } }" << lines("a1 a2 a3 a4 a5 gw b1 b2");
    QTest::newRow("options-behind") << "a[1-2][rt=0] b" << lines("a1 a2 b");
    QTest::newRow("domain-behind") << "n[1-2].example.org" << lines("n1.example.org n2.example.org");
    QTest::newRow("brackets-between-dashes") << "n[1-2]-m[3-4]" << lines("n1-m3 n1-m4 n2-m3 n2-m4");
}

void tst_zohpcHosts::bracketsExpand()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, output);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "expand", text});

    QCOMPARE(run.whole(), fine(output));
}

void tst_zohpcHosts::badInputIsTold_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("whole");

    const auto refused = [](const QByteArray& error) {
        return "--- errors\n" + error + "\n--- exit code 2\n";
    };
    const auto noOptions = [](const QByteArray& column, const QByteArray& block) {
        return "TEXT:1:" + column + ": \"" + block +
               "\" is neither a range of numbers, such as [1-16], nor options, such as [rt=0]";
    };
    const auto told = [](const char* words, const char* error) {
        return lines(words) + "--- errors\n" + error + "\n--- exit code 1\n";
    };
    QTest::newRow("backwards") << "a, n[3-1]" << refused("TEXT:1:6: \"3-1\" runs backwards");
    QTest::newRow("not-closed") << "a\nn[1-3" << refused("TEXT:2:2: \"[\" is not closed");
    QTest::newRow("second-not-closed") << "n[1-3]m[1" << refused("TEXT:1:8: \"[\" is not closed");
    QTest::newRow("no-end") << "n[1-]" << refused("TEXT:1:3: \"1-\" is no range of numbers");
    QTest::newRow("no-start") << "n[-3]" << refused("TEXT:1:3: \"-3\" is no range of numbers");
    QTest::newRow("empty-part") << "n[1,,3]" << refused("TEXT:1:5: \"\" is no range of numbers");
    QTest::newRow("step-zero") << "n[1-9/0]" << refused("TEXT:1:3: \"1-9/0\" is no range of numbers");
    QTest::newRow("step-of-a-number") << "n[1/2]" << refused("TEXT:1:3: \"1/2\" is no range of numbers");
    QTest::newRow("number-too-long") << "n[1-123456789012345678]"
                                     << refused("TEXT:1:3: \"1-123456789012345678\" is no range of numbers");
    QTest::newRow("too-many") << "n[1-99999999999]" << refused("TEXT:1:1: more than 1000000 names");
    QTest::newRow("one-too-many") << "a n[1-1000001]" << refused("TEXT:1:3: more than 1000000 names");
    QTest::newRow("one-too-many-by-steps")
        << "a n[1-2000001/2]" << refused("TEXT:1:3: more than 1000000 names");
    QTest::newRow("one-too-many-by-a-list")
        << "n[1-600000,1-400001]" << refused("TEXT:1:1: more than 1000000 names");
    QTest::newRow("one-too-many-of-two-words")
        << "n[1-600000] m[1-400001]" << refused("TEXT:1:13: more than 1000000 names");
    QTest::newRow("too-long-altogether")
        << QString(100, QLatin1Char('n')) + "[1-999999]"
        << refused("TEXT:1:1: names of more than 32000000 characters altogether");
    // Each line is 10,000 hosts.
    QString ranges;
    for (int i = 100; i < 201; ++i)
        ranges += QStringLiteral("n%1x0 - n%1x9999\n").arg(i);
    QTest::newRow("too-many-by-ranges") << ranges << refused("TEXT:101:1: more than 1000000 names");
    QTest::newRow("control-character")
        << QString("ok\n a\x01")
        << refused("TEXT:2:3: the control character U+0001 cannot stand in hosts text");
    QTest::newRow("control-character-in-brackets")
        << QString("n[1\x1b]")
        << refused("TEXT:1:4: the control character U+001B cannot stand in hosts text");
    QTest::newRow("control-character-of-eight-bits")
        << QString("n") + QChar(0x9b) + "1"
        << refused("TEXT:1:2: the control character U+009B cannot stand in hosts text");
    QTest::newRow("too-many-together")
        << "a b[0-9999]c[0-9999]" << refused("TEXT:1:3: more than 1000000 names");
    // Their product is beyond 64 bits.
    QTest::newRow("too-many-for-any-number")
        << "a[1-524288]b[1-35184372088832]" << refused("TEXT:1:1: more than 1000000 names");
    QTest::newRow("too-many-for-any-number-of-many-brackets")
        << "a" + QString("[1-99999999999999999]").repeated(100)
        << refused("TEXT:1:1: more than 1000000 names");
    QTest::newRow("not-quite-a-range") << "n[1-3x] m" << refused(noOptions("2", "[1-3x]"));
    QTest::newRow("letters-in-brackets") << "n[a-b]" << refused(noOptions("2", "[a-b]"));
    QTest::newRow("word-among-options") << "n[rt=0 x]" << refused(noOptions("2", "[rt=0 x]"));
    QTest::newRow("blanks-around-an-equals-sign") << "n[rt = 0]" << refused(noOptions("2", "[rt = 0]"));
    QTest::newRow("value-without-option") << "n[=0]" << refused(noOptions("2", "[=0]"));
    QTest::newRow("empty-brackets") << "a n[]" << refused("TEXT:1:4: \"[]\" is empty");
    QTest::newRow("blank-brackets") << "n[1][ , ]" << refused("TEXT:1:5: \"[ , ]\" is empty");
    QTest::newRow("text-behind-options")
        << "n[rt=0]x" << refused("TEXT:1:8: text behind the options of a host; options come last");
    QTest::newRow("text-behind-options-of-many")
        << "n[1-2][rt=0]x" << refused("TEXT:1:13: text behind the options of a host; options come last");
    QTest::newRow("options-behind-options")
        << "n[a=1] [rt=0]" << refused("TEXT:1:8: text behind the options of a host; options come last");
    QTest::newRow("range-behind-options")
        << "n[rt=0][1-2]" << refused("TEXT:1:8: text behind the options of a host; options come last");
    QTest::newRow("bracket-never-opened") << "n1-3]" << refused("TEXT:1:5: \"]\" closes nothing");
    QTest::newRow("bracket-closed-twice") << "n[1-3]]" << refused("TEXT:1:7: \"]\" closes nothing");
    QTest::newRow("brace-not-closed") << "a\n{ b { c }" << refused("TEXT:2:1: \"{\" is not closed");
    QTest::newRow("brace-never-opened") << "a } b" << refused("TEXT:1:3: \"}\" closes nothing");
    QTest::newRow("brace-closed-twice") << "{ a } }" << refused("TEXT:1:7: \"}\" closes nothing");
    QTest::newRow("parenthesis-closed-by-a-brace")
        << "( a }" << refused("TEXT:1:5: \"}\" does not close \"(\"");
    QTest::newRow("network-without-gateway")
        << "{ { a } }" << refused("TEXT:1:3: \"{\" follows no host that could forward to the network");
    QTest::newRow("range-without-numbers")
        << "a - d"
        << refused("TEXT:1:5: \"a - d\" is no range: both names must be text with a number at its end");
    QTest::newRow("range-to-a-name-without-number")
        << "n1 - n"
        << refused("TEXT:1:6: \"n1 - n\" is no range: both names must be text with a number at its end");
    QTest::newRow("range-of-numbers-alone")
        << "1 - 4"
        << refused("TEXT:1:5: \"1 - 4\" is no range: both names must be text with a number at its end; "
                   "write \"[1-4]\"");
    QTest::newRow("range-of-domain-names") << "n1.example.org - n10.example.org"
                                           << refused("TEXT:1:18: \"n1.example.org - n10.example.org\" is no "
                                                      "range: both names must be text with a number "
                                                      "at its end; write \"n[1-10].example.org\"");
    QTest::newRow("range-of-domain-names-backwards")
        << "n4.org - n1.org"
        << refused("TEXT:1:10: \"n4.org - n1.org\" is no range: both names must be text with a number at its "
                   "end");
    QTest::newRow("range-of-long-numbers")
        << "n3000000001 - n3000000003"
        << refused("TEXT:1:15: \"n3000000001 - n3000000003\" is no range: the numbers are too long; write "
                   "\"n[3000000001-3000000003]\"");
    QTest::newRow("group") << "a @gpu"
                           << refused("TEXT:1:3: groups of hosts (\"@gpu\") are not supported; "
                                      "write their hosts");
    QTest::newRow("group-behind-a-gateway")
        << "gw[rt=0,forwards=a @gpu]"
        << refused("TEXT:1:20: groups of hosts (\"@gpu\") are not supported; write their hosts");
    for (const char* name : {"!", "^", "&"})
        QTest::newRow((QByteArray("operator") + name).constData())
            << QString("n[1-5]%1n[2-3]").arg(name)
            << refused("TEXT:1:7: the operator \"" + QByteArray(name) +
                       "\" is not supported; write the hosts that are left");
    QTest::newRow("xml")
        << "\n <?xml version='1.0'?><cluster/>"
        << refused("TEXT:2:2: this is XML, not hosts text; 'zohpc nodes FILE' writes the hosts of a "
                   "configuration");
    QTest::newRow("xml-without-declaration") << "<cluster version='1'/>"
                                             << refused("TEXT:1:1: this is XML, not hosts text; 'zohpc nodes "
                                                        "FILE' writes the hosts of a configuration");
    QTest::newRow("range-without-a-start")
        << " - n5" << told("n5", "TEXT:1:2: \"-\" fills nothing: it does not stand between two hosts");
    QTest::newRow("range-without-an-end")
        << "n1 -" << told("n1", "TEXT:1:4: \"-\" fills nothing: it does not stand between two hosts");
    QTest::newRow("range-not-over-braces")
        << "{ n1 - } n5"
        << told("n1 n5", "TEXT:1:6: \"-\" fills nothing: it does not stand between two hosts");
    QTest::newRow("character-dropped")
        << "ok node_1" << told("ok node1", "TEXT:1:4: \"node_1\" reads as \"node1\"; --names keeps it");
    QTest::newRow("range-too-long")
        << "b a1 - a10002"
        << told("b a1 a10002",
                "TEXT:1:8: \"a1 - a10002\" fills nothing: the names are more than 10000 apart");
    QTest::newRow("range-backwards") << "n1 n10 -\n n1"
                                     << told("n1 n10 n1",
                                             "TEXT:2:2: \"n10 - n1\" fills nothing: it runs backwards");
    QTest::newRow("range-of-two-texts")
        << "n1 - m5, m6 - n9"
        << told("n1 m5 m6 n9", "TEXT:1:6: \"n1 - m5\" fills nothing: the names differ before their number\n"
                               "TEXT:1:15: \"m6 - n9\" fills nothing: the names differ before their number");
    QTest::newRow("range-after-a-bracket")
        << "n[5-6] - n1" << told("n5 n6 n1", "TEXT:1:10: \"n6 - n1\" fills nothing: it runs backwards");
    // The text has no "m1" there: it came out of a bracket.
    QTest::newRow("range-to-a-bracket")
        << "m1x n5 - m[1-2] m1"
        << told("m1x n5 m1 m2 m1", "TEXT:1:10: \"n5 - m1\" fills nothing: the names "
                                   "differ before their number");
    QTest::newRow("range-behind-a-moved-network")
        << "gw[forwards=a b,rt=0] n5 - m1"
        << told("gw a b n5 m1", "TEXT:1:28: \"n5 - m1\" fills nothing: the names differ before their number");
    QTest::newRow("range-in-a-moved-network")
        << "gw[rt=0,forwards=n5 - m1] c"
        << told("gw n5 m1 c", "TEXT:1:23: \"n5 - m1\" fills nothing: the names differ before their number");
    QTest::newRow("nothing-left") << "ok @" << told("ok", "TEXT:1:4: \"@\" is no host name and is left out");
    QTest::newRow("not-ascii") << QString::fromUtf8("n\xc3\xb8"
                                                    "d1 \xf0\x9f\x98\x80 a_b")
                               << told("nd1 ab",
                                       "TEXT:1:1: \"n\xc3\xb8"
                                       "d1\" reads as \"nd1\"; --names keeps it\n"
                                       "TEXT:1:6: \"\xf0\x9f\x98\x80\" is no host name and is left out\n"
                                       "TEXT:1:8: \"a_b\" reads as \"ab\"; --names keeps it");
}

void tst_zohpcHosts::badInputIsTold()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, whole);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "expand", text});

    QCOMPARE(run.whole(), whole);
}

void tst_zohpcHosts::placesLeadToTheirSource()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("hosts.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a1 a2\n  b_1\n");
    file.close();

    const zoCommandRun run =
        zoCommandRun::zohpc({"hosts", "expand", "-f", file.fileName(), "c_1", "-"}, "x\ny\nd_1");
    const zoCommandRun missing = zoCommandRun::zohpc({"hosts", "expand", "-f", folder.filePath("none")});

    QCOMPARE(run.output, lines("a1 a2 b1 c1 x y d1"));
    QCOMPARE(run.errors, file.fileName().toUtf8() + ":2:3: \"b_1\" reads as \"b1\"; --names keeps it\n" +
                             "TEXT:1:1: \"c_1\" reads as \"c1\"; --names keeps it\n" +
                             "-:3:1: \"d_1\" reads as \"d1\"; --names keeps it\n");
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(missing.whole(), "--- errors\n" + folder.filePath("none").toUtf8() +
                                  ": No such file or directory\n--- exit code 2\n");
}

void tst_zohpcHosts::namesFoldToHostsText_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("output");

    QTest::newRow("empty") << QStringList{""} << QByteArray();
    QTest::newRow("single-network-without-braces")
        << QStringList{"n01 - n05 x"} << QByteArray("n01 - n05\nx\n");
    QTest::newRow("two-are-no-run") << QStringList{"n1 n2"} << QByteArray("n1\nn2\n");
    QTest::newRow("shuffled-and-twice") << QStringList{"n3", "n1", "n2", "n1"} << QByteArray("n1 - n3\n");
    QTest::newRow("order-kept") << QStringList{"--keep-order", "n3", "n1", "n2", "n3", "n1"}
                                << QByteArray("n3\nn1 - n3\nn1\n");
    QTest::newRow("width-grows") << QStringList{"n8 n9 n10"} << QByteArray("n8 - n10\n");
    QTest::newRow("padded-and-not") << QStringList{"n08 n09 n10 n8 n9"} << QByteArray("n8\nn9\nn08 - n10\n");
    QTest::newRow("natural-order") << QStringList{"n10 n9 n1-ib n2-ib a"}
                                   << QByteArray("a\nn9\nn10\nn1-ib\nn2-ib\n");
    QTest::newRow("only-the-last-number-counts")
        << QStringList{"r[1-2]n[1-3]"} << QByteArray("r1n1 - r1n3\nr2n1 - r2n3\n");
    QTest::newRow("numbers-alone-stay") << QStringList{"1 2 3 4"} << QByteArray("1\n2\n3\n4\n");
    QTest::newRow("longest-range") << QStringList{"n[1-10003]"}
                                   << QByteArray("n1 - n10001\nn10002\nn10003\n");
    QTest::newRow("numbers-past-31-bits-stay")
        << QStringList{"n[3000000001-3000000003]"} << QByteArray("n3000000001\nn3000000002\nn3000000003\n");
    QTest::newRow("two-networks") << QStringList{"{ b1 b2 b3 } { a }"}
                                  << QByteArray("{\n  b1 - b3\n}\n{\n  a\n}\n");
    QTest::newRow("gateway-joins-no-range") << QStringList{"n1 n2 n3 { x2 x1 x3 } n4 n5 n6"}
                                            << QByteArray("n1\nn2\nn3\n{\n  x1 - x3\n}\nn4 - n6\n");
    QTest::newRow("gateways-of-one-name-stay")
        << QStringList{"{ gw { b } } { gw { c } gw2 }"}
        << QByteArray("{\n  gw\n  {\n    b\n  }\n}\n{\n  gw\n  {\n    c\n  }\n  gw2\n}\n");
    QTest::newRow("names-as-they-stand")
        << QStringList{"--names", "a_2 a_1 a_3"} << QByteArray("a_1 - a_3\n");
}

void tst_zohpcHosts::namesFoldToHostsText()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, output);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"hosts", "fold"} + arguments);

    QCOMPARE(run.whole(), fine(output));
}

void tst_zohpcHosts::namesFoldToBrackets_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("output");

    QTest::newRow("empty") << QStringList{""} << QByteArray();
    QTest::newRow("padding-kept") << QStringList{"gpu01 - gpu16", "gpu20"} << QByteArray("gpu[01-16,20]\n");
    QTest::newRow("single-needs-none") << QStringList{"n07"} << QByteArray("n07\n");
    QTest::newRow("mixed-padding") << QStringList{"n9 n10 n08 n1 n01"} << QByteArray("n[1,9,01,08,10]\n");
    QTest::newRow("padded-range-never-grows") << QStringList{"n[01-102]"} << QByteArray("n[01-99,100-102]\n");
    QTest::newRow("several-in-one-name")
        << QStringList{"rack[1-2]node[01-16]"} << QByteArray("rack[1-2]node[01-16]\n");
    QTest::newRow("no-full-grid") << QStringList{"x1y1 x1y2 x2y1 x3y1 x3y2 x2y3 x1y3"}
                                  << QByteArray("x1y[1-3],x2y[1,3],x3y[1-2]\n");
    QTest::newRow("suffix") << QStringList{"n2-ib n1-ib n"} << QByteArray("n,n[1-2]-ib\n");
    QTest::newRow("steps") << QStringList{"--steps", "n1 n3 n5 n6 n7 n9 n11 n20 n30"}
                           << QByteArray("n[1-5/2,6-7,9,11,20,30]\n");
    QTest::newRow("steps-padded") << QStringList{"--steps", "n01 n03 n05 n1 n2"}
                                  << QByteArray("n[1-2,01-05/2]\n");
    QTest::newRow("no-steps-unasked") << QStringList{"n1 n3 n5"} << QByteArray("n[1,3,5]\n");
    QTest::newRow("order-kept") << QStringList{"--keep-order", "n10 n9 n01 n02 m n1 n2 n10 n10"}
                                << QByteArray("n[10,9,01-02],m,n[1-2,10,10]\n");
    QTest::newRow("long-numbers-are-text") << QStringList{"n123456789012345678901 n123456789012345678902"}
                                           << QByteArray("n123456789012345678901,n123456789012345678902\n");
    QTest::newRow("networks-are-flat") << QStringList{"{ a1 } { gw { a2 } }"} << QByteArray("a[1-2],gw\n");
}

void tst_zohpcHosts::namesFoldToBrackets()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, output);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"hosts", "fold", "-b"} + arguments);

    QCOMPARE(run.whole(), fine(output));
}

void tst_zohpcHosts::foldedTextExpandsToTheSameNames_data()
{
    QTest::addColumn<QByteArray>("names");

    QTest::newRow("edges") << lines(
        "n0 n00 n1 n01 n9 n09 n10 n010 n99 n099 n100 n0100 1 2 3 03 a-1 a-2 a-3 b.1 b.2");
    QTest::newRow("long-zeros") << lines(
        "n00000000000000001 n00000000000000002 n00000000000000003 n2147483646 "
        "n2147483647 n2147483648 n2147483649");
    QByteArray grid;
    QByteArray random;
    quint32 state = 12345;
    for (int i = 0; i < 3000; ++i) {
        state = state * 1664525 + 1013904223;
        const int n = int(state >> 20);
        grid += "r" + QByteArray::number(n % 13) + "n" + QByteArray::number(n % 17).rightJustified(2, '0') +
                "-" + QByteArray::number(n % 5) + "\n";
        random += "node" + QByteArray::number(n).rightJustified(n % 3 + 2, '0') + "\n";
    }
    QTest::newRow("grid-of-three-numbers") << grid;
    QTest::newRow("random-with-any-padding") << random;
}

void tst_zohpcHosts::foldedTextExpandsToTheSameNames()
{
    QFETCH(QByteArray, names);
    const QByteArray sorted = zoCommandRun::zohpc({"hosts", "expand", "--sort"}, names).output;
    QList<QByteArray> expected = names.trimmed().split('\n');
    std::sort(expected.begin(), expected.end());
    expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
    QList<QByteArray> got = sorted.trimmed().split('\n');
    std::sort(got.begin(), got.end());
    QCOMPARE(got, expected);

    const QList<QStringList> ways{{}, {"-b"}, {"-b", "--steps"}};
    for (const QStringList& way : ways) {
        const zoCommandRun folded = zoCommandRun::zohpc(QStringList{"hosts", "fold"} + way, names);
        const zoCommandRun expanded = zoCommandRun::zohpc({"hosts", "expand", "--sort"}, folded.output);

        QCOMPARE(folded.exitCode, 0);
        QCOMPARE(expanded.whole(), fine(sorted));
    }
    for (const QStringList& way : {QStringList{"--keep-order"}, QStringList{"--keep-order", "-b"}}) {
        const zoCommandRun folded = zoCommandRun::zohpc(QStringList{"hosts", "fold"} + way, names);
        const zoCommandRun expanded = zoCommandRun::zohpc({"hosts", "expand"}, folded.output);

        QCOMPARE(expanded.whole(), fine(names));
    }
}

void tst_zohpcHosts::treeShowsNetworksAndGateways_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("output");

    QTest::newRow("empty") << "" << QByteArray();
    QTest::newRow("one-network") << "n1 - n4, x" << QByteArray("network 1: 5 hosts\n  n1 - n4\n  x\n");
    QTest::newRow("one-host") << "x" << QByteArray("network 1: 1 host\n  x\n");
    QTest::newRow("gateway-that-does-not-render")
        << "gpu01 - gpu04, viz1[rt=0] { ib01 ib02 } { wall1 - wall3 }"
        << QByteArray("network 1: 5 hosts\n  gpu01 - gpu04\n  viz1, gateway, does not render\n    network 2: "
                      "2 hosts\n"
                      "      ib01\n      ib02\n    network 3: 3 hosts\n      wall1 - wall3\n");
    QTest::newRow("two-networks") << "{ a } { b }"
                                  << QByteArray("network 1: 1 host\n  a\nnetwork 2: 1 host\n  b\n");
    QTest::newRow("hosts-after-a-closed-network-open-one")
        << "{ a b } c d" << QByteArray("network 1: 2 hosts\n  a\n  b\nnetwork 2: 2 hosts\n  c\n  d\n");
    QTest::newRow("render-option-parts-a-range")
        << "n1 n2 n3[rt=FALSE] n4[RT=0] n5[rt=0]"
        << QByteArray("network 1: 5 hosts\n  n1\n  n2\n  n3 - n5, does not render\n");
    QTest::newRow("range-takes-the-option")
        << "n1 - n4[rt=0]" << QByteArray("network 1: 4 hosts\n  n1\n  n2 - n4, does not render\n");
    QTest::newRow("options-of-many-over-a-blank")
        << "n[1-3] [rt=0] b" << QByteArray("network 1: 4 hosts\n  n1 - n3, does not render\n  b\n");
    QTest::newRow("empty-network") << "{ } { a }"
                                   << QByteArray("network 1: 0 hosts\nnetwork 2: 1 host\n  a\n");
}

void tst_zohpcHosts::treeShowsNetworksAndGateways()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, output);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "tree", text});

    QCOMPARE(run.whole(), fine(output));
}

void tst_zohpcHosts::jsonIsJson_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("json");

    QTest::newRow("expand") << QStringList{"expand", "n1 - n3"} << QByteArray(R"(["n1","n2","n3"])");
    QTest::newRow("expand-nothing") << QStringList{"expand", ""} << QByteArray("[]");
    QTest::newRow("expand-quotes") << QStringList{"expand", "--names", "a\"b\\c"}
                                   << QByteArray(R"(["a\"b\\c"])");
    QTest::newRow("fold") << QStringList{"fold", "n1 - n3 x"}
                          << QByteArray(R"({"hosts":4,"text":"n1 - n3\nx"})");
    QTest::newRow("fold-brackets") << QStringList{"fold", "-b", "n1 - n3"}
                                   << QByteArray(R"({"hosts":3,"text":"n[1-3]"})");
    QTest::newRow("tree-empty") << QStringList{"tree", ""} << QByteArray(R"({"networks":[]})");
    QTest::newRow("tree")
        << QStringList{"tree", "{ a { b[rt=0] } { c } } { }"}
        << QByteArray(
               R"({"networks":[{"index":1,"hosts":[{"name":"a","render":true,"networks":[)"
               R"({"index":2,"hosts":[{"name":"b","render":false,"networks":[]}]},)"
               R"({"index":3,"hosts":[{"name":"c","render":true,"networks":[]}]}]}]},{"index":4,"hosts":[]}]})");
}

void tst_zohpcHosts::jsonIsJson()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, json);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"hosts"} + arguments + QStringList{"--json"});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(run.output, &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(document, QJsonDocument::fromJson(json));
    QVERIFY(run.output.endsWith("}\n") || run.output.endsWith("]\n"));
}

void tst_zohpcHosts::inputComesFromEverywhere()
{
    const QByteArray expected = fine(lines("n1 n2"));

    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand"}, "n1\nn2\n").whole(), expected);
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "-"}, "n1\nn2\n").whole(), expected);
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "-f", "-"}, "n1\nn2\n").whole(), expected);
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "n1", "-"}, "n2\n").whole(), expected);
    // Braces may reach over arguments.
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "{", "n1 n2", "}"}).whole(), expected);
}

// What follows it is no less a host.
void tst_zohpcHosts::nulIsRefused()
{
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand"}, QByteArray("n1\n\0n2", 6)).whole(),
             QByteArray("--- errors\n-:2:1: the control character U+0000 cannot stand in hosts text\n"
                        "--- exit code 2\n"));
}

// They would be names with U+FFFD in them, whatever they are called.
void tst_zohpcHosts::bytesThatAreNoTextAreRefused()
{
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "--names"}, "a\nn\xf8"
                                                                 "d1")
                 .whole(),
             QByteArray("--- errors\n-:2:2: invalid UTF-8\n--- exit code 2\n"));
}

// Of names as they stand nobody counts but the reader of brackets.
void tst_zohpcHosts::bracketsOfAllNamesHaveOneLimit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("refusal"); // empty for none

    QTest::newRow("as-many-as-may-be") << "n[1-600000] m[1-400000]" << QByteArray();
    QTest::newRow("one-too-many") << "n[1-600000] m[1-400001]"
                                  << QByteArray("TEXT:1:13: more than 1000000 names\n");
    const QString longName(100, QLatin1Char('n'));
    QTest::newRow("as-long-as-may-be") << longName + "[1-150000] " + longName + "[1-140000]" << QByteArray();
    QTest::newRow("too-long-together")
        << longName + "[1-150000] " + longName + "[1-150000]"
        << QByteArray("TEXT:1:112: names of more than 32000000 characters altogether\n");
}

void tst_zohpcHosts::bracketsOfAllNamesHaveOneLimit()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, refusal);

    const zoCommandRun run = zoCommandRun::zohpc({"hosts", "fold", "-b", "--names", text});

    QCOMPARE(run.errors, refusal);
    QCOMPARE(run.exitCode, refusal.isEmpty() ? 0 : 2);
}

// Everything but brackets may be part of a name; a bracket of no numbers would expand to itself.
void tst_zohpcHosts::namesHaveBracketsOfNumbersOnly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("whole");

    QTest::newRow("signs") << "@gpu,a!b,{,}" << fine(lines("@gpu a!b { }"));
    QTest::newRow("letters")
        << "n_[a-b]"
        << QByteArray("--- errors\nTEXT:1:3: \"[a-b]\" is no range of numbers\n--- exit code 2\n");
    QTest::newRow("empty") << "n_[]"
                           << QByteArray("--- errors\nTEXT:1:3: \"[]\" is empty\n--- exit code 2\n");
    QTest::newRow("open") << "n_[1"
                          << QByteArray("--- errors\nTEXT:1:3: \"[\" is not closed\n--- exit code 2\n");
}

void tst_zohpcHosts::namesHaveBracketsOfNumbersOnly()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, whole);

    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "--names", text}).whole(), whole);
}

void tst_zohpcHosts::separatorStandsBetweenNames()
{
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "-s", ", ", "n[1-3]"}).whole(), fine("n1, n2, n3\n"));
}

void tst_zohpcHosts::sortWritesEachNameOnce()
{
    QCOMPARE(zoCommandRun::zohpc({"hosts", "expand", "--sort", "n10 n9 m n01 n9"}).whole(),
             fine(lines("m n9 n01 n10")));
}

void tst_zohpcHosts::deepBracesAreReadAndTooDeepOnesRefused()
{
    const auto nested = [](int depth, const QByteArray& hosts) {
        return QByteArray("a {").repeated(depth) + hosts + QByteArray("}").repeated(depth);
    };

    // No deeper than the window reads them; the tool alone once read 10,000.
    const zoCommandRun deep = zoCommandRun::zohpc({"hosts", "expand"}, nested(5118, "a"));
    const zoCommandRun tree = zoCommandRun::zohpc({"hosts", "tree", "--json"}, nested(5000, {}));
    const zoCommandRun tooDeep = zoCommandRun::zohpc({"hosts", "expand"}, nested(5119, {}));
    // Blanks alone would be gigabytes.
    const zoCommandRun manyDeep =
        zoCommandRun::zohpc({"hosts", "tree"}, nested(5000, QByteArray("a ").repeated(100000)));

    QCOMPARE(deep.whole(), fine(QByteArray("a\n").repeated(5119)));
    QCOMPARE(tree.exitCode, 0);
    QCOMPARE(tree.output.count("\"index\""), 5001);
    QCOMPARE(tooDeep.whole(),
             QByteArray("--- errors\n-:1:15357: braces are more than 5119 deep\n--- exit code 2\n"));
    QCOMPARE(manyDeep.output, QByteArray());
    QVERIFY(manyDeep.errors.endsWith(": braces are more than 5119 deep\n"));
}

void tst_zohpcHosts::asManyNamesAsAClusterMayHaveAreWritten()
{
    const zoCommandRun brackets = zoCommandRun::zohpc({"hosts", "fold", "-b", "n[1-1000000]"});
    const zoCommandRun steps = zoCommandRun::zohpc({"hosts", "fold", "-b", "--steps", "n[1-1999999/2]"});

    QCOMPARE(brackets.whole(), fine("n[1-1000000]\n"));
    QCOMPARE(steps.whole(), fine("n[1-1999999/2]\n"));
}

// U+0001 stands for a number while names are folded: such a name once took the numbers of others, or what lay
// behind them in memory.
void tst_zohpcHosts::controlCharacterIsNoNumber()
{
    for (const QStringList& command : QList<QStringList>{
             {"fold", "-b", "--names"}, {"fold", "--names"}, {"expand", "--sort", "--names"}, {"tree"}}) {
        const zoCommandRun run =
            zoCommandRun::zohpc(QStringList("hosts") + command, QByteArray("n1 n2 n\x01 n\x01-\x01"));

        QCOMPARE(run.whole(),
                 QByteArray("--- errors\n-:1:8: the control character U+0001 cannot stand in hosts "
                            "text\n--- exit code 2\n"));
    }
}

void tst_zohpcHosts::namesOfManyNumbersFold()
{
    const QString many = QString("a1").repeated(17);
    const QString few = QString("a1").repeated(16);

    const zoCommandRun run = zoCommandRun::zohpc(
        {"hosts", "fold", "-b", "--names", many + "x", many + "y", many + "x", few + "b", few + "c"});

    QCOMPARE(run.whole(), fine((few + "b," + few + "c," + many + "x," + many + "y\n").toUtf8()));
}

void tst_zohpcHosts::sameBytesInEveryProcess()
{
    const QStringList arguments{"hosts", "fold", "-b",
                                "a1 b2 c3 d4 e5 f6 g7 h8 i9 r[1-3]n[1-4] x[1-2]y[2-5]z"};
    const QByteArray first = zoCommandRun::zohpcIn({"QT_HASH_SEED=0"}, arguments).output;

    QCOMPARE(first, QByteArray("a1,b2,c3,d4,e5,f6,g7,h8,i9,r[1-3]n[1-4],x[1-2]y[2-5]z\n"));
    // The library warns of other seeds.
    QCOMPARE(zoCommandRun::zohpcIn({"QT_HASH_SEED=1"}, arguments).output, first);
    QCOMPARE(zoCommandRun::zohpcIn({"QT_HASH_SEED=42"}, arguments).output, first);
}

ZO_TEST_MAIN(tst_zohpcHosts)
#include "tst_zohpcHosts.moc"
