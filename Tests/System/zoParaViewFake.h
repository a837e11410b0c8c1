#pragma once

#include <zoParaViewService.h>

#include <QJsonObject>
#include <QTemporaryDir>

#include <memory>

// Sessions of ParaView's server whose programs are scripts that say what real ones said.
class zoParaViewFake final
{
public:
    zoParaViewFake();
    ~zoParaViewFake();

    // See fake-mpirun.sh; the jobs that come from now on.
    void setJobs(const QByteArray& lines);
    // What mpirun was called with, one job a line.
    QStringList calls() const;
    // Lets a job that waits in between go on.
    void letGoOn();

    std::unique_ptr<zoParaViewService> create() const;
    zoParaViewService::Launch launch() const;

    // What a client of "serving" jobs does: it connects, and leaves when its process ends.
    void connectClient(qint64 process) const;
    // A person's client knocks while the check picture is that of a "serving" job.
    void wantServer() const;
    // What the check picture was asked for last.
    QJsonObject pictureRequest() const;

    // The document with a window for each of its enabled nodes.
    static QString withWindows(const QString& document);
    static QString wallOf(const QStringList& hosts);

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_locks;
};
