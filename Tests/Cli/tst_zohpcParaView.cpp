#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDomDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

#include <memory>

namespace
{
// Connects to the server, shows something, and prints the windows that are there then.
const char* const s_client = R"(import subprocess, sys
from paraview.simple import *
Connect("localhost", int(sys.argv[1]))
view = CreateRenderView()
Show(Sphere(), view)
Render(view)
print(subprocess.run(["xwininfo", "-root", "-tree"], capture_output=True, text=True).stdout)
Disconnect()
)";

// A process that ends with its owner.
class Program final
{
public:
    Program(const QString& program, const QStringList& arguments, const QStringList& environment)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setEnvironment(environment);
        m_process.start(program, arguments);
    }
    ~Program()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(10000))
            m_process.kill();
        m_process.waitForFinished();
    }
    // Waits for a line of the program; false when it ends or takes too long.
    bool waitFor(const QRegularExpression& line)
    {
        while (!QString::fromUtf8(m_text).contains(line)) {
            if (!m_process.waitForReadyRead(60000))
                return false;
            m_text += m_process.readAll();
        }
        return true;
    }
    bool waitForEnd() { return m_process.waitForFinished(120000); }
    QByteArray text()
    {
        m_text += m_process.readAll();
        return m_text;
    }

private:
    QProcess m_process;
    QByteArray m_text;
};
} // namespace

// The real pvserver reads the files of "zohpc export --paraview": each rank opens its window where the file
// says.
class tst_zohpcParaView final : public zoTestCase
{
    Q_OBJECT

private slots:
    void eachRankHasTheWindowOfItsMachine_data();
    void eachRankHasTheWindowOfItsMachine();

private:
    zoCliFiles m_files;
};

void tst_zohpcParaView::eachRankHasTheWindowOfItsMachine_data()
{
    QTest::addColumn<QByteArray>("text");

    const QByteArray wall = zoCommandRun::zohpc({"new", "--wall", "2x1", "--tile", "400x300", "--overlap",
                                                 "20", "--size", "1600x600", "--hosts", "a b"})
                                .output;
    QTest::newRow("wall") << QByteArray(wall).replace("x=\"0\" y=\"0\"", "x=\"120\" y=\"60\"");
    QTest::newRow("left-of-and-above-the-desktop")
        << QByteArray(wall).replace("x=\"0\" y=\"0\"", "x=\"-50\" y=\"-40\"");
    QTest::newRow("cave") << zoCommandRun::zohpc({"new", "--cave", "3000x2400x3000", "--tile", "320x240",
                                                  "--walls", "left,right,bottom,front", "--hosts", "c1 - c4"})
                                 .output;
    QTest::newRow("two-viewports-in-a-window") << QByteArray(
        R"(<cluster version="1"><master><network><node name="a"/></network></master>
           <projection name="P" type="powerwall" rows="1" columns="2" width="2000" height="1000" distance="1500"/>
           <display eyeseparation="65"><window node="a" screen="0" x="50" y="40" width="600" height="200">
             <viewport projection="P row:1 col:1" position="left"/><viewport projection="P row:1 col:2" position="right"/>
           </window></display></cluster>)");
}

void tst_zohpcParaView::eachRankHasTheWindowOfItsMachine()
{
    for (const char* program : {"pvserver", "pvpython", "mpirun", "Xvfb", "xwininfo"})
        QVERIFY2(!QStandardPaths::findExecutable(QLatin1String(program)).isEmpty(), program);
    QFETCH(QByteArray, text);
    const QString pvx = m_files.path("wall.pvx");
    QCOMPARE(zoCommandRun::zohpc({"export", "--paraview", pvx}, text).exitCode, 0);
    QDomDocument document;
    QVERIFY(document.setContent(zoCliFiles::read(pvx)));
    const QDomNodeList machines = document.elementsByTagName(QStringLiteral("Machine"));
    QVERIFY(machines.count() > 0);

    // The server writes the number of a free display when it is ready.
    QStringList environment{"PATH=" + qEnvironmentVariable("PATH"),
                            "HOME=" + m_files.path("."),
                            "LC_ALL=C.UTF-8",
                            "LIBGL_ALWAYS_SOFTWARE=1",
                            "OMPI_ALLOW_RUN_AS_ROOT=1",
                            "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1"};
    Program display(QStringLiteral("Xvfb"),
                    {"-displayfd", "1", "-screen", "0", "2000x1200x24", "-nolisten", "tcp"}, environment);
    static const QRegularExpression number(QStringLiteral("^(\\d+)\\s*$"),
                                           QRegularExpression::MultilineOption);
    QVERIFY2(display.waitFor(number), display.text().constData());
    environment << "DISPLAY=:" + number.match(QString::fromUtf8(display.text())).captured(1);
    const QString port = QString::number(20000 + QCoreApplication::applicationPid() % 20000);
    Program server(QStringLiteral("mpirun"),
                   {"--oversubscribe", "-np", QString::number(machines.count()), "pvserver",
                    "--server-port=" + port, "--force-onscreen-rendering", "--pvx", pvx},
                   environment);
    QVERIFY2(server.waitFor(QRegularExpression(QStringLiteral("Accepting connection"))),
             server.text().constData());
    Program client(QStringLiteral("pvpython"), {m_files.write("client.py", s_client), port}, environment);
    QVERIFY2(client.waitForEnd(), client.text().constData());

    const QString windows = QString::fromUtf8(client.text());
    for (int rank = 0; rank < machines.count(); ++rank) {
        // "ParaView Server #0": ("vtk" "Vtk")  400x300+120+60  +120+60
        const QRegularExpression line(
            QStringLiteral("\"ParaView Server #%1\".*?\\s(\\d+x\\d+\\+-?\\d+\\+-?\\d+)\\s").arg(rank));
        const QString geometry = line.match(windows).captured(1);
        QVERIFY2(geometry == machines.at(rank).toElement().attribute(QStringLiteral("Geometry")),
                 (windows.toUtf8() + server.text()).constData());
    }
}

ZO_TEST_MAIN(tst_zohpcParaView)
#include "tst_zohpcParaView.moc"
