#include "zoSessionNetworks.h"

#include <QJsonArray>

int zoSessionNetworks::indexOf(const zoWallSetup& setup, const QString& nodeId)
{
    for (std::size_t i = 0; i < setup.networks.size(); ++i) {
        if (setup.networks[i].nodes.contains(nodeId))
            return int(i);
    }
    return -1;
}

const zoWallNetwork* zoSessionNetworks::networkOf(const zoWallSetup& setup, const QString& nodeId)
{
    const int index = indexOf(setup, nodeId);
    return index < 0 ? nullptr : &setup.networks[std::size_t(index)];
}

QStringList zoSessionNetworks::gatewayHosts(const zoWallSetup& setup, const zoWallNetwork* network)
{
    QStringList hosts;
    while (network != nullptr) {
        if (!network->gateway.isEmpty()) {
            const zoWallNode* gateway = setup.node(network->gateway);
            hosts.prepend(gateway != nullptr ? gateway->host : network->gateway);
        }
        network = network->parent >= 0 ? &setup.networks[std::size_t(network->parent)] : nullptr;
    }
    return hosts;
}

QJsonObject zoSessionNetworks::mpi(const zoWallNetwork* network, const QStringList& agent)
{
    if (network != nullptr && network->encrypted)
        return {};
    QJsonObject options;
    if (network != nullptr) {
        for (auto it = network->options.cbegin(); it != network->options.cend(); ++it)
            options.insert(it.key(), it.value());
    }
    return {{QStringLiteral("agent"), QJsonArray::fromStringList(agent)},
            {QStringLiteral("network"), options}};
}
