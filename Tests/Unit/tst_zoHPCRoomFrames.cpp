#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCRoomFrames.h>

#include <cmath>

// Where windows and monitors lie on the surfaces that they show.
class tst_zoHPCRoomFrames final : public zoTestCase
{
    Q_OBJECT

private slots:
    void windowInFullScreenIsItsSurface();
    void placesFollowWindowAndScreen_data();
    void placesFollowWindowAndScreen();
    void firstViewportCounts();
    void surfaceThatIsNotShownHasNone();
};

namespace
{
bool isAlmost(const QRectF& a, const QRectF& b)
{
    return std::abs(a.left() - b.left()) < 1e-9 && std::abs(a.top() - b.top()) < 1e-9 &&
           std::abs(a.right() - b.right()) < 1e-9 && std::abs(a.bottom() - b.bottom()) < 1e-9;
}

const QRectF WHOLE(0.0, 0.0, 1.0, 1.0);
} // namespace

void tst_zoHPCRoomFrames::windowInFullScreenIsItsSurface()
{
    zoHPCSetup setup;
    const QTreeWidgetItem* const plane = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    setup.addWindow(QStringLiteral("n"), QStringLiteral("p"));
    setup.link();

    const zoHPCRoomFrames frames = zoHPCRoomFrames::read(setup.layout(), QSizeF());

    QVERIFY(frames.of(plane));
    QVERIFY(isAlmost(frames.of(plane)->window, WHOLE));
    QVERIFY(isAlmost(frames.of(plane)->monitor, WHOLE));
}

void tst_zoHPCRoomFrames::placesFollowWindowAndScreen_data()
{
    QTest::addColumn<QRect>("place"); // of the window on its screen of 2000 x 1000
    QTest::addColumn<QString>("position");
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<QRectF>("window");
    QTest::addColumn<QRectF>("monitor");

    QTest::newRow("window-on-the-right")
        << QRect(1000, 0, 1000, 1000) << "fill" << false << WHOLE << QRectF(-1.0, 0.0, 2.0, 1.0);
    QTest::newRow("flipped") << QRect(1000, 0, 1000, 1000) << "fill" << true << WHOLE
                             << QRectF(0.0, 0.0, 2.0, 1.0);
    QTest::newRow("left-half-of-the-window") << QRect(0, 0, 2000, 1000) << "left" << false
                                             << QRectF(0.0, 0.0, 2.0, 1.0) << QRectF(0.0, 0.0, 2.0, 1.0);
    QTest::newRow("lower-half-of-the-window") << QRect(0, 0, 2000, 1000) << "bottom" << false
                                              << QRectF(0.0, -1.0, 1.0, 2.0) << QRectF(0.0, -1.0, 1.0, 2.0);
    QTest::newRow("beyond-the-monitor")
        << QRect(1500, 0, 1000, 1000) << "fill" << false << WHOLE << QRectF(-1.5, 0.0, 2.0, 1.0);
}

void tst_zoHPCRoomFrames::placesFollowWindowAndScreen()
{
    QFETCH(QRect, place);
    QFETCH(QString, position);
    QFETCH(bool, isFlipped);
    QFETCH(QRectF, window);
    QFETCH(QRectF, monitor);
    zoHPCSetup setup;
    const QTreeWidgetItem* const plane = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    zoHPCWindowItem* const item = setup.addWindowAt(QStringLiteral("n"), QStringLiteral("0"), place.x(),
                                                    place.y(), place.width(), place.height());
    zoHPCViewportItem* const viewport = setup.addViewport(item, QStringLiteral("p"), QStringLiteral("mono"));
    viewport->setString(zoHPCViewportItem::Position, position);
    viewport->setBool(zoHPCViewportItem::FlipX, isFlipped);
    viewport->update();
    setup.link();

    const zoHPCRoomFrames frames = zoHPCRoomFrames::read(setup.layout(), QSizeF(2000.0, 1000.0));

    QVERIFY(frames.of(plane));
    QVERIFY(isAlmost(frames.of(plane)->window, window));
    QVERIFY(isAlmost(frames.of(plane)->monitor, monitor));
}

void tst_zoHPCRoomFrames::firstViewportCounts()
{
    zoHPCSetup setup;
    const QTreeWidgetItem* const plane = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    setup.addWindow(QStringLiteral("n"), QStringLiteral("p"));
    zoHPCWindowItem* const second =
        setup.addWindowAt(QStringLiteral("m"), QStringLiteral("0"), 0, 0, 800, 600);
    zoHPCViewportItem* const half = setup.addViewport(second, QStringLiteral("p"), QStringLiteral("mono"));
    half->setString(zoHPCViewportItem::Position, QStringLiteral("left"));
    half->update();
    setup.link();

    const zoHPCRoomFrames frames = zoHPCRoomFrames::read(setup.layout(), QSizeF());

    QVERIFY(isAlmost(frames.of(plane)->window, WHOLE));
}

void tst_zoHPCRoomFrames::surfaceThatIsNotShownHasNone()
{
    zoHPCSetup setup;
    const QTreeWidgetItem* const plane = setup.addProjection(QStringLiteral("p"), QStringLiteral("plane"));
    setup.addWindow(QStringLiteral("n"), QString());

    const zoHPCRoomFrames frames = zoHPCRoomFrames::read(setup.layout(), QSizeF());

    QVERIFY(!frames.of(plane));
    QVERIFY(!frames.of(nullptr));
}

ZO_TEST_MAIN(tst_zoHPCRoomFrames)

#include "tst_zoHPCRoomFrames.moc"
