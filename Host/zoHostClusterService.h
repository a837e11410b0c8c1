#pragma once

#include <zoClusterService.h>

#include <QString>

// What the host asks of a cluster service of its own, beyond what modules do.
class zoHostClusterService : public zoClusterService
{
    Q_OBJECT

public:
    static constexpr qint64 DefaultMemoryPerNode = 256 * qint64(1024 * 1024);

    explicit zoHostClusterService(QObject* parent = nullptr);
    ~zoHostClusterService() override;

    // Takes over a configuration that does not come from the user's window, and announces it with
    // configChanged().
    void offerConfig(const QString& document);

    // What the session runs on when that is not node servers: "ParaView". Empty by default.
    virtual QString engineName() const { return {}; }

    // Memory in bytes that each node of a session needs; 0 asks nothing.
    virtual void setMemoryPerNode(qint64 bytes) = 0;
};
