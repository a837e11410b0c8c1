#include "zoTestCase.h"

#include <zoServerHello.h>

#include <QApplication>

class tst_zoServerHello final : public zoTestCase
{
    Q_OBJECT

private slots:
    void everythingComesBack()
    {
        zoServerHello hello;
        hello.protocol = 7;
        hello.version = QStringLiteral("1.2.3");
        hello.host = QStringLiteral("wall-1");
        hello.freeMemory = qint64(64) * 1024 * 1024 * 1024;
        hello.display = QStringLiteral(":0");
        hello.screens = QStringList({"1920x1080+0+0", "1920x1080+1920+0"});
        hello.processId = 4711;

        const zoServerHello back = zoServerHello::fromMessage(hello.message());

        QCOMPARE(back.protocol, hello.protocol);
        QCOMPARE(back.version, hello.version);
        QCOMPARE(back.host, hello.host);
        QCOMPARE(back.freeMemory, hello.freeMemory);
        QCOMPARE(back.display, hello.display);
        QCOMPARE(back.screens, hello.screens);
        QCOMPARE(back.processId, hello.processId);
    }

    void messageWithoutContentIsOfAnotherProtocol()
    {
        const zoServerHello hello = zoServerHello::fromMessage({"HELLO", "{}"});

        QVERIFY(!hello.mismatch().isEmpty());
        QCOMPARE(hello.freeMemory, qint64(-1));
    }

    void ownHelloMatchesItself()
    {
        const zoServerHello hello = zoServerHello::own();

        QCOMPARE(hello.mismatch(), QString());
        QVERIFY(!hello.host.isEmpty());
        QVERIFY(hello.freeMemory > 0);
        QCOMPARE(hello.processId, QCoreApplication::applicationPid());
    }

    void mismatchNamesBothVersions()
    {
        zoServerHello hello = zoServerHello::own();
        const QString own = hello.version;
        hello.protocol = zoServerHello::Protocol + 1;
        hello.version = QStringLiteral("9.8.7");

        const QString mismatch = hello.mismatch();

        QVERIFY2(mismatch.contains(QStringLiteral("9.8.7")), qPrintable(mismatch));
        QVERIFY2(mismatch.contains(own), qPrintable(mismatch));
        QVERIFY2(mismatch.contains(QString::number(zoServerHello::Protocol + 1)), qPrintable(mismatch));
    }
};

ZO_TEST_MAIN(tst_zoServerHello)
#include "tst_zoServerHello.moc"
