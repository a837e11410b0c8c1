#include "zoTestCase.h"

#include <zoServerMessage.h>

#include <QApplication>

class tst_zoServerMessage final : public zoTestCase
{
    Q_OBJECT

private slots:
    void formOnTheWire_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QByteArray>("wire");

        QTest::newRow("empty") << QByteArray("BEAT") << QByteArray() << QByteArray("BEAT 0\n\n");
        QTest::newRow("text") << QByteArray("SHOW") << QByteArray("{}") << QByteArray("SHOW 2\n{}\n");
        QTest::newRow("line-ends-are-payload")
            << QByteArray("LOG") << QByteArray("a\nb\n") << QByteArray("LOG 4\na\nb\n\n");
        QTest::newRow("bytes-not-characters")
            << QByteArray("LOG") << QByteArray("\xc3\xa4") << QByteArray("LOG 2\n\xc3\xa4\n");
    }

    void formOnTheWire()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QByteArray, payload);
        QFETCH(QByteArray, wire);

        const zoServerMessage message{verb, payload};

        QCOMPARE(message.encoded(), wire);
    }

    void payloadAtTheLimitIsEncodedOneAboveIsNot()
    {
        const zoServerMessage fits{"DATA", QByteArray(int(zoServerMessage::MaximumPayload), 'z')};
        const zoServerMessage tooLong{"DATA", QByteArray(int(zoServerMessage::MaximumPayload) + 1, 'z')};

        QVERIFY(fits.encoded().size() > zoServerMessage::MaximumPayload);
        QCOMPARE(tooLong.encoded(), QByteArray());
    }

    void objectsAreCompactAndComeBack()
    {
        const QJsonObject object{{QStringLiteral("id"), QStringLiteral("n1\n")},
                                 {QStringLiteral("count"), 3}};

        const zoServerMessage message = zoServerMessage::of("NODE", object);

        QCOMPARE(message.payload, QByteArray("{\"count\":3,\"id\":\"n1\\n\"}"));
        QCOMPARE(message.object(), object);
    }

    void payloadThatIsNoObjectIsAnEmptyOne()
    {
        QCOMPARE((zoServerMessage{"NODE", "[1,2]"}).object(), QJsonObject());
        QCOMPARE((zoServerMessage{"NODE", "{"}).object(), QJsonObject());
        QCOMPARE((zoServerMessage{"NODE", ""}).object(), QJsonObject());
    }
};

ZO_TEST_MAIN(tst_zoServerMessage)
#include "tst_zoServerMessage.moc"
