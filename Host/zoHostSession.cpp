#include "zoHostSession.h"

#include "zoClusterDocument.h"
#include "zoHostDocument.h"
#include "zoHostMainWindow.h"
#include "zoParaViewService.h"
#include "zoSessionText.h"

#include <zoClusterService.h>
#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoFileWriter.h>
#include <zoLog.h>

#include <QAction>
#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QPointer>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{
constexpr int s_sessionFailed = 1;
} // namespace

zoHostSession::zoHostSession(const zoHostOptions& options, zoHostMainWindow* window,
                             zoClusterService* cluster, QObject* parent)
    : QObject(parent), m_options(options), m_window(window), m_cluster(cluster)
{
    connect(window->document(), &zoHostDocument::fileNotUnderstood, this,
            [this](const QString&, const QString& why) { m_whyForeign = why; });
}

zoHostSession::~zoHostSession() = default;

void zoHostSession::begin(const QString& configurationFile)
{
    connect(m_cluster, &zoClusterService::progressChanged, this, [this](const QString& text, int percent) {
        print(percent < 0 ? QStringLiteral("progress: %1").arg(text)
                          : QStringLiteral("progress: %1% %2").arg(QString::number(percent), text));
    });
    connect(m_cluster, &zoClusterService::started, this, [this] { m_wasRunning = true; });
    connect(m_cluster, &zoClusterService::nodeStateChanged, this, &zoHostSession::printNode);
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
    else if (m_options.nonInteractive)
        then(&zoHostSession::finish);
}

// False when the session must not go on.
bool zoHostSession::loadConfiguration(const QString& fileName)
{
    zoClusterDocument document;
    QString reason;
    if (fileName.isEmpty()) {
        document.parse(m_cluster->currentConfig(), reason);
    } else {
        QByteArray bytes;
        if (zoFileReader::read(fileName, bytes, &reason) != zoFileReader::Result::Read) {
            fail(tr("Unable to load configuration %1: %2").arg(fileName, reason));
            return !m_ended;
        }
        // The module decides what becomes of a text that cannot be used; a person sees why it is empty.
        const bool usable = document.parse(zoFileText(bytes).text(), reason);
        const QString unusable = tr("Configuration %1 cannot be used: %2");
        if (!usable && m_options.nonInteractive) {
            fail(unusable.arg(fileName, reason));
            return false;
        }
        const QString absolute = QFileInfo(fileName).absoluteFilePath();
        m_whyForeign.clear();
        if (!m_window->document()->load(absolute)) {
            fail(tr("Unable to load configuration %1: no loaded module opens configurations").arg(fileName));
            return !m_ended;
        }
        // A person is told by the guard of the files, and goes on.
        if (usable && !m_whyForeign.isEmpty() && m_options.nonInteractive) {
            fail(unusable.arg(fileName, m_whyForeign));
            return false;
        }
        if (!usable && m_whyForeign.isEmpty())
            fail(unusable.arg(fileName, reason));
        if (usable && m_whyForeign.isEmpty())
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
    print(QStringLiteral("session: %1").arg(zoSessionText::forScripts(m_cluster)));
    if (const auto* paraView = qobject_cast<const zoParaViewService*>(m_cluster))
        print(QStringLiteral("connect: %1 --connect-id=%2")
                  .arg(paraView->serverUrl(), QString::number(paraView->connectId())));
    if (!m_options.shownPicture.isEmpty())
        showPicture();
    const bool measures = (m_cluster->capabilities() & zoClusterService::MeasuresSpeed) != 0;
    if (m_options.nonInteractive && m_options.exitAfterStop && measures)
        then(&zoHostSession::measure);
    else
        then(&zoHostSession::takePictures);
}

// By the action of the module, if it has one, so that its window shows what is on.
void zoHostSession::showPicture()
{
    const bool isTiles = m_options.shownPicture == QLatin1String("tiles");
    QAction* action = m_window->findChild<QAction*>(isTiles ? QStringLiteral("ShowTiles")
                                                            : QStringLiteral("ShowTestImage"));
    if (action != nullptr && action->isCheckable() && action->isEnabled()) {
        action->setChecked(true);
        return;
    }
    if (isTiles)
        m_cluster->setShowTiles(true);
    else
        m_cluster->setShowTestImage(true);
}

void zoHostSession::printNode(const QString& id)
{
    const QVector<zoClusterNodeReport> reports = m_cluster->nodeReport();
    const auto report = std::find_if(reports.begin(), reports.end(),
                                     [&id](const zoClusterNodeReport& entry) { return entry.id == id; });
    if (report == reports.end())
        return;
    switch (report->state) {
    case zoClusterNodeReport::State::Connecting:
        break;
    case zoClusterNodeReport::State::Running:
        print(QStringLiteral("node: %1 running").arg(id));
        break;
    case zoClusterNodeReport::State::Failed:
        print(QStringLiteral("node: %1 failed: %2").arg(id, report->reason));
        break;
    case zoClusterNodeReport::State::Lost:
        print(QStringLiteral("node: %1 lost: %2").arg(id, report->reason));
        break;
    }
}

void zoHostSession::takePictures()
{
    const bool isWanted = !m_options.wallPictureFile.isEmpty() || !m_options.nodePictureFolder.isEmpty();
    auto* cluster = qobject_cast<zoNodeClusterService*>(m_cluster);
    if (isWanted && cluster == nullptr) {
        fail(tr("Unable to take pictures: sessions do not run on node servers"));
    } else if (isWanted) {
        const QPointer<zoHostSession> self(this);
        zoNodeClusterService::Pictures pictures;
        QString reason;
        const bool taken = cluster->takePictures(pictures, reason);
        if (!self || m_ended)
            return;
        if (!taken)
            fail(tr("Unable to take pictures: %1").arg(reason));
        else
            writePictures(pictures);
    }
    if (!m_ended)
        then(&zoHostSession::takeScreenshot);
}

void zoHostSession::writePictures(const zoNodeClusterService::Pictures& pictures)
{
    if (!m_options.wallPictureFile.isEmpty()) {
        if (pictures.wall.isEmpty())
            fail(tr("Unable to write wall picture %1: no window shows anything")
                     .arg(m_options.wallPictureFile));
        else if (writePicture(m_options.wallPictureFile, pictures.wall))
            print(QStringLiteral("wall picture: %1").arg(m_options.wallPictureFile));
    }
    if (m_options.nodePictureFolder.isEmpty() || m_ended)
        return;
    const QDir folder(m_options.nodePictureFolder);
    if (!folder.mkpath(QStringLiteral("."))) {
        fail(tr("Unable to make folder %1").arg(m_options.nodePictureFolder));
        return;
    }
    for (auto it = pictures.windows.begin(); it != pictures.windows.end() && !m_ended; ++it) {
        // An id may be any text; a file name may not.
        QString name = it.key();
        name.replace(QLatin1Char('/'), QLatin1Char('_'));
        writePicture(folder.filePath(name + QStringLiteral(".png")), it.value());
    }
    if (!m_ended)
        print(QStringLiteral("node pictures: %1 in %2")
                  .arg(QString::number(pictures.windows.size()), m_options.nodePictureFolder));
}

bool zoHostSession::writePicture(const QString& fileName, const QByteArray& png)
{
    QString reason;
    if (zoFileWriter::write(fileName, png, &reason) == zoFileWriter::Result::Written)
        return true;
    fail(tr("Unable to write picture %1: %2").arg(fileName, reason));
    return false;
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
    then(&zoHostSession::takePictures);
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
    QCoreApplication::exit(m_isOutputLost ? s_sessionFailed : 0);
}

// A wall stays lit when the disk that its log goes to is full.
void zoHostSession::print(const QString& line)
{
    if (!m_options.nonInteractive)
        return;
    const bool isPrinted =
        std::fprintf(stdout, "%s\n", line.toUtf8().constData()) >= 0 && std::fflush(stdout) == 0;
    if (isPrinted || m_isOutputLost)
        return;
    m_isOutputLost = true;
    const QString reason = errno == EBADF ? tr("it is closed") : QString::fromLocal8Bit(std::strerror(errno));
    zoLog::error(tr("Unable to write to standard output: %1").arg(reason));
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
