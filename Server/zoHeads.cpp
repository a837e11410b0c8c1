#include "zoHeads.h"

#include <zoNodeReason.h>
#include <zoServerBeat.h>
#include <zoServerChild.h>
#include <zoServerHello.h>

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>

namespace
{
constexpr qint64 s_nanosecondsPerMicrosecond = 1000;

QJsonArray arrayOf(const QList<int>& keys)
{
    QJsonArray array;
    for (const int key : keys)
        array << key;
    return array;
}
} // namespace

zoHeads::zoHeads(QObject* parent) : QObject(parent)
{
    m_clock.start();
    connect(&m_beat, &QTimer::timeout, this, &zoHeads::beat);
    m_beat.start(zoServerBeat::Interval);
}

zoHeads::~zoHeads() = default;

void zoHeads::setLauncher(const zoLauncher& launcher, const QString& remoteProgram)
{
    m_launcher = launcher;
    m_remoteProgram = remoteProgram;
}

void zoHeads::launch(const std::vector<Server>& servers)
{
    std::vector<Head*> touched;
    for (const Server& server : servers) {
        Head* head = headOf(server);
        if (head == nullptr)
            continue;
        head->keys << server.key;
        head->queue.push_back(server);
        if (std::find(touched.begin(), touched.end(), head) == touched.end())
            touched.push_back(head);
    }
    for (Head* head : touched) {
        if (head->hasGreeted)
            launchQueue(*head);
    }
}

// Null when there can be none; the server is told as ended then.
zoHeads::Head* zoHeads::headOf(const Server& server)
{
    const auto known = m_numbers.constFind(server.network);
    if (known != m_numbers.constEnd())
        return &m_heads.at(*known);
    const int number = m_nextNumber++;
    QString reason;
    if (!startHead(number, server, reason)) {
        const int key = server.key;
        QMetaObject::invokeMethod(
            this, [this, key, reason] { emit ended(key, QLatin1String(zoNodeReason::HostName), reason); },
            Qt::QueuedConnection);
        return nullptr;
    }
    m_numbers.insert(server.network, number);
    return &m_heads.at(number);
}

bool zoHeads::startHead(int number, const Server& server, QString& reason)
{
    const QString program =
        server.gateways.isEmpty() ? QCoreApplication::applicationFilePath() : m_remoteProgram;
    const QStringList command =
        m_launcher.command(server.gateways, {program, QStringLiteral("head")}, reason);
    if (command.isEmpty())
        return false;
    Head& head = m_heads[number];
    head.child = std::make_unique<zoServerChild>(zoServerMessageReader::Start::AfterNoise);
    connect(head.child.get(), &zoServerChild::received, this,
            [this, number](const zoServerMessage& message) { receive(number, message); });
    connect(head.child.get(), &zoServerChild::ended, this, [this, number] {
        const auto it = m_heads.find(number);
        if (it != m_heads.end())
            lose(number, QLatin1String(zoNodeReason::Network), it->second.child->lastLine());
    });
    head.mpi = server.mpi;
    head.child->start(command);
    return true;
}

void zoHeads::tell(Head& head, const QByteArray& verb, QJsonObject object) const
{
    if (head.hasGreeted)
        head.child->send(zoServerMessage::of(verb, object));
}

void zoHeads::launchQueue(Head& head)
{
    QJsonArray servers;
    for (const Server& server : head.queue)
        servers << QJsonObject{{QStringLiteral("key"), server.key},
                               {QStringLiteral("command"), QJsonArray::fromStringList(server.command)},
                               {QStringLiteral("host"), server.host},
                               {QStringLiteral("program"), QJsonArray::fromStringList(server.program)}};
    head.queue.clear();
    tell(head, "LAUNCH", {{QStringLiteral("servers"), servers}, {QStringLiteral("mpi"), head.mpi}});
}

void zoHeads::send(const QList<int>& keys, const QByteArray& verb, const QJsonObject& body)
{
    for (auto& entry : m_heads) {
        QList<int> own;
        for (const int key : keys) {
            if (entry.second.keys.contains(key))
                own << key;
        }
        if (!own.isEmpty())
            tell(entry.second, "TO",
                 {{QStringLiteral("keys"), arrayOf(own)},
                  {QStringLiteral("verb"), QString::fromLatin1(verb)},
                  {QStringLiteral("body"), body}});
    }
}

void zoHeads::drop(const QList<int>& keys)
{
    for (auto& entry : m_heads) {
        QList<int> own;
        for (const int key : keys) {
            if (entry.second.keys.removeOne(key))
                own << key;
        }
        Head& head = entry.second;
        head.queue.erase(std::remove_if(head.queue.begin(), head.queue.end(),
                                        [&own](const Server& server) { return own.contains(server.key); }),
                         head.queue.end());
        if (!own.isEmpty())
            tell(head, "DROP", {{QStringLiteral("keys"), arrayOf(own)}});
    }
}

void zoHeads::draw(const QList<int>& keys, bool isEmpty)
{
    m_frameIsEmpty = isEmpty;
    m_frameKeys.clear();
    QSet<int> members;
    for (auto& entry : m_heads) {
        entry.second.waits.clear();
        for (const int key : keys) {
            if (entry.second.keys.contains(key))
                m_frameKeys[entry.first] << key;
        }
        if (m_frameKeys.contains(entry.first))
            members << entry.first;
    }
    m_barrier.begin(++m_frame, members);
    for (auto it = m_frameKeys.cbegin(); it != m_frameKeys.cend(); ++it)
        tell(m_heads.at(it.key()), "DRAW",
             {{QStringLiteral("frame"), double(m_frame)},
              {QStringLiteral("keys"), arrayOf(it.value())},
              {QStringLiteral("empty"), isEmpty}});
    if (members.isEmpty())
        QMetaObject::invokeMethod(
            this, [this] { emit drawn({}); }, Qt::QueuedConnection);
}

void zoHeads::receive(int number, const zoServerMessage& message)
{
    const auto it = m_heads.find(number);
    if (it == m_heads.end() || m_isEnding)
        return;
    Head& head = it->second;
    if (!head.hasGreeted) {
        const QString mismatch = zoServerHello::fromMessage(message).mismatch();
        if (!mismatch.isEmpty()) {
            lose(number, QLatin1String(zoNodeReason::Version), mismatch);
            return;
        }
        head.hasGreeted = true;
        tell(head, "BEAT", {});
        launchQueue(head);
        return;
    }
    const QJsonObject object = message.object();
    const int key = object.value(QLatin1String("key")).toInt();
    if (message.verb == "FROM") {
        if (head.keys.contains(key))
            emit received(key, object.value(QLatin1String("verb")).toString().toLatin1(),
                          object.value(QLatin1String("body")).toObject());
    } else if (message.verb == "ENDED") {
        if (!head.keys.removeOne(key))
            return;
        forget(key);
        emit ended(key, object.value(QLatin1String("reason")).toString(),
                   object.value(QLatin1String("detail")).toString());
    } else if (message.verb == "READY") {
        const QJsonObject waits = object.value(QLatin1String("waits")).toObject();
        for (auto wait = waits.begin(); wait != waits.end(); ++wait)
            head.waits.insert(wait.key().toInt(), qint64(wait.value().toDouble()));
        const quint64 frame = quint64(object.value(QLatin1String("frame")).toDouble());
        if (m_barrier.arrive(number, frame, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
            finishFrame();
    } else if (message.verb == "MEASURED" && number == m_measuring) {
        takeRates(object.value(QLatin1String("rates")).toObject());
    } else if (message.verb == "RESTARTING") {
        restart(head, object);
    } else if (message.verb == "NOTE") {
        emit note(object.value(QLatin1String("text")).toString());
    }
}

void zoHeads::takeRates(const QJsonObject& rates)
{
    for (auto rate = rates.begin(); rate != rates.end(); ++rate)
        m_rates.insert(rate.key(), rate.value());
    measureNext();
}

void zoHeads::restart(Head& head, const QJsonObject& object)
{
    QList<int> keys;
    const QJsonArray array = object.value(QLatin1String("keys")).toArray();
    for (const QJsonValue& key : array) {
        if (head.keys.contains(key.toInt()))
            keys << key.toInt();
    }
    if (!keys.isEmpty())
        emit restarting(keys);
}

void zoHeads::forget(int key)
{
    for (QList<int>& keys : m_frameKeys)
        keys.removeAll(key);
}

// All networks are ready: now they show it.
void zoHeads::finishFrame()
{
    QHash<int, qint64> waits;
    for (auto it = m_frameKeys.cbegin(); it != m_frameKeys.cend(); ++it) {
        const auto head = m_heads.find(it.key());
        if (head == m_heads.end())
            continue;
        tell(head->second, "GO",
             {{QStringLiteral("frame"), double(m_frame)},
              {QStringLiteral("keys"), arrayOf(it.value())},
              {QStringLiteral("empty"), m_frameIsEmpty}});
        // What a server waited for its network, and the network for the others.
        const qint64 network = m_barrier.waits().value(it.key());
        for (auto wait = head->second.waits.cbegin(); wait != head->second.waits.cend(); ++wait)
            waits.insert(wait.key(), wait.value() + network);
    }
    emit drawn(waits);
}

void zoHeads::measure(const QList<int>& keys, qint64 bytes, int milliseconds)
{
    m_rates = {};
    m_measures.clear();
    for (const auto& entry : m_heads) {
        QList<int> own;
        for (const int key : keys) {
            if (entry.second.keys.contains(key))
                own << key;
        }
        if (!own.isEmpty())
            m_measures.emplace_back(entry.first, QJsonObject{{QStringLiteral("keys"), arrayOf(own)},
                                                             {QStringLiteral("bytes"), double(bytes)},
                                                             {QStringLiteral("ms"), milliseconds}});
    }
    measureNext();
}

void zoHeads::measureNext()
{
    while (!m_measures.empty()) {
        const auto next = m_measures.front();
        m_measures.erase(m_measures.begin());
        const auto head = m_heads.find(next.first);
        if (head == m_heads.end())
            continue;
        m_measuring = next.first;
        tell(head->second, "MEASURE", next.second);
        return;
    }
    m_measuring = -1;
    emit measured(m_rates);
}

// All servers of a head are lost with it.
void zoHeads::lose(int number, const QString& reason, const QString& detail)
{
    const auto it = m_heads.find(number);
    if (it == m_heads.end())
        return;
    const QList<int> keys = it->second.keys;
    zoServerChild* child = it->second.child.release();
    m_heads.erase(it);
    m_numbers.remove(m_numbers.key(number));
    child->disconnect(this);
    child->kill();
    child->deleteLater();
    if (m_isEnding) {
        if (m_heads.empty())
            emit allEnded();
        return;
    }
    for (const int key : keys) {
        forget(key);
        emit ended(key, reason, detail);
    }
    if (m_barrier.leave(number, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
        finishFrame();
    if (number == m_measuring)
        measureNext();
}

void zoHeads::announceWork(int milliseconds)
{
    for (auto& entry : m_heads) {
        if (!entry.second.hasGreeted)
            continue;
        entry.second.child->send({"BEAT", QByteArray::number(milliseconds)});
        entry.second.child->flush();
    }
}

void zoHeads::end()
{
    if (m_isEnding)
        return;
    m_isEnding = true;
    std::vector<int> silent;
    for (auto& entry : m_heads) {
        if (entry.second.hasGreeted) {
            tell(entry.second, "QUIT", {});
            entry.second.child->closeInput();
        } else {
            silent.push_back(entry.first);
        }
    }
    for (const int number : silent)
        m_heads.at(number).child->kill();
    if (m_heads.empty())
        QMetaObject::invokeMethod(this, &zoHeads::allEnded, Qt::QueuedConnection);
}

void zoHeads::beat()
{
    std::vector<std::pair<int, const char*>> lost;
    m_endTicks += m_isEnding ? 1 : 0;
    for (auto& entry : m_heads) {
        Head& head = entry.second;
        head.ticks = head.child->takeSign() ? 0 : head.ticks + 1;
        if (m_isEnding) {
            if (m_endTicks * zoServerBeat::Interval >= EndMs)
                lost.emplace_back(entry.first, zoNodeReason::Silent);
        } else if (!head.hasGreeted) {
            if (head.ticks * zoServerBeat::Interval >= StartMs)
                lost.emplace_back(entry.first, zoNodeReason::NoAnswer);
        } else {
            if (head.child->bytesToSend() == 0)
                head.child->send({"BEAT", {}});
            if (head.ticks > zoServerBeat::TicksUntilLost)
                lost.emplace_back(entry.first, zoNodeReason::Silent);
        }
    }
    for (const auto& entry : lost)
        lose(entry.first, QLatin1String(entry.second), {});
}
