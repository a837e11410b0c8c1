#include "zoHPC.h"

#include "zoHPCConnectGUIW.h"
#include "zoHPCGUIW.h"
#include "zoHPCRetirement.h"
#include "zoHPCTreeEditGUIW.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCUndo.h"
#include "zoText.h"

#include <QAction>
#include <QMessageBox>
#include <QScopedValueRollback>

#include <zoClusterService.h>
#include <zoControllerService.h>
#include <zoIconManager.h>
#include <zoKernelServiceFactory.h>
#include <zoLog.h>
#include <zoMainWindowService.h>
#include <zoPlatform.h>

namespace
{
QString megabytesPerSecond(const QString& bytesPerSecond)
{
    return QString::number(double(bytesPerSecond.toLongLong()) * (1.0 / 1048576), 'f', 4);
}
} // namespace

zoHPC* zoHPC::s_instance = nullptr;

zoHPC::zoHPC()
{
    s_instance = this;
    m_clusterService = zoKernelServiceFactory::getService<zoClusterService>();

    auto* mainWindowService = zoKernelServiceFactory::getService<zoMainWindowService>();
    m_mainWindow = new zoHPCGUIW(mainWindowService->mainWindowWidget(), zoText("Module"));
    mainWindowService->registerModule(
        zoText("Cluster"), zoText("Rendering"), m_mainWindow, zoText("Tipreel_Cluster"),
        zoIconManager::getIcon(zoText("ModuleCluster"), QString()), tr("Cluster"), 0);
    connectMainWindow();

    m_mainWindow->setStartEnabled(true);
    m_mainWindow->setIsRunning(false, QStringList());

    createToggleAction();
    auto* controllerService = zoKernelServiceFactory::getService<zoControllerService>();
    if (!controllerService->isNonInteractive())
        m_connectOverlay = new zoHPCConnectGUIW(
            zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget(), QString());
    if (controllerService->usesModuleToolBar()) {
        if (QWidget* toolBar = zoKernelServiceFactory::getService<zoMainWindowService>()->moduleToolBar())
            toolBar->addAction(m_toggleAction);
    }

    connectClusterService();

    setConfig(m_clusterService->currentConfig());
    setRunning(m_clusterService->isRunning());
}

zoHPC::~zoHPC()
{
    // The windows belong to the host's main window; without this object they have nothing to do.
    zoHPCRetirement::retire(m_connectOverlay);
    if (m_mainWindow)
        m_mainWindow->undoSteps()->retire();
    zoHPCRetirement::retire(m_mainWindow);
    s_instance = nullptr;
}

void zoHPC::connectMainWindow()
{
    connect(m_mainWindow, SIGNAL(startTriggered()), this, SLOT(startCluster()));
    connect(m_mainWindow, SIGNAL(stopTriggered()), this, SLOT(stopCluster()));
    connect(m_mainWindow, SIGNAL(speedTestTriggered()), this, SLOT(runSpeedTest()));
    connect(m_mainWindow, SIGNAL(displayPropertiesChanged()), this, SLOT(updateRuntimConfig()));
    const zoHPCTreeEditGUIW* editor = m_mainWindow->getEditor();
    connect(editor, SIGNAL(imageCompressionChanged(QString)), this, SLOT(updateRuntimConfig()));
    connect(editor, SIGNAL(sceneCompressionChanged(QString)), this, SLOT(updateRuntimConfig()));
    connect(editor, SIGNAL(startStopActionsChanged(bool,bool,bool)), this, SLOT(updateRuntimConfig()));
    connect(editor, SIGNAL(parallelFramesChanged(int)), this, SLOT(updateRuntimConfig()));
    connect(editor, SIGNAL(frameQueueLengthChanged(int)), this, SLOT(updateRuntimConfig()));
    connect(editor, SIGNAL(stillFrameSupersamplingChanged(int)), this, SLOT(updateRuntimConfig()));
    connect(m_mainWindow, SIGNAL(showTilesToggled(bool)), this, SLOT(showTilesChanged(bool)));
    connect(m_mainWindow, SIGNAL(showTestImageToggled(bool)), this, SLOT(showTestImageChanged(bool)));
}

void zoHPC::createToggleAction()
{
    // A child of the module object: hosts find the object that takes their calls as the parent of this
    // action.
    m_toggleAction = new QAction(zoIconManager::getIcon(zoText("ModuleCluster"), QString()),
                                 tr("&Toggle Connection to the Cluster"), this);
    m_toggleAction->setIconText(tr("Cluster"));
    m_toggleAction->setToolTip(zoText("Tipreel_Cluster")); // a key that the host resolves
    m_toggleAction->setStatusTip(tr("Toggle Connection to the Cluster"));
    m_toggleAction->setCheckable(true);
    connect(m_toggleAction, SIGNAL(toggled(bool)), this, SLOT(toggleCluster(bool)));
}

void zoHPC::connectClusterService()
{
    connect(m_clusterService, &zoClusterService::started, this, [this] { setRunning(true); });
    connect(m_clusterService, &zoClusterService::stopped, this, [this] { setRunning(false); });
    connect(m_clusterService, &zoClusterService::runningNodesChanged, this, [this] { setRunning(true); });
    connect(m_clusterService, SIGNAL(configChanged(QString)), this, SLOT(setConfig(QString)));
    // Nobody else ends what it began.
    connect(m_clusterService, &QObject::destroyed, this, [this] {
        setRunning(false);
        if (m_connectOverlay)
            m_connectOverlay->setFinished();
    });
}

zoHPC* zoHPC::getInstance()
{
    return s_instance;
}

void zoHPC::show()
{
    if (m_mainWindow)
        m_mainWindow->show();
}

QString zoHPC::getConfigPath()
{
    if (m_configPath.isEmpty())
        m_configPath = QString::fromStdString(zoPlatform::getDataDir()) + zoText("/cluster");
    return m_configPath;
}

void zoHPC::loadConfig(const char* fileName)
{
    if (m_mainWindow)
        m_mainWindow->loadConfig(QString::fromLatin1(fileName));
}

void zoHPC::setConfig(const QString& config)
{
    const QScopedValueRollback<bool> notSentBack(m_forwardConfigChanges, false);
    if (m_mainWindow)
        m_sessionConfig = m_mainWindow->replaceConfigString(config);
}

void zoHPC::startCluster()
{
    // The service may run the event loop while it connects; a second click then starts nothing.
    if (!m_mainWindow || !m_clusterService || m_starting)
        return;
    m_starting = true;
    connect(m_clusterService, SIGNAL(multipleServersFound(QString)), this,
                                     SLOT(setFoundMultipleServers(QString)));
    connect(m_clusterService, SIGNAL(notEnoughMemoryFound(QString)), this,
                                     SLOT(setFoundNotEnoughMemory(QString)));

    m_sessionConfig = m_mainWindow->getConfigString();
    m_clusterService->setAcceptRunningServers(false);
    m_clusterService->setAcceptLowMemory(false);
    m_retryRequested = false;
    m_clusterService->applyConfig(QString(m_sessionConfig));
    // Once more for every risk that was accepted during the attempt; never for any other failure.
    for (int attempts = 1; !startOnce() && m_retryRequested && mayTryAgain(attempts); ++attempts)
        m_retryRequested = false;

    if (m_clusterService) {
        disconnect(m_clusterService, SIGNAL(multipleServersFound(QString)), this,
                                            SLOT(setFoundMultipleServers(QString)));
        disconnect(m_clusterService, SIGNAL(notEnoughMemoryFound(QString)), this,
                                            SLOT(setFoundNotEnoughMemory(QString)));
    }
    m_starting = false;
}

// True also when nothing can be started any more: a service may be destroyed by what it does.
bool zoHPC::startOnce()
{
    return !m_clusterService || m_clusterService->start();
}

// A person ends attempts with an answer. Without one a service that asks again and again would go on for ever.
bool zoHPC::mayTryAgain(int attempts) const
{
    constexpr int MaximumAttempts = 10;
    if (!m_clusterService || !zoKernelServiceFactory::getService<zoControllerService>()->isNonInteractive() ||
        attempts < MaximumAttempts)
        return m_clusterService;
    zoLog::error("%s", qUtf8Printable(tr("Cluster start given up after %1 attempts.").arg(attempts)));
    return false;
}

void zoHPC::stopCluster()
{
    if (m_clusterService)
        m_clusterService->stop();
}

void zoHPC::setNetworkOption(int networkIndex, const QString& key, const QString& value)
{
    if (!m_mainWindow)
        return;
    zoHPCTreeGUIW* tree = m_mainWindow->getTree();
    zoHPCTreeItem* network = tree->findNetworkByIndex(networkIndex);
    if (network == nullptr) {
        zoLog::error("Network %d not found.",
                     networkIndex); // scripts look for it: the same in every language
        return;
    }
    network->setOption(key, value);
    zoHPCTreeItem* selected = tree->selectedItem();
    tree->setSelectedItem(network);
    m_mainWindow->getEditor()->setItem(network);
    tree->setSelectedItem(selected);
}

void zoHPC::setAdvanced(bool advanced)
{
    if (m_mainWindow)
        m_mainWindow->setAdvanced(advanced);
}

void zoHPC::showTilesChanged(bool on)
{
    if (m_clusterService)
        m_clusterService->setShowTiles(on);
}

void zoHPC::showTestImageChanged(bool on)
{
    if (m_clusterService)
        m_clusterService->setShowTestImage(on);
}

void zoHPC::runSpeedTest()
{
    const QStringList rates = m_clusterService ? m_clusterService->speedTest() : QStringList();
    if (rates.size() != 3)
        return;
    const QString message = tr("Send: %1 MByte/s\nReceive: %2 MByte/s\nSync: %3 frames/s\n")
                                .arg(megabytesPerSecond(rates.at(0)), megabytesPerSecond(rates.at(1)),
                                     QString::number(double(rates.at(2).toLongLong()), 'f', 2));
    zoLog::info("%s", qUtf8Printable(message));
    QMessageBox::information(nullptr, tr("Results"), message, QMessageBox::Ok);
}

void zoHPC::toggleCluster(bool on)
{
    // What counts is what runs, not how the button looks.
    Q_UNUSED(on)
    if (m_isShowingState)
        return;
    if (m_clusterService && m_clusterService->isRunning())
        m_clusterService->stop();
    else
        startCluster();
    // Also after a start that failed, of which no signal tells.
    showToggleState(m_clusterService && m_clusterService->isRunning());
}

void zoHPC::showToggleState(bool running)
{
    const QScopedValueRollback<bool> showing(m_isShowingState, true);
    m_toggleAction->setChecked(running);
}

void zoHPC::setFoundMultipleServers(const QString& nodes)
{
    Q_UNUSED(nodes)
    if (!zoKernelServiceFactory::getService<zoControllerService>()->isNonInteractive()) {
        const auto answer =
            QMessageBox::warning(nullptr, tr("Cluster"),
                                 tr("There is already a ZOKEClusterServer running\non one or more of the "
                                    "requested cluster nodes.\n"
                                    "Do you really want to start clustering and risk\nperformance problems?"),
                                 QMessageBox::Yes, QMessageBox::Abort);
        if (answer != QMessageBox::Yes)
            return;
    }
    if (!m_clusterService)
        return;
    m_clusterService->setAcceptRunningServers(true);
    m_retryRequested = true;
}

void zoHPC::setFoundNotEnoughMemory(const QString& nodes)
{
    Q_UNUSED(nodes)
    if (!zoKernelServiceFactory::getService<zoControllerService>()->isNonInteractive()) {
        const auto answer = QMessageBox::critical(
            nullptr, tr("Cluster"),
            tr("There is already a ZOKEClusterServer running\non one or more of the requested cluster nodes\n"
               "and there is likely not enough free memory.\nDo you really want to start clustering and "
               "risk\n"
               "server instability?"),
            QMessageBox::Yes, QMessageBox::Abort);
        if (answer != QMessageBox::Yes)
            return;
    }
    if (!m_clusterService)
        return;
    m_clusterService->setAcceptLowMemory(true);
    m_retryRequested = true;
}

void zoHPC::setRunning(bool running)
{
    const QStringList nodes = m_clusterService ? m_clusterService->runningNodes() : QStringList();
    showToggleState(running);
    if (!m_mainWindow)
        return;
    m_mainWindow->setStartEnabled(!running);
    m_mainWindow->setIsRunning(running, nodes);
}

void zoHPC::updateRuntimConfig()
{
    if (!m_mainWindow || !m_clusterService || !m_forwardConfigChanges || !m_clusterService->isRunning())
        return;
    // The editor also announces what it comes to show when a person selects an item.
    if (m_mainWindow->getEditor()->isShowingItem() && m_mainWindow->documentText() == m_sessionConfig)
        return;
    m_sessionConfig = m_mainWindow->getConfigString();
    m_clusterService->applyConfig(QString(m_sessionConfig));
}

// Called once by the host after loading the library. The object goes with the library.
extern "C" Q_DECL_EXPORT void initPlugin()
{
    static zoHPC module;
    Q_UNUSED(module)
}
