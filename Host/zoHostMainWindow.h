#pragma once

#include "zoHostEarlierConfigurations.h"
#include "zoHostModules.h"
#include "zoHostPages.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QVector>

class QAction;
class QDialog;
class QDockWidget;
class QLabel;
class QMimeData;
class QSettings;
class QStackedWidget;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;
class zoClusterService;
class zoControllerService;
class zoHostCameraService;
class zoHostDocument;
class zoHostEarlierDialog;
class zoHostFileGuard;
class zoHostHelp;
class zoHostLogPanel;
class zoHostNodeService;
class zoHostPageStatus;
class zoHostPreferencesDialog;
class zoHostPreferencesService;
class zoHostRecentFiles;
class zoHostRecentMenu;
class zoHostStart;
class zoHostUndoActions;

// The host's window: the modules by category at the left, the current module's window in the middle, the
// cameras below the modules and the log at the bottom. Its title tells the current module's file and whether
// that is saved.
class zoHostMainWindow final : public QMainWindow, public zoHostModules, public zoHostPages
{
    Q_OBJECT

public:
    struct Services
    {
        zoHostPreferencesService* preferences;
        zoHostCameraService* cameras;
        zoHostNodeService* nodes;
        zoControllerService* controller;
        zoClusterService* cluster;
        QSettings* settings;
        zoHostRecentFiles* recent;
        zoHostEarlierConfigurations* earlier;
    };

    explicit zoHostMainWindow(const Services& services,
                              QWidget* parent = nullptr); // services outlive the window
    ~zoHostMainWindow() override;

    QSize sizeHint() const override;
    QToolBar* moduleToolBar() const { return m_moduleToolBar; }
    zoHostLogPanel* logPanel() const { return m_logPanel; }
    zoHostDocument* document() const { return m_document; }
    zoHostFileGuard* guard() const { return m_guard; }

    // Lists a module and shows its window as a page of this one, which owns it from then on. A window that is
    // destroyed leaves the list. A name that is registered already is replaced.
    void addModule(const QString& name, const QString& category, QWidget* window, const QString& toolTipKey,
                   const QIcon& icon, const QString& title);

    QList<QWidget*> moduleWindows() const override;
    QObject* moduleObject(const char* slotSignature) const override;

    // The text for a tool-tip key of a module; any other text stands for itself.
    static QString resolvedToolTip(const QString& key);

    // What About tells of.
    void setModuleFiles(const QStringList& files) { m_moduleFiles = files; }

    void showDocument() override;
    void showPage(QWidget* page) override;
    bool mayReplace() const override;

public slots:
    void showPreferences();
    void showAbout();
    QDialog* showEarlierConfigurations(); // which it owns
    void showStartPage();
    // Opens a configuration as a person's wish; not while a session runs. Nobody is asked about unsaved
    // changes: what is replaced is kept among the earlier configurations.
    void openConfiguration(const QString& fileName) override;
    // Brings an earlier configuration back; not while a session runs.
    void bringBack(const QString& text, const QString& originFile);
    // The same for work that its host could not save, whose text was read before: as its file, which Save asks about
    // when it is another one than that host knew. False, and a person is told why, when it stays where it is.
    bool bringBackWork(const zoHostEarlierConfigurations::Entry& entry, const QString& text);

signals:
    // The user wants the window gone and lost nothing by it; emitted before it closes.
    void closing();
    // Unsaved work is in its window again.
    void workBroughtBack();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Module
    {
        QString name;
        QPointer<QWidget> window;
        QWidget* address; // to find the entry once the window is gone
        QTreeWidgetItem* item;
    };

    void createMenus();
    void createDocks(const Services& services);
    void restartSession();
    void createNodesDock(QDockWidget* log);
    QTreeWidgetItem* categoryItem(const QString& category);
    void removeModule(const QWidget* window);
    void showModule(QWidget* window);
    QWidget* documentPage() const;
    void updateTitle();
    void updateRunning();
    bool mayClose();
    bool offerRemoval(const QString& fileName);
    bool takes(const QDropEvent* event) const;
    void restoreLayout();
    void saveLayout() const;

    Services m_services;
    zoHostDocument* m_document;
    zoHostFileGuard* m_guard = nullptr;
    QStackedWidget* m_pages;
    QLabel* m_emptyPage;
    QToolBar* m_moduleToolBar;
    QTreeWidget* m_moduleList = nullptr;
    zoHostLogPanel* m_logPanel = nullptr;
    zoHostRecentMenu* m_recentMenu = nullptr;
    zoHostUndoActions* m_undoActions = nullptr;
    QLabel* m_sessionLabel = nullptr;
    zoHostPageStatus* m_pageStatus = nullptr;
    zoHostHelp* m_help = nullptr;
    zoHostStart* m_start = nullptr;
    QStringList m_moduleFiles;
    QVector<Module> m_modules;
    QPointer<zoHostEarlierDialog> m_earlierDialog;
    QPointer<zoHostPreferencesDialog> m_preferencesDialog;
};
