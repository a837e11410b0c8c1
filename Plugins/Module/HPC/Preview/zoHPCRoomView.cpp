#include "zoHPCRoomView.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"
#include "zoText.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

namespace
{
constexpr double DEGREES_PER_PIXEL = 0.4;
constexpr double DEGREES_PER_KEY = 10.0;
constexpr double ZOOM_PER_STEP = 1.15;
} // namespace

zoHPCRoomView::zoHPCRoomView(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Room"));
    setAccessibleDescription(tr("The projections in space around the viewer"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&m_debounce, &zoHPCDebounce::settled, this, QOverload<>::of(&QWidget::update));
}

zoHPCRoomView::~zoHPCRoomView() = default;

zoHPCPicture::Detail zoHPCRoomView::detail() const
{
    const bool isQuick = m_isDragging || ((m_isChanging || m_debounce.isQuick()) && m_picture.isLarge());
    return isQuick ? zoHPCPicture::Detail::Fast : zoHPCPicture::Detail::Full;
}

QSize zoHPCRoomView::sizeHint() const
{
    return QSize(480, 360);
}

QSize zoHPCRoomView::minimumSizeHint() const
{
    return QSize(160, 120);
}

void zoHPCRoomView::showLayout(std::shared_ptr<const zoHPCLayout> layout)
{
    m_layout = std::move(layout);
    m_picture.setLayout(m_layout ? *m_layout : zoHPCLayout());
    if (m_layout)
        m_picture.setCurrentItem(m_current, *m_layout);
    if (m_isFitted)
        m_picture.fit(rect());
    update();
}

void zoHPCRoomView::setCurrentItem(const QTreeWidgetItem* item)
{
    m_current = item;
    if (m_layout)
        m_picture.setCurrentItem(item, *m_layout);
    update();
}

void zoHPCRoomView::setIsChanging(bool changing)
{
    if (m_isChanging == changing)
        return;
    m_isChanging = changing;
    update();
}

void zoHPCRoomView::fit()
{
    m_isFitted = true;
    m_picture.fit(rect());
    update();
}

bool zoHPCRoomView::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QTreeWidgetItem* const item = m_picture.itemAt(help->pos(), rect());
        if (item)
            QToolTip::showText(
                help->globalPos(),
                zoText("<qt>%1</qt>")
                    .arg(item->data(zoHPCProjectionItem::Name, Qt::EditRole).toString().toHtmlEscaped()),
                this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void zoHPCRoomView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_picture.paint(painter, rect(), palette(), detail());
}

void zoHPCRoomView::resizeEvent(QResizeEvent*)
{
    if (m_isFitted)
        m_picture.fit(rect());
}

void zoHPCRoomView::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->pos();
    m_last = event->pos();
    m_isPressed = true;
    event->accept();
}

void zoHPCRoomView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & (Qt::LeftButton | Qt::MiddleButton)))
        return;
    if (!m_isDragging && (event->pos() - m_pressed).manhattanLength() < QApplication::startDragDistance())
        return;
    m_isDragging = true;
    const QPoint way = event->pos() - m_last;
    m_last = event->pos();
    if ((event->buttons() & Qt::MiddleButton) || (event->modifiers() & Qt::ShiftModifier)) {
        zoHPCRoomCamera camera = m_picture.camera();
        camera.pan(way, rect());
        m_picture.setCamera(camera);
        m_isFitted = false;
        update();
    } else {
        turn(-DEGREES_PER_PIXEL * way.x(), DEGREES_PER_PIXEL * way.y());
    }
}

void zoHPCRoomView::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_isDragging) {
        m_isDragging = false;
        update(); // in full detail
        return;
    }
    const bool isClick = m_isPressed && event->button() == Qt::LeftButton;
    m_isPressed = false;
    if (!isClick)
        return;
    if (QTreeWidgetItem* const item = m_picture.itemAt(event->pos(), rect()))
        emit itemActivated(item);
}

void zoHPCRoomView::mouseDoubleClickEvent(QMouseEvent*)
{
    fit();
}

void zoHPCRoomView::wheelEvent(QWheelEvent* event)
{
    zoom(std::pow(ZOOM_PER_STEP, event->angleDelta().y() / 120.0));
    event->accept();
}

void zoHPCRoomView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Home:
        fit();
        break;
    case Qt::Key_Left:
        turn(-DEGREES_PER_KEY, 0.0);
        break;
    case Qt::Key_Right:
        turn(DEGREES_PER_KEY, 0.0);
        break;
    case Qt::Key_Up:
        turn(0.0, DEGREES_PER_KEY);
        break;
    case Qt::Key_Down:
        turn(0.0, -DEGREES_PER_KEY);
        break;
    case Qt::Key_Plus:
        zoom(ZOOM_PER_STEP);
        break;
    case Qt::Key_Minus:
        zoom(1.0 / ZOOM_PER_STEP);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void zoHPCRoomView::turn(double yaw, double pitch)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.orbit(yaw, pitch);
    m_debounce.note();
    m_picture.setCamera(camera);
    m_isFitted = false;
    update();
}

void zoHPCRoomView::zoom(double factor)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.zoom(factor);
    m_debounce.note();
    m_picture.setCamera(camera);
    m_isFitted = false;
    update();
}
