#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QSplitter>
#include <QTest>

// Drags the handle behind a splitter's first pane, as a person does. Sent by hand: QTest::mouseMove() moves
// the cursor without a button.
inline void zoSplitterDrag(QSplitter* splitter, int distance)
{
    QWidget* handle = splitter->handle(1);
    const QPoint from = handle->rect().center();
    const QPoint to =
        from + (splitter->orientation() == Qt::Horizontal ? QPoint(distance, 0) : QPoint(0, distance));
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, handle->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, handle->rect().center());
}
