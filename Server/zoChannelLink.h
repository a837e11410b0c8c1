#pragma once

#include "zoServerLink.h"

#include <QTimer>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

class zoServerChannel;

// The way of a server in a job to the relay of that job, which is rank 0. A thread of its own beats while the event
// loop turns, and ends the program when the relay is silent.
class zoChannelLink final : public zoServerLink
{
    Q_OBJECT

public:
    explicit zoChannelLink(std::unique_ptr<zoServerChannel> channel, QObject* parent = nullptr);
    // Leaves the job; ends the program at once when the others do not let it go.
    ~zoChannelLink() override;

    void open(const zoServerMessage& hello) override; // waits for all processes of the job
    void send(const zoServerMessage& message) override;
    void waitForSent(qint64 bytes) override;
    void expectWork(int milliseconds) override;
    void together(const std::function<void()>& act) override;

private:
    void receive(const QByteArray& bytes);
    void passBarrier();
    void deliver(const zoServerMessage& message);
    void run();
    void tick();

    std::unique_ptr<zoServerChannel> m_channel;
    QTimer m_turns;
    std::function<void()> m_act;        // after the barrier that is open; empty without one
    std::deque<zoServerMessage> m_held; // came after it: the next frame is not drawn before this one is shown
    std::atomic<int> m_turn{0};         // of the event loop
    std::atomic<int> m_patience{0};     // intervals that the loop may take
    std::atomic<bool> m_isSending{false}; // and the event loop waits for it
    std::mutex m_mutex;
    std::condition_variable m_end;
    bool m_isEnding = false;
    std::thread m_thread;
    // Of the thread alone.
    int m_lastTurn = 0;
    int m_lastArrived = 0; // of the channel's messages
    int m_silence = 0;     // intervals of the relay
    int m_turnsMissed = 0;
    int m_aloneFor = 0; // intervals
};
