// A module for zohost: a window that says which nodes the session runs on. Docs/writing-a-module.md walks through it.

#include <zoClusterService.h>
#include <zoControllerService.h>
#include <zoIconManager.h>
#include <zoKernelServiceFactory.h>
#include <zoLog.h>
#include <zoMainWindowService.h>

#include <QAction>
#include <QLabel>
#include <QPointer>

namespace
{
// The module's window. It belongs to the host's main window, as every window of a module does.
class HelloWindow final : public QLabel
{
    Q_OBJECT

public:
    HelloWindow(zoClusterService* cluster, QWidget* parent) : QLabel(parent), m_cluster(cluster)
    {
        setObjectName(QStringLiteral("HelloWindow"));
        setAlignment(Qt::AlignCenter);
        setMinimumSize(240, 80);
        connect(cluster, &zoClusterService::started, this, &HelloWindow::showNodes);
        connect(cluster, &zoClusterService::stopped, this, &HelloWindow::showNodes);
        connect(cluster, &zoClusterService::runningNodesChanged, this, &HelloWindow::showNodes);
        showNodes();
    }

private:
    void showNodes()
    {
        if (m_cluster->isRunning())
            setText(tr("Hello, %1").arg(m_cluster->runningNodes().join(QStringLiteral(", "))));
        else
            setText(tr("Nobody to say hello to: no session runs"));
    }

    zoClusterService* m_cluster; // the host's
};

// The module object: made once, gone when the library is unloaded.
class HelloModule final : public QObject
{
    Q_OBJECT

public:
    HelloModule()
    {
        auto* cluster = zoKernelServiceFactory::getService<zoClusterService>();
        auto* host = zoKernelServiceFactory::getService<zoMainWindowService>();
        if (cluster == nullptr || host == nullptr) {
            zoLog::error("Hello: this host has no sessions or no main window");
            return;
        }
        m_window = new HelloWindow(cluster, host->mainWindowWidget());
        const QIcon icon = zoIconManager::getIcon(QStringLiteral("ModuleCluster"), QString());
        host->registerModule(QStringLiteral("Hello"), QStringLiteral("Rendering"), m_window,
                             QStringLiteral("Tipreel_Hello"), icon, tr("Hello"), 0);

        auto* controller = zoKernelServiceFactory::getService<zoControllerService>();
        QWidget* toolBar = host->moduleToolBar();
        if (controller == nullptr || !controller->usesModuleToolBar() || toolBar == nullptr)
            return;
        auto* action = new QAction(icon, tr("Say hello"), this);
        connect(action, &QAction::triggered, this, &HelloModule::sayHello);
        toolBar->addAction(action);
    }

public slots:
    void sayHello()
    {
        if (m_window)
            zoLog::info(m_window->text());
    }

private:
    QPointer<HelloWindow> m_window; // the host may close it before
};
} // namespace

// What the host calls once the library is loaded.
extern "C" Q_DECL_EXPORT void initPlugin()
{
    static HelloModule module;
}

#include "helloModule.moc"
