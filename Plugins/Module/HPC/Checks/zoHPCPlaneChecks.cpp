#include "zoHPCPlaneChecks.h"

#include "zoHPCLayout.h"
#include "zoHPCPlane.h"
#include "zoHPCPlaneOverlaps.h"
#include "zoHPCProjectionItem.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{
using Kind = zoHPCProblem::Kind;
using Projection = zoHPCLayout::Projection;

bool isPlane(const zoHPCProjectionItem& item)
{
    return item.kind() == zoHPCProjectionType::Kind::Plane;
}

zoHPCPlane squared(const zoHPCPlane& plane)
{
    const Point3 u = unit(plane.right());
    const Point3 up = plane.up();
    const Point3 upright = unit(up - dot(up, u) * u);
    return {plane.lowerLeft, plane.lowerRight, plane.lowerRight + plane.height() * upright};
}

zoHPCPlane turnedRound(const zoHPCPlane& plane)
{
    // The picture shall stand upright afterwards: a plane upside down is mirrored at its middle line.
    if (unit(plane.up()).y < -0.5)
        return {plane.upperLeft(), plane.upperRight, plane.lowerRight};
    return {plane.lowerRight, plane.lowerLeft, plane.upperLeft()};
}

constexpr double MillimetresPerMetre = 1000.0;

bool looksLikeMetres(const zoHPCProjectionItem& item)
{
    double largest = 0.0;
    for (const int column : item.typeRow().lengths) {
        const double size = std::abs(item.getDouble(column));
        if (!(size < zoHPCPlaneChecks::SmallestWall))
            return false;
        largest = std::max(largest, size);
    }
    // What is no wall in metres either is damaged.
    return largest * MillimetresPerMetre >= zoHPCPlaneChecks::SmallestWall;
}

void multiplyLengths(zoHPCProjectionItem& item, double factor)
{
    const zoHPCProjectionType& type = item.typeRow();
    for (const int column : type.lengths)
        item.setDouble(column, factor * item.getDouble(column));
    if (type.overlapIsLength) {
        for (const int column : {zoHPCProjectionItem::OverlapX, zoHPCProjectionItem::OverlapY})
            item.setDouble(column, factor * item.getDouble(column));
    }
    item.update();
}

bool turnsItsBack(const zoHPCProjectionItem& item)
{
    if (isPlane(item))
        return zoHPCPlane::fromItem(item).turnsAwayFrom(Point3());
    double sign = 1.0;
    for (const int column : item.typeRow().sizes)
        sign *= item.getDouble(column);
    return sign < 0.0;
}
} // namespace

zoHPCProblem::List zoHPCPlaneChecks::degeneratePlanes(const zoHPCLayout& layout)
{
    const auto degenerate = [&](size_t i) {
        const zoHPCProjectionItem& item = *layout.projections()[i].item;
        return isPlane(item) && zoHPCPlane::fromItem(item).isDegenerate();
    };
    zoHPCProblem::List problems;
    for (const Projection* projection : layout.tilesOrTheirProjections(degenerate)) {
        problems.emplace_back(Kind::DegeneratePlane, projection->item,
                              tr("\"%1\" has no area.").arg(projection->name()));
    }
    return problems;
}

zoHPCProblem::List zoHPCPlaneChecks::skewedPlanes(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection& projection : layout.projections()) {
        if (projection.parent != zoHPCLayout::None || !isPlane(*projection.item))
            continue;
        const double skew = zoHPCPlane::fromItem(*projection.item).skew();
        if (!(skew > LargestSkew))
            continue;
        zoHPCProblem problem(Kind::SkewedPlane, projection.item,
                             tr("The corner of \"%1\" is %2 degrees off a right angle.")
                                 .arg(projection.name(), QString::number(skew, 'f', 1)));
        problem.setFix(tr("Make square"), [item = projection.item] {
            squared(zoHPCPlane::fromItem(*item)).toItem(*item);
            item->update();
        });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCPlaneChecks::mirroredPlanes(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection& projection : layout.projections()) {
        if (projection.parent != zoHPCLayout::None || !turnsItsBack(*projection.item))
            continue;
        zoHPCProjectionItem* const item = projection.item;
        zoHPCProblem problem(
            Kind::MirroredPlane, item,
            tr("\"%1\" faces away from the viewer: its picture is mirrored.").arg(projection.name()));
        if (isPlane(*item)) {
            problem.setFix(tr("Turn round"), [item] {
                turnedRound(zoHPCPlane::fromItem(*item)).toItem(*item);
                item->update();
            });
        } else {
            problem.setFix(tr("Make sizes positive"), [item] {
                for (const int column : item->typeRow().sizes)
                    item->setDouble(column, std::abs(item->getDouble(column)));
                item->update();
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCPlaneChecks::blendsWiderThanOverlap(const zoHPCLayout& layout)
{
    using P = zoHPCProjectionItem;
    std::vector<zoHPCPlane> planes;
    std::vector<const Projection*> blended;
    for (const Projection& projection : layout.projections()) {
        if (!projection.isTile || !isPlane(*projection.item))
            continue;
        const zoHPCPlane plane = zoHPCPlane::fromItem(*projection.item);
        if (plane.isDegenerate())
            continue;
        planes.push_back(plane);
        if (projection.parent == zoHPCLayout::None && projection.item->getBool(P::EdgeBlending))
            blended.push_back(&projection);
    }
    zoHPCProblem::List problems;
    if (blended.empty())
        return problems;

    const zoHPCPlaneOverlaps overlaps(std::move(planes));
    for (const Projection* projection : blended) {
        zoHPCProjectionItem* const item = projection->item;
        const zoHPCPlaneOverlaps::Reach reach = overlaps.over(zoHPCPlane::fromItem(*item));
        // What the render side calls the top edge is the lower one: see zoHPCProjectionItem::addPlane().
        const std::array<std::pair<int, double>, 4> edges = {{{P::LeftEdge, reach.left},
                                                              {P::RightEdge, reach.right},
                                                              {P::TopEdge, reach.lower},
                                                              {P::BottomEdge, reach.upper}}};
        constexpr double Tolerance = 2e-3;
        const bool tooWide = std::any_of(edges.begin(), edges.end(), [&](const auto& edge) {
            return item->getDouble(edge.first) > edge.second + Tolerance;
        });
        if (!tooWide)
            continue;
        zoHPCProblem problem(Kind::BlendWiderThanOverlap, item,
                             tr("The edge blending of \"%1\" is wider than its overlap with other planes.")
                                 .arg(projection->name()));
        problem.setFix(tr("Fit to overlap"), [item, edges] {
            for (const auto& edge : edges)
                item->setDouble(edge.first, std::min(item->getDouble(edge.first), edge.second));
            item->update();
        });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblem::List zoHPCPlaneChecks::wallsInMetres(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Projection& projection : layout.projections()) {
        zoHPCProjectionItem* const item = projection.item;
        if (projection.parent != zoHPCLayout::None || !looksLikeMetres(*item))
            continue;
        zoHPCProblem problem(Kind::WallInMetres, item,
                             tr("\"%1\" is only a few millimetres in size. Was it measured in metres?")
                                 .arg(projection.name()));
        problem.setFix(tr("Multiply by 1000"), [item] { multiplyLengths(*item, MillimetresPerMetre); });
        problems.push_back(problem);
    }
    return problems;
}
