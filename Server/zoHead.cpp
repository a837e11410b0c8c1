#include "zoHead.h"

#include <zoServerHello.h>

#include <QCoreApplication>
#include <QJsonArray>

namespace
{
constexpr qint64 s_nanosecondsPerMicrosecond = 1000;

QList<int> keysOf(const QJsonObject& object)
{
    QList<int> keys;
    const QJsonArray array = object.value(QLatin1String("keys")).toArray();
    for (const QJsonValue& key : array)
        keys << key.toInt();
    return keys;
}
} // namespace

zoHead::zoHead(std::unique_ptr<zoServerGroup> group, QObject* parent)
    : QObject(parent), m_link(zoServerLink::Watch::Beats), m_group(std::move(group)), m_speed(m_group.get())
{
    m_clock.start();
    connect(&m_link, &zoServerLink::received, this, &zoHead::obey);
    connect(&m_link, &zoServerLink::closed, this, &zoHead::end);
    connect(m_group.get(), &zoServerGroup::received, this, &zoHead::hear);
    connect(m_group.get(), &zoServerGroup::ended, this, &zoHead::lose);
    connect(m_group.get(), &zoServerGroup::allEnded, this, [this] {
        m_link.send({"BYE", {}});
        QCoreApplication::quit();
    });
    connect(&m_speed, &zoSpeedRun::finished, this, [this](const QJsonObject& rates) {
        m_link.send(zoServerMessage::of("MEASURED", {{QStringLiteral("rates"), rates}}));
    });
}

zoHead::~zoHead() = default;

void zoHead::open()
{
    m_link.open(zoServerHello::own().message());
}

void zoHead::obey(const zoServerMessage& message)
{
    if (m_isEnding)
        return;
    const QJsonObject object = message.object();
    if (message.verb == "LAUNCH") {
        launch(object);
    } else if (message.verb == "TO") {
        m_group->send(keysOf(object),
                      zoServerMessage::of(object.value(QLatin1String("verb")).toString().toLatin1(),
                                          object.value(QLatin1String("body")).toObject()));
    } else if (message.verb == "DROP") {
        const QList<int> keys = keysOf(object);
        for (const int key : keys)
            lose(key, {}, {});
        m_group->remove(keys);
    } else if (message.verb == "DRAW") {
        draw(object);
    } else if (message.verb == "GO") {
        m_group->send(keysOf(object), message);
    } else if (message.verb == "MEASURE") {
        zoSpeedRun::Limits limits;
        limits.bytes = qint64(object.value(QLatin1String("bytes")).toDouble());
        limits.milliseconds = object.value(QLatin1String("ms")).toInt();
        m_speed.start(keysOf(object), limits);
    } else if (message.verb == "QUIT") {
        end();
    }
}

void zoHead::launch(const QJsonObject& object)
{
    std::vector<zoServerGroup::Member> members;
    const QJsonArray servers = object.value(QLatin1String("servers")).toArray();
    for (const QJsonValue& value : servers) {
        const QJsonObject server = value.toObject();
        zoServerGroup::Member member;
        member.key = server.value(QLatin1String("key")).toInt();
        const QJsonArray words = server.value(QLatin1String("command")).toArray();
        for (const QJsonValue& word : words)
            member.command << word.toString();
        members.push_back(std::move(member));
    }
    m_group->add(members);
}

void zoHead::draw(const QJsonObject& object)
{
    const QList<int> keys = keysOf(object);
    const quint64 frame = quint64(object.value(QLatin1String("frame")).toDouble());
    m_barrier.begin(frame, QSet<int>(keys.begin(), keys.end()));
    m_group->send(
        keys, zoServerMessage::of("DRAW", {{QStringLiteral("frame"), double(frame)},
                                           {QStringLiteral("empty"), object.value(QLatin1String("empty"))}}));
}

void zoHead::hear(int key, const zoServerMessage& message)
{
    if (m_isEnding || m_speed.take(key, message))
        return;
    const QJsonObject body = message.object();
    if (message.verb == "READY") {
        const quint64 frame = quint64(body.value(QLatin1String("frame")).toDouble());
        if (m_barrier.arrive(key, frame, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
            tellReady();
        return;
    }
    m_link.send(zoServerMessage::of("FROM", {{QStringLiteral("key"), key},
                                             {QStringLiteral("verb"), QString::fromLatin1(message.verb)},
                                             {QStringLiteral("body"), body}}));
}

// An empty reason is for a server that was told to go.
void zoHead::lose(int key, const QString& reason, const QString& detail)
{
    if (m_isEnding)
        return;
    if (!reason.isEmpty())
        m_link.send(zoServerMessage::of("ENDED", {{QStringLiteral("key"), key},
                                                  {QStringLiteral("reason"), reason},
                                                  {QStringLiteral("detail"), detail}}));
    if (m_barrier.leave(key, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
        tellReady();
    m_speed.leave(key);
}

void zoHead::tellReady()
{
    QJsonObject waits;
    for (auto it = m_barrier.waits().cbegin(); it != m_barrier.waits().cend(); ++it)
        waits.insert(QString::number(it.key()), double(it.value()));
    m_link.send(zoServerMessage::of(
        "READY", {{QStringLiteral("frame"), double(m_barrier.round())}, {QStringLiteral("waits"), waits}}));
}

void zoHead::end()
{
    if (m_isEnding)
        return;
    m_isEnding = true;
    m_speed.cancel();
    m_link.expectWork(1000);
    m_group->removeAll();
}
