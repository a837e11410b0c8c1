#include "zoHPCTreeViewTest.h"

#include <zoHPCHostsText.h>
#include <zoHPCTreeDepth.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace
{
// The reader as the format defines it: one item after the other, in a tree of its own. Takes options from
// `previous`.
class StepReader
{
public:
    StepReader(zoHPCTreeGUIW* view, zoHPCTreeItem* previous) : m_view(view)
    {
        std::vector<zoHPCTreeItem*> items;
        previous->getAllSubItems(items);
        for (zoHPCTreeItem* item : items)
            item->addToIDCache(m_oldIds);
    }

    void read(const QString& text)
    {
        zoHPCTreeItem* network = nullptr;
        QTreeWidgetItem* anchor = &root;
        bool range = false;
        const auto createNetwork = [&] {
            network = m_view->createNetwork(anchor, -1);
            network->restoreFromIDCache(m_oldIds, m_newIds);
        };
        for (const QString& token : zoHPCHostsText::tokens(text)) {
            if (token.startsWith('[') || token.startsWith('/'))
                continue;
            if (token == "{") {
                if (anchor) {
                    createNetwork();
                    anchor = nullptr;
                    range = false;
                }
            } else if (token == "}") {
                if (network) {
                    anchor = network->parent();
                    network = anchor == &root ? nullptr : static_cast<zoHPCTreeItem*>(anchor->parent());
                    range = false;
                }
            } else if (token == "-") {
                range = true;
            } else {
                QString name = token.section('[', 0, 0);
                name.remove(QRegularExpression("[^-a-zA-Z\\d.]"));
                if (name.isEmpty())
                    continue;
                std::map<QString, QString> options;
                const QString block = token.section('[', 1).remove(']');
                for (const QString& part : block.split(','))
                    options[part.section('=', 0, 0).toLower()] = part.section('=', 1);
                if (!network)
                    createNetwork();
                zoHPCTreeItem* node = m_view->createNode(network, name, -1);
                anchor = node;
                if (range) {
                    for (zoHPCTreeItem* between : m_view->insertHostRange(node)) {
                        between->restoreFromIDCache(m_oldIds, m_newIds);
                        between->overwriteOptions(options);
                    }
                }
                node->restoreFromIDCache(m_oldIds, m_newIds);
                node->overwriteOptions(options);
                range = false;
            }
        }
    }

    QTreeWidgetItem root;

private:
    zoHPCTreeGUIW* m_view;
    std::map<QString, zoHPCTreeItem*> m_oldIds;
    std::map<QString, zoHPCTreeItem*> m_newIds;
};

// The writer as the format defines it.
class StepWriter
{
public:
    static QString write(zoHPCTreeItem* master)
    {
        QString out;
        zoHPCTreeItem* start = master;
        if (!start->isNetwork() && start->childCount() == 1)
            start = static_cast<zoHPCTreeItem*>(start->child(0));
        if (start->isNetwork()) {
            list(start->items(), out, 0);
        } else {
            for (zoHPCTreeItem* child : master->items())
                item(child, out, 0);
        }
        return out;
    }

private:
    static void item(zoHPCTreeItem* item, QString& out, int depth)
    {
        const QString indent(depth, ' ');
        if (item->isNetwork()) {
            out += indent + "{\n";
            list(item->items(), out, depth + 2);
            out += indent + "}\n";
            return;
        }
        out += indent + item->hostName() + '\n';
        for (zoHPCTreeItem* child : item->items())
            StepWriter::item(child, out, depth);
    }

    static void list(const std::vector<zoHPCTreeItem*>& items, QString& out, int depth)
    {
        const auto continues = [&items](std::size_t first, std::size_t k) {
            return first + k < items.size() && items[first + k]->childCount() == 0 &&
                   items[first + k]->hostName() ==
                       zoHPCTreeGUIW::createHostName(items[first]->hostName(), int(k));
        };
        for (std::size_t i = 0; i < items.size();) {
            out += QString(depth, ' ') + items[i]->hostName();
            std::size_t k = 0;
            if (items[i]->childCount() == 0 && continues(i, 1) && continues(i, 2)) {
                while (continues(i, k + 1))
                    ++k;
                out += " - " + items[i + k]->hostName();
            }
            out += '\n';
            for (zoHPCTreeItem* child : items[i]->items())
                item(child, out, depth);
            i += k + 1;
        }
    }
};
} // namespace

// The host tree's view and hosts text: reading, what a rebuild keeps, writing.
class tst_zoHPCTreeGUIWText final : public zoHPCTreeViewTest
{
    Q_OBJECT

private slots:
    // Hosts text, reading
    void readsHostsText_data();
    void readsHostsText();
    void rangeTakesTheHostsOptions();
    void renderOptionIsOverridden_data();
    void renderOptionIsOverridden();
    void rebuildKeepsOptionsOfEqualIds();
    void rebuildKeepsMarksAndUniqueNames();
    void rebuildFromOwnOutputKeepsAllOptions();
    void newItemsOfARebuildHaveDefaults();
    void rebuildAgreesWithTheStepByStepReader_data();
    void rebuildAgreesWithTheStepByStepReader();
    void rebuildClearsTheBookingAndSelectsTheMaster();
    void rebuildEmitsNoHostsChanged();
    void rebuildExpandsWhatHasChildren();
    void rebuiltItemsShowTheirState();
    void insertHostRangeFillsUpToTheNode_data();
    void insertHostRangeFillsUpToTheNode();
    void firstRowHasNoRange();
    void createHostNameCountsUp();
    void hostsFileIsRead();
    void unreadableHostsFileLeavesTheTree();
    void hostsFileThatFailsWhileReadLeavesTheTree();
    void hostsFileThatIsNoTextLeavesTheTree_data();
    void hostsFileThatIsNoTextLeavesTheTree();

    // Hosts text, writing
    void writesHostsText_data();
    void writesHostsText();
    void writesNamesOutsideAsciiAsTheirBytes();
    void writerAgreesWithTheStepByStepWriter();
    void writesOneItemAndOneListIntoAStream();
    void writtenTextReadsBackToTheSameTree();
    void runsEndWhereTheReaderWouldNotFillThem_data();
    void runsEndWhereTheReaderWouldNotFillThem();

    // Size
    void fiveThousandNestedBraces();
    void textOfTooManyHostsIsRefused_data();
    void textOfTooManyHostsIsRefused();
    void tooDeepHostsTextIsRefused();
};

void tst_zoHPCTreeGUIWText::readsHostsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tree");

    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("no-braces") << "a b c"
                               << "{a b c}";
    QTest::newRow("implicit-after-closed") << "{ a b } c d"
                                           << "{a b} {c d}";
    QTest::newRow("range") << "n1 - n3"
                           << "{n1 n2 n3}";
    QTest::newRow("ranges-in-a-row") << "n1 - n3 - n5"
                                     << "{n1 n2 n3 n4 n5}";
    QTest::newRow("reversed-range") << "n10 - n1"
                                    << "{n10 n1}";
    QTest::newRow("different-prefixes") << "n1 - m5"
                                        << "{n1 m5}";
    QTest::newRow("adjacent") << "n1 - n2"
                              << "{n1 n2}";
    QTest::newRow("padding-kept") << "n01 - n03"
                                  << "{n01 n02 n03}";
    QTest::newRow("padding-of-the-first-name") << "n8 - n011"
                                               << "{n8 n9 n10 n011}";
    QTest::newRow("no-digits") << "host - 2"
                               << "{host 2}";
    QTest::newRow("range-without-first") << "- n3"
                                         << "{n3}";
    QTest::newRow("range-at-the-end") << "n1 -"
                                      << "{n1}";
    QTest::newRow("range-not-across-a-brace") << "n1 - { n3 }"
                                              << "{n1 {n3}}";
    QTest::newRow("range-not-across-a-closing-brace") << "n1 { a - } n3"
                                                      << "{n1 {a} n3}";
    QTest::newRow("range-over-a-gateway") << "n1 { a } - n3"
                                          << "{n1 {a} n2 n3}";
    QTest::newRow("dropped-name-keeps-the-range") << "n1 - _ n3"
                                                  << "{n1 n2 n3}";
    QTest::newRow("dash-glued-is-a-name") << "n1 -n3"
                                          << "{n1 -n3}";
    QTest::newRow("underscore-stripped") << "node_1"
                                         << "{node1}";
    QTest::newRow("colon-stripped") << "a:b"
                                    << "{ab}";
    QTest::newRow("block-alone") << "[rt=0]"
                                 << "";
    QTest::newRow("block-after-a-brace") << "{ [rt=0] a }"
                                         << "{a}";
    QTest::newRow("path-ignored") << "/etc/hosts a"
                                  << "{a}";
    QTest::newRow("unbalanced-close") << "} a } } b"
                                      << "{a} {b}";
    QTest::newRow("unbalanced-open") << "{ { a"
                                     << "{a}";
    QTest::newRow("empty-network") << "{ }"
                                   << "{}";
    QTest::newRow("parentheses") << "(a (b))"
                                 << "{a {b}}";
    QTest::newRow("two-forwarding-networks") << "a { b } { c }"
                                             << "{a {b} {c}}";
    QTest::newRow("nested") << "a { b { c { d } e } f } g"
                            << "{a {b {c {d} e} f} g}";
    QTest::newRow("forwards") << "gw1[rt=0,forwards=a b] c"
                              << "{gw1 {a b} c}";
    QTest::newRow("worked-example") << "gpu01 - gpu04, viz1[rt=0] { ib01 ib02 }\n{ wall1 - wall3 }"
                                    << "{gpu01 gpu02 gpu03 gpu04 viz1 {ib01 ib02} {wall1 wall2 wall3}}";
    QTest::newRow("worked-example-closed")
        << "{ gpu01 - gpu04 viz1[rt=0] { ib01 ib02 } } { wall1 - wall3 }"
        << "{gpu01 gpu02 gpu03 gpu04 viz1 {ib01 ib02}} {wall1 wall2 wall3}";
}

void tst_zoHPCTreeGUIWText::readsHostsText()
{
    QFETCH(QString, text);
    QFETCH(QString, tree);

    m_view->setHostString(text);

    QCOMPARE(outline(), tree);
}

void tst_zoHPCTreeGUIWText::rangeTakesTheHostsOptions()
{
    m_view->setHostString("n1 - n4[rt=0] n5");

    QCOMPARE(outline(), QString("{n1 n2 n3 n4 n5}"));
    QVERIFY(item({0, 0})->isRenderNode());
    QVERIFY(!item({0, 1})->isRenderNode());
    QVERIFY(!item({0, 2})->isRenderNode());
    QVERIFY(!item({0, 3})->isRenderNode());
    QVERIFY(item({0, 4})->isRenderNode());
}

void tst_zoHPCTreeGUIWText::renderOptionIsOverridden_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");

    QTest::newRow("false-in-upper-case") << "host[rt=FALSE]" << true << false;
    QTest::newRow("key-in-upper-case") << "host[RT=0]" << true << false;
    QTest::newRow("set-again") << "host[rt=1]" << false << true;
    QTest::newRow("no-block-keeps") << "host" << false << false;
    QTest::newRow("other-keys-keep") << "host[art=1,x]" << false << false;
    QTest::newRow("blanks-split") << "host[rt = 0]" << false << true; // "rt" without a value
}

void tst_zoHPCTreeGUIWText::renderOptionIsOverridden()
{
    QFETCH(QString, text);
    QFETCH(bool, before);
    QFETCH(bool, after);
    m_view->setHostString("host");
    item({0, 0})->setIsRenderNode(before);

    m_view->setHostString(text);

    QCOMPARE(item({0, 0})->isRenderNode(), after);
}

void tst_zoHPCTreeGUIWText::rebuildKeepsOptionsOfEqualIds()
{
    m_view->setHostString("{ a n n { x } } { b }");
    item({0})->setOption("description", "first");
    item({1})->setOption("description", "second");
    item({0, 2})->setOption("speed", "of the second n");
    item({0, 2, 0})->setOption("description", "forwarding");
    item({0, 2, 0, 0})->setOption("speed", "of x");

    m_view->setHostString("{ n { x } n } { b }");

    QVERIFY(!item({0, 0})->hasOption("speed"));
    QCOMPARE(item({0, 1})->getOption("speed"), QString("of the second n"));
    QCOMPARE(item({0, 0, 0})->getOption("description"), QString("forwarding"));
    QCOMPARE(item({0, 0, 0})->text(0), QString("Network (forwarding)"));
    QCOMPARE(item({0, 0, 0, 0})->getOption("speed"), QString("of x"));
    QCOMPARE(item({0})->getOption("description"), QString("first"));
    QCOMPARE(item({1})->getOption("description"), QString("second"));
}

void tst_zoHPCTreeGUIWText::rebuildKeepsMarksAndUniqueNames()
{
    m_view->setHostString("a b c");
    item({0, 1})->setIsDisplayNode(true);
    item({0, 1})->setUniqueHostName("b 1");
    m_view->setIsRunning(true, {"b"});

    m_view->setHostString("b c d");

    QVERIFY(item({0, 0})->isDisplayNode());
    QVERIFY(!item({0, 1})->isDisplayNode());
    QCOMPARE(item({0, 0})->uniqueHostName(), QString("b 1"));
    QVERIFY(item({0, 1})->uniqueHostName().isEmpty());
    QCOMPARE(running(), (QStringList{"Network:/0/", "b"}));
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(2, true, true, false, false)));
}

void tst_zoHPCTreeGUIWText::rebuildFromOwnOutputKeepsAllOptions()
{
    m_view->setHostString("{ n1 - n5 gw { a b n1 } x } { n1 n2 } { }");
    std::vector<zoHPCTreeItem*> items;
    m_master->getAllSubItems(items);
    int i = 0;
    for (zoHPCTreeItem* item : items) {
        if (!item->isMaster())
            item->setOption("speed", QString::number(i++));
    }
    const QString before = details(m_master);

    m_view->setHostString(m_view->getHostsString());

    QCOMPARE(details(m_master), before);
}

void tst_zoHPCTreeGUIWText::newItemsOfARebuildHaveDefaults()
{
    m_view->setHostString("a");
    item({0, 0})->setOption("speed", "1g");
    item({0, 0})->setIsEnabled(false);

    m_view->setHostString("b");

    const std::map<QString, QString> defaults{{"enabled", ""}};
    QCOMPARE(item({0, 0})->getOptions(), defaults);
    QCOMPARE(item({0})->getOptions(), defaults);
}

void tst_zoHPCTreeGUIWText::rebuildAgreesWithTheStepByStepReader_data()
{
    QTest::addColumn<QString>("odd");

    QTest::newRow("usual-names") << "";
    QTest::newRow("name-like-a-network-id") << "Network:/0/";
    QTest::newRow("name-like-a-suffixed-id") << "n1_2";
}

void tst_zoHPCTreeGUIWText::rebuildAgreesWithTheStepByStepReader()
{
    QFETCH(QString, odd);
    const QStringList alphabet{"{", "}",  "{",      "}",        "n1", "n1", "n3", "n05", "-", "-",
                               "a", "m9", "[rt=0]", "[RT=1,x]", "_",  "n2", "/x", "(b)", ","};
    QRandomGenerator random(1234);

    for (int round = 0; round < 150; ++round) {
        QString text;
        for (int k = random.bounded(30); k > 0; --k)
            text += alphabet.at(random.bounded(alphabet.size())) + (random.bounded(8) ? " " : "");
        std::vector<zoHPCTreeItem*> items;
        m_master->getAllSubItems(items);
        for (zoHPCTreeItem* item : items) {
            if (random.bounded(3) == 0)
                item->setIsEnabled(random.bounded(2));
            if (random.bounded(3) == 0)
                item->setOption("speed", QString::number(random.bounded(100)));
            if (random.bounded(4) == 0)
                item->setOption(zoHPCOption::Encrypted, "true");
            if (random.bounded(4) == 0)
                item->setOption(zoHPCOption::Description, "%1 x");
            if (random.bounded(4) == 0 && item->isNode())
                item->setIsRenderNode(false);
            if (!odd.isEmpty() && item->isNode() && random.bounded(4) == 0)
                item->setHostName(odd);
        }
        m_master->setIsEnabled(true); // the reader's tree has no master above
        StepReader reader(m_view.get(), m_master);
        reader.read(text);
        // An option restored after "enabled" shows only at the next change of state; a rebuild shows it at
        // once.
        for (int row = 0; row < reader.root.childCount(); ++row)
            asItem(reader.root.child(row))->updateState();

        m_view->setHostString(text);

        const QString actual = details(m_master);
        const QString expected = details(&reader.root);
        int same = 0;
        while (same < actual.size() && same < expected.size() && actual.at(same) == expected.at(same))
            ++same;
        QVERIFY2(actual == expected, qPrintable(text + "\n...(" + actual.mid(qMax(0, same - 80), 160) +
                                                "\n...(" + expected.mid(qMax(0, same - 80), 160)));
        QCOMPARE(m_view->getHostsString(), StepWriter::write(m_master));
    }
}

void tst_zoHPCTreeGUIWText::rebuildClearsTheBookingAndSelectsTheMaster()
{
    load("<cluster booking='b'><master><network><node name='a'/></network></master></cluster>");
    QCOMPARE(m_view->booking(), QString("b"));
    m_view->setSelectedItem(item({0, 0}));
    int selections = 0;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this, [&selections] { ++selections; });

    m_view->setHostString("c");

    QVERIFY(m_view->booking().isEmpty());
    QCOMPARE(m_view->selectedItem(), m_master);
    QCOMPARE(selections, 1);
}

void tst_zoHPCTreeGUIWText::rebuildEmitsNoHostsChanged()
{
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->setHostString("a");

    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIWText::rebuildExpandsWhatHasChildren()
{
    m_master->setExpanded(false);

    m_view->setHostString("a { b } { }");

    QVERIFY(m_master->isExpanded());
    QVERIFY(item({0})->isExpanded());
    QVERIFY(item({0, 0})->isExpanded());
    QVERIFY(item({0, 0, 0})->isExpanded());
    // Expanded leaves would make every later change slow.
    QVERIFY(!item({0, 0, 0, 0})->isExpanded());
}

void tst_zoHPCTreeGUIWText::rebuiltItemsShowTheirState()
{
    m_view->setHostString("a { b }");
    item({0})->setIsEnabled(false);
    item({0, 0, 0})->setOption(zoHPCOption::Encrypted, "true");

    m_view->setHostString("a { b } c");
    QCOMPARE(item({0, 1})->foreground(0), m_view->palette().brush(QPalette::Light));
    QVERIFY(sameIcon(item({0, 1})->icon(0), zoHPCTreeItem::getIcon(1, false, false, false, false)));
    item({0})->setIsEnabled(true);

    m_view->setHostString("a { b } c");
    QVERIFY(sameIcon(item({0, 0, 0, 0})->icon(0), zoHPCTreeItem::getIcon(1, true, false, true, false)));
    m_master->setIsEnabled(false);

    m_view->setHostString("a");
    QCOMPARE(item({0, 0})->foreground(0), m_view->palette().brush(QPalette::Light));
}

void tst_zoHPCTreeGUIWText::insertHostRangeFillsUpToTheNode_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("inserted");

    QTest::newRow("two-between") << "n1"
                                 << "n4" << 2;
    QTest::newRow("adjacent") << "n1"
                              << "n2" << 0;
    QTest::newRow("equal") << "n1"
                           << "n1" << 0;
    QTest::newRow("reversed") << "n4"
                              << "n1" << 0;
    QTest::newRow("other-prefix") << "n1"
                                  << "m4" << 0;
    QTest::newRow("no-digits") << "n"
                               << "4" << 0;
    QTest::newRow("longest") << "n0"
                             << "n10000" << 9999;
    QTest::newRow("too-long") << "n0"
                              << "n10001" << 0;
    QTest::newRow("digits-only") << "1"
                                 << "4" << 0;
}

void tst_zoHPCTreeGUIWText::insertHostRangeFillsUpToTheNode()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, inserted);
    m_view->setHostString("x");
    m_view->createNode(item({0}), first, -1);
    zoHPCTreeItem* node = m_view->createNode(item({0}), second, -1);

    const std::vector<zoHPCTreeItem*> nodes = m_view->insertHostRange(node);

    QCOMPARE(int(nodes.size()), inserted);
    QCOMPARE(item({0})->indexOfChild(node), 2 + inserted);
    for (int k = 0; k < inserted; ++k) {
        QCOMPARE(item({0, 2 + k}), nodes[std::size_t(k)]);
        QCOMPARE(nodes[std::size_t(k)]->hostName(), zoHPCTreeGUIW::createHostName(first, k + 1));
    }
    // The same from text.
    m_view->setHostString(first + " - " + second);
    QCOMPARE(item({0})->childCount(), 2 + inserted);
}

void tst_zoHPCTreeGUIWText::firstRowHasNoRange()
{
    m_view->setHostString("n5");

    QVERIFY(m_view->insertHostRange(item({0, 0})).empty());
}

void tst_zoHPCTreeGUIWText::createHostNameCountsUp()
{
    QCOMPARE(zoHPCTreeGUIW::createHostName("node07", 3), QString("node10"));
    QCOMPARE(zoHPCTreeGUIW::createHostName("host", 2), QString("2"));
}

void tst_zoHPCTreeGUIWText::hostsFileIsRead()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("hosts.txt");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{ a\r\n b } { c }");
    file.close();

    m_view->setHostFile(path);

    QCOMPARE(m_view->hostFile(), path);
    QCOMPARE(outline(), QString("{a b} {c}"));
}

void tst_zoHPCTreeGUIWText::unreadableHostsFileLeavesTheTree()
{
    QTemporaryDir folder;
    m_view->setHostString("a");

    m_view->setHostFile(folder.filePath("missing"));
    QCOMPARE(outline(), QString("{a}"));
    QCOMPARE(m_view->hostFile(), folder.filePath("missing"));

    m_view->setHostFile(folder.path());
    QCOMPARE(outline(), QString("{a}"));

    m_view->setHostFile("");
    QCOMPARE(outline(), QString("{a}"));
}

void tst_zoHPCTreeGUIWText::hostsFileThatFailsWhileReadLeavesTheTree()
{
    m_view->setHostString("a");
    // Opens, but nothing is mapped where it begins: reading fails.
    expectMessage(QtCriticalMsg, QRegularExpression("^Unable to read hosts file /proc/self/mem: ."));

    m_view->setHostFile("/proc/self/mem");

    QCOMPARE(outline(), QString("{a}"));
}

void tst_zoHPCTreeGUIWText::hostsFileThatIsNoTextLeavesTheTree_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("utf-16-little") << QByteArray("n\0001\0 \0-\0 \0n\0003\0", 14);
    QTest::newRow("utf-16-big") << QByteArray("\xfe\xff\0n\0001", 6);
    QTest::newRow("nul-at-the-end") << QByteArray("n1 - n3\n\0", 9);
}

void tst_zoHPCTreeGUIWText::hostsFileThatIsNoTextLeavesTheTree()
{
    QFETCH(QByteArray, content);
    QTemporaryDir folder;
    QFile file(folder.filePath("hosts.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    m_view->setHostString("a");
    expectMessage(QtCriticalMsg,
                  QRegularExpression("^Unable to read hosts file .*hosts\\.txt: it is no text in UTF-8$"));

    m_view->setHostFile(file.fileName());

    QCOMPARE(outline(), QString("{a}"));
}

void tst_zoHPCTreeGUIWText::writesHostsText_data()
{
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty-master") << ""
                                  << "";
    QTest::newRow("one-empty-network") << "{ }"
                                       << "";
    QTest::newRow("range-and-single") << "n01 n02 n03 n04 n05 x"
                                      << "n01 - n05\nx\n";
    QTest::newRow("two-are-no-run") << "n1 n2"
                                    << "n1\nn2\n";
    QTest::newRow("two-networks") << "{ a } { b }"
                                  << "{\n  a\n}\n{\n  b\n}\n";
    QTest::newRow("forwarding") << "gw { a b } c"
                                << "gw\n{\n  a\n  b\n}\nc\n";
    QTest::newRow("forwarding-in-one-of-two") << "{ gw { a } } { }"
                                              << "{\n  gw\n  {\n    a\n  }\n}\n{\n}\n";
    QTest::newRow("gateway-ends-a-run") << "n1 n2 n3 n4 { a } n5"
                                        << "n1 - n3\nn4\n{\n  a\n}\nn5\n";
    QTest::newRow("gateway-starts-none") << "n1 { a } n2 n3"
                                         << "n1\n{\n  a\n}\nn2\nn3\n";
    QTest::newRow("padding-over-the-tens") << "n08 n09 n10"
                                           << "n08 - n10\n";
    QTest::newRow("width-grows") << "n8 n9 n10"
                                 << "n8 - n10\n";
    QTest::newRow("padding-never-shrinks") << "n8 n09 n10"
                                           << "n8\nn09\nn10\n";
    QTest::newRow("all-nines") << "n99 n100 n101"
                               << "n99 - n101\n";
    QTest::newRow("lossy-run") << "host 1 2"
                               << "host - 2\n";
    QTest::newRow("two-runs") << "a1 a2 a3 b1 b2 b3"
                              << "a1 - a3\nb1 - b3\n";
    QTest::newRow("gap") << "a1 a2 a3 a5 a6 a7"
                         << "a1 - a3\na5 - a7\n";
    QTest::newRow("long-number") << "n9999999998 n9999999999 n1 n2"
                                 << "n9999999998\nn9999999999 - n2\n";
    QTest::newRow("long-number-counts-from-zero") << "n9999999998 n1 n2"
                                                  << "n9999999998 - n2\n";
}

void tst_zoHPCTreeGUIWText::writesHostsText()
{
    QFETCH(QString, tree);
    QFETCH(QString, text);
    m_view->setHostString(tree);

    QCOMPARE(m_view->getHostsString(), text);
    QCOMPARE(StepWriter::write(m_master), text);
}

void tst_zoHPCTreeGUIWText::writesNamesOutsideAsciiAsTheirBytes()
{
    m_view->setHostString("a");
    item({0, 0})->setHostName(QString::fromUtf8("kö"));

    QCOMPARE(m_view->getHostsString(), QString::fromLatin1("k\xc3\xb6\n"));
    // Such names do not survive the text.
    m_view->setHostString(m_view->getHostsString());
    QCOMPARE(outline(), QString("{k}"));
}

void tst_zoHPCTreeGUIWText::writerAgreesWithTheStepByStepWriter()
{
    const QStringList names{"n1",  "n2",  "n3",  "n01", "n02", "n03", "n9",
                            "n10", "n11", "n09", "x",   "1",   "2",   ""};
    QRandomGenerator random(5);

    for (int round = 0; round < 200; ++round) {
        m_view->setHostString("{ }");
        std::vector<QTreeWidgetItem*> parents{m_master};
        int name = 0;
        for (int k = random.bounded(40); k > 0; --k) {
            QTreeWidgetItem* parent = parents[std::size_t(random.bounded(int(parents.size())))];
            if (random.bounded(6) == 0) {
                parents.push_back(m_view->createNetwork(parent, -1));
            } else {
                name = random.bounded(3) ? (name + 1) % names.size() : random.bounded(names.size());
                auto* node = m_view->createNode(parent, names.at(name), -1);
                if (random.bounded(8) == 0)
                    parents.push_back(node);
            }
        }
        QCOMPARE(m_view->getHostsString(), StepWriter::write(m_master));
    }
}

void tst_zoHPCTreeGUIWText::writesOneItemAndOneListIntoAStream()
{
    m_view->setHostString("{ a { b } c } { d }");
    std::stringstream out;

    out << "x";
    m_view->getHostsString(item({0}), out, 1);
    m_view->getHostRangeString(item({0})->items(), out, 3);

    QCOMPARE(QString::fromStdString(out.str()),
             QString("x {\n   a\n   {\n     b\n   }\n   c\n }\n   a\n   {\n     b\n   }\n   c\n"));
}

void tst_zoHPCTreeGUIWText::writtenTextReadsBackToTheSameTree()
{
    m_view->setHostString("{ n1 - n20 gw { a { b } c } x } { m07 - m12 } { }");
    const QString before = outline();

    m_view->setHostString(m_view->getHostsString());

    QCOMPARE(outline(), before);
}

void tst_zoHPCTreeGUIWText::runsEndWhereTheReaderWouldNotFillThem_data()
{
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("text");

    QTest::newRow("longest") << "n1 - n10001"
                             << "n1 - n10001\n";
    QTest::newRow("one-more") << "n1 - n10001 n10002"
                              << "n1 - n10001\nn10002\n";
    QTest::newRow("two-ranges") << "n1 - n10001 - n10005"
                                << "n1 - n10001\nn10002 - n10005\n";
    QTest::newRow("largest-number") << "n2147483645 n2147483646 n2147483647 n2147483648"
                                    << "n2147483645 - n2147483647\nn2147483648\n";
    QTest::newRow("past-the-largest-number") << "n2147483647 n2147483648 n2147483649"
                                             << "n2147483647\nn2147483648\nn2147483649\n";
}

void tst_zoHPCTreeGUIWText::runsEndWhereTheReaderWouldNotFillThem()
{
    QFETCH(QString, tree);
    QFETCH(QString, text);
    m_view->setHostString(tree);
    const QString before = outline();

    QCOMPARE(m_view->getHostsString(), text);
    m_view->setHostString(text);
    QCOMPARE(outline(), before);
}

void tst_zoHPCTreeGUIWText::fiveThousandNestedBraces()
{
    const int depth = 5000;
    QString text;
    for (int i = 0; i < depth; ++i)
        text += "{ n";
    m_view->resize(300, 300);
    m_view->show();

    m_view->setHostString(text);
    QCoreApplication::processEvents();
    QVERIFY(!m_view->grab().isNull());
    QCOMPARE(int(m_view->getNodeItems().size()), depth);
    m_view->setSelectedItem(m_view->getNodeItems().back());
    QCoreApplication::processEvents();
    m_view->setIsRunning(true, {"n_4000"});

    // Rebuilt over itself, saved, loaded and unloaded.
    m_view->setHostString(text);
    QCoreApplication::processEvents();
    {
        QDomDocument document;
        document.appendChild(document.createElement("cluster"));
        m_view->saveToXML(document);
        m_view->setDefaultConfig();
        m_view->loadFromXML(document);
    }
    QCoreApplication::processEvents();
    QCOMPARE(int(m_view->getNodeItems().size()), depth);
    QVERIFY(m_view->findNetworkByIndex(depth));
    m_view.reset();
}

void tst_zoHPCTreeGUIWText::textOfTooManyHostsIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    // A line is 10,000 hosts.
    QString ranges;
    for (int i = 100; i < 201; ++i)
        ranges += QStringLiteral("n%1x0 - n%1x9999\n").arg(i);
    const QString tooMany = QStringLiteral("^The hosts text names more than 1000000 hosts");
    QTest::newRow("ranges") << ranges << tooMany;
    const QString longName(100, QLatin1Char('n'));
    QString longNames;
    for (int i = 0; i < 33; ++i)
        longNames += longName + QString::number(i) + "x0 - " + longName + QString::number(i) + "x9999\n";
    QTest::newRow("long-names") << longNames << tooMany;
    QTest::newRow("deep-in-braces") << QString("n {").repeated(5000) + QString(" a").repeated(9000)
                                    << QStringLiteral("^The hosts text is nested too deep");
}

void tst_zoHPCTreeGUIWText::textOfTooManyHostsIsRefused()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    m_view->setHostString("kept");
    expectMessage(QtCriticalMsg, QRegularExpression(message));

    m_view->setHostString(text);

    QCOMPARE(outline(), QString("{kept}"));
}

void tst_zoHPCTreeGUIWText::tooDeepHostsTextIsRefused()
{
    load("<cluster booking='b'><master><network><node name='kept'/></network></master></cluster>");
    int selections = 0;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this, [&selections] { ++selections; });
    QVERIFY(zoHPCTreeDepth::limit() > 10000);
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(
            "^The hosts text is nested too deep: the tree has at most \\d+ levels\\. Put networks"));

    m_view->setHostString(QString("{ n").repeated(zoHPCTreeDepth::limit()));

    QCOMPARE(outline(), QString("{kept}"));
    QCOMPARE(m_view->booking(), QString("b"));
    QCOMPARE(selections, 0);
}

ZO_TEST_MAIN(tst_zoHPCTreeGUIWText)
#include "tst_zoHPCTreeGUIWText.moc"
