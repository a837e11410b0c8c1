#pragma once

#include <zoMainWindowService.h>

#include <QPointer>

class zoHostMainWindow;

// Gives modules access to the host's window. Null answers once the window is gone.
class zoHostMainWindowService final : public zoMainWindowService
{
public:
    explicit zoHostMainWindowService(zoHostMainWindow* window); // not owned
    ~zoHostMainWindowService() override;

    QWidget* mainWindowWidget() override;
    void registerModule(const QString& name, const QString& category, QWidget* window,
                        const QString& toolTipKey, const QIcon& icon, const QString& title,
                        int flags) override;
    QWidget* moduleToolBar() override;

private:
    QPointer<zoHostMainWindow> m_window;
};
