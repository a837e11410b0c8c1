#include "zoVirtualDisplay.h"

#include <QDeadlineTimer>
#include <QStandardPaths>

zoVirtualDisplay::zoVirtualDisplay(const QStringList& screens)
{
    for (const char* program : {"Xvfb", "xwininfo"}) {
        if (!isInstalled(QString::fromLatin1(program), m_reason))
            return;
    }
    QStringList arguments{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                          QStringLiteral("tcp"), QStringLiteral("-noreset")};
    for (int i = 0; i < screens.size(); ++i)
        arguments << QStringLiteral("-screen") << QString::number(i) << screens[i] + QStringLiteral("x24");
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(QStringLiteral("Xvfb"), arguments, QIODevice::ReadOnly);
    // It writes its number once it is ready.
    const QDeadlineTimer deadline(30000);
    while (!m_server.canReadLine() && m_server.state() != QProcess::NotRunning && !deadline.hasExpired())
        m_server.waitForReadyRead(1000);
    const QByteArray number = m_server.readLine().trimmed();
    if (number.isEmpty())
        m_reason = QStringLiteral("Xvfb did not start");
    else
        m_name = QLatin1Char(':') + QString::fromLatin1(number);
}

zoVirtualDisplay::~zoVirtualDisplay()
{
    stopWindowManager();
    if (m_server.state() == QProcess::NotRunning)
        return;
    m_server.terminate();
    if (!m_server.waitForFinished(10000))
        m_server.kill();
    m_server.waitForFinished(10000);
}

bool zoVirtualDisplay::isInstalled(const QString& program, QString& reason)
{
    if (!QStandardPaths::findExecutable(program).isEmpty())
        return true;
    reason = program + QStringLiteral(" is not installed");
    return false;
}

bool zoVirtualDisplay::startWindowManager()
{
    if (!isInstalled(QStringLiteral("matchbox-window-manager"), m_reason))
        return false;
    m_manager.setStandardErrorFile(QProcess::nullDevice());
    m_manager.setStandardOutputFile(QProcess::nullDevice());
    m_manager.start(QStringLiteral("matchbox-window-manager"), {QStringLiteral("-d"), m_name});
    if (!m_manager.waitForStarted(10000))
        return false;
    // It has come up once it says so on the root window.
    const QDeadlineTimer deadline(30000);
    while (!deadline.hasExpired()) {
        QProcess property;
        property.start(QStringLiteral("xprop"), {QStringLiteral("-display"), m_name, QStringLiteral("-root"),
                                                 QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
        property.waitForFinished(10000);
        if (property.readAllStandardOutput().contains("window id"))
            return true;
    }
    m_reason = QStringLiteral("the window manager did not come up");
    return false;
}

void zoVirtualDisplay::stopWindowManager()
{
    if (m_manager.state() == QProcess::NotRunning)
        return;
    m_manager.terminate();
    if (!m_manager.waitForFinished(10000))
        m_manager.kill();
    m_manager.waitForFinished(10000);
}

QString zoVirtualDisplay::windowInfo(const QStringList& arguments) const
{
    QProcess info;
    info.start(QStringLiteral("xwininfo"), arguments);
    info.waitForFinished(30000);
    return QString::fromUtf8(info.readAllStandardOutput());
}
