#include "zoTestCase.h"

#include <zoBlendRamp.h>

#include <QApplication>
#include <QImage>

#include <cmath>

// Pictures that fade into their neighbours.
class tst_zoBlendRamp final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lightOfBothSidesAddsUp_data();
    void lightOfBothSidesAddsUp();
    void cornerOfFourAddsUp();
    void lightRisesAndKeepsItsEnds();
    void outsideOfEdgesNothingChanges();
    void withoutEdgesThereIsNoRamp();
};

namespace
{
QImage white(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

// What a projector makes of a value.
double light(int value, double gamma)
{
    return std::pow(value / 255.0, gamma);
}
} // namespace

void tst_zoBlendRamp::lightOfBothSidesAddsUp_data()
{
    QTest::addColumn<int>("overlap");
    QTest::addColumn<double>("gamma");

    for (const int overlap : {1, 2, 3, 64, 240}) {
        for (const double gamma : {1.0, 1.8, 2.2})
            QTest::addRow("%d-pixels-gamma-%.1f", overlap, gamma) << overlap << gamma;
    }
}

void tst_zoBlendRamp::lightOfBothSidesAddsUp()
{
    QFETCH(int, overlap);
    QFETCH(double, gamma);
    constexpr int Size = 400;
    QImage left = white(Size, 4);
    QImage right = white(Size, 4);
    QImage upper = white(4, Size);
    QImage lower = white(4, Size);

    zoBlendRamp({0, double(overlap), 0, 0}, Size, 4, gamma).apply(left);
    zoBlendRamp({double(overlap), 0, 0, 0}, Size, 4, gamma).apply(right);
    zoBlendRamp({0, 0, 0, double(overlap)}, 4, Size, gamma).apply(upper);
    zoBlendRamp({0, 0, double(overlap), 0}, 4, Size, gamma).apply(lower);

    for (int i = 0; i < overlap; ++i) {
        const double across =
            light(qRed(left.pixel(Size - overlap + i, 2)), gamma) + light(qRed(right.pixel(i, 2)), gamma);
        const double down =
            light(qRed(upper.pixel(2, Size - overlap + i)), gamma) + light(qRed(lower.pixel(2, i)), gamma);
        QVERIFY2(std::abs(across - 1.0) <= 2.0 / 255.0, qPrintable(QString::number(across)));
        QVERIFY2(std::abs(down - 1.0) <= 2.0 / 255.0, qPrintable(QString::number(down)));
    }
    // It does fade.
    QVERIFY(qRed(right.pixel(0, 2)) < 255 && qRed(left.pixel(Size - 1, 2)) < 255);
}

void tst_zoBlendRamp::cornerOfFourAddsUp()
{
    constexpr int Size = 200;
    constexpr int Overlap = 50;
    constexpr double Gamma = 2.2;
    const double o = Overlap;
    const zoWallEdges edges[] = {{0, o, 0, o}, {o, 0, 0, o}, {0, o, o, 0}, {o, 0, o, 0}};
    std::vector<zoBlendRamp> ramps;
    for (const zoWallEdges& edge : edges)
        ramps.emplace_back(edge, Size, Size, Gamma);

    for (int y = 0; y < Overlap; ++y) {
        for (int x = 0; x < Overlap; ++x) {
            const int farX = Size - Overlap + x;
            const int farY = Size - Overlap + y;
            double sum = 0.0;
            for (const double factor : {ramps[0].factor(farX, farY), ramps[1].factor(x, farY),
                                        ramps[2].factor(farX, y), ramps[3].factor(x, y)})
                sum += std::pow(factor, Gamma);
            QVERIFY2(std::abs(sum - 1.0) < 1.0e-9, qPrintable(QString::number(sum)));
        }
    }
}

void tst_zoBlendRamp::lightRisesAndKeepsItsEnds()
{
    QCOMPARE(zoBlendRamp::light(-0.5), 0.0);
    QCOMPARE(zoBlendRamp::light(0.0), 0.0);
    QCOMPARE(zoBlendRamp::light(0.5), 0.5);
    QCOMPARE(zoBlendRamp::light(1.0), 1.0);
    QCOMPARE(zoBlendRamp::light(7.0), 1.0);
    for (double place = 0.0; place < 1.0; place += 0.01)
        QVERIFY(zoBlendRamp::light(place) < zoBlendRamp::light(place + 0.01));
}

void tst_zoBlendRamp::outsideOfEdgesNothingChanges()
{
    QImage image = white(100, 60);

    zoBlendRamp({10, 20, 5, 0}, 100, 60, 2.2).apply(image);

    QCOMPARE(image.pixel(10, 30), qRgb(255, 255, 255));
    QVERIFY(image.pixel(7, 30) != qRgb(255, 255, 255));
    QCOMPARE(image.pixel(79, 59), qRgb(255, 255, 255));
    QVERIFY(image.pixel(84, 59) != qRgb(255, 255, 255));
    QCOMPARE(image.pixel(50, 5), qRgb(255, 255, 255));
    QVERIFY(image.pixel(50, 3) != qRgb(255, 255, 255));
}

void tst_zoBlendRamp::withoutEdgesThereIsNoRamp()
{
    const zoBlendRamp ramp({}, 3, 2, 2.2);

    QVERIFY(ramp.isEmpty());
    QCOMPARE(ramp.factor(0, 0), 1.0);
    QVERIFY(!zoBlendRamp({0, 0, 0, 1}, 3, 2, 2.2).isEmpty());
    QVERIFY(zoBlendRamp({1, 1, 1, 1}, 0, 0, 2.2).columns().empty());
}

ZO_TEST_MAIN(tst_zoBlendRamp)
#include "tst_zoBlendRamp.moc"
