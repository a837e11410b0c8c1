#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// What people mistype who edit a configuration by hand: each mistake in a sample is told at its line and column, and
// nothing else is.
class tst_zohpcCheckMistakes final : public zoTestCase
{
    Q_OBJECT

private slots:
    void mistakeIsToldAtItsPlaceAlone_data();
    void mistakeIsToldAtItsPlaceAlone();
    void elementMisspeltInBothTagsIsToldOnce();
    void severalMistakesAreToldInTheirOrder();
    void consequencesOfAMisplacedElementAreNotTold();
    void malformedTextIsRefusedWithItsPlace_data();
    void malformedTextIsRefusedWithItsPlace();
    void rightTextsAreRight_data();
    void rightTextsAreRight();

private:
    static QString sample(const QString& name);

    zoCliFiles m_files;
};

QString tst_zohpcCheckMistakes::sample(const QString& name)
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/%1.zhpc").arg(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void tst_zohpcCheckMistakes::mistakeIsToldAtItsPlaceAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("right"); // the first one in the sample
    QTest::addColumn<QString>("wrong");
    QTest::addColumn<int>("at"); // of the place in `wrong`
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("suggestion");

    const QString wall = QStringLiteral("powerwall-2x2");
    const QString cave = QStringLiteral("cave-4-sided");
    const QString tiles = QStringLiteral("tiledwall-3x5-gateway");
    const QString plain = QStringLiteral("default");
    const auto row = [](const char* tag, const QString& name, const char* right, const char* wrong, int at,
                        const char* code, const char* suggestion) {
        QTest::newRow(tag) << name << QString::fromUtf8(right) << QString::fromUtf8(wrong) << at
                           << QString::fromLatin1(code) << QString::fromUtf8(suggestion);
    };
    const char* const attribute = "unknown-attribute";
    const char* const number = "unread-number";
    row("eyeseperation", wall, "eyeseparation=", "eyeseperation=", 0, attribute, "\"eyeseparation\"?");
    row("hardwarsync", cave, "hardwaresync=", "hardwarsync=", 0, attribute, "\"hardwaresync\"?");
    row("heigth", wall, "height=\"2160\"", "heigth=\"2160\"", 0, attribute, "\"height\"?");
    row("widht-of-a-window", wall, "width=\"1920\"", "widht=\"1920\"", 0, attribute, "\"width\"?");
    row("colums", tiles, "columns=\"5\" overlapx", "colums=\"5\" overlapx", 0, attribute, "\"columns\"?");
    row("row-for-rows", tiles, "rows=\"3\" columns=\"5\" overlapx", "row=\"3\" columns=\"5\" overlapx", 0,
        attribute, "\"rows\"?");
    row("Name-in-upper-case", wall, "node name=", "node Name=", 5, attribute, "\"name\"?");
    row("projeciton", tiles, "viewport projection=", "viewport projeciton=", 9, attribute, "\"projection\"?");
    row("full-screen", wall, "fullscreen=", "full-screen=", 0, attribute, "\"fullscreen\"?");
    row("width-of-a-cave", cave, "cavewidth=", "cavewidht=", 0, attribute, "\"cavewidth\"?");
    row("speed-of-a-node", plain, "node name=\"localhost\"", "node speed=\"10g\" name=\"localhost\"", 5,
        attribute, "\"network\" has it");
    row("windw", plain, "<display", "<dispaly", 0, "unknown-element", "\"display\"?");
    row("nod", wall, "<node", "<nod", 0, "unknown-element", "\"node\"?");
    row("viewprt", cave, "<viewport", "<viewprt", 0, "unknown-element", "\"viewport\"?");
    row("lefft", cave, "eye=\"left\"", "eye=\"lefft\"", 5, "unknown-value", "\"left\"?");
    row("Mono", wall, "eye=\"mono\"", "eye=\"Mono\"", 5, "unknown-value", "\"mono\"?");
    row("fil", wall, "position=\"fill\"", "position=\"fil\"", 10, "unknown-value", "\"fill\"?");
    row("power-wall", wall, "type=\"powerwall\"", "type=\"power wall\"", 6, "unknown-value",
        "\"powerwall\"?");
    row("yes", wall, "fullscreen=\"true\"", "fullscreen=\"yes\"", 12, "unknown-value", "\"true\"?");
    row("flase", cave, "back=\"false\"", "back=\"flase\"", 6, "unknown-value", "\"false\"?");
    row("no-of-a-node", tiles, "rendernode=\"false\"", "rendernode=\"no\"", 12, "unknown-value",
        "\"false\"?");
    row("10G", wall, "speed=\"10g\"", "speed=\"10G\"", 7, "unknown-option-value", "\"10g\"?");
    row("bset", plain, "scenecompression=\"best\"", "scenecompression=\"bset\"", 18, "unknown-option-value",
        "\"best\"?");
    row("comma", wall, "eyeseparation=\"65\"", "eyeseparation=\"65,5\"", 15, number, "\"65.5\"?");
    row("unit", wall, "distance=\"2500\"", "distance=\"2500mm\"", 10, number, "\"2500\"?");
    row("blank-of-other-kind", wall, "distance=\"2500\"", "distance=\"\u00a02500\"", 10, number, "\"2500\"?");
    row("letter-O", wall, "width=\"1920\"", "width=\"192O\"", 7, number, "\"1920\"?");
    row("point-in-pixels", cave, "height=\"1920\"", "height=\"1920.0\"", 8, number, "\"1920\"?");
    row("number-in-words", tiles, "rows=\"3\" columns=\"5\" overlapx",
        "rows=\"three\" columns=\"5\" overlapx", 6, number, "no whole number");
    row("empty-number", wall, "distance=\"2500\"", "distance=\"\"", 10, number, "no number");
    row("port", tiles, "serviceport=\"8890\"", "serviceport=\"88900\"", 13, "number-out-of-range", "65535");
    row("reference-beyond", tiles, "projection=\"Wall row:3 col:5\"", "projection=\"Wall row:3 col:6\"", 12,
        "unknown-projection", "up to row:3 col:5");
    row("reference-misspelt", cave, "viewport projection=\"Cave Left\"", "viewport projection=\"Cave Lfet\"",
        21, "unknown-projection", "\"Cave Left\"?");
    row("reference-to-another-wall", wall, "projection=\"Wall row:2 col:1\"",
        "projection=\"Wal row:2 col:1\"", 12, "unknown-projection", "\"Wall row:2 col:1\"?");
    row("node-misspelt", wall, "window node=\"wall-r2-c1\"", "window node=\"wall-r2-cl\"", 13,
        "window-with-unknown-node", "");
    row("twice", wall, "x=\"0\" y=\"0\"", "x=\"0\" x=\"0\"", 6, "repeated-attribute", "last one");
    row("later-version", wall, "version=\"1\"", "version=\"11\"", 9, "later-version", "version 11");
    row("version-in-words", plain, "version=\"1\"", "version=\"one\"", 9, number, "");
    row("bracket-too-many", wall, "<node name=\"wall-r1-c2\"/>", "<node name=\"wall-r1-c2\"/>>", 25,
        "stray-text", "\">\"");
    row("no-name", plain, "<node name=\"localhost\"/>", "<node/>", 0, "missing-attribute", "\"name\"");
    row("hosts-file", plain, "<master ", "<master nodesfile=\"/no/such/hosts.txt\" ", 19,
        "missing-hosts-file", "/no/such/hosts.txt");
}

void tst_zohpcCheckMistakes::mistakeIsToldAtItsPlaceAlone()
{
    QFETCH(QString, name);
    QFETCH(QString, right);
    QFETCH(QString, wrong);
    QFETCH(int, at);
    QFETCH(QString, code);
    QFETCH(QString, suggestion);
    QString text = sample(name);
    const int place = text.indexOf(right);
    QVERIFY(place >= 0);
    text.replace(place, right.size(), wrong);
    const QString before = text.left(place + at);

    const zoCommandRun run = zoCommandRun::zohpc({"check", "--json", "-"}, text.toUtf8());

    QCOMPARE(run.errors, QByteArray());
    const QJsonArray problems = QJsonDocument::fromJson(run.output).array();
    QVERIFY2(problems.size() == 1, run.output.constData());
    const QJsonObject problem = problems.first().toObject();
    QCOMPARE(problem.value("code").toString(), code);
    QCOMPARE(problem.value("line").toInt(), before.count('\n') + 1);
    QCOMPARE(problem.value("column").toInt(), place + at - before.lastIndexOf('\n'));
    QVERIFY2(problem.value("text").toString().contains(suggestion), run.output.constData());
    QCOMPARE(run.exitCode, 1);
}

void tst_zohpcCheckMistakes::elementMisspeltInBothTagsIsToldOnce()
{
    for (const char* tag : {"master", "network", "window", "display"}) {
        const QString right = QString::fromLatin1(tag);
        const QString wrong = QString(right).remove(2, 1);
        QString text = sample("powerwall-2x2");
        const int place = text.indexOf('<' + right);
        text.replace(place, right.size() + 1, '<' + wrong);
        text.replace(text.indexOf("</" + right + '>'), right.size() + 3, "</" + wrong + '>');
        const QString before = text.left(place);

        const zoCommandRun run = zoCommandRun::zohpc({"check", "-"}, text.toUtf8());

        const QString expected =
            QStringLiteral("-:%1:%2: error: No configuration has an element \"%3\": did you "
                           "mean \"%4\"? [unknown-element]\n")
                .arg(QString::number(before.count('\n') + 1),
                     QString::number(place - before.lastIndexOf('\n')), wrong, right);
        QCOMPARE(run.whole(), expected.toUtf8() + "--- errors\n--- exit code 1\n");
    }
}

void tst_zohpcCheckMistakes::severalMistakesAreToldInTheirOrder()
{
    const QByteArray text =
        "<cluster version=\"1\">\n"
        " <display eyeseperation=\"65\">\n"
        "  <window node=\"gpu01\" screen=\"one\" fullscreen=\"no\">\n"
        "   <viewport projection=\"Wall row:9 col:9\" eye=\"lefft\"/>\n"
        "  </window>\n"
        " </display>\n"
        " <projection name=\"Wall\" type=\"wall\" rows=\"1\" columns=\"2\" distance=\"1500\"/>\n"
        " <master><network speed=\"5g\"><node name=\"gpu01\"/></network></master>\n"
        " <window/>\n"
        "</cluster>\n";

    const zoCommandRun run = zoCommandRun::zohpc({"check", "-"}, text);

    QStringList told;
    const QList<QByteArray> lines = run.output.trimmed().split('\n');
    for (const QByteArray& line : lines)
        told << QString::fromUtf8(line.split(' ').first() + line.mid(line.lastIndexOf('[')));
    QCOMPARE(told,
             (QStringList{"-:2:11:[unknown-attribute]", "-:3:32:[unread-number]", "-:3:49:[unknown-value]",
                          "-:4:26:[unknown-projection]", "-:4:49:[unknown-value]",
                          "-:8:26:[unknown-option-value]", "-:9:2:[misplaced-element]"}));
}

// A window beside its display: its tile would be dark, which is told when the window is where it belongs.
void tst_zohpcCheckMistakes::consequencesOfAMisplacedElementAreNotTold()
{
    QString text = sample("powerwall-2x2");
    const int begin = text.lastIndexOf(QLatin1String("  <window"));
    const int end = text.lastIndexOf(QLatin1String(" </display>"));
    const QString window = text.mid(begin, end - begin);
    text.remove(begin, window.size());
    text.insert(text.indexOf(QLatin1String("</cluster>")), window);

    const zoCommandRun run = zoCommandRun::zohpc({"check", "-"}, text.toUtf8());

    QCOMPARE(run.whole(),
             QByteArray("-:27:3: error: \"window\" has no place in \"cluster\": it belongs in \"display\". "
                        "[misplaced-element]\n"
                        "-:27:3: note: What nodes, windows and tiles show is checked once every element is "
                        "where it belongs. [unchecked-rest]\n"
                        "--- errors\n--- exit code 1\n"));
}

void tst_zohpcCheckMistakes::malformedTextIsRefusedWithItsPlace_data()
{
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("wrong");
    QTest::addColumn<QByteArray>("place");

    QTest::newRow("quotation-mark") << "wall-r1-c1\"/>"
                                    << "wall-r1-c1/>" << QByteArray("5:5:");
    QTest::newRow("equals-sign") << "user=\"1\""
                                 << "user\"1\"" << QByteArray("16:35:");
    QTest::newRow("end-tag") << "  </window>\n"
                             << "" << QByteArray("28:12:");
    QTest::newRow("misspelt-start-tag") << "  <window"
                                        << "  <windw" << QByteArray("19:12:");
    QTest::newRow("slash") << "wall-r1-c1\"/>"
                           << "wall-r1-c1\">" << QByteArray("8:13:");
}

void tst_zohpcCheckMistakes::malformedTextIsRefusedWithItsPlace()
{
    QFETCH(QString, right);
    QFETCH(QString, wrong);
    QFETCH(QByteArray, place);
    QString text = sample("powerwall-2x2");
    QVERIFY(text.contains(right));
    text.replace(text.indexOf(right), right.size(), wrong);

    const zoCommandRun run = zoCommandRun::zohpc({"check", "-"}, text.toUtf8());

    QVERIFY2(run.errors.startsWith("-:" + place), run.errors.constData());
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 2);
}

// Written otherwise than the program would, and read as it is meant.
void tst_zohpcCheckMistakes::rightTextsAreRight_data()
{
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("wrong");

    QTest::newRow("exponent") << "eyeseparation=\"65\""
                              << "eyeseparation=\"6.5e1\"";
    QTest::newRow("point") << "eyeseparation=\"65\""
                           << "eyeseparation=\"65.0\"";
    QTest::newRow("blanks") << "width=\"3600\""
                            << "width=\" 3600 \"";
    QTest::newRow("plus") << "screen=\"0\""
                          << "screen=\"+0\"";
    QTest::newRow("True") << "fullscreen=\"true\""
                          << "fullscreen=\"True\"";
    QTest::newRow("one") << "fullscreen=\"true\""
                         << "fullscreen=\"1\"";
    QTest::newRow("empty-option") << "speed=\"10g\""
                                  << "speed=\"\"";
    QTest::newRow("comment") << "<network "
                             << "<!-- more > less --><network ";
    QTest::newRow("instruction") << "<cluster "
                                 << "<?xml version=\"1.0\"?><?xml-model href=\"zhpc.rng\"?><cluster ";
    QTest::newRow("reference-to-a-character") << "Projector nodes"
                                              << "Projector &amp; &#x201c;nodes&#x201d;";
    QTest::newRow("apostrophes") << "speed=\"10g\""
                                 << "speed='10g'";
    QTest::newRow("default-left-out") << " screen=\"0\""
                                      << "";
}

void tst_zohpcCheckMistakes::rightTextsAreRight()
{
    QFETCH(QString, right);
    QFETCH(QString, wrong);
    QString text = sample("powerwall-2x2");
    QVERIFY(text.contains(right));
    text.replace(text.indexOf(right), right.size(), wrong);

    QCOMPARE(zoCommandRun::zohpc({"check", "-"}, text.toUtf8()).whole(),
             QByteArray("--- errors\n--- exit code 0\n"));
}

ZO_TEST_MAIN(tst_zohpcCheckMistakes)
#include "tst_zohpcCheckMistakes.moc"
