#include "zoTestCase.h"
#include "zoVirtualDisplay.h"
#include "zoWallPictures.h"

#include <zoCheckScene.h>
#include <zoOffAxisView.h>
#include <zoParaViewPicture.h>
#include <zoRoomMath.h>
#include <zoTestScene.h>

#include <QApplication>
#include <QDomDocument>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <cmath>
#include <memory>

// The real pvserver draws exported walls on an X server of the test's own, and the check picture comes where our own
// pictures put it.
class tst_zoParaViewWall final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ballsAreWhereNodeServersShowThem_data();
    void ballsAreWhereNodeServersShowThem();
    void floorLinesCrossACornerOfACave();
    void tilesFillTheirWindows_data();
    void tilesFillTheirWindows();
    void clientThatWantsInEndsThePicture();
    void wrongConnectIdIsRefused();

private:
    class Wall;
};

namespace
{
constexpr int s_startMs = 300000; // the machine may be busy
constexpr quint32 s_secret = 1234567890;
const QSize s_tile(600, 480);
const QSize s_screen(1220, 980);

// Four tiles beside each other on one screen, each with a rank of its own.
QString placed(QString document)
{
    int window = 0;
    for (int at = document.indexOf(QLatin1String("<window ")); at >= 0;
         at = document.indexOf(QLatin1String("<window "), at + 1)) {
        const int end = document.indexOf(QLatin1Char('>'), at);
        const QString node = document.mid(at, end - at).section(QLatin1Char('"'), 1, 1);
        document.replace(at, end - at,
                         QStringLiteral("<window node=\"%1\" screen=\"0\" x=\"%2\" y=\"%3\" width=\"%4\" "
                                        "height=\"%5\" fullscreen=\"false\"")
                             .arg(node)
                             .arg(window % 2 * (s_tile.width() + 10))
                             .arg(window / 2 * (s_tile.height() + 10))
                             .arg(s_tile.width())
                             .arg(s_tile.height()));
        ++window;
    }
    return document;
}

QByteArray zohpc(const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(QStringLiteral(ZO_ZOHPC), arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(60000);
    return process.readAllStandardOutput();
}

QString documentOf(const QString& name)
{
    if (name == QLatin1String("cave"))
        return placed(QString::fromUtf8(
            zohpc({QStringLiteral("new"), QStringLiteral("--cave"), QStringLiteral("3000x2400x3000"),
                   QStringLiteral("--tile"), QStringLiteral("600x480"), QStringLiteral("--walls"),
                   QStringLiteral("left,right,bottom,front"), QStringLiteral("--hosts"),
                   QStringLiteral("c1 - c4")})));
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"));
    return file.open(QIODevice::ReadOnly) ? placed(QString::fromUtf8(file.readAll())) : QString();
}

// Of the pixels around a ball those in its hue: where its silhouette begins and ends.
QRect silhouette(const QImage& image, const QRect& around, const QColor& colour)
{
    QRect result;
    for (int y = around.top(); y <= around.bottom(); ++y) {
        for (int x = around.left(); x <= around.right(); ++x) {
            const QColor pixel(image.pixel(x, y));
            const int turn = std::abs(pixel.hue() - colour.hue());
            if (pixel.saturation() > 110 && std::min(turn, 360 - turn) < 12)
                result |= QRect(x, y, 1, 1);
        }
    }
    return result;
}

// Hues that neither the sky nor lines have.
bool isTold(const QColor& colour)
{
    for (const int taken : {209, 50, 348}) { // sky, edges, horizon
        const int turn = std::abs(colour.hue() - taken);
        if (std::min(turn, 360 - turn) < 30)
            return false;
    }
    return true;
}

// Where a line of the floor is seen beside the corner at the left edge of a picture.
struct FloorLine
{
    int columns = 0;     // in which it is seen: a line may be thinner than a pixel
    double offset = 0.0; // from where it should be, pixels downwards, on average
};

FloorLine floorLine(const QImage& image, const zoWallPlane& plane, double line)
{
    // Nearer to the corner the line across it is too near.
    constexpr int First = 15;
    constexpr int Columns = 40;
    constexpr int Around = 4;
    constexpr int Bright = 520; // lines have 608 and 717, the floor 450 at most
    const double millimetres = (plane.lowerRight.x - plane.lowerLeft.x) / s_tile.width(); // of a pixel
    FloorLine result;
    double sum = 0.0;
    for (int column = First; column < First + Columns; ++column) {
        const double across = -plane.lowerLeft.x - (column + 0.5) * millimetres;
        const double expected = (plane.upperRight.y - plane.lowerLeft.y * across / line) / millimetres;
        double rows = 0.0;
        int bright = 0;
        for (int y = int(expected) - Around; y <= int(expected) + Around; ++y) {
            const QRgb pixel = image.pixel(column, y);
            if (qRed(pixel) + qGreen(pixel) + qBlue(pixel) > Bright) {
                rows += y + 0.5;
                ++bright;
            }
        }
        if (bright == 0)
            continue;
        ++result.columns;
        sum += rows / bright - expected;
    }
    result.offset = sum / std::max(result.columns, 1);
    return result;
}
} // namespace

// A job of pvserver on a display, from the file that zohpc exports.
class tst_zoParaViewWall::Wall final
{
public:
    explicit Wall(const QString& name)
        : m_display(QStringList{QStringLiteral("%1x%2").arg(s_screen.width()).arg(s_screen.height())})
        , m_document(documentOf(name))
        , m_setup(zoWallPictures::read(m_document))
        , m_scene(m_setup.walls, m_setup.head)
    {
    }

    ~Wall()
    {
        m_server.terminate();
        if (!m_server.waitForFinished(10000))
            m_server.kill();
        m_server.waitForFinished(10000);
    }

    // Returns why not; empty when it accepts clients.
    QString start()
    {
        if (!m_display.isRunning())
            return m_display.reason();
        const QString pvx = m_folder.filePath(QStringLiteral("wall.pvx"));
        zohpc({QStringLiteral("export"), QStringLiteral("--paraview"), pvx}, m_document.toUtf8());
        QFile file(pvx);
        QDomDocument exported;
        if (!file.open(QIODevice::ReadOnly) || !exported.setContent(&file))
            return QStringLiteral("no export");
        const int ranks = exported.elementsByTagName(QStringLiteral("Machine")).count();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), m_display.name());
        environment.insert(QStringLiteral("LIBGL_ALWAYS_SOFTWARE"), QStringLiteral("1"));
        environment.insert(QStringLiteral("OMPI_ALLOW_RUN_AS_ROOT"), QStringLiteral("1"));
        environment.insert(QStringLiteral("OMPI_ALLOW_RUN_AS_ROOT_CONFIRM"), QStringLiteral("1"));
        m_server.setProcessEnvironment(environment);
        m_server.setProcessChannelMode(QProcess::MergedChannels);
        for (int i = 0; i < 8; ++i) {
            m_port = 21000 + int((QCoreApplication::applicationPid() + 977 * i) % 20000);
            m_server.start(
                QStringLiteral("mpirun"),
                {QStringLiteral("--oversubscribe"), QStringLiteral("--bind-to"), QStringLiteral("none"),
                 QStringLiteral("--mca"), QStringLiteral("mpi_yield_when_idle"), QStringLiteral("1"),
                 QStringLiteral("--mca"), QStringLiteral("orte_tmpdir_base"), m_folder.path(),
                 QStringLiteral("--mca"), QStringLiteral("btl_vader_backing_directory"), m_folder.path(),
                 QStringLiteral("-np"), QString::number(ranks), QStringLiteral("pvserver"),
                 QStringLiteral("--pvx"), pvx, QStringLiteral("--server-port=%1").arg(m_port),
                 QStringLiteral("--connect-id=%1").arg(s_secret)});
            QByteArray said;
            while (!said.contains("Accepting connection") && m_server.waitForReadyRead(s_startMs))
                said += m_server.readAll();
            if (said.contains("Accepting connection"))
                return {};
            m_server.waitForFinished(10000);
            if (!said.contains("Failed to set up server socket"))
                return QString::fromLocal8Bit(said);
        }
        return QStringLiteral("no free port");
    }

    QUrl url() const { return QUrl(QStringLiteral("cs://localhost:%1").arg(m_port)); }
    int port() const { return m_port; }
    const zoVirtualDisplay& display() const { return m_display; }
    const zoWallSetup& setup() const { return m_setup; }
    const zoTestScene& scene() const { return m_scene; }
    QByteArray sceneText(zoShowContent content) const { return zoCheckScene::of(m_setup, content); }

    QImage grab(const QString& name)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), m_display.name());
        process.setProcessEnvironment(environment);
        const QString file = m_folder.filePath(QStringLiteral("screen.png"));
        process.start(QStringLiteral(ZO_SCREEN_GRAB), {file});
        process.waitForFinished(60000);
        const QImage image = QImage(file).convertToFormat(QImage::Format_RGB32);
        zoWallPictures::keep(image, name);
        return image;
    }

    // Our own picture of a viewport, with another position of the head.
    QImage ownPicture(const zoWallViewport& viewport, const zoWallPoint& head) const
    {
        QImage image(s_tile, QImage::Format_RGB32);
        QPainter painter(&image);
        m_scene.paint(painter, QRectF(image.rect()), zoOffAxisView(viewport.plane, head));
        return image;
    }

private:
    zoVirtualDisplay m_display;
    QTemporaryDir m_folder;
    QString m_document;
    zoWallSetup m_setup;
    zoTestScene m_scene;
    QProcess m_server;
    int m_port = 0;
};

void tst_zoParaViewWall::initTestCase()
{
    zoTestCase::initTestCase();
    for (const char* program : {"pvserver", "pvpython", "mpirun", "Xvfb"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            QSKIP(qPrintable(QStringLiteral("%1 is not installed").arg(QLatin1String(program))));
    }
    qputenv("ZO_PARAVIEW_DATA", ZO_DATA_DIR "/paraview");
}

void tst_zoParaViewWall::ballsAreWhereNodeServersShowThem_data()
{
    QTest::addColumn<QString>("wall");
    QTest::addColumn<QList<double>>("head");
    QTest::addColumn<int>("least"); // balls that are told in all windows together

    QTest::newRow("wall-with-overlap") << QStringLiteral("wall") << QList<double>{} << 8;
    QTest::newRow("cave") << QStringLiteral("cave") << QList<double>{} << 25;
    QTest::newRow("head-to-the-right") << QStringLiteral("wall") << QList<double>{500.0, 0.0, 0.0} << 8;
    QTest::newRow("head-up-and-back-in-a-cave")
        << QStringLiteral("cave") << QList<double>{-200.0, 150.0, 300.0} << 20;
}

void tst_zoParaViewWall::ballsAreWhereNodeServersShowThem()
{
    QFETCH(QString, wall);
    QFETCH(QList<double>, head);
    QFETCH(int, least);
    Wall job(wall);
    const QString problem = job.start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    zoParaViewPicture picture;
    picture.setDisplay(job.display().name());
    picture.setLimit(s_startMs);
    zoWallPoint eye;
    if (!head.isEmpty()) {
        eye = {head[0], head[1], head[2]};
        qputenv("SHIFTED_HEAD", QStringLiteral("%1 %2 %3").arg(head[0]).arg(head[1]).arg(head[2]).toLatin1());
        picture.setScript(QStringLiteral(ZO_SHIFTED_PICTURE));
    }
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);
    picture.show(zoParaViewPicture::Content::TestImage, job.url(), s_secret,
                 job.sceneText(zoShowContent::TestImage));
    QTRY_VERIFY_WITH_TIMEOUT(shown.count() + failed.count() > 0, s_startMs + 10000);
    QVERIFY2(failed.isEmpty(), failed.isEmpty() ? "" : qPrintable(failed.first().first().toString()));

    const QImage screen = job.grab(QStringLiteral("paraview-") + QLatin1String(QTest::currentDataTag()));
    int told = 0;
    for (const zoWallNode& node : job.setup().nodes) {
        const zoWallViewport& viewport = node.windows[0].viewports[0];
        const QImage found = screen.copy(node.windows[0].geometry);
        const QImage expected = job.ownPicture(viewport, eye);
        const zoOffAxisView view(viewport.plane, eye);
        for (const zoTestScene::Ball& ball : job.scene().balls()) {
            if (!isTold(ball.colour) || view.depth(ball.middle) < view.distance())
                continue;
            const QPointF at = view.project(ball.middle);
            const QPoint middle(int(at.x() * s_tile.width()), int((1.0 - at.y()) * s_tile.height()));
            const double pixels = ball.radius * view.distance() / view.depth(ball.middle) * s_tile.width() /
                                  zoRoomMath::length(zoRoomMath::difference(viewport.plane.lowerRight,
                                                                            viewport.plane.lowerLeft));
            const int reach = int(1.5 * pixels) + 4;
            const QRect around(middle - QPoint(reach, reach), middle + QPoint(reach, reach));
            if (!QRect({0, 0}, s_tile).adjusted(6, 6, -6, -6).contains(around))
                continue;
            const QRect wanted = silhouette(expected, around, ball.colour);
            // Another one before it, or one of its colour beside it.
            if (wanted.width() < 1.7 * pixels || !around.adjusted(2, 2, -2, -2).contains(wanted))
                continue;
            const QRect is = silhouette(found, around, ball.colour);
            const QString text = QStringLiteral("ball %1 of %2: at %3 %4 to %5 %6 instead of %7 %8 to %9 %10")
                                     .arg(ball.number, node.id)
                                     .arg(is.left())
                                     .arg(is.top())
                                     .arg(is.right())
                                     .arg(is.bottom())
                                     .arg(wanted.left())
                                     .arg(wanted.top())
                                     .arg(wanted.right())
                                     .arg(wanted.bottom());
            const bool isNear =
                std::abs(is.left() - wanted.left()) <= 2 && std::abs(is.right() - wanted.right()) <= 2 &&
                std::abs(is.top() - wanted.top()) <= 2 && std::abs(is.bottom() - wanted.bottom()) <= 2;
            QVERIFY2(isNear, qPrintable(text));
            ++told;
        }
    }
    qInfo("%d balls", told);
    QVERIFY2(told >= least, qPrintable(QString::number(told)));
}

// Lines of the floor at x = -line and z = -line cross behind the corner at x = -1500, z = -1500. Beside it the first is
// seen on the front wall and the second on the left one, at heights that meet at the corner.
void tst_zoParaViewWall::floorLinesCrossACornerOfACave()
{
    Wall job(QStringLiteral("cave"));
    const QString problem = job.start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    zoParaViewPicture picture;
    picture.setDisplay(job.display().name());
    picture.setLimit(s_startMs);
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);
    picture.show(zoParaViewPicture::Content::TestImage, job.url(), s_secret,
                 job.sceneText(zoShowContent::TestImage));
    QTRY_VERIFY_WITH_TIMEOUT(shown.count() + failed.count() > 0, s_startMs + 10000);
    QVERIFY2(failed.isEmpty(), failed.isEmpty() ? "" : qPrintable(failed.first().first().toString()));

    const QImage screen = job.grab(QStringLiteral("paraview-corner"));
    const zoWallWindow* front = nullptr;
    const zoWallWindow* left = nullptr;
    for (const zoWallNode& node : job.setup().nodes) {
        const zoWallPlane& plane = node.windows[0].viewports[0].plane;
        if (plane.lowerLeft.z == plane.lowerRight.z && plane.lowerLeft.z == plane.upperRight.z)
            front = &node.windows[0];
        else if (plane.lowerLeft.x < 0.0 && plane.lowerLeft.x == plane.lowerRight.x)
            left = &node.windows[0];
    }
    QVERIFY(front != nullptr && left != nullptr);
    const zoWallPlane& plane = front->viewports[0].plane;
    const QImage onFront = screen.copy(front->geometry);
    const QImage onLeft = screen.copy(left->geometry).mirrored(true, false);
    for (const double line : {2000.0, 2500.0, 3000.0}) {
        const FloorLine atFront = floorLine(onFront, plane, line);
        const FloorLine atLeft = floorLine(onLeft, plane, line);
        const QString text = QStringLiteral("line %1: %2 and %3 pixels from its place, in %4 and %5 columns")
                                 .arg(line)
                                 .arg(atFront.offset)
                                 .arg(atLeft.offset)
                                 .arg(atFront.columns)
                                 .arg(atLeft.columns);
        qInfo("%s", qPrintable(text));
        QVERIFY2(atFront.columns >= 8 && atLeft.columns >= 8, qPrintable(text));
        QVERIFY2(std::abs(atFront.offset) <= 2.0 && std::abs(atLeft.offset) <= 2.0, qPrintable(text));
        QVERIFY2(std::abs(atFront.offset - atLeft.offset) <= 2.0, qPrintable(text));
    }
}

void tst_zoParaViewWall::tilesFillTheirWindows_data()
{
    QTest::addColumn<QString>("wall");
    QTest::newRow("wall-with-overlap") << QStringLiteral("wall");
    QTest::newRow("cave") << QStringLiteral("cave");
}

void tst_zoParaViewWall::tilesFillTheirWindows()
{
    QFETCH(QString, wall);
    Wall job(wall);
    const QString problem = job.start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    zoParaViewPicture picture;
    picture.setDisplay(job.display().name());
    picture.setLimit(s_startMs);
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);
    const QByteArray scene = job.sceneText(zoShowContent::Tiles);
    picture.show(zoParaViewPicture::Content::Tiles, job.url(), s_secret, scene);
    QTRY_VERIFY_WITH_TIMEOUT(shown.count() + failed.count() > 0, s_startMs + 10000);
    QVERIFY2(failed.isEmpty(), failed.isEmpty() ? "" : qPrintable(failed.first().first().toString()));

    const QImage screen = job.grab(QStringLiteral("paraview-tiles-") + wall);
    const QJsonArray tiles = QJsonDocument::fromJson(scene).object().value(QLatin1String("tiles")).toArray();
    QCOMPARE(tiles.size(), 4);
    for (const QJsonValue tile : tiles) {
        const QString id = tile[QLatin1String("node")].toString();
        const QImage expected =
            QImage::fromData(QByteArray::fromBase64(tile[QLatin1String("picture")].toString().toLatin1()))
                .convertToFormat(QImage::Format_RGB32);
        const QImage found = screen.copy(job.setup().node(id)->windows[0].geometry);
        QCOMPARE(found.size(), expected.size());
        int others = 0;
        for (int y = 0; y < found.height(); ++y) {
            for (int x = 0; x < found.width(); ++x) {
                const QRgb a = found.pixel(x, y);
                const QRgb b = expected.pixel(x, y);
                others += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                                      std::abs(qBlue(a) - qBlue(b)) >
                                  24
                              ? 1
                              : 0;
            }
        }
        // Pixel by pixel, with its border of one pixel.
        QVERIFY2(others < 300, qPrintable(QStringLiteral("%1: %2 pixels differ").arg(id).arg(others)));
    }
}

void tst_zoParaViewWall::clientThatWantsInEndsThePicture()
{
    Wall job(QStringLiteral("wall"));
    const QString problem = job.start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    zoParaViewPicture picture;
    picture.setDisplay(job.display().name());
    picture.setLimit(s_startMs);
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy ended(&picture, &zoParaViewPicture::ended);
    picture.show(zoParaViewPicture::Content::Tiles, job.url(), s_secret, job.sceneText(zoShowContent::Tiles));
    QVERIFY(shown.wait(s_startMs + 10000));
    QVERIFY(!ended.wait(2000)); // stays as long as nobody comes

    QTcpSocket client;
    client.connectToHost(QStringLiteral("127.0.0.1"), quint16(job.port()));

    QVERIFY(ended.wait(60000));
    QVERIFY(client.state() != QAbstractSocket::ConnectedState);
}

void tst_zoParaViewWall::wrongConnectIdIsRefused()
{
    Wall job(QStringLiteral("wall"));
    const QString problem = job.start();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    zoParaViewPicture picture;
    picture.setDisplay(job.display().name());
    picture.setLimit(s_startMs);
    QSignalSpy shown(&picture, &zoParaViewPicture::shown);
    QSignalSpy failed(&picture, &zoParaViewPicture::failed);

    picture.show(zoParaViewPicture::Content::Tiles, job.url(), s_secret + 1,
                 job.sceneText(zoShowContent::Tiles));
    QVERIFY(failed.wait(s_startMs + 10000));

    QCOMPARE(shown.count(), 0);
    QVERIFY2(failed.first().first().toString().contains(QLatin1String("refuses the connect id")),
             qPrintable(failed.first().first().toString()));
}

ZO_TEST_MAIN(tst_zoParaViewWall)
#include "tst_zoParaViewWall.moc"
