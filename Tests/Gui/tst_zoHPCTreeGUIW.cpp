#include "zoTestCase.h"

#include <zoHPC.h>
#include <zoHPCConfigEditGUIW.h>
#include <zoHPCDocumentText.h>
#include <zoHPCDocumentWriter.h>
#include <zoHPCHostsText.h>
#include <zoHPCTreeDepth.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <zoIconManager.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

// The host tree's view: hosts text, section of the document, editing and running state.
class tst_zoHPCTreeGUIW final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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

    // Hosts text, writing
    void writesHostsText_data();
    void writesHostsText();
    void writesNamesOutsideAsciiAsTheirBytes();
    void writerAgreesWithTheStepByStepWriter();
    void writesOneItemAndOneListIntoAStream();
    void writtenTextReadsBackToTheSameTree();
    void runsEndWhereTheReaderWouldNotFillThem_data();
    void runsEndWhereTheReaderWouldNotFillThem();

    // Section of the document
    void defaultTree();
    void sectionHoldsTheTree();
    void sectionSurvivesALoad();
    void documentWithoutMasterLeavesAnEmptyMaster_data();
    void documentWithoutMasterLeavesAnEmptyMaster();
    void nodeDirectlyUnderTheMasterIsANode();
    void emptyOptionsDisappearOnASave();
    void disabledAndNotRenderingSurvive();
    void unknownAttributesAreKept();
    void unknownElementsAreTransparent();
    void nodeWithoutANameIsLocalhost();
    void masterInsideANodeIsTheMaster();
    void nodesFileIsRememberedNotRead();
    void nodesFileOnAnyElementCounts();
    void savingReadsTheHostsFileFirst();
    void savingWithAnUnreadableHostsFileKeepsTheTree();
    void savingKeepsWhatTheTreeShows();
    void bookingIsSavedOnceWithAHostsFile();
    void defaultConfigKeepsTheBooking();
    void readsOneElementUnderAnItem();
    void loadAnnouncesTheMasterAndTheHosts();
    void newContentOfTheCurrentMasterIsAnnounced();
    void attributesWithPlaceholdersSurvive();

    // Queries
    void nodeNamesSkipEmptyOnes();
    void networksCountFromOne();

    // Editing
    void startsWithTheDefaultTree();
    void actionsHaveTheirTexts();
    void addHostOnTheMasterOfAnEmptyTree();
    void addHostOnTheMasterNotifiesTwice();
    void addHostOnANetworkAppends();
    void addHostOnANodeInsertsBehindIt();
    void addNetworkOnANodeForwards();
    void addNetworkOnANetworkInsertsBehindIt();
    void addNetworkDoesNotNotify();
    void removedItemIsDetachedNotDestroyed();
    void removedItemMayBeDestroyedByOthers();
    void removedItemMayBePutBack();
    void removingTheMasterIsHarmless();
    void removalNeverShowsADeadItem();
    void removeActionsFollowTheCurrentItem();
    void contextMenuHoldsTheActionsInOrder();
    void contextMenuOnlyOverAnItem();
    void editHostsTakesTheText();
    void editHostsTakesTheFileOverTheText();
    void editHostsCancelledChangesNothing();
    void deletedRowIsWholeWhileTheCurrentOneMovesOn();
    void overlayIconIsPaintedAtEightEight();
    void disabledRowsAreReadable();
    void rowsFillTheView();

    // Running state
    void runningMarksNodesAndTheirNetworks();
    void runningMarksTheNthOfEqualNames();
    void runningMarksNetworksByTheirId();
    void notRunningMarksNothing();
    void stoppedClusterShowsNothingRunning();
    void runningBlocksEditing();
    void runningStateAgreesWithSettingItOneByOne();

    // Size
    void modelStaysConsistent();
    void fiveThousandNestedBraces();
    void tooDeepHostsTextIsRefused();
    void tooDeepSectionIsRefused();
    void sectionIsTheSameAsTextAndAsDocument_data();
    void sectionIsTheSameAsTextAndAsDocument();
    void optionsNamedLikeAttributesReplaceThem();
    void writingTheTextReadsTheHostsFileFirst();

private slots:
    // Keys
    void deleteKeyRemovesTheCurrentRow_data();
    void deleteKeyRemovesTheCurrentRow();

private:
    QString outline() const;
    static QString outline(const QTreeWidgetItem* item);
    static QString details(const QTreeWidgetItem* item);
    zoHPCTreeItem* item(std::initializer_list<int> rows) const;
    QStringList running() const;
    QString section();
    void load(const QString& text);

    std::unique_ptr<zoHPCTreeGUIW> m_view;
    QTreeWidget* m_tree = nullptr;
    zoHPCTreeItem* m_master = nullptr;
};

namespace
{
zoHPCTreeItem* asItem(QTreeWidgetItem* item)
{
    return static_cast<zoHPCTreeItem*>(item);
}

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
                    network = anchor == &root ? nullptr : asItem(anchor->parent());
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
            start = asItem(start->child(0));
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

bool sameIcon(const QIcon& a, const QIcon& b)
{
    return a.pixmap(32, 32).toImage() == b.pixmap(32, 32).toImage();
}

// Answers the next modal dialog.
void whenDialogOpens(const std::function<void(zoHPCConfigEditGUIW*)>& answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        auto* dialog = qobject_cast<zoHPCConfigEditGUIW*>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        answer(dialog);
    });
}
} // namespace

void tst_zoHPCTreeGUIW::init()
{
    m_view = std::make_unique<zoHPCTreeGUIW>();
    m_tree = m_view->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    m_master = asItem(m_tree->topLevelItem(0));
}

void tst_zoHPCTreeGUIW::cleanup()
{
    m_view.reset();
    zoTestCase::cleanup();
}

// "{a b {c}}": the kinds, names and nesting below an item.
QString tst_zoHPCTreeGUIW::outline(const QTreeWidgetItem* item)
{
    QStringList parts;
    for (int i = 0; i < item->childCount(); ++i) {
        const zoHPCTreeItem* child = asItem(item->child(i));
        QString part = child->isNetwork() ? QString() : child->hostName();
        const QString below = outline(child);
        if (child->isNetwork())
            part = '{' + below + '}';
        else if (!below.isEmpty())
            part += ' ' + below;
        parts << part;
    }
    return parts.join(' ');
}

QString tst_zoHPCTreeGUIW::outline() const
{
    return outline(m_master);
}

// Everything that an item below holds and shows.
QString tst_zoHPCTreeGUIW::details(const QTreeWidgetItem* item)
{
    QString result;
    for (int i = 0; i < item->childCount(); ++i) {
        auto* child = asItem(const_cast<QTreeWidgetItem*>(item)->child(i));
        result +=
            QStringLiteral("(%1%2%3 '%4' '%5' '%6'")
                .arg(child->isNetwork() ? "W" : "", child->isNode() ? "N" : "", child->isMaster() ? "M" : "",
                     child->hostName(), child->text(0), child->foreground(0).color().name());
        result += QString::number(qHash(
            QByteArray(reinterpret_cast<const char*>(child->icon(0).pixmap(32, 32).toImage().constBits()),
                       32 * 32 * 4)));
        for (const auto& option : child->getOptions())
            result += QStringLiteral(" %1=%2").arg(option.first, option.second);
        result += details(child) + ')';
    }
    return result;
}

zoHPCTreeItem* tst_zoHPCTreeGUIW::item(std::initializer_list<int> rows) const
{
    QTreeWidgetItem* found = m_master;
    for (int row : rows)
        found = found ? found->child(row) : nullptr;
    return asItem(found);
}

QStringList tst_zoHPCTreeGUIW::running() const
{
    QStringList ids;
    std::vector<zoHPCTreeItem*> items;
    m_master->getAllSubItems(items);
    std::map<QString, zoHPCTreeItem*> cache;
    for (zoHPCTreeItem* item : items) {
        const QString id = item->addToIDCache(cache);
        if (item->isRunning())
            ids << id;
    }
    return ids;
}

void tst_zoHPCTreeGUIW::sectionIsTheSameAsTextAndAsDocument_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << "<cluster/>";
    QTest::newRow("default-tree")
        << "<cluster><master scenecompression='best'><network><node name='localhost'/>"
           "</network></master></cluster>";
    QTest::newRow("booking") << "<cluster booking='a&amp;b'><master/></cluster>";
    QTest::newRow("hosts-file-that-is-gone")
        << "<cluster><master nodesfile='/no/such/file' a='1' z='2'/></cluster>";
    QTest::newRow("options-in-key-order")
        << "<cluster><master z='1' b='2'><network speed='10g' encrypted='true' description='%1 &lt;x&gt;'>"
           "<node serviceport='1' name='n' enabled='false' Z='3'/></network></master></cluster>";
    QTest::newRow("empty-name") << "<cluster><master><network><node name=''/></network></master></cluster>";
    QTest::newRow("gateways")
        << "<cluster><master><network><node name='a'><network><node name='b'/></network>"
           "<network/></node><node name='c'/></network><node name='d'/></master></cluster>";
}

void tst_zoHPCTreeGUIW::sectionIsTheSameAsTextAndAsDocument()
{
    QFETCH(QString, text);
    load(text);

    zoHPCDocumentWriter writer;
    writer.openElement("cluster");
    m_view->writeSection(writer);
    writer.closeElement();
    const QString written = writer.takeText();

    QCOMPARE(written, section());
}

void tst_zoHPCTreeGUIW::optionsNamedLikeAttributesReplaceThem()
{
    load("<cluster><master nodesfile='/no/such/file'><network><node name='n'/></network></master></cluster>");
    m_master->setOption("nodesfile", "/other");
    m_master->setOption("name", "boss");
    item({0, 0})->setOption("name", "m");
    item({0})->setOption("nodesfile", "kept");

    zoHPCDocumentWriter writer;
    writer.openElement("cluster");
    m_view->writeSection(writer);
    writer.closeElement();
    const QString written = writer.takeText();

    QCOMPARE(written, section());
    QVERIFY(written.contains("<master name=\"boss\" nodesfile=\"/other\">"));
    QVERIFY(written.contains("<node name=\"m\"/>"));
}

void tst_zoHPCTreeGUIW::writingTheTextReadsTheHostsFileFirst()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("fresh");
    file.flush();
    load(QString("<cluster booking='b'><master nodesfile='%1'><network><node "
                 "name='old'/></network></master></cluster>")
             .arg(file.fileName()));

    zoHPCDocumentWriter writer;
    writer.openElement("cluster");
    m_view->writeSection(writer);
    writer.closeElement();
    const QString written = writer.takeText();

    QVERIFY(written.contains("<node name=\"fresh\"/>"));
    QVERIFY(!written.contains("old"));
    QVERIFY(written.startsWith("<cluster booking=\"b\">"));
    QVERIFY(m_view->booking().isEmpty());
}

QString tst_zoHPCTreeGUIW::section()
{
    QDomDocument document;
    document.appendChild(document.createElement("cluster"));
    m_view->saveToXML(document);
    return zoHPCDocumentText::toText(document);
}

void tst_zoHPCTreeGUIW::load(const QString& text)
{
    QDomDocument document;
    QVERIFY(document.setContent(text));
    m_view->loadFromXML(document);
}

// ---- Hosts text, reading

void tst_zoHPCTreeGUIW::readsHostsText_data()
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

void tst_zoHPCTreeGUIW::readsHostsText()
{
    QFETCH(QString, text);
    QFETCH(QString, tree);

    m_view->setHostString(text);

    QCOMPARE(outline(), tree);
}

void tst_zoHPCTreeGUIW::rangeTakesTheHostsOptions()
{
    m_view->setHostString("n1 - n4[rt=0] n5");

    QCOMPARE(outline(), QString("{n1 n2 n3 n4 n5}"));
    QVERIFY(item({0, 0})->isRenderNode());
    QVERIFY(!item({0, 1})->isRenderNode());
    QVERIFY(!item({0, 2})->isRenderNode());
    QVERIFY(!item({0, 3})->isRenderNode());
    QVERIFY(item({0, 4})->isRenderNode());
}

void tst_zoHPCTreeGUIW::renderOptionIsOverridden_data()
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

void tst_zoHPCTreeGUIW::renderOptionIsOverridden()
{
    QFETCH(QString, text);
    QFETCH(bool, before);
    QFETCH(bool, after);
    m_view->setHostString("host");
    item({0, 0})->setIsRenderNode(before);

    m_view->setHostString(text);

    QCOMPARE(item({0, 0})->isRenderNode(), after);
}

void tst_zoHPCTreeGUIW::rebuildKeepsOptionsOfEqualIds()
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

void tst_zoHPCTreeGUIW::rebuildKeepsMarksAndUniqueNames()
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

void tst_zoHPCTreeGUIW::rebuildFromOwnOutputKeepsAllOptions()
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

void tst_zoHPCTreeGUIW::newItemsOfARebuildHaveDefaults()
{
    m_view->setHostString("a");
    item({0, 0})->setOption("speed", "1g");
    item({0, 0})->setIsEnabled(false);

    m_view->setHostString("b");

    const std::map<QString, QString> defaults{{"enabled", ""}};
    QCOMPARE(item({0, 0})->getOptions(), defaults);
    QCOMPARE(item({0})->getOptions(), defaults);
}

void tst_zoHPCTreeGUIW::rebuildAgreesWithTheStepByStepReader_data()
{
    QTest::addColumn<QString>("odd");

    QTest::newRow("usual-names") << "";
    QTest::newRow("name-like-a-network-id") << "Network:/0/";
    QTest::newRow("name-like-a-suffixed-id") << "n1_2";
}

void tst_zoHPCTreeGUIW::rebuildAgreesWithTheStepByStepReader()
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

void tst_zoHPCTreeGUIW::rebuildClearsTheBookingAndSelectsTheMaster()
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

void tst_zoHPCTreeGUIW::rebuildEmitsNoHostsChanged()
{
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->setHostString("a");

    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIW::rebuildExpandsWhatHasChildren()
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

void tst_zoHPCTreeGUIW::rebuiltItemsShowTheirState()
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

void tst_zoHPCTreeGUIW::insertHostRangeFillsUpToTheNode_data()
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

void tst_zoHPCTreeGUIW::insertHostRangeFillsUpToTheNode()
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

void tst_zoHPCTreeGUIW::firstRowHasNoRange()
{
    m_view->setHostString("n5");

    QVERIFY(m_view->insertHostRange(item({0, 0})).empty());
}

void tst_zoHPCTreeGUIW::createHostNameCountsUp()
{
    QCOMPARE(zoHPCTreeGUIW::createHostName("node07", 3), QString("node10"));
    QCOMPARE(zoHPCTreeGUIW::createHostName("host", 2), QString("2"));
}

void tst_zoHPCTreeGUIW::hostsFileIsRead()
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

void tst_zoHPCTreeGUIW::unreadableHostsFileLeavesTheTree()
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

void tst_zoHPCTreeGUIW::hostsFileThatFailsWhileReadLeavesTheTree()
{
    m_view->setHostString("a");
    // Opens, but nothing is mapped where it begins: reading fails.
    expectMessage(QtCriticalMsg, QRegularExpression("^Unable to read hosts file /proc/self/mem: ."));

    m_view->setHostFile("/proc/self/mem");

    QCOMPARE(outline(), QString("{a}"));
}

// ---- Hosts text, writing

void tst_zoHPCTreeGUIW::writesHostsText_data()
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

void tst_zoHPCTreeGUIW::writesHostsText()
{
    QFETCH(QString, tree);
    QFETCH(QString, text);
    m_view->setHostString(tree);

    QCOMPARE(m_view->getHostsString(), text);
    QCOMPARE(StepWriter::write(m_master), text);
}

void tst_zoHPCTreeGUIW::writesNamesOutsideAsciiAsTheirBytes()
{
    m_view->setHostString("a");
    item({0, 0})->setHostName(QString::fromUtf8("kö"));

    QCOMPARE(m_view->getHostsString(), QString::fromLatin1("k\xc3\xb6\n"));
    // Such names do not survive the text.
    m_view->setHostString(m_view->getHostsString());
    QCOMPARE(outline(), QString("{k}"));
}

void tst_zoHPCTreeGUIW::writerAgreesWithTheStepByStepWriter()
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

void tst_zoHPCTreeGUIW::writesOneItemAndOneListIntoAStream()
{
    m_view->setHostString("{ a { b } c } { d }");
    std::stringstream out;

    out << "x";
    m_view->getHostsString(item({0}), out, 1);
    m_view->getHostRangeString(item({0})->items(), out, 3);

    QCOMPARE(QString::fromStdString(out.str()),
             QString("x {\n   a\n   {\n     b\n   }\n   c\n }\n   a\n   {\n     b\n   }\n   c\n"));
}

void tst_zoHPCTreeGUIW::writtenTextReadsBackToTheSameTree()
{
    m_view->setHostString("{ n1 - n20 gw { a { b } c } x } { m07 - m12 } { }");
    const QString before = outline();

    m_view->setHostString(m_view->getHostsString());

    QCOMPARE(outline(), before);
}

void tst_zoHPCTreeGUIW::runsEndWhereTheReaderWouldNotFillThem_data()
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

void tst_zoHPCTreeGUIW::runsEndWhereTheReaderWouldNotFillThem()
{
    QFETCH(QString, tree);
    QFETCH(QString, text);
    m_view->setHostString(tree);
    const QString before = outline();

    QCOMPARE(m_view->getHostsString(), text);
    m_view->setHostString(text);
    QCOMPARE(outline(), before);
}

// ---- Section of the document

void tst_zoHPCTreeGUIW::defaultTree()
{
    load("<cluster booking='b'><master nodesfile='/x' homogeneous='true'><network/></master></cluster>");

    m_view->setDefaultConfig();

    QCOMPARE(outline(), QString("{localhost}"));
    QCOMPARE(m_master->getOption("scenecompression"), QString("best"));
    QVERIFY(!m_master->hasOption("homogeneous"));
    QVERIFY(m_view->hostFile().isEmpty());
    QVERIFY(item({0})->isExpanded());
    QCOMPARE(m_view->selectedItem(), m_master);
}

void tst_zoHPCTreeGUIW::sectionHoldsTheTree()
{
    m_view->setHostString("gpu01 gpu02 gw1[rt=0] { wall1 }");
    item({0})->setOption("network", "infiniband");
    item({0})->setOption("encrypted", "true");
    item({0})->setOption("speed", "10g");
    item({0})->setOption("description", "Render farm");
    item({0, 1})->setIsEnabled(false);

    QCOMPARE(section(), QString("<cluster>\n"
                                " <master scenecompression=\"best\">\n"
                                "  <network description=\"Render farm\" encrypted=\"true\" "
                                "network=\"infiniband\" speed=\"10g\">\n"
                                "   <node name=\"gpu01\"/>\n"
                                "   <node name=\"gpu02\" enabled=\"false\"/>\n"
                                "   <node name=\"gw1\" rendernode=\"false\">\n"
                                "    <network>\n"
                                "     <node name=\"wall1\"/>\n"
                                "    </network>\n"
                                "   </node>\n"
                                "  </network>\n"
                                " </master>\n"
                                "</cluster>\n"));
}

void tst_zoHPCTreeGUIW::sectionSurvivesALoad()
{
    m_view->setHostString("{ a b[rt=0] { c d } } { e } { }");
    item({0, 1})->setIsEnabled(false);
    item({1})->setOption("description", "<&\"%1");
    const QString saved = section();
    const QString before = details(m_master);

    m_view->setDefaultConfig();
    load(saved);

    QCOMPARE(section(), saved);
    // Equal but for empty options, which are not written; new items have "enabled" again.
    QCOMPARE(details(m_master), before);
}

void tst_zoHPCTreeGUIW::documentWithoutMasterLeavesAnEmptyMaster_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("root-only") << "<cluster/>";
    QTest::newRow("network-outside")
        << "<cluster><network><node name='a'/></network><node name='b'/></cluster>";
    QTest::newRow("upper-case") << "<cluster><Master speed='1g'><network/></Master></cluster>";
    QTest::newRow("no-document") << "";
}

void tst_zoHPCTreeGUIW::documentWithoutMasterLeavesAnEmptyMaster()
{
    QFETCH(QString, text);
    QDomDocument document;
    document.setContent(text);

    m_view->loadFromXML(document);

    QCOMPARE(m_master->childCount(), 0);
    QVERIFY(m_master->getOptions().empty());
    QVERIFY(m_view->booking().isEmpty());
}

void tst_zoHPCTreeGUIW::nodeDirectlyUnderTheMasterIsANode()
{
    load("<cluster><master encrypted='true'><node name='a'><node name='b'/></node></master></cluster>");

    QVERIFY(item({0})->isNode());
    QCOMPARE(m_view->getNodeNames(), (QStringList{"a", "b"}));
    QVERIFY(sameIcon(item({0})->icon(0), zoHPCTreeItem::getIcon(1, true, false, true, false)));
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
}

void tst_zoHPCTreeGUIW::emptyOptionsDisappearOnASave()
{
    m_view->setHostString("a");
    item({0, 0})->setOption("speed", "");
    const QString saved = section();

    QVERIFY(!saved.contains("speed"));
    QVERIFY(!saved.contains("enabled"));
    load(saved);
    QCOMPARE(int(item({0, 0})->getOptions().count("speed")), 0);
    QVERIFY(item({0, 0})->isEnabled());
}

void tst_zoHPCTreeGUIW::disabledAndNotRenderingSurvive()
{
    load("<cluster><master><network><node name='a' enabled='false' rendernode='false' encrypted='true'/>"
         "</network></master></cluster>");
    load(section());

    QVERIFY(!item({0, 0})->isEnabled());
    QVERIFY(!item({0, 0})->isRenderNode());
    QVERIFY(item({0, 0})->isEncrypted());
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(1, false, false, false, true)));
}

void tst_zoHPCTreeGUIW::unknownAttributesAreKept()
{
    load("<cluster><master future='1'><network x-y='2'><node name='a' "
         "Name='b'/></network></master></cluster>");

    QCOMPARE(m_master->getOption("future"), QString("1"));
    QCOMPARE(item({0})->getOption("x-y"), QString("2"));
    QCOMPARE(item({0, 0})->getOption("Name"), QString("b"));
    QVERIFY(section().contains("<master future=\"1\""));
}

void tst_zoHPCTreeGUIW::unknownElementsAreTransparent()
{
    load("<cluster><group><master><folder speed='1g'><network><row><node name='a'/></row>text<!-- c -->"
         "<node name='b'/></network></folder></master></group></cluster>");

    QCOMPARE(outline(), QString("{a b}"));
    QVERIFY(!m_master->hasOption("speed"));
}

void tst_zoHPCTreeGUIW::nodeWithoutANameIsLocalhost()
{
    load("<cluster><master><network name='n'><node/><node name=''/></network></master></cluster>");

    QCOMPARE(item({0, 0})->hostName(), QString("localhost"));
    QCOMPARE(item({0, 1})->hostName(), QString());
    QVERIFY(!item({0})->hasOption("name"));
}

void tst_zoHPCTreeGUIW::masterInsideANodeIsTheMaster()
{
    load("<cluster><master><network><node name='a'><master speed='1g'><network><node name='b'/></network>"
         "</master></node><node name='c'/></network></master></cluster>");

    QCOMPARE(outline(), QString("{a c} {b}"));
    QCOMPARE(m_master->getOption("speed"), QString("1g"));
}

void tst_zoHPCTreeGUIW::nodesFileIsRememberedNotRead()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("h");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x y");
    file.close();

    load(QString("<cluster><master nodesfile='%1'><network><node name='a'/></network></master></cluster>")
             .arg(path));

    QCOMPARE(m_view->hostFile(), path);
    QCOMPARE(outline(), QString("{a}"));
    QVERIFY(!m_master->hasOption("nodesfile"));

    load("<cluster><master/></cluster>");
    QVERIFY(m_view->hostFile().isEmpty());
}

void tst_zoHPCTreeGUIW::nodesFileOnAnyElementCounts()
{
    load("<cluster><master nodesfile='/a'><network><node name='a' "
         "nodesfile='/b'/></network></master></cluster>");

    QCOMPARE(m_view->hostFile(), QString("/b"));
    QVERIFY(!item({0, 0})->hasOption("nodesfile"));
}

void tst_zoHPCTreeGUIW::savingReadsTheHostsFileFirst()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("hosts %1");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x y");
    file.close();
    m_view->setHostFile(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("y z");
    file.close();

    const QString saved = section();

    QCOMPARE(outline(), QString("{y z}"));
    QVERIFY(saved.contains(QStringLiteral("nodesfile=\"") + path + '"'));
    QVERIFY(saved.contains("\"z\""));
    QVERIFY(!saved.contains("\"x\""));
}

void tst_zoHPCTreeGUIW::savingWithAnUnreadableHostsFileKeepsTheTree()
{
    QTemporaryDir folder;
    m_view->setHostString("a b");
    zoHPCTreeItem* kept = item({0, 0});
    m_view->setHostFile(folder.filePath("missing"));

    const QString saved = section();

    QCOMPARE(item({0, 0}), kept);
    QVERIFY(saved.contains("\"a\""));
}

void tst_zoHPCTreeGUIW::savingKeepsWhatTheTreeShows()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("hosts");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a a b");
    file.close();
    m_view->setHostFile(path);
    item({0, 0})->setUniqueHostName("a 1");
    item({0, 1})->setUniqueHostName("a 2");
    item({0, 2})->setUniqueHostName("b");
    item({0, 1})->setIsDisplayNode(true);
    m_view->setIsRunning(true, {"a_2"});
    QSet<QString> before;
    const QString shown = details(m_master);

    section();

    QCOMPARE(details(m_master), shown);
    QCOMPARE(item({0, 0})->uniqueHostName(), QString("a 1"));
    QCOMPARE(item({0, 1})->uniqueHostName(), QString("a 2"));
    QCOMPARE(item({0, 2})->uniqueHostName(), QString("b"));
    QVERIFY(item({0, 1})->isDisplayNode());
    QCOMPARE(running(), (QStringList{"Network:/0/", "a_2"}));
}

void tst_zoHPCTreeGUIW::bookingIsSavedOnceWithAHostsFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("hosts");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a");
    file.close();

    load("<cluster booking='42'><master/></cluster>");
    QVERIFY(section().contains("booking=\"42\""));
    QVERIFY(section().contains("booking=\"42\""));

    load(QString("<cluster booking='42'><master nodesfile='%1'/></cluster>").arg(path));
    QVERIFY(section().contains("booking=\"42\""));
    QVERIFY(!section().contains("booking"));
}

void tst_zoHPCTreeGUIW::defaultConfigKeepsTheBooking()
{
    load("<cluster booking='42'><master/></cluster>");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->setDefaultConfig();

    QCOMPARE(m_view->booking(), QString("42"));
    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIW::readsOneElementUnderAnItem()
{
    m_view->setHostString("a");
    QDomDocument document;
    QVERIFY(document.setContent(
        QString("<network speed='1g'><node name='x'/><master><network/></master></network>")));

    m_view->setXMLConfig(item({0, 0}), document.documentElement());

    QCOMPARE(outline(), QString("{a {x}} {}"));
    QCOMPARE(item({0, 0, 0})->getOption("speed"), QString("1g"));

    QDomDocument out;
    QDomElement root = out.createElement("r");
    out.appendChild(root);
    m_view->appendXMLConfig(item({0, 0}), out, root);
    QCOMPARE(
        zoHPCDocumentText::toText(out),
        QString("<r>\n <node name=\"a\">\n  <network speed=\"1g\">\n   <node name=\"x\"/>\n  </network>\n "
                "</node>\n</r>\n"));
}

void tst_zoHPCTreeGUIW::loadAnnouncesTheMasterAndTheHosts()
{
    m_view->setSelectedItem(item({0, 0}));
    zoHPCTreeItem* selected = nullptr;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this,
            [&selected](zoHPCTreeItem* item) { selected = item; });
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    load("<cluster><master><network/></master></cluster>");

    QCOMPARE(changed.count(), 1);
    QCOMPARE(selected, m_master);
    QCOMPARE(m_view->selectedItem(), m_master);
    QVERIFY(m_master->isExpanded());
}

void tst_zoHPCTreeGUIW::newContentOfTheCurrentMasterIsAnnounced()
{
    QCOMPARE(m_view->selectedItem(), m_master);
    QStringList compressions;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this,
            [&compressions](zoHPCTreeItem* item) { compressions << item->getOption("scenecompression"); });

    // An editor that shows the master shows its new options.
    load("<cluster><master scenecompression='fast'/></cluster>");
    m_view->setDefaultConfig();

    QCOMPARE(compressions, (QStringList{"fast", "best"}));
}

void tst_zoHPCTreeGUIW::attributesWithPlaceholdersSurvive()
{
    load("<cluster><master><network description='%1 %2'><node name='%1'/></network></master></cluster>");

    QCOMPARE(item({0})->text(0), QString("Network (%1 %2)"));
    QCOMPARE(item({0, 0})->text(0), QString("%1"));
    QVERIFY(section().contains("name=\"%1\""));
}

// ---- Queries

void tst_zoHPCTreeGUIW::nodeNamesSkipEmptyOnes()
{
    m_view->setHostString("{ a { b } c } { d }");
    item({0, 1})->setHostName("");

    QCOMPARE(m_view->getNodeNames(), (QStringList{"a", "b", "d"}));
    QCOMPARE(m_view->getNodeItems(),
             (std::vector<zoHPCTreeItem*>{item({0, 0}), item({0, 0, 0, 0}), item({0, 1}), item({1, 0})}));
}

void tst_zoHPCTreeGUIW::networksCountFromOne()
{
    m_view->setHostString("{ a { b } c } { d }");

    QVERIFY(!m_view->findNetworkByIndex(-1));
    QVERIFY(!m_view->findNetworkByIndex(0));
    QCOMPARE(m_view->findNetworkByIndex(1), item({0}));
    QCOMPARE(m_view->findNetworkByIndex(2), item({0, 0, 0}));
    QCOMPARE(m_view->findNetworkByIndex(3), item({1}));
    QVERIFY(!m_view->findNetworkByIndex(4));
}

// ---- Editing

void tst_zoHPCTreeGUIW::startsWithTheDefaultTree()
{
    QCOMPARE(m_tree->topLevelItemCount(), 1);
    QVERIFY(m_master->isMaster());
    QCOMPARE(m_master->text(0), QString("Options"));
    QCOMPARE(m_master->getOption("scenecompression"), QString("best"));
    QCOMPARE(outline(), QString("{localhost}"));
    QCOMPARE(item({0})->text(0), QString("Network"));
    QCOMPARE(m_view->selectedItem(), m_master);
    QVERIFY(m_master->isExpanded());
    QVERIFY(item({0})->isExpanded());
    const std::unique_ptr<zoHPCTreeItem> another(m_view->createMaster());
    QVERIFY(another->isMaster());
    QVERIFY(another->treeWidget() == nullptr);
}

void tst_zoHPCTreeGUIW::actionsHaveTheirTexts()
{
    QCOMPARE(m_view->configAction()->text(), QString("Cluster config..."));
    QCOMPARE(m_view->addNetworkAction()->text(), QString("Add network"));
    QCOMPARE(m_view->addHostAction()->text(), QString("Add compute node"));
    QCOMPARE(m_view->removeNetworkAction()->text(), QString("Remove network"));
    QCOMPARE(m_view->removeHostAction()->text(), QString("Remove compute node"));
    QVERIFY(sameIcon(m_view->configAction()->icon(), zoIconManager::getIcon("Network", "")));
}

void tst_zoHPCTreeGUIW::addHostOnTheMasterOfAnEmptyTree()
{
    m_view->setHostString("");

    m_view->addHostAction()->trigger();

    QCOMPARE(outline(), QString("{localhost}"));
    QCOMPARE(m_view->selectedItem(), item({0, 0}));
    QCOMPARE(item({0})->text(0), QString("Network"));
    QVERIFY(item({0})->isExpanded());
}

void tst_zoHPCTreeGUIW::addHostOnTheMasterNotifiesTwice()
{
    m_view->setHostString("{ a } { b }");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->addHost();

    QCOMPARE(outline(), QString("{a} {b localhost}"));
    QCOMPARE(changed.count(), 2);
}

void tst_zoHPCTreeGUIW::addHostOnANetworkAppends()
{
    m_view->setHostString("{ a } { b }");
    m_view->setSelectedItem(item({0}));
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->addHost();

    QCOMPARE(outline(), QString("{a localhost} {b}"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_view->selectedItem(), item({0, 1}));
    QVERIFY(sameIcon(item({0, 1})->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
}

void tst_zoHPCTreeGUIW::addHostOnANodeInsertsBehindIt()
{
    m_view->setHostString("a b");
    m_view->setSelectedItem(item({0, 0}));

    m_view->addHost();

    QCOMPARE(outline(), QString("{a localhost b}"));
    QCOMPARE(m_view->selectedItem(), item({0, 1}));
}

void tst_zoHPCTreeGUIW::addNetworkOnANodeForwards()
{
    m_view->setHostString("a b");
    m_view->setSelectedItem(item({0, 0}));

    m_view->addNetworkAction()->trigger();

    QCOMPARE(outline(), QString("{a {} b}"));
    QCOMPARE(m_view->selectedItem(), item({0, 0, 0}));
}

void tst_zoHPCTreeGUIW::addNetworkOnANetworkInsertsBehindIt()
{
    m_view->setHostString("{ a } { b }");
    m_view->setSelectedItem(item({0}));

    m_view->addNetwork();

    QCOMPARE(outline(), QString("{a} {} {b}"));
    QCOMPARE(m_view->selectedItem(), item({1}));
    m_view->setSelectedItem(m_master);
    m_view->addNetwork();
    QCOMPARE(outline(), QString("{a} {} {b} {}"));
}

void tst_zoHPCTreeGUIW::addNetworkDoesNotNotify()
{
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->addNetwork();

    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIW::removedItemIsDetachedNotDestroyed()
{
    m_view->setHostString("a b");
    zoHPCTreeItem* removed = item({0, 0});
    m_view->setSelectedItem(removed);
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->removeHostAction()->trigger();

    QCOMPARE(outline(), QString("{b}"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(!removed->getParent());
    QCOMPARE(removed->hostName(), QString("a")); // the view destroys it later
}

void tst_zoHPCTreeGUIW::removedItemMayBeDestroyedByOthers()
{
    m_view->setHostString("a b");
    zoHPCTreeItem* removed = item({0, 0});
    m_view->setSelectedItem(removed);
    m_view->removeItem();

    delete removed;

    m_view->setHostString("c");
    QCOMPARE(outline(), QString("{c}"));
}

void tst_zoHPCTreeGUIW::removedItemMayBePutBack()
{
    m_view->setHostString("{ a } { b }");
    zoHPCTreeItem* removed = item({1});
    m_view->setSelectedItem(removed);
    m_view->removeItem();

    item({0})->addChild(removed);
    QTreeWidget other;
    m_view->setDefaultConfig(); // destroys what was removed before; this hangs in the tree again

    m_view->setHostString("c");
    QCOMPARE(outline(), QString("{c}"));
}

void tst_zoHPCTreeGUIW::removingTheMasterIsHarmless()
{
    m_view->setSelectedItem(m_master);
    m_view->removeItem();
    m_view->setSelectedItem(nullptr);
    m_view->removeItem();
    m_view->addHost();
    m_view->addNetwork();

    QCOMPARE(outline(), QString("{localhost}"));
    QCOMPARE(m_tree->topLevelItemCount(), 1);
}

void tst_zoHPCTreeGUIW::removalNeverShowsADeadItem()
{
    // Reads each shown item as an editor does, again after the tree changed.
    zoHPCTreeItem* shown = nullptr;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this, [&shown](zoHPCTreeItem* item) {
        shown = item;
        if (shown)
            QVERIFY(shown->hostName().size() < 100);
    });
    for (int round = 0; round < 5; ++round) {
        m_view->setHostString("{ a b { c d } } { e }");
        m_view->setSelectedItem(item({0, 1, 0, 0}));
        m_view->removeItem();
        m_view->setSelectedItem(item({0, 1}));
        m_view->removeItem();
        m_view->setSelectedItem(item({0}));
        if (round == 1)
            m_view->setDefaultConfig();
        if (round == 2)
            load("<cluster><master><network/></master></cluster>");
        if (round == 3)
            section();
        QVERIFY(shown);
        QVERIFY(shown == m_master || shown->treeWidget() == m_tree);
        QCOMPARE(shown, m_view->selectedItem());
    }
}

void tst_zoHPCTreeGUIW::removeActionsFollowTheCurrentItem()
{
    m_view->setSelectedItem(m_master);
    QVERIFY(!m_view->removeNetworkAction()->isEnabled());
    QVERIFY(!m_view->removeHostAction()->isEnabled());

    m_view->setSelectedItem(item({0}));
    QVERIFY(m_view->removeNetworkAction()->isEnabled());
    QVERIFY(!m_view->removeHostAction()->isEnabled());

    m_view->setSelectedItem(item({0, 0}));
    QVERIFY(!m_view->removeNetworkAction()->isEnabled());
    QVERIFY(m_view->removeHostAction()->isEnabled());
}

void tst_zoHPCTreeGUIW::contextMenuHoldsTheActionsInOrder()
{
    m_view->show();
    QStringList entries;
    QTimer::singleShot(0, qApp, [&entries] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (const QAction* action : menu->actions())
            entries << (action->isSeparator() ? QStringLiteral("--") : action->text());
        menu->close();
    });

    m_view->contextMenuRequested(m_tree->visualItemRect(item({0, 0})).center());

    QCOMPARE(entries, (QStringList{"Cluster config...", "--", "Add compute node", "Remove compute node", "--",
                                   "Add network", "Remove network"}));
}

void tst_zoHPCTreeGUIW::contextMenuOnlyOverAnItem()
{
    m_view->show();

    m_view->contextMenuRequested(QPoint(10, m_tree->viewport()->height() - 2)); // would wait for an answer

    QVERIFY(!QApplication::activePopupWidget());
}

void tst_zoHPCTreeGUIW::editHostsTakesTheText()
{
    m_view->setHostString("a b");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);
    QString title;
    QString shown;
    QPointer<QDialog> seen;
    whenDialogOpens([&](zoHPCConfigEditGUIW* dialog) {
        seen = dialog;
        title = dialog->windowTitle();
        shown = dialog->text();
        dialog->setText("c d");
        dialog->accept();
    });

    m_view->configAction()->trigger();

    QCOMPARE(title, QString("Cluster config..."));
    QCOMPARE(shown, QString("a\nb\n"));
    QCOMPARE(outline(), QString("{c d}"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(!seen);
}

void tst_zoHPCTreeGUIW::editHostsTakesTheFileOverTheText()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("hosts");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x y");
    file.close();
    whenDialogOpens([&path](zoHPCConfigEditGUIW* dialog) {
        dialog->setText("c d");
        dialog->setServersFile(path);
        dialog->accept();
    });

    m_view->editHosts();
    QCOMPARE(outline(), QString("{x y}"));
    QCOMPARE(m_view->hostFile(), path);

    // The path is shown next time, and an empty one ends the file's rule.
    QString shown;
    whenDialogOpens([&shown](zoHPCConfigEditGUIW* dialog) {
        shown = dialog->getServersFile();
        dialog->setServersFile("");
        dialog->setText("z");
        dialog->accept();
    });
    m_view->editHosts();
    QCOMPARE(shown, path);
    QVERIFY(m_view->hostFile().isEmpty());
    QCOMPARE(outline(), QString("{z}"));
}

void tst_zoHPCTreeGUIW::editHostsCancelledChangesNothing()
{
    m_view->setHostString("a b");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);
    whenDialogOpens([](zoHPCConfigEditGUIW* dialog) {
        dialog->setText("c d");
        dialog->setServersFile("/x");
        dialog->reject();
    });

    m_view->editHosts();

    QCOMPARE(outline(), QString("{a b}"));
    QVERIFY(m_view->hostFile().isEmpty());
    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIW::deletedRowIsWholeWhileTheCurrentOneMovesOn()
{
    m_view->setHostString("a b c");
    m_view->setSelectedItem(item({0, 1}));
    int selections = 0;
    bool whole = true;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this, [&] {
        ++selections;
        const QTreeWidgetItem* network = m_master->child(0);
        for (int row = 0; row < network->childCount(); ++row)
            whole = whole && dynamic_cast<const zoHPCTreeItem*>(network->child(row)) != nullptr;
    });

    delete item({0, 1});

    QVERIFY(selections > 0);
    QVERIFY(whole);
    QCOMPARE(outline(), QString("{a c}"));
}

void tst_zoHPCTreeGUIW::overlayIconIsPaintedAtEightEight()
{
    QPixmap base(32, 32);
    base.fill(Qt::white);
    QPixmap overlay(24, 24);
    overlay.fill(Qt::red);

    const QImage image = m_view->getOverlayIcon(base, overlay).pixmap(32, 32).toImage();

    QCOMPARE(image.pixelColor(7, 7), QColor(Qt::white));
    QCOMPARE(image.pixelColor(8, 8), QColor(Qt::red));
    QCOMPARE(image.pixelColor(31, 31), QColor(Qt::red));
}

void tst_zoHPCTreeGUIW::disabledRowsAreReadable()
{
    const QPalette palette = m_view->palette();

    QVERIFY(qAbs(palette.color(QPalette::Light).lightness() - palette.color(QPalette::Base).lightness()) >=
            60);
    QVERIFY(palette.color(QPalette::Light) != palette.color(QPalette::Text));
}

void tst_zoHPCTreeGUIW::rowsFillTheView()
{
    m_view->resize(500, 300);
    m_view->show();
    QTRY_COMPARE(m_tree->columnWidth(0), m_tree->viewport()->width());

    m_view->setHostString(QString(200, 'w'));
    QTRY_VERIFY(m_tree->columnWidth(0) > m_tree->viewport()->width());
}

// ---- Running state

void tst_zoHPCTreeGUIW::runningMarksNodesAndTheirNetworks()
{
    m_view->setHostString("{ a { x } b } { c }");

    m_view->setIsRunning(true, {"a", "x", "nowhere"});

    QCOMPARE(running(), (QStringList{"Network:/0/", "a", "Network:/0/0/", "x"}));
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(1, true, true, false, false)));
    QVERIFY(sameIcon(item({0})->icon(0), zoHPCTreeItem::getIcon(0, true, true, false, false)));
    QVERIFY(sameIcon(item({0, 1})->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
    QVERIFY(sameIcon(item({1})->icon(0), zoHPCTreeItem::getIcon(0, true, false, false, false)));

    m_view->setIsRunning(true, {"c"});
    QCOMPARE(running(), (QStringList{"Network:/1/", "c"}));
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
}

void tst_zoHPCTreeGUIW::runningMarksTheNthOfEqualNames()
{
    m_view->setHostString("n { n } n");

    m_view->setIsRunning(true, {"n_3"});
    QVERIFY(!item({0, 0})->isRunning());
    QVERIFY(item({0, 1})->isRunning());

    m_view->setIsRunning(true, {"n_2"});
    QVERIFY(item({0, 0, 0, 0})->isRunning());
    QVERIFY(!item({0, 1})->isRunning());
}

void tst_zoHPCTreeGUIW::runningMarksNetworksByTheirId()
{
    m_view->setHostString("{ a } { b }");

    m_view->setIsRunning(true, {"Network:/1/"});

    QVERIFY(item({1})->isRunning());
    QVERIFY(m_master->isRunning());
    QVERIFY(!item({1, 0})->isRunning());
    // The master has the empty id and no parent.
    m_view->setIsRunning(true, {""});
    QVERIFY(m_master->isRunning());
    QVERIFY(!item({1})->isRunning());
}

void tst_zoHPCTreeGUIW::notRunningMarksNothing()
{
    m_view->setHostString("a");

    m_view->setIsRunning(false, {"a"});

    QVERIFY(running().isEmpty());
}

void tst_zoHPCTreeGUIW::stoppedClusterShowsNothingRunning()
{
    m_view->setHostString("{ a { x } b } { c }");
    const QString before = details(m_master);
    m_view->setIsRunning(true, {"a", "x", "b", "c"});
    QVERIFY(details(m_master) != before);

    m_view->setIsRunning(false, {});

    QVERIFY(running().isEmpty());
    QCOMPARE(details(m_master), before);
}

void tst_zoHPCTreeGUIW::runningBlocksEditing()
{
    m_view->setSelectedItem(item({0}));

    m_view->setIsRunning(true, {});
    QVERIFY(!m_view->configAction()->isEnabled());
    QVERIFY(!m_view->addHostAction()->isEnabled());
    QVERIFY(!m_view->addNetworkAction()->isEnabled());
    QVERIFY(!m_view->removeHostAction()->isEnabled());
    // Only the current item governs this one.
    QVERIFY(m_view->removeNetworkAction()->isEnabled());
    m_view->setSelectedItem(item({0, 0}));
    QVERIFY(!m_view->removeNetworkAction()->isEnabled());
    QVERIFY(!m_view->removeHostAction()->isEnabled());

    m_view->setIsRunning(false, {});
    QVERIFY(m_view->configAction()->isEnabled());
    QVERIFY(m_view->addHostAction()->isEnabled());
    QVERIFY(m_view->addNetworkAction()->isEnabled());
    QVERIFY(m_view->removeHostAction()->isEnabled());
    QVERIFY(!m_view->removeNetworkAction()->isEnabled());
}

void tst_zoHPCTreeGUIW::runningStateAgreesWithSettingItOneByOne()
{
    zoHPCTreeGUIW other;
    QRandomGenerator random(77);
    const QString text = "{ a { x y { z } } a b } { c { d } } { a }";
    m_view->setHostString(text);
    other.setHostString(text);
    const QStringList ids{"a", "x", "y", "z", "a_2", "b", "c", "d", "a_3", "Network:/0/0/", "", "q"};

    for (int round = 0; round < 300; ++round) {
        // The same setting on the same item of both; options may change while their network runs.
        for (zoHPCTreeGUIW* view : {m_view.get(), &other}) {
            QRandomGenerator same{quint32(round)};
            std::vector<zoHPCTreeItem*> items;
            view->master()->getAllSubItems(items);
            zoHPCTreeItem* item = items[std::size_t(same.bounded(int(items.size())))];
            switch (same.bounded(4)) {
            case 0:
                item->setIsEnabled(same.bounded(2));
                break;
            case 1:
                item->setOption(zoHPCOption::Encrypted, same.bounded(2) ? "true" : "");
                break;
            case 2:
                item->getOptions()["enabled"] = same.bounded(2) ? "false" : ""; // not shown yet
                break;
            default:
                item->setIsDisplayNode(same.bounded(2));
                break;
            }
        }
        QList<QString> hosts;
        for (const QString& id : ids) {
            if (random.bounded(3) == 0)
                hosts << id;
        }
        const bool runs = random.bounded(4) != 0;

        m_view->setIsRunning(runs, hosts);

        std::vector<zoHPCTreeItem*> items;
        other.master()->getAllSubItems(items);
        std::map<QString, zoHPCTreeItem*> cache;
        for (zoHPCTreeItem* item : items) {
            item->addToIDCache(cache);
            item->setIsRunning(false);
        }
        for (const QString& host : hosts) {
            const auto found = cache.find(host);
            if (!runs || found == cache.end())
                continue;
            if (zoHPCTreeItem* parent = found->second->getParent())
                parent->setIsRunning(true);
            found->second->setIsRunning(true);
        }
        QCOMPARE(details(m_master), details(other.master()));
        QCOMPARE(m_master->foreground(0), other.master()->foreground(0));
        QCOMPARE(m_master->isRunning(), other.master()->isRunning());
    }
}

// ---- Size

void tst_zoHPCTreeGUIW::modelStaysConsistent()
{
    m_view->show();
    QAbstractItemModelTester tester(m_tree->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_view->setHostString("{ n1 - n20 gw { a b } } { c }");
    QCoreApplication::processEvents();
    m_view->setIsRunning(true, {"n1", "n5", "a"});
    item({0})->setIsEnabled(false);
    m_view->setSelectedItem(item({0, 20, 0}));
    m_view->addHost();
    m_view->addNetwork();
    m_view->removeItem();
    QCoreApplication::processEvents();
    load(section());
    m_view->setHostString(m_view->getHostsString());
    m_view->setIsRunning(false, {});
    m_view->setDefaultConfig();
    QCoreApplication::processEvents();

    QCOMPARE(outline(), QString("{localhost}"));
}

void tst_zoHPCTreeGUIW::fiveThousandNestedBraces()
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

void tst_zoHPCTreeGUIW::tooDeepHostsTextIsRefused()
{
    load("<cluster booking='b'><master><network><node name='kept'/></network></master></cluster>");
    int selections = 0;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this, [&selections] { ++selections; });
    QVERIFY(zoHPCTreeDepth::limit() > 10000);
    expectMessage(QtCriticalMsg,
                  QRegularExpression("^The hosts text is nested too deep: at most \\d+ levels"));

    m_view->setHostString(QString("{ n").repeated(zoHPCTreeDepth::limit()));

    QCOMPARE(outline(), QString("{kept}"));
    QCOMPARE(m_view->booking(), QString("b"));
    QCOMPARE(selections, 0);
}

void tst_zoHPCTreeGUIW::tooDeepSectionIsRefused()
{
    m_view->setHostString("kept");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);
    QDomDocument document;
    QDomElement element = document.createElement("cluster");
    document.appendChild(element);
    QDomElement parent = element;
    for (const char* tag : {"master", "network"}) {
        QDomElement child = document.createElement(tag);
        parent.appendChild(child);
        parent = child;
    }
    for (int i = zoHPCTreeDepth::limit(); i > 0; --i) {
        QDomElement child = document.createElement("node");
        parent.appendChild(child);
        parent = child;
    }
    expectMessage(QtCriticalMsg,
                  QRegularExpression("^The cluster section is nested too deep: at most \\d+ levels"));

    m_view->loadFromXML(document);

    QCOMPARE(outline(), QString("{kept}"));
    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIW::deleteKeyRemovesTheCurrentRow_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("session"); // "", "selected-before", "selected-during", "over"
    QTest::addColumn<QString>("hosts");

    const QString all = QStringLiteral("n1 n2 n3");
    QTest::newRow("master") << "master"
                            << "" << all;
    QTest::newRow("network") << "network"
                             << ""
                             << "n3";
    QTest::newRow("node") << "node"
                          << ""
                          << "n2 n3";
    QTest::newRow("running-network") << "network"
                                     << "selected-during" << all;
    QTest::newRow("running-node") << "node"
                                  << "selected-during" << all;
    QTest::newRow("network-selected-before-the-session") << "network"
                                                         << "selected-before" << all;
    QTest::newRow("node-selected-before-the-session") << "node"
                                                      << "selected-before" << all;
    QTest::newRow("network-after-the-session") << "network"
                                               << "over"
                                               << "n3";
    QTest::newRow("node-after-the-session") << "node"
                                            << "over"
                                            << "n2 n3";
}

void tst_zoHPCTreeGUIW::deleteKeyRemovesTheCurrentRow()
{
    QFETCH(QString, row);
    QFETCH(QString, session);
    QFETCH(QString, hosts);
    zoHPCTreeGUIW tree;
    tree.setHostString(QStringLiteral("{ n1 n2 } { n3 }"));
    tree.show();
    tree.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&tree));
    auto* view = tree.findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    view->setFocus();
    if (session == QLatin1String("selected-during"))
        tree.setIsRunning(true, {});
    tree.setSelectedItem(row == QLatin1String("master")    ? tree.master()
                         : row == QLatin1String("network") ? tree.findNetworkByIndex(1)
                                                           : tree.getNodeItems().front());
    if (session == QLatin1String("selected-before") || session == QLatin1String("over"))
        tree.setIsRunning(true, {});
    if (session == QLatin1String("over"))
        tree.setIsRunning(false, {});
    const QSignalSpy changed(&tree, &zoHPCTreeGUIW::hostsChanged);

    QTest::keyClick(view, Qt::Key_Delete);

    QCOMPARE(tree.getNodeNames().join(QLatin1Char(' ')), hosts);
    QCOMPARE(changed.count(), hosts.startsWith(QLatin1String("n1")) ? 0 : 1);
}

ZO_TEST_MAIN(tst_zoHPCTreeGUIW)
#include "tst_zoHPCTreeGUIW.moc"
