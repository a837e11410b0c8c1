#pragma once

#include "zoBarrier.h"
#include "zoPipeLink.h"
#include "zoServerGroup.h"
#include "zoSpeedRun.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>

#include <memory>
#include <vector>

// Stands where a network is: starts the servers of the network, passes on what the controller and they have to
// say to each other, and keeps their frames in step.
//
// From the controller: LAUNCH {servers: [{key, command, host, program}], mpi: {agent, network}}, TO {keys, verb, body}, DROP {keys},
// DRAW {frame, keys}, GO {frame, keys}, MEASURE {keys, bytes, ms}, KILL {key, signal}, QUIT. To it: FROM {key,
// verb, body}, ENDED {key, reason, detail}, RESTARTING {keys}, READY {frame, waits}, MEASURED {rates}, NOTE {text}, BYE.
class zoHead final : public QObject
{
    Q_OBJECT

public:
    explicit zoHead(QObject* parent = nullptr);
    ~zoHead() override;

    // Begins; the program's event loop ends with the session.
    void open();

private:
    void obey(const zoServerMessage& message);
    void makeGroup(const QJsonObject& mpi);
    std::unique_ptr<zoServerGroup> mpiGroup(const QJsonObject& mpi);
    void fallBack(const QString& reason);
    void launch(const QJsonObject& object);
    void draw(const QJsonObject& object);
    void hear(int key, const zoServerMessage& message);
    void lose(int key, const QString& reason, const QString& detail);
    void restart(const QList<int>& keys);
    void note(const QString& text);
    void tellReady();
    void end();
    void finish();

    zoPipeLink m_link;
    // Both from the first launch on.
    std::unique_ptr<zoServerGroup> m_group;
    std::unique_ptr<zoSpeedRun> m_speed;
    std::vector<zoServerGroup::Member> m_members; // all that were launched and did not go
    QSet<int> m_restarting;                       // did not say HELLO again
    zoBarrier m_barrier;
    QElapsedTimer m_clock;
    bool m_isEnding = false;
};
