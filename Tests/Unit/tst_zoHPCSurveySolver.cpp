#include "zoRandomRoom.h"
#include "zoTestCase.h"

#include <zoHPCSurveyReader.h>
#include <zoHPCSurveySolver.h>

#include <QApplication>

#include <algorithm>

Q_DECLARE_METATYPE(zoHPCPlane)

// Planes from measurements, against rooms that are known.
class tst_zoHPCSurveySolver final : public zoTestCase
{
    Q_OBJECT

private slots:
    void exactMeasurementsGiveTheRoom();
    void errorsStayWithinTheory();
    void mistakeIsTheWorstFit();
    void originIsTheViewer();
    void joinedWallsShareTheEdge_data();
    void joinedWallsShareTheEdge();
    void angleIsThatBetweenThePictures_data();
    void angleIsThatBetweenThePictures();
    void caveHasItsCorners();
    void whatIsOpenIsNamed_data();
    void whatIsOpenIsNamed();
    void uncheckedMeasurementHasNoRedundancy();
    void contradictionIsSharedByTolerances();
    void pointListNeedsNoTape();
    void thousandsOfMeasurementsAreSolved();
    void sameInputGivesTheSameBytes();

private:
    static zoHPCSurvey read(const QString& text);
    static zoHPCSurveySolution solve(const QString& text) { return zoHPCSurveySolver::solve(read(text)); }
};

namespace
{
double distance(const zoHPCPlane& one, const zoHPCPlane& other)
{
    return std::max({length(one.lowerLeft - other.lowerLeft), length(one.lowerRight - other.lowerRight),
                     length(one.upperRight - other.upperRight)});
}

// A wall that everything is known of but what the test is about.
const char* const Front = "wall Front size 3000 x 2000\nupright Front\nfloor Front.bottom 500\n"
                          "viewer distance 1500 height 1500\n";
} // namespace

zoHPCSurvey tst_zoHPCSurveySolver::read(const QString& text)
{
    zoHPCSurveyReader reader({});
    if (!reader.read(text))
        qFatal("line %d: %s", reader.mistakes().front().line, qPrintable(reader.mistakes().front().text));
    return reader.survey();
}

void tst_zoHPCSurveySolver::exactMeasurementsGiveTheRoom()
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        const zoRandomRoom room(seed, 0.0);

        const zoHPCSurveySolution solution = solve(room.text());

        QVERIFY2(solution.isDetermined(),
                 qPrintable(QString::number(seed) + solution.undetermined.join("; ")));
        for (std::size_t i = 0; i < room.walls().size(); ++i) {
            const double error = distance(solution.planes[i], room.plane(i));
            QVERIFY2(error < 1e-6, qPrintable(QStringLiteral("room %1: %2 is %3 mm off")
                                                  .arg(seed)
                                                  .arg(room.walls()[i].name)
                                                  .arg(error)));
        }
    }
}

// Weighted squares of residuals sum up to chi-square with as many degrees as there are spare numbers; the covariance
// tells how far off a corner may be.
void tst_zoHPCSurveySolver::errorsStayWithinTheory()
{
    constexpr unsigned Rooms = 1000;
    double squares = 0.0;
    int degrees = 0;
    double relativeSquares = 0.0;
    int corners = 0;
    for (unsigned seed = 0; seed < Rooms; ++seed) {
        const zoRandomRoom room(seed, 1.0);

        const zoHPCSurveySolution solution = solve(room.text());

        QVERIFY2(solution.isDetermined(),
                 qPrintable(QString::number(seed) + solution.undetermined.join("; ")));
        QVERIFY2(solution.hasConverged, qPrintable(QString::number(seed)));
        squares += solution.fit * solution.fit * solution.redundancy;
        degrees += solution.redundancy;
        for (std::size_t i = 0; i < room.walls().size(); ++i) {
            // The viewer is measured, too, and moves all of them.
            const double bound = 6.0 * (solution.deviations[i] + 3.0 * zoRandomRoom::Tape);
            const double error = distance(solution.planes[i], room.plane(i));
            QVERIFY2(error < bound, qPrintable(QStringLiteral("room %1: %2 is %3 mm off, %4 at most")
                                                   .arg(seed)
                                                   .arg(room.walls()[i].name)
                                                   .arg(error)
                                                   .arg(bound)));
            const double width = solution.planes[i].width() - room.walls()[i].width;
            relativeSquares += width * width / (zoRandomRoom::Tape * zoRandomRoom::Tape);
            ++corners;
        }
    }
    // Five standard deviations of chi-square.
    QVERIFY2(std::abs(squares - degrees) < 5.0 * std::sqrt(2.0 * degrees),
             qPrintable(QStringLiteral("%1 for %2 degrees").arg(squares).arg(degrees)));
    // The other measurements make widths better than the tape does.
    QVERIFY2(relativeSquares < 0.8 * corners, qPrintable(QString::number(relativeSquares / corners)));
}

void tst_zoHPCSurveySolver::mistakeIsTheWorstFit()
{
    constexpr double Mistake = 50.0; // mm
    int tried = 0;
    int named = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        const zoRandomRoom room(seed, 0.25);
        zoHPCSurvey survey = read(room.text());
        const zoHPCSurveySolution good = zoHPCSurveySolver::solve(survey);
        const std::size_t index = (seed * 7919) % survey.measurements.size();
        // Where others check it well enough to tell.
        if (survey.measurements[index].kind != zoHPCSurvey::Kind::Distance ||
            good.residuals[index].redundancy < 0.25)
            continue;
        ++tried;
        survey.measurements[index].value += Mistake;

        const zoHPCSurveySolution solution = zoHPCSurveySolver::solve(survey);

        QVERIFY(!good.hasMistake());
        QVERIFY(solution.hasMistake());
        // Or one of those that nothing can tell from it.
        const bool isRival =
            std::find(solution.rivals.begin(), solution.rivals.end(), int(index)) != solution.rivals.end();
        named += solution.worst == int(index) ? 1 : 0;
        QVERIFY2(solution.worst == int(index) || isRival,
                 qPrintable(QStringLiteral("room %1: %4 (%2) instead of %5 (%3)")
                                .arg(seed)
                                .arg(solution.residuals[std::size_t(solution.worst)].standardized)
                                .arg(solution.residuals[index].standardized)
                                .arg(survey.measurements[std::size_t(solution.worst)].text,
                                     survey.measurements[index].text)));
        QVERIFY(std::abs(solution.residuals[index].mistake - Mistake) < 10.0);
    }
    QVERIFY2(tried > 50, qPrintable(QString::number(tried)));
    QVERIFY2(named > 0.8 * tried, qPrintable(QStringLiteral("%1 of %2").arg(named).arg(tried)));
}

void tst_zoHPCSurveySolver::originIsTheViewer()
{
    const zoHPCSurveySolution solution = solve(QLatin1String(Front));

    QVERIFY(solution.isDetermined());
    const zoHPCPlane expected{{-1500, -1000, -1500}, {1500, -1000, -1500}, {1500, 1000, -1500}};
    QVERIFY(distance(solution.planes[0], expected) < 1e-6);
    QVERIFY(std::abs(solution.floor + 1500.0) < 1e-6);
}

void tst_zoHPCSurveySolver::joinedWallsShareTheEdge_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<zoHPCPlane>("plane");

    // As the walls of a cave of 3000 x 2000 x 2500 mm have their corners.
    QTest::newRow("left") << "wall B size 2500 x 2000\njoin Front.left B.right\nangle Front B 90"
                          << zoHPCPlane{{-1500, -1000, 1000}, {-1500, -1000, -1500}, {-1500, 1000, -1500}};
    QTest::newRow("right") << "wall B size 2500 x 2000\njoin Front.right B.left\nangle Front B 90"
                           << zoHPCPlane{{1500, -1000, -1500}, {1500, -1000, 1000}, {1500, 1000, 1000}};
    QTest::newRow("bottom") << "wall B size 3000 x 2500\njoin Front.bottom B.top\nangle Front B 90"
                            << zoHPCPlane{{-1500, -1000, 1000}, {1500, -1000, 1000}, {1500, -1000, -1500}};
    QTest::newRow("top") << "wall B size 3000 x 2500\njoin Front.top B.bottom\nangle Front B 90"
                         << zoHPCPlane{{-1500, 1000, -1500}, {1500, 1000, -1500}, {1500, 1000, 1000}};
    QTest::newRow("straight-on") << "wall B size 3000 x 2000\njoin Front.right B.left\nangle Front B 180"
                                 << zoHPCPlane{
                                        {1500, -1000, -1500}, {4500, -1000, -1500}, {4500, 1000, -1500}};
    QTest::newRow("away") << "wall B size 1000 x 2000\njoin Front.right B.left\nangle Front B 270"
                          << zoHPCPlane{{1500, -1000, -1500}, {1500, -1000, -2500}, {1500, 1000, -2500}};
    QTest::newRow("floor-turned") << "wall B size 2500 x 3000\njoin Front.bottom B.left\nangle Front B 90"
                                  << zoHPCPlane{
                                         {-1500, -1000, -1500}, {-1500, -1000, 1000}, {1500, -1000, 1000}};
}

void tst_zoHPCSurveySolver::joinedWallsShareTheEdge()
{
    QFETCH(QString, lines);
    QFETCH(zoHPCPlane, plane);

    const zoHPCSurveySolution solution = solve(QLatin1String(Front) + lines);

    QVERIFY2(solution.isDetermined(), qPrintable(solution.undetermined.join("; ")));
    QVERIFY2(distance(solution.planes[1], plane) < 1e-6,
             qPrintable(QString::number(distance(solution.planes[1], plane))));
}

void tst_zoHPCSurveySolver::angleIsThatBetweenThePictures_data()
{
    QTest::addColumn<double>("angle");

    for (const double angle :
         {60.0, 90.0, 120.0, 169.0, 170.0, 171.0, 179.0, 180.0, 181.0, 190.0, 191.0, 240.0})
        QTest::newRow(qPrintable(QString::number(angle))) << angle;
}

void tst_zoHPCSurveySolver::angleIsThatBetweenThePictures()
{
    QFETCH(double, angle);

    const zoHPCSurveySolution solution = solve(
        QLatin1String(Front) +
        QStringLiteral("wall B size 1000 x 2000\njoin Front.right B.left\nangle Front B %1").arg(angle));

    const double bend = (180.0 - angle) * 3.14159265358979323846 / 180.0;
    const Point3 end{1500.0 + 1000.0 * std::cos(bend), -1000.0, -1500.0 + 1000.0 * std::sin(bend)};
    QVERIFY2(length(solution.planes[1].lowerRight - end) < 1e-5,
             qPrintable(QString::number(length(solution.planes[1].lowerRight - end))));
}

void tst_zoHPCSurveySolver::caveHasItsCorners()
{
    const zoHPCSurveySolution solution = solve(QStringLiteral(
        "wall Front size 3 m x 2.4 m\nwall Left size 3 m x 2.4 m\nwall Right size 3 m x 2.4 m\n"
        "wall Floor size 3 m x 3 m\njoin Front.left Left.right\njoin Front.right Right.left\n"
        "join Front.bottom Floor.top\njoin Left.bottom Floor.left\njoin Right.bottom Floor.right\n"
        "upright Front Left Right\nflat Floor\nfloor Floor.center 0\n"
        "viewer distance 1.5 m height 1.2 m\n"));

    QVERIFY2(solution.isDetermined(), qPrintable(solution.undetermined.join("; ")));
    QVERIFY(distance(solution.planes[1],
                     {{-1500, -1200, 1500}, {-1500, -1200, -1500}, {-1500, 1200, -1500}}) < 1e-6);
    QVERIFY(distance(solution.planes[2], {{1500, -1200, -1500}, {1500, -1200, 1500}, {1500, 1200, 1500}}) <
            1e-6);
    QVERIFY(distance(solution.planes[3], {{-1500, -1200, 1500}, {1500, -1200, 1500}, {1500, -1200, -1500}}) <
            1e-6);
    QVERIFY(solution.fit < 1e-6);
    QCOMPARE(solution.worst, -1);
}

void tst_zoHPCSurveySolver::whatIsOpenIsNamed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    const QString wall = QStringLiteral("wall Front size 3000 x 2000\n");
    QTest::newRow("tilt") << wall + "floor Front.bottom 500\nviewer distance 1500"
                          << "How the room is tilted is not determined: add a line such as \"upright Front\"";
    QTest::newRow("height") << wall + "upright Front\nviewer distance 1500 height 1500"
                            << "How high the room is above the floor is not determined: add a line such as "
                               "\"floor Front.bottom 800\"";
    QTest::newRow("viewer")
        << wall + "upright Front\nfloor Front.bottom 500"
        << "Where the viewer is is not determined: add a line such as \"viewer distance 2500 "
           "height 1700\"";
    QTest::newRow("size")
        << "wall Front\nupright Front\nfloor Front.bottom 500\nviewer distance 1500"
        << "Wall \"Front\": its width, its height is not determined; 2 more measurements are "
           "needed, such as \"wall Front size 3600 x 2000\"";
    QTest::newRow("wall")
        << QLatin1String(Front) + "wall Left size 1000 x 2000"
        << "Wall \"Left\": where it is, which way it faces is not determined; 6 more measurements "
           "are needed, such as \"distance Left.ur Front.ll 3200\"";
    QTest::newRow("hinge")
        << QLatin1String(Front) + "wall Left size 1000 x 2000\njoin Front.left Left.right"
        << "Wall \"Left\": where it is, which way it faces is not determined; one more measurement "
           "is needed, such as \"distance Left.ur Front.ll 3200\"";
    QTest::newRow("point")
        << QLatin1String(Front) + "point P\ndistance P Front.ll 1000"
        << "Where the point \"P\" is is not determined: add a line such as \"distance P Front.ll "
           "3200\"";
    // Beside such weights whatever holds loose ends is rounded away.
    QTest::newRow("tied-tightly")
        << QLatin1String(Front) + "point P\npoint Q\njoin P Q +-0.0001"
        << "Where the point \"P\" is is not determined: add a line such as \"distance P Front.ll 3200\"\n"
           "Where the point \"Q\" is is not determined: add a line such as \"distance Q Front.ll 3200\"";
}

void tst_zoHPCSurveySolver::whatIsOpenIsNamed()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);

    QCOMPARE(solve(text).undetermined.join(QLatin1Char('\n')), expected);
}

void tst_zoHPCSurveySolver::uncheckedMeasurementHasNoRedundancy()
{
    const zoHPCSurvey survey = read(QLatin1String(Front) + "distance Front.ll Front.ur 3605.6");

    const zoHPCSurveySolution solution = zoHPCSurveySolver::solve(survey);

    QCOMPARE(solution.redundancy, 1);
    double sum = 0.0;
    for (std::size_t i = 0; i < survey.measurements.size(); ++i) {
        sum += solution.residuals[i].redundancy * zoHPCSurvey::equationCount(survey.measurements[i].kind);
        if (survey.measurements[i].kind == zoHPCSurvey::Kind::Floor)
            QVERIFY(solution.residuals[i].redundancy < 1e-6);
    }
    // Width, height and diagonal share it.
    QVERIFY(std::abs(sum - 1.0) < 1e-5);
    QVERIFY(solution.residuals.back().redundancy > 0.3);
    // Any of the three may be it.
    QCOMPARE(solution.rivals.size(), std::size_t(2));
}

void tst_zoHPCSurveySolver::contradictionIsSharedByTolerances()
{
    const zoHPCSurveySolution solution = solve(QLatin1String(Front) + "floor Front.bottom 530 ± 4\n");

    // 500 ± 2 and 530 ± 4: weights 4 and 1. The viewer stands 1500 above the floor.
    QVERIFY(std::abs(solution.planes[0].lowerLeft.y - (506.0 - 1500.0)) < 1e-6);
}

void tst_zoHPCSurveySolver::pointListNeedsNoTape()
{
    zoHPCSurveyReader reader([](const QString& name, QString& text, QString&) {
        // Seen from the north-east, in metres.
        text = QStringLiteral("101;110.0;50.0;10.5\n102;110.0;53.0;10.5\n103;110.0;53.0;12.5\nX;0;0;0\n");
        return name == QLatin1String("list.csv");
    });
    QVERIFY(reader.read(
        QStringLiteral("wall Front\npoints list.csv unit m\nmark 101 Front.lr\nmark 102 Front.ll\n"
                       "mark 103 Front.ul\nfloor Front.ll 500\nviewer distance 1500 height 1500")));

    const zoHPCSurveySolution solution = zoHPCSurveySolver::solve(reader.survey());

    QCOMPARE(reader.survey().unusedPoints, QStringList{QStringLiteral("X")});
    QVERIFY2(solution.isDetermined(), qPrintable(solution.undetermined.join("; ")));
    QVERIFY(distance(solution.planes[0], {{-1500, -1000, -1500}, {1500, -1000, -1500}, {1500, 1000, -1500}}) <
            1e-6);
}

void tst_zoHPCSurveySolver::thousandsOfMeasurementsAreSolved()
{
    // A round of tiles, each joined to the one before, with heights and corners by a total station.
    QString text = QLatin1String(Front);
    constexpr int Tiles = 500;
    double x = 1500.0;
    double z = 0.0;
    for (int i = 0; i < Tiles; ++i) {
        const QString name = QStringLiteral("T%1").arg(i);
        const QString before = i == 0 ? QStringLiteral("Front") : QStringLiteral("T%1").arg(i - 1);
        text += QStringLiteral("wall %1 size 500 x 2000\nupright %1\n").arg(name);
        text += QStringLiteral("join %1.right %2.left\nangle %1 %2 179.5\n").arg(before, name);
        for (int k = 0; k < 12; ++k)
            text += QStringLiteral("floor %1.%2 %3\n")
                        .arg(name, k % 2 ? "top" : "bottom")
                        .arg(k % 2 ? 2500 : 500);
        const double bend = (i + 1) * 0.5 * 3.14159265358979323846 / 180.0;
        const double east = x + 500.0 * std::cos(bend);
        const double north = z + 500.0 * std::sin(bend);
        for (int k = 0; k < 2; ++k)
            text += QStringLiteral("point %1.%2 %3 %4 %5\n")
                        .arg(name, k == 0 ? "ll" : "ur")
                        .arg(k == 0 ? x : east, 0, 'f', 6)
                        .arg(k == 0 ? -z : -north, 0, 'f', 6)
                        .arg(k == 0 ? 500 : 2500);
        x = east;
        z = north;
    }
    const zoHPCSurvey survey = read(text);
    QVERIFY(survey.measurements.size() >= 10000);

    const zoHPCSurveySolution solution = zoHPCSurveySolver::solve(survey);

    QVERIFY2(solution.isDetermined(), qPrintable(solution.undetermined.join("; ")));
    QVERIFY(solution.fit < 0.01);
}

void tst_zoHPCSurveySolver::sameInputGivesTheSameBytes()
{
    const QString text = zoRandomRoom(5, 1.0).text();

    const zoHPCSurveySolution one = solve(text);
    const zoHPCSurveySolution other = solve(text);

    for (std::size_t i = 0; i < one.planes.size(); ++i)
        QCOMPARE(distance(one.planes[i], other.planes[i]), 0.0);
}

ZO_TEST_MAIN(tst_zoHPCSurveySolver)
#include "tst_zoHPCSurveySolver.moc"
