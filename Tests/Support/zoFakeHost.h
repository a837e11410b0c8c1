#pragma once

#include <QHash>
#include <QIcon>
#include <QMainWindow>
#include <QStringList>
#include <QToolBar>

#include <zoCameraService.h>
#include <zoClusterService.h>
#include <zoControllerService.h>
#include <zoMainWindowService.h>
#include <zoNodeService.h>
#include <zoPreferencesService.h>

#include <functional>
#include <memory>

// A cluster service that does what a test tells it to, and writes down how it was called.
class zoFakeClusterService final : public zoClusterService
{
    Q_OBJECT

public:
    using zoClusterService::zoClusterService;

    QString currentConfig() override;
    bool isRunning() override;
    QStringList runningNodes() override;
    void setAcceptRunningServers(bool accept) override;
    void setAcceptLowMemory(bool accept) override;
    void applyConfig(const QString& document) override;
    bool start() override;
    void stop() override;
    void abort() override;
    void setShowTiles(bool on) override;
    void setShowTestImage(bool on) override;
    QStringList speedTest() override;
    Capabilities capabilities() override { return ability; }

    // What the service has and answers.
    QString config;
    bool running = false;
    QStringList nodes;
    QStringList rates;
    Capabilities ability;          // beyond what every service can
    std::function<bool()> onStart; // the body of start(); without one, start fails

    // What it was told: one line per call, in order. Documents are kept apart.
    QStringList calls;
    QStringList documents;
};

// All services that a module may ask a host for, registered while the object lives.
class zoFakeHost final : public zoMainWindowService, public zoControllerService, public zoPreferencesService
{
public:
    struct Registration
    {
        QString name;
        QString category;
        QWidget* window = nullptr;
        QString toolTipKey;
        QIcon icon;
        QString title;
        int flags = -1;
    };

    struct Page
    {
        QString title;
        QWidget* page = nullptr;
        std::function<void()> setDefaults;
        std::function<void()> saveChanges;
        std::function<void()> show;
    };

    zoFakeHost();
    ~zoFakeHost() override;

    QWidget* mainWindowWidget() override;
    void registerModule(const QString& name, const QString& category, QWidget* window,
                        const QString& toolTipKey, const QIcon& icon, const QString& title,
                        int flags) override;
    QWidget* moduleToolBar() override;

    bool isNonInteractive() override;
    bool usesModuleToolBar() override;

    void registerPage(const QString& title, QWidget* page, std::function<void()> setDefaults,
                      std::function<void()> saveChanges, std::function<void()> show) override;
    QString getString(const QString& key, const QString& defaultValue) override;
    void setString(const QString& key, const QString& value) override;

    bool nonInteractive = false;
    bool toolBarUsed = true;
    bool toolBarMissing = false;
    QList<Registration> modules;
    QList<Page> pages;
    QHash<QString, QString> preferences;
    std::unique_ptr<QMainWindow> window;
    QToolBar* toolBar = nullptr; // owned by the window
    zoFakeClusterService cluster;
};
