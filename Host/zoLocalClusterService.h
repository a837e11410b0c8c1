#pragma once

#include "zoHostSessionService.h"

#include <zoClusterNodeLocks.h>

#include <functional>

// The cluster service that the host brings along: keeps sessions on this machine, whatever the nodes of the
// configuration are called. Each node is marked while it is in use, so that hosts of one user meet on it.
//
// A running session may lose all of its nodes. A node that another session uses joins only when that had been
// accepted for this session.
class zoLocalClusterService final : public zoHostSessionService
{
    Q_OBJECT

public:
    explicit zoLocalClusterService(QObject* parent = nullptr);
    ~zoLocalClusterService() override; // ends a session without a signal

    QStringList runningNodes() override;
    QStringList speedTest() override;
    Capabilities capabilities() override;

    // Where the available memory in bytes comes from, negative for unknown; the operating system by default.
    void setAvailableMemory(std::function<qint64()> available); // for tests
    // Where hosts meet; empty is the run-time directory of the user. Not during a session.
    void setLockDirectory(const QString& directory); // for tests

protected:
    bool connectSession(const Nodes& nodes, const Accepted& accepted) override;
    void changeSession(const Nodes& nodes) override;
    void releaseSession() override;

private:
    struct Findings
    {
        QStringList inUse;
        QStringList shortOfMemory;
    };

    bool connectNodes(const Nodes& nodes, Findings& findings);
    void findMemoryShortage(const Nodes& nodes, Findings& findings) const;

    Nodes m_nodes; // of the running session
    zoClusterNodeLocks m_locks;
    std::function<qint64()> m_availableMemory;
};
