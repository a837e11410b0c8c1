#include "zoHPCTreeDepth.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>

#include <pthread.h>

namespace
{
// QTreeView::layout() was measured at 321 bytes of stack per expanded level, ~QTreeWidgetItem at 112 and the
// destruction of a DOM at 64 (Qt 5.15, x86-64).
constexpr std::size_t BytesPerLevel = 512;
// For what runs below and above these recursions.
constexpr std::size_t Reserve = 1024 * 1024;
// A stack of unknown size is taken for a small one.
constexpr std::size_t UnknownStack = 2 * 1024 * 1024;

std::size_t remainingStack()
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return UnknownStack;
    void* lowest = nullptr;
    std::size_t size = 0;
    const bool known = pthread_attr_getstack(&attributes, &lowest, &size) == 0;
    pthread_attr_destroy(&attributes);
    const char here = 0;
    const auto bottom = reinterpret_cast<std::uintptr_t>(lowest);
    const auto current = reinterpret_cast<std::uintptr_t>(&here);
    return known && current > bottom ? std::size_t(current - bottom) : UnknownStack;
}
} // namespace

int zoHPCTreeDepth::limit()
{
    const std::size_t remaining = remainingStack();
    // A tiny stack still carries a usual cluster.
    const std::size_t usable = remaining > 2 * Reserve ? remaining - Reserve : remaining / 2;
    return int(std::min<std::size_t>(std::max<std::size_t>(usable / BytesPerLevel, 16), INT_MAX));
}
