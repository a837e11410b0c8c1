#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

// "zohpc report" as a whole process; what the pages say is read back from the PDF.
class tst_zohpcReport final : public zoTestCase
{
    Q_OBJECT

private slots:
    void everyTileIsTold_data();
    void everyTileIsTold();
    void networksAndNodesAreTold();
    void planesOfACurvedWallAreOneElevation();
    void pagesOfPanelsReadWell();
    void namesCanBeSearched();
    void windowBehindADarkOneIsTold();
    void sameContentHasSameBytes();
    void headerHasProgramAndVersion();
    void inputIsNotOverwritten();
    void unknownPaperIsRefused();
    void tooManyPagesAreRefused_data();
    void tooManyPagesAreRefused();
    void mostTilesAreWritten();
};

void tst_zohpcReport::everyTileIsTold_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("paper");

    QTest::newRow("one") << 1 << 1 << "A4";
    QTest::newRow("wall-of-24") << 6 << 4 << "A3";
    QTest::newRow("wall-of-500") << 25 << 20 << "A4";
}

void tst_zohpcReport::everyTileIsTold()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext (Debian package poppler-utils) is not installed");
    QFETCH(int, columns);
    QFETCH(int, rows);
    QFETCH(QString, paper);
    const zoCliFiles files;
    const int count = columns * rows;
    const QByteArray wall =
        zoCommandRun::zohpc({"new", "--wall", QStringLiteral("%1x%2").arg(columns).arg(rows), "--hosts",
                             QStringLiteral("node[1001-%1]").arg(1000 + count)})
            .output;
    const QString input = files.write(QStringLiteral("wall.zhpc"), wall);
    const QString output = files.path(QStringLiteral("wall.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output, "--paper", paper});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    const QByteArray text = zoCommandRun::program(QStringLiteral("pdftotext"), {"-layout", output, "-"}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output;
    QVERIFY(text.contains(QCryptographicHash::hash(wall, QCryptographicHash::Sha256).toHex()));
    for (int node = 1001; node <= 1000 + count; ++node) {
        const QByteArray name = "node" + QByteArray::number(node);
        // On the elevation, among the cables, beside its window and in its network.
        QVERIFY2(text.count(name) >= 4, name.constData());
    }
}

void tst_zohpcReport::networksAndNodesAreTold()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext (Debian package poppler-utils) is not installed");
    const zoCliFiles files;
    const QString input = files.write(
        QStringLiteral("networks.zhpc"),
        "<cluster version=\"1\"><master><network network=\"infiniband\" speed=\"10g\" encrypted=\"true\" "
        "description=\"Wall\"><node name=\"a\"/><node name=\"gate\"><network><node name=\"b\" "
        "rendernode=\"false\" enabled=\"false\"/></network></node></network></master></cluster>");
    const QString output = files.path(QStringLiteral("networks.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    const QByteArray text = zoCommandRun::program(QStringLiteral("pdftotext"), {"-layout", output, "-"}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output;
    QStringList lines;
    for (const QByteArray& line : text.mid(text.indexOf("Network, node")).split('\n')) {
        const QString words = QString::fromUtf8(line).simplified();
        if (!words.isEmpty())
            lines << words;
    }
    QCOMPARE(lines.mid(0, 6),
             QStringList({"Network, node Kind Drives", "Network 1: Wall infiniband, 10g, encrypted 2 nodes",
                          "a", "gate gateway", "Network 2 1 node", "b does not render, disabled"}));
}

void tst_zohpcReport::planesOfACurvedWallAreOneElevation()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext (Debian package poppler-utils) is not installed");
    const zoCliFiles files;
    const QByteArray wall = zoCommandRun::zohpc({"new", "--curved", "3x2", "--tile-size", "2000x1125",
                                                 "--radius", "2000", "--hosts", "node[1-6]"})
                                .output;
    const QString input = files.write(QStringLiteral("curved.zhpc"), wall);
    const QString output = files.path(QStringLiteral("curved.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output, "--paper", "A3"});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    const QByteArray text = zoCommandRun::program(QStringLiteral("pdftotext"), {"-layout", output, "-"}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output;
    for (const char* heading :
         {"Front elevations", "Order of the cables", "Windows and tiles", "Networks", "Viewer"})
        QVERIFY2(text.contains(QByteArray("\n") + heading + '\n') ||
                     text.contains(QByteArray("\f") + heading + '\n'),
                 heading);
    QVERIFY(text.contains("Walls: 1."));
    QVERIFY(
        text.contains("3 x 2 tiles, 6000 x 2250 mm, each 2000 x 1125 mm, unrolled, 60 degrees from column to "
                      "column"));
    // On the elevation and among the cables.
    QCOMPARE(QByteArray(text).replace("\u00a0", " ").count("row 2, column 3"), 2);
    // Where each column stands.
    QVERIFY(text.contains("Wall, column 3"));
}

// Numbers of two digits do not fall below their words, frames are no overlap, and "None." takes no page of its own.
void tst_zohpcReport::pagesOfPanelsReadWell()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext (Debian package poppler-utils) is not installed");
    const zoCliFiles files;
    const QByteArray wall = zoCommandRun::zohpc({"new", "--wall", "10x10", "--tile-size", "1209.6x680.4",
                                                 "--bezel", "1.8x1.8", "--hosts", "gate[rt=0] { n[1-100] }"})
                                .output;
    const QString input = files.write(QStringLiteral("panels.zhpc"), wall);
    const QString output = files.path(QStringLiteral("panels.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output, "--paper", "A3"});

    QCOMPARE(run.exitCode, 0);
    const QByteArray text = zoCommandRun::program(QStringLiteral("pdftotext"), {"-layout", output, "-"}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output;
    QVERIFY(text.contains("10 x 10 tiles, 12112.2 x 6820.2 mm, each 1209.6 x 680.4 mm, 1.8 x 1.8 mm from "
                          "picture to picture"));
    QVERIFY(text.contains("1 node\n"));
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines)
        QVERIFY2(!line.trimmed().endsWith("column"), line.constData());
    const QList<QByteArray> pages = text.trimmed().split('\f');
    QVERIFY(pages.constLast().contains("None.") && pages.constLast().contains("Viewer"));
}

void tst_zohpcReport::namesCanBeSearched()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext (Debian package poppler-utils) is not installed");
    const zoCliFiles files;
    // Letters that fonts join to one sign.
    const QByteArray wall = zoCommandRun::zohpc({"new", "--wall", "2x1", "--hosts", "office1 fluff2"}).output;
    const QString input = files.write(QStringLiteral("wall.zhpc"), wall);
    const QString output = files.path(QStringLiteral("wall.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output});

    QCOMPARE(run.exitCode, 0);
    const QByteArray text = zoCommandRun::program(QStringLiteral("pdftotext"), {"-layout", output, "-"}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output;
    // In the elevation and the tables; pictures join them.
    QVERIFY2(text.count("office1") >= 3, text.constData());
    QVERIFY2(text.count("fluff2") >= 3, text.constData());
}

// On the elevation, among the cables, beside its window and in its network, whatever comes before.
void tst_zohpcReport::windowBehindADarkOneIsTold()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext (Debian package poppler-utils) is not installed");
    const zoCliFiles files;
    const QString input =
        files.write(QStringLiteral("dark.zhpc"),
                    "<cluster version=\"1\"><master><network><node name=\"desk\"/><node "
                    "name=\"painter\"/></network></master>"
                    "<projection name=\"P\" type=\"plane\" x1=\"-500\" y1=\"0\" z1=\"-900\" x2=\"500\" "
                    "y2=\"0\" z2=\"-900\" "
                    "x3=\"500\" y3=\"500\" z3=\"-900\"/><display><window node=\"desk\"><viewport/></window>"
                    "<window node=\"painter\"><viewport projection=\"P\"/></window></display></cluster>");
    const QString output = files.path(QStringLiteral("dark.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output});

    QCOMPARE(run.exitCode, 0);
    const QByteArray text = zoCommandRun::program(QStringLiteral("pdftotext"), {"-layout", output, "-"}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output;
    QVERIFY2(text.count("painter") >= 4, text.constData());
}

void tst_zohpcReport::sameContentHasSameBytes()
{
    const QString date = QStringLiteral("SOURCE_DATE_EPOCH=86461");
    const QString file = QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc");

    const zoCommandRun one = zoCommandRun::zohpcIn({date}, {"report", file, "-o", "-"});
    const zoCommandRun other =
        zoCommandRun::zohpcIn({date, "LC_ALL=de_DE.UTF-8", "TZ=Asia/Tokyo"}, {"report", file, "-o", "-"});

    QCOMPARE(one.exitCode, 0);
    QVERIFY(one.output.startsWith("%PDF-"));
    QCOMPARE(other.output, one.output);
}

void tst_zohpcReport::headerHasProgramAndVersion()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty())
        QSKIP("pdfinfo (Debian package poppler-utils) is not installed");
    const zoCliFiles files;
    const QString output = files.path(QStringLiteral("cave.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc(
        {"report", QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc"), "-o", output});

    QCOMPARE(run.exitCode, 0);
    const QByteArray info = zoCommandRun::program(QStringLiteral("pdfinfo"), {output}, {},
                                                  {"PATH=" + qEnvironmentVariable("PATH")})
                                .output.simplified();
    const QByteArray version = zoCommandRun::zohpc({"--version"}).output.simplified();
    QVERIFY(version.startsWith("zohpc "));
    QVERIFY2(info.contains("Creator: " + version + ' '), info.constData());
}

void tst_zohpcReport::inputIsNotOverwritten()
{
    const zoCliFiles files;
    const QString input = files.write(QStringLiteral("wall.zhpc"), "<cluster/>");

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", input});

    QCOMPARE(run.errors, input.toUtf8() + ": the input would be overwritten\n");
    QCOMPARE(run.exitCode, 2);
    QCOMPARE(zoCliFiles::read(input), QByteArray("<cluster/>"));
}

void tst_zohpcReport::unknownPaperIsRefused()
{
    const zoCommandRun run = zoCommandRun::zohpc({"report", "-", "-o", "-", "--paper", "A5"});

    QCOMPARE(run.whole(), QByteArray("--- errors\nzohpc report: --paper: \"A5\" is no paper: A4, A3\n"
                                     "Try 'zohpc report --help'.\n--- exit code 2\n"));
}

void tst_zohpcReport::tooManyPagesAreRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("reason");

    // The wall counts, too.
    QTest::newRow("tiles") << QByteArray(
                                  "<cluster><projection name='W' type='powerwall' rows='50' columns='1000' "
                                  "width='9000' height='900' distance='1'/></cluster>")
                           << QByteArray(
                                  "50001 projections and tiles, of at most 50000: take a configuration of "
                                  "each part");
    const QByteArray pages = "more than 4000 pages, with ";
    const auto document = [](const QByteArray& nodes) {
        return "<cluster version=\"1\"><master><network>" + nodes + "</network></master></cluster>";
    };
    QTest::newRow("nodes") << document(QByteArray("<node/>").repeated(100000))
                           << QByteArray(pages +
                                         "100000 nodes, 1 networks and 0 windows: take larger paper, or a "
                                         "configuration of each part");
    QTest::newRow("problems") << "<cluster>" + QByteArray("<x/>").repeated(100000) + "</cluster>"
                              << QByteArray(pages + "100000 problems: mend those first");
}

void tst_zohpcReport::tooManyPagesAreRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, reason);
    const zoCliFiles files;
    const QString input = files.write(QStringLiteral("large.zhpc"), text);
    const QString output = files.path(QStringLiteral("large.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output});

    QCOMPARE(run.errors, input.toUtf8() + ": the report has " + reason + '\n');
    QCOMPARE(run.exitCode, 2);
    QVERIFY(!QFile::exists(output));
}

void tst_zohpcReport::mostTilesAreWritten()
{
    const zoCliFiles files;
    // 250 x 199 tiles and 248 x 1, and both walls.
    const QByteArray text =
        "<cluster><projection name='W' type='powerwall' rows='250' columns='199' width='9000' "
        "height='900' distance='1'/><projection name='V' type='powerwall' rows='248' "
        "columns='1' width='9' height='900' distance='1'/></cluster>";
    const QString input = files.write(QStringLiteral("large.zhpc"), text);
    const QString output = files.path(QStringLiteral("large.pdf"));

    const zoCommandRun run = zoCommandRun::zohpc({"report", input, "-o", output});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(QFile(output).size() > 1000000);
}

ZO_TEST_MAIN(tst_zohpcReport)
#include "tst_zohpcReport.moc"
