#pragma once

#include <QtGlobal>

// How much a configuration may hold before it is refused: far beyond any cluster, but so that a small hostile
// text cannot use up time or memory. Host, module and tools refuse the same texts.
namespace zoClusterLimits
{
// Hosts of one text, whether they are written out or come from ranges and brackets: ten times the largest
// cluster there is.
constexpr int MaximumHosts = 1000000;
// Characters of the names of these hosts altogether.
constexpr qint64 MaximumNameCharacters = 32 * 1000 * 1000;

// Levels of the host tree, the master being the first, and elements nested in a document. The toolkit recurses
// over both (laying out an expanded tree view takes 321 bytes of stack for each level), and its parser's time
// grows with the square of the depth.
constexpr int MaximumDepth = 10240;
// Networks inside each other: a network and its host are a level each.
constexpr int MaximumNetworkDepth = (MaximumDepth - 1) / 2;

// Attributes of one element, ten times those that there are. The toolkit counts through them for each one.
constexpr int MaximumAttributes = 1000;

// Of one file or of standard input: more than a configuration of MaximumHosts needs.
constexpr qint64 MaximumFileBytes = 256 * 1024 * 1024;

// The levels of all rows of the tree together: text forms are indented by the level, so that many rows deep
// down would be little but blanks.
constexpr qint64 MaximumLevels = 100 * 1000 * 1000;
} // namespace zoClusterLimits
