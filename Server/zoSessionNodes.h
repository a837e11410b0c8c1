#pragma once

#include <zoServerHello.h>
#include <zoWallSetup.h>

#include <QHash>
#include <QJsonArray>
#include <QString>
#include <QStringList>

#include <map>
#include <vector>

// The nodes of a session and the servers that run them: who is where, and in which state. A wall has a server for
// each node; a rehearsal shares few servers among them.
class zoSessionNodes final
{
public:
    enum class State { Connecting, Connected, Running, Failed, Lost };

    struct Node
    {
        QString id;
        QString host;
        int port = 0;
        bool isHere = false; // its host is this machine
        State state = State::Connecting;
        QString reason; // word of zoNodeReason
        QString detail;
        bool inUse = false; // by another session, too
        int server = -1;    // key
    };

    struct Server
    {
        int key = 0;
        QStringList nodes; // ids
        zoServerHello hello;
        bool hasGreeted = false;
        QByteArray shown; // what its windows were opened for; empty for none
    };

    // In a rehearsal: processes of all kinds, this one included.
    static constexpr int MaximumProcesses = 16;
    static constexpr int MaximumRehearsedNetworks = 4;

    static const char* word(State state);

    // As hosts tell them: [{id, host, port, here}].
    static std::vector<Node> fromJson(const QJsonArray& array);

    // Those of the session that are not among the wanted ones, or under the same id somewhere else.
    QStringList leaving(const std::vector<Node>& wanted) const;
    // The wanted ones that the session does not have.
    std::vector<Node> joining(const std::vector<Node>& wanted) const;

    // Gives a node a server; true when that one is new. `network` tells rehearsed servers apart that have
    // different heads.
    bool add(const Node& node, bool rehearse, int network, int networks);
    void remove(const QString& id);
    void removeServer(int key); // its nodes stay, without a server

    Node* node(const QString& id);
    Server* server(int key);
    const std::map<QString, Node>& nodes() const { return m_nodes; }
    const std::map<int, Server>& servers() const { return m_servers; }
    std::map<QString, Node>& nodes() { return m_nodes; }
    QList<int> keys() const;

    // Those without the memory that they need: `base` bytes, and more for each pixel of their windows. Nodes of
    // one machine share its memory; the first ones in `order` get theirs. An `available` that is not negative
    // is what each machine has.
    QStringList shortOfMemory(const QStringList& order, const zoWallSetup& setup, qint64 base,
                              qint64 available) const;

private:
    std::map<QString, Node> m_nodes;
    std::map<int, Server> m_servers;
    QHash<int, int> m_networks; // of servers
    int m_nextKey = 0;
};
