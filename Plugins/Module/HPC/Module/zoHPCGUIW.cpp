#include "zoHPCGUIW.h"

#include "zoHPCConfigConverter.h"
#include "zoHPCConfigEditGUIW.h"
#include "zoHPCDisplayGUII.h"
#include "zoHPCDocumentText.h"
#include "zoHPCDocumentWriter.h"
#include "zoHPCLayout.h"
#include "zoHPCProblems.h"
#include "zoHPCStatusPane.h"
#include "zoHPCTreeEditGUIW.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCWindowItem.h"
#include "zoHPCWindowMemory.h"
#include "zoText.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QShortcut>
#include <QSpinBox>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>
#include <QWindow>

#include <QZOToolBar.h>
#include <zoFileWriter.h>
#include <zoIconManager.h>
#include <zoLog.h>
#include <zoPlatform.h>

#include <utility>
#include <vector>

namespace
{
// Changes come in bursts: key strokes, drags, ten thousand rows. The status bar follows when they are over
// (ms).
constexpr int STATUS_DELAY = 150;

// A message may take the place of what the status bar says otherwise (ms).
constexpr int MESSAGE_TIME = 20000;

// Files end at their first NUL byte.
QString textOf(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData());
}

// Nodes by host name. A flat table: a key stroke in the name of one node groups ten thousand of them anew,
// and that many small allocations would cost more than all else.
class NameGroups final
{
public:
    explicit NameGroups(const std::vector<zoHPCTreeItem*>& nodes)
        : m_nodes(nodes), m_first(nodes.size()), m_sizes(nodes.size(), 0)
    {
        size_t room = 16;
        while (room < 2 * nodes.size())
            room *= 2;
        m_slots.assign(room, 0);
        for (size_t i = 0; i < nodes.size(); ++i) {
            size_t& slot = m_slots[slotOf(nodes[i]->hostName())];
            if (slot == 0)
                slot = i + 1;
            m_first[i] = slot - 1;
            ++m_sizes[m_first[i]];
        }
    }

    // The first node of the group to which a node belongs, and how many there are.
    size_t firstOf(size_t node) const { return m_first[node]; }
    int sizeOf(size_t node) const { return m_sizes[m_first[node]]; }
    // The first node of this name; beyond the last node when there is none.
    size_t find(const QString& name) const
    {
        const size_t slot = m_slots[slotOf(name)];
        return slot == 0 ? m_nodes.size() : slot - 1;
    }

private:
    // Holds the name, or is free.
    size_t slotOf(const QString& name) const
    {
        size_t slot = qHash(name) & (m_slots.size() - 1);
        while (m_slots[slot] != 0 && m_nodes[m_slots[slot] - 1]->hostName() != name)
            slot = (slot + 1) & (m_slots.size() - 1);
        return slot;
    }

    const std::vector<zoHPCTreeItem*>& m_nodes;
    std::vector<size_t> m_slots; // index of the first node of a name, plus 1
    std::vector<size_t> m_first; // by node
    std::vector<int> m_sizes;    // by first node
};

QIcon icon(const char* name)
{
    return zoIconManager::getIcon(QLatin1String(name), QString());
}

QTreeWidget* treeOf(const QWidget* widget, const char* name)
{
    return widget->findChild<QTreeWidget*>(QString::fromLatin1(name));
}

// A document of the tree section that `writeTree` writes and the displays as they are.
template <class WriteTree>
QString documentOf(const zoHPCDisplayGUII& displayEditor, WriteTree writeTree)
{
    zoHPCDocumentWriter writer;
    writer.openElement(zoText("cluster"));
    writer.addAttribute(zoText("version"), zoText("1"));
    writeTree(writer);
    QDomDocument displays;
    displays.appendChild(displays.createElement(zoText("cluster")));
    displayEditor.saveToXML(displays);
    zoHPCDocumentText::appendChildren(displays.documentElement(), writer);
    writer.closeElement();
    return writer.takeText();
}
} // namespace

zoHPCGUIW::zoHPCGUIW(QWidget* parent, const QString& name) : QMainWindow(parent)
{
    m_displayEditor = new zoHPCDisplayGUII(this);
    zoHPCWindowMemory::rememberDialog(m_displayEditor, zoText("display setup"));
    setupUi(this);
    setObjectName(name);
    m_tree = new zoHPCTreeGUIW;
    m_editor = new zoHPCTreeEditGUIW;

    createActions();
    createMenus();
    createToolBars();
    createSplitter();
    createStatusBar();

    m_editor->setItem(m_tree->selectedItem());
    connect(m_tree, SIGNAL(selectedItemChanged(zoHPCTreeItem*)), m_editor, SLOT(setItem(zoHPCTreeItem*)));
    setAdvanced(false);

    // As in other trees; here the name has a field of its own.
    auto* rename = new QShortcut(QKeySequence(Qt::Key_F2), treeOf(m_tree, "m_treeWidget"));
    rename->setContext(Qt::WidgetShortcut);
    connect(rename, &QShortcut::activated, m_editor, &zoHPCTreeEditGUIW::editName);

    connect(m_tree, SIGNAL(hostsChanged()), this, SLOT(updateDisplayState()));
    connect(m_editor, SIGNAL(hostChanged()), this, SLOT(updateDisplayState()));
    m_displayEditor->setHostTree(m_tree);
    connect(m_displayEditor, SIGNAL(displayChanged()), this, SLOT(updateDisplayState()));
    connect(m_displayEditor, SIGNAL(displayChanged()), this, SIGNAL(displayPropertiesChanged()));

    takeAsSaved();
    m_untouchedText = m_savedText;
    showFile();
    followChanges();
}

zoHPCGUIW::~zoHPCGUIW() = default;

void zoHPCGUIW::createActions()
{
    m_newAction = new QAction(icon("FileNew"), tr("New"), this);
    m_newAction->setShortcut(QKeySequence::New);
    connect(m_newAction, SIGNAL(triggered()), this, SLOT(setDefaultConfig()));
    m_loadAction = new QAction(icon("FileOpen"), tr("Load..."), this);
    m_loadAction->setShortcut(QKeySequence::Open);
    connect(m_loadAction, SIGNAL(triggered()), this, SLOT(loadConfig()));
    m_saveAction = new QAction(icon("Save"), tr("Save"), this);
    m_saveAction->setShortcut(QKeySequence::Save);
    connect(m_saveAction, SIGNAL(triggered()), this, SLOT(saveConfig()));
    m_saveAsAction = new QAction(tr("Save As..."), this);
    // Not QKeySequence::SaveAs, which some desktops leave empty.
    m_saveAsAction->setShortcut(QKeySequence(zoText("Ctrl+Shift+S")));
    connect(m_saveAsAction, SIGNAL(triggered()), this, SLOT(saveAsConfig()));
    m_importLegacyAction = new QAction(icon("FileOpen"), tr("Import legacy..."), this);
    connect(m_importLegacyAction, SIGNAL(triggered()), this, SLOT(importLegacy()));

    m_startAction = new QAction(icon("StartCluster"), tr("Start"), this);
    m_startAction->setShortcut(Qt::Key_F5);
    connect(m_startAction, SIGNAL(triggered()), this, SLOT(startCluster()));
    m_stopAction = new QAction(icon("StopCluster"), tr("Stop"), this);
    m_stopAction->setEnabled(false);
    m_stopAction->setShortcut(QKeySequence(zoText("Shift+F5")));
    connect(m_stopAction, SIGNAL(triggered()), this, SLOT(stopCluster()));

    m_editConfigAction = new QAction(tr("Edit configuration..."), this);
    connect(m_editConfigAction, SIGNAL(triggered()), this, SLOT(editConfig()));
    m_displaySetupAction = new QAction(icon("Projection"), tr("Display Setup..."), this);
    connect(m_displaySetupAction, SIGNAL(triggered()), this, SLOT(displaySetup()));

    m_speedTestAction = new QAction(tr("Run network speed test..."), this);
    connect(m_speedTestAction, SIGNAL(triggered()), this, SIGNAL(speedTestTriggered()));
    m_showTilesAction = new QAction(tr("Show tiles"), this);
    m_showTilesAction->setCheckable(true);
    connect(m_showTilesAction, SIGNAL(toggled(bool)), this, SIGNAL(showTilesToggled(bool)));
    m_showTestImageAction = new QAction(tr("Show test image"), this);
    m_showTestImageAction->setCheckable(true);
    connect(m_showTestImageAction, SIGNAL(toggled(bool)), this, SIGNAL(showTestImageToggled(bool)));
    // Diagnostics look into a session; there is none yet.
    for (QAction* diagnostic : {m_speedTestAction, m_showTilesAction, m_showTestImageAction})
        diagnostic->setEnabled(false);
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
    toolBar->addActions({m_tree->configAction(), m_displaySetupAction});

    auto* quickActions = new QZOToolBar(tr("QuickActions"), this);
    quickActions->setObjectName(zoText("QuickActionBar"));
    quickActions->setAllowedAreas(Qt::BottomToolBarArea);
    quickActions->setMovable(false);
    quickActions->setFloatable(false);
    quickActions->setContextMenuPolicy(Qt::ActionsContextMenu);
    quickActions->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addToolBar(Qt::BottomToolBarArea, quickActions);
    quickActions->addActions({m_startAction, m_stopAction});
    // Their keys work also while the bar is hidden.
    addActions({m_startAction, m_stopAction});
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

    auto* layout = new QGridLayout(m_frame);
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
    m_statusTimer.setInterval(STATUS_DELAY);
    connect(&m_statusTimer, &QTimer::timeout, this, [this] {
        if (std::exchange(m_changedWhileWaiting, false))
            m_statusTimer.start();
        else
            refreshStatus();
    });
}

void zoHPCGUIW::followChanges()
{
    const auto follow = [this](const auto* sender, auto signal) {
        connect(sender, signal, &m_statusTimer, [this] { refreshStatusLater(); });
    };
    follow(m_tree, &zoHPCTreeGUIW::hostsChanged);
    for (const QTreeWidget* tree :
         {treeOf(m_tree, "m_treeWidget"), treeOf(m_displayEditor, "m_projectionTree"),
          treeOf(m_displayEditor, "m_displayTree")}) {
        const QAbstractItemModel* model = tree->model();
        follow(model, &QAbstractItemModel::dataChanged);
        follow(model, &QAbstractItemModel::rowsInserted);
        follow(model, &QAbstractItemModel::rowsRemoved);
        follow(model, &QAbstractItemModel::rowsMoved);
        follow(model, &QAbstractItemModel::modelReset);
    }
    // Most options of hosts do not show in their rows; it is the editor that changes them.
    const QList<QComboBox*> combos = m_editor->findChildren<QComboBox*>();
    for (const QComboBox* combo : combos)
        follow(combo, QOverload<int>::of(&QComboBox::currentIndexChanged));
    const QList<QSpinBox*> spinBoxes = m_editor->findChildren<QSpinBox*>();
    for (const QSpinBox* spinBox : spinBoxes)
        follow(spinBox, QOverload<int>::of(&QSpinBox::valueChanged));
    const QList<QCheckBox*> checkBoxes = m_editor->findChildren<QCheckBox*>();
    for (const QCheckBox* checkBox : checkBoxes)
        follow(checkBox, &QCheckBox::toggled);
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
    m_displayEditor->open(m_tree->getNodeNames());
}

void zoHPCGUIW::updateDisplayState()
{
    const std::vector<zoHPCTreeItem*> nodes = m_tree->getNodeItems();

    const NameGroups groups(nodes);
    std::vector<int> seen(nodes.size(), 0);
    for (size_t i = 0; i < nodes.size(); ++i) {
        const QString& name = nodes[i]->hostName();
        if (groups.sizeOf(i) == 1)
            nodes[i]->setUniqueHostName(name);
        else
            nodes[i]->setUniqueHostName(
                zoText("%1 %2").arg(name, QString::number(++seen[groups.firstOf(i)])));
    }

    std::vector<bool> isDisplayNode(nodes.size(), false);
    QSet<QString> numbered; // what can only be the name of one of several nodes, or of none
    const QList<zoHPCWindowItem*> windows = m_displayEditor->getWindowItems();
    for (const zoHPCWindowItem* window : windows) {
        const QString renderNode = window->renderNode();
        const size_t node = groups.find(renderNode);
        if (node < nodes.size() && groups.sizeOf(node) == 1)
            isDisplayNode[node] = true;
        numbered.insert(renderNode);
    }
    for (size_t i = 0; i < nodes.size(); ++i)
        nodes[i]->markDisplayNode(isDisplayNode[i] ||
                                  (groups.sizeOf(i) > 1 && numbered.contains(nodes[i]->uniqueHostName())));
    m_tree->master()->refreshLooks(zoHPCTreeItem::Refresh::Due);
}

QString zoHPCGUIW::getConfigString()
{
    m_lastConfig =
        documentOf(*m_displayEditor, [this](zoHPCDocumentWriter& writer) { m_tree->writeSection(writer); });
    return m_lastConfig;
}

QString zoHPCGUIW::documentText() const
{
    return documentOf(*m_displayEditor, [this](zoHPCDocumentWriter& writer) { m_tree->writeRows(writer); });
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
    m_tree->loadFromXML(document);
    m_displayEditor->loadFromXML(document);
    refreshStatusLater();
    const QDomElement root = document.documentElement();
    return !root.firstChildElement(zoText("master")).isNull() ||
           !root.firstChildElement(zoText("projection")).isNull() ||
           !root.firstChildElement(zoText("display")).isNull();
}

void zoHPCGUIW::replaceConfigString(const QString& text)
{
    // A service may tell back what it was just given, which makes nothing saved that was not.
    const QString going = documentText();
    const bool isSaved = m_currentFile.isEmpty() && text != going;
    if (text != going)
        announceReplacement(going);
    setConfigString(text);
    if (isSaved)
        takeAsSaved();
}

bool zoHPCGUIW::differs() const
{
    return documentText() != m_savedText;
}

void zoHPCGUIW::announceReplacement(const QString& going)
{
    static const QString s_empty = QString::fromLatin1("<cluster version=\"1\">\n <master/>\n</cluster>\n");
    if (going == s_empty || going == m_untouchedText)
        return;
    setProperty("replacedConfiguration", going);
    setProperty("replacedConfiguration", QVariant());
}

void zoHPCGUIW::takeAsSaved()
{
    m_savedText = documentText();
    showDiffers(false);
    showContents();
}

void zoHPCGUIW::showFile()
{
    m_statusPane->setFile(m_currentFile);
    // At once: a picture may be taken of what was just loaded.
    m_statusPane->layout()->activate();
    statusBar()->layout()->activate();
    if (windowFilePath() == m_currentFile)
        return;
    setWindowFilePath(m_currentFile);
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
    showDiffers(differs());
    showContents();
}

void zoHPCGUIW::showContents()
{
    const auto* projections = treeOf(m_displayEditor, "m_projectionTree");
    const auto* displays = treeOf(m_displayEditor, "m_displayTree");
    const zoHPCLayout layout(projections, displays, m_tree->master());
    m_statusPane->setCounts(int(layout.nodes().size()), displays->topLevelItemCount());
    m_statusPane->setProblems(zoHPCProblems::find(layout));
    m_statusTimer.stop();
    m_changedWhileWaiting = false;
}

QString zoHPCGUIW::getConfigPath()
{
    if (m_configDirectory.isEmpty())
        m_configDirectory =
            QDir(QString::fromLatin1(zoPlatform::getDataDir().c_str())).filePath(zoText("cluster"));
    return m_configDirectory;
}

void zoHPCGUIW::setCurrentFile(const QString& fileName)
{
    const QFileInfo file(fileName);
    m_configDirectory = file.absolutePath();
    m_currentFile = file.absoluteFilePath();
    takeAsSaved();
    showFile();
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
    QFile file(fileName);
    if (fileName.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        zoLog::error(tr("Unable to load cluster config %1").arg(fileName));
        return;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        // Half a file would take the place of a whole configuration.
        zoLog::error(tr("Unable to load cluster config %1: %2").arg(fileName, file.errorString()));
        return;
    }
    file.close();
    // A host sees by it that somebody else changed the file later.
    setProperty("readFile", QFileInfo(fileName).absoluteFilePath());
    setProperty("readFile", QVariant());
    m_lastConfig = textOf(bytes);
    const QString going = documentText();
    if (m_lastConfig != going)
        announceReplacement(going);
    const bool isConfiguration = readText(m_lastConfig);
    setCurrentFile(fileName);
    if (isConfiguration)
        statusBar()->clearMessage();
    else
        statusBar()->showMessage(
            tr("%1 holds no cluster configuration.").arg(QDir::toNativeSeparators(fileName)), MESSAGE_TIME);
}

void zoHPCGUIW::saveConfig()
{
    if (m_currentFile.isEmpty())
        saveAsConfig();
    else
        saveConfig(m_currentFile);
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
    if (fileName.isEmpty())
        return;
    QString name = fileName;
    const QString suffix = zoText(".zhpc");
    if (name.right(suffix.size()).toLower() != suffix)
        name += suffix;

    QString reason;
    switch (zoFileWriter::write(
        name, [this] { return getConfigString().toUtf8(); }, &reason)) {
    case zoFileWriter::Result::Written:
        setCurrentFile(name);
        break;
    case zoFileWriter::Result::NotOpened:
        break;
    case zoFileWriter::Result::NotWritten:
        zoLog::error(tr("Unable to save cluster config %1: %2. What the file held before is still there.")
                         .arg(name, reason));
        break;
    case zoFileWriter::Result::Damaged:
        zoLog::error(tr("Unable to save cluster config %1: %2").arg(name, reason));
        break;
    }
}

void zoHPCGUIW::setDefaultConfig()
{
    announceReplacement(documentText());
    m_tree->setDefaultConfig();
    m_displayEditor->setDefaultConfig();
    m_currentFile.clear();
    takeAsSaved();
    m_untouchedText = m_savedText;
    showFile();
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
    QString text;
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly))
        text = textOf(file.readAll());
    zoHPCConfigConverter converter;
    const QString converted = converter.convert(text);
    const QString going = documentText();
    if (converted != going)
        announceReplacement(going);
    // No file holds it yet in this form: it is not saved.
    setConfigString(converted);
    if (converter.parameterCount() == 0)
        statusBar()->showMessage(
            tr("%1 holds no parameters of a legacy configuration.").arg(QDir::toNativeSeparators(fileName)),
            MESSAGE_TIME);
    else
        statusBar()->clearMessage();
}
