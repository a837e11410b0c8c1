#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

// The call of mpirun, of Open MPI 4.1, that starts one job: each machine has its programs, and ranks count through
// the machines in order. Arguments are a list that no shell reads.
class zoMpirunCommand final
{
public:
    struct Machine
    {
        QString host; // what the launcher reaches it by; empty for this machine
        int processes = 1;
        QStringList program;                     // with its arguments
        QMap<QString, QString> environment = {}; // of these programs, beside their own
    };

    struct Job
    {
        std::vector<Machine> machines;
        // Of the network as a configuration has them: "network", "speed", "ibdevice", "ibport".
        QMap<QString, QString> network;
        // Private to the session: what MPI keeps of the job goes there, and with it.
        QString sessionFolder;
        // Opens a connection to a host that is given behind it.
        QStringList agent{QStringLiteral("ssh"), QStringLiteral("-o"), QStringLiteral("BatchMode=yes"),
                          QStringLiteral("-o"), QStringLiteral("ConnectTimeout=3")};
        bool isRoot = false;
        // mpirun takes the machines of the allocation it runs in (Slurm, PBS) and its way to them.
        bool inAllocation = false;
    };

    // Empty arguments for a job that cannot be; errorString() says in English why.
    explicit zoMpirunCommand(const Job& job);

    QString program() const { return QStringLiteral("mpirun"); }
    QStringList arguments() const { return m_arguments; }
    QMap<QString, QString> environment() const { return m_environment; } // beside that of this program
    QStringList notes() const { return m_notes; } // what of the network is not honoured, in English
    QString errorString() const { return m_error; }

    // Whether this program runs inside an allocation.
    static bool isInAllocation();

private:
    bool check(const Job& job);
    void addTransport(const QMap<QString, QString>& network, bool isLocal);
    void addInfiniband(const QString& device, const QString& port);
    void addEthernet(const QString& device, const QString& speed);
    void addParameter(const QString& name, const QString& value);

    QStringList m_arguments;
    QMap<QString, QString> m_environment;
    QStringList m_notes;
    QString m_error;
};
