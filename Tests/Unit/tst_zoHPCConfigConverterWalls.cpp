#include "zoLegacyParts.h"
#include "zoTestCase.h"

#include <zoHPCConfigConverter.h>

#include <QApplication>

using namespace zoLegacyParts;

// The power wall of a converted legacy configuration.
class tst_zoHPCConfigConverterWalls final : public zoTestCase
{
    Q_OBJECT

private slots:
    // Power wall.
    void wallWithoutKeysHasDefaults();
    void wallParametersBecomeAttributes();
    void overlapHoldsInBothDirections();
    void wallNumberThatIsNoneReadsAsZero_data();
    void wallNumberThatIsNoneReadsAsZero();
    void stereoCodeGivesWindowsAndViewports_data();
    void stereoCodeGivesWindowsAndViewports();
    void pairedStereoWallNeedsTwoHostsPerTile();
    void tilesAreNamedRowByRow();
    void wallWithoutTilesHasNoWindows_data();
    void wallWithoutTilesHasNoWindows();
    void fewerHostsThanWindowsLeaveNodesEmpty_data();
    void fewerHostsThanWindowsLeaveNodesEmpty();
    void senselesslyLargeWallIsCut_data();
    void senselesslyLargeWallIsCut();
    void largeWallWithHostsIsWhole();
};

void tst_zoHPCConfigConverterWalls::wallWithoutKeysHasDefaults()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
                   {QStringLiteral("zoClusterPWServers"), QStringLiteral("a b")}});

    QCOMPARE(
        lineOf(cluster),
        QStringLiteral("cluster [master [network [node name=a; node name=b]]; "
                       "display eyeseparation=65 ["
                       "window fullscreen=false height=1024 node=a screen=-2 width=1280 x=0 y=0 ["
                       "viewport eye=mono position=custom projection=wall row:1 col:1 rotate=0 "
                       "x1=0 x2=1280 y1=0 y2=1024]]; "
                       "projection columns=1 distance=1500 edgeblending=false name=wall offsetx=0 offsety=0 "
                       "overlapx=0 overlapy=0 rows=1 tileheight=1024 tilewidth=1280 type=wall]"));
}

void tst_zoHPCConfigConverterWalls::wallParametersBecomeAttributes()
{
    Parameters parameters = wallOf(QStringLiteral("a[xpos=3,ypos=4]"), 1);
    parameters += Parameters{{QStringLiteral("zoClusterPWXOffset"), QStringLiteral("-10")},
                             {QStringLiteral("zoClusterPWYOffset"), QStringLiteral("20")},
                             {QStringLiteral("zoClusterPWXRes"), QStringLiteral("1920")},
                             {QStringLiteral("zoClusterPWYRes"), QStringLiteral("1200")},
                             {QStringLiteral("zoClusterPWRows"), QStringLiteral("1")},
                             {QStringLiteral("zoEdgeBlendingEnabled"), QStringLiteral("1")}};

    const QDomElement cluster = converted(parameters);

    QCOMPARE(linesOf(projectionsOf(cluster)),
             QStringList{
                 QStringLiteral("projection columns=1 distance=1500 edgeblending=true name=wall offsetx=-10 "
                                "offsety=20 overlapx=0 overlapy=0 rows=1 tileheight=1200 tilewidth=1920 "
                                "type=wall")});
    QCOMPARE(
        linesOf(windowsOf(cluster)),
        QStringList{QStringLiteral("window fullscreen=false height=1200 node=a screen=-2 width=1920 x=3 y=4 ["
                                   "viewport eye=mono position=custom projection=wall row:1 col:1 rotate=0 "
                                   "x1=0 x2=1920 y1=0 y2=1200]")});
}

void tst_zoHPCConfigConverterWalls::overlapHoldsInBothDirections()
{
    const QDomElement cluster =
        converted(wallOf(QStringLiteral("a"), 1) +
                  Parameters{{QStringLiteral("zoClusterPWXOverlap"), QStringLiteral("20")},
                             {QStringLiteral("zoClusterPWYOverlap"), QStringLiteral("30")}});

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("overlapx")), QStringList{"20"});
    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("overlapy")), QStringList{"20"});
}

void tst_zoHPCConfigConverterWalls::wallNumberThatIsNoneReadsAsZero_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("attribute");

    QTest::newRow("x-offset") << "zoClusterPWXOffset"
                              << "offsetx";
    QTest::newRow("y-offset") << "zoClusterPWYOffset"
                              << "offsety";
    QTest::newRow("width") << "zoClusterPWXRes"
                           << "tilewidth";
    QTest::newRow("height") << "zoClusterPWYRes"
                            << "tileheight";
    QTest::newRow("overlap") << "zoClusterPWXOverlap"
                             << "overlapx";
    QTest::newRow("rows") << "zoClusterPWRows"
                          << "rows";
    QTest::newRow("columns") << "zoClusterPWCols"
                             << "columns";
}

void tst_zoHPCConfigConverterWalls::wallNumberThatIsNoneReadsAsZero()
{
    QFETCH(QString, key);
    QFETCH(QString, attribute);

    for (const char* text : {"", "wide", "12.5", "0x10", "99999999999"}) {
        const QDomElement cluster =
            converted(Parameters{{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
                                 {key, QLatin1String(text)}});
        QCOMPARE(attributesOf(projectionsOf(cluster), attribute), QStringList{"0"});
    }
    const QDomElement cluster =
        converted(Parameters{{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
                             {key, QStringLiteral(" +7\n")}});
    QCOMPARE(attributesOf(projectionsOf(cluster), attribute), QStringList{"7"});
}

void tst_zoHPCConfigConverterWalls::stereoCodeGivesWindowsAndViewports_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("width");
    QTest::addColumn<QStringList>("eyes"); // one text per window
    QTest::addColumn<QString>("right");

    QTest::newRow("mono") << "0"
                          << "1281" << QStringList{"mono"} << "1281";
    QTest::newRow("pairs-of-windows") << "1"
                                      << "1281" << QStringList{"left", "right"} << "1281";
    QTest::newRow("left-half") << "2"
                               << "1281" << QStringList{"stereo"} << "640";
    QTest::newRow("left-half-of-even-width") << "2"
                                             << "1280" << QStringList{"stereo"} << "640";
    QTest::newRow("half-of-negative-width") << "2"
                                            << "-3" << QStringList{"stereo"} << "-1";
    QTest::newRow("pairs-of-viewports") << "3"
                                        << "1281" << QStringList{"left right"} << "1281";
    QTest::newRow("four") << "4"
                          << "1281" << QStringList{"mono"} << "1281";
    QTest::newRow("empty") << ""
                           << "1281" << QStringList{"mono"} << "1281";
    QTest::newRow("with-blank") << "1 "
                                << "1281" << QStringList{"mono"} << "1281";
    QTest::newRow("padded") << "03"
                            << "1281" << QStringList{"mono"} << "1281";
}

void tst_zoHPCConfigConverterWalls::stereoCodeGivesWindowsAndViewports()
{
    QFETCH(QString, code);
    QFETCH(QString, width);
    QFETCH(QStringList, eyes);
    QFETCH(QString, right);

    const QDomElement cluster = converted(wallOf(QStringLiteral("a b"), 1) +
                                          Parameters{{QStringLiteral("zoClusterPWStereoMode"), code},
                                                     {QStringLiteral("zoClusterPWXRes"), width}});

    QCOMPARE(eyesOf(cluster), eyes);
    for (const QDomElement& window : windowsOf(cluster)) {
        QCOMPARE(window.attribute(QStringLiteral("width")), width);
        for (const QDomElement& viewport : childrenOf(window)) {
            QCOMPARE(rectangleOf(viewport), (QStringList{"0", "0", right, "1024"}));
            QCOMPARE(viewport.attribute(QStringLiteral("projection")), QStringLiteral("wall row:1 col:1"));
        }
    }
}

void tst_zoHPCConfigConverterWalls::pairedStereoWallNeedsTwoHostsPerTile()
{
    Parameters parameters = wallOf(QStringLiteral("a b c d e f g h"), 2);
    parameters += Parameters{{QStringLiteral("zoClusterPWRows"), QStringLiteral("2")},
                             {QStringLiteral("zoClusterPWStereoMode"), QStringLiteral("1")}};

    const QDomElement cluster = converted(parameters);

    QStringList seen;
    for (const QDomElement& window : windowsOf(cluster)) {
        const QDomElement viewport = window.firstChildElement();
        seen << QStringList{window.attribute(QStringLiteral("node")),
                            viewport.attribute(QStringLiteral("eye")),
                            viewport.attribute(QStringLiteral("projection"))}
                    .join(QLatin1Char(','));
    }
    QCOMPARE(seen,
             (QStringList{"a,left,wall row:1 col:1", "b,right,wall row:1 col:1", "c,left,wall row:1 col:2",
                          "d,right,wall row:1 col:2", "e,left,wall row:2 col:1", "f,right,wall row:2 col:1",
                          "g,left,wall row:2 col:2", "h,right,wall row:2 col:2"}));
}

void tst_zoHPCConfigConverterWalls::tilesAreNamedRowByRow()
{
    Parameters parameters = wallOf(QStringLiteral("a b c d e f"), 3);
    parameters.append({QStringLiteral("zoClusterPWRows"), QStringLiteral("2")});

    const QDomElement cluster = converted(parameters);

    QStringList names;
    for (const QDomElement& window : windowsOf(cluster))
        names << window.firstChildElement().attribute(QStringLiteral("projection"));
    QCOMPARE(names, (QStringList{"wall row:1 col:1", "wall row:1 col:2", "wall row:1 col:3",
                                 "wall row:2 col:1", "wall row:2 col:2", "wall row:2 col:3"}));
    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")),
             (QStringList{"a", "b", "c", "d", "e", "f"}));
}

void tst_zoHPCConfigConverterWalls::wallWithoutTilesHasNoWindows_data()
{
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("columns");

    QTest::newRow("no-rows") << "0"
                             << "2";
    QTest::newRow("no-columns") << "2"
                                << "0";
    QTest::newRow("negative-rows") << "-1"
                                   << "2";
    QTest::newRow("negative-both") << "-2"
                                   << "-2";
    QTest::newRow("many-rows-no-columns") << "2147483647"
                                          << "0";
    QTest::newRow("no-numbers") << "x"
                                << "";
}

void tst_zoHPCConfigConverterWalls::wallWithoutTilesHasNoWindows()
{
    QFETCH(QString, rows);
    QFETCH(QString, columns);

    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
                   {QStringLiteral("zoClusterPWServers"), QStringLiteral("a")},
                   {QStringLiteral("zoClusterPWRows"), rows},
                   {QStringLiteral("zoClusterPWCols"), columns}});

    QCOMPARE(windowsOf(cluster).size(), 0);
    QCOMPARE(projectionsOf(cluster).size(), 1);
    QCOMPARE(projectionsOf(cluster).first().attribute(QStringLiteral("rows")), QString::number(rows.toInt()));
}

void tst_zoHPCConfigConverterWalls::fewerHostsThanWindowsLeaveNodesEmpty_data()
{
    QTest::addColumn<Parameters>("parameters");
    QTest::addColumn<QStringList>("places");

    QTest::newRow("wall") << wallOf(QStringLiteral("a[xpos=5,ypos=6]"), 3)
                          << QStringList{"a 5 6", " 0 0", " 0 0"};
    QTest::newRow("wall-without-hosts") << wallOf(QString(), 2) << QStringList{" 0 0", " 0 0"};
    QTest::newRow("wall-of-pairs") << (wallOf(QStringLiteral("a[xpos=5]"), 1) +
                                       Parameters{
                                           {QStringLiteral("zoClusterPWStereoMode"), QStringLiteral("1")}})
                                   << QStringList{"a 5 0", " 0 0"};
    QTest::newRow("custom") << pipesOf({QStringLiteral(" 1 2 3 4"), QStringLiteral(" 5 6 7 8")})
                            << QStringList{" 1 2", " 5 6"};
}

void tst_zoHPCConfigConverterWalls::fewerHostsThanWindowsLeaveNodesEmpty()
{
    QFETCH(Parameters, parameters);
    QFETCH(QStringList, places);

    const QDomElement cluster = converted(parameters);

    QCOMPARE(placesOf(cluster), places);
    for (const QDomElement& window : windowsOf(cluster))
        QVERIFY(window.hasAttribute(QStringLiteral("node")));
}

void tst_zoHPCConfigConverterWalls::senselesslyLargeWallIsCut_data()
{
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("stereo");

    QTest::newRow("million-rows") << "1000000"
                                  << "1"
                                  << "0";
    QTest::newRow("million-columns") << "1"
                                     << "1000000"
                                     << "3";
    QTest::newRow("more-tiles-than-an-int-counts") << "2147483647"
                                                   << "2147483647"
                                                   << "0";
    QTest::newRow("pairs") << "1000000"
                           << "3"
                           << "1";
}

void tst_zoHPCConfigConverterWalls::senselesslyLargeWallIsCut()
{
    QFETCH(QString, rows);
    QFETCH(QString, columns);
    QFETCH(QString, stereo);
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(QStringLiteral("^Legacy wall of %1 x %2 tiles: only the first %3 windows were "
                                          "converted\\.$")
                               .arg(rows, columns)
                               .arg(zoHPCConfigConverter::MaximumWindowsWithoutHost)));

    const QString document = zoHPCConfigConverter().convert(
        legacyText({{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
                    {QStringLiteral("zoClusterPWServers"), QStringLiteral("a")},
                    {QStringLiteral("zoClusterPWRows"), rows},
                    {QStringLiteral("zoClusterPWCols"), columns},
                    {QStringLiteral("zoClusterPWStereoMode"), stereo}}));

    QCOMPARE(document.count(QLatin1String("<window ")), zoHPCConfigConverter::MaximumWindowsWithoutHost);
    // The wall itself keeps the numbers of the file, so that they can be corrected.
    QVERIFY(document.contains(QStringLiteral("rows=\"%1\"").arg(rows)));
    QVERIFY(document.contains(QStringLiteral("columns=\"%1\"").arg(columns)));
}

void tst_zoHPCConfigConverterWalls::largeWallWithHostsIsWhole()
{
    const int count = zoHPCConfigConverter::MaximumWindowsWithoutHost + 4;
    QStringList hosts;
    for (int i = 0; i < count; ++i)
        hosts << QStringLiteral("h%1").arg(i);

    const QDomElement cluster = converted(wallOf(hosts.join(QLatin1Char(' ')), count));

    const QList<QDomElement> windows = windowsOf(cluster);
    QCOMPARE(windows.size(), count);
    QCOMPARE(windows.last().attribute(QStringLiteral("node")), hosts.last());
}

ZO_TEST_MAIN(tst_zoHPCConfigConverterWalls)
#include "tst_zoHPCConfigConverterWalls.moc"
