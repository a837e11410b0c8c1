#pragma once

#include "zoServerChannel.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QObject>
#include <QSemaphore>
#include <QThread>
#include <QWaitCondition>

#include <atomic>
#include <deque>

// The channel of a job of MPI. One thread does all that concerns MPI, so that a rank that hangs in it never stops the
// event loop. While nothing happens the thread sleeps, a millisecond at a time, and a tenth of that soon after something
// did: servers share their cores with what they draw.
class zoMpiChannel final : private QThread, public zoServerChannel
{
public:
    zoMpiChannel();
    ~zoMpiChannel() override; // closes, however long it takes

    bool open(const Handlers& handlers, QString& reason) override;
    int rank() const override { return m_rank; }
    int size() const override { return m_size; }
    void send(int rank, const QByteArray& message) override;
    qint64 bytesToSend() const override { return m_bytesToSend; }
    int arrived() const override { return m_arrived; }
    void enterBarrier() override;
    bool close(int limit) override;

private:
    struct Outgoing
    {
        int rank;
        QByteArray message;
    };
    class Job; // what the thread alone knows of

    void run() override;
    bool takeOrders(Job& job);
    void rest(QElapsedTimer& sinceEvent, bool isWaiting);
    void tell(std::function<void()> call);
    void fail(const QString& reason);

    Handlers m_handlers;
    QObject m_home; // calls of the handlers go to its thread and end with it
    int m_rank = 0;
    int m_size = 0;

    QMutex m_mutex; // guards what follows
    QWaitCondition m_orders;
    std::deque<Outgoing> m_outgoing;
    bool m_wantsBarrier = false;
    bool m_wantsEnd = false;

    std::atomic<qint64> m_bytesToSend{0};
    std::atomic<qint64> m_undelivered{0}; // bytes that wait for the event loop
    std::atomic<int> m_arrived{0};

    QSemaphore m_opened;
    QString m_reason; // of a failure to open
};
