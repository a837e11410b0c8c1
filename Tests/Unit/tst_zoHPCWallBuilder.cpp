#include "zoRandomWall.h"
#include "zoTestCase.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentProblems.h>
#include <zoHPCDocumentText.h>
#include <zoHPCRenderSetup.h>
#include <zoHPCTextCheck.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWallBuilder.h>
#include <zoHPCWallMistakes.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QDomDocument>
#include <QTest>

#include <cmath>
#include <map>
#include <set>

Q_DECLARE_METATYPE(zoHPCWallPlan)

namespace
{
using Plan = zoHPCWallPlan;
using Field = Plan::Field;
using Picture = zoHPCRenderSetup::Picture;

// What a plan became, as it is read and rendered.
class Built
{
public:
    explicit Built(const Plan& plan, const QString& text) : m_plan(plan), m_check(text)
    {
        QDomDocument document;
        zoHPCDocumentText::parse(text, document);
        m_check.mend(document);
        m_configuration.read(document);
        m_setup =
            std::make_unique<zoHPCRenderSetup>(m_configuration.displays(), m_configuration.hosts().master(),
                                               plan.pixelPitch > 0.0 ? plan.pixelPitch : 1.0);
    }

    // All that "zohpc check" tells, one below the other.
    QString problems()
    {
        QString texts;
        for (const zoHPCDocumentProblems::Problem& problem : zoHPCDocumentProblems::find(
                 m_check, m_configuration.displays(), m_configuration.hosts().master()))
            texts += problem.message + QLatin1Char('\n');
        return texts;
    }

    const std::vector<Picture>& pictures() const { return m_setup->pictures(); }
    QString text() const { return m_configuration.text(); }

    std::vector<const Picture*> seenBy(unsigned eye) const
    {
        std::vector<const Picture*> seen;
        for (const Picture& picture : pictures()) {
            if ((zoHPCLayout::eyesOf(picture.eye) & eye) != 0)
                seen.push_back(&picture);
        }
        return seen;
    }

private:
    Plan m_plan;
    zoHPCTextCheck m_check;
    zoHPCConfiguration m_configuration;
    std::unique_ptr<zoHPCRenderSetup> m_setup;
};

// Parts of a row or column of tiles in pixels: where they begin and end.
std::vector<std::pair<double, double>> parts(int count, double size, double shared)
{
    std::vector<std::pair<double, double>> result;
    for (int i = 0; i < count; ++i)
        result.emplace_back(i * (size - shared), i * (size - shared) + size);
    return result;
}

// Of a linear blend at a pixel.
double weight(double pixel, double begin, double end, double first, double last)
{
    double result = 1.0;
    if (first > 0.0)
        result *= std::min(1.0, (pixel - begin) / first);
    if (last > 0.0)
        result *= std::min(1.0, (end - pixel) / last);
    return result;
}

// In the middle of what borders cut out of a row of tiles.
std::vector<double> samples(const std::vector<std::pair<double, double>>& tiles)
{
    std::set<double> borders;
    for (const auto& [begin, end] : tiles)
        borders.insert({begin, end});
    std::vector<double> result;
    for (auto it = borders.begin(); std::next(it) != borders.end(); ++it)
        result.push_back((*it + *std::next(it)) / 2);
    return result;
}

bool covers(const std::pair<double, double>& part, double pixel)
{
    return part.first < pixel && pixel < part.second;
}

// Each pixel of one wall has exactly the tiles that share it, and their light adds up to one; "" when that holds.
QString unlikeLight(const Plan& plan, const std::vector<const Picture*>& pictures)
{
    const Plan::Overlap shared = plan.overlapPixels();
    const auto columns = parts(plan.columns, plan.tilePixels.width(), std::round(shared.across));
    const auto rows = parts(plan.rows, plan.tilePixels.height(), std::round(shared.down));
    const double width = columns.back().second;
    const double height = rows.back().second;
    const bool isBlended = std::round(shared.across) > 0.0 || std::round(shared.down) > 0.0;
    for (const double y : samples(rows)) {
        for (const double x : samples(columns)) {
            int expected = 0;
            for (const auto& row : rows) {
                for (const auto& column : columns)
                    expected += covers(row, y) && covers(column, x) ? 1 : 0;
            }
            int count = 0;
            double light = 0.0;
            for (const Picture* picture : pictures) {
                const QRectF& part = picture->part;
                const double left = part.left() * width;
                const double right = part.right() * width;
                const double top = (1.0 - part.bottom()) * height; // counts upward
                const double bottom = (1.0 - part.top()) * height;
                if (x < left || x > right || y < top || y > bottom)
                    continue;
                ++count;
                light += weight(x, left, right, picture->edges.left, picture->edges.right) *
                         weight(y, top, bottom, picture->edges.top, picture->edges.bottom);
            }
            const bool isLit = !isBlended || expected == 0 || std::abs(light - 1.0) < 1e-3;
            if (count != expected || !isLit)
                return QStringLiteral("pixel %1,%2: %3 tiles of %4, light %5")
                    .arg(x)
                    .arg(y)
                    .arg(count)
                    .arg(expected)
                    .arg(light);
        }
    }
    return {};
}

// "" when every tile has one picture of all its pixels.
QString unlikeTiles(const Plan& plan, const std::vector<const Picture*>& pictures)
{
    std::map<QString, int> counts;
    for (const Picture* picture : pictures) {
        ++counts[picture->projection];
        if (picture->geometry.size() != plan.tilePixels)
            return picture->projection + QStringLiteral(" has not its pixels");
    }
    if (int(counts.size()) != plan.tileCount())
        return QStringLiteral("%1 tiles of %2").arg(counts.size()).arg(plan.tileCount());
    for (const auto& [name, count] : counts) {
        if (count != 1)
            return QStringLiteral("%1 is shown %2 times").arg(name).arg(count);
    }
    return {};
}

// "" when planes that are tiles of a wall fade into those neighbours that they have.
QString unlikeEdges(const Plan& plan, const std::vector<Picture>& pictures)
{
    const double across = std::max(0.0, plan.overlapPixels().across);
    const double down = std::max(0.0, plan.overlapPixels().down);
    for (const Picture& picture : pictures) {
        const QStringList place =
            picture.projection.section(QLatin1String("row:"), 1).split(QLatin1String(" col:"));
        const int row = place.value(0).toInt();
        const int column = place.value(1).toInt();
        const zoHPCRenderSetup::Edges& edges = picture.edges;
        const bool areRight = std::abs(edges.left - (column > 1 ? across : 0.0)) < 1e-6 &&
                              std::abs(edges.right - (column < plan.columns ? across : 0.0)) < 1e-6 &&
                              std::abs(edges.top - (row > 1 ? down : 0.0)) < 1e-6 &&
                              std::abs(edges.bottom - (row < plan.rows ? down : 0.0)) < 1e-6;
        if (!areRight)
            return picture.projection + QStringLiteral(" fades elsewhere");
    }
    return {};
}

// "" when no two windows share a screen and the nodes have what the plan wants for the eyes.
QString unlikeNodes(const Plan& plan, const std::vector<Picture>& pictures)
{
    std::set<std::pair<QString, int>> screens;
    std::map<QString, int> perHost;
    std::map<QString, std::set<QString>> eyes;                 // by host
    std::map<QString, std::map<QString, QString>> hostsOfTile; // by tile and eye
    for (const Picture& picture : pictures) {
        if (!screens.insert({picture.host, picture.screen}).second)
            return QStringLiteral("two windows on %1").arg(picture.host);
        if (!picture.isFullScreen || picture.screen < 0 || picture.screen > 15)
            return QStringLiteral("no screen");
        ++perHost[picture.host];
        eyes[picture.host].insert(picture.eye);
        hostsOfTile[picture.projection][picture.eye] = picture.host;
    }
    for (const auto& [host, count] : perHost) {
        if (plan.windowsPerNode > 0 && count > plan.windowsPerNode)
            return QStringLiteral("%1 windows on %2").arg(count).arg(host);
        if (host == QLatin1String("head") || host == QLatin1String("gate"))
            return QStringLiteral("a window on %1").arg(host);
    }
    if (plan.stereo != Plan::Stereo::LeftRight)
        return {};
    const bool isOneEye =
        plan.eyeOrder == Plan::EyeOrder::OwnNodes || plan.eyeOrder == Plan::EyeOrder::LeftNodesFirst;
    for (const auto& [host, shown] : eyes) {
        if (isOneEye && shown.size() != 1)
            return QStringLiteral("%1 shows both eyes").arg(host);
    }
    for (const auto& [tile, hosts] : hostsOfTile) {
        if (plan.eyeOrder == Plan::EyeOrder::SameNode &&
            hosts.at(QStringLiteral("left")) != hosts.at(QStringLiteral("right")))
            return QStringLiteral("%1 is on two nodes").arg(tile);
    }
    return {};
}

// What windows show and where: "node screen projection eye".
QStringList windows(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    QStringList result;
    const QDomNodeList list = document.elementsByTagName(QStringLiteral("window"));
    for (int i = 0; i < list.count(); ++i) {
        const QDomElement window = list.at(i).toElement();
        const QDomElement viewport = window.firstChildElement(QStringLiteral("viewport"));
        result << QStringList{window.attribute("node"), window.attribute("screen"),
                              viewport.attribute("projection"), viewport.attribute("eye")}
                      .join(QLatin1Char(' '));
    }
    return result;
}

Plan stereoWall(int columns, Plan::EyeOrder order, int windowsPerNode, const QString& hosts)
{
    Plan plan;
    plan.columns = columns;
    plan.rows = 1;
    plan.name = QStringLiteral("W");
    plan.stereo = Plan::Stereo::LeftRight;
    plan.eyeOrder = order;
    plan.windowsPerNode = windowsPerNode;
    plan.hosts = hosts;
    return plan;
}

Plan changed(Plan plan, const std::function<void(Plan&)>& change)
{
    change(plan);
    return plan;
}
} // namespace

// Plans of walls become configurations, or mistakes.
class tst_zoHPCWallBuilder final : public zoTestCase
{
    Q_OBJECT

private slots:
    void plansOfAllKindsHaveNoProblemAndLightEachPixelOnce_data();
    void plansOfAllKindsHaveNoProblemAndLightEachPixelOnce();
    void defaultsOfEachKindAreWalls_data();
    void defaultsOfEachKindAreWalls();
    void eyesGoToTheirNodes_data();
    void eyesGoToTheirNodes();
    void powerWallBesideItsMiddleIsMadeOfPlanes();
    void freePlanesStandWhereTheyAreTurned();
    void tooManyWindowsAreRefused_data();
    void tooManyWindowsAreRefused();
    void mistakesAreToldAtTheirField_data();
    void mistakesAreToldAtTheirField();
    void likelyMistakesAreWarnings();
    void doubtsAreWarnings_data();
    void doubtsAreWarnings();
    void unevenWindowsAreSpread_data();
    void unevenWindowsAreSpread();
    void hostsAreCounted_data();
    void hostsAreCounted();
    void sketchNeedsNoHosts();
};

void tst_zoHPCWallBuilder::plansOfAllKindsHaveNoProblemAndLightEachPixelOnce_data()
{
    QTest::addColumn<quint32>("first");

    for (quint32 first = 0; first < 500; first += 100)
        QTest::addRow("plans-from-%u", first) << first;
}

void tst_zoHPCWallBuilder::plansOfAllKindsHaveNoProblemAndLightEachPixelOnce()
{
    QFETCH(quint32, first);

    for (quint32 seed = first; seed < first + 100; ++seed) {
        const Plan plan = zoRandomWall(seed).plan();
        const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);
        const QByteArray which = QByteArray::number(seed) + ": ";
        QVERIFY2(result.isGood(),
                 which + (result.isGood() ? QByteArray() : result.mistakes.front().text.toUtf8()));
        QVERIFY2(result.warnings.empty(),
                 which + (result.warnings.empty() ? QByteArray() : result.warnings.front().text.toUtf8()));

        Built built(plan, result.text);
        QVERIFY2(built.problems().isEmpty(), which + built.problems().toUtf8());
        QVERIFY2(built.text() == result.text, which + "another text when it is saved");
        QVERIFY2(int(built.pictures().size()) == plan.windowCount(), which + "windows are left out");
        const QString nodes = unlikeNodes(plan, built.pictures());
        QVERIFY2(nodes.isEmpty(), which + nodes.toUtf8());
        const bool arePlanes =
            plan.kind == Plan::Kind::Curved || (plan.kind == Plan::Kind::Power && plan.viewer.x != 0.0);
        const QString edges = arePlanes ? unlikeEdges(plan, built.pictures()) : QString();
        QVERIFY2(edges.isEmpty(), which + edges.toUtf8());
        for (const unsigned eye : {zoHPCLayout::LeftEye, zoHPCLayout::RightEye}) {
            const QString tiles = unlikeTiles(plan, built.seenBy(eye));
            QVERIFY2(tiles.isEmpty(), which + tiles.toUtf8());
            const bool isOnePlane =
                plan.kind == Plan::Kind::Tiled || (plan.kind == Plan::Kind::Power && plan.viewer.x == 0.0);
            const QString light = isOnePlane ? unlikeLight(plan, built.seenBy(eye)) : QString();
            QVERIFY2(light.isEmpty(), which + light.toUtf8());
        }
    }
}

void tst_zoHPCWallBuilder::defaultsOfEachKindAreWalls_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("windows");

    QTest::newRow("tiled") << int(Plan::Kind::Tiled) << 6;
    QTest::newRow("power") << int(Plan::Kind::Power) << 6;
    QTest::newRow("cave") << int(Plan::Kind::Cave) << 4;
    QTest::newRow("curved") << int(Plan::Kind::Curved) << 24;
    QTest::newRow("planes") << int(Plan::Kind::Planes) << 3;
}

void tst_zoHPCWallBuilder::defaultsOfEachKindAreWalls()
{
    QFETCH(int, kind);
    QFETCH(int, windows);

    Plan plan = Plan::of(Plan::Kind(kind));
    plan.hosts = QStringLiteral("n[1-%1]").arg(plan.nodesNeeded());
    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);

    QVERIFY(result.isGood());
    QVERIFY(result.warnings.empty());
    QCOMPARE(plan.windowCount(), windows);
    QCOMPARE(::windows(result.text).size(), windows);
}

void tst_zoHPCWallBuilder::eyesGoToTheirNodes_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<QStringList>("expected");

    using Order = Plan::EyeOrder;
    QTest::newRow("alternating-on-nodes-of-their-own")
        << stereoWall(2, Order::Alternating, 0, "a b c d")
        << QStringList{"a 0 W row:1 col:1 left", "b 0 W row:1 col:1 right", "c 0 W row:1 col:2 left",
                       "d 0 W row:1 col:2 right"};
    QTest::newRow("alternating-with-half-of-the-nodes")
        << stereoWall(2, Order::Alternating, 0, "a b")
        << QStringList{"a 0 W row:1 col:1 left", "a 1 W row:1 col:1 right", "b 0 W row:1 col:2 left",
                       "b 1 W row:1 col:2 right"};
    QTest::newRow("same-node-with-nodes-left-over")
        << stereoWall(2, Order::SameNode, 0, "a b c d")
        << QStringList{"a 0 W row:1 col:1 left", "a 1 W row:1 col:1 right", "b 0 W row:1 col:2 left",
                       "b 1 W row:1 col:2 right"};
    QTest::newRow("same-node-four-each")
        << stereoWall(3, Order::SameNode, 4, "a b")
        << QStringList{"a 0 W row:1 col:1 left",  "a 1 W row:1 col:1 right", "a 2 W row:1 col:2 left",
                       "a 3 W row:1 col:2 right", "b 0 W row:1 col:3 left",  "b 1 W row:1 col:3 right"};
    QTest::newRow("own-nodes-two-each")
        << stereoWall(3, Order::OwnNodes, 2, "a b c d")
        << QStringList{"a 0 W row:1 col:1 left",  "a 1 W row:1 col:2 left", "b 0 W row:1 col:1 right",
                       "b 1 W row:1 col:2 right", "c 0 W row:1 col:3 left", "d 0 W row:1 col:3 right"};
    QTest::newRow("left-first") << stereoWall(2, Order::LeftNodesFirst, 0, "a b c d")
                                << QStringList{"a 0 W row:1 col:1 left", "b 0 W row:1 col:2 left",
                                               "c 0 W row:1 col:1 right", "d 0 W row:1 col:2 right"};
    QTest::newRow("left-first-two-each-never-shares-a-node")
        << stereoWall(3, Order::LeftNodesFirst, 2, "a b c d")
        << QStringList{"a 0 W row:1 col:1 left",  "a 1 W row:1 col:2 left",  "b 0 W row:1 col:3 left",
                       "c 0 W row:1 col:1 right", "c 1 W row:1 col:2 right", "d 0 W row:1 col:3 right"};
}

void tst_zoHPCWallBuilder::eyesGoToTheirNodes()
{
    QFETCH(Plan, plan);
    QFETCH(QStringList, expected);

    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);

    QCOMPARE(windows(result.text), expected);
    QVERIFY(result.warnings.empty());
}

void tst_zoHPCWallBuilder::powerWallBesideItsMiddleIsMadeOfPlanes()
{
    Plan plan = Plan::of(Plan::Kind::Power);
    plan.columns = 2;
    plan.rows = 1;
    plan.tilePixels = {1000, 1000};
    plan.size = {1900.0, 1000.0};
    plan.overlap = {100.0, 0.0};
    plan.viewer = {300.0, -200.0, 1500.0};
    plan.hosts = QStringLiteral("a b");

    const Built built(plan, zoHPCWallBuilder::build(plan).text);

    // The left tile from -950 to 50 before the middle; the viewer is 300 to the right and 200 below.
    const Picture& left = built.pictures().front();
    QCOMPARE(left.projection, QStringLiteral("Wall row:1 col:1"));
    QCOMPARE(left.plane.lowerLeft.x, -1250.0);
    QCOMPARE(left.plane.lowerLeft.y, -300.0);
    QCOMPARE(left.plane.lowerLeft.z, -1500.0);
    QCOMPARE(left.plane.upperRight.x, -250.0);
    QCOMPARE(left.plane.upperRight.y, 700.0);
    QCOMPARE(left.edges.left, 0.0);
    QCOMPARE(left.edges.right, 100.0);
    QCOMPARE(built.pictures().back().edges.left, 100.0);
}

void tst_zoHPCWallBuilder::freePlanesStandWhereTheyAreTurned()
{
    Plan plan = Plan::of(Plan::Kind::Planes);
    plan.planes = {{QStringLiteral("Left"), QSizeF(1000.0, 600.0), Point3{-800.0, 0.0, 0.0}, 90.0, 0.0},
                   {QStringLiteral("Floor"), QSizeF(1000.0, 600.0), Point3{0.0, -900.0, -100.0}, 0.0, 90.0}};
    plan.viewer = {0.0, 100.0, 0.0};
    plan.tilePixels = {1000, 600};
    plan.hosts = QStringLiteral("a b");

    const Built built(plan, zoHPCWallBuilder::build(plan).text);

    // The left end of the left plane is behind the viewer; the upper edge of the floor is away from him.
    const zoHPCPlane& left = built.pictures()[0].plane;
    const zoHPCPlane& floor = built.pictures()[1].plane;
    QVERIFY(length(left.lowerLeft - Point3{-800.0, -400.0, 500.0}) < 1e-9);
    QVERIFY(length(left.upperRight - Point3{-800.0, 200.0, -500.0}) < 1e-9);
    QVERIFY(length(floor.lowerLeft - Point3{-500.0, -1000.0, 200.0}) < 1e-9);
    QVERIFY(length(floor.upperRight - Point3{500.0, -1000.0, -400.0}) < 1e-9);
}

void tst_zoHPCWallBuilder::tooManyWindowsAreRefused_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, Plan::Kind kind, const char* text,
                        const std::function<void(Plan&)>& change) {
        QTest::newRow(name) << changed(Plan::of(kind), change) << QString::fromLatin1(text);
    };
    row("as-many-as-may-be", Plan::Kind::Tiled, "", [](Plan& p) {
        p.columns = 200;
        p.rows = 100;
    });
    row("tiles", Plan::Kind::Tiled, "20200 windows are more than 20000", [](Plan& p) {
        p.columns = 200;
        p.rows = 101;
    });
    row("of-both-eyes", Plan::Kind::Tiled, "20002 windows are more than 20000", [](Plan& p) {
        p.columns = 137;
        p.rows = 73;
        p.stereo = Plan::Stereo::LeftRight;
    });
    row("of-a-cave", Plan::Kind::Cave, "20808 windows are more than 20000", [](Plan& p) {
        p.columns = 102;
        p.rows = 51;
    });
    row("of-planes", Plan::Kind::Planes, "20001 windows are more than 20000",
        [](Plan& p) { p.planes = Plan::planesInARow(20001, QSizeF(1.0, 1.0), 1.0); });
}

void tst_zoHPCWallBuilder::tooManyWindowsAreRefused()
{
    QFETCH(Plan, plan);
    QFETCH(QString, text);

    const std::vector<Plan::Mistake> mistakes = zoHPCWallMistakes::find(plan);

    QCOMPARE(mistakes.empty() ? QStringLiteral("") : mistakes.front().text, text);
}

void tst_zoHPCWallBuilder::mistakesAreToldAtTheirField_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, Plan::Kind kind, Field field, const char* text,
                        const std::function<void(Plan&)>& change) {
        Plan plan = Plan::of(kind);
        plan.hosts = QStringLiteral("n[1-100]");
        QTest::newRow(name) << changed(plan, change) << int(field) << QString::fromLatin1(text);
    };
    using Kind = Plan::Kind;
    row("no-columns", Kind::Tiled, Field::Tiles, "0x2 tiles cannot be: 1 to 1000 in a row and in a column",
        [](Plan& p) { p.columns = 0; });
    row("most-columns-and-one", Kind::Tiled, Field::Tiles,
        "1001x1 tiles cannot be: 1 to 1000 in a row and in a column", [](Plan& p) {
            p.columns = 1001;
            p.rows = 1;
        });
    row("more-tiles-than-may-be", Kind::Tiled, Field::Tiles, "1000x101 tiles are more than 100000",
        [](Plan& p) {
            p.columns = 1000;
            p.rows = 101;
        });
    row("no-pixels", Kind::Tiled, Field::TilePixels, "0x1080 pixels cannot be: 1 to 100000 each way",
        [](Plan& p) { p.tilePixels.setWidth(0); });
    row("tiles-share-all", Kind::Tiled, Field::Overlap, "tiles of 1920x1080 pixels cannot share 1080",
        [](Plan& p) {
            p.overlap = {1080.0, 1080.0};
        });
    row("half-pixels", Kind::Tiled, Field::Overlap, "pixels are whole numbers",
        [](Plan& p) { p.overlap.across = 0.5; });
    row("millimetres-of-unknown-pixels", Kind::Tiled, Field::PixelPitch,
        "how large is a pixel? Millimetres between tiles need it", [](Plan& p) {
            p.overlapUnit = Plan::Unit::Millimetres;
            p.overlap.across = -12.0;
        });
    row("no-size", Kind::Power, Field::Size, "a size is 0.01 to 1000000 mm",
        [](Plan& p) { p.size.setWidth(0.0); });
    row("bezels-use-the-wall-up", Kind::Power, Field::Overlap, "nothing of the size is left for pictures",
        [](Plan& p) {
            p.overlapUnit = Plan::Unit::Millimetres;
            p.overlap.across = -1800.0; // two gaps in 3600
        });
    row("no-distance", Kind::Tiled, Field::Viewer, "the viewer is before the wall: 0.1 mm away or more",
        [](Plan& p) { p.viewer.z = 0.0; });
    row("beside-a-wall-of-pixels", Kind::Tiled, Field::Viewer,
        "who looks at a wall without a size in millimetres is straight before its middle",
        [](Plan& p) { p.viewer.x = 1.0; });
    row("behind-a-column", Kind::Curved, Field::Viewer, "column 1 turns its back to the viewer", [](Plan& p) {
        p.viewer = {-9000.0, 0.0, 3000.0};
    });
    row("tiles-wider-than-the-circle", Kind::Curved, Field::Curvature,
        "tiles of 1209.6 mm do not stand on a circle with a radius of 600 mm",
        [](Plan& p) { p.radius = 600.0; });
    row("more-columns-than-fit", Kind::Curved, Field::Curvature,
        "16 columns with 23.26 degrees from one to the next do not fit into a circle",
        [](Plan& p) { p.columns = 16; });
    row("no-angle", Kind::Curved, Field::Curvature,
        "an angle between columns is more than 0 and at most 120 degrees", [](Plan& p) {
            p.curvature = Plan::Curvature::Angle;
            p.columnAngle = 0.0;
        });
    row("no-walls", Kind::Cave, Field::CaveWalls, "a cave has one wall at least",
        [](Plan& p) { p.caveWalls = 0; });
    row("no-cave", Kind::Cave, Field::CaveSize, "a size is 0.01 to 1000000 mm",
        [](Plan& p) { p.caveSize.y = -1.0; });
    row("walls-that-share", Kind::Cave, Field::Overlap, "the walls of a cave share no pixels",
        [](Plan& p) { p.overlap.across = 5.0; });
    row("no-planes", Kind::Planes, Field::Planes, "one plane at least", [](Plan& p) { p.planes.clear(); });
    row("planes-of-one-name", Kind::Planes, Field::Planes, "",
        [](Plan& p) { p.planes[0].name = p.planes[1].name = QStringLiteral("Same"); });
    row("eyes-in-metres", Kind::Cave, Field::EyeSeparation, "", [](Plan& p) { p.eyeSeparation = 0.065; });
    row("eyes-behind-each-other", Kind::Cave, Field::EyeSeparation, "eyes are 0 to 1000 mm apart",
        [](Plan& p) { p.eyeSeparation = -1.0; });
    row("more-screens-than-a-node-has", Kind::Tiled, Field::WindowsPerNode, "a node has 1 to 16 screens",
        [](Plan& p) { p.windowsPerNode = 17; });
    row("pairs-on-one-screen", Kind::Tiled, Field::WindowsPerNode,
        "both eyes of a tile on one node take an even number of screens, not 3", [](Plan& p) {
            p.stereo = Plan::Stereo::LeftRight;
            p.eyeOrder = Plan::EyeOrder::SameNode;
            p.windowsPerNode = 3;
        });
    row("one-node-for-each-eye", Kind::Tiled, Field::Hosts, "a node for each eye takes 2 nodes: there is 1",
        [](Plan& p) {
            p.stereo = Plan::Stereo::LeftRight;
            p.eyeOrder = Plan::EyeOrder::OwnNodes;
            p.hosts = QStringLiteral("a");
        });
    row("too-many-screens", Kind::Tiled, Field::Hosts, "17 screens on each node, 16 at most", [](Plan& p) {
        p.columns = 33;
        p.rows = 1;
        p.hosts = QStringLiteral("a b");
    });
    row("eyes-beyond-the-room", Kind::Cave, Field::EyeSeparation, "eyes are 0 to 1000 mm apart",
        [](Plan& p) { p.eyeSeparation = 1e300; });
    row("no-distance-to-speak-of", Kind::Power, Field::Viewer,
        "the viewer is before the wall: 0.1 mm away or more", [](Plan& p) { p.viewer.z = 1e-300; });
    row("far-away", Kind::Power, Field::Viewer, "a place is at most 1000000 mm away",
        [](Plan& p) { p.viewer.z = 1e300; });
    row("size-of-nothing", Kind::Power, Field::Size, "a size is 0.01 to 1000000 mm",
        [](Plan& p) { p.size.setWidth(1e-300); });
    row("hardly-an-angle", Kind::Curved, Field::Curvature,
        "so small an angle takes a radius of more than 1000000 mm", [](Plan& p) {
            p.curvature = Plan::Curvature::Angle;
            p.columnAngle = 1e-300;
        });
    row("turned-too-often", Kind::Planes, Field::Planes,
        "planes are turned and tilted by -360 to 360 degrees", [](Plan& p) { p.planes[0].yaw = 1e300; });
    row("name-of-no-document", Kind::Tiled, Field::Name,
        "character 3 is U+FFFF, which a document cannot hold",
        [](Plan& p) { p.name = QStringLiteral("ab\uffff"); });
    row("name-with-half-a-character", Kind::Tiled, Field::Name,
        "character 2 is U+D83D, which a document cannot hold",
        [](Plan& p) { p.name = QStringLiteral("a") + QChar(0xd83d); });
    row("plane-of-no-document", Kind::Planes, Field::Planes,
        "name of plane 2, character 1 is U+0001, which a document cannot hold",
        [](Plan& p) { p.planes[1].name = QChar(1); });
    row("hosts-of-no-document", Kind::Tiled, Field::Hosts,
        "character 2 is U+FFFE, which a document cannot hold",
        [](Plan& p) { p.hosts = QStringLiteral("n\ufffe"); });
    row("hosts-too-few", Kind::Tiled, Field::Hosts, "6 windows, 2 on each node, take 3 nodes: there are 2",
        [](Plan& p) {
            p.windowsPerNode = 2;
            p.hosts = QStringLiteral("a b");
        });
    row("hosts-too-few-for-eyes", Kind::Tiled, Field::Hosts,
        "12 windows, 4 on each node, take 4 nodes: there are 3", [](Plan& p) {
            p.stereo = Plan::Stereo::LeftRight;
            p.eyeOrder = Plan::EyeOrder::LeftNodesFirst;
            p.windowsPerNode = 4;
            p.hosts = QStringLiteral("a b c");
        });
    row("hosts-of-nothing", Kind::Tiled, Field::Hosts, "no node in \"\"", [](Plan& p) { p.hosts.clear(); });
    row("hosts-not-read", Kind::Tiled, Field::Hosts, "\"2-1\" runs backwards",
        [](Plan& p) { p.hosts = QStringLiteral("n[2-1]"); });
    row("name-too-long", Kind::Tiled, Field::Name, "too long a name for 6 tiles, which repeat it",
        [](Plan& p) { p.name = QString(2000000, QLatin1Char('n')); });
}

void tst_zoHPCWallBuilder::mistakesAreToldAtTheirField()
{
    QFETCH(Plan, plan);
    QFETCH(int, field);
    QFETCH(QString, text);

    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);

    QVERIFY(!result.isGood());
    QVERIFY(result.text.isEmpty());
    QCOMPARE(int(result.mistakes.front().field), field);
    if (!text.isEmpty())
        QCOMPARE(result.mistakes.front().text, text);
}

// Meant by few, but not refused.
void tst_zoHPCWallBuilder::likelyMistakesAreWarnings()
{
    Plan plan = Plan::of(Plan::Kind::Power);
    plan.size = {3.6, 1.35};
    plan.hosts = QStringLiteral("n[1-6]");
    plan.viewer.z = 1.5;

    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);

    QVERIFY(result.isGood());
    QVERIFY(!result.text.isEmpty());
    QCOMPARE(result.warnings.size(), std::size_t(1));
    QCOMPARE(int(result.warnings.front().field), int(Field::Size));
}

void tst_zoHPCWallBuilder::doubtsAreWarnings_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text"); // empty for no warning

    const auto row = [](const char* name, Plan::Kind kind, Field field, const char* text,
                        const std::function<void(Plan&)>& change) {
        Plan plan = Plan::of(kind);
        plan.hosts = QStringLiteral("n[1-100]");
        QTest::newRow(name) << changed(plan, change) << int(field) << QString::fromLatin1(text);
    };
    using Kind = Plan::Kind;
    row("behind-a-wall", Kind::Cave, Field::Viewer,
        "the viewer is outside the cave, behind its wall \"left\": inside he is less than 1500 mm from the "
        "middle of the cave toward it",
        [](Plan& p) { p.viewer.x = -1600.0; });
    row("in-a-wall", Kind::Cave, Field::Viewer,
        "the viewer is in the plane of the wall \"bottom\": inside he is less than 1200 mm from the middle "
        "of "
        "the cave toward it",
        [](Plan& p) { p.viewer.y = -1200.0; });
    row("outside-where-it-is-open", Kind::Cave, Field::Viewer,
        "the viewer is outside the cave, where it has no wall: inside he is less than 1500, 1200 and 1500 mm "
        "from its middle to the side, upward and backward",
        [](Plan& p) { p.viewer.z = 1500.0; });
    row("before-where-it-is-open", Kind::Cave, Field::Viewer, "", [](Plan& p) { p.viewer.z = 1499.0; });
    row("in-a-plane", Kind::Planes, Field::Viewer,
        "the viewer is in the plane of \"Plane 1\", which he sees from its edge: he is before it",
        [](Plan& p) { p.viewer.z = -1500.0; });
    row("tile-for-the-wall", Kind::Power, Field::Size,
        "pictures would be 50 % too high; is it the size of one tile?", [](Plan& p) {
            p.size = {1600.0, 900.0};
        });
    row("wall-for-a-tile", Kind::Power, Field::Size,
        "pictures would be 50 % too wide; is it the size of the whole wall?", [](Plan& p) {
            p.sizeOf = Plan::SizeOf::Tile;
            p.size = {4800.0, 1800.0};
        });
    row("neither", Kind::Power, Field::Size, "", [](Plan& p) { p.size = {3600.0, 506.25}; });
    row("nearly-square", Kind::Power, Field::Size, "", [](Plan& p) { p.size = {3600.0, 1400.0}; });
}

void tst_zoHPCWallBuilder::doubtsAreWarnings()
{
    QFETCH(Plan, plan);
    QFETCH(int, field);
    QFETCH(QString, text);

    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);

    QVERIFY(result.isGood());
    QCOMPARE(result.warnings.empty(), text.isEmpty());
    if (text.isEmpty())
        return;
    QCOMPARE(result.warnings.front().text, text);
    QCOMPARE(int(result.warnings.front().field), field);
}

void tst_zoHPCWallBuilder::unevenWindowsAreSpread_data()
{
    QTest::addColumn<Plan>("plan");
    QTest::addColumn<QStringList>("nodes"); // of the windows, with their screens
    QTest::addColumn<QString>("note");

    using Order = Plan::EyeOrder;
    Plan mono = stereoWall(5, Order::Alternating, 0, QStringLiteral("a b c"));
    mono.stereo = Plan::Stereo::None;
    QTest::newRow("mono") << mono << QStringList{"a0", "a1", "b0", "b1", "c0"}
                          << "2 windows on each of the first 2 nodes, 1 on the others";
    mono.columns = 3;
    mono.hosts = QStringLiteral("a b");
    QTest::newRow("one-more") << mono << QStringList{"a0", "a1", "b0"}
                              << "2 windows on the first node, 1 on each of the others";
    mono.columns = 4;
    QTest::newRow("even") << mono << QStringList{"a0", "a1", "b0", "b1"} << "";
    QTest::newRow("pairs") << stereoWall(3, Order::SameNode, 0, QStringLiteral("a b"))
                           << QStringList{"a0", "a1", "a2", "a3", "b0", "b1"}
                           << "4 windows on the first node, 2 on each of the others";
    QTest::newRow("nodes-of-eyes") << stereoWall(3, Order::OwnNodes, 0, QStringLiteral("a b c d"))
                                   << QStringList{"a0", "a1", "b0", "b1", "c0", "d0"}
                                   << "2 windows on the first nodes of each eye, 1 on the others";
    QTest::newRow("left-nodes-first") << stereoWall(3, Order::LeftNodesFirst, 0, QStringLiteral("a b c d"))
                                      << QStringList{"a0", "a1", "b0", "c0", "c1", "d0"}
                                      << "2 windows on the first nodes of each eye, 1 on the others";
    QTest::newRow("odd-for-eyes") << stereoWall(2, Order::OwnNodes, 0, QStringLiteral("a b c"))
                                  << QStringList{"a0", "a1", "b0", "b1"}
                                  << "one node has no window: each eye has as many nodes as the other one";
}

void tst_zoHPCWallBuilder::unevenWindowsAreSpread()
{
    QFETCH(Plan, plan);
    QFETCH(QStringList, nodes);
    QFETCH(QString, note);

    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);

    QStringList found;
    for (const QString& window : windows(result.text))
        found << window.section(QLatin1Char(' '), 0, 1).remove(QLatin1Char(' '));
    QCOMPARE(found, nodes);
    QCOMPARE(result.notes.empty() ? QString() : result.notes.front().text, note);
    QVERIFY(result.warnings.empty());
}

void tst_zoHPCWallBuilder::hostsAreCounted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("gateways");
    QTest::addColumn<QStringList>("drivers");
    QTest::addColumn<QString>("mistake");

    QTest::newRow("brackets") << "n[1-2] m" << 3 << 0 << QStringList{"n1", "n2", "m"} << QString();
    QTest::newRow("range") << "{ n1 - n3 }" << 3 << 0 << QStringList{"n1", "n2", "n3"} << QString();
    QTest::newRow("gateway") << "gw[rt=0] { a b } head[rt=0]" << 4 << 1 << QStringList{"a", "b"} << QString();
    QTest::newRow("gateway-that-renders") << "gw { a }" << 2 << 1 << QStringList{"a"} << QString();
    QTest::newRow("twice") << "a b a" << 3 << 0 << QStringList{"a", "b", "a"} << "\"a\" comes twice";
    QTest::newRow("nobody-renders") << "a[rt=0]" << 1 << 0 << QStringList()
                                    << "gateways and nodes that do not render drive no screen, and "
                                       "\"a[rt=0]\" has no other";
    QTest::newRow("nothing") << " " << 0 << 0 << QStringList() << "no node in \"\"";
    QTest::newRow("open-brace") << "{ a" << 0 << 0 << QStringList() << "\"{\" is not closed";
}

void tst_zoHPCWallBuilder::hostsAreCounted()
{
    QFETCH(QString, text);
    QFETCH(int, nodes);
    QFETCH(int, gateways);
    QFETCH(QStringList, drivers);
    QFETCH(QString, mistake);

    const zoHPCWallBuilder::Hosts hosts = zoHPCWallBuilder::readHosts(text);

    QCOMPARE(hosts.nodes, nodes);
    QCOMPARE(hosts.gateways, gateways);
    QCOMPARE(hosts.drivers, drivers);
    QCOMPARE(hosts.mistake, mistake);
}

void tst_zoHPCWallBuilder::sketchNeedsNoHosts()
{
    Plan plan = Plan::of(Plan::Kind::Curved);
    plan.windowsPerNode = 40;

    const QString refused = zoHPCWallBuilder::sketch(plan);
    plan.windowsPerNode = 2;
    const QString sketch = zoHPCWallBuilder::sketch(plan);

    QVERIFY(refused.isEmpty());
    QCOMPARE(windows(sketch).size(), 24);
    QCOMPARE(windows(sketch).front(), QStringLiteral(" 0 Wall row:1 col:1 mono"));
}

ZO_TEST_MAIN(tst_zoHPCWallBuilder)
#include "tst_zoHPCWallBuilder.moc"
