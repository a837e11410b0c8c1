#include "zoTestCase.h"

#include <zoIconManager.h>
#include <zoPlatform.h>

#include <QApplication>
#include <QDataStream>
#include <QPainter>
#include <QPalette>

namespace
{
QImage picture(const QIcon& icon, int edge, QIcon::Mode mode, QIcon::State state)
{
    return icon.pixmap(QSize(edge, edge), mode, state).toImage().convertToFormat(QImage::Format_ARGB32);
}

bool drawsSomething(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 128)
                return true;
        }
    }
    return false;
}

// Mean of the colours, weighted by their opacity.
QColor meanColour(const QImage& image)
{
    qint64 red = 0;
    qint64 green = 0;
    qint64 blue = 0;
    qint64 weight = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            red += qRed(pixel) * qAlpha(pixel);
            green += qGreen(pixel) * qAlpha(pixel);
            blue += qBlue(pixel) * qAlpha(pixel);
            weight += qAlpha(pixel);
        }
    }
    return QColor(int(red / weight), int(green / weight), int(blue / weight));
}

// Most opaque pixel of the picture.
int strongestAlpha(const QImage& image)
{
    int alpha = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            alpha = qMax(alpha, qAlpha(image.pixel(x, y)));
    }
    return alpha;
}
} // namespace

// The host's artwork by name.
class tst_zoIconManager final : public zoTestCase
{
    Q_OBJECT

private slots:
    void strokesAreSeenOnWhatIsBehind_data();
    void strokesAreSeenOnWhatIsBehind();
    void nameHasAPictureInBothStates_data();
    void nameHasAPictureInBothStates();
    void pictureIsSeenOnLightAndDark_data() { nameHasAPictureInBothStates_data(); }
    void pictureIsSeenOnLightAndDark();
    void stateIconDiffersWhenOn_data();
    void stateIconDiffersWhenOn();
    void otherIconIsTheSameInBothStates();
    void runningIsGreenAndStoppedIsNot_data();
    void runningIsGreenAndStoppedIsNot();
    void disabledPictureIsGreyAndFaint_data() { nameHasAPictureInBothStates_data(); }
    void disabledPictureIsGreyAndFaint();
    void lockLeavesTheUpperLeftOfWhatItLocks();
    void anySizeIsSharp_data();
    void anySizeIsSharp();
    void nonSquareRequestGivesASquare();
    void paintingOnADenseScreenUsesEveryPixel();
    void unknownNameGivesAnEmptyIcon_data();
    void unknownNameGivesAnEmptyIcon();
    void endingOfTheNameDoesNotMatter();
    void unknownThemeFallsBackToTheStandardOne();
    void pixmapIsTheOffPictureAtMediumSize();
    void copyOfAnIconOutlivesTheFirst();
    void pictureNeedsNoPluginOfQt();
    void nameMayGoAwayAfterTheCall();
};

void tst_zoIconManager::nameHasAPictureInBothStates_data()
{
    QTest::addColumn<QString>("name");

    const char* const names[] = {"Network",
                                 "Server",
                                 "Display",
                                 "Lock",
                                 "ModuleCluster",
                                 "FileNew",
                                 "FileOpen",
                                 "Save",
                                 "StartCluster",
                                 "StopCluster",
                                 "Projection",
                                 "Iconset/ProjectionOnNormal.svg",
                                 "Iconset/TiledWallOnNormal.svg",
                                 "Iconset/CaveOnNormal.svg",
                                 "Iconset/WallTileOnNormal.svg",
                                 "Iconset/DisplayOnNormal.svg",
                                 "Iconset/ViewportOnNormal.svg"};
    for (const char* name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_zoIconManager::nameHasAPictureInBothStates()
{
    QFETCH(QString, name);

    const QIcon icon = zoIconManager::getIcon(name, QString());

    QVERIFY(!icon.isNull());
    for (const int edge : {16, 22, 24, 32, 48, 64}) {
        for (const QIcon::State state : {QIcon::Off, QIcon::On}) {
            const QImage image = picture(icon, edge, QIcon::Normal, state);
            QCOMPARE(image.size(), QSize(edge, edge));
            QVERIFY(drawsSomething(image));
            QVERIFY(icon.availableSizes(QIcon::Normal, state).contains(QSize(edge, edge)));
        }
    }
}

void tst_zoIconManager::pictureIsSeenOnLightAndDark()
{
    QFETCH(QString, name);
    const QIcon icon = zoIconManager::getIcon(name, QString());

    for (const QColor& background : {QColor(0xf3, 0xf3, 0xf3), QColor(0x26, 0x29, 0x2e)}) {
        for (const QIcon::State state : {QIcon::Off, QIcon::On}) {
            QImage image(16, 16, QImage::Format_RGB32);
            image.fill(background);
            QPainter painter(&image);
            icon.paint(&painter, image.rect(), Qt::AlignCenter, QIcon::Normal, state);
            painter.end();

            int distinct = 0;
            for (int y = 0; y < 16; ++y) {
                for (int x = 0; x < 16; ++x)
                    distinct += qAbs(qGray(image.pixel(x, y)) - qGray(background.rgb())) > 40 ? 1 : 0;
            }
            QVERIFY2(distinct >= 30, qPrintable(QString::number(distinct)));
        }
    }
}

void tst_zoIconManager::stateIconDiffersWhenOn_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"Network", "Server", "Display", "Lock", "ModuleCluster"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_zoIconManager::stateIconDiffersWhenOn()
{
    QFETCH(QString, name);
    const QIcon icon = zoIconManager::getIcon(name, QString());

    for (const int edge : {16, 24, 32})
        QVERIFY(picture(icon, edge, QIcon::Normal, QIcon::On) !=
                picture(icon, edge, QIcon::Normal, QIcon::Off));
}

void tst_zoIconManager::otherIconIsTheSameInBothStates()
{
    const QIcon icon = zoIconManager::getIcon(QStringLiteral("Save"), QString());

    QCOMPARE(picture(icon, 32, QIcon::Normal, QIcon::On), picture(icon, 32, QIcon::Normal, QIcon::Off));
}

void tst_zoIconManager::runningIsGreenAndStoppedIsNot_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"Network", "Server", "Display"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_zoIconManager::runningIsGreenAndStoppedIsNot()
{
    QFETCH(QString, name);
    const QIcon icon = zoIconManager::getIcon(name, QString());

    const QColor on = meanColour(picture(icon, 32, QIcon::Normal, QIcon::On));
    const QColor off = meanColour(picture(icon, 32, QIcon::Normal, QIcon::Off));

    QVERIFY(on.green() > on.red() + 40 && on.green() > on.blue() + 20);
    QVERIFY(off.blue() > off.green());
}

void tst_zoIconManager::disabledPictureIsGreyAndFaint()
{
    QFETCH(QString, name);
    const QIcon icon = zoIconManager::getIcon(name, QString());

    for (const QIcon::State state : {QIcon::Off, QIcon::On}) {
        const QImage disabled = picture(icon, 32, QIcon::Disabled, state);
        const QImage normal = picture(icon, 32, QIcon::Normal, state);

        QVERIFY(meanColour(disabled).hsvSaturation() < 12);
        QVERIFY(strongestAlpha(disabled) < strongestAlpha(normal) * 2 / 3);
        QVERIFY(strongestAlpha(disabled) > 60);
    }
}

void tst_zoIconManager::lockLeavesTheUpperLeftOfWhatItLocks()
{
    const QImage lock =
        picture(zoIconManager::getIcon(QStringLiteral("Lock"), QString()), 24, QIcon::Normal, QIcon::On);

    QVERIFY(!drawsSomething(lock.copy(0, 0, 24, 4)));
    QVERIFY(!drawsSomething(lock.copy(0, 0, 8, 24)));
    QVERIFY(drawsSomething(lock.copy(12, 12, 12, 12)));
}

void tst_zoIconManager::anySizeIsSharp_data()
{
    QTest::addColumn<int>("edge");
    QTest::newRow("smallest") << 1;
    QTest::newRow("odd") << 17;
    QTest::newRow("larger-than-any-listed") << 200;
}

void tst_zoIconManager::anySizeIsSharp()
{
    QFETCH(int, edge);
    const QIcon icon = zoIconManager::getIcon(QStringLiteral("Server"), QString());

    QCOMPARE(icon.pixmap(edge).size(), QSize(edge, edge));
}

void tst_zoIconManager::nonSquareRequestGivesASquare()
{
    const QIcon icon = zoIconManager::getIcon(QStringLiteral("Server"), QString());

    QCOMPARE(icon.actualSize(QSize(40, 24)), QSize(24, 24));
    QCOMPARE(icon.pixmap(QSize(40, 24)).size(), QSize(24, 24));
}

void tst_zoIconManager::paintingOnADenseScreenUsesEveryPixel()
{
    const QIcon icon = zoIconManager::getIcon(QStringLiteral("Server"), QString());
    QImage dense(64, 64, QImage::Format_ARGB32_Premultiplied);
    dense.setDevicePixelRatio(2);
    dense.fill(Qt::transparent);

    QPainter painter(&dense);
    icon.paint(&painter, QRect(0, 0, 32, 32));
    painter.end();

    dense.setDevicePixelRatio(1);
    QCOMPARE(dense.convertToFormat(QImage::Format_ARGB32), picture(icon, 64, QIcon::Normal, QIcon::Off));
}

void tst_zoIconManager::unknownNameGivesAnEmptyIcon_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no-such-name") << "NoSuchIcon";
    QTest::newRow("empty") << "";
    QTest::newRow("other-case") << "server";
    QTest::newRow("only-the-ending") << ".svg";
    QTest::newRow("a-folder") << "Iconset";
}

void tst_zoIconManager::unknownNameGivesAnEmptyIcon()
{
    QFETCH(QString, name);

    QVERIFY(zoIconManager::getIcon(name, QString()).isNull());
    QVERIFY(zoIconManager::getPixmap(name, QString()).isNull());
}

void tst_zoIconManager::endingOfTheNameDoesNotMatter()
{
    const QIcon with = zoIconManager::getIcon(QStringLiteral("Server.svg"), QString());
    const QIcon without = zoIconManager::getIcon(QStringLiteral("Server"), QString());

    QCOMPARE(picture(with, 32, QIcon::Normal, QIcon::On), picture(without, 32, QIcon::Normal, QIcon::On));
}

void tst_zoIconManager::unknownThemeFallsBackToTheStandardOne()
{
    const QIcon themed = zoIconManager::getIcon(QStringLiteral("Server"), QStringLiteral("no-such-theme"));
    const QIcon standard = zoIconManager::getIcon(QStringLiteral("Server"), QString());

    QVERIFY(!themed.isNull());
    QCOMPARE(picture(themed, 32, QIcon::Normal, QIcon::Off),
             picture(standard, 32, QIcon::Normal, QIcon::Off));
}

void tst_zoIconManager::pixmapIsTheOffPictureAtMediumSize()
{
    const int edge = zoPlatform::getMediumIconSize();

    const QPixmap pixmap = zoIconManager::getPixmap(QStringLiteral("Server"), QString());

    QCOMPARE(pixmap.size(), QSize(edge, edge));
    const QIcon icon = zoIconManager::getIcon(QStringLiteral("Server"), QString());
    QCOMPARE(pixmap.toImage().convertToFormat(QImage::Format_ARGB32),
             picture(icon, edge, QIcon::Normal, QIcon::Off));
}

void tst_zoIconManager::copyOfAnIconOutlivesTheFirst()
{
    QIcon copy;
    {
        const QIcon first = zoIconManager::getIcon(QStringLiteral("Lock"), QString());
        copy = first;
    }
    // Adding a picture makes the copy a clone.
    copy.addPixmap(QPixmap(8, 8));

    QVERIFY(drawsSomething(picture(copy, 32, QIcon::Normal, QIcon::On)));
}

void tst_zoIconManager::pictureNeedsNoPluginOfQt()
{
    QByteArray stored;
    QDataStream stream(&stored, QIODevice::WriteOnly);
    stream << zoIconManager::getIcon(QStringLiteral("Server"), QString());

    // An icon names the engine that draws it first.
    QString engine;
    QDataStream reader(stored);
    reader >> engine;
    QCOMPARE(engine, QStringLiteral("zoIconEngine"));
}

void tst_zoIconManager::nameMayGoAwayAfterTheCall()
{
    // As a name in the data of a module that is unloaded later. The suffix makes it a name of its own in the
    // cache.
    QString name = QStringLiteral("Save.svg");
    const QIcon before =
        zoIconManager::getIcon(QString::fromRawData(name.constData(), name.size()), QString());
    QVERIFY(!before.isNull());
    name.fill(QLatin1Char('x'));

    const QIcon after = zoIconManager::getIcon(QStringLiteral("Save.svg"), QString());

    // The same one: the cache still knows it by its name.
    QCOMPARE(after.cacheKey(), before.cacheKey());
}

void tst_zoIconManager::strokesAreSeenOnWhatIsBehind_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("highlight");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("hasRim");

    const int normal = int(QIcon::Normal);
    const int selected = int(QIcon::Selected);
    QTest::newRow("light") << QColor(Qt::white) << QColor(0x30, 0x8c, 0xc6) << normal << false;
    QTest::newRow("dark") << QColor(0x23, 0x26, 0x29) << QColor(0x2a, 0x82, 0xda) << normal << true;
    QTest::newRow("selected") << QColor(Qt::white) << QColor(0x30, 0x8c, 0xc6) << selected << true;
    QTest::newRow("selected-dark") << QColor(0x23, 0x26, 0x29) << QColor(0x2a, 0x82, 0xda) << selected
                                   << true;
    QTest::newRow("selected-pale") << QColor(Qt::white) << QColor(0xcc, 0xdd, 0xff) << selected << false;
    QTest::newRow("disabled-dark") << QColor(0x23, 0x26, 0x29) << QColor(0x2a, 0x82, 0xda)
                                   << int(QIcon::Disabled) << false;
}

void tst_zoIconManager::strokesAreSeenOnWhatIsBehind()
{
    QFETCH(QColor, base);
    QFETCH(QColor, highlight);
    QFETCH(int, mode);
    QFETCH(bool, hasRim);
    const QPalette before = QApplication::palette();
    QPalette palette(base, base);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Highlight, highlight);
    QApplication::setPalette(palette);

    const QImage image = picture(zoIconManager::getIcon("Network", ""), 24, QIcon::Mode(mode), QIcon::Off);
    int light = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            light += qAlpha(image.pixel(x, y)) > 200 && qGray(image.pixel(x, y)) > 240 ? 1 : 0;
    }
    QApplication::setPalette(before);

    QCOMPARE(light > 40, hasRim);
}

ZO_TEST_MAIN(tst_zoIconManager)
#include "tst_zoIconManager.moc"
