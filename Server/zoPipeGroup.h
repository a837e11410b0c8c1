#pragma once

#include "zoServerGroup.h"

#include <QTimer>

#include <deque>
#include <map>
#include <memory>

class zoServerChild;

// Servers that are children of this program or of its launcher, each at the other end of two pipes.
class zoPipeGroup final : public zoServerGroup
{
    Q_OBJECT

public:
    struct Limits
    {
        int startMs = 10000; // for the HELLO
        int endMs = 600;     // between QUIT and the end by force
    };

    explicit zoPipeGroup(QObject* parent = nullptr);
    explicit zoPipeGroup(const Limits& limits, QObject* parent = nullptr);
    ~zoPipeGroup() override;

    void add(const std::vector<Member>& members) override;
    void send(const QList<int>& keys, const zoServerMessage& message) override;
    qint64 bytesToSend(int key) const override;
    void remove(const QList<int>& keys) override;
    void removeAll() override;

private:
    struct Server
    {
        std::unique_ptr<zoServerChild> child;
        bool hasGreeted = false;
        bool isLeaving = false;
        int ticks = 0; // of the beat since it said anything, or since it was started or told to leave
    };

    void startSome();
    void startOne(const Member& member);
    void receive(int key, const zoServerMessage& message);
    void lose(int key, const char* reason, const QString& detail);
    void takeAway(int key);
    void beat();

    Limits m_limits;
    std::deque<Member> m_waiting; // to be started
    std::map<int, Server> m_servers;
    QTimer m_beat;
    bool m_isEnding = false;
};
