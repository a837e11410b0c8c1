#pragma once

#include <zoServerMessage.h>

#include <QObject>

#include <functional>

// The way from a program of a session to the one that it obeys. Says that it lives while the event loop turns, however
// long a single piece of work takes that was announced.
class zoServerLink : public QObject
{
    Q_OBJECT

public:
    explicit zoServerLink(QObject* parent = nullptr);
    ~zoServerLink() override;

    // Says hello and begins to listen. Once.
    virtual void open(const zoServerMessage& hello) = 0;
    // Takes the message; it leaves as soon as the other side reads.
    virtual void send(const zoServerMessage& message) = 0;
    // Waits until no more than this is on its way, or nobody is there any more.
    virtual void waitForSent(qint64 bytes) = 0;

    // The event loop may not turn for so long because of what comes now; back to what is usual with the next
    // turn.
    virtual void expectWork(int milliseconds) = 0;

    // Acts at the same moment as all others that were told to by the same message: at once, unless the way has a
    // barrier of its own.
    virtual void together(const std::function<void()>& act);

signals:
    void received(const zoServerMessage& message); // beats are left out
    // Nobody is there any more; the program ends within a moment, by itself or by force.
    void closed();
};
