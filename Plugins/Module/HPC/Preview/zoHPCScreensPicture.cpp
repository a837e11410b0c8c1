#include "zoHPCScreensPicture.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCProblems.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace
{
// Parts of the usual height of a screen.
constexpr double GAP = 0.07;
constexpr double TITLE = 0.15;
constexpr double SCREEN_TITLE = 0.11;

constexpr double SMALLEST_SCALE = 1e-4;
constexpr double LARGEST_SCALE = 20.0;
constexpr double EDGE_REACH = 5.0; // units of the picture

// Damaged numbers must not make everything else vanish.
constexpr double FARTHEST_PIXEL = 65536.0;

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

QRectF limited(const QRectF& geometry)
{
    return geometry.normalized().intersected(
        QRectF(-FARTHEST_PIXEL, -FARTHEST_PIXEL, 2 * FARTHEST_PIXEL, 2 * FARTHEST_PIXEL));
}

QString sizeText(const QSizeF& size)
{
    return QString::number(qRound(size.width())) + QString::fromUtf8(" × ") +
           QString::number(qRound(size.height()));
}
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
    arrange(area.width() / area.height());
    if (m_sheet.isEmpty())
        return;
    const double scale = std::min(area.width() / m_sheet.width(), area.height() / m_sheet.height());
    m_scale = qBound(SMALLEST_SCALE, 0.97 * scale, 1.0);
    m_offset = area.center() - m_scale * m_sheet.center();
}

void zoHPCScreensPicture::zoom(double factor, const QPointF& about)
{
    if (!(factor > 0.0))
        return;
    const double scale = qBound(SMALLEST_SCALE, m_scale * factor, LARGEST_SCALE);
    m_offset = about - (scale / m_scale) * (about - m_offset);
    m_scale = scale;
}

QRectF zoHPCScreensPicture::placeOf(const zoHPCWindowItem* window) const
{
    const auto found = find(window);
    return found.second ? toPicture(found.second->geometry.translated(found.first->origin)) : QRectF();
}

QRectF zoHPCScreensPicture::placeBeside(const zoHPCWindowItem* window, const QRectF& pixels) const
{
    const auto found = find(window);
    return found.first ? toPicture(pixels.translated(found.first->origin)) : QRectF();
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
    for (const Node& node : m_nodes) {
        if (toPicture(node.card).intersects(area))
            paintNode(painter, style, node, detail);
    }
    painter.restore();
}

zoHPCScreensPicture::Hit zoHPCScreensPicture::hitTest(const QPointF& point) const
{
    // What lies on top is found first; an edge may be taken from outside only where no window lies.
    Hit beside;
    for (auto node = m_nodes.rbegin(); node != m_nodes.rend(); ++node) {
        for (auto screen = node->screens.rbegin(); screen != node->screens.rend(); ++screen) {
            for (auto window = screen->windows.rbegin(); window != screen->windows.rend(); ++window) {
                const QRectF place = toPicture(window->geometry.translated(screen->origin));
                if (!place.adjusted(-EDGE_REACH, -EDGE_REACH, EDGE_REACH, EDGE_REACH).contains(point))
                    continue;
                Hit hit;
                hit.window = window->item;
                hit.canMove = !window->isFullScreen;
                if (hit.canMove) {
                    // In a narrow window the inside stays free to move it.
                    const double reachX = std::min(EDGE_REACH, place.width() / 4.0);
                    const double reachY = std::min(EDGE_REACH, place.height() / 4.0);
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

QString zoHPCScreensPicture::screenName(int number)
{
    if (number == zoHPCLayout::ExtendedDesktop)
        return tr("Extended desktop");
    if (number == zoHPCLayout::PrimaryScreen)
        return tr("Primary screen");
    return tr("Screen %1").arg(QString::number(static_cast<qint64>(number) + 1));
}

QString zoHPCScreensPicture::eyeName(const QString& eye)
{
    static const struct
    {
        const char* eye;
        const char* name;
    } NAMES[] = {
        {"left", QT_TR_NOOP("Left")},
        {"right", QT_TR_NOOP("Right")},
        {"stereo", QT_TR_NOOP("Double Buffered")},
        {"horizontalinterlaced", QT_TR_NOOP("Horizontal Interlaced")},
        {"verticalinterlaced", QT_TR_NOOP("Vertical Interlaced")},
        {"splitleftright", QT_TR_NOOP("Left/Right Split")},
        {"splitbottomtop", QT_TR_NOOP("Top/Bottom Split")},
        {"redcyan", QT_TR_NOOP("Red/Cyan")},
        {"blueyellow", QT_TR_NOOP("Blue/Yellow")},
        {"greenmagenta", QT_TR_NOOP("Green/Magenta")},
    };
    for (const auto& entry : NAMES) {
        if (eye == QLatin1String(entry.eye))
            return tr(entry.name);
    }
    return QString();
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
    m_nodes.clear();
    constexpr size_t MANY_WINDOWS = 200;
    m_isLarge = layout.windows().size() > MANY_WINDOWS;
    QHash<QString, size_t> nodesByName;
    std::vector<std::pair<size_t, size_t>> places; // of each window of the layout: node, and where in it
    std::vector<std::vector<std::pair<int, Window>>> windows; // by node: screen and window
    const bool manyDisplays =
        !layout.windows().empty() && layout.windows().front().display != layout.windows().back().display;
    for (const zoHPCLayout::Window& source : layout.windows()) {
        const auto known = nodesByName.constFind(source.node);
        size_t index = m_nodes.size();
        if (known != nodesByName.constEnd()) {
            index = *known;
        } else {
            nodesByName.insert(source.node, index);
            Node node;
            node.name = source.node;
            node.isKnown = source.nodeIndex != zoHPCLayout::None;
            node.isEnabled = node.isKnown && layout.nodes()[static_cast<size_t>(source.nodeIndex)].enabled;
            m_nodes.push_back(node);
            windows.emplace_back();
        }
        Window window;
        window.item = source.item;
        window.name = manyDisplays ? tr("Window %1 of display %2")
                                         .arg(QString::number(source.number), QString::number(source.display))
                                   : tr("Window %1").arg(QString::number(source.number));
        window.isFullScreen = source.isFullScreen;
        window.geometry = source.geometry;
        places.emplace_back(index, windows[index].size());
        windows[index].emplace_back(source.screen, window);
    }
    const auto windowAt = [&](int index) -> Window& {
        const auto& place = places[static_cast<size_t>(index)];
        return windows[place.first][place.second].second;
    };
    for (const zoHPCLayout::Viewport& source : layout.viewports()) {
        if (source.window == zoHPCLayout::None)
            continue;
        Viewport viewport;
        viewport.item = source.item;
        if (source.projection != zoHPCLayout::None) {
            const zoHPCLayout::Projection& projection =
                layout.projections()[static_cast<size_t>(source.projection)];
            viewport.shown = projection.item;
            viewport.shownTop = layout.projections()[static_cast<size_t>(projection.top)].item;
            viewport.projection = projection.item->getString(zoHPCProjectionItem::Name);
        }
        viewport.eye = source.item->getString(zoHPCViewportItem::Eye);
        viewport.isFlippedX = source.item->getBool(zoHPCViewportItem::FlipX);
        viewport.isFlippedY = source.item->getBool(zoHPCViewportItem::FlipY);
        viewport.area = source.area;
        windowAt(source.window).viewports.push_back(viewport);
    }

    for (size_t i = 0; i < m_nodes.size(); ++i) {
        std::vector<Screen>& screens = m_nodes[i].screens;
        for (auto& window : windows[i]) {
            auto screen = std::find_if(screens.begin(), screens.end(),
                                       [&](const Screen& s) { return s.number == window.first; });
            if (screen == screens.end()) {
                screen = screens.insert(screens.end(), Screen());
                screen->number = window.first;
            }
            screen->windows.push_back(std::move(window.second));
        }
        std::sort(screens.begin(), screens.end(),
                  [](const Screen& a, const Screen& b) { return a.number < b.number; });
        for (Screen& screen : screens)
            measure(screen);
    }

    QHash<const QTreeWidgetItem*, std::pair<Screen*, Window*>> byItem;
    for (Node& node : m_nodes) {
        for (Screen& screen : node.screens) {
            for (Window& window : screen.windows)
                byItem.insert(window.item, {&screen, &window});
        }
    }
    for (const zoHPCProblem& problem : zoHPCProblems::overlappingWindows(layout)) {
        const auto later = byItem.value(problem.item);
        const auto earlier = byItem.value(problem.other);
        if (!later.second || !earlier.second)
            continue;
        later.second->overlaps = true;
        earlier.second->overlaps = true;
        if (later.first == earlier.first)
            later.first->overlaps.push_back(later.second->geometry.intersected(earlier.second->geometry));
    }
    for (Node& node : m_nodes) {
        for (Screen& screen : node.screens)
            markCovered(screen);
    }
}

void zoHPCScreensPicture::markCovered(Screen& screen)
{
    // Texts on top of each other can be read by nobody: those of a window wholly below a later one stay away.
    constexpr size_t MANY = 500;
    for (size_t i = 0; i < screen.windows.size(); ++i) {
        if (!screen.windows[i].overlaps)
            continue;
        const size_t end = std::min(screen.windows.size(), i + MANY);
        for (size_t j = i + 1; j < end && !screen.windows[i].isCovered; ++j)
            screen.windows[i].isCovered = screen.windows[j].geometry.contains(screen.windows[i].geometry);
    }
}

void zoHPCScreensPicture::measure(Screen& screen) const
{
    const bool isDesktop = screen.number == zoHPCLayout::ExtendedDesktop;
    screen.isSizeKnown = !m_screenSize.isEmpty() && !isDesktop;
    QSizeF needed;
    QSizeF whole;
    for (const Window& window : screen.windows) {
        const QRectF geometry = limited(window.geometry);
        if (window.isFullScreen)
            whole = whole.expandedTo(geometry.size());
        else
            needed = needed.expandedTo(QSizeF(geometry.right(), geometry.bottom()));
    }
    screen.size = screen.isSizeKnown ? m_screenSize : needed.isEmpty() ? whole : needed;
    if (screen.size.isEmpty())
        screen.size = QSizeF(1280.0, 1024.0);

    const QRectF face(QPointF(0.0, 0.0), screen.size);
    screen.bounds = face;
    for (Window& window : screen.windows) {
        if (window.isFullScreen) {
            window.geometry = face;
            continue;
        }
        window.geometry = limited(window.geometry);
        screen.bounds = screen.bounds.united(window.geometry);
        window.isOffScreen = !isDesktop && !face.contains(window.geometry);
    }
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
    m_unit = std::max(heights[heights.size() / 2], 1.0);

    const double gap = GAP * m_unit;
    double area = 0.0;
    double widest = 0.0;
    for (Node& node : m_nodes) {
        double width = gap;
        double height = 0.0;
        for (const Screen& screen : node.screens) {
            width += screen.bounds.width() + gap;
            height = std::max(height, screen.bounds.height());
        }
        node.card = QRectF(0.0, 0.0, width, height + (TITLE + SCREEN_TITLE) * m_unit + gap);
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
            screen.origin =
                QPointF(left, node.card.top() + (TITLE + SCREEN_TITLE) * m_unit) - screen.bounds.topLeft();
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

QRectF zoHPCScreensPicture::toPicture(const QRectF& onSheet) const
{
    return QRectF(m_offset + m_scale * onSheet.topLeft(), m_scale * onSheet.size());
}

void zoHPCScreensPicture::paintNode(QPainter& painter, const zoHPCPictureStyle& style, const Node& node,
                                    Detail detail) const
{
    const QRectF card = toPicture(node.card);
    const bool isBad = node.name.isEmpty() || !node.isKnown || !node.isEnabled;
    const double corner = std::min(6.0, 0.03 * m_unit * m_scale);
    // Dashes cost much and are not seen round a card as small as a stamp.
    const bool isSmall = corner < 2.0;
    painter.setPen(isBad ? QPen(style.bad, isSmall ? 1.0 : 1.5, isSmall ? Qt::SolidLine : Qt::DashLine)
                         : QPen(style.grid, 1.0));
    painter.setBrush(style.panel);
    if (isSmall)
        painter.drawRect(card);
    else
        painter.drawRoundedRect(card, corner, corner);

    QString title = node.name;
    if (node.name.isEmpty())
        title = tr("No render node");
    else if (!node.isKnown)
        title = tr("%1 (not in the cluster)").arg(node.name);
    else if (!node.isEnabled)
        title = tr("%1 (disabled)").arg(node.name);
    const double gap = GAP * m_unit * m_scale;
    const double height = TITLE * m_unit * m_scale;
    QFont font = style.font;
    font.setBold(true);
    painter.setFont(font);
    paintText(painter, QRectF(card.left() + gap, card.top(), card.width() - 2 * gap, height),
              Qt::AlignLeft | Qt::AlignVCenter, title, isBad ? style.bad : style.text, 0.75 * height);
    painter.setFont(style.font);
    for (const Screen& screen : node.screens)
        paintScreen(painter, style, screen, detail);
}

void zoHPCScreensPicture::paintScreen(QPainter& painter, const zoHPCPictureStyle& style, const Screen& screen,
                                      Detail detail) const
{
    const QRectF face = toPicture(QRectF(screen.origin, screen.size));
    const bool isSmall = face.width() < 40.0;
    painter.setPen(QPen(style.faintText, 1.0, screen.isSizeKnown || isSmall ? Qt::SolidLine : Qt::DashLine));
    painter.setBrush(style.background);
    painter.drawRect(face);

    const QRectF bounds = toPicture(screen.bounds.translated(screen.origin));
    const double height = SCREEN_TITLE * m_unit * m_scale;
    paintText(painter, QRectF(bounds.left(), bounds.top() - height, bounds.width(), height),
              Qt::AlignLeft | Qt::AlignVCenter, screenName(screen.number), style.faintText, 0.75 * height);

    for (const Window& window : screen.windows)
        paintWindow(painter, style, screen, window, detail);
    for (const QRectF& overlap : screen.overlaps) {
        const QRectF place = toPicture(overlap.translated(screen.origin));
        painter.setPen(QPen(style.bad, 2.0));
        painter.setBrush(QBrush(withAlpha(style.bad, 0.7), Qt::DiagCrossPattern));
        painter.drawRect(place);
    }
    for (const Window& window : screen.windows) {
        if (!window.isCovered)
            paintCaption(painter, style, screen, window);
    }
}

void zoHPCScreensPicture::paintWindow(QPainter& painter, const zoHPCPictureStyle& style, const Screen& screen,
                                      const Window& window, Detail detail) const
{
    const QRectF place = toPicture(window.geometry.translated(screen.origin));
    painter.fillRect(place, withAlpha(style.text, 0.10));
    for (const Viewport& viewport : window.viewports)
        paintViewport(painter, style, viewport, place);
    if (!window.isCovered) {
        // One for each eye may fill the same place: their texts go one below the other.
        std::map<std::array<double, 4>, std::pair<int, int>> rows; // painted, of all
        const auto rowsOf = [&rows](const Viewport& viewport) -> std::pair<int, int>& {
            const QRectF& area = viewport.area;
            return rows[{area.x(), area.y(), area.width(), area.height()}];
        };
        const bool isAlone = window.viewports.size() < 2;
        for (const Viewport& viewport : window.viewports) {
            if (!isAlone)
                ++rowsOf(viewport).second;
        }
        for (const Viewport& viewport : window.viewports) {
            if (detail == Detail::Fast && viewport.area.width() * place.width() < 60.0)
                continue;
            const std::pair<int, int> row =
                isAlone ? std::make_pair(0, 1)
                        : std::make_pair(rowsOf(viewport).first++, rowsOf(viewport).second);
            paintViewportText(painter, style, viewport, place, row.first, row.second);
        }
    }

    if (window.isOffScreen && place.width() > 0.0 && place.height() > 0.0) {
        // What is not on the screen, and nothing else.
        painter.save();
        const QRectF face = toPicture(QRectF(screen.origin, screen.size));
        QRegion outside(place.toAlignedRect());
        outside -= face.toAlignedRect();
        painter.setClipRegion(outside, Qt::IntersectClip);
        painter.setBrush(QBrush(withAlpha(style.bad, 0.7), Qt::BDiagPattern));
        painter.drawRect(place);
        painter.restore();
    }
    const bool isBad = window.overlaps || window.isOffScreen;
    painter.setBrush(Qt::NoBrush);
    if (isCurrent(window.item)) {
        painter.setPen(QPen(style.background, 6.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(place);
        painter.setPen(QPen(style.current, 3.5, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    } else if (isBad) {
        painter.setPen(QPen(style.bad, 2.5, window.isOffScreen ? Qt::DashLine : Qt::SolidLine));
    } else {
        painter.setPen(QPen(style.line, 1.0));
    }
    painter.drawRect(place);
}

void zoHPCScreensPicture::paintCaption(QPainter& painter, const zoHPCPictureStyle& style,
                                       const Screen& screen, const Window& window) const
{
    const QRectF place = toPicture(window.geometry.translated(screen.origin));
    const bool isBad = window.overlaps || window.isOffScreen;
    QString text = window.isFullScreen ? tr("%1, full screen").arg(window.name)
                                       : tr("%1, %2 at %3, %4")
                                             .arg(window.name, sizeText(window.geometry.size()),
                                                  QString::number(qRound(window.geometry.x())),
                                                  QString::number(qRound(window.geometry.y())));
    if (window.isOffScreen)
        text = tr("%1, partly off the screen").arg(text);
    if (window.overlaps)
        text = tr("%1, overlaps").arg(text);
    const double height = SCREEN_TITLE * m_unit * m_scale;
    const QRectF box(place.left() + 4.0, place.top() + 3.0, place.width() - 8.0, height);
    paintText(painter, box, Qt::AlignLeft | Qt::AlignTop, text, isBad ? style.bad : style.text, 0.65 * height,
              isBad ? withAlpha(style.background, 0.85) : QColor());
}

void zoHPCScreensPicture::paintViewport(QPainter& painter, const zoHPCPictureStyle& style,
                                        const Viewport& viewport, const QRectF& place) const
{
    const QRectF& part = viewport.area;
    const QRectF box(place.left() + part.left() * place.width(), place.top() + part.top() * place.height(),
                     part.width() * place.width(), part.height() * place.height());
    const unsigned eyes = zoHPCLayout::eyesOf(viewport.eye);
    const bool isStereo = viewport.eye != QLatin1String("mono") && !viewport.eye.isEmpty();
    QColor color = style.bothEyes;
    if (eyes == zoHPCLayout::LeftEye)
        color = style.leftEye;
    else if (eyes == zoHPCLayout::RightEye)
        color = style.rightEye;
    const bool isHighlighted =
        isCurrent(viewport.item) || isCurrent(viewport.shown) || isCurrent(viewport.shownTop);

    if (viewport.projection.isEmpty()) {
        painter.setPen(QPen(style.bad, 1.5, Qt::DashLine));
        painter.setBrush(QBrush(withAlpha(style.bad, 0.5), Qt::FDiagPattern));
        painter.drawRect(box);
    } else {
        painter.fillRect(box, withAlpha(color, isStereo ? 0.45 : 0.25));
        // The outline of one that fills its window is the window's.
        if (part != QRectF(0.0, 0.0, 1.0, 1.0)) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(style.line, 1.0));
            painter.drawRect(box);
        }
    }
    // Modes that divide the window among the eyes show where.
    painter.setPen(QPen(style.line, 1.0, Qt::DotLine));
    if (viewport.eye == QLatin1String("splitleftright"))
        painter.drawLine(QPointF(box.center().x(), box.top()), QPointF(box.center().x(), box.bottom()));
    else if (viewport.eye == QLatin1String("splitbottomtop"))
        painter.drawLine(QPointF(box.left(), box.center().y()), QPointF(box.right(), box.center().y()));
    if (isHighlighted) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(style.current, 3.0, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(box.adjusted(2.5, 2.5, -2.5, -2.5));
    }
}

void zoHPCScreensPicture::paintViewportText(QPainter& painter, const zoHPCPictureStyle& style,
                                            const Viewport& viewport, const QRectF& place, int row,
                                            int rows) const
{
    const QRectF& part = viewport.area;
    const QRectF box(place.left() + part.left() * place.width(), place.top() + part.top() * place.height(),
                     part.width() * place.width(), part.height() * place.height());
    const double height = SCREEN_TITLE * m_unit * m_scale;
    const double top = box.center().y() + (2.0 * row - rows) * height;
    const QRectF upper(box.left() + 4.0, top, box.width() - 8.0, height);
    const bool isEmpty = viewport.projection.isEmpty();
    paintText(painter, upper, Qt::AlignHCenter | Qt::AlignBottom,
              isEmpty ? tr("No projection") : viewport.projection, isEmpty ? style.bad : style.text,
              0.8 * height);
    QString eye = eyeName(viewport.eye);
    if (viewport.isFlippedX || viewport.isFlippedY)
        eye = eye.isEmpty() ? tr("flipped") : tr("%1, flipped").arg(eye);
    if (!eye.isEmpty())
        paintText(painter, upper.translated(0.0, height), Qt::AlignHCenter | Qt::AlignTop, eye, style.text,
                  0.65 * height);
}

void zoHPCScreensPicture::paintText(QPainter& painter, const QRectF& box, int flags, const QString& text,
                                    const QColor& color, double height, const QColor& ground)
{
    // Smaller letters cannot be read, larger ones say no more.
    constexpr double SMALLEST = 6.0;
    constexpr double LARGEST = 15.0;
    if (height < SMALLEST || box.width() < 2.0 * SMALLEST)
        return;
    const QFont before = painter.font();
    QFont font = before;
    font.setPixelSize(static_cast<int>(std::min(height, LARGEST)));
    painter.setFont(font);
    const QFontMetricsF metrics(font, painter.device());
    const QString shown = metrics.elidedText(text, Qt::ElideRight, box.width());
    if (ground.isValid()) {
        const QRectF behind(box.topLeft(), QSizeF(metrics.horizontalAdvance(shown), metrics.height()));
        painter.fillRect(behind.adjusted(-2.0, 0.0, 2.0, 0.0), ground);
    }
    painter.setPen(color);
    painter.drawText(box, flags | Qt::TextSingleLine, shown);
    painter.setFont(before);
}
