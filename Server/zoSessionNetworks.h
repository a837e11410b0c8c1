#pragma once

#include <zoWallSetup.h>

#include <QJsonObject>
#include <QStringList>

// Where the nodes of a wall are, and how they are reached.
namespace zoSessionNetworks
{
// The network of a node; -1 and null for a node in none.
int indexOf(const zoWallSetup& setup, const QString& nodeId);
const zoWallNetwork* networkOf(const zoWallSetup& setup, const QString& nodeId);

// From the host to the network, one behind the other; none for what the host reaches itself.
QStringList gatewayHosts(const zoWallSetup& setup, const zoWallNetwork* network);

// How the servers of a network are one job of MPI, for a head: {agent, network}; empty for pipes. MPI sends what it
// sends as it is: not where the configuration asks for encryption. `agent` opens a connection to a host.
QJsonObject mpi(const zoWallNetwork* network, const QStringList& agent);
} // namespace zoSessionNetworks
