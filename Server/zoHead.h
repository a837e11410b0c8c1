#pragma once

#include "zoBarrier.h"
#include "zoServerGroup.h"
#include "zoServerLink.h"
#include "zoSpeedRun.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>

// Stands where a network is: starts the servers of the network, passes on what the controller and they have to
// say to each other, and keeps their frames in step.
//
// From the controller: LAUNCH {servers: [{key, command}]}, TO {keys, verb, body}, DROP {keys},
// DRAW {frame, keys}, GO {frame, keys}, MEASURE {keys, bytes, ms}, KILL {key, signal}, QUIT. To it: FROM {key,
// verb, body}, ENDED {key, reason, detail}, READY {frame, waits}, MEASURED {rates}, BYE.
class zoHead final : public QObject
{
    Q_OBJECT

public:
    explicit zoHead(std::unique_ptr<zoServerGroup> group, QObject* parent = nullptr);
    ~zoHead() override;

    // Begins; the program's event loop ends with the session.
    void open();

private:
    void obey(const zoServerMessage& message);
    void launch(const QJsonObject& object);
    void draw(const QJsonObject& object);
    void hear(int key, const zoServerMessage& message);
    void lose(int key, const QString& reason, const QString& detail);
    void tellReady();
    void end();

    zoServerLink m_link;
    std::unique_ptr<zoServerGroup> m_group;
    zoSpeedRun m_speed;
    zoBarrier m_barrier;
    QElapsedTimer m_clock;
    bool m_isEnding = false;
};
