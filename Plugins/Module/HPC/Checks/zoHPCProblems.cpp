#include "zoHPCProblems.h"

#include "zoHPCLayout.h"
#include "zoHPCPlane.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace
{
using Kind = zoHPCProblem::Kind;
using Projection = zoHPCLayout::Projection;
using Window = zoHPCLayout::Window;

bool isA(const zoHPCProjectionItem& item, const char* type)
{
    return item.projectionType() == QLatin1String(type);
}

QString nameOf(const zoHPCProjectionItem& item)
{
    return item.getString(zoHPCProjectionItem::Name);
}

const Projection& at(const zoHPCLayout& layout, int projection)
{
    return layout.projections()[static_cast<size_t>(projection)];
}

// Nodes that no window names and that could take one, in tree order.
std::vector<const zoHPCLayout::Node*> freeNodes(const zoHPCLayout& layout)
{
    std::vector<bool> used(layout.nodes().size(), false);
    for (const Window& window : layout.windows()) {
        if (window.nodeIndex != zoHPCLayout::None)
            used[static_cast<size_t>(window.nodeIndex)] = true;
    }
    std::vector<const zoHPCLayout::Node*> result;
    for (size_t i = 0; i < used.size(); ++i) {
        const zoHPCLayout::Node& node = layout.nodes()[i];
        if (!used[i] && node.enabled && !node.name.isEmpty())
            result.push_back(&node);
    }
    return result;
}

void enableWithAncestors(zoHPCTreeItem* item)
{
    for (; item; item = item->getParent()) {
        if (!item->isEnabled())
            item->setIsEnabled(true);
    }
}

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

// The tiles for which the claim holds; where it holds for all tiles of a row of the tree, that row instead.
template <class Claim>
std::vector<int> tilesOrTheirProjections(const zoHPCLayout& layout, Claim claim)
{
    const std::vector<Projection>& projections = layout.projections();
    std::vector<bool> holds(projections.size(), false);
    std::vector<int> without(projections.size(), 0); // by top-level row: tiles for which it does not hold
    for (size_t i = 0; i < projections.size(); ++i) {
        if (!projections[i].isTile)
            continue;
        holds[i] = claim(i);
        without[static_cast<size_t>(projections[i].top)] += holds[i] ? 0 : 1;
    }
    std::vector<int> result;
    for (size_t i = 0; i < projections.size(); ++i) {
        const size_t top = static_cast<size_t>(projections[i].top);
        if (top == i && without[i] == 0)
            result.push_back(static_cast<int>(i));
        else if (holds[i] && without[top] > 0)
            result.push_back(static_cast<int>(i));
    }
    return result;
}

bool shareArea(const QRectF& a, const QRectF& b)
{
    return a.left() < b.right() && b.left() < a.right() && a.top() < b.bottom() && b.top() < a.bottom();
}

// Windows of one screen in the order of their left edges, with the windows that still reach the current
// place by their upper edges: for each one it finds another that it overlaps, if there is one.
class OverlapFinder
{
public:
    explicit OverlapFinder(std::vector<const Window*> windows) : m_windows(std::move(windows))
    {
        m_windows.erase(std::remove_if(m_windows.begin(), m_windows.end(),
                                       [](const Window* window) { return window->geometry.isEmpty(); }),
                        m_windows.end());
        for (const Window* window : m_windows)
            m_tallest = std::max(m_tallest, window->geometry.height());
    }

    // Pairs in the order of the tree, each window at most once as the second one.
    std::vector<std::pair<const Window*, const Window*>> pairs()
    {
        std::map<const Window*, const Window*> partners; // the later one in the tree to the earlier one
        std::vector<const Window*> sorted = withoutCopies(partners);
        std::stable_sort(sorted.begin(), sorted.end(), [](const Window* a, const Window* b) {
            return a->geometry.left() < b->geometry.left();
        });
        std::multimap<double, const Window*> active; // by upper edge
        std::multimap<double, std::multimap<double, const Window*>::iterator> byRight;
        for (const Window* window : sorted) {
            const QRectF& area = window->geometry;
            while (!byRight.empty() && byRight.begin()->first <= area.left()) {
                active.erase(byRight.begin()->second);
                byRight.erase(byRight.begin());
            }
            for (auto other = active.lower_bound(area.top() - m_tallest);
                 other != active.end() && other->first < area.bottom(); ++other) {
                if (shareArea(area, other->second->geometry))
                    partners.emplace(std::max(window, other->second), std::min(window, other->second));
            }
            byRight.emplace(area.right(), active.emplace(area.top(), window));
        }
        return {partners.begin(), partners.end()};
    }

private:
    // Windows at one and the same place overlap the first of them, which stands for all.
    std::vector<const Window*> withoutCopies(std::map<const Window*, const Window*>& partners) const
    {
        std::map<std::array<double, 4>, const Window*> firsts;
        std::vector<const Window*> result;
        for (const Window* window : m_windows) {
            const QRectF& area = window->geometry;
            const auto place = firsts.emplace(
                std::array<double, 4>{area.x(), area.y(), area.width(), area.height()}, window);
            if (place.second)
                result.push_back(window);
            else
                partners.emplace(window, place.first->second);
        }
        return result;
    }

    std::vector<const Window*> m_windows; // not owned; neighbours in one vector, so addresses are tree order
    double m_tallest = 0.0;
};

// Planes by the cells of space that they reach, to find those near a place.
class PlaneGrid
{
public:
    explicit PlaneGrid(std::vector<zoHPCPlane> planes) : m_planes(std::move(planes))
    {
        std::vector<double> sizes;
        for (const zoHPCPlane& plane : m_planes)
            sizes.push_back(std::max(plane.width(), plane.height()));
        if (sizes.empty())
            return;
        std::nth_element(sizes.begin(), sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2),
                         sizes.end());
        m_cell = std::max(sizes[sizes.size() / 2], 1e-3);
        for (size_t i = 0; i < m_planes.size(); ++i) {
            const Box box = boxOf(m_planes[i], 0.0, 1.0, 0.0, 1.0);
            if (!(box.count() <= MaximumCells))
                m_large.push_back(i);
            else
                forEachCell(box, [&](quint64 cell) { m_cells[cell].push_back(i); });
        }
    }

    // Some may be given more than once.
    std::vector<const zoHPCPlane*> near(const zoHPCPlane& plane, double s1, double s2, double t1,
                                        double t2) const
    {
        std::vector<const zoHPCPlane*> result;
        if (!(boxOf(plane, s1, s2, t1, t2).count() <= MaximumCells)) {
            for (const zoHPCPlane& other : m_planes)
                result.push_back(&other);
            return result;
        }
        for (const size_t i : m_large)
            result.push_back(&m_planes[i]);
        forEachCell(boxOf(plane, s1, s2, t1, t2), [&](quint64 cell) {
            const auto found = m_cells.constFind(cell);
            if (found == m_cells.constEnd())
                return;
            for (const size_t i : *found)
                result.push_back(&m_planes[i]);
        });
        return result;
    }

private:
    static constexpr double MaximumCells = 256.0;

    struct Box
    {
        double low[3];
        double high[3];
        double count() const
        {
            return (high[0] - low[0] + 1.0) * (high[1] - low[1] + 1.0) * (high[2] - low[2] + 1.0);
        }
    };

    Box boxOf(const zoHPCPlane& plane, double s1, double s2, double t1, double t2) const
    {
        const Point3 corners[] = {plane.at(s1, t1), plane.at(s2, t1), plane.at(s1, t2), plane.at(s2, t2)};
        Box box;
        for (int axis = 0; axis < 3; ++axis) {
            double low = HUGE_VAL;
            double high = -HUGE_VAL;
            for (const Point3& corner : corners) {
                const double value = axis == 0 ? corner.x : axis == 1 ? corner.y : corner.z;
                low = std::min(low, value);
                high = std::max(high, value);
            }
            // Half a cell around: neighbours may be set back a little.
            box.low[axis] = std::floor(low / m_cell - 0.25);
            box.high[axis] = std::floor(high / m_cell + 0.25);
        }
        return box;
    }

    template <class Function>
    static void forEachCell(const Box& box, Function function)
    {
        for (double x = box.low[0]; x <= box.high[0]; ++x) {
            for (double y = box.low[1]; y <= box.high[1]; ++y) {
                for (double z = box.low[2]; z <= box.high[2]; ++z)
                    function(key(x, y, z));
            }
        }
    }

    static quint64 key(double x, double y, double z)
    {
        const auto part = [](double value) {
            return static_cast<quint64>(static_cast<qint64>(qBound(-1e6, value, 1e6)) + 1048576);
        };
        return part(x) << 42 | part(y) << 21 | part(z);
    }

    std::vector<zoHPCPlane> m_planes;
    double m_cell = 1.0;
    std::vector<size_t> m_large; // planes that reach too many cells
    QHash<quint64, std::vector<size_t>> m_cells;
};

// How far neighbours reach over the plane from its left, right, lower and upper edge, in fractions.
struct Overlaps
{
    double left = 0.0;
    double right = 0.0;
    double lower = 0.0;
    double upper = 0.0;
};

Overlaps overlapsOf(const zoHPCPlane& plane, const PlaneGrid& grid)
{
    constexpr double TOUCH = 1e-3; // fraction of the plane that counts as the same place
    Overlaps result;
    const Point3 u = unit(plane.right());
    const Point3 n = plane.normal();
    const Point3 v = cross(n, u);
    const double w = plane.width();
    const double h = plane.height();
    for (const zoHPCPlane* other : grid.near(plane, 0.0, 1.0, 0.0, 1.0)) {
        // Parts of a bent wall may stand at an angle to each other, the walls of a cave do not overlap.
        if (std::abs(dot(n, other->normal())) < 0.85)
            continue;
        double low[2] = {HUGE_VAL, HUGE_VAL};
        double high[2] = {-HUGE_VAL, -HUGE_VAL};
        double nearest = HUGE_VAL;
        for (const Point3& corner :
             {other->lowerLeft, other->lowerRight, other->upperRight, other->upperLeft()}) {
            const Point3 fromCorner = corner - plane.lowerLeft;
            const double place[2] = {dot(fromCorner, u) / w, dot(fromCorner, v) / h};
            for (int axis = 0; axis < 2; ++axis) {
                low[axis] = std::min(low[axis], place[axis]);
                high[axis] = std::max(high[axis], place[axis]);
            }
            nearest = std::min(nearest, std::abs(dot(fromCorner, n)));
        }
        const bool reaches = low[0] < 1.0 - TOUCH && high[0] > TOUCH && low[1] < 1.0 - TOUCH &&
                             high[1] > TOUCH && nearest < 0.1 * std::max(w, h);
        if (!reaches)
            continue;
        if (low[0] < -TOUCH)
            result.left = std::max(result.left, std::min(high[0], 1.0));
        if (high[0] > 1.0 + TOUCH)
            result.right = std::max(result.right, std::min(1.0 - low[0], 1.0));
        if (low[1] < -TOUCH)
            result.lower = std::max(result.lower, std::min(high[1], 1.0));
        if (high[1] > 1.0 + TOUCH)
            result.upper = std::max(result.upper, std::min(1.0 - low[1], 1.0));
    }
    return result;
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

// Columns that hold lengths, by type.
std::vector<int> lengthColumns(const zoHPCProjectionItem& item)
{
    using P = zoHPCProjectionItem;
    if (isA(item, "powerwall"))
        return {P::Width, P::Height, P::Distance};
    if (isA(item, "cave"))
        return {P::CaveWidth, P::CaveHeight, P::CaveDepth, P::CaveX, P::CaveY, P::CaveZ};
    if (isA(item, "plane"))
        return {P::X1, P::Y1, P::Z1, P::X2, P::Y2, P::Z2, P::X3, P::Y3, P::Z3};
    if (isA(item, "wall"))
        return {P::Distance};
    return {};
}

bool looksLikeMetres(const zoHPCProjectionItem& item)
{
    const std::vector<int> columns = lengthColumns(item);
    double largest = 0.0;
    for (const int column : columns) {
        const double size = std::abs(item.getDouble(column));
        if (!(size < zoHPCProblems::SmallestWall))
            return false;
        largest = std::max(largest, size);
    }
    return largest > 0.0;
}

void multiplyLengths(zoHPCProjectionItem& item, double factor)
{
    for (const int column : lengthColumns(item))
        item.setDouble(column, factor * item.getDouble(column));
    // The overlap of tiled walls is in pixels.
    if (isA(item, "powerwall") || isA(item, "cave")) {
        for (const int column : {zoHPCProjectionItem::OverlapX, zoHPCProjectionItem::OverlapY})
            item.setDouble(column, factor * item.getDouble(column));
    }
    item.update();
}

// Sizes of which an odd number below 0 turns a generated wall round.
std::vector<int> signedColumns(const zoHPCProjectionItem& item)
{
    using P = zoHPCProjectionItem;
    if (isA(item, "powerwall"))
        return {P::Width, P::Height, P::Distance};
    if (isA(item, "cave"))
        return {P::CaveWidth, P::CaveHeight, P::CaveDepth};
    return {};
}

bool turnsItsBack(const zoHPCProjectionItem& item)
{
    if (isA(item, "plane"))
        return zoHPCPlane::fromItem(item).turnsAwayFrom(Point3());
    double sign = 1.0;
    for (const int column : signedColumns(item))
        sign *= item.getDouble(column);
    return sign < 0.0;
}

void addFix(zoHPCProblem& problem, const QString& text, std::function<void()> fix)
{
    problem.fixText = text;
    problem.fix = std::move(fix);
}
} // namespace

zoHPCProblems::List zoHPCProblems::find(const zoHPCLayout& layout)
{
    using Check = List (*)(const zoHPCLayout&);
    static constexpr Check CHECKS[] = {viewportsWithoutProjection,
                                       windowsWithoutNode,
                                       windowsWithUnknownNode,
                                       windowsWithDisabledNode,
                                       overlappingWindows,
                                       tilesShownNowhere,
                                       tilesShownTwice,
                                       tilesForOneEye,
                                       degeneratePlanes,
                                       skewedPlanes,
                                       mirroredPlanes,
                                       blendsWiderThanOverlap,
                                       wallsInMetres,
                                       duplicateHostNames,
                                       networksWithoutEnabledNode};
    List all;
    for (const Check check : CHECKS) {
        List found = check(layout);
        std::move(found.begin(), found.end(), std::back_inserter(all));
    }
    return all;
}

zoHPCProblems::List zoHPCProblems::viewportsWithoutProjection(const zoHPCLayout& layout)
{
    List problems;
    for (const zoHPCLayout::Viewport& viewport : layout.viewports()) {
        if (viewport.projection != zoHPCLayout::None)
            continue;
        const Window window = viewport.window == zoHPCLayout::None
                                  ? Window()
                                  : layout.windows()[static_cast<size_t>(viewport.window)];
        const QString name = viewport.item->getString(zoHPCViewportItem::Projection);
        const QString number = QString::number(viewport.number);
        const QString windowNumber = QString::number(window.number);
        const QString displayNumber = QString::number(window.display);
        problems.emplace_back(Kind::ViewportWithoutProjection, viewport.item,
                              name.isEmpty()
                                  ? tr("Viewport %1 of window %2 of display %3 shows no projection.")
                                        .arg(number, windowNumber, displayNumber)
                                  : tr("Viewport %1 of window %2 of display %3 shows the projection \"%4\", "
                                       "which does not exist.")
                                        .arg(number, windowNumber, displayNumber, name));
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::windowsWithoutNode(const zoHPCLayout& layout)
{
    List problems;
    const std::vector<const zoHPCLayout::Node*> free = freeNodes(layout);
    for (const Window& window : layout.windows()) {
        if (!window.node.isEmpty())
            continue;
        zoHPCProblem problem(Kind::WindowWithoutNode, window.item,
                             tr("Window %1 of display %2 has no render node.")
                                 .arg(QString::number(window.number), QString::number(window.display)));
        // The n-th such window is offered the n-th node: buttons pressed from top to bottom fill them up in
        // order.
        if (problems.size() < free.size()) {
            const QString node = free[problems.size()]->name;
            addFix(problem, tr("Use %1").arg(node), [item = window.item, node] {
                item->setRenderNode(node);
                item->update();
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::windowsWithUnknownNode(const zoHPCLayout& layout)
{
    QHash<QString, QString> bySpelling; // lower case to the first such name
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        const QString spelling = node.name.toLower();
        if (!spelling.isEmpty() && !bySpelling.contains(spelling))
            bySpelling.insert(spelling, node.name);
    }
    List problems;
    for (const Window& window : layout.windows()) {
        if (window.node.isEmpty() || window.nodeIndex != zoHPCLayout::None)
            continue;
        zoHPCProblem problem(
            Kind::WindowWithUnknownNode, window.item,
            tr("Window %1 of display %2 is on the node \"%3\", which the cluster does not have.")
                .arg(QString::number(window.number), QString::number(window.display), window.node));
        // A name spelt otherwise, or one that meanwhile bears a number because it occurs twice.
        for (const QString& spelling : {window.node.toLower(), window.node.toLower() + QLatin1String(" 1")}) {
            const QString node = bySpelling.value(spelling);
            if (node.isEmpty() || problem.hasFix())
                continue;
            addFix(problem, tr("Use %1").arg(node), [item = window.item, node] {
                item->setRenderNode(node);
                item->update();
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::windowsWithDisabledNode(const zoHPCLayout& layout)
{
    List problems;
    for (const Window& window : layout.windows()) {
        if (window.nodeIndex == zoHPCLayout::None)
            continue;
        const zoHPCLayout::Node& node = layout.nodes()[static_cast<size_t>(window.nodeIndex)];
        if (node.enabled)
            continue;
        zoHPCProblem problem(
            Kind::WindowWithDisabledNode, window.item,
            tr("Window %1 of display %2 is on the node \"%3\", which is disabled.")
                .arg(QString::number(window.number), QString::number(window.display), window.node));
        problem.other = node.item;
        addFix(problem, tr("Enable %1").arg(node.name), [item = node.item] { enableWithAncestors(item); });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::overlappingWindows(const zoHPCLayout& layout)
{
    struct Node
    {
        std::map<int, std::vector<const Window*>> screens;
        const Window* desktopFiller = nullptr; // the first one in full screen on the extended desktop
    };
    QHash<QString, Node> nodes;
    QStringList order;
    for (const Window& window : layout.windows()) {
        if (window.node.isEmpty())
            continue;
        if (!nodes.contains(window.node))
            order.append(window.node);
        Node& node = nodes[window.node];
        node.screens[window.screen].push_back(&window);
        if (window.isFullScreen && window.screen == zoHPCLayout::ExtendedDesktop && !node.desktopFiller)
            node.desktopFiller = &window;
    }

    std::map<const Window*, const Window*> partners; // the later window to an earlier one
    const auto addPair = [&partners](const Window* a, const Window* b) {
        if (a != b)
            partners.emplace(std::max(a, b), std::min(a, b));
    };
    for (const QString& name : qAsConst(order)) {
        const Node& node = *nodes.constFind(name);
        for (const auto& screen : node.screens) {
            const std::vector<const Window*>& windows = screen.second;
            const auto filler = std::find_if(windows.begin(), windows.end(),
                                             [](const Window* window) { return window->isFullScreen; });
            const Window* const whole = filler != windows.end() ? *filler : node.desktopFiller;
            if (whole) {
                for (const Window* window : windows)
                    addPair(window, whole);
            } else {
                for (const auto& pair : OverlapFinder(windows).pairs())
                    addPair(pair.first, pair.second);
            }
        }
    }

    List problems;
    for (const auto& pair : partners) {
        const Window& later = *pair.first;
        const Window& earlier = *pair.second;
        zoHPCProblem problem(
            Kind::OverlappingWindows, later.item,
            tr("Window %1 of display %2 and window %3 of display %4 overlap on one screen of "
               "the node \"%5\".")
                .arg(QString::number(earlier.number), QString::number(earlier.display),
                     QString::number(later.number), QString::number(later.display), later.node));
        problem.other = earlier.item;
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::tilesShownNowhere(const zoHPCLayout& layout)
{
    List problems;
    for (const int index :
         tilesOrTheirProjections(layout, [&](size_t i) { return !layout.projections()[i].isShown; })) {
        zoHPCProjectionItem* const item = at(layout, index).item;
        problems.emplace_back(Kind::TileShownNowhere, item,
                              tr("No viewport shows \"%1\".").arg(nameOf(*item)));
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::tilesShownTwice(const zoHPCLayout& layout)
{
    const CoverageOfAll coverage(layout);
    List problems;
    for (const int index :
         tilesOrTheirProjections(layout, [&](size_t i) { return coverage.of(i).isTwice(); })) {
        zoHPCProjectionItem* const item = at(layout, index).item;
        problems.emplace_back(Kind::TileShownTwice, item,
                              tr("More than one viewport shows \"%1\" to the same eye.").arg(nameOf(*item)));
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::tilesForOneEye(const zoHPCLayout& layout)
{
    const CoverageOfAll coverage(layout);
    List problems;
    for (const unsigned eye : {zoHPCLayout::LeftEye, zoHPCLayout::RightEye}) {
        const auto lonely = [&](size_t i) { return (coverage.of(i).lonelyEyes() & eye) != 0; };
        for (const int index : tilesOrTheirProjections(layout, lonely)) {
            zoHPCProjectionItem* const item = at(layout, index).item;
            problems.emplace_back(
                Kind::TileForOneEye, item,
                eye == zoHPCLayout::LeftEye
                    ? tr("\"%1\" is shown to the left eye, but not to the right eye.").arg(nameOf(*item))
                    : tr("\"%1\" is shown to the right eye, but not to the left eye.").arg(nameOf(*item)));
        }
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::degeneratePlanes(const zoHPCLayout& layout)
{
    const auto degenerate = [&](size_t i) {
        const zoHPCProjectionItem& item = *layout.projections()[i].item;
        return isA(item, "plane") && zoHPCPlane::fromItem(item).isDegenerate();
    };
    List problems;
    for (const int index : tilesOrTheirProjections(layout, degenerate)) {
        zoHPCProjectionItem* const item = at(layout, index).item;
        problems.emplace_back(Kind::DegeneratePlane, item, tr("\"%1\" has no area.").arg(nameOf(*item)));
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::skewedPlanes(const zoHPCLayout& layout)
{
    List problems;
    for (const Projection& projection : layout.projections()) {
        if (projection.parent != zoHPCLayout::None || !isA(*projection.item, "plane"))
            continue;
        const double skew = zoHPCPlane::fromItem(*projection.item).skew();
        if (!(skew > LargestSkew))
            continue;
        zoHPCProblem problem(Kind::SkewedPlane, projection.item,
                             tr("The corner of \"%1\" is %2 degrees off a right angle.")
                                 .arg(nameOf(*projection.item), QString::number(skew, 'f', 1)));
        addFix(problem, tr("Make square"), [item = projection.item] {
            squared(zoHPCPlane::fromItem(*item)).toItem(*item);
            item->update();
        });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::mirroredPlanes(const zoHPCLayout& layout)
{
    List problems;
    for (const Projection& projection : layout.projections()) {
        if (projection.parent != zoHPCLayout::None || !turnsItsBack(*projection.item))
            continue;
        zoHPCProjectionItem* const item = projection.item;
        zoHPCProblem problem(
            Kind::MirroredPlane, item,
            tr("\"%1\" faces away from the viewer: its picture is mirrored.").arg(nameOf(*item)));
        if (isA(*item, "plane")) {
            addFix(problem, tr("Turn round"), [item] {
                turnedRound(zoHPCPlane::fromItem(*item)).toItem(*item);
                item->update();
            });
        } else {
            addFix(problem, tr("Make sizes positive"), [item] {
                for (const int column : signedColumns(*item))
                    item->setDouble(column, std::abs(item->getDouble(column)));
                item->update();
            });
        }
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::blendsWiderThanOverlap(const zoHPCLayout& layout)
{
    using P = zoHPCProjectionItem;
    std::vector<zoHPCPlane> planes;
    std::vector<zoHPCProjectionItem*> blended;
    for (const Projection& projection : layout.projections()) {
        if (!projection.isTile || !isA(*projection.item, "plane"))
            continue;
        const zoHPCPlane plane = zoHPCPlane::fromItem(*projection.item);
        if (plane.isDegenerate())
            continue;
        planes.push_back(plane);
        if (projection.parent == zoHPCLayout::None && projection.item->getBool(P::EdgeBlending))
            blended.push_back(projection.item);
    }
    List problems;
    if (blended.empty())
        return problems;

    const PlaneGrid grid(std::move(planes));
    for (zoHPCProjectionItem* item : blended) {
        const Overlaps overlaps = overlapsOf(zoHPCPlane::fromItem(*item), grid);
        // What the render side calls the top edge is the lower one: see zoHPCProjectionItem::addPlane().
        const std::array<std::pair<int, double>, 4> edges = {{{P::LeftEdge, overlaps.left},
                                                              {P::RightEdge, overlaps.right},
                                                              {P::TopEdge, overlaps.lower},
                                                              {P::BottomEdge, overlaps.upper}}};
        constexpr double TOLERANCE = 2e-3;
        const bool tooWide = std::any_of(edges.begin(), edges.end(), [&](const auto& edge) {
            return item->getDouble(edge.first) > edge.second + TOLERANCE;
        });
        if (!tooWide)
            continue;
        zoHPCProblem problem(Kind::BlendWiderThanOverlap, item,
                             tr("The edge blending of \"%1\" is wider than its overlap with other planes.")
                                 .arg(nameOf(*item)));
        addFix(problem, tr("Fit to overlap"), [item, edges] {
            for (const auto& edge : edges)
                item->setDouble(edge.first, std::min(item->getDouble(edge.first), edge.second));
            item->update();
        });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::wallsInMetres(const zoHPCLayout& layout)
{
    List problems;
    for (const Projection& projection : layout.projections()) {
        zoHPCProjectionItem* const item = projection.item;
        if (projection.parent != zoHPCLayout::None || !looksLikeMetres(*item))
            continue;
        zoHPCProblem problem(
            Kind::WallInMetres, item,
            tr("\"%1\" is only a few millimetres in size. Was it measured in metres?").arg(nameOf(*item)));
        addFix(problem, tr("Multiply by 1000"), [item] { multiplyLengths(*item, 1000.0); });
        problems.push_back(problem);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::duplicateHostNames(const zoHPCLayout& layout)
{
    QHash<QString, int> counts;
    for (const zoHPCLayout::Node& node : layout.nodes())
        ++counts[node.item->hostName()];
    QHash<QString, zoHPCTreeItem*> firsts;
    List problems;
    for (const zoHPCLayout::Node& node : layout.nodes()) {
        const QString& name = node.item->hostName();
        const int count = counts.value(name);
        if (name.isEmpty() || count < 2)
            continue;
        if (!firsts.contains(name)) {
            firsts.insert(name, node.item);
            continue;
        }
        // The second one, once: usually the one that was added by mistake.
        zoHPCProblem problem(Kind::DuplicateHostName, node.item,
                             tr("%1 nodes bear the name \"%2\".").arg(QString::number(count), name));
        problem.other = firsts.value(name);
        problems.push_back(problem);
        counts.remove(name);
    }
    return problems;
}

zoHPCProblems::List zoHPCProblems::networksWithoutEnabledNode(const zoHPCLayout& layout)
{
    List problems;
    for (size_t i = 0; i < layout.networks().size(); ++i) {
        const zoHPCLayout::Network& network = layout.networks()[i];
        if (!network.enabled || network.enabledNodes > 0)
            continue;
        zoHPCProblem problem(
            Kind::NetworkWithoutEnabledNode, network.item,
            network.nodes.empty()
                ? tr("%1 number %2 holds no node.").arg(network.item->text(0), QString::number(i + 1))
                : tr("%1 number %2 holds no node that is enabled.")
                      .arg(network.item->text(0), QString::number(i + 1)));
        if (!network.nodes.empty()) {
            addFix(problem, tr("Enable its nodes"), [nodes = network.nodes] {
                for (zoHPCTreeItem* node : nodes)
                    node->setIsEnabled(true);
            });
        }
        problems.push_back(problem);
    }
    return problems;
}
