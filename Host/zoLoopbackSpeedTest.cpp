#include "zoLoopbackSpeedTest.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <memory>
#include <vector>

namespace
{
constexpr int s_timeoutMs = 2000;
constexpr int s_chunkSize = 64 * 1024;
constexpr int s_frameSize = 16;
// More would measure the socket table and not the network.
constexpr int s_maximumConnections = 32;
constexpr qint64 s_nanosecondsPerSecond = 1000000000;

struct Connection
{
    std::unique_ptr<QTcpSocket> master;
    std::unique_ptr<QTcpSocket> node;
};
using Connections = std::vector<Connection>;

// False when one cannot be made; `error` says why.
bool connectNodes(Connections& connections, int count, QString& error)
{
    QTcpServer server;
    server.setProxy(QNetworkProxy::NoProxy);
    if (!server.listen(QHostAddress::LocalHost)) {
        error = server.errorString();
        return false;
    }
    for (int i = 0; i < count; ++i) {
        Connection connection;
        connection.master = std::make_unique<QTcpSocket>();
        connection.master->setProxy(QNetworkProxy::NoProxy);
        connection.master->connectToHost(server.serverAddress(), server.serverPort());
        if (!connection.master->waitForConnected(s_timeoutMs)) {
            error = connection.master->errorString();
            return false;
        }
        if (!server.hasPendingConnections() && !server.waitForNewConnection(s_timeoutMs)) {
            error = server.errorString();
            return false;
        }
        connection.node.reset(server.nextPendingConnection());
        connection.node->setParent(nullptr);
        connection.master->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connection.node->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connections.push_back(std::move(connection));
    }
    return true;
}

// Moves one block from one end to the other and waits until all of it is there.
bool transfer(QTcpSocket& from, QTcpSocket& to, const QByteArray& block, QByteArray& buffer)
{
    if (from.write(block) != block.size())
        return false;
    qint64 received = 0;
    while (received < block.size()) {
        while (from.bytesToWrite() > 0 && from.flush()) {
        }
        if (to.bytesAvailable() == 0 && !to.waitForReadyRead(s_timeoutMs))
            return false;
        received += to.read(buffer.data(), buffer.size());
    }
    return true;
}

qint64 perSecond(qint64 amount, qint64 nanoseconds)
{
    return qint64(double(amount) * s_nanosecondsPerSecond / double(std::max<qint64>(nanoseconds, 1)));
}

// Round after round over all connections until a bound is reached; the rate, or -1 when a connection broke.
template <class Transfer>
qint64 rate(Connections& connections, qint64 perRound, qint64 bound, int milliseconds,
            const Transfer& transferOne)
{
    QElapsedTimer timer;
    timer.start();
    qint64 amount = 0;
    do {
        if (!std::all_of(connections.begin(), connections.end(), transferOne))
            return -1;
        amount += perRound;
    } while (amount < bound && timer.elapsed() < milliseconds);
    return perSecond(amount, timer.nsecsElapsed());
}
} // namespace

zoLoopbackSpeedTest::zoLoopbackSpeedTest(int nodeCount) : zoLoopbackSpeedTest(nodeCount, Limits()) {}

zoLoopbackSpeedTest::zoLoopbackSpeedTest(int nodeCount, const Limits& limits)
    : m_connections(std::max(1, std::min(nodeCount, s_maximumConnections))), m_limits(limits)
{
}

QStringList zoLoopbackSpeedTest::run()
{
    Connections connections;
    if (!connectNodes(connections, m_connections, m_error))
        return {};

    const QByteArray block(s_chunkSize, 'z');
    const QByteArray frame(s_frameSize, 's');
    QByteArray buffer(s_chunkSize, '\0');
    const auto send = [&](Connection& c) { return transfer(*c.master, *c.node, block, buffer); };
    const auto receive = [&](Connection& c) { return transfer(*c.node, *c.master, block, buffer); };
    // A frame is in step when every node got the mark and answered it.
    const auto synchronise = [&](Connection& c) {
        return transfer(*c.master, *c.node, frame, buffer) && transfer(*c.node, *c.master, frame, buffer);
    };

    const qint64 bytes = qint64(s_chunkSize) * m_connections;
    const int milliseconds = m_limits.milliseconds;
    const qint64 sent = rate(connections, bytes, m_limits.bytes, milliseconds, send);
    const qint64 received = sent < 0 ? -1 : rate(connections, bytes, m_limits.bytes, milliseconds, receive);
    const qint64 frames =
        received < 0 ? -1 : rate(connections, 1, m_limits.frames, milliseconds, synchronise);
    if (frames < 0) {
        m_error = QCoreApplication::translate("zoLoopbackSpeedTest", "a connection broke");
        return {};
    }
    return {QString::number(sent), QString::number(received), QString::number(frames)};
}
