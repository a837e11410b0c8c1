#pragma once

#include <QStringList>

// Measures the network of this machine over loopback sockets, one connection for each node of a session.
class zoLoopbackSpeedTest final
{
public:
    // Bounds of one of the three measurements; whichever is reached first ends it.
    struct Limits
    {
        int milliseconds = 200;
        qint64 bytes = 64 * 1024 * 1024;
        int frames = 20000;
    };

    explicit zoLoopbackSpeedTest(int nodeCount);
    zoLoopbackSpeedTest(int nodeCount, const Limits& limits);

    // Three integers as text: bytes per second sent, bytes per second received, synchronisations of all nodes
    // per second. Empty when no connection could be made or one broke; errorString() says why.
    QStringList run();
    QString errorString() const { return m_error; }

private:
    int m_connections;
    Limits m_limits;
    QString m_error;
};
