#include "zoHostSession.h"

#include "zoClusterDocument.h"
#include "zoHostDocument.h"
#include "zoHostMainWindow.h"

#include <zoClusterService.h>
#include <zoFileText.h>
#include <zoFileWriter.h>
#include <zoLog.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>

#include <cstdio>

namespace
{
constexpr int s_sessionFailed = 1;
} // namespace

zoHostSession::zoHostSession(const zoHostOptions& options, zoHostMainWindow* window,
                             zoClusterService* cluster, QObject* parent)
    : QObject(parent), m_options(options), m_window(window), m_cluster(cluster)
{
}

zoHostSession::~zoHostSession() = default;

void zoHostSession::begin(const QString& configurationFile)
{
    connect(m_cluster, &zoClusterService::progressChanged, this, [this](const QString& text, int percent) {
        print(percent < 0 ? QStringLiteral("progress: %1").arg(text)
                          : QStringLiteral("progress: %1% %2").arg(QString::number(percent), text));
    });
    connect(m_cluster, &zoClusterService::started, this, [this] { m_wasRunning = true; });
    connect(m_cluster, &zoClusterService::stopped, this, [this] {
        // A start that failed is followed by another try; its caller judges the outcome.
        if (!m_wasRunning)
            return;
        print(QStringLiteral("stopped"));
        if (m_options.exitAfterStop)
            then(&zoHostSession::finish);
    });

    // A picture in its place would be the end of the configuration.
    if (!configurationFile.isEmpty() && !m_options.screenshotFile.isEmpty() &&
        QFileInfo(configurationFile) == QFileInfo(m_options.screenshotFile)) {
        fail(tr("Unable to write screenshot %1: it is the configuration").arg(m_options.screenshotFile));
        m_options.screenshotFile.clear();
    }
    if (m_ended || !loadConfiguration(configurationFile))
        return;
    if (m_options.start)
        then(&zoHostSession::start);
    else if (!m_options.screenshotFile.isEmpty())
        then(&zoHostSession::takeScreenshot);
}

// False when the session must not go on.
bool zoHostSession::loadConfiguration(const QString& fileName)
{
    zoClusterDocument document;
    QString reason;
    if (fileName.isEmpty()) {
        document.parse(m_cluster->currentConfig(), reason);
    } else {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(tr("Unable to load configuration %1: %2").arg(fileName, file.errorString()));
            return !m_ended;
        }
        // The module decides what becomes of a text that cannot be used; a person sees why it is empty.
        const bool usable = document.parse(zoFileText(file.readAll()).text(), reason);
        if (!usable)
            fail(tr("Configuration %1 cannot be used: %2").arg(fileName, reason));
        if (m_ended)
            return false;
        const QString absolute = QFileInfo(fileName).absoluteFilePath();
        if (!m_window->document()->load(absolute)) {
            fail(tr("Unable to load configuration %1: no loaded module opens configurations").arg(fileName));
            return !m_ended;
        }
        if (usable)
            zoLog::info(tr("Configuration %1 loaded").arg(absolute));
    }
    print(fileName.isEmpty() ? QStringLiteral("configuration: default")
                             : QStringLiteral("configuration: %1").arg(fileName));
    QStringList nodes;
    for (const zoClusterDocument::Node& node : document.enabledNodes())
        nodes << node.id;
    print(QStringLiteral("nodes: %1").arg(nodes.join(QStringLiteral(", "))));
    return true;
}

void zoHostSession::start()
{
    QObject* module = m_window->moduleObject("startCluster()");
    if (module == nullptr || !QMetaObject::invokeMethod(module, "startCluster", Qt::DirectConnection)) {
        fail(tr("Unable to start: no module runs a cluster"));
        return;
    }
    if (!m_wasRunning) {
        fail(tr("The cluster did not start"));
        return;
    }
    then(&zoHostSession::follow);
}

void zoHostSession::follow()
{
    const QStringList nodes = m_cluster->runningNodes();
    print(QStringLiteral("running: %1").arg(nodes.join(QStringLiteral(", "))));
    if (m_options.nonInteractive && m_options.exitAfterStop)
        then(&zoHostSession::measure);
    else if (!m_options.screenshotFile.isEmpty())
        then(&zoHostSession::takeScreenshot);
}

void zoHostSession::measure()
{
    const QStringList figures = m_cluster->speedTest();
    if (figures.size() != 3) {
        fail(tr("The network could not be measured"));
        return;
    }
    print(QStringLiteral("speed test: sent %1 bytes/s, received %2 bytes/s, synchronised %3 frames/s")
              .arg(figures.at(0), figures.at(1), figures.at(2)));
    then(&zoHostSession::takeScreenshot);
}

void zoHostSession::takeScreenshot()
{
    const QString name = m_options.screenshotFile;
    if (!name.isEmpty()) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        m_window->grab().save(&buffer, "PNG");
        QString reason;
        if (zoFileWriter::write(name, buffer.data(), &reason) != zoFileWriter::Result::Written) {
            fail(tr("Unable to write screenshot %1: %2").arg(name, reason));
            if (m_ended)
                return;
        } else {
            print(QStringLiteral("screenshot: %1").arg(name));
        }
    }
    if (m_options.nonInteractive && m_options.start && m_options.exitAfterStop) {
        QObject* module = m_window->moduleObject("stopCluster()");
        if (module == nullptr || !QMetaObject::invokeMethod(module, "stopCluster", Qt::DirectConnection))
            fail(tr("Unable to stop: no module runs a cluster"));
    } else if (m_options.nonInteractive && !m_options.start) {
        // There is nobody to close the window, and nothing to wait for.
        then(&zoHostSession::finish);
    }
}

void zoHostSession::finish()
{
    // A person may want to save first, and stays when the window does.
    if (m_ended || (!m_options.nonInteractive && !m_window->close()))
        return;
    m_ended = true;
    QCoreApplication::exit(0);
}

void zoHostSession::print(const QString& line) const
{
    if (!m_options.nonInteractive)
        return;
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

void zoHostSession::fail(const QString& reason)
{
    zoLog::error(reason);
    if (!m_options.nonInteractive || m_ended)
        return;
    m_ended = true;
    QCoreApplication::exit(s_sessionFailed);
}

void zoHostSession::then(void (zoHostSession::*step)())
{
    QMetaObject::invokeMethod(
        this,
        [this, step] {
            if (!m_ended)
                (this->*step)();
        },
        Qt::QueuedConnection);
}
