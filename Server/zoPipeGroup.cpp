#include "zoPipeGroup.h"

#include <zoNodeReason.h>
#include <zoServerBeat.h>
#include <zoServerChild.h>
#include <zoServerHello.h>

#include <algorithm>

namespace
{
// Started in one turn of the event loop: beats go on between the turns.
constexpr std::size_t s_startsPerTurn = 8;
} // namespace

zoPipeGroup::zoPipeGroup(QObject* parent) : zoPipeGroup(Limits(), parent) {}

zoPipeGroup::zoPipeGroup(const Limits& limits, QObject* parent) : zoServerGroup(parent), m_limits(limits)
{
    connect(&m_beat, &QTimer::timeout, this, &zoPipeGroup::beat);
    m_beat.start(zoServerBeat::Interval);
}

zoPipeGroup::~zoPipeGroup() = default;

void zoPipeGroup::add(const std::vector<Member>& members)
{
    const bool isStarting = !m_waiting.empty();
    m_waiting.insert(m_waiting.end(), members.begin(), members.end());
    if (!isStarting)
        startSome();
}

void zoPipeGroup::startSome()
{
    for (std::size_t i = 0; i < s_startsPerTurn && !m_waiting.empty(); ++i) {
        const Member member = m_waiting.front();
        m_waiting.pop_front();
        startOne(member);
    }
    if (!m_waiting.empty())
        QTimer::singleShot(0, this, &zoPipeGroup::startSome);
}

void zoPipeGroup::startOne(const Member& member)
{
    const int key = member.key;
    Server& server = m_servers[key];
    server = Server();
    server.child = std::make_unique<zoServerChild>(zoServerMessageReader::Start::AfterNoise);
    connect(server.child.get(), &zoServerChild::received, this,
            [this, key](const zoServerMessage& message) { receive(key, message); });
    connect(server.child.get(), &zoServerChild::sent, this, [this, key] { emit sent(key); });
    connect(server.child.get(), &zoServerChild::ended, this, [this, key] {
        const auto it = m_servers.find(key);
        if (it == m_servers.end())
            return;
        const QString detail = it->second.child->lastLine();
        lose(key, zoNodeReason::Ended, detail);
    });
    server.child->start(member.command);
}

void zoPipeGroup::receive(int key, const zoServerMessage& message)
{
    const auto it = m_servers.find(key);
    if (it == m_servers.end() || it->second.isLeaving)
        return;
    Server& server = it->second;
    if (!server.hasGreeted) {
        const QString mismatch = zoServerHello::fromMessage(message).mismatch();
        if (!mismatch.isEmpty()) {
            lose(key, zoNodeReason::Version, mismatch);
            return;
        }
        server.hasGreeted = true;
        server.child->send({"BEAT", {}});
    }
    emit received(key, message);
}

void zoPipeGroup::send(const QList<int>& keys, const zoServerMessage& message)
{
    for (const int key : keys) {
        const auto it = m_servers.find(key);
        if (it != m_servers.end() && it->second.hasGreeted)
            it->second.child->send(message);
    }
}

qint64 zoPipeGroup::bytesToSend(int key) const
{
    const auto it = m_servers.find(key);
    return it == m_servers.end() ? 0 : it->second.child->bytesToSend();
}

void zoPipeGroup::remove(const QList<int>& keys)
{
    for (const int key : keys) {
        m_waiting.erase(std::remove_if(m_waiting.begin(), m_waiting.end(),
                                       [key](const Member& member) { return member.key == key; }),
                        m_waiting.end());
        const auto it = m_servers.find(key);
        if (it == m_servers.end() || it->second.isLeaving)
            continue;
        Server& server = it->second;
        server.isLeaving = true;
        server.ticks = 0;
        if (server.hasGreeted) {
            server.child->send({"QUIT", {}});
            server.child->closeInput();
        } else {
            // Nobody is there yet who could say good-bye.
            server.child->kill();
        }
    }
}

void zoPipeGroup::removeAll()
{
    m_isEnding = true;
    m_waiting.clear();
    QList<int> keys;
    for (const auto& entry : m_servers)
        keys << entry.first;
    remove(keys);
    if (m_servers.empty())
        QTimer::singleShot(0, this, &zoServerGroup::allEnded);
}

void zoPipeGroup::lose(int key, const char* reason, const QString& detail)
{
    const auto it = m_servers.find(key);
    if (it == m_servers.end())
        return;
    const bool wasLeaving = it->second.isLeaving;
    takeAway(key);
    if (!wasLeaving)
        emit ended(key, QLatin1String(reason), detail);
    if (m_isEnding && m_servers.empty())
        emit allEnded();
}

// The child may be the one whose signal is being handled.
void zoPipeGroup::takeAway(int key)
{
    const auto it = m_servers.find(key);
    zoServerChild* child = it->second.child.release();
    m_servers.erase(it);
    child->disconnect(this);
    if (child->isRunning())
        child->kill();
    child->deleteLater();
}

void zoPipeGroup::beat()
{
    std::vector<std::pair<int, const char*>> lost;
    std::vector<int> overdue;
    for (auto& entry : m_servers) {
        Server& server = entry.second;
        server.ticks = server.child->takeSign() && !server.isLeaving ? 0 : server.ticks + 1;
        const int milliseconds = server.ticks * zoServerBeat::Interval;
        if (server.isLeaving) {
            if (milliseconds >= m_limits.endMs)
                overdue.push_back(entry.first);
        } else if (server.hasGreeted) {
            // What waits in the pipe is as good as a beat, and more of the same would only pile up.
            if (server.child->bytesToSend() == 0)
                server.child->send({"BEAT", {}});
            if (server.ticks > zoServerBeat::TicksUntilLost)
                lost.emplace_back(entry.first, zoNodeReason::Silent);
        } else if (milliseconds >= m_limits.startMs) {
            lost.emplace_back(entry.first, zoNodeReason::NoAnswer);
        }
    }
    for (const auto& entry : lost)
        lose(entry.first, entry.second, {});
    for (const int key : overdue)
        lose(key, zoNodeReason::Silent, {});
}
