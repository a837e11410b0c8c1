#pragma once

#include "zoHPCOption.h"

#include <zoClusterService.h>

#include <QObject>
#include <QPointer>
#include <QString>

class QAction;
class zoHPCConnectGUIW;
class zoHPCGUIW;

// The module object: builds the cluster window, registers it with the host and runs sessions through the
// host's cluster service. One per process, created by initPlugin(). The host may invoke its slots by name.
class zoHPC final : public QObject
{
    Q_OBJECT

public:
    zoHPC();
    ~zoHPC() override;

    // Null before initPlugin() and after the library was unloaded.
    static zoHPC* getInstance(); // for hosts and tests

    void show();

    // Directory of the sample configurations.
    QString getConfigPath();

public slots:
    // The order of the slots is part of the interface: hosts invoke them by index, too.
    void loadConfig(const char* fileName); // Latin-1; null is an empty name
    void setConfig(const QString& config);
    void startCluster();
    void stopCluster();
    // networkIndex counts the networks of the tree from 1, in the order in which the tree shows them.
    void setNetworkOption(int networkIndex, const QString& key, const QString& value); // for hosts and tests
    void setAdvanced(bool advanced);
    void showTilesChanged(bool on);
    void showTestImageChanged(bool on);
    void runSpeedTest();
    void toggleCluster(bool on);
    void setFoundMultipleServers(const QString& nodes);
    void setFoundNotEnoughMemory(const QString& nodes);
    void setRunning(bool running);
    void updateRuntimConfig();

private:
    void connectMainWindow();
    void createToggleAction();
    void connectClusterService();
    bool startOnce();
    bool mayTryAgain(int attempts) const;
    void showToggleState(bool running);

    static zoHPC* s_instance;

    QPointer<zoClusterService> m_clusterService; // of the host, which may take it away
    QString m_configPath;
    QPointer<zoHPCConnectGUIW> m_connectOverlay; // owned by the host's main window
    QPointer<zoHPCGUIW> m_mainWindow;            // owned by the host's main window
    QAction* m_toggleAction = nullptr;
    QString m_sessionConfig; // what the service has, as the window writes it
    bool m_starting = false;
    bool m_isShowingState = false; // the toggle action follows the session: nobody asks for anything
    bool m_retryRequested = false;
    bool m_forwardConfigChanges = true;
};
