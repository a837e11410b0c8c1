#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
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
    void environmentChangesNothing_data();
    void environmentChangesNothing();
    void settingsOfTheUserChangeNothing();
    void closedStreamsAreTold_data();
    void closedStreamsAreTold();
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
    QTest::newRow("option-before-its-command")
        << QStringList{"--json", "check"}
        << QByteArray("zohpc: no command before \"--json\"; options of a command stand behind it\nTry 'zohpc "
                      "--help'.\n");
    QTest::newRow("mistyped-command")
        << QStringList{"chekc"}
        << QByteArray("zohpc: unknown command \"chekc\"; did you mean \"check\"?\nTry 'zohpc --help'.\n");
    QTest::newRow("mistyped-help")
        << QStringList{"help", "fromat"}
        << QByteArray("zohpc: unknown command \"fromat\"; did you mean \"format\"?\nTry 'zohpc --help'.\n");
    QTest::newRow("command-without-its-first-word")
        << QStringList{"expand"}
        << QByteArray(
               "zohpc: unknown command \"expand\"; did you mean \"hosts expand\"?\nTry 'zohpc --help'.\n");
    QTest::newRow("mistyped-first-word")
        << QStringList{"host", "expand"}
        << QByteArray("zohpc: unknown command \"host\"; did you mean \"hosts\"?\nTry 'zohpc --help'.\n");
    QTest::newRow("mistyped-hosts-command")
        << QStringList{"hosts", "flod"}
        << QByteArray("zohpc: unknown command \"hosts flod\"; did you mean \"hosts fold\"?\nTry 'zohpc hosts "
                      "--help'.\n");
    QTest::newRow("mistyped-option")
        << QStringList{"hosts", "fold", "--bracket"}
        << QByteArray("zohpc hosts fold: Unknown option 'bracket'. Did you mean '--brackets'?\n"
                      "Try 'zohpc hosts fold --help'.\n");
    QTest::newRow("mistyped-option-with-a-value")
        << QStringList{"new", "--overlpa=3"}
        << QByteArray(
               "zohpc new: Unknown option 'overlpa'. Did you mean '--overlap'?\nTry 'zohpc new --help'.\n");
    QTest::newRow("option-with-one-dash")
        << QStringList{"hosts", "tree", "-json"}
        << QByteArray("zohpc hosts tree: Unknown options: j, s, o, n. Did you mean '--json'?\n"
                      "Try 'zohpc hosts tree --help'.\n");
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

void tst_zohpc::environmentChangesNothing_data()
{
    QTest::addColumn<QString>("variable");

    for (const char* variable :
         {"QT_FATAL_WARNINGS=1", "QT_FATAL_CRITICALS=1", "QT_LOGGING_RULES=*=true",
          "QT_LOGGING_RULES=*=false", "QT_LOGGING_RULES=zo.*=false", "QT_LOGGING_CONF=/dev/full",
          "QT_LOGGING_DEBUG=1", "QT_MESSAGE_PATTERN=%{pid} %{time} x", "QT_LOGGING_TO_CONSOLE=0",
          "QT_ASSUME_STDERR_HAS_CONSOLE=1", "QT_DEBUG_PLUGINS=1",
          // Qt 6 itself says that it takes no other number.
          QT_VERSION_MAJOR == 5 ? "QT_HASH_SEED=17" : "QT_HASH_SEED=0", "QT_PLUGIN_PATH=/nonexistent",
          "QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORM_PLUGIN_PATH=/nonexistent", "QT_QPA_PLATFORMTHEME=gtk3",
          "QT_QPA_FONTDIR=/nonexistent", "QT_SCALE_FACTOR=3", "QT_FONT_DPI=300",
          "QT_AUTO_SCREEN_SCALE_FACTOR=1", "QT_STYLE_OVERRIDE=x", "QT_NO_FONT_FALLBACKS=1", "DISPLAY=:4711",
          "WAYLAND_DISPLAY=x", "LC_ALL=C", "LC_ALL=POSIX", "LC_ALL=de_DE.UTF-8", "LC_ALL=tr_TR.ISO-8859-9",
          "LC_ALL=x", "LC_ALL=", "LANG=C", "LANG=ja_JP.eucJP", "LC_CTYPE=C", "LC_NUMERIC=de_DE.UTF-8",
          "LC_MESSAGES=de_DE.UTF-8", "LANGUAGE=de:fr"})
        QTest::newRow(variable) << variable;
}

// Neither output nor messages nor exit codes.
void tst_zohpc::environmentChangesNothing()
{
    QFETCH(QString, variable);
    const QString name = QString::fromUtf8("gr\xc3\xbcn.zhpc");
    const QByteArray text = QByteArray(
        "<cluster version=\"1\"><master><network><node name=\"gr\xc3\xbcn\"/></network></master>"
        "<projection name=\"W\" type=\"wall\" rows=\"1\" columns=\"1\"/><display><window node=\"x\">"
        "<viewport projection=\"W row:1 col:1\"/></window></display></cluster>");
    QTemporaryDir folder;
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();

    const QList<QStringList> commands{{"hosts", "expand", QString::fromUtf8("gr\xc3\xbcn n1 - n3 m_1")},
                                      {"hosts", "fold", "--names", QString::fromUtf8("gr\xc3\xbcn")},
                                      {"hosts", "expand", "-f", folder.filePath("none")},
                                      {"check", file.fileName()},
                                      {"format", file.fileName()},
                                      {"draw", file.fileName(), "-o", "-"},
                                      {"export", file.fileName(), "--equalizer", "-"},
                                      {"diff", file.fileName(), folder.filePath("none")},
                                      {"frobnicate"},
                                      {"--help"}};
    for (const QStringList& command : commands) {
        const zoCommandRun plain = zoCommandRun::zohpcIn({}, command);
        QVERIFY(plain.exitCode >= 0);
        QCOMPARE(zoCommandRun::zohpcIn({variable}, command).whole(), plain.whole());
    }
    QVERIFY(zoCommandRun::zohpcIn({variable}, commands.at(4)).output.contains("gr\xc3\xbcn"));
}

// The toolkit reads what to log from there.
void tst_zohpc::settingsOfTheUserChangeNothing()
{
    QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("QtProject"));
    QFile file(folder.filePath("QtProject/qtlogging.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Rules]\n*=false\n");
    file.close();
    // A wall so large that the module logs what it leaves out.
    const QByteArray text =
        "<config><key name=\"zoClusterProjectionType\">Powerwall</key><key "
        "name=\"zoClusterPWServers\">a</key>"
        "<key name=\"zoClusterPWRows\">1000000</key><key name=\"zoClusterPWCols\">3</key></config>";

    const zoCommandRun plain = zoCommandRun::zohpcIn({}, {"convert", "-"}, text);
    const zoCommandRun run =
        zoCommandRun::zohpcIn({"XDG_CONFIG_HOME=" + folder.path()}, {"convert", "-"}, text);

    QVERIFY2(plain.errors.contains("zohpc: Legacy wall of"), plain.errors.constData());
    QCOMPARE(run.whole(), plain.whole());
}

void tst_zohpc::closedStreamsAreTold_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("errors");

    const QByteArray output("zohpc: standard output: it is closed\n");
    const QByteArray input("-: standard input is closed\n");
    QTest::newRow("output") << "hosts expand n1 >&-" << output;
    QTest::newRow("output-of-the-other-program") << "new --wall 1x1 --hosts n1 >&-" << output;
    QTest::newRow("input") << "hosts expand <&-" << input;
    QTest::newRow("input-of-the-other-program") << "format - <&-" << input;
    QTest::newRow("input-and-output") << "hosts expand <&- >&-" << input;
    QTest::newRow("errors") << "hosts expand '{' 2>&-" << QByteArray();
    QTest::newRow("all") << "format - <&- >&- 2>&-" << QByteArray();
}

// What was opened next once stood in for them.
void tst_zohpc::closedStreamsAreTold()
{
    QFETCH(QString, command);
    QFETCH(QByteArray, errors);

    const zoCommandRun run = zoCommandRun::program(
        QStringLiteral("/bin/sh"), {QStringLiteral("-c"), "exec \"$0\" " + command, QStringLiteral(ZO_ZOHPC)},
        {}, {QStringLiteral("LC_ALL=C.UTF-8")});

    QCOMPARE(run.whole(), "--- errors\n" + errors + "--- exit code 2\n");
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

    QVERIFY(run.output.contains("libQt" QT_STRINGIFY(QT_VERSION_MAJOR) "Core"));
    QVERIFY(!run.output.contains("libQt" QT_STRINGIFY(QT_VERSION_MAJOR) "Gui"));
    QVERIFY(!run.output.contains("libQt" QT_STRINGIFY(QT_VERSION_MAJOR) "Widgets"));
    QVERIFY(!run.output.contains("libX11"));
}

ZO_TEST_MAIN(tst_zohpc)
#include "tst_zohpc.moc"
