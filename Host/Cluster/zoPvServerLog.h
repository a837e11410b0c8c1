#pragma once

#include <zoMpirunLog.h>

#include <QString>
#include <QStringList>

// What a job of ParaView's server says on its standard streams, read as the state that it is in. Of pvserver 5.11
// below mpirun of Open MPI 4.1.
class zoPvServerLog final
{
public:
    enum class State {
        Starting,  // what it prints first is printed as well when the port is taken
        Accepting, // clients can connect
        Connected, // its one client has
        Left       // and is gone; the job ends, or hangs in the end of MPI
    };
    // How a job ended.
    enum class End {
        PortInUse,
        BadFile,
        ClientLeft, // it ends with its client
        NoClient,   // by itself, and nothing was wrong
        Lost
    };

    // Of the machines of the job, by rank; empty for this one.
    explicit zoPvServerLog(const QStringList& hosts = {});

    void add(const QString& line);

    State state() const { return m_state; }
    // Clients that did not know the secret.
    int refusedClients() const { return m_refused; }

    // Once all lines were added. Exit code of mpirun, negative when a signal ended it.
    End end(int exitCode) const;
    // Why, in the words of the programs; the last line that says something, or the exit code.
    QString reason(int exitCode) const;
    // The rank that mpirun names; -1 when it names none.
    int culprit() const;

private:
    zoMpirunLog m_mpirun;
    State m_state = State::Starting;
    int m_refused = 0;
    bool m_isPortTaken = false;
    bool m_isFileBad = false;
    QString m_lastError;
};
