#include "zoTestCase.h"

#include <zoHPCHostTree.h>
#include <zoHPCHostsSummary.h>
#include <zoHPCTreeItem.h>

// What people are told of hosts text while they type it.
class tst_zoHPCHostsSummary final : public zoTestCase
{
    Q_OBJECT

private slots:
    void countsAreThoseOfTheTree_data();
    void countsAreThoseOfTheTree();
    void bracketFormIsNamedWithItsText_data();
    void bracketFormIsNamedWithItsText();
    void replacementReadsAsTheNamesMeant();
    void otherNotesHaveTheirPlaces_data();
    void otherNotesHaveTheirPlaces();
    void notesStandInTheOrderOfTheText();
    void placesCountFromOne();
};

void tst_zoHPCHostsSummary::countsAreThoseOfTheTree_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("counts");

    QTest::newRow("empty") << ""
                           << "No nodes";
    QTest::newRow("blank") << " \n"
                           << "No nodes";
    QTest::newRow("one") << "a"
                         << "1 node";
    QTest::newRow("range") << "n01 - n24"
                           << "24 nodes";
    QTest::newRow("gateway") << "gw { n01 - n23 }"
                             << "24 nodes in 2 networks, 1 gateway";
    QTest::newRow("two-gateways") << "gw1 { a } gw2 { b }"
                                  << "4 nodes in 3 networks, 2 gateways";
    QTest::newRow("two-networks") << "{ a b } { c }"
                                  << "3 nodes in 2 networks";
    QTest::newRow("brackets") << "n[01-24]"
                              << "1 node"; // as the tree reads it
    QTest::newRow("range-that-fills-nothing") << "n1 - m5"
                                              << "2 nodes";
    QTest::newRow("open-brace") << "{ a b"
                                << "2 nodes";
}

void tst_zoHPCHostsSummary::countsAreThoseOfTheTree()
{
    QFETCH(QString, text);

    const zoHPCHostsSummary summary(text);

    QTEST(summary.counts(), "counts");
    zoHPCHostTree tree;
    tree.setHostString(text);
    QCOMPARE(summary.nodes(), int(tree.getNodeItems().size()));
    int networks = 0;
    while (tree.findNetworkByIndex(networks + 1) != nullptr)
        ++networks;
    QCOMPARE(summary.networks(), networks);
}

void tst_zoHPCHostsSummary::bracketFormIsNamedWithItsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("replacement");

    QTest::newRow("range") << "n[01-24]" << 0 << "n[01-24]"
                           << "n01 - n24";
    QTest::newRow("behind-others") << "gw, n[1-3] x" << 4 << "n[1-3]"
                                   << "n1 - n3";
    QTest::newRow("two") << "n[1-2]" << 0 << "n[1-2]"
                         << "n1 n2";
    QTest::newRow("list") << "n[1-3,7,9-12]" << 0 << "n[1-3,7,9-12]"
                          << "n1 - n3 n7 n9 - n12";
    QTest::newRow("step") << "n[1-5/2]" << 0 << "n[1-5/2]"
                          << "n1 n3 n5";
    QTest::newRow("number-in-the-middle") << "n[1-3]-ib" << 0 << "n[1-3]-ib"
                                          << "n1-ib n2-ib n3-ib";
    QTest::newRow("two-brackets") << "r[1-2]n[1-3]" << 0 << "r[1-2]n[1-3]"
                                  << "r1n1 - r1n3 r2n1 - r2n3";
    QTest::newRow("in-braces") << "gw { n[1-3] }" << 5 << "n[1-3]"
                               << "n1 - n3";
    QTest::newRow("options") << "gw[rt=0]" << -1 << ""
                             << "";
    QTest::newRow("none") << "n1 - n3" << -1 << ""
                          << "";
}

void tst_zoHPCHostsSummary::bracketFormIsNamedWithItsText()
{
    QFETCH(QString, text);
    QFETCH(int, offset);
    QFETCH(QString, word);
    QFETCH(QString, replacement);

    const zoHPCHostsSummary summary(text);

    if (offset < 0) {
        QVERIFY(summary.notes().empty());
        return;
    }
    QCOMPARE(int(summary.notes().size()), 1);
    const zoHPCHostsSummary::Note& note = summary.notes().front();
    QCOMPARE(note.offset, offset);
    QCOMPARE(text.mid(note.offset, note.length), word);
    QCOMPARE(note.replacement, replacement);
    QVERIFY2(note.reason.contains('"' + word + '"') && note.reason.contains('"' + replacement + '"'),
             qPrintable(note.reason));
}

void tst_zoHPCHostsSummary::replacementReadsAsTheNamesMeant()
{
    const zoHPCHostsSummary::Note note = zoHPCHostsSummary("gpu[08-11,20]").notes().at(0);

    zoHPCHostTree tree;
    tree.setHostString(note.replacement);

    QCOMPARE(tree.getNodeNames().join(' '), QString("gpu08 gpu09 gpu10 gpu11 gpu20"));
    QVERIFY(zoHPCHostsSummary(note.replacement).notes().empty());
}

void tst_zoHPCHostsSummary::otherNotesHaveTheirPlaces_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("part"); // of the reason

    QTest::newRow("other-prefix") << "a n1 - m5" << 7 << "the names differ";
    QTest::newRow("backwards") << "n9 - n1" << 5 << "runs backwards";
    QTest::newRow("lost-characters") << "a\nnode_1" << 2 << "\"node_1\" reads as \"node1\"";
    QTest::newRow("no-name") << "a __" << 2 << "no host name";
    QTest::newRow("open-brace") << "a { b" << 2 << "not closed";
    QTest::newRow("open-bracket") << "a[rt=0" << 1 << "not closed";
    QTest::newRow("bad-bracket") << "n[3-1]" << 2 << "runs backwards";
    QTest::newRow("lonely-dash") << "- n1" << 0 << "fills nothing";
}

void tst_zoHPCHostsSummary::otherNotesHaveTheirPlaces()
{
    QFETCH(QString, text);
    QFETCH(int, offset);
    QFETCH(QString, part);

    const zoHPCHostsSummary summary(text);

    QCOMPARE(int(summary.notes().size()), 1);
    QCOMPARE(summary.notes().front().offset, offset);
    QVERIFY2(summary.notes().front().reason.contains(part), qPrintable(summary.notes().front().reason));
    QVERIFY(summary.notes().front().replacement.isEmpty());
}

void tst_zoHPCHostsSummary::notesStandInTheOrderOfTheText()
{
    const zoHPCHostsSummary summary("a_1 n[1-3] b_2");

    QCOMPARE(int(summary.notes().size()), 3);
    QCOMPARE(summary.notes()[0].offset, 0);
    QCOMPARE(summary.notes()[1].offset, 4);
    QCOMPARE(summary.notes()[2].offset, 11);
}

void tst_zoHPCHostsSummary::placesCountFromOne()
{
    const QString text("ab\ncd\n\nef");

    QCOMPARE(zoHPCHostsSummary::line(text, 0), 1);
    QCOMPARE(zoHPCHostsSummary::column(text, 0), 1);
    QCOMPARE(zoHPCHostsSummary::line(text, 4), 2);
    QCOMPARE(zoHPCHostsSummary::column(text, 4), 2);
    QCOMPARE(zoHPCHostsSummary::line(text, 7), 4);
    QCOMPARE(zoHPCHostsSummary::column(text, 7), 1);
    QCOMPARE(zoHPCHostsSummary::line(text, text.size()), 4);
}

ZO_TEST_MAIN(tst_zoHPCHostsSummary)
#include "tst_zoHPCHostsSummary.moc"
