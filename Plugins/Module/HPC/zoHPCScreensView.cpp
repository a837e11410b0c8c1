#include "zoHPCScreensView.h"

#include "zoHPCLayout.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double ZOOM_PER_STEP = 1.15;
// A window never gets smaller by dragging, so that it can still be taken (pixels).
constexpr int SMALLEST_WINDOW = 16;
// Further away no screen is (pixels).
constexpr int FARTHEST = 100000;

int limited(double value)
{
    return qRound(qBound(-double(FARTHEST), value, double(FARTHEST)));
}
} // namespace

zoHPCScreensView::zoHPCScreensView(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAccessibleName(tr("Screens"));
    setAccessibleDescription(tr("The windows on the screens of each render node"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

zoHPCScreensView::~zoHPCScreensView() = default;

QSize zoHPCScreensView::sizeHint() const
{
    return QSize(480, 360);
}

QSize zoHPCScreensView::minimumSizeHint() const
{
    return QSize(160, 120);
}

void zoHPCScreensView::showLayout(std::shared_ptr<const zoHPCLayout> layout)
{
    m_layout = std::move(layout);
    if (!isShown(m_hit.window))
        endDrag();
    const zoHPCLayout& shown = m_layout ? *m_layout : zoHPCLayout();
    if (m_drag == Drag::Window) {
        m_picture.updateLayout(shown);
    } else {
        m_picture.setLayout(shown);
        if (m_isFitted)
            m_picture.fit(rect());
    }
    update();
}

void zoHPCScreensView::setCurrentItem(const QTreeWidgetItem* item)
{
    m_picture.setCurrentItem(item);
    update();
}

void zoHPCScreensView::setScreenSize(const QSizeF& size)
{
    m_picture.setScreenSize(size);
    showLayout(m_layout);
}

void zoHPCScreensView::fit()
{
    m_isFitted = true;
    m_picture.fit(rect());
    update();
}

bool zoHPCScreensView::event(QEvent* event)
{
    // Escape belongs to a drag first, then to the dialog around.
    if (event->type() == QEvent::ShortcutOverride && m_drag == Drag::Window &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const zoHPCScreensPicture::Hit hit = m_picture.hitTest(help->pos());
        const QTreeWidgetItem* const item =
            hit.viewport ? static_cast<const QTreeWidgetItem*>(hit.viewport) : hit.window;
        if (item)
            QToolTip::showText(help->globalPos(), item->text(0).toHtmlEscaped(), this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void zoHPCScreensView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_picture.paint(painter, rect(), palette(),
                    m_drag == Drag::None ? zoHPCPicture::Detail::Full : zoHPCPicture::Detail::Fast);
}

void zoHPCScreensView::resizeEvent(QResizeEvent*)
{
    if (m_isFitted)
        m_picture.fit(rect());
}

void zoHPCScreensView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton)
        return;
    m_pressed = event->pos();
    m_last = event->pos();
    m_isPressed = true;
    m_hit = event->button() == Qt::LeftButton ? m_picture.hitTest(event->pos()) : zoHPCScreensPicture::Hit();
    if (m_hit.window)
        m_before = geometryOf(*m_hit.window);
}

void zoHPCScreensView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_isPressed) {
        showCursor(m_picture.hitTest(event->pos()));
        return;
    }
    if (m_drag == Drag::None) {
        if ((event->pos() - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        m_drag = m_hit.window && m_hit.canMove ? Drag::Window : Drag::Sheet;
    }
    if (m_drag == Drag::Window) {
        dragWindow(event->pos());
    } else {
        m_picture.pan(event->pos() - m_last);
        m_isFitted = false;
        update();
    }
    m_last = event->pos();
}

void zoHPCScreensView::mouseReleaseEvent(QMouseEvent* event)
{
    const bool isClick = m_isPressed && m_drag == Drag::None && event->button() == Qt::LeftButton;
    QTreeWidgetItem* item = m_hit.window;
    if (m_hit.viewport)
        item = m_hit.viewport;
    const bool wasWindow = m_drag == Drag::Window;
    endDrag();
    if (wasWindow)
        showLayout(m_layout); // the screen may have another size now
    if (isClick && item)
        emit itemActivated(item);
}

void zoHPCScreensView::mouseDoubleClickEvent(QMouseEvent*)
{
    fit();
}

void zoHPCScreensView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    if (m_drag == Drag::Window)
        return;
    m_picture.zoom(std::pow(ZOOM_PER_STEP, event->angleDelta().y() / 120.0), event->position());
    m_isFitted = false;
    update();
}

void zoHPCScreensView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_drag == Drag::Window) {
        setGeometryOf(*m_hit.window, m_before);
        endDrag();
    } else if (event->key() == Qt::Key_Home) {
        fit();
    } else if (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Minus) {
        m_picture.zoom(event->key() == Qt::Key_Plus ? ZOOM_PER_STEP : 1.0 / ZOOM_PER_STEP, rect().center());
        m_isFitted = false;
        update();
    } else {
        QWidget::keyPressEvent(event);
    }
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
        // What follows a change may take the items away: showLayout() then ended the drag.
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

void zoHPCScreensView::dragWindow(const QPoint& to)
{
    const QPointF way = QPointF(to - m_pressed) / m_picture.scale();
    const int x = limited(way.x());
    const int y = limited(way.y());
    QRect geometry = m_before;
    if (m_hit.edges == zoHPCScreensPicture::NoEdge)
        geometry.translate(x, y);
    // The opposite edge stays where it is.
    if (m_hit.edges & zoHPCScreensPicture::LeftEdge)
        geometry.setLeft(std::min(m_before.left() + x, m_before.right() + 1 - SMALLEST_WINDOW));
    if (m_hit.edges & zoHPCScreensPicture::RightEdge)
        geometry.setWidth(std::max(m_before.width() + x, SMALLEST_WINDOW));
    if (m_hit.edges & zoHPCScreensPicture::TopEdge)
        geometry.setTop(std::min(m_before.top() + y, m_before.bottom() + 1 - SMALLEST_WINDOW));
    if (m_hit.edges & zoHPCScreensPicture::BottomEdge)
        geometry.setHeight(std::max(m_before.height() + y, SMALLEST_WINDOW));
    setGeometryOf(*m_hit.window, geometry);
}

void zoHPCScreensView::endDrag()
{
    if (m_drag != Drag::None)
        update(); // in full detail
    m_drag = Drag::None;
    m_isPressed = false;
    m_hit = zoHPCScreensPicture::Hit();
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
