#include "zoShowWindow.h"

#include <QCursor>
#include <QEvent>

zoShowWindow::zoShowWindow(SurfaceType type)
{
    setSurfaceType(type);
    setCursor(Qt::BlankCursor);
}

zoShowWindow::~zoShowWindow() = default;

bool zoShowWindow::event(QEvent* event)
{
    // A session ends where it was started.
    if (event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    return QWindow::event(event);
}

void zoShowWindow::exposeEvent(QExposeEvent* event)
{
    QWindow::exposeEvent(event);
    if (isExposed())
        emit exposed();
}

void zoShowWindow::resizeEvent(QResizeEvent* event)
{
    QWindow::resizeEvent(event);
    if (isExposed())
        emit exposed();
}
