#pragma once

#include <QString>

// What the targets share that read and write hosts text.
namespace zoFuzzHosts
{
// False for a text whose ranges have so many hosts that they are slow with sanitizers, and nothing else.
bool isSmall(const QString& text);

// Whether a text says all of the tree from which it was written. What the format cannot say: one network
// without hosts is an empty text. A host named "-" (from a token such as "-[a]") reads as the sign of a range,
// and a range from a name without a number ("host - 2") has no hosts in between.
bool isSaid(const QString& written, int networks);
} // namespace zoFuzzHosts
