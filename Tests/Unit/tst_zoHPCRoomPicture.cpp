#include "zoHPCSetup.h"
#include "zoTestCase.h"
#include "zoTextNotes.h"

#include <zoHPCPictureStyle.h>
#include <zoHPCRoomPicture.h>
#include <zoHPCRoomWall.h>

#include <zoLengthUnit.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <limits>

namespace
{
const QRectF AREA(0.0, 0.0, 640.0, 480.0);

// Straight from behind the viewer: what lies left in the room lies left in the picture.
zoHPCRoomCamera fromBehind()
{
    zoHPCRoomCamera camera;
    camera.yaw = 0.0;
    camera.pitch = 0.0;
    camera.target = {0.0, 0.0, -1500.0};
    camera.distance = 6000.0;
    return camera;
}

QPalette lightPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    return palette;
}

QImage painted(const zoHPCRoomPicture& picture, const QPalette& palette = lightPalette(),
               zoHPCPicture::Detail detail = zoHPCPicture::Detail::Full)
{
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    picture.paint(painter, AREA, palette, detail);
    return image;
}

QPointF placeOf(const zoHPCRoomPicture& picture, const Point3& point)
{
    return picture.camera().toPicture(picture.camera().see(point), AREA);
}

// Pixels that are nearly of this colour.
int count(const QImage& image, const QColor& color, int tolerance = 12)
{
    int result = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            result += std::abs(pixel.red() - color.red()) <= tolerance &&
                              std::abs(pixel.green() - color.green()) <= tolerance &&
                              std::abs(pixel.blue() - color.blue()) <= tolerance
                          ? 1
                          : 0;
        }
    }
    return result;
}

QString nameOf(const QTreeWidgetItem* item)
{
    return item ? item->data(zoHPCProjectionItem::Name, Qt::EditRole).toString() : QString();
}
} // namespace

// The picture of the room.
class tst_zoHPCRoomPicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lettersAreAsLargeOnAnyDevice();
    void lengthsAreInTheUnitThatIsChosen();
    void planesOfOneWallHaveOneName();
    void cornersAndViewerAreTakenIn();
    void nothingIsDrawnAsNothing();
    void wallOfTilesIsOneWall();
    void overlapMakesTheStepsSmaller();
    void caveHasAWallForEachFlag();
    void tiledWallStandsAtItsDistance();
    void tiledWallWithoutWindowsHasTheSizeOfNewWindows();
    void gapBetweenScreensWidensTheWall();
    void planeHasItsOwnBands();
    void tileMadeAPlaneKeepsItsBands();
    void tileWithoutViewportIsNotLit();
    void planeThatTurnsItsBackIsTold();
    void brokenPlanesAreLeftOutOrDrawnAsLines();
    void planesAtTheEndOfNumbersArePainted();
    void childrenThatDoNotFitTheirColumnsAreLeftOut();

    void clickFindsTheTile_data();
    void clickFindsTheTile();
    void clickFindsTheNearestWall();
    void planFindsTheTileOfAWallSeenFromItsEdge();
    void caveWallIsFoundFromInsideAndOutside();
    void clickFindsAPlaneWithoutAreaAtItsLine();

    void wholePictureIsPainted();
    void tileLinesStayApart_data();
    void tileLinesStayApart();
    void frontAndBackLookDifferent();
    void blendShowsRampsAndOverlapDoesNot();
    void currentTileIsHighlighted();
    void currentViewportHighlightsItsProjection();
    void manyMarkedTilesStayApart();
    void darkPaletteGivesADarkPicture();
    void coloursStandOutInBothPalettes_data();
    void coloursStandOutInBothPalettes();
    void fastPictureLeavesOutTileNames();
    void wallsBehindTheCameraAreCutOff();
    void fitTakesInAllWalls();
    void lengthsThatAreNotSeenHaveNoText();
    void outlinesNeedRoom();
    void textsOfWholeRoomsAreBesideEachOther_data();
    void textsOfWholeRoomsAreBesideEachOther();
    void textsAreWholeAndBesideEachOther_data();
    void textsAreWholeAndBesideEachOther();
    void painterIsLeftAsItWas();
};

// As those of a curved wall: each tile has its place in it, not its long name beside it.
void tst_zoHPCRoomPicture::planesOfOneWallHaveOneName()
{
    zoHPCSetup setup;
    for (const int column : {1, 2, 3}) {
        const double left = 1500.0 * column - 3750.0;
        zoHPCProjectionItem* const plane =
            setup.addProjection(QStringLiteral("Arc row:1 col:%1").arg(column), QStringLiteral("plane"));
        plane->setPlane(
            {{left, -500.0, -2000.0}, {left + 1500.0, -500.0, -2000.0}, {left + 1500.0, 500.0, -2000.0}});
        setup.addNode(QStringLiteral("n%1").arg(column));
        setup.addWindow(QStringLiteral("n%1").arg(column), QStringLiteral("Arc row:1 col:%1").arg(column));
    }
    setup.addProjection(QStringLiteral("Desk"), QStringLiteral("plane"))
        ->setPlane({{-500.0, -900.0, -800.0}, {500.0, -900.0, -800.0}, {500.0, -900.0, -1400.0}});
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setCamera(fromBehind());

    zoTextNotes notes(AREA.size().toSize());
    QPainter painter(&notes);
    picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
    painter.end();

    QStringList texts;
    for (const zoTextNotes::Text& text : notes.texts())
        texts << text.text;
    for (const char* const text : {"Arc", "r1 c1", "n1", "r1 c2", "n2", "r1 c3", "n3", "Desk"})
        QVERIFY2(texts.contains(QLatin1String(text)), qUtf8Printable(texts.join(", ")));
    QVERIFY(texts.filter(QStringLiteral("row:1")).isEmpty());
    // Above the middle of the wall.
    QVERIFY(std::abs(notes.boxOf(QStringLiteral("Arc")).center().x() - AREA.center().x()) < 10.0);
}

// A report has 720 units to the inch, a screen 96: pictures count in their own.
void tst_zoHPCRoomPicture::lettersAreAsLargeOnAnyDevice()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("Wall"), 2, 2);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    const auto at = [&](double dotsPerInch) {
        QImage image(AREA.size().toSize(), QImage::Format_RGB32);
        image.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
        image.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
        QPainter painter(&image);
        picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
        painter.end();
        image.setDotsPerMeterX(1000);
        image.setDotsPerMeterY(1000);
        return image;
    };

    QVERIFY(at(720.0) == at(96.0));
}

void tst_zoHPCRoomPicture::lengthsAreInTheUnitThatIsChosen()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("Wall"), 2, 2);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    const QImage inMillimetres = painted(picture);

    zoLengthUnit::setShown(zoLengthUnit::of(QStringLiteral("ft")));
    const QImage inFeet = painted(picture);
    zoLengthUnit::setShown(zoLengthUnit::of(QStringLiteral("mm")));

    QVERIFY(inFeet != inMillimetres);
    QVERIFY(painted(picture) == inMillimetres);
}

void tst_zoHPCRoomPicture::cornersAndViewerAreTakenIn()
{
    zoHPCRoomWall wall;
    wall.plane = zoHPCPlane({1, 2, 3}, {4, 2, 3}, {4, 9, 5});

    QStringList points;
    for (const Point3& point : zoHPCRoomWall::extent({wall}))
        points << QStringLiteral("%1 %2 %3").arg(point.x).arg(point.y).arg(point.z);

    points.sort();
    QCOMPARE(points, QStringList({"0 0 0", "1 2 3", "1 9 5", "4 2 3", "4 9 5"}));
    QCOMPARE(zoHPCRoomWall::extent({}).size(), std::size_t(1));
}

void tst_zoHPCRoomPicture::nothingIsDrawnAsNothing()
{
    zoHPCSetup setup;
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());

    const QImage image = painted(picture);

    QVERIFY(picture.walls().empty());
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::white));
    QCOMPARE(picture.itemAt(AREA.center(), AREA), nullptr);
}

void tst_zoHPCRoomPicture::wallOfTilesIsOneWall()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addPowerWall(QStringLiteral("wall"), 2, 3);
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    QCOMPARE(picture.walls().size(), size_t(1));
    const zoHPCRoomPicture::Wall& wall = picture.walls()[0];
    QCOMPARE(wall.item, item);
    QCOMPARE(wall.name, QStringLiteral("wall"));
    QCOMPARE(wall.rows, 2);
    QCOMPARE(wall.columns, 3);
    QCOMPARE(wall.plane.width(), 3000.0);
    QCOMPARE(wall.plane.height(), 2000.0);
    QVERIFY(std::abs(wall.columnStep - 1.0 / 3.0) < 1e-9);
    QVERIFY(std::abs(wall.tileHeight - 0.5) < 1e-9);
    QVERIFY(!wall.turnsAway);
}

void tst_zoHPCRoomPicture::overlapMakesTheStepsSmaller()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 2, 100.0);
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    const zoHPCRoomPicture::Wall& wall = picture.walls()[0];
    QVERIFY(std::abs(wall.tileWidth - 1550.0 / 3000.0) < 1e-9);
    QVERIFY(std::abs(wall.columnStep - 1450.0 / 3000.0) < 1e-9);
    QVERIFY(wall.isBlended);
}

void tst_zoHPCRoomPicture::caveHasAWallForEachFlag()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const cave = setup.addProjection(QStringLiteral("Cave"), QStringLiteral("cave"));
    for (int flag = zoHPCProjectionItem::LeftWall; flag <= zoHPCProjectionItem::BackWall; ++flag)
        cave->setBool(flag, true);
    cave->setInt(zoHPCProjectionItem::Columns, 2);
    cave->update();
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    QStringList names;
    for (const zoHPCRoomPicture::Wall& wall : picture.walls()) {
        names << wall.name;
        QCOMPARE(wall.columns, 2);
        QVERIFY(!wall.turnsAway);
    }
    QCOMPARE(names, QStringList({QStringLiteral("Cave Left"), QStringLiteral("Cave Right"),
                                 QStringLiteral("Cave Top"), QStringLiteral("Cave Bottom"),
                                 QStringLiteral("Cave Front"), QStringLiteral("Cave Back")}));
}

void tst_zoHPCRoomPicture::tiledWallStandsAtItsDistance()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("w"), QStringLiteral("wall"));
    item->setInt(zoHPCProjectionItem::Rows, 3);
    item->setInt(zoHPCProjectionItem::Columns, 5);
    item->setInt(zoHPCProjectionItem::OverlapX, 20);
    item->setDouble(zoHPCProjectionItem::Distance, 2500.0);
    item->update();
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 3840, 1080);
    zoHPCViewportItem* const viewport =
        setup.addViewport(window, QStringLiteral("w row:2 col:2"), QStringLiteral("mono"));
    viewport->setString(zoHPCViewportItem::Position, QStringLiteral("left"));
    viewport->update();
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    const zoHPCRoomPicture::Wall& wall = picture.walls()[0];
    QVERIFY(wall.isInPixels);
    QCOMPARE(wall.plane.width(), 5 * 1920.0 - 4 * 20.0);
    QCOMPARE(wall.plane.height(), 3 * 1080.0);
    QCOMPARE(wall.plane.center().z, -2500.0);
    QCOMPARE(wall.plane.center().x, 0.0);
    QCOMPARE(wall.plane.normal().z, 1.0);
}

void tst_zoHPCRoomPicture::tiledWallWithoutWindowsHasTheSizeOfNewWindows()
{
    zoHPCSetup setup;
    setup.addProjection(QStringLiteral("w"), QStringLiteral("wall"));
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    const zoHPCWindowItem fresh;
    QCOMPARE(picture.walls()[0].plane.width(), fresh.getDouble(zoHPCWindowItem::Width));
    QCOMPARE(picture.walls()[0].plane.height(), fresh.getDouble(zoHPCWindowItem::Height));
}

void tst_zoHPCRoomPicture::gapBetweenScreensWidensTheWall()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("w"), QStringLiteral("wall"));
    item->setInt(zoHPCProjectionItem::Columns, 2);
    item->setInt(zoHPCProjectionItem::OverlapX, -40);
    item->update();
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    QCOMPARE(picture.walls()[0].plane.width(), 2 * 1280.0 + 40.0);
    QVERIFY(picture.walls()[0].columnStep > picture.walls()[0].tileWidth);
}

void tst_zoHPCRoomPicture::planeHasItsOwnBands()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    item->setBool(zoHPCProjectionItem::EdgeBlending, true);
    item->setDouble(zoHPCProjectionItem::LeftEdge, 0.1);
    item->setDouble(zoHPCProjectionItem::RightEdge, 7.0);
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    QCOMPARE(picture.walls()[0].leftBand, 0.1);
    QCOMPARE(picture.walls()[0].rightBand, 1.0);
    QCOMPARE(picture.walls()[0].lowerBand, 0.0);
}

void tst_zoHPCRoomPicture::tileMadeAPlaneKeepsItsBands()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 1, 100.0);
    QTreeWidgetItem* const upperTile = wall->takeChild(0);
    setup.projections.addTopLevelItem(upperTile);
    delete setup.projections.takeTopLevelItem(0);
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    // The upper tile meets the other one at its lower edge.
    QVERIFY(std::abs(picture.walls()[0].lowerBand - 100.0 / 1050.0) < 1e-9);
    QCOMPARE(picture.walls()[0].upperBand, 0.0);
}

void tst_zoHPCRoomPicture::tileWithoutViewportIsNotLit()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    setup.addPowerWall(QStringLiteral("all"), 2, 2);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:2 col:1"));
    setup.addWindow(QStringLiteral("n"), QStringLiteral("all"));
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    const zoHPCRoomPicture::Wall& wall = picture.walls()[0];
    QVERIFY(!wall.isLit(0, 0));
    QVERIFY(wall.isLit(1, 0));
    QVERIFY(!wall.isLit(1, 1));
    QVERIFY(picture.walls()[1].isLit(1, 1));
    QVERIFY(picture.walls()[1].lit.empty());
}

void tst_zoHPCRoomPicture::planeThatTurnsItsBackIsTold()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    zoHPCPlane({500, -500, -1500}, {-500, -500, -1500}, {-500, 500, -1500}).toItem(*item);
    zoHPCProjectionItem* const skewed = setup.addProjection(QStringLiteral("s"), QStringLiteral("plane"));
    zoHPCPlane({-500, -500, -1500}, {500, -500, -1500}, {700, 500, -1500}).toItem(*skewed);
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    QVERIFY(picture.walls()[0].turnsAway);
    QVERIFY(!picture.walls()[0].isSkewed);
    QVERIFY(picture.walls()[1].isSkewed);
    QVERIFY(!picture.walls()[1].turnsAway);
}

void tst_zoHPCRoomPicture::brokenPlanesAreLeftOutOrDrawnAsLines()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const flat = setup.addProjection(QStringLiteral("flat"), QStringLiteral("plane"));
    zoHPCPlane({-500, 0, -1500}, {500, 0, -1500}, {500, 0, -1500}).toItem(*flat);
    zoHPCProjectionItem* const none = setup.addProjection(QStringLiteral("none"), QStringLiteral("plane"));
    none->setDouble(zoHPCProjectionItem::X1, std::numeric_limits<double>::quiet_NaN());
    zoHPCProjectionItem* const far = setup.addProjection(QStringLiteral("far"), QStringLiteral("plane"));
    far->setDouble(zoHPCProjectionItem::X1, std::numeric_limits<double>::infinity());
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QCOMPARE(picture.walls().size(), size_t(1));
    QVERIFY(picture.walls()[0].isDegenerate);
    const zoHPCPictureStyle style(lightPalette());
    QVERIFY(count(painted(picture), style.bad) > 50);
}

// The steps of the floor led nowhere there, and painting did not end.
void tst_zoHPCRoomPicture::planesAtTheEndOfNumbersArePainted()
{
    zoHPCSetup setup;
    for (const int column : {zoHPCProjectionItem::X1, zoHPCProjectionItem::Y3}) {
        zoHPCProjectionItem* const plane =
            setup.addProjection(QStringLiteral("far"), QStringLiteral("plane"));
        plane->setDouble(zoHPCProjectionItem::X2, 100.0);
        plane->setDouble(zoHPCProjectionItem::Y3, 100.0);
        plane->setDouble(column, 1.7e308);
    }
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QCOMPARE(painted(picture).size(), AREA.size().toSize());
}

void tst_zoHPCRoomPicture::childrenThatDoNotFitTheirColumnsAreLeftOut()
{
    // Between a change of the columns and the update that follows it, the children are still the old ones.
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    zoHPCProjectionItem* const tiled = setup.addProjection(QStringLiteral("w"), QStringLiteral("wall"));
    for (zoHPCProjectionItem* item : {wall, tiled}) {
        item->setInt(zoHPCProjectionItem::Rows, 2000000000);
        item->setInt(zoHPCProjectionItem::Columns, 2000000000);
    }
    zoHPCRoomPicture picture;

    picture.setLayout(setup.layout());

    QVERIFY(picture.walls().empty());
}

void tst_zoHPCRoomPicture::clickFindsTheTile_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<QString>("name");

    QTest::newRow("upper-left") << -700.0 << 500.0 << "wall row:1 col:1";
    QTest::newRow("upper-right") << 700.0 << 500.0 << "wall row:1 col:2";
    QTest::newRow("lower-left") << -700.0 << -500.0 << "wall row:2 col:1";
    QTest::newRow("lower-right-corner") << 1499.0 << -999.0 << "wall row:2 col:2";
    QTest::newRow("beside") << 1600.0 << 0.0 << "";
    QTest::newRow("above") << 0.0 << 1100.0 << "";
}

void tst_zoHPCRoomPicture::clickFindsTheTile()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(QString, name);
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QTreeWidgetItem* const item = picture.itemAt(placeOf(picture, {x, y, -1500.0}), AREA);

    QCOMPARE(nameOf(item), name);
}

void tst_zoHPCRoomPicture::clickFindsTheNearestWall()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("far"), 1, 1)->setDouble(zoHPCProjectionItem::Distance, 3000.0);
    setup.addPowerWall(QStringLiteral("near"), 1, 1);
    for (int i = 0; i < 2; ++i)
        dynamic_cast<zoHPCProjectionItem*>(setup.projections.topLevelItem(i))->update();
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setCamera(fromBehind());

    QCOMPARE(nameOf(picture.itemAt(AREA.center(), AREA)), QStringLiteral("near row:1 col:1"));
    zoHPCRoomCamera camera = fromBehind();
    camera.yaw = 180.0;
    picture.setCamera(camera);
    QCOMPARE(nameOf(picture.itemAt(AREA.center(), AREA)), QStringLiteral("far row:1 col:1"));
}

void tst_zoHPCRoomPicture::planFindsTheTileOfAWallSeenFromItsEdge()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 3);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    zoHPCRoomCamera camera = fromBehind();
    camera.pitch = 90.0;
    camera.isParallel = true;
    picture.setCamera(camera);
    picture.fit(AREA);

    const zoHPCPlane& plane = picture.walls()[0].plane;
    for (int column = 0; column < 3; ++column) {
        const QPointF place = placeOf(picture, plane.at((column + 0.5) / 3.0, 0.3));
        // Of the upper row, which is what is seen from above.
        QCOMPARE(nameOf(picture.itemAt(place, AREA)), nameOf(wall->child(column)));
        QVERIFY(!picture.itemAt(place + QPointF(0.0, 12.0), AREA));
    }
}

void tst_zoHPCRoomPicture::caveWallIsFoundFromInsideAndOutside()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const cave = setup.addProjection(QStringLiteral("Cave"), QStringLiteral("cave"));
    cave->setBool(zoHPCProjectionItem::LeftWall, true);
    cave->update();
    setup.addWindow(QStringLiteral("n"), QStringLiteral("Cave"));
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    zoHPCRoomCamera camera;
    camera.pitch = 0.0;
    camera.distance = 800.0;
    for (const double yaw : {90.0, -90.0}) {
        // From the middle of the cave, then from far outside.
        camera.yaw = yaw;
        camera.target = yaw > 0.0 ? Point3{-800.0, 0.0, 0.0} : Point3{-1000.0, 0.0, 0.0};
        picture.setCamera(camera);

        QCOMPARE(nameOf(picture.itemAt(AREA.center(), AREA)), QStringLiteral("Cave Left"));
        const QImage image = painted(picture);
        QVERIFY(image.pixelColor(60, 240) != QColor(Qt::white));
    }
}

void tst_zoHPCRoomPicture::clickFindsAPlaneWithoutAreaAtItsLine()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const flat = setup.addProjection(QStringLiteral("flat"), QStringLiteral("plane"));
    zoHPCPlane({-500, 0, -1500}, {500, 0, -1500}, {500, 0, -1500}).toItem(*flat);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setCamera(fromBehind());

    QCOMPARE(picture.itemAt(AREA.center() + QPointF(10.0, 3.0), AREA), flat);
    QCOMPARE(picture.itemAt(AREA.center() + QPointF(10.0, 30.0), AREA), nullptr);
}

void tst_zoHPCRoomPicture::wholePictureIsPainted()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2, 100.0);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    const QImage image = painted(picture);

    QCOMPARE(count(image, Qt::magenta, 0), 0);
}

// Of tiles that are smaller than that some lines are left out, or the wall would be one colour.
void tst_zoHPCRoomPicture::tileLinesStayApart_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");

    QTest::newRow("columns") << 1000 << 1;
    QTest::newRow("rows") << 1 << 1000;
}

void tst_zoHPCRoomPicture::tileLinesStayApart()
{
    QFETCH(int, columns);
    QFETCH(int, rows);
    const auto pictureOf = [](int columns, int rows) {
        zoHPCSetup setup;
        setup.addPowerWall(QStringLiteral("wall"), rows, columns);
        zoHPCRoomPicture picture;
        picture.setLayout(setup.layout());
        picture.fit(AREA);
        return painted(picture);
    };
    const QImage plain = pictureOf(1, 1);
    const QColor wall = plain.pixelColor(plain.rect().center());

    const QImage lined = pictureOf(columns, rows);

    QVERIFY(count(lined, wall) < count(plain, wall) * 9 / 10);
    QVERIFY(count(lined, wall) > count(plain, wall) / 2);
}

void tst_zoHPCRoomPicture::frontAndBackLookDifferent()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const item = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    const zoHPCPlane front({-800, -800, -1500}, {800, -800, -1500}, {800, 800, -1500});
    const zoHPCPictureStyle style(lightPalette());
    setup.addWindow(QStringLiteral("n"), QStringLiteral("p"));
    zoHPCRoomPicture picture;

    front.toItem(*item);
    picture.setLayout(setup.layout());
    picture.setCamera(fromBehind());
    const QImage right = painted(picture);
    zoHPCPlane(front.lowerRight, front.lowerLeft, front.upperLeft()).toItem(*item);
    picture.setLayout(setup.layout());
    const QImage mirrored = painted(picture);

    QCOMPARE(count(right, style.bad), 0);
    QVERIFY(count(mirrored, style.bad) > 300);
}

void tst_zoHPCRoomPicture::blendShowsRampsAndOverlapDoesNot()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 1, 2, 600.0);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall"));
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setCamera(fromBehind());
    const auto colorAt = [&](double x) {
        return painted(picture).pixelColor(placeOf(picture, {x, 700.0, -1500.0}).toPoint());
    };

    // From blue to orange.
    QVERIFY(colorAt(-280.0).blue() > colorAt(280.0).blue() + 60);
    QVERIFY(colorAt(280.0).red() > colorAt(-280.0).red() + 60);
    wall->setBool(zoHPCProjectionItem::EdgeBlending, false);
    wall->update();
    picture.setLayout(setup.layout());
    QCOMPARE(colorAt(-200.0), colorAt(200.0));
    QVERIFY(colorAt(-200.0) != colorAt(-900.0));
}

void tst_zoHPCRoomPicture::currentTileIsHighlighted()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    const zoHPCLayout layout = setup.layout();
    const zoHPCPictureStyle style(lightPalette());
    zoHPCRoomPicture picture;
    picture.setLayout(layout);
    picture.setCamera(fromBehind());

    QCOMPARE(count(painted(picture), style.current), 0);
    picture.setCurrentItems({wall->child(1)}, layout);
    const QImage tile = painted(picture);
    picture.setCurrentItems({wall}, layout);
    const QImage whole = painted(picture);

    const int ofTile = count(tile, style.current);
    QVERIFY(ofTile > 200);
    QVERIFY(count(tile.copy(0, 0, 310, 480), style.current) == 0);
    QVERIFY(count(whole, style.current) > ofTile + 200);
}

void tst_zoHPCRoomPicture::currentViewportHighlightsItsProjection()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:1"));
    const zoHPCLayout layout = setup.layout();
    const zoHPCPictureStyle style(lightPalette());
    zoHPCRoomPicture picture;
    picture.setLayout(layout);
    picture.setCamera(fromBehind());

    for (const QTreeWidgetItem* item : {window->child(0), static_cast<QTreeWidgetItem*>(window)}) {
        picture.setCurrentItems({item}, layout);
        QVERIFY(count(painted(picture), style.current) > 200);
    }
    picture.setCurrentItems({}, layout);
    QCOMPARE(count(painted(picture), style.current), 0);
}

void tst_zoHPCRoomPicture::manyMarkedTilesStayApart()
{
    zoHPCSetup setup;
    const zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 20, 25);
    const zoHPCLayout layout = setup.layout();
    zoHPCRoomPicture picture;
    picture.setLayout(layout);
    picture.setCamera(fromBehind());
    picture.fit(AREA);
    zoHPCPicture::Rows tiles;
    for (int i = 0; i < wall->childCount(); ++i)
        tiles.insert(wall->child(i));

    picture.setCurrentItems(tiles, layout);

    const QImage image = painted(picture);
    const zoHPCPlane& plane = picture.walls()[0].plane;
    const QRectF place(placeOf(picture, plane.upperLeft()), placeOf(picture, plane.lowerRight));
    const int marked = count(image, zoHPCPictureStyle(lightPalette()).current);
    QVERIFY(marked > 500);
    QVERIFY2(marked < place.width() * place.height() / 3.0, qPrintable(QString::number(marked)));
    QCOMPARE(image.pixelColor(placeOf(picture, {}).toPoint()), QColor(Qt::black));
}

void tst_zoHPCRoomPicture::darkPaletteGivesADarkPicture()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    const QImage image = painted(picture, darkPalette());

    QCOMPARE(image.pixelColor(2, 470), QColor(30, 30, 30));
    QCOMPARE(count(image, Qt::white, 8), 0);
}

void tst_zoHPCRoomPicture::coloursStandOutInBothPalettes_data()
{
    QTest::addColumn<QPalette>("palette");

    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
}

void tst_zoHPCRoomPicture::coloursStandOutInBothPalettes()
{
    QFETCH(QPalette, palette);
    const zoHPCPictureStyle style(palette);
    // Relative luminance and contrast as the accessibility guidelines for the web define them.
    const auto luminance = [](const QColor& color) {
        const auto linear = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const auto contrast = [&](const QColor& a, const QColor& b) {
        const double first = luminance(a) + 0.05;
        const double second = luminance(b) + 0.05;
        return std::max(first, second) / std::min(first, second);
    };

    // Between grey and grey there is no hue.
    for (const QColor& grey : {style.faintText, style.grid, style.line, style.panel})
        QVERIFY2(grey.red() == grey.green() && grey.green() == grey.blue(), qPrintable(grey.name()));
    QVERIFY(contrast(style.text, style.background) >= 7.0);
    QVERIFY(contrast(style.faintText, style.background) >= 4.5);
    QVERIFY(contrast(style.bad, style.background) >= 3.0);
    QVERIFY(contrast(style.current, style.background) >= 3.0);
    QVERIFY(contrast(style.line, style.background) >= 3.0);
    // Left and right eye differ in brightness, or by the hues that no colour blindness confuses.
    QVERIFY(std::abs(style.leftEye.blue() - style.rightEye.blue()) > 100);
    QVERIFY(std::abs(style.fadeOut.blue() - style.fadeIn.blue()) > 100);
}

void tst_zoHPCRoomPicture::fastPictureLeavesOutTileNames()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 3);
    setup.addWindow(QStringLiteral("n"), QStringLiteral("wall"));
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setCamera(fromBehind());
    const QRect leftTile(placeOf(picture, {-1400.0, 300.0, -1500.0}).toPoint(),
                         placeOf(picture, {-600.0, -300.0, -1500.0}).toPoint());

    const QImage full = painted(picture).copy(leftTile);
    const QImage fast = painted(picture, lightPalette(), zoHPCPicture::Detail::Fast).copy(leftTile);

    QVERIFY(count(full, Qt::black, 40) > 5);
    QCOMPARE(count(fast, Qt::black, 40), 0);
}

void tst_zoHPCRoomPicture::wallsBehindTheCameraAreCutOff()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const cave = setup.addProjection(QStringLiteral("Cave"), QStringLiteral("cave"));
    for (int flag = zoHPCProjectionItem::LeftWall; flag <= zoHPCProjectionItem::BackWall; ++flag)
        cave->setBool(flag, true);
    cave->update();
    setup.addWindow(QStringLiteral("n"), QStringLiteral("Cave"));
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    zoHPCRoomCamera camera = fromBehind();
    camera.target = {0.0, 0.0, 0.0};
    camera.distance = 10.0;

    // From the middle of the cave, all around.
    for (int yaw = 0; yaw < 360; yaw += 30) {
        camera.yaw = yaw;
        picture.setCamera(camera);
        const QImage image = painted(picture);
        QVERIFY(image.pixelColor(100, 100) != QColor(Qt::white));
        QVERIFY(picture.itemAt(QPointF(100, 100), AREA));
    }
}

void tst_zoHPCRoomPicture::fitTakesInAllWalls()
{
    zoHPCSetup setup;
    QVERIFY(setup.load(QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc")));
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());

    picture.fit(AREA);

    QCOMPARE(picture.walls().size(), size_t(4));
    for (const zoHPCRoomPicture::Wall& wall : picture.walls()) {
        for (const Point3& corner :
             {wall.plane.lowerLeft, wall.plane.lowerRight, wall.plane.upperRight, wall.plane.upperLeft()})
            QVERIFY(AREA.contains(placeOf(picture, corner)));
    }
}

void tst_zoHPCRoomPicture::textsAreWholeAndBesideEachOther_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QPointF>("viewer"); // where the viewer is in the picture
    const QString usual = QStringLiteral("wall");
    QTest::newRow("left") << usual << QPointF(2.0, 200.0);
    QTest::newRow("right") << usual << QPointF(638.0, 200.0);
    QTest::newRow("top") << usual << QPointF(320.0, 2.0);
    QTest::newRow("legend") << usual << QPointF(30.0, 455.0);
    QTest::newRow("legend-of-two-lines") << usual << QPointF(60.0, 430.0);
    QTest::newRow("bottom") << usual << QPointF(320.0, 455.0);
    QTest::newRow("long-name") << QStringLiteral("wall ").repeated(60) << QPointF(320.0, 240.0);
    QTest::newRow("long-name-at-the-side") << QStringLiteral("wall ").repeated(12) << QPointF(600.0, 240.0);
}

void tst_zoHPCRoomPicture::textsAreWholeAndBesideEachOther()
{
    QFETCH(QString, name);
    QFETCH(QPointF, viewer);
    zoHPCSetup setup;
    setup.addPowerWall(name, 2, 2, 100.0);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    zoHPCRoomCamera camera = fromBehind();
    picture.setCamera(camera);
    camera.pan(viewer - placeOf(picture, {}), AREA);
    // The way of the target is not that of the viewer, who is nearer: once more for what is left.
    for (int i = 0; i < 20; ++i) {
        picture.setCamera(camera);
        camera.pan(viewer - placeOf(picture, {}), AREA);
    }
    picture.setCamera(camera);

    zoTextNotes notes(AREA.size().toSize());
    {
        QPainter painter(&notes);
        picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
    }

    QVERIFY(!notes.boxOf(QStringLiteral("Viewer")).isNull());
    for (const zoTextNotes::Text& text : notes.texts()) {
        QVERIFY2(AREA.contains(text.box), qPrintable(text.text));
        if (text.text.size() < 2)
            continue; // of the axes, which may lie over a wall's name
        for (const zoTextNotes::Text& other : notes.texts())
            QVERIFY2(&other == &text || other.text.size() < 2 || !other.box.intersects(text.box),
                     qPrintable(text.text + QStringLiteral(" over ") + other.text));
    }
}

void tst_zoHPCRoomPicture::lengthsThatAreNotSeenHaveNoText()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    wall->setDouble(zoHPCProjectionItem::Width, 4000.0);
    wall->setDouble(zoHPCProjectionItem::Height, 2500.0);
    wall->update();
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setHasDimensions(true);
    zoHPCRoomCamera camera = fromBehind();
    camera.isParallel = true;

    for (const bool isPlan : {false, true}) {
        camera.pitch = isPlan ? 90.0 : 0.0;
        picture.setCamera(camera);
        picture.fit(AREA);
        zoTextNotes notes(AREA.size().toSize());
        {
            QPainter painter(&notes);
            picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
        }
        QVERIFY(!notes.boxOf(QStringLiteral("4000 mm")).isNull());
        QCOMPARE(notes.boxOf(QStringLiteral("2500 mm")).isNull(), isPlan);
    }
}

void tst_zoHPCRoomPicture::outlinesNeedRoom()
{
    for (const int tiles : {2, 20}) {
        zoHPCSetup setup;
        setup.addPowerWall(QStringLiteral("wall"), tiles, tiles);
        for (int i = 1; i <= tiles; ++i)
            setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:%1").arg(i));
        setup.link();
        zoHPCRoomPicture picture;
        picture.setLayout(setup.layout());
        picture.setCamera(fromBehind());
        picture.fit(AREA);
        const QImage without = painted(picture);

        picture.setHasFrames(true);

        QCOMPARE(painted(picture) != without, tiles == 2);
        QCOMPARE(painted(picture, lightPalette(), zoHPCPicture::Detail::Fast), [&] {
            picture.setHasFrames(false);
            return painted(picture, lightPalette(), zoHPCPicture::Detail::Fast);
        }());
    }
}

void tst_zoHPCRoomPicture::textsOfWholeRoomsAreBesideEachOther_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("view"); // 0 as it comes, 1 elevation, 2 plan

    for (const char* file : {"cave-4-sided", "powerwall-2x2", "tiledwall-3x5-gateway"}) {
        for (int view = 0; view < 3; ++view)
            QTest::addRow("%s-%d", file, view) << QString::fromLatin1(file) << view;
    }
}

void tst_zoHPCRoomPicture::textsOfWholeRoomsAreBesideEachOther()
{
    QFETCH(QString, file);
    QFETCH(int, view);
    zoHPCSetup setup;
    QVERIFY(setup.load(QStringLiteral(ZO_SAMPLE_DIR "/%1.zhpc").arg(file)));
    setup.link();
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.setHasDimensions(true);
    picture.setHasFrames(true);
    zoHPCRoomCamera camera;
    if (view > 0) {
        camera.isParallel = true;
        camera.yaw = 0.0;
        camera.pitch = view == 2 ? 90.0 : 0.0;
    }
    picture.setCamera(camera);
    picture.fit(AREA);

    zoTextNotes notes(AREA.size().toSize());
    {
        QPainter painter(&notes);
        picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
    }

    QVERIFY(notes.texts().size() > 4);
    const QRectF viewer(placeOf(picture, {}) - QPointF(4.0, 4.0), QSizeF(8.0, 8.0));
    for (const zoTextNotes::Text& text : notes.texts()) {
        QVERIFY2(AREA.contains(text.box), qPrintable(text.text));
        QVERIFY2(!text.box.intersects(viewer), qPrintable(text.text + QStringLiteral(" over the viewer")));
        for (const zoTextNotes::Text& other : notes.texts())
            QVERIFY2(&other == &text || !other.box.intersects(text.box),
                     qPrintable(text.text + QStringLiteral(" over ") + other.text));
    }
}

void tst_zoHPCRoomPicture::painterIsLeftAsItWas()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 2, 2);
    zoHPCRoomPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(Qt::green);

    picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
    zoHPCRoomPicture().paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);

    QCOMPARE(painter.pen().color(), QColor(Qt::green));
    QVERIFY(!painter.hasClipping());
    QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
}

ZO_TEST_MAIN(tst_zoHPCRoomPicture)

#include "tst_zoHPCRoomPicture.moc"
