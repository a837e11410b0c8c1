#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCPictureStyle.h>
#include <zoHPCRoomView.h>

#include <QApplication>
#include <QSignalSpy>
#include <QWheelEvent>

#include <memory>

Q_DECLARE_METATYPE(QTreeWidgetItem*)

// The view of the room.
class tst_zoHPCRoomView final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void clickSelectsTheTile();
    void clickBesideSelectsNothing();
    void draggingTurnsAndSelectsNothing();
    void draggingWithShiftMoves();
    void draggingIsPaintedFast();
    void quickChangesOfALargePictureArePaintedFast();
    void wheelComesNearer();
    void doubleClickFits();
    void keysTurnZoomAndFit();
    void otherKeysGoToTheParent();
    void fittedViewFollowsItsSizeAndItsContent();
    void turnedViewKeepsItsCamera();
    void currentItemIsHighlighted();
    void allSelectedRowsAreHighlighted();
    void frontAndTopAreWithoutPerspectiveUntilTurned();
    void outlinesOfWindowsAreOffOrOn();
    void withoutLayoutNothingIsFound();
    void resolutionOfTheScreenIsUsed();

private:
    QPoint placeOf(double x, double y) const;
    void move(const QPoint& to, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = {});
    void wheel(int steps);

    std::unique_ptr<zoHPCSetup> m_setup;
    std::unique_ptr<zoHPCRoomView> m_view;
    zoHPCProjectionItem* m_wall = nullptr;
};

void tst_zoHPCRoomView::init()
{
    // What signal spies record.
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*");
    m_setup = std::make_unique<zoHPCSetup>();
    m_wall = m_setup->addPowerWall(QStringLiteral("wall"), 2, 2);
    m_setup->addWindow(QStringLiteral("n"), QStringLiteral("wall"));
    m_view = std::make_unique<zoHPCRoomView>();
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    m_view->setPalette(palette);
    m_view->resize(600, 400);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    m_view->showLayout(std::make_shared<const zoHPCLayout>(m_setup->layout()));
}

void tst_zoHPCRoomView::cleanup()
{
    m_view.reset();
    m_setup.reset();
    zoTestCase::cleanup();
}

QPoint tst_zoHPCRoomView::placeOf(double x, double y) const
{
    const zoHPCRoomCamera& camera = m_view->picture().camera();
    return camera.toPicture(camera.see({x, y, -1500.0}), m_view->rect()).toPoint();
}

void tst_zoHPCRoomView::move(const QPoint& to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(QEvent::MouseMove, to, m_view->mapToGlobal(to), Qt::NoButton, button, modifiers);
    QApplication::sendEvent(m_view.get(), &event);
}

void tst_zoHPCRoomView::wheel(int steps)
{
    QWheelEvent event(QPointF(300, 200), m_view->mapToGlobal(QPoint(300, 200)), QPoint(),
                      QPoint(0, 120 * steps), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view.get(), &event);
}

void tst_zoHPCRoomView::clickSelectsTheTile()
{
    QSignalSpy activated(m_view.get(), &zoHPCRoomView::itemActivated);

    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, placeOf(700, -500));

    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), m_wall->child(3));
}

void tst_zoHPCRoomView::clickBesideSelectsNothing()
{
    QSignalSpy activated(m_view.get(), &zoHPCRoomView::itemActivated);

    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QTest::mouseClick(m_view.get(), Qt::RightButton, Qt::NoModifier, placeOf(700, -500));

    QCOMPARE(activated.size(), 0);
}

void tst_zoHPCRoomView::draggingTurnsAndSelectsNothing()
{
    QSignalSpy activated(m_view.get(), &zoHPCRoomView::itemActivated);
    const zoHPCRoomCamera before = m_view->picture().camera();

    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 0));
    move(placeOf(0, 0) + QPoint(60, 30));
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, placeOf(0, 0));

    const zoHPCRoomCamera after = m_view->picture().camera();
    QVERIFY(after.yaw < before.yaw);
    QVERIFY(after.pitch > before.pitch);
    QCOMPARE(after.distance, before.distance);
    QCOMPARE(activated.size(), 0);
}

void tst_zoHPCRoomView::draggingWithShiftMoves()
{
    const QPoint before = placeOf(0, 0);
    const double yaw = m_view->picture().camera().yaw;

    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, before);
    move(before + QPoint(60, 30), Qt::LeftButton, Qt::ShiftModifier);
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::ShiftModifier, before);
    QCOMPARE(m_view->picture().camera().yaw, yaw);
    QVERIFY(placeOf(0, 0).x() > before.x() + 30);

    const QPoint moved = placeOf(0, 0);
    QTest::mousePress(m_view.get(), Qt::MiddleButton, Qt::NoModifier, moved);
    move(moved + QPoint(-60, -30), Qt::MiddleButton);
    QTest::mouseRelease(m_view.get(), Qt::MiddleButton, Qt::NoModifier, moved);
    QCOMPARE(m_view->picture().camera().yaw, yaw);
    QVERIFY(placeOf(0, 0).x() < moved.x() - 30);
}

void tst_zoHPCRoomView::draggingIsPaintedFast()
{
    const QImage full = m_view->grab().toImage();
    const QPoint start = placeOf(0, 0);

    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    move(start + QPoint(60, 0));
    move(start);
    const QImage fast = m_view->grab().toImage();
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    const QImage after = m_view->grab().toImage();

    QVERIFY(fast != full);
    QCOMPARE(after, full);
}

void tst_zoHPCRoomView::quickChangesOfALargePictureArePaintedFast()
{
    using Detail = zoHPCPicture::Detail;
    m_view->setIsChanging(true);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(m_view.get(), Qt::Key_Left);
    QCOMPARE(m_view->detail(), Detail::Full);
    m_view->setIsChanging(false);

    m_setup->addPowerWall(QStringLiteral("large"), 40, 40);
    m_view->showLayout(std::make_shared<const zoHPCLayout>(m_setup->layout()));
    QTRY_COMPARE(m_view->detail(), Detail::Full); // what was turned before may not have settled
    m_view->setIsChanging(true);
    QCOMPARE(m_view->detail(), Detail::Fast);
    m_view->setIsChanging(false);
    QCOMPARE(m_view->detail(), Detail::Full);

    // As quickly as the machine is.
    for (int i = 0; i < 100 && m_view->detail() == Detail::Full; ++i)
        QTest::keyClick(m_view.get(), Qt::Key_Left);
    QCOMPARE(m_view->detail(), Detail::Fast);
    QTRY_COMPARE(m_view->detail(), Detail::Full);
    for (int i = 0; i < 100 && m_view->detail() == Detail::Full; ++i)
        wheel(1);
    QCOMPARE(m_view->detail(), Detail::Fast);
}

void tst_zoHPCRoomView::wheelComesNearer()
{
    const double before = m_view->picture().camera().distance;

    wheel(1);
    QVERIFY(m_view->picture().camera().distance < before);
    wheel(-1);
    QVERIFY(qAbs(m_view->picture().camera().distance - before) < 1e-6 * before);
}

void tst_zoHPCRoomView::doubleClickFits()
{
    QSignalSpy activated(m_view.get(), &zoHPCRoomView::itemActivated);
    const double fitted = m_view->picture().camera().distance;
    wheel(5);

    QTest::mouseDClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(300, 200));

    QVERIFY(qAbs(m_view->picture().camera().distance - fitted) < 1e-6 * fitted);
    QVERIFY(activated.size() <= 1);
}

void tst_zoHPCRoomView::keysTurnZoomAndFit()
{
    const zoHPCRoomCamera start = m_view->picture().camera();

    QTest::keyClick(m_view.get(), Qt::Key_Right);
    QVERIFY(m_view->picture().camera().yaw > start.yaw);
    QTest::keyClick(m_view.get(), Qt::Key_Left);
    QTest::keyClick(m_view.get(), Qt::Key_Up);
    QVERIFY(m_view->picture().camera().pitch > start.pitch);
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QVERIFY(m_view->picture().camera().distance < start.distance);
    QTest::keyClick(m_view.get(), Qt::Key_Minus);
    QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QTest::keyClick(m_view.get(), Qt::Key_Home);
    QVERIFY(qAbs(m_view->picture().camera().distance - start.distance) < 1e-6 * start.distance);
}

void tst_zoHPCRoomView::otherKeysGoToTheParent()
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    event.accept();

    QApplication::sendEvent(m_view.get(), &event);

    QVERIFY(!event.isAccepted());
}

void tst_zoHPCRoomView::fittedViewFollowsItsSizeAndItsContent()
{
    m_view->resize(300, 400);
    for (const double x : {-1500.0, 1500.0})
        QVERIFY(m_view->rect().contains(placeOf(x, 0)));

    m_wall->setDouble(zoHPCProjectionItem::Width, 9000.0);
    m_wall->update();
    m_view->showLayout(std::make_shared<const zoHPCLayout>(m_setup->layout()));
    for (const double x : {-4500.0, 4500.0})
        QVERIFY(m_view->rect().contains(placeOf(x, 0)));
}

void tst_zoHPCRoomView::turnedViewKeepsItsCamera()
{
    QTest::keyClick(m_view.get(), Qt::Key_Right);
    const zoHPCRoomCamera camera = m_view->picture().camera();

    m_wall->setDouble(zoHPCProjectionItem::Width, 9000.0);
    m_wall->update();
    m_view->showLayout(std::make_shared<const zoHPCLayout>(m_setup->layout()));
    m_view->resize(300, 400);

    QVERIFY(m_view->picture().camera() == camera);
}

void tst_zoHPCRoomView::currentItemIsHighlighted()
{
    const QColor current = zoHPCPictureStyle(m_view->palette()).current;
    const auto hasHighlight = [&] {
        const QImage image = m_view->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == current)
                    return true;
            }
        }
        return false;
    };

    QVERIFY(!hasHighlight());
    m_view->setCurrentItems({m_wall->child(0)});
    QVERIFY(hasHighlight());
    // It stays through a new reading.
    m_view->showLayout(std::make_shared<const zoHPCLayout>(m_setup->layout()));
    QVERIFY(hasHighlight());
    m_view->setCurrentItems({});
    QVERIFY(!hasHighlight());
}

void tst_zoHPCRoomView::allSelectedRowsAreHighlighted()
{
    const QPoint places[] = {placeOf(-900, 600), placeOf(900, 600), placeOf(-900, -600), placeOf(900, -600)};
    const auto colours = [&] {
        const QImage image = m_view->grab().toImage();
        std::vector<QColor> result;
        for (const QPoint& place : places)
            result.push_back(image.pixelColor(place));
        return result;
    };
    const std::vector<QColor> plain = colours();

    m_view->setCurrentItems({m_wall->child(0), m_wall->child(1), m_wall->child(3)});

    const std::vector<QColor> marked = colours();
    QVERIFY(marked[0] != plain[0]);
    QVERIFY(marked[1] != plain[1]);
    QVERIFY(marked[2] == plain[2]);
    QVERIFY(marked[3] != plain[3]);
}

void tst_zoHPCRoomView::frontAndTopAreWithoutPerspectiveUntilTurned()
{
    for (const bool isTop : {false, true}) {
        isTop ? m_view->lookFromAbove() : m_view->lookFromFront();
        const zoHPCRoomCamera camera = m_view->picture().camera();
        QVERIFY(camera.isParallel);
        QCOMPARE(camera.pitch, isTop ? 90.0 : 0.0);

        QTest::keyClick(m_view.get(), Qt::Key_Left);
        QVERIFY(!m_view->picture().camera().isParallel);
        QVERIFY(m_view->picture().camera().pitch < 90.0);
    }
}

void tst_zoHPCRoomView::outlinesOfWindowsAreOffOrOn()
{
    const QImage without = m_view->grab().toImage();

    m_view->setHasFrames(true);
    QVERIFY(m_view->grab().toImage() != without);
    m_view->setHasFrames(false);
    QCOMPARE(m_view->grab().toImage(), without);
}

void tst_zoHPCRoomView::withoutLayoutNothingIsFound()
{
    QSignalSpy activated(m_view.get(), &zoHPCRoomView::itemActivated);
    const QPoint place = placeOf(700, -500);

    m_view->showLayout(nullptr);
    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, place);

    QCOMPARE(activated.size(), 0);
    QVERIFY(m_view->picture().walls().empty());
}

void tst_zoHPCRoomView::resolutionOfTheScreenIsUsed()
{
    QImage image(1200, 800, QImage::Format_RGB32);
    image.setDevicePixelRatio(2.0);
    m_view->render(&image);

    // The lower right quarter of the picture lies in that of the image, in its own fine pixels.
    const QPoint corner = placeOf(1500, -1000) * 2;
    QVERIFY(image.rect().contains(corner));
    QVERIFY(image.pixelColor(corner - QPoint(30, 30)) != QColor(Qt::white));
    QVERIFY(image.pixelColor(1195, 5) == QColor(Qt::white));
}

ZO_TEST_MAIN(tst_zoHPCRoomView)

#include "tst_zoHPCRoomView.moc"
