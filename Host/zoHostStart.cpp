#include "zoHostStart.h"

#include "zoHostDocument.h"
#include "zoHostGeneralPage.h"
#include "zoHostHelp.h"
#include "zoHostMainWindow.h"
#include "zoHostPreferencesService.h"
#include "zoHostStartPage.h"

#include <zoClusterService.h>
#include <zoFileReader.h>
#include <zoFileText.h>
#include <zoLog.h>

#include <QDir>

namespace
{
constexpr char s_newWall[] = "newWall()";
} // namespace

zoHostStart::zoHostStart(zoHostMainWindow* window, zoHostHelp* help, zoHostRecentFiles* recent,
                         zoHostPreferencesService* preferences, zoClusterService* cluster)
    : QObject(window)
    , m_window(window)
    , m_help(help)
    , m_recent(recent)
    , m_preferences(preferences)
    , m_cluster(cluster)
{
    connect(cluster, &zoClusterService::started, this, &zoHostStart::updateRunning);
    connect(cluster, &zoClusterService::stopped, this, &zoHostStart::updateRunning);
    // However a configuration comes, the page has done its work.
    connect(window->document(), &zoHostDocument::fileRead, this, [this] {
        if (m_page && m_page->isVisible())
            m_window->showDocument();
    });
}

zoHostStart::~zoHostStart() = default;

void zoHostStart::show()
{
    if (!m_page)
        createPage();
    m_page->setOffersNewWall(m_window->moduleObject(s_newWall) != nullptr);
    m_page->setShownAtStart(zoHostGeneralPage::storedShowsStartPage(m_preferences));
    updateRunning();
    m_window->showPage(m_page);
}

void zoHostStart::createPage()
{
    m_page = new zoHostStartPage(m_recent, m_window);
    connect(m_page, &zoHostStartPage::newWallRequested, this, &zoHostStart::newWall);
    connect(m_page, &zoHostStartPage::emptyRequested, this, &zoHostStart::beginEmpty);
    connect(m_page, &zoHostStartPage::openRequested, this, &zoHostStart::open);
    // Later: what is chosen changes the list that it is chosen from.
    connect(m_page, &zoHostStartPage::sampleChosen, this, &zoHostStart::openSample, Qt::QueuedConnection);
    connect(m_page, &zoHostStartPage::recentChosen, m_window, &zoHostMainWindow::openConfiguration,
            Qt::QueuedConnection);
    connect(m_page, &zoHostStartPage::manualRequested, m_help,
            [this] { m_help->showPage(QStringLiteral("concepts")); });
    connect(m_page, &zoHostStartPage::shownAtStartChanged, this,
            [this](bool on) { zoHostGeneralPage::storeShowsStartPage(m_preferences, on); });
}

void zoHostStart::newWall()
{
    QObject* module = m_window->moduleObject(s_newWall);
    if (module == nullptr || !m_window->mayReplace())
        return;
    m_window->showDocument();
    QMetaObject::invokeMethod(module, "newWall", Qt::QueuedConnection);
}

void zoHostStart::beginEmpty()
{
    if (!m_window->mayReplace())
        return;
    m_window->showDocument();
    m_window->document()->begin();
}

void zoHostStart::open()
{
    QWidget* moduleWindow = m_window->document()->configurationWindow();
    if (moduleWindow == nullptr || !m_window->mayReplace())
        return;
    // Before the dialog: a person who gives up is back on this page.
    if (!zoHostDocument::open(moduleWindow))
        zoLog::error(tr("Unable to open a configuration: no loaded module opens them"));
}

void zoHostStart::openSample(const QString& fileName)
{
    if (!m_window->mayReplace())
        return;
    QByteArray bytes;
    QString reason;
    if (zoFileReader::read(fileName, bytes, &reason) != zoFileReader::Result::Read) {
        zoLog::error(tr("Unable to open sample %1: %2").arg(QDir::toNativeSeparators(fileName), reason));
        return;
    }
    m_window->showDocument();
    // Without its name: Save would write over the sample.
    m_window->document()->begin(zoFileText(bytes).text());
}

void zoHostStart::updateRunning()
{
    if (!m_page)
        return;
    m_page->setOpenEnabled(!m_cluster->isRunning());
    if (m_cluster->isRunning() && m_page->isVisible())
        m_window->showDocument();
}
