#include "zoTestCase.h"

#include <zoRehearsalPlaces.h>

// The windows of a rehearsal on the desktop.
class tst_zoRehearsalPlaces final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wallStandsBesideTheHost_data();
    void wallStandsBesideTheHost();
    void windowsKeepTheirOrder();
    void screenIsRead_data();
    void screenIsRead();
};

void tst_zoRehearsalPlaces::wallStandsBesideTheHost_data()
{
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QRect>("host");
    QTest::addColumn<bool>("isBeside");

    const QRect desktop(0, 0, 1920, 1080);
    QTest::newRow("no-host") << desktop << QRect() << true;
    QTest::newRow("right-of-it") << desktop << QRect(0, 0, 1180, 700) << true;
    QTest::newRow("left-of-it") << desktop << QRect(740, 100, 1180, 700) << true;
    QTest::newRow("below-it") << desktop << QRect(0, 0, 1920, 600) << true;
    QTest::newRow("above-it") << desktop << QRect(0, 500, 1920, 580) << true;
    QTest::newRow("partly-outside") << desktop << QRect(-600, -50, 1180, 700) << true;
    QTest::newRow("on-another-screen") << desktop << QRect(1920, 0, 1180, 700) << true;
    QTest::newRow("screen-that-begins-elsewhere")
        << QRect(1920, 200, 1280, 1024) << QRect(1920, 200, 700, 500) << true;
    QTest::newRow("no-room") << QRect(0, 0, 1366, 768) << QRect(80, 30, 1180, 700) << false;
    QTest::newRow("maximised") << desktop << desktop << false;
}

void tst_zoRehearsalPlaces::wallStandsBesideTheHost()
{
    QFETCH(QRect, screen);
    QFETCH(QRect, host);
    QFETCH(bool, isBeside);
    const QSize wall(3840, 2160);
    const zoRehearsalPlaces places(wall, screen, host);

    const QRect place = places.of(QRectF(QPointF(), QSizeF(wall)));

    QVERIFY(screen.contains(place));
    QCOMPARE(!place.intersects(host), isBeside);
    // As without it, where there is no room.
    if (!isBeside)
        QCOMPARE(place, zoRehearsalPlaces(wall, screen, QRect()).of(QRectF(QPointF(), QSizeF(wall))));
    QVERIFY(7 * place.width() >=
            zoRehearsalPlaces(wall, screen, QRect()).of(QRectF(QPointF(), QSizeF(wall))).width() - 3);
}

void tst_zoRehearsalPlaces::windowsKeepTheirOrder()
{
    const zoRehearsalPlaces places(QSize(2000, 1000), QRect(0, 0, 1000, 1000), QRect(0, 0, 1000, 400));

    const QRect left = places.of(QRectF(0, 0, 1000, 1000));
    const QRect right = places.of(QRectF(1000, 0, 1000, 1000));

    QCOMPARE(left.size(), QSize(450, 450));
    QCOMPARE(right.left(), left.left() + 450);
    QVERIFY(left.top() >= 400);
    // A wall that is smaller than the desktop is not made larger.
    QCOMPARE(zoRehearsalPlaces(QSize(100, 50), QRect(0, 0, 1000, 1000), QRect()).of(QRectF(0, 0, 100, 50)),
             QRect(450, 475, 100, 50));
    QCOMPARE(places.of(QRectF()).size(), QSize(1, 1));
}

void tst_zoRehearsalPlaces::screenIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRect>("screen");

    QTest::newRow("first") << "1366x768+0+0" << QRect(0, 0, 1366, 768);
    QTest::newRow("left-of-the-first") << "800x600-800+20" << QRect(-800, 20, 800, 600);
    QTest::newRow("none") << QString() << QRect(0, 0, 1920, 1080);
    QTest::newRow("something-else") << "large" << QRect(0, 0, 1920, 1080);
}

void tst_zoRehearsalPlaces::screenIsRead()
{
    QFETCH(QString, text);
    QFETCH(QRect, screen);

    QCOMPARE(zoRehearsalPlaces::screenOf(text), screen);
}

ZO_TEST_MAIN(tst_zoRehearsalPlaces)
#include "tst_zoRehearsalPlaces.moc"
