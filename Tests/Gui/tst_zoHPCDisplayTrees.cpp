#include "zoTestCase.h"

#include <zoHPCDisplayTrees.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCTreeRows.h>
#include <zoHPCViewportItem.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTreeWidget>

#include <memory>

// Current rows of both trees of the display setup, and rows that come and go.
class tst_zoHPCDisplayTrees final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void onlyTheFirstColumnIsShown();
    void currentDisplayAndWindowAreFoundAbove();
    void outputNeedsItsParent();
    void outputGoesBelowTheCurrentRow();
    void takenRowIsTheCallers();
    void childrenReplaceTheirProjection();
    void regeneratedTileStaysCurrent();
    void changedValuesKeepRowsSelectionAndExpansion();
    void wallsInsideWallsGetTheDistance();
    void bulkChangeIsSilent();
    void rowsAndIndexesBelongTogether();

private:
    QTreeWidget m_projections;
    QTreeWidget m_outputs;
    std::unique_ptr<zoHPCDisplayTrees> m_trees;
};

void tst_zoHPCDisplayTrees::init()
{
    m_projections.clear();
    m_outputs.clear();
    m_trees = std::make_unique<zoHPCDisplayTrees>(&m_projections, &m_outputs);
}

void tst_zoHPCDisplayTrees::onlyTheFirstColumnIsShown()
{
    QCOMPARE(m_projections.columnCount(), int(zoHPCProjectionItem::ColumnCount));
    QVERIFY(!m_projections.isColumnHidden(0));
    QVERIFY(m_projections.isColumnHidden(1));
    QVERIFY(m_outputs.isColumnHidden(zoHPCViewportItem::ColumnCount - 1));
}

void tst_zoHPCDisplayTrees::currentDisplayAndWindowAreFoundAbove()
{
    QVERIFY(!m_trees->currentDisplay());
    m_trees->addDisplay();
    QVERIFY(!m_trees->currentWindow());

    QVERIFY(m_trees->addOutput(std::make_unique<zoHPCWindowItem>()));
    QVERIFY(m_trees->addOutput(std::make_unique<zoHPCViewportItem>()));

    QCOMPARE(m_trees->currentDisplay(), m_outputs.topLevelItem(0));
    QCOMPARE(m_trees->currentWindow(), m_outputs.topLevelItem(0)->child(0));
    QCOMPARE(m_trees->currentOutput(), m_outputs.topLevelItem(0)->child(0)->child(0));
}

void tst_zoHPCDisplayTrees::outputNeedsItsParent()
{
    QVERIFY(!m_trees->addOutput(std::make_unique<zoHPCWindowItem>()));
    QVERIFY(!m_trees->addOutput(std::make_unique<zoHPCViewportItem>()));
    QCOMPARE(m_outputs.topLevelItemCount(), 0);

    QVERIFY(m_trees->addOutput(std::make_unique<zoHPCDisplayItem>()));

    QCOMPARE(m_outputs.currentItem(), m_outputs.topLevelItem(0));
}

void tst_zoHPCDisplayTrees::outputGoesBelowTheCurrentRow()
{
    m_trees->addDisplay();
    m_trees->addDisplay();
    QCOMPARE(m_outputs.currentItem(), m_outputs.topLevelItem(0)); // the second takes nothing from the first

    m_outputs.setCurrentItem(m_outputs.topLevelItem(1));
    m_trees->addOutput(std::make_unique<zoHPCWindowItem>());

    QCOMPARE(m_outputs.topLevelItem(0)->childCount(), 0);
    QCOMPARE(m_outputs.topLevelItem(1)->childCount(), 1);
    QVERIFY(m_outputs.topLevelItem(1)->isExpanded());
}

void tst_zoHPCDisplayTrees::takenRowIsTheCallers()
{
    QVERIFY(zoHPCDisplayTrees::takeChosen(&m_outputs).empty());
    m_trees->addDisplay();
    m_trees->addOutput(std::make_unique<zoHPCWindowItem>());
    QTreeWidgetItem* const window = m_outputs.currentItem();

    const std::vector<std::unique_ptr<QTreeWidgetItem>> taken = zoHPCDisplayTrees::takeChosen(&m_outputs);

    QCOMPARE(taken.size(), size_t(1));
    QCOMPARE(taken.front().get(), window);
    QVERIFY(!taken.front()->treeWidget());
    QCOMPARE(m_outputs.topLevelItem(0)->childCount(), 0);
}

void tst_zoHPCDisplayTrees::childrenReplaceTheirProjection()
{
    auto wall =
        std::make_unique<zoHPCProjectionItem>(QStringLiteral("p"), zoHPCProjectionType::Kind::PowerWall);
    wall->setInt(zoHPCProjectionItem::Columns, 2);
    wall->update();
    m_trees->addProjection(
        std::make_unique<zoHPCProjectionItem>(QStringLiteral("first"), zoHPCProjectionType::Kind::Plane));
    m_trees->addProjection(std::move(wall));

    QTreeWidgetItem* const first = m_trees->replaceByChildren(m_trees->currentProjection());

    QCOMPARE(m_projections.topLevelItemCount(), 3);
    QCOMPARE(m_projections.topLevelItem(1), first);
    QCOMPARE(first->text(0), QStringLiteral("p row:1 col:1"));
}

void tst_zoHPCDisplayTrees::regeneratedTileStaysCurrent()
{
    m_trees->addProjection(
        std::make_unique<zoHPCProjectionItem>(QStringLiteral("w"), zoHPCProjectionType::Kind::Wall));
    zoHPCProjectionItem* const wall = m_trees->currentProjection();
    wall->setInt(zoHPCProjectionItem::Columns, 3);
    wall->update();
    m_projections.setCurrentItem(wall->child(1));

    m_trees->regenerate(wall);
    QCOMPARE(m_projections.currentItem(), wall->child(1));

    wall->setInt(zoHPCProjectionItem::Columns, 1);
    m_trees->regenerate(wall);
    QCOMPARE(m_projections.currentItem(), wall);
}

void tst_zoHPCDisplayTrees::changedValuesKeepRowsSelectionAndExpansion()
{
    m_trees->addProjection(
        std::make_unique<zoHPCProjectionItem>(QStringLiteral("w"), zoHPCProjectionType::Kind::Wall));
    zoHPCProjectionItem* const wall = m_trees->currentProjection();
    wall->setInt(zoHPCProjectionItem::Columns, 3);
    wall->update();
    wall->setExpanded(true);
    QTreeWidgetItem* const tile = wall->child(1);
    m_projections.setCurrentItem(tile);
    wall->child(2)->setSelected(true);
    const QList<QTreeWidgetItem*> selected = m_projections.selectedItems();
    const QSignalSpy removals(m_projections.model(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy insertions(m_projections.model(), &QAbstractItemModel::rowsInserted);
    wall->setDouble(zoHPCProjectionItem::Distance, 999.0);
    const QSignalSpy changes(m_projections.model(), &QAbstractItemModel::dataChanged);

    QVERIFY(m_trees->regenerate(wall));

    QCOMPARE(removals.count() + insertions.count(), 0);
    QCOMPARE(m_projections.currentItem(), tile);
    QCOMPARE(m_projections.selectedItems(), selected);
    QVERIFY(wall->isExpanded());
    QCOMPARE(tile->data(zoHPCProjectionItem::Distance, Qt::EditRole).toDouble(), 999.0);
    // Views and mappers of others hear of all tiles at once.
    QCOMPARE(changes.count(), 1);
    QCOMPARE(zoHPCTreeRows::itemAt(&m_projections, changes.at(0).at(0).toModelIndex()), wall->child(0));
    QCOMPARE(zoHPCTreeRows::itemAt(&m_projections, changes.at(0).at(1).toModelIndex()), wall->child(2));

    wall->setName(QStringLiteral("v"));
    QVERIFY(!m_trees->regenerate(wall));
    QCOMPARE(removals.count(), 1);
    QCOMPARE(m_projections.currentItem(), wall->child(1));
}

void tst_zoHPCDisplayTrees::wallsInsideWallsGetTheDistance()
{
    m_trees->addProjection(
        std::make_unique<zoHPCProjectionItem>(QStringLiteral("w"), zoHPCProjectionType::Kind::Wall));
    zoHPCProjectionItem* const wall = m_trees->currentProjection();
    wall->addChild(new zoHPCProjectionItem(QStringLiteral("inner"), zoHPCProjectionType::Kind::Wall));
    m_trees->addProjection(
        std::make_unique<zoHPCProjectionItem>(QStringLiteral("p"), zoHPCProjectionType::Kind::PowerWall));

    m_trees->setWallDistance(2500.0);

    QCOMPARE(wall->getDouble(zoHPCProjectionItem::Distance), 2500.0);
    QCOMPARE(wall->childCount(), 1); // its own tile
    QCOMPARE(m_trees->currentProjection()->getDouble(zoHPCProjectionItem::Distance), 1500.0);
}

void tst_zoHPCDisplayTrees::bulkChangeIsSilent()
{
    m_trees->addDisplay();
    const QSignalSpy changed(m_outputs.model(), &QAbstractItemModel::dataChanged);
    {
        const zoHPCDisplayTrees::BulkChange change(*m_trees);
        m_trees->currentDisplay()->setEyeSeparation(70.0);
        QCOMPARE(changed.count(), 0);
    }

    m_trees->currentDisplay()->setEyeSeparation(71.0);

    QCOMPARE(changed.count(), 1);
}

void tst_zoHPCDisplayTrees::rowsAndIndexesBelongTogether()
{
    m_trees->addDisplay();
    m_trees->addOutput(std::make_unique<zoHPCWindowItem>());
    QTreeWidgetItem* const window = m_outputs.currentItem();

    const QModelIndex index = zoHPCTreeRows::indexOf(&m_outputs, window);

    QCOMPARE(index, m_outputs.currentIndex());
    QCOMPARE(zoHPCTreeRows::itemAt(&m_outputs, index), window);
    QCOMPARE(zoHPCTreeRows::topLevelOf(window), m_outputs.topLevelItem(0));
    QVERIFY(!zoHPCTreeRows::indexOf(&m_outputs, nullptr).isValid());
    QCOMPARE(zoHPCTreeRows::itemAt(&m_outputs, QModelIndex()), nullptr);
}

ZO_TEST_MAIN(tst_zoHPCDisplayTrees)
#include "tst_zoHPCDisplayTrees.moc"
