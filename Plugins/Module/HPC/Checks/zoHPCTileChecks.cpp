#include "zoHPCTileChecks.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"

#include <algorithm>
#include <map>

namespace
{
using Kind = zoHPCProblem::Kind;
using Projection = zoHPCLayout::Projection;

// Who shows a tile, by tracked user.
struct Coverage
{
    struct Eyes
    {
        int left = 0;
        int right = 0;
    };
    std::map<QString, Eyes> users;

    bool isTwice() const
    {
        return std::any_of(users.begin(), users.end(),
                           [](const auto& user) { return user.second.left > 1 || user.second.right > 1; });
    }
    // The eyes that someone sees with although the other eye sees nothing.
    unsigned lonelyEyes() const
    {
        unsigned eyes = zoHPCLayout::NoEye;
        for (const auto& user : users) {
            if (user.second.left > 0 && user.second.right == 0)
                eyes |= zoHPCLayout::LeftEye;
            if (user.second.right > 0 && user.second.left == 0)
                eyes |= zoHPCLayout::RightEye;
        }
        return eyes;
    }
};

// The coverage of each projection by its own viewports and by those of the projections above it. Projections
// without viewports of their own share the coverage of the one above, so that a wall of many tiles behind
// many viewports costs no more than both together.
class CoverageOfAll
{
public:
    explicit CoverageOfAll(const zoHPCLayout& layout)
        : m_coverage(1), m_indices(layout.projections().size(), 0)
    {
        std::vector<std::vector<const zoHPCLayout::Viewport*>> viewports(layout.projections().size());
        for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
            if (viewport.projection != zoHPCLayout::None)
                viewports[static_cast<size_t>(viewport.projection)].push_back(&viewport);
        }
        for (size_t i = 0; i < viewports.size(); ++i) {
            const int parent = layout.projections()[i].parent;
            const size_t inherited = parent == zoHPCLayout::None ? 0 : m_indices[static_cast<size_t>(parent)];
            m_indices[i] = inherited;
            if (viewports[i].empty())
                continue;
            m_indices[i] = m_coverage.size();
            m_coverage.push_back(m_coverage[inherited]);
            for (const zoHPCLayout::Viewport* viewport : viewports[i]) {
                const QString user = viewport->window == zoHPCLayout::None
                                         ? QString()
                                         : layout.windows()[static_cast<size_t>(viewport->window)].user;
                Coverage::Eyes& eyes = m_coverage.back().users[user];
                eyes.left += (viewport->eyes & zoHPCLayout::LeftEye) != 0 ? 1 : 0;
                eyes.right += (viewport->eyes & zoHPCLayout::RightEye) != 0 ? 1 : 0;
            }
        }
    }

    const Coverage& of(size_t projection) const { return m_coverage[m_indices[projection]]; }

private:
    std::vector<Coverage> m_coverage; // the first one is nobody's
    std::vector<size_t> m_indices;    // by projection
};
} // namespace

zoHPCProblem::List zoHPCTileChecks::tilesShownNowhere(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection* projection :
         layout.tilesOrTheirProjections([&](size_t i) { return !layout.projections()[i].isShown; })) {
        problems.emplace_back(Kind::TileShownNowhere, projection->item,
                              tr("No viewport shows \"%1\".").arg(projection->name()));
    }
    return problems;
}

zoHPCProblem::List zoHPCTileChecks::tilesShownTwice(const zoHPCLayout& layout)
{
    const CoverageOfAll coverage(layout);
    zoHPCProblem::List problems;
    for (const Projection* projection :
         layout.tilesOrTheirProjections([&](size_t i) { return coverage.of(i).isTwice(); })) {
        problems.emplace_back(
            Kind::TileShownTwice, projection->item,
            tr("More than one viewport shows \"%1\" to the same eye.").arg(projection->name()));
    }
    return problems;
}

zoHPCProblem::List zoHPCTileChecks::tilesForOneEye(const zoHPCLayout& layout)
{
    const CoverageOfAll coverage(layout);
    zoHPCProblem::List problems;
    for (const unsigned eye : {zoHPCLayout::LeftEye, zoHPCLayout::RightEye}) {
        const auto lonely = [&](size_t i) { return (coverage.of(i).lonelyEyes() & eye) != 0; };
        for (const Projection* projection : layout.tilesOrTheirProjections(lonely)) {
            problems.emplace_back(
                Kind::TileForOneEye, projection->item,
                eye == zoHPCLayout::LeftEye
                    ? tr("\"%1\" is shown to the left eye, but not to the right eye.").arg(projection->name())
                    : tr("\"%1\" is shown to the right eye, but not to the left eye.")
                          .arg(projection->name()));
        }
    }
    return problems;
}
