#include "zoHead.h"

#include "zoChannelLibrary.h"
#include "zoMpiGroup.h"
#include "zoPipeGroup.h"

#include <zoServerHello.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QStandardPaths>
#include <QSysInfo>

#include <algorithm>

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

QJsonArray arrayOf(const QList<int>& keys)
{
    QJsonArray array;
    for (const int key : keys)
        array << key;
    return array;
}

QStringList textsOf(const QJsonValue& value)
{
    QStringList texts;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& text : array)
        texts << text.toString();
    return texts;
}
} // namespace

zoHead::zoHead(QObject* parent) : QObject(parent), m_link(zoPipeLink::Watch::Beats)
{
    m_clock.start();
    connect(&m_link, &zoServerLink::received, this, &zoHead::obey);
    connect(&m_link, &zoServerLink::closed, this, &zoHead::end);
}

zoHead::~zoHead() = default;

void zoHead::open()
{
    m_link.open(zoServerHello::own().message());
}

void zoHead::makeGroup(const QJsonObject& mpi)
{
    m_group = mpi.isEmpty() ? nullptr : mpiGroup(mpi);
    if (!m_group)
        m_group = std::make_unique<zoPipeGroup>();
    connect(m_group.get(), &zoServerGroup::received, this, &zoHead::hear);
    connect(m_group.get(), &zoServerGroup::ended, this, &zoHead::lose);
    connect(m_group.get(), &zoServerGroup::restarting, this, &zoHead::restart);
    connect(m_group.get(), &zoServerGroup::allEnded, this, &zoHead::finish);
    m_speed = std::make_unique<zoSpeedRun>(m_group.get());
    connect(m_speed.get(), &zoSpeedRun::finished, this, [this](const QJsonObject& rates) {
        m_link.send(zoServerMessage::of("MEASURED", {{QStringLiteral("rates"), rates}}));
    });
}

// Null where there is no MPI: pipes serve as well, if not as fast.
std::unique_ptr<zoServerGroup> zoHead::mpiGroup(const QJsonObject& mpi)
{
    if (QStandardPaths::findExecutable(QStringLiteral("mpirun")).isEmpty()) {
        note(QStringLiteral("no mpirun on %1: its servers are kept in step by pipes")
                 .arg(QSysInfo::machineHostName()));
        return nullptr;
    }
    if (!zoChannelLibrary::isInstalled()) {
        note(QStringLiteral(
                 "the component for MPI is not installed on %1: its servers are kept in step by pipes")
                 .arg(QSysInfo::machineHostName()));
        return nullptr;
    }
    zoMpiGroup::Job job;
    job.relay = QStringList({QCoreApplication::applicationFilePath(), QStringLiteral("relay")});
    job.agent = textsOf(mpi.value(QLatin1String("agent")));
    const QJsonObject network = mpi.value(QLatin1String("network")).toObject();
    for (auto it = network.begin(); it != network.end(); ++it)
        job.network.insert(it.key(), it.value().toString());
    auto group = std::make_unique<zoMpiGroup>(job);
    connect(group.get(), &zoMpiGroup::note, this, &zoHead::note);
    connect(group.get(), &zoMpiGroup::unusable, this, &zoHead::fallBack, Qt::QueuedConnection);
    return group;
}

// A wall that is kept in step by pipes is better than none.
void zoHead::fallBack(const QString& reason)
{
    if (m_isEnding)
        return;
    note(QStringLiteral("MPI does not work from %1 (%2): its servers are kept in step by pipes")
             .arg(QSysInfo::machineHostName(), reason));
    m_group->disconnect(this);
    m_group.release()->deleteLater();
    makeGroup({});
    m_group->add(m_members);
}

void zoHead::note(const QString& text)
{
    m_link.send(zoServerMessage::of("NOTE", {{QStringLiteral("text"), text}}));
}

void zoHead::finish()
{
    m_link.send({"BYE", {}});
    QCoreApplication::exit();
}

void zoHead::obey(const zoServerMessage& message)
{
    if (m_isEnding)
        return;
    const QJsonObject object = message.object();
    if (message.verb == "LAUNCH") {
        launch(object);
    } else if (message.verb == "QUIT") {
        end();
    } else if (!m_group) {
        return; // there is nobody yet whom it could concern
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
        m_speed->start(keysOf(object), limits);
    }
}

void zoHead::launch(const QJsonObject& object)
{
    if (!m_group)
        makeGroup(object.value(QLatin1String("mpi")).toObject());
    std::vector<zoServerGroup::Member> members;
    const QJsonArray servers = object.value(QLatin1String("servers")).toArray();
    for (const QJsonValue& value : servers) {
        const QJsonObject server = value.toObject();
        zoServerGroup::Member member;
        member.key = server.value(QLatin1String("key")).toInt();
        member.command = textsOf(server.value(QLatin1String("command")));
        member.host = server.value(QLatin1String("host")).toString();
        member.program = textsOf(server.value(QLatin1String("program")));
        members.push_back(std::move(member));
    }
    m_members.insert(m_members.end(), members.begin(), members.end());
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
    // The controller may not have heard yet that they are started again.
    for (const int key : qAsConst(m_restarting)) {
        if (m_barrier.leave(key, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
            tellReady();
    }
}

void zoHead::hear(int key, const zoServerMessage& message)
{
    if (m_isEnding || m_speed->take(key, message))
        return;
    if (message.verb == "HELLO")
        m_restarting.remove(key);
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
    m_restarting.remove(key);
    m_members.erase(std::remove_if(m_members.begin(), m_members.end(),
                                   [key](const zoServerGroup::Member& member) { return member.key == key; }),
                    m_members.end());
    if (!reason.isEmpty())
        m_link.send(zoServerMessage::of("ENDED", {{QStringLiteral("key"), key},
                                                  {QStringLiteral("reason"), reason},
                                                  {QStringLiteral("detail"), detail}}));
    if (m_barrier.leave(key, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
        tellReady();
    m_speed->leave(key);
}

void zoHead::restart(const QList<int>& keys)
{
    if (m_isEnding)
        return;
    m_link.send(zoServerMessage::of("RESTARTING", {{QStringLiteral("keys"), arrayOf(keys)}}));
    for (const int key : keys) {
        m_restarting << key;
        if (m_barrier.leave(key, m_clock.nsecsElapsed() / s_nanosecondsPerMicrosecond))
            tellReady();
        m_speed->leave(key);
    }
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
    m_link.expectWork(1000);
    if (!m_group) {
        finish();
        return;
    }
    m_speed->cancel();
    m_group->removeAll();
}
