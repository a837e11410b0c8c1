#pragma once

#include <QObject>
#include <QPointer>

class zoClusterService;
class zoHostHelp;
class zoHostMainWindow;
class zoHostPreferencesService;
class zoHostRecentFiles;
class zoHostStartPage;

// The start page in the host's window, and what its offers do.
class zoHostStart final : public QObject
{
    Q_OBJECT

public:
    // All outlive it; the window is also the parent.
    zoHostStart(zoHostMainWindow* window, zoHostHelp* help, zoHostRecentFiles* recent,
                zoHostPreferencesService* preferences, zoClusterService* cluster);
    ~zoHostStart() override;

public slots:
    void show();

private:
    void createPage();
    void newWall();
    void beginEmpty();
    void open();
    void openSample(const QString& fileName);
    void updateRunning();

    zoHostMainWindow* m_window;
    zoHostHelp* m_help;
    zoHostRecentFiles* m_recent;
    zoHostPreferencesService* m_preferences;
    zoClusterService* m_cluster;
    QPointer<zoHostStartPage> m_page; // of the window
};
