#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QVector>

class QLabel;
class QStackedWidget;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;
class zoHostCameraService;
class zoHostLogPanel;
class zoHostNodeService;
class zoHostPreferencesDialog;
class zoHostPreferencesService;

// The host's window: the modules by category at the left, the current module's window in the middle, the
// cameras below the modules and the log at the bottom.
class zoHostMainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    struct Services
    {
        zoHostPreferencesService* preferences;
        zoHostCameraService* cameras;
        zoHostNodeService* nodes;
    };

    explicit zoHostMainWindow(const Services& services,
                              QWidget* parent = nullptr); // services outlive the window
    ~zoHostMainWindow() override;

    QSize sizeHint() const override;
    QToolBar* moduleToolBar() const { return m_moduleToolBar; }
    zoHostLogPanel* logPanel() const { return m_logPanel; }

    // Lists a module and shows its window as a page of this one, which owns it from then on. A window that is
    // destroyed leaves the list. A name that is registered already is replaced.
    void addModule(const QString& name, const QString& category, QWidget* window, const QString& toolTipKey,
                   const QIcon& icon, const QString& title);

    // The windows of the registered modules in the order of registration.
    QList<QWidget*> moduleWindows() const;

    // The module object that offers a slot with this signature: the parent of an action on the module tool
    // bar. Null when there is none.
    QObject* moduleObject(const char* slotSignature) const;

    // The text for a tool-tip key of a module; any other text stands for itself.
    static QString resolvedToolTip(const QString& key);

public slots:
    void showPreferences();
    void showAbout();

signals:
    // The user wants the window gone; emitted before it closes.
    void closing();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

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
    QTreeWidgetItem* categoryItem(const QString& category);
    void removeModule(const QWidget* window);
    void showModule(QWidget* window);

    Services m_services;
    QStackedWidget* m_pages;
    QLabel* m_emptyPage;
    QToolBar* m_moduleToolBar;
    QTreeWidget* m_moduleList = nullptr;
    zoHostLogPanel* m_logPanel = nullptr;
    QVector<Module> m_modules;
    QPointer<zoHostPreferencesDialog> m_preferencesDialog;
};
