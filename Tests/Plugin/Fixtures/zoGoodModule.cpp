// A module as small as one can be that still uses everything a host offers: a window, a tool-bar action whose
// parent is the module object, a preferences page, and a dialog that it forgets.

#include <zoClusterService.h>
#include <zoControllerService.h>
#include <zoIconManager.h>
#include <zoKernelServiceFactory.h>
#include <zoLog.h>
#include <zoMainWindowService.h>
#include <zoPreferencesService.h>

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QVBoxLayout>

namespace
{
// The module's window; takes file names that the module object cannot.
class GoodWindow final : public QMainWindow
{
    Q_OBJECT

public:
    explicit GoodWindow(QWidget* parent) : QMainWindow(parent)
    {
        setObjectName(QStringLiteral("GoodWindow"));
        setCentralWidget(new QLabel(QStringLiteral("Good"), this));
    }

public slots:
    void loadConfig(const QString& fileName)
    {
        zoLog::info("window loads %s", fileName.toUtf8().constData());
        QFile file(fileName);
        if (file.open(QIODevice::ReadOnly))
            zoKernelServiceFactory::getService<zoClusterService>()->applyConfig(
                QString::fromUtf8(file.readAll()));
    }
};

// The module object, which lives until the library is unloaded.
class GoodModule final : public QObject
{
    Q_OBJECT

public:
    GoodModule()
    {
        auto* host = zoKernelServiceFactory::getService<zoMainWindowService>();
        m_window = new GoodWindow(host->mainWindowWidget());
        host->registerModule(QStringLiteral("Good"), QStringLiteral("Rendering"), m_window,
                             QStringLiteral("Tipreel_Cluster"), QIcon(), QStringLiteral("Good module"), 0);
        auto* action = new QAction(QStringLiteral("Good"), this);
        action->setToolTip(QStringLiteral("Tipreel_Cluster"));
        if (QWidget* bar = host->moduleToolBar())
            bar->addAction(action);
        // Nobody owns it and nobody deletes it.
        (new ForgottenDialog)->setObjectName(QStringLiteral("Forgotten"));
        connect(zoKernelServiceFactory::getService<zoClusterService>(), &zoClusterService::started, this,
                [] { zoLog::info("module heard started"); });
    }

    ~GoodModule() override { zoLog::info("module object destroyed, window %s", m_window ? "alive" : "gone"); }

public slots:
    void loadConfig(const char* fileName)
    {
        if (m_window)
            m_window->loadConfig(QString::fromLatin1(fileName));
    }
    void startCluster()
    {
        auto* service = zoKernelServiceFactory::getService<zoClusterService>();
        if (zoKernelServiceFactory::getService<zoControllerService>()->isNonInteractive()) {
            service->setAcceptRunningServers(true);
            service->setAcceptLowMemory(true);
        }
        service->start();
    }
    void stopCluster() { zoKernelServiceFactory::getService<zoClusterService>()->stop(); }
    void destroyWindow() { delete m_window; }

private:
    class ForgottenDialog final : public QDialog
    {
    public:
        ~ForgottenDialog() override { zoLog::info("forgotten dialog destroyed"); }
    };

    QPointer<GoodWindow> m_window;
};

// The module's preferences page, a static object of the library.
class GoodPage final : public QWidget
{
    Q_OBJECT

public:
    GoodPage() : m_edit(new QLineEdit(this))
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(m_edit);
        auto* preferences = zoKernelServiceFactory::getService<zoPreferencesService>();
        preferences->registerPage(
            QStringLiteral("Good page"), this,
            [preferences] {
                preferences->setString(QStringLiteral("Good key"), QStringLiteral("the default"));
            },
            [this, preferences] { preferences->setString(QStringLiteral("Good key"), m_edit->text()); },
            [this, preferences] {
                m_edit->setText(preferences->getString(QStringLiteral("Good key"), QString()));
            });
    }

private:
    QLineEdit* m_edit;
};
} // namespace

extern "C" Q_DECL_EXPORT void initPlugin()
{
    static GoodModule module;
}

extern "C" Q_DECL_EXPORT void initPreferencesPlugin()
{
    static GoodPage page;
}

#include "zoGoodModule.moc"
