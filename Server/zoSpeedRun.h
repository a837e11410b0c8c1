#pragma once

#include "zoSpeedStore.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QList>
#include <QObject>

#include <memory>

class zoServerGroup;
struct zoServerMessage;

// Measures what the way to each server of a group carries, one server after the other: blocks to it until it
// says that it has them, then blocks from it. Beats go on meanwhile.
class zoSpeedRun final : public QObject
{
    Q_OBJECT

public:
    // Of one direction of one server; whichever is reached first ends it.
    struct Limits
    {
        qint64 bytes = 0;
        int milliseconds = 0;
    };

    // For each of so many servers of a session.
    static Limits limitsFor(int servers, bool isRehearsal);

    explicit zoSpeedRun(zoServerGroup* group, QObject* parent = nullptr); // the group outlives it

    void start(const QList<int>& keys, const Limits& limits);
    // True when the message belongs to a run.
    bool take(int key, const zoServerMessage& message);
    void leave(int key); // it is gone
    void cancel();

signals:
    // "KEY": [bytes per second to it, from it]
    void finished(const QJsonObject& rates);

private:
    static constexpr int s_none = -1;

    void prepare();
    void measureNext();
    void sendOn(int key);

    zoServerGroup* m_group; // not owned
    QList<int> m_waiting;
    Limits m_limits;
    std::unique_ptr<zoSpeedStore> m_store; // while it runs
    QElapsedTimer m_clock;
    int m_current = s_none;
    bool m_isSending = false;
    qint64 m_sent = 0;
    double m_sendRate = 0;
    QJsonObject m_rates;
};
