#include "zoAssistantPageView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace
{
constexpr double Margin = 8.0; // pixels around the paper
}

zoAssistantPageView::zoAssistantPageView(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Page"));
}

zoAssistantPageView::~zoAssistantPageView() = default;

void zoAssistantPageView::showPage(const QSizeF& paper, const Paint& paint)
{
    m_paper = paper;
    m_paint = paint;
    update();
}

QSize zoAssistantPageView::sizeHint() const
{
    return {760, 540};
}

void zoAssistantPageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark));
    if (m_paper.isEmpty() || !m_paint)
        return;
    const double scale =
        std::min((width() - 2 * Margin) / m_paper.width(), (height() - 2 * Margin) / m_paper.height());
    if (!(scale > 0.0))
        return;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QSizeF shown = m_paper * scale;
    painter.translate((width() - shown.width()) / 2, (height() - shown.height()) / 2);
    painter.scale(scale, scale);
    const QRectF sheet(QPointF(), m_paper);
    painter.fillRect(sheet, Qt::white);
    painter.setClipRect(sheet);
    m_paint(painter);
}

void zoAssistantPageView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    if (event->angleDelta().y() != 0)
        emit turned(event->angleDelta().y() > 0 ? -1 : 1);
}

void zoAssistantPageView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_Left)
        emit turned(-1);
    else if (event->key() == Qt::Key_PageDown || event->key() == Qt::Key_Right)
        emit turned(1);
    else
        QWidget::keyPressEvent(event);
}
