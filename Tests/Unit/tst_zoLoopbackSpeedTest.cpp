#include "zoTestCase.h"

#include <zoLoopbackSpeedTest.h>

#include <QApplication>
#include <QElapsedTimer>

#include <sys/resource.h>

// The measurement of the network over loopback sockets.
class tst_zoLoopbackSpeedTest final : public zoTestCase
{
    Q_OBJECT

private slots:
    void figuresAreThreePositiveIntegers_data();
    void figuresAreThreePositiveIntegers();
    void amountsBoundTheTest();
    void timeBoundsTheTest();
    void lackOfSocketsIsReported();
};

void tst_zoLoopbackSpeedTest::figuresAreThreePositiveIntegers_data()
{
    QTest::addColumn<int>("nodes");

    QTest::newRow("no-node") << 0;
    QTest::newRow("one-node") << 1;
    QTest::newRow("five-nodes") << 5;
    QTest::newRow("more-nodes-than-connections") << 1000;
}

void tst_zoLoopbackSpeedTest::figuresAreThreePositiveIntegers()
{
    QFETCH(int, nodes);
    zoLoopbackSpeedTest test(nodes, {20, 1024 * 1024, 100});

    const QStringList figures = test.run();

    QCOMPARE(figures.size(), 3);
    for (const QString& figure : figures) {
        bool ok = false;
        QVERIFY2(figure.toLongLong(&ok) > 0 && ok, qPrintable(figure));
    }
}

void tst_zoLoopbackSpeedTest::amountsBoundTheTest()
{
    // With an hour per measurement only the amounts can end it.
    zoLoopbackSpeedTest test(2, {3600 * 1000, 1024 * 1024, 100});

    QCOMPARE(test.run().size(), 3);
}

void tst_zoLoopbackSpeedTest::timeBoundsTheTest()
{
    // Amounts that no machine moves within the time limit of the test.
    constexpr qint64 Endless = qint64(1) << 60;
    zoLoopbackSpeedTest test(2, {10, Endless, 2000000000});

    QCOMPARE(test.run().size(), 3);
}

void tst_zoLoopbackSpeedTest::lackOfSocketsIsReported()
{
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
    zoLoopbackSpeedTest test(2);

    const QStringList figures = test.run();

    QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
    QCOMPARE(figures, QStringList());
    QVERIFY(!test.errorString().isEmpty());
}

ZO_TEST_MAIN(tst_zoLoopbackSpeedTest)
#include "tst_zoLoopbackSpeedTest.moc"
