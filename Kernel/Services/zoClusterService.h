#pragma once

#include <zoBaseService.h>

#include <QFlags>
#include <QObject>
#include <QStringList>
#include <QVector>

// What a cluster service knows of one node of its session.
struct zoClusterNodeReport
{
    enum class State {
        Connecting,
        Running,
        Failed, // it did not start
        Lost    // it ran, and does not any more
    };

    QString id;
    State state = State::Connecting;
    QString reason;         // why it failed or was lost, for people
    QString version;        // of its program
    QStringList screens;    // "1920x1080+0+0"
    QString tile;           // what it shows
    qint64 freeMemory = -1; // bytes before the session; negative for unknown
    qint64 barrierWait =
        -1; // microseconds that it waited for the others in the last frame; negative for unknown
};

// Runs cluster sessions for the configuration documents that it is given. All calls and signals on the
// user-interface thread; signals are emitted synchronously.
class ZO_KERNEL_EXPORT zoClusterService : public QObject, public zoBaseService
{
    Q_OBJECT

public:
    enum Capability {
        ShowsTiles = 0x1,
        ShowsTestImage = 0x2,
        MeasuresSpeed = 0x4,
        JoinsWhileRunning = 0x8, // nodes come and go with the configuration of a running session
        ReportsLostNodes = 0x10, // and tells each node's state
        Rehearses = 0x20         // its session, running or next, keeps all nodes on this machine
    };
    Q_DECLARE_FLAGS(Capabilities, Capability)

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

    // What this service does beyond what every one must; nothing unless it says so.
    virtual Capabilities capabilities();

    // The nodes of the session or of the start that failed last, in the order of the document. Empty for a
    // service that does not look at single nodes.
    virtual QVector<zoClusterNodeReport> nodeReport();

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
    // What nodeReport() says of this node is new. A node that is lost leaves runningNodes(); losses within 50 ms
    // are one runningNodesChanged(), and the loss of all is stopped().
    void nodeStateChanged(const QString& id);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(zoClusterService::Capabilities)
