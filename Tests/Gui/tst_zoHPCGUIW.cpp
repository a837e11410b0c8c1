#include "zoDialogRobot.h"
#include "zoDocumentSpy.h"
#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPC.h>
#include <zoHPCConfigEditGUIW.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCDocumentText.h>
#include <zoHPCElidedLabel.h>
#include <zoHPCGUIW.h>
#include <zoHPCStatusPane.h>
#include <zoHPCTreeEditGUIW.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCWindowItem.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

#include <QZOToolBar.h>
#include <zoPlatform.h>

#include <csignal>
#include <sys/resource.h>

namespace
{
const char* const s_document =
    "<cluster version=\"1\">\n"
    " <master scenecompression=\"best\">\n"
    "  <network>\n"
    "   <node name=\"a\"/>\n"
    "   <node name=\"b\"/>\n"
    "   <node name=\"a\"/>\n"
    "  </network>\n"
    " </master>\n"
    " <display eyeseparation=\"65\" user=\"1\" hardwaresync=\"false\">\n"
    "  <window node=\"a 2\" screen=\"0\" x=\"0\" y=\"0\" width=\"1280\" height=\"1024\""
    " fullscreen=\"true\"/>\n"
    " </display>\n"
    "</cluster>\n";

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

void write(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// The texts of a menu or tool bar; "-" is a separator.
QStringList textsOf(const QWidget* widget)
{
    QStringList texts;
    const QList<QAction*> actions = widget->actions();
    for (const QAction* action : actions)
        texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

// Types a file name into the file dialog and accepts.
void choose(QDialog* dialog, const QString& fileName)
{
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(fileName);
    QMetaObject::invokeMethod(dialog, "accept");
}

// No file may grow beyond `bytes` while this lives: what a full disk looks like to a program.
class FullDisk final
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};
} // namespace

// The cluster window and the configuration document.
class tst_zoHPCGUIW final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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
    void displayChangeIsForwarded();

    void newDocumentHasItsText();
    void treeSectionComesFirst();
    void textIsAFixedPoint();
    void placeholdersInNamesStay();
    void textThatDoesNotParseEmptiesTheWindow();
    void savingAppendsTheExtension_data();
    void savingAppendsTheExtension();
    void savingWithAnEmptyNameChangesNothing();
    void savingWhereNothingCanBeWrittenChangesNothing();
    void fullDiskLeavesTheOldFileWhole();
    void saveAsksForANameOnlyWhenThereIsNone();
    void newForgetsTheFile();
    void loadedFileEndsAtTheFirstNulByte();
    void loadedFileIsUtf8();
    void fileThatCannotBeOpenedChangesNothing();
    void fileThatCannotBeReadChangesNothing();
    void directoryFollowsTheFile();
    void loadDialogLoads();
    void loadDialogCancelledChangesNothing();
    void saveKeepsTheMarksOfATreeWithAHostsFile();
    void saveThatCannotOpenItsFileReadsNoHostsFile();
    void editConfigShowsTheTextAndAppliesItUnchanged();
    void editConfigCancelledChangesNothing();
    void importLegacyLoadsTheConvertedText();
    void importedDocumentIsNotSaved();
    void loadingAnotherFileSaysSoInTheStatusBar_data();
    void loadingAnotherFileSaysSoInTheStatusBar();
    void importLegacyOfAnotherFileSaysSoInTheStatusBar();
    void importLegacyOfAMissingFileIsAnEmptyCluster();
    void deepHostsTextIsSavedAndLoaded();
    void deepestDocumentIsReadAsAWhole();
    void documentTooDeepForTheTreeIsRefusedAsAWhole();
    void disabledNodesStayReadableWhenThePaletteChanges();
    void filePathFollowsTheFile();
    void statusBarNamesTheFile();
    void changeShowsInTheStatusBar_data();
    void changeShowsInTheStatusBar();
    void changeThatIsUndoneByHandIsNone();
    void savedDocumentDoesNotDiffer();
    void documentBroughtInDiffersFromTheOpenFile();
    void sameDocumentComingAgainSavesNothing();
    void askingReadsNoHostsFile();
    void windowAloneShowsThatItWasChanged();
    void statusBarCounts();
    void problemsLeadToTheDisplaySetup();
    void messagesStillShowBesideTheStatus();
    void fileNameGetsItsRoom();
    void narrowWindowShortensTheFileNameOnly();
    void replacedDocumentIsAnnounced_data();
    void replacedDocumentIsAnnounced();
    void nothingIsAnnouncedWhenNothingGetsLost_data();
    void nothingIsAnnouncedWhenNothingGetsLost();
    void hashSeedDoesNotChangeTheBytes_data();
    void hashSeedDoesNotChangeTheBytes();

private:
    QAction* action(const char* text) const
    {
        const QList<QAction*> actions = m_window->findChildren<QAction*>();
        for (QAction* candidate : actions) {
            if (candidate->text() == QLatin1String(text))
                return candidate;
        }
        return nullptr;
    }
    QMenu* menu(const char* title) const
    {
        const QList<QMenu*> menus = m_window->menuBar()->findChildren<QMenu*>();
        for (QMenu* candidate : menus) {
            if (candidate->title() == QLatin1String(title))
                return candidate;
        }
        return nullptr;
    }
    template <class Widget>
    Widget* status(const char* name) const
    {
        return m_window->statusBar()->findChild<Widget*>(QLatin1String(name));
    }
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<zoHPCGUIW> m_window;
};

void tst_zoHPCGUIW::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_folder = std::make_unique<QTemporaryDir>();
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
}

void tst_zoHPCGUIW::cleanup()
{
    m_window.reset();
    m_folder.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

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

    const QMenu* found = menu(title.constData());

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

void tst_zoHPCGUIW::displayChangeIsForwarded()
{
    const QSignalSpy spy(m_window.get(), SIGNAL(displayPropertiesChanged()));

    m_window->getDisplayEditor()->apply();

    QCOMPARE(spy.count(), 1);
}

void tst_zoHPCGUIW::newDocumentHasItsText()
{
    action("New")->trigger();

    QCOMPARE(m_window->getConfigString(), QStringLiteral("<cluster version=\"1\">\n"
                                                         " <master scenecompression=\"best\">\n"
                                                         "  <network>\n"
                                                         "   <node name=\"localhost\"/>\n"
                                                         "  </network>\n"
                                                         " </master>\n"
                                                         " <display eyeseparation=\"65\" user=\"1\""
                                                         " hardwaresync=\"false\"/>\n"
                                                         "</cluster>\n"));
}

void tst_zoHPCGUIW::treeSectionComesFirst()
{
    m_window->setConfigString(
        QStringLiteral("<cluster version=\"1\"><display user=\"2\"/><projection name=\"p\""
                       " type=\"plane\"/><master><network/></master></cluster>"));

    const QString text = m_window->getConfigString();

    const int master = text.indexOf(QStringLiteral("<master"));
    const int projection = text.indexOf(QStringLiteral("<projection"));
    const int display = text.indexOf(QStringLiteral("<display"));
    QVERIFY(master > 0);
    QVERIFY(projection > master);
    QVERIFY(display > projection);
}

void tst_zoHPCGUIW::textIsAFixedPoint()
{
    m_window->setConfigString(QLatin1String(s_document));

    const QString first = m_window->getConfigString();
    m_window->setConfigString(first);

    QCOMPARE(m_window->getConfigString(), first);
    QCOMPARE(first, QLatin1String(s_document));
}

void tst_zoHPCGUIW::placeholdersInNamesStay()
{
    const QString document = QLatin1String(s_document);
    m_window->setConfigString(QString(document).replace(QStringLiteral("\"a\""), QStringLiteral("\"%1%2\"")));

    QCOMPARE(m_window->getTree()->getNodeItems().at(2)->uniqueHostName(), QStringLiteral("%1%2 2"));
}

void tst_zoHPCGUIW::textThatDoesNotParseEmptiesTheWindow()
{
    m_window->setConfigString(QLatin1String(s_document));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^Cluster config line 1, column \\d+: ")));

    m_window->setConfigString(QStringLiteral("<cluster><master>"));

    QCOMPARE(m_window->getConfigString(),
             QStringLiteral("<cluster version=\"1\">\n <master/>\n</cluster>\n"));
}

void tst_zoHPCGUIW::savingAppendsTheExtension_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("written");

    QTest::newRow("none") << "cfg"
                          << "cfg.zhpc";
    QTest::newRow("mixed-case-kept") << "cfg.Zhpc"
                                     << "cfg.Zhpc";
    QTest::newRow("upper-case-kept") << "a.ZHPC"
                                     << "a.ZHPC";
    QTest::newRow("other-extension") << "a.xml"
                                     << "a.xml.zhpc";
    QTest::newRow("only-the-extension") << ".zhpc"
                                        << ".zhpc";
    QTest::newRow("umlaut") << QString::fromUtf8("w\xc3\xa4nde") << QString::fromUtf8("w\xc3\xa4nde.zhpc");
}

void tst_zoHPCGUIW::savingAppendsTheExtension()
{
    QFETCH(QString, given);
    QFETCH(QString, written);
    m_window->setConfigString(QLatin1String(s_document));

    m_window->saveConfig(m_folder->filePath(given));

    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{written});
    QCOMPARE(contentOf(m_folder->filePath(written)), QByteArray(s_document));
}

void tst_zoHPCGUIW::savingWithAnEmptyNameChangesNothing()
{
    const QString before = m_window->getConfigPath();

    m_window->saveConfig(QString());

    QCOMPARE(m_window->getConfigPath(), before);
    QVERIFY(!QFile::exists(QStringLiteral(".zhpc")));
}

void tst_zoHPCGUIW::savingWhereNothingCanBeWrittenChangesNothing()
{
    const QString before = m_window->getConfigPath();

    m_window->saveConfig(path("no-such-folder/cfg.zhpc"));

    QCOMPARE(m_window->getConfigPath(), before);
    QVERIFY(messages().isEmpty());
}

void tst_zoHPCGUIW::fullDiskLeavesTheOldFileWhole()
{
    const QString fileName = path("wall.zhpc");
    write(fileName, "the old content");
    m_window->getTree()->setHostString(QStringLiteral("n0001 - n9000"));
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("^Unable to save cluster config .*wall\\.zhpc")));

    {
        const FullDisk fullDisk(16 * 1024);
        m_window->saveConfig(fileName);
    }

    QCOMPARE(contentOf(fileName), QByteArray("the old content"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{QStringLiteral("wall.zhpc")});
}

void tst_zoHPCGUIW::saveAsksForANameOnlyWhenThereIsNone()
{
    const QString fileName = path("first.zhpc");
    QString title;
    {
        const zoDialogRobot robot([&](QDialog* dialog) {
            title = dialog->windowTitle();
            choose(dialog, fileName);
        });
        action("Save")->trigger();
        QCOMPARE(robot.handled(), 1);
    }
    QCOMPARE(title, QStringLiteral("Save Cluster Configuration"));
    QVERIFY(QFile::exists(fileName));

    m_window->getTree()->setHostString(QStringLiteral("changed"));
    action("Save")->trigger();
    QVERIFY(contentOf(fileName).contains("changed"));
}

void tst_zoHPCGUIW::newForgetsTheFile()
{
    const QString fileName = path("old.zhpc");
    m_window->saveConfig(fileName);
    const QByteArray before = contentOf(fileName);
    action("New")->trigger();

    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });
    action("Save")->trigger();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(contentOf(fileName), before);
}

void tst_zoHPCGUIW::loadedFileEndsAtTheFirstNulByte()
{
    QByteArray bytes(s_document);
    bytes.append('\0');
    bytes.append("rubbish behind");
    write(path("nul.zhpc"), bytes);

    m_window->loadConfig(path("nul.zhpc"));

    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIW::loadedFileIsUtf8()
{
    write(path("utf8.zhpc"), QByteArray(s_document).replace("\"b\"", "\"w\xc3\xa4nde\""));

    m_window->loadConfig(path("utf8.zhpc"));

    QCOMPARE(m_window->getTree()->getNodeNames().at(1), QString::fromUtf8("w\xc3\xa4nde"));
}

void tst_zoHPCGUIW::fileThatCannotBeOpenedChangesNothing()
{
    m_window->setConfigString(QLatin1String(s_document));
    const QString directory = m_window->getConfigPath();
    const QString missing = m_folder->filePath(QString::fromUtf8("w\xc3\xa4nde.zhpc"));
    expectMessage(QtCriticalMsg,
                  QRegularExpression(
                      QLatin1Char('^') +
                      QRegularExpression::escape(QStringLiteral("Unable to load cluster config ") + missing) +
                      QLatin1Char('$')));

    m_window->loadConfig(missing);

    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
    QCOMPARE(m_window->getConfigPath(), directory);
}

void tst_zoHPCGUIW::fileThatCannotBeReadChangesNothing()
{
    // Opens, but nothing is mapped where it begins: reading fails.
    const QString unreadable = QStringLiteral("/proc/self/mem");
    m_window->setConfigString(QLatin1String(s_document));
    const QString directory = m_window->getConfigPath();
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("^Unable to load cluster config /proc/self/mem: .")));

    m_window->loadConfig(unreadable);

    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
    QCOMPARE(m_window->getConfigPath(), directory);
}

void tst_zoHPCGUIW::directoryFollowsTheFile()
{
    QCOMPARE(m_window->getConfigPath(),
             QDir(QString::fromStdString(zoPlatform::getDataDir())).filePath(QStringLiteral("cluster")));

    m_window->saveConfig(path("cfg.zhpc"));
    QCOMPARE(m_window->getConfigPath(), QFileInfo(m_folder->path()).absoluteFilePath());

    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("below")));
    write(path("below/other.zhpc"), s_document);
    m_window->loadConfig(path("below/other.zhpc"));
    QCOMPARE(m_window->getConfigPath(), path("below"));
}

void tst_zoHPCGUIW::loadDialogLoads()
{
    write(path("cfg.zhpc"), s_document);
    QString title;
    QStringList filters;
    const zoDialogRobot robot([&](QDialog* dialog) {
        title = dialog->windowTitle();
        filters = qobject_cast<QFileDialog*>(dialog)->nameFilters();
        choose(dialog, path("cfg.zhpc"));
    });

    action("Load...")->trigger();

    QCOMPARE(title, QStringLiteral("Load Cluster Configuration"));
    QCOMPARE(filters, QStringList{QStringLiteral("Cluster Config (*.zhpc)")});
    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIW::loadDialogCancelledChangesNothing()
{
    m_window->setConfigString(QLatin1String(s_document));
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    action("Load...")->trigger();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIW::saveKeepsTheMarksOfATreeWithAHostsFile()
{
    write(path("hosts.txt"), "a b a c");
    QString document = QLatin1String(s_document);
    document.replace(QStringLiteral("<master "),
                     QStringLiteral("<master nodesfile=\"%1\" ").arg(path("hosts.txt")));
    m_window->setConfigString(document);
    m_window->setIsRunning(true, QStringList{QStringLiteral("a_2")});
    const QImage before = m_window->getTree()->getNodeItems().at(2)->icon(0).pixmap(32, 32).toImage();

    m_window->saveConfig(path("cfg.zhpc"));

    const std::vector<zoHPCTreeItem*> nodes = m_window->getTree()->getNodeItems();
    QCOMPARE(m_window->getTree()->getNodeNames(), (QStringList{"a", "b", "a", "c"}));
    QVERIFY(nodes.at(2)->isDisplayNode());
    QVERIFY(!nodes.at(0)->isDisplayNode());
    QCOMPARE(nodes.at(2)->uniqueHostName(), QStringLiteral("a 2"));
    QCOMPARE(nodes.at(2)->icon(0).pixmap(32, 32).toImage(), before);
}

void tst_zoHPCGUIW::saveThatCannotOpenItsFileReadsNoHostsFile()
{
    write(path("hosts"), "{ n1 n2 }");
    m_window->getTree()->setHostFile(path("hosts"));
    m_window->saveConfig(path("a.zhpc"));
    const QStringList names = m_window->getTree()->getNodeNames();
    write(path("hosts"), "{ n3 }");

    m_window->saveConfig(path("none/a.zhpc"));
    QCOMPARE(m_window->getTree()->getNodeNames(), names);
    QCOMPARE(m_window->windowFilePath(), path("a.zhpc"));

    m_window->saveConfig(path("a.zhpc"));
    QCOMPARE(m_window->getTree()->getNodeNames(), QStringList{QStringLiteral("n3")});
}

void tst_zoHPCGUIW::editConfigShowsTheTextAndAppliesItUnchanged()
{
    m_window->setConfigString(QLatin1String(s_document));
    QString title;
    QString shown;
    bool fileRowVisible = true;
    const zoDialogRobot robot([&](QDialog* dialog) {
        title = dialog->windowTitle();
        auto* edit = dialog->findChild<QPlainTextEdit*>(QStringLiteral("m_textEdit"));
        shown = edit->toPlainText();
        fileRowVisible = dialog->findChild<QLineEdit*>(QStringLiteral("m_serversFile"))->isVisible();
        edit->setPlainText(QStringLiteral("<cluster/>"));
        dialog->accept();
    });

    m_window->editConfig();

    QCOMPARE(title, QStringLiteral("Edit configuration..."));
    QCOMPARE(shown, QLatin1String(s_document));
    QVERIFY(!fileRowVisible);
    QCOMPARE(m_window->getConfigString(), QLatin1String(s_document));
}

void tst_zoHPCGUIW::editConfigCancelledChangesNothing()
{
    m_window->setConfigString(QLatin1String(s_document));
    const QSignalSpy loaded(m_window->getTree(), SIGNAL(hostsChanged()));
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    m_window->editConfig();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(loaded.count(), 0);
}

void tst_zoHPCGUIW::importLegacyLoadsTheConvertedText()
{
    write(path("old.xml"), "<config><key name=\"zoClusterProjectionType\">Powerwall</key>"
                           "<key name=\"zoClusterPWServers\">a b</key></config>");
    QString title;
    QStringList filters;
    const zoDialogRobot robot([&](QDialog* dialog) {
        title = dialog->windowTitle();
        filters = qobject_cast<QFileDialog*>(dialog)->nameFilters();
        choose(dialog, path("old.xml"));
    });

    action("Import legacy...")->trigger();

    QCOMPARE(title, QStringLiteral("Load Legacy Configuration"));
    QCOMPARE(filters, QStringList{QStringLiteral("Legacy Config (*.xml)")});
    QCOMPARE(m_window->getTree()->getNodeNames(), (QStringList{"a", "b"}));
    QVERIFY(m_window->getTree()->getNodeItems().front()->isDisplayNode());
    QCOMPARE(m_window->findChild<QStatusBar*>()->currentMessage(), QString());
}

void tst_zoHPCGUIW::importedDocumentIsNotSaved()
{
    m_window->setDefaultConfig();
    write(path("old.xml"), "<config><key name=\"zoClusterPWServers\">a b</key></config>");
    const zoDialogRobot robot([this](QDialog* dialog) { choose(dialog, path("old.xml")); });

    action("Import legacy...")->trigger();

    QVERIFY(m_window->windowFilePath().isEmpty());
    QVERIFY(m_window->differs());
    QTRY_VERIFY(m_window->isWindowModified());
}

void tst_zoHPCGUIW::loadingAnotherFileSaysSoInTheStatusBar_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("configuration") << QByteArray(s_document) << false;
    QTest::newRow("no-displays") << QByteArray("<cluster><master/></cluster>") << false;
    QTest::newRow("displays-only") << QByteArray("<cluster><display/></cluster>") << false;
    QTest::newRow("legacy") << QByteArray("<config><key name=\"a\">b</key></config>") << true;
    QTest::newRow("nothing") << QByteArray() << true;
}

void tst_zoHPCGUIW::loadingAnotherFileSaysSoInTheStatusBar()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isTold);
    write(path("other.xml"), content);
    m_window->findChild<QStatusBar*>()->showMessage(QStringLiteral("of the file before"));

    m_window->loadConfig(path("other.xml"));

    QCOMPARE(m_window->findChild<QStatusBar*>()->currentMessage(),
             isTold ? path("other.xml") + QStringLiteral(" holds no cluster configuration.") : QString());
}

void tst_zoHPCGUIW::importLegacyOfAnotherFileSaysSoInTheStatusBar()
{
    write(path("other.xml"), "<html><body/></html>");
    const zoDialogRobot robot([this](QDialog* dialog) { choose(dialog, path("other.xml")); });

    action("Import legacy...")->trigger();

    QCOMPARE(m_window->findChild<QStatusBar*>()->currentMessage(),
             path("other.xml") + QStringLiteral(" holds no parameters of a legacy configuration."));
    QVERIFY(m_window->getTree()->getNodeNames().isEmpty());
}

void tst_zoHPCGUIW::importLegacyOfAMissingFileIsAnEmptyCluster()
{
    m_window->setConfigString(QLatin1String(s_document));
    const zoDialogRobot robot([this](QDialog* dialog) {
        // Gone between choosing and opening.
        const QString fileName = path("gone.xml");
        write(fileName, "x");
        QObject::connect(dialog, &QDialog::accepted, [fileName] { QFile::remove(fileName); });
        choose(dialog, fileName);
    });

    action("Import legacy...")->trigger();

    QVERIFY(m_window->getTree()->getNodeNames().isEmpty());
}

void tst_zoHPCGUIW::deepHostsTextIsSavedAndLoaded()
{
    QString text;
    for (int i = 0; i < 5000; ++i)
        text += QStringLiteral("{ n%1 ").arg(i);
    m_window->getTree()->setHostString(text);
    m_window->show();
    QCOMPARE(int(m_window->getTree()->getNodeItems().size()), 5000);

    m_window->saveConfig(path("deep.zhpc"));
    action("New")->trigger();
    m_window->loadConfig(path("deep.zhpc"));

    QCOMPARE(int(m_window->getTree()->getNodeItems().size()), 5000);
    QCOMPARE(m_window->getConfigString().toUtf8(), contentOf(path("deep.zhpc")));
}

void tst_zoHPCGUIW::deepestDocumentIsReadAsAWhole()
{
    const int pairs = (zoHPCDocumentText::maximumDepth() - 2) / 2; // below the root and the master

    m_window->setConfigString(QStringLiteral("<cluster><master>") +
                              QStringLiteral("<network><node name=\"n\">").repeated(pairs) +
                              QStringLiteral("</node></network>").repeated(pairs) +
                              QStringLiteral("</master><display user=\"2\"/></cluster>"));

    QCOMPARE(m_window->getTree()->getNodeNames().size(), pairs);
    QVERIFY(m_window->getConfigString().contains(QStringLiteral("<display")));
}

void tst_zoHPCGUIW::documentTooDeepForTheTreeIsRefusedAsAWhole()
{
    m_window->setConfigString(QLatin1String(s_document));
    const int pairs = zoHPCDocumentText::maximumDepth() / 2 + 1;
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("more than \\d+ elements are nested")));

    m_window->setConfigString(QStringLiteral("<cluster><master>") +
                              QStringLiteral("<network><node name=\"n\">").repeated(pairs) +
                              QStringLiteral("</node></network>").repeated(pairs) +
                              QStringLiteral("</master><display user=\"2\"/></cluster>"));

    QVERIFY(m_window->getTree()->getNodeNames().isEmpty());
    QVERIFY(!m_window->getConfigString().contains(QStringLiteral("<display")));
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

void tst_zoHPCGUIW::filePathFollowsTheFile()
{
    write(path("a.zhpc"), s_document);
    const zoDocumentSpy spy(m_window.get());
    QCOMPARE(m_window->windowFilePath(), QString());

    m_window->loadConfig(path("a.zhpc"));
    QCOMPARE(m_window->windowFilePath(), path("a.zhpc"));
    QCOMPARE(spy.titles, 1);
    m_window->saveConfig(path("b"));
    QCOMPARE(m_window->windowFilePath(), path("b.zhpc"));
    QCOMPARE(spy.titles, 2);
    m_window->saveConfig();
    QCOMPARE(spy.titles, 2);
    m_window->setDefaultConfig();
    QCOMPARE(m_window->windowFilePath(), QString());
    QCOMPARE(spy.titles, 3);

    QCOMPARE(m_window->windowTitle(), QStringLiteral("HPC Cluster"));
}

void tst_zoHPCGUIW::statusBarNamesTheFile()
{
    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    QCOMPARE(file->text(), QStringLiteral("Not saved"));

    m_window->saveConfig(path("wall.zhpc"));

    QCOMPARE(file->text(), QStringLiteral("wall.zhpc"));
    QCOMPARE(file->toolTip(), QDir::toNativeSeparators(path("wall.zhpc")));

    m_window->setDefaultConfig();

    QCOMPARE(file->text(), QStringLiteral("Not saved"));
}

void tst_zoHPCGUIW::changeShowsInTheStatusBar_data()
{
    QTest::addColumn<int>("row"); // 0 master, 1 network, 2 node, 3 the display setup
    QTest::addColumn<QString>("widget");

    QTest::newRow("combo-of-the-master") << 0 << "m_imageCompression";
    QTest::newRow("option-that-is-never-announced") << 0 << "m_homogeneousCluster";
    QTest::newRow("combo-of-a-network") << 1 << "m_networkSpeedSelection";
    QTest::newRow("service-port") << 1 << "m_servicePort";
    QTest::newRow("description") << 1 << "m_networkDescription";
    QTest::newRow("node-enabled") << 2 << "m_hostEnabled";
    QTest::newRow("node-name") << 2 << "m_hostName";
    QTest::newRow("window-in-the-display-setup") << 3 << "";
}

void tst_zoHPCGUIW::changeShowsInTheStatusBar()
{
    QFETCH(int, row);
    QFETCH(QString, widget);
    m_window->setConfigString(QLatin1String(s_document));
    m_window->saveConfig(path("a.zhpc"));
    zoHPCTreeGUIW* tree = m_window->getTree();
    tree->setSelectedItem(row == 2   ? tree->getNodeItems().front()
                          : row == 1 ? tree->findNetworkByIndex(1)
                                     : tree->master());
    QVERIFY(!m_window->isWindowModified());
    const zoDocumentSpy spy(m_window.get());

    if (row == 3)
        m_window->getDisplayEditor()->getWindowItems().first()->setInt(zoHPCWindowItem::X, 12);
    auto* changed = m_window->getEditor()->findChild<QWidget*>(widget);
    if (auto* combo = qobject_cast<QComboBox*>(changed))
        combo->setCurrentIndex(2);
    else if (auto* port = qobject_cast<QSpinBox*>(changed))
        port->setValue(1234);
    else if (auto* box = qobject_cast<QCheckBox*>(changed))
        box->toggle();
    else if (auto* line = qobject_cast<QLineEdit*>(changed))
        line->setText(QStringLiteral("other"));

    // Known at once to who asks, shown once the changes are over.
    QVERIFY(m_window->property("differs").toBool());
    QVERIFY(!m_window->isWindowModified());
    QTRY_VERIFY(m_window->isWindowModified());
    QCOMPARE(spy.marks, 1);
    QCOMPARE(spy.titles, 0);
    QCOMPARE(status<QLabel>("m_changedStatus")->text(), QStringLiteral("changed"));
    QVERIFY(!status<QLabel>("m_changedStatus")->isHidden());
}

void tst_zoHPCGUIW::changeThatIsUndoneByHandIsNone()
{
    m_window->setConfigString(QLatin1String(s_document));
    m_window->saveConfig(path("a.zhpc"));
    zoHPCTreeItem* node = m_window->getTree()->getNodeItems().front();
    m_window->getTree()->setSelectedItem(node);
    auto* name = m_window->getEditor()->findChild<QLineEdit*>(QStringLiteral("m_hostName"));

    name->setText(QStringLiteral("ab"));
    QTRY_VERIFY(m_window->isWindowModified());
    name->setText(QStringLiteral("a"));

    QVERIFY(!m_window->differs());
    QTRY_VERIFY(!m_window->isWindowModified());
    QVERIFY(status<QLabel>("m_changedStatus")->isHidden());
}

void tst_zoHPCGUIW::savedDocumentDoesNotDiffer()
{
    // A file in another order of words than the window writes is no change.
    QByteArray other(s_document);
    other.replace("eyeseparation=\"65\" user=\"1\"", "user=\"1\"  eyeseparation=\"65\"");
    write(path("a.zhpc"), other);
    m_window->loadConfig(path("a.zhpc"));
    QVERIFY(!m_window->differs());

    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QVERIFY(m_window->differs());
    m_window->saveConfig();
    QVERIFY(!m_window->differs());
    QVERIFY(!m_window->isWindowModified());

    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("d"));
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->setDefaultConfig();
    QVERIFY(!m_window->differs());
    QVERIFY(!m_window->isWindowModified());

    // What cannot be written is not saved.
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("e"));
    m_window->saveConfig(path("missing/folder/a.zhpc"));
    QVERIFY(m_window->differs());
}

void tst_zoHPCGUIW::documentBroughtInDiffersFromTheOpenFile()
{
    m_window->replaceConfigString(QLatin1String(s_document));
    QVERIFY(!m_window->differs()); // in no file, and nobody changed it

    m_window->saveConfig(path("a.zhpc"));
    m_window->replaceConfigString(
        QString(QLatin1String(s_document)).replace(QLatin1String("\"b\""), QLatin1String("\"c\"")));

    QCOMPARE(m_window->windowFilePath(), path("a.zhpc"));
    QVERIFY(m_window->differs());
}

void tst_zoHPCGUIW::sameDocumentComingAgainSavesNothing()
{
    m_window->replaceConfigString(QLatin1String(s_document));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));

    // As a service does that tells what it was given at the start of a session.
    m_window->replaceConfigString(m_window->getConfigString());

    QVERIFY(m_window->differs());
}

void tst_zoHPCGUIW::askingReadsNoHostsFile()
{
    write(path("hosts"), "{ n1 n2 }");
    m_window->getTree()->setHostFile(path("hosts"));
    m_window->saveConfig(path("a.zhpc"));
    QVERIFY(!m_window->differs());

    write(path("hosts"), "{ n3 }");

    QVERIFY(!m_window->differs());
    QCOMPARE(m_window->getTree()->getNodeNames(), (QStringList{QStringLiteral("n1"), QStringLiteral("n2")}));

    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("n7"));
    const zoDocumentSpy spy(m_window.get());
    m_window->setDefaultConfig();
    QCOMPARE(spy.replaced.size(), 1);
    QVERIFY2(spy.replaced.first().contains(QStringLiteral("n7")), qPrintable(spy.replaced.first()));
}

void tst_zoHPCGUIW::windowAloneShowsThatItWasChanged()
{
    // Qt would warn, which fails the test, that there is no "[*]" in the title.
    m_window->show();
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    QVERIFY(status<QLabel>("m_changedStatus")->isVisible());

    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->show();
    QVERIFY(m_window->isWindowModified());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("HPC Cluster"));
}

void tst_zoHPCGUIW::statusBarCounts()
{
    m_window->replaceConfigString(QLatin1String(s_document));

    QTRY_COMPARE(status<QLabel>("m_nodesStatus")->text(), QStringLiteral("3 nodes"));
    QCOMPARE(status<QLabel>("m_displaysStatus")->text(), QStringLiteral("1 display"));
    // Two nodes called "a", and a window without a viewport is none.
    const auto* problems = status<QToolButton>("m_problemsStatus");
    QCOMPARE(problems->text(), QStringLiteral("1 problem"));
    QVERIFY(!problems->icon().isNull());
    QVERIFY2(problems->toolTip().contains(QStringLiteral("a")), qPrintable(problems->toolTip()));

    m_window->getTree()->getNodeItems().back()->setHostName(QStringLiteral("c"));
    m_window->getDisplayEditor()->getWindowItems().first()->setRenderNode(QStringLiteral("c"));
    QTRY_COMPARE(problems->text(), QStringLiteral("No problems"));
    QVERIFY(problems->icon().isNull());

    m_window->getTree()->setSelectedItem(m_window->getTree()->getNodeItems().back());
    action("Remove compute node")->trigger();
    QTRY_COMPARE(status<QLabel>("m_nodesStatus")->text(), QStringLiteral("2 nodes"));
}

void tst_zoHPCGUIW::problemsLeadToTheDisplaySetup()
{
    status<QToolButton>("m_problemsStatus")->click();

    QVERIFY(m_window->getDisplayEditor()->isVisible());
}

void tst_zoHPCGUIW::messagesStillShowBesideTheStatus()
{
    m_window->saveConfig(path("a-name-as-long-as-people-give-them-to-be-sure-of-what-they-hold.zhpc"));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    const auto* pane = status<zoHPCStatusPane>("m_statusPane");
    const int left = pane->x();
    const int height = m_window->statusBar()->height();
    const auto widthOf = [this](const QString& message) {
        return m_window->statusBar()->fontMetrics().horizontalAdvance(message);
    };

    const QString small = QStringLiteral("A message");
    m_window->statusBar()->showMessage(small);
    QTRY_VERIFY(pane->x() > widthOf(small));
    QVERIFY(pane->isVisible() && file->isVisible());
    QVERIFY(status<QLabel>("m_nodesStatus")->isVisible());

    const QString large = QStringLiteral("A message that needs nearly all of this window's width for itself");
    m_window->statusBar()->showMessage(large);
    QTRY_VERIFY(pane->x() > widthOf(large));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    QTRY_VERIFY(pane->x() > widthOf(large));
    QCOMPARE(m_window->statusBar()->height(), height);

    m_window->statusBar()->clearMessage();
    QTRY_VERIFY(pane->x() <= left);
    QVERIFY(file->isVisible());
    QVERIFY(status<QLabel>("m_changedStatus")->isVisible());
    QVERIFY(status<QLabel>("m_nodesStatus")->isVisible());
}

void tst_zoHPCGUIW::fileNameGetsItsRoom()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));

    m_window->saveConfig(path("tiledwall-3x5-gateway.zhpc"));

    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    QCOMPARE(file->shownText(), QStringLiteral("tiledwall-3x5-gateway.zhpc"));
    QCOMPARE(file->width(), file->sizeHint().width());
}

void tst_zoHPCGUIW::narrowWindowShortensTheFileNameOnly()
{
    m_window->setConfigString(QLatin1String(s_document));
    m_window->saveConfig(path("a-name-as-long-as-people-give-them-to-be-sure-of-what-they-hold.zhpc"));
    m_window->getTree()->getNodeItems().front()->setHostName(QStringLiteral("c"));
    QTRY_VERIFY(m_window->isWindowModified());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));

    m_window->resize(m_window->minimumSizeHint());

    const auto* file = status<zoHPCElidedLabel>("m_fileStatus");
    QTRY_COMPARE(m_window->width(), m_window->minimumSizeHint().width());
    QVERIFY(file->shownText() != file->text());
    QVERIFY(file->shownText().size() > 3);
    for (const char* name : {"m_changedStatus", "m_nodesStatus", "m_displaysStatus", "m_problemsStatus"}) {
        const auto* part = status<QWidget>(name);
        QVERIFY2(part->isVisible() && part->width() >= part->sizeHint().width(), name);
    }
}

void tst_zoHPCGUIW::replacedDocumentIsAnnounced_data()
{
    QTest::addColumn<QString>("way");

    for (const char* way : {"new", "load", "import", "service"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void tst_zoHPCGUIW::replacedDocumentIsAnnounced()
{
    QFETCH(QString, way);
    m_window->setConfigString(QLatin1String(s_document));
    write(path("other.zhpc"), QByteArray(s_document).replace("\"b\"", "\"c\""));
    write(path("old.xml"), "");
    zoDocumentSpy spy(m_window.get());
    QString nodesThen;
    spy.onReplaced = [this, &nodesThen] {
        nodesThen = m_window->getTree()->getNodeNames().join(QLatin1Char(' '));
    };

    if (way == QLatin1String("new"))
        m_window->setDefaultConfig();
    else if (way == QLatin1String("load"))
        m_window->loadConfig(path("other.zhpc"));
    else if (way == QLatin1String("service"))
        m_window->replaceConfigString(QString::fromUtf8(contentOf(path("other.zhpc"))));
    else {
        const zoDialogRobot robot([this](QDialog* dialog) { choose(dialog, path("old.xml")); });
        m_window->importLegacy();
    }

    QCOMPARE(spy.replaced, QStringList{QLatin1String(s_document)});
    QCOMPARE(nodesThen, QStringLiteral("a b a")); // before it goes
    QVERIFY(!m_window->dynamicPropertyNames().contains("replacedConfiguration"));
    QVERIFY(m_window->getConfigString() != QLatin1String(s_document));
}

void tst_zoHPCGUIW::nothingIsAnnouncedWhenNothingGetsLost_data()
{
    QTest::addColumn<QString>("before"); // empty for the window as it is built
    QTest::addColumn<QString>("next");   // text, or "new", or a file that is missing

    const QString document = QString::fromLatin1(s_document);
    QTest::newRow("first-document") << QString() << document;
    QTest::newRow("empty-document") << "<cluster/>" << document;
    QTest::newRow("same-document") << document << document;
    QTest::newRow("new-twice") << "new"
                               << "new";
    QTest::newRow("load-that-fails") << document << "missing";
}

void tst_zoHPCGUIW::nothingIsAnnouncedWhenNothingGetsLost()
{
    QFETCH(QString, before);
    QFETCH(QString, next);
    if (before == QLatin1String("new"))
        m_window->setDefaultConfig();
    else if (!before.isEmpty())
        m_window->setConfigString(before);
    const zoDocumentSpy spy(m_window.get());

    if (next == QLatin1String("missing")) {
        expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Unable to load")));
        m_window->loadConfig(path("missing.zhpc"));
    } else if (next == QLatin1String("new")) {
        m_window->setDefaultConfig();
    } else {
        m_window->replaceConfigString(next);
    }

    QCOMPARE(spy.replaced, QStringList());
}

void tst_zoHPCGUIW::hashSeedDoesNotChangeTheBytes_data()
{
    QTest::addColumn<QString>("seed");

    QTest::newRow("seed-0") << "0";
    QTest::newRow("seed-1") << "1";
    QTest::newRow("seed-42") << "42";
}

void tst_zoHPCGUIW::hashSeedDoesNotChangeTheBytes()
{
    QFETCH(QString, seed);
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_HASH_SEED"), seed);
    other.setProcessEnvironment(environment);

    other.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--save-sample"), path("sample.zhpc")});
    QVERIFY(other.waitForFinished());

    QCOMPARE(other.exitCode(), 0);
    QCOMPARE(contentOf(path("sample.zhpc")), QByteArray(s_document));
}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--save-sample") == 0) {
        zoFakeHost host;
        zoHPCGUIW window(nullptr, QStringLiteral("Module"));
        window.setConfigString(QLatin1String(s_document));
        window.saveConfig(QFile::decodeName(argv[2]));
        return 0;
    }
    tst_zoHPCGUIW test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoHPCGUIW.moc"
