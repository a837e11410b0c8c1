#include "zoTestCase.h"

#include <zoRankMessage.h>

#include <QApplication>

// Messages for ranks inside of messages.
class tst_zoRankMessage final : public zoTestCase
{
    Q_OBJECT

private slots:
    void comesBack_data();
    void comesBack();
    void tooLongIsNone();
    void damagedIsNone_data();
    void damagedIsNone();
};

void tst_zoRankMessage::comesBack_data()
{
    QTest::addColumn<QList<int>>("ranks");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("nobody") << QList<int>() << QByteArray();
    QTest::newRow("one") << QList<int>{1} << QByteArray("{}");
    QTest::newRow("many") << QList<int>{3, 0, 1000} << QByteArray("line\n\nline \0 end\n", 17);
}

void tst_zoRankMessage::comesBack()
{
    QFETCH(QList<int>, ranks);
    QFETCH(QByteArray, payload);
    zoRankMessage sent;
    sent.ranks = ranks;
    sent.message = {"SHOW", payload};
    zoRankMessage arrived;
    arrived.ranks << 99;
    QVERIFY(arrived.unpack(sent.packed("RANKS")));
    QCOMPARE(arrived.ranks, ranks);
    QCOMPARE(arrived.message.verb, QByteArray("SHOW"));
    QCOMPARE(arrived.message.payload, payload);
}

void tst_zoRankMessage::tooLongIsNone()
{
    zoRankMessage message;
    message.ranks << 1;
    const int frame = int(qstrlen("1\nDATA\n"));
    message.message = {"DATA", QByteArray(int(zoServerMessage::MaximumPayload) - frame, 'x')};
    QVERIFY(!message.packed("RANKS").encoded().isEmpty());
    message.message.payload += 'x';
    QCOMPARE(message.packed("RANKS").verb, QByteArray());
}

void tst_zoRankMessage::damagedIsNone_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one line") << QByteArray("1\n");
    QTest::newRow("no rank") << QByteArray("x\nSHOW\n");
    QTest::newRow("below 0") << QByteArray("-1\nSHOW\n");
    QTest::newRow("two blanks") << QByteArray("1  2\nSHOW\n");
    QTest::newRow("too large") << QByteArray("99999999999\nSHOW\n");
}

void tst_zoRankMessage::damagedIsNone()
{
    QFETCH(QByteArray, payload);
    zoRankMessage message;
    QVERIFY(!message.unpack({"RANKS", payload}));
}

ZO_TEST_MAIN(tst_zoRankMessage)
#include "tst_zoRankMessage.moc"
