#include "zoNetns.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

// Windows on the displays of other machines: n1 has two screens, n2 has none.
class tst_zohostNetnsDisplays final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void windowsStandOnTheirScreens();
    void picturesComeOverSsh();
    void missingScreenIsNamed();
    void displayThatCannotBeUsedIsNamed();
    void missingDisplayIsTold();

private:
    // A window of n1 or n2.
    static QString window(const char* node, int screen, const char* geometry, bool fullScreen);
    void start(QProcess& host, const QString& windows, const QStringList& arguments = {});
    QByteArray m_said;

    QTemporaryDir m_folder;
};

namespace
{
constexpr int s_limitMs = 60000;
} // namespace

void tst_zohostNetnsDisplays::initTestCase()
{
    if (QFile::exists(QStringLiteral("/usr/bin/Xvfb")) &&
        QFile::exists(QStringLiteral("/usr/bin/xwininfo"))) {
        QCOMPARE(zoNetns::run(QStringLiteral("n1"),
                              QStringLiteral(
                                  "mkdir -m 1777 /tmp/.X11-unix; setsid setpriv --reuid 54321 --regid 54321 "
                                  "--clear-groups Xvfb :0 -screen 0 800x600x24 -screen 1 640x480x24 "
                                  "-nolisten tcp -noreset >/dev/null 2>&1 & "
                                  "i=0; until xwininfo -display :0.1 -root >/dev/null 2>&1; do "
                                  "i=$((i+1)); [ $i -lt 300 ]; sleep 0.1; done")),
                 QByteArray());
    } else {
        QSKIP("Xvfb or xwininfo is not installed; apt-get install xvfb x11-utils");
    }
}

void tst_zohostNetnsDisplays::cleanup()
{
    // Xvfb alone stays.
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n1")), QByteArray("Xvfb"), s_limitMs);
    QTRY_COMPARE_WITH_TIMEOUT(zoNetns::programs(QStringLiteral("n2")), QByteArray(), s_limitMs);
    zoTestCase::cleanup();
}

QString tst_zohostNetnsDisplays::window(const char* node, int screen, const char* geometry, bool fullScreen)
{
    const QStringList numbers = QString::fromLatin1(geometry).split(QLatin1Char(' '));
    return QStringLiteral("<window node=\"%1\" screen=\"%2\" x=\"%3\" y=\"%4\" width=\"%5\" height=\"%6\" "
                          "fullscreen=\"%7\"><viewport projection=\"Wall row:1 col:1\" position=\"fill\" "
                          "x1=\"0\" y1=\"0\" x2=\"1\" y2=\"1\"/></window>")
        .arg(QLatin1String(node), QString::number(screen), numbers.value(0), numbers.value(1),
             numbers.value(2), numbers.value(3),
             fullScreen ? QStringLiteral("true") : QStringLiteral("false"));
}

void tst_zohostNetnsDisplays::start(QProcess& host, const QString& windows, const QStringList& arguments)
{
    QFile file(m_folder.filePath("wall.zhpc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        "<cluster version=\"1\"><master><network encrypted=\"true\"><node name=\"n1\"/><node name=\"n2\"/>"
        "</network></master><projection name=\"Wall\" type=\"powerwall\" rows=\"1\" columns=\"1\" "
        "width=\"3000\" "
        "height=\"2000\" distance=\"2500\"/><display>" +
        windows.toUtf8() + "</display></cluster>");
    file.close();
    m_said.clear();
    host.setProcessChannelMode(QProcess::MergedChannels);
    connect(&host, &QProcess::readyRead, this, [this, &host] { m_said += host.readAll(); });
    host.start(QStringLiteral(ZO_HOST_FILE), QStringList({"--engine", "nodes", "--non-interactive", "--start",
                                                          "--config", file.fileName()}) +
                                                 arguments);
    QVERIFY(host.waitForStarted());
}

// As the display server of the machine says, root window by root window.
void tst_zohostNetnsDisplays::windowsStandOnTheirScreens()
{
    QProcess host;
    start(host, window("n1", 0, "10 20 320 240", false) + window("n1", 1, "-30 40 64 48", false) +
                    window("n1", 1, "0 0 1920 1200", true));
    QTRY_VERIFY2_WITH_TIMEOUT(m_said.contains("\nsession: 2 nodes\n"), m_said.constData(), s_limitMs);

    const QString first =
        zoNetns::run(QStringLiteral("n1"), QStringLiteral("xwininfo -display :0.0 -root -tree"));
    const QString second =
        zoNetns::run(QStringLiteral("n1"), QStringLiteral("xwininfo -display :0.1 -root -tree"));

    QVERIFY2(
        first.contains(QRegularExpression(" \"n1-1\": [^\"]*(\"[^\"]*\" ?){0,2}\\) *320x240\\+10\\+20 ")),
        qPrintable(first));
    QVERIFY2(!first.contains("\"n1-2\"") && !first.contains("\"n1-3\""), qPrintable(first));
    QVERIFY2(second.contains(QRegularExpression(" \"n1-2\": .*64x48\\+-30\\+40 ")), qPrintable(second));
    QVERIFY2(second.contains(QRegularExpression(" \"n1-3\": .*640x480\\+0\\+0 ")), qPrintable(second));
    QVERIFY2(m_said.contains("window n1-3: the screen has 640 × 480 pixels, the configuration 1920 × 1200"),
             m_said.constData());
    host.terminate();
    QVERIFY(host.waitForFinished(s_limitMs));
}

void tst_zohostNetnsDisplays::picturesComeOverSsh()
{
    QProcess host;
    const QString folder = m_folder.filePath("pictures");
    start(host, window("n1", 0, "10 20 320 240", false) + window("n2", 0, "0 0 200 100", false),
          {"--show", "tiles", "--node-pictures", folder, "--wall-picture", m_folder.filePath("wall.png"),
           "--exit-after-stop"});
    QVERIFY(host.waitForFinished(s_limitMs));

    QVERIFY2(host.exitCode() == 0, m_said.constData());
    const QImage first(folder + "/n1-1.png");
    const QImage second(folder + "/n2-1.png");
    QCOMPARE(first.size(), QSize(320, 240));
    QCOMPARE(second.size(), QSize(200, 100));
    // A tile has a border of its own colour; a black picture would be one of nothing.
    QVERIFY(qGray(first.pixel(0, 0)) > 0 && qGray(second.pixel(0, 0)) > 0);
    QVERIFY(!QImage(m_folder.filePath("wall.png")).isNull());
}

void tst_zohostNetnsDisplays::missingScreenIsNamed()
{
    QProcess host;
    start(host, window("n1", 2, "0 0 100 100", false) + window("n2", 0, "0 0 100 100", false));
    QVERIFY(host.waitForFinished(s_limitMs));

    QCOMPARE(host.exitCode(), 1);
    QVERIFY2(m_said.contains("node: n1 failed: window n1-1: screen 3 is missing, the machine has 2\n"),
             m_said.constData());
    QVERIFY2(!m_said.contains("node: n2 failed"), m_said.constData());
}

void tst_zohostNetnsDisplays::displayThatCannotBeUsedIsNamed()
{
    QCOMPARE(zoNetns::run(QStringLiteral("n2"),
                          QStringLiteral("mkdir -p /tmp/.X11-unix; touch /tmp/.X11-unix/X0")),
             QByteArray());
    QProcess host;
    start(host, window("n1", 0, "0 0 100 100", false) + window("n2", 0, "0 0 100 100", false));
    QVERIFY(host.waitForFinished(s_limitMs));
    QCOMPARE(zoNetns::run(QStringLiteral("n2"), QStringLiteral("rm /tmp/.X11-unix/X0")), QByteArray());

    QCOMPARE(host.exitCode(), 1);
    QVERIFY2(m_said.contains("node: n2 failed: its server ended: the display :0 cannot be used: "),
             m_said.constData());
    QVERIFY2(!m_said.contains("node: n1 failed"), m_said.constData());
}

// It draws what nobody sees: a person in front of a dark wall wants to read that.
void tst_zohostNetnsDisplays::missingDisplayIsTold()
{
    QProcess host;
    start(host, window("n1", 0, "0 0 100 100", false) + window("n2", 0, "0 0 100 100", false));
    QTRY_VERIFY2_WITH_TIMEOUT(m_said.contains("\nsession: 2 nodes\n"), m_said.constData(), s_limitMs);

    QVERIFY2(m_said.contains("Node n2: window n2-1: 100 × 100 pixels, no display here, nobody sees it"),
             m_said.constData());
    QVERIFY2(!m_said.contains("n1-1: 100 × 100 pixels, no display"), m_said.constData());
    host.terminate();
    QVERIFY(host.waitForFinished(s_limitMs));
}

ZO_TEST_MAIN(tst_zohostNetnsDisplays)
#include "tst_zohostNetnsDisplays.moc"
