#include "zoTestCase.h"

#include <zoTilePicture.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

// What tells whose a window is.
class tst_zoTilePicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void borderIsOnePixel();
    void arrowsPointToNeighbours_data();
    void arrowsPointToNeighbours();
    void overlapsAreHatched_data();
    void overlapsAreHatched();
    void eyesAreNamed();
    void longNamesStayInside();
    void tinyTilesArePainted();
    void colourOfANodeIsTheSameEverywhere();
};

namespace
{
struct Subject
{
    zoWallNode node{QStringLiteral("n1"), QStringLiteral("n1"), QStringLiteral("n1"), -1, {}};
    zoWallWindow window;
    zoWallViewport viewport;
    QSize size{640, 400};

    QImage picture(zoStereoMode::Eye eye = zoStereoMode::Eye::Middle) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        zoTilePicture(node, window, viewport, size).paint(painter, QRect(QPoint(0, 0), size), eye);
        return image;
    }
};

// Around all pixels that differ.
QRect changed(const QImage& a, const QImage& b)
{
    QRect result;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y))
                result |= QRect(x, y, 1, 1);
        }
    }
    return result;
}
} // namespace

void tst_zoTilePicture::borderIsOnePixel()
{
    const QImage image = Subject().picture();

    const QRgb white = qRgb(255, 255, 255);
    for (int x = 0; x < 640; ++x)
        QVERIFY(image.pixel(x, 0) == white && image.pixel(x, 399) == white);
    for (int y = 0; y < 400; ++y)
        QVERIFY(image.pixel(0, y) == white && image.pixel(639, y) == white);
    QVERIFY(image.pixel(20, 1) != white && image.pixel(1, 20) != white);
    QVERIFY(image.pixel(20, 398) != white && image.pixel(638, 20) != white);
}

void tst_zoTilePicture::arrowsPointToNeighbours_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<QRect>("place"); // all that changes lies in it

    QTest::newRow("left") << 0 << QRect(0, 150, 200, 100);
    QTest::newRow("right") << 1 << QRect(440, 150, 200, 100);
    QTest::newRow("above") << 2 << QRect(220, 0, 200, 100);
    QTest::newRow("below") << 3 << QRect(220, 300, 200, 100);
}

void tst_zoTilePicture::arrowsPointToNeighbours()
{
    QFETCH(int, side);
    QFETCH(QRect, place);
    Subject subject;
    const QImage without = subject.picture();
    QString* const names[] = {&subject.viewport.neighbours.left, &subject.viewport.neighbours.right,
                              &subject.viewport.neighbours.above, &subject.viewport.neighbours.below};
    *names[side] = QStringLiteral("n2");

    const QRect difference = changed(without, subject.picture());

    QVERIFY(!difference.isEmpty());
    QVERIFY(place.contains(difference));
}

void tst_zoTilePicture::overlapsAreHatched_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<QRect>("strip");

    QTest::newRow("left") << 0 << QRect(0, 0, 64, 400);
    QTest::newRow("right") << 1 << QRect(576, 0, 64, 400);
    QTest::newRow("top") << 2 << QRect(0, 0, 640, 64);
    QTest::newRow("bottom") << 3 << QRect(0, 336, 640, 64);
}

void tst_zoTilePicture::overlapsAreHatched()
{
    QFETCH(int, side);
    QFETCH(QRect, strip);
    Subject subject;
    const QImage without = subject.picture();
    double* const widths[] = {&subject.viewport.edges.left, &subject.viewport.edges.right,
                              &subject.viewport.edges.top, &subject.viewport.edges.bottom};
    *widths[side] = 64.0;
    const QImage with = subject.picture();

    // Each pixel of the strip is lighter, but for the border, and some much more so than others.
    int least = 765;
    int most = 0;
    const QRect inside = strip & QRect(1, 1, 638, 398);
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const int more = qRed(with.pixel(x, y)) - qRed(without.pixel(x, y));
            least = std::min(least, more);
            most = std::max(most, more);
        }
    }
    QVERIFY2(least > 10, qPrintable(QString::number(least)));
    QVERIFY(most > 2 * least);
}

void tst_zoTilePicture::eyesAreNamed()
{
    const Subject subject;

    const QImage middle = subject.picture();
    const QImage left = subject.picture(zoStereoMode::Eye::Left);
    const QImage right = subject.picture(zoStereoMode::Eye::Right);

    QVERIFY(middle != left && left != right && middle != right);
}

void tst_zoTilePicture::longNamesStayInside()
{
    Subject subject;
    const QImage before = subject.picture();
    subject.node.name =
        QStringLiteral("a-node-with-a-name-that-is-much-longer-than-its-tile-is-wide.example.org");
    subject.node.id = subject.node.name;

    const QImage after = subject.picture();

    // White texts; the diagonals and the border are whiter than nothing else at the sides.
    for (int y = 120; y < 280; ++y) {
        for (int x = 2; x < 100; ++x)
            QVERIFY(qBlue(after.pixel(x, y)) < 200 || qGreen(after.pixel(x, y)) < 200);
    }
    QVERIFY(before != after);
}

void tst_zoTilePicture::tinyTilesArePainted()
{
    for (const QSize& size : {QSize(1, 1), QSize(2, 1), QSize(3, 3), QSize(16, 2)}) {
        Subject subject;
        subject.size = size;
        subject.viewport.edges = {1, 1, 1, 1};
        subject.viewport.neighbours = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                                       QStringLiteral("d")};
        QVERIFY(subject.picture().pixel(0, 0) != qRgb(0, 0, 0));
    }
}

void tst_zoTilePicture::colourOfANodeIsTheSameEverywhere()
{
    QCOMPARE(zoTilePicture::colourOf(QStringLiteral("n1")), zoTilePicture::colourOf(QStringLiteral("n1")));
    QVERIFY(zoTilePicture::colourOf(QStringLiteral("n1")) != zoTilePicture::colourOf(QStringLiteral("n2")));
    // Of another process, once.
    QCOMPARE(zoTilePicture::colourOf(QStringLiteral("n1")).name(), QStringLiteral("#db4f3d"));
}

ZO_TEST_MAIN(tst_zoTilePicture)
#include "tst_zoTilePicture.moc"
