#pragma once

// How deep the host tree may be: one number in every process with a stack of the usual size or a larger one.
// On a smaller stack, fewer: the toolkit's own recursions (laying out an expanded tree view) would overflow it.
namespace zoHPCTreeDepth
{
// In levels, the master being the first.
int limit();
} // namespace zoHPCTreeDepth
