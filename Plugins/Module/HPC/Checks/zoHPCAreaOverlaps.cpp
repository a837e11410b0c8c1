#include "zoHPCAreaOverlaps.h"

#include <algorithm>
#include <array>
#include <map>

namespace
{
bool shareArea(const QRectF& a, const QRectF& b)
{
    return a.left() < b.right() && b.left() < a.right() && a.top() < b.bottom() && b.top() < a.bottom();
}

// Rectangles in the order of their left edges, with those that still reach the current place by their upper edges.
class Sweep
{
public:
    Sweep(const std::vector<QRectF>& areas, const zoHPCAreaOverlaps::Claim& claim)
        : m_areas(areas), m_claim(claim)
    {
    }

    std::vector<zoHPCAreaOverlaps::Pair> pairs()
    {
        std::vector<size_t> sorted = withoutCopies();
        double tallest = 0.0;
        for (const size_t i : sorted)
            tallest = std::max(tallest, m_areas[i].height());
        std::stable_sort(sorted.begin(), sorted.end(),
                         [this](size_t a, size_t b) { return m_areas[a].left() < m_areas[b].left(); });
        std::multimap<double, size_t> active; // by upper edge
        std::multimap<double, std::multimap<double, size_t>::iterator> byRight;
        for (const size_t i : sorted) {
            const QRectF& area = m_areas[i];
            while (!byRight.empty() && byRight.begin()->first <= area.left()) {
                active.erase(byRight.begin()->second);
                byRight.erase(byRight.begin());
            }
            for (auto other = active.lower_bound(area.top() - tallest);
                 other != active.end() && other->first < area.bottom(); ++other) {
                if (shareArea(area, m_areas[other->second]))
                    add(std::max(i, other->second), std::min(i, other->second));
            }
            byRight.emplace(area.right(), active.emplace(area.top(), i));
        }
        return {m_partners.begin(), m_partners.end()};
    }

private:
    bool add(size_t later, size_t earlier)
    {
        if (m_partners.count(later) != 0)
            return true;
        if (!m_claim(later, earlier))
            return false;
        m_partners.emplace(later, earlier);
        return true;
    }

    std::vector<size_t> withoutCopies()
    {
        std::map<std::array<double, 4>, size_t> firsts;
        std::vector<size_t> result;
        for (size_t i = 0; i < m_areas.size(); ++i) {
            const QRectF& area = m_areas[i];
            if (area.isEmpty())
                continue;
            const auto place =
                firsts.emplace(std::array<double, 4>{area.x(), area.y(), area.width(), area.height()}, i);
            if (place.second || !add(i, place.first->second))
                result.push_back(i);
        }
        return result;
    }

    const std::vector<QRectF>& m_areas;
    const zoHPCAreaOverlaps::Claim& m_claim;
    std::map<size_t, size_t> m_partners; // the later one to an earlier one
};
} // namespace

std::vector<zoHPCAreaOverlaps::Pair> zoHPCAreaOverlaps::find(const std::vector<QRectF>& areas,
                                                             const Claim& claim)
{
    return Sweep(areas, claim).pairs();
}
