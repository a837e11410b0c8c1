#pragma once

#include "zoServerGroup.h"
#include "zoSessionFolder.h"

#include <zoMpirunCommand.h>
#include <zoMpirunLog.h>
#include <zoRankMessage.h>

#include <QMap>
#include <QTimer>

#include <map>
#include <memory>

class zoServerChild;

// Servers that are the ranks of one job of MPI, behind a relay that is rank 0 and runs where this program does. A job
// cannot grow or shrink: when its servers change, it ends and another one begins, and so it does when the relay or mpirun
// hangs, which is the fault of no server.
class zoMpiGroup final : public zoServerGroup
{
    Q_OBJECT

public:
    struct Job
    {
        QStringList relay; // program and arguments of rank 0
        QStringList agent; // opens a connection to a host that follows; empty for that of mpirun
        QMap<QString, QString> network;
    };

    struct Limits
    {
        int startMs = 10000; // for the HELLO of all servers
        int endMs = 600;     // between QUIT and the end by force
    };

    explicit zoMpiGroup(const Job& job, QObject* parent = nullptr);
    zoMpiGroup(const Job& job, const Limits& limits, QObject* parent = nullptr);
    ~zoMpiGroup() override;

    void add(const std::vector<Member>& members) override;
    void send(const QList<int>& keys, const zoServerMessage& message) override;
    qint64 bytesToSend(int key) const override;
    void remove(const QList<int>& keys) override;
    void removeAll() override;

signals:
    void note(const QString& text); // what is not honoured, in English
    // MPI cannot serve: mpirun takes no such job, or no server ever answered and none of them is to blame. Those that ran
    // were told as restarting. Nothing follows.
    void unusable(const QString& reason);

private:
    enum class State { Idle, Running, Ending };

    struct Server
    {
        Member member;
        int rank = 0;
        qint64 process = 0; // on its machine; 0 before its HELLO
        bool hasGreeted = false;
        // Of the relay's beat since it was heard of; before its HELLO of ours since the job was started.
        int ticks = 0;
    };

    void restartSoon();
    void restart();
    void startJob();
    zoMpirunCommand::Job jobOfServers();
    void endJob();
    void jobEnded();
    void replaceJob();
    void kill(qint64 process) const;
    void receive(const zoServerMessage& message);
    void hear(const zoRankMessage& inner);
    void takeSigns(const QList<int>& ranks);
    void lose(const QMap<int, QString>& details, const char* reason);
    void beat();
    void findLate();
    void giveUp(const QString& reason);
    int keyOf(int rank) const;

    Job m_job;
    Limits m_limits;
    zoSessionFolder m_folder; // what MPI keeps of a job
    std::map<int, Server> m_servers;
    std::unique_ptr<zoServerChild> m_child;
    zoMpirunLog m_log;
    qint64 m_relay = 0;   // its process; 0 before its HELLO
    int m_relayTicks = 0; // of the beat since anything came from the job
    QTimer m_beat;
    QTimer m_restart;
    QStringList m_notes; // that were told
    State m_state = State::Idle;
    bool m_wantsJob = false; // another one after the one that ends
    bool m_isRemovingAll = false;
    int m_endTicks = 0;
    int m_failures = 0; // jobs in a row that nobody is to blame for
    bool m_hasWorked = false;
};
