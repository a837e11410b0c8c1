#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCProblems.h>
#include <zoHPCViewportChecks.h>

#include <QApplication>

using List = zoHPCProblem::List;

// Where viewports lie in their windows.
class tst_zoHPCViewportChecks final : public zoTestCase
{
    Q_OBJECT

private slots:
    void pictureIsStretched_data();
    void pictureIsStretched();
    void stretchIsToldOncePerProjection();
    void viewportsOverlap_data();
    void viewportsOverlap();
    void laterOneIsTold();
    void eyesMayShareAPlace_data();
    void eyesMayShareAPlace();
    void windowsAreApart();
    void areaIsMissing_data();
    void areaIsMissing();
    void cornersThatAreNotGivenAreTheWholeWindow();
    void onlyViewportIsMadeToFill();
    void cornersAreOutside_data();
    void cornersAreOutside();
    void whatIsOutsideIsCut();
    void sizeOfAFullScreenIsNotKnown();
    void cornersAreCrossed_data();
    void cornersAreCrossed();
    void cornersAreSwapped();
    void manyViewportsOfOneWindow();
    void numbersAreTold();

private:
    static zoHPCViewportItem* add(zoHPCSetup& setup, zoHPCWindowItem* window, const QVector<double>& corners,
                                  const QString& eye = QStringLiteral("mono"));
};

zoHPCViewportItem* tst_zoHPCViewportChecks::add(zoHPCSetup& setup, zoHPCWindowItem* window,
                                                const QVector<double>& corners, const QString& eye)
{
    zoHPCViewportItem* const viewport = setup.addViewport(window, QString(), eye);
    viewport->setString(zoHPCViewportItem::Position, QStringLiteral("custom"));
    viewport->setViewport(corners[0], corners[1], corners[2], corners[3]);
    return viewport;
}

void tst_zoHPCViewportChecks::viewportsOverlap_data()
{
    QTest::addColumn<QVector<double>>("first");
    QTest::addColumn<QVector<double>>("second");
    QTest::addColumn<bool>("overlap");

    const QVector<double> whole{0, 0, 1, 1};
    QTest::newRow("both-fill") << whole << whole << true;
    QTest::newRow("halves") << QVector<double>{0, 0, .5, 1} << QVector<double>{.5, 0, 1, 1} << false;
    QTest::newRow("half-over-whole") << whole << QVector<double>{.5, 0, 1, 1} << true;
    QTest::newRow("whole-over-half") << QVector<double>{.5, 0, 1, 1} << whole << true;
    QTest::newRow("quarter-over-whole") << whole << QVector<double>{.5, .5, 1, 1} << true;
    QTest::newRow("inset") << whole << QVector<double>{.75, .75, .95, .95} << false;
    QTest::newRow("inset-at-the-edge") << whole << QVector<double>{.8, .8, 1, 1} << false;
    QTest::newRow("inset-that-is-hidden") << QVector<double>{.75, .75, .95, .95} << whole << true;
    QTest::newRow("corner-over-the-edge")
        << QVector<double>{0, 0, .5, 1} << QVector<double>{.4, 0, .6, .2} << true;
    QTest::newRow("thirds") << QVector<double>{0, 0, .334, 1} << QVector<double>{.333, 0, 1, 1} << false;
    QTest::newRow("more-than-thirds")
        << QVector<double>{0, 0, .34, 1} << QVector<double>{.333, 0, 1, 1} << true;
    QTest::newRow("pixels") << QVector<double>{0, 0, 640, 1024} << QVector<double>{640, 0, 1280, 1024}
                            << false;
    QTest::newRow("pixels-cross") << QVector<double>{0, 0, 650, 1024} << QVector<double>{640, 0, 1280, 1024}
                                  << true;
}

void tst_zoHPCViewportChecks::viewportsOverlap()
{
    QFETCH(QVector<double>, first);
    QFETCH(QVector<double>, second);
    QFETCH(bool, overlap);
    zoHPCSetup setup;
    zoHPCWindowItem* const window =
        setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1280, 1024);
    add(setup, window, first);
    add(setup, window, second);

    QCOMPARE(zoHPCViewportChecks::overlappingViewports(setup.layout()).size(), size_t(overlap ? 1 : 0));
}

void tst_zoHPCViewportChecks::laterOneIsTold()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString());
    setup.addViewport(window, QString(), QStringLiteral("mono"));
    setup.addViewport(window, QString(), QStringLiteral("mono"));

    const List problems = zoHPCViewportChecks::overlappingViewports(setup.layout());

    QCOMPARE(problems.size(), size_t(2));
    QCOMPARE(problems[1].item, window->child(2));
    QCOMPARE(problems[1].other, window->child(0));
    QVERIFY(problems[1].message.startsWith(QStringLiteral("Viewports 1 and 3 of window 1 of display 1 ")));
}

void tst_zoHPCViewportChecks::eyesMayShareAPlace_data()
{
    QTest::addColumn<QStringList>("eyes");
    QTest::addColumn<int>("problems");

    QTest::newRow("left-and-right") << QStringList{"left", "right"} << 0;
    QTest::newRow("left-and-left") << QStringList{"left", "left"} << 1;
    QTest::newRow("left-and-mono") << QStringList{"left", "mono"} << 1;
    QTest::newRow("right-and-stereo") << QStringList{"right", "stereo"} << 1;
    QTest::newRow("two-pairs") << QStringList{"left", "right", "left", "right"} << 2;
}

void tst_zoHPCViewportChecks::eyesMayShareAPlace()
{
    QFETCH(QStringList, eyes);
    QFETCH(int, problems);
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString(), QString());
    for (const QString& eye : qAsConst(eyes))
        setup.addViewport(window, QString(), eye);

    QCOMPARE(int(zoHPCViewportChecks::overlappingViewports(setup.layout()).size()), problems);
}

void tst_zoHPCViewportChecks::windowsAreApart()
{
    zoHPCSetup setup;
    setup.addWindow(QStringLiteral("n"), QString());
    setup.addWindow(QStringLiteral("n"), QString());

    QVERIFY(zoHPCViewportChecks::overlappingViewports(setup.layout()).empty());
}

void tst_zoHPCViewportChecks::areaIsMissing_data()
{
    QTest::addColumn<QVector<double>>("corners");
    QTest::addColumn<bool>("missing");

    QTest::newRow("whole") << QVector<double>{0, 0, 1, 1} << false;
    QTest::newRow("a-point") << QVector<double>{.5, .5, .5, .5} << true;
    QTest::newRow("a-line") << QVector<double>{0, 1, 1, 1} << true;
    QTest::newRow("all-0") << QVector<double>{0, 0, 0, 0} << true;
    QTest::newRow("a-thin-strip") << QVector<double>{0, 0, .01, 1} << false;
    QTest::newRow("a-column-of-pixels") << QVector<double>{100, 0, 101, 1024} << false;
    QTest::newRow("no-column-of-pixels") << QVector<double>{100, 0, 100, 1024} << true;
    QTest::newRow("not-a-number") << QVector<double>{0, 0, qQNaN(), 1} << true;
}

void tst_zoHPCViewportChecks::areaIsMissing()
{
    QFETCH(QVector<double>, corners);
    QFETCH(bool, missing);
    zoHPCSetup setup;
    zoHPCViewportItem* const viewport =
        add(setup, setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1280, 1024), corners);

    const List problems = zoHPCViewportChecks::viewportsWithoutArea(setup.layout());

    QCOMPARE(problems.size(), size_t(missing ? 1 : 0));
    if (missing)
        QCOMPARE(problems[0].item, viewport);
    // Told once.
    QVERIFY(!missing || zoHPCViewportChecks::viewportsOutsideWindow(setup.layout()).empty());
    QVERIFY(!missing || zoHPCViewportChecks::viewportsWithCrossedCorners(setup.layout()).empty());
}

void tst_zoHPCViewportChecks::cornersThatAreNotGivenAreTheWholeWindow()
{
    zoHPCSetup setup;
    zoHPCViewportItem* const viewport =
        add(setup, setup.addWindow(QStringLiteral("n"), QString(), QString()), {.5, .5, .5, .5});
    // An empty text is not there any more when the file is read.
    for (const QVariant& nothing : {QVariant(), QVariant(QString(""))}) {
        for (const int corner :
             {zoHPCViewportItem::X1, zoHPCViewportItem::Y1, zoHPCViewportItem::X2, zoHPCViewportItem::Y2})
            viewport->setData(corner, Qt::EditRole, nothing);

        QVERIFY(zoHPCViewportChecks::viewportsWithoutArea(setup.layout()).empty());
    }
}

void tst_zoHPCViewportChecks::onlyViewportIsMadeToFill()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString(), QString());
    zoHPCViewportItem* const viewport = add(setup, window, {.5, .5, .5, .5});

    zoHPCViewportChecks::viewportsWithoutArea(setup.layout()).at(0).fix();

    QCOMPARE(setup.layout().viewports().at(0).area, QRectF(0, 0, 1, 1));
    QCOMPARE(viewport->getString(zoHPCViewportItem::Position), QStringLiteral("fill"));
    add(setup, window, {.5, .5, .5, .5});
    QVERIFY(!zoHPCViewportChecks::viewportsWithoutArea(setup.layout()).at(0).hasFix());
}

void tst_zoHPCViewportChecks::cornersAreOutside_data()
{
    QTest::addColumn<QVector<double>>("corners");
    QTest::addColumn<bool>("outside");
    QTest::addColumn<bool>("canBeCut");

    QTest::newRow("whole") << QVector<double>{0, 0, 1, 1} << false << false;
    QTest::newRow("rounded") << QVector<double>{-.001, 0, 1.001, 1} << false << false;
    QTest::newRow("a-little-too-far") << QVector<double>{0, 0, 1.002, 1} << true << true;
    QTest::newRow("too-far") << QVector<double>{0, 0, 1.2, 1} << true << true;
    QTest::newRow("too-high") << QVector<double>{0, 0, 1, 10} << true << true;
    QTest::newRow("below-0") << QVector<double>{-.25, 0, .75, 1} << true << true;
    QTest::newRow("all-outside") << QVector<double>{1.5, 0, 2, 1} << true << false;
    QTest::newRow("pixels") << QVector<double>{0, 0, 1280, 1024} << false << false;
    QTest::newRow("pixels-too-far") << QVector<double>{0, 0, 1281, 1024} << true << true;
    QTest::newRow("pixels-too-high") << QVector<double>{0, 0, 1280, 1080} << true << true;
    QTest::newRow("pixels-of-another-screen") << QVector<double>{1280, 0, 2560, 1024} << true << false;
    QTest::newRow("infinite") << QVector<double>{0, 0, qInf(), 1} << true << true;
}

void tst_zoHPCViewportChecks::cornersAreOutside()
{
    QFETCH(QVector<double>, corners);
    QFETCH(bool, outside);
    QFETCH(bool, canBeCut);
    zoHPCSetup setup;
    add(setup, setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1280, 1024), corners);

    const List problems = zoHPCViewportChecks::viewportsOutsideWindow(setup.layout());

    QCOMPARE(problems.size(), size_t(outside ? 1 : 0));
    if (!outside)
        return;
    QCOMPARE(problems[0].hasFix(), canBeCut);
    if (canBeCut)
        problems[0].fix();
    QCOMPARE(zoHPCViewportChecks::viewportsOutsideWindow(setup.layout()).empty(), canBeCut);
}

void tst_zoHPCViewportChecks::whatIsOutsideIsCut()
{
    zoHPCSetup setup;
    add(setup, setup.addWindow(QStringLiteral("n"), QString(), QString()), {-.5, .25, 1.5, 1.5});

    zoHPCViewportChecks::viewportsOutsideWindow(setup.layout()).at(0).fix();

    QCOMPARE(setup.layout().viewports().at(0).area, QRectF(0, 0, 1, .75));
}

void tst_zoHPCViewportChecks::sizeOfAFullScreenIsNotKnown()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString(), QString());
    zoHPCViewportItem* const viewport = add(setup, window, {0, 0, 3840, 2160});

    QVERIFY(zoHPCViewportChecks::viewportsOutsideWindow(setup.layout()).empty());
    viewport->setViewport(-10, 0, 3840, 2160);
    QCOMPARE(zoHPCViewportChecks::viewportsOutsideWindow(setup.layout()).size(), size_t(1));
}

void tst_zoHPCViewportChecks::cornersAreCrossed_data()
{
    QTest::addColumn<QVector<double>>("corners");
    QTest::addColumn<bool>("crossed");

    QTest::newRow("whole") << QVector<double>{0, 0, 1, 1} << false;
    QTest::newRow("left-and-right") << QVector<double>{1, 0, 0, 1} << true;
    QTest::newRow("up-and-down") << QVector<double>{0, 1, 1, .5} << true;
    QTest::newRow("both") << QVector<double>{1, 1, 0, 0} << true;
    QTest::newRow("pixels") << QVector<double>{1280, 0, 640, 1024} << true;
}

void tst_zoHPCViewportChecks::cornersAreCrossed()
{
    QFETCH(QVector<double>, corners);
    QFETCH(bool, crossed);
    zoHPCSetup setup;
    add(setup, setup.addWindow(QStringLiteral("n"), QString(), QString()), corners);

    QCOMPARE(zoHPCViewportChecks::viewportsWithCrossedCorners(setup.layout()).size(),
             size_t(crossed ? 1 : 0));
}

void tst_zoHPCViewportChecks::cornersAreSwapped()
{
    zoHPCSetup setup;
    zoHPCViewportItem* const viewport =
        add(setup, setup.addWindow(QStringLiteral("n"), QString(), QString()), {1, .75, .5, .25});
    const QRectF area = setup.layout().viewports().at(0).area;

    zoHPCViewportChecks::viewportsWithCrossedCorners(setup.layout()).at(0).fix();

    QCOMPARE(setup.layout().viewports().at(0).area, area);
    QCOMPARE(viewport->getDouble(zoHPCViewportItem::X1), .5);
    QCOMPARE(viewport->getDouble(zoHPCViewportItem::Y2), .75);
    QVERIFY(zoHPCViewportChecks::viewportsWithCrossedCorners(setup.layout()).empty());
}

// Counts, not times: what grows out of proportion runs into the time limit.
void tst_zoHPCViewportChecks::manyViewportsOfOneWindow()
{
    zoHPCSetup setup;
    zoHPCWindowItem* const window = setup.addWindow(QStringLiteral("n"), QString(), QString());
    for (int i = 0; i < 10000; ++i)
        add(setup, window, {(i % 100) / 100., (i / 100) / 100., (i % 100 + 1) / 100., (i / 100 + 1) / 100.});
    add(setup, window, {.5, .5, .51, .51});

    QCOMPARE(zoHPCViewportChecks::overlappingViewports(setup.layout()).size(), size_t(1));
}

// Of the second viewport of the third window of the first display, so that none is taken for another.
void tst_zoHPCViewportChecks::numbersAreTold()
{
    const auto checked = [](const QVector<double>& corners, bool isFullScreen,
                            List (*check)(const zoHPCLayout&)) {
        zoHPCSetup setup;
        setup.addWindow(QStringLiteral("n"), QString(), QString());
        setup.addWindow(QStringLiteral("n"), QString(), QString());
        zoHPCWindowItem* const window =
            isFullScreen ? setup.addWindow(QStringLiteral("n"), QString(), QString())
                         : setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1280, 1024);
        add(setup, window, {0, 0, 1, 1});
        add(setup, window, corners);
        const List problems = check(setup.layout());
        return problems.empty() ? QString()
                                : problems[0].message.section(QLatin1String(" corners are "), 0, 0);
    };

    QCOMPARE(checked({0, 0, 1, 1}, true, &zoHPCViewportChecks::overlappingViewports)
                 .section(QLatin1String(" lie over"), 0, 0),
             QStringLiteral("Viewports 1 and 2 of window 3 of display 1"));
    QCOMPARE(checked({.5, .5, .5, 1}, true, &zoHPCViewportChecks::viewportsWithoutArea),
             QStringLiteral("Viewport 2 of window 3 of display 1 has no area: its"));
    QCOMPARE(checked({.5, .5, 1.5, 1}, true, &zoHPCViewportChecks::viewportsOutsideWindow),
             QStringLiteral("Viewport 2 of window 3 of display 1 reaches beyond its window: its"));
    QCOMPARE(checked({10, 10, 1290, 20}, false, &zoHPCViewportChecks::viewportsOutsideWindow),
             QStringLiteral("Viewport 2 of window 3 of display 1 reaches beyond its window: its"));
    QVERIFY(checked({.6, .5, .5, 1}, true, &zoHPCViewportChecks::viewportsWithCrossedCorners)
                .startsWith(
                    QStringLiteral("The lower left corner of viewport 2 of window 3 of display 1 lies ")));
}

void tst_zoHPCViewportChecks::pictureIsStretched_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QString>("eye");
    QTest::addColumn<bool>("isFullScreen");
    QTest::addColumn<QString>("told"); // part of it; empty for nothing

    QTest::newRow("as-the-plane") << 2000 << 1000 << "0"
                                  << "mono" << false << "";
    QTest::newRow("within") << 2000 << 1049 << "0"
                            << "mono" << false << "";
    QTest::newRow("beyond") << 2000 << 1051 << "0"
                            << "mono" << false << " 5 % too wide";
    QTest::newRow("too-high") << 2000 << 500 << "0"
                              << "mono" << false << " 100 % too high";
    QTest::newRow("no-size-at-all") << 2000 << 1 << "0"
                                    << "mono" << false << "";
    QTest::newRow("full-screen") << 2000 << 500 << "0"
                                 << "mono" << true << "";
    QTest::newRow("all-screens") << 2000 << 500 << "-2"
                                 << "mono" << false << "";
    QTest::newRow("half-for-each-eye") << 2000 << 500 << "0"
                                       << "splitleftright" << false << "";
    QTest::newRow("both-eyes") << 2000 << 500 << "0"
                               << "stereo" << false << " 100 % too high";
}

void tst_zoHPCViewportChecks::pictureIsStretched()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QString, screen);
    QFETCH(QString, eye);
    QFETCH(bool, isFullScreen);
    QFETCH(QString, told);
    zoHPCSetup setup;
    zoHPCProjectionItem* const plane = setup.addProjection(QStringLiteral("Front"), QStringLiteral("plane"));
    plane->setPlane(zoHPCPlane::facing(4000, 2000, 1500));
    zoHPCWindowItem* const window = setup.addWindowAt(QStringLiteral("n"), screen, 0, 0, width, height);
    window->setBool(zoHPCWindowItem::FullScreen, isFullScreen);
    setup.addViewport(window, QStringLiteral("Front"), eye);

    const zoHPCProblem::List problems = zoHPCViewportChecks::stretchedPictures(setup.layout());

    QCOMPARE(problems.size(), size_t(told.isEmpty() ? 0 : 1));
    if (!told.isEmpty())
        QVERIFY2(problems[0].message.contains(QStringLiteral("\"Front\"") + told),
                 qPrintable(problems[0].message));
}

void tst_zoHPCViewportChecks::stretchIsToldOncePerProjection()
{
    zoHPCSetup setup;
    zoHPCProjectionItem* const wall = setup.addPowerWall(QStringLiteral("Wall"), 1, 3);
    wall->setDouble(zoHPCProjectionItem::Width, 6000);
    wall->setDouble(zoHPCProjectionItem::Height, 2000);
    wall->update();
    for (int column = 1; column <= 3; ++column) {
        zoHPCWindowItem* const window =
            setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1600, 1000);
        setup.addViewport(window, QStringLiteral("Wall row:1 col:%1").arg(column), QStringLiteral("mono"));
    }

    const zoHPCProblem::List problems = zoHPCViewportChecks::stretchedPictures(setup.layout());

    QCOMPARE(problems.size(), size_t(1));
    QVERIFY2(problems[0].message.endsWith(QStringLiteral("So do 2 more of the same projection.")),
             qPrintable(problems[0].message));
}

ZO_TEST_MAIN(tst_zoHPCViewportChecks)
#include "tst_zoHPCViewportChecks.moc"
