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

// What is no wall in metres either is damaged.
bool isInMetres(double size, double limit)
{
    return size * MillimetresPerMetre >= zoHPCPlaneChecks::SmallestWall && size < limit;
}

// Of one piece: below which size it is a wall in metres, and from which on it may be the display before an eye.
double wallLimit(double width, double height)
{
    const double small = std::min(std::abs(width), std::abs(height));
    const double large = std::max(std::abs(width), std::abs(height));
    const bool isLong = small > 0.0 && large > zoHPCPlaneChecks::LongestMicrodisplay * small;
    return isLong ? zoHPCPlaneChecks::SmallestWall : zoHPCPlaneChecks::LargestMicrodisplay;
}

bool isBetween(double value, double limit)
{
    return value > 0.0 && value < limit;
}

// Of a plane, whose sizes are not among its fields.
bool isPlaneInMetres(const zoHPCProjectionItem& item)
{
    for (const int column : item.typeRow().lengths) {
        if (!(std::abs(item.getDouble(column)) < zoHPCPlaneChecks::SmallestWall))
            return false;
    }
    const zoHPCPlane plane = item.plane();
    return isInMetres(std::max(plane.width(), plane.height()), wallLimit(plane.width(), plane.height()));
}

// The fields of a wall that hold metres.
std::vector<int> lengthsInMetres(const zoHPCProjectionItem& item)
{
    using P = zoHPCProjectionItem;
    const zoHPCProjectionType& type = item.typeRow();
    std::vector<int> result;
    if (isPlane(item))
        return isPlaneInMetres(item) ? type.lengths : result;
    double largest = 0.0;
    for (const int column : type.sizes) {
        if (column != P::Distance)
            largest = std::max(largest, std::abs(item.getDouble(column)));
    }
    // Somebody tiles walls and builds caves, but no microdisplays.
    const bool isRoom = item.kind() != zoHPCProjectionType::Kind::PowerWall || item.childCount() > 1;
    const double limit = isRoom ? zoHPCPlaneChecks::SmallestWall
                                : wallLimit(item.getDouble(P::Width), item.getDouble(P::Height));
    const bool areSizes = isInMetres(largest, limit);
    for (const int column : type.lengths) {
        const bool isDistance = column == P::Distance;
        const double length = std::abs(item.getDouble(column));
        // Before a wall that has a size in millimetres, or none at all, nobody stands so near.
        const bool isTooNear = isDistance && (largest <= 0.0 || largest >= zoHPCPlaneChecks::SmallestRoom) &&
                               isInMetres(length, zoHPCPlaneChecks::SmallestWall);
        if (isTooNear || (areSizes && isBetween(length, zoHPCPlaneChecks::SmallestWall)))
            result.push_back(column);
    }
    if (!areSizes || !type.overlapIsLength)
        return result;
    for (const int column : {P::OverlapX, P::OverlapY}) {
        if (isBetween(std::abs(item.getDouble(column)), zoHPCPlaneChecks::SmallestOverlap))
            result.push_back(column);
    }
    return result;
}

void multiply(zoHPCProjectionItem& item, const std::vector<int>& columns, double factor)
{
    for (const int column : columns)
        item.setDouble(column, factor * item.getDouble(column));
    item.update();
}

// Width and height, or width, height and depth, or the distance of what has no size.
QString sizesText(const zoHPCProjectionItem& item, const std::vector<int>& wrong)
{
    QStringList texts;
    if (isPlane(item)) {
        const zoHPCPlane plane = item.plane();
        texts << QString::number(plane.width(), 'g', 4) << QString::number(plane.height(), 'g', 4);
    }
    for (const int column : wrong) {
        const std::vector<int>& sizes = item.typeRow().sizes;
        if (column != zoHPCProjectionItem::Distance &&
            std::find(sizes.begin(), sizes.end(), column) != sizes.end())
            texts << QString::number(item.getDouble(column), 'g', 4);
    }
    return texts.join(QString::fromLatin1(" x "));
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
        problems.emplace_back(
            Kind::DegeneratePlane, projection->item,
            tr("\"%1\" has no area. Measure its corners or sizes again.").arg(projection->name()));
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

QString zoHPCPlaneChecks::blendText(const QString& name, int edge, double blend, double overlap)
{
    using P = zoHPCProjectionItem;
    const QString side = edge == P::LeftEdge    ? tr("left")
                         : edge == P::RightEdge ? tr("right")
                         : edge == P::TopEdge   ? tr("lower")
                                                : tr("upper");
    return tr("The edge blending of \"%1\" at its %2 edge is %3 of the plane wide, its overlap with other "
              "planes %4: "
              "the seam is dark.")
        .arg(name, side, QString::number(blend, 'g', 3), QString::number(overlap, 'g', 3));
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
        const auto widest = std::find_if(edges.begin(), edges.end(), [&](const auto& edge) {
            const double tolerance =
                BlendTolerance + (reach.isFolded ? FoldedBlendTolerance * edge.second : 0.0);
            return item->getDouble(edge.first) > edge.second + tolerance;
        });
        if (widest == edges.end())
            continue;
        zoHPCProblem problem(
            Kind::BlendWiderThanOverlap, item,
            blendText(projection->name(), widest->first, item->getDouble(widest->first), widest->second));
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
        if (projection.parent != zoHPCLayout::None)
            continue;
        const std::vector<int> wrong = lengthsInMetres(*item);
        if (wrong.empty())
            continue;
        const QString sizes = sizesText(*item, wrong);
        problems.emplace_back(
            Kind::WallInMetres, item,
            sizes.isEmpty()
                ? tr("\"%1\" is %2 mm away from the viewer. Was its distance measured in metres?")
                      .arg(projection.name(),
                           QString::number(item->getDouble(zoHPCProjectionItem::Distance), 'g', 4))
                : tr("\"%1\" has a size of %2 mm. Was it measured in metres?").arg(projection.name(), sizes));
        problems.back().setFix(tr("Multiply by 1000"),
                               [item, wrong] { multiply(*item, wrong, MillimetresPerMetre); });
    }
    return problems;
}
