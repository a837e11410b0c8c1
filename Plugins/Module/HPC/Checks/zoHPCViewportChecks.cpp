#include "zoHPCViewportChecks.h"

#include "zoHPCAreaOverlaps.h"
#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace
{
using Kind = zoHPCProblem::Kind;
using Item = zoHPCViewportItem;
using Viewport = zoHPCLayout::Viewport;

// The corners of a viewport as they stand in its fields, with the tolerance in the same unit.
struct Corners
{
    double x1, y1, x2, y2;
    double tolerance;
    // How large the window is in that unit; infinite when only its screen knows.
    double width, height;

    bool hasArea() const { return std::abs(x2 - x1) > tolerance && std::abs(y2 - y1) > tolerance; }
    bool isCrossed() const { return x1 > x2 + tolerance || y1 > y2 + tolerance; }
    bool isOutside() const
    {
        return std::min({x1, y1, x2, y2}) < -tolerance || std::max(x1, x2) > width + tolerance ||
               std::max(y1, y2) > height + tolerance;
    }
};

// What is not given at all counts as the whole window.
bool isGiven(const zoHPCViewportItem& item)
{
    constexpr int Columns[] = {Item::X1, Item::Y1, Item::X2, Item::Y2};
    return std::any_of(std::begin(Columns), std::end(Columns),
                       [&](int column) { return item.isSet(column); });
}

Corners cornersOf(const zoHPCLayout& layout, const Viewport& viewport)
{
    Corners corners{viewport.item->getDouble(Item::X1),
                    viewport.item->getDouble(Item::Y1),
                    viewport.item->getDouble(Item::X2),
                    viewport.item->getDouble(Item::Y2),
                    zoHPCViewportChecks::Tolerance,
                    1.0,
                    1.0};
    if (!viewport.item->isInPixels())
        return corners;
    corners.tolerance = 0.5; // a pixel is there or is not
    corners.width = corners.height = std::numeric_limits<double>::infinity();
    if (viewport.window == zoHPCLayout::None)
        return corners;
    const zoHPCLayout::Window& window = layout.windows()[static_cast<size_t>(viewport.window)];
    if (!window.isFullScreen && window.geometry.width() > 0.0 && window.geometry.height() > 0.0) {
        corners.width = window.geometry.width();
        corners.height = window.geometry.height();
    }
    return corners;
}

// Viewport, window and display as a person counts them.
QStringList numbersOf(const zoHPCLayout& layout, const Viewport& viewport)
{
    const zoHPCLayout::Window window = viewport.window == zoHPCLayout::None
                                           ? zoHPCLayout::Window()
                                           : layout.windows()[static_cast<size_t>(viewport.window)];
    return {QString::number(viewport.number), QString::number(window.number),
            QString::number(window.display)};
}

QString cornersText(const Corners& corners)
{
    QStringList numbers;
    for (const double number : {corners.x1, corners.y1, corners.x2, corners.y2})
        numbers << QString::number(number, 'g', 6);
    return numbers.join(QString::fromLatin1(", "));
}

bool isInset(const QRectF& later, const QRectF& earlier)
{
    constexpr double Rim = zoHPCViewportChecks::Tolerance;
    return earlier.adjusted(-Rim, -Rim, Rim, Rim).contains(later) &&
           later.width() * later.height() <
               zoHPCViewportChecks::LargestInset * earlier.width() * earlier.height();
}

// The later one to an earlier one, by index in `viewports`, which are those of one window.
std::map<size_t, size_t> overlapsOf(const std::vector<const Viewport*>& viewports)
{
    constexpr double Rim = zoHPCViewportChecks::Tolerance / 2;
    std::map<size_t, size_t> pairs;
    for (const unsigned eye : {zoHPCLayout::LeftEye, zoHPCLayout::RightEye}) {
        std::vector<QRectF> areas;
        std::vector<size_t> indices;
        for (size_t i = 0; i < viewports.size(); ++i) {
            const QRectF& area = viewports[i]->area;
            if ((viewports[i]->eyes & eye) == 0 || area.width() <= 2 * Rim || area.height() <= 2 * Rim)
                continue;
            areas.push_back(area.adjusted(Rim, Rim, -Rim, -Rim));
            indices.push_back(i);
        }
        const auto found = zoHPCAreaOverlaps::find(areas, [&](size_t later, size_t earlier) {
            return !isInset(viewports[indices[later]]->area, viewports[indices[earlier]]->area);
        });
        for (const zoHPCAreaOverlaps::Pair& pair : found)
            pairs.emplace(indices[pair.first], indices[pair.second]);
    }
    return pairs;
}
// How many times wider the pixels of the viewport are than they are high; 0 where nobody knows.
double stretchOf(const zoHPCLayout& layout, const Viewport& viewport)
{
    using P = zoHPCProjectionItem;
    if (viewport.projection == zoHPCLayout::None || viewport.window == zoHPCLayout::None ||
        viewport.isOverview ||
        viewport.item->getString(Item::Eye).startsWith(QLatin1String("split"))) // half of the pixels each
        return 0.0;
    const zoHPCLayout::Window& window = layout.windows()[static_cast<size_t>(viewport.window)];
    const P& item = *layout.projections()[static_cast<size_t>(viewport.projection)].item;
    QSizeF plane;
    if (item.kind() == zoHPCProjectionType::Kind::Plane && !item.plane().isDegenerate())
        plane = QSizeF(item.plane().width(), item.plane().height());
    else if (item.kind() == zoHPCProjectionType::Kind::PowerWall)
        plane = QSizeF(item.getDouble(P::Width), item.getDouble(P::Height));
    const QSizeF pixels(window.geometry.width() * viewport.area.width(),
                        window.geometry.height() * viewport.area.height());
    // A desktop over several outputs has their shapes.
    const bool isOfOneOutput = !window.isFullScreen && window.screen != zoHPCLayout::ExtendedDesktop;
    const bool isKnown = isOfOneOutput && pixels.width() >= 1.0 && pixels.height() >= 1.0 &&
                         plane.width() > 0.0 && plane.height() > 0.0;
    return isKnown ? plane.width() / pixels.width() * pixels.height() / plane.height() : 0.0;
}
} // namespace

zoHPCProblem::List zoHPCViewportChecks::overlappingViewports(const zoHPCLayout& layout)
{
    std::vector<std::vector<const Viewport*>> byWindow(layout.windows().size());
    for (const Viewport& viewport : layout.viewports()) {
        if (viewport.window != zoHPCLayout::None)
            byWindow[static_cast<size_t>(viewport.window)].push_back(&viewport);
    }
    zoHPCProblem::List problems;
    for (const std::vector<const Viewport*>& viewports : byWindow) {
        if (viewports.size() < 2)
            continue;
        for (const auto& pair : overlapsOf(viewports)) {
            const Viewport& later = *viewports[pair.first];
            const Viewport& earlier = *viewports[pair.second];
            const QStringList numbers = numbersOf(layout, later);
            zoHPCProblem problem(
                Kind::OverlappingViewports, later.item,
                tr("Viewports %1 and %2 of window %3 of display %4 lie over each other: only one of them is "
                   "seen there. Give each a part of the window of its own, or a window of its own.")
                    .arg(QString::number(earlier.number), numbers[0], numbers[1], numbers[2]));
            problem.other = earlier.item;
            problems.push_back(problem);
        }
    }
    return problems;
}

zoHPCProblem::List zoHPCViewportChecks::viewportsWithoutArea(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Viewport& viewport : layout.viewports()) {
        const Corners corners = cornersOf(layout, viewport);
        if (corners.hasArea() || !isGiven(*viewport.item))
            continue;
        const QStringList numbers = numbersOf(layout, viewport);
        problems.emplace_back(
            Kind::ViewportWithoutArea, viewport.item,
            tr("Viewport %1 of window %2 of display %3 has no area: its corners are %4. Set the upper right "
               "corner, or the position \"Whole window\".")
                .arg(numbers[0], numbers[1], numbers[2], cornersText(corners)));
        const QTreeWidgetItem* const window = viewport.item->parent();
        // With others in the window it would lie over them.
        if (!window || window->childCount() != 1)
            continue;
        problems.back().setFix(tr("Fill the window"), [item = viewport.item] {
            item->setString(Item::Position, QString::fromLatin1("fill"));
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCViewportChecks::viewportsOutsideWindow(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Viewport& viewport : layout.viewports()) {
        const Corners corners = cornersOf(layout, viewport);
        if (!corners.hasArea() || !corners.isOutside())
            continue;
        const QStringList numbers = numbersOf(layout, viewport);
        const QString text = viewport.item->isInPixels() && std::isfinite(corners.width)
                                 ? tr("Viewport %1 of window %2 of display %3 reaches beyond its window: its "
                                      "corners are %4, the window "
                                      "has %5 x %6 pixels.")
                                       .arg(numbers[0], numbers[1], numbers[2], cornersText(corners),
                                            QString::number(corners.width), QString::number(corners.height))
                                 : tr("Viewport %1 of window %2 of display %3 reaches beyond its window: its "
                                      "corners are %4, the window "
                                      "is from 0 to 1.")
                                       .arg(numbers[0], numbers[1], numbers[2], cornersText(corners));
        problems.emplace_back(Kind::ViewportOutsideWindow, viewport.item, text);
        Corners cut = corners;
        for (double* const x : {&cut.x1, &cut.x2})
            *x = qBound(0.0, *x, corners.width);
        for (double* const y : {&cut.y1, &cut.y2})
            *y = qBound(0.0, *y, corners.height);
        if (!cut.hasArea())
            continue;
        problems.back().setFix(tr("Cut to the window"), [item = viewport.item, cut] {
            item->setViewport(cut.x1, cut.y1, cut.x2, cut.y2);
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCViewportChecks::viewportsWithCrossedCorners(const zoHPCLayout& layout)
{
    zoHPCProblem::List problems;
    for (const Viewport& viewport : layout.viewports()) {
        const Corners corners = cornersOf(layout, viewport);
        if (!corners.hasArea() || !corners.isCrossed())
            continue;
        const QStringList numbers = numbersOf(layout, viewport);
        problems.emplace_back(Kind::ViewportCornersCrossed, viewport.item,
                              tr("The lower left corner of viewport %1 of window %2 of display %3 lies right "
                                 "of the upper right one or "
                                 "above it: its corners are %4.")
                                  .arg(numbers[0], numbers[1], numbers[2], cornersText(corners)));
        problems.back().setFix(tr("Swap the corners"), [item = viewport.item, corners] {
            item->setViewport(std::min(corners.x1, corners.x2), std::min(corners.y1, corners.y2),
                              std::max(corners.x1, corners.x2), std::max(corners.y1, corners.y2));
            item->update();
        });
    }
    return problems;
}

zoHPCProblem::List zoHPCViewportChecks::stretchedPictures(const zoHPCLayout& layout)
{
    struct Stretched
    {
        const Viewport* first;
        double stretch;
        int count;
    };
    std::map<int, Stretched> found; // by the row of the tree
    for (const Viewport& viewport : layout.viewports()) {
        const double stretch = stretchOf(layout, viewport);
        const double factor = stretch > 1.0 ? stretch : 1.0 / stretch; // infinite where nobody knows
        if (!(factor > SmallestStretch && factor < LargestStretch))
            continue;
        const int top = layout.projections()[static_cast<size_t>(viewport.projection)].top;
        ++found.insert({top, {&viewport, stretch, 0}}).first->second.count;
    }
    zoHPCProblem::List problems;
    for (const auto& [top, stretched] : found) {
        const Viewport& viewport = *stretched.first;
        const QStringList numbers = numbersOf(layout, viewport);
        const zoHPCLayout::Projection& shown = layout.projections()[static_cast<size_t>(viewport.projection)];
        const bool isWider = stretched.stretch > 1.0;
        const QString percent = QString::number(
            std::lround(100.0 * ((isWider ? stretched.stretch : 1.0 / stretched.stretch) - 1.0)));
        QString text =
            isWider ? tr("Viewport %1 of window %2 of display %3 shows \"%4\" %5 % too wide: the shape of "
                         "its pixels is "
                         "not that of the plane. Correct the size of the window or that of the plane.")
                          .arg(numbers[0], numbers[1], numbers[2], shown.name(), percent)
                    : tr("Viewport %1 of window %2 of display %3 shows \"%4\" %5 % too high: the shape of "
                         "its pixels "
                         "is not that of the plane. Correct the size of the window or that of the plane.")
                          .arg(numbers[0], numbers[1], numbers[2], shown.name(), percent);
        if (stretched.count > 1)
            text += QLatin1Char(' ') + tr("So do %1 more of the same projection.").arg(stretched.count - 1);
        problems.emplace_back(Kind::StretchedPicture, viewport.item, text);
        problems.back().other = shown.item;
    }
    return problems;
}
