#pragma once

#include "zoClusterDocument.h"
#include "zoHostClusterService.h"

#include <zoClusterNodeLocks.h>

#include <functional>

// The cluster service that the host brings along: keeps sessions on this machine, whatever the nodes of the
// configuration are called. Each node is marked while it is in use, so that hosts of one user meet on it.
//
// A session needs a well-formed configuration with at least one enabled node to start; a running one may lose
// them all. While start() connects it handles events, so abort(), stop() and applyConfig() may be called
// then: the first two abandon the attempt, a configuration is taken over once the session runs. A start()
// from inside start() is refused without a signal, because the outer one still announces how it ends.
class zoLocalClusterService final : public zoHostClusterService
{
    Q_OBJECT

public:
    explicit zoLocalClusterService(QObject* parent = nullptr);
    ~zoLocalClusterService() override; // ends a session without a signal

    QString currentConfig() override;
    bool isRunning() override;
    QStringList runningNodes() override;
    void setAcceptRunningServers(bool accept) override;
    void setAcceptLowMemory(bool accept) override;
    // A running session refuses a document that is not well-formed: it is logged and the session stays as it
    // is. A node that another session uses joins only when that had been accepted for this session.
    void applyConfig(const QString& document) override;
    bool start() override;
    void stop() override;
    void abort() override;
    void setShowTiles(bool on) override;
    void setShowTestImage(bool on) override;
    QStringList speedTest() override;
    Capabilities capabilities() override;

    bool showsTiles() const { return m_showTiles; }         // for tests
    bool showsTestImage() const { return m_showTestImage; } // for tests

    void setMemoryPerNode(qint64 bytes) override;
    // Where the available memory in bytes comes from, negative for unknown; the operating system by default.
    void setAvailableMemory(std::function<qint64()> available); // for tests
    // Where hosts meet; empty is the run-time directory of the user. Not during a session.
    void setLockDirectory(const QString& directory); // for tests

private:
    enum class State { Idle, Starting, Running };
    using Nodes = std::vector<zoClusterDocument::Node>;
    struct Findings
    {
        QStringList inUse;
        QStringList shortOfMemory;
    };

    bool readNodes(Nodes& nodes);
    bool connectNodes(const Nodes& nodes, Findings& findings);
    void findMemoryShortage(const Nodes& nodes, Findings& findings) const;
    bool fail(const QString& reason);
    void updateSession(const Nodes& wanted);

    QString m_config;
    State m_state = State::Idle;
    Nodes m_nodes; // of the running session
    zoClusterNodeLocks m_locks;
    std::function<qint64()> m_availableMemory;
    qint64 m_memoryPerNode = DefaultMemoryPerNode;
    bool m_acceptRunningServers = false;
    bool m_acceptLowMemory = false;
    bool m_abortRequested = false;
    bool m_showTiles = false;
    bool m_showTestImage = false;
};
