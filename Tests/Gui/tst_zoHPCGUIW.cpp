#include "zoHPCWindowTest.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCWindowItem.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QZOToolBar.h>

namespace
{
// The texts of a menu or tool bar; "-" is a separator.
QStringList textsOf(const QWidget* widget)
{
    QStringList texts;
    const QList<QAction*> actions = widget->actions();
    for (const QAction* action : actions)
        texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

QMenu* menuOf(const QMainWindow& window, const char* title)
{
    const QList<QMenu*> menus = window.menuBar()->findChildren<QMenu*>();
    for (QMenu* candidate : menus) {
        if (candidate->title() == QLatin1String(title))
            return candidate;
    }
    return nullptr;
}
} // namespace

// The cluster window: its form, menus and actions, the marks of nodes.
class tst_zoHPCGUIW final : public zoHPCWindowTest
{
    Q_OBJECT

private slots:
    void windowHasItsForm();
    void signalsStandInTheirOrder_data();
    void signalsStandInTheirOrder();
    void menuHoldsItsActions_data();
    void menuHoldsItsActions();
    void toolBarsHoldTheirActions();
    void actionHasItsIcon_data();
    void actionHasItsIcon();
    void diagnosticsAreDisabledAtFirst();
    void treeAndEditorStandSideBySide();
    void editorShowsTheSelectedItem();
    void startEnabledIsEitherStartOrStop();
    void startAndStopAskForASession();
    void diagnosticActionsAreSignalled();
    void runningBlocksReplacingButNotSaving();
    void displaySetupOpensWithTheNodeNames();

    void uniqueNamesNumberTheDuplicates();
    void windowMarksTheNodeOfItsUniqueName_data();
    void windowMarksTheNodeOfItsUniqueName();
    void renamingANodeUpdatesTheMarks();
    void addingANodeUpdatesTheUniqueNames();
    void loadingMarksOnceWithTheNewDisplays();
    void replacingReturnsWhatIsThere();
    void displayChangeIsForwarded();

    void disabledNodesStayReadableWhenThePaletteChanges();
};

void tst_zoHPCGUIW::windowHasItsForm()
{
    QCOMPARE(m_window->objectName(), QStringLiteral("Module"));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("HPC Cluster"));
    QCOMPARE(m_window->size(), QSize(617, 530));
    QCOMPARE(m_window->sizeHint(), QSize(800, 600));
    QVERIFY(m_window->findChild<QStatusBar*>() != nullptr);
    const auto* layout = qobject_cast<QGridLayout*>(m_window->centralWidget()->layout());
    QVERIFY(layout != nullptr);
    QCOMPARE(layout->contentsMargins(), QMargins());
    const auto* bar = m_window->findChild<QToolBar*>(QStringLiteral("toolBar"));
    QCOMPARE(bar->windowTitle(), QStringLiteral("toolBar"));
    QCOMPARE(bar->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
    QVERIFY(!bar->isFloatable());
    QCOMPARE(m_window->toolBarArea(const_cast<QToolBar*>(bar)), Qt::TopToolBarArea);
    QVERIFY(!m_window->menuBar()->isNativeMenuBar());
}

void tst_zoHPCGUIW::signalsStandInTheirOrder_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("signature");

    int index = 0;
    for (const char* signature :
         {"startTriggered()", "stopTriggered()", "speedTestTriggered()", "uploadToGCToggled(bool)",
          "renderingEnabledToggled(bool)", "showTilesToggled(bool)", "showTestImageToggled(bool)",
          "displayPropertiesChanged()"})
        QTest::newRow(signature) << index++ << QByteArray(signature);
}

void tst_zoHPCGUIW::signalsStandInTheirOrder()
{
    QFETCH(int, index);
    QFETCH(QByteArray, signature);

    const QMetaMethod method =
        zoHPCGUIW::staticMetaObject.method(zoHPCGUIW::staticMetaObject.methodOffset() + index);

    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(), signature);
}

void tst_zoHPCGUIW::menuHoldsItsActions_data()
{
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("file") << QByteArray("&File")
                          << QStringList{"New", "Load...", "Import legacy...", "Save", "Save As..."};
    QTest::newRow("edit") << QByteArray("&Edit")
                          << QStringList{"Cluster config...", "Edit configuration...", "-",
                                         "Add compute node",  "Remove compute node",   "-",
                                         "Add network",       "Remove network"};
    QTest::newRow("diagnostics") << QByteArray("&Diagnostics")
                                 << QStringList{"Show tiles", "Show test image", "-",
                                                "Run network speed test..."};
}

void tst_zoHPCGUIW::menuHoldsItsActions()
{
    QFETCH(QByteArray, title);
    QFETCH(QStringList, texts);

    const QMenu* found = menuOf(*m_window, title.constData());

    QVERIFY(found != nullptr);
    QCOMPARE(textsOf(found), texts);
    QVERIFY(found->isTearOffEnabled());
}

void tst_zoHPCGUIW::toolBarsHoldTheirActions()
{
    QCOMPARE(textsOf(m_window->findChild<QToolBar*>(QStringLiteral("toolBar"))),
             (QStringList{"Cluster config...", "Display Setup..."}));

    auto* quick = m_window->findChild<QZOToolBar*>(QStringLiteral("QuickActionBar"));
    QVERIFY(quick != nullptr);
    QCOMPARE(textsOf(quick), (QStringList{"Start", "Stop"}));
    QCOMPARE(quick->windowTitle(), QStringLiteral("QuickActions"));
    QCOMPARE(m_window->toolBarArea(quick), Qt::BottomToolBarArea);
    QCOMPARE(quick->allowedAreas(), Qt::ToolBarAreas(Qt::BottomToolBarArea));
    QVERIFY(!quick->isMovable());
    QVERIFY(!quick->isFloatable());
    QCOMPARE(quick->contextMenuPolicy(), Qt::ActionsContextMenu);
    QCOMPARE(quick->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
}

void tst_zoHPCGUIW::actionHasItsIcon_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("hasIcon");

    for (const char* text : {"New", "Load...", "Save", "Import legacy...", "Start", "Stop",
                             "Display Setup...", "Cluster config..."})
        QTest::newRow(text) << QByteArray(text) << true;
    for (const char* text : {"Save As...", "Edit configuration...", "Run network speed test...", "Show tiles",
                             "Show test image"})
        QTest::newRow(text) << QByteArray(text) << false;
}

void tst_zoHPCGUIW::actionHasItsIcon()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, hasIcon);

    QCOMPARE(!action(text.constData())->icon().isNull(), hasIcon);
}

void tst_zoHPCGUIW::diagnosticsAreDisabledAtFirst()
{
    QVERIFY(!action("Show tiles")->isEnabled());
    QVERIFY(!action("Show test image")->isEnabled());
    QVERIFY(!action("Run network speed test...")->isEnabled());
    QVERIFY(!action("Stop")->isEnabled());
    QVERIFY(!action("Edit configuration...")->isVisible());
    QVERIFY(action("Show tiles")->isCheckable() && !action("Show tiles")->isChecked());
    QVERIFY(action("Show test image")->isCheckable() && !action("Show test image")->isChecked());
}

void tst_zoHPCGUIW::treeAndEditorStandSideBySide()
{
    const auto* splitter = qobject_cast<QSplitter*>(m_window->getTree()->parentWidget());

    QVERIFY(splitter != nullptr);
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QCOMPARE(splitter->widget(0), static_cast<QWidget*>(m_window->getTree()));
    QCOMPARE(splitter->widget(1), static_cast<QWidget*>(m_window->getEditor()));
    QCOMPARE(splitter->sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
    QCOMPARE(m_window->getTree()->sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
    QCOMPARE(m_window->getEditor()->sizePolicy(),
             QSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Expanding));
    QCOMPARE(m_window->getDisplayEditor()->parentWidget(), static_cast<QWidget*>(m_window.get()));
}

void tst_zoHPCGUIW::editorShowsTheSelectedItem()
{
    const auto* pages =
        m_window->getEditor()->findChild<QStackedWidget*>(QStringLiteral("m_stackedEditPanel"));
    QCOMPARE(pages->currentIndex(), 0);
    auto* compression = m_window->getEditor()->findChild<QComboBox*>(QStringLiteral("m_sceneCompression"));
    QCOMPARE(compression->currentText(), QStringLiteral("High"));
    compression->setCurrentIndex(0);
    QVERIFY(!m_window->getTree()->master()->hasOption(zoHPCOption::SceneCompression));

    m_window->getTree()->setSelectedItem(m_window->getTree()->findNetworkByIndex(1));
    QCOMPARE(pages->currentIndex(), 1);

    m_window->getTree()->setSelectedItem(m_window->getTree()->getNodeItems().front());
    QCOMPARE(pages->currentIndex(), 2);
}

void tst_zoHPCGUIW::startEnabledIsEitherStartOrStop()
{
    m_window->setStartEnabled(false);
    QVERIFY(!action("Start")->isEnabled());
    QVERIFY(action("Stop")->isEnabled());

    m_window->setStartEnabled(true);
    QVERIFY(action("Start")->isEnabled());
    QVERIFY(!action("Stop")->isEnabled());
}

void tst_zoHPCGUIW::startAndStopAskForASession()
{
    const QSignalSpy started(m_window.get(), SIGNAL(startTriggered()));
    const QSignalSpy stopped(m_window.get(), SIGNAL(stopTriggered()));

    action("Start")->trigger();
    QCOMPARE(started.count(), 1);
    QVERIFY(!action("Start")->isEnabled());

    m_window->setStartEnabled(false);
    action("Stop")->trigger();
    QCOMPARE(stopped.count(), 1);
    QVERIFY(!action("Stop")->isEnabled());
}

void tst_zoHPCGUIW::diagnosticActionsAreSignalled()
{
    QSignalSpy tiles(m_window.get(), SIGNAL(showTilesToggled(bool)));
    QSignalSpy image(m_window.get(), SIGNAL(showTestImageToggled(bool)));
    const QSignalSpy speed(m_window.get(), SIGNAL(speedTestTriggered()));
    m_window->setIsRunning(true, QStringList());

    action("Show tiles")->trigger();
    action("Show test image")->trigger();
    action("Show test image")->trigger();
    action("Run network speed test...")->trigger();

    QCOMPARE(tiles.count(), 1);
    QCOMPARE(tiles.first().first().toBool(), true);
    QCOMPARE(image.count(), 2);
    QCOMPARE(image.last().first().toBool(), false);
    QCOMPARE(speed.count(), 1);
}

void tst_zoHPCGUIW::runningBlocksReplacingButNotSaving()
{
    m_window->setAdvanced(true); // an invisible action is never enabled

    for (const bool running : {true, false}) {
        m_window->setIsRunning(running, QStringList());

        for (const char* text : {"New", "Load...", "Import legacy...", "Edit configuration..."})
            QCOMPARE(action(text)->isEnabled(), !running);
        for (const char* text : {"Show tiles", "Show test image", "Run network speed test..."})
            QCOMPARE(action(text)->isEnabled(), running);
        for (const char* text : {"Save", "Save As..."})
            QVERIFY(action(text)->isEnabled());
        for (const char* text : {"Cluster config...", "Add compute node", "Add network"})
            QCOMPARE(action(text)->isEnabled(), !running);
        QCOMPARE(m_window->getEditor()->findChild<QWidget*>(QStringLiteral("m_networkSettings"))->isEnabled(),
                 !running);
        const int projections = m_window->getDisplayEditor()->getProjectionItems().size();
        m_window->getDisplayEditor()->addProjection();
        QCOMPARE(m_window->getDisplayEditor()->getProjectionItems().size() > projections, !running);
    }
}

void tst_zoHPCGUIW::displaySetupOpensWithTheNodeNames()
{
    m_window->setConfigString(QLatin1String(s_document));

    action("Display Setup...")->trigger();

    QTRY_VERIFY(m_window->getDisplayEditor()->isVisible());
    QVERIFY(m_window->getDisplayEditor()->isModal());
    const auto* choices = m_window->getDisplayEditor()->findChild<QComboBox*>(QStringLiteral("m_renderNode"));
    QStringList names;
    for (int i = 0; i < choices->count(); ++i)
        names << choices->itemText(i);
    QCOMPARE(names, (QStringList{QStringLiteral("a 1"), QStringLiteral("b"), QStringLiteral("a 2")}));
    m_window->getDisplayEditor()->reject();
}

void tst_zoHPCGUIW::uniqueNamesNumberTheDuplicates()
{
    m_window->getTree()->setHostString(QStringLiteral("a b a"));
    m_window->updateDisplayState();

    const std::vector<zoHPCTreeItem*> nodes = m_window->getTree()->getNodeItems();
    QCOMPARE(nodes.at(0)->uniqueHostName(), QStringLiteral("a 1"));
    QCOMPARE(nodes.at(1)->uniqueHostName(), QStringLiteral("b"));
    QCOMPARE(nodes.at(2)->uniqueHostName(), QStringLiteral("a 2"));
}

void tst_zoHPCGUIW::windowMarksTheNodeOfItsUniqueName_data()
{
    QTest::addColumn<QString>("renderNode");
    QTest::addColumn<QList<bool>>("marked");

    QTest::newRow("ambiguous") << "a" << QList<bool>{false, false, false};
    QTest::newRow("first") << "a 1" << QList<bool>{true, false, false};
    QTest::newRow("third") << "a 2" << QList<bool>{false, false, true};
    QTest::newRow("plain") << "b" << QList<bool>{false, true, false};
    QTest::newRow("other-case") << "B" << QList<bool>{false, false, false};
    QTest::newRow("none") << "" << QList<bool>{false, false, false};
}

void tst_zoHPCGUIW::windowMarksTheNodeOfItsUniqueName()
{
    QFETCH(QString, renderNode);
    QFETCH(QList<bool>, marked);
    m_window->setConfigString(QLatin1String(s_document));

    m_window->getDisplayEditor()->getWindowItems().first()->setRenderNode(renderNode);
    m_window->getDisplayEditor()->apply();

    QList<bool> marks;
    for (const zoHPCTreeItem* node : m_window->getTree()->getNodeItems())
        marks << node->isDisplayNode();
    QCOMPARE(marks, marked);
}

void tst_zoHPCGUIW::renamingANodeUpdatesTheMarks()
{
    m_window->setConfigString(QLatin1String(s_document));
    zoHPCTreeItem* second = m_window->getTree()->getNodeItems().at(1);
    m_window->getTree()->setSelectedItem(second);

    // Typed in the editor, as a person does: now the second of three nodes of that name.
    auto* name = m_window->getEditor()->findChild<QLineEdit*>(QStringLiteral("m_hostName"));
    name->selectAll();
    QTest::keyClicks(name, QStringLiteral("a"));

    QCOMPARE(second->uniqueHostName(), QStringLiteral("a 2"));
    QVERIFY(second->isDisplayNode());
    QVERIFY(!m_window->getTree()->getNodeItems().at(2)->isDisplayNode());
}

void tst_zoHPCGUIW::addingANodeUpdatesTheUniqueNames()
{
    action("New")->trigger();

    action("Add compute node")->trigger();
    action("Add compute node")->trigger();

    QStringList names;
    for (const zoHPCTreeItem* node : m_window->getTree()->getNodeItems())
        names << node->uniqueHostName();
    QCOMPARE(names, (QStringList{QStringLiteral("localhost 1"), QStringLiteral("localhost 2"),
                                 QStringLiteral("localhost 3")}));
}

void tst_zoHPCGUIW::loadingMarksOnceWithTheNewDisplays()
{
    m_window->setConfigString(QLatin1String(s_document));
    m_window->getDisplayEditor()->getWindowItems().first()->setRenderNode(QStringLiteral("b"));
    m_window->getDisplayEditor()->apply();
    const zoHPCTreeGUIW* tree = m_window->getTree();
    QVERIFY(tree->getNodeItems().at(1)->isDisplayNode());
    // The new hosts are there, the displays are the old ones.
    int heard = 0;
    bool isMarkedByOldDisplays = false;
    connect(tree, &zoHPCTreeGUIW::hostsChanged, m_window.get(), [&] {
        ++heard;
        isMarkedByOldDisplays |= tree->getNodeItems().at(1)->isDisplayNode();
    });

    m_window->setConfigString(QLatin1String(s_document));

    QCOMPARE(heard, 1);
    QVERIFY(!isMarkedByOldDisplays);
    QVERIFY(!tree->getNodeItems().at(1)->isDisplayNode());
    QCOMPARE(tree->getNodeItems().at(2)->uniqueHostName(), QStringLiteral("a 2"));
    QVERIFY(tree->getNodeItems().at(2)->isDisplayNode());
}

void tst_zoHPCGUIW::replacingReturnsWhatIsThere()
{
    const QString text =
        QString::fromLatin1(s_document).replace(QLatin1String("\"b\""), QLatin1String("'c'"));

    const QString written = m_window->replaceConfigString(text);

    QVERIFY(written.contains(QLatin1String("\"c\"")));
    QCOMPARE(written, m_window->documentText());
}

void tst_zoHPCGUIW::displayChangeIsForwarded()
{
    const QSignalSpy spy(m_window.get(), SIGNAL(displayPropertiesChanged()));

    m_window->getDisplayEditor()->apply();

    QCOMPARE(spy.count(), 1);
}

void tst_zoHPCGUIW::disabledNodesStayReadableWhenThePaletteChanges()
{
    const QPalette before = QApplication::palette();
    zoHPCTreeItem* node = m_window->getTree()->getNodeItems().front();
    node->setIsEnabled(false);
    const auto contrast = [this, node] {
        const int background = m_window->getTree()->palette().color(QPalette::Base).lightness();
        return qAbs(node->foreground(0).color().lightness() - background);
    };
    QVERIFY(contrast() >= 60);

    // A background as grey as the text of disabled nodes was on white.
    QPalette grey = before;
    grey.setColor(QPalette::Base, QColor(120, 120, 120));
    grey.setColor(QPalette::Text, QColor(250, 250, 250));
    grey.setColor(QPalette::Light, QColor(125, 125, 125));
    QApplication::setPalette(grey);
    QCoreApplication::processEvents();
    const int onGrey = contrast();
    QApplication::setPalette(before);
    QCoreApplication::processEvents();

    QVERIFY(onGrey >= 60);
    QVERIFY(contrast() >= 60);
}

ZO_TEST_MAIN(tst_zoHPCGUIW)
#include "tst_zoHPCGUIW.moc"
