#pragma once

#include "zoClusterDocument.h"
#include "zoHostClusterService.h"

// What all cluster services of the host have in common: the document, the states of a session, what may be accepted,
// what is to be shown, and the order in which a start says what became of it.
//
// A session needs a well-formed configuration with at least one enabled node to start. While start() connects it
// handles events, so abort(), stop() and applyConfig() may be called then: the first two abandon the attempt, a
// configuration is taken over once the session runs. A start() from inside start() is refused without a signal,
// because the outer one still announces how it ends.
class zoHostSessionService : public zoHostClusterService
{
    Q_OBJECT

public:
    explicit zoHostSessionService(QObject* parent = nullptr);
    ~zoHostSessionService() override;

    QString currentConfig() override { return m_config; }
    bool isRunning() override { return m_state == State::Running; }
    void setAcceptRunningServers(bool accept) override { m_accepted.runningServers = accept; }
    void setAcceptLowMemory(bool accept) override { m_accepted.lowMemory = accept; }
    // A running session refuses a document that is not well-formed: it is logged and the session stays as it is.
    void applyConfig(const QString& document) override;
    bool start() override;
    void stop() override;
    void abort() override;
    void setShowTiles(bool on) override;
    void setShowTestImage(bool on) override;
    void setMemoryPerNode(qint64 bytes) override; // 0 asks nothing

    bool showsTiles() const { return m_showsTiles; }         // for tests
    bool showsTestImage() const { return m_showsTestImage; } // for tests

protected:
    enum class State { Idle, Starting, Running };
    enum class Content { None, Tiles, TestImage };
    using Nodes = std::vector<zoClusterDocument::Node>;
    struct Accepted
    {
        bool runningServers = false;
        bool lowMemory = false;
    };

    // Brings the session up to where it runs, and ends with announceStart() or fail(). What the user accepts meanwhile
    // counts for the next attempt.
    virtual bool connectSession(const Nodes& nodes, const Accepted& accepted) = 0;
    // Whether the running session can take a document over; says why not in the log.
    virtual bool mayChange(const QString& document);
    // The running session has a new document.
    virtual void changeSession(const Nodes& nodes) = 0;
    // Frees all that a session or an attempt holds.
    virtual void releaseSession() = 0;
    // Whoever waits in connectSession() is to look at isAborted().
    virtual void wakeSession() {}
    // content() has changed.
    virtual void showContent() {}

    State state() const { return m_state; }
    bool isAborted() const { return m_isAborted; }
    void setAborted(bool aborted) { m_isAborted = aborted; }
    Content content() const { return m_content; }
    const QString& config() const { return m_config; }
    const Accepted& accepted() const { return m_accepted; } // now
    qint64 memoryPerNode() const { return m_memoryPerNode; }

    // The questions of a start, which have to be answered before the next one; false when it ended with one.
    bool judge(const QStringList& inUse, const QStringList& shortOfMemory, const Accepted& accepted);
    // The session runs, with what runningNodes() says. False when it is over already.
    bool announceStart();
    // The end of every start that does not lead to a session; false for the caller to return.
    bool fail(const QString& reason);
    // The end of a session.
    void endSession();

private:
    bool readNodes(Nodes& nodes);
    void choose(Content content, bool on);

    QString m_config;
    QString m_startedConfig;
    State m_state = State::Idle;
    Accepted m_accepted;
    bool m_isAborted = false;
    bool m_showsTiles = false;
    bool m_showsTestImage = false;
    Content m_content = Content::None;
    qint64 m_memoryPerNode = DefaultMemoryPerNode;
};
