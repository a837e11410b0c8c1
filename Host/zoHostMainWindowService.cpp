#include "zoHostMainWindowService.h"

#include "zoHostMainWindow.h"

#include <QToolBar>

zoHostMainWindowService::zoHostMainWindowService(zoHostMainWindow* window) : m_window(window) {}

zoHostMainWindowService::~zoHostMainWindowService() = default;

QWidget* zoHostMainWindowService::mainWindowWidget()
{
    return m_window;
}

void zoHostMainWindowService::registerModule(const QString& name, const QString& category, QWidget* window,
                                             const QString& toolTipKey, const QIcon& icon,
                                             const QString& title, int flags)
{
    Q_UNUSED(flags)
    if (m_window)
        m_window->addModule(name, category, window, toolTipKey, icon, title);
}

QWidget* zoHostMainWindowService::moduleToolBar()
{
    return m_window ? m_window->moduleToolBar() : nullptr;
}
