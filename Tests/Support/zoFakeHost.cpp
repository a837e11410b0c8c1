#include "zoFakeHost.h"

#include <zoKernelServiceFactory.h>

namespace
{
QString call(const char* name, bool argument)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(name),
                                       argument ? QStringLiteral("true") : QStringLiteral("false"));
}
} // namespace

QString zoFakeClusterService::currentConfig()
{
    return config;
}

bool zoFakeClusterService::isRunning()
{
    return running;
}

QStringList zoFakeClusterService::runningNodes()
{
    return nodes;
}

void zoFakeClusterService::setAcceptRunningServers(bool accept)
{
    calls << call("setAcceptRunningServers", accept);
}

void zoFakeClusterService::setAcceptLowMemory(bool accept)
{
    calls << call("setAcceptLowMemory", accept);
}

void zoFakeClusterService::applyConfig(const QString& document)
{
    calls << QStringLiteral("applyConfig");
    documents << document;
}

bool zoFakeClusterService::start()
{
    calls << QStringLiteral("start");
    return onStart ? onStart() : false;
}

void zoFakeClusterService::stop()
{
    calls << QStringLiteral("stop");
}

void zoFakeClusterService::abort()
{
    calls << QStringLiteral("abort");
}

void zoFakeClusterService::setShowTiles(bool on)
{
    calls << call("setShowTiles", on);
}

void zoFakeClusterService::setShowTestImage(bool on)
{
    calls << call("setShowTestImage", on);
}

QStringList zoFakeClusterService::speedTest()
{
    calls << QStringLiteral("speedTest");
    return rates;
}

zoFakeHost::zoFakeHost() : window(std::make_unique<QMainWindow>())
{
    toolBar = window->addToolBar(QStringLiteral("Modules"));
    zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
    factory.registerService<zoMainWindowService>(static_cast<zoMainWindowService*>(this));
    factory.registerService<zoControllerService>(static_cast<zoControllerService*>(this));
    factory.registerService<zoPreferencesService>(static_cast<zoPreferencesService*>(this));
    factory.registerService<zoClusterService>(&cluster);
}

zoFakeHost::~zoFakeHost()
{
    // As a real host does: windows first, while their services are still there.
    window.reset();
    zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
    factory.unregisterService<zoClusterService>();
    factory.unregisterService<zoPreferencesService>();
    factory.unregisterService<zoControllerService>();
    factory.unregisterService<zoMainWindowService>();
}

QWidget* zoFakeHost::mainWindowWidget()
{
    return window.get();
}

void zoFakeHost::registerModule(const QString& name, const QString& category, QWidget* moduleWindow,
                                const QString& toolTipKey, const QIcon& icon, const QString& title, int flags)
{
    modules.append({name, category, moduleWindow, toolTipKey, icon, title, flags});
}

QWidget* zoFakeHost::moduleToolBar()
{
    return toolBarMissing ? nullptr : toolBar;
}

bool zoFakeHost::isNonInteractive()
{
    return nonInteractive;
}

bool zoFakeHost::usesModuleToolBar()
{
    return toolBarUsed;
}

void zoFakeHost::registerPage(const QString& title, QWidget* page, std::function<void()> setDefaults,
                              std::function<void()> saveChanges, std::function<void()> show)
{
    pages.append({title, page, std::move(setDefaults), std::move(saveChanges), std::move(show)});
}

QString zoFakeHost::getString(const QString& key, const QString& defaultValue)
{
    return preferences.value(key, defaultValue);
}

void zoFakeHost::setString(const QString& key, const QString& value)
{
    preferences.insert(key, value);
}
