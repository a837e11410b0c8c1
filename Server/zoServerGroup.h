#pragma once

#include <zoServerMessage.h>

#include <QObject>
#include <QStringList>

#include <vector>

// The servers of one network, however they are reached. Each has a key, which the session gives.
class zoServerGroup : public QObject
{
    Q_OBJECT

public:
    struct Member
    {
        int key = 0;
        QStringList command; // starts it: program and arguments
        QString host;        // as the head reaches it; empty for the machine of the head
        QStringList program; // on that machine
    };

    explicit zoServerGroup(QObject* parent = nullptr);
    ~zoServerGroup() override;

    // Starts servers. Each says HELLO or is told by ended(); both come later.
    virtual void add(const std::vector<Member>& members) = 0;
    // Sends to those that said HELLO.
    virtual void send(const QList<int>& keys, const zoServerMessage& message) = 0;
    // Bytes that wait to be taken by a server.
    virtual qint64 bytesToSend(int key) const = 0;
    // Lets servers end in their own time, and ends those that do not. Nothing more is heard of them.
    virtual void remove(const QList<int>& keys) = 0;
    // The same for all; allEnded() follows, at once when there is none.
    virtual void removeAll() = 0;

signals:
    void received(int key, const zoServerMessage& message); // HELLO is the first
    void sent(int key);
    // A server ended or is lost, for a reason that zoNodeReason knows.
    void ended(int key, const QString& reason, const QString& detail);
    void allEnded();
    // Servers that ran are started anew, because they cannot be had without others that came or went: each says HELLO
    // again, or is told by ended().
    void restarting(const QList<int>& keys);
};
