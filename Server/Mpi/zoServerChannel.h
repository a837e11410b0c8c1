#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

// Passes messages and barriers between the processes of one job, which count themselves by rank from 0. Messages of
// one rank to another arrive whole and in the order in which they were sent. The user-interface thread calls; the
// handlers are called on that thread, from its event loop.
class zoServerChannel
{
public:
    struct Handlers
    {
        std::function<void(int rank, const QByteArray& message)> received;
        // All ranks have entered the barrier as often as this one.
        std::function<void()> barrierPassed;
        // The job cannot go on; in English. Nothing else is called afterwards.
        std::function<void(const QString& reason)> failed;
    };

    virtual ~zoServerChannel() = default;

    // Joins the job: waits for all its processes, as long as it takes. False with a reason when there is none. Once.
    virtual bool open(const Handlers& handlers, QString& reason) = 0;

    virtual int rank() const = 0;
    virtual int size() const = 0;

    // To oneself as well. What is sent to a rank that is gone is lost. Any thread.
    virtual void send(int rank, const QByteArray& message) = 0;

    // Bytes that were sent and have not left yet. Any thread.
    virtual qint64 bytesToSend() const = 0;

    // How many messages came, also those that wait for the event loop. Any thread.
    virtual int arrived() const = 0;

    // Once until it passed.
    virtual void enterBarrier() = 0;

    // Leaves the job when what was sent is gone, and waits `limit` ms for that at most. False when it took longer: the
    // program then ends without unwinding, because the thread of the channel cannot be stopped.
    virtual bool close(int limit) = 0;
};

// What a component offers under the name "zoServerChannelCreate"; the caller owns the channel.
using zoServerChannelFactory = zoServerChannel* (*)();
