#include "zoMpirunCommand.h"

#include <QRegularExpression>
#include <QtGlobal>

#include <algorithm>
#include <iterator>

namespace
{
// A link's speed by the word of the configuration, for what MPI gives each link to carry. Of an uplink the slower
// part counts, because a barrier waits for the last one.
struct Speed
{
    const char* word;
    int megabits; // per second
};
constexpr Speed s_speeds[] = {
    {"1g", 1000}, {"10g", 10000}, {"10g1g", 1000}, {"40g", 40000}, {"40g10g", 10000}};

// mpirun reads commas and colons in host names as its own; a name must not look like one of its options.
bool isHost(const QString& host)
{
    static const QRegularExpression s_host(QStringLiteral(R"(\A[A-Za-z0-9_][A-Za-z0-9_.-]*\z)"));
    return s_host.match(host).hasMatch();
}

bool isDevice(const QString& device)
{
    static const QRegularExpression s_device(QStringLiteral(R"(\A[A-Za-z0-9_][A-Za-z0-9_.-]*\z)"));
    return s_device.match(device).hasMatch();
}
} // namespace

zoMpirunCommand::zoMpirunCommand(const Job& job)
{
    if (!check(job))
        return;

    // When mpirun ends, so do all; a machine that is cut off is found by the connection to it.
    addParameter(QStringLiteral("odls_base_sigkill_timeout"), QStringLiteral("0"));
    addParameter(QStringLiteral("oob_tcp_keepalive_time"), QStringLiteral("1"));
    addParameter(QStringLiteral("oob_tcp_keepalive_intvl"), QStringLiteral("1"));
    addParameter(QStringLiteral("oob_tcp_keepalive_probes"), QStringLiteral("2"));
    if (!job.sessionFolder.isEmpty()) {
        addParameter(QStringLiteral("orte_tmpdir_base"), job.sessionFolder);
        addParameter(QStringLiteral("btl_vader_backing_directory"), job.sessionFolder);
    }

    const bool isLocal = std::all_of(job.machines.cbegin(), job.machines.cend(),
                                     [](const Machine& machine) { return machine.host.isEmpty(); });
    if (!isLocal && !job.inAllocation)
        addParameter(QStringLiteral("plm_rsh_agent"), job.agent.join(QLatin1Char(' ')));
    m_arguments << QStringLiteral("--bind-to") << QStringLiteral("none"); // a server has threads that draw
    // Several parts of a job on one machine ask for more than mpirun believes it has.
    m_arguments << QStringLiteral("--oversubscribe");
    if (isLocal) {
        // More servers than cores, maybe: none may keep one for itself.
        addParameter(QStringLiteral("mpi_yield_when_idle"), QStringLiteral("1"));
    }
    addTransport(job.network, isLocal);

    if (job.isRoot) {
        m_environment.insert(QStringLiteral("OMPI_ALLOW_RUN_AS_ROOT"), QStringLiteral("1"));
        m_environment.insert(QStringLiteral("OMPI_ALLOW_RUN_AS_ROOT_CONFIRM"), QStringLiteral("1"));
    }

    bool isFirst = true;
    for (const Machine& machine : job.machines) {
        if (!isFirst)
            m_arguments << QStringLiteral(":");
        isFirst = false;
        m_arguments << QStringLiteral("-np") << QString::number(machine.processes);
        // Without a name mpirun would take any of those that it is told of.
        const QString host = machine.host.isEmpty() && !isLocal ? QStringLiteral("localhost") : machine.host;
        if (!host.isEmpty())
            m_arguments << QStringLiteral("--host")
                        << QStringLiteral("%1:%2").arg(host).arg(machine.processes);
        for (auto it = machine.environment.cbegin(); it != machine.environment.cend(); ++it)
            m_arguments << QStringLiteral("-x") << it.key() + QLatin1Char('=') + it.value();
        m_arguments << machine.program;
    }
}

bool zoMpirunCommand::isInAllocation()
{
    return qEnvironmentVariableIsSet("SLURM_JOB_ID") || qEnvironmentVariableIsSet("PBS_NODEFILE");
}

bool zoMpirunCommand::check(const Job& job)
{
    if (job.machines.empty()) {
        m_error = QStringLiteral("no machine");
        return false;
    }
    for (const Machine& machine : job.machines) {
        if (!machine.host.isEmpty() && !isHost(machine.host))
            m_error = QStringLiteral("\"%1\" is no name that mpirun can reach").arg(machine.host);
        else if (machine.processes < 1)
            m_error = QStringLiteral("no process on \"%1\"").arg(machine.host);
        else if (machine.program.isEmpty())
            m_error = QStringLiteral("no program for \"%1\"").arg(machine.host);
        else if (machine.program.contains(QStringLiteral(":")))
            m_error = QStringLiteral("mpirun reads a \":\" alone as the end of the arguments");
        if (!m_error.isEmpty())
            return false;
    }
    // mpirun takes the agent apart at blanks.
    const auto hasBlank = [](const QString& argument) {
        return argument.isEmpty() || argument.contains(QLatin1Char(' '));
    };
    if (std::any_of(job.agent.cbegin(), job.agent.cend(), hasBlank)) {
        m_error = QStringLiteral("mpirun takes no agent with blanks in an argument: %1")
                      .arg(job.agent.join(QLatin1Char(' ')));
        return false;
    }
    return true;
}

void zoMpirunCommand::addTransport(const QMap<QString, QString>& network, bool isLocal)
{
    const QString type = network.value(QStringLiteral("network"));
    const QString speed = network.value(QStringLiteral("speed"));
    const QString device = network.value(QStringLiteral("ibdevice"));
    const QString port = network.value(QStringLiteral("ibport"));
    if (isLocal) {
        addParameter(QStringLiteral("pml"), QStringLiteral("ob1"));
        addParameter(QStringLiteral("btl"), QStringLiteral("self,vader"));
        return;
    }
    if (!device.isEmpty() && !isDevice(device)) {
        m_notes << QStringLiteral("\"%1\" is no name of a device: MPI chooses one").arg(device);
        return;
    }
    if (type == QLatin1String("infiniband"))
        addInfiniband(device, port);
    else
        addEthernet(device, speed);
}

void zoMpirunCommand::addInfiniband(const QString& device, const QString& port)
{
    addParameter(QStringLiteral("pml"), QStringLiteral("ucx"));
    bool ok = false;
    const int number = port.isEmpty() ? 1 : port.toInt(&ok);
    if (!port.isEmpty() && (!ok || number < 1)) {
        m_notes << QStringLiteral("\"%1\" is no number of a port: MPI chooses one").arg(port);
    } else if (!device.isEmpty()) {
        m_environment.insert(QStringLiteral("UCX_NET_DEVICES"),
                             QStringLiteral("%1:%2").arg(device).arg(number));
        m_arguments << QStringLiteral("-x") << QStringLiteral("UCX_NET_DEVICES");
    } else if (!port.isEmpty()) {
        m_notes << QStringLiteral("port %1 without the name of its device: MPI chooses one").arg(number);
    }
}

void zoMpirunCommand::addEthernet(const QString& device, const QString& speed)
{
    addParameter(QStringLiteral("pml"), QStringLiteral("ob1"));
    addParameter(QStringLiteral("btl"), QStringLiteral("self,vader,tcp"));
    if (!device.isEmpty())
        addParameter(QStringLiteral("btl_tcp_if_include"), device);
    const auto known = std::find_if(std::cbegin(s_speeds), std::cend(s_speeds),
                                    [&speed](const Speed& row) { return speed == QLatin1String(row.word); });
    if (known != std::cend(s_speeds))
        addParameter(QStringLiteral("btl_tcp_bandwidth"), QString::number(known->megabits));
    else if (!speed.isEmpty())
        m_notes << QStringLiteral("link speed \"%1\" says nothing to MPI").arg(speed);
}

void zoMpirunCommand::addParameter(const QString& name, const QString& value)
{
    m_arguments << QStringLiteral("--mca") << name << value;
}
