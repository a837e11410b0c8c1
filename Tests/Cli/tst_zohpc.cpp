#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QTest>

// The program around its commands: overview, version, wrong usage, what it needs to run.
class tst_zohpc final : public zoTestCase
{
    Q_OBJECT

private slots:
    void overviewNamesEachCommand();
    void hostsAloneHasItsOverview();
    void everyCommandHasHelpWithExamples_data();
    void everyCommandHasHelpWithExamples();
    void helpWordIsTheHelpOption();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();
    void runsWithoutDisplayAndHome();
    void fullDiskIsTold();
    void hostsCommandsLoadNoGui();
};

void tst_zohpc::overviewNamesEachCommand()
{
    const zoCommandRun run = zoCommandRun::zohpc({QStringLiteral("--help")});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.startsWith("Usage: zohpc COMMAND"));
    for (const char* command : {"check", "convert", "diff", "draw", "export", "format", "hosts expand",
                                "hosts fold", "hosts tree", "new"})
        QVERIFY2(run.output.contains(QByteArray("\n  ") + command + ' '), command);
    QCOMPARE(zoCommandRun::zohpc({QStringLiteral("help")}).whole(), run.whole());
    QCOMPARE(zoCommandRun::zohpc({QStringLiteral("-h")}).whole(), run.whole());
}

void tst_zohpc::hostsAloneHasItsOverview()
{
    const zoCommandRun run = zoCommandRun::zohpc({QStringLiteral("hosts"), QStringLiteral("--help")});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.output, QByteArray("Usage: zohpc hosts COMMAND [options] ...\n"
                                    "Hosts text and the bracket form of other cluster tools.\n"
                                    "\n"
                                    "Commands:\n"
                                    "  hosts expand   the names that hosts text stands for\n"
                                    "  hosts fold     names as hosts text, in as few words as possible\n"
                                    "  hosts tree     the networks of hosts text, with their gateways\n"
                                    "\n"
                                    "  zohpc hosts COMMAND --help   options and examples of a command\n"));
    QCOMPARE(zoCommandRun::zohpc({QStringLiteral("help"), QStringLiteral("hosts")}).whole(), run.whole());
}

void tst_zohpc::everyCommandHasHelpWithExamples_data()
{
    QTest::addColumn<QString>("command");

    QTest::newRow("check") << "check";
    QTest::newRow("convert") << "convert";
    QTest::newRow("diff") << "diff";
    QTest::newRow("draw") << "draw";
    QTest::newRow("export") << "export";
    QTest::newRow("format") << "format";
    QTest::newRow("new") << "new";
    QTest::newRow("hosts-expand") << "hosts expand";
    QTest::newRow("hosts-fold") << "hosts fold";
    QTest::newRow("hosts-tree") << "hosts tree";
}

void tst_zohpc::everyCommandHasHelpWithExamples()
{
    QFETCH(QString, command);

    const zoCommandRun run = zoCommandRun::zohpc(command.split(QLatin1Char(' ')) << QStringLiteral("--help"));

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.startsWith("Usage: zohpc " + command.toLatin1() + " [options]"));
    QVERIFY(run.output.contains("\nExamples:\n"));
    QVERIFY(run.output.contains("zohpc " + command.toLatin1()));
    QVERIFY(!run.output.contains("commandline options")); // the library's words
}

void tst_zohpc::helpWordIsTheHelpOption()
{
    const QStringList viaWord{QStringLiteral("help"), QStringLiteral("hosts"), QStringLiteral("fold")};
    const QStringList viaOption{QStringLiteral("hosts"), QStringLiteral("fold"), QStringLiteral("-h")};

    QCOMPARE(zoCommandRun::zohpc(viaWord).whole(), zoCommandRun::zohpc(viaOption).whole());
}

void tst_zohpc::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("errors");

    QTest::newRow("no-command") << QStringList()
                                << QByteArray("zohpc: no command given\nTry 'zohpc --help'.\n");
    QTest::newRow("unknown-command") << QStringList{"frobnicate"}
                                     << QByteArray(
                                            "zohpc: unknown command \"frobnicate\"\nTry 'zohpc --help'.\n");
    QTest::newRow("unknown-hosts-command")
        << QStringList{"hosts", "frobnicate"}
        << QByteArray("zohpc: unknown command \"hosts frobnicate\"\nTry 'zohpc hosts --help'.\n");
    QTest::newRow("hosts-alone") << QStringList{"hosts"}
                                 << QByteArray("zohpc: hosts needs a command: expand, fold or tree\n"
                                               "Try 'zohpc hosts --help'.\n");
    QTest::newRow("unknown-option")
        << QStringList{"hosts", "fold", "--frob"}
        << QByteArray("zohpc hosts fold: Unknown option 'frob'.\nTry 'zohpc hosts fold --help'.\n");
    QTest::newRow("missing-value")
        << QStringList{"hosts", "expand", "--separator"}
        << QByteArray(
               "zohpc hosts expand: Missing value after '--separator'.\nTry 'zohpc hosts expand --help'.\n");
}

void tst_zohpc::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, errors);

    const zoCommandRun run = zoCommandRun::zohpc(arguments);

    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors, errors);
    QCOMPARE(run.exitCode, 2);
}

void tst_zohpc::runsWithoutDisplayAndHome()
{
    const zoCommandRun run = zoCommandRun::zohpcIn(
        {}, {QStringLiteral("hosts"), QStringLiteral("expand"), QStringLiteral("n1 - n3")});

    QCOMPARE(run.whole(), QByteArray("n1\nn2\nn3\n--- errors\n--- exit code 0\n"));
}

void tst_zohpc::fullDiskIsTold()
{
    const zoCommandRun run = zoCommandRun::program(QStringLiteral("/bin/sh"),
                                                   {QStringLiteral("-c"),
                                                    QStringLiteral("exec \"$0\" hosts expand n1 > /dev/full"),
                                                    QStringLiteral(ZO_ZOHPC)},
                                                   {}, {QStringLiteral("LC_ALL=C.UTF-8")});

    QCOMPARE(run.whole(),
             QByteArray("--- errors\nzohpc: standard output: No space left on device\n--- exit code 2\n"));
}

void tst_zohpc::hostsCommandsLoadNoGui()
{
    // The dynamic linker lists what it would load.
    const zoCommandRun run = zoCommandRun::program(QStringLiteral(ZO_ZOHPC), {}, {},
                                                   {QStringLiteral("LD_TRACE_LOADED_OBJECTS=1")});

    QVERIFY(run.output.contains("libQt5Core"));
    QVERIFY(!run.output.contains("libQt5Gui"));
    QVERIFY(!run.output.contains("libQt5Widgets"));
    QVERIFY(!run.output.contains("libX11"));
}

ZO_TEST_MAIN(tst_zohpc)
#include "tst_zohpc.moc"
