#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDomDocument>
#include <QFontMetricsF>
#include <QImage>
#include <QRegularExpression>
#include <QTest>
#include <QTransform>

namespace
{
// A text of an SVG and the place that its letters take.
struct Text
{
    QString text;
    double letters; // height, units of the picture
    QRectF place;
};

std::vector<Text> textsOf(const QByteArray& svg)
{
    QDomDocument document;
    document.setContent(svg);
    std::vector<Text> result;
    const QDomNodeList list = document.elementsByTagName(QStringLiteral("text"));
    static const QRegularExpression number(QStringLiteral("-?[0-9.]+(?:e-?[0-9]+)?"));
    for (int i = 0; i < list.count(); ++i) {
        const QDomElement element = list.at(i).toElement();
        std::vector<double> matrix;
        const QString transform = element.parentNode().toElement().attribute(QStringLiteral("transform"));
        for (auto match = number.globalMatch(transform); match.hasNext();)
            matrix.push_back(match.next().captured().toDouble());
        if (matrix.size() != 6)
            continue;
        QFont font(element.attribute(QStringLiteral("font-family")));
        font.setPixelSize(element.attribute(QStringLiteral("font-size")).toInt());
        font.setBold(element.attribute(QStringLiteral("font-weight")).toInt() > 500);
        const QFontMetricsF metrics(font);
        const QRectF letters = metrics.tightBoundingRect(element.text())
                                   .translated(element.attribute(QStringLiteral("x")).toDouble(),
                                               element.attribute(QStringLiteral("y")).toDouble());
        const QTransform place(matrix[0], matrix[1], matrix[2], matrix[3], matrix[4], matrix[5]);
        result.push_back({element.text(), font.pixelSize() * matrix[3], place.mapRect(letters)});
    }
    return result;
}

// All texts of a picture, a line each.
QString wordsOf(const QByteArray& svg)
{
    QString result;
    for (const Text& text : textsOf(svg))
        result += text.text + QLatin1Char('\n');
    return result;
}

// A wall of so many hosts.
QByteArray wall(int columns, int rows, const QString& hosts)
{
    return zoCommandRun::zohpc(
               {"new", "--wall", QStringLiteral("%1x%2").arg(columns).arg(rows), "--hosts", hosts})
        .output;
}

const QString s_cave = QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc");
} // namespace

// "zohpc draw" as a whole process. What is in the pictures is tested with them.
class tst_zohpcDraw final : public zoTestCase
{
    Q_OBJECT

private slots:
    void suffixIsTheFormat_data();
    void suffixIsTheFormat();
    void nameOfTheFileChoosesThePicture();
    void optionChoosesThePicture();
    void sizeAndScaleArePixels();
    void standardOutputHasAFormat();
    void sameBytesInEveryProcess();
    void dateOfTheSourceIsTheDate_data();
    void dateOfTheSourceIsTheDate();
    void dateThatIsNoneIsTold();
    void sheetHasATitle_data();
    void sheetHasATitle();
    void namesCanBeRead_data();
    void namesCanBeRead();
    void namesWithoutRoomStandBelow();
    void sizesAreMillimetresAndPixels();
    void screensCountFromOne();
    void networkShowsGatewaysAndNodes();
    void whatHasNoRoomIsTold();
    void networkWithoutNodesSaysSo();
    void failureLeavesTheOldFile();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcDraw::suffixIsTheFormat_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("begin");

    QTest::newRow("svg") << "room.svg" << QByteArray("<?xml");
    QTest::newRow("png") << "room.png" << QByteArray("\x89PNG");
    QTest::newRow("pdf") << "room.pdf" << QByteArray("%PDF-");
    QTest::newRow("upper-case") << "ROOM.PNG" << QByteArray("\x89PNG");
}

void tst_zohpcDraw::suffixIsTheFormat()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, begin);
    const QString file = m_files.write(name, "old");

    const zoCommandRun run = zoCommandRun::zohpcIn({}, {"draw", s_cave, "-o", file});

    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(zoCliFiles::read(file).startsWith(begin));
}

void tst_zohpcDraw::nameOfTheFileChoosesThePicture()
{
    const QString room = m_files.path("room.svg");
    const QString screens = m_files.path("my-screens.svg");

    const zoCommandRun run = zoCommandRun::zohpc({"draw", s_cave, "-o", room, "-o", screens});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QVERIFY(zoCliFiles::read(room).contains("Viewer"));
    QVERIFY(!zoCliFiles::read(room).contains("Window 1"));
    QVERIFY(zoCliFiles::read(screens).contains("Window 1"));
    QVERIFY(!zoCliFiles::read(screens).contains("Viewer"));
}

void tst_zohpcDraw::optionChoosesThePicture()
{
    QVERIFY(
        zoCommandRun::zohpc({"draw", s_cave, "--picture", "screens", "-o", "-"}).output.contains("Window 1"));
    QVERIFY(zoCommandRun::zohpc({"draw", s_cave, "--picture", "room", "-o", "-"}).output.contains("Viewer"));
}

void tst_zohpcDraw::sizeAndScaleArePixels()
{
    const QString file = m_files.path("sized.png");

    QCOMPARE(zoCommandRun::zohpc({"draw", s_cave, "-o", file, "--size", "300x200", "--scale", "2"}).exitCode,
             0);
    const QImage image(file);
    QCOMPARE(image.size(), QSize(600, 400));

    // Something is drawn on it.
    QSet<QRgb> colors;
    for (int x = 0; x < image.width(); ++x)
        colors.insert(image.pixel(x, image.height() / 2));
    QVERIFY(colors.size() > 2);
}

void tst_zohpcDraw::standardOutputHasAFormat()
{
    const QByteArray text = zoCliFiles::read(s_cave);

    QVERIFY(
        zoCommandRun::zohpc({"draw", "-", "-o", "-", "--format", "pdf"}, text).output.startsWith("%PDF-"));
    QVERIFY(zoCommandRun::zohpc({"draw", "-", "-o", "-"}, text).output.startsWith("<?xml"));
}

void tst_zohpcDraw::sameBytesInEveryProcess()
{
    const QStringList arguments{"draw", s_cave, "--picture", "screens", "-o", "-"};
    const QByteArray first = zoCommandRun::zohpcIn({"QT_HASH_SEED=0"}, arguments).output;

    QVERIFY(!first.isEmpty());
    QCOMPARE(zoCommandRun::zohpcIn({"QT_HASH_SEED=42"}, arguments).output, first);
}

void tst_zohpcDraw::dateOfTheSourceIsTheDate_data()
{
    QTest::addColumn<QString>("format");

    QTest::newRow("svg") << "svg";
    QTest::newRow("png") << "png";
    QTest::newRow("pdf") << "pdf";
}

void tst_zohpcDraw::dateOfTheSourceIsTheDate()
{
    QFETCH(QString, format);
    const QStringList arguments{"draw", s_cave, "-o", "-", "--format", format};
    const QString date = QStringLiteral("SOURCE_DATE_EPOCH=86461");

    const QByteArray first = zoCommandRun::zohpcIn({date, "TZ=UTC"}, arguments).output;

    QVERIFY(!first.isEmpty());
    // Whatever the clock and the zone.
    QVERIFY(zoCommandRun::zohpcIn({date, "TZ=America/New_York", "QT_HASH_SEED=7"}, arguments).output ==
            first);
    if (format == QLatin1String("pdf")) {
        QVERIFY(first.contains("/CreationDate (D:19700102000101Z)"));
        QVERIFY(!zoCommandRun::zohpcIn({}, arguments).output.contains("/CreationDate (D:1970"));
    }
}

void tst_zohpcDraw::dateThatIsNoneIsTold()
{
    const zoCommandRun run =
        zoCommandRun::zohpcIn({"SOURCE_DATE_EPOCH=yesterday"}, {"draw", s_cave, "-o", "-"});

    QCOMPARE(run.whole(),
             QByteArray("--- errors\nzohpc draw: SOURCE_DATE_EPOCH: \"yesterday\" is no number of "
                        "seconds\nTry 'zohpc draw --help'.\n--- exit code 2\n"));
}

void tst_zohpcDraw::sheetHasATitle_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("title");

    QTest::newRow("file-and-picture") << QStringList{s_cave} << "cave-4-sided.zhpc: room";
    QTest::newRow("picture") << QStringList{s_cave, "--picture", "screens"} << "cave-4-sided.zhpc: screens";
    QTest::newRow("own") << QStringList{s_cave, "--title", "Cave <A & B>"} << "Cave <A & B>";
    QTest::newRow("none") << QStringList{s_cave, "--title", ""} << QString();
    QTest::newRow("standard-input") << QStringList{"-"} << "room";
}

void tst_zohpcDraw::sheetHasATitle()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, title);

    const QByteArray svg =
        zoCommandRun::zohpc(QStringList{"draw", "-o", "-"} + arguments, zoCliFiles::read(s_cave)).output;

    QDomDocument document;
    QVERIFY(document.setContent(svg));
    QCOMPARE(document.documentElement().firstChildElement(QStringLiteral("title")).text(), title);
    QCOMPARE(wordsOf(svg).split(QLatin1Char('\n')).contains(title), true);
}

void tst_zohpcDraw::namesCanBeRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QStringList>("hosts");

    const auto names = [](const QString& form, int width, int count) {
        QStringList result;
        for (int i = 1; i <= count; ++i)
            result << form.arg(i, width, 10, QLatin1Char('0'));
        return result;
    };
    for (const char* picture : {"room", "screens", "network"}) {
        QTest::addRow("%s-4", picture) << wall(2, 2, "n1 - n4") << picture << names("n%1", 1, 4);
        QTest::addRow("%s-24", picture)
            << wall(6, 4, "projector-[01-24]") << picture << names("projector-%1", 2, 24);
        QTest::addRow("%s-100", picture) << wall(10, 10, "render-node-[001-100].example") << picture
                                         << names("render-node-%1.example", 3, 100);
    }
}

void tst_zohpcDraw::namesCanBeRead()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, picture);
    QFETCH(QStringList, hosts);

    const std::vector<Text> texts =
        textsOf(zoCommandRun::zohpc({"draw", "-", "-o", "-", "--picture", picture}, text).output);

    for (const Text& shown : texts) {
        QVERIFY2(shown.letters > 8.99, qPrintable(shown.text));
        hosts.removeOne(shown.text);
        for (const Text& other : texts) {
            const QRectF common = shown.place & other.place;
            QVERIFY2(&other == &shown || common.width() < 0.5 || common.height() < 0.5,
                     qPrintable(shown.text + QLatin1String(" over ") + other.text));
        }
    }
    QCOMPARE(hosts, QStringList());
}

void tst_zohpcDraw::namesWithoutRoomStandBelow()
{
    const QByteArray text = wall(10, 10, "render-node-[001-100].example");
    const QStringList small{"draw", "-", "-o", "-", "--size", "1000x700", "--picture"};

    const QString screens = wordsOf(zoCommandRun::zohpc(small + QStringList{"screens"}, text).output);
    const QString room = wordsOf(zoCommandRun::zohpc(small + QStringList{"room"}, text).output);

    QVERIFY2(screens.contains("\n1 to 100: render-node-[001-100].example\n"), qPrintable(screens));
    QVERIFY(screens.split(QLatin1Char('\n')).contains(QStringLiteral("1")));
    QVERIFY(screens.split(QLatin1Char('\n')).contains(QStringLiteral("100")));
    QVERIFY(!screens.contains(QChar(0x2026))); // no name that is cut
    QVERIFY2(room.contains("\nWall, row 10 from the left: render-node-[091-100].example\n"),
             qPrintable(room));
}

void tst_zohpcDraw::sizesAreMillimetresAndPixels()
{
    const QString room =
        wordsOf(zoCommandRun::zohpc({"draw", ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc", "-o", "-"}).output);
    const QString tiled = wordsOf(zoCommandRun::zohpc({"draw", "-", "-o", "-"}, wall(3, 2, "n[1-6]")).output);

    QVERIFY2(room.contains("\n3600 mm = 3600 px\n"), qPrintable(room));
    QVERIFY(room.contains("\n2160 mm = 2160 px\n"));
    QVERIFY(room.contains(
        "\nWall: powerwall, 2 x 2 tiles, 3600 x 2160 mm, 3600 x 2160 pixels, each tile 1920 x 1200 mm = "
        "1920 x 1200 pixels, overlap 240 x 240 mm, blended, 2500 mm from the viewer\n"));
    QVERIFY2(tiled.contains("\n5760 px\n"), qPrintable(tiled));
    QVERIFY(
        tiled.contains("\nWall: wall, 3 x 2 tiles, 5760 x 2160 pixels, each tile 1920 x 1080 pixels, 1500 mm "
                       "from the viewer\n"));
}

void tst_zohpcDraw::screensCountFromOne()
{
    const QString screens = wordsOf(
        zoCommandRun::zohpc({"draw", "-", "-o", "-", "--picture", "screens"}, wall(2, 1, "a")).output);

    QVERIFY2(screens.contains("\nScreen 1\n"), qPrintable(screens));
    QVERIFY(screens.contains("\nScreen 2\n"));
    QVERIFY(!screens.contains("Screen 0"));
}

void tst_zohpcDraw::networkShowsGatewaysAndNodes()
{
    const QByteArray text = wall(2, 1, "gw[rt=0] { n1 n2 spare } { lone }");
    const QByteArray svg = zoCommandRun::zohpc({"draw", "-", "-o", m_files.path("network.svg")}, text).output;
    const QByteArray file = zoCliFiles::read(m_files.path("network.svg"));

    const QString words = wordsOf(file);

    QCOMPARE(svg, QByteArray());
    for (const char* word :
         {"gw", "n1", "n2", "spare", "lone", "Network 1", "Network 2", "Network 3", "3 nodes", "1 node",
          "drives a display", "does not render", "disabled", "gateway to"})
        QVERIFY2(words.split(QLatin1Char('\n')).contains(QLatin1String(word)), word);
    // Inside their network, to the right of their gateway.
    const std::vector<Text> texts = textsOf(file);
    const auto left = [&](const char* word) {
        for (const Text& shown : texts) {
            if (shown.text == QLatin1String(word))
                return shown.place.left();
        }
        return -1.0;
    };
    QVERIFY(left("gw") > left("Network 1"));
    QVERIFY(left("Network 2") > left("gw"));
    QVERIFY(left("n1") > left("Network 2"));
}

void tst_zohpcDraw::whatHasNoRoomIsTold()
{
    QByteArray nodes;
    QByteArray planes;
    for (int i = 0; i < 60000; ++i)
        nodes += "<node name='n" + QByteArray::number(i) + "'/>";
    for (int i = 0; i < 100; ++i)
        planes += "<projection name='W" + QByteArray::number(i) +
                  "' type='powerwall' width='9' height='9' distance='9'/>";
    const auto drawn = [](const char* picture, const QByteArray& networks, const QByteArray& projections) {
        return wordsOf(zoCommandRun::zohpc({"draw", "-", "-o", "-", "--picture", picture},
                                           "<cluster version='1'><master>" + networks + "</master>" +
                                               projections + "</cluster>")
                           .output);
    };

    const QString many = drawn("network", "<network>" + nodes + "</network>", {});
    const QString few = drawn("network", "<network><node name='n'/></network>", {});
    const QString walls = drawn("room", {}, planes);

    QVERIFY2(many.contains("Not all names have room on a sheet of this size"), qPrintable(many.left(500)));
    QVERIFY(!few.contains("Not all names"));
    // The line for the walls that are left out stands for one of them, too.
    const int told = walls.count(": powerwall, ");
    QVERIFY(told > 5 && told < 100);
    QVERIFY2(walls.contains(QStringLiteral("... and %1 more lines").arg(100 - told)),
             qPrintable(walls.left(2000)));
}

void tst_zohpcDraw::networkWithoutNodesSaysSo()
{
    const QStringList arguments{"draw", "-", "-o", "-", "--picture", "network"};

    const QString none = wordsOf(zoCommandRun::zohpc(arguments, "<cluster version=\"1\"/>").output);
    const QString empty =
        wordsOf(zoCommandRun::zohpc(arguments, "<cluster version=\"1\"><master><network/></master></cluster>")
                    .output);

    QVERIFY2(none.contains("No networks"), qPrintable(none));
    QVERIFY2(empty.contains("Network 1") && empty.contains("0 nodes"), qPrintable(empty));
}

void tst_zohpcDraw::failureLeavesTheOldFile()
{
    const QString kept = m_files.write("kept.svg", "old");
    const QString nowhere = m_files.path("none/room.svg");

    const zoCommandRun broken = zoCommandRun::zohpc({"draw", "-", "-o", kept}, "<cluster>");
    const zoCommandRun unwritable = zoCommandRun::zohpc({"draw", s_cave, "-o", nowhere});

    QCOMPARE(broken.whole(), QByteArray("--- errors\n-:1:10: Premature end of document.\n--- exit code 2\n"));
    QCOMPARE(zoCliFiles::read(kept), QByteArray("old"));
    QCOMPARE(unwritable.whole(),
             "--- errors\n" + nowhere.toUtf8() + ": No such file or directory\n--- exit code 2\n");
}

void tst_zohpcDraw::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("no-file") << QStringList{"-o", "a.svg"} << QByteArray("no file given");
    QTest::newRow("two-files") << QStringList{"a", "b", "-o", "a.svg"} << QByteArray("one file at a time");
    QTest::newRow("no-output") << QStringList{"a"} << QByteArray("--output is missing");
    QTest::newRow("suffix") << QStringList{"a", "-o", "a.gif"}
                            << QByteArray("--output: \"a.gif\" does not end in .svg, .png or .pdf");
    QTest::newRow("picture") << QStringList{"a", "-o", "a.svg", "--picture", "x"}
                             << QByteArray("--picture: \"x\" is no picture: room, screens, network");
    QTest::newRow("format") << QStringList{"a", "-o", "-", "--format", "gif"}
                            << QByteArray("--format: \"gif\" is no format: svg, png, pdf");
    QTest::newRow("size") << QStringList{"a", "-o", "-", "--size", "0x5"}
                          << QByteArray("--size: \"0x5\" is no size in points such as 1200x800");
    QTest::newRow("scale") << QStringList{"a", "-o", "-", "--scale", "nan"}
                           << QByteArray("--scale: \"nan\" is no number from 0.1 to 16");
}

void tst_zohpcDraw::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"draw"} + arguments);

    QCOMPARE(run.whole(),
             "--- errors\nzohpc draw: " + reason + "\nTry 'zohpc draw --help'.\n--- exit code 2\n");
}

ZO_TEST_MAIN(tst_zohpcDraw)
#include "tst_zohpcDraw.moc"
