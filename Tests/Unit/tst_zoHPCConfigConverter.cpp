#include "zoLegacyParts.h"
#include "zoTestCase.h"

#include <zoHPCConfigConverter.h>

#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cstdlib>

using namespace zoLegacyParts;

using Remark = zoHPCConfigConverter::Remark;

Q_DECLARE_METATYPE(Remark::Kind)

namespace
{

QList<Remark::Kind> remarkKinds(const QString& text)
{
    zoHPCConfigConverter converter;
    converter.convert(text);
    QList<Remark::Kind> kinds;
    const QList<Remark> remarks = converter.remarks();
    for (const Remark& remark : remarks)
        kinds << remark.kind;
    return kinds;
}

// Where two elements differ, empty when they are alike in tag, attributes, text and children.
QString differenceOf(const QDomElement& actual, const QDomElement& expected, const QString& path)
{
    const QString here = path + QLatin1Char('/') + expected.tagName();
    if (actual.tagName() != expected.tagName())
        return here + QStringLiteral(": is ") + actual.tagName();
    QSet<QString> names;
    for (const QDomNamedNodeMap& map : {actual.attributes(), expected.attributes()}) {
        for (int i = 0; i < map.count(); ++i)
            names << map.item(i).nodeName();
    }
    for (const QString& name : qAsConst(names)) {
        if (actual.hasAttribute(name) != expected.hasAttribute(name))
            return QStringLiteral("%1@%2: only on one side").arg(here, name);
        if (actual.attribute(name) != expected.attribute(name)) {
            return QStringLiteral("%1@%2: is \"%3\", expected \"%4\"")
                .arg(here, name, actual.attribute(name), expected.attribute(name));
        }
    }
    const QList<QDomElement> actualChildren = childrenOf(actual);
    const QList<QDomElement> expectedChildren = childrenOf(expected);
    if (actualChildren.size() != expectedChildren.size()) {
        return QStringLiteral("%1: has %2 children, expected %3")
            .arg(here, QString::number(actualChildren.size()), QString::number(expectedChildren.size()));
    }
    for (int i = 0; i < actualChildren.size(); ++i) {
        const QString difference =
            differenceOf(actualChildren.at(i), expectedChildren.at(i), here + QStringLiteral("[%1]").arg(i));
        if (!difference.isEmpty())
            return difference;
    }
    return QString();
}
} // namespace

// The conversion of legacy configurations: parameters, mode and options, remarks, whole files.
class tst_zoHPCConfigConverter final : public zoTestCase
{
    Q_OBJECT

private slots:
    // The document and the text of parameters.
    void emptyOrUnreadableInputGivesTheSkeleton_data();
    void emptyOrUnreadableInputGivesTheSkeleton();
    void resultIsIndentedByOneBlank();
    void rootHasNoVersionAndNoProlog();
    void keysAreFoundAtAnyDepth();
    void valueIsDecodedByType_data();
    void valueIsDecodedByType();
    void keysInsideOneAnotherShareTheirText();
    void deeplyNestedKeysAreReadInTime();
    void keyWithoutNameIsAParameterWithoutName();
    void laterKeyReplacesTheEarlier();
    void unknownKeysChangeNothing();
    void parameterCountTellsWhetherItWasALegacyText();
    void secondConversionAddsToTheHostList();

    // The layout mode.
    void modeIsChosenByFirstRuleThatMatches_data();
    void modeIsChosenByFirstRuleThatMatches();
    void raytracingHasHostsAndNoDisplays();

    // Options.
    void compressionLevelBecomesOptions_data();
    void compressionLevelBecomesOptions();
    void superSamplingIsWrittenUnlessZero_data();
    void superSamplingIsWrittenUnlessZero();
    void eyeSeparationIsAlwaysWritten_data();
    void eyeSeparationIsAlwaysWritten();
    void zeroParallaxIsTheDistanceOfTheWall_data();
    void zeroParallaxIsTheDistanceOfTheWall();
    void edgeBlendingIsOnForOneOnly_data();
    void edgeBlendingIsOnForOneOnly();

    // Remarks.
    void remarksTellWhatChanged_data();
    void remarksTellWhatChanged();
    void remarksOfTheLastConversionOnly();
    void remarksKnowTheirPlace_data();
    void remarksKnowTheirPlace();
    void remarksPassOverIgnoredParameters();
    void kindsHaveDifferentWords();

    // Files and sizes.
    void corpusConvertsAsRecorded_data();
    void corpusConvertsAsRecorded();
    void everyTruncationOfAFileConverts();
    void largeInputsAreConvertedWhole_data();
    void largeInputsAreConvertedWhole();
};

void tst_zoHPCConfigConverter::emptyOrUnreadableInputGivesTheSkeleton_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("wellFormed"); // else the log says so

    QTest::newRow("null") << QString() << true;
    QTest::newRow("empty") << QStringLiteral("") << true;
    QTest::newRow("not-xml") << QStringLiteral("zoClusterPipe0=a") << false;
    QTest::newRow("binary") << QStringLiteral(u"\u0001\ufffd<key>") << false;
    QTest::newRow("cut-off-after-a-key") << QStringLiteral("<c><key name='zoClusterPipe0'>a</key>") << false;
    QTest::newRow("two-roots") << QStringLiteral("<key name='zoClusterPipe0'>a</key><key/>") << false;
    QTest::newRow("no-keys") << QStringLiteral("<config/>") << true;
    QTest::newRow("keys-of-another-case")
        << QStringLiteral("<c><Key name='zoClusterPipe0'>a</Key></c>") << true;
    QTest::newRow("keys-with-a-prefix")
        << QStringLiteral("<c xmlns:o='u'><o:key name='zoClusterPipe0'>a</o:key></c>") << true;
}

void tst_zoHPCConfigConverter::emptyOrUnreadableInputGivesTheSkeleton()
{
    QFETCH(QString, text);
    QFETCH(bool, wellFormed);
    if (!wellFormed)
        expectMessage(QtCriticalMsg, notWellFormed());

    const QDomElement cluster = converted(text);

    QCOMPARE(lineOf(cluster), QStringLiteral("cluster [master [network]; display eyeseparation=65]"));
}

void tst_zoHPCConfigConverter::resultIsIndentedByOneBlank()
{
    const QString text = zoHPCConfigConverter().convert(legacyText(pipesOf({QStringLiteral("a 1 2 3 4")})));

    const QStringList lines = text.split(QLatin1Char('\n'));
    QCOMPARE(lines.at(0), QStringLiteral("<cluster>"));
    QCOMPARE(lines.at(1), QStringLiteral(" <master>"));
    QCOMPARE(lines.at(2), QStringLiteral("  <network>"));
    QCOMPARE(lines.at(3), QStringLiteral("   <node name=\"a\"/>"));
    QCOMPARE(lines.at(lines.size() - 2), QStringLiteral("</cluster>"));
    QCOMPARE(lines.last(), QString());
}

void tst_zoHPCConfigConverter::rootHasNoVersionAndNoProlog()
{
    const QDomDocument document = parsed(zoHPCConfigConverter().convert(QString()));

    QCOMPARE(document.childNodes().count(), 1);
    QCOMPARE(document.documentElement().attributes().count(), 0);
}

void tst_zoHPCConfigConverter::keysAreFoundAtAnyDepth()
{
    const QString text = QStringLiteral("<key name='zoClusterProjectionType' type='x'>Raytracing"
                                        "<a><b><key name='zoClusterEyeSeparation'>70</key></b></a></key>");

    const QDomElement cluster = converted(text);

    // The outer value holds the inner text, too, as an element's text does; so it is no mode any more.
    QCOMPARE(displayOf(cluster).attribute(QStringLiteral("eyeseparation")), QStringLiteral("70"));
    zoHPCConfigConverter converter;
    converter.convert(text);
    QCOMPARE(converter.parameterCount(), 2);
}

void tst_zoHPCConfigConverter::valueIsDecodedByType_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QString>("value");

    const QString name = QStringLiteral("name='zoClusterEyeSeparation'");
    QTest::newRow("base64") << QStringLiteral("<key %1 type='QString'>NzA=</key>").arg(name) << "70";
    QTest::newRow("base64-of-utf8") << QStringLiteral("<key %1 type='QString'>w6TigqzwnZ+Y</key>").arg(name)
                                    << QStringLiteral(u"\u00e4\u20ac\U0001d7d8");
    QTest::newRow("base64-without-padding")
        << QStringLiteral("<key %1 type='QString'>NzA</key>").arg(name) << "70";
    QTest::newRow("base64-in-lines") << QStringLiteral("<key %1 type='QString'>\n N\n zA= \n</key>").arg(name)
                                     << "70";
    QTest::newRow("base64-ends-at-nul")
        << QStringLiteral("<key %1 type='QString'>NzAAODA=</key>").arg(name) << "70";
    QTest::newRow("base64-with-strange-letters")
        << QStringLiteral("<key %1 type='QString'>N\u20acz\u00e4A=</key>").arg(name) << "70";
    QTest::newRow("base64-empty") << QStringLiteral("<key %1 type='QString'></key>").arg(name) << "";
    QTest::newRow("base64-of-nothing") << QStringLiteral("<key %1 type='QString'>!!</key>").arg(name) << "";
    QTest::newRow("base64-in-cdata")
        << QStringLiteral("<key %1 type='QString'><![CDATA[NzA=]]></key>").arg(name) << "70";
    QTest::newRow("other-type") << QStringLiteral("<key %1 type='int'>NzA=</key>").arg(name) << "NzA=";
    QTest::newRow("no-type") << QStringLiteral("<key %1>NzA=</key>").arg(name) << "NzA=";
    QTest::newRow("type-in-another-case")
        << QStringLiteral("<key %1 type='qstring'>NzA=</key>").arg(name) << "NzA=";
    QTest::newRow("empty-type") << QStringLiteral("<key %1 type=''>NzA=</key>").arg(name) << "NzA=";
    QTest::newRow("text-as-it-stands") << QStringLiteral("<key %1 type='int'> 70 </key>").arg(name) << " 70 ";
    QTest::newRow("entities") << QStringLiteral("<key %1 type='int'>&lt;7&#48;&amp;</key>").arg(name)
                              << "<70&";
    QTest::newRow("cdata") << QStringLiteral("<key %1 type='int'>7<![CDATA[<0>]]>1</key>").arg(name)
                           << "7<0>1";
    QTest::newRow("text-of-descendants")
        << QStringLiteral("<key %1 type='int'>7<a>0<b>1</b></a>2</key>").arg(name) << "7012";
    QTest::newRow("comments-are-no-text")
        << QStringLiteral("<key %1 type='int'>7<!-- 5 -->0</key>").arg(name) << "70";
    QTest::newRow("empty-element") << QStringLiteral("<key %1/>").arg(name) << "";
}

void tst_zoHPCConfigConverter::valueIsDecodedByType()
{
    QFETCH(QString, element);
    QFETCH(QString, value);

    const QDomElement cluster = converted(QStringLiteral("<config>%1</config>").arg(element));

    QCOMPARE(displayOf(cluster).attribute(QStringLiteral("eyeseparation"), QStringLiteral("missing")), value);
}

void tst_zoHPCConfigConverter::keysInsideOneAnotherShareTheirText()
{
    // In document order, the inner one comes later and wins.
    const QDomElement same = converted(QStringLiteral(
        "<key name='zoClusterEyeSeparation'>1<key name='zoClusterEyeSeparation'>2</key>3</key>"));
    const QDomElement outer =
        converted(QStringLiteral("<key name='zoClusterEyeSeparation'>1<key>2<b>3</b></key>4</key>"));

    QCOMPARE(displayOf(same).attribute(QStringLiteral("eyeseparation")), QStringLiteral("2"));
    QCOMPARE(displayOf(outer).attribute(QStringLiteral("eyeseparation")), QStringLiteral("1234"));
}

void tst_zoHPCConfigConverter::deeplyNestedKeysAreReadInTime()
{
    const int depth = 5000;
    QString text;
    for (int i = 0; i < depth; ++i)
        text += QStringLiteral("<key name='zoClusterPipe%1'>h%1 0 0 1 1 ").arg(i);
    text += QStringLiteral("</key>").repeated(depth);
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("^Legacy parameters inside more than 100 others")));
    zoHPCConfigConverter converter;

    const QDomElement cluster = parsed(converter.convert(text)).documentElement();

    QCOMPARE(converter.parameterCount(), zoHPCConfigConverter::MaximumNestedParameters);
    QCOMPARE(windowsOf(cluster).size(), zoHPCConfigConverter::MaximumNestedParameters);
    QCOMPARE(windowsOf(cluster).last().attribute(QStringLiteral("node")), QStringLiteral("h99"));
}

void tst_zoHPCConfigConverter::keyWithoutNameIsAParameterWithoutName()
{
    zoHPCConfigConverter converter;

    converter.convert(QStringLiteral("<config><key>a</key><key name=''>b</key></config>"));

    QCOMPARE(converter.parameterCount(), 1);
}

void tst_zoHPCConfigConverter::laterKeyReplacesTheEarlier()
{
    const QDomElement cluster = converted({{QStringLiteral("zoClusterEyeSeparation"), QStringLiteral("70")},
                                           {QStringLiteral("zoClusterEyeSeparation"), QStringLiteral("80")}});

    QCOMPARE(displayOf(cluster).attribute(QStringLiteral("eyeseparation")), QStringLiteral("80"));
}

void tst_zoHPCConfigConverter::unknownKeysChangeNothing()
{
    const QString with = zoHPCConfigConverter().convert(
        legacyText({{QStringLiteral("zoClusterPWYOverlap"), QStringLiteral("7")},
                    {QStringLiteral("zoClusterpipe0"), QStringLiteral("a 1 2 3 4")}}));

    QCOMPARE(with, zoHPCConfigConverter().convert(QString()));
}

void tst_zoHPCConfigConverter::parameterCountTellsWhetherItWasALegacyText()
{
    zoHPCConfigConverter converter;
    QCOMPARE(converter.parameterCount(), 0);

    converter.convert(legacyText({{QStringLiteral("a"), QString()}, {QStringLiteral("b"), QString()}}));
    QCOMPARE(converter.parameterCount(), 2);

    converter.convert(QStringLiteral("<cluster version='1'/>"));
    QCOMPARE(converter.parameterCount(), 0);
}

void tst_zoHPCConfigConverter::secondConversionAddsToTheHostList()
{
    zoHPCConfigConverter converter;
    converter.convert(legacyText(wallOf(QStringLiteral("a[xpos=1] b[xpos=2]"), 1)));

    const QDomElement cluster =
        parsed(converter.convert(legacyText(wallOf(QStringLiteral("c[xpos=3]"), 3)))).documentElement();

    QCOMPARE(attributesOf(childrenOf(networkOf(cluster)), QStringLiteral("name")), QStringList{"c"});
    QCOMPARE(placesOf(cluster), (QStringList{"a 1 0", "b 2 0", "c 3 0"}));
}

void tst_zoHPCConfigConverter::modeIsChosenByFirstRuleThatMatches_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<QString>("wallEnabled");
    QTest::addColumn<QString>("nodes"); // each source of hosts has its own name

    QTest::newRow("custom") << "Custom"
                            << "old"
                            << "1"
                            << "pipe";
    QTest::newRow("raytracing") << "Raytracing"
                                << "old"
                                << "1"
                                << "ray";
    QTest::newRow("powerwall-wins-over-hosts") << "Powerwall"
                                               << "old"
                                               << "0"
                                               << "wall";
    QTest::newRow("hosts-mean-old") << ""
                                    << "old"
                                    << "1"
                                    << "old";
    QTest::newRow("unknown-type-with-hosts") << "Cave"
                                             << "old"
                                             << "1"
                                             << "old";
    QTest::newRow("blank-is-a-host-list") << ""
                                          << " "
                                          << "1"
                                          << "";
    QTest::newRow("wall-enabled") << ""
                                  << ""
                                  << "1"
                                  << "wall";
    QTest::newRow("wall-disabled") << ""
                                   << ""
                                   << "0"
                                   << "pipe";
    QTest::newRow("wall-switch-empty") << ""
                                       << ""
                                       << ""
                                       << "pipe";
    QTest::newRow("wall-switch-yes") << ""
                                     << ""
                                     << "yes"
                                     << "pipe";
    QTest::newRow("wall-switch-one-with-blank") << ""
                                                << ""
                                                << "1 "
                                                << "pipe";
    QTest::newRow("type-in-lower-case") << "powerwall"
                                        << ""
                                        << ""
                                        << "pipe";
    QTest::newRow("type-with-blank") << "Powerwall "
                                     << ""
                                     << ""
                                     << "pipe";
    QTest::newRow("lower-case-type-with-hosts") << "raytracing"
                                                << "old"
                                                << ""
                                                << "old";
}

void tst_zoHPCConfigConverter::modeIsChosenByFirstRuleThatMatches()
{
    QFETCH(QString, type);
    QFETCH(QString, hosts);
    QFETCH(QString, wallEnabled);
    QFETCH(QString, nodes);

    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterProjectionType"), type},
                   {QStringLiteral("zoClusterHosts"), hosts},
                   {QStringLiteral("zoClusterPWEnable"), wallEnabled},
                   {QStringLiteral("zoClusterPWServers"), QStringLiteral("wall")},
                   {QStringLiteral("zoClusterSortFirstServers"), QStringLiteral("ray")},
                   {QStringLiteral("zoClusterPipe0"), QStringLiteral("pipe 0 0 10 10")}});

    QCOMPARE(attributesOf(childrenOf(networkOf(cluster)), QStringLiteral("name")), QStringList{nodes});
}

void tst_zoHPCConfigConverter::raytracingHasHostsAndNoDisplays()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Raytracing")},
                   {QStringLiteral("zoClusterSortFirstServers"), QStringLiteral("a b m[forwards=c|d]")},
                   {QStringLiteral("zoClusterHosts"), QStringLiteral("old 0 0 10 10")},
                   {QStringLiteral("zoClusterPipe0"), QStringLiteral("pipe 0 0 10 10")}});

    QCOMPARE(projectionsOf(cluster).size(), 0);
    QCOMPARE(windowsOf(cluster).size(), 0);
    // One forwarding list makes the whole text one host.
    QCOMPARE(lineOf(networkOf(cluster)),
             QStringLiteral("network [node name=a b m [network [node name=c; node name=d]]]"));
}

void tst_zoHPCConfigConverter::compressionLevelBecomesOptions_data()
{
    QTest::addColumn<QString>("level");
    QTest::addColumn<QString>("master");

    QTest::newRow("none") << "0"
                          << "master";
    QTest::newRow("lossless") << "1"
                              << "master imagecompression=lossless scenecompression=fast";
    QTest::newRow("lossy-fast") << "2"
                                << "master imagecompression=lossyfast scenecompression=best";
    QTest::newRow("lossy-best-has-no-scene") << "3"
                                             << "master imagecompression=lossybest";
    QTest::newRow("four") << "4"
                          << "master";
    QTest::newRow("empty") << ""
                           << "master";
    QTest::newRow("with-blank") << "1 "
                                << "master";
    QTest::newRow("padded") << "01"
                            << "master";
}

void tst_zoHPCConfigConverter::compressionLevelBecomesOptions()
{
    QFETCH(QString, level);
    QFETCH(QString, master);

    const QDomElement cluster = converted({{QStringLiteral("zoClusterNetworkCompression"), level}});

    QCOMPARE(lineOf(masterOf(cluster)), master + QStringLiteral(" [network]"));
}

void tst_zoHPCConfigConverter::superSamplingIsWrittenUnlessZero_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("written");

    QTest::newRow("zero") << "0" << false;
    QTest::newRow("four") << "4" << true;
    QTest::newRow("text-unchanged") << " 04x" << true;
    QTest::newRow("zero-in-other-form") << "00" << true;
    QTest::newRow("empty") << "" << true;
}

void tst_zoHPCConfigConverter::superSamplingIsWrittenUnlessZero()
{
    QFETCH(QString, value);
    QFETCH(bool, written);

    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterSortFirstStillFrameSupersamplingFactor"), value}});

    QCOMPARE(masterOf(cluster).hasAttribute(QStringLiteral("stillframesupersampling")), written);
    if (written)
        QCOMPARE(masterOf(cluster).attribute(QStringLiteral("stillframesupersampling")), value);
}

void tst_zoHPCConfigConverter::eyeSeparationIsAlwaysWritten_data()
{
    QTest::addColumn<Parameters>("parameters");
    QTest::addColumn<QString>("value");

    const QString key = QStringLiteral("zoClusterEyeSeparation");
    QTest::newRow("missing") << Parameters() << "65";
    QTest::newRow("text-unchanged") << Parameters{{key, QStringLiteral("6.50e1")}} << "6.50e1";
    QTest::newRow("empty") << Parameters{{key, QString()}} << "";
    QTest::newRow("no-number") << Parameters{{key, QStringLiteral("wide")}} << "wide";
}

void tst_zoHPCConfigConverter::eyeSeparationIsAlwaysWritten()
{
    QFETCH(Parameters, parameters);
    QFETCH(QString, value);

    const QDomElement display = displayOf(converted(parameters));

    QVERIFY(display.hasAttribute(QStringLiteral("eyeseparation")));
    QCOMPARE(display.attribute(QStringLiteral("eyeseparation")), value);
}

void tst_zoHPCConfigConverter::zeroParallaxIsTheDistanceOfTheWall_data()
{
    QTest::addColumn<Parameters>("parameters");
    QTest::addColumn<QString>("distance");

    const QString key = QStringLiteral("zoClusterZeroParallax");
    QTest::newRow("missing") << Parameters() << "1500";
    QTest::newRow("fraction") << Parameters{{key, QStringLiteral("2000.5")}} << "2000.5";
    QTest::newRow("exact") << Parameters{{key, QStringLiteral("0.1")}} << "0.10000000000000001";
    QTest::newRow("exponent") << Parameters{{key, QStringLiteral("1e3")}} << "1000";
    QTest::newRow("no-number") << Parameters{{key, QStringLiteral("far")}} << "0";
    QTest::newRow("comma-is-no-number") << Parameters{{key, QStringLiteral("1,5")}} << "0";
    QTest::newRow("empty") << Parameters{{key, QString()}} << "0";
}

void tst_zoHPCConfigConverter::zeroParallaxIsTheDistanceOfTheWall()
{
    QFETCH(Parameters, parameters);
    QFETCH(QString, distance);

    const QDomElement cluster = converted(wallOf(QStringLiteral("a"), 1) + parameters);

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("distance")), QStringList{distance});
}

void tst_zoHPCConfigConverter::edgeBlendingIsOnForOneOnly_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("blending");

    QTest::newRow("one") << "1"
                         << "true";
    QTest::newRow("zero") << "0"
                          << "false";
    QTest::newRow("true") << "true"
                          << "false";
    QTest::newRow("empty") << ""
                           << "false";
}

void tst_zoHPCConfigConverter::edgeBlendingIsOnForOneOnly()
{
    QFETCH(QString, value);
    QFETCH(QString, blending);

    const QDomElement cluster = converted(wallOf(QStringLiteral("a"), 1) +
                                          Parameters{{QStringLiteral("zoEdgeBlendingEnabled"), value}});

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("edgeblending")), QStringList{blending});
}

void tst_zoHPCConfigConverter::remarksTellWhatChanged_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<Remark::Kind>>("kinds");

    using Kind = Remark::Kind;
    using Kinds = QList<Kind>;
    const auto wall = [](const char* servers, int windows, const char* key = "", const char* value = "") {
        return legacyText(wallOf(QLatin1String(servers), windows) +
                          Parameters{{QLatin1String(key), QLatin1String(value)}});
    };
    QTest::newRow("nothing") << wall("a b", 2) << Kinds();
    QTest::newRow("no-parameters") << QStringLiteral("<config/>") << Kinds{Kind::NoParameters};
    QTest::newRow("no-number") << wall("a", 1, "zoClusterPWXRes", "wide") << Kinds{Kind::UnreadNumber};
    QTest::newRow("no-number-for-distance")
        << wall("a", 1, "zoClusterZeroParallax", "far") << Kinds{Kind::UnreadNumber};
    QTest::newRow("no-number-in-fields")
        << legacyText(pipesOf({QStringLiteral("a 0 x 9 9 p 0 0 0 9 9 0")})) << Kinds{Kind::UnreadNumber};
    QTest::newRow("unknown-compression")
        << wall("a", 1, "zoClusterNetworkCompression", "4") << Kinds{Kind::UnknownCompression};
    QTest::newRow("equal-hosts") << wall("a a", 2) << Kinds{Kind::NumberedHosts};
    QTest::newRow("forwards") << wall("m[forwards=a]", 2) << Kinds{Kind::ShiftedHosts};
    QTest::newRow("second-forwards") << wall("m[forwards=a] n[forwards=b]", 3)
                                     << Kinds{Kind::DroppedForwards, Kind::ShiftedHosts};
    QTest::newRow("pipes-after-a-gap")
        << legacyText(pipesOf({QStringLiteral("a 0 0 9 9 p 0 0 0 9 9 0")}) +
                      Parameters{{QStringLiteral("zoClusterPipe2"), QString()},
                                 {QStringLiteral("zoClusterPipe07"), QString()},
                                 {QStringLiteral("zoClusterPipeX"), QString()}})
        << Kinds{Kind::DroppedPipes};
    QTest::newRow("overlap") << wall("a", 1, "zoClusterPWXOverlap", "20") << Kinds{Kind::CopiedOverlap};
    QTest::newRow("offset-across") << wall("a", 1, "zoClusterPWXOffset", "-8") << Kinds{Kind::DroppedOffset};
    QTest::newRow("offset-up") << wall("a", 1, "zoClusterPWYOffset", "8") << Kinds{Kind::DroppedOffset};
    QTest::newRow("no-offset") << wall("a", 1, "zoClusterPWYOffset", "0") << Kinds{};
    QTest::newRow("half-stereo") << wall("a", 1, "zoClusterPWStereoMode", "2") << Kinds{Kind::HalfStereo};
    QTest::newRow("missing-hosts") << wall("a", 3) << Kinds{Kind::MissingHosts};
    QTest::newRow("unused-hosts") << wall("a b c", 1) << Kinds{Kind::UnusedHosts};
    QTest::newRow("empty-window") << legacyText(pipesOf({QStringLiteral("a 0 0 0 9 p 0 0 0 9 9 0")}))
                                  << Kinds{Kind::EmptyWindow};
}

void tst_zoHPCConfigConverter::remarksTellWhatChanged()
{
    QFETCH(QString, text);
    QFETCH(QList<Remark::Kind>, kinds);

    QCOMPARE(remarkKinds(text), kinds);
}

void tst_zoHPCConfigConverter::remarksOfTheLastConversionOnly()
{
    zoHPCConfigConverter converter;
    converter.convert(QString());
    QCOMPARE(converter.remarks().size(), 1);
    QCOMPARE(converter.remarks().first().kind, Remark::Kind::NoParameters);
    QCOMPARE(converter.remarks().first().text, QStringLiteral("The text holds no legacy parameter."));

    converter.convert(legacyText(wallOf(QStringLiteral("a%1 b%2"), 3)));

    QCOMPARE(converter.remarks().size(), 1);
    QCOMPARE(converter.remarks().first().kind, Remark::Kind::MissingHosts);
    QCOMPARE(converter.remarks().first().text, QStringLiteral("1 windows have no node."));
}

void tst_zoHPCConfigConverter::remarksKnowTheirPlace_data()
{
    QTest::addColumn<QString>("lines"); // of parameters, the first in line 2
    QTest::addColumn<Remark::Kind>("kind");
    QTest::addColumn<QString>("parameter");
    QTest::addColumn<int>("line");

    using Kind = Remark::Kind;
    const QString wall = QStringLiteral("zoClusterProjectionType=Powerwall\n");
    QTest::newRow("number") << wall + "zoClusterPWXRes=wide" << Kind::UnreadNumber << "zoClusterPWXRes" << 3;
    QTest::newRow("last-of-a-name-holds") << wall + "zoClusterPWXRes=wide\nzoClusterPWXRes=broad"
                                          << Kind::UnreadNumber << "zoClusterPWXRes" << 4;
    QTest::newRow("position-of-a-host")
        << wall + "zoClusterPWServers=a[xpos=x]" << Kind::UnreadNumber << "zoClusterPWServers" << 3;
    QTest::newRow("field-of-a-pipe") << "zoClusterPipe1=b 0 x 9 9\nzoClusterPipe0=a 0 0 9 9 p 0 0 0 9 9 0"
                                     << Kind::UnreadNumber << "zoClusterPipe1" << 2;
    QTest::newRow("field-of-an-entry")
        << "x=y\nzoClusterHosts=a 0 0 9 9 0 0 1 1,b" << Kind::UnreadNumber << "zoClusterHosts" << 3;
    QTest::newRow("compression") << "x=y\nzoClusterNetworkCompression=9" << Kind::UnknownCompression
                                 << "zoClusterNetworkCompression" << 3;
    QTest::newRow("equal-hosts") << wall + "zoClusterPWServers=a b b" << Kind::NumberedHosts
                                 << "zoClusterPWServers" << 3;
    QTest::newRow("equal-hosts-of-pipes") << "zoClusterPipe0=a\nzoClusterPipe1=b\nzoClusterPipe2=b"
                                          << Kind::NumberedHosts << "zoClusterPipe1" << 3;
    QTest::newRow("second-forwards") << "zoClusterPipe0=a\nzoClusterPipe1=m[forwards=b]n[forwards=c]"
                                     << Kind::DroppedForwards << "zoClusterPipe1" << 3;
    QTest::newRow("shifted-hosts") << "zoClusterProjectionType=Custom\nzoClusterPipe0=a\n"
                                      "zoClusterPipe1=m[forwards=b]\nzoClusterPipe2=o[forwards=p]"
                                   << Kind::ShiftedHosts << "zoClusterPipe1" << 4;
    QTest::newRow("dropped-pipes") << "zoClusterPipe0=a\nzoClusterPipe10=b\nzoClusterPipe2=b"
                                   << Kind::DroppedPipes << "zoClusterPipe2" << 4;
    QTest::newRow("overlap") << wall + "zoClusterPWXOverlap=20" << Kind::CopiedOverlap
                             << "zoClusterPWXOverlap" << 3;
    QTest::newRow("half-stereo") << wall + "zoClusterPWStereoMode=2" << Kind::HalfStereo
                                 << "zoClusterPWStereoMode" << 3;
    QTest::newRow("missing-hosts") << wall + "zoClusterPWServers=a\nzoClusterPWCols=2" << Kind::MissingHosts
                                   << "zoClusterPWServers" << 3;
    QTest::newRow("pipe-without-host") << "zoClusterPipe0=a\nzoClusterPipe1= 0\nzoClusterPipe2=c"
                                       << Kind::MissingHosts << "zoClusterPipe1" << 3;
    QTest::newRow("unused-hosts") << wall + "zoClusterPWServers=a b" << Kind::UnusedHosts
                                  << "zoClusterPWServers" << 3;
    QTest::newRow("unused-forwarded-host")
        << "zoClusterPipe0=a\nzoClusterPipe1=m[forwards=b]" << Kind::UnusedHosts << "zoClusterPipe1" << 3;
    QTest::newRow("empty-window") << "zoClusterPipe0=a 0 0 9 9\nzoClusterPipe1=b 0 0 0 9" << Kind::EmptyWindow
                                  << "zoClusterPipe1" << 3;
    QTest::newRow("parameter-that-is-not-there")
        << wall + "zoClusterPWServers2=a" << Kind::MissingHosts << "zoClusterPWServers" << 1;
}

void tst_zoHPCConfigConverter::remarksKnowTheirPlace()
{
    QFETCH(QString, lines);
    QFETCH(Remark::Kind, kind);
    QFETCH(QString, parameter);
    QFETCH(int, line);
    QString text = QStringLiteral("<config>\n");
    const QStringList list = lines.split(QLatin1Char('\n'));
    for (const QString& entry : list) {
        text += QStringLiteral("  <x/><key name=\"%1\">%2</key>\n")
                    .arg(entry.section(QLatin1Char('='), 0, 0), entry.section(QLatin1Char('='), 1));
    }
    zoHPCConfigConverter converter;

    converter.convert(text + QStringLiteral("</config>"));

    const QList<Remark> remarks = converter.remarks();
    const auto remark = std::find_if(remarks.cbegin(), remarks.cend(),
                                     [kind](const Remark& candidate) { return candidate.kind == kind; });
    QVERIFY(remark != remarks.cend());
    QCOMPARE(remark->parameter, parameter);
    QCOMPARE(remark->line, line);
    QCOMPARE(remark->column, line == 1 ? 1 : 7);
}

void tst_zoHPCConfigConverter::remarksPassOverIgnoredParameters()
{
    const QString nested = QStringLiteral("<key name='zoClusterPWXRes'>\n");
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Legacy parameters inside more than")));
    zoHPCConfigConverter converter;

    converter.convert(QStringLiteral("<config><key name='zoClusterProjectionType'>Powerwall</key>\n") +
                      nested.repeated(zoHPCConfigConverter::MaximumNestedParameters + 20) +
                      QStringLiteral("</key>").repeated(zoHPCConfigConverter::MaximumNestedParameters + 20) +
                      QStringLiteral("</config>"));

    QCOMPARE(converter.remarks().first().kind, Remark::Kind::UnreadNumber);
    QCOMPARE(converter.remarks().first().line, zoHPCConfigConverter::MaximumNestedParameters + 1);
}

void tst_zoHPCConfigConverter::kindsHaveDifferentWords()
{
    QSet<QString> words;
    for (int kind = 0; kind <= int(Remark::Kind::CutWall); ++kind)
        words << Remark::kindName(Remark::Kind(kind));

    QCOMPARE(words.size(), int(Remark::Kind::CutWall) + 1);
    QVERIFY(!words.contains(QString()));
    QCOMPARE(Remark::kindName(Remark::Kind::UnreadNumber), QStringLiteral("unread-number"));
}

void tst_zoHPCConfigConverter::corpusConvertsAsRecorded_data()
{
    QTest::addColumn<QString>("file");

    const QDir directory(QStringLiteral(ZO_TEST_DATA_DIR "/Legacy"));
    const QStringList files = directory.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    QVERIFY2(files.size() >= 25, "the corpus is not complete");
    for (const QString& file : files)
        QTest::newRow(qPrintable(file)) << directory.filePath(file);
}

void tst_zoHPCConfigConverter::corpusConvertsAsRecorded()
{
    QFETCH(QString, file);
    QFile legacy(file);
    QVERIFY(legacy.open(QIODevice::ReadOnly));
    QFile document(file.chopped(4) + QStringLiteral(".zhpc"));
    QVERIFY(document.open(QIODevice::ReadOnly));
    const QDomElement expected = parsed(QString::fromUtf8(document.readAll())).documentElement();
    QVERIFY(!expected.isNull());
    if (QFileInfo(file).fileName().startsWith(QLatin1String("broken-")))
        expectMessage(QtCriticalMsg, notWellFormed());

    const QDomElement actual = converted(QString::fromUtf8(legacy.readAll().constData()));

    QCOMPARE(differenceOf(actual, expected, QString()), QString());
}

void tst_zoHPCConfigConverter::everyTruncationOfAFileConverts()
{
    const QString text = legacyText(wallOf(QStringLiteral("m[forwards=a|b]"), 2)) +
                         legacyText(pipesOf({QStringLiteral("a 0 0 9 9 p 0 0 0 9 9 0 1 2 3")}));
    const QString skeleton = zoHPCConfigConverter().convert(QString());

    // Two roots are not well-formed either, so no prefix but the first document alone converts to more.
    const int whole = text.indexOf(QStringLiteral("</config>")) + QStringLiteral("</config>").size();
    for (int length = 0; length <= text.size(); ++length) {
        if (length > 0 && length != whole)
            expectMessage(QtCriticalMsg, notWellFormed());
        const QString result = zoHPCConfigConverter().convert(text.left(length));
        QCOMPARE(result == skeleton, length != whole);
    }
}

void tst_zoHPCConfigConverter::largeInputsAreConvertedWhole_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("windows");
    QTest::addColumn<int>("viewports");

    // Of 20,000 entries. A quadratic step would show in the run time of the suite; the benchmark measures it.
    QTest::newRow("wall-hosts") << "wall-hosts" << 20000 << 20000 << 20000;
    QTest::newRow("equal-wall-hosts") << "equal-wall-hosts" << 20000 << 20000 << 20000;
    QTest::newRow("pipes") << "pipes" << 20000 << 20000 << 20000;
    QTest::newRow("old-entries") << "old-entries" << 20000 << 20000 << 20000;
    QTest::newRow("descriptors") << "descriptors" << 1 << 1 << 20000;
    QTest::newRow("items-of-one-host") << "items-of-one-host" << 1 << 1 << 1;
    QTest::newRow("forwarded-hosts") << "forwarded-hosts" << 20001 << 1 << 1;
    QTest::newRow("forwards") << "forwards" << 2 << 1 << 1;
}

void tst_zoHPCConfigConverter::largeInputsAreConvertedWhole()
{
    QFETCH(QString, kind);
    const auto text = [&kind](int count) {
        QStringList list;
        if (kind == QLatin1String("forwards"))
            return legacyText(wallOf(QStringLiteral("h[forwards=").repeated(count), 1));
        for (int i = 0; i < count; ++i) {
            if (kind == QLatin1String("pipes"))
                list << QStringLiteral("h%1 0 0 9 9 p 0 0 0 9 9 0 %1 0 0 1 0 0 0 1 0").arg(i);
            else if (kind == QLatin1String("old-entries"))
                list << QStringLiteral("h%1 0 0 9 9 0 0 1 1 0 0 0 1 0 0 0 1 0").arg(i);
            else if (kind == QLatin1String("descriptors"))
                list << QStringLiteral("p 0 0 0 9 9 0 %1 0 0 1 0 0 0 1 0").arg(i);
            else if (kind == QLatin1String("items-of-one-host"))
                list << QStringLiteral("xpos=%1").arg(i);
            else if (kind == QLatin1String("equal-wall-hosts"))
                list << QStringLiteral("h%1[xpos=%1]").arg(i / 2);
            else
                list << QStringLiteral("h%1").arg(i);
        }
        if (kind == QLatin1String("pipes"))
            return legacyText(pipesOf(list));
        if (kind == QLatin1String("old-entries"))
            return legacyText({{QStringLiteral("zoClusterHosts"), list.join(QLatin1Char(','))}});
        if (kind == QLatin1String("descriptors"))
            return legacyText(pipesOf({QStringLiteral("a 0 0 9 9 ") + list.join(QLatin1Char('|'))}));
        if (kind == QLatin1String("items-of-one-host"))
            return legacyText(wallOf(QStringLiteral("a[%1]").arg(list.join(QLatin1Char(','))), 1));
        if (kind == QLatin1String("forwarded-hosts"))
            return legacyText(wallOf(QStringLiteral("m[forwards=%1]").arg(list.join(QLatin1Char('|'))), 1));
        return legacyText(wallOf(list.join(QLatin1Char(' ')), count));
    };
    QFETCH(int, nodes);
    QFETCH(int, windows);
    QFETCH(int, viewports);

    const QString converted = zoHPCConfigConverter().convert(text(20000));

    QCOMPARE(converted.count(QStringLiteral("<node ")), nodes);
    QCOMPARE(converted.count(QStringLiteral("<window ")), windows);
    QCOMPARE(converted.count(QStringLiteral("<viewport ")), viewports);
}

ZO_TEST_MAIN(tst_zoHPCConfigConverter)
#include "tst_zoHPCConfigConverter.moc"
