#include "zoHPCPreferencesGUII.h"

#include "zoText.h"

#include "ui_zoHPCPreferencesGUII.h"

#include <zoIconManager.h>
#include <zoKernelServiceFactory.h>
#include <zoPlatform.h>
#include <zoPreferencesService.h>

#include <QCoreApplication>
#include <QFileDialog>
#include <QPointer>

namespace
{
const char DefaultFileKey[] = "HPC Cluster default file";

QString clusterDir()
{
    return QString::fromStdString(zoPlatform::getDataDir()) + zoText("/cluster");
}

// The stored name follows the data directory when that moves.
QString withDataVariable(QString fileName)
{
    return fileName.replace(clusterDir(), zoText("$ZOKE_DATA/cluster"), Qt::CaseSensitive);
}

zoPreferencesService* preferences()
{
    return zoKernelServiceFactory::getService<zoPreferencesService>();
}

// Owns the page until a dialog of the host adopts it: then the dialog destroys it, and the pointer knows.
class PageOwner final
{
public:
    PageOwner() : m_page(new zoHPCPreferencesGUII) {}
    ~PageOwner()
    {
        // A host that ends without unloading has no application any more, and a window cannot be destroyed
        // then.
        if (QCoreApplication::instance() != nullptr)
            delete m_page.data();
    }
    Q_DISABLE_COPY(PageOwner)

private:
    QPointer<zoHPCPreferencesGUII> m_page;
};
} // namespace

zoHPCPreferencesGUII::zoHPCPreferencesGUII(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui_zoHPCPreferencesGUII>())
{
    m_ui->setupUi(this);

    const int iconSize = zoPlatform::getMediumIconSize();
    m_ui->m_browseButton->setIcon(zoIconManager::getIcon(zoText("FileOpen"), QString()));
    m_ui->m_browseButton->setIconSize(QSize(iconSize, iconSize));
    connect(m_ui->m_browseButton, &QAbstractButton::clicked, this, &zoHPCPreferencesGUII::clickedBrowse);

    zoPreferencesService* service = preferences();
    if (service == nullptr)
        return;
    const QPointer<zoHPCPreferencesGUII> page(this);
    const auto whileAlive = [page](void (zoHPCPreferencesGUII::*operation)()) {
        return [page, operation] {
            if (page)
                (page->*operation)();
        };
    };
    service->registerPage(tr("Cluster"), this, whileAlive(&zoHPCPreferencesGUII::storeDefaults),
                          whileAlive(&zoHPCPreferencesGUII::storeShown),
                          whileAlive(&zoHPCPreferencesGUII::showStored));
}

zoHPCPreferencesGUII::~zoHPCPreferencesGUII() = default;

void zoHPCPreferencesGUII::clickedBrowse()
{
    const QString chosen = QFileDialog::getOpenFileName(this, tr("Load HPC Cluster Configuration"),
                                                        clusterDir(), zoText("*.zhpc"));
    if (!chosen.isEmpty())
        m_ui->m_defaultConfigFile->setText(withDataVariable(chosen));
}

void zoHPCPreferencesGUII::showStored()
{
    if (zoPreferencesService* service = preferences())
        m_ui->m_defaultConfigFile->setText(
            service->getString(QLatin1String(DefaultFileKey), QLatin1String("")));
}

void zoHPCPreferencesGUII::storeShown()
{
    if (zoPreferencesService* service = preferences())
        service->setString(QLatin1String(DefaultFileKey),
                           withDataVariable(m_ui->m_defaultConfigFile->text()));
}

void zoHPCPreferencesGUII::storeDefaults()
{
    // The host keeps the text, so it is no literal of this library.
    if (zoPreferencesService* service = preferences())
        service->setString(QLatin1String(DefaultFileKey), QLatin1String(""));
}

void initPreferencesPlugin()
{
    static const PageOwner owner;
}
