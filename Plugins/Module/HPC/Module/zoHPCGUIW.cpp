#include "zoHPCGUIW.h"

#include "ui_zoHPCGUIW.h"
#include "zoHPCConfigConverter.h"
#include "zoHPCConfigEditGUIW.h"
#include "zoHPCConfiguration.h"
#include "zoHPCDisplayGUII.h"
#include "zoHPCDisplaySetup.h"
#include "zoHPCDocumentText.h"
#include "zoHPCHostTree.h"
#include "zoHPCKeys.h"
#include "zoHPCLayout.h"
#include "zoHPCManualPages.h"
#include "zoHPCRenderNodes.h"
#include "zoHPCReview.h"
#include "zoHPCStatusPane.h"
#include "zoHPCTextLog.h"
#include "zoHPCTreeEditGUIW.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCUndo.h"
#include "zoHPCWindowMemory.h"
#include "zoHPCWindowNotes.h"
#include "zoText.h"

#include <QAction>
#include <QDir>
#include <QDomDocument>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMenu>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>
#include <QWindow>

#include <QZOCollapsibleFrame.h>
#include <QZOToolBar.h>
#include <zoFileText.h>
#include <zoIconManager.h>

#include <utility>
#include <vector>

namespace
{
// Changes come in bursts: key strokes, drags, ten thousand rows. The status bar follows when they are over
// (ms).
constexpr int StatusDelay = 150;

// A message may take the place of what the status bar says otherwise (ms).
constexpr int MessageTime = 20000;

QIcon icon(const char* name)
{
    return zoIconManager::getIcon(QLatin1String(name), QString());
}
} // namespace

zoHPCGUIW::zoHPCGUIW(QWidget* parent, const QString& name)
    : QMainWindow(parent), m_ui(std::make_unique<Ui_zoHPCGUIW>())
{
    m_displayEditor = new zoHPCDisplayGUII(this);
    zoHPCWindowMemory::rememberDialog(m_displayEditor, zoText("display setup"));
    m_ui->setupUi(this);
    setObjectName(name);
    setProperty("manualPages", zoHPCManualPages::byObjectName());
    m_tree = new zoHPCTreeGUIW;
    m_editor = new zoHPCTreeEditGUIW;
    m_renderNodes = std::make_unique<zoHPCRenderNodes>(m_tree->hosts(), &m_displayEditor->setup());

    createActions();
    createMenus();
    createToolBars();
    createSplitter();
    createStatusBar();

    m_editor->setItem(m_tree->selectedItem());
    connect(m_tree, SIGNAL(selectedItemChanged(zoHPCTreeItem*)), m_editor, SLOT(setItem(zoHPCTreeItem*)));
    connect(m_tree, &zoHPCTreeGUIW::selectionChanged, m_editor,
            [this] { m_editor->setSelection(m_tree->selectedItems()); });
    setAdvanced(false);

    createKeys();

    m_editor->setReplacementListener(
        [this](zoHPCTreeItem* item, const QString& option, const QString& value) {
            if (m_isReplacing)
                m_replacedOptions.note(item, option, value);
        });
    connect(m_tree, SIGNAL(hostsChanged()), this, SLOT(updateDisplayState()));
    connect(m_editor, SIGNAL(hostChanged()), this, SLOT(updateDisplayState()));
    // Before names change: the windows of a node go on naming it.
    connect(m_tree, &zoHPCTreeGUIW::aboutToRename, this, [this] { m_renderNodes->remember(); });
    m_editor->setRenameListener([this](zoHPCTreeItem* node) { m_renderNodes->beginRename(node); });
    m_displayEditor->setHostTree(m_tree);
    connect(m_displayEditor, SIGNAL(displayChanged()), this, SLOT(updateDisplayState()));
    connect(m_displayEditor, SIGNAL(displayChanged()), this, SIGNAL(displayPropertiesChanged()));

    createUndo();
    m_files.setUntouched(documentText());
    takeAsSaved(documentText());
    showFile();
    followChanges();
}

zoHPCGUIW::~zoHPCGUIW()
{
    delete m_undo; // while what it listens to is whole
}

void zoHPCGUIW::createActions()
{
    m_newAction = new QAction(icon("FileNew"), tr("New"), this);
    connect(m_newAction, SIGNAL(triggered()), this, SLOT(setDefaultConfig()));
    m_loadAction = new QAction(icon("FileOpen"), tr("Load..."), this);
    connect(m_loadAction, SIGNAL(triggered()), this, SLOT(loadConfig()));
    m_saveAction = new QAction(icon("Save"), tr("Save"), this);
    connect(m_saveAction, SIGNAL(triggered()), this, SLOT(saveConfig()));
    m_saveAsAction = new QAction(tr("Save As..."), this);
    connect(m_saveAsAction, SIGNAL(triggered()), this, SLOT(saveAsConfig()));
    m_importLegacyAction = new QAction(icon("FileOpen"), tr("Import legacy..."), this);
    connect(m_importLegacyAction, SIGNAL(triggered()), this, SLOT(importLegacy()));

    m_startAction = new QAction(icon("StartCluster"), tr("Start"), this);
    connect(m_startAction, SIGNAL(triggered()), this, SLOT(startCluster()));
    m_stopAction = new QAction(icon("StopCluster"), tr("Stop"), this);
    m_stopAction->setEnabled(false);
    connect(m_stopAction, SIGNAL(triggered()), this, SLOT(stopCluster()));

    m_editConfigAction = new QAction(tr("Edit configuration..."), this);
    connect(m_editConfigAction, SIGNAL(triggered()), this, SLOT(editConfig()));
    m_displaySetupAction = new QAction(icon("Projection"), tr("Display Setup..."), this);
    m_displaySetupAction->setObjectName(zoText("DisplaySetup")); // a host gives it a key by it
    connect(m_displaySetupAction, SIGNAL(triggered()), this, SLOT(displaySetup()));

    m_speedTestAction = new QAction(tr("Run network speed test..."), this);
    connect(m_speedTestAction, SIGNAL(triggered()), this, SIGNAL(speedTestTriggered()));
    m_showTilesAction = new QAction(tr("Show tiles"), this);
    m_showTilesAction->setObjectName(zoText("ShowTiles"));
    m_showTilesAction->setCheckable(true);
    connect(m_showTilesAction, SIGNAL(toggled(bool)), this, SIGNAL(showTilesToggled(bool)));
    m_showTestImageAction = new QAction(tr("Show test image"), this);
    m_showTestImageAction->setObjectName(zoText("ShowTestImage"));
    m_showTestImageAction->setCheckable(true);
    connect(m_showTestImageAction, SIGNAL(toggled(bool)), this, SIGNAL(showTestImageToggled(bool)));
    // Diagnostics look into a session; there is none yet.
    for (QAction* diagnostic : {m_speedTestAction, m_showTilesAction, m_showTestImageAction})
        diagnostic->setEnabled(false);
}

void zoHPCGUIW::createKeys()
{
    auto* keys = new zoHPCKeys(this);
    keys->add(m_newAction, int(Qt::CTRL) | Qt::Key_N);
    keys->add(m_loadAction, int(Qt::CTRL) | Qt::Key_O);
    keys->add(m_saveAction, int(Qt::CTRL) | Qt::Key_S);
    keys->add(m_saveAsAction, Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    keys->add(m_startAction, Qt::Key_F5);
    keys->add(m_stopAction, int(Qt::SHIFT) | Qt::Key_F5);
    // As in other trees; here the name has a field of its own.
    keys->add(m_tree->master()->treeWidget(), Qt::Key_F2, [this] { m_editor->editName(); });
    // And back. On a title, Return folds.
    const auto toTree = [this] { m_tree->master()->treeWidget()->setFocus(Qt::ShortcutFocusReason); };
    const QList<QWidget*> fields = m_editor->findChildren<QWidget*>();
    for (QWidget* field : fields) {
        if ((field->focusPolicy() & Qt::TabFocus) == 0)
            continue;
        keys->add(field, Qt::Key_Escape, toTree);
        if (qobject_cast<QZOCollapsibleFrame*>(field) != nullptr)
            continue;
        keys->add(field, Qt::Key_Return, toTree);
        keys->add(field, Qt::Key_Enter, toTree);
    }
}

void zoHPCGUIW::createUndo()
{
    m_undo =
        new zoHPCUndo({m_tree, m_editor, m_displayEditor, [this] { return documentText(); },
                       [this](const QString& from, const QString& to,
                              const std::function<void()>& showPlace) { restoreText(from, to, showPlace); }},
                      this);
    m_announcedText = m_undo->steps().text();
    connect(m_undo, &zoHPCUndo::changed, this, &zoHPCGUIW::showSteps);
    // In no menu: a host has them in its own.
    auto* undo = new QAction(this);
    auto* redo = new QAction(this);
    connect(undo, &QAction::triggered, this, &zoHPCGUIW::undo);
    connect(redo, &QAction::triggered, this, &zoHPCGUIW::redo);
    auto* keys = new zoHPCKeys(this);
    keys->add(undo, int(Qt::CTRL) | Qt::Key_Z);
    keys->add(redo, Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    keys->takeFromFields();
}

void zoHPCGUIW::createMenus()
{
    menuBar()->setNativeMenuBar(false);

    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addActions({m_newAction, m_loadAction, m_importLegacyAction, m_saveAction, m_saveAsAction});

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->addActions({m_tree->configAction(), m_editConfigAction});
    edit->addSeparator();
    edit->addActions({m_tree->addHostAction(), m_tree->removeHostAction()});
    edit->addSeparator();
    edit->addActions({m_tree->addNetworkAction(), m_tree->removeNetworkAction()});

    QMenu* diagnostics = menuBar()->addMenu(tr("&Diagnostics"));
    diagnostics->addActions({m_showTilesAction, m_showTestImageAction});
    diagnostics->addSeparator();
    diagnostics->addAction(m_speedTestAction);

    for (QMenu* menu : {file, edit, diagnostics})
        menu->setTearOffEnabled(true);
}

void zoHPCGUIW::createToolBars()
{
    m_ui->toolBar->addActions({m_tree->configAction(), m_displaySetupAction});

    auto* quickActions = new QZOToolBar(tr("QuickActions"), this);
    quickActions->setObjectName(zoText("QuickActionBar"));
    quickActions->setAllowedAreas(Qt::BottomToolBarArea);
    quickActions->setMovable(false);
    quickActions->setFloatable(false);
    quickActions->setContextMenuPolicy(Qt::ActionsContextMenu);
    quickActions->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addToolBar(Qt::BottomToolBarArea, quickActions);
    quickActions->addActions({m_startAction, m_stopAction});
}

void zoHPCGUIW::createSplitter()
{
    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_tree->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_editor->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Expanding);
    splitter->addWidget(m_tree);
    splitter->addWidget(m_editor);
    new zoHPCWindowMemory(splitter, zoText("main splitter"));

    auto* layout = new QGridLayout(m_ui->m_frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
}

void zoHPCGUIW::createStatusBar()
{
    m_statusPane = new zoHPCStatusPane;
    m_statusPane->setObjectName(zoText("m_statusPane"));
    statusBar()->addPermanentWidget(m_statusPane);
    connect(statusBar(), &QStatusBar::messageChanged, m_statusPane, [this](const QString& message) {
        // With room for the margins and the size grip.
        const int width = statusBar()->fontMetrics().horizontalAdvance(message);
        m_statusPane->giveRoom(message.isEmpty() ? 0 : width + statusBar()->height() * 2);
    });
    connect(m_statusPane, &zoHPCStatusPane::problemsClicked, this, &zoHPCGUIW::displaySetup);
    m_statusTimer.setSingleShot(true);
    m_statusTimer.setInterval(StatusDelay);
    connect(&m_statusTimer, &QTimer::timeout, this, [this] {
        if (std::exchange(m_changedWhileWaiting, false))
            m_statusTimer.start();
        else
            refreshStatus();
    });
}

void zoHPCGUIW::followChanges()
{
    // The timer as context: it goes before the trees do.
    connect(m_tree, &zoHPCTreeGUIW::changed, &m_statusTimer, [this] { refreshStatusLater(); });
    connect(m_editor, &zoHPCTreeEditGUIW::changed, &m_statusTimer, [this] { refreshStatusLater(); });
    connect(m_displayEditor, &zoHPCDisplayGUII::changed, &m_statusTimer, [this] { refreshStatusLater(); });
}

zoHPCTreeGUIW* zoHPCGUIW::getTree() const
{
    return m_tree;
}

zoHPCTreeEditGUIW* zoHPCGUIW::getEditor() const
{
    return m_editor;
}

zoHPCDisplayGUII* zoHPCGUIW::getDisplayEditor() const
{
    return m_displayEditor;
}

zoHPCUndo* zoHPCGUIW::undoSteps() const
{
    return m_undo;
}

QSize zoHPCGUIW::sizeHint() const
{
    return {800, 600};
}

void zoHPCGUIW::setVisible(bool visible)
{
    // Qt complains about a native window that is made for a marked widget without "[*]" in its title.
    const bool marked = isWindow() && !windowHandle() && isWindowModified();
    setAttribute(Qt::WA_WindowModified, isWindowModified() && !marked);
    QMainWindow::setVisible(visible);
    if (marked)
        setAttribute(Qt::WA_WindowModified);
}

void zoHPCGUIW::setStartEnabled(bool enabled)
{
    m_startAction->setEnabled(enabled);
    m_stopAction->setEnabled(!enabled);
}

void zoHPCGUIW::setIsRunning(bool running, const QStringList& nodes)
{
    for (QAction* diagnostic : {m_showTilesAction, m_showTestImageAction, m_speedTestAction})
        diagnostic->setEnabled(running);
    // Saving stays possible: a layout that runs is worth keeping.
    for (QAction* replacing : {m_newAction, m_loadAction, m_importLegacyAction, m_editConfigAction})
        replacing->setEnabled(!running);
    m_undo->setRunning(running);
    m_tree->setIsRunning(running, nodes);
    m_editor->setIsRunning(running);
    m_displayEditor->setIsRunning(running);
}

void zoHPCGUIW::setAdvanced(bool advanced)
{
    m_editConfigAction->setVisible(advanced);
}

void zoHPCGUIW::startCluster()
{
    m_startAction->setEnabled(false);
    emit startTriggered();
}

void zoHPCGUIW::stopCluster()
{
    m_stopAction->setEnabled(false);
    emit stopTriggered();
}

void zoHPCGUIW::displaySetup()
{
    m_undo->commit();
    m_displayEditor->open(m_tree->getNodeNames());
}

void zoHPCGUIW::updateDisplayState()
{
    if (!m_isReplacing)
        m_renderNodes->update();
}

QString zoHPCGUIW::getConfigString()
{
    m_lastConfig = zoHPCConfiguration::text(*m_tree->hosts(), m_displayEditor->setup());
    return m_lastConfig;
}

QString zoHPCGUIW::documentText() const
{
    return zoHPCConfiguration::textAsIs(*m_tree->hosts(), m_displayEditor->setup());
}

void zoHPCGUIW::setConfigString(const QString& text)
{
    readText(text);
}

bool zoHPCGUIW::readText(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::parse(text, document);
    m_lastConfig = text;
    replaceContents([&] {
        m_tree->loadFromXML(document);
        m_displayEditor->loadFromXML(document);
    });
    return zoHPCConfiguration::isConfiguration(document);
}

// Tree and displays refer to each other: the marks of the nodes follow once both are there.
void zoHPCGUIW::replaceContents(const std::function<void()>& replace)
{
    {
        const QScopedValueRollback<bool> replacing(m_isReplacing, true);
        m_replacedOptions.clear();
        replace();
    }
    updateDisplayState();
    refreshStatusLater();
}

QString zoHPCGUIW::replaceConfigString(const QString& text)
{
    m_undo->commit();
    // A service may tell back what it was just given, which makes nothing saved that was not.
    const QString going = announceReplacement(text);
    const bool isSaved = going != text && m_files.current().isEmpty();
    setConfigString(text);
    const QString written = documentText();
    if (isSaved)
        takeAsRead(written);
    // What a service tells back is the same configuration, with the same way to it.
    if (written != going)
        m_undo->reset();
    return written;
}

bool zoHPCGUIW::differs() const
{
    return m_files.differs(documentText());
}

QString zoHPCGUIW::announceReplacement(const QString& coming)
{
    const QString going = documentText();
    if (going != coming && m_files.isWorthKeeping(going)) {
        zoHPCWindowNotes::tell(this, zoHPCWindowNotes::Replaced, going);
    }
    return going;
}

void zoHPCGUIW::takeAsRead(const QString& text)
{
    if (m_replacedOptions.isEmpty()) {
        takeAsSaved(text);
        return;
    }
    takeAsSaved(textBeforeReplacing());
    m_replacedOptions.clear();
    showDiffers(true);
}

QString zoHPCGUIW::textBeforeReplacing()
{
    m_replacedOptions.exchange();
    const QString text = documentText();
    m_replacedOptions.exchange();
    return text;
}

void zoHPCGUIW::takeAsSaved(const QString& text)
{
    m_files.setSaved(text);
    showDiffers(false);
    showContents();
}

void zoHPCGUIW::showFile()
{
    const QString& file = m_files.current();
    m_statusPane->setFile(file);
    // At once: a picture may be taken of what was just loaded.
    m_statusPane->layout()->activate();
    statusBar()->layout()->activate();
    if (windowFilePath() == file)
        return;
    setWindowFilePath(file);
    // Qt sends it for windows without a title only, which take that of the file.
    QEvent change(QEvent::WindowTitleChange);
    QCoreApplication::sendEvent(this, &change);
}

void zoHPCGUIW::showDiffers(bool differs)
{
    m_statusPane->setDiffers(differs);
    if (isWindowModified() == differs)
        return;
    // setWindowModified() without its complaint about windows that have no "[*]" in their title: where this
    // one stands alone, its status bar tells.
    setAttribute(Qt::WA_WindowModified, differs);
    QEvent change(QEvent::ModifiedChange);
    QCoreApplication::sendEvent(this, &change);
}

void zoHPCGUIW::refreshStatusLater()
{
    m_changedWhileWaiting = m_statusTimer.isActive();
    if (!m_changedWhileWaiting)
        m_statusTimer.start();
}

void zoHPCGUIW::refreshStatus()
{
    showFile();
    showDiffers(m_files.differs(m_undo->text()));
    showContents();
}

void zoHPCGUIW::announceRevision()
{
    const QString& text = m_undo->steps().text();
    if (text == m_announcedText)
        return;
    m_announcedText = text;
    setProperty("revision", property("revision").toUInt() + 1);
}

void zoHPCGUIW::showContents()
{
    zoHPCReview& review = m_displayEditor->review();
    m_statusPane->setCounts(int(review.layout()->nodes().size()),
                            m_displayEditor->setup().displayRoot()->childCount());
    m_statusPane->setProblems(review.problems());
    m_statusTimer.stop();
    m_changedWhileWaiting = false;
}

QString zoHPCGUIW::getConfigPath()
{
    return m_files.directory();
}

void zoHPCGUIW::loadConfig()
{
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Load Cluster Configuration"),
                                                          getConfigPath(), tr("Cluster Config (*.zhpc)"));
    if (!fileName.isEmpty())
        loadConfig(fileName);
}

void zoHPCGUIW::loadConfig(const QString& fileName)
{
    QString text;
    if (!zoHPCConfigurationFiles::read(fileName, text))
        return;
    // A host sees by it that somebody else changed the file later.
    zoHPCWindowNotes::tell(this, zoHPCWindowNotes::Read, QFileInfo(fileName).absoluteFilePath());
    announceReplacement(text);
    const bool isConfiguration = readText(text);
    if (isConfiguration)
        zoHPCTextLog::tell(fileName, text, m_displayEditor->setup(), m_tree->hosts()->master());
    m_files.setCurrent(fileName);
    takeAsRead(documentText());
    m_undo->reset();
    showFile();
    if (isConfiguration)
        return statusBar()->clearMessage();
    statusBar()->showMessage(tr("%1 holds no cluster configuration.").arg(QDir::toNativeSeparators(fileName)),
                             MessageTime);
    zoHPCWindowNotes::tellNotUnderstood(this, text);
}

void zoHPCGUIW::saveConfig()
{
    if (m_files.current().isEmpty())
        saveAsConfig();
    else
        saveConfig(QString(m_files.current()));
}

void zoHPCGUIW::saveAsConfig()
{
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save Cluster Configuration"),
                                                          getConfigPath(), tr("Cluster Config (*.zhpc)"));
    if (!fileName.isEmpty())
        saveConfig(fileName);
}

void zoHPCGUIW::saveConfig(const QString& fileName)
{
    zoHPCConfigurationFiles::Failure failure;
    if (!m_files.write(
            fileName, [this] { return getConfigString(); }, &failure))
        return zoHPCWindowNotes::tellNotSaved(this, failure);
    takeAsSaved(documentText());
    showFile();
    zoHPCWindowNotes::tell(this, zoHPCWindowNotes::Saved, QString(m_files.current()));
}

void zoHPCGUIW::setDefaultConfig()
{
    announceReplacement(QString());
    replaceContents([this] {
        m_tree->setDefaultConfig();
        m_displayEditor->setDefaultConfig();
    });
    m_files.closeCurrent();
    const QString text = documentText();
    m_files.setUntouched(text);
    takeAsSaved(text);
    m_undo->reset();
    showFile();
}

void zoHPCGUIW::undo()
{
    if (!m_undo->isDialogOpen())
        m_undo->undo();
}

void zoHPCGUIW::redo()
{
    if (!m_undo->isDialogOpen())
        m_undo->redo();
}

bool zoHPCGUIW::replaceConfiguration(const QString& text, const QString& step)
{
    zoHPCConfiguration coming;
    if (!m_undo->mayReplace() || !coming.readText(text))
        return false;
    // In the form of all steps, whoever wrote it and with which version.
    const QString written = coming.text();
    announceReplacement(written);
    m_undo->replace(written, step);
    return true;
}

void zoHPCGUIW::restoreText(const QString& from, const QString& to, const std::function<void()>& showPlace)
{
    QDomDocument document;
    zoHPCDocumentText::parse(to, document);
    {
        // What it comes to show is announced as if a person had chosen it: a running session would hear of each.
        const QSignalBlocker blocker(m_editor);
        replaceContents([&] {
            if (!zoHPCConfiguration::haveSameHosts(from, to))
                m_tree->restore(document);
            if (!zoHPCConfiguration::haveSameDisplays(from, to))
                m_displayEditor->restore(document);
            showPlace();
            m_editor->setItem(m_tree->selectedItem());
            m_editor->setSelection(m_tree->selectedItems());
        });
    }
    // Inside of the display setup Apply and OK tell the session.
    if (!m_undo->isDialogOpen())
        emit displayPropertiesChanged();
}

void zoHPCGUIW::showSteps()
{
    const bool isShown = !m_undo->isDialogOpen();
    const auto show = [this, isShown](const char* property, const QAction* action) {
        const QString name = isShown && action->isEnabled() ? action->text() : QString();
        if (this->property(property).toString() != name)
            setProperty(property, name);
    };
    show("undoStep", m_undo->undoAction());
    show("redoStep", m_undo->redoAction());
    announceRevision();
}

void zoHPCGUIW::editConfig()
{
    m_configDialog = std::make_unique<zoHPCConfigEditGUIW>();
    m_configDialog->setWindowTitle(m_editConfigAction->text());
    zoHPCWindowMemory::rememberDialog(m_configDialog.get(), zoText("configuration"));
    m_configDialog->setServersFileEditable(false);
    m_configDialog->setText(getConfigString());
    // The configuration as it was shown is applied again, not what was typed: the dialog lets people read the
    // text and re-apply it.
    if (m_configDialog->exec() == QDialog::Accepted)
        setConfigString(m_lastConfig);
}

void zoHPCGUIW::importLegacy()
{
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Load Legacy Configuration"),
                                                          getConfigPath(), tr("Legacy Config (*.xml)"));
    if (fileName.isEmpty())
        return;
    // A file that cannot be opened is an empty text, which converts into an empty cluster.
    QByteArray bytes;
    if (!zoHPCConfigurationFiles::readLegacy(fileName, bytes))
        return;
    const zoFileText legacy(bytes);
    zoHPCConfigConverter converter;
    const QString converted = converter.convert(legacy.text());
    announceReplacement(converted);
    // No file holds it yet in this form: it is not saved.
    setConfigString(converted);
    m_undo->reset();
    if (converter.parameterCount() == 0)
        statusBar()->showMessage(
            tr("%1 holds no parameters of a legacy configuration.").arg(QDir::toNativeSeparators(fileName)),
            MessageTime);
    else
        statusBar()->clearMessage();
    zoHPCWindowNotes::tellImported(this, fileName, converter, legacy);
}
