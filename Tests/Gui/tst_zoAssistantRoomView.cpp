#include "zoTestCase.h"

#include <zoAssistantRoomView.h>
#include <zoHPCLayout.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCWallBuilder.h>
#include <zoHPCWallPlan.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QWheelEvent>

#include <memory>

namespace
{
constexpr int s_wheelStep = 120; // eighths of a degree

// What a widget passes on.
class Above final : public QWidget
{
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
};
} // namespace

// The room beside the fields of the assistant, as a person turns it and looks nearer.
class tst_zoAssistantRoomView final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void oppositeKeysTakeEachOtherBack_data();
    void oppositeKeysTakeEachOtherBack();
    void homeTakesEverythingIn();
    void otherKeysGoOn();
    void dragTurnsTheRoom();
    void otherButtonsTurnNothing();
    void wheelComesNearerAndGoesAway();
    void doubleClickTakesEverythingIn();
    void nearerViewStaysWithOtherSizes();
    void horizonIsNoPlace();
    void doubleClickWhilePickingMovesNothing();
    void manyPlanesAreCalledByTheirPlaces();
    void brokenTextShowsAnEmptyRoom();

private:
    QImage picture() const { return m_view->grab().toImage(); }
    void wheel(int steps) const;
    // With a button held, as an X server would say it.
    void moveTo(const QPoint& position, Qt::MouseButton held) const;
    static QString wall(zoHPCWallPlan::Kind kind);

    std::unique_ptr<Above> m_above;
    zoAssistantRoomView* m_view = nullptr;
};

void tst_zoAssistantRoomView::init()
{
    m_above = std::make_unique<Above>();
    m_view = new zoAssistantRoomView(m_above.get());
    m_view->resize(400, 300);
    m_above->resize(400, 300);
    m_view->showConfiguration(wall(zoHPCWallPlan::Kind::Power));
    m_above->show();
    m_view->setFocus();
}

void tst_zoAssistantRoomView::cleanup()
{
    m_above.reset();
    zoTestCase::cleanup();
}

QString tst_zoAssistantRoomView::wall(zoHPCWallPlan::Kind kind)
{
    zoHPCWallPlan plan = zoHPCWallPlan::of(kind);
    plan.hosts = QStringLiteral("n[01-64]");
    return zoHPCWallBuilder::sketch(plan);
}

void tst_zoAssistantRoomView::wheel(int steps) const
{
    QWheelEvent event(QPointF(200, 150), m_view->mapToGlobal(QPoint(200, 150)), QPoint(),
                      QPoint(0, steps * s_wheelStep), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_view, &event);
    QVERIFY(event.isAccepted());
}

void tst_zoAssistantRoomView::moveTo(const QPoint& position, Qt::MouseButton held) const
{
    QMouseEvent event(QEvent::MouseMove, position, m_view->mapToGlobal(position), Qt::NoButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(m_view, &event);
}

void tst_zoAssistantRoomView::oppositeKeysTakeEachOtherBack_data()
{
    QTest::addColumn<Qt::Key>("there");
    QTest::addColumn<Qt::Key>("back");

    QTest::newRow("left") << Qt::Key_Left << Qt::Key_Right;
    QTest::newRow("right") << Qt::Key_Right << Qt::Key_Left;
    QTest::newRow("up") << Qt::Key_Up << Qt::Key_Down;
    QTest::newRow("down") << Qt::Key_Down << Qt::Key_Up;
    QTest::newRow("nearer") << Qt::Key_Plus << Qt::Key_Minus;
    QTest::newRow("away") << Qt::Key_Minus << Qt::Key_Plus;
}

void tst_zoAssistantRoomView::oppositeKeysTakeEachOtherBack()
{
    QFETCH(Qt::Key, there);
    QFETCH(Qt::Key, back);
    const QImage before = picture();

    QTest::keyClick(m_view, there);
    const QImage after = picture();
    QTest::keyClick(m_view, back);

    QVERIFY(after != before);
    QCOMPARE(picture(), before);
}

void tst_zoAssistantRoomView::homeTakesEverythingIn()
{
    const QImage before = picture();
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(m_view, Qt::Key_Plus);
    QVERIFY(picture() != before);

    QTest::keyClick(m_view, Qt::Key_Home);

    QCOMPARE(picture(), before);
    QCOMPARE(m_above->keys, 0);
}

void tst_zoAssistantRoomView::otherKeysGoOn()
{
    const QImage before = picture();

    QTest::keyClick(m_view, Qt::Key_A);

    QCOMPARE(picture(), before);
    QCOMPARE(m_above->keys, 1);
}

void tst_zoAssistantRoomView::dragTurnsTheRoom()
{
    const QImage before = picture();

    QTest::mousePress(m_view, Qt::LeftButton, {}, QPoint(200, 150));
    moveTo(QPoint(260, 170), Qt::LeftButton);
    const QImage turned = picture();
    moveTo(QPoint(200, 150), Qt::LeftButton);
    const QImage back = picture();
    QTest::mouseRelease(m_view, Qt::LeftButton, {}, QPoint(200, 150));
    moveTo(QPoint(260, 170), Qt::RightButton); // the toolkit tells no move without a button

    QVERIFY(turned != before);
    QCOMPARE(back, before);
    QCOMPARE(picture(), before);
}

void tst_zoAssistantRoomView::otherButtonsTurnNothing()
{
    const QImage before = picture();

    QTest::mousePress(m_view, Qt::RightButton, {}, QPoint(200, 150));
    moveTo(QPoint(260, 170), Qt::RightButton);
    QTest::mouseRelease(m_view, Qt::RightButton, {}, QPoint(260, 170));

    QCOMPARE(picture(), before);
}

void tst_zoAssistantRoomView::wheelComesNearerAndGoesAway()
{
    const QImage before = picture();

    wheel(2);
    const QImage nearer = picture();
    wheel(-2);

    QVERIFY(nearer != before);
    QCOMPARE(picture(), before);
}

void tst_zoAssistantRoomView::doubleClickTakesEverythingIn()
{
    const QImage before = picture();
    wheel(3);
    QVERIFY(picture() != before);

    QTest::mouseDClick(m_view, Qt::LeftButton, {}, QPoint(200, 150));

    QCOMPARE(picture(), before);
}

// Where somebody looks from stays once he has chosen it; before, everything is taken in again.
void tst_zoAssistantRoomView::nearerViewStaysWithOtherSizes()
{
    const QImage before = picture();
    m_view->showConfiguration(wall(zoHPCWallPlan::Kind::Cave));
    const QImage fitted = picture();
    m_view->showConfiguration(wall(zoHPCWallPlan::Kind::Power));
    QCOMPARE(picture(), before);

    wheel(3);
    m_view->showConfiguration(wall(zoHPCWallPlan::Kind::Cave));
    QVERIFY(picture() != fitted);
    QTest::keyClick(m_view, Qt::Key_Home);

    QCOMPARE(picture(), fitted);
}

void tst_zoAssistantRoomView::horizonIsNoPlace()
{
    QSignalSpy picked(m_view, &zoAssistantRoomView::placePicked);
    m_view->setPicksPlace(true);
    const auto isPlace = [&](int y) {
        const int before = picked.count();
        QTest::mouseClick(m_view, Qt::LeftButton, {}, QPoint(200, y));
        return picked.count() > before;
    };
    QVERIFY(isPlace(298));

    // The lower the eye, the more of the picture lies above the horizon.
    for (int turn = 0; turn < 9 && isPlace(1); ++turn)
        QTest::keyClick(m_view, Qt::Key_Down);

    QVERIFY(!isPlace(1));
    QVERIFY(isPlace(298));
}

void tst_zoAssistantRoomView::doubleClickWhilePickingMovesNothing()
{
    wheel(3);
    const QImage before = picture();
    m_view->setPicksPlace(true);
    QCOMPARE(m_view->cursor().shape(), Qt::CrossCursor);

    QTest::mouseDClick(m_view, Qt::LeftButton, {}, QPoint(200, 150));

    QCOMPARE(picture(), before);
    m_view->setPicksPlace(false);
    QCOMPARE(m_view->cursor().shape(), Qt::ArrowCursor);
}

// "Wall row:2 col:3" has no room beside dozens of others.
void tst_zoAssistantRoomView::manyPlanesAreCalledByTheirPlaces()
{
    QString text = QStringLiteral("<cluster version=\"1\">");
    for (int column = 1; column <= 7; ++column)
        text += QStringLiteral(
                    "<projection type=\"plane\" name=\"Wall row:1 col:%1\" x1=\"%2\" x2=\"%3\" x3=\"%3\" "
                    "y1=\"-500\" y2=\"-500\" y3=\"500\" z1=\"-900\" z2=\"-900\" z3=\"-900\"/>")
                    .arg(QString::number(column), QString::number(column * 1000),
                         QString::number(column * 1000 + 1000));
    text += QStringLiteral("</cluster>");

    m_view->showConfiguration(text);

    QStringList names;
    for (const zoHPCLayout::Projection& projection : m_view->layoutOfRoom().projections())
        names << projection.item->getString(zoHPCProjectionItem::Name);
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("1:1 1:2 1:3 1:4 1:5 1:6 1:7"));
}

void tst_zoAssistantRoomView::brokenTextShowsAnEmptyRoom()
{
    m_view->showConfiguration(QStringLiteral("<cluster"));

    QCOMPARE(int(m_view->layoutOfRoom().projections().size()), 0);
    QVERIFY(!picture().isNull());
}

ZO_TEST_MAIN(tst_zoAssistantRoomView)
#include "tst_zoAssistantRoomView.moc"
