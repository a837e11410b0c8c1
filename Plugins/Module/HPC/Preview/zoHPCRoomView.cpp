#include "zoHPCRoomView.h"

#include "zoHPCLayout.h"
#include "zoHPCProjectionItem.h"
#include "zoText.h"

#include <QKeyEvent>
#include <QMouseEvent>

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
        m_picture.setCurrentItems(m_current, *m_layout);
    fitAgain();
    update();
}

void zoHPCRoomView::setCurrentItems(const zoHPCPicture::Rows& items)
{
    m_current = items;
    if (m_layout)
        m_picture.setCurrentItems(items, *m_layout);
    update();
}

QString zoHPCRoomView::toolTipAt(const QPoint& position)
{
    const QTreeWidgetItem* const item = itemAt(position);
    if (!item)
        return {};
    const QString name = item->data(zoHPCProjectionItem::Name, Qt::EditRole).toString();
    const int index = m_layout ? m_layout->indexOf(item) : zoHPCLayout::None;
    const QStringList nodes = index == zoHPCLayout::None
                                  ? QStringList()
                                  : m_layout->nodesOfProjections()[static_cast<size_t>(index)];
    QString text = name.toHtmlEscaped();
    if (!nodes.isEmpty())
        text += zoText("<br/>") + tr("Node: %1").arg(nodes.join(QLatin1String(", "))).toHtmlEscaped();
    if (m_takesSurfaces)
        text += zoText("<br/>") + tr("A click lets the viewport show it, Ctrl+click selects it.");
    return zoText("<qt>%1</qt>").arg(text);
}

void zoHPCRoomView::setTakesSurfaces(bool takes)
{
    m_takesSurfaces = takes;
    if (takes)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
}

QTreeWidgetItem* zoHPCRoomView::itemAt(const QPoint& position)
{
    return m_picture.itemAt(position, rect());
}

void zoHPCRoomView::drag(const QMouseEvent& event, const QPoint& way)
{
    if ((event.buttons() & Qt::MiddleButton) || (event.modifiers() & Qt::ShiftModifier)) {
        zoHPCRoomCamera camera = m_picture.camera();
        camera.pan(way, rect());
        m_picture.setCamera(camera);
        noteMove(Move::Dragged);
    } else {
        turn(-s_degreesPerPixel * way.x(), s_degreesPerPixel * way.y());
    }
}

void zoHPCRoomView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
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
    default:
        zoHPCPictureView::keyPressEvent(event);
    }
}

void zoHPCRoomView::lookFromFront()
{
    look(0.0, 0.0);
}

void zoHPCRoomView::lookFromAbove()
{
    look(0.0, 90.0);
}

void zoHPCRoomView::setHasDimensions(bool hasDimensions)
{
    m_picture.setHasDimensions(hasDimensions);
    update();
}

void zoHPCRoomView::setHasFrames(bool hasFrames)
{
    m_picture.setHasFrames(hasFrames);
    update();
}

void zoHPCRoomView::setScreenSize(const QSizeF& size)
{
    m_picture.setScreenSize(size);
    showLayout(m_layout);
}

void zoHPCRoomView::look(double yaw, double pitch)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.yaw = yaw;
    camera.pitch = pitch;
    camera.isParallel = true;
    m_picture.setCamera(camera);
    fit();
}

void zoHPCRoomView::turn(double yaw, double pitch)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.isParallel = false;
    camera.orbit(yaw, pitch);
    m_picture.setCamera(camera);
    noteMove(Move::Single);
}

// The viewer of a room comes nearer to its middle, wherever the mouse is.
void zoHPCRoomView::zoom(double factor, const QPointF&)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.zoom(factor);
    m_picture.setCamera(camera);
    noteMove(Move::Single);
}
