#include "zoHostSessionService.h"

#include "zoSessionRequest.h"

#include <zoLog.h>

#include <QPointer>

#include <algorithm>

zoHostSessionService::zoHostSessionService(QObject* parent) : zoHostClusterService(parent) {}

zoHostSessionService::~zoHostSessionService() = default;

void zoHostSessionService::setMemoryPerNode(qint64 bytes)
{
    m_memoryPerNode = std::max<qint64>(bytes, 0);
}

void zoHostSessionService::applyConfig(const QString& document)
{
    // A deep copy: the text may lie in a module that is unloaded earlier.
    const QString config(document.constData(), document.size());
    if (m_state != State::Running) {
        m_config = config;
        return;
    }
    zoClusterDocument parsed;
    QString reason;
    if (!parsed.parse(config, reason)) {
        zoLog::error(tr("Configuration of the running cluster refused: %1").arg(reason));
        return;
    }
    if (!mayChange(config))
        return;
    m_config = config;
    zoLog::info(tr("Changed configuration sent to the running session"));
    changeSession(parsed.enabledNodes());
}

bool zoHostSessionService::mayChange(const QString&)
{
    return true;
}

bool zoHostSessionService::start()
{
    if (m_state == State::Running)
        return true;
    if (m_state == State::Starting) {
        zoLog::error(tr("Cluster start refused: a start is in progress"));
        return false;
    }
    // What the user accepts while this attempt runs counts for the next one.
    const Accepted accepted = m_accepted;
    m_startedConfig = m_config;
    Nodes nodes;
    if (!readNodes(nodes))
        return false;
    m_state = State::Starting;
    m_isAborted = false;
    return connectSession(nodes, accepted);
}

bool zoHostSessionService::readNodes(Nodes& nodes)
{
    if (m_config.trimmed().isEmpty())
        return fail(tr("the configuration is empty"));
    zoClusterDocument document;
    QString reason;
    if (!document.parse(m_config, reason))
        return fail(tr("the configuration is not well-formed: %1").arg(reason));
    nodes = document.enabledNodes();
    if (nodes.empty())
        return fail(tr("the configuration has no enabled node"));
    return true;
}

bool zoHostSessionService::judge(const QStringList& inUse, const QStringList& shortOfMemory,
                                 const Accepted& accepted)
{
    const bool refusedServers = !inUse.isEmpty() && !accepted.runningServers;
    const bool refusedMemory = !shortOfMemory.isEmpty() && !accepted.lowMemory;
    if (!refusedServers && !refusedMemory)
        return true;
    const QPointer<zoHostSessionService> self(this);
    emit progressFinished();
    if (!self)
        return false;
    if (m_isAborted)
        return fail(tr("aborted"));
    if (refusedServers)
        emit multipleServersFound(inUse.join(QStringLiteral(", ")));
    if (self && refusedMemory)
        emit notEnoughMemoryFound(shortOfMemory.join(QStringLiteral(", ")));
    if (!self)
        return false;
    if (m_isAborted)
        return fail(tr("aborted"));
    if (refusedServers)
        return fail(tr("a server already runs on %1").arg(zoSessionRequest::listOf(inUse)));
    return fail(tr("not enough memory for %1").arg(zoSessionRequest::listOf(shortOfMemory)));
}

bool zoHostSessionService::announceStart()
{
    const QPointer<zoHostSessionService> self(this);
    m_state = State::Running;
    zoLog::info(tr("Cluster runs on %1").arg(zoSessionRequest::listOf(runningNodes())));
    emit started();
    if (!self)
        return true;
    // A configuration that came while connecting.
    if (m_state == State::Running && m_config != m_startedConfig)
        applyConfig(QString(m_config));
    return self && m_state == State::Running;
}

bool zoHostSessionService::fail(const QString& reason)
{
    releaseSession();
    m_state = State::Idle;
    // What a person wanted is no error.
    if (m_isAborted)
        zoLog::info(tr("Cluster not started: %1").arg(reason));
    else
        zoLog::error(tr("Cluster not started: %1").arg(reason));
    // Whoever disabled a Start button waits for this.
    emit stopped();
    return false;
}

void zoHostSessionService::stop()
{
    if (m_state == State::Starting) {
        abort();
        return;
    }
    if (m_state != State::Running)
        return;
    zoLog::info(tr("Cluster stopped"));
    endSession();
}

void zoHostSessionService::endSession()
{
    releaseSession();
    m_state = State::Idle;
    emit stopped();
}

void zoHostSessionService::abort()
{
    if (m_state != State::Starting)
        return;
    m_isAborted = true;
    wakeSession();
}

void zoHostSessionService::setShowTiles(bool on)
{
    if (on == m_showsTiles)
        return;
    m_showsTiles = on;
    zoLog::info(on ? tr("Show tiles: on") : tr("Show tiles: off"));
    choose(Content::Tiles, on);
}

void zoHostSessionService::setShowTestImage(bool on)
{
    if (on == m_showsTestImage)
        return;
    m_showsTestImage = on;
    zoLog::info(on ? tr("Show test image: on") : tr("Show test image: off"));
    choose(Content::TestImage, on);
}

// Of two that are on, the one that was turned on last is seen.
void zoHostSessionService::choose(Content content, bool on)
{
    if (on)
        m_content = content;
    else
        m_content = m_showsTiles ? Content::Tiles : m_showsTestImage ? Content::TestImage : Content::None;
    showContent();
}
