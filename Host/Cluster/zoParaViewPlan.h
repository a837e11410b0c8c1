#pragma once

#include <zoMpirunCommand.h>
#include <zoParaViewSetup.h>

#include <QSize>
#include <QString>
#include <QStringList>

// How a document becomes a job of ParaView's server: which machine each rank is started on and shows itself at, what
// mpirun is told, and what a person types to connect. Starts nothing.
struct zoParaViewPlan final
{
    static constexpr int DefaultPort = 11111;

    // From where clients are asked to come; the server listens on all addresses in any case.
    enum class Clients {
        AsTheWall, // from this machine when all of the wall stands here
        ThisMachine,
        Anywhere
    };

    // How the programs are started.
    struct Launch
    {
        QString mpirun = QStringLiteral("mpirun");
        QString program = QStringLiteral("pvserver");
        QString pvpython = QStringLiteral("pvpython"); // beside this program, for the check picture
        QString nodeServer = QStringLiteral("ZOKEClusterServer"); // looks at displays of other machines
        QString nodeServerHere;                                   // and of this one
        QStringList pattern;                                      // as zoLauncher::fromText() gives it
        int port = DefaultPort;
        Clients clients = Clients::AsTheWall;
        QString reverseClient; // the machine of the client that the server calls; empty when it waits for one
        int limitMs = 30000;   // until it accepts clients
    };

    static Launch defaultLaunch();
    // Of this machine's display, pixels; what this program shows on may be another one.
    static QSize desktopSize();

    // False, with a reason, for a document that the component cannot read.
    bool readSetup(const QString& document, zoParaViewSetup& read, QString& reason) const;

    QString launchHost(const zoParaViewSetup::Machine& machine) const; // empty for this machine
    QString displayOf(const zoParaViewSetup::Machine& machine) const;
    QStringList nodeIds() const;    // in the order of the machines
    QString nodeOf(int rank) const; // empty for none
    bool isForThisMachine() const;
    QString file() const; // that the server reads

    // One rank for each machine, in their order.
    zoMpirunCommand::Job job() const;
    // "cs://HOST:PORT"; of the first rank, which listens.
    QString serverUrl() const;
    QStringList connectCommand() const;

    Launch launch;
    QSize rehearsal; // empty for the real wall
    zoParaViewSetup setup;
    QString folder; // of the session
    int port = 0;
    quint32 connectId = 0;

private:
    bool isHere(const QString& host) const;
};
