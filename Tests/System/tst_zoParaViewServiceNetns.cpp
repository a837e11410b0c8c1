#include "zoNetns.h"
#include "zoTestCase.h"
#include "zoVirtualDisplay.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>

// Sessions of the real server of ParaView on machines of their own: n1 has two screens, n2 has one.
class tst_zoParaViewServiceNetns final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void clientDrawsOnEachScreen();
    void killedRankIsNamed();
    void cutMachineIsNamed();
    void killedHostLeavesNothing();
    void machineWithoutADisplayIsNamed();

private:
    void start(const QStringList& nodes = {"n1", "n1", "n2"});
    // Waits until the session stands.
    void run();
    void draw(QProcess& client, const QString& script);
    QString sessionFolder() const; // as the processes of mpirun name it
    // Of all machines, and the folders of sessions there.
    static QByteArray leftovers();

    QTemporaryDir m_folder;
    std::unique_ptr<zoVirtualDisplay> m_display; // that the client cannot be without
    std::unique_ptr<QProcess> m_host;
    QByteArray m_said;
};

namespace
{
constexpr int s_limitMs = 120000;

// Starts a display server of the user on a machine and waits for it.
QByteArray startDisplay(const char* machine, const char* screens)
{
    return zoNetns::run(
        QLatin1String(machine),
        QStringLiteral("mkdir -m 1777 /tmp/.X11-unix; setsid setpriv --reuid 54321 --regid 54321 "
                       "--clear-groups Xvfb :0 %1 -nolisten tcp -noreset >/dev/null 2>&1 & "
                       "i=0; until xwininfo -display :0 -root >/dev/null 2>&1; do "
                       "i=$((i+1)); [ $i -lt 300 ]; sleep 0.1; done")
            .arg(QLatin1String(screens)));
}

// Connects and draws, says so, and stays until it is ended.
const char* const s_client = R"(import os, sys, time
from paraview.simple import *
Connect("n1", int(sys.argv[1]))
view = CreateRenderView()
layout = CreateLayout()
AssignViewToLayout(view=view, layout=layout)
view.Background = [0.0, 0.0, 1.0]
view.UseColorPaletteForBackground = 0
Show(Sphere(), view)
Render(view)
Render(view)
os.write(1, b"drawn\n") # at once, which print is not
time.sleep(600)
)";
} // namespace

void tst_zoParaViewServiceNetns::initTestCase()
{
    for (const char* program : {"pvserver", "pvpython", "mpirun", "Xvfb", "xwininfo"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            QSKIP(qPrintable(QStringLiteral("%1 is not installed").arg(QLatin1String(program))));
    }
    QCOMPARE(startDisplay("n1", "-screen 0 800x600x24 -screen 1 640x480x24"), QByteArray());
    QCOMPARE(startDisplay("n2", "-screen 0 500x400x24"), QByteArray());
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
}

void tst_zoParaViewServiceNetns::init()
{
    m_display = std::make_unique<zoVirtualDisplay>(QStringList("640x480"));
    QVERIFY2(m_display->isRunning(), qPrintable(m_display->reason()));
    qputenv("DISPLAY", m_display->name().toLatin1());
    m_said.clear();
    m_host = std::make_unique<QProcess>();
}

// Also after a test that failed in the middle.
void tst_zoParaViewServiceNetns::cleanup()
{
    zoNetns::order(QStringLiteral("join n2"));
    if (m_host && m_host->state() != QProcess::NotRunning) {
        m_host->terminate();
        QVERIFY(m_host->waitForFinished(s_limitMs));
    }
    m_host.reset();
    m_display.reset();
    QTRY_COMPARE_WITH_TIMEOUT(leftovers(), QByteArray("Xvfb Xvfb"), s_limitMs);
    zoTestCase::cleanup();
}

// The run-time folder of the user stays, as a login would make it, and is empty.
QByteArray tst_zoParaViewServiceNetns::leftovers()
{
    QByteArray all;
    for (const char* machine : {"n1", "n2", "n3"})
        all += zoNetns::programs(QLatin1String(machine)) + ' ' +
               zoNetns::run(QLatin1String(machine),
                            QStringLiteral("ls -d /tmp/zo-[!0-9]* /tmp/ompi* /dev/shm/vader* 2>/dev/null; "
                                           "ls -A /tmp/zo-54321 2>/dev/null || true")) +
               ' ';
    all += zoNetns::run(QStringLiteral("host"),
                        QStringLiteral("ls -d /tmp/zo-paraview* /tmp/ompi* 2>/dev/null || true"));
    return all.simplified();
}

void tst_zoParaViewServiceNetns::start(const QStringList& nodes)
{
    QStringList windows;
    QString network;
    QHash<QString, int> screens;
    for (const QString& node : nodes) {
        if (!screens.contains(node))
            network += QStringLiteral("<node name=\"%1\"/>").arg(node);
        windows << QStringLiteral("<window node=\"%1\" screen=\"%2\" x=\"10\" y=\"20\" width=\"320\" "
                                  "height=\"%3\"><viewport projection=\"Wall row:1 col:%4\" "
                                  "position=\"fill\"/></window>")
                       .arg(node, QString::number(screens[node]++), QString::number(200 + windows.size()),
                            QString::number(windows.size() + 1));
    }
    QFile file(m_folder.filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("<cluster version=\"1\"><master><network>%1</network></master><projection "
                              "name=\"Wall\" type=\"powerwall\" rows=\"1\" columns=\"%2\" width=\"3000\" "
                              "height=\"1000\" distance=\"2000\"/><display>%3</display></cluster>")
                   .arg(network, QString::number(windows.size()), windows.join(QString()))
                   .toUtf8());
    file.close();
    m_host->setProcessChannelMode(QProcess::MergedChannels);
    connect(m_host.get(), &QProcess::readyRead, this, [this] { m_said += m_host->readAll(); });
    m_host->start(QStringLiteral(ZO_HOST_FILE),
                  {"--engine", "paraview", "--non-interactive", "--start", "--config", file.fileName()});
    QVERIFY(m_host->waitForStarted());
}

void tst_zoParaViewServiceNetns::run()
{
    start();
    QTRY_VERIFY2_WITH_TIMEOUT(m_said.contains("\nconnect: cs://n1:") ||
                                  m_host->state() == QProcess::NotRunning,
                              m_said.constData(), s_limitMs);
    QVERIFY2(m_said.contains("session: ParaView on 2 nodes\n"), m_said.constData());
    for (const char* node : {"n1", "n2"})
        QVERIFY2(m_said.contains(QByteArray("node: ") + node + " running\n"), m_said.constData());
}

void tst_zoParaViewServiceNetns::draw(QProcess& client, const QString& script)
{
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("connect: cs://n1:(\\d+) --connect-id=(\\d+)"))
            .match(QString::fromUtf8(m_said));
    QVERIFY2(match.hasMatch(), m_said.constData());
    QFile file(script);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(s_client);
    file.close();
    client.setProcessChannelMode(QProcess::MergedChannels);
    // What MPI of a client that is killed leaves there goes with this test.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", m_folder.path());
    client.setProcessEnvironment(environment);
    client.start("pvpython", {"--force-offscreen-rendering", "--connect-id=" + match.captured(2), script,
                              match.captured(1)});
    QByteArray said;
    const auto hasDrawn = [&] {
        said += client.readAll();
        return said.contains("drawn") || client.state() == QProcess::NotRunning;
    };
    QTRY_VERIFY_WITH_TIMEOUT(hasDrawn(), s_limitMs);
    QVERIFY2(said.contains("drawn"), said.constData());
}

QString tst_zoParaViewServiceNetns::sessionFolder() const
{
    const QByteArray found = zoNetns::run(QStringLiteral("host"), QStringLiteral("ls -d /tmp/zo-paraview-*"));
    return QString::fromUtf8(found);
}

// Each window is on its screen, as the display servers say, and shows what the client draws.
void tst_zoParaViewServiceNetns::clientDrawsOnEachScreen()
{
    run();
    const QString folder = sessionFolder();
    QVERIFY2(folder.startsWith("/tmp/zo-paraview-") && !folder.contains(' '), qPrintable(folder));
    for (const char* machine : {"n1", "n2"})
        QCOMPARE(zoNetns::run(QLatin1String(machine),
                              QStringLiteral("stat -c '%a %u' %1 %1/wall.pvx").arg(folder)),
                 QByteArray("700 54321 600 54321"));
    QProcess client;
    draw(client, m_folder.filePath("client.py"));

    struct Screen
    {
        const char* machine;
        const char* display;
        const char* geometry;
        int height;
    };
    for (const Screen& screen :
         {Screen{"n1", ":0.0", "320x200\\+10\\+20", 200}, Screen{"n1", ":0.1", "320x201\\+10\\+20", 201},
          Screen{"n2", ":0.0", "320x202\\+10\\+20", 202}}) {
        const QString tree = zoNetns::run(
            QLatin1String(screen.machine),
            QStringLiteral("xwininfo -display %1 -root -tree").arg(QLatin1String(screen.display)));
        QVERIFY2(tree.contains(QRegularExpression(QLatin1String(screen.geometry))), qPrintable(tree));
        QCOMPARE(tree.count(QRegularExpression(QStringLiteral("\\b320x20\\d\\+10\\+20"))), 1);
        // In the home, which all machines share.
        const QString picture =
            QStringLiteral("%1/%2%3.png").arg(qEnvironmentVariable("HOME"), screen.machine, screen.display);
        QCOMPARE(
            zoNetns::run(QLatin1String(screen.machine),
                         QStringLiteral("DISPLAY=%1 QT_QPA_PLATFORM=xcb %2 %3 2>/dev/null && chmod 644 %3")
                             .arg(QLatin1String(screen.display), QStringLiteral(ZO_SCREEN_GRAB), picture)),
            QByteArray());
        const QImage image(picture);
        QVERIFY2(!image.isNull(), qPrintable(picture));
        QCOMPARE(image.pixelColor(12, 22), QColor(0, 0, 255));
        QCOMPARE(image.pixelColor(10 + 318, 20 + screen.height - 2), QColor(0, 0, 255));
        QVERIFY(image.pixelColor(8, 18) != QColor(0, 0, 255));
    }
    client.kill();
    client.waitForFinished();
    m_host->terminate();
    QVERIFY(m_host->waitForFinished(s_limitMs));
    QCOMPARE(m_host->exitCode(), 0);
}

void tst_zoParaViewServiceNetns::killedRankIsNamed()
{
    run();
    QVERIFY(!zoNetns::run(QStringLiteral("n2"), QStringLiteral("pkill -KILL -u 54321 pvserver"))
                 .startsWith("failed"));

    QTRY_VERIFY2_WITH_TIMEOUT(m_said.contains("node: n2 lost: "), m_said.constData(), s_limitMs);
    QVERIFY2(!m_said.contains("node: n1 lost: "), m_said.constData());
}

void tst_zoParaViewServiceNetns::cutMachineIsNamed()
{
    run();
    QCOMPARE(zoNetns::order(QStringLiteral("cut n2")), QByteArray("done"));

    QTRY_VERIFY2_WITH_TIMEOUT(m_said.contains("node: n2 lost: "), m_said.constData(), s_limitMs);
    QVERIFY2(!m_said.contains("node: n1 lost: "), m_said.constData());
    // Nobody draws behind the cable.
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n2")), QByteArray("Xvfb"), s_limitMs);
}

void tst_zoParaViewServiceNetns::killedHostLeavesNothing()
{
    run();
    QVERIFY(zoNetns::programs(QStringLiteral("n2")).contains("pvserver"));
    ::kill(pid_t(m_host->processId()), SIGKILL);
    QVERIFY(m_host->waitForFinished(s_limitMs));
}

void tst_zoParaViewServiceNetns::machineWithoutADisplayIsNamed()
{
    start({"n1", "n3"});
    QVERIFY(m_host->waitForFinished(s_limitMs));

    m_said += m_host->readAll();
    QCOMPARE(m_host->exitCode(), 1);
    QVERIFY2(m_said.contains("node: n3 failed: its display :0 cannot be opened"), m_said.constData());
    QVERIFY2(!m_said.contains("node: n1 failed"), m_said.constData());
}

ZO_TEST_MAIN(tst_zoParaViewServiceNetns)
#include "tst_zoParaViewServiceNetns.moc"
