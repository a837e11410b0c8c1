#include "zoTestCase.h"

#include <zoBarrier.h>

#include <QApplication>

class tst_zoBarrier final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lastOneCompletesTheRound_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {1, 2, 7})
            QTest::addRow("%d", count) << count;
    }

    void lastOneCompletesTheRound()
    {
        QFETCH(int, count);
        QSet<int> members;
        for (int i = 0; i < count; ++i)
            members << i;
        zoBarrier barrier;
        barrier.begin(5, members);

        for (int i = 0; i < count - 1; ++i)
            QVERIFY(!barrier.arrive(i, 5, 0));
        QVERIFY(barrier.isOpen());

        QVERIFY(barrier.arrive(count - 1, 5, 0));
        QVERIFY(!barrier.isOpen());
    }

    void nobodyIsNoRound()
    {
        zoBarrier barrier;

        barrier.begin(1, {});

        QVERIFY(!barrier.isOpen());
        QVERIFY(!barrier.arrive(0, 1, 0));
    }

    void arrivingTwiceCountsOnce()
    {
        zoBarrier barrier;
        barrier.begin(1, {0, 1});

        QVERIFY(!barrier.arrive(0, 1, 0));
        QVERIFY(!barrier.arrive(0, 1, 0));
        QVERIFY(barrier.isOpen());
    }

    void strangersAndOldRoundsDoNotCount()
    {
        zoBarrier barrier;
        barrier.begin(1, {0});
        barrier.begin(2, {0, 1});
        QVERIFY(!barrier.arrive(0, 2, 0));

        QVERIFY(!barrier.arrive(1, 1, 0));
        QVERIFY(!barrier.arrive(7, 2, 0));
        QVERIFY(barrier.isOpen());
        QVERIFY(barrier.arrive(1, 2, 0));
    }

    void whoLeavesIsNotWaitedFor()
    {
        zoBarrier barrier;
        barrier.begin(1, {0, 1, 2});
        QVERIFY(!barrier.arrive(0, 1, 0));

        QVERIFY(!barrier.leave(1, 0));
        QVERIFY(barrier.leave(2, 0));

        QVERIFY(!barrier.isOpen());
        QVERIFY(!barrier.leave(0, 0));
    }

    void waitsAreThoseOfTheOthers()
    {
        zoBarrier barrier;
        barrier.begin(1, {0, 1, 2});
        barrier.arrive(0, 1, 1000);
        barrier.arrive(1, 1, 1500);
        barrier.arrive(2, 1, 4000);

        QCOMPARE(barrier.waits(), (QHash<int, qint64>{{0, 3000}, {1, 2500}, {2, 0}}));
    }

    void waitsAreThoseOfTheLastCompleteRound()
    {
        zoBarrier barrier;
        barrier.begin(1, {0, 1});
        barrier.arrive(0, 1, 0);
        barrier.arrive(1, 1, 10);

        barrier.begin(2, {0, 1});
        barrier.arrive(1, 2, 20);

        QCOMPARE(barrier.waits(), (QHash<int, qint64>{{0, 10}, {1, 0}}));
    }
};

ZO_TEST_MAIN(tst_zoBarrier)
#include "tst_zoBarrier.moc"
