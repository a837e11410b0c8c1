#pragma once

#include <QString>

#include <memory>

class zoServerChannel;

// The component that knows MPI. It is loaded by programs that run in a job alone: everything else starts where there
// is no MPI.
namespace zoChannelLibrary
{
// Null, with a reason, when it is not there or cannot be loaded.
std::unique_ptr<zoServerChannel> create(QString& reason);
// Whether there is one, without loading it.
bool isInstalled();
} // namespace zoChannelLibrary
