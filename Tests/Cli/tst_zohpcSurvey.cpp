#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCRenderSetup.h>

#include <QApplication>
#include <QDomDocument>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

// "zohpc survey" as a whole process.
class tst_zohpcSurvey final : public zoTestCase
{
    Q_OBJECT

private slots:
    void planesAndResidualsArePrinted();
    void worstFitIsNamed();
    void whatIsOpenIsAnError();
    void mistakesHaveTheirPlace();
    void limitDecidesTheExitCode_data();
    void limitDecidesTheExitCode();
    void jsonHasAllNumbers();
    void planesAreRenderedWhereTheyWereMeasured();
    void windowsGoOnShowingTheirTiles();
    void takenNamesAreRefused();
    void gapsWiderThanTheWallAreRefused();
    void overlapOfWholeTilesIsRefused();
    void wrongUsageIsRefused_data();
    void wrongUsageIsRefused();
    void inputIsNotOverwritten();
    void textAfterANulIsNotDropped();
    void lossesOfTheConfigurationAreToldBefore();
    void configurationWithoutThePlanesIsTold();
    void hostileFilesEnd_data();
    void hostileFilesEnd();
};

namespace
{
// 3000 x 2000 mm at 1500 mm, its lower edge 500 mm above the floor, the eyes at 1500 mm.
const char* const Front = "wall Front size 3000 x 2000\nupright Front\nfloor Front.bottom 500\n"
                          "viewer distance 1500 height 1500\n";

// What nodes would show of a configuration.
struct Rendered
{
    explicit Rendered(const QByteArray& text)
    {
        QDomDocument document;
        if (!zoHPCDocumentText::parse(QString::fromUtf8(text), document))
            qFatal("no document");
        configuration.read(document);
        setup =
            std::make_unique<zoHPCRenderSetup>(configuration.displays(), configuration.hosts().master(), 0.5);
    }

    zoHPCConfiguration configuration;
    std::unique_ptr<zoHPCRenderSetup> setup;
};
} // namespace

void tst_zohpcSurvey::planesAndResidualsArePrinted()
{
    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-"}, Front);

    QCOMPARE(
        run.whole(),
        QByteArray("-: 1 plane, 7 measurements, 0 numbers more than needed\n"
                   "Planes in mm from the viewer, x to the right, y up, z backwards:\n"
                   "  name                lower left             lower right            upper right   width  "
                   "height    \302\261\n"
                   "  Front  -1500.0 -1000.0 -1500.0  1500.0 -1000.0 -1500.0  1500.0 1000.0 -1500.0  3000.0  "
                   "2000.0  5.1\n"
                   "Measurements in mm or degrees; the residual is what was measured too much:\n"
                   "  line  measurement         measured  fitted  residual  checked\n"
                   "     1  width Front           3000.0  3000.0       0.0      0 %\n"
                   "     1  height Front          2000.0  2000.0       0.0      0 %\n"
                   "     2  upright Front              -       -     0.00\302\260      0 %\n"
                   "     3  floor Front.bottom     500.0   500.0       0.0      0 %\n"
                   "     4  viewer distance       1500.0  1500.0       0.0      0 %\n"
                   "     4  viewer height         1500.0  1500.0       0.0      0 %\n"
                   "     4  viewer aside             0.0     0.0       0.0      0 %\n"
                   "Nothing was measured twice: a mistake in any measurement would not be seen\n"
                   "--- errors\n--- exit code 0\n"));
}

void tst_zohpcSurvey::worstFitIsNamed()
{
    const QByteArray diagonals =
        "distance Front.ll Front.ur 3606\ndistance Front.lr Front.ul 3606\n"
        "distance Front.bottom Front.top 2000\ndistance Front.left Front.right 3050\n"
        "distance Front.center Front.ur 1803\n";

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-"}, Front + diagonals);

    QVERIFY2(run.output.contains("Fits worst: line 8, distance Front.left Front.right, off by 3"),
             run.output.constData());
    QVERIFY2(run.output.contains("a mistake, most likely: about 49.7 mm too large"), run.output.constData());
    QCOMPARE(run.exitCode, 0);
}

void tst_zohpcSurvey::whatIsOpenIsAnError()
{
    const zoCliFiles files;
    const QString room =
        files.write(QStringLiteral("room.txt"), "wall Front size 3 m x 2 m\nviewer distance 3 m\n");
    const QString output = files.path(QStringLiteral("room.zhpc"));

    const zoCommandRun run = zoCommandRun::zohpc({"survey", room, "-o", output});

    QCOMPARE(run.errors, room.toUtf8() + ": How the room is tilted is not determined: add a line such as "
                                         "\"upright Front\"\n");
    QCOMPARE(run.exitCode, 1);
    QVERIFY(!QFile::exists(output));
}

void tst_zohpcSurvey::mistakesHaveTheirPlace()
{
    const zoCliFiles files;
    files.write(QStringLiteral("list.csv"), "1,2,3,4\n2,3,4,nan\n");
    const QString room = files.write(QStringLiteral("room.txt"), "wall A size 3 x\npoints list.csv\n");

    const zoCommandRun run = zoCommandRun::zohpc({"survey", room});

    QCOMPARE(run.whole(), "--- errors\nlist.csv:2:1: \"nan\" is no coordinate\n--- exit code 2\n");
}

void tst_zohpcSurvey::limitDecidesTheExitCode_data()
{
    QTest::addColumn<QString>("limit");
    QTest::addColumn<int>("exitCode");

    // The floor's two lines share 30 mm as 15 and 15.
    QTest::newRow("below") << "14.9" << 1;
    QTest::newRow("above") << "15.1" << 0;
}

void tst_zohpcSurvey::limitDecidesTheExitCode()
{
    QFETCH(QString, limit);
    QFETCH(int, exitCode);
    const zoCliFiles files;
    const QString output = files.path(QStringLiteral("room.zhpc"));

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-", "--limit", limit, "-o", output},
                                                 Front + QByteArray("floor Front.bottom 530\n"));

    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(QFile::exists(output), exitCode == 0);
    QCOMPARE(run.errors.contains("-:5:1: floor Front.bottom is off by 15.0 mm, more than 14.9"),
             exitCode == 1);
}

void tst_zohpcSurvey::jsonHasAllNumbers()
{
    const zoCommandRun run =
        zoCommandRun::zohpc({"survey", "-", "--json"}, Front + QByteArray("floor Front.bottom 530\n"));

    const QJsonObject object = QJsonDocument::fromJson(run.output).object();
    QCOMPARE(object.value("planes").toArray().size(), 1);
    QCOMPARE(object.value("planes").toArray().at(0).toObject().value("lower_left").toArray().size(), 3);
    QCOMPARE(object.value("measurements").toArray().size(), 8);
    const QJsonObject last = object.value("measurements").toArray().last().toObject();
    QVERIFY(std::abs(last.value("residual").toDouble() - 15.0) < 1e-6);
    QVERIFY(std::abs(last.value("redundancy").toDouble() - 0.5) < 1e-6);
    QCOMPARE(object.value("worst").toObject().value("is_mistake").toBool(), true);
    QCOMPARE(object.value("redundancy").toInt(), 1);
}

void tst_zohpcSurvey::planesAreRenderedWhereTheyWereMeasured()
{
    const zoCliFiles files;
    const QString wall = files.path(QStringLiteral("wall.zhpc"));
    QCOMPARE(zoCommandRun::zohpc({"new", "--cave", "3000x2000x3000", "--walls", "left,front", "--hosts",
                                  "a b", "--name", "Cave", "-o", wall})
                 .exitCode,
             0);
    // The side wall stands at 100 degrees, which the cave that was planned did not.
    const QByteArray room =
        "wall \"Cave Front\" size 3000 x 2000\nupright \"Cave Front\"\nfloor \"Cave Front.bottom\" 500\n"
        "viewer distance 1500 height 1500\nwall \"Cave Left\" size 3000 x 2000\n"
        "join \"Cave Front.left\" \"Cave Left.right\"\nangle \"Cave Front\" \"Cave Left\" 100\n";

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-", "--into", wall, "-o", wall}, room);

    QCOMPARE(run.errors, QByteArray());
    const Rendered rendered(zoCliFiles::read(wall));
    QCOMPARE(rendered.setup->pictures().size(), std::size_t(2));
    const auto pictureOf = [&](const QString& name) {
        for (const zoHPCRenderSetup::Picture& picture : rendered.setup->pictures()) {
            if (picture.projection == name)
                return picture;
        }
        qFatal("no picture of %s", qPrintable(name));
    };
    const zoHPCRenderSetup::Picture front = pictureOf(QStringLiteral("Cave Front"));
    const zoHPCRenderSetup::Picture left = pictureOf(QStringLiteral("Cave Left"));
    QCOMPARE(front.host, QStringLiteral("b"));
    QCOMPARE(left.host, QStringLiteral("a"));
    QVERIFY(length(front.plane.lowerLeft - Point3{-1500, -1000, -1500}) < 0.01);
    QVERIFY(length(front.plane.lowerRight - Point3{1500, -1000, -1500}) < 0.01);
    QVERIFY(length(front.plane.upperLeft() - Point3{-1500, 1000, -1500}) < 0.01);
    QVERIFY(length(left.plane.lowerRight - front.plane.lowerLeft) < 0.01);
    QVERIFY(std::abs(left.plane.lowerLeft.x - (-1500.0 - 3000.0 * 0.17364817766693)) < 0.01);
    QVERIFY(!front.plane.turnsAwayFrom({0, 0, 0}) && !left.plane.turnsAwayFrom({0, 0, 0}));
    QVERIFY(front.plane.distanceInFront({0, 0, 0}) > 1499.0);
    QCOMPARE(zoCommandRun::zohpc({"check", wall}).exitCode, 0);
}

void tst_zohpcSurvey::windowsGoOnShowingTheirTiles()
{
    const zoCliFiles files;
    const QString wall = files.path(QStringLiteral("wall.zhpc"));
    zoCommandRun::zohpc({"new", "--wall", "3x2", "--size", "3000x2000", "--bezel", "10x20", "--tile",
                         "1920x1080", "--hosts", "n[1-6]", "-o", wall});
    const Rendered before(zoCliFiles::read(wall));

    const zoCommandRun run = zoCommandRun::zohpc(
        {"survey", "-", "--into", wall, "-o", wall},
        "wall Wall size 3000 x 2000 tiles 3x2 gap 10 x 20\nupright Wall\nfloor Wall.bottom 0\n"
        "viewer distance 1500 height 1 m\n");

    QCOMPARE(run.errors, QByteArray());
    const Rendered after(zoCliFiles::read(wall));
    QCOMPARE(after.setup->pictures().size(), std::size_t(6));
    for (std::size_t i = 0; i < 6; ++i) {
        const zoHPCRenderSetup::Picture& one = before.setup->pictures()[i];
        const zoHPCRenderSetup::Picture& other = after.setup->pictures()[i];
        QCOMPARE(other.host, one.host);
        QCOMPARE(other.projection, one.projection);
        const double shift = length(
            (other.plane.lowerLeft - one.plane.lowerLeft) -
            (after.setup->pictures()[0].plane.lowerLeft - before.setup->pictures()[0].plane.lowerLeft));
        QVERIFY2(shift < 0.01, qPrintable(QString::number(shift)));
        QVERIFY(std::abs(other.plane.width() - one.plane.width()) < 0.01);
    }
}

void tst_zohpcSurvey::takenNamesAreRefused()
{
    const zoCliFiles files;
    const QString wall = files.path(QStringLiteral("wall.zhpc"));
    zoCommandRun::zohpc({"new", "--cave", "3000x2000x3000", "--walls", "left,front", "--hosts", "a b",
                         "--name", "Cave", "-o", wall});
    QByteArray room = Front;
    room.replace("Front", "\"Cave Front\"").replace("\"Cave Front\".bottom", "\"Cave Front.bottom\"");

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-", "--into", wall, "-o", "-"}, room);

    QCOMPARE(run.whole(),
             "--- errors\n" + wall.toUtf8() +
                 ": \"Cave Front\" is a part of the projection \"Cave\", which stays because of \"Cave "
                 "Left\": measure that, too, or rename the wall\n--- exit code 2\n");
}

// Nobody measured the width, so that the gaps are seen to be wrong when it is known.
void tst_zohpcSurvey::gapsWiderThanTheWallAreRefused()
{
    const QByteArray room =
        "wall A tiles 3x1 gap 2000 x 0\nupright A\nfloor A.bottom 0\n"
        "viewer distance 2 m height 1 m\ndistance A.ll A.lr 3 m\ndistance A.ll A.ul 2 m\n";

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-", "-o", "-"}, room);

    QCOMPARE(run.whole(),
             QByteArray("--- errors\n-: the gaps of \"A\" leave nothing for its tiles: it is 3000.0 x "
                        "2000.0 mm\n--- exit code 2\n"));
}

void tst_zohpcSurvey::overlapOfWholeTilesIsRefused()
{
    const QByteArray room =
        "wall A tiles 2x1 gap -3001 x 0\nupright A\nfloor A.bottom 0\n"
        "viewer distance 2 m height 1 m\ndistance A.ll A.lr 3 m\ndistance A.ll A.ul 2 m\n";

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-", "-o", "-"}, room);

    QCOMPARE(
        run.whole(),
        QByteArray("--- errors\n-: the tiles of \"A\" overlap by more than their own size: it is 3000.0 x "
                   "2000.0 mm\n--- exit code 2\n"));
}

void tst_zohpcSurvey::wrongUsageIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");

    QTest::newRow("no-file") << QStringList{} << QByteArray("no file given");
    QTest::newRow("two-files") << QStringList{"a", "b"} << QByteArray("one file at a time");
    QTest::newRow("limit") << QStringList{"-", "--limit", "0"}
                           << QByteArray("--limit: \"0\" is no number of millimetres above 0");
    QTest::newRow("into") << QStringList{"-", "--into", "a.zhpc"} << QByteArray("--into needs --output");
}

void tst_zohpcSurvey::wrongUsageIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, error);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"survey"} + arguments, Front);

    QCOMPARE(run.whole(),
             "--- errors\nzohpc survey: " + error + "\nTry 'zohpc survey --help'.\n--- exit code 2\n");
}

void tst_zohpcSurvey::inputIsNotOverwritten()
{
    const zoCliFiles files;
    const QString room = files.write(QStringLiteral("room.txt"), Front);

    const zoCommandRun run = zoCommandRun::zohpc({"survey", room, "-o", room});

    QCOMPARE(run.exitCode, 2);
    QCOMPARE(zoCliFiles::read(room), QByteArray(Front));
}

void tst_zohpcSurvey::textAfterANulIsNotDropped()
{
    const QByteArray cut = QByteArray(Front) + QByteArray(1, '\0') + "distance Front.bl Front.br 3000\n";

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-"}, cut);

    QCOMPARE(run.exitCode, 2);
    QCOMPARE(run.output, QByteArray());
    QVERIFY2(run.errors.startsWith("-:5:1: a NUL byte"), run.errors.constData());
}

void tst_zohpcSurvey::lossesOfTheConfigurationAreToldBefore()
{
    const QTemporaryDir folder;
    const QString wall = folder.filePath(QStringLiteral("wall.zhpc"));
    const QByteArray text =
        QByteArray("<cluster version=\"1\">\n<!-- call Bob -->\n<projection name=\"Front\" "
                   "type=\"plane\"/>\n<display/></cluster>\n");
    QFile file(wall);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    const QString other = folder.filePath(QStringLiteral("other.zhpc"));

    const zoCommandRun refused = zoCommandRun::zohpc({"survey", "-", "--into", wall, "-o", wall}, Front);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray left = file.readAll();
    file.close();
    const zoCommandRun copied = zoCommandRun::zohpc({"survey", "-", "--into", wall, "-o", other}, Front);
    const zoCommandRun forced =
        zoCommandRun::zohpc({"survey", "-", "--into", wall, "-o", wall, "--force"}, Front);

    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.errors.contains("wall.zhpc:2:1: "), refused.errors.constData());
    QVERIFY(refused.errors.contains("--force does it all the same"));
    QCOMPARE(left, text);
    QCOMPARE(copied.exitCode, 0);
    QVERIFY(copied.errors.contains("wall.zhpc:2:1: "));
    QVERIFY(QFile::exists(other));
    QCOMPARE(forced.exitCode, 0);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!file.readAll().contains("Bob"));
}

void tst_zohpcSurvey::configurationWithoutThePlanesIsTold()
{
    const QTemporaryDir folder;
    const QString output = folder.filePath(QStringLiteral("out.zhpc"));

    const zoCommandRun run = zoCommandRun::zohpc(
        {"survey", "-", "--into", ZO_DATA_DIR "/cluster/cave-4-sided.zhpc", "-o", output}, Front);

    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.errors.contains("no projection there has the name of a measured plane"),
             run.errors.constData());
}

void tst_zohpcSurvey::hostileFilesEnd_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("exitCode");

    constexpr int Size = 1024 * 1024;
    QTest::newRow("nothing") << QByteArray() << 2;
    QTest::newRow("zeros") << QByteArray(Size, '\0') << 2;
    QTest::newRow("letters") << QByteArray(Size, 'x') << 2;
    QTest::newRow("points") << "wall A size 1 x 1\n" + QByteArray("point P 1 2 3\n").repeated(20000) << 1;
    QByteArray walls;
    for (int i = 0; i < 2000; ++i)
        walls += "wall W" + QByteArray::number(i) + " size 1 x 1\n";
    QTest::newRow("loose-walls") << walls << 1;
    QTest::newRow("one-distance") << QByteArray(Front) +
                                         QByteArray("distance Front.ll Front.ur 3605\n").repeated(15000)
                                  << 0;
}

void tst_zohpcSurvey::hostileFilesEnd()
{
    QFETCH(QByteArray, text);
    QFETCH(int, exitCode);

    const zoCommandRun run = zoCommandRun::zohpc({"survey", "-"}, text);

    QCOMPARE(run.exitCode, exitCode);
    QVERIFY(run.errors.size() < 10000);
}

ZO_TEST_MAIN(tst_zohpcSurvey)
#include "tst_zohpcSurvey.moc"
