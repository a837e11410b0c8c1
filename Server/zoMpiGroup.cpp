#include "zoMpiGroup.h"

#include <zoNodeReason.h>
#include <zoServerBeat.h>
#include <zoServerChild.h>
#include <zoServerHello.h>

#include <QFile>
#include <QSysInfo>

#include <algorithm>
#include <csignal>

#include <unistd.h>

namespace
{
// A job that ends without a culprit is tried again; more often and it would never end.
constexpr int s_mostFailures = 3;

// 0 for none.
qint64 starterOf(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}
} // namespace

zoMpiGroup::zoMpiGroup(const Job& job, QObject* parent) : zoMpiGroup(job, Limits(), parent) {}

zoMpiGroup::zoMpiGroup(const Job& job, const Limits& limits, QObject* parent)
    : zoServerGroup(parent), m_job(job), m_limits(limits), m_folder(job.relay.value(0))
{
    connect(&m_beat, &QTimer::timeout, this, &zoMpiGroup::beat);
    m_beat.start(zoServerBeat::Interval);
    m_restart.setSingleShot(true);
    connect(&m_restart, &QTimer::timeout, this, &zoMpiGroup::restart);
}

zoMpiGroup::~zoMpiGroup() = default;

void zoMpiGroup::add(const std::vector<Member>& members)
{
    for (const Member& member : members) {
        Server server;
        server.member = member;
        m_servers[member.key] = server;
    }
    restartSoon();
}

// Changes that come together make one job.
void zoMpiGroup::restartSoon()
{
    m_restart.start(0);
}

void zoMpiGroup::restart()
{
    if (m_isRemovingAll)
        return;
    QList<int> running;
    for (auto& entry : m_servers) {
        if (entry.second.hasGreeted)
            running << entry.first;
        entry.second.hasGreeted = false;
        entry.second.process = 0;
        entry.second.ticks = 0;
    }
    m_wantsJob = !m_servers.empty();
    if (m_state == State::Idle) {
        if (m_wantsJob)
            startJob();
    } else if (m_state == State::Running) {
        endJob();
    }
    if (!running.isEmpty())
        emit restarting(running);
}

zoMpirunCommand::Job zoMpiGroup::jobOfServers()
{
    zoMpirunCommand::Job job;
    job.machines.push_back({QString(), 1, m_job.relay});
    int rank = 0;
    for (auto& entry : m_servers) {
        entry.second.rank = ++rank;
        job.machines.push_back({entry.second.member.host, 1, entry.second.member.program});
    }
    job.network = m_job.network;
    job.sessionFolder = m_folder.path();
    if (!m_job.agent.isEmpty())
        job.agent = m_job.agent;
    job.isRoot = geteuid() == 0;
    job.inAllocation = zoMpirunCommand::isInAllocation();
    return job;
}

void zoMpiGroup::startJob()
{
    m_wantsJob = false;
    const zoMpirunCommand::Job job = jobOfServers();
    const zoMpirunCommand command(job);
    if (!command.errorString().isEmpty()) {
        giveUp(command.errorString());
        return;
    }
    const QStringList notes = command.notes();
    for (const QString& text : notes) {
        if (!m_notes.contains(text))
            emit note(text);
        m_notes << text;
    }
    QStringList hosts;
    for (const zoMpirunCommand::Machine& machine : job.machines)
        hosts << machine.host;
    m_log = zoMpirunLog(hosts);
    m_child = std::make_unique<zoServerChild>(zoServerMessageReader::Start::AfterNoise);
    connect(m_child.get(), &zoServerChild::received, this, &zoMpiGroup::receive);
    connect(m_child.get(), &zoServerChild::errorLine, this, [this](const QString& line) { m_log.add(line); });
    connect(m_child.get(), &zoServerChild::ended, this, &zoMpiGroup::jobEnded);
    connect(m_child.get(), &zoServerChild::sent, this, [this] {
        const std::map<int, Server> servers = m_servers;
        for (const auto& entry : servers)
            emit sent(entry.first);
    });
    m_state = State::Running;
    m_relay = 0;
    m_relayTicks = 0;
    m_child->setEnvironment(command.environment());
    m_child->start(QStringList(command.program()) + command.arguments());
}

void zoMpiGroup::endJob()
{
    m_state = State::Ending;
    m_endTicks = 0;
    // Before the relay says hello it does not read; mpirun passes on what ends it.
    m_child->send({"QUIT", {}});
    m_child->closeInput();
}

void zoMpiGroup::jobEnded()
{
    const bool wasRunning = m_state == State::Running;
    const QString lastLine = m_log.reason().isEmpty() ? m_child->lastLine() : m_log.reason();
    m_child.release()->deleteLater();
    m_state = State::Idle;
    if (m_isRemovingAll) {
        emit allEnded();
        return;
    }
    if (wasRunning) {
        QMap<int, QString> details;
        for (auto it = m_log.culprits().cbegin(); it != m_log.culprits().cend(); ++it) {
            if (keyOf(it.key()) >= 0)
                details.insert(keyOf(it.key()), it.value());
        }
        // Without MPI a server says itself what it lacks.
        if (!m_log.hasCause() && !m_hasWorked) {
            giveUp(lastLine);
            return;
        }
        if (details.isEmpty() && ++m_failures >= s_mostFailures) {
            for (const auto& entry : m_servers)
                details.insert(entry.first, lastLine);
        }
        lose(details, zoNodeReason::Ended);
        restartSoon();
    } else if (m_wantsJob) {
        startJob();
    }
}

int zoMpiGroup::keyOf(int rank) const
{
    const auto it = std::find_if(m_servers.begin(), m_servers.end(),
                                 [rank](const auto& entry) { return entry.second.rank == rank; });
    return it == m_servers.end() ? -1 : it->first;
}

void zoMpiGroup::receive(const zoServerMessage& message)
{
    if (message.verb == "HELLO") {
        m_relay = zoServerHello::fromMessage(message).processId;
        return; // it says nothing of a server
    }
    zoRankMessage inner;
    if (m_state != State::Running || !inner.unpack(message))
        return;
    if (message.verb == "SIGNS")
        takeSigns(inner.ranks);
    else if (message.verb == "RANK" && inner.ranks.size() == 1)
        hear(inner);
}

void zoMpiGroup::hear(const zoRankMessage& inner)
{
    const int key = keyOf(inner.ranks.constFirst());
    const auto it = m_servers.find(key);
    if (it == m_servers.end())
        return;
    if (!it->second.hasGreeted) {
        const zoServerHello hello = zoServerHello::fromMessage(inner.message);
        it->second.process = hello.processId;
        const QString mismatch = hello.mismatch();
        if (!mismatch.isEmpty()) {
            lose({{key, mismatch}}, zoNodeReason::Version);
            restartSoon();
            return;
        }
        it->second.hasGreeted = true;
        m_failures = 0;
        m_hasWorked = true;
    }
    it->second.ticks = 0;
    emit received(key, inner.message);
}

// Silence is counted in the intervals of the relay, by what it says of them: that waits behind what a server sends, for
// longer than an interval when that is much and the machine is busy, and is no silence of the others.
void zoMpiGroup::takeSigns(const QList<int>& ranks)
{
    QMap<int, QString> silent;
    for (auto& entry : m_servers) {
        Server& server = entry.second;
        if (!server.hasGreeted)
            continue;
        server.ticks = ranks.contains(server.rank) ? 0 : server.ticks + 1;
        if (server.ticks > zoServerBeat::TicksUntilLost)
            silent.insert(entry.first, {});
    }
    if (silent.isEmpty())
        return;
    // Their nodes are free when the loss is told.
    for (auto it = silent.cbegin(); it != silent.cend(); ++it)
        kill(m_servers.at(it.key()).process);
    lose(silent, zoNodeReason::Silent);
    restartSoon();
}

void zoMpiGroup::send(const QList<int>& keys, const zoServerMessage& message)
{
    if (m_state != State::Running)
        return;
    zoRankMessage inner;
    inner.message = message;
    for (const int key : keys) {
        const auto it = m_servers.find(key);
        if (it != m_servers.end() && it->second.hasGreeted)
            inner.ranks << it->second.rank;
    }
    if (!inner.ranks.isEmpty())
        m_child->send(inner.packed("RANKS"));
}

qint64 zoMpiGroup::bytesToSend(int key) const
{
    return m_child && m_servers.count(key) != 0 ? m_child->bytesToSend() : 0;
}

void zoMpiGroup::remove(const QList<int>& keys)
{
    bool isChange = false;
    for (const int key : keys)
        isChange = m_servers.erase(key) != 0 || isChange;
    if (isChange)
        restartSoon();
}

void zoMpiGroup::removeAll()
{
    m_isRemovingAll = true;
    m_servers.clear();
    if (m_state == State::Running)
        endJob();
    else if (m_state == State::Idle)
        QTimer::singleShot(0, this, &zoServerGroup::allEnded);
}

void zoMpiGroup::lose(const QMap<int, QString>& details, const char* reason)
{
    for (auto it = details.cbegin(); it != details.cend(); ++it)
        m_servers.erase(it.key());
    for (auto it = details.cbegin(); it != details.cend(); ++it)
        emit ended(it.key(), QLatin1String(reason), it.value());
}

void zoMpiGroup::beat()
{
    if (m_state == State::Ending) {
        // mpirun ends its ranks; when it is killed itself, they go with it.
        if (++m_endTicks * zoServerBeat::Interval >= m_limits.endMs) {
            kill(m_relay);
            m_child->kill();
        }
        return;
    }
    if (m_state != State::Running)
        return;
    if (m_child->bytesToSend() == 0)
        m_child->send({"BEAT", {}});
    m_relayTicks = m_child->takeSign() ? 0 : m_relayTicks + 1;
    if (m_relay != 0 && m_relayTicks > zoServerBeat::TicksUntilLost)
        replaceJob();
    else if (m_relay == 0 || m_relayTicks == 0)
        findLate(); // while the relay is silent, nothing can be heard of any server
}

// All that is heard of servers comes by way of the relay and of mpirun: when that hangs, none of them is to blame.
void zoMpiGroup::replaceJob()
{
    emit note(QStringLiteral(
                  "the job of MPI on %1 stopped answering (mpirun or its relay, rank 0): its servers are "
                  "started again")
                  .arg(QSysInfo::machineHostName()));
    restart();
    kill(m_relay);
    m_child->terminate();
}

// One that is stopped does not hear anything else. On other machines it goes with its job.
void zoMpiGroup::kill(qint64 process) const
{
    if (process > 0 && starterOf(process) == m_child->processId())
        ::kill(pid_t(process), SIGKILL);
}

// Of those that never said anything.
void zoMpiGroup::findLate()
{
    QMap<int, QString> late;
    for (auto& entry : m_servers) {
        Server& server = entry.second;
        if (!server.hasGreeted && ++server.ticks * zoServerBeat::Interval >= m_limits.startMs)
            late.insert(entry.first, {});
    }
    if (late.isEmpty())
        return;
    // Open MPI waits for ever for machines that cannot call back.
    if (!m_hasWorked && late.size() == int(m_servers.size())) {
        giveUp(QStringLiteral("no answer within %1 s").arg(m_limits.startMs / 1000));
        return;
    }
    lose(late, zoNodeReason::NoAnswer);
    restartSoon();
}

void zoMpiGroup::giveUp(const QString& reason)
{
    m_servers.clear();
    emit unusable(reason);
}
