#pragma once

#include "zoServerLink.h"

#include <QTimer>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

// The way to the program that started this one: its messages come from standard input, ours go to standard
// output. A thread of its own reads, writes and beats, so that long work does not look like a program that hangs, and
// ends the program when nobody is there any more and the event loop does not answer.
class zoPipeLink final : public zoServerLink
{
    Q_OBJECT

public:
    enum class Watch {
        EndOfFile, // whoever is at the other end may be silent for as long as it likes
        Beats      // from the first one on
    };

    explicit zoPipeLink(Watch watch, QObject* parent = nullptr);
    ~zoPipeLink() override;

    void open(const zoServerMessage& hello) override;
    void send(const zoServerMessage& message) override;
    void waitForSent(qint64 bytes) override;
    // Whether that would not wait.
    bool hasSent(qint64 bytes);
    // While held, nothing more is read than what came already: whoever sends waits.
    void setHeld(bool isHeld);

    void expectWork(int milliseconds) override;

private:
    void run();
    bool readSome();
    bool reads() const;
    void tick();
    void beAlone();
    void queue(const QByteArray& bytes);
    bool isSent(qint64 bytes) const; // m_sending is locked
    bool writeSome();
    void writeRest();
    void takeWishes();
    void wake();
    void deliver(const zoServerMessage& message);

    Watch m_watch;
    std::thread m_thread;
    int m_wake[2] = {-1, -1}; // wakes the thread; its end ends the thread
    std::mutex m_sending;
    std::condition_variable m_sent;
    std::deque<QByteArray> m_queue;
    qint64 m_queued = 0;
    QTimer m_turns;
    std::atomic<qint64> m_undelivered{0}; // bytes that wait for the event loop
    std::atomic<int> m_turn{0};           // of the event loop
    std::atomic<int> m_patience{0};       // intervals that the loop may take
    std::atomic<bool> m_isHeld{false};
    std::atomic<bool> m_isAlone{false}; // nobody reads what is written
    // Of the thread alone.
    class zoServerMessageReader* m_reader = nullptr;
    bool m_isWatching = false;
    bool m_isEnding = false;
    int m_written = 0;        // bytes of the first in the queue
    int m_silence = 0;        // intervals
    int m_allowedSilence = 0; // intervals, beyond what is usual
    int m_lastTurn = 0;       // of the event loop, as seen in the last interval
    int m_turnsMissed = 0;    // intervals
    int m_aloneFor = 0;       // intervals
};
