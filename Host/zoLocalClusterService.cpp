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
    : zoHostSessionService(parent), m_availableMemory(zoAvailableMemory::bytes)
{
}

zoLocalClusterService::~zoLocalClusterService() = default;

QStringList zoLocalClusterService::runningNodes()
{
    return zoSessionRequest::idsOf(m_nodes);
}

bool zoLocalClusterService::connectSession(const Nodes& nodes, const Accepted& accepted)
{
    const QPointer<zoLocalClusterService> self(this);
    Findings findings;
    const bool connected = connectNodes(nodes, findings);
    if (!self)
        return false;
    if (connected) {
        findMemoryShortage(nodes, findings);
        if (!judge(findings.inUse, findings.shortOfMemory, accepted))
            return false;
    }
    emit progressFinished();
    if (!self)
        return false;
    if (!connected || isAborted())
        return fail(tr("aborted"));
    m_nodes = nodes;
    return announceStart();
}

void zoLocalClusterService::releaseSession()
{
    m_locks.releaseAll();
    m_nodes.clear();
}

QStringList zoLocalClusterService::speedTest()
{
    if (state() != State::Running || m_nodes.empty())
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

void zoLocalClusterService::setAvailableMemory(std::function<qint64()> available)
{
    m_availableMemory = std::move(available);
}

void zoLocalClusterService::setLockDirectory(const QString& directory)
{
    m_locks.setDirectory(directory);
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
        if (!self || isAborted())
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
    return self && !isAborted();
}

void zoLocalClusterService::findMemoryShortage(const Nodes& nodes, Findings& findings) const
{
    const qint64 available = memoryPerNode() > 0 && m_availableMemory ? m_availableMemory() : -1;
    if (available < 0)
        return;
    // All nodes share the memory of this machine: the first ones get theirs, the others are short.
    const size_t fitting = size_t(available / memoryPerNode());
    for (size_t i = fitting; i < nodes.size(); ++i)
        findings.shortOfMemory << nodes[i].id;
}

void zoLocalClusterService::changeSession(const Nodes& nodes)
{
    const QSet<Place> wantedPlaces = placesOf(nodes);
    const QSet<Place> markedPlaces = placesOf(m_nodes);
    const QStringList before = runningNodes();
    for (const zoClusterDocument::Node& node : m_nodes) {
        if (!wantedPlaces.contains({node.id, node.servicePort}))
            m_locks.release(node.id, node.servicePort);
    }
    Nodes running;
    for (const zoClusterDocument::Node& node : nodes) {
        if (!markedPlaces.contains({node.id, node.servicePort}) &&
            m_locks.acquire(node.id, node.servicePort, accepted().runningServers) ==
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
