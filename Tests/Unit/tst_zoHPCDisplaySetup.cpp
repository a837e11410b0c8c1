#include "zoTestCase.h"

#include <zoHPCDisplayItem.h>
#include <zoHPCDisplaySetup.h>
#include <zoHPCLayout.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QCoreApplication>
#include <QDomDocument>
#include <QRegularExpression>

#include <memory>

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QDomDocument documentOf(const QString& xml)
{
    QDomDocument document;
    document.setContent(xml);
    return document;
}

// A wall of two rows below one viewport that shows a tile of it.
QString wallText(const QString& attributes, const QString& tile)
{
    return text("<cluster %1><projection name=\"wall\" type=\"wall\" rows=\"2\" columns=\"1\"/>"
                "<display><window node=\"n1\"><viewport projection=\"%2\"/></window></display></cluster>")
        .arg(attributes, tile);
}

QStringList names(const QTreeWidgetItem* root)
{
    QStringList result;
    for (int i = 0; i < root->childCount(); ++i)
        result.append(root->child(i)->data(0, Qt::EditRole).toString());
    return result;
}
} // namespace

// Projections and displays without a view: this test has no application that could draw one.
class tst_zoHPCDisplaySetup final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void needsNoApplicationThatDraws();
    void newSetupIsEmpty();
    void defaultIsOneDisplay();
    void writesWhatItRead();
    void tilesOfOneDocumentHaveOneLimit();
    void projectionsThatNobodyShowsNeedNoTiles();
    void skippedTilesCount();
    void readsDirectChildrenOfTheRootOnly();
    void readingReplaces();
    void documentWithoutRootLeavesNothing();
    void nothingIsWrittenOutsideARoot();
    void viewportsAreLinkedWhenTheyAppear();
    void wrongRowsAreTurnedInVersion0_data();
    void wrongRowsAreTurnedInVersion0();
    void renamedProjectionTakesItsViewportsAlong();
    void unknownProjectionIsCleared();
    void firstFreeNameIsUnique();
    void unknownNodesAreCleared();
    void topLevelItemsKnowThatTheyAre();
    void callersRootsAreFilledAndKept();
    void displaysAreCountedAmongAll();
    void attributeOrder_data();
    void attributeOrder();

private:
    std::unique_ptr<zoHPCDisplaySetup> m_setup;
};

void tst_zoHPCDisplaySetup::init()
{
    m_setup = std::make_unique<zoHPCDisplaySetup>();
}

void tst_zoHPCDisplaySetup::needsNoApplicationThatDraws()
{
    QVERIFY(!QCoreApplication::instance()->inherits("QGuiApplication"));
}

void tst_zoHPCDisplaySetup::newSetupIsEmpty()
{
    QCOMPARE(m_setup->projectionRoot()->childCount(), 0);
    QCOMPARE(m_setup->displayRoot()->childCount(), 0);
    QVERIFY(m_setup->getProjectionItems().isEmpty());
}

void tst_zoHPCDisplaySetup::defaultIsOneDisplay()
{
    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), QString())));

    m_setup->setDefaultConfig();

    QCOMPARE(m_setup->projectionRoot()->childCount(), 0);
    QCOMPARE(names(m_setup->displayRoot()), QStringList(text("Display ")));
}

void tst_zoHPCDisplaySetup::writesWhatItRead()
{
    zoHPCDisplaySetup again;
    QDomDocument first = documentOf(text("<cluster version=\"1\"/>"));
    QDomDocument second = documentOf(text("<cluster version=\"1\"/>"));

    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), text("wall row:2 col:1"))));
    m_setup->saveToXML(first);
    again.loadFromXML(first);
    again.saveToXML(second);

    QCOMPARE(second.toString(), first.toString());
    QCOMPARE(first.documentElement().firstChildElement().tagName(), text("projection"));
    QCOMPARE(first.documentElement().lastChildElement().tagName(), text("display"));
    QCOMPARE(first.elementsByTagName(text("viewport")).at(0).toElement().attribute(text("projection")),
             text("wall row:2 col:1"));
}

void tst_zoHPCDisplaySetup::tilesOfOneDocumentHaveOneLimit()
{
    const QString wall = text("<projection name=\"%1\" type=\"%2\" width=\"1\" height=\"1\" "
                              "rows=\"%3\" columns=\"1\"/>");
    expectMessage(QtCriticalMsg,
                  QRegularExpression(text("^Projection c .*not laid out: at most 100000 tiles")));

    m_setup->loadFromXML(documentOf(text("<cluster version=\"1\">") + wall.arg("a", "wall", "60000") +
                                    wall.arg("b", "powerwall", "39999") + wall.arg("c", "wall", "2") +
                                    wall.arg("d", "wall", "1") + text("</cluster>")));

    QList<int> tiles;
    for (int i = 0; i < m_setup->projectionRoot()->childCount(); ++i)
        tiles << m_setup->projectionRoot()->child(i)->childCount();
    QCOMPARE(tiles, QList<int>({60000, 39999, 0, 1}));
    // Who edits it has the limit of one projection again.
    auto* const last = dynamic_cast<zoHPCProjectionItem*>(m_setup->projectionRoot()->child(3));
    last->setInt(zoHPCProjectionItem::Rows, 3);
    last->update();
    QCOMPARE(last->childCount(), 3);
}

void tst_zoHPCDisplaySetup::projectionsThatNobodyShowsNeedNoTiles()
{
    const QDomDocument document = documentOf(
        text("<cluster version=\"1\"><projection name=\"a\" type=\"wall\" rows=\"2\" columns=\"1\"/>"
             "<projection name=\" b\" type=\"powerwall\" width=\"9\" height=\"9\" rows=\"2\" columns=\"2\"/>"
             "<display><window><viewport projection=\"b row:1 col:2\"/><viewport projection=\"a\"/>"
             "<viewport projection=\"b row:3 col:1\"/></window></display></cluster>"));

    m_setup->loadFromXML(document, zoHPCDisplaySetup::Tiles::Shown);

    QStringList shown;
    for (const zoHPCViewportItem* viewport : m_setup->getViewportItems())
        shown << viewport->getString(zoHPCViewportItem::Projection);
    QCOMPARE(shown, QStringList({text("b row:1 col:2"), text("a"), QString()}));
    QCOMPARE(m_setup->projectionRoot()->child(1)->childCount(), 4);
    const QDomDocument unshown = documentOf(document.toString().remove(text("<viewport projection=\"a\"/>")));
    m_setup->loadFromXML(unshown, zoHPCDisplaySetup::Tiles::Shown);
    auto* const wall = dynamic_cast<zoHPCProjectionItem*>(m_setup->projectionRoot()->child(0));
    QCOMPARE(wall->childCount(), 0);
    QCOMPARE(wall->tileCount(), 2);
    // Whoever edits it gets them.
    wall->update();
    QCOMPARE(wall->childCount(), 2);
}

// What a document may have altogether is the same, whatever of it is looked at.
void tst_zoHPCDisplaySetup::skippedTilesCount()
{
    expectMessage(QtCriticalMsg,
                  QRegularExpression(text("^Projection b .*not laid out: at most 100000 tiles")));

    m_setup->loadFromXML(
        documentOf(
            text("<cluster version=\"1\"><projection name=\"a\" type=\"wall\" rows=\"60000\" columns=\"1\"/>"
                 "<projection name=\"b\" type=\"wall\" rows=\"60000\" columns=\"1\"/></cluster>")),
        zoHPCDisplaySetup::Tiles::Shown);

    QCOMPARE(m_setup->projectionRoot()->child(0)->childCount(), 0);
}

void tst_zoHPCDisplaySetup::readsDirectChildrenOfTheRootOnly()
{
    m_setup->loadFromXML(
        documentOf(text("<cluster version=\"1\"><x><projection name=\"inner\"/><display/></x>"
                        "<projection name=\"outer\"/></cluster>")));

    QCOMPARE(names(m_setup->projectionRoot()), QStringList(text("outer")));
    QCOMPARE(m_setup->displayRoot()->childCount(), 0);
}

void tst_zoHPCDisplaySetup::readingReplaces()
{
    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), QString())));

    m_setup->loadFromXML(documentOf(text("<cluster version=\"1\"><projection name=\"new\"/></cluster>")));

    QCOMPARE(names(m_setup->projectionRoot()), QStringList(text("new")));
    QVERIFY(m_setup->getWindowItems().isEmpty());
}

void tst_zoHPCDisplaySetup::documentWithoutRootLeavesNothing()
{
    m_setup->setDefaultConfig();

    m_setup->loadFromXML(QDomDocument());

    QCOMPARE(m_setup->displayRoot()->childCount(), 0);
}

void tst_zoHPCDisplaySetup::nothingIsWrittenOutsideARoot()
{
    QDomDocument document;
    m_setup->setDefaultConfig();

    m_setup->saveToXML(document);

    QVERIFY(document.documentElement().isNull());
}

void tst_zoHPCDisplaySetup::viewportsAreLinkedWhenTheyAppear()
{
    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), text("wall row:1 col:1"))));

    const zoHPCViewportItem* const viewport = m_setup->getViewportItems().constFirst();
    QCOMPARE(m_setup->projectionOf(*viewport), m_setup->getProjectionItems().at(1));
    QCOMPARE(m_setup->projectionOf(zoHPCViewportItem()), nullptr);
}

void tst_zoHPCDisplaySetup::wrongRowsAreTurnedInVersion0_data()
{
    QTest::addColumn<QString>("attributes");
    QTest::addColumn<QString>("shown");

    QTest::newRow("no-version") << ""
                                << "wall row:2 col:1";
    QTest::newRow("version-0") << "version=\"0\""
                               << "wall row:2 col:1";
    QTest::newRow("no-number") << "version=\"x\""
                               << "wall row:2 col:1";
    QTest::newRow("version-1") << "version=\"1\""
                               << "wall row:1 col:1";
}

void tst_zoHPCDisplaySetup::wrongRowsAreTurnedInVersion0()
{
    QFETCH(QString, attributes);
    QFETCH(QString, shown);

    m_setup->loadFromXML(documentOf(wallText(attributes, text("wall row:1 col:1"))));

    QCOMPARE(m_setup->getViewportItems().constFirst()->getString(zoHPCViewportItem::Projection), shown);
}

void tst_zoHPCDisplaySetup::renamedProjectionTakesItsViewportsAlong()
{
    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), text("wall"))));
    m_setup->getProjectionItems().constFirst()->setName(text("front"));

    m_setup->correctProjectionViewportsAssignments();

    QCOMPARE(m_setup->getViewportItems().constFirst()->getString(zoHPCViewportItem::Projection),
             text("front"));
}

void tst_zoHPCDisplaySetup::unknownProjectionIsCleared()
{
    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), text("nowhere"))));

    QCOMPARE(m_setup->getViewportItems().constFirst()->getString(zoHPCViewportItem::Projection), QString());
}

void tst_zoHPCDisplaySetup::firstFreeNameIsUnique()
{
    QCOMPARE(m_setup->getUniqueProjectionName(), text("Projection1"));

    m_setup->loadFromXML(documentOf(text("<cluster version=\"1\"><projection name=\"Projection1\"/>"
                                         "<projection name=\"Projection3\"/></cluster>")));

    QCOMPARE(m_setup->getUniqueProjectionName(), text("Projection2"));
}

void tst_zoHPCDisplaySetup::unknownNodesAreCleared()
{
    m_setup->loadFromXML(
        documentOf(text("<cluster version=\"1\"><display><window node=\"a\"/><window node=\"b\"/>"
                        "</display></cluster>")));

    m_setup->clearUnknownNodes([](const QString& name) { return name == text("b"); });

    const QList<zoHPCWindowItem*> windows = m_setup->getWindowItems();
    QCOMPARE(windows.at(0)->renderNode(), QString());
    QCOMPARE(windows.at(0)->getString(0), text("Window: "));
    QCOMPARE(windows.at(1)->renderNode(), text("b"));
}

void tst_zoHPCDisplaySetup::topLevelItemsKnowThatTheyAre()
{
    m_setup->loadFromXML(documentOf(wallText(text("version=\"1\""), QString())));
    const QList<zoHPCProjectionItem*> projections = m_setup->getProjectionItems();

    QCOMPARE(projections.size(), 3);
    QVERIFY(projections.at(0)->isTopLevel());
    QVERIFY(!projections.at(1)->isTopLevel());
    QVERIFY(zoHPCDisplayItem().isTopLevel());
}

void tst_zoHPCDisplaySetup::callersRootsAreFilledAndKept()
{
    QTreeWidgetItem projections;
    QTreeWidgetItem displays;
    {
        zoHPCDisplaySetup setup(&projections, &displays);
        setup.loadFromXML(documentOf(wallText(text("version=\"1\""), text("wall"))));
        QCOMPARE(setup.projectionRoot(), &projections);
    }

    QCOMPARE(names(&projections), QStringList(text("wall")));
    QCOMPARE(displays.childCount(), 1);
}

void tst_zoHPCDisplaySetup::displaysAreCountedAmongAll()
{
    m_setup->loadFromXML(
        documentOf(text("<cluster version=\"1\"><display/><display><window/></display></cluster>")));

    const zoHPCLayout layout(*m_setup, nullptr);

    QCOMPARE(int(layout.windows().size()), 1);
    QCOMPARE(layout.windows().front().display, 2);
}

void tst_zoHPCDisplaySetup::attributeOrder_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");

    QTest::newRow("projection") << "projection"
                                << "name"
                                << "bottomedge";
    QTest::newRow("display") << "display"
                             << "eyeseparation"
                             << "hardwaresync";
    QTest::newRow("window") << "window"
                            << "node"
                            << "fullscreen";
    QTest::newRow("viewport") << "viewport"
                              << "projection"
                              << "eye";
}

void tst_zoHPCDisplaySetup::attributeOrder()
{
    QFETCH(QString, tag);
    QFETCH(QString, first);
    QFETCH(QString, last);

    const QStringList order = zoHPCDisplaySetup::attributeOrder(tag);

    QCOMPARE(order.value(0), first);
    QCOMPARE(order.isEmpty() ? QString() : order.constLast(), last);
    QVERIFY(zoHPCDisplaySetup::attributeOrder(text("cluster")).isEmpty());
}

QTEST_GUILESS_MAIN(tst_zoHPCDisplaySetup)
#include "tst_zoHPCDisplaySetup.moc"
