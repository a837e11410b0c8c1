#include "zoDialogRobot.h"
#include "zoHostParts.h"
#include "zoSplitterDrag.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCUndo.h>

#include <QZOCollapsibleFrame.h>
#include <zoHostDocument.h>
#include <zoKernelServiceFactory.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QHash>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>

#include <memory>

namespace
{
// Takes keys as a widget of the host does in its keyPressEvent().
class KeyEar final : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto* press = static_cast<QKeyEvent*>(event);
        const QString name = keys.value(press->key() | int(press->modifiers()));
        if (name.isEmpty())
            return false;
        *heard << name;
        event->accept();
        return true;
    }

    QHash<int, QString> keys;
    QStringList* heard = nullptr;
};

// Another host: its window takes some keys in keyPressEvent(), after all else.
class OtherHost final : public QMainWindow
{
public:
    QList<int> taken;
    QList<int> seen;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        seen << event->key();
        event->setAccepted(taken.contains(event->key()));
    }
};
} // namespace

// The cluster window as a page of the host's window, with real keys.
class tst_zoHPCInHost final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keyReachesItsAction_data();
    void keyReachesItsAction();
    void startAndStopKeysWorkWithoutTheirBar();
    void actionsShowTheirKeysAndClaimNone();
    void keyOfTheHostWins_data();
    void keyOfTheHostWins();
    void keyWorksInEveryField();
    void otherHostTakesKeysItsOwnWay();
    void undoKeyTakesBackOneStep();
    void undoKeyOfAnotherHostIsItsOwn();
    void keysOfTheDisplaySetupWorkOnceForEachPress();
    void contextMenuOfTheDisplaySetupShowsItsKeys();
    void keysOfAPageThatIsNotShownAreSilent();
    void windowsKeepTheirKeysApart();
    void renameKeyLeadsToTheName_data();
    void renameKeyLeadsToTheName();
    void displaySetupHasAKey();
    void renameKeyUnfoldsTheFrame();
    void keysLeadBackToTheTree_data();
    void keysLeadBackToTheTree();
    void titleOfTheHostFollowsTheFile();
    void splitterIsRememberedAfterTheHostHasEnded();

private:
    struct Host
    {
        std::unique_ptr<zoHostMainWindow> window;
        zoHPCGUIW* module = nullptr;
    };
    Host open();
    static void activate(QWidget* window);
    static QAction* action(const QWidget* window, const QString& text);
    QTreeWidget* hostTree() const
    {
        return m_host.module->getTree()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    }

    std::unique_ptr<zoHostParts> m_parts;
    Host m_host;
};

void tst_zoHPCInHost::init()
{
    m_parts = std::make_unique<zoHostParts>();
    zoKernelServiceFactory::the().registerService<zoPreferencesService>(&m_parts->preferences);
    m_host = open();
}

void tst_zoHPCInHost::cleanup()
{
    m_host.window.reset();
    zoKernelServiceFactory::the().unregisterService<zoPreferencesService>();
    m_parts.reset();
    zoTestCase::cleanup();
}

tst_zoHPCInHost::Host tst_zoHPCInHost::open()
{
    Host host;
    host.window = std::make_unique<zoHostMainWindow>(m_parts->services());
    host.module = new zoHPCGUIW(host.window.get(), QStringLiteral("Module"));
    host.window->addModule(QStringLiteral("Cluster"), QStringLiteral("Rendering"), host.module, QString(),
                           QIcon(), QStringLiteral("Cluster"));
    return host;
}

void tst_zoHPCInHost::activate(QWidget* window)
{
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

QAction* tst_zoHPCInHost::action(const QWidget* window, const QString& text)
{
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (QAction* candidate : actions) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

void tst_zoHPCInHost::keyReachesItsAction_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("asks");

    const int none = int(Qt::NoModifier);
    const int ctrl = int(Qt::ControlModifier);
    const int shift = int(Qt::ShiftModifier);
    QTest::newRow("new") << "New" << int(Qt::Key_N) << ctrl << false;
    QTest::newRow("load") << "Load..." << int(Qt::Key_O) << ctrl << true;
    QTest::newRow("save") << "Save" << int(Qt::Key_S) << ctrl << true;
    QTest::newRow("save-as") << "Save As..." << int(Qt::Key_S) << (ctrl | shift) << true;
    QTest::newRow("start") << "Start" << int(Qt::Key_F5) << none << false;
    QTest::newRow("stop") << "Stop" << int(Qt::Key_F5) << shift << false;
}

void tst_zoHPCInHost::keyReachesItsAction()
{
    QFETCH(QString, text);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(bool, asks);
    activate(m_host.window.get());
    m_host.module->setStartEnabled(text != QLatin1String("Stop"));
    const QSignalSpy triggered(action(m_host.module, text), &QAction::triggered);
    std::unique_ptr<zoDialogRobot> robot;

    for (QWidget* focus : {static_cast<QWidget*>(hostTree()),
                           static_cast<QWidget*>(m_host.window->findChild<QTreeWidget*>("ModuleList"))}) {
        if (asks)
            robot = std::make_unique<zoDialogRobot>([](QDialog* dialog) { dialog->reject(); });
        m_host.module->setStartEnabled(text != QLatin1String("Stop"));
        activate(m_host.window.get());
        focus->setFocus();
        QTest::keyClick(focus, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    }

    QCOMPARE(triggered.count(), 2);
}

void tst_zoHPCInHost::startAndStopKeysWorkWithoutTheirBar()
{
    activate(m_host.window.get());
    m_host.module->findChild<QWidget*>(QStringLiteral("QuickActionBar"))->hide();
    const QSignalSpy started(m_host.module, SIGNAL(startTriggered()));

    QTest::keyClick(hostTree(), Qt::Key_F5);

    QCOMPARE(started.count(), 1);
}

void tst_zoHPCInHost::actionsShowTheirKeysAndClaimNone()
{
    QStringList shown;
    const QList<QAction*> actions = m_host.module->menuBar()->actions();
    for (const QAction* menu : actions) {
        const QList<QAction*> entries = menu->menu()->actions();
        for (const QAction* entry : entries) {
            if (!entry->shortcut().isEmpty())
                shown << entry->text() + QLatin1Char(' ') +
                             entry->shortcut().toString(QKeySequence::PortableText);
        }
    }
    QCOMPARE(shown, (QStringList{"New Ctrl+N", "Load... Ctrl+O", "Save Ctrl+S", "Save As... Ctrl+Shift+S"}));
    QCOMPARE(action(m_host.module, QStringLiteral("Start"))->shortcut(), QKeySequence(Qt::Key_F5));
    QCOMPARE(action(m_host.module, QStringLiteral("Stop"))->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_F5));

    // A key that two have works for neither, unless one of them has it for a widget that never has the focus.
    const QList<QAction*> all = m_host.module->findChildren<QAction*>();
    for (const QAction* candidate : all) {
        if (!candidate->shortcut().isEmpty())
            QVERIFY2(candidate->shortcutContext() == Qt::WidgetShortcut, qPrintable(candidate->text()));
    }
    QCOMPARE(m_host.module->findChildren<QShortcut*>().size(), 0);
}

void tst_zoHPCInHost::keyOfTheHostWins_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("context");

    QTest::newRow("action") << "action" << int(Qt::WindowShortcut);
    QTest::newRow("action-of-the-application") << "action" << int(Qt::ApplicationShortcut);
    QTest::newRow("shortcut") << "shortcut" << int(Qt::WindowShortcut);
    QTest::newRow("event") << "event" << int(Qt::WindowShortcut);
}

void tst_zoHPCInHost::keyOfTheHostWins()
{
    QFETCH(QString, way);
    QFETCH(int, context);
    activate(m_host.window.get());
    zoHPCTreeGUIW* tree = m_host.module->getTree();
    const int saved = int(Qt::CTRL | Qt::Key_S);
    const QList<int> keys{int(Qt::CTRL | Qt::Key_N),
                          int(Qt::CTRL | Qt::Key_O),
                          saved,
                          int(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
                          int(Qt::Key_F5),
                          int(Qt::SHIFT | Qt::Key_F5),
                          int(Qt::Key_F2),
                          int(Qt::Key_Delete)};
    QStringList heard;
    KeyEar ear;
    for (const int key : keys) {
        const QString name = QKeySequence(key).toString(QKeySequence::PortableText);
        if (way == QLatin1String("action")) {
            auto* hosts = new QAction(name, m_host.window.get());
            hosts->setShortcut(QKeySequence(key));
            hosts->setShortcutContext(Qt::ShortcutContext(context));
            m_host.window->addAction(hosts);
            connect(hosts, &QAction::triggered, this, [&heard, name] { heard << name; });
        } else if (way == QLatin1String("shortcut")) {
            auto* hosts = new QShortcut(QKeySequence(key), m_host.window.get());
            connect(hosts, &QShortcut::activated, this, [&heard, name] { heard << name; });
        } else {
            ear.keys[key] = name;
        }
    }
    // As a host's own keyPressEvent() takes them: the last to hear.
    if (way == QLatin1String("event")) {
        ear.heard = &heard;
        m_host.window->centralWidget()->installEventFilter(&ear);
    }
    QStringList module;
    const QList<QAction*> actions = m_host.module->findChildren<QAction*>();
    for (QAction* one : actions)
        connect(one, &QAction::triggered, this, [&module, one] { module << one->text(); });
    tree->setSelectedItem(tree->getNodeItems().front());
    hostTree()->setFocus();

    QStringList expected;
    for (const int key : keys) {
        m_host.module->setStartEnabled(key != int(Qt::SHIFT | Qt::Key_F5)); // or else Stop
        QTest::keyClick(hostTree(), Qt::Key(key & ~int(Qt::KeyboardModifierMask)),
                        Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask)));
        expected << QKeySequence(key).toString(QKeySequence::PortableText);
    }

    QCOMPARE(heard, expected);
    QCOMPARE(module, QStringList());
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(hostTree()));
    QVERIFY(!tree->getNodeItems().empty());
}

void tst_zoHPCInHost::keyWorksInEveryField()
{
    activate(m_host.window.get());
    zoHPCTreeGUIW* tree = m_host.module->getTree();
    const QSignalSpy triggered(action(m_host.module, QStringLiteral("Start")), &QAction::triggered);
    const QSignalSpy saved(action(m_host.module, QStringLiteral("Save")), &QAction::triggered);
    int count = 0;

    for (zoHPCTreeItem* item : {tree->master(), tree->findNetworkByIndex(1), tree->getNodeItems().front()}) {
        tree->setSelectedItem(item);
        const QList<QWidget*> fields = m_host.module->getEditor()->findChildren<QWidget*>();
        for (QWidget* field : fields) {
            if (!field->isVisible() || field->focusPolicy() == Qt::NoFocus || field->focusProxy())
                continue;
            m_host.module->setStartEnabled(true);
            field->setFocus();
            const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });
            QTest::keyClick(field, Qt::Key_F5);
            QTest::keyClick(field, Qt::Key_S, Qt::ControlModifier);
            ++count;
            QVERIFY2(triggered.count() == count && saved.count() == count, qPrintable(field->objectName()));
        }
    }

    QVERIFY(count > 8);
}

void tst_zoHPCInHost::otherHostTakesKeysItsOwnWay()
{
    OtherHost host;
    auto* module = new zoHPCGUIW(nullptr, QStringLiteral("Module"));
    host.setCentralWidget(module);
    activate(&host);
    const QSignalSpy started(action(module, QStringLiteral("Start")), &QAction::triggered);
    auto* tree = module->getTree()->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"));
    module->getTree()->setSelectedItem(module->getTree()->getNodeItems().front());
    tree->setFocus();
    host.taken = {Qt::Key_F5, Qt::Key_Delete};

    QTest::keyClick(tree, Qt::Key_F5);
    QTest::keyClick(tree, Qt::Key_Delete);
    QTest::keyClick(&host, Qt::Key_F5);

    QCOMPARE(started.count(), 0);
    QCOMPARE(module->getTree()->getNodeNames().size(), 1);
    QCOMPARE(host.seen, (QList<int>{Qt::Key_F5, Qt::Key_Delete, Qt::Key_F5})); // once each
    host.taken.clear();
    QTest::keyClick(&host, Qt::Key_F5);
    QTest::keyClick(tree, Qt::Key_Delete);
    QCOMPARE(started.count(), 1);
    QCOMPARE(module->getTree()->getNodeNames(), QStringList());
}

// The key is the host's and the module's.
void tst_zoHPCInHost::undoKeyTakesBackOneStep()
{
    activate(m_host.window.get());
    zoHPCTreeGUIW* const tree = m_host.module->getTree();
    tree->setSelectedItem(tree->getNodeItems().front());
    for (int i = 0; i < 3; ++i) {
        tree->addHost();
        m_host.module->undoSteps()->commit();
    }
    QCOMPARE(tree->getNodeNames().size(), 4);
    auto* name = m_host.module->getEditor()->findChild<QLineEdit*>(QStringLiteral("m_hostName"));

    hostTree()->setFocus();
    QTest::keyClick(m_host.window->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(tree->getNodeNames().size(), 3);
    // A field has an undo of its own, which would do nothing here.
    name->setFocus();
    QTest::keyClick(m_host.window->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(tree->getNodeNames().size(), 2);
    QTest::keyClick(m_host.window->windowHandle(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(tree->getNodeNames().size(), 3);
    hostTree()->setFocus();
    QTest::keyClick(m_host.window->windowHandle(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(tree->getNodeNames().size(), 4);
}

void tst_zoHPCInHost::undoKeyOfAnotherHostIsItsOwn()
{
    QMainWindow host;
    auto* module = new zoHPCGUIW(nullptr, QStringLiteral("Module"));
    host.setCentralWidget(module);
    QAction undo;
    undo.setShortcut(QKeySequence(int(Qt::CTRL) | Qt::Key_Z));
    host.addAction(&undo);
    const QSignalSpy undone(&undo, &QAction::triggered);
    activate(&host);
    zoHPCTreeGUIW* const tree = module->getTree();
    tree->addHost();
    module->undoSteps()->commit();
    tree->findChild<QTreeWidget*>(QStringLiteral("m_treeWidget"))->setFocus();

    QTest::keyClick(host.windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(undone.count(), 1);
    QCOMPARE(tree->getNodeNames().size(), 2);
    // Without one of its own the module's works.
    host.removeAction(&undo);
    QTest::keyClick(host.windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(undone.count(), 1);
    QCOMPARE(tree->getNodeNames().size(), 1);
}

void tst_zoHPCInHost::keysOfTheDisplaySetupWorkOnceForEachPress()
{
    activate(m_host.window.get());
    m_host.module->displaySetup();
    QWidget* dialog = m_host.module->getDisplayEditor();
    QApplication::setActiveWindow(dialog);
    auto* tree = dialog->findChild<QTreeWidget*>(QStringLiteral("m_projectionTree"));
    const auto press = [tree](int key, Qt::KeyboardModifiers modifiers) {
        if (tree->topLevelItemCount() > 0)
            tree->setCurrentItem(tree->topLevelItem(0), 0, QItemSelectionModel::ClearAndSelect);
        QTest::keyClick(tree, Qt::Key(key), modifiers);
    };
    auto* add = dialog->findChild<QAbstractButton*>(QStringLiteral("m_addProjectionButton"));
    while (tree->topLevelItemCount() < 3)
        add->click();
    tree->setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(tree->topLevelItemCount(), 4);
    press(Qt::Key_Delete, Qt::NoModifier);
    QCOMPARE(tree->topLevelItemCount(), 3);
    for (int i = 0; i < 2; ++i) {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, QStringLiteral("\x7f"), true);
        QCoreApplication::sendEvent(tree, &held);
    }
    QCOMPARE(tree->topLevelItemCount(), 3);
}

void tst_zoHPCInHost::contextMenuOfTheDisplaySetupShowsItsKeys()
{
    activate(m_host.window.get());
    m_host.module->displaySetup();
    QWidget* dialog = m_host.module->getDisplayEditor();
    auto* tree = dialog->findChild<QTreeWidget*>(QStringLiteral("m_displayTree"));
    const auto keys = [tree] {
        QStringList texts;
        const QList<QAction*> actions = tree->actions();
        for (const QAction* action : actions)
            texts << action->shortcut().toString(QKeySequence::PortableText);
        return texts;
    };
    QStringList shown;
    QTimer::singleShot(0, this, [&shown, &keys] {
        shown = keys();
        QApplication::activePopupWidget()->close();
    });

    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            tree->viewport()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(tree->viewport(), &event);

    QCOMPARE(shown, (QStringList{"Del", "Ctrl+C", "Ctrl+V"}));
    QCOMPARE(keys(), (QStringList{QString(), QString(), QString()}));
}

void tst_zoHPCInHost::keysOfAPageThatIsNotShownAreSilent()
{
    auto* other = new QWidget;
    m_host.window->addModule(QStringLiteral("Other"), QStringLiteral("Rendering"), other, QString(), QIcon(),
                             QStringLiteral("Other"));
    activate(m_host.window.get());
    const QSignalSpy triggered(action(m_host.module, QStringLiteral("New")), &QAction::triggered);
    const QSignalSpy started(m_host.module, SIGNAL(startTriggered()));
    other->show();
    QTRY_VERIFY(!m_host.module->isVisible());

    QTest::keyClick(m_host.window.get(), Qt::Key_N, Qt::ControlModifier);
    QTest::keyClick(m_host.window.get(), Qt::Key_F5);

    QCOMPARE(triggered.count(), 0);
    QCOMPARE(started.count(), 0);
}

void tst_zoHPCInHost::windowsKeepTheirKeysApart()
{
    const Host second = open();
    activate(m_host.window.get());
    activate(second.window.get());
    const QSignalSpy first(action(m_host.module, QStringLiteral("New")), &QAction::triggered);
    const QSignalSpy active(action(second.module, QStringLiteral("New")), &QAction::triggered);

    QTest::keyClick(second.window.get(), Qt::Key_N, Qt::ControlModifier);

    QCOMPARE(first.count(), 0);
    QCOMPARE(active.count(), 1);
}

void tst_zoHPCInHost::renameKeyLeadsToTheName_data()
{
    QTest::addColumn<int>("row"); // 0 master, 1 network, 2 node
    QTest::addColumn<bool>("running");
    QTest::addColumn<QString>("field");

    QTest::newRow("master") << 0 << false << "";
    QTest::newRow("network") << 1 << false << "m_networkDescription";
    QTest::newRow("node") << 2 << false << "m_hostName";
    QTest::newRow("running-network") << 1 << true << "";
    QTest::newRow("running-node") << 2 << true << "m_hostName";
}

void tst_zoHPCInHost::renameKeyLeadsToTheName()
{
    QFETCH(int, row);
    QFETCH(bool, running);
    QFETCH(QString, field);
    activate(m_host.window.get());
    zoHPCTreeGUIW* tree = m_host.module->getTree();
    tree->findNetworkByIndex(1)->setOption(zoHPCOption::Description, QStringLiteral("Uplink"));
    m_host.module->setIsRunning(running, QStringList());
    tree->setSelectedItem(row == 0   ? tree->master()
                          : row == 1 ? tree->findNetworkByIndex(1)
                                     : tree->getNodeItems().front());
    hostTree()->setFocus();

    QTest::keyClick(hostTree(), Qt::Key_F2);

    if (field.isEmpty()) {
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(hostTree()));
        return;
    }
    const auto* name = m_host.module->getEditor()->findChild<QLineEdit*>(field);
    QCOMPARE(QApplication::focusWidget(), static_cast<const QWidget*>(name));
    QCOMPARE(name->selectedText(), name->text());
    QVERIFY(!name->text().isEmpty());
}

void tst_zoHPCInHost::displaySetupHasAKey()
{
    activate(m_host.window.get());
    hostTree()->setFocus();
    const QAction* setup = action(m_host.module, QStringLiteral("Display Setup..."));
    QCOMPARE(setup->toolTip(), QStringLiteral("Display Setup (F6)"));

    QTest::keyClick(hostTree(), Qt::Key_F6);

    QVERIFY(m_host.module->getDisplayEditor()->isVisible());
    m_host.module->getDisplayEditor()->reject();
}

void tst_zoHPCInHost::renameKeyUnfoldsTheFrame()
{
    activate(m_host.window.get());
    zoHPCTreeGUIW* tree = m_host.module->getTree();
    tree->setSelectedItem(tree->getNodeItems().front());
    auto* frame =
        m_host.module->getEditor()->findChild<QZOCollapsibleFrame*>(QStringLiteral("m_hostSettings"));
    frame->setCollapsed(true);
    hostTree()->setFocus();

    QTest::keyClick(hostTree(), Qt::Key_F2);

    QVERIFY(!frame->isCollapsed());
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("m_hostName"));
}

void tst_zoHPCInHost::keysLeadBackToTheTree_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("key");

    for (const char* field : {"m_hostName", "m_hostEnabled", "m_renderNode"}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
            QTest::addRow("%s-%s", field, qPrintable(QKeySequence(key).toString()))
                << QString::fromLatin1(field) << int(key);
    }
    QTest::newRow("title") << "m_hostSettings" << int(Qt::Key_Escape);
}

void tst_zoHPCInHost::keysLeadBackToTheTree()
{
    QFETCH(QString, field);
    QFETCH(int, key);
    activate(m_host.window.get());
    zoHPCTreeGUIW* tree = m_host.module->getTree();
    tree->setSelectedItem(tree->getNodeItems().front());
    auto* widget = m_host.module->getEditor()->findChild<QWidget*>(field);
    widget->setFocus();
    QVERIFY(widget->hasFocus());

    QTest::keyClick(widget, Qt::Key(key));

    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(hostTree()));
    QVERIFY(!m_host.module->getEditor()
                 ->findChild<QZOCollapsibleFrame*>(QStringLiteral("m_hostSettings"))
                 ->isCollapsed());
}

void tst_zoHPCInHost::titleOfTheHostFollowsTheFile()
{
    activate(m_host.window.get());

    m_host.module->saveConfig(m_parts->filePath(QStringLiteral("wall.zhpc")));
    QVERIFY2(m_host.window->windowTitle().contains(QStringLiteral("wall.zhpc")),
             qPrintable(m_host.window->windowTitle()));
    QVERIFY(!m_host.window->isWindowModified());
    m_host.module->getTree()->getNodeItems().front()->setHostName(QStringLiteral("n1"));
    QTRY_VERIFY(m_host.window->isWindowModified());

    const QSignalSpy replaced(m_host.window->document(), &zoHostDocument::replaced);
    m_host.module->setDefaultConfig();

    QVERIFY(!m_host.window->isWindowModified());
    QCOMPARE(replaced.count(), 1);
}

void tst_zoHPCInHost::splitterIsRememberedAfterTheHostHasEnded()
{
    activate(m_host.window.get());
    auto* splitter = qobject_cast<QSplitter*>(m_host.module->getTree()->parentWidget());
    const QList<int> before = splitter->sizes();
    zoSplitterDrag(splitter, -60);
    const QList<int> sizes = splitter->sizes();
    QVERIFY(sizes != before);

    m_host.window.reset(); // as a host does that a script ends
    m_host = open();
    activate(m_host.window.get());

    splitter = qobject_cast<QSplitter*>(m_host.module->getTree()->parentWidget());
    QTRY_COMPARE(splitter->sizes(), sizes);
}

ZO_TEST_MAIN(tst_zoHPCInHost)
#include "tst_zoHPCInHost.moc"
