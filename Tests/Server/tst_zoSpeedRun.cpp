#include "zoTestCase.h"

#include <zoServerGroup.h>
#include <zoSpeedRun.h>

#include <QApplication>
#include <QJsonArray>
#include <QSet>
#include <QSignalSpy>

namespace
{
constexpr qint64 Mebibyte = 1024 * 1024;

// Servers that take all at once and answer when the test says so.
class Group final : public zoServerGroup
{
public:
    void add(const std::vector<Member>&) override {}
    void send(const QList<int>& keys, const zoServerMessage& message) override
    {
        for (const int key : keys)
            sentMessages.push_back({key, message});
    }
    qint64 bytesToSend(int) const override { return 0; }
    void remove(const QList<int>&) override {}
    void removeAll() override {}

    QStringList verbs(int key) const
    {
        QStringList words;
        for (const auto& sentMessage : sentMessages) {
            if (sentMessage.first == key)
                words << QString::fromLatin1(sentMessage.second.verb);
        }
        return words;
    }

    std::vector<std::pair<int, zoServerMessage>> sentMessages;
};

zoSpeedRun::Limits limitsOf(qint64 bytes)
{
    constexpr int NeverMs = 1000000;
    zoSpeedRun::Limits limits;
    limits.bytes = bytes;
    limits.milliseconds = NeverMs;
    return limits;
}
} // namespace

// What is sent to measure the ways to nodes, and in which order.
class tst_zoSpeedRun final : public zoTestCase
{
    Q_OBJECT

private slots:
    void storeHasAllItsBytes_data();
    void storeHasAllItsBytes();
    void storeRepeatsNothing();
    void limitsFollowTheNumberOfServers_data();
    void limitsFollowTheNumberOfServers();
    void serversAreMeasuredInTurnAndBothWays();
    void whatCameBeforeTheBeginDoesNotCount();
    void serverThatLeavesIsLeftOut();
    void runWithoutServersFinishes();
};

void tst_zoSpeedRun::storeHasAllItsBytes_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("memory");
    QTest::addColumn<int>("blocks");

    QTest::newRow("nothing") << qint64(0) << qint64(-1) << 1;
    QTest::newRow("a-byte") << qint64(1) << qint64(-1) << 1;
    QTest::newRow("a-block") << Mebibyte << qint64(-1) << 1;
    QTest::newRow("a-byte-more") << Mebibyte + 1 << qint64(-1) << 2;
    QTest::newRow("a-whole-test") << 256 * Mebibyte << qint64(-1) << 256;
    QTest::newRow("just-enough-memory") << 256 * Mebibyte << 1024 * Mebibyte << 256;
    QTest::newRow("less-memory") << 256 * Mebibyte << 1024 * Mebibyte - 1 << 255;
    QTest::newRow("no-memory") << 256 * Mebibyte << qint64(0) << 1;
}

void tst_zoSpeedRun::storeHasAllItsBytes()
{
    QFETCH(qint64, bytes);
    QFETCH(qint64, memory);
    QFETCH(int, blocks);

    const zoSpeedStore store(bytes, memory);

    QCOMPARE(int(store.count()), blocks);
}

// No block twice, and nothing in a block that a link could make smaller.
void tst_zoSpeedRun::storeRepeatsNothing()
{
    constexpr int Count = 9;
    zoSpeedStore store(Count * Mebibyte, -1);
    while (!store.isMade())
        store.makeSome();

    QSet<QByteArray> pieces;
    constexpr int Piece = 4096;
    for (int i = 0; i < Count; ++i) {
        const QByteArray block = store.block(i * Mebibyte);
        QCOMPARE(block.size(), zoSpeedStore::BlockSize);
        QVERIFY(qCompress(block, 9).size() >= block.size());
        for (int at = 0; at < block.size(); at += Piece)
            pieces << block.mid(at, Piece);
    }

    QCOMPARE(pieces.size(), Count * zoSpeedStore::BlockSize / Piece);
    QCOMPARE(store.block(Count * Mebibyte), store.block(0));
}

void tst_zoSpeedRun::limitsFollowTheNumberOfServers_data()
{
    QTest::addColumn<int>("servers");
    QTest::addColumn<bool>("isRehearsal");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<int>("milliseconds");

    QTest::newRow("none") << 0 << false << 256 * Mebibyte << 1000;
    QTest::newRow("one") << 1 << false << 256 * Mebibyte << 1000;
    QTest::newRow("thirty") << 30 << false << 256 * Mebibyte << 1000;
    QTest::newRow("sixty") << 60 << false << 128 * Mebibyte << 500;
    QTest::newRow("ten-thousand") << 10000 << false << 256 * Mebibyte / 100 << 10;
    QTest::newRow("one-rehearsed") << 1 << true << 256 * Mebibyte << 300;
    QTest::newRow("four-rehearsed") << 4 << true << 64 * Mebibyte << 75;
    QTest::newRow("many-rehearsed") << 512 << true << Mebibyte << 10;
}

void tst_zoSpeedRun::limitsFollowTheNumberOfServers()
{
    QFETCH(int, servers);
    QFETCH(bool, isRehearsal);
    QFETCH(qint64, bytes);
    QFETCH(int, milliseconds);

    const zoSpeedRun::Limits limits = zoSpeedRun::limitsFor(servers, isRehearsal);

    QCOMPARE(limits.bytes, bytes);
    QCOMPARE(limits.milliseconds, milliseconds);
}

void tst_zoSpeedRun::serversAreMeasuredInTurnAndBothWays()
{
    Group group;
    zoSpeedRun run(&group);
    QSignalSpy finished(&run, &zoSpeedRun::finished);

    run.start({4, 7}, limitsOf(3 * Mebibyte));

    const QStringList sending({"DATA", "DATA", "DATA", "DATAEND"});
    QTRY_COMPARE(group.verbs(4), sending);
    QCOMPARE(group.sentMessages.at(1).second.payload.size(), int(Mebibyte));
    QVERIFY(group.sentMessages.at(1).second.payload != group.sentMessages.at(0).second.payload);
    QVERIFY(run.take(4, {"DATAEND", "taken"}));
    QCOMPARE(group.verbs(4), sending + QStringList("FETCH"));
    QCOMPARE(group.sentMessages.back().second.object().value("bytes").toDouble(), double(3 * Mebibyte));
    QVERIFY(group.verbs(7).isEmpty());
    QVERIFY(run.take(4, {"DATAEND", "begun"}));
    QVERIFY(run.take(4, {"DATA", QByteArray(Mebibyte, 'x')}));
    QVERIFY(run.take(4, {"DATAEND", "sent"}));
    QCOMPARE(group.verbs(7), sending);
    QVERIFY(finished.isEmpty());
    QVERIFY(!run.take(7, {"READY", {}}));
    QVERIFY(run.take(7, {"DATAEND", "taken"}));
    QVERIFY(run.take(7, {"DATAEND", "begun"}));
    QVERIFY(run.take(7, {"DATA", QByteArray(Mebibyte, 'x')}));
    QVERIFY(run.take(7, {"DATAEND", "sent"}));

    QCOMPARE(finished.count(), 1);
    const QJsonObject rates = finished.at(0).at(0).toJsonObject();
    QCOMPARE(rates.keys(), QStringList({"4", "7"}));
    for (const char* key : {"4", "7"}) {
        const QJsonArray pair = rates.value(QLatin1String(key)).toArray();
        QVERIFY(pair.at(0).toDouble() > 0 && pair.at(1).toDouble() > 0);
    }
}

// The server makes its bytes first, which takes time that is none of the way's.
void tst_zoSpeedRun::whatCameBeforeTheBeginDoesNotCount()
{
    Group group;
    zoSpeedRun run(&group);
    QSignalSpy finished(&run, &zoSpeedRun::finished);
    run.start({1}, limitsOf(Mebibyte));
    QTRY_COMPARE(group.verbs(1).size(), 2);
    run.take(1, {"DATAEND", "taken"});

    run.take(1, {"DATA", QByteArray(Mebibyte, 'x')});
    run.take(1, {"DATAEND", "begun"});
    run.take(1, {"DATAEND", "sent"});

    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toJsonObject().value("1").toArray().at(1).toDouble(), 0.0);
}

void tst_zoSpeedRun::serverThatLeavesIsLeftOut()
{
    Group group;
    zoSpeedRun run(&group);
    QSignalSpy finished(&run, &zoSpeedRun::finished);
    run.start({1, 2, 3}, limitsOf(Mebibyte));
    QTRY_COMPARE(group.verbs(1).size(), 2);

    run.leave(2);
    run.leave(1);

    QVERIFY(group.verbs(2).isEmpty());
    QTRY_COMPARE(group.verbs(3).size(), 2);
    run.leave(3);
    QCOMPARE(finished.count(), 1);
    QVERIFY(finished.at(0).at(0).toJsonObject().isEmpty());
}

void tst_zoSpeedRun::runWithoutServersFinishes()
{
    Group group;
    zoSpeedRun run(&group);
    QSignalSpy finished(&run, &zoSpeedRun::finished);

    run.start({}, limitsOf(Mebibyte));

    QTRY_COMPARE(finished.count(), 1);
}

ZO_TEST_MAIN(tst_zoSpeedRun)
#include "tst_zoSpeedRun.moc"
