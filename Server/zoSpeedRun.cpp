#include "zoSpeedRun.h"

#include "zoServerGroup.h"

#include <QJsonArray>

#include <algorithm>
#include <vector>

namespace
{
constexpr int s_blockSize = 1024 * 1024;
constexpr int s_storeBlocks = 48;
constexpr double s_nanosecondsPerSecond = 1e9;
// Blocks on their way: enough to keep the way busy.
constexpr qint64 s_ahead = 2 * s_blockSize;

QByteArray makeStore()
{
    std::vector<quint64> numbers(std::size_t(s_blockSize) * s_storeBlocks / sizeof(quint64));
    quint64 state = 1;
    // Nothing that a link could compress.
    std::generate(numbers.begin(), numbers.end(),
                  [&state] { return state = state * 6364136223846793005U + 1442695040888963407U; });
    return {reinterpret_cast<const char*>(numbers.data()), s_blockSize * s_storeBlocks};
}

double perSecond(qint64 bytes, qint64 nanoseconds)
{
    return double(bytes) * s_nanosecondsPerSecond / double(std::max<qint64>(nanoseconds, 1));
}
} // namespace

QByteArray zoSpeedRun::block(qint64 position)
{
    static const QByteArray store = makeStore();
    return store.mid(int(position / s_blockSize % s_storeBlocks) * s_blockSize, s_blockSize);
}

zoSpeedRun::zoSpeedRun(zoServerGroup* group, QObject* parent) : QObject(parent), m_group(group)
{
    connect(m_group, &zoServerGroup::sent, this, &zoSpeedRun::sendOn);
}

void zoSpeedRun::start(const QList<int>& keys, const Limits& limits)
{
    m_waiting = keys;
    m_limits = limits;
    m_rates = {};
    block(0); // made before the clock runs
    measureNext();
}

void zoSpeedRun::measureNext()
{
    if (m_waiting.isEmpty()) {
        m_current = s_none;
        emit finished(m_rates);
        return;
    }
    m_current = m_waiting.takeFirst();
    m_isSending = true;
    m_sent = 0;
    m_clock.start();
    sendOn(m_current);
}

void zoSpeedRun::sendOn(int key)
{
    if (key != m_current || !m_isSending)
        return;
    while (m_group->bytesToSend(key) < s_ahead) {
        if (m_sent >= m_limits.bytes || m_clock.elapsed() >= m_limits.milliseconds) {
            m_isSending = false;
            m_group->send({key}, {"DATAEND", {}});
            return;
        }
        const QByteArray bytes = block(m_sent);
        m_group->send({key}, {"DATA", bytes});
        m_sent += bytes.size();
    }
}

bool zoSpeedRun::take(int key, const zoServerMessage& message)
{
    if (message.verb == "DATA") {
        if (key == m_current)
            m_sent += message.payload.size();
        return true;
    }
    if (message.verb != "DATAEND")
        return false;
    if (key != m_current)
        return true;
    const double rate = perSecond(m_sent, m_clock.nsecsElapsed());
    if (message.payload == "taken") {
        m_sendRate = rate;
        m_sent = 0;
        m_clock.start();
        m_group->send({key}, zoServerMessage::of("FETCH", {{QStringLiteral("bytes"), double(m_limits.bytes)},
                                                           {QStringLiteral("ms"), m_limits.milliseconds}}));
    } else {
        m_rates.insert(QString::number(key), QJsonArray{m_sendRate, rate});
        measureNext();
    }
    return true;
}

void zoSpeedRun::leave(int key)
{
    m_waiting.removeAll(key);
    if (key == m_current)
        measureNext();
}

void zoSpeedRun::cancel()
{
    m_waiting.clear();
    m_current = s_none;
    m_isSending = false;
}
