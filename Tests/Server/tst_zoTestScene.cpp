#include "zoTestCase.h"

#include <zoOffAxisView.h>
#include <zoStrokeDigits.h>
#include <zoTestScene.h>

#include <QApplication>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>
#include <cstddef>

Q_DECLARE_METATYPE(zoWallPoint)

// The test image. Where a line is to be, is worked out here from planes and eyes alone.
class tst_zoTestScene final : public zoTestCase
{
    Q_OBJECT

private slots:
    void floorLinesCrossTheSeamOfTwoTiles_data();
    void floorLinesCrossTheSeamOfTwoTiles();
    void floorLinesCrossACornerOfACave_data();
    void floorLinesCrossACornerOfACave();
    void horizonIsAtTheHeightOfTheEyes_data();
    void horizonIsAtTheHeightOfTheEyes();
    void edgesOfTheWallAreLined();
    void tilesTogetherAreTheWhole();
    void nothingIsDrawnFarOutside();
    void eyeBehindTheWallSeesNothing();
    void ballsLieOnTheFloorOrAbove();
    void ballsAreInAllDirections();
    void numbersHaveOutlines_data();
    void numbersHaveOutlines();
};

namespace
{
constexpr double Floor = -800.0;

QImage pictureOf(const zoTestScene& scene, const zoWallPlane& plane, const zoWallPoint& eye,
                 const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    scene.paint(painter, QRectF(QPointF(0, 0), size), zoOffAxisView(plane, eye));
    return image;
}

// Draws nothing, and notes where it would.
class Notes final : public QPaintEngine
{
public:
    Notes() : QPaintEngine(QPaintEngine::AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath& path) override { drawn |= path.boundingRect(); }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override
    {
        for (int i = 0; i < count; ++i)
            drawn |= QRectF(points[i], QSizeF(1, 1));
        ++polygons;
    }
    Type type() const override { return QPaintEngine::User; }

    QRectF drawn;
    int polygons = 0;
};

// Paper of a size that those notes are taken on.
class Sheet final : public QPaintDevice
{
public:
    explicit Sheet(const QSize& size) : m_size(size) {}

    QPaintEngine* paintEngine() const override { return &m_notes; }
    const Notes& notes() const { return m_notes; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        if (metric == PdmWidth || metric == PdmHeight)
            return metric == PdmWidth ? m_size.width() : m_size.height();
        return metric == PdmDepth ? 32 : metric == PdmDevicePixelRatio ? 1 : 96;
    }

private:
    QSize m_size;
    mutable Notes m_notes;
};

int brightness(QRgb pixel)
{
    return qRed(pixel) + qGreen(pixel) + qBlue(pixel);
}

// The middle of a bright line that crosses a column within a few pixels of a place, counted from the top; -1 for
// none.
double brightRow(const QImage& image, int column, double expected)
{
    constexpr int Reach = 4;
    const int middle = int(std::floor(expected));
    int best = middle;
    int darkest = 765;
    for (int y = middle - Reach; y <= middle + Reach; ++y) {
        if (brightness(image.pixel(column, y)) > brightness(image.pixel(column, best)))
            best = y;
        darkest = std::min(darkest, brightness(image.pixel(column, y)));
    }
    return brightness(image.pixel(column, best)) - darkest > 60 ? best + 0.5 : -1.0;
}

// A plane of 2000 x 1200 mm, 2000 mm ahead, whose tiles meet at x = 300.
constexpr double SeamX = 300.0;
const zoWallPlane Whole{{}, {-700, Floor, -2000}, {1300, Floor, -2000}, {1300, 400, -2000}};
const zoWallPlane LeftTile{{}, {-700, Floor, -2000}, {SeamX, Floor, -2000}, {SeamX, 400, -2000}};
const zoWallPlane RightTile{{}, {SeamX, Floor, -2000}, {1300, Floor, -2000}, {1300, 400, -2000}};
const QSize TileSize(1000, 1200); // a pixel is a millimetre
} // namespace

void tst_zoTestScene::floorLinesCrossTheSeamOfTwoTiles_data()
{
    QTest::addColumn<double>("lineX");
    QTest::addColumn<zoWallPoint>("eye");

    QTest::newRow("first-line") << 1000.0 << zoWallPoint{0, 0, 0};
    QTest::newRow("second-line") << 2000.0 << zoWallPoint{0, 0, 0};
    QTest::newRow("right-eye") << 1000.0 << zoWallPoint{32.5, 0, 0};
    QTest::newRow("eye-aside") << 2000.0 << zoWallPoint{-150, 60, 200};
}

// A line of the floor parallel to the line of sight, at lineX. On the plane it runs to the vanishing point, which is
// where the eye is: from there it falls by (eye - floor) for each (lineX - eye) to the side.
void tst_zoTestScene::floorLinesCrossTheSeamOfTwoTiles()
{
    QFETCH(double, lineX);
    QFETCH(zoWallPoint, eye);
    const zoTestScene scene({Whole}, {0, 0, 0});
    QCOMPARE(scene.floorHeight(), Floor);
    const QImage left = pictureOf(scene, LeftTile, eye, TileSize);
    const QImage right = pictureOf(scene, RightTile, eye, TileSize);
    const auto rowAt = [&](double x) {
        const double height = eye.y - (eye.y - Floor) * (x - eye.x) / (lineX - eye.x);
        return 400.0 - height;
    };

    const double inLeft = brightRow(left, 999, rowAt(SeamX - 0.5));
    const double inRight = brightRow(right, 0, rowAt(SeamX + 0.5));

    QVERIFY2(std::abs(inLeft - rowAt(SeamX - 0.5)) <= 1.0, qPrintable(QString::number(inLeft)));
    QVERIFY2(std::abs(inRight - rowAt(SeamX + 0.5)) <= 1.0, qPrintable(QString::number(inRight)));
}

void tst_zoTestScene::floorLinesCrossACornerOfACave_data()
{
    QTest::addColumn<double>("line");
    // Pixels from the corner, where the two lines are well apart and no ball is before them.
    QTest::addColumn<int>("beside");

    QTest::newRow("two-metres") << 2000.0 << 12;
    QTest::newRow("three-metres") << 3000.0 << 12;
    QTest::newRow("four-metres") << 4000.0 << 40;
}

// Lines of the floor at x = line and at z = -line cross behind the corner at x = 1500, z = -1500. beside the line along
// the corner, the first is seen on the front wall and the second on the right one.
void tst_zoTestScene::floorLinesCrossACornerOfACave()
{
    QFETCH(double, line);
    QFETCH(int, beside);
    constexpr double Bottom = -1600.0;
    const zoWallPlane front{{}, {-1500, Bottom, -1500}, {1500, Bottom, -1500}, {1500, 800, -1500}};
    const zoWallPlane side{{}, {1500, Bottom, -1500}, {1500, Bottom, 1500}, {1500, 800, 1500}};
    const zoTestScene scene({front, side}, {0, 0, 0});
    const QSize size(1500, 1200); // a pixel is two millimetres
    const QImage inFront = pictureOf(scene, front, {0, 0, 0}, size);
    const QImage inSide = pictureOf(scene, side, {0, 0, 0}, size);
    const double offset = 2.0 * (beside + 0.5);

    // On the front wall at x: the line at x = line is at Bottom * x / line. On the side wall at z: the line at z = -line
    // is at Bottom * -z / line.
    const double expected = (800.0 - Bottom * (1500.0 - offset) / line) / 2.0;
    const double frontRow = brightRow(inFront, 1499 - beside, expected);
    const double sideRow = brightRow(inSide, beside, expected);
    // At the corner itself both are at the same height.
    const double slope = -Bottom / line;

    QVERIFY2(std::abs(frontRow - expected) <= 1.0, qPrintable(QString::number(frontRow)));
    QVERIFY2(std::abs(sideRow - expected) <= 1.0, qPrintable(QString::number(sideRow)));
    QVERIFY(std::abs((frontRow + slope * beside) - (sideRow + slope * beside)) <= 1.0);
}

void tst_zoTestScene::horizonIsAtTheHeightOfTheEyes_data()
{
    QTest::addColumn<double>("eyeHeight");
    QTest::addColumn<int>("column");

    QTest::newRow("left") << 0.0 << 20;
    QTest::newRow("right") << 0.0 << 996;
    QTest::newRow("higher") << 120.0 << 996;
}

void tst_zoTestScene::horizonIsAtTheHeightOfTheEyes()
{
    QFETCH(double, eyeHeight);
    QFETCH(int, column);
    const zoTestScene scene({Whole}, {0, eyeHeight, 0});
    const QImage image = pictureOf(scene, LeftTile, {0, eyeHeight, 0}, TileSize);

    const int row = int(400.0 - eyeHeight); // between two pixels
    const auto isRed = [&](int y) {
        const QRgb pixel = image.pixel(column, y);
        return qRed(pixel) > qGreen(pixel) + 60 && qRed(pixel) > qBlue(pixel) + 40;
    };
    QVERIFY(isRed(row) || isRed(row - 1));
    // 0.14 degrees at 2000 mm are five pixels at most.
    QVERIFY(!isRed(row + 5) && !isRed(row - 6));
}

void tst_zoTestScene::edgesOfTheWallAreLined()
{
    const zoTestScene scene({Whole}, {0, 0, 0});

    const QImage left = pictureOf(scene, LeftTile, {0, 0, 0}, TileSize);
    const QImage right = pictureOf(scene, RightTile, {40, 10, 0}, TileSize);

    const QRgb line = zoTestScene::EdgeColour.rgb();
    for (const int y : {100, 600, 1100}) {
        QCOMPARE(left.pixel(2, y), line);
        QVERIFY(left.pixel(998, y) != line); // a seam is no edge
        QVERIFY(right.pixel(1, y) != line);
        QCOMPARE(right.pixel(997, y), line);
    }
    for (const int x : {10, 500, 990}) {
        QCOMPARE(left.pixel(x, 2), line);
        QCOMPARE(left.pixel(x, 1197), line);
        QCOMPARE(right.pixel(x, 2), line);
    }
}

void tst_zoTestScene::tilesTogetherAreTheWhole()
{
    const zoTestScene scene({Whole}, {0, 0, 0});
    const zoWallPoint eye{-32.5, 0, 0};
    const QImage whole = pictureOf(scene, Whole, eye, {2000, 1200});
    QImage both(2000, 1200, QImage::Format_RGB32);
    QPainter painter(&both);
    painter.drawImage(0, 0, pictureOf(scene, LeftTile, eye, TileSize));
    painter.drawImage(1000, 0, pictureOf(scene, RightTile, eye, TileSize));
    painter.end();

    int others = 0;
    for (int y = 0; y < 1200; ++y) {
        for (int x = 0; x < 2000; ++x)
            others += std::abs(brightness(whole.pixel(x, y)) - brightness(both.pixel(x, y))) > 30 ? 1 : 0;
    }
    QVERIFY2(others < 2400, qPrintable(QString::number(others)));
}

// The sky is wider than a picture by thousands of times, and each of its lines takes time.
void tst_zoTestScene::nothingIsDrawnFarOutside()
{
    const zoTestScene scene({Whole}, {0, 0, 0});
    const QRectF target(QPointF(0, 0), TileSize);
    Sheet sheet(TileSize);
    QPainter painter(&sheet);

    scene.paint(painter, target, zoOffAxisView(LeftTile, {0, 0, 0}));

    QVERIFY(sheet.notes().polygons > 50);
    const double limit = zoTestScene::CutOff + 1;
    QVERIFY(target.adjusted(-limit, -limit, limit, limit).contains(sheet.notes().drawn));
    QVERIFY(sheet.notes().drawn.contains(target));
}

void tst_zoTestScene::eyeBehindTheWallSeesNothing()
{
    const zoTestScene scene({Whole}, {0, 0, 0});

    const QImage image = pictureOf(scene, Whole, {0, 0, -2500}, {200, 120});

    for (const QPoint& point : {QPoint(0, 0), QPoint(100, 60), QPoint(199, 119)})
        QCOMPARE(image.pixel(point), image.pixel(50, 50));
}

void tst_zoTestScene::ballsLieOnTheFloorOrAbove()
{
    const zoTestScene scene({Whole}, {0, 0, 0});

    QCOMPARE(int(scene.balls().size()), 300);
    QCOMPARE(scene.balls().back().number, QStringLiteral("300"));
    for (const zoTestScene::Ball& ball : scene.balls()) {
        QVERIFY(ball.middle.y - ball.radius >= Floor - 1.0e-6);
        QVERIFY(!ball.outlines.empty());
    }
}

// As many in each of eight parts of the horizon, and in each of six bands of the same area from 62 degrees below it to
// 56 above.
void tst_zoTestScene::ballsAreInAllDirections()
{
    constexpr int Sectors = 8;
    constexpr int Bands = 6;
    constexpr double Degree = M_PI / 180.0;
    const zoWallPoint head{100, 200, 300};
    const double lowest = std::sin(-62.0 * Degree);
    const double highest = std::sin(56.0 * Degree);
    std::array<int, Sectors> sectors{};
    std::array<int, Bands> bands{};

    const zoTestScene scene({Whole}, head);

    for (const zoTestScene::Ball& ball : scene.balls()) {
        const double x = ball.middle.x - head.x;
        const double y = ball.middle.y - head.y;
        const double z = ball.middle.z - head.z;
        const double height = (y / std::sqrt(x * x + y * y + z * z) - lowest) / (highest - lowest);
        QVERIFY2(height > 0.0 && height < 1.0, qPrintable(ball.number));
        ++bands.at(std::size_t(height * Bands));
        ++sectors.at(std::size_t((std::atan2(x, -z) / M_PI + 1.0) / 2.0 * Sectors) % Sectors);
    }
    for (const int count : bands)
        QCOMPARE(count, zoTestScene::BallCount / Bands);
    for (const int count : sectors)
        QVERIFY2(std::abs(count - zoTestScene::BallCount / Sectors) <= 3, qPrintable(QString::number(count)));
}

void tst_zoTestScene::numbersHaveOutlines_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<double>("width"); // at most

    for (int digit = 0; digit < 10; ++digit)
        QTest::addRow("%d", digit) << QString::number(digit) << 0.8;
    QTest::newRow("three") << QStringLiteral("208") << 2.4;
    QTest::newRow("none") << QString() << 0.0;
    QTest::newRow("letters") << QStringLiteral("ab") << 0.0;
}

void tst_zoTestScene::numbersHaveOutlines()
{
    QFETCH(QString, number);
    QFETCH(double, width);

    QRectF box;
    for (const QPolygonF& outline : zoStrokeDigits::outlines(number))
        box = box.united(outline.boundingRect());

    QVERIFY(box.width() <= width);
    if (width > 0.0) {
        QVERIFY(box.width() > width / 4.0);
        QVERIFY2(std::abs(box.height() - 1.0) < 0.06, qPrintable(QString::number(box.height())));
        QVERIFY(std::abs(box.center().x()) < 0.1 && std::abs(box.center().y()) < 0.06);
    }
}

ZO_TEST_MAIN(tst_zoTestScene)
#include "tst_zoTestScene.moc"
