#pragma once

#include <zoLauncher.h>

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>
#include <vector>

// Looks at machines before ParaView's server is launched on them: which version they have, whether each display can be
// opened, and whether the folder of the session is there. All machines at once, on each one command after the other.
class zoParaViewProbe final : public QObject
{
    Q_OBJECT

public:
    struct Machine
    {
        QString host;         // as a launcher reaches it; empty for this machine
        QStringList displays; // ":0.1"
    };

    // What was found of a machine.
    struct Finding
    {
        QString version; // "5.11.0"
        QString failure; // why it cannot be used; empty when it can
        QStringList notes;
        QStringList screens;    // as the server program tells them
        qint64 freeMemory = -1; // bytes
    };

    struct Programs
    {
        QString server;     // of ParaView
        QString nodeServer; // that opens a display; where it is missing, xwininfo does
        QString nodeServerHere;
        // Of each command: a machine that is off has ConnectTimeout of the launcher; a display may need its GL driver.
        int limitMs = 15000;
    };

    zoParaViewProbe(const zoLauncher& launcher, const Programs& programs, QObject* parent = nullptr);
    ~zoParaViewProbe() override; // ends what runs

    // Machines with different hosts. Where the file cannot be seen it is brought, in a folder of the same name that
    // only the user reads.
    void start(const std::vector<Machine>& machines, const QString& file);
    bool isDone() const { return m_pending == 0; }
    Finding finding(const QString& host) const { return m_findings.value(host); }

signals:
    void answered(const QString& host);
    // A folder is made on a machine that does not see it: from now on somebody has to remove it.
    void bringsFolder(const QString& host);

private:
    // What a command came to: exit code, or negative when it could not be started or took too long.
    struct Result
    {
        int code = 0;
        QByteArray output;
        QString lastError;
    };
    using Then = std::function<void(const Result&)>;

    void run(const QString& host, const QStringList& program, const QByteArray& input, const Then& then);
    void lookAtVersion(const Machine& machine);
    void lookAtDisplay(const Machine& machine, int index, bool hasServer);
    void lookAtFolder(const QString& host);
    void bringFile(const QString& host);
    void takeServerOutput(const QString& host, const QByteArray& output);
    void fail(const QString& host, const QString& reason);
    void finish(const QString& host);

    zoLauncher m_launcher;
    Programs m_programs;
    QString m_file;
    QHash<QString, Finding> m_findings;
    int m_pending = 0;
};
