#include "zoSpeedRun.h"

#include "zoServerGroup.h"

#include <QJsonArray>
#include <QTimer>

#include <algorithm>

namespace
{
constexpr double s_nanosecondsPerSecond = 1e9;
// Blocks on their way: enough to keep the way busy.
constexpr qint64 s_ahead = 2 * zoSpeedStore::BlockSize;

// Of each direction of a server, where nothing else limits it.
constexpr qint64 s_mostBytes = 256 * qint64(1024 * 1024);
constexpr int s_longestMs = 1000;
constexpr int s_shortestMs = 10;
constexpr int s_directions = 2;
// What both directions of all servers may take: on a wall of many nodes each has less of it. A rehearsal shares one
// machine, and says little about a network.
constexpr int s_allMs = 60000;
constexpr int s_allRehearsedMs = 600;

double perSecond(qint64 bytes, qint64 nanoseconds)
{
    return double(bytes) * s_nanosecondsPerSecond / double(std::max<qint64>(nanoseconds, 1));
}
} // namespace

zoSpeedRun::Limits zoSpeedRun::limitsFor(int servers, bool isRehearsal)
{
    const int all = isRehearsal ? s_allRehearsedMs : s_allMs;
    Limits limits;
    limits.milliseconds =
        std::clamp(all / s_directions / std::max(servers, 1), int(s_shortestMs), int(s_longestMs));
    // In a rehearsal all nodes together have what each has on a wall.
    limits.bytes =
        isRehearsal ? s_mostBytes / std::max(servers, 1) : s_mostBytes * limits.milliseconds / s_longestMs;
    limits.bytes = std::max<qint64>(limits.bytes, zoSpeedStore::BlockSize);
    return limits;
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
    m_store = std::make_unique<zoSpeedStore>(limits.bytes);
    prepare();
}

// Before the clock runs, in many turns of the event loop, so that beats go on.
void zoSpeedRun::prepare()
{
    if (!m_store)
        return;
    if (m_store->isMade()) {
        measureNext();
        return;
    }
    m_store->makeSome();
    QTimer::singleShot(0, this, &zoSpeedRun::prepare);
}

void zoSpeedRun::measureNext()
{
    if (m_waiting.isEmpty()) {
        m_current = s_none;
        m_store.reset();
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
        const QByteArray bytes = m_store->block(m_sent);
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
    if (message.payload == "begun") {
        m_sent = 0;
        m_clock.start();
        return true;
    }
    const double rate = perSecond(m_sent, m_clock.nsecsElapsed());
    if (message.payload == "taken") {
        m_sendRate = rate;
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
    m_store.reset();
}
