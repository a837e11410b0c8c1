#pragma once

// How deep the host tree may be before the toolkit's own recursions (laying out an expanded tree view,
// destroying a document) would overflow the stack of this thread.
namespace zoHPCTreeDepth
{
// In levels, the master being the first.
int limit();
} // namespace zoHPCTreeDepth
