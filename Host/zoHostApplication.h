#pragma once

#include "zoHostAutosave.h"
#include "zoHostCameraService.h"
#include "zoHostClusterPage.h"
#include "zoHostClusterService.h"
#include "zoHostConfigurationService.h"
#include "zoHostControllerService.h"
#include "zoHostEarlierConfigurations.h"
#include "zoHostGeneralPage.h"
#include "zoHostJournal.h"
#include "zoHostLog.h"
#include "zoHostMainWindow.h"
#include "zoHostMainWindowService.h"
#include "zoHostNodeService.h"
#include "zoHostOptions.h"
#include "zoHostPreferencesService.h"
#include "zoHostRecentFiles.h"
#include "zoHostRecovery.h"
#include "zoHostSession.h"
#include "zoHostSignals.h"
#include "zoHostTranslations.h"
#include "zoModuleLoader.h"

#include <QObject>
#include <QSettings>

#include <memory>

// The host from its options to its orderly end: settings, services, window, modules and session, taken down
// in reverse order. Lives inside a QApplication.
class zoHostApplication final : public QObject
{
    Q_OBJECT

public:
    explicit zoHostApplication(const zoHostOptions& options);
    ~zoHostApplication() override;

    // Shows the window and runs until the end; the exit code.
    int run();

    zoHostEarlierConfigurations* earlier() { return &m_earlier; } // for tests
    // Whether work that is not saved outlives this host; not in a script.
    bool keepsUnsaved() const { return m_autosave != nullptr; } // for tests

    // The file that a session begins with: the one of the options, else the default file of the preferences
    // with
    // "$ZOKE_DATA" replaced by the data directory; may be empty.
    QString configurationFile();

private:
    std::unique_ptr<zoHostClusterService> createCluster();
    std::unique_ptr<zoHostClusterService> createParaView();
    bool mayRehearse();
    bool isForAPerson() const;
    void registerServices();
    void unregisterServices();
    void loadModules();
    void rememberDocuments(const QString& newDocument);

    zoHostOptions m_options;
    zoHostTranslations m_translations; // before all that has texts
    zoHostLog m_log;
    zoHostSignals m_signals;
    QSettings m_settings;
    zoHostControllerService m_controller;
    zoHostPreferencesService m_preferences;
    zoHostNodeService m_nodes;
    zoHostCameraService m_cameras;
    zoHostRecentFiles m_recent;
    zoHostEarlierConfigurations m_earlier;
    std::unique_ptr<zoHostClusterService> m_cluster;
    std::unique_ptr<zoHostGeneralPage> m_generalPage;
    std::unique_ptr<zoHostClusterPage> m_clusterPage;
    std::unique_ptr<zoHostMainWindow> m_window;
    std::unique_ptr<zoHostMainWindowService> m_mainWindowService;
    std::unique_ptr<zoHostConfigurationService> m_configuration;
    std::unique_ptr<zoHostRecovery> m_recovery; // null in a script
    std::unique_ptr<zoHostAutosave> m_autosave; // likewise
    std::unique_ptr<zoHostJournal> m_journal;   // likewise, once the session has begun
    zoModuleLoader m_loader;
    std::unique_ptr<zoHostSession> m_session;
};
