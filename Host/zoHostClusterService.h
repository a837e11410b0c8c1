#pragma once

#include <zoClusterService.h>

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

    // Memory in bytes that each node of a session needs; 0 asks nothing.
    virtual void setMemoryPerNode(qint64 bytes) = 0;
};
