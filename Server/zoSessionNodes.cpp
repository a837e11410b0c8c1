#include "zoSessionNodes.h"

#include <QJsonObject>

#include <algorithm>

namespace
{
// Two buffers of the window, the picture before it is turned and one more for depth, 4 bytes each.
constexpr qint64 s_bytesPerPixel = 16;

bool isAtTheSamePlace(const zoSessionNodes::Node& a, const zoSessionNodes::Node& b)
{
    return a.id == b.id && a.host == b.host && a.port == b.port;
}
} // namespace

const char* zoSessionNodes::word(State state)
{
    switch (state) {
    case State::Connecting:
        return "connecting";
    case State::Connected:
        return "connected";
    case State::Running:
        return "running";
    case State::Failed:
        return "failed";
    case State::Lost:
        return "lost";
    }
    return "";
}

std::vector<zoSessionNodes::Node> zoSessionNodes::fromJson(const QJsonArray& array)
{
    std::vector<Node> nodes;
    for (const QJsonValue& value : array) {
        const QJsonObject object = value.toObject();
        Node node;
        node.id = object.value(QLatin1String("id")).toString();
        node.host = object.value(QLatin1String("host")).toString();
        node.port = object.value(QLatin1String("port")).toInt();
        node.isHere = object.value(QLatin1String("here")).toBool();
        nodes.push_back(node);
    }
    return nodes;
}

QStringList zoSessionNodes::leaving(const std::vector<Node>& wanted) const
{
    QHash<QString, const Node*> places;
    for (const Node& node : wanted)
        places.insert(node.id, &node);
    QStringList ids;
    for (const auto& entry : m_nodes) {
        const Node* place = places.value(entry.first);
        if (place == nullptr || !isAtTheSamePlace(entry.second, *place))
            ids << entry.first;
    }
    return ids;
}

std::vector<zoSessionNodes::Node> zoSessionNodes::joining(const std::vector<Node>& wanted) const
{
    std::vector<Node> joining;
    std::copy_if(wanted.begin(), wanted.end(), std::back_inserter(joining),
                 [this](const Node& node) { return m_nodes.count(node.id) == 0; });
    return joining;
}

bool zoSessionNodes::add(const Node& node, bool rehearse, int network, int networks)
{
    Node& added = m_nodes[node.id];
    added = node;
    if (rehearse) {
        // Fewest nodes first, among the servers of its network.
        int count = 0;
        Server* least = nullptr;
        for (auto& entry : m_servers) {
            if (m_networks.value(entry.first) != network)
                continue;
            ++count;
            if (least == nullptr || entry.second.nodes.size() < least->nodes.size())
                least = &entry.second;
        }
        const int share = (MaximumProcesses - 1 - networks) / std::max(networks, 1);
        if (least != nullptr && count >= share) {
            least->nodes << node.id;
            added.server = least->key;
            return false;
        }
    }
    const int key = m_nextKey++;
    Server server;
    server.key = key;
    server.nodes << node.id;
    m_servers[key] = server;
    m_networks.insert(key, network);
    added.server = key;
    return true;
}

void zoSessionNodes::remove(const QString& id)
{
    const auto it = m_nodes.find(id);
    if (it == m_nodes.end())
        return;
    if (Server* own = server(it->second.server))
        own->nodes.removeAll(id);
    m_nodes.erase(it);
}

void zoSessionNodes::removeServer(int key)
{
    m_servers.erase(key);
    m_networks.remove(key);
    for (auto& entry : m_nodes) {
        if (entry.second.server == key)
            entry.second.server = -1;
    }
}

zoSessionNodes::Node* zoSessionNodes::node(const QString& id)
{
    const auto it = m_nodes.find(id);
    return it == m_nodes.end() ? nullptr : &it->second;
}

zoSessionNodes::Server* zoSessionNodes::server(int key)
{
    const auto it = m_servers.find(key);
    return it == m_servers.end() ? nullptr : &it->second;
}

QList<int> zoSessionNodes::keys() const
{
    QList<int> keys;
    for (const auto& entry : m_servers)
        keys << entry.first;
    return keys;
}

QStringList zoSessionNodes::shortOfMemory(const QStringList& order, const zoWallSetup& setup, qint64 base,
                                          qint64 available) const
{
    QStringList ids;
    if (base <= 0)
        return ids;
    QHash<QString, qint64> left; // by machine
    for (const QString& id : order) {
        const auto node = m_nodes.find(id);
        const auto server = node == m_nodes.end() ? m_servers.end() : m_servers.find(node->second.server);
        if (server == m_servers.end())
            continue;
        const zoServerHello& hello = server->second.hello;
        if (!left.contains(hello.host))
            left.insert(hello.host, available >= 0 ? available : hello.freeMemory);
        qint64 need = base;
        if (const zoWallNode* shown = setup.node(id)) {
            for (const zoWallWindow& window : shown->windows)
                need += s_bytesPerPixel * window.geometry.width() * window.geometry.height();
        }
        qint64& rest = left[hello.host];
        if (rest < 0)
            continue; // it does not say
        if (rest < need)
            ids << id;
        rest = std::max<qint64>(rest - need, 0);
    }
    return ids;
}
