#pragma once

#include "zoClusterServiceContract.h"

#include <zoNodeClusterService.h>

// Sessions whose nodes are programs of their own on this machine, for the contract of cluster services.
namespace zoNodeSessionFactory
{
// They meet in a folder of their own.
zoClusterServiceContract::Factory rehearsals(zoNodeClusterService::Mpi mpi);
} // namespace zoNodeSessionFactory
