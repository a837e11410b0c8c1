#include "zoHPCTreeViewTest.h"

#include <zoHPCDocumentText.h>
#include <zoHPCDocumentWriter.h>
#include <zoHPCTreeDepth.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTemporaryFile>

// The host tree's view and its section of the document.
class tst_zoHPCTreeGUIWSection final : public zoHPCTreeViewTest
{
    Q_OBJECT

private slots:
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

    // Size
    void tooDeepSectionIsRefused();
    void sectionIsTheSameAsTextAndAsDocument_data();
    void sectionIsTheSameAsTextAndAsDocument();
    void optionsNamedLikeAttributesReplaceThem();
    void writingTheTextReadsTheHostsFileFirst();
};

void tst_zoHPCTreeGUIWSection::sectionIsTheSameAsTextAndAsDocument_data()
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

void tst_zoHPCTreeGUIWSection::sectionIsTheSameAsTextAndAsDocument()
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

void tst_zoHPCTreeGUIWSection::optionsNamedLikeAttributesReplaceThem()
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

void tst_zoHPCTreeGUIWSection::writingTheTextReadsTheHostsFileFirst()
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

void tst_zoHPCTreeGUIWSection::defaultTree()
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

void tst_zoHPCTreeGUIWSection::sectionHoldsTheTree()
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

void tst_zoHPCTreeGUIWSection::sectionSurvivesALoad()
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

void tst_zoHPCTreeGUIWSection::documentWithoutMasterLeavesAnEmptyMaster_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("root-only") << "<cluster/>";
    QTest::newRow("network-outside")
        << "<cluster><network><node name='a'/></network><node name='b'/></cluster>";
    QTest::newRow("upper-case") << "<cluster><Master speed='1g'><network/></Master></cluster>";
    QTest::newRow("no-document") << "";
}

void tst_zoHPCTreeGUIWSection::documentWithoutMasterLeavesAnEmptyMaster()
{
    QFETCH(QString, text);
    QDomDocument document;
    document.setContent(text);

    m_view->loadFromXML(document);

    QCOMPARE(m_master->childCount(), 0);
    QVERIFY(m_master->getOptions().empty());
    QVERIFY(m_view->booking().isEmpty());
}

void tst_zoHPCTreeGUIWSection::nodeDirectlyUnderTheMasterIsANode()
{
    load("<cluster><master encrypted='true'><node name='a'><node name='b'/></node></master></cluster>");

    QVERIFY(item({0})->isNode());
    QCOMPARE(m_view->getNodeNames(), (QStringList{"a", "b"}));
    QVERIFY(sameIcon(item({0})->icon(0), zoHPCTreeItem::getIcon(1, true, false, true, false)));
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(1, true, false, false, false)));
}

void tst_zoHPCTreeGUIWSection::emptyOptionsDisappearOnASave()
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

void tst_zoHPCTreeGUIWSection::disabledAndNotRenderingSurvive()
{
    load("<cluster><master><network><node name='a' enabled='false' rendernode='false' encrypted='true'/>"
         "</network></master></cluster>");
    load(section());

    QVERIFY(!item({0, 0})->isEnabled());
    QVERIFY(!item({0, 0})->isRenderNode());
    QVERIFY(item({0, 0})->isEncrypted());
    QVERIFY(sameIcon(item({0, 0})->icon(0), zoHPCTreeItem::getIcon(1, false, false, false, true)));
}

void tst_zoHPCTreeGUIWSection::unknownAttributesAreKept()
{
    load("<cluster><master future='1'><network x-y='2'><node name='a' "
         "Name='b'/></network></master></cluster>");

    QCOMPARE(m_master->getOption("future"), QString("1"));
    QCOMPARE(item({0})->getOption("x-y"), QString("2"));
    QCOMPARE(item({0, 0})->getOption("Name"), QString("b"));
    QVERIFY(section().contains("<master future=\"1\""));
}

void tst_zoHPCTreeGUIWSection::unknownElementsAreTransparent()
{
    load("<cluster><group><master><folder speed='1g'><network><row><node name='a'/></row>text<!-- c -->"
         "<node name='b'/></network></folder></master></group></cluster>");

    QCOMPARE(outline(), QString("{a b}"));
    QVERIFY(!m_master->hasOption("speed"));
}

void tst_zoHPCTreeGUIWSection::nodeWithoutANameIsLocalhost()
{
    load("<cluster><master><network name='n'><node/><node name=''/></network></master></cluster>");

    QCOMPARE(item({0, 0})->hostName(), QString("localhost"));
    QCOMPARE(item({0, 1})->hostName(), QString());
    QVERIFY(!item({0})->hasOption("name"));
}

void tst_zoHPCTreeGUIWSection::masterInsideANodeIsTheMaster()
{
    load("<cluster><master><network><node name='a'><master speed='1g'><network><node name='b'/></network>"
         "</master></node><node name='c'/></network></master></cluster>");

    QCOMPARE(outline(), QString("{a c} {b}"));
    QCOMPARE(m_master->getOption("speed"), QString("1g"));
}

void tst_zoHPCTreeGUIWSection::nodesFileIsRememberedNotRead()
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

void tst_zoHPCTreeGUIWSection::nodesFileOnAnyElementCounts()
{
    load("<cluster><master nodesfile='/a'><network><node name='a' "
         "nodesfile='/b'/></network></master></cluster>");

    QCOMPARE(m_view->hostFile(), QString("/b"));
    QVERIFY(!item({0, 0})->hasOption("nodesfile"));
}

void tst_zoHPCTreeGUIWSection::savingReadsTheHostsFileFirst()
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

void tst_zoHPCTreeGUIWSection::savingWithAnUnreadableHostsFileKeepsTheTree()
{
    QTemporaryDir folder;
    m_view->setHostString("a b");
    zoHPCTreeItem* kept = item({0, 0});
    m_view->setHostFile(folder.filePath("missing"));

    const QString saved = section();

    QCOMPARE(item({0, 0}), kept);
    QVERIFY(saved.contains("\"a\""));
}

void tst_zoHPCTreeGUIWSection::savingKeepsWhatTheTreeShows()
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

void tst_zoHPCTreeGUIWSection::bookingIsSavedOnceWithAHostsFile()
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

void tst_zoHPCTreeGUIWSection::defaultConfigKeepsTheBooking()
{
    load("<cluster booking='42'><master/></cluster>");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->setDefaultConfig();

    QCOMPARE(m_view->booking(), QString("42"));
    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIWSection::readsOneElementUnderAnItem()
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

void tst_zoHPCTreeGUIWSection::loadAnnouncesTheMasterAndTheHosts()
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

void tst_zoHPCTreeGUIWSection::newContentOfTheCurrentMasterIsAnnounced()
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

void tst_zoHPCTreeGUIWSection::attributesWithPlaceholdersSurvive()
{
    load("<cluster><master><network description='%1 %2'><node name='%1'/></network></master></cluster>");

    QCOMPARE(item({0})->text(0), QString("Network (%1 %2)"));
    QCOMPARE(item({0, 0})->text(0), QString("%1"));
    QVERIFY(section().contains("name=\"%1\""));
}

void tst_zoHPCTreeGUIWSection::tooDeepSectionIsRefused()
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
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(
            "^The cluster section is nested too deep: the tree has at most \\d+ levels\\. Put networks"));

    m_view->loadFromXML(document);

    QCOMPARE(outline(), QString("{kept}"));
    QCOMPARE(changed.count(), 0);
}

ZO_TEST_MAIN(tst_zoHPCTreeGUIWSection)
#include "tst_zoHPCTreeGUIWSection.moc"
