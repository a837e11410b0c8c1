#include "zoLegacyParts.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <clocale>
#include <cstdlib>

using namespace zoLegacyParts;

namespace
{
// Makes the locale "xx_XX.UTF-8" with a decimal comma in a folder.
bool makeCommaLocale(const QString& folder)
{
    QFile source(folder + QStringLiteral("/comma"));
    if (!source.open(QIODevice::WriteOnly))
        return false;
    source.write("comment_char %\nescape_char /\nLC_NUMERIC\ndecimal_point \"<U002C>\"\nthousands_sep \"\"\n"
                 "grouping -1\nEND LC_NUMERIC\n");
    source.close();
    QProcess maker;
    const QString locale = folder + QStringLiteral("/xx_XX.UTF-8");
    maker.start(QStringLiteral("localedef"), {QStringLiteral("-c"), QStringLiteral("-i"), source.fileName(),
                                              QStringLiteral("-f"), QStringLiteral("UTF-8"), locale});
    return maker.waitForFinished() && QFileInfo::exists(locale + QStringLiteral("/LC_NUMERIC"));
}
} // namespace

// The custom and the oldest layout of a converted legacy configuration: windows with planes of their own.
class tst_zoHPCConfigConverterPlanes final : public zoTestCase
{
    Q_OBJECT

private slots:
    // Custom layout.
    void customRectangleIsWrappedIntoTheWindow_data();
    void customRectangleIsWrappedIntoTheWindow();
    void customDescriptorGivesPlaneAndViewport();
    void customEyeFollowsTypeAndFlag_data();
    void customEyeFollowsTypeAndFlag();
    void skippedStereoDescriptorCountsNoPlane();
    void equalPlanesAreShared_data();
    void equalPlanesAreShared();
    void pipeWithoutDescriptorHasEmptyViewport();
    void windowWithoutAreaHasNoNumbers();
    void cornerIsUpToThreeNumbers_data();
    void cornerIsUpToThreeNumbers();
    void numbersAreReadInTheCLocale();
    void forwardingPipeHostsShiftTheWindows();

    // Oldest layout.
    void oldEntryGivesPlaneWindowAndViewport();
    void oldPlanesAreRoundedToSinglePrecision_data();
    void oldPlanesAreRoundedToSinglePrecision();
    void oldPlanesAreNeverShared();
    void oldRectangleIsNotWrapped();
    void oldStereoSwitchesGiveEyes_data();
    void oldStereoSwitchesGiveEyes();
    void oldFieldsAreSections_data();
    void oldFieldsAreSections();
};

void tst_zoHPCConfigConverterPlanes::customRectangleIsWrappedIntoTheWindow_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("rectangle");
    QTest::addColumn<QStringList>("wrapped");

    QTest::newRow("inside") << "1920 1200"
                            << "10 20 30 40" << QStringList{"10", "20", "30", "40"};
    QTest::newRow("whole-window-stays") << "1920 1200"
                                        << "0 0 1920 1200" << QStringList{"0", "0", "1920", "1200"};
    QTest::newRow("second-screen") << "1920 1200"
                                   << "1920 1200 3840 2400" << QStringList{"0", "0", "1920", "1200"};
    QTest::newRow("across") << "1920 1200"
                            << "2000 0 3000 1200" << QStringList{"80", "0", "1080", "1200"};
    QTest::newRow("negative-keeps-its-sign") << "1920 1200"
                                             << "-10 -1210 -10 0" << QStringList{"-10", "-10", "-10", "0"};
    QTest::newRow("fractions") << "100 100"
                               << "100.5 0.25 200.75 1e2" << QStringList{"0.5", "0.25", "100.75", "100"};
    QTest::newRow("no-numbers") << "1920 1200"
                                << "a b c d" << QStringList{"0", "0", "0", "0"};
    QTest::newRow("window-of-one-pixel") << "1 1"
                                         << "5 5 5 5" << QStringList{"0", "0", "1", "1"};
    QTest::newRow("negative-window") << "-1920 -1200"
                                     << "2000 0 3000 1200" << QStringList{"80", "0", "1080", "1200"};
}

void tst_zoHPCConfigConverterPlanes::customRectangleIsWrappedIntoTheWindow()
{
    QFETCH(QString, size);
    QFETCH(QString, rectangle);
    QFETCH(QStringList, wrapped);

    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 0 0 %1 plane 0 %2 0").arg(size, rectangle)}));

    QCOMPARE(rectangleOf(windowsOf(cluster).first().firstChildElement()), wrapped);
}

void tst_zoHPCConfigConverterPlanes::customDescriptorGivesPlaneAndViewport()
{
    const QString descriptor = QStringLiteral("plane 0 2000 0 3000 1200 0;x 0 0 0 1 0 0 0 1 0");
    const QString first =
        QStringLiteral("\"a\" 5 6 1920 1200 %1|plane 1 0 0 10 10 1;x 0 0 0 2 0 0 0 2 0").arg(descriptor);
    const QString second = QStringLiteral("b 7 8 1920 1200 %1").arg(descriptor);

    const QDomElement cluster = converted(pipesOf({first, second}));

    QCOMPARE(
        lineOf(cluster),
        QStringLiteral(
            "cluster [master [network [node name=a; node name=b]]; display eyeseparation=65 ["
            "window fullscreen=false height=1200 node=a screen=-2 width=1920 x=5 y=6 ["
            "viewport eye=right position=custom projection=projection1 rotate=0 x1=80 x2=1080 y1=0 y2=1200; "
            "viewport eye=left position=custom projection=projection2 rotate=0 x1=0 x2=10 y1=0 y2=10]; "
            "window fullscreen=false height=1200 node=b screen=-2 width=1920 x=7 y=8 ["
            "viewport eye=right position=custom projection=projection1 rotate=0 x1=80 x2=1080 y1=0 "
            "y2=1200]]; "
            "projection name=projection1 type=plane x1=0 x2=1 x3=0 y1=0 y2=0 y3=1 z1=0 z2=0 z3=0; "
            "projection name=projection2 type=plane x1=0 x2=2 x3=0 y1=0 y2=0 y3=2 z1=0 z2=0 z3=0]"));
}

void tst_zoHPCConfigConverterPlanes::customEyeFollowsTypeAndFlag_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("eye"); // empty: no viewport

    QTest::newRow("plane-one") << "plane"
                               << "1"
                               << "left";
    QTest::newRow("plane-one-with-more") << "plane"
                                         << "1;x;y"
                                         << "left";
    QTest::newRow("plane-zero") << "plane"
                                << "0;x"
                                << "right";
    QTest::newRow("plane-two") << "plane"
                               << "2"
                               << "right";
    QTest::newRow("plane-padded-one") << "plane"
                                      << "01"
                                      << "right";
    QTest::newRow("plane-nothing") << "plane"
                                   << ""
                                   << "right";
    QTest::newRow("plane-semicolon-first") << "plane"
                                           << ";1"
                                           << "right";
    QTest::newRow("stereo-one-is-skipped") << "stereo"
                                           << "1"
                                           << "";
    QTest::newRow("stereo-one-with-more-is-skipped") << "stereo"
                                                     << "1;x"
                                                     << "";
    QTest::newRow("stereo-zero") << "stereo"
                                 << "0"
                                 << "stereo";
    QTest::newRow("stereo-nothing") << "stereo"
                                    << ""
                                    << "stereo";
    QTest::newRow("stereo-in-capitals") << "STEREO"
                                        << "0"
                                        << "stereo";
    QTest::newRow("stereo-in-quotes") << "\"Ster\"eo\""
                                      << "1"
                                      << "";
    QTest::newRow("stereo-and-more") << "stereo2"
                                     << "0"
                                     << "right";
    QTest::newRow("no-type") << ""
                             << "0"
                             << "right";
}

void tst_zoHPCConfigConverterPlanes::customEyeFollowsTypeAndFlag()
{
    QFETCH(QString, type);
    QFETCH(QString, flag);
    QFETCH(QString, eye);

    const QDomElement cluster = converted(
        pipesOf({QStringLiteral("a 0 0 100 100 %1 0 0 0 100 100 %2 0 0 0 1 0 0 0 1 0").arg(type, flag)}));

    QCOMPARE(windowsOf(cluster).size(), 1);
    QCOMPARE(eyesOf(cluster), QStringList{eye});
    QCOMPARE(projectionsOf(cluster).size(), eye.isEmpty() ? 0 : 1);
}

void tst_zoHPCConfigConverterPlanes::skippedStereoDescriptorCountsNoPlane()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 0 0 100 100 stereo 0 0 0 9 9 1 9 9 9 9 9 9 9 9 9|"
                                          "stereo 0 0 0 9 9 0 1 1 1 2 2 2 3 3 3")}));

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("name")), QStringList{"projection1"});
    QCOMPARE(cornersOf(projectionsOf(cluster).first()),
             (QStringList{"1", "1", "1", "2", "2", "2", "3", "3", "3"}));
    QCOMPARE(eyesOf(cluster), QStringList{"stereo"});
}

void tst_zoHPCConfigConverterPlanes::equalPlanesAreShared_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("shared");

    QTest::newRow("same-text") << "0 0 0 1 0 0 0 1 0"
                               << "0 0 0 1 0 0 0 1 0" << true;
    QTest::newRow("same-numbers") << "0 0 0 1 0 0 0 1 0"
                                  << "0.0 0 0 1e0 0 0 0 +1 0x0" << true;
    QTest::newRow("negative-zero") << "0 0 0 1 0 0 0 1 0"
                                   << "-0 0 0 1 -0 0 0 1 0" << true;
    QTest::newRow("another-plane") << "0 0 0 1 0 0 0 1 0"
                                   << "0 0 0 2 0 0 0 1 0" << false;
    QTest::newRow("another-sign") << "0 0 0 1 0 0 0 1 0"
                                  << "0 0 0 -1 0 0 0 1 0" << false;
    QTest::newRow("joined-texts-collide") << "1 23 0 0 0 0 0 0 0"
                                          << "12 3 0 0 0 0 0 0 0" << true;
    QTest::newRow("differ-in-the-seventh-digit") << "1.000001 0 0 0 0 0 0 0 0"
                                                 << "1.000002 0 0 0 0 0 0 0 0" << true;
    QTest::newRow("differ-in-the-sixth-digit") << "1.00001 0 0 0 0 0 0 0 0"
                                               << "1.00002 0 0 0 0 0 0 0 0" << false;
    QTest::newRow("large-numbers-read-alike") << "1000000 0 0 0 0 0 0 0 0"
                                              << "1000001 0 0 0 0 0 0 0 0" << true;
}

void tst_zoHPCConfigConverterPlanes::equalPlanesAreShared()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(bool, shared);
    const QString pipe = QStringLiteral("%1 0 0 100 100 plane 0 0 0 100 100 0 %2");

    const QDomElement cluster =
        converted(pipesOf({pipe.arg(QStringLiteral("a"), first), pipe.arg(QStringLiteral("b"), second)}));

    QCOMPARE(projectionsOf(cluster).size(), shared ? 1 : 2);
    QCOMPARE(windowsOf(cluster).at(1).firstChildElement().attribute(QStringLiteral("projection")),
             shared ? QStringLiteral("projection1") : QStringLiteral("projection2"));
}

void tst_zoHPCConfigConverterPlanes::pipeWithoutDescriptorHasEmptyViewport()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 1 2 300 400"), QStringLiteral("b 1 2 300 400 ||")}));

    QCOMPARE(projectionsOf(cluster).size(), 1);
    QCOMPARE(cornersOf(projectionsOf(cluster).first()),
             (QStringList{"0", "0", "0", "0", "0", "0", "0", "0", "0"}));
    const QList<QDomElement> windows = windowsOf(cluster);
    QCOMPARE(lineOf(windows.at(0)),
             QStringLiteral(
                 "window fullscreen=false height=400 node=a screen=-2 width=300 x=1 y=2 [viewport eye=right "
                 "position=custom projection=projection1 rotate=0 x1=0 x2=0 y1=0 y2=0]"));
    QCOMPARE(childrenOf(windows.at(1)).size(), 3);
}

void tst_zoHPCConfigConverterPlanes::windowWithoutAreaHasNoNumbers()
{
    const QDomElement cluster = converted(pipesOf({QStringLiteral("a 0 0 0 100 plane 0 1 2 3 4 0")}));

    QCOMPARE(rectangleOf(windowsOf(cluster).first().firstChildElement()),
             (QStringList{"nan", "2", "nan", "4"}));
}

void tst_zoHPCConfigConverterPlanes::cornerIsUpToThreeNumbers_data()
{
    QTest::addColumn<QString>("fields");
    QTest::addColumn<QStringList>("corners");

    QTest::newRow("nine") << "1 2 3 4 5 6 7 8 9" << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9"};
    QTest::newRow("commas-in-one-field")
        << "1,2,3 x y 4 5 6 7 8 9" << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9"};
    QTest::newRow("rest-is-ignored") << "1,2,3,4 5 6 7 8 9 1 1 1"
                                     << QStringList{"1", "2", "3", "7", "8", "9", "1", "1", "1"};
    QTest::newRow("tabs-and-newlines")
        << "1\t2\n3 , ,,, 4 5 6 7 8 9" << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9"};
    QTest::newRow("missing") << "1 2" << QStringList{"1", "2", "0", "0", "0", "0", "0", "0", "0"};
    QTest::newRow("double-blank-is-an-empty-field")
        << "1  2 3 4 5 6 7 8" << QStringList{"1", "2", "0", "3", "4", "5", "6", "7", "8"};
    QTest::newRow("no-number-is-zero")
        << "x 2 y3 4z 5.5.5 -6e2 7 8 9" << QStringList{"0", "2", "0", "4", "5.5", "-600", "7", "8", "9"};
    QTest::newRow("double-precision")
        << "0.1 0 0 0 0 0 0 0 0"
        << QStringList{"0.10000000000000001", "0", "0", "0", "0", "0", "0", "0", "0"};
    QTest::newRow("forms-of-the-runtime")
        << "0x1A inf -infinity +1 .5 5. 1e400 1e-400 1E+1"
        << QStringList{"26", "inf", "-inf", "1", "0.5", "5", "inf", "0", "10"};
    QTest::newRow("letters-beyond-latin") << QStringLiteral("1\u20ac 2\u00e4 \u20ac 4 5 6 7 8 9")
                                          << QStringList{"1", "2", "0", "4", "5", "6", "7", "8", "9"};
}

void tst_zoHPCConfigConverterPlanes::cornerIsUpToThreeNumbers()
{
    QFETCH(QString, fields);
    QFETCH(QStringList, corners);

    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 0 0 100 100 plane 0 0 0 100 100 0 %1").arg(fields)}));

    QCOMPARE(cornersOf(projectionsOf(cluster).first()), corners);
}

void tst_zoHPCConfigConverterPlanes::numbersAreReadInTheCLocale()
{
    const QTemporaryDir directory;
    if (!makeCommaLocale(directory.path()))
        QSKIP("no locale can be made here");
    const QByteArray pathBefore = qgetenv("LOCPATH");
    const QByteArray before = std::setlocale(LC_NUMERIC, nullptr);
    qputenv("LOCPATH", directory.path().toUtf8());
    QVERIFY(std::setlocale(LC_NUMERIC, "xx_XX.UTF-8"));
    const double byLocale = std::strtod("0.5", nullptr);

    const QDomElement custom =
        converted(pipesOf({QStringLiteral("a 0 0 100 100 p 0 0.5 0 9 9 0 0.5 0 0 0 0 0 0 0 0")}));
    const QDomElement old = converted(
        {{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 9 9 0 0 0.5 1 0.5 0 0 0 0 0 0 0 0")}});
    std::setlocale(LC_NUMERIC, before.constData());
    qputenv("LOCPATH", pathBefore);
    if (pathBefore.isNull())
        qunsetenv("LOCPATH");

    QCOMPARE(byLocale, 0.0); // the locale is in force: the point ends the number
    QCOMPARE(cornersOf(projectionsOf(custom).first()).first(), QStringLiteral("0.5"));
    QCOMPARE(rectangleOf(windowsOf(custom).first().firstChildElement()).first(), QStringLiteral("0.5"));
    QCOMPARE(cornersOf(projectionsOf(old).first()).first(), QStringLiteral("0.5"));
}

void tst_zoHPCConfigConverterPlanes::forwardingPipeHostsShiftTheWindows()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("m[forwards=a|b] 1 0 9 9"), QStringLiteral("c 2 0 9 9")}));

    QCOMPARE(placesOf(cluster), (QStringList{"m 1 0", "a 2 0"}));
}

void tst_zoHPCConfigConverterPlanes::oldEntryGivesPlaneWindowAndViewport()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterHosts"),
                    QStringLiteral("\"a\" 1 2 300 400 0 0.25 0.5 1 10 20 30 40 50 60 70 80 90 "
                                   "x y z,b 5 6 7 8")}});

    QCOMPARE(
        lineOf(cluster),
        QStringLiteral(
            "cluster [master [network [node name=a; node name=b]]; display eyeseparation=65 ["
            "window fullscreen=false height=400 node=a screen=-2 width=300 x=1 y=2 ["
            "viewport eye=mono position=custom projection=projection1 rotate=0 x1=0 x2=0.5 y1=0.25 y2=1]; "
            "window fullscreen=false height=8 node=b screen=-2 width=7 x=5 y=6 ["
            "viewport eye=mono position=custom projection=projection2 rotate=0 x1=0 x2=0 y1=0 y2=0]]; "
            "projection name=projection1 type=plane x1=10 x2=40 x3=70 y1=20 y2=50 y3=80 z1=30 z2=60 z3=90; "
            "projection name=projection2 type=plane x1=0 x2=0 x3=0 y1=0 y2=0 y3=0 z1=0 z2=0 z3=0]"));
}

void tst_zoHPCConfigConverterPlanes::oldPlanesAreRoundedToSinglePrecision_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rounded");

    QTest::newRow("tenth") << "0.1"
                           << "0.10000000149011612";
    QTest::newRow("negative-tenth") << "-0.1"
                                    << "-0.10000000149011612";
    QTest::newRow("half-is-exact") << "0.5"
                                   << "0.5";
    QTest::newRow("beyond-24-bits") << "16777217"
                                    << "16777216";
    QTest::newRow("metres") << "1234.567"
                            << "1234.5670166015625";
    QTest::newRow("rounded-once") << "1.00000017881393432617187499"
                                  << "1.0000001192092896";
    QTest::newRow("overflow") << "1e39"
                              << "inf";
    QTest::newRow("underflow") << "1e-50"
                               << "0";
}

void tst_zoHPCConfigConverterPlanes::oldPlanesAreRoundedToSinglePrecision()
{
    QFETCH(QString, text);
    QFETCH(QString, rounded);

    const QDomElement cluster = converted(
        {{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 9 9 0 0 0 0 0 0 0 0 0 0 0 0 ") + text}});

    QCOMPARE(projectionsOf(cluster).first().attribute(QStringLiteral("z3")), rounded);
}

void tst_zoHPCConfigConverterPlanes::oldPlanesAreNeverShared()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 9 9,b 0 0 9 9")}});

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("name")),
             (QStringList{"projection1", "projection2"}));
    QCOMPARE(windowsOf(cluster).at(1).firstChildElement().attribute(QStringLiteral("projection")),
             QStringLiteral("projection2"));
}

void tst_zoHPCConfigConverterPlanes::oldRectangleIsNotWrapped()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 100 100 150 -250 0.1 1e3")}});

    QCOMPARE(rectangleOf(windowsOf(cluster).first().firstChildElement()),
             (QStringList{"150", "-250", "0.10000000000000001", "1000"}));
}

void tst_zoHPCConfigConverterPlanes::oldStereoSwitchesGiveEyes_data()
{
    QTest::addColumn<QString>("active");
    QTest::addColumn<QString>("passive");
    QTest::addColumn<QString>("eyes");

    QTest::newRow("neither") << "0"
                             << "0"
                             << "mono";
    QTest::newRow("active") << "1"
                            << "0"
                            << "stereo";
    QTest::newRow("passive") << "0"
                             << "1"
                             << "left right";
    QTest::newRow("active-wins") << "1"
                                 << "1"
                                 << "stereo";
    QTest::newRow("only-one-is-on") << "true"
                                    << "2"
                                    << "mono";
    QTest::newRow("empty") << ""
                           << ""
                           << "mono";
}

void tst_zoHPCConfigConverterPlanes::oldStereoSwitchesGiveEyes()
{
    QFETCH(QString, active);
    QFETCH(QString, passive);
    QFETCH(QString, eyes);

    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 9 9,b 0 0 9 9")},
                   {QStringLiteral("zoClusterActiveStereo"), active},
                   {QStringLiteral("zoClusterPassiveStereo"), passive}});

    QCOMPARE(eyesOf(cluster), (QStringList{eyes, eyes}));
    for (const QDomElement& window : windowsOf(cluster)) {
        QStringList first = rectangleOf(window.firstChildElement());
        for (const QDomElement& viewport : childrenOf(window)) {
            QCOMPARE(rectangleOf(viewport), first);
            QCOMPARE(viewport.attribute(QStringLiteral("projection")),
                     window.firstChildElement().attribute(QStringLiteral("projection")));
        }
    }
}

void tst_zoHPCConfigConverterPlanes::oldFieldsAreSections_data()
{
    QTest::addColumn<QString>("hosts");

    QTest::newRow("one") << "a 1 2 3 4 5 6 7 8";
    QTest::newRow("trailing-comma") << "a 1 2 3 4,";
    QTest::newRow("leading-comma") << ",a 1 2 3 4";
    QTest::newRow("commas-only") << ",,,";
    QTest::newRow("blanks-only") << "   ";
    QTest::newRow("double-blanks") << "a  1   2 3 4 5,b 1  2  3";
    QTest::newRow("trailing-blanks") << "a 1 2 3   ,b  ";
    QRandomGenerator random(4711);
    const QString letters = QStringLiteral("ab1234   ,,.-");
    for (int i = 0; i < 200; ++i) {
        QString text = QStringLiteral("h");
        const int length = int(random.bounded(60U));
        for (int j = 0; j < length; ++j)
            text += letters.at(int(random.bounded(quint32(letters.size()))));
        QTest::addRow("random-%d", i) << text;
    }
}

void tst_zoHPCConfigConverterPlanes::oldFieldsAreSections()
{
    QFETCH(QString, hosts);
    const QString blank = QStringLiteral(" ");
    const QString comma = QStringLiteral(",");

    const QDomElement cluster = converted({{QStringLiteral("zoClusterHosts"), hosts}});

    const QList<QDomElement> windows = windowsOf(cluster);
    const QList<QDomElement> nodes = childrenOf(networkOf(cluster));
    QCOMPARE(windows.size(), hosts.count(comma) + 1);
    QCOMPARE(nodes.size(), windows.size());
    for (int i = 0; i < windows.size(); ++i) {
        const QString entry = hosts.section(comma, i, i);
        QCOMPARE(nodes.at(i).attribute(QStringLiteral("name")), entry.section(blank, 0, 0));
        QCOMPARE(windows.at(i).attribute(QStringLiteral("x")).toInt(), entry.section(blank, 1, 1).toInt());
        QCOMPARE(windows.at(i).attribute(QStringLiteral("y")).toInt(), entry.section(blank, 2, 2).toInt());
        QCOMPARE(windows.at(i).attribute(QStringLiteral("width")).toInt(),
                 entry.section(blank, 3, 3).toInt());
        QCOMPARE(windows.at(i).attribute(QStringLiteral("height")).toInt(),
                 entry.section(blank, 4, 4).toInt());
        const QStringList rectangle = rectangleOf(windows.at(i).firstChildElement());
        for (int j = 0; j < 4; ++j)
            QCOMPARE(rectangle.at(j).toDouble(), entry.section(blank, 5 + j, 5 + j).toDouble());
    }
}

ZO_TEST_MAIN(tst_zoHPCConfigConverterPlanes)
#include "tst_zoHPCConfigConverterPlanes.moc"
