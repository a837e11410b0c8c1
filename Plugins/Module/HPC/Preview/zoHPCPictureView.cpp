#include "zoHPCPictureView.h"

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
// Factor from one step of the wheel, or one press of a key, to the next.
constexpr double s_zoomPerStep = 1.15;
constexpr double s_wheelStep = 120.0;
} // namespace

zoHPCPictureView::zoHPCPictureView(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&m_debounce, &zoHPCDebounce::settled, this, QOverload<>::of(&QWidget::update));
}

zoHPCPictureView::~zoHPCPictureView() = default;

zoHPCPicture::Detail zoHPCPictureView::detail() const
{
    const bool isQuick = isDragging() || ((m_isChanging || m_debounce.isQuick()) && picture().isLarge());
    return isQuick ? zoHPCPicture::Detail::Fast : zoHPCPicture::Detail::Full;
}

QSize zoHPCPictureView::sizeHint() const
{
    return QSize(480, 360);
}

QSize zoHPCPictureView::minimumSizeHint() const
{
    return QSize(160, 120);
}

void zoHPCPictureView::setIsChanging(bool changing)
{
    if (m_isChanging == changing)
        return;
    m_isChanging = changing;
    update();
}

void zoHPCPictureView::fit()
{
    m_isFitted = true;
    editedPicture().fit(rect());
    update();
}

void zoHPCPictureView::noteMove(Move move)
{
    if (move == Move::Single)
        m_debounce.note();
    m_isFitted = false;
    update();
}

void zoHPCPictureView::fitAgain()
{
    if (m_isFitted)
        editedPicture().fit(rect());
}

void zoHPCPictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    picture().paint(painter, rect(), palette(), detail());
}

void zoHPCPictureView::resizeEvent(QResizeEvent*)
{
    fitAgain();
}

void zoHPCPictureView::forgetPress()
{
    if (m_isDragging)
        update(); // in full detail
    m_isDragging = false;
    m_isPressed = false;
}

bool zoHPCPictureView::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QString text = toolTipAt(help->pos());
    if (text.isNull())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), text, this);
    return true;
}

void zoHPCPictureView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton)
        return;
    m_pressed = event->pos();
    m_last = event->pos();
    m_isPressed = true;
    press(*event);
}

void zoHPCPictureView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_isPressed || !(event->buttons() & (Qt::LeftButton | Qt::MiddleButton))) {
        hover(event->pos());
        return;
    }
    if (!m_isDragging) {
        if ((event->pos() - m_pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        m_isDragging = true;
        beginDrag();
    }
    const QPoint way = event->pos() - m_last;
    m_last = event->pos();
    drag(*event, way);
}

void zoHPCPictureView::mouseReleaseEvent(QMouseEvent* event)
{
    const bool isClick = m_isPressed && !m_isDragging && event->button() == Qt::LeftButton;
    // Before the drag ends, which forgets what was pressed.
    QTreeWidgetItem* const item = isClick ? itemAt(event->pos()) : nullptr;
    forgetPress();
    endDrag();
    if (item)
        emit itemActivated(item);
}

void zoHPCPictureView::mouseDoubleClickEvent(QMouseEvent*)
{
    fit();
}

void zoHPCPictureView::wheelEvent(QWheelEvent* event)
{
    zoom(std::pow(s_zoomPerStep, event->angleDelta().y() / s_wheelStep), event->position());
    event->accept();
}

void zoHPCPictureView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Home:
        fit();
        break;
    case Qt::Key_Plus:
        zoom(s_zoomPerStep, rect().center());
        break;
    case Qt::Key_Minus:
        zoom(1.0 / s_zoomPerStep, rect().center());
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}
