#include "zoTestCase.h"

#include <zoLauncher.h>

#include <QApplication>

namespace
{
const QStringList Ssh({"ssh", "-T", "-o", "BatchMode=yes", "-o", "ConnectTimeout=3", "%h", "%program"});
const QStringList Server({"ZOKEClusterServer", "server"});
} // namespace

class tst_zoLauncher final : public zoTestCase
{
    Q_OBJECT

private slots:
    void templates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("words");

        QTest::newRow("default") << QString::fromLatin1(zoLauncher::DefaultTemplate) << Ssh;
        QTest::newRow("quoted-words-stay-together")
            << "\"/opt/my launcher/run\" %h %program"
            << QStringList({"/opt/my launcher/run", "%h", "%program"});
        QTest::newRow("nothing-is-a-shell")
            << "ssh $(id) `id` ; | > %h %program"
            << QStringList({"ssh", "$(id)", "`id`", ";", "|", ">", "%h", "%program"});
        QTest::newRow("empty") << "" << QStringList();
        QTest::newRow("no-host") << "ssh %program" << QStringList();
        QTest::newRow("two-hosts") << "ssh %h %h %program" << QStringList();
        QTest::newRow("host-in-a-word") << "ssh user@%h %program" << QStringList();
        QTest::newRow("no-program") << "ssh %h" << QStringList();
        QTest::newRow("program-not-last") << "ssh %h %program -v" << QStringList();
        QTest::newRow("program-first") << "%program %h" << QStringList();
        QTest::newRow("option-first") << "-T %h %program" << QStringList();
    }

    void templates()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, words);
        QString reason;

        QCOMPARE(zoLauncher::fromText(text, reason), words);
        QCOMPARE(reason.isEmpty(), !words.isEmpty());
    }

    void hostNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("plain") << "wall-1" << true;
        QTest::newRow("full") << "wall_1.Example.com" << true;
        QTest::newRow("address") << "192.168.0.1" << true;
        QTest::newRow("address-6") << "fe80::1" << true;
        QTest::newRow("longest") << QString(255, 'a') << true;
        QTest::newRow("too-long") << QString(256, 'a') << false;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("option") << "-oProxyCommand=id" << false;
        QTest::newRow("dash-alone") << "-" << false;
        QTest::newRow("blank") << "wall 1" << false;
        QTest::newRow("end-of-line") << "wall\n1" << false;
        QTest::newRow("shell") << "wall;id" << false;
        QTest::newRow("quote") << "wall'1" << false;
        QTest::newRow("user") << "root@wall" << false;
        QTest::newRow("path") << "wall/1" << false;
        QTest::newRow("percent") << "%h" << false;
        QTest::newRow("letter-outside-ascii") << QString::fromUtf8("w\xc3\xa4nd") << false;
        QTest::newRow("nul") << QString::fromLatin1("a\0b", 3) << false;
    }

    void hostNames()
    {
        QFETCH(QString, name);
        QFETCH(bool, accepted);
        QString reason;

        QCOMPARE(zoLauncher::isHostName(name), accepted);
        QCOMPARE(!zoLauncher(Ssh).command({name}, Server, reason).isEmpty(), accepted);
        if (!accepted)
            QVERIFY2(reason.contains(QLatin1Char('"') + name + QLatin1Char('"')), qPrintable(reason));
    }

    void programHereNeedsNoTemplate()
    {
        QString reason;

        QCOMPARE(zoLauncher(Ssh).command({}, {"/path with blanks/program", "server"}, reason),
                 QStringList({"/path with blanks/program", "server"}));
    }

    void programOnAHost()
    {
        QString reason;

        QCOMPARE(zoLauncher(Ssh).command({"wall-1"}, Server, reason),
                 QStringList({"ssh", "-T", "-o", "BatchMode=yes", "-o", "ConnectTimeout=3", "wall-1",
                              "ZOKEClusterServer", "server"}));
    }

    void programBehindGateways()
    {
        QString reason;
        const zoLauncher launcher({"ssh", "%h", "%program"});

        QCOMPARE(launcher.command({"outer", "inner", "node"}, Server, reason),
                 QStringList({"ssh", "outer", "ssh", "inner", "ssh", "node", "ZOKEClusterServer", "server"}));
    }

    void wordsThatARemoteShellMindsAreRefused_data()
    {
        QTest::addColumn<QString>("word");
        for (const char* word :
             {"", "a b", "a;b", "$HOME", "`id`", "a'b", "a\"b", "a\nb", "~", "*", "a&b", "(a)"})
            QTest::newRow(word) << QString::fromLatin1(word);
    }

    void wordsThatARemoteShellMindsAreRefused()
    {
        QFETCH(QString, word);
        QString reason;

        QCOMPARE(zoLauncher(Ssh).command({"wall-1"}, {word, "server"}, reason), QStringList());
        QVERIFY(!reason.isEmpty());
        // A word of the template comes to a shell where it is not the first one.
        reason.clear();
        const zoLauncher other({"ssh", word, "%h", "%program"});
        QVERIFY(!other.command({"outer"}, Server, reason).isEmpty());
        QCOMPARE(other.command({"outer", "inner"}, Server, reason), QStringList());
        QVERIFY(!reason.isEmpty());
    }
};

ZO_TEST_MAIN(tst_zoLauncher)
#include "tst_zoLauncher.moc"
