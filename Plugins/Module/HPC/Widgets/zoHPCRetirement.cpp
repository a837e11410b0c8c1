#include "zoHPCRetirement.h"

#include "zoHPCKeys.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QTimerEvent>
#include <QVector>
#include <QWidget>
#include <QWindow>

#include <zoCameraService.h>
#include <zoClusterService.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

#include <algorithm>
#include <iterator>

namespace
{
using Parts = QVector<QPointer<QObject>>;

template <typename Service>
void stopListening(const Parts& parts)
{
    if (!zoKernelServiceFactory::hasService<Service>())
        return;
    const auto* service = zoKernelServiceFactory::getService<Service>();
    if (service == nullptr)
        return;
    for (const QPointer<QObject>& part : parts) {
        if (part)
            QObject::disconnect(service, nullptr, part, nullptr);
    }
}

void stopTimers(const QPointer<QObject>& part)
{
    if (auto* timer = qobject_cast<QTimer*>(part.data()))
        timer->stop();
    const QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    if (!part || dispatcher == nullptr)
        return;
    // Views of the toolkit complain when their timers are stopped behind their backs: they take what is due now.
    const QList<QAbstractEventDispatcher::TimerInfo> due = dispatcher->registeredTimers(part);
    for (const QAbstractEventDispatcher::TimerInfo& timer : due) {
        QTimerEvent now(timer.timerId);
        if (part)
            QCoreApplication::sendEvent(part, &now);
    }
    if (!part)
        return;
    const QList<QAbstractEventDispatcher::TimerInfo> repeating = dispatcher->registeredTimers(part);
    for (const QAbstractEventDispatcher::TimerInfo& timer : repeating)
        part->killTimer(timer.timerId);
}

Parts partsOf(QWidget* window)
{
    const QList<QObject*> children = window->findChildren<QObject*>();
    Parts parts{window};
    std::copy(children.begin(), children.end(), std::back_inserter(parts));
    return parts;
}
} // namespace

void zoHPCRetirement::retire(QWidget* window)
{
    if (window == nullptr || QCoreApplication::instance() == nullptr)
        return;
    qDeleteAll(window->findChildren<zoHPCKeys*>());
    const Parts parts = partsOf(window);
    // First, since hiding may post calls. Dialogs below the window are not hidden with it.
    for (const QPointer<QObject>& part : parts) {
        auto* widget = qobject_cast<QWidget*>(part.data());
        if (widget != nullptr && (widget == window || widget->isWindow())) {
            widget->hide();
            widget->setEnabled(false);
            if (widget->isWindow() && widget->windowHandle() != nullptr)
                widget->windowHandle()->destroy(); // the application asks the one with the focus at any time
        }
    }
    // The window system would tell later that a dialog is not the active window any more.
    const QWidget* active = QApplication::activeWindow();
    if (active != nullptr && !active->isVisible())
        QApplication::setActiveWindow(nullptr);
    stopListening<zoClusterService>(parts);
    stopListening<zoCameraService>(parts);
    stopListening<zoNodeService>(parts);
    for (const QPointer<QObject>& part : parts)
        stopTimers(part);
    for (const QPointer<QObject>& part : parts) {
        if (part)
            QCoreApplication::removePostedEvents(part);
    }
}
