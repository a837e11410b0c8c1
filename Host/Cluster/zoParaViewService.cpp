#include "zoParaViewService.h"

#include "zoControllerProcess.h"
#include "zoFolderSweeper.h"
#include "zoMpirunProcess.h"
#include "zoParaViewPicture.h"
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
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QUrl>

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

zoParaViewService::zoParaViewService(const Launch& launch, QObject* parent)
    : zoHostSessionService(parent)
    , m_nextLaunch(launch)
    , m_picture(new zoParaViewPicture(launch.pvpython, this))
    , m_wait([this] { return isAborted() || !m_broken.isEmpty(); })
{
    m_clock.start();
    connect(m_picture, &zoParaViewPicture::failed, this, [this](const QString& reason) {
        m_hasYielded = true;
        m_isPictureServed = false; // a person's client may have come first
        zoLog::error(tr("The check picture cannot be shown: %1").arg(reason));
    });
    connect(m_picture, &zoParaViewPicture::ended, this, [this] {
        m_hasYielded = true;
        zoLog::info(tr("The check picture is off"));
    });
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
    all.setFlag(Rehearses, !(state() == State::Idle ? m_nextRehearsal : m_plan.rehearsal).isEmpty());
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

// From the document to the file; false with m_broken.
bool zoParaViewService::prepare(const QString& document)
{
    endJob();
    m_probe.reset();
    m_broken.clear();
    QString reason;
    if (!m_plan.readSetup(document, m_plan.setup, reason))
        m_broken = reason;
    else if (!m_plan.setup.gateways.isEmpty())
        m_broken = tr("ParaView's server is one job and does not pass the gateway %1")
                       .arg(zoSessionRequest::listOf(m_plan.setup.gateways));
    else if (m_plan.setup.machines.empty())
        m_broken = tr("no window of an enabled node shows a plane");
    if (!m_broken.isEmpty())
        return false;
    m_reports.reset(m_plan.nodeIds());
    for (const zoParaViewSetup::Machine& machine : m_plan.setup.machines)
        m_reports.take({{QStringLiteral("id"), machine.node}, {QStringLiteral("tile"), machine.tile}});
    return makeFolder();
}

// Only the user reads it: a session of others could be joined with what stands in it. Each file has a folder of its own:
// what nodes have of an earlier one would be taken for it.
bool zoParaViewService::makeFolder()
{
    removeFolder();
    m_folder = std::make_unique<QTemporaryDir>(QDir::temp().filePath(QStringLiteral("zo-paraview-XXXXXX")));
    m_plan.folder = m_folder->path();
    if (m_folder->isValid())
        sweepLater({});
    QFile file(m_plan.file());
    if (m_folder->isValid() && file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
        file.write(m_plan.setup.pvx) == m_plan.setup.pvx.size() && file.flush())
        return true;
    m_broken = tr("the folder of the session cannot be made in %1: %2")
                   .arg(QDir::tempPath(), m_folder->isValid() ? file.errorString() : m_folder->errorString());
    return false;
}

// Once nothing runs that uses it.
void zoParaViewService::removeFolder()
{
    m_folder.reset();
    m_sweepers.clear();
}

void zoParaViewService::sweepLater(const QString& host)
{
    QString reason;
    const QStringList command =
        zoLauncher(m_plan.launch.pattern)
            .command(host.isEmpty() ? QStringList() : QStringList(host),
                     {QStringLiteral("rm"), QStringLiteral("-r"), QStringLiteral("-f"), sessionFolder()},
                     reason);
    m_sweepers.push_back(std::make_unique<zoFolderSweeper>(command));
}

bool zoParaViewService::connectSession(const Nodes& nodes, const Accepted& accepted)
{
    const QPointer<zoParaViewService> self(this);
    m_wait.takeQuit();
    m_plan = {};
    m_plan.launch = m_nextLaunch;
    m_plan.rehearsal = m_nextRehearsal;
    m_plan.connectId = 1 + QRandomGenerator::system()->bounded(s_connectIds);
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
    const QStringList ids = m_plan.nodeIds();
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
    for (const zoParaViewSetup::Machine& machine : m_plan.setup.machines) {
        const QString host = m_plan.launchHost(machine);
        if (!ids.contains(host))
            machines.push_back({host, {}});
        const auto known = std::find_if(machines.begin(), machines.end(),
                                        [&host](const auto& other) { return other.host == host; });
        if (!known->displays.contains(m_plan.displayOf(machine)))
            known->displays << m_plan.displayOf(machine);
        if (!ids[host].contains(machine.node))
            ids[host] << machine.node;
    }
    const int count = m_reports.order().size();
    m_probe = std::make_unique<zoParaViewProbe>(zoLauncher(m_plan.launch.pattern),
                                                zoParaViewProbe::Programs{m_plan.launch.program,
                                                                          m_plan.launch.nodeServer,
                                                                          m_plan.launch.nodeServerHere});
    connect(m_probe.get(), &zoParaViewProbe::answered, this,
            [this, self, ids, count, answered = 0](const QString& host) mutable {
                const QStringList nodes = ids.value(host);
                for (const QString& id : nodes) {
                    ++answered;
                    emit progressChanged(tr("Connected to %1").arg(id), answered * s_half / count);
                    if (!self)
                        return;
                }
                m_wait.wake();
            });
    connect(m_probe.get(), &zoParaViewProbe::bringsFolder, this, &zoParaViewService::sweepLater);
    emit progressChanged(tr("Connecting to %1 ...").arg(zoSessionRequest::listOf(m_reports.order())), 0);
    if (!self)
        return Step::Destroyed;
    if (!isAborted())
        m_probe->start(machines, m_plan.file());
    const zoSessionWait::Outcome outcome = m_wait.until([this] { return m_probe->isDone(); }, s_probeMs);
    if (outcome == zoSessionWait::Outcome::Destroyed || !self)
        return Step::Destroyed;
    m_probe->disconnect(this);
    setAborted(isAborted() || m_wait.takeQuit());
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
    for (const zoParaViewSetup::Machine& machine : m_plan.setup.machines) {
        if (known.contains(machine.node))
            continue;
        known << machine.node;
        const zoParaViewProbe::Finding finding = m_probe->finding(m_plan.launchHost(machine));
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
    for (const zoParaViewSetup::Machine& machine : m_plan.setup.machines) {
        const QString host = m_plan.launchHost(machine);
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
    for (m_plan.port = m_plan.launch.port; m_plan.port < m_plan.launch.port + PortTries; ++m_plan.port) {
        emit progressChanged(tr("ParaView's server starts on port %1 ...").arg(m_plan.port), s_half);
        if (!self)
            return Step::Destroyed;
        if (isAborted() || !launch())
            return Step::Failed;
        const zoSessionWait::Outcome outcome =
            m_wait.until([this] { return m_isEnded || m_log.state() != zoPvServerLog::State::Starting; },
                         m_plan.launch.limitMs);
        if (outcome == zoSessionWait::Outcome::Destroyed)
            return Step::Destroyed;
        setAborted(isAborted() || m_wait.takeQuit());
        if (isAborted())
            return Step::Failed;
        if (outcome != zoSessionWait::Outcome::Done) {
            m_broken =
                tr("ParaView's server did not accept clients within %1 s").arg(m_plan.launch.limitMs / 1000);
            return Step::Failed;
        }
        if (!m_isEnded) {
            emit progressChanged(tr("ParaView's server waits for a client"), s_complete);
            return self ? Step::Done : Step::Destroyed;
        }
        const QString reason = m_log.reason(m_exitCode);
        if (m_log.end(m_exitCode) != zoPvServerLog::End::PortInUse) {
            const QString node = m_plan.nodeOf(m_log.culprit());
            m_broken = m_log.end(m_exitCode) == zoPvServerLog::End::BadFile
                           ? tr("ParaView's server cannot read its file: %1").arg(reason)
                       : node.isEmpty() ? tr("ParaView's server ended: %1").arg(reason)
                                        : tr("ParaView's server ended on %1: %2").arg(node, reason);
            return Step::Failed;
        }
        zoLog::info(tr("Port %1 is in use").arg(m_plan.port));
    }
    m_broken = tr("the ports %1 to %2 are in use").arg(m_plan.launch.port).arg(m_plan.port - 1);
    return Step::Failed;
}

bool zoParaViewService::announce()
{
    const QPointer<zoParaViewService> self(this);
    m_running = m_plan.nodeIds();
    for (const QString& id : qAsConst(m_running)) {
        tellNode(id, QStringLiteral("running"), {});
        if (!self)
            return false;
    }
    for (const QString& note : qAsConst(m_plan.setup.notes))
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
    const QString version = m_probe->finding(m_plan.launchHost(m_plan.setup.machines.front())).version;
    zoLog::info(tr("Connect with ParaView %1: %2").arg(releaseOf(version), connectText()));
    if (!m_plan.launch.reverseClient.isEmpty() || !m_plan.isForThisMachine())
        return;
    const QString host = m_plan.launchHost(m_plan.setup.machines.front());
    zoLog::info(tr("From other machines: ssh -L %1:localhost:%1 %2. The port is open on all addresses all "
                   "the same; a firewall can close it.")
                    .arg(QString::number(m_plan.port), host.isEmpty() ? QSysInfo::machineHostName() : host));
}

QString zoParaViewService::serverUrl() const
{
    return m_running.isEmpty() ? QString() : m_plan.serverUrl();
}

QStringList zoParaViewService::connectCommand() const
{
    return m_running.isEmpty() ? QStringList() : m_plan.connectCommand();
}

QString zoParaViewService::connectText() const
{
    return connectCommand().join(QLatin1Char(' '));
}

bool zoParaViewService::hasClient() const
{
    return m_job != nullptr && m_log.state() == zoPvServerLog::State::Connected && !m_isPictureServed;
}

// False with m_broken for a job that cannot be.
bool zoParaViewService::launch()
{
    endJob();
    const zoMpirunCommand::Job job = m_plan.job();
    const zoMpirunCommand command(job);
    if (!command.errorString().isEmpty()) {
        m_broken = command.errorString();
        return false;
    }
    QMap<QString, QString> environment = command.environment();
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":0"));
    QStringList hosts;
    for (const zoMpirunCommand::Machine& machine : job.machines)
        hosts << machine.host;
    m_log = zoPvServerLog(hosts);
    m_isEnded = false;
    m_refusedClients = 0;
    m_job = new zoMpirunProcess(this);
    connect(m_job, &zoMpirunProcess::line, this, &zoParaViewService::addLine);
    connect(m_job, &zoMpirunProcess::ended, this, &zoParaViewService::jobEnded);
    m_job->start(m_plan.launch.mpirun, command.arguments(), environment);
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
    // Nobody waits for the end of MPI.
    if (m_log.state() == zoPvServerLog::State::Left) {
        jobEnded(0);
        return;
    }
    m_limit.stop();
    if (m_log.state() == zoPvServerLog::State::Connected) {
        m_ends.clear();
        m_isPictureServed = m_picture->isRunning();
        if (!m_isPictureServed)
            zoLog::info(tr("A client of ParaView is connected"));
    } else {
        zoLog::info(tr("ParaView's server waits for a client: %1").arg(connectText()));
    }
    const QPointer<zoParaViewService> self(this);
    emit connectionChanged();
    if (self)
        showPicture();
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
        if (!m_isPictureServed)
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
    if (!launch()) {
        lose(m_broken, -1);
        return;
    }
    m_limit.start(m_plan.launch.limitMs);
    emit connectionChanged();
}

void zoParaViewService::lose(const QString& reason, int rank)
{
    const QPointer<zoParaViewService> self(this);
    if (state() != State::Running)
        return;
    const QString id = m_plan.nodeOf(rank);
    if (!id.isEmpty()) {
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
    m_picture->end();
    endJob();
    m_running.clear();
    m_refusedChange.clear();
    m_locks.releaseAll();
    removeFolder();
}

// Of a document that changes nothing that ParaView's server was told, the session does not care.
bool zoParaViewService::mayChange(const QString& document)
{
    zoParaViewSetup setup;
    QString reason;
    if (!m_plan.readSetup(document, setup, reason)) {
        zoLog::error(tr("Configuration of the running cluster refused: %1").arg(reason));
        return false;
    }
    QString change;
    if (setup.pvx != m_plan.setup.pvx) {
        const QStringList nodes = m_plan.setup.changedNodes(setup);
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

void zoParaViewService::showContent()
{
    m_hasYielded = false;
    if (state() != State::Running)
        return;
    if (content() != Content::None && hasClient())
        zoLog::info(tr("The check picture waits until the client of ParaView has left"));
    // The server ends with this client, too, and comes again for the next one.
    m_picture->end();
    showPicture();
}

// Once the server waits for a client.
void zoParaViewService::showPicture()
{
    if (state() != State::Running || m_hasYielded || content() == Content::None ||
        m_log.state() != zoPvServerLog::State::Accepting || m_picture->isRunning())
        return;
    if (!m_plan.launch.reverseClient.isEmpty()) {
        zoLog::info(tr("There is no check picture while the server calls its client"));
        return;
    }
    const QString word = content() == Content::Tiles ? QStringLiteral("tiles") : QStringLiteral("test-image");
    QByteArray scene;
    QString reason;
    if (!zoSetupLibrary::writeScene(config(), word, scene, reason)) {
        zoLog::error(tr("The check picture cannot be shown: %1").arg(reason));
        return;
    }
    const QString host = m_plan.launchHost(m_plan.setup.machines.front());
    QUrl server;
    server.setScheme(QStringLiteral("cs"));
    server.setHost(host.isEmpty() ? QStringLiteral("localhost") : host);
    server.setPort(m_plan.port);
    m_picture->setDisplay(qEnvironmentVariable("DISPLAY", QStringLiteral(":0")));
    m_picture->show(content() == Content::Tiles ? zoParaViewPicture::Content::Tiles
                                                : zoParaViewPicture::Content::TestImage,
                    server, m_plan.connectId, scene);
}
