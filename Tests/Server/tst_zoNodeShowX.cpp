#include "zoTestCase.h"
#include "zoVirtualDisplay.h"
#include "zoWallPictures.h"

#include <zoGLProbe.h>
#include <zoNodeShow.h>

#include <QGuiApplication>
#include <QRasterWindow>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QWindow>

#include <cstdio>

// The windows of a node on a display with two screens, as the display server sees them.
class tst_zoNodeShowX final : public zoTestCase
{
    Q_OBJECT

public:
    explicit tst_zoNodeShowX(zoVirtualDisplay& display) : m_display(display) {}

private slots:
    void windowsLieWhereTheyBelong_data();
    void windowsLieWhereTheyBelong();
    void screensCountTheSameFromTheSecondOne();
    void windowManagerMovesNothing_data();
    void windowManagerMovesNothing();
    void missingScreenFailsByName();
    void rehearsalStandsInItsPlaces();
    void pictureIsOnTheScreen_data();
    void pictureIsOnTheScreen();
    void uncoveredWindowShowsItsFrameAgain_data();
    void uncoveredWindowShowsItsFrameAgain();
    void otherSizeIsToldAndAsksForAFrame();
    void closingIsIgnored();
    void glDrawsWhatRasterDraws_data();
    void glDrawsWhatRasterDraws();
    void quadBufferThatIsMissingIsTold();
    void hardwareSyncThatIsMissingIsTold();
    void softwareIsNoReasonForGL();

private:
    struct Found
    {
        QRect geometry;
        QString screen; // "0", "1"
    };

    Found find(const QWindow& window) const;
    void checkPlace(const zoWallWindow& window, const QRect& geometry, const QString& screen);

    zoVirtualDisplay& m_display;
};

namespace
{
zoWallViewport frontViewport()
{
    zoWallViewport viewport;
    viewport.plane = {QStringLiteral("P"), {-1500, -1000, -1500}, {1500, -1000, -1500}, {1500, 1000, -1500}};
    viewport.tile = QStringLiteral("P");
    return viewport;
}

zoWallWindow windowAt(const QRect& geometry, int screen, bool fullScreen)
{
    zoWallWindow window;
    window.geometry = geometry;
    window.screen = screen;
    window.fullScreen = fullScreen;
    window.viewports = {frontViewport()};
    return window;
}

zoWallSetup setupOf(const std::vector<zoWallWindow>& windows)
{
    zoWallSetup setup;
    setup.nodes = {{QStringLiteral("n1"), QStringLiteral("n1"), QStringLiteral("n1"), -1, windows}};
    setup.walls = {frontViewport().plane};
    return setup;
}

QString captured(const QString& text, const char* pattern)
{
    return QRegularExpression(QString::fromLatin1(pattern)).match(text).captured(1);
}

int number(const QString& text, const char* label)
{
    return captured(text, qPrintable(QString::fromLatin1(label) + QStringLiteral(":\\s*(-?\\d+)"))).toInt();
}

QWindow* onlyWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return windows.size() == 1 ? windows.first() : nullptr;
}

// The share of pixels in which a channel differs by more than antialiasing of either kind makes it.
double difference(const QImage& a, const QImage& b)
{
    constexpr int Tolerance = 24;
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            if (std::abs(qRed(p) - qRed(q)) > Tolerance || std::abs(qGreen(p) - qGreen(q)) > Tolerance ||
                std::abs(qBlue(p) - qBlue(q)) > Tolerance)
                ++count;
        }
    }
    return double(count) / (double(a.width()) * a.height());
}
} // namespace

tst_zoNodeShowX::Found tst_zoNodeShowX::find(const QWindow& window) const
{
    Found found;
    const QString id = QStringLiteral("0x") + QString::number(window.winId(), 16);
    const QString info =
        m_display.windowInfo({QStringLiteral("-display"), m_display.name(), QStringLiteral("-id"), id});
    found.geometry = QRect(number(info, "Absolute upper-left X"), number(info, "Absolute upper-left Y"),
                           number(info, "Width"), number(info, "Height"));
    // Each screen has a root window of its own.
    const QString above = m_display.windowInfo(
        {QStringLiteral("-display"), m_display.name(), QStringLiteral("-id"), id, QStringLiteral("-tree")});
    const QString root = captured(above, "Root window id: (0x[0-9a-f]+)");
    for (const char* screen : {"0", "1"}) {
        const QString name = m_display.name() + QLatin1Char('.') + QLatin1String(screen);
        const QString rootInfo =
            m_display.windowInfo({QStringLiteral("-display"), name, QStringLiteral("-root")});
        if (!root.isEmpty() && captured(rootInfo, "Window id: (0x[0-9a-f]+)") == root)
            found.screen = QString::fromLatin1(screen);
    }
    return found;
}

void tst_zoNodeShowX::checkPlace(const zoWallWindow& window, const QRect& geometry, const QString& screen)
{
    zoNodeShow show(setupOf({window}));
    QCOMPARE(show.open(), QStringList());
    QWindow* const shown = onlyWindow();
    QVERIFY(shown != nullptr);
    QTRY_VERIFY(shown->isExposed());

    const Found found = find(*shown);

    QCOMPARE(found.geometry, geometry);
    QCOMPARE(found.screen, screen);
    QCOMPARE(shown->devicePixelRatio(), 1.0);
}

void tst_zoNodeShowX::windowsLieWhereTheyBelong_data()
{
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<int>("screen");
    QTest::addColumn<bool>("fullScreen");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<QString>("found");

    const QRect plain(100, 50, 300, 200);
    const QRect outside(-20, -10, 900, 700);
    QTest::newRow("plain") << plain << 0 << false << plain << "0";
    QTest::newRow("larger-than-the-screen") << outside << 0 << false << outside << "0";
    QTest::newRow("full") << plain << 0 << true << QRect(0, 0, 800, 600) << "0";
    QTest::newRow("second-screen") << plain << 1 << false << plain << "1";
    QTest::newRow("second-screen-full") << plain << 1 << true << QRect(0, 0, 640, 480) << "1";
    QTest::newRow("primary") << plain << -1 << true << QRect(0, 0, 800, 600) << "0";
    QTest::newRow("desktop") << plain << -2 << true << QRect(0, 0, 800, 600) << "0";
}

void tst_zoNodeShowX::windowsLieWhereTheyBelong()
{
    QFETCH(QRect, wanted);
    QFETCH(int, screen);
    QFETCH(bool, fullScreen);
    QFETCH(QRect, geometry);
    QFETCH(QString, found);

    checkPlace(windowAt(wanted, screen, fullScreen), geometry, found);
}

// The toolkit lists the screen of DISPLAY first.
void tst_zoNodeShowX::screensCountTheSameFromTheSecondOne()
{
    QProcess self;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display.name() + QStringLiteral(".1"));
    environment.insert(QStringLiteral("ZO_TEST_DISPLAY"), m_display.name());
    self.setProcessEnvironment(environment);
    self.setProcessChannelMode(QProcess::MergedChannels);
    QStringList rows;
    for (const char* row : {"plain", "full", "second-screen", "second-screen-full"})
        rows << QStringLiteral("windowsLieWhereTheyBelong:") + QString::fromLatin1(row);

    self.start(QCoreApplication::applicationFilePath(), rows);

    QVERIFY(self.waitForFinished(100000));
    const QByteArray output = self.readAll();
    QVERIFY2(self.exitCode() == 0 && output.contains("6 passed"), output.constData());
}

void tst_zoNodeShowX::windowManagerMovesNothing_data()
{
    QTest::addColumn<bool>("fullScreen");
    QTest::addColumn<QRect>("geometry");

    QTest::newRow("plain") << false << QRect(100, 50, 300, 200);
    QTest::newRow("full") << true << QRect(0, 0, 800, 600);
}

void tst_zoNodeShowX::windowManagerMovesNothing()
{
    QFETCH(bool, fullScreen);
    QFETCH(QRect, geometry);
    if (!m_display.startWindowManager())
        QSKIP(qPrintable(m_display.reason()));

    checkPlace(windowAt({100, 50, 300, 200}, 0, fullScreen), geometry, QStringLiteral("0"));

    m_display.stopWindowManager();
}

void tst_zoNodeShowX::missingScreenFailsByName()
{
    zoNodeShow show(setupOf({windowAt({0, 0, 100, 100}, 0, false), windowAt({0, 0, 100, 100}, 2, true)}));

    QCOMPARE(show.open(), QStringList{QStringLiteral("window n1-1: screen 3 is missing, the machine has 2")});

    QVERIFY(!show.isOpen());
    QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
}

void tst_zoNodeShowX::rehearsalStandsInItsPlaces()
{
    zoNodeShow show(setupOf({windowAt({0, 0, 1920, 1080}, 7, true)}));
    show.setDesktopPlaces({QRect(40, 60, 480, 270)});
    QCOMPARE(show.open(), QStringList());
    QTRY_VERIFY(onlyWindow() != nullptr && onlyWindow()->isExposed());

    QCOMPARE(find(*onlyWindow()).geometry, QRect(40, 60, 480, 270));
    QCOMPARE(show.picture(0).size(), QSize(1920, 1080));
}

void tst_zoNodeShowX::pictureIsOnTheScreen_data()
{
    QTest::addColumn<bool>("isGL");

    QTest::newRow("raster") << false;
    QTest::newRow("gl") << true;
}

void tst_zoNodeShowX::pictureIsOnTheScreen()
{
    QFETCH(bool, isGL);
    if (isGL && !zoGLProbe::machine().isAvailable)
        QSKIP(qPrintable(zoGLProbe::machine().renderer));
    zoNodeShow show(setupOf({windowAt({10, 20, 400, 300}, 0, false)}));
    show.setDrawing(isGL ? zoNodeShow::Drawing::GL : zoNodeShow::Drawing::Raster);
    QCOMPARE(show.open(), QStringList());
    QTRY_VERIFY(onlyWindow() != nullptr && onlyWindow()->isExposed());
    show.setContent(zoShowContent::Tiles);

    show.draw();
    show.finish();
    show.swap();

    const QImage expected = show.picture(0);
    QScreen* const screen = onlyWindow()->screen();
    const auto grab = [screen] {
        return screen->grabWindow(0, 10, 20, 400, 300).toImage().convertToFormat(QImage::Format_RGB32);
    };
    QTRY_VERIFY2(difference(grab(), expected) < 0.001,
                 qPrintable(QString::number(difference(grab(), expected))));
    QVERIFY(expected.pixel(0, 0) == qRgb(255, 255, 255));
}

void tst_zoNodeShowX::uncoveredWindowShowsItsFrameAgain_data()
{
    pictureIsOnTheScreen_data();
}

void tst_zoNodeShowX::uncoveredWindowShowsItsFrameAgain()
{
    QFETCH(bool, isGL);
    if (isGL && !zoGLProbe::machine().isAvailable)
        QSKIP(qPrintable(zoGLProbe::machine().renderer));
    zoNodeShow show(setupOf({windowAt({10, 20, 400, 300}, 0, false)}));
    show.setDrawing(isGL ? zoNodeShow::Drawing::GL : zoNodeShow::Drawing::Raster);
    QCOMPARE(show.open(), QStringList());
    QWindow* const shown = onlyWindow();
    QTRY_VERIFY(shown != nullptr && shown->isExposed());
    show.setContent(zoShowContent::Tiles);
    show.draw();
    show.finish();
    show.swap();
    const QImage expected = show.picture(0);
    QScreen* const screen = shown->screen();
    const auto grab = [screen] {
        return screen->grabWindow(0, 10, 20, 400, 300).toImage().convertToFormat(QImage::Format_RGB32);
    };
    QTRY_VERIFY(difference(grab(), expected) < 0.001);
    // The next frame is not drawn yet.
    show.setContent(zoShowContent::TestImage);
    {
        QRasterWindow cover;
        cover.setFlags(Qt::Window | Qt::BypassWindowManagerHint);
        cover.setGeometry(0, 0, 500, 400);
        cover.show();
        QTRY_VERIFY(cover.isExposed());
        QTRY_VERIFY(difference(grab(), expected) > 0.5);
    }

    QTRY_VERIFY(difference(grab(), expected) < 0.001);
}

void tst_zoNodeShowX::otherSizeIsToldAndAsksForAFrame()
{
    zoNodeShow show(setupOf({windowAt({0, 0, 300, 200}, 0, true)}));
    QCOMPARE(show.open(), QStringList());
    QTRY_VERIFY(onlyWindow() != nullptr && onlyWindow()->isExposed());

    QCOMPARE(show.remarks().at(1).text,
             QStringLiteral(
                 "window n1-1: the screen has 800 \u00d7 600 pixels, the configuration 300 \u00d7 200"));
    QCOMPARE(show.picture(0).size(), QSize(800, 600));

    QSignalSpy asked(&show, &zoNodeShow::needsFrame);
    onlyWindow()->resize(640, 480);
    QTRY_VERIFY(!asked.isEmpty());
}

void tst_zoNodeShowX::closingIsIgnored()
{
    zoNodeShow show(setupOf({windowAt({10, 20, 100, 100}, 0, false)}));
    QCOMPARE(show.open(), QStringList());
    QTRY_VERIFY(onlyWindow() != nullptr && onlyWindow()->isExposed());

    QVERIFY(!onlyWindow()->close());

    QVERIFY(onlyWindow()->isVisible());
}

void tst_zoNodeShowX::glDrawsWhatRasterDraws_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<bool>("blends");
    QTest::addColumn<bool>("flips");
    QTest::addColumn<bool>("tiles");

    for (const char* eye : {"mono", "left", "right", "stereo", "horizontalinterlaced", "verticalinterlaced",
                            "splitleftright", "splitbottomtop", "redcyan", "blueyellow", "greenmagenta"})
        QTest::newRow(eye) << QString::fromLatin1(eye) << false << false << false;
    QTest::newRow("blended") << "mono" << true << false << false;
    QTest::newRow("flipped-and-blended") << "right" << true << true << false;
    QTest::newRow("interlaced-flipped-blended") << "horizontalinterlaced" << true << true << false;
    QTest::newRow("tiles") << "mono" << true << false << true;
}

void tst_zoNodeShowX::glDrawsWhatRasterDraws()
{
    QFETCH(QString, eye);
    QFETCH(bool, blends);
    QFETCH(bool, flips);
    QFETCH(bool, tiles);
    if (!zoGLProbe::machine().isAvailable)
        QSKIP(qPrintable(zoGLProbe::machine().renderer));
    // An odd place: interlaced pictures go by the screen.
    zoWallWindow window = windowAt({31, 17, 601, 401}, 0, false);
    zoWallViewport& viewport = window.viewports[0];
    viewport.eye = eye;
    viewport.area = QRectF(0.1, 0.05, 0.85, 0.9);
    viewport.rightEyeOffset = {3, -2};
    if (blends)
        viewport.edges = {60.0, 30.0, 20.0, 40.0};
    viewport.flipX = flips;
    viewport.flipY = flips;
    QImage pictures[2];
    for (const bool isGL : {false, true}) {
        zoNodeShow show(setupOf({window}));
        show.setDrawing(isGL ? zoNodeShow::Drawing::GL : zoNodeShow::Drawing::Raster);
        show.setContent(tiles ? zoShowContent::Tiles : zoShowContent::TestImage);
        QCOMPARE(show.open(), QStringList());
        QTRY_VERIFY(onlyWindow() != nullptr && onlyWindow()->isExposed());
        pictures[isGL ? 1 : 0] = show.picture(0);
    }

    QCOMPARE(pictures[1].size(), QSize(601, 401));
    const double share = difference(pictures[0], pictures[1]);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    zoWallPictures::keep(pictures[0], name + QStringLiteral("-raster"));
    zoWallPictures::keep(pictures[1], name + QStringLiteral("-gl"));
    QVERIFY2(share <= 0.02, qPrintable(QString::number(share)));
    // The comparison can fail.
    QVERIFY(difference(pictures[0], pictures[1].mirrored(true, false)) > 0.02);
}

void tst_zoNodeShowX::quadBufferThatIsMissingIsTold()
{
    zoWallWindow window = windowAt({0, 0, 100, 100}, 0, false);
    window.viewports[0].eye = QStringLiteral("stereo");
    if (!zoGLProbe::machine().isAvailable || zoGLProbe::machine().hasQuadBuffer)
        QSKIP("needs GL without a quad buffer");
    for (const zoNodeShow::Drawing drawing : {zoNodeShow::Drawing::Automatic, zoNodeShow::Drawing::GL}) {
        zoNodeShow show(setupOf({window}));
        show.setDrawing(drawing);

        QCOMPARE(show.open(), QStringList());

        QCOMPARE(show.remarks().at(1).text,
                 QStringLiteral("window n1-1: no quad buffer here, both eyes see one picture"));
    }
}

void tst_zoNodeShowX::hardwareSyncThatIsMissingIsTold()
{
    if (zoGLProbe::machine().hasSwapGroup)
        QSKIP("has a swap group");
    zoWallWindow window = windowAt({0, 0, 100, 100}, 0, false);
    window.hardwareSync = true;
    zoNodeShow show(setupOf({window}));
    QCOMPARE(show.open(), QStringList());

    QCOMPARE(
        show.remarks().at(1).text,
        QStringLiteral("window n1-1: no hardware sync here, it is swapped together with the others without"));
}

void tst_zoNodeShowX::softwareIsNoReasonForGL()
{
    if (zoGLProbe::machine().isHardware)
        QSKIP("GL is hardware here");
    zoNodeShow show(setupOf({windowAt({0, 0, 100, 80}, 0, false)}));

    QCOMPARE(show.open(), QStringList());

    QCOMPARE(show.remarks().at(0).text, QStringLiteral("window n1-1: 100 \u00d7 80 pixels, raster"));
}

int main(int argc, char** argv)
{
    const QString given = qEnvironmentVariable("ZO_TEST_DISPLAY");
    zoVirtualDisplay display = given.isEmpty()
                                   ? zoVirtualDisplay({QStringLiteral("800x600"), QStringLiteral("640x480")})
                                   : zoVirtualDisplay(given);
    if (!display.isRunning()) {
        std::fprintf(stderr, "SKIPPED: %s\n", qPrintable(display.reason()));
        return 77;
    }
    if (given.isEmpty())
        qputenv("DISPLAY", display.name().toLatin1());
    qputenv("QT_SCALE_FACTOR", "2"); // as on a desk with a fine screen; walls count real pixels
    qunsetenv("WAYLAND_DISPLAY");
    zoNodeShow::prepareApplication();
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    tst_zoNodeShowX test(display);
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoNodeShowX.moc"
