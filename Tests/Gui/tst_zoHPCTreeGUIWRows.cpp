#include "zoHPCTreeViewTest.h"

#include <zoHPCHostTreeWidget.h>
#include <zoHPCTreeFilter.h>

#include <QAction>
#include <QApplication>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>

#include <memory>

using Place = zoHPCHostTreeWidget::Place;

// Several rows of the host tree at once: selected, removed, dragged, filtered.
class tst_zoHPCTreeGUIWRows final : public zoHPCTreeViewTest
{
    Q_OBJECT

private slots:
    void selectedRowsAreGivenInTheirOrder();
    void currentRowCountsWhenItIsNotSelected();
    void severalRowsAreRemovedAtOnce_data();
    void severalRowsAreRemovedAtOnce();
    void deleteKeyRemovesAllSelected_data();
    void deleteKeyRemovesAllSelected();
    void manyRowsAreRemovedAtOnce();
    void targetsOfADrop_data();
    void targetsOfADrop();
    void nodesMove_data();
    void nodesMove();
    void movedNodeTakesTheLookOfItsNetwork();
    void movedNodesStaySelectedAndUnfolded();
    void nothingMovesWhileTheClusterRuns();
    void mixedSelectionIsNotDragged();
    void filterKnowsNamesAndStates_data();
    void filterKnowsNamesAndStates();
    void filterOutlivesAnotherTree();
    void firstMatchIsCurrent();
    void wordsWithoutAMatchLeadToTheTop();
    void keysLeadFromTheFilterToTheTree_data();
    void keysLeadFromTheFilterToTheTree();
    void largeTreeIsFiltered();
    void removedRowsLeadToOneInSight();
    void rowsTellTheirStateInWords();
    void treeHasAName();

private:
    void select(std::initializer_list<const char*> names);
    zoHPCTreeItem* node(const char* name) const;
    zoHPCHostTreeWidget* tree() const { return static_cast<zoHPCHostTreeWidget*>(m_tree); }
    QString names(const std::vector<zoHPCTreeItem*>& items) const;
};

zoHPCTreeItem* tst_zoHPCTreeGUIWRows::node(const char* name) const
{
    return asItem(m_tree->findItems(QLatin1String(name), Qt::MatchExactly | Qt::MatchRecursive).value(0));
}

void tst_zoHPCTreeGUIWRows::select(std::initializer_list<const char*> names)
{
    m_view->setSelectedItem(node(*names.begin()));
    for (const char* name : names)
        node(name)->setSelected(true);
}

QString tst_zoHPCTreeGUIWRows::names(const std::vector<zoHPCTreeItem*>& items) const
{
    QStringList all;
    for (const zoHPCTreeItem* item : items)
        all << item->text(0);
    return all.join(' ');
}

void tst_zoHPCTreeGUIWRows::selectedRowsAreGivenInTheirOrder()
{
    m_view->setHostString("{a b} {c d}");
    QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::selectionChanged);

    select({"d", "a", "c"});

    QCOMPARE(names(m_view->selectedItems()), QString("a c d"));
    QVERIFY(changed.count() >= 3);
    QCOMPARE(m_view->selectedItem(), node("d"));
}

void tst_zoHPCTreeGUIWRows::currentRowCountsWhenItIsNotSelected()
{
    m_view->setHostString("a b c");
    select({"a", "b"});

    node("a")->setSelected(false);

    QCOMPARE(names(m_view->selectedItems()), QString("a"));
}

void tst_zoHPCTreeGUIWRows::severalRowsAreRemovedAtOnce_data()
{
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<QString>("outline");
    QTest::addColumn<QString>("current");

    QTest::newRow("middle") << QStringList{"b", "c"} << "{a d e} {f}"
                            << "d";
    QTest::newRow("end") << QStringList{"d", "e"} << "{a b c} {f}"
                         << "c";
    QTest::newRow("scattered") << QStringList{"a", "c", "e"} << "{b d} {f}"
                               << "d";
    QTest::newRow("all-of-a-network") << QStringList{"a", "b", "c", "d", "e"} << "{} {f}"
                                      << "Network";
    QTest::newRow("two-networks") << QStringList{"b", "f"} << "{a c d e} {}"
                                  << "Network";
}

void tst_zoHPCTreeGUIWRows::severalRowsAreRemovedAtOnce()
{
    QFETCH(QStringList, selected);
    m_view->setHostString("{a b c d e} {f}");
    m_view->setSelectedItem(node(qPrintable(selected.first())));
    for (const QString& name : qAsConst(selected))
        node(qPrintable(name))->setSelected(true);
    QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);

    m_view->removeHostAction()->trigger();

    QTEST(outline(), "outline");
    QTEST(m_view->selectedItem()->text(0), "current");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_view->selectedItems().size(), std::size_t(1));
}

void tst_zoHPCTreeGUIWRows::deleteKeyRemovesAllSelected_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("outline");

    QTest::newRow("key") << "key"
                         << "{b}";
    QTest::newRow("action-of-nodes") << "nodes"
                                     << "{b} {}";
    QTest::newRow("action-of-networks") << "networks"
                                        << "{a b}";
}

void tst_zoHPCTreeGUIWRows::deleteKeyRemovesAllSelected()
{
    QFETCH(QString, way);
    m_view->setHostString("{a b} {c}");
    m_view->show();
    QApplication::setActiveWindow(m_view.get());
    m_tree->setFocus();
    select({"c", "a"});
    item({1})->setSelected(true);
    if (way == "networks")
        m_tree->setCurrentItem(item({1}), 0, QItemSelectionModel::NoUpdate);

    if (way == "key")
        QTest::keyClick(m_tree, Qt::Key_Delete);
    else
        (way == "nodes" ? m_view->removeHostAction() : m_view->removeNetworkAction())->trigger();

    QTEST(outline(), "outline");
}

void tst_zoHPCTreeGUIWRows::manyRowsAreRemovedAtOnce()
{
    m_view->setHostString("{first n00001 - n05000} {x}");
    m_view->setSelectedItem(item({0, 1}));
    const QModelIndex network = m_tree->model()->index(0, 0, m_tree->model()->index(0, 0));
    m_tree->selectionModel()->select(
        {m_tree->model()->index(1, 0, network), m_tree->model()->index(5000, 0, network)},
        QItemSelectionModel::Select);
    int shown = 0;
    connect(m_view.get(), &zoHPCTreeGUIW::selectedItemChanged, this, [&shown] { ++shown; });

    m_view->removeItem();

    QCOMPARE(outline(), QString("{first} {x}"));
    QVERIFY(shown <= 2);
}

void tst_zoHPCTreeGUIWRows::targetsOfADrop_data()
{
    QTest::addColumn<QString>("row"); // empty: none
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("network"); // -1: none
    QTest::addColumn<int>("place");

    QTest::newRow("on-a-network") << "0" << int(Place::On) << 0 << 2;
    QTest::newRow("below-a-network") << "0" << int(Place::Below) << 0 << 0;
    QTest::newRow("above-a-network") << "0" << int(Place::Above) << -1 << 0;
    QTest::newRow("on-a-node") << "b" << int(Place::On) << 0 << 2;
    QTest::newRow("above-a-node") << "b" << int(Place::Above) << 0 << 1;
    QTest::newRow("below-a-node") << "a" << int(Place::Below) << 0 << 1;
    QTest::newRow("on-the-options") << "Options" << int(Place::On) << -1 << 0;
    QTest::newRow("below-the-options") << "Options" << int(Place::Below) << -1 << 0;
    QTest::newRow("nowhere") << "" << int(Place::Nowhere) << -1 << 0;
}

void tst_zoHPCTreeGUIWRows::targetsOfADrop()
{
    QFETCH(QString, row);
    QFETCH(int, position);
    QFETCH(int, network);
    m_view->setHostString("{a b} {c}");
    QTreeWidgetItem* at = row == "0" ? item({0}) : row.isEmpty() ? nullptr : node(qPrintable(row));

    const zoHPCHostTreeWidget::Target target = zoHPCHostTreeWidget::targetAt(at, Place(position));

    QCOMPARE(target.network, network < 0 ? nullptr : item({network}));
    QTEST(target.row, "place");
}

void tst_zoHPCTreeGUIWRows::nodesMove_data()
{
    QTest::addColumn<QString>("nodes");
    QTest::addColumn<int>("network");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("outline");

    QTest::newRow("to-the-end") << "a" << 1 << 1 << "{b c} {d a}";
    QTest::newRow("to-the-start") << "a" << 1 << 0 << "{b c} {a d}";
    QTest::newRow("several") << "a c" << 1 << 1 << "{b} {d a c}";
    QTest::newRow("down-in-its-network") << "a" << 0 << 3 << "{b c a} {d}";
    QTest::newRow("up-in-its-network") << "c" << 0 << 0 << "{c a b} {d}";
    QTest::newRow("to-where-it-is") << "b" << 0 << 1 << "{a b c} {d}";
    QTest::newRow("from-both") << "a d" << 1 << 1 << "{b c} {a d}";
}

void tst_zoHPCTreeGUIWRows::nodesMove()
{
    QFETCH(QString, nodes);
    QFETCH(int, network);
    QFETCH(int, row);
    m_view->setHostString("{a b c} {d}");
    std::vector<zoHPCTreeItem*> moved;
    for (const QString& name : nodes.split(' ')) {
        moved.push_back(node(qPrintable(name)));
        moved.back()->setOption("rendernode", "false");
    }
    QSignalSpy changed(m_view.get(), &zoHPCTreeGUIW::hostsChanged);
    QSignalSpy said(m_view.get(), &zoHPCTreeGUIW::changed);

    m_view->moveNodes(moved, item({network}), row);

    QTEST(outline(), "outline");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(said.count(), 1);
    QCOMPARE(m_view->selectedItems().size(), moved.size());
    for (const zoHPCTreeItem* one : moved)
        QVERIFY(!one->isRenderNode());
}

void tst_zoHPCTreeGUIWRows::movedNodeTakesTheLookOfItsNetwork()
{
    m_view->setHostString("{a} {b}");
    item({1})->setOption("encrypted", "true");
    item({1})->setIsEnabled(false);
    const QIcon plain = node("a")->icon(0);

    m_view->moveNodes({node("a")}, item({1}), 0);

    QVERIFY(!sameIcon(node("a")->icon(0), plain));
    QVERIFY(sameIcon(node("a")->icon(0), node("b")->icon(0)));
}

void tst_zoHPCTreeGUIWRows::movedNodesStaySelectedAndUnfolded()
{
    m_view->setHostString("{a {x y} b} {c}");
    select({"b", "a"});

    m_view->moveNodes({node("a"), node("b")}, item({1}), 1);

    QCOMPARE(outline(), QString("{} {c a {x y} b}"));
    QCOMPARE(names(m_view->selectedItems()), QString("a b"));
    QCOMPARE(m_view->selectedItem(), node("b"));
    QVERIFY(node("a")->isExpanded());
    QVERIFY(asItem(node("a")->child(0))->isExpanded());
}

void tst_zoHPCTreeGUIWRows::nothingMovesWhileTheClusterRuns()
{
    m_view->setHostString("{a} {b}");
    m_view->setIsRunning(true, {"a"});

    m_view->moveNodes({node("a")}, item({1}), 0);

    QCOMPARE(outline(), QString("{a} {b}"));
}

void tst_zoHPCTreeGUIWRows::mixedSelectionIsNotDragged()
{
    m_view->setHostString("{a {x}} {b}");
    select({"b", "a", "x"});
    QCOMPARE(names(tree()->draggedNodes()), QString("a b")); // x comes along with a

    item({1})->setSelected(true);

    QVERIFY(tree()->draggedNodes().empty());
}

void tst_zoHPCTreeGUIWRows::filterKnowsNamesAndStates_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("shown");

    QTest::newRow("name") << "gpu"
                          << "gpu1 gpu2";
    QTest::newRow("description") << "uplink"
                                 << "viz1 viz2";
    QTest::newRow("disabled") << "disabled"
                              << "gpu2";
    QTest::newRow("part-of-a-state") << "disab"
                                     << "";
    QTest::newRow("running") << "running"
                             << "gpu1";
    QTest::newRow("display") << "display"
                             << "viz2";
    QTest::newRow("gateway") << "gateway"
                             << "gate in1";
    QTest::newRow("encrypted") << "encrypted"
                               << "viz1 viz2";
    QTest::newRow("option") << "speed=10"
                            << "viz1 viz2";
    QTest::newRow("value") << "10g"
                           << "viz1 viz2";
    QTest::newRow("state-and-name") << "encrypted viz1"
                                    << "viz1";
}

void tst_zoHPCTreeGUIWRows::filterKnowsNamesAndStates()
{
    QFETCH(QString, words);
    m_view->setHostString("{gpu1 gpu2 gate {in1}} {viz1 viz2}");
    item({1})->setOption("description", "Uplink");
    item({1})->setOption("encrypted", "true");
    item({1})->setOption("speed", "10g");
    node("gpu2")->setIsEnabled(false);
    node("viz2")->setIsDisplayNode(true);
    node("gpu1")->setIsRunning(true);

    m_view->filter()->field()->setText(words);

    QStringList seen;
    for (const zoHPCTreeItem* one : m_view->getNodeItems()) {
        if (!one->isHidden())
            seen << one->hostName();
    }
    QTEST(seen.join(' '), "shown");
}

void tst_zoHPCTreeGUIWRows::filterOutlivesAnotherTree()
{
    m_view->setHostString("a b");
    m_view->filter()->field()->setText("b");

    m_view->setHostString("{x b1} {b2 y}");

    QVERIFY(node("x")->isHidden());
    QVERIFY(!node("b2")->isHidden());
    QCOMPARE(m_view->filter()->field()->text(), QString("b"));
}

void tst_zoHPCTreeGUIWRows::firstMatchIsCurrent()
{
    m_view->setHostString("{a1 b1} {a2 b2}");
    m_view->filter()->field()->setText("b");
    QCOMPARE(m_view->selectedItem(), node("b1"));
    QCOMPARE(names(m_view->selectedItems()), QString("b1"));
    const auto* count = m_view->filter()->findChild<QLabel*>("m_filterCount");
    QCOMPARE(count->text(), QString("2 of 4")); // nodes

    // One that is found stays.
    m_view->setSelectedItem(node("b2"));
    m_view->filter()->field()->setText("2");
    QCOMPARE(m_view->selectedItem(), node("b2"));
}

void tst_zoHPCTreeGUIWRows::wordsWithoutAMatchLeadToTheTop()
{
    m_view->setHostString("a b");
    m_view->setSelectedItem(node("b"));

    m_view->filter()->field()->setText("nobody");

    QCOMPARE(m_view->selectedItem(), m_master);
    QVERIFY(!m_master->isHidden());
    QVERIFY(item({0})->isHidden());
}

void tst_zoHPCTreeGUIWRows::keysLeadFromTheFilterToTheTree_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");

    QTest::newRow("down") << int(Qt::Key_Down) << "b";
    QTest::newRow("return") << int(Qt::Key_Return) << "b";
    QTest::newRow("enter") << int(Qt::Key_Enter) << "b";
    QTest::newRow("escape") << int(Qt::Key_Escape) << "";
}

void tst_zoHPCTreeGUIWRows::keysLeadFromTheFilterToTheTree()
{
    QFETCH(int, key);
    m_view->setHostString("a b");
    m_view->show();
    QApplication::setActiveWindow(m_view.get());
    m_view->setFocus();
    QVERIFY(m_tree->hasFocus()); // the first to have it
    m_view->filter()->field()->setFocus();
    QTest::keyClicks(m_view->filter()->field(), "b");

    QTest::keyClick(m_view->filter()->field(), Qt::Key(key));

    QVERIFY(m_tree->hasFocus());
    QCOMPARE(m_view->selectedItem(), node("b"));
    QTEST(m_view->filter()->field()->text(), "text");
}

void tst_zoHPCTreeGUIWRows::largeTreeIsFiltered()
{
    m_view->setHostString("{n00001 - n10000} {m00001 - m10000}");

    m_view->filter()->field()->setText("m01234");
    QCOMPARE(m_view->selectedItem()->hostName(), QString("m01234"));
    m_view->filter()->field()->clear();
}

void tst_zoHPCTreeGUIWRows::removedRowsLeadToOneInSight()
{
    m_view->setHostString("a1 b1 a2 b2 a3");
    m_view->filter()->field()->setText("a");
    select({"a1", "a2"});

    m_view->removeItem();

    QCOMPARE(m_view->selectedItem(), node("a3"));
}

void tst_zoHPCTreeGUIWRows::rowsTellTheirStateInWords()
{
    m_view->setHostString("{a} {b c}");
    item({1})->setOption("encrypted", "true");
    m_view->setIsRunning(true, {"b"});
    node("c")->setIsEnabled(false);
    const auto told = [](const zoHPCTreeItem* row) {
        return row->data(0, Qt::AccessibleDescriptionRole).toString();
    };

    QCOMPARE(told(node("a")), QString());
    QCOMPARE(told(node("b")), QString("running, encrypted"));
    QCOMPARE(told(node("c")), QString("disabled"));
    QCOMPARE(told(item({1})), QString("running, encrypted"));
    QCOMPARE(node("b")->toolTip(0), QString("b: running, encrypted"));
    QCOMPARE(node("a")->toolTip(0), QString());
}

void tst_zoHPCTreeGUIWRows::treeHasAName()
{
    QCOMPARE(m_tree->accessibleName(), QString("Cluster"));
    QVERIFY(!m_view->filter()->field()->accessibleName().isEmpty());
}

ZO_TEST_MAIN(tst_zoHPCTreeGUIWRows)
#include "tst_zoHPCTreeGUIWRows.moc"
