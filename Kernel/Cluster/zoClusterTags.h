#pragma once

#include <QLatin1String>

// The element names of a configuration document and its version. Host, module and tools read them here.
namespace zoClusterTags
{
constexpr QLatin1String Cluster{"cluster"}; // the root

// The host tree.
constexpr QLatin1String Master{"master"};
constexpr QLatin1String Network{"network"};
constexpr QLatin1String Node{"node"};

// The display setup.
constexpr QLatin1String Projection{"projection"};
constexpr QLatin1String Display{"display"};
constexpr QLatin1String Window{"window"};
constexpr QLatin1String Viewport{"viewport"};

// Attributes of the root.
constexpr QLatin1String VersionAttribute{"version"};
constexpr QLatin1String BookingAttribute{"booking"};

// What is written. Documents without a version are of version 0 and are upgraded when they are read.
constexpr int Version = 1;
} // namespace zoClusterTags
