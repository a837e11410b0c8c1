#include "zoHostMainWindow.h"

#include "zoHostAboutDialog.h"
#include "zoHostCameraPanel.h"
#include "zoHostCloseQuestion.h"
#include "zoHostClusterService.h"
#include "zoHostDocument.h"
#include "zoHostEarlierConfigurations.h"
#include "zoHostEarlierDialog.h"
#include "zoHostFileGuard.h"
#include "zoHostFileNews.h"
#include "zoHostHelp.h"
#include "zoHostLogPanel.h"
#include "zoHostNodesPanel.h"
#include "zoHostPageStatus.h"
#include "zoHostPreferencesDialog.h"
#include "zoHostRecentFiles.h"
#include "zoHostRecentMenu.h"
#include "zoHostStart.h"
#include "zoHostUndoActions.h"
#include "zoSessionText.h"

#include <QZOToolBar.h>
#include <zoClusterService.h>
#include <zoControllerService.h>
#include <zoLog.h>
#include <zoPlatform.h>

#include <QActionEvent>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTreeWidget>

#include <algorithm>

// Outside of any namespace: the resources lie in a static library, which links them only when asked.
static void initResources()
{
    Q_INIT_RESOURCE(zohost);
}

namespace
{
constexpr char s_geometryKey[] = "MainWindow/Geometry";
constexpr char s_stateKey[] = "MainWindow/State";
constexpr int s_stateVersion = 1; // to be raised when docks or tool bars change their meaning
constexpr int s_messageMs = 10000;

QString hostName()
{
    return QStringLiteral("zohost");
}

// The one configuration file that is dragged; empty when it is anything else.
QString draggedConfiguration(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    if (urls.size() != 1 || !urls.constFirst().isLocalFile())
        return {};
    const QFileInfo file(urls.constFirst().toLocalFile());
    if (file.suffix().compare(QLatin1String("zhpc"), Qt::CaseInsensitive) != 0 || !file.isFile())
        return {};
    return file.absoluteFilePath();
}

struct ToolTip
{
    const char* key;
    const char* text;
};

// The texts behind the tool-tip keys that modules use.
constexpr ToolTip s_toolTips[] = {
    {"Tipreel_Cluster",
     QT_TRANSLATE_NOOP("zoHostMainWindow",
                       "Cluster: set up render nodes and displays, start and stop a session")},
};

// The categories that modules give, in English, and that a person reads.
constexpr const char* s_categories[] = {QT_TRANSLATE_NOOP("zoHostMainWindow", "Rendering")};

QString categoryTitle(const QString& category)
{
    for (const char* known : s_categories) {
        if (category == QLatin1String(known))
            return zoHostMainWindow::tr(known);
    }
    return category;
}

// Shares no data with `text`, which may lie in a module that is unloaded earlier.
QString deepCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}

// What is done often and stands in no menu of its module, which has no key for it: null for other modules.
QAction* displaySetupOf(const QWidget* module)
{
    return module == nullptr ? nullptr : module->findChild<QAction*>(QStringLiteral("DisplaySetup"));
}

constexpr int s_displaySetupKey = Qt::Key_F6;

void resolveToolTip(QAction* action)
{
    const QString text = zoHostMainWindow::resolvedToolTip(action->toolTip());
    if (text != action->toolTip())
        action->setToolTip(text);
}
} // namespace

zoHostMainWindow::zoHostMainWindow(const Services& services, QWidget* parent)
    : QMainWindow(parent)
    , m_services(services)
    , m_document(new zoHostDocument(this, this))
    , m_pages(new QStackedWidget(this))
    , m_emptyPage(new QLabel(tr("No module is loaded.\nThe log says why."), this))
    , m_moduleToolBar(new QZOToolBar(tr("Tool bar"), this))
    , m_help(new zoHostHelp(this, this))
{
    initResources();
    setObjectName(QStringLiteral("HostMainWindow"));
    setWindowTitle(hostName());
    setAcceptDrops(true);
    setWindowIcon(QIcon(QStringLiteral(":/host/zohost.svg")));
    setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowTabbedDocks);

    m_emptyPage->setAlignment(Qt::AlignCenter);
    m_pages->addWidget(m_emptyPage);
    setCentralWidget(m_pages);
    connect(new QShortcut(s_displaySetupKey, this), &QShortcut::activated, this, [this] {
        if (QAction* setup = displaySetupOf(m_pages->currentWidget()))
            setup->trigger();
    });

    m_moduleToolBar->setObjectName(QStringLiteral("ModuleToolBar"));
    m_moduleToolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_moduleToolBar->setIconSize(QSize(zoPlatform::getMediumIconSize(), zoPlatform::getMediumIconSize()));
    m_moduleToolBar->installEventFilter(this);
    addToolBar(Qt::TopToolBarArea, m_moduleToolBar);

    createDocks(services);
    createMenus();
    statusBar()->setSizeGripEnabled(true);
    m_sessionLabel = new QLabel(this);
    m_sessionLabel->setObjectName(QStringLiteral("SessionLabel"));
    statusBar()->addPermanentWidget(m_sessionLabel);
    m_pageStatus = new zoHostPageStatus(statusBar(), this);
    m_start = new zoHostStart(this, this, m_document,
                              {m_help, services.recent, services.preferences, services.cluster}, this);
    // Not left to the first show, which would cut it to the size of a small screen.
    resize(sizeHint());
    restoreLayout();

    m_guard =
        new zoHostFileGuard(this, this, m_document, services.controller, services.cluster, services.earlier);
    new zoHostFileNews(this, m_document, services.controller);
    connect(m_document, &zoHostDocument::changed, this, &zoHostMainWindow::updateTitle);
    connect(m_pages, &QStackedWidget::currentChanged, this, &zoHostMainWindow::updateTitle);
    connect(m_pages, &QStackedWidget::currentChanged, m_undoActions, [this] {
        m_undoActions->setPage(documentPage());
        m_pageStatus->setPage(documentPage());
    });
    connect(services.cluster, &zoClusterService::started, this, &zoHostMainWindow::updateRunning);
    connect(services.cluster, &zoClusterService::stopped, this, &zoHostMainWindow::updateRunning);
    connect(services.cluster, &zoClusterService::runningNodesChanged, this, &zoHostMainWindow::updateRunning);
    connect(services.cluster, &zoClusterService::started, this,
            [this] { zoLog::info(tr("Session: %1").arg(zoSessionText::of(m_services.cluster))); });
    updateRunning();
}

zoHostMainWindow::~zoHostMainWindow()
{
    // A host that is told to end does not close its window before.
    if (isVisible())
        saveLayout();
    // Entries must not be looked up while the children go one by one.
    for (const Module& module : qAsConst(m_modules)) {
        if (module.window) {
            disconnect(module.window, nullptr, this, nullptr);
            module.window->removeEventFilter(this);
            m_document->forget(module.window);
        }
    }
    disconnect(m_pages, nullptr, this, nullptr);
    m_pageStatus->setPage(nullptr);
    m_moduleToolBar->removeEventFilter(this);
    // The dialog first: it gives back pages that it does not own.
    delete m_preferencesDialog;
}

QSize zoHostMainWindow::sizeHint() const
{
    return {1180, 700};
}

void zoHostMainWindow::createMenus()
{
    // Letters that the menus of modules leave free: these have File, Edit and Diagnostics.
    QMenu* file = menuBar()->addMenu(tr("Fi&le"));
    m_recentMenu = new zoHostRecentMenu(m_services.recent, file);
    connect(m_recentMenu, &zoHostRecentMenu::fileChosen, this, &zoHostMainWindow::openConfiguration);
    file->addMenu(m_recentMenu);
    QAction* earlier =
        file->addAction(tr("&Earlier configurations..."), this, &zoHostMainWindow::showEarlierConfigurations);
    earlier->setObjectName(QStringLiteral("EarlierConfigurations"));
    file->addSeparator();
    QAction* quit = file->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);

    QMenu* edit = menuBar()->addMenu(tr("Edi&t"));
    m_undoActions = new zoHostUndoActions(edit, m_document);
    edit->addSeparator();
    QAction* preferences = edit->addAction(tr("&Preferences..."), this, &zoHostMainWindow::showPreferences);
    preferences->setShortcut(QKeySequence::Preferences);
    preferences->setMenuRole(QAction::PreferencesRole);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    const QList<QDockWidget*> docks = findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QDockWidget* dock : docks)
        view->addAction(dock->toggleViewAction());
    view->addAction(m_moduleToolBar->toggleViewAction());

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    QAction* manual = help->addAction(tr("&Manual"), m_help, &zoHostHelp::show);
    manual->setObjectName(QStringLiteral("Manual"));
    manual->setShortcut(QKeySequence::HelpContents);
    help->addAction(tr("&Start page"), this, &zoHostMainWindow::showStartPage)
        ->setObjectName(QStringLiteral("ShowStartPage"));
    help->addSeparator();
    QAction* about = help->addAction(tr("&About zohost"), this, &zoHostMainWindow::showAbout);
    about->setMenuRole(QAction::AboutRole);
}

void zoHostMainWindow::createDocks(const Services& services)
{
    m_moduleList = new QTreeWidget;
    m_moduleList->setObjectName(QStringLiteral("ModuleList"));
    m_moduleList->setAccessibleName(tr("Modules"));
    m_moduleList->setHeaderHidden(true);
    m_moduleList->setRootIsDecorated(false);
    m_moduleList->setIndentation(12);
    m_moduleList->setFrameShape(QFrame::NoFrame);
    m_moduleList->setIconSize(QSize(zoPlatform::getMediumIconSize(), zoPlatform::getMediumIconSize()));
    connect(m_moduleList, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* current) {
        for (const Module& module : qAsConst(m_modules)) {
            if (module.item == current && module.window)
                m_pages->setCurrentWidget(module.window);
        }
    });

    m_logPanel = new zoHostLogPanel;
    m_logPanel->setObjectName(QStringLiteral("LogPanel"));

    struct Dock
    {
        const char* name;
        QString title;
        QWidget* widget;
        Qt::DockWidgetArea area;
    };
    const Dock docks[] = {
        {"ModuleDock", tr("Modules"), m_moduleList, Qt::LeftDockWidgetArea},
        {"CameraDock", tr("Cameras"), new zoHostCameraPanel(services.cameras, services.nodes),
         Qt::LeftDockWidgetArea},
        {"LogDock", tr("Log"), m_logPanel, Qt::BottomDockWidgetArea},
    };
    QList<QDockWidget*> made;
    for (const Dock& entry : docks) {
        auto* dock = new QDockWidget(entry.title, this);
        dock->setObjectName(QLatin1String(entry.name));
        dock->setWidget(entry.widget);
        addDockWidget(entry.area, dock);
        made << dock;
    }
    createNodesDock(made.at(2));
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    resizeDocks({made.at(0), made.at(1)}, {500, 220}, Qt::Vertical);
    resizeDocks({made.at(0)}, {190}, Qt::Horizontal);
    resizeDocks({made.at(2)}, {150}, Qt::Vertical);
}

// Beside the log, for services that look at single nodes.
void zoHostMainWindow::createNodesDock(QDockWidget* log)
{
    auto* cluster = qobject_cast<zoHostClusterService*>(m_services.cluster);
    if (cluster == nullptr || (cluster->capabilities() & zoClusterService::ReportsLostNodes) == 0)
        return;
    auto* dock = new QDockWidget(tr("Nodes"), this);
    dock->setObjectName(QStringLiteral("NodesDock"));
    auto* panel = new zoHostNodesPanel(cluster);
    dock->setWidget(panel);
    connect(panel, &zoHostNodesPanel::restartRequested, this, &zoHostMainWindow::restartSession);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    tabifyDockWidget(log, dock);
    log->raise();
}

// The module takes the configuration from its window.
void zoHostMainWindow::restartSession()
{
    m_services.cluster->stop();
    QObject* module = moduleObject("startCluster()");
    if (module != nullptr)
        QMetaObject::invokeMethod(module, "startCluster", Qt::QueuedConnection);
}

void zoHostMainWindow::addModule(const QString& name, const QString& category, QWidget* window,
                                 const QString& toolTipKey, const QIcon& icon, const QString& title)
{
    if (window == nullptr)
        return;
    for (const Module& module : qAsConst(m_modules)) {
        if (module.name == name || module.address == window) {
            QWidget* before = module.address;
            if (module.window)
                disconnect(module.window, &QObject::destroyed, this, nullptr);
            removeModule(before);
            break;
        }
    }

    auto* item = new QTreeWidgetItem(categoryItem(categoryTitle(deepCopy(category))), {deepCopy(title)});
    item->setIcon(0, icon);
    item->setToolTip(0, resolvedToolTip(deepCopy(toolTipKey)));
    // The stack is below this window, so the module's window keeps its owner when it becomes a page.
    m_pages->addWidget(window);
    window->installEventFilter(this);
    m_modules.append({deepCopy(name), window, window, item});
    m_document->watch(window);
    if (QAction* setup = displaySetupOf(window))
        setup->setToolTip(QStringLiteral("%1 (%2)").arg(
            setup->toolTip(), QKeySequence(s_displaySetupKey).toString(QKeySequence::NativeText)));
    connect(window, &QObject::destroyed, this,
            [this](QObject* gone) { removeModule(static_cast<QWidget*>(gone)); });
    if (m_modules.size() == 1)
        showModule(window);
}

QList<QWidget*> zoHostMainWindow::moduleWindows() const
{
    QList<QWidget*> windows;
    for (const Module& module : m_modules) {
        if (module.window)
            windows << module.window;
    }
    return windows;
}

QObject* zoHostMainWindow::moduleObject(const char* slotSignature) const
{
    const QByteArray signature = QMetaObject::normalizedSignature(slotSignature);
    const QList<QAction*> actions = m_moduleToolBar->actions();
    for (const QAction* action : actions) {
        QObject* owner = action->parent();
        if (owner != nullptr && owner->metaObject()->indexOfSlot(signature) >= 0)
            return owner;
    }
    return nullptr;
}

QString zoHostMainWindow::resolvedToolTip(const QString& key)
{
    for (const ToolTip& entry : s_toolTips) {
        if (key == QLatin1String(entry.key))
            return tr(entry.text);
    }
    return key;
}

void zoHostMainWindow::showPreferences()
{
    if (!m_preferencesDialog) {
        m_preferencesDialog = new zoHostPreferencesDialog(m_services.preferences, this);
        m_preferencesDialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_preferencesDialog->open();
}

void zoHostMainWindow::showAbout()
{
    auto* dialog = new zoHostAboutDialog(m_moduleFiles, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

bool zoHostMainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_moduleToolBar) {
        if (event->type() == QEvent::ActionAdded || event->type() == QEvent::ActionChanged)
            resolveToolTip(static_cast<QActionEvent*>(event)->action());
    } else if (event->type() == QEvent::ShowToParent) {
        // A module that shows its window wants it to be seen, not to lie over another page.
        auto* window = qobject_cast<QWidget*>(watched);
        if (window != nullptr && m_pages->currentWidget() != window && m_pages->indexOf(window) >= 0)
            showModule(window);
    }
    return QMainWindow::eventFilter(watched, event);
}

void zoHostMainWindow::closeEvent(QCloseEvent* event)
{
    if (!mayClose()) {
        event->ignore();
        return;
    }
    saveLayout();
    emit closing();
    QMainWindow::closeEvent(event);
}

void zoHostMainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!takes(event)) {
        event->ignore();
        return;
    }
    // Never a move: who gives the file away by one would delete it.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void zoHostMainWindow::dropEvent(QDropEvent* event)
{
    // A session may have started since the drag came in.
    if (!takes(event)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // Later: the other program waits for the end of its drag.
    const QString file = draggedConfiguration(event->mimeData());
    QMetaObject::invokeMethod(
        this, [this, file] { openConfiguration(file); }, Qt::QueuedConnection);
}

bool zoHostMainWindow::takes(const QDropEvent* event) const
{
    return (event->possibleActions() & Qt::CopyAction) != 0 && mayReplace() &&
           !draggedConfiguration(event->mimeData()).isEmpty();
}

bool zoHostMainWindow::mayReplace() const
{
    return !m_services.cluster->isRunning() && QApplication::activeModalWidget() == nullptr;
}

void zoHostMainWindow::openConfiguration(const QString& fileName)
{
    if (!mayReplace())
        return;
    const QString shown = QDir::toNativeSeparators(fileName);
    if (!QFileInfo::exists(fileName)) {
        zoLog::error(tr("Configuration %1 is not there any more").arg(shown));
        if (!m_services.controller->isNonInteractive() && offerRemoval(fileName))
            m_services.recent->remove(fileName);
        return;
    }
    const bool unsaved = m_document->differs();
    if (!m_document->load(fileName)) {
        zoLog::error(tr("Unable to load configuration %1: no loaded module opens configurations").arg(shown));
        return;
    }
    if (unsaved)
        statusBar()->showMessage(tr("What was not saved is kept under File > Earlier configurations."),
                                 s_messageMs);
}

bool zoHostMainWindow::offerRemoval(const QString& fileName)
{
    QMessageBox box(QMessageBox::Warning, hostName(),
                    tr("%1 is not there any more.").arg(QFileInfo(fileName).fileName()),
                    QMessageBox::NoButton, this);
    box.setInformativeText(QDir::toNativeSeparators(fileName));
    const QPushButton* removing = box.addButton(tr("&Remove from the list"), QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(tr("&Keep"), QMessageBox::RejectRole));
    box.exec();
    return box.clickedButton() == removing;
}

QDialog* zoHostMainWindow::showEarlierConfigurations()
{
    if (!m_earlierDialog) {
        m_earlierDialog = new zoHostEarlierDialog(m_services.earlier, m_services.settings, this);
        m_earlierDialog->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_earlierDialog, &zoHostEarlierDialog::bringBackRequested, this,
                &zoHostMainWindow::bringBack);
        connect(m_earlierDialog, &zoHostEarlierDialog::workRequested, this, &zoHostMainWindow::bringBackWork);
        updateRunning();
    }
    m_earlierDialog->open();
    return m_earlierDialog;
}

void zoHostMainWindow::showStartPage()
{
    m_start->show();
}

void zoHostMainWindow::bringBack(const QString& text, const QString& originFile)
{
    // A text that could not be read must not empty the document; the log says why nothing happens.
    if (m_services.cluster->isRunning() || text.isEmpty())
        return;
    if (m_document->bringBack(text, originFile))
        showDocument();
    else
        zoLog::error(tr("Unable to bring the configuration back: no loaded module opens configurations"));
}

bool zoHostMainWindow::bringBackWork(const zoHostEarlierConfigurations::Entry& entry, const QString& text)
{
    const QString& origin = entry.originFile;
    if (m_services.cluster->isRunning()) {
        statusBar()->showMessage(
            tr("A session is running: the changes that were not saved are offered again at the next start."),
            s_messageMs);
        return false;
    }
    if (!m_document->bringBackWork(text, origin)) {
        zoLog::error(tr("Unable to bring the configuration back: no loaded module opens configurations"));
        return false;
    }
    const QWidget* moduleWindow = m_document->configurationWindow();
    const bool isOpen = moduleWindow != nullptr && moduleWindow->windowFilePath() == origin;
    // Without a sum the clock tells: what is older than the work is what it was made of.
    if (isOpen && (!entry.originSum.isEmpty() || QFileInfo(origin).lastModified() > entry.replaced))
        m_guard->expect(origin, entry.originSum);
    else if (!isOpen && !origin.isEmpty())
        statusBar()->showMessage(
            tr("%1 cannot be read any more: Save asks for a name.").arg(QDir::toNativeSeparators(origin)),
            s_messageMs);
    showDocument();
    emit workBroughtBack();
    return true;
}

// The module's window whose document title, status bar and Undo are about: the one that is seen, or behind one that
// has none of its own, such as an assistant's, the one that has. Null on a page of the host.
QWidget* zoHostMainWindow::documentPage() const
{
    QWidget* page = m_pages->currentWidget();
    const QList<QWidget*> windows = moduleWindows();
    if (!windows.contains(page))
        return nullptr;
    QWidget* configuration = m_document->configurationWindow();
    const bool hasOwn = !page->windowFilePath().isEmpty() || page->isWindowModified() ||
                        page->metaObject()->indexOfSlot("undo()") >= 0 ||
                        qobject_cast<QMainWindow*>(page) != nullptr;
    return hasOwn || configuration == nullptr ? page : configuration;
}

void zoHostMainWindow::updateTitle()
{
    const QWidget* page = documentPage();
    const bool modified = page != nullptr && m_document->isMarked(page);
    QString file = page != nullptr ? QFileInfo(page->windowFilePath()).fileName() : QString();
    // A place holder in a name would be taken for the one of the mark.
    file.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    if (file.isEmpty() && modified)
        file = tr("Untitled");
    // Without a mark first: Qt wants the title to have a place for it while it shows.
    if (!modified)
        setWindowModified(false);
    const QString session = zoSessionText::of(m_services.cluster);
    const QString host = session.isEmpty() ? hostName() : hostName() + QStringLiteral(" (%1)").arg(session);
    setWindowTitle(file.isEmpty() ? host : file + QStringLiteral("[*] - ") + host);
    setWindowModified(modified);
}

void zoHostMainWindow::updateRunning()
{
    const bool running = m_services.cluster->isRunning();
    m_recentMenu->setOpenEnabled(!running);
    if (m_earlierDialog)
        m_earlierDialog->setRunning(running);
    const QString session = zoSessionText::of(m_services.cluster);
    m_sessionLabel->setText(session.isEmpty() ? session : tr("Session: %1").arg(session));
    updateTitle();
}

bool zoHostMainWindow::mayClose()
{
    if (m_services.controller->isNonInteractive())
        return true;
    const QVector<Module> modules = m_modules;
    for (const Module& module : modules) {
        if (!module.window || !m_document->differs(module.window))
            continue;
        showModule(module.window);
        if (!zoHostCloseQuestion::mayClose(*m_document, module.window, hostName(), this))
            return false;
    }
    return true;
}

void zoHostMainWindow::restoreLayout()
{
    // A script gets the same picture every time.
    if (m_services.controller->isNonInteractive())
        return;
    // A place that no screen shows any more is moved to one that does.
    restoreGeometry(m_services.settings->value(QLatin1String(s_geometryKey)).toByteArray());
    restoreState(m_services.settings->value(QLatin1String(s_stateKey)).toByteArray(), s_stateVersion);
}

void zoHostMainWindow::saveLayout() const
{
    if (m_services.controller->isNonInteractive())
        return;
    m_services.settings->setValue(QLatin1String(s_geometryKey), saveGeometry());
    m_services.settings->setValue(QLatin1String(s_stateKey), saveState(s_stateVersion));
}

QTreeWidgetItem* zoHostMainWindow::categoryItem(const QString& category)
{
    for (int row = 0; row < m_moduleList->topLevelItemCount(); ++row) {
        if (m_moduleList->topLevelItem(row)->text(0) == category)
            return m_moduleList->topLevelItem(row);
    }
    auto* item = new QTreeWidgetItem(m_moduleList, {category});
    item->setFlags(Qt::ItemIsEnabled);
    QFont font = m_moduleList->font();
    font.setBold(true);
    item->setFont(0, font);
    item->setExpanded(true);
    return item;
}

void zoHostMainWindow::removeModule(const QWidget* window)
{
    const auto it = std::find_if(m_modules.begin(), m_modules.end(),
                                 [window](const Module& module) { return module.address == window; });
    if (it == m_modules.end())
        return;
    const Module module = *it;
    m_modules.erase(it);
    m_document->forget(module.address);
    if (module.window) {
        module.window->removeEventFilter(this);
        m_pages->removeWidget(module.window);
        module.window->hide();
    }
    QTreeWidgetItem* category = module.item->parent();
    delete module.item;
    if (category->childCount() == 0)
        delete category;
}

void zoHostMainWindow::showDocument()
{
    QWidget* window = m_document->configurationWindow();
    if (window == nullptr && !moduleWindows().isEmpty())
        window = moduleWindows().constFirst();
    if (window != nullptr)
        showModule(window);
    else
        m_pages->setCurrentWidget(m_emptyPage);
}

void zoHostMainWindow::showPage(QWidget* page)
{
    if (m_pages->indexOf(page) < 0)
        m_pages->addWidget(page);
    m_pages->setCurrentWidget(page);
    // Choosing the module is then the way back.
    m_moduleList->setCurrentItem(nullptr);
}

void zoHostMainWindow::showModule(QWidget* window)
{
    m_pages->setCurrentWidget(window);
    for (const Module& module : qAsConst(m_modules)) {
        if (module.address == window)
            m_moduleList->setCurrentItem(module.item);
    }
}
