#pragma once

#include "zoHostSessionService.h"
#include "zoNodeReports.h"
#include "zoParaViewPlan.h"
#include "zoPvServerLog.h"
#include "zoSessionWait.h"

#include <zoClusterNodeLocks.h>

#include <QElapsedTimer>
#include <QSize>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QTemporaryDir;
class zoFolderSweeper;
class zoMpirunProcess;
class zoParaViewPicture;
class zoParaViewProbe;

// The cluster service whose sessions are ParaView's server: one job of mpirun with a rank for each window of the
// configuration, to which the user's ParaView connects. The server ends with its client and is started again, until
// stop(). A running session keeps its document: what would move a window needs a start.
//
// start() handles events while it waits, as zoHostSessionService says, and nothing else here does.
class zoParaViewService final : public zoHostSessionService
{
    Q_OBJECT

public:
    static constexpr int PortTries = 8;

    using Clients = zoParaViewPlan::Clients;
    using Launch = zoParaViewPlan::Launch;

    explicit zoParaViewService(const Launch& launch, QObject* parent = nullptr);
    ~zoParaViewService() override; // ends a session without a signal

    QStringList runningNodes() override;
    QStringList speedTest() override { return {}; }
    Capabilities capabilities() override;
    QVector<zoClusterNodeReport> nodeReport() override;
    QString engineName() const override { return QStringLiteral("ParaView"); }

    // Of the next session.
    void setLaunch(const Launch& launch) { m_nextLaunch = launch; }
    // All windows of the next session stand on this machine's display, of this size in pixels.
    void setRehearsal(const QSize& desktop) { m_nextRehearsal = desktop; }

    // "cs://HOST:PORT"; empty when no session runs.
    QString serverUrl() const;
    quint32 connectId() const { return m_plan.connectId; }
    // What a person types to connect, and the same as words; empty when no session runs.
    QString connectText() const;
    QStringList connectCommand() const;
    // Whether a client is connected now that is not the check picture.
    bool hasClient() const;
    // What of a document that the running session refused needs a start; empty for nothing.
    QString refusedChange() const { return m_refusedChange; }

    void setAvailableMemory(qint64 bytes) { m_availableMemory = bytes; } // for tests: what each machine has
    void setLockDirectory(const QString& directory);                     // for tests: where sessions meet
    qint64 jobProcess() const;                                           // for tests
    QString sessionFolder() const;                                       // for tests

signals:
    // The server waits for a client, has one, or neither for a moment; or refusedChange() is new.
    void connectionChanged();

protected:
    bool connectSession(const Nodes& nodes, const Accepted& accepted) override;
    bool mayChange(const QString& document) override;
    void changeSession(const Nodes& nodes) override;
    void releaseSession() override;
    void wakeSession() override { m_wait.wake(); }
    void showContent() override;

private:
    enum class Step { Done, Failed, Destroyed };

    bool prepare(const QString& document);
    bool makeFolder();
    void removeFolder();
    void sweepLater(const QString& host);
    Step probe();
    Step launchOnFreePort();
    bool lookForMistakes();
    void findOtherSessions(const Nodes& nodes, QStringList& inUse);
    QStringList shortOfMemory() const;
    bool announce();
    void logConnection() const;

    void showPicture();
    bool launch();
    void endJob();
    void addLine(const QString& text);
    void jobEnded(int exitCode);
    void launchAgain();
    void lose(const QString& reason, int rank);
    void tellNode(const QString& id, const QString& state, const QString& reason);

    Launch m_nextLaunch;
    QSize m_nextRehearsal;
    zoParaViewPlan m_plan; // of the session
    QStringList m_running;
    zoNodeReports m_reports;
    zoClusterNodeLocks m_locks;
    qint64 m_availableMemory = -1;

    std::unique_ptr<QTemporaryDir> m_folder;
    // Of it and of its copies on nodes that do not share it.
    std::vector<std::unique_ptr<zoFolderSweeper>> m_sweepers;
    std::unique_ptr<zoParaViewProbe> m_probe;
    zoMpirunProcess* m_job = nullptr;
    zoPvServerLog m_log;
    QString m_broken; // why a start cannot go on
    bool m_isEnded = false;
    int m_exitCode = 0;
    int m_refusedClients = 0;
    QString m_refusedChange;

    zoParaViewPicture* m_picture;
    bool m_hasYielded = false;      // the picture, to a client or to an error
    bool m_isPictureServed = false; // the server's client is, or was at last, the picture

    zoSessionWait m_wait;
    QTimer m_limit; // of a server that starts again
    QElapsedTimer m_clock;
    QList<qint64> m_ends; // without a client, one after the other, ms
};
