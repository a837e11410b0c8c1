#include "zoTestCase.h"
#include "zoWallPictures.h"

#include <zoNodeShow.h>
#include <zoWallPicture.h>

#include <QGuiApplication>

// All windows of a wall in one picture.
class tst_zoWallPicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void samplesAreComplete_data();
    void samplesAreComplete();
};

namespace
{
QImage pictureOf(const zoWallSetup& setup, zoShowContent content)
{
    zoNodeShow show(setup);
    show.setContent(content);
    zoWallPicture wall(setup);
    int index = 0;
    for (const zoWallNode& node : setup.nodes) {
        for (const zoWallWindow& window : node.windows)
            wall.add(node.id, window.number, show.picture(index++));
    }
    return wall.image();
}
} // namespace

void tst_zoWallPicture::samplesAreComplete_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");

    QTest::newRow("powerwall") << QStringLiteral("powerwall-2x2") << QSize(3600, 2160);
    QTest::newRow("tiledwall") << QStringLiteral("tiledwall-3x5-gateway") << QSize(8192, 2765);
    QTest::newRow("cave") << QStringLiteral("cave-4-sided") << QSize(0, 0);
    QTest::newRow("default") << QStringLiteral("default") << QSize(1, 1);
}

void tst_zoWallPicture::samplesAreComplete()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    const zoWallSetup setup = zoWallPictures::sample(name);

    const QImage tiles = pictureOf(setup, zoShowContent::Tiles);
    const QImage image = pictureOf(setup, zoShowContent::TestImage);

    zoWallPictures::keep(tiles, name + QStringLiteral("-tiles"));
    zoWallPictures::keep(image, name + QStringLiteral("-image"));
    if (!size.isEmpty())
        QCOMPARE(tiles.size(), size);
}

int main(int argc, char** argv)
{
    zoNodeShow::prepareApplication();
    QGuiApplication application(argc, argv);
    tst_zoWallPicture test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoWallPicture.moc"
