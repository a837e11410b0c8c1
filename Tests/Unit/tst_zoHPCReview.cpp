#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCProblem.h>
#include <zoHPCReview.h>

#include <QSignalSpy>

#include <memory>

// One reading of a configuration for all who show it.
class tst_zoHPCReview final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void unchangedTreesAreReadOnce();
    void changeOfAnyTreeIsReadAnew_data();
    void changeOfAnyTreeIsReadAnew();
    void silentChangeIsReadAfterItIsNoted();
    void problemsBelongToTheLayout();
    void layoutOutlivesTheNextReading();
    void leavingItemsAreAnnouncedBeforeTheyGo_data();
    void leavingItemsAreAnnouncedBeforeTheyGo();
    void leavingItemsAreAnnouncedOnce();
    void readingWhileRowsGoDoesNotCount();
    void otherTreesReplaceTheFirst();
    void treesMayGoFirst();
    void withoutTreesThereIsNothing();

private:
    std::unique_ptr<zoHPCSetup> m_setup;
    std::unique_ptr<zoHPCReview> m_review;
};

void tst_zoHPCReview::init()
{
    m_setup = std::make_unique<zoHPCSetup>();
    m_setup->addNode(QStringLiteral("n"));
    m_setup->addPowerWall(QStringLiteral("wall"), 1, 2);
    m_setup->addWindow(QStringLiteral("n"), QStringLiteral("wall"));
    m_review = std::make_unique<zoHPCReview>();
    m_review->setTrees(&m_setup->projections, &m_setup->displays, m_setup->hosts.hosts());
}

void tst_zoHPCReview::cleanup()
{
    m_review.reset();
    m_setup.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCReview::unchangedTreesAreReadOnce()
{
    const auto first = m_review->layout();
    const zoHPCProblem* const problems = m_review->problems().data();

    QCOMPARE(m_review->layout(), first);
    QCOMPARE(m_review->problems().data(), problems);
    QCOMPARE(first->nodes().size(), size_t(1));
    QCOMPARE(first->windows().size(), size_t(1));
    QVERIFY(m_review->problems().empty());
}

void tst_zoHPCReview::changeOfAnyTreeIsReadAnew_data()
{
    QTest::addColumn<int>("tree");

    QTest::newRow("projections") << 0;
    QTest::newRow("displays") << 1;
    QTest::newRow("hosts") << 2;
}

void tst_zoHPCReview::changeOfAnyTreeIsReadAnew()
{
    QFETCH(int, tree);
    const auto before = m_review->layout();
    QVERIFY(m_review->problems().empty());
    QSignalSpy changed(m_review.get(), &zoHPCReview::changed);

    if (tree == 0)
        m_setup->addPowerWall(QStringLiteral("dark"), 1, 1);
    else if (tree == 1)
        m_setup->addWindow(QString(), QStringLiteral("wall"));
    else
        m_setup->hosts.getNodeItems()[0]->setIsEnabled(false);

    QVERIFY(!changed.isEmpty());
    QVERIFY(m_review->layout() != before);
    QVERIFY(!m_review->problems().empty());
}

void tst_zoHPCReview::silentChangeIsReadAfterItIsNoted()
{
    const auto before = m_review->layout();
    QSignalSpy changed(m_review.get(), &zoHPCReview::changed);
    {
        const QSignalBlocker blocker(m_setup->displays.model());
        auto* const window = static_cast<zoHPCWindowItem*>(m_setup->display()->child(0));
        window->setRenderNode(QStringLiteral("gone"));
    }
    QCOMPARE(m_review->layout(), before);
    QVERIFY(m_review->problems().empty());

    m_review->noteChange();

    QCOMPARE(changed.size(), 1);
    QCOMPARE(m_review->layout()->windows()[0].node, QStringLiteral("gone"));
    QCOMPARE(m_review->problems().size(), size_t(1));
}

void tst_zoHPCReview::problemsBelongToTheLayout()
{
    QVERIFY(m_review->problems().empty());
    zoHPCWindowItem* const lost = m_setup->addWindow(QStringLiteral("gone"), QStringLiteral("wall"));

    // Read by somebody who needs no problems.
    QCOMPARE(m_review->layout()->windows().size(), size_t(2));

    QVERIFY(!m_review->problems().empty());
    QCOMPARE(m_review->problems()[0].item, lost);
}

void tst_zoHPCReview::layoutOutlivesTheNextReading()
{
    const auto before = m_review->layout();
    m_setup->addWindow(QStringLiteral("n"), QStringLiteral("wall"));

    QCOMPARE(m_review->layout()->windows().size(), size_t(2));

    QCOMPARE(before->windows().size(), size_t(1));
}

void tst_zoHPCReview::leavingItemsAreAnnouncedBeforeTheyGo_data()
{
    QTest::addColumn<bool>("all");

    QTest::newRow("one-row") << false;
    QTest::newRow("whole-tree") << true;
}

void tst_zoHPCReview::leavingItemsAreAnnouncedBeforeTheyGo()
{
    QFETCH(bool, all);
    m_review->problems();
    int walls = -1;
    connect(m_review.get(), &zoHPCReview::itemsLeft, this,
            [&] { walls = m_setup->projections.topLevelItemCount(); });

    if (all)
        m_setup->projections.clear();
    else
        delete m_setup->projections.topLevelItem(0);

    QCOMPARE(walls, 1);
    QVERIFY(m_review->layout()->projections().empty());
}

void tst_zoHPCReview::leavingItemsAreAnnouncedOnce()
{
    m_setup->addPowerWall(QStringLiteral("second"), 1, 1);
    m_review->layout();
    QSignalSpy left(m_review.get(), &zoHPCReview::itemsLeft);

    delete m_setup->projections.topLevelItem(0);
    delete m_setup->projections.topLevelItem(0);

    QCOMPARE(left.size(), 1);
}

void tst_zoHPCReview::readingWhileRowsGoDoesNotCount()
{
    m_review->layout();
    connect(m_setup->projections.model(), &QAbstractItemModel::rowsAboutToBeRemoved, m_review.get(),
            [&] { m_review->layout(); });

    delete m_setup->projections.topLevelItem(0);

    QVERIFY(m_review->layout()->projections().empty());
}

void tst_zoHPCReview::otherTreesReplaceTheFirst()
{
    zoHPCSetup other;
    other.addPowerWall(QStringLiteral("a"), 1, 1);
    m_review->layout();
    QSignalSpy left(m_review.get(), &zoHPCReview::itemsLeft);

    m_review->setTrees(&other.projections, &other.displays, other.hosts.hosts());
    QCOMPARE(left.size(), 1);
    const auto read = m_review->layout();
    QCOMPARE(read->projections().size(), size_t(2));
    m_setup->projections.clear();

    QCOMPARE(m_review->layout(), read);
    m_review.reset();
}

void tst_zoHPCReview::treesMayGoFirst()
{
    m_review->problems();

    m_setup.reset();

    QVERIFY(m_review->layout()->nodes().empty());
    QVERIFY(m_review->layout()->projections().empty());
    QVERIFY(m_review->problems().empty());
}

void tst_zoHPCReview::withoutTreesThereIsNothing()
{
    zoHPCReview review;

    QVERIFY(review.layout() != nullptr);
    QVERIFY(review.problems().empty());
}

ZO_TEST_MAIN(tst_zoHPCReview)

#include "tst_zoHPCReview.moc"
