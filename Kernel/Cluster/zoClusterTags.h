#pragma once

#include <QLatin1String>

// The element names of a configuration document and its version. Host, module and tools read them here.
namespace zoClusterTags
{
// The library's own constructor counts with strlen(), which clang evaluates at run time only.
template <int Size>
constexpr QLatin1String word(const char (&text)[Size])
{
    return QLatin1String(text, Size - 1);
}

constexpr QLatin1String Cluster = word("cluster"); // the root

// The host tree.
constexpr QLatin1String Master = word("master");
constexpr QLatin1String Network = word("network");
constexpr QLatin1String Node = word("node");

// The display setup.
constexpr QLatin1String Projection = word("projection");
constexpr QLatin1String Display = word("display");
constexpr QLatin1String Window = word("window");
constexpr QLatin1String Viewport = word("viewport");

// Attribute of a node: its host name.
constexpr QLatin1String NameAttribute = word("name");

// On which the servers of a network listen that names no port.
constexpr int DefaultServicePort = 8889;

// Attributes that the import of legacy configurations writes and no reader knows: of a viewport, and of a wall.
constexpr QLatin1String RotateAttribute = word("rotate");
constexpr QLatin1String OffsetXAttribute = word("offsetx");
constexpr QLatin1String OffsetYAttribute = word("offsety");
constexpr QLatin1String TileWidthAttribute = word("tilewidth");
constexpr QLatin1String TileHeightAttribute = word("tileheight");

// Attributes of the root.
constexpr QLatin1String VersionAttribute = word("version");
constexpr QLatin1String BookingAttribute = word("booking");

// What is written. Documents without a version are of version 0 and are upgraded when they are read.
constexpr int Version = 1;
} // namespace zoClusterTags
