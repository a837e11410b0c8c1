#pragma once

#include "zoBarrier.h"

#include <zoLauncher.h>
#include <zoServerMessage.h>

#include <QElapsedTimer>
#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <map>
#include <memory>

class zoServerChild;

// The heads of a session, one for each network, and by them the servers. A head is started when the first server
// of its network is, and its frames are kept in step with those of the other heads.
class zoHeads final : public QObject
{
    Q_OBJECT

public:
    struct Server
    {
        int key = 0;
        QString network;      // whose head starts it
        QStringList gateways; // hosts to the head, from the one that is reached from here; empty for here
        QStringList command;  // starts it from where its head is
        QString host;         // as its head reaches it; empty for the machine of the head
        QStringList program;  // on that machine
        // Its network runs on MPI: {agent, network}; empty for pipes. The first server of a network decides.
        QJsonObject mpi;
    };

    static constexpr int StartMs = 10000; // for the HELLO of a head
    static constexpr int EndMs = 800;     // between QUIT and the end by force

    explicit zoHeads(QObject* parent = nullptr);
    ~zoHeads() override;

    // How heads are started on other machines, and the name of the program there.
    void setLauncher(const zoLauncher& launcher, const QString& remoteProgram);

    // Each answers by HELLO or by ended(), later.
    void launch(const std::vector<Server>& servers);
    void send(const QList<int>& keys, const QByteArray& verb, const QJsonObject& body);
    // Lets servers go; nothing more is heard of them.
    void drop(const QList<int>& keys);

    // A frame of these servers; drawn() when all of them are ready, and then they show it. An empty one shows
    // nothing new.
    void draw(const QList<int>& keys, bool isEmpty);
    bool isDrawing() const { return m_barrier.isOpen(); }

    // One network after the other; measured() at the end.
    void measure(const QList<int>& keys, qint64 bytes, int milliseconds);

    // This program will be busy for so long: nobody is to take that for its end.
    void announceWork(int milliseconds);

    // Ends all servers and heads; allEnded() follows.
    void end();

signals:
    void received(int key, const QByteArray& verb, const QJsonObject& body);
    void ended(int key, const QString& reason, const QString& detail);
    // How long each server waited for the others, microseconds.
    void drawn(const QHash<int, qint64>& waits);
    // "KEY": [bytes per second to it, from it]
    void measured(const QJsonObject& rates);
    // They say HELLO again, or are told by ended().
    void restarting(const QList<int>& keys);
    void note(const QString& text);
    void allEnded();

private:
    struct Head
    {
        std::unique_ptr<zoServerChild> child;
        QJsonObject mpi;
        bool hasGreeted = false;
        int ticks = 0;             // of the beat since it said anything
        std::vector<Server> queue; // to be launched once it said hello
        QList<int> keys;
        QHash<int, qint64> waits;
    };
    using Heads = std::map<int, Head>;

    Head* headOf(const Server& server);
    bool startHead(int number, const Server& server, QString& reason);
    void tell(Head& head, const QByteArray& verb, QJsonObject object) const;
    void launchQueue(Head& head);
    void receive(int number, const zoServerMessage& message);
    void restart(Head& head, const QJsonObject& object);
    void takeRates(const QJsonObject& rates);
    void finishFrame();
    void measureNext();
    void lose(int number, const QString& reason, const QString& detail);
    void forget(int key);
    void beat();

    zoLauncher m_launcher;
    QString m_remoteProgram;
    Heads m_heads;
    QHash<QString, int> m_numbers; // of networks
    int m_nextNumber = 0;
    QTimer m_beat;
    QElapsedTimer m_clock;
    zoBarrier m_barrier; // of heads
    quint64 m_frame = 0;
    bool m_frameIsEmpty = false;
    QHash<int, QList<int>> m_frameKeys; // by head
    std::vector<std::pair<int, QJsonObject>> m_measures;
    int m_measuring = -1; // head
    QJsonObject m_rates;
    bool m_isEnding = false;
    int m_endTicks = 0;
};
