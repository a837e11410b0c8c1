#include "zoLocalClusterService.h"

#include "zoLoopbackSpeedTest.h"
#include "zoSessionRequest.h"

#include <zoAvailableMemory.h>
#include <zoLog.h>

#include <QCoreApplication>
#include <QPair>
#include <QPointer>
#include <QSet>

#include <algorithm>

namespace
{
constexpr int s_complete = 100;

// What a mark stands for: a node's id and its service port.
using Place = QPair<QString, int>;

QSet<Place> placesOf(const std::vector<zoClusterDocument::Node>& nodes)
{
    QSet<Place> places;
    for (const zoClusterDocument::Node& node : nodes)
        places.insert({node.id, node.servicePort});
    return places;
}
} // namespace

zoLocalClusterService::zoLocalClusterService(QObject* parent)
    : zoHostClusterService(parent), m_availableMemory(zoAvailableMemory::bytes)
{
}

zoLocalClusterService::~zoLocalClusterService() = default;

QString zoLocalClusterService::currentConfig()
{
    return m_config;
}

bool zoLocalClusterService::isRunning()
{
    return m_state == State::Running;
}

QStringList zoLocalClusterService::runningNodes()
{
    return zoSessionRequest::idsOf(m_nodes);
}

void zoLocalClusterService::setAcceptRunningServers(bool accept)
{
    m_acceptRunningServers = accept;
}

void zoLocalClusterService::setAcceptLowMemory(bool accept)
{
    m_acceptLowMemory = accept;
}

void zoLocalClusterService::applyConfig(const QString& document)
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
    m_config = config;
    updateSession(parsed.enabledNodes());
}

bool zoLocalClusterService::start()
{
    if (m_state == State::Running)
        return true;
    if (m_state == State::Starting) {
        zoLog::error(tr("Cluster start refused: a start is in progress"));
        return false;
    }

    // What the user accepts while this attempt runs counts for the next one.
    const bool acceptRunningServers = m_acceptRunningServers;
    const bool acceptLowMemory = m_acceptLowMemory;
    const QString config = m_config;
    Nodes nodes;
    if (!readNodes(nodes))
        return false;

    m_state = State::Starting;
    m_abortRequested = false;
    const QPointer<zoLocalClusterService> self(this);
    Findings findings;
    const bool connected = connectNodes(nodes, findings);
    if (!self)
        return false;
    emit progressFinished();
    if (!self)
        return false;
    if (!connected || m_abortRequested)
        return fail(tr("aborted"));

    findMemoryShortage(nodes, findings);
    const bool refusedServers = !findings.inUse.isEmpty() && !acceptRunningServers;
    const bool refusedMemory = !findings.shortOfMemory.isEmpty() && !acceptLowMemory;
    if (refusedServers)
        emit multipleServersFound(findings.inUse.join(QStringLiteral(", ")));
    if (self && refusedMemory)
        emit notEnoughMemoryFound(findings.shortOfMemory.join(QStringLiteral(", ")));
    if (!self)
        return false;
    if (m_abortRequested)
        return fail(tr("aborted"));
    if (refusedServers)
        return fail(tr("a server already runs on %1").arg(zoSessionRequest::listOf(findings.inUse)));
    if (refusedMemory)
        return fail(tr("not enough memory for %1").arg(zoSessionRequest::listOf(findings.shortOfMemory)));

    m_nodes = std::move(nodes);
    m_state = State::Running;
    zoLog::info(tr("Cluster runs on %1").arg(zoSessionRequest::listOf(runningNodes())));
    emit started();
    if (!self)
        return true;
    // A configuration that came while connecting.
    if (m_state == State::Running && m_config != config)
        applyConfig(QString(m_config));
    return self && m_state == State::Running;
}

void zoLocalClusterService::stop()
{
    if (m_state == State::Starting) {
        abort();
        return;
    }
    if (m_state != State::Running)
        return;
    m_locks.releaseAll();
    m_nodes.clear();
    m_state = State::Idle;
    zoLog::info(tr("Cluster stopped"));
    emit stopped();
}

void zoLocalClusterService::abort()
{
    if (m_state == State::Starting)
        m_abortRequested = true;
}

void zoLocalClusterService::setShowTiles(bool on)
{
    if (on == m_showTiles)
        return;
    m_showTiles = on;
    zoLog::info(on ? tr("Show tiles: on") : tr("Show tiles: off"));
}

void zoLocalClusterService::setShowTestImage(bool on)
{
    if (on == m_showTestImage)
        return;
    m_showTestImage = on;
    zoLog::info(on ? tr("Show test image: on") : tr("Show test image: off"));
}

QStringList zoLocalClusterService::speedTest()
{
    if (m_state != State::Running || m_nodes.empty())
        return {};
    zoLoopbackSpeedTest test(int(m_nodes.size()));
    const QStringList figures = test.run();
    if (figures.isEmpty())
        zoLog::error(tr("Network speed test failed: %1").arg(test.errorString()));
    return figures;
}

zoClusterService::Capabilities zoLocalClusterService::capabilities()
{
    return MeasuresSpeed | JoinsWhileRunning | Rehearses;
}

void zoLocalClusterService::setMemoryPerNode(qint64 bytes)
{
    m_memoryPerNode = std::max<qint64>(bytes, 0);
}

void zoLocalClusterService::setAvailableMemory(std::function<qint64()> available)
{
    m_availableMemory = std::move(available);
}

void zoLocalClusterService::setLockDirectory(const QString& directory)
{
    m_locks.setDirectory(directory);
}

bool zoLocalClusterService::readNodes(Nodes& nodes)
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

// Marks the nodes one by one; false when the attempt was given up. Every use of a member after a signal or an
// event needs to know that this object still exists.
bool zoLocalClusterService::connectNodes(const Nodes& nodes, Findings& findings)
{
    const QPointer<zoLocalClusterService> self(this);
    bool lockingFailed = false;
    int shownPercent = -1;
    for (size_t i = 0; i < nodes.size(); ++i) {
        const zoClusterDocument::Node& node = nodes[i];
        const int percent = int(i * s_complete / nodes.size());
        emit progressChanged(tr("Connecting to %1 ...").arg(node.id), percent);
        // Events at each percent only: a cluster of thousands must not redraw the window for each node.
        if (self && percent != shownPercent)
            QCoreApplication::processEvents();
        shownPercent = percent;
        if (!self || m_abortRequested)
            return false;
        if (lockingFailed)
            continue; // each try may wait for the others

        // Shared in any case: whether that may be is decided when all nodes were seen.
        switch (m_locks.acquire(node.id, node.servicePort, true)) {
        case zoClusterNodeLocks::Outcome::Free:
            break;
        case zoClusterNodeLocks::Outcome::InUse:
        case zoClusterNodeLocks::Outcome::Shared:
            findings.inUse << node.id;
            break;
        case zoClusterNodeLocks::Outcome::NoLocking:
            zoLog::error(tr("Other hosts on this machine cannot be seen: %1").arg(m_locks.errorString()));
            lockingFailed = true;
            break;
        }
    }
    emit progressChanged(tr("Connected"), s_complete);
    if (self)
        QCoreApplication::processEvents();
    return self && !m_abortRequested;
}

void zoLocalClusterService::findMemoryShortage(const Nodes& nodes, Findings& findings) const
{
    const qint64 available = m_memoryPerNode > 0 && m_availableMemory ? m_availableMemory() : -1;
    if (available < 0)
        return;
    // All nodes share the memory of this machine: the first ones get theirs, the others are short.
    const size_t fitting = size_t(available / m_memoryPerNode);
    for (size_t i = fitting; i < nodes.size(); ++i)
        findings.shortOfMemory << nodes[i].id;
}

// The end of every start that does not lead to a session; false for the caller to return.
bool zoLocalClusterService::fail(const QString& reason)
{
    m_locks.releaseAll();
    m_state = State::Idle;
    zoLog::error(tr("Cluster not started: %1").arg(reason));
    // Whoever disabled a Start button waits for this.
    emit stopped();
    return false;
}

void zoLocalClusterService::updateSession(const Nodes& wanted)
{
    const QSet<Place> wantedPlaces = placesOf(wanted);
    const QSet<Place> markedPlaces = placesOf(m_nodes);
    const QStringList before = runningNodes();
    for (const zoClusterDocument::Node& node : m_nodes) {
        if (!wantedPlaces.contains({node.id, node.servicePort}))
            m_locks.release(node.id, node.servicePort);
    }
    Nodes running;
    for (const zoClusterDocument::Node& node : wanted) {
        if (!markedPlaces.contains({node.id, node.servicePort}) &&
            m_locks.acquire(node.id, node.servicePort, m_acceptRunningServers) ==
                zoClusterNodeLocks::Outcome::InUse) {
            zoLog::error(tr("Node %1 not added: a server already runs on it").arg(node.id));
            continue;
        }
        running.push_back(node);
    }
    m_nodes = std::move(running);
    if (runningNodes() != before) {
        zoLog::info(tr("Cluster runs on %1").arg(zoSessionRequest::listOf(runningNodes())));
        emit runningNodesChanged();
    }
}
