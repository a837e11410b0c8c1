#include "zoHostApplication.h"

#include "zoHostChoices.h"
#include "zoHostDocument.h"
#include "zoHostLogPanel.h"
#include "zoLocalClusterService.h"
#include "zoNodeClusterService.h"
#include "zoParaViewService.h"

#include <zoFileReader.h>
#include <zoKernelServiceFactory.h>
#include <zoLog.h>
#include <zoPlatform.h>

#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QScreen>
#include <QStatusBar>

namespace
{
constexpr int s_messageMs = 20000;
constexpr char s_defaultFileKey[] = "HPC Cluster default file";

// A script speaks the language that its caller set, whatever a person likes.
QString storedLanguage(const zoHostOptions& options)
{
    return options.nonInteractive ? QString() : zoHostChoices::language(QSettings());
}

// Of a window with its frame, in pixels of the screen; empty while it is not seen, or where windows do not know their
// place.
QRect placeOnDesktop(const QWidget* window)
{
    const bool isKnown = QGuiApplication::platformName() == QLatin1String("xcb");
    if (!isKnown || window == nullptr || !window->isVisible() || window->isMinimized())
        return {};
    const QRect place = window->frameGeometry();
    const double scale = window->devicePixelRatioF();
    const QPoint corner = window->screen()->geometry().topLeft(); // which is not scaled
    return {corner + (place.topLeft() - corner) * scale, place.size() * scale};
}

// The text of the sample that an empty host shows; empty when the data directory lacks it.
QString defaultDocument()
{
    QByteArray bytes;
    zoFileReader::read(
        QString::fromStdString(zoPlatform::getDataDir()) + QStringLiteral("/cluster/default.zhpc"), bytes);
    return QString::fromUtf8(bytes).remove(QLatin1Char('\r'));
}
} // namespace

zoHostApplication::zoHostApplication(const zoHostOptions& options)
    : m_options(options)
    , m_translations(options.language.isEmpty() ? storedLanguage(options) : options.language)
    , m_controller(options.nonInteractive)
    , m_preferences(&m_settings)
    , m_cameras(&m_settings, &m_nodes)
    , m_recent(&m_settings)
    , m_earlier(zoHostEarlierConfigurations::defaultFolder())
    , m_cluster(createCluster())
    , m_generalPage(std::make_unique<zoHostGeneralPage>(&m_preferences))
    , m_clusterPage(std::make_unique<zoHostClusterPage>(&m_preferences, m_cluster.get()))
    , m_window(std::make_unique<zoHostMainWindow>(
          zoHostMainWindow::Services{&m_preferences, &m_cameras, &m_nodes, &m_controller, m_cluster.get(),
                                     &m_settings, &m_recent, &m_earlier}))
    , m_mainWindowService(std::make_unique<zoHostMainWindowService>(m_window.get()))
    , m_configuration(std::make_unique<zoHostConfigurationService>(m_window->document(), m_cluster.get()))
{
    connect(&m_log, &zoHostLog::messageLogged, m_window->logPanel(), &zoHostLogPanel::addMessage);
    // Whoever has closed the log, or has the nodes in front of it, must not wait in vain for what failed. Behind another
    // tab a panel is visible all the same, outside the window.
    connect(&m_log, &zoHostLog::messageLogged, m_window.get(), [this](int type, const QString& text) {
        if (type == QtCriticalMsg && m_window->logPanel()->visibleRegion().isEmpty())
            m_window->statusBar()->showMessage(text, s_messageMs);
    });
    // Start and Stop stay within reach where windows of a rehearsal have no room beside the host's.
    connect(m_cluster.get(), &zoClusterService::started, m_window.get(), [this] {
        if ((m_cluster->capabilities() & zoClusterService::Rehearses) != 0)
            m_window->raise();
    });
    connect(m_window.get(), &zoHostMainWindow::closing, m_cluster.get(), &zoClusterService::abort);
    // As Qt 5 does by itself; Qt 6 would ask for an end, which looks like that of a session.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, this, [] { QCoreApplication::exit(); });
    connect(&m_signals, &zoHostSignals::terminationRequested, this, [this] {
        if (m_recovery)
            m_recovery->keepUnfinished();
        m_cluster->abort();
        QCoreApplication::exit();
    });
    // Without a file of its own a session begins with the default document, which has no name yet.
    const QString document = defaultDocument();
    m_cluster->offerConfig(document);
    registerServices();
    loadModules();
    if (!options.nonInteractive)
        rememberDocuments(document);
    m_session = std::make_unique<zoHostSession>(m_options, m_window.get(), m_cluster.get());
}

zoHostApplication::~zoHostApplication()
{
    // The session ends while everybody can still hear of it.
    m_session.reset();
    m_cluster->abort();
    m_cluster->stop();
    m_journal.reset();
    m_autosave.reset();
    m_recovery.reset();
    // Windows first: their code lies in the modules.
    zoKernelServiceFactory::the().unregisterService<zoConfigurationService>();
    m_configuration.reset();
    m_window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_clusterPage.reset();
    m_generalPage.reset();
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
            if (!m_options.nonInteractive) // what a script loads its session tells
                m_journal = std::make_unique<zoHostJournal>(m_window->document());
            if (m_recovery)
                m_recovery->offer(file);
            if (isForAPerson() && file.isEmpty() && zoHostChoices::showsStartPage(&m_preferences))
                m_window->showStartPage();
        },
        Qt::QueuedConnection);
    return QCoreApplication::exec();
}

QString zoHostApplication::configurationFile()
{
    if (!m_options.configFile.isEmpty())
        return m_options.configFile;
    if (isForAPerson() && zoHostChoices::reopensLast(&m_preferences)) {
        // One that is gone is not worth an error at each start.
        const QStringList recent = m_recent.files();
        if (!recent.isEmpty() && QFileInfo::exists(recent.constFirst()))
            return recent.constFirst();
    }
    QString file = m_preferences.getString(QLatin1String(s_defaultFileKey), QString());
    return file.replace(QLatin1String("$ZOKE_DATA"), QString::fromStdString(zoPlatform::getDataDir()));
}

// Not for a picture or a session that was asked for on the command line.
bool zoHostApplication::isForAPerson() const
{
    return !m_options.nonInteractive && !m_options.start && m_options.screenshotFile.isEmpty();
}

// Node servers where their program is, unless somebody wants the sessions inside this one.
std::unique_ptr<zoHostClusterService> zoHostApplication::createCluster()
{
    const zoNodeClusterService::Launch launch = zoHostClusterPage::storedLaunch(&m_preferences);
    const QString engine =
        m_options.engine.isEmpty() ? zoHostClusterPage::storedEngine(&m_preferences) : m_options.engine;
    if (engine == QLatin1String("local"))
        return std::make_unique<zoLocalClusterService>();
    if (engine == QLatin1String("paraview"))
        return createParaView();
    if (launch.program.isEmpty()) {
        const bool isWanted = !m_options.engine.isEmpty() || m_options.rehearse;
        if (isWanted)
            zoLog::error(tr("The program ZOKEClusterServer is not beside this one: sessions show nothing"));
        return std::make_unique<zoLocalClusterService>();
    }
    auto cluster = std::make_unique<zoNodeClusterService>(launch);
    cluster->setRehearsal(m_options.rehearse);
    cluster->setOwnPlace([this] { return placeOnDesktop(m_window.get()); });
    cluster->setEndsWithLostNode(zoHostClusterPage::storedEndsWithLostNode(&m_preferences));
    if (!m_options.nonInteractive)
        cluster->setRehearsalQuestion([this] { return mayRehearse(); });
    return cluster;
}

std::unique_ptr<zoHostClusterService> zoHostApplication::createParaView()
{
    auto cluster = std::make_unique<zoParaViewService>(zoHostClusterPage::storedParaView(&m_preferences));
    if (m_options.rehearse)
        cluster->setRehearsal(zoParaViewPlan::desktopSize());
    return cluster;
}

bool zoHostApplication::mayRehearse()
{
    return QMessageBox::question(m_window.get(), tr("Cluster"),
                                 tr("No node of the configuration can be reached.\n"
                                    "Do you want to rehearse the session on this machine?")) ==
           QMessageBox::Yes;
}

void zoHostApplication::registerServices()
{
    zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
    factory.registerService<zoControllerService>(&m_controller);
    factory.registerService<zoPreferencesService>(&m_preferences);
    factory.registerService<zoNodeService>(&m_nodes);
    factory.registerService<zoCameraService>(&m_cameras);
    factory.registerService<zoClusterService>(m_cluster.get());
    factory.registerService<zoMainWindowService>(m_mainWindowService.get());
    factory.registerService<zoConfigurationService>(m_configuration.get());
}

void zoHostApplication::unregisterServices()
{
    zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
    factory.unregisterService<zoConfigurationService>();
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
    m_autosave = std::make_unique<zoHostAutosave>(m_window.get(), &m_earlier,
                                                  zoHostAutosave::storedSeconds(&m_preferences));
    // From its own host it passes to this one at once.
    connect(m_window.get(), &zoHostMainWindow::workBroughtBack, m_autosave.get(), [this] {
        if (m_autosave->isOn())
            m_autosave->keep();
    });
    connect(document, &zoHostDocument::fileOpened, &m_recent, &zoHostRecentFiles::add);
    connect(document, &zoHostDocument::replaced, &m_earlier, &zoHostEarlierConfigurations::keep);
    connect(m_generalPage.get(), &zoHostGeneralPage::autosaveSecondsChanged, m_autosave.get(),
            &zoHostAutosave::setSeconds);
}

void zoHostApplication::loadModules()
{
    const QStringList files =
        m_options.moduleFiles.isEmpty() ? zoModuleLoader::defaultModuleFiles() : m_options.moduleFiles;
    for (const QString& file : files) {
        m_translations.addModule(file);
        m_loader.load(file);
    }
    m_window->setModuleFiles(m_loader.loadedFiles());
}
