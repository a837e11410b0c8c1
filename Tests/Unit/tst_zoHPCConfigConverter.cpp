#include "zoTestCase.h"

#include <zoHPCConfigConverter.h>
#include <zoHPCDocumentText.h>

#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>

#include <clocale>
#include <cstdlib>

using Remark = zoHPCConfigConverter::Remark;
using Parameters = QList<QPair<QString, QString>>;

Q_DECLARE_METATYPE(Remark::Kind)

namespace
{
// The text of one parameter element; the type "QString" encodes the value.
QString keyElement(const QString& name, const QString& value, const QString& type = QStringLiteral("int"))
{
    const bool encode = type == QLatin1String("QString");
    const QString text = encode ? QString::fromLatin1(value.toUtf8().toBase64()) : value.toHtmlEscaped();
    return QStringLiteral("<key name=\"%1\" type=\"%2\">%3</key>").arg(name.toHtmlEscaped(), type, text);
}

QString legacyText(const Parameters& parameters)
{
    QString text = QStringLiteral("<config>");
    for (const auto& parameter : parameters)
        text += keyElement(parameter.first, parameter.second, QStringLiteral("QString"));
    return text + QStringLiteral("</config>");
}

QDomDocument parsed(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::parse(text, document);
    return document;
}

QRegularExpression notWellFormed()
{
    return QRegularExpression(QStringLiteral("line \\d+, column \\d+: "));
}

// Converts in a fresh converter.
QDomElement converted(const QString& text)
{
    return parsed(zoHPCConfigConverter().convert(text)).documentElement();
}

QDomElement converted(const Parameters& parameters)
{
    return converted(legacyText(parameters));
}

QList<QDomElement> childrenOf(const QDomElement& parent, const QString& tag = QString())
{
    QList<QDomElement> found;
    for (QDomElement e = parent.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag))
        found.append(e);
    return found;
}

QDomElement masterOf(const QDomElement& cluster)
{
    return cluster.firstChildElement(QStringLiteral("master"));
}

QDomElement networkOf(const QDomElement& cluster)
{
    return masterOf(cluster).firstChildElement(QStringLiteral("network"));
}

QDomElement displayOf(const QDomElement& cluster)
{
    return cluster.firstChildElement(QStringLiteral("display"));
}

QList<QDomElement> windowsOf(const QDomElement& cluster)
{
    return childrenOf(displayOf(cluster), QStringLiteral("window"));
}

QList<QDomElement> projectionsOf(const QDomElement& cluster)
{
    return childrenOf(cluster, QStringLiteral("projection"));
}

// An element on one line: tag, attributes sorted, children in brackets.
QString lineOf(const QDomElement& element)
{
    QStringList attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i)
        attributes << map.item(i).nodeName() + QLatin1Char('=') + map.item(i).nodeValue();
    attributes.sort();
    attributes.prepend(element.tagName());
    QString line = attributes.join(QLatin1Char(' '));
    const QList<QDomElement> children = childrenOf(element);
    if (children.isEmpty())
        return line;
    QStringList lines;
    for (const QDomElement& child : children)
        lines << lineOf(child);
    return line + QLatin1String(" [") + lines.join(QLatin1String("; ")) + QLatin1Char(']');
}

QStringList linesOf(const QList<QDomElement>& elements)
{
    QStringList lines;
    for (const QDomElement& element : elements)
        lines << lineOf(element);
    return lines;
}

QStringList attributesOf(const QList<QDomElement>& elements, const QString& name)
{
    QStringList values;
    for (const QDomElement& element : elements)
        values << element.attribute(name);
    return values;
}

// Eyes of the viewports of each window, for instance "left right".
QStringList eyesOf(const QDomElement& cluster)
{
    QStringList eyes;
    for (const QDomElement& window : windowsOf(cluster))
        eyes << attributesOf(childrenOf(window), QStringLiteral("eye")).join(QLatin1Char(' '));
    return eyes;
}

// "node x y" of each window.
QStringList placesOf(const QDomElement& cluster)
{
    QStringList places;
    for (const QDomElement& window : windowsOf(cluster)) {
        places << QStringList{window.attribute(QStringLiteral("node")), window.attribute(QStringLiteral("x")),
                              window.attribute(QStringLiteral("y"))}
                      .join(QLatin1Char(' '));
    }
    return places;
}

QStringList rectangleOf(const QDomElement& viewport)
{
    return {viewport.attribute(QStringLiteral("x1")), viewport.attribute(QStringLiteral("y1")),
            viewport.attribute(QStringLiteral("x2")), viewport.attribute(QStringLiteral("y2"))};
}

QStringList cornersOf(const QDomElement& plane)
{
    QStringList corners;
    for (const char* name : {"x1", "y1", "z1", "x2", "y2", "z2", "x3", "y3", "z3"})
        corners << plane.attribute(QLatin1String(name));
    return corners;
}

// A wall that gives each of the first `windows` hosts a window, to look at the lists of hosts.
Parameters wallOf(const QString& servers, int windows)
{
    return {{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
            {QStringLiteral("zoClusterPWServers"), servers},
            {QStringLiteral("zoClusterPWCols"), QString::number(windows)}};
}

Parameters pipesOf(const QStringList& pipes)
{
    Parameters parameters;
    for (int i = 0; i < pipes.size(); ++i)
        parameters.append({QStringLiteral("zoClusterPipe%1").arg(i), pipes.at(i)});
    return parameters;
}

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

// The conversion of legacy configurations.
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

    // Hosts.
    void hostTextBecomesNodes_data();
    void hostTextBecomesNodes();
    void hostPositionsBecomeWindowPositions_data();
    void hostPositionsBecomeWindowPositions();
    void forwardedHostsShiftPositions();
    void forwardedHostLosesTheLastDigitOfItsPosition();
    void infinibandIsForForwardingNetworksOnly();
    void pipeHostIsFirstFieldWithoutQuotes_data();
    void pipeHostIsFirstFieldWithoutQuotes();
    void gapEndsThePipes();
    void emptyPipeDoesNotEndThePipes();
    void oldHostIsFirstFieldWithoutQuotes_data();
    void oldHostIsFirstFieldWithoutQuotes();
    void equalHostsNumberTheWholeList_data();
    void equalHostsNumberTheWholeList();
    void numberedHostsKeepPercentSigns();
    void namesKeepTheirLettersInTheDocument_data();
    void namesKeepTheirLettersInTheDocument();
    void nestedForwardsStayFlat();

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

void tst_zoHPCConfigConverter::hostTextBecomesNodes_data()
{
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<QString>("network");

    QTest::newRow("empty") << ""
                           << "network";
    QTest::newRow("blanks-only") << "   "
                                 << "network";
    QTest::newRow("two") << "a b"
                         << "network [node name=a; node name=b]";
    QTest::newRow("empty-parts-skipped") << "  a   b "
                                         << "network [node name=a; node name=b]";
    QTest::newRow("order-kept") << "b a c"
                                << "network [node name=b; node name=a; node name=c]";
    QTest::newRow("equal-names-keep-their-names") << "a b a"
                                                  << "network [node name=a; node name=b; node name=a]";
    QTest::newRow("attributes-are-not-written") << "a[xpos=5,colour=red]"
                                                << "network [node name=a]";
    QTest::newRow("tab-is-part-of-the-name") << "a\tb"
                                             << "network [node name=a\tb]";
    QTest::newRow("name-may-be-empty") << "[xpos=1]"
                                       << "network [node name=]";
    QTest::newRow("forwards") << "m[forwards=a|b]"
                              << "network [node name=m [network [node name=a; node name=b]]]";
    QTest::newRow("forwards-without-bracket") << "forwards=a"
                                              << "network [node name=forwards=a [network [node name=a]]]";
    QTest::newRow("forwards-nobody") << "m[forwards=]"
                                     << "network [node name=m [network]]";
    QTest::newRow("forwards-in-another-case") << "m[Forwards=a]"
                                              << "network [node name=m]";
    QTest::newRow("text-before-the-bracket-is-one-name")
        << "x m[forwards=a|b]"
        << "network [node name=x m [network [node name=a; node name=b]]]";
    QTest::newRow("hosts-after-forwards-are-forwarded")
        << "m[forwards=a|b] x"
        << "network [node name=m [network [node name=a; node name=b; node name=x]]]";
    QTest::newRow("second-forwards-is-dropped")
        << "m[forwards=a|b] n[forwards=c|d]"
        << "network [node name=m [network [node name=a; node name=b; node name=n]]]";
    QTest::newRow("nested-forwards-end-the-list") << "m[forwards=a[forwards=b|c]|d]"
                                                  << "network [node name=m [network [node name=a]]]";
    QTest::newRow("forwards-that-comes-up-without-bracket")
        << "m[forwards=a[for]wards=b|c]]"
        << "network [node name=m [network [node name=a [network [node name=b; node name=c]]]]]";
    QTest::newRow("percent-signs") << "a%1 %2"
                                   << "network [node name=a%1; node name=%2]";
}

void tst_zoHPCConfigConverter::hostTextBecomesNodes()
{
    QFETCH(QString, hosts);
    QFETCH(QString, network);

    for (const auto& source :
         {qMakePair(QStringLiteral("Powerwall"), QStringLiteral("zoClusterPWServers")),
          qMakePair(QStringLiteral("Raytracing"), QStringLiteral("zoClusterSortFirstServers"))}) {
        const QDomElement cluster =
            converted({{QStringLiteral("zoClusterProjectionType"), source.first}, {source.second, hosts}});

        QCOMPARE(lineOf(networkOf(cluster)), network);
    }
}

void tst_zoHPCConfigConverter::hostPositionsBecomeWindowPositions_data()
{
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<QStringList>("places");

    QTest::newRow("both-and-one") << "h1[xpos=1280,ypos=0] h2[xpos=0]" << QStringList{"h1 1280 0", "h2 0 0"};
    QTest::newRow("none") << "h1 h2" << QStringList{"h1 0 0", "h2 0 0"};
    QTest::newRow("negative") << "h1[xpos=-5,ypos=-7]" << QStringList{"h1 -5 -7"};
    QTest::newRow("later-key-wins") << "h1[xpos=1,xpos=2]" << QStringList{"h1 2 0"};
    QTest::newRow("later-key-wins-even-if-no-number") << "h1[xpos=1,xpos=x]" << QStringList{"h1 0 0"};
    QTest::newRow("no-number") << "h1[xpos=1.5,ypos=0x10]" << QStringList{"h1 0 0"};
    QTest::newRow("no-value") << "h1[xpos,ypos=3]" << QStringList{"h1 0 3"};
    QTest::newRow("second-equals-sign-ends-the-value") << "h1[xpos=4=9]" << QStringList{"h1 4 0"};
    QTest::newRow("too-large") << "h1[xpos=99999999999,ypos=3]" << QStringList{"h1 0 3"};
    QTest::newRow("other-keys") << "h1[zpos=3,ypos=4,Xpos=5]" << QStringList{"h1 0 4"};
    QTest::newRow("empty-items") << "h1[,,xpos=3,]" << QStringList{"h1 3 0"};
    QTest::newRow("last-letter-goes-unread") << "h1[xpos=123" << QStringList{"h1 12 0"};
    QTest::newRow("second-bracket-ends-the-attributes") << "h1[xpos=12[ypos=3]" << QStringList{"h1 1 0"};
    QTest::newRow("only-bracket") << "h1[" << QStringList{"h1 0 0"};
}

void tst_zoHPCConfigConverter::hostPositionsBecomeWindowPositions()
{
    QFETCH(QString, hosts);
    QFETCH(QStringList, places);

    const QDomElement cluster = converted(wallOf(hosts, places.size()));

    QCOMPARE(placesOf(cluster), places);
}

void tst_zoHPCConfigConverter::forwardedHostsShiftPositions()
{
    // Three names but two positions: the first window has the position of the first forwarded host.
    const QDomElement cluster = converted(wallOf(QStringLiteral("m[forwards=a[xpos=10]|b[xpos=20]]"), 3));

    QCOMPARE(placesOf(cluster), (QStringList{"m 1 0", "a 2 0", "b 0 0"}));
}

void tst_zoHPCConfigConverter::forwardedHostLosesTheLastDigitOfItsPosition()
{
    const QDomElement cluster = converted(wallOf(QStringLiteral("m[forwards=a[xpos=1280,ypos=77]]"), 1));

    QCOMPARE(placesOf(cluster), QStringList{"m 1280 7"});
}

void tst_zoHPCConfigConverter::infinibandIsForForwardingNetworksOnly()
{
    Parameters parameters = wallOf(QStringLiteral("m[forwards=a|b]"), 3);
    parameters.append({QStringLiteral("zoClusterInfiniband"), QStringLiteral("1")});

    const QDomElement cluster = converted(parameters);

    QCOMPARE(lineOf(networkOf(cluster)),
             QStringLiteral("network [node name=m [network network=infiniband [node name=a; node name=b]]]"));
    QCOMPARE(placesOf(cluster), (QStringList{"m 0 0", "a 0 0", "b 0 0"}));
    parameters.last().second = QStringLiteral("true");
    QCOMPARE(lineOf(networkOf(converted(parameters))),
             QStringLiteral("network [node name=m [network [node name=a; node name=b]]]"));
    Parameters plain = wallOf(QStringLiteral("a"), 1);
    plain.append({QStringLiteral("zoClusterInfiniband"), QStringLiteral("1")});
    QCOMPARE(lineOf(networkOf(converted(plain))), QStringLiteral("network [node name=a]"));
}

void tst_zoHPCConfigConverter::pipeHostIsFirstFieldWithoutQuotes_data()
{
    QTest::addColumn<QString>("pipe");
    QTest::addColumn<QString>("network");

    QTest::newRow("plain") << "render3 0 0 1 1"
                           << "network [node name=render3]";
    QTest::newRow("quotes") << "\"render3\" 0 0 1 1"
                            << "network [node name=render3]";
    QTest::newRow("quotes-anywhere") << "re\"nd\"er3\" 0 0 1 1"
                                     << "network [node name=render3]";
    QTest::newRow("quotes-do-not-hold-blanks") << "\"a b\" 0 0 1 1"
                                               << "network [node name=a]";
    QTest::newRow("host-only") << "render3"
                               << "network [node name=render3]";
    QTest::newRow("empty") << ""
                           << "network";
    QTest::newRow("leading-blank") << " render3 0 0 1 1"
                                   << "network";
    QTest::newRow("forwards") << "m[forwards=a|b] 0 0 1 1"
                              << "network [node name=m [network [node name=a; node name=b]]]";
}

void tst_zoHPCConfigConverter::pipeHostIsFirstFieldWithoutQuotes()
{
    QFETCH(QString, pipe);
    QFETCH(QString, network);

    QCOMPARE(lineOf(networkOf(converted(pipesOf({pipe})))), network);
}

void tst_zoHPCConfigConverter::gapEndsThePipes()
{
    Parameters parameters = pipesOf({QStringLiteral("a 0 0 1 1"), QStringLiteral("b 0 0 1 1"),
                                     QStringLiteral("c 0 0 1 1"), QStringLiteral("d 0 0 1 1")});
    parameters.removeAt(2);

    const QDomElement cluster = converted(parameters);

    QCOMPARE(attributesOf(childrenOf(networkOf(cluster)), QStringLiteral("name")), (QStringList{"a", "b"}));
    QCOMPARE(placesOf(cluster), (QStringList{"a 0 0", "b 0 0"}));
    parameters.removeFirst();
    QCOMPARE(windowsOf(converted(parameters)).size(), 0);
}

void tst_zoHPCConfigConverter::emptyPipeDoesNotEndThePipes()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 1 0 1 1"), QString(), QStringLiteral("c 3 0 1 1")}));

    // The empty pipe has a window but no host, so the host after it moves up.
    QCOMPARE(placesOf(cluster), (QStringList{"a 1 0", "c 0 0", " 3 0"}));
}

void tst_zoHPCConfigConverter::oldHostIsFirstFieldWithoutQuotes_data()
{
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<QString>("network");

    QTest::newRow("one") << "a 0 0 1 1"
                         << "network [node name=a]";
    QTest::newRow("quotes") << "\"a\" 0 0,b\"\" 0 0"
                            << "network [node name=a; node name=b]";
    QTest::newRow("blank-after-comma-gives-empty-name") << "a 0 0, b 0 0"
                                                        << "network [node name=a; node name=]";
    QTest::newRow("empty-entry-gives-empty-name") << "a,,b"
                                                  << "network [node name=a; node name=; node name=b]";
    QTest::newRow("forwards") << "m[forwards=a|b] 0 0,c 0 0"
                              << "network [node name=m [network [node name=a; node name=b]]; node name=c]";
    QTest::newRow("comma-in-brackets-parts-entries") << "a[xpos=1,ypos=2] 0 0"
                                                     << "network [node name=a; node name=ypos=2]]";
}

void tst_zoHPCConfigConverter::oldHostIsFirstFieldWithoutQuotes()
{
    QFETCH(QString, hosts);
    QFETCH(QString, network);

    QCOMPARE(lineOf(networkOf(converted({{QStringLiteral("zoClusterHosts"), hosts}}))), network);
}

void tst_zoHPCConfigConverter::equalHostsNumberTheWholeList_data()
{
    QTest::addColumn<QString>("hosts");
    QTest::addColumn<QStringList>("nodes");

    QTest::newRow("all-different") << "a b c" << QStringList{"a", "b", "c"};
    QTest::newRow("first-and-last") << "a b a" << QStringList{"a 1", "a 2", "a 3"};
    QTest::newRow("pair-in-the-middle") << "x b b y" << QStringList{"b 1", "b 2", "b 3", "b 4"};
    QTest::newRow("first-equal-name-counts") << "x b a a b" << QStringList{"b 1", "b 2", "b 3", "b 4", "b 5"};
    QTest::newRow("case-matters") << "a A" << QStringList{"a", "A"};
    QTest::newRow("forwarded-hosts-count") << "m[forwards=a|m]" << QStringList{"m 1", "m 2", "m 3"};
    QTest::newRow("brackets-do-not") << "a[xpos=1] a[xpos=2]" << QStringList{"a 1", "a 2"};
}

void tst_zoHPCConfigConverter::equalHostsNumberTheWholeList()
{
    QFETCH(QString, hosts);
    QFETCH(QStringList, nodes);

    const QDomElement cluster = converted(wallOf(hosts, nodes.size()));

    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")), nodes);
}

void tst_zoHPCConfigConverter::numberedHostsKeepPercentSigns()
{
    const QDomElement cluster = converted(wallOf(QStringLiteral("a%1%2 a%1%2"), 2));

    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")), (QStringList{"a%1%2 1", "a%1%2 2"}));
}

void tst_zoHPCConfigConverter::namesKeepTheirLettersInTheDocument_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("read");

    QTest::newRow("markup") << "a<&>'"
                            << "a<&>'";
    QTest::newRow("quotes") << "a\"b"
                            << "a\"b";
    QTest::newRow("lines") << "a\n\tb"
                           << "a\n\tb";
    QTest::newRow("beyond-the-first-plane") << QStringLiteral(u"\U0001d7d8") << QStringLiteral(u"\U0001d7d8");
    QTest::newRow("control-letters-are-lost") << "a\x01\x1f"
                                                 "b"
                                              << "ab";
}

void tst_zoHPCConfigConverter::namesKeepTheirLettersInTheDocument()
{
    QFETCH(QString, name);
    QFETCH(QString, read);

    const QDomElement cluster = converted(wallOf(name, 1));

    QCOMPARE(attributesOf(childrenOf(networkOf(cluster)), QStringLiteral("name")), QStringList{read});
    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")), QStringList{read});
}

void tst_zoHPCConfigConverter::nestedForwardsStayFlat()
{
    // As deep as text can say it, and with every bracket in the way: never more than three levels.
    const int depth = 100000;
    const QString nested = QStringLiteral("h[forwards=").repeated(depth) + QString(depth, QLatin1Char(']'));
    const QString split = QStringLiteral("h[forwards=") + QStringLiteral("h[for]wards=").repeated(depth);

    const QDomElement fromNested = converted(wallOf(nested, 1));
    const QDomElement fromSplit = converted(wallOf(split, 1));

    QCOMPARE(lineOf(networkOf(fromNested)), QStringLiteral("network [node name=h [network [node name=h]]]"));
    QCOMPARE(lineOf(networkOf(fromSplit)),
             QStringLiteral("network [node name=h [network [node name=h [network [node name=h]]]]]"));
}

void tst_zoHPCConfigConverter::wallWithoutKeysHasDefaults()
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

void tst_zoHPCConfigConverter::wallParametersBecomeAttributes()
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

void tst_zoHPCConfigConverter::overlapHoldsInBothDirections()
{
    const QDomElement cluster =
        converted(wallOf(QStringLiteral("a"), 1) +
                  Parameters{{QStringLiteral("zoClusterPWXOverlap"), QStringLiteral("20")},
                             {QStringLiteral("zoClusterPWYOverlap"), QStringLiteral("30")}});

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("overlapx")), QStringList{"20"});
    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("overlapy")), QStringList{"20"});
}

void tst_zoHPCConfigConverter::wallNumberThatIsNoneReadsAsZero_data()
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

void tst_zoHPCConfigConverter::wallNumberThatIsNoneReadsAsZero()
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

void tst_zoHPCConfigConverter::stereoCodeGivesWindowsAndViewports_data()
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

void tst_zoHPCConfigConverter::stereoCodeGivesWindowsAndViewports()
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

void tst_zoHPCConfigConverter::pairedStereoWallNeedsTwoHostsPerTile()
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

void tst_zoHPCConfigConverter::tilesAreNamedRowByRow()
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

void tst_zoHPCConfigConverter::wallWithoutTilesHasNoWindows_data()
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

void tst_zoHPCConfigConverter::wallWithoutTilesHasNoWindows()
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

void tst_zoHPCConfigConverter::fewerHostsThanWindowsLeaveNodesEmpty_data()
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

void tst_zoHPCConfigConverter::fewerHostsThanWindowsLeaveNodesEmpty()
{
    QFETCH(Parameters, parameters);
    QFETCH(QStringList, places);

    const QDomElement cluster = converted(parameters);

    QCOMPARE(placesOf(cluster), places);
    for (const QDomElement& window : windowsOf(cluster))
        QVERIFY(window.hasAttribute(QStringLiteral("node")));
}

void tst_zoHPCConfigConverter::senselesslyLargeWallIsCut_data()
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

void tst_zoHPCConfigConverter::senselesslyLargeWallIsCut()
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

void tst_zoHPCConfigConverter::largeWallWithHostsIsWhole()
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

void tst_zoHPCConfigConverter::customRectangleIsWrappedIntoTheWindow_data()
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

void tst_zoHPCConfigConverter::customRectangleIsWrappedIntoTheWindow()
{
    QFETCH(QString, size);
    QFETCH(QString, rectangle);
    QFETCH(QStringList, wrapped);

    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 0 0 %1 plane 0 %2 0").arg(size, rectangle)}));

    QCOMPARE(rectangleOf(windowsOf(cluster).first().firstChildElement()), wrapped);
}

void tst_zoHPCConfigConverter::customDescriptorGivesPlaneAndViewport()
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

void tst_zoHPCConfigConverter::customEyeFollowsTypeAndFlag_data()
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

void tst_zoHPCConfigConverter::customEyeFollowsTypeAndFlag()
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

void tst_zoHPCConfigConverter::skippedStereoDescriptorCountsNoPlane()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 0 0 100 100 stereo 0 0 0 9 9 1 9 9 9 9 9 9 9 9 9|"
                                          "stereo 0 0 0 9 9 0 1 1 1 2 2 2 3 3 3")}));

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("name")), QStringList{"projection1"});
    QCOMPARE(cornersOf(projectionsOf(cluster).first()),
             (QStringList{"1", "1", "1", "2", "2", "2", "3", "3", "3"}));
    QCOMPARE(eyesOf(cluster), QStringList{"stereo"});
}

void tst_zoHPCConfigConverter::equalPlanesAreShared_data()
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

void tst_zoHPCConfigConverter::equalPlanesAreShared()
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

void tst_zoHPCConfigConverter::pipeWithoutDescriptorHasEmptyViewport()
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

void tst_zoHPCConfigConverter::windowWithoutAreaHasNoNumbers()
{
    const QDomElement cluster = converted(pipesOf({QStringLiteral("a 0 0 0 100 plane 0 1 2 3 4 0")}));

    QCOMPARE(rectangleOf(windowsOf(cluster).first().firstChildElement()),
             (QStringList{"nan", "2", "nan", "4"}));
}

void tst_zoHPCConfigConverter::cornerIsUpToThreeNumbers_data()
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

void tst_zoHPCConfigConverter::cornerIsUpToThreeNumbers()
{
    QFETCH(QString, fields);
    QFETCH(QStringList, corners);

    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 0 0 100 100 plane 0 0 0 100 100 0 %1").arg(fields)}));

    QCOMPARE(cornersOf(projectionsOf(cluster).first()), corners);
}

void tst_zoHPCConfigConverter::numbersAreReadInTheCLocale()
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

void tst_zoHPCConfigConverter::forwardingPipeHostsShiftTheWindows()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("m[forwards=a|b] 1 0 9 9"), QStringLiteral("c 2 0 9 9")}));

    QCOMPARE(placesOf(cluster), (QStringList{"m 1 0", "a 2 0"}));
}

void tst_zoHPCConfigConverter::oldEntryGivesPlaneWindowAndViewport()
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

void tst_zoHPCConfigConverter::oldPlanesAreRoundedToSinglePrecision_data()
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

void tst_zoHPCConfigConverter::oldPlanesAreRoundedToSinglePrecision()
{
    QFETCH(QString, text);
    QFETCH(QString, rounded);

    const QDomElement cluster = converted(
        {{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 9 9 0 0 0 0 0 0 0 0 0 0 0 0 ") + text}});

    QCOMPARE(projectionsOf(cluster).first().attribute(QStringLiteral("z3")), rounded);
}

void tst_zoHPCConfigConverter::oldPlanesAreNeverShared()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 9 9,b 0 0 9 9")}});

    QCOMPARE(attributesOf(projectionsOf(cluster), QStringLiteral("name")),
             (QStringList{"projection1", "projection2"}));
    QCOMPARE(windowsOf(cluster).at(1).firstChildElement().attribute(QStringLiteral("projection")),
             QStringLiteral("projection2"));
}

void tst_zoHPCConfigConverter::oldRectangleIsNotWrapped()
{
    const QDomElement cluster =
        converted({{QStringLiteral("zoClusterHosts"), QStringLiteral("a 0 0 100 100 150 -250 0.1 1e3")}});

    QCOMPARE(rectangleOf(windowsOf(cluster).first().firstChildElement()),
             (QStringList{"150", "-250", "0.10000000000000001", "1000"}));
}

void tst_zoHPCConfigConverter::oldStereoSwitchesGiveEyes_data()
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

void tst_zoHPCConfigConverter::oldStereoSwitchesGiveEyes()
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

void tst_zoHPCConfigConverter::oldFieldsAreSections_data()
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

void tst_zoHPCConfigConverter::oldFieldsAreSections()
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
