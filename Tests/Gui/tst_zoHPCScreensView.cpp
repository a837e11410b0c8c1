#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCScreensView.h>

#include <QApplication>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTextDocument>
#include <QToolTip>
#include <QWheelEvent>

#include <memory>

Q_DECLARE_METATYPE(QTreeWidgetItem*)
Q_DECLARE_METATYPE(zoHPCWindowItem*)

// The view of the screens.
class tst_zoHPCScreensView final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void clickSelectsTheViewport();
    void clickSelectsTheWindowBesideItsViewports();
    void clickBesideSelectsNothing();
    void draggingMovesTheWindow();
    void draggingAnEdgeResizes_data();
    void draggingAnEdgeResizes();
    void windowStaysLargeEnoughToTake();
    void smallestMoveIsNoDrag();
    void windowInFullScreenIsNotDragged();
    void escapeTakesTheDragBack();
    void escapeWithoutDragGoesToTheParent();
    void pictureFollowsTheDragInPlace();
    void windowThatGoesEndsTheDrag();
    void layoutThatGoesEndsTheDrag();
    void movedWindowSnaps_data();
    void movedWindowSnaps();
    void movedEdgeSnaps_data();
    void movedEdgeSnaps();
    void controlKeySuspendsSnapping();
    void unknownSizeOfAScreenIsNoLine();
    void snappingLeavesTheSmallestWindow();
    void guideShowsWhereItSnapped();
    void toolTipsAreReadAsTheyStand();
    void draggingBesideMovesTheSheet();
    void wheelAndKeysZoom();
    void quickChangesOfALargePictureArePaintedFast();
    void doubleClickFits();
    void screenSizeIsUsed();
    void cursorTellsWhatADragDoes();

private:
    void show();
    QPoint placeOf(double x, double y) const;
    void move(const QPoint& to, Qt::MouseButtons buttons = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void addNeighbour();
    QRect dragged(const QPoint& from, const QPointF& pixels, Qt::KeyboardModifiers modifiers);
    void drag(const QPoint& from, const QPoint& by);
    QRect geometry() const;

    std::unique_ptr<zoHPCSetup> m_setup;
    std::unique_ptr<zoHPCScreensView> m_view;
    zoHPCWindowItem* m_window = nullptr;
};

void tst_zoHPCScreensView::init()
{
    // What signal spies record.
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*");
    qRegisterMetaType<zoHPCWindowItem*>("zoHPCWindowItem*");
    m_setup = std::make_unique<zoHPCSetup>();
    m_setup->addNode(QStringLiteral("n"));
    m_window = m_setup->addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1600, 1200);
    zoHPCViewportItem* const viewport = m_setup->addViewport(m_window, QString(), QStringLiteral("left"));
    viewport->setString(zoHPCViewportItem::Position, QStringLiteral("left"));
    viewport->update();
    m_view = std::make_unique<zoHPCScreensView>();
    m_view->resize(600, 500);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    show();
}

void tst_zoHPCScreensView::cleanup()
{
    m_view.reset();
    m_setup.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCScreensView::show()
{
    m_view->showLayout(std::make_shared<const zoHPCLayout>(m_setup->layout()));
}

// Of fractions of the window.
QPoint tst_zoHPCScreensView::placeOf(double x, double y) const
{
    const QRectF place = m_view->picture().placeOf(m_window);
    return QPointF(place.left() + x * place.width(), place.top() + y * place.height()).toPoint();
}

void tst_zoHPCScreensView::move(const QPoint& to, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(QEvent::MouseMove, to, m_view->mapToGlobal(to), Qt::NoButton, buttons, modifiers);
    QApplication::sendEvent(m_view.get(), &event);
}

void tst_zoHPCScreensView::drag(const QPoint& from, const QPoint& by)
{
    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, from);
    move(from + by / 2);
    move(from + by);
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, from + by);
}

QRect tst_zoHPCScreensView::geometry() const
{
    return QRect(m_window->getInt(zoHPCWindowItem::X), m_window->getInt(zoHPCWindowItem::Y),
                 m_window->getInt(zoHPCWindowItem::Width), m_window->getInt(zoHPCWindowItem::Height));
}

void tst_zoHPCScreensView::clickSelectsTheViewport()
{
    QSignalSpy activated(m_view.get(), &zoHPCScreensView::itemActivated);

    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, placeOf(0.25, 0.5));

    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), m_window->child(0));
}

void tst_zoHPCScreensView::clickSelectsTheWindowBesideItsViewports()
{
    QSignalSpy activated(m_view.get(), &zoHPCScreensView::itemActivated);

    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, placeOf(0.75, 0.5));

    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), m_window);
    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));
}

void tst_zoHPCScreensView::clickBesideSelectsNothing()
{
    QSignalSpy activated(m_view.get(), &zoHPCScreensView::itemActivated);

    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
    QTest::mouseClick(m_view.get(), Qt::RightButton, Qt::NoModifier, placeOf(0.75, 0.5));

    QCOMPARE(activated.size(), 0);
}

void tst_zoHPCScreensView::draggingMovesTheWindow()
{
    QSignalSpy changed(m_view.get(), SIGNAL(windowChanged(zoHPCWindowItem*)));
    QSignalSpy activated(m_view.get(), &zoHPCScreensView::itemActivated);
    const double scale = m_view->picture().scale();

    drag(placeOf(0.5, 0.5), QPoint(60, -40));

    QCOMPARE(geometry(), QRect(qRound(60 / scale), qRound(-40 / scale), 1600, 1200));
    QCOMPARE(changed.size(), 2);
    QCOMPARE(activated.size(), 1); // what is dragged is selected, once
}

void tst_zoHPCScreensView::draggingAnEdgeResizes_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPoint>("offset");
    QTest::addColumn<QPoint>("by");
    QTest::addColumn<QRectF>("expected"); // what is added to the geometry, per unit of the drag

    QTest::newRow("left") << QPointF(0.0, 0.5) << QPoint(1, 0) << QPoint(40, 30) << QRectF(40, 0, -40, 0);
    QTest::newRow("right") << QPointF(1.0, 0.5) << QPoint(-2, 0) << QPoint(-40, 30) << QRectF(0, 0, -40, 0);
    QTest::newRow("top") << QPointF(0.5, 0.0) << QPoint(0, 1) << QPoint(40, 30) << QRectF(0, 30, 0, -30);
    QTest::newRow("bottom") << QPointF(0.5, 1.0) << QPoint(0, -2) << QPoint(40, 30) << QRectF(0, 0, 0, 30);
    QTest::newRow("corner") << QPointF(1.0, 1.0) << QPoint(-2, -2) << QPoint(40, -30)
                            << QRectF(0, 0, 40, -30);
}

void tst_zoHPCScreensView::draggingAnEdgeResizes()
{
    QFETCH(QPointF, from);
    QFETCH(QPoint, offset);
    QFETCH(QPoint, by);
    QFETCH(QRectF, expected);
    const double scale = m_view->picture().scale();

    drag(placeOf(from.x(), from.y()) + offset, by);

    const QRect result = geometry();
    QVERIFY(qAbs(result.x() - expected.x() / scale) <= 1.0);
    QVERIFY(qAbs(result.y() - expected.y() / scale) <= 1.0);
    QVERIFY(qAbs(result.width() - 1600 - expected.width() / scale) <= 1.0);
    QVERIFY(qAbs(result.height() - 1200 - expected.height() / scale) <= 1.0);
}

void tst_zoHPCScreensView::windowStaysLargeEnoughToTake()
{
    drag(placeOf(0.0, 0.5) + QPoint(1, 0), QPoint(2000, 0));
    QVERIFY(geometry().width() >= 10);
    QCOMPARE(geometry().right(), 1599);
    show();

    m_window->setInt(zoHPCWindowItem::X, 0);
    m_window->setInt(zoHPCWindowItem::Width, 1600);
    show();
    drag(placeOf(0.5, 1.0) - QPoint(0, 2), QPoint(0, -2000));
    QVERIFY(geometry().height() >= 10);
    QCOMPARE(geometry().top(), 0);
}

void tst_zoHPCScreensView::smallestMoveIsNoDrag()
{
    QSignalSpy activated(m_view.get(), &zoHPCScreensView::itemActivated);

    drag(placeOf(0.75, 0.5), QPoint(1, 1));

    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));
    QCOMPARE(activated.size(), 1);
}

void tst_zoHPCScreensView::windowInFullScreenIsNotDragged()
{
    m_window->setBool(zoHPCWindowItem::FullScreen, true);
    show();

    drag(placeOf(0.5, 0.5), QPoint(60, 40));

    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));
}

void tst_zoHPCScreensView::escapeTakesTheDragBack()
{
    QSignalSpy activated(m_view.get(), &zoHPCScreensView::itemActivated);
    const QPoint start = placeOf(0.5, 0.5);
    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    move(start + QPoint(50, 50));
    QVERIFY(geometry() != QRect(0, 0, 1600, 1200));

    QTest::keyClick(m_view.get(), Qt::Key_Escape);

    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));
    move(start + QPoint(80, 80));
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));
    QCOMPARE(activated.size(), 1); // by the drag, not by its end
}

void tst_zoHPCScreensView::escapeWithoutDragGoesToTheParent()
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    event.accept();

    QApplication::sendEvent(m_view.get(), &event);

    QVERIFY(!event.isAccepted());
}

void tst_zoHPCScreensView::pictureFollowsTheDragInPlace()
{
    connect(m_view.get(), &zoHPCScreensView::windowChanged, this, &tst_zoHPCScreensView::show);
    const QPoint start = placeOf(0.5, 0.5);
    const double scale = m_view->picture().scale();

    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    move(start + QPoint(100, 60));
    const QPoint during = placeOf(0.5, 0.5);
    const double scaleDuring = m_view->picture().scale();
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, start + QPoint(100, 60));

    QVERIFY((during - start - QPoint(100, 60)).manhattanLength() <= 2);
    QCOMPARE(scaleDuring, scale);
    // Afterwards all of it is in the picture again.
    QVERIFY(QRectF(m_view->rect()).contains(m_view->picture().placeOf(m_window)));
}

void tst_zoHPCScreensView::windowThatGoesEndsTheDrag()
{
    const QPoint start = placeOf(0.5, 0.5);
    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    move(start + QPoint(50, 50));

    delete m_window;
    show();

    move(start + QPoint(90, 90));
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    QVERIFY(m_view->picture().nodes().empty());
}

void tst_zoHPCScreensView::layoutThatGoesEndsTheDrag()
{
    const QPoint start = placeOf(0.5, 0.5);
    QSignalSpy changed(m_view.get(), SIGNAL(windowChanged(zoHPCWindowItem*)));
    QTest::mousePress(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);
    // As when a value that was written makes others read the trees anew.
    connect(m_view.get(), &zoHPCScreensView::windowChanged, m_view.get(),
            [this] { m_view->showLayout(nullptr); });

    move(start + QPoint(50, 50));
    move(start + QPoint(90, 90));
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, Qt::NoModifier, start);

    QCOMPARE(changed.size(), 1);
}

// The window gets smaller; a second one stands beside it on a screen of known size. A third one, in full
// screen below them, and a fourth one on another screen have no part in it.
void tst_zoHPCScreensView::addNeighbour()
{
    m_window->setInt(zoHPCWindowItem::X, 100);
    m_window->setInt(zoHPCWindowItem::Y, 150);
    m_window->setInt(zoHPCWindowItem::Width, 600);
    m_window->setInt(zoHPCWindowItem::Height, 400);
    m_setup->addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 1000, 700, 500, 300);
    QTreeWidgetItem* const below = m_setup->addWindow(QStringLiteral("n"), QString());
    m_setup->addWindowAt(QStringLiteral("n"), QStringLiteral("1"), 1300, 730, 500, 300);
    QTreeWidgetItem* const display = below->parent();
    display->insertChild(0, display->takeChild(display->indexOfChild(below)));
    m_view->setScreenSize(QSizeF(1920, 1200));
    show();
}

// By about so many pixels of the screen: as near as whole units of the picture come to it.
QRect tst_zoHPCScreensView::dragged(const QPoint& from, const QPointF& pixels,
                                    Qt::KeyboardModifiers modifiers)
{
    const QPoint to = from + (pixels * m_view->picture().scale()).toPoint();
    QTest::mousePress(m_view.get(), Qt::LeftButton, modifiers, from);
    move(from + QPoint(0, 300), Qt::LeftButton, modifiers); // surely a drag
    move(to, Qt::LeftButton, modifiers);
    const QRect result = geometry();
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, modifiers, to);
    return result;
}

void tst_zoHPCScreensView::movedWindowSnaps_data()
{
    QTest::addColumn<QPointF>("to"); // of the upper left corner
    QTest::addColumn<QPoint>("expected");

    // Less than 8 units of the picture are about 35 pixels here.
    QTest::newRow("left-and-top-of-the-screen") << QPointF(20, -20) << QPoint(0, 0);
    QTest::newRow("right-and-bottom-of-the-screen") << QPointF(1305, 815) << QPoint(1320, 800);
    QTest::newRow("left-of-the-neighbour") << QPointF(380, 315) << QPoint(400, 300);
    QTest::newRow("below-the-neighbour") << QPointF(980, 780) << QPoint(1000, 800);
    QTest::newRow("flush-with-the-neighbour") << QPointF(915, 620) << QPoint(900, 600);
}

void tst_zoHPCScreensView::movedWindowSnaps()
{
    QFETCH(QPointF, to);
    QFETCH(QPoint, expected);
    addNeighbour();

    const QRect result = dragged(placeOf(0.5, 0.5), to - QPointF(100, 150), Qt::NoModifier);

    QCOMPARE(result, QRect(expected, QSize(600, 400)));
}

void tst_zoHPCScreensView::movedEdgeSnaps_data()
{
    QTest::addColumn<QPointF>("edge");
    QTest::addColumn<QPoint>("offset");
    QTest::addColumn<QPointF>("by");
    QTest::addColumn<QRect>("expected");

    QTest::newRow("left-to-the-screen")
        << QPointF(0.0, 0.5) << QPoint(1, 0) << QPointF(-85, 40) << QRect(0, 150, 700, 400);
    QTest::newRow("top-to-the-screen")
        << QPointF(0.5, 0.0) << QPoint(0, 1) << QPointF(40, -135) << QRect(100, 0, 600, 550);
    QTest::newRow("right-to-the-neighbour")
        << QPointF(1.0, 0.5) << QPoint(-1, 0) << QPointF(285, 40) << QRect(100, 150, 900, 400);
    QTest::newRow("corner-to-the-neighbour")
        << QPointF(1.0, 1.0) << QPoint(-1, -1) << QPointF(285, 165) << QRect(100, 150, 900, 550);
}

void tst_zoHPCScreensView::movedEdgeSnaps()
{
    QFETCH(QPointF, edge);
    QFETCH(QPoint, offset);
    QFETCH(QPointF, by);
    QFETCH(QRect, expected);
    addNeighbour();

    const QRect result = dragged(placeOf(edge.x(), edge.y()) + offset, by, Qt::NoModifier);

    QCOMPARE(result, expected);
}

void tst_zoHPCScreensView::controlKeySuspendsSnapping()
{
    addNeighbour();
    const double scale = m_view->picture().scale();
    const QPoint way = (QPointF(285, 165) * scale).toPoint();

    const QRect result = dragged(placeOf(0.5, 0.5), QPointF(285, 165), Qt::ControlModifier);

    QCOMPARE(result, QRect(100 + qRound(way.x() / scale), 150 + qRound(way.y() / scale), 600, 400));
    QVERIFY(result.right() + 1 != 1000);
}

void tst_zoHPCScreensView::unknownSizeOfAScreenIsNoLine()
{
    // As large as its only window needs: that window must leave its right edge at once.
    const double scale = m_view->picture().scale();

    const QRect result = dragged(placeOf(1.0, 0.5) - QPoint(2, 0), QPointF(-4 / scale, 0), Qt::NoModifier);

    QVERIFY(qAbs(result.width() - (1600 - 4 / scale)) <= 1.0);
}

void tst_zoHPCScreensView::snappingLeavesTheSmallestWindow()
{
    addNeighbour();
    m_setup->addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 106, 800, 100, 100);
    show();

    const QRect result = dragged(placeOf(1.0, 0.5) - QPoint(1, 0), QPointF(-590, 0), Qt::NoModifier);

    QCOMPARE(result.x(), 100);
    QVERIFY(result.width() >= 16);
}

void tst_zoHPCScreensView::guideShowsWhereItSnapped()
{
    addNeighbour();
    const auto paintedDuring = [this](Qt::KeyboardModifiers modifiers) {
        const QPoint from = placeOf(0.5, 0.5);
        QTest::mousePress(m_view.get(), Qt::LeftButton, modifiers, from);
        move(from + QPoint(0, 300), Qt::LeftButton, modifiers);
        // Held where it stands: it lies flush with nothing but what it is put against.
        m_window->setInt(zoHPCWindowItem::X, 400);
        m_window->setInt(zoHPCWindowItem::Y, 300);
        const QPointF way = QPointF(300, 150) * m_view->picture().scale();
        move(from + way.toPoint(), Qt::LeftButton, modifiers);
        m_window->setInt(zoHPCWindowItem::X, 400);
        m_window->setInt(zoHPCWindowItem::Y, 300);
        show();
        const QImage image = m_view->grab().toImage();
        QTest::keyClick(m_view.get(), Qt::Key_Escape);
        QTest::mouseRelease(m_view.get(), Qt::LeftButton, modifiers, from);
        show();
        return image;
    };

    const QImage free = paintedDuring(Qt::ControlModifier);
    const QImage snapped = paintedDuring(Qt::NoModifier);

    QVERIFY(free != snapped);
}

void tst_zoHPCScreensView::toolTipsAreReadAsTheyStand()
{
    m_window->setRenderNode(QStringLiteral("a&b<i>"));
    m_window->update();
    show();
    const QPoint at = placeOf(0.75, 0.5);
    QHelpEvent help(QEvent::ToolTip, at, m_view->mapToGlobal(at));

    QApplication::sendEvent(m_view.get(), &help);

    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QVERIFY(Qt::mightBeRichText(QToolTip::text()));
    QVERIFY(shown.toPlainText().startsWith(m_window->text(0)));
    QVERIFY(shown.toPlainText().contains(QStringLiteral("Ctrl")));
}

void tst_zoHPCScreensView::draggingBesideMovesTheSheet()
{
    const QPoint before = placeOf(0.5, 0.5);

    drag(QPoint(2, 2), QPoint(30, 20));
    QCOMPARE(placeOf(0.5, 0.5), before + QPoint(30, 20));
    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));

    // The middle button does so everywhere.
    QTest::mousePress(m_view.get(), Qt::MiddleButton, Qt::NoModifier, placeOf(0.5, 0.5));
    move(placeOf(0.5, 0.5) - QPoint(30, 20), Qt::MiddleButton);
    QTest::mouseRelease(m_view.get(), Qt::MiddleButton, Qt::NoModifier, before);
    QCOMPARE(placeOf(0.5, 0.5), before);
    QCOMPARE(geometry(), QRect(0, 0, 1600, 1200));
}

void tst_zoHPCScreensView::wheelAndKeysZoom()
{
    const double before = m_view->picture().scale();
    QWheelEvent event(QPointF(300, 200), m_view->mapToGlobal(QPoint(300, 200)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);

    QApplication::sendEvent(m_view.get(), &event);
    QVERIFY(m_view->picture().scale() > before);
    QTest::keyClick(m_view.get(), Qt::Key_Minus);
    QVERIFY(qAbs(m_view->picture().scale() - before) < 1e-9);
    QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QVERIFY(m_view->picture().scale() > before);
    QTest::keyClick(m_view.get(), Qt::Key_Home);
    QVERIFY(qAbs(m_view->picture().scale() - before) < 1e-9);
}

void tst_zoHPCScreensView::quickChangesOfALargePictureArePaintedFast()
{
    using Detail = zoHPCPicture::Detail;
    m_view->setIsChanging(true);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QCOMPARE(m_view->detail(), Detail::Full);
    m_view->setIsChanging(false);

    for (int i = 0; i < 300; ++i)
        m_setup->addWindow(QStringLiteral("n%1").arg(i), QString());
    show();
    QTRY_COMPARE(m_view->detail(), Detail::Full); // what was zoomed before may not have settled
    m_view->setIsChanging(true);
    QCOMPARE(m_view->detail(), Detail::Fast);
    m_view->setIsChanging(false);
    QCOMPARE(m_view->detail(), Detail::Full);

    // As quickly as the machine is.
    for (int i = 0; i < 100 && m_view->detail() == Detail::Full; ++i)
        QTest::keyClick(m_view.get(), Qt::Key_Plus);
    QCOMPARE(m_view->detail(), Detail::Fast);
    QTRY_COMPARE(m_view->detail(), Detail::Full);
}

void tst_zoHPCScreensView::doubleClickFits()
{
    const QPoint before = placeOf(0.5, 0.5);
    drag(QPoint(2, 2), QPoint(30, 20));

    QTest::mouseDClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));

    QCOMPARE(placeOf(0.5, 0.5), before);
}

void tst_zoHPCScreensView::screenSizeIsUsed()
{
    m_view->setScreenSize(QSizeF(1280, 1024));

    QVERIFY(m_view->picture().nodes()[0].screens[0].isSizeKnown);
    QVERIFY(m_view->picture().nodes()[0].screens[0].windows[0].isOffScreen);
}

void tst_zoHPCScreensView::cursorTellsWhatADragDoes()
{
    move(placeOf(0.5, 0.5), Qt::NoButton);
    QCOMPARE(m_view->cursor().shape(), Qt::SizeAllCursor);
    move(placeOf(0.0, 0.5) + QPoint(1, 0), Qt::NoButton);
    QCOMPARE(m_view->cursor().shape(), Qt::SizeHorCursor);
    move(placeOf(0.5, 1.0) - QPoint(0, 2), Qt::NoButton);
    QCOMPARE(m_view->cursor().shape(), Qt::SizeVerCursor);
    move(placeOf(1.0, 1.0) - QPoint(2, 2), Qt::NoButton);
    QCOMPARE(m_view->cursor().shape(), Qt::SizeFDiagCursor);
    move(QPoint(1, 1), Qt::NoButton);
    QCOMPARE(m_view->cursor().shape(), Qt::ArrowCursor);
}

ZO_TEST_MAIN(tst_zoHPCScreensView)

#include "tst_zoHPCScreensView.moc"
