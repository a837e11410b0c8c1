#include "zoHostApplication.h"

#include "zoHostDocument.h"
#include "zoHostLogPanel.h"

#include <zoKernelServiceFactory.h>
#include <zoLog.h>
#include <zoPlatform.h>

#include <QApplication>
#include <QFile>

namespace
{
constexpr char s_defaultFileKey[] = "HPC Cluster default file";

// The text of the sample that an empty host shows; empty when the data directory lacks it.
QString defaultDocument()
{
    QFile file(QString::fromStdString(zoPlatform::getDataDir()) + QStringLiteral("/cluster/default.zhpc"));
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? QString::fromUtf8(file.readAll()) : QString();
}
} // namespace

zoHostApplication::zoHostApplication(const zoHostOptions& options)
    : m_options(options)
    , m_translations(options.language)
    , m_controller(options.nonInteractive)
    , m_preferences(&m_settings)
    , m_cameras(&m_settings, &m_nodes)
    , m_recent(&m_settings)
    , m_earlier(zoHostEarlierConfigurations::defaultFolder())
    , m_clusterPage(std::make_unique<zoHostClusterPage>(&m_preferences, &m_cluster))
    , m_window(std::make_unique<zoHostMainWindow>(
          zoHostMainWindow::Services{&m_preferences, &m_cameras, &m_nodes, &m_controller, &m_cluster,
                                     &m_settings, &m_recent, &m_earlier}))
    , m_mainWindowService(std::make_unique<zoHostMainWindowService>(m_window.get()))
{
    connect(&m_log, &zoHostLog::messageLogged, m_window->logPanel(), &zoHostLogPanel::addMessage);
    connect(m_window.get(), &zoHostMainWindow::closing, &m_cluster, &zoClusterService::abort);
    connect(&m_signals, &zoHostSignals::terminationRequested, this, [this] {
        if (m_recovery)
            m_recovery->keepUnfinished();
        m_cluster.abort();
        QCoreApplication::quit();
    });
    // Without a file of its own a session begins with the default document, which has no name yet.
    const QString document = defaultDocument();
    m_cluster.offerConfig(document);
    registerServices();
    loadModules();
    if (!options.nonInteractive)
        rememberDocuments(document);
    m_session = std::make_unique<zoHostSession>(m_options, m_window.get(), &m_cluster);
}

zoHostApplication::~zoHostApplication()
{
    // The session ends while everybody can still hear of it.
    m_session.reset();
    m_cluster.abort();
    m_cluster.stop();
    m_recovery.reset();
    // Windows first: their code lies in the modules.
    m_window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_clusterPage.reset();
    m_preferences.clearPages();
    m_loader.unloadAll();
    unregisterServices();
}

int zoHostApplication::run()
{
    m_window->show();
    const QString file = configurationFile();
    QMetaObject::invokeMethod(
        m_session.get(),
        [this, file] {
            m_session->begin(file);
            if (m_recovery)
                m_recovery->offer();
        },
        Qt::QueuedConnection);
    return QCoreApplication::exec();
}

QString zoHostApplication::configurationFile()
{
    if (!m_options.configFile.isEmpty())
        return m_options.configFile;
    QString file = m_preferences.getString(QLatin1String(s_defaultFileKey), QString());
    return file.replace(QLatin1String("$ZOKE_DATA"), QString::fromStdString(zoPlatform::getDataDir()));
}

void zoHostApplication::registerServices()
{
    zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
    factory.registerService<zoControllerService>(&m_controller);
    factory.registerService<zoPreferencesService>(&m_preferences);
    factory.registerService<zoNodeService>(&m_nodes);
    factory.registerService<zoCameraService>(&m_cameras);
    factory.registerService<zoClusterService>(&m_cluster);
    factory.registerService<zoMainWindowService>(m_mainWindowService.get());
}

void zoHostApplication::unregisterServices()
{
    zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
    factory.unregisterService<zoMainWindowService>();
    factory.unregisterService<zoClusterService>();
    factory.unregisterService<zoCameraService>();
    factory.unregisterService<zoNodeService>();
    factory.unregisterService<zoPreferencesService>();
    factory.unregisterService<zoControllerService>();
}

// Once the modules have begun: what they show before a person or a file comes is nobody's work. A script
// leaves no trace in what people find in their menus.
void zoHostApplication::rememberDocuments(const QString& newDocument)
{
    const zoHostDocument* document = m_window->document();
    m_earlier.setNewDocument(newDocument);
    m_recovery = std::make_unique<zoHostRecovery>(m_window.get(), &m_earlier);
    connect(document, &zoHostDocument::fileOpened, &m_recent, &zoHostRecentFiles::add);
    connect(document, &zoHostDocument::replaced, &m_earlier, &zoHostEarlierConfigurations::keep);
}

void zoHostApplication::loadModules()
{
    const QStringList files = m_options.moduleFiles.isEmpty()
                                  ? QStringList(zoModuleLoader::defaultModuleFile())
                                  : m_options.moduleFiles;
    for (const QString& file : files) {
        m_translations.addModule(file);
        m_loader.load(file);
    }
}
