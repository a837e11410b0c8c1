#include "zoHPCRoomView.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"
#include "zoText.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>

namespace
{
constexpr double s_degreesPerPixel = 0.4;
constexpr double s_degreesPerKey = 10.0;
} // namespace

zoHPCRoomView::zoHPCRoomView(QWidget* parent) : zoHPCPictureView(parent)
{
    setAccessibleName(tr("Room"));
    setAccessibleDescription(tr("The projections in space around the viewer"));
}

zoHPCRoomView::~zoHPCRoomView() = default;

void zoHPCRoomView::showLayout(std::shared_ptr<const zoHPCLayout> layout)
{
    m_layout = std::move(layout);
    m_picture.setLayout(m_layout ? *m_layout : zoHPCLayout());
    if (m_layout)
        m_picture.setCurrentItem(m_current, *m_layout);
    fitAgain();
    update();
}

void zoHPCRoomView::setCurrentItem(const QTreeWidgetItem* item)
{
    m_current = item;
    if (m_layout)
        m_picture.setCurrentItem(item, *m_layout);
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
    return zoHPCPictureView::event(event);
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
        noteMove(Move::Dragged);
    } else {
        turn(-s_degreesPerPixel * way.x(), s_degreesPerPixel * way.y());
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

void zoHPCRoomView::wheelEvent(QWheelEvent* event)
{
    zoom(std::pow(ZoomPerStep, event->angleDelta().y() / 120.0));
    event->accept();
}

void zoHPCRoomView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Home:
        fit();
        break;
    case Qt::Key_Left:
        turn(-s_degreesPerKey, 0.0);
        break;
    case Qt::Key_Right:
        turn(s_degreesPerKey, 0.0);
        break;
    case Qt::Key_Up:
        turn(0.0, s_degreesPerKey);
        break;
    case Qt::Key_Down:
        turn(0.0, -s_degreesPerKey);
        break;
    case Qt::Key_Plus:
        zoom(ZoomPerStep);
        break;
    case Qt::Key_Minus:
        zoom(1.0 / ZoomPerStep);
        break;
    default:
        zoHPCPictureView::keyPressEvent(event);
    }
}

void zoHPCRoomView::turn(double yaw, double pitch)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.orbit(yaw, pitch);
    m_picture.setCamera(camera);
    noteMove(Move::Single);
}

void zoHPCRoomView::zoom(double factor)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.zoom(factor);
    m_picture.setCamera(camera);
    noteMove(Move::Single);
}
