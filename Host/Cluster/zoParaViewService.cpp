#include "zoParaViewService.h"

#include "zoControllerProcess.h"
#include "zoMpirunProcess.h"
#include "zoParaViewProbe.h"
#include "zoSessionRequest.h"
#include "zoThisMachine.h"

#include <zoAvailableMemory.h>
#include <zoLog.h>
#include <zoMpirunCommand.h>
#include <zoSetupLibrary.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <unistd.h>

namespace
{
constexpr int s_complete = 100;
constexpr int s_half = 50; // of the progress: all machines were looked at
// Longer than the commands of a probe together, each of which has a limit of its own.
constexpr int s_probeMs = 120000;
constexpr int s_endsMs = 10000;
constexpr int s_endsTooMany = 3;
constexpr quint32 s_connectIds = 0x7fffffff;

QString releaseOf(const QString& version)
{
    return version.section(QLatin1Char('.'), 0, 1);
}
} // namespace

zoParaViewService::Launch zoParaViewService::defaultLaunch()
{
    Launch launch;
    launch.nodeServerHere = zoControllerProcess::defaultProgram();
    QString reason;
    launch.pattern = zoLauncher::fromText(QLatin1String(zoLauncher::DefaultTemplate), reason);
    return launch;
}

QSize zoParaViewService::desktopSize()
{
    static constexpr QSize s_fallback(1280, 720);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":0"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral("xwininfo"), {QStringLiteral("-root")});
    process.waitForFinished();
    static const QRegularExpression s_size(QStringLiteral(R"(-geometry (\d+)x(\d+))"));
    const QRegularExpressionMatch match = s_size.match(QString::fromUtf8(process.readAllStandardOutput()));
    return match.hasMatch() ? QSize(match.captured(1).toInt(), match.captured(2).toInt()) : s_fallback;
}

zoParaViewService::zoParaViewService(const Launch& launch, QObject* parent)
    : zoHostSessionService(parent)
    , m_launch(launch)
    , m_wait([this] { return isAborted() || !m_broken.isEmpty(); })
{
    m_clock.start();
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this,
            [this] { lose(tr("ParaView's server did not come back"), -1); });
}

zoParaViewService::~zoParaViewService()
{
    zoParaViewService::releaseSession();
}

QStringList zoParaViewService::runningNodes()
{
    return m_running;
}

zoClusterService::Capabilities zoParaViewService::capabilities()
{
    Capabilities all = ShowsTiles | ShowsTestImage | ReportsLostNodes;
    all.setFlag(Rehearses, !m_rehearsal.isEmpty());
    return all;
}

QVector<zoClusterNodeReport> zoParaViewService::nodeReport()
{
    return m_reports.all();
}

void zoParaViewService::setLockDirectory(const QString& directory)
{
    m_locks.setDirectory(directory);
}

qint64 zoParaViewService::jobProcess() const
{
    return m_job != nullptr ? m_job->processId() : 0;
}

QString zoParaViewService::sessionFolder() const
{
    return m_folder ? m_folder->path() : QString();
}

bool zoParaViewService::isHere(const QString& host) const
{
    return !m_rehearsal.isEmpty() || zoThisMachine::isNamed(host);
}

QString zoParaViewService::launchHost(const zoParaViewSetup::Machine& machine) const
{
    return isHere(machine.host) ? QString() : machine.host;
}

// A login from elsewhere has no display in its environment, and the wall hangs on the first one.
QString zoParaViewService::displayOf(const zoParaViewSetup::Machine& machine) const
{
    if (!machine.display.isEmpty())
        return machine.display;
    const QString own = isHere(machine.host) ? qEnvironmentVariable("DISPLAY") : QString();
    return own.isEmpty() ? QStringLiteral(":0") : own;
}

QStringList zoParaViewService::nodeIds() const
{
    QStringList ids;
    for (const zoParaViewSetup::Machine& machine : m_setup.machines) {
        if (!ids.contains(machine.node))
            ids << machine.node;
    }
    return ids;
}

bool zoParaViewService::readSetup(const QString& document, zoParaViewSetup& setup, QString& reason) const
{
    zoParaViewSetup::Request request;
    zoClusterDocument parsed;
    if (!parsed.parse(document, reason))
        return false;
    for (const zoClusterDocument::Node& node : parsed.enabledNodes()) {
        if (isHere(node.hostName) && !request.hostsHere.contains(node.hostName))
            request.hostsHere << node.hostName;
    }
    request.display = qEnvironmentVariable("DISPLAY");
    request.rehearsal = m_rehearsal;
    return zoSetupLibrary::read(document, request, setup, reason);
}

// From the document to the file; false with m_broken.
bool zoParaViewService::prepare(const QString& document)
{
    endJob();
    m_probe.reset();
    m_broken.clear();
    QString reason;
    if (!readSetup(document, m_setup, reason))
        m_broken = reason;
    else if (!m_setup.gateways.isEmpty())
        m_broken = tr("ParaView's server is one job and does not pass the gateway %1")
                       .arg(zoSessionRequest::listOf(m_setup.gateways));
    else if (m_setup.machines.empty())
        m_broken = tr("no window of an enabled node shows a plane");
    if (!m_broken.isEmpty())
        return false;
    m_reports.reset(nodeIds());
    for (const zoParaViewSetup::Machine& machine : m_setup.machines)
        m_reports.take({{QStringLiteral("id"), machine.node}, {QStringLiteral("tile"), machine.tile}});
    return makeFolder();
}

// Only the user reads it: a session of others could be joined with what stands in it.
bool zoParaViewService::makeFolder()
{
    if (!m_folder)
        m_folder =
            std::make_unique<QTemporaryDir>(QDir::temp().filePath(QStringLiteral("zo-paraview-XXXXXX")));
    QFile file(m_folder->filePath(QStringLiteral("wall.pvx")));
    if (m_folder->isValid() && file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
        file.write(m_setup.pvx) == m_setup.pvx.size() && file.flush())
        return true;
    m_broken = tr("the folder of the session cannot be made: %1")
                   .arg(m_folder->isValid() ? file.errorString() : m_folder->errorString());
    return false;
}

bool zoParaViewService::connectSession(const Nodes& nodes, const Accepted& accepted)
{
    const QPointer<zoParaViewService> self(this);
    m_wait.takeQuit();
    m_connectId = 1 + QRandomGenerator::system()->bounded(s_connectIds);
    m_ends.clear();
    QString document;
    // Once more for a configuration that came while connecting: nobody is connected yet.
    do {
        document = config();
        if (!prepare(document))
            return fail(m_broken);
        QStringList inUse;
        findOtherSessions(nodes, inUse);
        Step step = probe();
        if (step == Step::Done && !judge(inUse, shortOfMemory(), accepted))
            return false;
        if (step == Step::Done)
            step = launchOnFreePort();
        if (step == Step::Destroyed)
            return false;
        if (step != Step::Done || isAborted()) {
            emit progressFinished();
            return self && fail(isAborted() ? tr("aborted") : m_broken);
        }
    } while (document != config());
    emit progressFinished();
    if (!self)
        return false;
    return isAborted() ? fail(tr("aborted")) : announce();
}

void zoParaViewService::findOtherSessions(const Nodes& nodes, QStringList& inUse)
{
    m_locks.releaseAll();
    const QStringList ids = nodeIds();
    for (const zoClusterDocument::Node& node : nodes) {
        if (!ids.contains(node.id))
            continue;
        switch (m_locks.acquire(node.id, node.servicePort, true)) {
        case zoClusterNodeLocks::Outcome::Free:
            break;
        case zoClusterNodeLocks::Outcome::InUse:
        case zoClusterNodeLocks::Outcome::Shared:
            inUse << node.id;
            break;
        case zoClusterNodeLocks::Outcome::NoLocking:
            zoLog::error(tr("Other hosts on this machine cannot be seen: %1").arg(m_locks.errorString()));
            return;
        }
    }
}

// All machines at once; the log names those that cannot be used.
zoParaViewService::Step zoParaViewService::probe()
{
    const QPointer<zoParaViewService> self(this);
    std::vector<zoParaViewProbe::Machine> machines;
    QHash<QString, QStringList> ids;
    for (const zoParaViewSetup::Machine& machine : m_setup.machines) {
        const QString host = launchHost(machine);
        if (!ids.contains(host))
            machines.push_back({host, {}});
        const auto known = std::find_if(machines.begin(), machines.end(),
                                        [&host](const auto& other) { return other.host == host; });
        if (!known->displays.contains(displayOf(machine)))
            known->displays << displayOf(machine);
        if (!ids[host].contains(machine.node))
            ids[host] << machine.node;
    }
    const int count = m_reports.order().size();
    int answered = 0;
    m_probe = std::make_unique<zoParaViewProbe>(
        zoLauncher(m_launch.pattern),
        zoParaViewProbe::Programs{m_launch.program, m_launch.nodeServer, m_launch.nodeServerHere});
    connect(m_probe.get(), &zoParaViewProbe::answered, this, [&](const QString& host) {
        for (const QString& id : qAsConst(ids)[host]) {
            ++answered;
            emit progressChanged(tr("Connected to %1").arg(id), answered * s_half / count);
            if (!self)
                return;
        }
        m_wait.wake();
    });
    emit progressChanged(tr("Connecting to %1 ...").arg(zoSessionRequest::listOf(m_reports.order())), 0);
    if (!self)
        return Step::Destroyed;
    if (!isAborted())
        m_probe->start(machines, m_folder->filePath(QStringLiteral("wall.pvx")));
    const zoSessionWait::Outcome outcome = m_wait.until([this] { return m_probe->isDone(); }, s_probeMs);
    if (outcome == zoSessionWait::Outcome::Destroyed || !self)
        return Step::Destroyed;
    m_probe->disconnect(this);
    setAborted(isAborted() || m_wait.takeQuit());
    for (const auto& machine : machines) {
        if (!m_probe->finding(machine.host).sharesFolder)
            m_foldersElsewhere << machine.host;
    }
    if (isAborted())
        return Step::Failed;
    if (outcome != zoSessionWait::Outcome::Done) {
        m_broken = tr("the nodes did not answer");
        return Step::Failed;
    }
    const bool isFine = lookForMistakes();
    return !self ? Step::Destroyed : isFine ? Step::Done : Step::Failed;
}

// What the probe found; false when a machine cannot be used, or when they do not go together.
bool zoParaViewService::lookForMistakes()
{
    const QPointer<zoParaViewService> self(this);
    QStringList failed;
    QStringList known;
    QMap<QString, QStringList> releases;
    for (const zoParaViewSetup::Machine& machine : m_setup.machines) {
        if (known.contains(machine.node))
            continue;
        known << machine.node;
        const zoParaViewProbe::Finding finding = m_probe->finding(launchHost(machine));
        QJsonObject report{{QStringLiteral("id"), machine.node},
                           {QStringLiteral("version"), finding.version},
                           {QStringLiteral("memory"), double(finding.freeMemory)}};
        if (!finding.screens.isEmpty())
            report.insert(QStringLiteral("screens"), QJsonArray::fromStringList(finding.screens));
        m_reports.take(report);
        for (const QString& note : finding.notes)
            zoLog::info(tr("Node %1: %2").arg(machine.node, note));
        if (finding.failure.isEmpty()) {
            releases[releaseOf(finding.version)] << machine.node;
            continue;
        }
        failed << machine.node;
        zoLog::error(tr("Node %1 failed: %2").arg(machine.node, finding.failure));
        tellNode(machine.node, QStringLiteral("failed"), finding.failure);
        if (!self)
            return false;
    }
    if (!failed.isEmpty()) {
        m_broken = tr("%1 cannot be used").arg(zoSessionRequest::listOf(failed));
        return false;
    }
    if (releases.size() == 1)
        return true;
    QStringList texts;
    for (auto it = releases.begin(); it != releases.end(); ++it)
        texts << tr("%1 on %2").arg(it.key(), zoSessionRequest::listOf(it.value()));
    m_broken = tr("ParaView must be of one release on all nodes; there is %1").arg(texts.join(tr(" and ")));
    return false;
}

// Nodes of one machine share its memory: the first ones get theirs.
QStringList zoParaViewService::shortOfMemory() const
{
    QStringList nodes;
    QHash<QString, qint64> left;
    for (const zoParaViewSetup::Machine& machine : m_setup.machines) {
        const QString host = launchHost(machine);
        if (!left.contains(host)) {
            const qint64 found = m_probe->finding(host).freeMemory;
            left.insert(host, m_availableMemory >= 0        ? m_availableMemory
                              : found < 0 && host.isEmpty() ? zoAvailableMemory::bytes()
                                                            : found);
        }
        if (left.value(host) < 0)
            continue; // nobody knows
        if (left.value(host) >= memoryPerNode())
            left[host] -= memoryPerNode();
        else if (!nodes.contains(machine.node))
            nodes << machine.node;
    }
    return nodes;
}

// The server says that a port is taken only when it tries it.
zoParaViewService::Step zoParaViewService::launchOnFreePort()
{
    const QPointer<zoParaViewService> self(this);
    for (m_port = m_launch.port; m_port < m_launch.port + PortTries; ++m_port) {
        emit progressChanged(tr("ParaView's server starts on port %1 ...").arg(m_port), s_half);
        if (!self)
            return Step::Destroyed;
        if (isAborted() || !launch())
            return Step::Failed;
        const zoSessionWait::Outcome outcome =
            m_wait.until([this] { return m_isEnded || m_log.state() != zoPvServerLog::State::Starting; },
                         m_launch.limitMs);
        if (outcome == zoSessionWait::Outcome::Destroyed)
            return Step::Destroyed;
        setAborted(isAborted() || m_wait.takeQuit());
        if (isAborted())
            return Step::Failed;
        if (outcome != zoSessionWait::Outcome::Done) {
            m_broken =
                tr("ParaView's server did not accept clients within %1 s").arg(m_launch.limitMs / 1000);
            return Step::Failed;
        }
        if (!m_isEnded) {
            emit progressChanged(tr("ParaView's server waits for a client"), s_complete);
            return self ? Step::Done : Step::Destroyed;
        }
        const QString reason = m_log.reason(m_exitCode);
        if (m_log.end(m_exitCode) != zoPvServerLog::End::PortInUse) {
            const int rank = m_log.culprit();
            const QString node = rank >= 0 && rank < int(m_setup.machines.size())
                                     ? m_setup.machines[std::size_t(rank)].node
                                     : QString();
            m_broken = m_log.end(m_exitCode) == zoPvServerLog::End::BadFile
                           ? tr("ParaView's server cannot read its file: %1").arg(reason)
                       : node.isEmpty() ? tr("ParaView's server ended: %1").arg(reason)
                                        : tr("ParaView's server ended on %1: %2").arg(node, reason);
            return Step::Failed;
        }
        zoLog::info(tr("Port %1 is in use").arg(m_port));
    }
    m_broken = tr("the ports %1 to %2 are in use").arg(m_launch.port).arg(m_port - 1);
    return Step::Failed;
}

bool zoParaViewService::announce()
{
    const QPointer<zoParaViewService> self(this);
    m_running = nodeIds();
    for (const QString& id : qAsConst(m_running)) {
        tellNode(id, QStringLiteral("running"), {});
        if (!self)
            return false;
    }
    for (const QString& note : qAsConst(m_setup.notes))
        zoLog::info(note);
    const QStringList others = [this] {
        zoClusterDocument document;
        QString reason;
        document.parse(config(), reason);
        QStringList ids = zoSessionRequest::idsOf(document.enabledNodes());
        for (const QString& id : qAsConst(m_running))
            ids.removeAll(id);
        return ids;
    }();
    if (!others.isEmpty())
        zoLog::info(
            tr("ParaView does not run on nodes that show nothing: %1").arg(zoSessionRequest::listOf(others)));
    logConnection();
    const bool runs = announceStart();
    if (self)
        emit connectionChanged();
    if (self && runs)
        showContent();
    return self && runs;
}

void zoParaViewService::logConnection() const
{
    const QString version = m_probe->finding(launchHost(m_setup.machines.front())).version;
    zoLog::info(tr("Connect with ParaView %1: %2").arg(releaseOf(version), connectText()));
    if (!m_launch.reverseClient.isEmpty() || !isForThisMachine())
        return;
    const QString host = launchHost(m_setup.machines.front());
    zoLog::info(tr("From other machines: ssh -L %1:localhost:%1 %2. The port is open on all addresses all "
                   "the same; a firewall can close it.")
                    .arg(QString::number(m_port), host.isEmpty() ? QSysInfo::machineHostName() : host));
}

bool zoParaViewService::isForThisMachine() const
{
    const bool isAllHere =
        std::all_of(m_setup.machines.begin(), m_setup.machines.end(),
                    [this](const zoParaViewSetup::Machine& machine) { return isHere(machine.host); });
    return m_launch.clients == Clients::ThisMachine || (m_launch.clients == Clients::AsTheWall && isAllHere);
}

// The first rank listens.
QString zoParaViewService::serverUrl() const
{
    if (state() != State::Running && m_running.isEmpty())
        return {};
    if (!m_launch.reverseClient.isEmpty())
        return QStringLiteral("csrc://:%1").arg(m_port);
    const QString host = launchHost(m_setup.machines.front());
    return QStringLiteral("cs://%1:%2")
        .arg(isForThisMachine() ? QStringLiteral("localhost")
             : host.isEmpty()   ? QSysInfo::machineHostName()
                                : host)
        .arg(m_port);
}

QStringList zoParaViewService::connectCommand() const
{
    const QString url = serverUrl();
    if (url.isEmpty())
        return {};
    return {QStringLiteral("paraview"), QStringLiteral("--server-url=") + url,
            QStringLiteral("--connect-id=%1").arg(m_connectId)};
}

QString zoParaViewService::connectText() const
{
    return connectCommand().join(QLatin1Char(' '));
}

bool zoParaViewService::hasClient() const
{
    return m_job != nullptr && m_log.state() == zoPvServerLog::State::Connected;
}

// False with m_broken for a job that cannot be.
bool zoParaViewService::launch()
{
    endJob();
    QStringList program{
        m_launch.program, QStringLiteral("--pvx"), m_folder->filePath(QStringLiteral("wall.pvx")),
        QStringLiteral("--server-port=%1").arg(m_port), QStringLiteral("--connect-id=%1").arg(m_connectId)};
    if (!m_launch.reverseClient.isEmpty())
        program << QStringLiteral("--reverse-connection")
                << QStringLiteral("--client-host=") + m_launch.reverseClient;
    zoMpirunCommand::Job job;
    QStringList hosts;
    for (const zoParaViewSetup::Machine& machine : m_setup.machines) {
        const QString host = launchHost(machine);
        hosts << host;
        QMap<QString, QString> environment;
        if (!host.isEmpty())
            environment.insert(QStringLiteral("DISPLAY"), displayOf(machine));
        job.machines.push_back({host, 1, program, environment});
    }
    job.network = m_setup.network;
    job.sessionFolder = m_folder->path();
    job.isRoot = geteuid() == 0;
    job.inAllocation = zoMpirunCommand::isInAllocation();
    const QStringList agent = zoLauncher(m_launch.pattern).agent();
    if (!agent.isEmpty())
        job.agent = agent;
    const zoMpirunCommand command(job);
    if (!command.errorString().isEmpty()) {
        m_broken = command.errorString();
        return false;
    }
    QMap<QString, QString> environment = command.environment();
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":0"));
    m_log = zoPvServerLog(hosts);
    m_isEnded = false;
    m_refusedClients = 0;
    m_job = new zoMpirunProcess(this);
    connect(m_job, &zoMpirunProcess::line, this, &zoParaViewService::addLine);
    connect(m_job, &zoMpirunProcess::ended, this, &zoParaViewService::jobEnded);
    m_job->start(m_launch.mpirun, command.arguments(), environment);
    return true;
}

void zoParaViewService::endJob()
{
    if (m_job == nullptr)
        return;
    zoMpirunProcess* const job = m_job;
    m_job = nullptr;
    job->disconnect(this);
    job->end();
    // Its signal may be the one that led here.
    job->setParent(nullptr);
    job->deleteLater();
}

void zoParaViewService::addLine(const QString& text)
{
    const zoPvServerLog::State before = m_log.state();
    m_log.add(text);
    if (m_log.refusedClients() > m_refusedClients)
        zoLog::info(tr("A client without the connect id was refused"));
    m_refusedClients = m_log.refusedClients();
    m_wait.wake();
    if (state() != State::Running || m_log.state() == before)
        return;
    m_limit.stop();
    if (m_log.state() == zoPvServerLog::State::Connected) {
        m_ends.clear();
        zoLog::info(tr("A client of ParaView is connected"));
    } else {
        zoLog::info(tr("ParaView's server waits for a client: %1").arg(connectText()));
    }
    emit connectionChanged();
}

void zoParaViewService::jobEnded(int exitCode)
{
    m_isEnded = true;
    m_exitCode = exitCode;
    if (state() != State::Running) {
        m_wait.wake();
        return;
    }
    switch (m_log.end(exitCode)) {
    case zoPvServerLog::End::ClientLeft:
        zoLog::info(tr("The client of ParaView left"));
        launchAgain();
        return;
    case zoPvServerLog::End::PortInUse:
    case zoPvServerLog::End::NoClient: {
        m_ends << m_clock.elapsed();
        while (m_ends.constLast() - m_ends.constFirst() > s_endsMs)
            m_ends.removeFirst();
        if (m_ends.size() < s_endsTooMany) {
            launchAgain();
            return;
        }
        lose(tr("ParaView's server ended three times without a client: %1").arg(m_log.reason(exitCode)), -1);
        return;
    }
    case zoPvServerLog::End::BadFile:
    case zoPvServerLog::End::Lost:
        lose(m_log.reason(exitCode), m_log.culprit());
        return;
    }
}

// With the same port and the same secret, so that the client can come back as it came.
void zoParaViewService::launchAgain()
{
    const QPointer<zoParaViewService> self(this);
    if (!launch()) {
        lose(m_broken, -1);
        return;
    }
    m_limit.start(m_launch.limitMs);
    emit connectionChanged();
}

void zoParaViewService::lose(const QString& reason, int rank)
{
    const QPointer<zoParaViewService> self(this);
    if (state() != State::Running)
        return;
    if (rank >= 0 && rank < int(m_setup.machines.size())) {
        const QString id = m_setup.machines[std::size_t(rank)].node;
        zoLog::error(tr("Node %1 lost: %2").arg(id, reason));
        m_running.removeAll(id);
        tellNode(id, QStringLiteral("lost"), reason);
        if (!self || state() != State::Running)
            return;
    }
    zoLog::error(tr("Cluster session lost: %1").arg(reason));
    endSession();
}

void zoParaViewService::tellNode(const QString& id, const QString& state, const QString& reason)
{
    m_reports.take(
        {{QStringLiteral("id"), id}, {QStringLiteral("state"), state}, {QStringLiteral("detail"), reason}});
    emit nodeStateChanged(id);
}

void zoParaViewService::releaseSession()
{
    m_limit.stop();
    m_probe.reset();
    endJob();
    m_running.clear();
    m_refusedChange.clear();
    m_locks.releaseAll();
    const zoLauncher launcher(m_launch.pattern);
    for (const QString& host : qAsConst(m_foldersElsewhere)) {
        QString reason;
        const QStringList command = launcher.command(
            {host}, {QStringLiteral("rm"), QStringLiteral("-r"), QStringLiteral("-f"), sessionFolder()},
            reason);
        // Nobody waits for it: it ends by itself.
        if (!command.isEmpty())
            QProcess::startDetached(command.constFirst(), command.mid(1));
    }
    m_foldersElsewhere.clear();
    m_folder.reset();
}

// Of a document that changes nothing that ParaView's server was told, the session does not care.
bool zoParaViewService::mayChange(const QString& document)
{
    zoParaViewSetup setup;
    QString reason;
    if (!readSetup(document, setup, reason)) {
        zoLog::error(tr("Configuration of the running cluster refused: %1").arg(reason));
        return false;
    }
    QString change;
    if (setup.pvx != m_setup.pvx) {
        const QStringList nodes = m_setup.changedNodes(setup);
        change = nodes.isEmpty() ? tr("the eye separation")
                                 : tr("what %1 shows").arg(zoSessionRequest::listOf(nodes));
    }
    if (change != m_refusedChange) {
        m_refusedChange = change;
        if (!change.isEmpty())
            zoLog::error(tr("Configuration of the running cluster refused: ParaView's server would have to "
                            "start again for %1 (Restart session)")
                             .arg(change));
        emit connectionChanged();
    }
    return change.isEmpty();
}

void zoParaViewService::changeSession(const Nodes&) {}

void zoParaViewService::showContent() {}
