#include "zoHPCTreeViewTest.h"

#include <zoHPCConfigEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoIconManager.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <functional>

namespace
{
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

// The host tree's view in a user's hands: actions, menu, keys, the hosts dialog.
class tst_zoHPCTreeGUIWEditing final : public zoHPCTreeViewTest
{
    Q_OBJECT

private slots:
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
    void editHostsCancelledKeepsTheSelection();
    void deletedRowIsWholeWhileTheCurrentOneMovesOn();
    void everyChangeIsSaid();

    // Keys
    void deleteKeyRemovesTheCurrentRow_data();
    void deleteKeyRemovesTheCurrentRow();
    void heldKeyRemovesOnce();
};

void tst_zoHPCTreeGUIWEditing::everyChangeIsSaid()
{
    QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::changed);
    const auto isSaid = [&changed](const std::function<void()>& change) {
        changed.clear();
        change();
        return !changed.isEmpty();
    };

    QVERIFY(isSaid([this] { m_view->addNetwork(); }));
    QVERIFY(isSaid([this] { m_view->addHost(); }));
    QVERIFY(isSaid([this] { item({1, 0})->setHostName("n"); }));
    QVERIFY(isSaid([this] { item({1})->setOption("speed", "10g"); }));
    QVERIFY(isSaid([this] { m_view->removeItem(); }));
    QVERIFY(isSaid([this] { delete item({1}); }));
    QVERIFY(isSaid([this] { item({0})->addChild(new zoHPCTreeItem(m_view.get())); }));
    QVERIFY(isSaid([this] { m_view->setHostString("a b"); }));
    QVERIFY(isSaid([this] { m_view->setDefaultConfig(); }));

    // Looking around is none, and neither is a session.
    QVERIFY(!isSaid([this] { m_view->setSelectedItem(item({0, 0})); }));
    QVERIFY(!isSaid([this] { m_view->setIsRunning(true, {"localhost"}); }));
    QVERIFY(!isSaid([this] { m_view->getHostsString(); }));
}

void tst_zoHPCTreeGUIWEditing::startsWithTheDefaultTree()
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

void tst_zoHPCTreeGUIWEditing::actionsHaveTheirTexts()
{
    QCOMPARE(m_view->configAction()->text(), QString("Cluster config..."));
    QCOMPARE(m_view->addNetworkAction()->text(), QString("Add network"));
    QCOMPARE(m_view->addHostAction()->text(), QString("Add compute node"));
    QCOMPARE(m_view->removeNetworkAction()->text(), QString("Remove network"));
    QCOMPARE(m_view->removeHostAction()->text(), QString("Remove compute node"));
    QVERIFY(sameIcon(m_view->configAction()->icon(), zoIconManager::getIcon("Network", "")));
}

void tst_zoHPCTreeGUIWEditing::addHostOnTheMasterOfAnEmptyTree()
{
    m_view->setHostString("");

    m_view->addHostAction()->trigger();

    QCOMPARE(outline(), QString("{localhost}"));
    QCOMPARE(m_view->selectedItem(), item({0, 0}));
    QCOMPARE(item({0})->text(0), QString("Network"));
    QVERIFY(item({0})->isExpanded());
}

void tst_zoHPCTreeGUIWEditing::addHostOnTheMasterNotifiesTwice()
{
    m_view->setHostString("{ a } { b }");
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->addHost();

    QCOMPARE(outline(), QString("{a} {b localhost}"));
    QCOMPARE(changed.count(), 2);
}

void tst_zoHPCTreeGUIWEditing::addHostOnANetworkAppends()
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

void tst_zoHPCTreeGUIWEditing::addHostOnANodeInsertsBehindIt()
{
    m_view->setHostString("a b");
    m_view->setSelectedItem(item({0, 0}));

    m_view->addHost();

    QCOMPARE(outline(), QString("{a localhost b}"));
    QCOMPARE(m_view->selectedItem(), item({0, 1}));
}

void tst_zoHPCTreeGUIWEditing::addNetworkOnANodeForwards()
{
    m_view->setHostString("a b");
    m_view->setSelectedItem(item({0, 0}));

    m_view->addNetworkAction()->trigger();

    QCOMPARE(outline(), QString("{a {} b}"));
    QCOMPARE(m_view->selectedItem(), item({0, 0, 0}));
}

void tst_zoHPCTreeGUIWEditing::addNetworkOnANetworkInsertsBehindIt()
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

void tst_zoHPCTreeGUIWEditing::addNetworkDoesNotNotify()
{
    const QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->addNetwork();

    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCTreeGUIWEditing::removedItemIsDetachedNotDestroyed()
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

void tst_zoHPCTreeGUIWEditing::removedItemMayBeDestroyedByOthers()
{
    m_view->setHostString("a b");
    zoHPCTreeItem* removed = item({0, 0});
    m_view->setSelectedItem(removed);
    m_view->removeItem();

    delete removed;

    m_view->setHostString("c");
    QCOMPARE(outline(), QString("{c}"));
}

void tst_zoHPCTreeGUIWEditing::removedItemMayBePutBack()
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

void tst_zoHPCTreeGUIWEditing::removingTheMasterIsHarmless()
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

void tst_zoHPCTreeGUIWEditing::removalNeverShowsADeadItem()
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

void tst_zoHPCTreeGUIWEditing::removeActionsFollowTheCurrentItem()
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

void tst_zoHPCTreeGUIWEditing::contextMenuHoldsTheActionsInOrder()
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

void tst_zoHPCTreeGUIWEditing::contextMenuOnlyOverAnItem()
{
    m_view->show();

    m_view->contextMenuRequested(QPoint(10, m_tree->viewport()->height() - 2)); // would wait for an answer

    QVERIFY(!QApplication::activePopupWidget());
}

void tst_zoHPCTreeGUIWEditing::editHostsTakesTheText()
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

void tst_zoHPCTreeGUIWEditing::editHostsTakesTheFileOverTheText()
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

void tst_zoHPCTreeGUIWEditing::editHostsCancelledChangesNothing()
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

void tst_zoHPCTreeGUIWEditing::editHostsCancelledKeepsTheSelection()
{
    m_view->setHostString("a b c");
    m_view->setSelectedItem(item({0, 1}));
    item({0, 2})->setSelected(true);
    whenDialogOpens([](zoHPCConfigEditGUIW* dialog) { dialog->reject(); });

    m_view->editHosts();

    QCOMPARE(m_view->selectedItem(), item({0, 1}));
    QCOMPARE(m_view->selectedItems(), (std::vector<zoHPCTreeItem*>{item({0, 1}), item({0, 2})}));
}

void tst_zoHPCTreeGUIWEditing::deletedRowIsWholeWhileTheCurrentOneMovesOn()
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

void tst_zoHPCTreeGUIWEditing::deleteKeyRemovesTheCurrentRow_data()
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

void tst_zoHPCTreeGUIWEditing::deleteKeyRemovesTheCurrentRow()
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

void tst_zoHPCTreeGUIWEditing::heldKeyRemovesOnce()
{
    zoHPCTreeGUIW tree;
    tree.setHostString(QStringLiteral("{ n1 n2 n3 }"));
    tree.show();
    tree.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&tree));
    auto* view = tree.findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    view->setFocus();
    tree.setSelectedItem(tree.getNodeItems().front());

    for (const bool isRepeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, QStringLiteral("\x7f"), isRepeated);
        QCoreApplication::sendEvent(view, &press);
    }

    QCOMPARE(tree.getNodeNames(), (QStringList{QStringLiteral("n2"), QStringLiteral("n3")}));
}

ZO_TEST_MAIN(tst_zoHPCTreeGUIWEditing)
#include "tst_zoHPCTreeGUIWEditing.moc"
