#pragma once

#include "zoPipeLink.h"

#include <zoServerMessage.h>

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <deque>
#include <memory>

class zoServerChannel;

// Rank 0 of a job: passes on what the head, at the other end of its standard input and output, and the servers, which
// are the other ranks, have to say to each other.
//
// From the head: RANKS (a zoRankMessage for servers), QUIT. To it: HELLO once all ranks are here, RANK (a
// zoRankMessage of one server), SIGNS (the ranks that were heard of since the last one).
class zoMpiRelay final : public QObject
{
    Q_OBJECT

public:
    explicit zoMpiRelay(std::unique_ptr<zoServerChannel> channel, QObject* parent = nullptr);
    ~zoMpiRelay() override;

    // Begins; the program's event loop ends with the job. False, with a line on standard error, when there is no job.
    bool open();

private:
    void take(const zoServerMessage& message);
    void obeySome();
    void obey(const zoServerMessage& message);
    void pass(const QList<int>& ranks, const zoServerMessage& message);
    void hear(int rank, const QByteArray& bytes);
    void beat();
    void beatServers();
    void waitForHead();
    void quit();
    QList<int> servers() const;

    std::unique_ptr<zoServerChannel> m_channel;
    zoPipeLink m_link;
    std::deque<zoServerMessage> m_orders; // of the head, that wait for the servers
    QTimer m_wait;
    QTimer m_beat;
    QElapsedTimer m_sinceBeat; // of the servers
    QSet<int> m_heard;
    int m_barriers = 0; // to be passed, the one that is open included
};
