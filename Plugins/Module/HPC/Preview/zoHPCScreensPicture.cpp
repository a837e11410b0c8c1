#include "zoHPCScreensPicture.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCWindowItem.h"

#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr double s_smallestScale = 1e-4;
constexpr double s_largestScale = 20.0;
constexpr double s_edgeReach = 5.0; // units of the picture

} // namespace

void zoHPCScreensPicture::setLayout(const zoHPCLayout& layout)
{
    read(layout);
    arrange(m_aspect);
}

void zoHPCScreensPicture::updateLayout(const zoHPCLayout& layout)
{
    const std::vector<Node> before = std::move(m_nodes);
    read(layout);
    bool same = before.size() == m_nodes.size();
    for (size_t i = 0; i < m_nodes.size() && same; ++i) {
        same = before[i].name == m_nodes[i].name && before[i].screens.size() == m_nodes[i].screens.size();
        for (size_t j = 0; same && j < m_nodes[i].screens.size(); ++j)
            same = before[i].screens[j].number == m_nodes[i].screens[j].number;
    }
    if (!same) {
        arrange(m_aspect);
        return;
    }
    for (size_t i = 0; i < m_nodes.size(); ++i) {
        m_nodes[i].card = before[i].card;
        for (size_t j = 0; j < m_nodes[i].screens.size(); ++j)
            m_nodes[i].screens[j].origin = before[i].screens[j].origin;
    }
}

void zoHPCScreensPicture::fit(const QRectF& area)
{
    if (area.isEmpty())
        return;
    m_placement.titlePart = Placement::Title;
    fitSheet(area);
    // Names of many nodes need more of the sheet, as long as they get what they need.
    constexpr double Letters = (zoHPCPictureStyle::SmallestLetters + 1) / 0.75;
    constexpr double LargestPart = 0.6;
    for (int round = 0; round < 4 && !m_sheet.isEmpty() && m_placement.title() < Letters; ++round) {
        m_placement.titlePart = 1.05 * Letters / (m_placement.screenHeight * m_placement.scale);
        if (m_placement.titlePart > LargestPart)
            break;
        fitSheet(area);
    }
    if (m_placement.titlePart > LargestPart) {
        m_placement.titlePart = Placement::Title;
        fitSheet(area);
    }
}

void zoHPCScreensPicture::fitSheet(const QRectF& area)
{
    arrange(area.width() / area.height());
    if (m_sheet.isEmpty())
        return;
    const double scale = std::min(area.width() / m_sheet.width(), area.height() / m_sheet.height());
    m_placement.scale = qBound(s_smallestScale, 0.97 * scale, 1.0);
    m_placement.offset = area.center() - m_placement.scale * m_sheet.center();
}

void zoHPCScreensPicture::zoom(double factor, const QPointF& about)
{
    if (!(factor > 0.0))
        return;
    const double scale = qBound(s_smallestScale, m_placement.scale * factor, s_largestScale);
    m_placement.offset = about - (scale / m_placement.scale) * (about - m_placement.offset);
    m_placement.scale = scale;
}

QRectF zoHPCScreensPicture::placeOf(const zoHPCWindowItem* window) const
{
    const auto found = find(window);
    return found.second ? m_placement.toPicture(found.second->geometry.translated(found.first->origin))
                        : QRectF();
}

QRectF zoHPCScreensPicture::placeBeside(const zoHPCWindowItem* window, const QRectF& pixels) const
{
    const auto found = find(window);
    return found.first ? m_placement.toPicture(pixels.translated(found.first->origin)) : QRectF();
}

zoHPCScreensPicture::EdgeLines zoHPCScreensPicture::linesFor(const zoHPCWindowItem* window) const
{
    EdgeLines lines;
    const Screen* const screen = find(window).first;
    if (!screen)
        return lines;
    const auto add = [&lines](const QRectF& box) {
        lines.x.push_back(qRound(box.left()));
        lines.x.push_back(qRound(box.right()));
        lines.y.push_back(qRound(box.top()));
        lines.y.push_back(qRound(box.bottom()));
    };
    // A size that follows the windows is none that one of them could be put against.
    add(QRectF(QPointF(0.0, 0.0), screen->isSizeKnown ? screen->size : QSizeF()));
    for (const Window& other : screen->windows) {
        if (other.item != window && !other.isFullScreen)
            add(other.geometry);
    }
    return lines;
}

bool zoHPCScreensPicture::isReadable(const QRectF& area) const
{
    Q_UNUSED(area)
    return std::all_of(m_nodes.begin(), m_nodes.end(),
                       [&](const Node& node) { return zoHPCScreensPainter::isReadable(node, m_placement); });
}

void zoHPCScreensPicture::paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                                Detail detail) const
{
    const zoHPCPictureStyle style(palette);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.fillRect(area, style.background);
    painter.setFont(style.font);
    if (m_nodes.empty()) {
        painter.setPen(style.faintText);
        painter.drawText(area, Qt::AlignCenter, tr("No windows"));
    }
    painter.setRenderHint(QPainter::Antialiasing, detail == Detail::Full);
    const zoHPCScreensPainter nodePainter(painter, style, detail, m_placement, m_current);
    // Current windows last: one that is dragged off its screen covers the nodes beside it.
    for (const bool isCurrent : {false, true}) {
        for (const Node& node : m_nodes) {
            if (hasCurrentWindow(node) == isCurrent &&
                (isCurrent || m_placement.toPicture(node.card).intersects(area)))
                nodePainter.paintNode(node);
        }
    }
    painter.restore();
}

bool zoHPCScreensPicture::hasCurrentWindow(const Node& node) const
{
    const auto isCurrent = [this](const Window& window) {
        return m_current.contains(static_cast<const QTreeWidgetItem*>(window.item));
    };
    return !m_current.isEmpty() &&
           std::any_of(node.screens.begin(), node.screens.end(), [&](const Screen& screen) {
               return std::any_of(screen.windows.begin(), screen.windows.end(), isCurrent);
           });
}

zoHPCScreensPicture::Hit zoHPCScreensPicture::hitTest(const QPointF& point) const
{
    // What lies on top is found first; an edge may be taken from outside only where no window lies.
    Hit beside;
    for (auto node = m_nodes.rbegin(); node != m_nodes.rend(); ++node) {
        for (auto screen = node->screens.rbegin(); screen != node->screens.rend(); ++screen) {
            for (auto window = screen->windows.rbegin(); window != screen->windows.rend(); ++window) {
                const QRectF place = m_placement.toPicture(window->geometry.translated(screen->origin));
                if (!place.adjusted(-s_edgeReach, -s_edgeReach, s_edgeReach, s_edgeReach).contains(point))
                    continue;
                Hit hit;
                hit.window = window->item;
                hit.canMove = !window->isFullScreen;
                if (hit.canMove) {
                    // In a narrow window the inside stays free to move it.
                    const double reachX = std::min(s_edgeReach, place.width() / 4.0);
                    const double reachY = std::min(s_edgeReach, place.height() / 4.0);
                    if (point.x() < place.left() + reachX)
                        hit.edges |= LeftEdge;
                    else if (point.x() > place.right() - reachX)
                        hit.edges |= RightEdge;
                    if (point.y() < place.top() + reachY)
                        hit.edges |= TopEdge;
                    else if (point.y() > place.bottom() - reachY)
                        hit.edges |= BottomEdge;
                }
                if (!place.contains(point)) {
                    if (hit.canMove && !beside.window)
                        beside = hit;
                    continue;
                }
                for (auto viewport = window->viewports.rbegin(); viewport != window->viewports.rend();
                     ++viewport) {
                    const QRectF& part = viewport->area;
                    const QRectF inside(place.left() + part.left() * place.width(),
                                        place.top() + part.top() * place.height(),
                                        part.width() * place.width(), part.height() * place.height());
                    if (inside.contains(point)) {
                        hit.viewport = viewport->item;
                        break;
                    }
                }
                return hit;
            }
        }
    }
    return beside;
}

QString zoHPCScreensPicture::nodeAt(const QPointF& point) const
{
    const auto node = std::find_if(m_nodes.begin(), m_nodes.end(), [&](const Node& one) {
        return m_placement.toPicture(one.card).contains(point);
    });
    return node == m_nodes.end() ? QString() : node->name;
}

QString zoHPCScreensPicture::screenName(int number)
{
    return zoHPCScreensPainter::screenName(number);
}

QString zoHPCScreensPicture::eyeName(const QString& eye)
{
    return zoHPCScreensPainter::eyeName(eye);
}

std::pair<const zoHPCScreensPicture::Screen*, const zoHPCScreensPicture::Window*>
zoHPCScreensPicture::find(const zoHPCWindowItem* window) const
{
    for (const Node& node : m_nodes) {
        for (const Screen& screen : node.screens) {
            for (const Window& candidate : screen.windows) {
                if (candidate.item == window)
                    return {&screen, &candidate};
            }
        }
    }
    return {nullptr, nullptr};
}

void zoHPCScreensPicture::read(const zoHPCLayout& layout)
{
    constexpr size_t ManyWindows = 200;
    m_isLarge = layout.windows().size() > ManyWindows;
    m_nodes = zoHPCScreenNode::read(layout, m_screenSize);
    int number = 0;
    for (Node& node : m_nodes)
        node.number = ++number;
}

void zoHPCScreensPicture::arrange(double aspect)
{
    m_aspect = aspect;
    std::vector<double> heights;
    for (const Node& node : m_nodes) {
        for (const Screen& screen : node.screens)
            heights.push_back(screen.size.height());
    }
    if (heights.empty()) {
        m_sheet = QRectF();
        return;
    }
    std::nth_element(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2),
                     heights.end());
    m_placement.screenHeight = std::max(heights[heights.size() / 2], 1.0);

    const double gap = Placement::Gap * m_placement.screenHeight;
    double area = 0.0;
    double widest = 0.0;
    for (Node& node : m_nodes) {
        double width = gap;
        double height = 0.0;
        for (const Screen& screen : node.screens) {
            width += screen.bounds.width() + gap;
            height = std::max(height, screen.bounds.height());
        }
        node.card = QRectF(
            0.0, 0.0, width,
            height + (m_placement.titlePart + Placement::ScreenTitle) * m_placement.screenHeight + gap);
        area += (width + gap) * (node.card.height() + gap);
        widest = std::max(widest, width);
    }

    // Rows of cards in the order of the windows, as wide as shows them largest.
    const double usual = std::sqrt(area * std::max(aspect, 0.1));
    double bestWidth = widest;
    double bestScale = 0.0;
    for (double width = 0.6 * usual; width < 2.5 * usual; width *= 1.07) {
        const QSizeF size = placeCards(std::max(width, widest), gap).size();
        const double scale = std::min(aspect / size.width(), 1.0 / size.height());
        if (scale > bestScale * 1.001) {
            bestScale = scale;
            bestWidth = std::max(width, widest);
        }
    }
    m_sheet = placeCards(bestWidth, gap);
    for (Node& node : m_nodes) {
        double left = node.card.left() + gap;
        for (Screen& screen : node.screens) {
            screen.origin = QPointF(left, node.card.top() + (m_placement.titlePart + Placement::ScreenTitle) *
                                                                m_placement.screenHeight) -
                            screen.bounds.topLeft();
            left += screen.bounds.width() + gap;
        }
    }
}

QRectF zoHPCScreensPicture::placeCards(double rowWidth, double gap)
{
    double x = 0.0;
    double y = 0.0;
    double rowHeight = 0.0;
    QRectF sheet;
    for (Node& node : m_nodes) {
        if (x > 0.0 && x + node.card.width() > rowWidth) {
            x = 0.0;
            y += rowHeight + gap;
            rowHeight = 0.0;
        }
        node.card.moveTopLeft(QPointF(x, y));
        x += node.card.width() + gap;
        rowHeight = std::max(rowHeight, node.card.height());
        sheet = sheet.isNull() ? node.card : sheet.united(node.card);
    }
    return sheet;
}
