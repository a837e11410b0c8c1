#pragma once

#include <zoBaseService.h>

#include <QString>

class QIcon;
class QWidget;

// The host's main window, as modules see it.
class ZO_KERNEL_EXPORT zoMainWindowService : public zoBaseService
{
public:
    ~zoMainWindowService() override;

    // Qt parent for the windows of a module; it owns them.
    virtual QWidget* mainWindowWidget() = 0;

    // Adds a module's window to the host's module list. `name` identifies the module, `category` groups it,
    // `toolTipKey` is resolved by the host, `title` is translated already; `flags` is 0 and reserved.
    // The window stays owned by its Qt parent.
    virtual void registerModule(const QString& name, const QString& category, QWidget* window,
                                const QString& toolTipKey, const QIcon& icon, const QString& title,
                                int flags) = 0;

    // The tool bar that takes the toggle actions of modules, or null.
    virtual QWidget* moduleToolBar() = 0;
};
