#pragma once

#include <zoBaseService.h>

#include <QObject>
#include <QStringList>

// Runs cluster sessions for the configuration documents that it is given. All calls and signals on the
// user-interface thread; signals are emitted synchronously.
class ZO_KERNEL_EXPORT zoClusterService : public QObject, public zoBaseService
{
    Q_OBJECT

public:
    explicit zoClusterService(QObject* parent = nullptr);
    ~zoClusterService() override;

    // The configuration document that the service holds; may be empty.
    virtual QString currentConfig() = 0;

    virtual bool isRunning() = 0;

    // Ids of the nodes of the running session: the host name, with "_2", "_3", ... appended to later nodes of
    // the same name in document order. Empty when nothing runs.
    virtual QStringList runningNodes() = 0;

    // When true, a start goes on although a server already runs on a requested node.
    virtual void setAcceptRunningServers(bool accept) = 0;

    // When true, a start goes on although a node is likely short of memory.
    virtual void setAcceptLowMemory(bool accept) = 0;

    // Sets the configuration of the next start, or updates the running session.
    virtual void applyConfig(const QString& document) = 0;

    // Connects to all nodes; true when the session runs. May emit multipleServersFound() and
    // notEnoughMemoryFound() from inside the call and then fails unless the risk had been accepted before the
    // call. A start that fails or is aborted emits stopped(), so that whoever waits can offer to start again.
    virtual bool start() = 0;

    virtual void stop() = 0;

    // Abandons a connection attempt that is in progress.
    virtual void abort() = 0;

    // Diagnostic display modes of the running session.
    virtual void setShowTiles(bool on) = 0;
    virtual void setShowTestImage(bool on) = 0;

    // Three integers as text: bytes per second sent, bytes per second received, synchronisations per second.
    // Empty when nothing could be measured.
    virtual QStringList speedTest() = 0;

signals:
    void started();
    void stopped();
    void runningNodesChanged();
    // A configuration came from the service; the argument is the document.
    void configChanged(const QString& document);
    // The argument names the nodes concerned.
    void multipleServersFound(const QString& nodes);
    void notEnoughMemoryFound(const QString& nodes);
    // Percent from 0 to 100, or a negative value while the amount of work is unknown.
    void progressChanged(const QString& text, int percent);
    void progressFinished();
};
