#include "zoParaViewPlan.h"

#include "zoClusterDocument.h"
#include "zoControllerProcess.h"
#include "zoThisMachine.h"

#include <zoLauncher.h>
#include <zoSetupLibrary.h>

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSysInfo>

#include <algorithm>
#include <unistd.h>

zoParaViewPlan::Launch zoParaViewPlan::defaultLaunch()
{
    Launch standard;
    standard.nodeServerHere = zoControllerProcess::defaultProgram();
    QString reason;
    standard.pattern = zoLauncher::fromText(QLatin1String(zoLauncher::DefaultTemplate), reason);
    return standard;
}

QSize zoParaViewPlan::desktopSize()
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

bool zoParaViewPlan::isHere(const QString& host) const
{
    return !rehearsal.isEmpty() || zoThisMachine::isNamed(host);
}

QString zoParaViewPlan::launchHost(const zoParaViewSetup::Machine& machine) const
{
    return isHere(machine.host) ? QString() : machine.host;
}

// A login from elsewhere has no display in its environment, and the wall hangs on the first one.
QString zoParaViewPlan::displayOf(const zoParaViewSetup::Machine& machine) const
{
    if (!machine.display.isEmpty())
        return machine.display;
    const QString own = isHere(machine.host) ? qEnvironmentVariable("DISPLAY") : QString();
    return own.isEmpty() ? QStringLiteral(":0") : own;
}

QStringList zoParaViewPlan::nodeIds() const
{
    QStringList ids;
    for (const zoParaViewSetup::Machine& machine : setup.machines) {
        if (!ids.contains(machine.node))
            ids << machine.node;
    }
    return ids;
}

bool zoParaViewPlan::readSetup(const QString& document, zoParaViewSetup& read, QString& reason) const
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
    request.rehearsal = rehearsal;
    return zoSetupLibrary::read(document, request, read, reason);
}

bool zoParaViewPlan::isForThisMachine() const
{
    const bool isAllHere =
        std::all_of(setup.machines.begin(), setup.machines.end(),
                    [this](const zoParaViewSetup::Machine& machine) { return isHere(machine.host); });
    return launch.clients == Clients::ThisMachine || (launch.clients == Clients::AsTheWall && isAllHere);
}

// The first rank listens.
QString zoParaViewPlan::serverUrl() const
{
    if (!launch.reverseClient.isEmpty())
        return QStringLiteral("csrc://:%1").arg(port);
    const QString host = launchHost(setup.machines.front());
    return QStringLiteral("cs://%1:%2")
        .arg(isForThisMachine() ? QStringLiteral("localhost")
             : host.isEmpty()   ? QSysInfo::machineHostName()
                                : host)
        .arg(port);
}

QStringList zoParaViewPlan::connectCommand() const
{
    const QString url = serverUrl();
    return {QStringLiteral("paraview"), QStringLiteral("--server-url=") + url,
            QStringLiteral("--connect-id=%1").arg(connectId)};
}

QString zoParaViewPlan::nodeOf(int rank) const
{
    return rank >= 0 && rank < int(setup.machines.size()) ? setup.machines[std::size_t(rank)].node
                                                          : QString();
}

QString zoParaViewPlan::file() const
{
    return QDir(folder).filePath(QStringLiteral("wall.pvx"));
}

zoMpirunCommand::Job zoParaViewPlan::job() const
{
    QStringList program{launch.program, QStringLiteral("--pvx"), file(),
                        QStringLiteral("--server-port=%1").arg(port),
                        QStringLiteral("--connect-id=%1").arg(connectId)};
    if (!launch.reverseClient.isEmpty())
        program << QStringLiteral("--reverse-connection")
                << QStringLiteral("--client-host=") + launch.reverseClient;
    zoMpirunCommand::Job job;
    for (const zoParaViewSetup::Machine& machine : setup.machines) {
        const QString host = launchHost(machine);
        QMap<QString, QString> environment;
        if (!host.isEmpty())
            environment.insert(QStringLiteral("DISPLAY"), displayOf(machine));
        job.machines.push_back({host, 1, program, environment});
    }
    job.network = setup.network;
    job.sessionFolder = folder;
    job.isRoot = geteuid() == 0;
    job.inAllocation = zoMpirunCommand::isInAllocation();
    const QStringList agent = zoLauncher(launch.pattern).agent();
    if (!agent.isEmpty())
        job.agent = agent;
    return job;
}
