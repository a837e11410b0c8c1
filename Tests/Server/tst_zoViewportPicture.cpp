#include "zoTestCase.h"

#include <zoBlendRamp.h>
#include <zoTestScene.h>
#include <zoViewportPicture.h>

#include <QApplication>

// How the pictures of the eyes come together in the pixels of a window.
class tst_zoViewportPicture final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wordsAreModes_data();
    void wordsAreModes();
    void eyesSeeDifferently();
    void rowsAndColumnsGoByTheScreen_data();
    void rowsAndColumnsGoByTheScreen();
    void coloursAreDivided_data();
    void coloursAreDivided();
    void halvesAreWholePictures_data();
    void halvesAreWholePictures();
    void buffersAreOneEyeEach();
    void flipsMirrorWhatFades_data();
    void flipsMirrorWhatFades();
    void flippedHalvesStayWithTheirEyes();
    void rightEyeIsMoved();
    void edgesGrowWithThePicture();
    void areaIsPartOfTheWindow_data();
    void areaIsPartOfTheWindow();

private:
    zoWallSetup m_setup;
    zoWallNode m_node;
    zoWallWindow m_window;
    zoWallViewport m_viewport;

    QImage picture(const QString& eye, const QSize& size, const QPoint& origin = {},
                   zoStereoMode::Eye buffer = zoStereoMode::Eye::Middle) const;
    void reset();

private slots:
    void init() { reset(); }
};

Q_DECLARE_METATYPE(zoStereoMode::Mode)

using zoStereoMode::Eye;
using zoStereoMode::Mode;

void tst_zoViewportPicture::reset()
{
    m_viewport = zoWallViewport();
    m_viewport.plane = {
        QStringLiteral("P"), {-1500, -1000, -1500}, {1500, -1000, -1500}, {1500, 1000, -1500}};
    m_viewport.eyeSeparation = 400.0; // so that they differ much
    m_window = zoWallWindow();
    m_window.geometry = {0, 0, 120, 80};
    m_setup = zoWallSetup();
    m_setup.walls = {m_viewport.plane};
}

// Of a window that is all viewport.
QImage tst_zoViewportPicture::picture(const QString& eye, const QSize& size, const QPoint& origin,
                                      Eye buffer) const
{
    zoWallViewport viewport = m_viewport;
    viewport.eye = eye;
    const zoTestScene scene(m_setup.walls, m_setup.head);
    const zoViewportPicture picture(
        {&m_setup, &scene, &m_node, &m_window, &viewport, zoShowContent::TestImage}, size);
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::black);
    picture.paint(image, QRect(QPoint(0, 0), size), origin, buffer);
    return image;
}

void tst_zoViewportPicture::wordsAreModes_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<bool>("isForBoth");

    QTest::newRow("mono") << "mono" << Mode::Mono << false;
    QTest::newRow("left") << "left" << Mode::Left << false;
    QTest::newRow("right") << "right" << Mode::Right << false;
    QTest::newRow("stereo") << "stereo" << Mode::QuadBuffer << true;
    QTest::newRow("horizontal") << "horizontalinterlaced" << Mode::RowInterlaced << true;
    QTest::newRow("vertical") << "verticalinterlaced" << Mode::ColumnInterlaced << true;
    QTest::newRow("left-right") << "splitleftright" << Mode::SplitLeftRight << true;
    QTest::newRow("top-bottom") << "splitbottomtop" << Mode::SplitTopBottom << true;
    QTest::newRow("red-cyan") << "redcyan" << Mode::RedCyan << true;
    QTest::newRow("blue-yellow") << "blueyellow" << Mode::BlueYellow << true;
    QTest::newRow("green-magenta") << "greenmagenta" << Mode::GreenMagenta << true;
    QTest::newRow("empty") << "" << Mode::Mono << false;
    QTest::newRow("unknown") << "Left" << Mode::Mono << false;
}

void tst_zoViewportPicture::wordsAreModes()
{
    QFETCH(QString, word);
    QFETCH(Mode, mode);
    QFETCH(bool, isForBoth);

    QCOMPARE(int(zoStereoMode::ofWord(word)), int(mode));
    QCOMPARE(zoStereoMode::isForBothEyes(mode), isForBoth);
}

// Without it the others could not fail.
void tst_zoViewportPicture::eyesSeeDifferently()
{
    const QSize size(120, 80);

    const QImage left = picture(QStringLiteral("left"), size);
    const QImage right = picture(QStringLiteral("right"), size);
    const QImage middle = picture(QStringLiteral("mono"), size);

    QVERIFY(left != right && left != middle && right != middle);
    m_viewport.eyeSeparation = 0.0;
    QCOMPARE(picture(QStringLiteral("left"), size), middle);
    QCOMPARE(picture(QStringLiteral("right"), size), middle);
}

void tst_zoViewportPicture::rowsAndColumnsGoByTheScreen_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<QPoint>("origin");

    for (const char* eye : {"horizontalinterlaced", "verticalinterlaced"}) {
        for (const QPoint& origin : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(7, 3), QPoint(-3, -1)})
            QTest::addRow("%s-%d-%d", eye, origin.x(), origin.y()) << QString::fromLatin1(eye) << origin;
    }
}

void tst_zoViewportPicture::rowsAndColumnsGoByTheScreen()
{
    QFETCH(QString, eye);
    QFETCH(QPoint, origin);
    const QSize size(121, 81);
    const QImage left = picture(QStringLiteral("left"), size);
    const QImage right = picture(QStringLiteral("right"), size);

    const QImage mixed = picture(eye, size, origin);

    const bool isByRows = eye == QLatin1String("horizontalinterlaced");
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int onScreen = isByRows ? origin.y() + y : origin.x() + x;
            const bool isLeft = (onScreen + 1000) % 2 == 0;
            QCOMPARE(mixed.pixel(x, y), (isLeft ? left : right).pixel(x, y));
        }
    }
}

void tst_zoViewportPicture::coloursAreDivided_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<bool>("red"); // of the left eye
    QTest::addColumn<bool>("green");
    QTest::addColumn<bool>("blue");

    QTest::newRow("red-cyan") << "redcyan" << true << false << false;
    QTest::newRow("blue-yellow") << "blueyellow" << false << false << true;
    QTest::newRow("green-magenta") << "greenmagenta" << false << true << false;
}

void tst_zoViewportPicture::coloursAreDivided()
{
    QFETCH(QString, eye);
    QFETCH(bool, red);
    QFETCH(bool, green);
    QFETCH(bool, blue);
    const QSize size(120, 80);
    const QImage left = picture(QStringLiteral("left"), size);
    const QImage right = picture(QStringLiteral("right"), size);

    const QImage mixed = picture(eye, size);

    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            QCOMPARE(qRed(mixed.pixel(x, y)), qRed((red ? left : right).pixel(x, y)));
            QCOMPARE(qGreen(mixed.pixel(x, y)), qGreen((green ? left : right).pixel(x, y)));
            QCOMPARE(qBlue(mixed.pixel(x, y)), qBlue((blue ? left : right).pixel(x, y)));
        }
    }
}

void tst_zoViewportPicture::halvesAreWholePictures_data()
{
    QTest::addColumn<QString>("eye");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("left");
    QTest::addColumn<QRect>("right");

    QTest::newRow("left-right") << "splitleftright" << QSize(120, 80) << QRect(0, 0, 60, 80)
                                << QRect(60, 0, 60, 80);
    QTest::newRow("left-right-odd") << "splitleftright" << QSize(121, 80) << QRect(0, 0, 60, 80)
                                    << QRect(61, 0, 60, 80);
    QTest::newRow("top-bottom") << "splitbottomtop" << QSize(120, 80) << QRect(0, 0, 120, 40)
                                << QRect(0, 40, 120, 40);
    QTest::newRow("top-bottom-odd") << "splitbottomtop" << QSize(120, 81) << QRect(0, 0, 120, 40)
                                    << QRect(0, 41, 120, 40);
}

void tst_zoViewportPicture::halvesAreWholePictures()
{
    QFETCH(QString, eye);
    QFETCH(QSize, size);
    QFETCH(QRect, left);
    QFETCH(QRect, right);

    const QImage split = picture(eye, size);

    QCOMPARE(split.copy(left), picture(QStringLiteral("left"), left.size()));
    QCOMPARE(split.copy(right), picture(QStringLiteral("right"), right.size()));
}

void tst_zoViewportPicture::buffersAreOneEyeEach()
{
    const QSize size(120, 80);

    QCOMPARE(picture(QStringLiteral("stereo"), size, {}, Eye::Left), picture(QStringLiteral("left"), size));
    QCOMPARE(picture(QStringLiteral("stereo"), size, {}, Eye::Right), picture(QStringLiteral("right"), size));
    QCOMPARE(picture(QStringLiteral("stereo"), size), picture(QStringLiteral("mono"), size));
    // Others do not care which buffer it is.
    QCOMPARE(picture(QStringLiteral("left"), size, {}, Eye::Right), picture(QStringLiteral("left"), size));
}

void tst_zoViewportPicture::flipsMirrorWhatFades_data()
{
    QTest::addColumn<bool>("flipX");
    QTest::addColumn<bool>("flipY");

    QTest::newRow("left-to-right") << true << false;
    QTest::newRow("upside-down") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_zoViewportPicture::flipsMirrorWhatFades()
{
    QFETCH(bool, flipX);
    QFETCH(bool, flipY);
    const QSize size(120, 80);
    m_viewport.edges = {30, 0, 0, 10};
    const QImage plain = picture(QStringLiteral("left"), size);
    m_viewport.flipX = flipX;
    m_viewport.flipY = flipY;

    const QImage flipped = picture(QStringLiteral("left"), size);

    QVERIFY(flipped != plain);
    QCOMPARE(flipped, plain.mirrored(flipX, flipY));
    // Interlaced by the screen all the same.
    QCOMPARE(picture(QStringLiteral("horizontalinterlaced"), size).copy(0, 2, 120, 1),
             flipped.copy(0, 2, 120, 1));
}

void tst_zoViewportPicture::flippedHalvesStayWithTheirEyes()
{
    m_viewport.flipX = true;

    const QImage split = picture(QStringLiteral("splitleftright"), {120, 80});

    QCOMPARE(split.copy(0, 0, 60, 80), picture(QStringLiteral("left"), {60, 80}));
}

void tst_zoViewportPicture::rightEyeIsMoved()
{
    const QSize size(120, 80);
    const QImage before = picture(QStringLiteral("right"), size);
    const QImage left = picture(QStringLiteral("left"), size);
    m_viewport.rightEyeOffset = {5, 3}; // to the right and upward

    const QImage after = picture(QStringLiteral("right"), size);

    QCOMPARE(after.pixel(0, 40), qRgb(0, 0, 0));
    QCOMPARE(after.pixel(60, 79), qRgb(0, 0, 0));
    // Hundredths of a pixel are rounded another way at some edges.
    int others = 0;
    for (int y = 0; y < size.height() - 3; ++y) {
        for (int x = 5; x < size.width(); ++x) {
            const QRgb a = after.pixel(x, y);
            const QRgb b = before.pixel(x - 5, y + 3);
            others += std::abs(qRed(a) - qRed(b)) + std::abs(qBlue(a) - qBlue(b)) > 8 ? 1 : 0;
        }
    }
    QVERIFY2(others < 20, qPrintable(QString::number(others)));
    QCOMPARE(picture(QStringLiteral("left"), size), left);
}

void tst_zoViewportPicture::edgesGrowWithThePicture()
{
    m_viewport.edges = {12, 0, 8, 0};
    const zoTestScene scene(m_setup.walls, m_setup.head);
    const auto edges = [&](const QSize& size, const char* eye, zoShowContent content) {
        m_viewport.eye = QString::fromLatin1(eye);
        return zoViewportPicture({&m_setup, &scene, &m_node, &m_window, &m_viewport, content}, size).edges();
    };

    QCOMPARE(edges({120, 80}, "mono", zoShowContent::TestImage).left, 12.0);
    QCOMPARE(edges({240, 40}, "mono", zoShowContent::TestImage).left, 24.0);
    QCOMPARE(edges({240, 40}, "mono", zoShowContent::TestImage).top, 4.0);
    QCOMPARE(edges({120, 80}, "splitleftright", zoShowContent::TestImage).left, 6.0);
    // What is to be read stays bright.
    QVERIFY(edges({120, 80}, "mono", zoShowContent::Tiles).isEmpty());
}

void tst_zoViewportPicture::areaIsPartOfTheWindow_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<QRect>("rect");

    QTest::newRow("all") << QRectF(0, 0, 1, 1) << QRect(0, 0, 101, 51);
    QTest::newRow("left-half") << QRectF(0, 0, 0.5, 1) << QRect(0, 0, 51, 51);
    QTest::newRow("right-half") << QRectF(0.5, 0, 0.5, 1) << QRect(51, 0, 50, 51);
    QTest::newRow("nothing") << QRectF(0.5, 0, 0, 1) << QRect(51, 0, 0, 51);
}

// Neighbours share no pixel and leave none out.
void tst_zoViewportPicture::areaIsPartOfTheWindow()
{
    QFETCH(QRectF, area);
    QFETCH(QRect, rect);
    m_viewport.area = area;

    QCOMPARE(zoViewportPicture::rectIn({101, 51}, m_viewport), rect);
}

ZO_TEST_MAIN(tst_zoViewportPicture)
#include "tst_zoViewportPicture.moc"
