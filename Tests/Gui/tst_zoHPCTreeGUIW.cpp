#include "zoHPCTreeViewTest.h"

#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QApplication>
#include <QRandomGenerator>

// The host tree's view: rows, questions about nodes, running state.
class tst_zoHPCTreeGUIW final : public zoHPCTreeViewTest
{
    Q_OBJECT

private slots:
    // Queries
    void nodeNamesSkipEmptyOnes();
    void networksCountFromOne();

    // Editing
    void overlayIconIsPaintedAtEightEight();
    void disabledRowsAreReadable();
    void coloursSetOnTheViewAreUsed();
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
};

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

void tst_zoHPCTreeGUIW::coloursSetOnTheViewAreUsed()
{
    const QPalette before = QApplication::palette();
    zoHPCTreeItem* node = m_view->getNodeItems().front();
    QPalette palette = m_view->palette();
    palette.setColor(QPalette::Text, QColor(200, 0, 0));
    palette.setColor(QPalette::Light, QColor(240, 240, 200)); // hardly to be read, and wanted
    m_view->setPalette(palette);
    const auto colours = [node] {
        node->setIsEnabled(true);
        const QColor text = node->foreground(0).color();
        node->setIsEnabled(false);
        return QList<QColor>{text, node->foreground(0).color()};
    };
    const QList<QColor> expected{QColor(200, 0, 0), QColor(240, 240, 200)};
    QCOMPARE(colours(), expected);

    QPalette dark = before;
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Light, QColor(25, 25, 25));
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    const QList<QColor> onDark = colours();
    const QColor base = m_view->palette().color(QPalette::Base);
    m_view->setPalette(QPalette()); // as if nobody had set one
    const QList<QColor> withoutOwn = colours();
    QApplication::setPalette(before);
    QCoreApplication::processEvents();

    QCOMPARE(onDark, expected);
    QCOMPARE(base, QColor(20, 20, 20)); // what nobody set follows the application
    QCOMPARE(withoutOwn.first(), QColor(Qt::white));
    QVERIFY(withoutOwn.last().lightness() > 80);
    const QList<QColor> after = colours();
    QCOMPARE(after.first(), before.color(QPalette::Text));
    QVERIFY(qAbs(after.last().lightness() - before.color(QPalette::Base).lightness()) >= 60);
}

void tst_zoHPCTreeGUIW::rowsFillTheView()
{
    m_view->resize(500, 300);
    m_view->show();
    QTRY_COMPARE(m_tree->columnWidth(0), m_tree->viewport()->width());

    m_view->setHostString(QString(200, 'w'));
    QTRY_VERIFY(m_tree->columnWidth(0) > m_tree->viewport()->width());
}

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

ZO_TEST_MAIN(tst_zoHPCTreeGUIW)
#include "tst_zoHPCTreeGUIW.moc"
