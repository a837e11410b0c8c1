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
constexpr int TimeoutMs = 2000;
constexpr int ChunkSize = 64 * 1024;
constexpr int FrameSize = 16;
// More would measure the socket table and not the network.
constexpr int MaximumConnections = 32;
constexpr qint64 NanosecondsPerSecond = 1000000000;

struct Connection
{
    std::unique_ptr<QTcpSocket> master;
    std::unique_ptr<QTcpSocket> node;
};

// Moves one block from one end to the other and waits until all of it is there.
bool transfer(QTcpSocket& from, QTcpSocket& to, const QByteArray& block, QByteArray& buffer)
{
    if (from.write(block) != block.size())
        return false;
    qint64 received = 0;
    while (received < block.size()) {
        while (from.bytesToWrite() > 0 && from.flush()) {
        }
        if (to.bytesAvailable() == 0 && !to.waitForReadyRead(TimeoutMs))
            return false;
        received += to.read(buffer.data(), buffer.size());
    }
    return true;
}

qint64 perSecond(qint64 amount, qint64 nanoseconds)
{
    return qint64(double(amount) * NanosecondsPerSecond / double(std::max<qint64>(nanoseconds, 1)));
}
} // namespace

zoLoopbackSpeedTest::zoLoopbackSpeedTest(int nodeCount) : zoLoopbackSpeedTest(nodeCount, Limits()) {}

zoLoopbackSpeedTest::zoLoopbackSpeedTest(int nodeCount, const Limits& limits)
    : m_connections(std::max(1, std::min(nodeCount, MaximumConnections))), m_limits(limits)
{
}

QStringList zoLoopbackSpeedTest::run()
{
    QTcpServer server;
    server.setProxy(QNetworkProxy::NoProxy);
    if (!server.listen(QHostAddress::LocalHost)) {
        m_error = server.errorString();
        return {};
    }
    std::vector<Connection> connections;
    for (int i = 0; i < m_connections; ++i) {
        Connection connection;
        connection.master = std::make_unique<QTcpSocket>();
        connection.master->setProxy(QNetworkProxy::NoProxy);
        connection.master->connectToHost(server.serverAddress(), server.serverPort());
        if (!connection.master->waitForConnected(TimeoutMs)) {
            m_error = connection.master->errorString();
            return {};
        }
        if (!server.hasPendingConnections() && !server.waitForNewConnection(TimeoutMs)) {
            m_error = server.errorString();
            return {};
        }
        connection.node.reset(server.nextPendingConnection());
        connection.node->setParent(nullptr);
        connection.master->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connection.node->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connections.push_back(std::move(connection));
    }

    const QByteArray block(ChunkSize, 'z');
    const QByteArray frame(FrameSize, 's');
    QByteArray buffer(ChunkSize, '\0');
    // Round after round over all connections until a bound is reached; the rate, or -1 when a connection
    // broke.
    const auto rateOf = [this](qint64 perRound, qint64 bound, const auto& round) -> qint64 {
        QElapsedTimer timer;
        timer.start();
        qint64 amount = 0;
        do {
            if (!round())
                return -1;
            amount += perRound;
        } while (amount < bound && timer.elapsed() < m_limits.milliseconds);
        return perSecond(amount, timer.nsecsElapsed());
    };

    const qint64 bytesPerRound = qint64(ChunkSize) * m_connections;
    const auto sendRound = [&] {
        return std::all_of(connections.begin(), connections.end(), [&](Connection& connection) {
            return transfer(*connection.master, *connection.node, block, buffer);
        });
    };
    const auto receiveRound = [&] {
        return std::all_of(connections.begin(), connections.end(), [&](Connection& connection) {
            return transfer(*connection.node, *connection.master, block, buffer);
        });
    };
    // A frame is in step when every node got the mark and answered it.
    const auto syncRound = [&] {
        return std::all_of(connections.begin(), connections.end(), [&](Connection& connection) {
            return transfer(*connection.master, *connection.node, frame, buffer) &&
                   transfer(*connection.node, *connection.master, frame, buffer);
        });
    };

    const qint64 sent = rateOf(bytesPerRound, m_limits.bytes, sendRound);
    const qint64 received = sent < 0 ? -1 : rateOf(bytesPerRound, m_limits.bytes, receiveRound);
    const qint64 frames = received < 0 ? -1 : rateOf(1, m_limits.frames, syncRound);
    if (frames < 0) {
        m_error = QCoreApplication::translate("zoLoopbackSpeedTest", "a connection broke");
        return {};
    }
    return {QString::number(sent), QString::number(received), QString::number(frames)};
}
