#include "zoHPCScreensView.h"

#include "zoHPCLayout.h"
#include "zoHPCPictureStyle.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoText.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace
{
// A window never gets smaller by dragging, so that it can still be taken (pixels).
constexpr int s_smallestWindow = 16;
// Further away no screen is (pixels).
constexpr int s_farthest = 100000;

// How near an edge comes to a line before it lies on it (units of the picture).
constexpr double s_snapReach = 8.0;

int limited(double value)
{
    return qRound(qBound(-double(s_farthest), value, double(s_farthest)));
}

// How far it is to the line that is nearest to one of the two edges, of which either may not move; 0 when
// none is within reach.
int wayToLine(const std::vector<int>& lines, bool first, int begin, bool second, int end, int reach)
{
    int way = 0;
    int least = reach + 1;
    const auto consider = [&](int candidate) {
        if (std::abs(candidate) < least) {
            way = candidate;
            least = std::abs(candidate);
        }
    };
    for (const int line : lines) {
        if (first)
            consider(line - begin);
        if (second)
            consider(line - end);
    }
    return way;
}
} // namespace

zoHPCScreensView::zoHPCScreensView(QWidget* parent) : zoHPCPictureView(parent)
{
    setMouseTracking(true);
    setAccessibleName(tr("Screens"));
    setAccessibleDescription(tr("The windows on the screens of each render node"));
}

zoHPCScreensView::~zoHPCScreensView() = default;

void zoHPCScreensView::showLayout(std::shared_ptr<const zoHPCLayout> layout)
{
    m_layout = std::move(layout);
    if (!isShown(m_hit.window))
        letGo();
    const zoHPCLayout& shown = m_layout ? *m_layout : zoHPCLayout();
    if (m_isWindowDragged) {
        m_picture.updateLayout(shown);
    } else {
        m_picture.setLayout(shown);
        fitAgain();
    }
    update();
}

void zoHPCScreensView::setCurrentItems(const zoHPCPicture::Rows& items)
{
    m_picture.setCurrentItems(items);
    update();
}

void zoHPCScreensView::setScreenSize(const QSizeF& size)
{
    m_picture.setScreenSize(size);
    showLayout(m_layout);
}

bool zoHPCScreensView::event(QEvent* event)
{
    // Escape belongs to a drag first, then to the dialog around.
    if (event->type() == QEvent::ShortcutOverride && m_isWindowDragged &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return zoHPCPictureView::event(event);
}

QString zoHPCScreensView::toolTipAt(const QPoint& position)
{
    const zoHPCScreensPicture::Hit hit = m_picture.hitTest(position);
    const QTreeWidgetItem* const item =
        hit.viewport ? static_cast<const QTreeWidgetItem*>(hit.viewport) : hit.window;
    const QString node = m_picture.nodeAt(position);
    if (!item)
        return node.isEmpty() ? QString() : zoText("<qt>%1</qt>").arg(node.toHtmlEscaped());
    // What the picture may have no room for.
    QStringList lines{item->text(0)};
    if (hit.viewport)
        lines << hit.window->text(0);
    lines << placeText(*hit.window);
    if (hit.canMove)
        lines << tr("Drag it, or one of its edges. Ctrl: free of the edges beside it.");
    return zoText("<qt>%1</qt>")
        .arg(lines.join(QLatin1Char('\n')).toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

QString zoHPCScreensView::placeText(const zoHPCWindowItem& window)
{
    const QRect place = geometryOf(window);
    return tr("%1 by %2 at %3, %4")
        .arg(QString::number(place.width()), QString::number(place.height()), QString::number(place.x()),
             QString::number(place.y()));
}

void zoHPCScreensView::paintEvent(QPaintEvent* event)
{
    zoHPCPictureView::paintEvent(event);
    if (!m_isWindowDragged)
        return;
    QPainter painter(this);
    paintGuides(painter);
    paintPlace(painter);
}

// Beside the upper left corner, as far as that is in sight.
void zoHPCScreensView::paintPlace(QPainter& painter) const
{
    if (!isShown(m_hit.window))
        return;
    const zoHPCPictureStyle style(palette());
    const QString text = placeText(*m_hit.window);
    const QFontMetrics metrics(font());
    QRect box(QPoint(), metrics.size(Qt::TextSingleLine, text) + QSize(10, 4));
    box.moveBottomLeft(m_picture.placeOf(m_hit.window).topLeft().toPoint());
    box.moveLeft(qBound(0, box.left(), qMax(0, width() - box.width())));
    box.moveTop(qBound(0, box.top(), qMax(0, height() - box.height())));
    painter.fillRect(box, style.current);
    painter.setPen(style.background);
    painter.drawText(box, Qt::AlignCenter, text);
}

void zoHPCScreensView::press(const QMouseEvent& event)
{
    m_hit = event.button() == Qt::LeftButton ? m_picture.hitTest(event.pos()) : zoHPCScreensPicture::Hit();
    if (m_hit.window) {
        m_before = geometryOf(*m_hit.window);
        m_lines = m_picture.linesFor(m_hit.window);
    }
}

void zoHPCScreensView::hover(const QPoint& position)
{
    showCursor(m_picture.hitTest(position));
}

void zoHPCScreensView::beginDrag()
{
    m_isWindowDragged = m_hit.window && m_hit.canMove;
    // The fields show where it goes.
    if (m_isWindowDragged)
        emit itemActivated(m_hit.window);
}

void zoHPCScreensView::drag(const QMouseEvent& event, const QPoint& way)
{
    if (m_isWindowDragged) {
        dragWindow(event.pos(), !(event.modifiers() & Qt::ControlModifier));
    } else {
        m_picture.pan(way);
        noteMove(Move::Dragged);
    }
}

// What was pressed, wherever the button is released.
QTreeWidgetItem* zoHPCScreensView::itemAt(const QPoint&)
{
    return m_hit.viewport ? static_cast<QTreeWidgetItem*>(m_hit.viewport) : m_hit.window;
}

void zoHPCScreensView::endDrag()
{
    const bool wasWindow = m_isWindowDragged;
    letGo();
    if (wasWindow)
        showLayout(m_layout); // the screen may have another size now
}

void zoHPCScreensView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_isWindowDragged) {
        setGeometryOf(*m_hit.window, m_before);
        letGo();
    } else {
        zoHPCPictureView::keyPressEvent(event);
    }
}

void zoHPCScreensView::zoom(double factor, const QPointF& about)
{
    if (m_isWindowDragged)
        return;
    m_picture.zoom(factor, about);
    noteMove(Move::Single);
}

QRect zoHPCScreensView::geometryOf(const zoHPCWindowItem& window)
{
    return QRect(limited(window.getInt(zoHPCWindowItem::X)), limited(window.getInt(zoHPCWindowItem::Y)),
                 limited(window.getInt(zoHPCWindowItem::Width)),
                 limited(window.getInt(zoHPCWindowItem::Height)));
}

void zoHPCScreensView::setGeometryOf(zoHPCWindowItem& window, const QRect& geometry)
{
    const std::pair<int, int> values[] = {{zoHPCWindowItem::X, geometry.x()},
                                          {zoHPCWindowItem::Y, geometry.y()},
                                          {zoHPCWindowItem::Width, geometry.width()},
                                          {zoHPCWindowItem::Height, geometry.height()}};
    bool isChanged = false;
    for (const auto& value : values) {
        // What follows a change may take the items away: showLayout() then let it go.
        if (m_hit.window != &window)
            return;
        if (window.getInt(value.first) != value.second) {
            window.setInt(value.first, value.second);
            isChanged = true;
        }
    }
    if (isChanged && m_hit.window == &window)
        emit windowChanged(&window);
}

bool zoHPCScreensView::isShown(const zoHPCWindowItem* window) const
{
    if (!m_layout)
        return false;
    const std::vector<zoHPCLayout::Window>& windows = m_layout->windows();
    return std::any_of(windows.begin(), windows.end(),
                       [&](const zoHPCLayout::Window& shown) { return shown.item == window; });
}

void zoHPCScreensView::dragWindow(const QPoint& to, bool snaps)
{
    const QPointF way = QPointF(to - pressed()) / m_picture.scale();
    const int x = limited(way.x());
    const int y = limited(way.y());
    QRect geometry = m_before;
    if (m_hit.edges == zoHPCScreensPicture::NoEdge)
        geometry.translate(x, y);
    // The opposite edge stays where it is.
    if (m_hit.edges & zoHPCScreensPicture::LeftEdge)
        geometry.setLeft(std::min(m_before.left() + x, m_before.right() + 1 - s_smallestWindow));
    if (m_hit.edges & zoHPCScreensPicture::RightEdge)
        geometry.setWidth(std::max(m_before.width() + x, s_smallestWindow));
    if (m_hit.edges & zoHPCScreensPicture::TopEdge)
        geometry.setTop(std::min(m_before.top() + y, m_before.bottom() + 1 - s_smallestWindow));
    if (m_hit.edges & zoHPCScreensPicture::BottomEdge)
        geometry.setHeight(std::max(m_before.height() + y, s_smallestWindow));
    m_guidesX.clear();
    m_guidesY.clear();
    if (snaps)
        snap(geometry);
    setGeometryOf(*m_hit.window, geometry);
}

void zoHPCScreensView::snap(QRect& geometry)
{
    const int reach = qRound(s_snapReach / m_picture.scale());
    const bool moves = m_hit.edges == zoHPCScreensPicture::NoEdge;
    const bool left = moves || (m_hit.edges & zoHPCScreensPicture::LeftEdge);
    const bool right = moves || (m_hit.edges & zoHPCScreensPicture::RightEdge);
    const bool top = moves || (m_hit.edges & zoHPCScreensPicture::TopEdge);
    const bool bottom = moves || (m_hit.edges & zoHPCScreensPicture::BottomEdge);

    const int x = wayToLine(m_lines.x, left, geometry.x(), right, geometry.x() + geometry.width(), reach);
    const int y = wayToLine(m_lines.y, top, geometry.y(), bottom, geometry.y() + geometry.height(), reach);
    if (moves) {
        geometry.translate(x, y);
    } else {
        // An edge that would leave less than the smallest window stays.
        if (geometry.width() + (left ? -x : x) >= s_smallestWindow)
            geometry.adjust(left ? x : 0, 0, right ? x : 0, 0);
        if (geometry.height() + (top ? -y : y) >= s_smallestWindow)
            geometry.adjust(0, top ? y : 0, 0, bottom ? y : 0);
    }

    const auto guides = [](const std::vector<int>& lines, bool first, int begin, bool second, int end) {
        std::vector<int> result;
        for (const int line : lines) {
            if (((first && line == begin) || (second && line == end)) &&
                std::find(result.begin(), result.end(), line) == result.end())
                result.push_back(line);
        }
        return result;
    };
    m_guidesX = guides(m_lines.x, left, geometry.x(), right, geometry.x() + geometry.width());
    m_guidesY = guides(m_lines.y, top, geometry.y(), bottom, geometry.y() + geometry.height());
}

void zoHPCScreensView::paintGuides(QPainter& painter) const
{
    const QRectF window = m_picture.placeOf(m_hit.window);
    constexpr double Beyond = 16.0;
    painter.setPen(QPen(zoHPCPictureStyle(palette()).current, 1.0, Qt::DashLine));
    for (const int line : m_guidesX) {
        const double x = m_picture.placeBeside(m_hit.window, QRectF(line, 0.0, 0.0, 0.0)).x();
        painter.drawLine(QPointF(x, window.top() - Beyond), QPointF(x, window.bottom() + Beyond));
    }
    for (const int line : m_guidesY) {
        const double y = m_picture.placeBeside(m_hit.window, QRectF(0.0, line, 0.0, 0.0)).y();
        painter.drawLine(QPointF(window.left() - Beyond, y), QPointF(window.right() + Beyond, y));
    }
}

void zoHPCScreensView::letGo()
{
    forgetPress();
    m_isWindowDragged = false;
    m_hit = zoHPCScreensPicture::Hit();
    m_guidesX.clear();
    m_guidesY.clear();
}

void zoHPCScreensView::showCursor(const zoHPCScreensPicture::Hit& hit)
{
    using P = zoHPCScreensPicture;
    const bool isSide = hit.edges == P::LeftEdge || hit.edges == P::RightEdge;
    const bool isFalling =
        hit.edges == (P::LeftEdge | P::TopEdge) || hit.edges == (P::RightEdge | P::BottomEdge);
    if (!hit.window || !hit.canMove)
        unsetCursor();
    else if (hit.edges == P::NoEdge)
        setCursor(Qt::SizeAllCursor);
    else if (isSide)
        setCursor(Qt::SizeHorCursor);
    else if (hit.edges == P::TopEdge || hit.edges == P::BottomEdge)
        setCursor(Qt::SizeVerCursor);
    else
        setCursor(isFalling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
}
