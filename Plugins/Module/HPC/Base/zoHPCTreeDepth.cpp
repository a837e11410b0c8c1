#include "zoHPCTreeDepth.h"

#include <zoClusterLimits.h>

#include <algorithm>
#include <cstddef>

#include <pthread.h>

namespace
{
// QTreeView::layout() was measured at 321 bytes of stack per expanded level, ~QTreeWidgetItem at 112 and the
// destruction of a DOM at 64 (Qt 5.15, x86-64).
constexpr std::size_t BytesPerLevel = 512;
// For what runs below and above these recursions.
constexpr std::size_t Reserve = 2 * 1024 * 1024;
// A stack of unknown size is taken for a small one.
constexpr std::size_t UnknownStack = 2 * 1024 * 1024;

// The whole stack, not what is left of it: who asks from deeper in the program must get the same answer, or a
// document passes one check and fails the next.
std::size_t stackSize()
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return UnknownStack;
    std::size_t size = 0;
    const bool known = pthread_attr_getstacksize(&attributes, &size) == 0;
    pthread_attr_destroy(&attributes);
    return known ? size : UnknownStack;
}
} // namespace

int zoHPCTreeDepth::limit()
{
    // Asking for the size costs a walk over the memory map of the process.
    thread_local const std::size_t size = stackSize();
    // A tiny stack still carries a usual cluster.
    const std::size_t usable = size > 2 * Reserve ? size - Reserve : size / 2;
    return int(qBound<std::size_t>(16, usable / BytesPerLevel, zoClusterLimits::MaximumDepth));
}
