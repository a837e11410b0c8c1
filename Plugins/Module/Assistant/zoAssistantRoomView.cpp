#include "zoAssistantRoomView.h"

#include "zoHPCProjectionItem.h"
#include "zoText.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QWheelEvent>

#include <cmath>
#include <vector>

namespace
{
constexpr double DegreesPerPixel = 0.4;
constexpr double DegreesPerKey = 10.0;
constexpr double ZoomPerStep = 1.15;
constexpr double WheelStep = 120.0;
// Planes beyond this number are called by row and column in the picture.
constexpr int MostNames = 6;

// The items are those of the picture alone.
void shortenNames(const zoHPCLayout& layout)
{
    std::vector<zoHPCProjectionItem*> walls;
    for (const zoHPCLayout::Projection& projection : layout.projections()) {
        if (projection.parent == zoHPCLayout::None)
            walls.push_back(projection.item);
    }
    if (int(walls.size()) <= MostNames)
        return;
    const QRegularExpression place(zoText("row:(\\d+) col:(\\d+)$"));
    for (zoHPCProjectionItem* wall : walls) {
        const QRegularExpressionMatch match = place.match(wall->getString(zoHPCProjectionItem::Name));
        if (match.hasMatch())
            wall->setString(zoHPCProjectionItem::Name,
                            zoText("%1:%2").arg(match.captured(1), match.captured(2)));
    }
}
} // namespace

zoAssistantRoomView::zoAssistantRoomView(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Room"));
    setAccessibleDescription(tr("The walls in space around the viewer"));
}

zoAssistantRoomView::~zoAssistantRoomView()
{
    m_picture.setLayout(zoHPCLayout());
}

QSize zoAssistantRoomView::sizeHint() const
{
    return {460, 380};
}

QSize zoAssistantRoomView::minimumSizeHint() const
{
    return {240, 180};
}

void zoAssistantRoomView::showConfiguration(const QString& text)
{
    auto configuration = std::make_unique<zoHPCConfiguration>();
    if (text.isEmpty() || !configuration->readText(text))
        configuration->displays().clear();
    const zoHPCLayout layout(configuration->displays(), configuration->hosts().master());
    shortenNames(layout);
    m_picture.setLayout(layout);
    // Sizes stand beside one wall; those of several would hide them.
    m_picture.setIsDrawing(m_picture.walls().size() == 1);
    m_layout = layout;
    m_configuration = std::move(configuration);
    if (m_isFitted)
        m_picture.fit(rect());
    update();
}

void zoAssistantRoomView::setPicksPlace(bool picks)
{
    m_picksPlace = picks;
    setCursor(picks ? Qt::CrossCursor : Qt::ArrowCursor);
}

void zoAssistantRoomView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool isQuick = m_isDragging && m_picture.isLarge();
    m_picture.paint(painter, rect(), palette(),
                    isQuick ? zoHPCPicture::Detail::Fast : zoHPCPicture::Detail::Full);
}

void zoAssistantRoomView::resizeEvent(QResizeEvent*)
{
    if (m_isFitted)
        m_picture.fit(rect());
}

void zoAssistantRoomView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (m_picksPlace) {
        pick(event->pos());
        return;
    }
    m_last = event->pos();
    m_isDragging = true;
}

void zoAssistantRoomView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_isDragging)
        return;
    const QPoint way = event->pos() - m_last;
    m_last = event->pos();
    turn(-DegreesPerPixel * way.x(), DegreesPerPixel * way.y());
}

void zoAssistantRoomView::mouseReleaseEvent(QMouseEvent*)
{
    m_isDragging = false;
    update();
}

void zoAssistantRoomView::mouseDoubleClickEvent(QMouseEvent*)
{
    if (!m_picksPlace)
        fit();
}

void zoAssistantRoomView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    zoom(std::pow(ZoomPerStep, event->angleDelta().y() / WheelStep));
}

void zoAssistantRoomView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        turn(-DegreesPerKey, 0.0);
        break;
    case Qt::Key_Right:
        turn(DegreesPerKey, 0.0);
        break;
    case Qt::Key_Up:
        turn(0.0, DegreesPerKey);
        break;
    case Qt::Key_Down:
        turn(0.0, -DegreesPerKey);
        break;
    case Qt::Key_Plus:
        zoom(ZoomPerStep);
        break;
    case Qt::Key_Minus:
        zoom(1.0 / ZoomPerStep);
        break;
    case Qt::Key_Home:
        fit();
        break;
    default:
        QWidget::keyPressEvent(event);
        break;
    }
}

void zoAssistantRoomView::fit()
{
    m_isFitted = true;
    m_picture.fit(rect());
    update();
}

void zoAssistantRoomView::turn(double yaw, double pitch)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.orbit(yaw, pitch);
    m_picture.setCamera(camera);
    // What was turned is still taken in as a whole after changes.
    if (m_isFitted)
        m_picture.fit(rect());
    update();
}

void zoAssistantRoomView::zoom(double factor)
{
    zoHPCRoomCamera camera = m_picture.camera();
    camera.zoom(factor);
    m_picture.setCamera(camera);
    m_isFitted = false;
    update();
}

// Where the look through this point meets the height of the viewer's eyes. The viewer stands at the origin.
void zoAssistantRoomView::pick(const QPoint& position)
{
    const zoHPCRoomCamera& camera = m_picture.camera();
    const Point3 eye = camera.eye();
    const Point3 ray = camera.rayThrough(position, rect());
    const double way = -eye.y / ray.y;
    // Beyond the horizon nobody stands.
    if (!std::isfinite(way) || way <= 0.0)
        return;
    const Point3 place = eye + way * ray;
    emit placePicked(place.x, place.z);
}
