#include "zoHPCSetup.h"
#include "zoTestCase.h"
#include "zoTextNotes.h"

#include <zoHPCPictureFile.h>
#include <zoHPCPictureStyle.h>
#include <zoHPCScreensPicture.h>

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

#include <cmath>

namespace
{
const QRectF AREA(0.0, 0.0, 640.0, 480.0);

QPalette lightPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

QImage painted(const zoHPCScreensPicture& picture, zoHPCPicture::Detail detail = zoHPCPicture::Detail::Full)
{
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    picture.paint(painter, AREA, lightPalette(), detail);
    return image;
}

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

const zoHPCScreensPicture::Window& windowOf(const zoHPCScreensPicture& picture, size_t node = 0,
                                            size_t screen = 0, size_t window = 0)
{
    return picture.nodes().at(node).screens.at(screen).windows.at(window);
}
} // namespace

// The picture of the screens.
class tst_zoHPCScreensPicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void nothingIsDrawnAsNothing();
    void nodesComeInTheOrderOfTheirWindows();
    void nodeTellsWhatIsWrongWithIt();
    void screensOfANodeAreSorted();
    void screenIsAsLargeAsItsWindowsNeed();
    void windowInFullScreenFillsItsScreen();
    void knownScreenSizeCounts();
    void extendedDesktopHasNoSize();
    void windowOffItsScreenIsTold_data();
    void windowOffItsScreenIsTold();
    void overlappingWindowsAreTold();
    void coveredWindowShowsNoText();
    void damagedGeometryDoesNotHideTheRest();
    void cornersThatAreNoNumbersAreNotDrawn_data();
    void cornersThatAreNoNumbersAreNotDrawn();
    void viewportKnowsWhatItShows();

    void screensAreToScale();
    void cardsDoNotOverlap();
    void fitTakesInAllNodes();
    void zoomKeepsThePointUnderTheMouse();
    void nothingIsPaintedBesideItsArea();
    void updateKeepsTheScreensInPlace();
    void updateWithOtherScreensPlacesThemAnew();

    void clickFindsWindowAndViewport();
    void clickFindsTheUppermostWindow();
    void edgesCanBeTaken_data();
    void edgesCanBeTaken();
    void windowInFullScreenCannotBeMoved();

    void wholePictureIsPainted();
    void eyesHaveTheirColours();
    void textsOfEyesAtOnePlaceAreBesideEachOther();
    void overlapStandsOut();
    void currentItemIsHighlighted();
    void screenNames_data();
    void screenNames();
    void eyeNames_data();
    void eyeNames();
};

void tst_zoHPCScreensPicture::nothingIsDrawnAsNothing()
{
    zoHPCScreensPicture picture;
    picture.setLayout(zoHPCSetup().layout());
    picture.fit(AREA);

    QVERIFY(picture.nodes().empty());
    QVERIFY(!picture.hitTest(AREA.center()).window);
    QCOMPARE(painted(picture).pixelColor(3, 3), QColor(Qt::white));
}

void tst_zoHPCScreensPicture::nodesComeInTheOrderOfTheirWindows()
{
    zoHPCSetup setup;
    for (const char* node : {"b", "a", "b", ""})
        setup.addWindow(QString::fromLatin1(node), QString());
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QCOMPARE(picture.nodes().size(), size_t(3));
    QCOMPARE(picture.nodes()[0].name, QStringLiteral("b"));
    QCOMPARE(picture.nodes()[1].name, QStringLiteral("a"));
    QCOMPARE(picture.nodes()[2].name, QString());
    QCOMPARE(picture.nodes()[0].screens[0].windows.size(), size_t(2));
    QCOMPARE(windowOf(picture, 0, 0, 1).item, setup.display()->child(2));
    QCOMPARE(windowOf(picture, 0, 0, 1).name, QStringLiteral("Window 3"));
}

void tst_zoHPCScreensPicture::nodeTellsWhatIsWrongWithIt()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("on"));
    setup.addNode(QStringLiteral("off"))->setIsEnabled(false);
    for (const char* node : {"on", "off", "gone"})
        setup.addWindow(QString::fromLatin1(node), QString());
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QVERIFY(picture.nodes()[0].isKnown && picture.nodes()[0].isEnabled);
    QVERIFY(picture.nodes()[1].isKnown && !picture.nodes()[1].isEnabled);
    QVERIFY(!picture.nodes()[2].isKnown);
}

void tst_zoHPCScreensPicture::screensOfANodeAreSorted()
{
    zoHPCSetup setup;
    for (const char* screen : {"3", "-2", "0", "-1"})
        setup.addWindowAt(QStringLiteral("n"), QString::fromLatin1(screen), 0, 0, 100, 100);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QList<int> numbers;
    for (const zoHPCScreensPicture::Screen& screen : picture.nodes()[0].screens)
        numbers << screen.number;
    QCOMPARE(numbers, QList<int>({-2, -1, 0, 3}));
}

void tst_zoHPCScreensPicture::screenIsAsLargeAsItsWindowsNeed()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 800, 100, 800, 600);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QCOMPARE(picture.nodes()[0].screens[0].size, QSizeF(1600, 700));
    QVERIFY(!picture.nodes()[0].screens[0].isSizeKnown);
}

void tst_zoHPCScreensPicture::windowInFullScreenFillsItsScreen()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    window->setInt(zoHPCWindowItem::X, 5000);
    window->setInt(zoHPCWindowItem::Width, 1920);
    window->setInt(zoHPCWindowItem::Height, 1200);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QCOMPARE(windowOf(picture).geometry, QRectF(0, 0, 1920, 1200));
    QVERIFY(!windowOf(picture).isOffScreen);
}

void tst_zoHPCScreensPicture::knownScreenSizeCounts()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 1000, 0, 1920, 1080);
    setup.addWindow(QStringLiteral("m"), QString());
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());
    QVERIFY(!windowOf(picture).isOffScreen);
    picture.setScreenSize(QSizeF(1920, 1080));
    picture.setLayout(setup.layout());

    QVERIFY(picture.nodes()[0].screens[0].isSizeKnown);
    QCOMPARE(picture.nodes()[0].screens[0].size, QSizeF(1920, 1080));
    QVERIFY(windowOf(picture).isOffScreen);
    QCOMPARE(windowOf(picture, 1).geometry, QRectF(0, 0, 1920, 1080));
}

void tst_zoHPCScreensPicture::extendedDesktopHasNoSize()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("-2"), -1920, 0, 3840, 1080);
    zoHPCScreensPicture picture;
    picture.setScreenSize(QSizeF(1920, 1080));

    picture.setLayout(setup.layout());

    QVERIFY(!picture.nodes()[0].screens[0].isSizeKnown);
    QVERIFY(!windowOf(picture).isOffScreen);
    QCOMPARE(picture.nodes()[0].screens[0].bounds, QRectF(-1920, 0, 3840, 1080));
}

void tst_zoHPCScreensPicture::windowOffItsScreenIsTold_data()
{
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<bool>("off");

    QTest::newRow("whole-screen") << QRect(0, 0, 1920, 1080) << false;
    QTest::newRow("inside") << QRect(10, 10, 100, 100) << false;
    QTest::newRow("left-of-it") << QRect(-1, 0, 100, 100) << true;
    QTest::newRow("above-it") << QRect(0, -1, 100, 100) << true;
    QTest::newRow("over-the-right-edge") << QRect(1821, 0, 100, 100) << true;
    QTest::newRow("over-the-lower-edge") << QRect(0, 981, 100, 100) << true;
    QTest::newRow("far-away") << QRect(9000, 9000, 100, 100) << true;
}

void tst_zoHPCScreensPicture::windowOffItsScreenIsTold()
{
    QFETCH(QRect, geometry);
    QFETCH(bool, off);
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), geometry.x(), geometry.y(), geometry.width(),
                      geometry.height());
    zoHPCScreensPicture picture;
    picture.setScreenSize(QSizeF(1920, 1080));

    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QCOMPARE(windowOf(picture).isOffScreen, off);
    const int bad = count(painted(picture), zoHPCPictureStyle(lightPalette()).bad);
    // The node is none of the cluster's, which is told in the same colour.
    setup.addNode(QStringLiteral("n"));
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    QCOMPARE(count(painted(picture), zoHPCPictureStyle(lightPalette()).bad) > 0, off);
    QVERIFY(bad > 0);
}

void tst_zoHPCScreensPicture::overlappingWindowsAreTold()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 100, 100);
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 50, 60, 100, 100);
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 500, 0, 100, 100);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QVERIFY(windowOf(picture, 0, 0, 0).overlaps);
    QVERIFY(windowOf(picture, 0, 0, 1).overlaps);
    QVERIFY(!windowOf(picture, 0, 0, 2).overlaps);
    const std::vector<QRectF>& overlaps = picture.nodes()[0].screens[0].overlaps;
    QCOMPARE(overlaps.size(), size_t(1));
    QCOMPARE(overlaps[0], QRectF(50, 60, 50, 40));
}

void tst_zoHPCScreensPicture::coveredWindowShowsNoText()
{
    zoHPCSetup setup;
    for (int i = 0; i < 3; ++i)
        setup.addWindow(QStringLiteral("n"), QString());
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    QVERIFY(windowOf(picture, 0, 0, 0).isCovered);
    QVERIFY(windowOf(picture, 0, 0, 1).isCovered);
    QVERIFY(!windowOf(picture, 0, 0, 2).isCovered);
}

void tst_zoHPCScreensPicture::damagedGeometryDoesNotHideTheRest()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 2147483647, -2147483647, 2147483647,
                      2147483647);
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("x"), 0, 0, -50, 0);
    setup.addWindowAt(QStringLiteral("m"), QStringLiteral("2147483647"), 0, 0, 800, 600);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());
    picture.fit(AREA);

    const QRectF place = picture.placeOf(windowOf(picture, 1).item);
    QVERIFY(place.width() > 1.0);
    QVERIFY(AREA.contains(place));
    QCOMPARE(count(painted(picture), Qt::magenta, 0), 0);
    QVERIFY(!zoHPCScreensPicture::screenName(2147483647).contains(QLatin1Char('-')));
}

void tst_zoHPCScreensPicture::cornersThatAreNoNumbersAreNotDrawn_data()
{
    QTest::addColumn<QString>("corner");

    for (const char* corner : {"nan", "inf", "-inf", "1.7e308", "-1.7e308"})
        QTest::newRow(corner) << QString::fromLatin1(corner);
}

// The toolkit writes whatever it gets into a file, and no program reads "nan" there.
void tst_zoHPCScreensPicture::cornersThatAreNoNumbersAreNotDrawn()
{
    QFETCH(QString, corner);
    zoHPCSetup setup;
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCViewportItem* const viewport = setup.addViewport(window, QString(), QStringLiteral("mono"));
    viewport->setString(zoHPCViewportItem::Position, QStringLiteral("custom"));
    for (const int column :
         {zoHPCViewportItem::X1, zoHPCViewportItem::Y1, zoHPCViewportItem::X2, zoHPCViewportItem::Y2})
        viewport->setString(column, corner);
    viewport->setString(zoHPCViewportItem::X2, QStringLiteral("1"));
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QBuffer file;
    QVERIFY(zoHPCPictureFile::write(picture, file, QStringLiteral("svg"), AREA.size().toSize()));

    static const QRegularExpression noNumber(QStringLiteral("[\\s\",(]-?(nan|inf)[\\s\",)]"));
    QVERIFY2(!QString::fromUtf8(file.data()).contains(noNumber), file.data());
}

void tst_zoHPCScreensPicture::viewportKnowsWhatItShows()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    zoHPCWindowItem* const window =
        setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:2"), QStringLiteral("left"));
    setup.addViewport(window, QStringLiteral("gone"), QStringLiteral("mono"))
        ->setBool(zoHPCViewportItem::FlipX, true);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());

    const std::vector<zoHPCScreensPicture::Viewport>& viewports = windowOf(picture).viewports;
    QCOMPARE(viewports.size(), size_t(2));
    QCOMPARE(viewports[0].projection, QStringLiteral("wall row:1 col:2"));
    QCOMPARE(viewports[0].shown, wall->child(1));
    QCOMPARE(viewports[0].shownTop, wall);
    QCOMPARE(viewports[0].eye, QStringLiteral("left"));
    QCOMPARE(viewports[1].projection, QString());
    QVERIFY(viewports[1].isFlippedX && !viewports[1].isFlippedY);
}

void tst_zoHPCScreensPicture::screensAreToScale()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const small =
        setup.addWindowAt(QStringLiteral("a"), QStringLiteral("0"), 0, 0, 640, 480);
    zoHPCWindowItem* const large =
        setup.addWindowAt(QStringLiteral("b"), QStringLiteral("0"), 100, 50, 1280, 960);
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QVERIFY(std::abs(picture.placeOf(large).width() - 2.0 * picture.placeOf(small).width()) < 1e-6);
    QVERIFY(std::abs(picture.placeOf(large).height() - 960.0 * picture.scale()) < 1e-6);
}

void tst_zoHPCScreensPicture::cardsDoNotOverlap()
{
    zoHPCSetup setup;
    for (int i = 0; i < 40; ++i)
        setup.addWindowAt(QString::number(i), QStringLiteral("0"), -100 * (i % 3), 0, 500 + 100 * (i % 7),
                          400 + 90 * (i % 5));
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());
    picture.fit(AREA);

    const std::vector<zoHPCScreensPicture::Node>& nodes = picture.nodes();
    for (size_t i = 0; i < nodes.size(); ++i) {
        const zoHPCScreensPicture::Screen& screen = nodes[i].screens[0];
        QVERIFY(nodes[i].card.contains(screen.bounds.translated(screen.origin)));
        for (size_t j = i + 1; j < nodes.size(); ++j)
            QVERIFY(!nodes[i].card.intersects(nodes[j].card));
    }
}

void tst_zoHPCScreensPicture::fitTakesInAllNodes()
{
    zoHPCSetup setup;
    QVERIFY(setup.load(QStringLiteral(ZO_DATA_DIR "/cluster/tiledwall-3x5-gateway.zhpc")));
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());

    for (const QRectF& area : {AREA, QRectF(0, 0, 200, 900), QRectF(30, 40, 1000, 100)}) {
        picture.fit(area);
        for (const zoHPCScreensPicture::Node& node : picture.nodes())
            QVERIFY(area.contains(picture.placeOf(node.screens[0].windows[0].item)));
    }
    QCOMPARE(picture.nodes().size(), size_t(15));
}

void tst_zoHPCScreensPicture::zoomKeepsThePointUnderTheMouse()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("a"), QString());
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    const QPointF corner = picture.placeOf(window).topLeft();
    const double scale = picture.scale();

    picture.zoom(2.0, corner);
    QVERIFY((picture.placeOf(window).topLeft() - corner).manhattanLength() < 1e-6);
    QVERIFY(std::abs(picture.scale() - 2.0 * scale) < 1e-9);
    picture.pan(QPointF(10.0, 20.0));
    QVERIFY((picture.placeOf(window).topLeft() - corner - QPointF(10.0, 20.0)).manhattanLength() < 1e-6);
    picture.zoom(-1.0, corner);
    picture.zoom(1e-30, corner);
    QVERIFY(picture.scale() > 0.0);
}

// Beside it there may be another picture.
void tst_zoHPCScreensPicture::nothingIsPaintedBesideItsArea()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("a"), QString());
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    picture.zoom(8.0, AREA.center());
    const QRectF area = AREA.adjusted(100.0, 100.0, -100.0, -100.0);
    QImage image(AREA.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    {
        QPainter painter(&image);
        picture.paint(painter, area, lightPalette(), zoHPCPicture::Detail::Full);
    }

    QVERIFY(count(image.copy(area.toRect()), Qt::magenta, 0) == 0);
    const int inside = area.toRect().width() * area.toRect().height();
    QCOMPARE(count(image, Qt::magenta, 0), image.width() * image.height() - inside);
}

void tst_zoHPCScreensPicture::updateKeepsTheScreensInPlace()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const moved =
        setup.addWindowAt(QStringLiteral("a"), QStringLiteral("0"), 0, 0, 640, 480);
    zoHPCWindowItem* const other =
        setup.addWindowAt(QStringLiteral("b"), QStringLiteral("0"), 0, 0, 640, 480);
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    const QRectF place = picture.placeOf(moved);
    const QRectF otherPlace = picture.placeOf(other);

    moved->setInt(zoHPCWindowItem::X, 100);
    moved->setInt(zoHPCWindowItem::Y, -30);
    picture.updateLayout(setup.layout());

    const QPointF way = picture.placeOf(moved).topLeft() - place.topLeft();
    QVERIFY((way - picture.scale() * QPointF(100, -30)).manhattanLength() < 1e-6);
    QCOMPARE(picture.placeOf(other), otherPlace);
}

void tst_zoHPCScreensPicture::updateWithOtherScreensPlacesThemAnew()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("a"), QStringLiteral("0"), 0, 0, 640, 480);
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());

    zoHPCWindowItem* const added =
        setup.addWindowAt(QStringLiteral("b"), QStringLiteral("0"), 0, 0, 640, 480);
    picture.updateLayout(setup.layout());

    QVERIFY(!picture.nodes()[0].card.intersects(picture.nodes()[1].card));
    QVERIFY(!picture.placeOf(added).isEmpty());
}

void tst_zoHPCScreensPicture::clickFindsWindowAndViewport()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCViewportItem* const left = setup.addViewport(window, QString(), QStringLiteral("left"));
    left->setString(zoHPCViewportItem::Position, QStringLiteral("left"));
    left->update();
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    const QRectF place = picture.placeOf(window);

    const zoHPCScreensPicture::Hit inLeft =
        picture.hitTest(place.center() - QPointF(place.width() / 4.0, 0.0));
    const zoHPCScreensPicture::Hit inRight =
        picture.hitTest(place.center() + QPointF(place.width() / 4.0, 0.0));

    QCOMPARE(inLeft.window, window);
    QCOMPARE(inLeft.viewport, left);
    QCOMPARE(inLeft.edges, unsigned(zoHPCScreensPicture::NoEdge));
    QCOMPARE(inRight.window, window);
    QCOMPARE(inRight.viewport, nullptr);
    QCOMPARE(picture.hitTest(QPointF(-50, -50)).window, nullptr);
}

void tst_zoHPCScreensPicture::clickFindsTheUppermostWindow()
{
    zoHPCSetup setup;
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCWindowItem* const upper =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 400, 300, 800, 600);
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QCOMPARE(picture.hitTest(picture.placeOf(upper).topLeft() + QPointF(20, 20)).window, upper);
}

void tst_zoHPCScreensPicture::edgesCanBeTaken_data()
{
    using P = zoHPCScreensPicture;
    QTest::addColumn<QPointF>("fraction");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<unsigned>("edges");

    QTest::newRow("inside") << QPointF(0.5, 0.5) << QPointF(0, 0) << unsigned(P::NoEdge);
    QTest::newRow("left") << QPointF(0.0, 0.5) << QPointF(2, 0) << unsigned(P::LeftEdge);
    QTest::newRow("left-from-outside") << QPointF(0.0, 0.5) << QPointF(-3, 0) << unsigned(P::LeftEdge);
    QTest::newRow("right") << QPointF(1.0, 0.5) << QPointF(-2, 0) << unsigned(P::RightEdge);
    QTest::newRow("top") << QPointF(0.5, 0.0) << QPointF(0, 2) << unsigned(P::TopEdge);
    QTest::newRow("bottom") << QPointF(0.5, 1.0) << QPointF(0, -2) << unsigned(P::BottomEdge);
    QTest::newRow("corner") << QPointF(1.0, 1.0) << QPointF(-2, -2) << unsigned(P::RightEdge | P::BottomEdge);
}

void tst_zoHPCScreensPicture::edgesCanBeTaken()
{
    QFETCH(QPointF, fraction);
    QFETCH(QPointF, offset);
    QFETCH(unsigned, edges);
    zoHPCSetup setup;
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    const QRectF place = picture.placeOf(window);

    const zoHPCScreensPicture::Hit hit = picture.hitTest(
        place.topLeft() + QPointF(fraction.x() * place.width(), fraction.y() * place.height()) + offset);

    QCOMPARE(hit.window, window);
    QVERIFY(hit.canMove);
    QCOMPARE(hit.edges, edges);
}

void tst_zoHPCScreensPicture::windowInFullScreenCannotBeMoved()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    const zoHPCScreensPicture::Hit hit = picture.hitTest(picture.placeOf(window).topLeft() + QPointF(1, 50));

    QCOMPARE(hit.window, window);
    QVERIFY(!hit.canMove);
    QCOMPARE(hit.edges, unsigned(zoHPCScreensPicture::NoEdge));
}

void tst_zoHPCScreensPicture::wholePictureIsPainted()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QString());
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QCOMPARE(count(painted(picture), Qt::magenta, 0), 0);
    QCOMPARE(count(painted(picture, zoHPCPicture::Detail::Fast), Qt::magenta, 0), 0);
}

void tst_zoHPCScreensPicture::eyesHaveTheirColours()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("n"));
    setup.addPowerWall(QStringLiteral("wall"), 1, 1);
    zoHPCWindowItem* const window =
        setup.addWindow(QStringLiteral("n"), QStringLiteral("wall"), QStringLiteral("left"));
    zoHPCScreensPicture picture;
    const auto colorFor = [&](const char* eye) {
        auto* const viewport = dynamic_cast<zoHPCViewportItem*>(window->child(0));
        viewport->setString(zoHPCViewportItem::Eye, QString::fromLatin1(eye));
        picture.setLayout(setup.layout());
        picture.fit(AREA);
        const QRectF place = picture.placeOf(window);
        return painted(picture).pixelColor((place.center() + QPointF(0.0, place.height() / 3.0)).toPoint());
    };

    const QColor left = colorFor("left");
    const QColor right = colorFor("right");
    QVERIFY(left.blue() > left.red() + 30);
    QVERIFY(right.red() > right.blue() + 30);
    QVERIFY(colorFor("mono") != colorFor("stereo"));
    QVERIFY(colorFor("mono") != left);
}

void tst_zoHPCScreensPicture::overlapStandsOut()
{
    zoHPCSetup setup;
    setup.addNode(QStringLiteral("n"));
    setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCWindowItem* const second =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 800, 0, 800, 600);
    const QColor bad = zoHPCPictureStyle(lightPalette()).bad;
    zoHPCScreensPicture picture;

    picture.setLayout(setup.layout());
    picture.fit(AREA);
    QCOMPARE(count(painted(picture), bad), 0);
    second->setInt(zoHPCWindowItem::X, 600);
    picture.setLayout(setup.layout());
    picture.fit(AREA);
    QVERIFY(count(painted(picture), bad) > 200);
}

void tst_zoHPCScreensPicture::currentItemIsHighlighted()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("wall"), 1, 2);
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QStringLiteral("wall row:1 col:2"));
    const QColor current = zoHPCPictureStyle(lightPalette()).current;
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    QCOMPARE(count(painted(picture), current), 0);
    const QList<QTreeWidgetItem*> items{window, window->child(0), wall, wall->child(1)};
    for (const QTreeWidgetItem* item : items) {
        picture.setCurrentItems({item});
        QVERIFY(count(painted(picture), current) > 200);
    }
    picture.setCurrentItems({wall->child(0)});
    QCOMPARE(count(painted(picture), current), 0);
}

void tst_zoHPCScreensPicture::screenNames_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");

    QTest::newRow("desktop") << -2 << "Extended desktop";
    QTest::newRow("primary") << -1 << "Primary screen";
    QTest::newRow("first") << 0 << "Screen 1";
    QTest::newRow("last") << 15 << "Screen 16";
}

void tst_zoHPCScreensPicture::screenNames()
{
    QFETCH(int, number);
    QFETCH(QString, name);

    QCOMPARE(zoHPCScreensPicture::screenName(number), name);
}

void tst_zoHPCScreensPicture::textsOfEyesAtOnePlaceAreBesideEachOther()
{
    zoHPCSetup setup;
    setup.addPowerWall(QStringLiteral("wall"), 1, 1);
    setup.addNode(QStringLiteral("n"));
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QStringLiteral("wall"));
    auto* left = dynamic_cast<zoHPCViewportItem*>(window->child(0));
    auto* right = static_cast<zoHPCViewportItem*>(left->clone());
    window->addChild(right);
    left->setString(zoHPCViewportItem::Eye, QStringLiteral("left"));
    right->setString(zoHPCViewportItem::Eye, QStringLiteral("right"));
    zoHPCScreensPicture picture;
    picture.setLayout(setup.layout());
    picture.fit(AREA);

    zoTextNotes notes(AREA.size().toSize());
    {
        QPainter painter(&notes);
        picture.paint(painter, AREA, lightPalette(), zoHPCPicture::Detail::Full);
    }

    QVERIFY(!notes.boxOf(zoHPCScreensPicture::eyeName(QStringLiteral("left"))).isNull());
    QVERIFY(!notes.boxOf(zoHPCScreensPicture::eyeName(QStringLiteral("right"))).isNull());
    for (const zoTextNotes::Text& text : notes.texts()) {
        for (const zoTextNotes::Text& other : notes.texts())
            QVERIFY2(&other == &text || !other.box.intersects(text.box),
                     qPrintable(text.text + QStringLiteral(" over ") + other.text));
    }
}

void tst_zoHPCScreensPicture::eyeNames_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<QString>("name");

    QTest::newRow("mono") << "mono"
                          << "";
    QTest::newRow("left") << "left"
                          << "Left";
    QTest::newRow("stereo") << "stereo"
                            << "Double Buffered";
    QTest::newRow("split") << "splitbottomtop"
                           << "Top/Bottom Split";
    QTest::newRow("anaglyph") << "greenmagenta"
                              << "Green/Magenta";
    QTest::newRow("unknown") << "sideways"
                             << "";
}

void tst_zoHPCScreensPicture::eyeNames()
{
    QFETCH(QString, eye);
    QFETCH(QString, name);

    QCOMPARE(zoHPCScreensPicture::eyeName(eye), name);
}

ZO_TEST_MAIN(tst_zoHPCScreensPicture)

#include "tst_zoHPCScreensPicture.moc"
