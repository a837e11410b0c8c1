#include "zoLegacyParts.h"
#include "zoTestCase.h"

#include <QApplication>

using namespace zoLegacyParts;

// The hosts of a converted legacy configuration.
class tst_zoHPCConfigConverterHosts final : public zoTestCase
{
    Q_OBJECT

private slots:
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
};

void tst_zoHPCConfigConverterHosts::hostTextBecomesNodes_data()
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

void tst_zoHPCConfigConverterHosts::hostTextBecomesNodes()
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

void tst_zoHPCConfigConverterHosts::hostPositionsBecomeWindowPositions_data()
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

void tst_zoHPCConfigConverterHosts::hostPositionsBecomeWindowPositions()
{
    QFETCH(QString, hosts);
    QFETCH(QStringList, places);

    const QDomElement cluster = converted(wallOf(hosts, places.size()));

    QCOMPARE(placesOf(cluster), places);
}

void tst_zoHPCConfigConverterHosts::forwardedHostsShiftPositions()
{
    // Three names but two positions: the first window has the position of the first forwarded host.
    const QDomElement cluster = converted(wallOf(QStringLiteral("m[forwards=a[xpos=10]|b[xpos=20]]"), 3));

    QCOMPARE(placesOf(cluster), (QStringList{"m 1 0", "a 2 0", "b 0 0"}));
}

void tst_zoHPCConfigConverterHosts::forwardedHostLosesTheLastDigitOfItsPosition()
{
    const QDomElement cluster = converted(wallOf(QStringLiteral("m[forwards=a[xpos=1280,ypos=77]]"), 1));

    QCOMPARE(placesOf(cluster), QStringList{"m 1280 7"});
}

void tst_zoHPCConfigConverterHosts::infinibandIsForForwardingNetworksOnly()
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

void tst_zoHPCConfigConverterHosts::pipeHostIsFirstFieldWithoutQuotes_data()
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

void tst_zoHPCConfigConverterHosts::pipeHostIsFirstFieldWithoutQuotes()
{
    QFETCH(QString, pipe);
    QFETCH(QString, network);

    QCOMPARE(lineOf(networkOf(converted(pipesOf({pipe})))), network);
}

void tst_zoHPCConfigConverterHosts::gapEndsThePipes()
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

void tst_zoHPCConfigConverterHosts::emptyPipeDoesNotEndThePipes()
{
    const QDomElement cluster =
        converted(pipesOf({QStringLiteral("a 1 0 1 1"), QString(), QStringLiteral("c 3 0 1 1")}));

    // The empty pipe has a window but no host, so the host after it moves up.
    QCOMPARE(placesOf(cluster), (QStringList{"a 1 0", "c 0 0", " 3 0"}));
}

void tst_zoHPCConfigConverterHosts::oldHostIsFirstFieldWithoutQuotes_data()
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

void tst_zoHPCConfigConverterHosts::oldHostIsFirstFieldWithoutQuotes()
{
    QFETCH(QString, hosts);
    QFETCH(QString, network);

    QCOMPARE(lineOf(networkOf(converted({{QStringLiteral("zoClusterHosts"), hosts}}))), network);
}

void tst_zoHPCConfigConverterHosts::equalHostsNumberTheWholeList_data()
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

void tst_zoHPCConfigConverterHosts::equalHostsNumberTheWholeList()
{
    QFETCH(QString, hosts);
    QFETCH(QStringList, nodes);

    const QDomElement cluster = converted(wallOf(hosts, nodes.size()));

    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")), nodes);
}

void tst_zoHPCConfigConverterHosts::numberedHostsKeepPercentSigns()
{
    const QDomElement cluster = converted(wallOf(QStringLiteral("a%1%2 a%1%2"), 2));

    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")), (QStringList{"a%1%2 1", "a%1%2 2"}));
}

void tst_zoHPCConfigConverterHosts::namesKeepTheirLettersInTheDocument_data()
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

void tst_zoHPCConfigConverterHosts::namesKeepTheirLettersInTheDocument()
{
    QFETCH(QString, name);
    QFETCH(QString, read);

    const QDomElement cluster = converted(wallOf(name, 1));

    QCOMPARE(attributesOf(childrenOf(networkOf(cluster)), QStringLiteral("name")), QStringList{read});
    QCOMPARE(attributesOf(windowsOf(cluster), QStringLiteral("node")), QStringList{read});
}

void tst_zoHPCConfigConverterHosts::nestedForwardsStayFlat()
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

ZO_TEST_MAIN(tst_zoHPCConfigConverterHosts)
#include "tst_zoHPCConfigConverterHosts.moc"
