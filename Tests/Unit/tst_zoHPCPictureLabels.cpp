#include "zoHPCSetup.h"
#include "zoTestCase.h"
#include "zoTextRecorder.h"

#include <zoHPCRoomPicture.h>
#include <zoHPCScreensPicture.h>

#include <QApplication>
#include <QPalette>

#include <utility>

namespace
{
constexpr double Smallest = 7.0; // pt

// What is wrong with the texts of a picture; empty when nothing is.
QString faultOf(const zoHPCPicture& picture, const QSize& size)
{
    const QRectF area(QRect(QPoint(), size));
    zoTextRecorder recorder(size);
    {
        QPainter painter(&recorder);
        picture.paint(painter, area, QPalette(), zoHPCPicture::Detail::Full);
    }
    const std::vector<zoTextRecorder::Text>& texts = recorder.texts();
    for (size_t i = 0; i < texts.size(); ++i) {
        if (texts[i].points < Smallest)
            return QStringLiteral("\"%1\" has letters of %2 pt").arg(texts[i].text).arg(texts[i].points);
        for (size_t j = 0; j < i; ++j) {
            const QRectF inside =
                texts[i].box.adjusted(0.5, 0.5, -0.5, -0.5); // beside is not over each other
            if (texts[j].box.intersects(inside))
                return QStringLiteral("\"%1\" covers \"%2\"").arg(texts[i].text, texts[j].text);
        }
    }
    return {};
}

QStringList textsOf(const zoHPCPicture& picture, const QSize& size)
{
    zoTextRecorder recorder(size);
    {
        QPainter painter(&recorder);
        picture.paint(painter, QRectF(QRect(QPoint(), size)), QPalette(), zoHPCPicture::Detail::Full);
    }
    QStringList all;
    for (const zoTextRecorder::Text& text : recorder.texts())
        all << text.text;
    return all;
}
} // namespace

// Labels of walls from one tile to hundreds: none over another, none too small to be read.
class tst_zoHPCPictureLabels final : public zoTestCase
{
    Q_OBJECT

private slots:
    void labelsAreReadable_data();
    void labelsAreReadable();
    void smallWallNamesItsTilesAndNodes();
    void manyNodesAreNamed();
    void hundredsOfTilesNameTheWallAlone();
    void recorderSeesWhatIsPainted();

private:
    static void fill(zoHPCSetup& setup, const QString& kind, int rows, int columns);
};

void tst_zoHPCPictureLabels::fill(zoHPCSetup& setup, const QString& kind, int rows, int columns)
{
    const QString wall = QStringLiteral("Front wall");
    QStringList shown;
    if (kind == QLatin1String("planes")) {
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                shown << QStringLiteral("Plane %1-%2").arg(row + 1).arg(column + 1);
                const Point3 corner{column * 1010.0 - columns * 505.0, (rows - row) * 600.0 - rows * 300.0,
                                    -3000.0};
                zoHPCPlane{corner, corner + Point3{1000.0, 0.0, 0.0}, corner + Point3{1000.0, 580.0, 0.0}}
                    .toItem(*setup.addProjection(shown.last(), QStringLiteral("plane")));
            }
        }
    } else {
        zoHPCProjectionItem* const item = setup.addProjection(wall, kind);
        item->setInt(zoHPCProjectionItem::Rows, rows);
        item->setInt(zoHPCProjectionItem::Columns, columns);
        item->setDouble(zoHPCProjectionItem::Width, columns * 1000.0);
        item->setDouble(zoHPCProjectionItem::Height, rows * 600.0);
        for (int column : {zoHPCProjectionItem::LeftWall, zoHPCProjectionItem::RightWall,
                           zoHPCProjectionItem::FrontWall, zoHPCProjectionItem::BottomWall})
            item->setBool(column, true);
        item->update();
        for (int i = 0; i < item->childCount(); ++i)
            shown << item->child(i)->text(0);
    }
    int number = 0;
    for (const QString& projection : qAsConst(shown)) {
        const QString node = QStringLiteral("gpu-node-%1").arg(++number, 3, 10, QLatin1Char('0'));
        setup.addNode(node);
        setup.addWindow(node, projection);
    }
    setup.link();
}

void tst_zoHPCPictureLabels::labelsAreReadable_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QSize>("size");

    for (const char* kind : {"powerwall", "wall", "planes", "cave"}) {
        for (const QSize& grid : {QSize(1, 1), QSize(2, 2), QSize(6, 4), QSize(25, 20)}) {
            for (const QSize& size : {QSize(300, 200), QSize(560, 380), QSize(1200, 900)})
                QTest::newRow(qPrintable(QStringLiteral("%1-%2x%3-on-%4x%5")
                                             .arg(QLatin1String(kind))
                                             .arg(grid.width())
                                             .arg(grid.height())
                                             .arg(size.width())
                                             .arg(size.height())))
                    << QString::fromLatin1(kind) << grid.height() << grid.width() << size;
        }
    }
}

void tst_zoHPCPictureLabels::labelsAreReadable()
{
    QFETCH(QString, kind);
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(QSize, size);
    zoHPCSetup setup;
    fill(setup, kind, rows, columns);
    const zoHPCLayout layout = setup.layout();
    const QRectF area(QRect(QPoint(), size));

    zoHPCRoomPicture room;
    room.setLayout(layout);
    room.setHasFrames(true);
    for (const bool hasDimensions : {false, true}) {
        room.setHasDimensions(hasDimensions);
        for (const auto& [yaw, pitch] : {std::pair(28.0, 18.0), {0.0, 0.0}, {0.0, 90.0}, {70.0, 18.0}}) {
            zoHPCRoomCamera camera;
            camera.yaw = yaw;
            camera.pitch = pitch;
            camera.isParallel = yaw == 0.0; // elevation and plan
            room.setCamera(camera);
            room.fit(area);
            const QString fault = faultOf(room, size);
            QVERIFY2(fault.isEmpty(),
                     qPrintable(QStringLiteral("room from %1, %2: %3").arg(yaw).arg(pitch).arg(fault)));
        }
    }

    zoHPCScreensPicture screens;
    screens.setLayout(layout);
    screens.fit(area);
    for (int step = 0; step < 4; ++step) {
        const QString fault = faultOf(screens, size);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("screens, step %1: %2").arg(step).arg(fault)));
        screens.zoom(1.7, area.center());
    }
}

void tst_zoHPCPictureLabels::smallWallNamesItsTilesAndNodes()
{
    zoHPCSetup setup;
    fill(setup, QStringLiteral("powerwall"), 2, 2);
    zoHPCRoomPicture room;
    room.setLayout(setup.layout());
    room.fit(QRectF(0, 0, 560, 380));

    const QStringList texts = textsOf(room, QSize(560, 380));

    QVERIFY(texts.contains(QStringLiteral("Front wall")));
    for (const char* text : {"r1 c1", "r2 c2", "gpu-node-001", "gpu-node-004"})
        QVERIFY2(texts.contains(QLatin1String(text)), text);
}

void tst_zoHPCPictureLabels::manyNodesAreNamed()
{
    zoHPCSetup setup;
    fill(setup, QStringLiteral("powerwall"), 4, 6);
    zoHPCScreensPicture screens;
    screens.setLayout(setup.layout());
    screens.fit(QRectF(0, 0, 560, 380));

    const QStringList texts = textsOf(screens, QSize(560, 380));

    int named = 0;
    for (const QString& text : texts)
        named += text.startsWith(QLatin1String("gpu-n")) ? 1 : 0;
    QCOMPARE(named, 24);
}

void tst_zoHPCPictureLabels::hundredsOfTilesNameTheWallAlone()
{
    zoHPCSetup setup;
    fill(setup, QStringLiteral("powerwall"), 20, 25);
    zoHPCRoomPicture room;
    room.setLayout(setup.layout());
    room.fit(QRectF(0, 0, 560, 380));

    const QStringList texts = textsOf(room, QSize(560, 380));

    QVERIFY(texts.contains(QStringLiteral("Front wall")));
    QVERIFY(!texts.contains(QStringLiteral("r1 c1")));
}

// Otherwise the others would find no fault in anything.
void tst_zoHPCPictureLabels::recorderSeesWhatIsPainted()
{
    zoTextRecorder recorder(QSize(100, 100));
    QPainter painter(&recorder);
    QFont font;
    font.setPixelSize(16);
    painter.setFont(font);
    painter.drawText(QRectF(10, 20, 80, 40), Qt::AlignCenter, QStringLiteral("Text"));
    painter.end();

    QCOMPARE(recorder.texts().size(), size_t(1));
    QCOMPARE(recorder.texts().front().text, QStringLiteral("Text"));
    QCOMPARE(recorder.texts().front().points, 12.0);
    QVERIFY(QRectF(10, 20, 80, 40).contains(recorder.texts().front().box));
}

ZO_TEST_MAIN(tst_zoHPCPictureLabels)
#include "tst_zoHPCPictureLabels.moc"
