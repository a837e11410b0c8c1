#include "zoTestCase.h"

#include <zoLocalClusterService.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

#include <csignal>
#include <memory>

namespace
{
constexpr int ProcessTimeoutMs = 60000;
constexpr int LargeFileTimeoutMs = 240000;

struct Outcome
{
    int exitCode = -1;
    bool crashed = true;
    QByteArray standardOutput;
    QByteArray standardError;
};

QByteArray goodModule()
{
    return ZO_FIXTURE_DIR "/libzoGoodModule.so";
}

QString documentOf(const QString& nodes)
{
    return QStringLiteral("<cluster version=\"1\"><master><network>%1</network></master></cluster>")
        .arg(nodes);
}

// The figures of the speed test differ from run to run.
QString withoutFigures(const QByteArray& output)
{
    return QString::fromUtf8(output).replace(QRegularExpression(QStringLiteral("[1-9]\\d* (bytes|frames)/s")),
                                             QStringLiteral("N \\1/s"));
}
} // namespace

// The host program as a whole, run as people and scripts run it.
class tst_zohost final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void helpIsPrinted();
    void versionIsPrinted();
    void helpNeedsNoDisplay();
    void wrongOptionExitsWith2();
    void lostOutputExitsWith1_data();
    void lostOutputExitsWith1();

    void scriptedSessionPrintsItsSteps();
    void scriptedSessionWritesAScreenshotOfTheRunningCluster();
    void sessionWithoutConfigurationRunsTheDefault();
    void defaultFileOfThePreferencesIsLoaded();
    void fileOfTheCommandLineWinsOverThePreferences();
    void fileNameOutsideLatin1IsLoaded_data();
    void fileNameOutsideLatin1IsLoaded();
    void fileNameIsTheSameInEveryLocale_data();
    void fileNameIsTheSameInEveryLocale();
    void screenshotOfAnIdleHost();
    void configurationAloneIsLoadedAndTheHostEnds_data();
    void configurationAloneIsLoadedAndTheHostEnds();
    void loginWithoutRuntimeFolderIsNoMatter();
    void screenshotOfALargeFile_data();
    void screenshotOfALargeFile();
    void runningServersAreAcceptedWithoutAsking();
    void missingMemoryIsAcceptedWithoutAsking();

    void failureExitsWith1_data();
    void failureExitsWith1();
    void moduleThatCannotBeLoadedDoesNotStopTheHost();
    void terminationEndsTheSessionInOrder();
    void rehearsalPrintsItsNodesAndWritesPictures();
    void rehearsalOfParaViewLooksAtThisMachine();
    void unreachableNodesAreNamedWithoutAsking();

private:
    std::unique_ptr<QProcess> createProcess(const QStringList& arguments) const;
    Outcome run(const QStringList& arguments) const;
    static Outcome finish(QProcess& process);
    QString writeFile(const QString& name, const QString& text) const;
    void setPreference(const QString& key, const QString& value) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_zohost::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

// Settings, locks and everything else of the process lie in the directory of the test.
std::unique_ptr<QProcess> tst_zohost::createProcess(const QStringList& arguments) const
{
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_CONFIG_HOME", m_directory->path());
    environment.insert("XDG_DATA_HOME", m_directory->path());
    environment.insert("XDG_RUNTIME_DIR", m_directory->path());
    environment.insert("LC_ALL", "C.UTF-8");
    environment.remove("ZOKE_DATA");
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(m_directory->path());
    process->setProgram(QStringLiteral(ZO_HOST_FILE));
    // What the program does itself, unless a test wants more.
    process->setArguments(arguments.contains("--engine") ? arguments
                                                         : QStringList({"--engine", "local"}) + arguments);
    return process;
}

Outcome tst_zohost::run(const QStringList& arguments) const
{
    return finish(*createProcess(arguments));
}

Outcome tst_zohost::finish(QProcess& process)
{
    process.start();
    process.closeWriteChannel();
    Outcome outcome;
    if (!process.waitForFinished(ProcessTimeoutMs)) {
        process.kill();
        process.waitForFinished();
    }
    outcome.crashed = process.exitStatus() != QProcess::NormalExit;
    outcome.exitCode = process.exitCode();
    outcome.standardOutput = process.readAllStandardOutput();
    outcome.standardError = process.readAllStandardError();
    return outcome;
}

QString tst_zohost::writeFile(const QString& name, const QString& text) const
{
    QFile file(m_directory->filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8());
    return file.fileName();
}

void tst_zohost::setPreference(const QString& key, const QString& value) const
{
    QDir(m_directory->path()).mkdir("zo");
    QSettings settings(m_directory->filePath("zo/zohost.conf"), QSettings::IniFormat);
    settings.setValue("Preferences/" + key, value);
}

void tst_zohost::helpIsPrinted()
{
    const Outcome outcome = run({"--help"});

    QVERIFY(!outcome.crashed);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.standardError, QByteArray());
    QVERIFY(outcome.standardOutput.startsWith("Usage: "));
    QVERIFY(outcome.standardOutput.contains("--exit-after-stop"));
}

void tst_zohost::versionIsPrinted()
{
    const Outcome outcome = run({"--version"});

    QVERIFY(!outcome.crashed);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.standardError, QByteArray());
    QCOMPARE(outcome.standardOutput, QByteArray("zohost " ZO_VERSION "\n"));
}

void tst_zohost::helpNeedsNoDisplay()
{
    const auto process = createProcess({"--help"});
    QProcessEnvironment environment = process->processEnvironment();
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.remove("DISPLAY");
    process->setProcessEnvironment(environment);

    process->start();

    QVERIFY(process->waitForFinished(ProcessTimeoutMs));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 0);
}

void tst_zohost::wrongOptionExitsWith2()
{
    const Outcome outcome = run({"--frobnicate"});

    QVERIFY(!outcome.crashed);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.standardOutput, QByteArray());
    QCOMPARE(outcome.standardError,
             QByteArray("zohost: Unknown option 'frobnicate'.\nTry 'zohost --help' for the options.\n"));
}

void tst_zohost::lostOutputExitsWith1_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("error");
    const QString session =
        QStringLiteral(
            "--non-interactive --engine local --start --exit-after-stop --module \"%1\" --config a.zhpc "
            "--screenshot shot.png ")
            .arg(QString::fromUtf8(goodModule()));

    QTest::newRow("help") << "--help > /dev/full"
                          << QByteArray("zohost: standard output: No space left on device\n");
    QTest::newRow("version") << "--version >&-"
                             << QByteArray("zohost: standard output: Bad file descriptor\n");
    QTest::newRow("steps") << session + "> /dev/full"
                           << QByteArray("Unable to write to standard output: No space left on device\n");
    QTest::newRow("steps-closed") << session + ">&-"
                                  << QByteArray("Unable to write to standard output: it is closed\n");
}

// Told once, and the session goes on to its end.
void tst_zohost::lostOutputExitsWith1()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, error);
    writeFile("a.zhpc", documentOf("<node/>"));
    const auto process = createProcess({});
    process->setProgram(QStringLiteral("/bin/sh"));
    process->setArguments({"-c", "exec \"$0\" " + arguments, QStringLiteral(ZO_HOST_FILE)});

    const Outcome outcome = finish(*process);

    QVERIFY(!outcome.crashed);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.standardError.count(error) == 1, outcome.standardError.constData());
    QCOMPARE(QFile::exists(m_directory->filePath("shot.png")), arguments.contains("shot.png"));
}

void tst_zohost::scriptedSessionPrintsItsSteps()
{
    const QString file =
        writeFile("a.zhpc", documentOf("<node name=\"n1\"/><node name=\"n1\"/><node enabled=\"false\"/>"));

    const Outcome outcome = run({"--module", goodModule(), "--config", file, "--start", "--non-interactive",
                                 "--exit-after-stop", "--screenshot", "shot.png"});

    QVERIFY(!outcome.crashed);
    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QCOMPARE(withoutFigures(outcome.standardOutput),
             QStringLiteral("configuration: %1\n"
                            "nodes: n1, n1_2\n"
                            "progress: 0% Connecting to n1 ...\n"
                            "progress: 50% Connecting to n1_2 ...\n"
                            "progress: 100% Connected\n"
                            "running: n1, n1_2\n"
                            "session: rehearsal of 2 nodes on this machine\n"
                            "speed test: sent N bytes/s, received N bytes/s, synchronised N frames/s\n"
                            "screenshot: shot.png\n"
                            "stopped\n")
                 .arg(file));
    QCOMPARE(outcome.standardError,
             QByteArray("zo: Module " + goodModule() + " loaded\nzo: window loads " + file.toUtf8() +
                        "\nzo: Configuration " + file.toUtf8() +
                        " loaded\nzo: Cluster runs on n1, n1_2\nzo: Session: rehearsal of 2 nodes on this "
                        "machine\nzo: module heard started\nzo: Cluster stopped\n"
                        "zo: forgotten dialog destroyed\nzo: module object destroyed, window gone\n"));
}

void tst_zohost::scriptedSessionWritesAScreenshotOfTheRunningCluster()
{
    const QString file = writeFile("a.zhpc", documentOf("<node name=\"n1\"/>"));

    const Outcome outcome = run({"--module", goodModule(), "--config", file, "--start", "--non-interactive",
                                 "--exit-after-stop", "--screenshot", m_directory->filePath("shot.png")});

    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.standardOutput.indexOf("running:") < outcome.standardOutput.indexOf("screenshot:"));
    QVERIFY(outcome.standardOutput.indexOf("screenshot:") < outcome.standardOutput.indexOf("stopped"));
    const QImage image(m_directory->filePath("shot.png"), "PNG");
    QVERIFY(image.width() >= 800);
    QVERIFY(image.height() >= 600);
    // Something is drawn on it.
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 4)
        for (int x = 0; x < image.width(); x += 4)
            colours.insert(image.pixel(x, y));
    QVERIFY(colours.size() > 10);
}

void tst_zohost::sessionWithoutConfigurationRunsTheDefault()
{
    const Outcome outcome =
        run({"--module", goodModule(), "--start", "--non-interactive", "--exit-after-stop"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QVERIFY(outcome.standardOutput.startsWith("configuration: default\nnodes: localhost\n"));
    QVERIFY(outcome.standardOutput.contains("running: localhost\n"));
}

void tst_zohost::defaultFileOfThePreferencesIsLoaded()
{
    const auto process =
        createProcess({"--module", goodModule(), "--start", "--non-interactive", "--exit-after-stop"});
    QVERIFY(QDir(m_directory->path()).mkpath("data/cluster"));
    writeFile("data/cluster/mine.zhpc", documentOf("<node name=\"mine\"/>"));
    setPreference("HPC Cluster default file", "$ZOKE_DATA/cluster/mine.zhpc");
    QProcessEnvironment environment = process->processEnvironment();
    environment.insert("ZOKE_DATA", m_directory->filePath("data"));
    process->setProcessEnvironment(environment);

    process->start();

    QVERIFY(process->waitForFinished(ProcessTimeoutMs));
    const QByteArray output = process->readAllStandardOutput();
    QVERIFY2(output.startsWith("configuration: " + m_directory->filePath("data/cluster/mine.zhpc").toUtf8() +
                               "\n"),
             output.constData());
    QVERIFY2(output.contains("running: mine\n"), output.constData());
    QCOMPARE(process->exitCode(), 0);
}

void tst_zohost::fileOfTheCommandLineWinsOverThePreferences()
{
    const QString mine = writeFile("mine.zhpc", documentOf("<node name=\"mine\"/>"));
    setPreference("HPC Cluster default file", "/nowhere/default.zhpc");

    const Outcome outcome = run(
        {"--module", goodModule(), "--config", mine, "--start", "--non-interactive", "--exit-after-stop"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QVERIFY(outcome.standardOutput.contains("running: mine\n"));
}

void tst_zohost::fileNameOutsideLatin1IsLoaded_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("blank") << "my wall.zhpc";
    QTest::newRow("latin-1") << QString::fromUtf8("W\xc3\xa4nde.zhpc");
    QTest::newRow("greek") << QString::fromUtf8("\xcf\x84\xce\xb5\xce\xaf\xcf\x87\xce\xbf\xcf\x82.zhpc");
    QTest::newRow("outside-the-basic-plane") << QString::fromUtf8("\xf0\x9f\x96\xa5.zhpc");
    QTest::newRow("placeholder") << "100%1.zhpc";
}

void tst_zohost::fileNameOutsideLatin1IsLoaded()
{
    QFETCH(QString, name);
    writeFile(name, documentOf("<node name=\"mine\"/>"));

    const Outcome outcome = run(
        {"--module", goodModule(), "--config", name, "--start", "--non-interactive", "--exit-after-stop"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QVERIFY(outcome.standardOutput.startsWith("configuration: " + name.toUtf8() + "\n"));
    QVERIFY(outcome.standardError.contains("window loads " + m_directory->filePath(name).toUtf8() + "\n"));
    QVERIFY(outcome.standardOutput.contains("running: mine\n"));
}

void tst_zohost::fileNameIsTheSameInEveryLocale_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");

    QTest::newRow("C") << "LC_ALL"
                       << "C";
    QTest::newRow("POSIX") << "LC_ALL"
                           << "POSIX";
    QTest::newRow("C-for-characters") << "LC_CTYPE"
                                      << "C";
    QTest::newRow("one-that-is-not-there") << "LC_CTYPE"
                                           << "xx_XX.UTF-8";
    QTest::newRow("latin-1") << "LC_CTYPE"
                             << "en_US.ISO-8859-1";
}

// Logins from elsewhere bring any locale, or none.
void tst_zohost::fileNameIsTheSameInEveryLocale()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    const QString latin1 = QStringLiteral("en_US.ISO-8859-1");
    if (value == latin1 && QProcess::execute("localedef", {"-i", "en_US", "-f", "ISO-8859-1",
                                                           m_directory->filePath(latin1)}) != 0)
        QSKIP("no locale can be made here");
    const QString name = writeFile(QString::fromUtf8("W\xc3\xa4nde \xf0\x9f\x96\xa5.zhpc"),
                                   documentOf("<node name=\"mine\"/>"));
    const QStringList arguments{"--module", goodModule(),        "--config",         name,
                                "--start",  "--non-interactive", "--exit-after-stop"};
    const Outcome usual = run(arguments);
    const auto process = createProcess(arguments);
    QProcessEnvironment environment = process->processEnvironment();
    for (const char* other : {"LC_ALL", "LC_CTYPE", "LANG", "LANGUAGE"})
        environment.remove(other);
    environment.insert("LOCPATH", m_directory->path());
    environment.insert(variable, value);
    process->setProcessEnvironment(environment);

    const Outcome outcome = finish(*process);

    QCOMPARE(outcome.exitCode, 0);
    QVERIFY(outcome.standardOutput.startsWith("configuration: " + name.toUtf8() + "\n"));
    QCOMPARE(withoutFigures(outcome.standardOutput), withoutFigures(usual.standardOutput));
    QCOMPARE(outcome.standardError, usual.standardError);
}

void tst_zohost::screenshotOfAnIdleHost()
{
    const auto process = createProcess(
        {"--module", goodModule(), "--non-interactive", "--screenshot", m_directory->filePath("idle.png")});
    process->start();

    // By itself: once it waited for somebody to end it.
    QVERIFY(process->waitForFinished(ProcessTimeoutMs));

    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 0);
    QVERIFY(process->readAllStandardOutput().contains("screenshot: "));
    QVERIFY(!QImage(m_directory->filePath("idle.png"), "PNG").isNull());
}

// Nothing else was asked for, and nobody is there to ask: once it waited for somebody to end it.
void tst_zohost::configurationAloneIsLoadedAndTheHostEnds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("exitCode");

    QTest::newRow("whole") << QByteArray(
                                  "<cluster version=\"1\"><master><node name=\"a\"/></master></cluster>")
                           << 0;
    QTest::newRow("cut") << QByteArray("<cluster version=\"1\"><master>") << 1;
}

void tst_zohost::configurationAloneIsLoadedAndTheHostEnds()
{
    QFETCH(QByteArray, text);
    QFETCH(int, exitCode);
    QFile file(m_directory->filePath("alone.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    file.close();
    const auto process = createProcess({"--module", goodModule(), "--non-interactive", file.fileName()});

    process->start();
    QVERIFY(process->waitForFinished(ProcessTimeoutMs));

    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), exitCode);
    QCOMPARE(process->readAllStandardOutput().contains("nodes: a\n"), exitCode == 0);
}

void tst_zohost::loginWithoutRuntimeFolderIsNoMatter()
{
    const auto process = createProcess({"--non-interactive", "--screenshot", "picture.png"});
    QProcessEnvironment environment = process->processEnvironment();
    environment.remove("XDG_RUNTIME_DIR");
    process->setProcessEnvironment(environment);

    process->start();
    QVERIFY(process->waitForFinished(ProcessTimeoutMs));

    QCOMPARE(process->exitCode(), 0);
    const QByteArray told = process->readAllStandardError();
    QVERIFY2(!told.contains("XDG_RUNTIME_DIR"), told.constData());
}

void tst_zohost::screenshotOfALargeFile_data()
{
    QTest::addColumn<QString>("document");

    const auto times = [](int count, const QString& text) {
        QString result;
        for (int i = 0; i < count; ++i)
            result += QString(text).replace(QLatin1Char('#'), QString::number(i));
        return result;
    };
    QTest::newRow("nodes-of-one-name") << documentOf(times(149000, QStringLiteral("<node/>")));
    QTest::newRow("windows")
        << documentOf(times(5000, QStringLiteral("<node name='n#'/>")))
               .replace(
                   QStringLiteral("</cluster>"),
                   times(5000, QStringLiteral("<projection name='P#' type='plane' x1='#0' x2='#9' x3='#9'"
                                              " y3='9'/>")) +
                       QStringLiteral("<display>") +
                       times(5000, QStringLiteral("<window node='n#' width='9' height='9'>"
                                                  "<viewport projection='P#'/></window>")) +
                       QStringLiteral("</display></cluster>"));
}

// What grows with the square of such a file does not end within a test run.
void tst_zohost::screenshotOfALargeFile()
{
    QFETCH(QString, document);
    QVERIFY(document.contains(QLatin1String("<node")));
    const QString picture = m_directory->filePath(QStringLiteral("large.png"));
    const auto process =
        createProcess({"--module", ZO_MODULE_FILE, "--non-interactive", "--config",
                       writeFile(QStringLiteral("large.zhpc"), document), "--screenshot", picture});
    process->start();

    QVERIFY(process->waitForFinished(LargeFileTimeoutMs));

    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 0);
    QVERIFY(!QImage(picture, "PNG").isNull());
}

void tst_zohost::runningServersAreAcceptedWithoutAsking()
{
    zoLocalClusterService other;
    other.setLockDirectory(m_directory->path());
    other.setMemoryPerNode(0);
    other.applyConfig(documentOf("<node name=\"n1\"/>"));
    QVERIFY(other.start());
    const QString file = writeFile("a.zhpc", documentOf("<node name=\"n1\"/>"));

    const Outcome outcome = run(
        {"--module", goodModule(), "--config", file, "--start", "--non-interactive", "--exit-after-stop"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QVERIFY(outcome.standardOutput.contains("running: n1\n"));
}

void tst_zohost::missingMemoryIsAcceptedWithoutAsking()
{
    setPreference("Local cluster memory per node", "1048576");
    const QString file = writeFile("a.zhpc", documentOf("<node name=\"n1\"/>"));

    const Outcome outcome = run(
        {"--module", goodModule(), "--config", file, "--start", "--non-interactive", "--exit-after-stop"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QVERIFY(outcome.standardOutput.contains("running: n1\n"));
}

void tst_zohost::failureExitsWith1_data()
{
    QTest::addColumn<QString>("config");
    QTest::addColumn<QStringList>("more");
    QTest::addColumn<QString>("message");

    const QStringList good({"--module", goodModule()});
    QTest::newRow("missing-file") << "" << good << "Unable to load configuration .*a.zhpc: No such file";
    QTest::newRow("malformed-file") << "<cluster>\n<master>" << good
                                    << "Configuration .*a.zhpc cannot be used: line 2, column ";
    QTest::newRow("foreign-file")
        << "<svg width=\"1\"/>" << QStringList()
        << "Configuration .*a.zhpc cannot be used: it has none of the elements of a cluster configuration";
    QTest::newRow("no-enabled-node") << documentOf("") << good
                                     << "has no enabled node\n.*The cluster did not start";
    QTest::newRow("screenshot-not-writable")
        << documentOf("<node/>") << good + QStringList({"--screenshot", "/nowhere/shot.png"})
        << "Unable to write screenshot /nowhere/shot.png: ";
    QTest::newRow("screenshot-over-the-configuration")
        << documentOf("<node/>") << good + QStringList({"--screenshot", "./a.zhpc"})
        << "Unable to write screenshot ./a.zhpc: it is the configuration\n";
    QTest::newRow("no-module")
        << documentOf("<node/>") << QStringList({"--module", "none.so"})
        << "Unable to load module .*none.so: There is no such file\n.*no loaded module opens configurations";
}

void tst_zohost::failureExitsWith1()
{
    QFETCH(QString, config);
    QFETCH(QStringList, more);
    QFETCH(QString, message);
    if (!config.isEmpty())
        writeFile("a.zhpc", config);

    const Outcome outcome =
        run(more + QStringList({"--config", "a.zhpc", "--start", "--non-interactive", "--exit-after-stop"}));

    QVERIFY(!outcome.crashed);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(QRegularExpression(message).match(QString::fromUtf8(outcome.standardError)).hasMatch(),
             outcome.standardError.constData());
}

void tst_zohost::moduleThatCannotBeLoadedDoesNotStopTheHost()
{
    const QString text = writeFile("text.so", "no library");
    const QString file = writeFile("a.zhpc", documentOf("<node name=\"n1\"/>"));

    const Outcome outcome =
        run({"--module", text, "--module", ZO_FIXTURE_DIR "/libzoThrowingModule.so", "--module", goodModule(),
             "--config", file, "--start", "--non-interactive", "--exit-after-stop"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    QVERIFY(outcome.standardError.contains("Unable to load module " + text.toUtf8() + ": "));
    QVERIFY(outcome.standardError.contains("the licence ran out"));
    QVERIFY(outcome.standardOutput.contains("running: n1\n"));
}

void tst_zohost::terminationEndsTheSessionInOrder()
{
    const QString file = writeFile("a.zhpc", documentOf("<node name=\"n1\"/>"));
    const auto process =
        createProcess({"--module", goodModule(), "--config", file, "--start", "--non-interactive"});
    process->start();
    QByteArray output;
    QTRY_VERIFY_WITH_TIMEOUT((output += process->readAllStandardOutput()).contains("running: n1"),
                             ProcessTimeoutMs);

    ::kill(pid_t(process->processId()), SIGINT);

    QVERIFY(process->waitForFinished(ProcessTimeoutMs));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 0);
    const QByteArray log = process->readAllStandardError();
    QVERIFY2(log.endsWith("zo: Cluster stopped\nzo: forgotten dialog destroyed\n"
                          "zo: module object destroyed, window gone\n"),
             log.constData());
}

void tst_zohost::rehearsalPrintsItsNodesAndWritesPictures()
{
    const Outcome outcome = run({"--module", ZO_MODULE_FILE, "--engine", "nodes", "--rehearse", "--config",
                                 ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc", "--start", "--non-interactive",
                                 "--exit-after-stop", "--show", "tiles", "--wall-picture", "wall.png",
                                 "--node-pictures", "nodes", "--screenshot", "shot.png"});

    QVERIFY2(outcome.exitCode == 0, outcome.standardError.constData());
    const QStringList lines = withoutFigures(outcome.standardOutput).split('\n');
    const QStringList ids({"wall-r1-c1", "wall-r1-c2", "wall-r2-c1", "wall-r2-c2"});
    for (const QString& id : ids) {
        QVERIFY2(lines.contains("node: " + id + " running"), outcome.standardOutput.constData());
        QVERIFY(!QImage(m_directory->filePath("nodes/" + id + "-1.png")).isNull());
    }
    const int running = lines.indexOf("running: " + ids.join(", "));
    QVERIFY(running > 0);
    QCOMPARE(lines.mid(running + 1),
             QStringList({"session: rehearsal of 4 nodes on this machine",
                          "speed test: sent N bytes/s, received N bytes/s, synchronised N frames/s",
                          "wall picture: wall.png", "node pictures: 4 in nodes", "screenshot: shot.png",
                          "stopped", ""}));
    QVERIFY(!QImage(m_directory->filePath("wall.png")).isNull());
}

// Nobody is called: it is the display here that each node lacks.
void tst_zohost::rehearsalOfParaViewLooksAtThisMachine()
{
    setPreference("ParaView server program", QStringLiteral(ZO_FAKE_PVSERVER));
    const auto process =
        createProcess({"--module", ZO_MODULE_FILE, "--engine", "paraview", "--rehearse", "--config",
                       ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc", "--start", "--non-interactive"});
    QProcessEnvironment environment = process->processEnvironment();
    environment.insert("DISPLAY", ":987654"); // nothing is there
    process->setProcessEnvironment(environment);

    const Outcome outcome = finish(*process);

    QCOMPARE(outcome.exitCode, 1);
    for (const char* id : {"wall-r1-c1", "wall-r1-c2", "wall-r2-c1", "wall-r2-c2"}) {
        const QByteArray text = QByteArray("node: ") + id + " failed: its display :987654 cannot be opened: ";
        QVERIFY2(outcome.standardOutput.contains(text), outcome.standardOutput.constData());
    }
}

void tst_zohost::unreachableNodesAreNamedWithoutAsking()
{
    setPreference("Cluster launch command", "/bin/false %h %program");
    const QString file = writeFile("a.zhpc", documentOf("<node name=\"n1\"/>"));

    const Outcome outcome = run({"--module", goodModule(), "--engine", "nodes", "--config", file, "--start",
                                 "--non-interactive", "--exit-after-stop"});

    QVERIFY(!outcome.crashed);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.standardOutput.contains("node: n1 failed: its server ended: exit status 1\n"),
             outcome.standardOutput.constData());
}

ZO_TEST_MAIN(tst_zohost)
#include "tst_zohost.moc"
