#include "zoHostStart.h"

#include "zoHostChoices.h"
#include "zoHostDocument.h"
#include "zoHostHelp.h"
#include "zoHostModules.h"
#include "zoHostPages.h"
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

zoHostStart::zoHostStart(zoHostPages* pages, const zoHostModules* modules, zoHostDocument* document,
                         const Parts& parts, QWidget* window)
    : QObject(window)
    , m_pages(pages)
    , m_modules(modules)
    , m_document(document)
    , m_window(window)
    , m_parts(parts)
{
    connect(m_parts.cluster, &zoClusterService::started, this, &zoHostStart::updateRunning);
    connect(m_parts.cluster, &zoClusterService::stopped, this, &zoHostStart::updateRunning);
    // However a configuration comes, the page has done its work.
    connect(document, &zoHostDocument::fileRead, this, &zoHostStart::leave);
    connect(document, &zoHostDocument::textChanged, this, &zoHostStart::leave);
}

zoHostStart::~zoHostStart() = default;

void zoHostStart::show()
{
    if (!m_page)
        createPage();
    m_page->setOffersNewWall(m_modules->moduleObject(s_newWall) != nullptr);
    m_page->setShownAtStart(zoHostChoices::showsStartPage(m_parts.preferences));
    updateRunning();
    m_pages->showPage(m_page);
    m_page->focusFirst();
}

void zoHostStart::createPage()
{
    m_page = new zoHostStartPage(m_parts.recent, m_window);
    connect(m_page, &zoHostStartPage::newWallRequested, this, &zoHostStart::newWall);
    connect(m_page, &zoHostStartPage::emptyRequested, this, &zoHostStart::beginEmpty);
    connect(m_page, &zoHostStartPage::openRequested, this, &zoHostStart::open);
    // Later: what is chosen changes the list that it is chosen from.
    connect(m_page, &zoHostStartPage::sampleChosen, this, &zoHostStart::openSample, Qt::QueuedConnection);
    connect(
        m_page, &zoHostStartPage::recentChosen, this,
        [this](const QString& fileName) { m_pages->openConfiguration(fileName); }, Qt::QueuedConnection);
    connect(m_page, &zoHostStartPage::manualRequested, m_parts.help,
            [this] { m_parts.help->showPage(QStringLiteral("concepts")); });
    connect(m_page, &zoHostStartPage::shownAtStartChanged, this,
            [this](bool on) { zoHostChoices::setShowsStartPage(m_parts.preferences, on); });
}

void zoHostStart::newWall()
{
    QObject* module = m_modules->moduleObject(s_newWall);
    if (module == nullptr || !m_pages->mayReplace())
        return;
    // A person who gives up is back on this page; a new wall leaves it as every change does.
    QMetaObject::invokeMethod(module, "newWall", Qt::QueuedConnection);
}

void zoHostStart::beginEmpty()
{
    if (!m_pages->mayReplace())
        return;
    m_pages->showDocument();
    m_document->begin();
}

void zoHostStart::open()
{
    QWidget* moduleWindow = m_document->configurationWindow();
    if (moduleWindow == nullptr || !m_pages->mayReplace())
        return;
    // Before the dialog: a person who gives up is back on this page.
    if (!zoHostDocument::open(moduleWindow))
        zoLog::error(tr("Unable to open a configuration: no loaded module opens them"));
}

void zoHostStart::openSample(const QString& fileName)
{
    if (!m_pages->mayReplace())
        return;
    QByteArray bytes;
    QString reason;
    if (zoFileReader::read(fileName, bytes, &reason) != zoFileReader::Result::Read) {
        zoLog::error(tr("Unable to open sample %1: %2").arg(QDir::toNativeSeparators(fileName), reason));
        return;
    }
    m_pages->showDocument();
    // Without its name: Save would write over the sample.
    m_document->begin(zoFileText(bytes).text());
}

void zoHostStart::leave()
{
    if (m_page && m_page->isVisible())
        m_pages->showDocument();
}

void zoHostStart::updateRunning()
{
    if (!m_page)
        return;
    m_page->setOpenEnabled(!m_parts.cluster->isRunning());
    if (m_parts.cluster->isRunning())
        leave();
}
