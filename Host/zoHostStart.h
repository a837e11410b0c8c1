#pragma once

#include <QObject>
#include <QPointer>

class QWidget;
class zoClusterService;
class zoHostDocument;
class zoHostHelp;
class zoHostModules;
class zoHostPages;
class zoHostPreferencesService;
class zoHostRecentFiles;
class zoHostStartPage;

// The start page in the host's window, and what its offers do.
class zoHostStart final : public QObject
{
    Q_OBJECT

public:
    // What it stands on, not owned.
    struct Parts
    {
        zoHostHelp* help;
        zoHostRecentFiles* recent;
        zoHostPreferencesService* preferences;
        zoClusterService* cluster;
    };

    // All outlive it; the window is also the parent.
    zoHostStart(zoHostPages* pages, const zoHostModules* modules, zoHostDocument* document,
                const Parts& parts, QWidget* window);
    ~zoHostStart() override;

public slots:
    void show();

private:
    void createPage();
    void newWall();
    void beginEmpty();
    void open();
    void openSample(const QString& fileName);
    void leave();
    void updateRunning();

    zoHostPages* m_pages;
    const zoHostModules* m_modules;
    zoHostDocument* m_document;
    QWidget* m_window;
    Parts m_parts;
    QPointer<zoHostStartPage> m_page; // of the window
};
