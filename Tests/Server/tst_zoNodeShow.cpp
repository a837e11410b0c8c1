#include "zoTestCase.h"
#include "zoTwoWindows.h"

#include <zoNodeShow.h>

#include <QGuiApplication>
#include <QSignalSpy>
#include <QWindow>

// The windows of a node, offscreen.
class tst_zoNodeShow final : public zoTestCase
{
    Q_OBJECT

private slots:
    void windowsHaveNamesAndSizes();
    void contentIsDrawnWhenAsked();
    void rehearsalHasFramesAndPicturesHaveNone();
    void nothingToShowOpensNothing();
};

void tst_zoNodeShow::windowsHaveNamesAndSizes()
{
    zoNodeShow show(zoTwoWindows());

    QCOMPARE(show.open(), QStringList());

    QCOMPARE(show.windowCount(), 2);
    QCOMPARE(show.windowName(1), QStringLiteral("n1-2"));
    QCOMPARE(show.picture(0).size(), QSize(200, 100));
    QCOMPARE(show.picture(1).size(), QSize(120, 60));
    QCOMPARE(show.remarks().size(), 2);
    // Whoever looks for the reason of a dark wall finds it.
    QCOMPARE(show.remarks().front().text,
             QStringLiteral("window n1-1: 200 \u00d7 100 pixels, no display here, nobody sees it"));
}

void tst_zoNodeShow::contentIsDrawnWhenAsked()
{
    zoNodeShow show(zoTwoWindows());
    QCOMPARE(show.open(), QStringList());
    const QRgb black = qRgb(0, 0, 0);
    QCOMPARE(show.picture(0).pixel(0, 0), black);

    show.setContent(zoShowContent::Tiles);
    show.draw();
    show.finish();
    show.swap();

    QCOMPARE(show.picture(0).pixel(0, 0), qRgb(255, 255, 255));
    QCOMPARE(show.picture(0).pixel(199, 99), qRgb(255, 255, 255));
    QVERIFY(show.picture(0).pixel(1, 50) != qRgb(255, 255, 255));
    show.setContent(zoShowContent::None);
    QCOMPARE(show.picture(0).pixel(0, 0), black);
}

void tst_zoNodeShow::rehearsalHasFramesAndPicturesHaveNone()
{
    zoNodeShow show(zoTwoWindows());
    show.setDesktopPlaces({QRect(0, 0, 50, 25), QRect(60, 0, 30, 15)});

    QCOMPARE(show.open(), QStringList());

    QCOMPARE(show.picture(0).size(), QSize(200, 100));
    QCOMPARE(show.picture(0).pixel(0, 0), qRgb(0, 0, 0));
    const QWindowList windows = QGuiApplication::topLevelWindows();
    QCOMPARE(windows.size(), 2);
    for (const QWindow* window : windows) // which the platform hears of
        QVERIFY(window->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

void tst_zoNodeShow::nothingToShowOpensNothing()
{
    zoNodeShow show((zoWallSetup()));

    QCOMPARE(show.open(), QStringList());

    QCOMPARE(show.windowCount(), 0);
    QVERIFY(show.isOpen());
    show.draw();
    show.finish();
    show.swap();
}

int main(int argc, char** argv)
{
    zoNodeShow::prepareApplication();
    QGuiApplication application(argc, argv);
    tst_zoNodeShow test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoNodeShow.moc"
