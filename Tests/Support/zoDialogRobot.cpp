#include "zoDialogRobot.h"

#include <QApplication>
#include <QDialog>

zoDialogRobot::zoDialogRobot(std::function<void(QDialog*)> handle) : m_handle(std::move(handle))
{
    // File dialogs must be widgets for a robot to see them.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    connect(&m_timer, &QTimer::timeout, this, &zoDialogRobot::look);
    m_timer.start(1);
}

zoDialogRobot::~zoDialogRobot() = default;

int zoDialogRobot::handled() const
{
    return m_handled;
}

void zoDialogRobot::look()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible())
        return;
    m_timer.stop();
    ++m_handled;
    m_handle(dialog);
}
