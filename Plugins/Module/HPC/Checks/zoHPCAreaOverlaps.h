#pragma once

#include <QRectF>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

// Finds rectangles that share area, among many in little more time than sorting them takes.
class zoHPCAreaOverlaps final
{
public:
    // The index of the later rectangle, and that of an earlier one.
    using Pair = std::pair<size_t, size_t>;
    // Whether two that share area count: the later one and the earlier one.
    using Claim = std::function<bool(size_t later, size_t earlier)>;

    // In the order of the later ones, each at most once as such. Those without area meet nobody. Of several at one
    // and the same place that count as a pair with the first of them, the first stands for all.
    static std::vector<Pair> find(
        const std::vector<QRectF>& areas, const Claim& claim = [](size_t, size_t) { return true; });
};
