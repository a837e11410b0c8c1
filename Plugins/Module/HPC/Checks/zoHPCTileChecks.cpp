#include "zoHPCTileChecks.h"

#include "zoHPCEyePairs.h"
#include "zoHPCLayout.h"
#include "zoHPCProjectionChecks.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCWindowItem.h"
#include "zoHPCWindowSeries.h"

#include <algorithm>
#include <map>
#include <memory>

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
        int both = 0; // without stereo

        // Then pictures without stereo are copies, as for the operator beside the wall.
        bool isStereo() const { return left > 0 && right > 0; }
        int leftCount() const { return isStereo() ? left : left + both; }
        int rightCount() const { return isStereo() ? right : right + both; }
    };
    std::map<QString, Eyes> users;

    bool isTwice() const
    {
        return std::any_of(users.begin(), users.end(), [](const auto& user) {
            return user.second.leftCount() > 1 || user.second.rightCount() > 1;
        });
    }
    // Of this user: the eye that sees although the other eye sees nothing.
    static unsigned lonelyEye(const Eyes& eyes)
    {
        if (eyes.leftCount() > 0 && eyes.rightCount() == 0)
            return zoHPCLayout::LeftEye;
        if (eyes.rightCount() > 0 && eyes.leftCount() == 0)
            return zoHPCLayout::RightEye;
        return zoHPCLayout::NoEye;
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
            if (viewport.projection != zoHPCLayout::None && !viewport.isOverview)
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
                if (!viewport->isStereo) {
                    ++eyes.both;
                    continue;
                }
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

// By projection: the eyes of users that see it although their other eye sees neither it nor what belongs to it.
std::vector<unsigned> lonelyEyes(const zoHPCLayout& layout)
{
    const CoverageOfAll coverage(layout);
    std::vector<zoHPCEyePairs::Tile> tiles;
    for (size_t i = 0; i < layout.projections().size(); ++i) {
        const Projection& projection = layout.projections()[i];
        if (!projection.isTile || zoHPCProjectionChecks::hasNoTiles(*projection.item))
            continue;
        for (const auto& [user, eyes] : coverage.of(i).users) {
            const unsigned eye = Coverage::lonelyEye(eyes);
            if (eye != zoHPCLayout::NoEye)
                tiles.push_back({static_cast<int>(i), user, static_cast<zoHPCLayout::Eye>(eye)});
        }
    }
    const std::vector<bool> hasPartner = zoHPCEyePairs::find(layout, tiles);
    std::vector<unsigned> eyes(layout.projections().size(), zoHPCLayout::NoEye);
    for (size_t i = 0; i < tiles.size(); ++i) {
        if (!hasPartner[i])
            eyes[static_cast<size_t>(tiles[i].projection)] |= tiles[i].eye;
    }
    return eyes;
}
} // namespace

zoHPCProblem::List zoHPCTileChecks::tilesShownNowhere(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection* projection :
         layout.tilesOrTheirProjections([&](size_t i) { return zoHPCWindowSeries::isDark(layout, i); })) {
        problems.emplace_back(Kind::TileShownNowhere, projection->item,
                              tr("No viewport shows \"%1\". Give it a window, or delete the projection if "
                                 "nothing stands there.")
                                  .arg(projection->name()));
    }
    if (problems.empty())
        return problems;
    // One press gives all of them their windows, in the order of the nodes.
    const auto cover = std::make_shared<const zoHPCWindowSeries::Cover>(zoHPCWindowSeries::cover(layout));
    if (!cover->isSound)
        return problems;
    const QString text = cover->places.size() == 1
                             ? tr("Add a window")
                             : tr("Add %1 windows").arg(QString::number(cover->places.size()));
    for (zoHPCProblem& problem : problems) {
        problem.setFix(text, [cover] {
            QList<QTreeWidgetItem*> windows;
            for (std::unique_ptr<zoHPCWindowItem>& window : cover->windows())
                windows << window.release();
            cover->display->addChildren(windows);
        });
        problem.addsRows = true;
    }
    return problems;
}

zoHPCProblem::List zoHPCTileChecks::tilesShownTwice(const zoHPCLayout& layout)
{
    const CoverageOfAll coverage(layout);
    zoHPCProblem::List problems;
    for (const Projection* projection : layout.tilesOrTheirProjections([&](size_t i) {
             return coverage.of(i).isTwice() &&
                    !zoHPCProjectionChecks::hasNoTiles(*layout.projections()[i].item);
         })) {
        problems.emplace_back(Kind::TileShownTwice, projection->item,
                              tr("More than one viewport shows \"%1\" to the same eye. Let each of them show "
                                 "a tile of its own.")
                                  .arg(projection->name()));
    }
    return problems;
}

zoHPCProblem::List zoHPCTileChecks::tilesForOneEye(const zoHPCLayout& layout)
{
    const std::vector<unsigned> eyes = lonelyEyes(layout);
    zoHPCProblem::List problems;
    for (const unsigned eye : {zoHPCLayout::LeftEye, zoHPCLayout::RightEye}) {
        const auto lonely = [&](size_t i) { return (eyes[i] & eye) != 0; };
        for (const Projection* projection : layout.tilesOrTheirProjections(lonely)) {
            problems.emplace_back(Kind::TileForOneEye, projection->item,
                                  eye == zoHPCLayout::LeftEye
                                      ? tr("\"%1\" is shown to the left eye, but not to the right eye. Add a "
                                           "viewport for that eye.")
                                            .arg(projection->name())
                                      : tr("\"%1\" is shown to the right eye, but not to the left eye. Add a "
                                           "viewport for that eye.")
                                            .arg(projection->name()));
        }
    }
    return problems;
}
