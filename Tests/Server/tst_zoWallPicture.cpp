#include "zoTestCase.h"
#include "zoWallPictures.h"

#include <zoNodeShow.h>
#include <zoWallPicture.h>

#include <QGuiApplication>

#include <cmath>

// All windows of a wall in one picture.
class tst_zoWallPicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lightAddsUpWherePicturesOverlap();
    void blendedWallIsSeamless();
    void caveLiesFlat();
    void flippedPicturesAreShownAsTheyAreSeen();
    void onlyWindowsOfTheWallCount();
    void largeWallsAreScaledDown();
    void samples_data();
    void samples();
};

namespace
{
// The same wall with windows of fewer pixels.
zoWallSetup smaller(zoWallSetup setup, double factor)
{
    const auto scaled = [factor](const QRectF& rect) {
        return QRectF(rect.topLeft() * factor, rect.size() * factor);
    };
    for (zoWallNode& node : setup.nodes) {
        for (zoWallWindow& window : node.windows) {
            window.geometry = scaled(window.geometry).toRect();
            for (zoWallViewport& viewport : window.viewports) {
                viewport.place = scaled(viewport.place);
                zoWallEdges& edges = viewport.edges;
                for (double* const edge : {&edges.left, &edges.right, &edges.top, &edges.bottom})
                    *edge *= factor;
            }
        }
    }
    setup.size = QSize(int(setup.size.width() * factor), int(setup.size.height() * factor));
    return setup;
}

QImage pictureOf(const zoWallSetup& setup, zoShowContent content)
{
    zoNodeShow show(setup);
    show.setContent(content);
    zoWallPicture wall(setup);
    int index = 0;
    for (const zoWallNode& node : setup.nodes) {
        for (const zoWallWindow& window : node.windows)
            wall.add(node.id, window.number, show.picture(index++));
    }
    return wall.image();
}

zoWallViewport viewportAt(const QRectF& place)
{
    zoWallViewport viewport;
    viewport.place = place;
    return viewport;
}

zoWallSetup setupOf(const zoWallViewport& a, const zoWallViewport& b, const QSize& size)
{
    zoWallWindow first;
    first.viewports = {a};
    zoWallWindow second;
    second.number = 2;
    second.viewports = {b};
    zoWallSetup setup;
    setup.nodes = {{QStringLiteral("n"), QStringLiteral("n"), QStringLiteral("n"), -1, {first, second}}};
    setup.size = size;
    return setup;
}

QImage filled(const QSize& size, const QColor& colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}
} // namespace

void tst_zoWallPicture::lightAddsUpWherePicturesOverlap()
{
    zoWallPicture wall(setupOf(viewportAt({0, 0, 20, 10}), viewportAt({10, 0, 20, 10}), {30, 10}));
    const QString node = QStringLiteral("n");

    QVERIFY(wall.add(node, 2, filled({20, 10}, QColor(100, 0, 200))));
    QVERIFY(wall.add(node, 1, filled({20, 10}, QColor(100, 50, 200))));

    QCOMPARE(wall.image().size(), QSize(30, 10));
    QCOMPARE(wall.image().pixel(5, 5), qRgb(100, 50, 200));
    QCOMPARE(wall.image().pixel(25, 5), qRgb(100, 0, 200));
    // Twice the light of 100 is 100 times the root of two to the exponent, 137; of 200, more than there is.
    QCOMPARE(wall.image().pixel(15, 5), qRgb(int(std::lround(100 * std::pow(2.0, 1.0 / 2.2))), 50, 255));
}

// Lit by four projectors that fade, the wall is what one would show.
void tst_zoWallPicture::blendedWallIsSeamless()
{
    const zoWallSetup setup = smaller(zoWallPictures::sample(QStringLiteral("powerwall-2x2")), 0.25);
    const QImage lit = pictureOf(setup, zoShowContent::TestImage);
    zoWallViewport whole = setup.nodes[0].windows[0].viewports[0];
    whole.plane = setup.walls[0];
    whole.edges = {};
    zoWallSetup one = setupOf(whole, viewportAt({}), setup.size);
    one.walls = setup.walls;
    one.nodes[0].windows[0].geometry = QRect(QPoint(0, 0), setup.size);

    zoNodeShow show(one);
    show.setContent(zoShowContent::TestImage);
    const QImage expected = show.picture(0);

    QCOMPARE(lit.size(), QSize(900, 540));
    QCOMPARE(expected.size(), lit.size());
    int others = 0;
    for (int y = 0; y < lit.height(); ++y) {
        for (int x = 0; x < lit.width(); ++x) {
            const QRgb a = lit.pixel(x, y);
            const QRgb b = expected.pixel(x, y);
            if (std::abs(qRed(a) - qRed(b)) > 12 || std::abs(qGreen(a) - qGreen(b)) > 12)
                ++others;
        }
    }
    // Edges of figures come out smoother where two projectors paint them.
    QVERIFY2(others < lit.width() * lit.height() / 100, qPrintable(QString::number(others)));
}

void tst_zoWallPicture::caveLiesFlat()
{
    const zoWallSetup setup = smaller(zoWallPictures::sample(QStringLiteral("cave-4-sided")), 0.25);

    const QImage image = pictureOf(setup, zoShowContent::TestImage);

    QCOMPARE(image.size(), setup.size);
    // Each wall has its line, and between floor and side walls there is nothing.
    QCOMPARE(image.pixel(0, 30), zoTestScene::EdgeColour.rgb());
    QCOMPARE(image.pixel(25, 750), qRgb(0, 0, 0));
    QVERIFY(image.pixel(900, 750) != qRgb(0, 0, 0));
}

void tst_zoWallPicture::flippedPicturesAreShownAsTheyAreSeen()
{
    zoWallViewport flipped = viewportAt({0, 0, 2, 1});
    flipped.flipX = true;
    zoWallPicture wall(setupOf(flipped, viewportAt({2, 0, 2, 1}), {4, 1}));
    QImage picture(2, 1, QImage::Format_RGB32);
    picture.setPixel(0, 0, qRgb(255, 0, 0));
    picture.setPixel(1, 0, qRgb(0, 255, 0));

    wall.add(QStringLiteral("n"), 1, picture);
    wall.add(QStringLiteral("n"), 2, picture);

    QCOMPARE(wall.image().pixel(0, 0), qRgb(0, 255, 0));
    QCOMPARE(wall.image().pixel(1, 0), qRgb(255, 0, 0));
    QCOMPARE(wall.image().pixel(2, 0), qRgb(255, 0, 0));
}

void tst_zoWallPicture::onlyWindowsOfTheWallCount()
{
    zoWallPicture wall(setupOf(viewportAt({0, 0, 2, 2}), viewportAt({2, 0, 2, 2}), {4, 2}));
    const QImage white = filled({2, 2}, Qt::white);

    QVERIFY(!wall.add(QStringLiteral("m"), 1, white));
    QVERIFY(!wall.add(QStringLiteral("n"), 3, white));
    QVERIFY(wall.add(QStringLiteral("n"), 2, QImage()));

    QCOMPARE(wall.image().pixel(3, 1), qRgb(0, 0, 0));
    QCOMPARE(zoWallPicture(zoWallSetup()).size(), QSize(1, 1));
}

void tst_zoWallPicture::largeWallsAreScaledDown()
{
    const zoWallPicture wall(setupOf(viewportAt({}), viewportAt({}), {100000, 50}));

    QCOMPARE(wall.size(), QSize(8192, 4));
}

void tst_zoWallPicture::samples_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name : {"powerwall-2x2", "tiledwall-3x5-gateway", "cave-4-sided", "default"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

// Whole pictures where somebody wants to look at them.
void tst_zoWallPicture::samples()
{
    QFETCH(QString, name);
    const bool isKept = !qEnvironmentVariableIsEmpty("ZO_SCREENSHOTS");
    const zoWallSetup setup = smaller(zoWallPictures::sample(name), isKept ? 1.0 : 0.1);

    const QImage tiles = pictureOf(setup, zoShowContent::Tiles);
    const QImage image = pictureOf(setup, zoShowContent::TestImage);

    zoWallPictures::keep(tiles, name + QStringLiteral("-tiles"));
    zoWallPictures::keep(image, name + QStringLiteral("-image"));
    for (const zoWallNode& node : setup.nodes) {
        for (const zoWallWindow& window : node.windows) {
            const QPoint middle = window.viewports.at(0).place.center().toPoint();
            if (setup.size.width() <= zoWallPicture::LargestSide &&
                setup.size.height() <= zoWallPicture::LargestSide)
                QVERIFY(tiles.pixel(middle) != qRgb(0, 0, 0) && image.pixel(middle) != qRgb(0, 0, 0));
        }
    }
}

int main(int argc, char** argv)
{
    zoNodeShow::prepareApplication();
    QGuiApplication application(argc, argv);
    tst_zoWallPicture test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoWallPicture.moc"
