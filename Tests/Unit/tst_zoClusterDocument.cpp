#include "zoTestCase.h"

#include <zoClusterDocument.h>
#include <zoClusterLimits.h>

#include <QApplication>

// Reading the nodes out of a configuration document. Ids and enabled nodes are part of the contract suite of
// the cluster services.
class tst_zoClusterDocument final : public zoTestCase
{
    Q_OBJECT

private slots:
    void disabledNodesAreListedWithTheirIds();
    void nodeWithoutAHostNameIsNotRunOn();
    void servicePortIsTheOneOfTheNetworkAround_data();
    void servicePortIsTheOneOfTheNetworkAround();
    void undeclaredPrefixIsPartOfTheName();
    void reasonNamesLineAndColumn();
    void malformedTextLeavesNoNodes();
    void everyTruncationIsRefused();
    void deepDocumentIsRead();
    void deeperDocumentIsRefused();
    void whatOldToolsWroteIsRead();
    void deepNetworksAreQuick();
    void nameLikeANetworksIdMeetsIt();
    void entitiesDoNotExpandWithoutBound();
    void manyEqualNamesAreQuick();
};

namespace
{
QString clusterOf(const QString& section)
{
    return QStringLiteral("<cluster version=\"1\">") + section + QStringLiteral("</cluster>");
}
} // namespace

void tst_zoClusterDocument::disabledNodesAreListedWithTheirIds()
{
    zoClusterDocument document;
    QString reason;

    QVERIFY(document.parse(clusterOf("<master><network><node name=\"a\"/><node name=\"a\" enabled=\"false\"/>"
                                     "</network></master>"),
                           reason));

    const zoClusterDocument::Node first{"a", "a", 8889, true};
    const zoClusterDocument::Node second{"a_2", "a", 8889, false};
    QCOMPARE(document.nodes().size(), size_t(2));
    QVERIFY(document.nodes().at(0) == first);
    QVERIFY(document.nodes().at(1) == second);
    QCOMPARE(document.enabledNodes().size(), size_t(1));
}

void tst_zoClusterDocument::nodeWithoutAHostNameIsNotRunOn()
{
    zoClusterDocument document;
    QString reason;

    QVERIFY(document.parse(
        clusterOf("<master><network><node name=\"\"/><node name=\"a\"/><node/></network></master>"), reason));

    QCOMPARE(document.nodes().size(), size_t(3));
    QCOMPARE(document.enabledNodes().size(), size_t(2));
    QCOMPARE(document.enabledNodes().front().hostName, QStringLiteral("a"));
    QCOMPARE(document.enabledNodes().back().hostName, QStringLiteral("localhost"));
}

void tst_zoClusterDocument::servicePortIsTheOneOfTheNetworkAround_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<int>("port");

    QTest::newRow("absent") << "<master><network><node name=\"a\"/></network></master>" << 8889;
    QTest::newRow("empty") << "<master><network serviceport=\"\"><node name=\"a\"/></network></master>"
                           << 8889;
    QTest::newRow("given") << "<master><network serviceport=\"9000\"><node name=\"a\"/></network></master>"
                           << 9000;
    QTest::newRow("not-a-number")
        << "<master><network serviceport=\"port\"><node name=\"a\"/></network></master>" << 0;
    QTest::newRow("forwarding-network-has-its-own")
        << "<master><network serviceport=\"9000\"><node><network><node "
           "name=\"a\"/></network></node></network></master>"
        << 8889;
    QTest::newRow("node-below-a-node")
        << "<master><network serviceport=\"9000\"><node><node name=\"a\"/></node></network></master>" << 9000;
    QTest::newRow("node-below-the-master")
        << "<master serviceport=\"9000\"><node name=\"a\"/></master>" << 8889;
    QTest::newRow("port-of-a-node-does-not-count")
        << "<master><network><node name=\"a\" serviceport=\"9000\"/></network></master>" << 8889;
}

void tst_zoClusterDocument::servicePortIsTheOneOfTheNetworkAround()
{
    QFETCH(QString, section);
    QFETCH(int, port);
    zoClusterDocument document;
    QString reason;

    QVERIFY(document.parse(clusterOf(section), reason));

    QCOMPARE(document.nodes().back().id, QStringLiteral("a"));
    QCOMPARE(document.nodes().back().servicePort, port);
}

void tst_zoClusterDocument::undeclaredPrefixIsPartOfTheName()
{
    zoClusterDocument document;
    QString reason;

    QVERIFY2(document.parse(clusterOf("<master site:a=\"1\"><network><node x:name=\"b\" name=\"a\"/>"
                                      "<x:node name=\"c\"/></network></master>"),
                            reason),
             qPrintable(reason));

    QCOMPARE(document.nodes().size(), size_t(1));
    QCOMPARE(document.nodes().front().id, QStringLiteral("a"));
}

void tst_zoClusterDocument::reasonNamesLineAndColumn()
{
    zoClusterDocument document;
    QString reason;

    QVERIFY(!document.parse("<cluster>\n <master>\n </network>\n</cluster>", reason));

    QVERIFY2(reason.startsWith(QStringLiteral("line 3, column ")), qPrintable(reason));
}

void tst_zoClusterDocument::malformedTextLeavesNoNodes()
{
    zoClusterDocument document;
    QString reason;
    QVERIFY(document.parse(clusterOf("<master><node name=\"a\"/></master>"), reason));

    QVERIFY(!document.parse("<cluster><master><node name=\"a\"/></master>", reason));

    QVERIFY(document.nodes().empty());
}

void tst_zoClusterDocument::everyTruncationIsRefused()
{
    const QString text =
        clusterOf("<master><network a=\"&lt;\"><node name=\"a\"/><!-- c --></network></master>");
    for (int length = 0; length < text.size(); ++length) {
        zoClusterDocument document;
        QString reason;
        QVERIFY2(!document.parse(text.left(length), reason), qPrintable(text.left(length)));
        QVERIFY(!reason.isEmpty());
    }
}

void tst_zoClusterDocument::deepDocumentIsRead()
{
    // No deeper than the module reads documents; the host alone once read 100,000 levels.
    constexpr int Depth = zoClusterLimits::MaximumDepth - 2;
    QString open;
    QString close;
    for (int i = 0; i < Depth; ++i) {
        open += QStringLiteral("<node name=\"n\">");
        close += QStringLiteral("</node>");
    }
    zoClusterDocument document;
    QString reason;

    QVERIFY(document.parse(clusterOf("<master>" + open + close + "</master>"), reason));

    QCOMPARE(document.nodes().size(), size_t(Depth));
    QCOMPARE(document.nodes().back().id, QStringLiteral("n_%1").arg(Depth));
}

void tst_zoClusterDocument::deeperDocumentIsRefused()
{
    const QString deep = QStringLiteral("<node>").repeated(zoClusterLimits::MaximumDepth - 1) +
                         QStringLiteral("</node>").repeated(zoClusterLimits::MaximumDepth - 1);
    zoClusterDocument document;
    QString reason;

    QVERIFY(!document.parse(clusterOf("<master>" + deep + "</master>"), reason));

    QVERIFY2(reason.endsWith(QStringLiteral("more than 10240 elements are nested")), qPrintable(reason));
}

// As the module reads them.
void tst_zoClusterDocument::whatOldToolsWroteIsRead()
{
    zoClusterDocument document;
    QString reason;

    QVERIFY2(
        document.parse("<?xml version=\"1.1\" encoding=\"nope\"?><cluster><master><network serviceport=\"1\""
                       "serviceport=\"2\"><node name=\"a\"name=\"b\"/></network></master></cluster>",
                       reason),
        qPrintable(reason));

    QCOMPARE(document.nodes().size(), size_t(1));
    QCOMPARE(document.nodes().front().id, QStringLiteral("b"));
    QCOMPARE(document.nodes().front().servicePort, 2);
}

void tst_zoClusterDocument::deepNetworksAreQuick()
{
    constexpr int Depth = (zoClusterLimits::MaximumDepth - 2) / 2;
    const QString open = QStringLiteral("<network><node name=\"n\">").repeated(Depth);
    const QString close = QStringLiteral("</node></network>").repeated(Depth);
    zoClusterDocument document;
    QString reason;

    // Ids of networks are as long as the networks are deep: writing all of them out would take
    // minutes here and run into the time limit of the test.
    QVERIFY(document.parse(clusterOf("<master>" + open + close + "</master>"), reason));

    QCOMPARE(document.nodes().size(), size_t(Depth));
    QCOMPARE(document.nodes().back().id, QStringLiteral("n_%1").arg(Depth));
}

void tst_zoClusterDocument::nameLikeANetworksIdMeetsIt()
{
    zoClusterDocument document;
    QString reason;

    QVERIFY(document.parse(clusterOf("<master><network><node name=\"Network:/0/\"/>"
                                     "<node name=\"Network:/1/\"/></network><network/></master>"),
                           reason));

    QCOMPARE(document.nodes().front().id, QStringLiteral("Network:/0/_2"));
    QCOMPARE(document.nodes().back().id, QStringLiteral("Network:/1/"));
}

void tst_zoClusterDocument::entitiesDoNotExpandWithoutBound()
{
    QString text = QStringLiteral("<!DOCTYPE cluster [<!ENTITY a \"aaaaaaaaaa\">");
    for (char c = 'b'; c < 'k'; ++c) {
        const QString before = QStringLiteral("&%1;").arg(QLatin1Char(char(c - 1)));
        text += QStringLiteral("<!ENTITY %1 \"%2\">").arg(QString(QLatin1Char(c)), before.repeated(10));
    }
    text += QStringLiteral("]><cluster><master><node name=\"x\"/>&j;</master></cluster>");
    zoClusterDocument document;
    QString reason;

    QVERIFY(!document.parse(text, reason));
}

void tst_zoClusterDocument::manyEqualNamesAreQuick()
{
    constexpr int Count = 20000;
    const QString nodes = QStringLiteral("<node name=\"render\"/>").repeated(Count);
    zoClusterDocument document;
    QString reason;

    // Probing each suffix anew would take 200 million look-ups here and run into the time limit of the test.
    QVERIFY(document.parse(clusterOf("<master><network>" + nodes + "</network></master>"), reason));

    QCOMPARE(document.nodes().back().id, QStringLiteral("render_%1").arg(Count));
}

ZO_TEST_MAIN(tst_zoClusterDocument)
#include "tst_zoClusterDocument.moc"
