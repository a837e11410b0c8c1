#include "zoTestCase.h"
#include "zoWallPictures.h"

#include <zoCheckScene.h>
#include <zoRoomMath.h>
#include <zoStrokeDigits.h>
#include <zoTestScene.h>
#include <zoViewportPicture.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

// What node servers show, for other engines.
class tst_zoCheckScene final : public zoTestCase
{
    Q_OBJECT

private slots:
    void tilesHaveThePicturesOfTheirNodes();
    void tilesAreNumberedInTheOrderOfTheDocument();
    void testImageHasTheBallsOfTheScene();
    void linesOfTheFloorAreWhereTheyAre();
    void laterLayersAreNearerToTheHead();
    void numbersStandBeforeTheirBalls();
    void piecesOfDigitsFillTheirOutlines_data();
    void piecesOfDigitsFillTheirOutlines();
    void largeWallsHaveSmallerPictures();
    void wallWithoutTilesIsEmpty();
    void componentWritesTheSame();
};

namespace
{
QJsonObject sceneOf(const zoWallSetup& setup, zoShowContent content)
{
    return QJsonDocument::fromJson(zoCheckScene::of(setup, content)).object();
}

QJsonObject sceneOf(const char* sample, zoShowContent content)
{
    return sceneOf(zoWallPictures::sample(QString::fromLatin1(sample)), content);
}

zoWallPoint toPoint(const QJsonValue& value)
{
    return {value[0].toDouble(), value[1].toDouble(), value[2].toDouble()};
}

double distance(const zoWallPoint& a, const zoWallPoint& b)
{
    return zoRoomMath::length(zoRoomMath::difference(a, b));
}

QImage pictureOf(const QJsonObject& tile)
{
    return QImage::fromData(
               QByteArray::fromBase64(tile.value(QLatin1String("picture")).toString().toLatin1()))
        .convertToFormat(QImage::Format_RGB32);
}

// But for the rims of letters, which are drawn again from what fonts keep.
bool areAlike(const QImage& a, const QImage& b)
{
    int others = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            others += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    }
    return a.size() == b.size() && others * 200 < a.width() * a.height();
}
} // namespace

void tst_zoCheckScene::tilesHaveThePicturesOfTheirNodes()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("cave-4-sided"));
    const QJsonObject scene = sceneOf(setup, zoShowContent::Tiles);
    const zoTestScene testScene(setup.walls, setup.head);
    const QJsonArray tiles = scene.value(QLatin1String("tiles")).toArray();

    QCOMPARE(scene.value(QLatin1String("content")).toString(), QStringLiteral("tiles"));
    QCOMPARE(tiles.size(), 8);
    QVERIFY(!scene.contains(QLatin1String("balls")));
    for (int i = 0; i < tiles.size(); i += 3) {
        const QJsonObject tile = tiles[i].toObject();
        const zoWallNode& node = *setup.node(tile.value(QLatin1String("node")).toString());
        const zoWallWindow& window = node.windows[0];
        const zoWallViewport& viewport = window.viewports[0];
        QImage expected(window.geometry.size(), QImage::Format_RGB32);
        QPainter painter(&expected);
        const zoViewportPicture picture({&setup, &testScene, &node, &window, &viewport, zoShowContent::Tiles},
                                        expected.size());
        picture.paintEye(painter, expected.rect(), zoStereoMode::onlyEye(picture.mode()));
        painter.end();

        QVERIFY(areAlike(pictureOf(tile), expected));
        const QJsonValue plane = tile.value(QLatin1String("plane"));
        QVERIFY(distance(toPoint(plane[0]), viewport.plane.lowerLeft) < 0.001);
        QVERIFY(distance(toPoint(plane[1]), viewport.plane.lowerRight) < 0.001);
        QVERIFY(distance(toPoint(plane[2]),
                         zoRoomMath::sum(viewport.plane.lowerLeft,
                                         zoRoomMath::difference(viewport.plane.upperRight,
                                                                viewport.plane.lowerRight))) < 0.001);
    }
}

// Not by nodes: the windows of "a" are the first and the last of the document.
void tst_zoCheckScene::tilesAreNumberedInTheOrderOfTheDocument()
{
    const QString window = QStringLiteral("<window node=\"%1\" screen=\"%2\" width=\"40\" height=\"30\">"
                                          "<viewport projection=\"P\" position=\"fill\"/></window>");
    const zoWallSetup setup = zoWallPictures::read(
        QStringLiteral(
            "<cluster version=\"1\"><master><network><node name=\"a\"/><node name=\"b\"/></network>"
            "</master><projection name=\"P\" type=\"plane\" x1=\"-500\" y1=\"-500\" z1=\"-1000\" "
            "x2=\"500\" y2=\"-500\" z2=\"-1000\" x3=\"500\" y3=\"500\" z3=\"-1000\"/><display>") +
        window.arg(QStringLiteral("a"), QStringLiteral("0")) +
        window.arg(QStringLiteral("b"), QStringLiteral("0")) +
        window.arg(QStringLiteral("a"), QStringLiteral("1")) + QStringLiteral("</display></cluster>"));

    const QJsonArray tiles = sceneOf(setup, zoShowContent::TestImage).value(QLatin1String("tiles")).toArray();

    QStringList found;
    for (const QJsonValue tile : tiles)
        found << tile[QLatin1String("node")].toString() +
                     QString::number(tile[QLatin1String("number")].toInt());
    QCOMPARE(found, (QStringList{QStringLiteral("a0"), QStringLiteral("a2"), QStringLiteral("b1")}));
}

void tst_zoCheckScene::testImageHasTheBallsOfTheScene()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("powerwall-2x2"));
    const zoTestScene testScene(setup.walls, setup.head);
    const QJsonObject scene = sceneOf(setup, zoShowContent::TestImage);
    const QJsonArray balls = scene.value(QLatin1String("balls")).toArray();

    QCOMPARE(scene.value(QLatin1String("content")).toString(), QStringLiteral("test-image"));
    QCOMPARE(scene.value(QLatin1String("background")).toString(), zoTestScene::SkyColour.name());
    QCOMPARE(balls.size(), zoTestScene::BallCount);
    for (int i = 0; i < balls.size(); ++i) {
        const zoTestScene::Ball& ball = testScene.balls()[std::size_t(i)];
        QVERIFY(distance(toPoint(balls[i][QLatin1String("middle")]), ball.middle) < 0.001);
        QCOMPARE(balls[i][QLatin1String("radius")].toDouble(), ball.radius);
        QCOMPARE(balls[i][QLatin1String("colour")].toString(), ball.colour.name());
    }
    for (const QJsonValue tile : scene.value(QLatin1String("tiles")).toArray())
        QVERIFY(!tile.toObject().contains(QLatin1String("picture")));
}

void tst_zoCheckScene::linesOfTheFloorAreWhereTheyAre()
{
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("cave-4-sided"));
    const zoTestScene testScene(setup.walls, setup.head);
    const QColor colour = testScene.floorLines().front().colour;
    int lines = 0;

    for (const QJsonValue figure :
         sceneOf(setup, zoShowContent::TestImage).value(QLatin1String("figures")).toArray()) {
        if (figure[QLatin1String("colour")].toString() != colour.name())
            continue;
        for (const QJsonValue corner : figure[QLatin1String("corners")].toArray())
            QVERIFY(std::abs(toPoint(corner).y - testScene.floorHeight()) < 0.001);
        ++lines;
    }

    QCOMPARE(lines, 82);
}

void tst_zoCheckScene::laterLayersAreNearerToTheHead()
{
    const QJsonObject scene = sceneOf("cave-4-sided", zoShowContent::TestImage);
    const zoTestScene testScene({}, {});
    const std::size_t discs = testScene.floor().size();
    const QJsonArray figures = scene.value(QLatin1String("figures")).toArray();
    const auto heightOf = [&](int figure) { return toPoint(figures[figure][QLatin1String("corners")][0]).y; };

    // The floor of that cave is its bottom wall, 1600 mm below the head.
    for (int i = 1; i < int(discs); ++i)
        QVERIFY(heightOf(i) > heightOf(i - 1) + 0.5);
    QVERIFY(heightOf(int(discs) - 1) < -1600.5);
    for (int i = figures.size() - 4; i < figures.size(); ++i) {
        QCOMPARE(figures[i][QLatin1String("colour")].toString(), zoTestScene::EdgeColour.name());
        QVERIFY(toPoint(figures[i][QLatin1String("corners")][0]).z > -1499.0);
    }
}

void tst_zoCheckScene::numbersStandBeforeTheirBalls()
{
    const QJsonObject scene = sceneOf("powerwall-2x2", zoShowContent::TestImage);
    const QJsonArray balls = scene.value(QLatin1String("balls")).toArray();
    const QJsonArray marks = scene.value(QLatin1String("marks")).toArray();
    // The last ball is 300.
    const zoWallPoint middle = toPoint(balls.last()[QLatin1String("middle")]);
    const double radius = balls.last()[QLatin1String("radius")].toDouble();
    QList<int> digits;

    for (int i = marks.size() - 3; i < marks.size(); ++i) {
        digits << marks[i][QLatin1String("digit")].toInt();
        const zoWallPoint mark = toPoint(marks[i][QLatin1String("middle")]);
        QVERIFY(distance(mark, middle) > radius);
        QVERIFY(zoRoomMath::length(mark) < zoRoomMath::length(middle) - 0.95 * radius);
    }

    QCOMPARE(digits, (QList<int>{3, 0, 0}));
}

void tst_zoCheckScene::piecesOfDigitsFillTheirOutlines_data()
{
    QTest::addColumn<int>("digit");
    for (int digit = 0; digit < 10; ++digit)
        QTest::addRow("%d", digit) << digit;
}

void tst_zoCheckScene::piecesOfDigitsFillTheirOutlines()
{
    QFETCH(int, digit);
    const auto paint = [](const std::vector<QPolygonF>& polygons, bool areTogether) {
        QImage image(120, 140, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.translate(60.0, 70.0);
        painter.scale(100.0, 100.0);
        painter.setPen(Qt::NoPen);
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        for (const QPolygonF& polygon : polygons) {
            if (areTogether)
                path.addPolygon(polygon);
            else
                painter.fillPath(
                    [&] {
                        QPainterPath one;
                        one.addPolygon(polygon);
                        return one;
                    }(),
                    Qt::black);
        }
        painter.fillPath(path, Qt::black);
        return image;
    };
    const std::vector<QPolygonF> pieces = zoStrokeDigits::pieces(digit);
    const QImage expected = paint(zoStrokeDigits::outlines(QString::number(digit)), true);
    const QImage found = paint(pieces, false);

    QVERIFY(pieces.size() > 5);
    int others = 0;
    int black = 0;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            others += expected.pixel(x, y) != found.pixel(x, y) ? 1 : 0;
            black += expected.pixel(x, y) == qRgb(0, 0, 0) ? 1 : 0;
        }
    }
    QVERIFY(black > 1000);
    QVERIFY2(others < 25, qPrintable(QString::number(others)));
}

void tst_zoCheckScene::largeWallsHaveSmallerPictures()
{
    zoWallSetup setup = zoWallPictures::sample(QStringLiteral("powerwall-2x2"));
    for (zoWallNode& node : setup.nodes)
        node.windows[0].geometry.setSize({8192, 4096});

    const QJsonArray tiles = sceneOf(setup, zoShowContent::Tiles).value(QLatin1String("tiles")).toArray();

    // Four times 2^25 pixels are twice as many as there may be.
    QCOMPARE(tiles[0][QLatin1String("pixels")][0].toInt(), 8192);
    QVERIFY(std::abs(pictureOf(tiles[0].toObject()).width() - 8192 / std::sqrt(2.0)) <= 1.0);
}

void tst_zoCheckScene::wallWithoutTilesIsEmpty()
{
    for (const zoShowContent content : {zoShowContent::Tiles, zoShowContent::TestImage}) {
        const QJsonObject scene = sceneOf(zoWallSetup(), content);
        QVERIFY(scene.value(QLatin1String("tiles")).isArray());
        QVERIFY(scene.value(QLatin1String("tiles")).toArray().isEmpty());
    }
}

void tst_zoCheckScene::componentWritesTheSame()
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll());
    QLibrary library(QStringLiteral(ZO_SERVER_SETUP));
    const auto write = reinterpret_cast<zoWriteCheckScene>(library.resolve(ZO_WRITE_CHECK_SCENE));
    QVERIFY2(write != nullptr, qPrintable(library.errorString()));
    const zoWallSetup setup = zoWallPictures::sample(QStringLiteral("powerwall-2x2"));
    QByteArray scene;
    QString reason;

    QVERIFY(write(document, 1.0, QStringLiteral("test-image"), scene, reason));
    QCOMPARE(scene, zoCheckScene::of(setup, zoShowContent::TestImage));
    QVERIFY(write(document, 1.0, QStringLiteral("tiles"), scene, reason));
    const QJsonArray tiles = QJsonDocument::fromJson(scene).object().value(QLatin1String("tiles")).toArray();
    const QJsonArray expected = sceneOf(setup, zoShowContent::Tiles).value(QLatin1String("tiles")).toArray();
    QCOMPARE(tiles.size(), 4);
    QVERIFY(areAlike(pictureOf(tiles[3].toObject()), pictureOf(expected[3].toObject())));
    QVERIFY(!write(QStringLiteral("<other/>"), 1.0, QStringLiteral("tiles"), scene, reason));
    QVERIFY(reason.contains(QLatin1String("other")));
}

ZO_TEST_MAIN(tst_zoCheckScene)
#include "tst_zoCheckScene.moc"
