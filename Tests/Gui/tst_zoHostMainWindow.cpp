#include "zoDialogRobot.h"
#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostDocument.h>
#include <zoHostLogPanel.h>
#include <zoHostMainWindow.h>
#include <zoHostMainWindowService.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

#include <memory>

namespace
{
// A module object with slots that hosts look for.
class ModuleObject final : public QObject
{
    Q_OBJECT

public slots:
    void startCluster() {}
};
} // namespace

// The host's window and its service.
class tst_zoHostMainWindow final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void titleAndIconAreSet();
    void moduleIsListedUnderItsCategory();
    void categoriesAreSharedByTheirModules();
    void windowBecomesAPageOwnedByTheHost();
    void firstModuleIsShownAndOthersOnDemand();
    void showOfAPageBringsItForward();
    void destroyedWindowLeavesTheList();
    void lastDestroyedWindowTakesItsCategoryAlong();
    void nameRegisteredTwiceIsReplaced();
    void nullWindowIsIgnored();
    void textsAreCopied();
    void hostSurvivesDestructionInEveryOrder();

    void toolTipKeyIsResolved();
    void toolTipSetLaterIsResolvedToo();
    void otherToolTipsStandForThemselves();

    void moduleObjectIsTheParentOfItsAction();
    void serviceAnswersNullWithoutAWindow();
    void preferencesOpenOnceAndAgain();
    void closingIsAnnounced();
    void docksCanBeHiddenAndShown();

    void titleShowsFileAndMark();
    void titleOfAConfigurationWithoutAFile();
    void titleFollowsTheCurrentModule();
    void titleOfAPageWithADocumentOfItsOwn_data();
    void titleOfAPageWithADocumentOfItsOwn();
    void placeHolderInANameIsShown();

    void recentFileIsOpened();
    void missingRecentFileMayBeRemoved();
    void missingRecentFileMayBeKept();
    void whatIsReplacedUnsavedIsTold();
    void nothingIsOpenedWhileASessionRuns();

    void configurationIsDropped();
    void dropOverAChildIsTaken();
    void otherDragsAreRefused_data();
    void otherDragsAreRefused();
    void dragThatOnlyMovesIsRefused();
    void nothingIsDroppedWhileASessionRuns();
    void nothingIsDroppedWhileADialogAsks();

    void savedWorkIsNotAskedAbout();
    void unsavedWorkIsSaved();
    void unsavedWorkIsDiscarded();
    void cancelKeepsTheHostOpen();
    void saveGivenUpKeepsTheHostOpen();
    void saveThatFailsIsToldAndKeepsTheHostOpen();
    void saveThatFailsMayGoElsewhere();
    void scriptIsNotAsked();

    void earlierConfigurationIsBroughtBack();
    void nothingIsBroughtBackWhileASessionRuns();

    void placeAndDocksAreRemembered();
    void hostThatIsToldToEndRemembersToo();
    void placeOnAMissingScreenIsMoved();
    void scriptHasTheStandardPlace();

private:
    QWidget* addModule(const QString& name, const QString& category);
    zoFakeModuleWindow* addFakeModule();
    void restart();
    Qt::DropAction drag(QWidget* target, const QMimeData& data, Qt::DropActions actions = Qt::CopyAction);
    Qt::DropAction drop(QWidget* target, const QMimeData& data);
    static std::unique_ptr<QMimeData> files(const QStringList& names);
    QString title() const { return m_window->windowHandle()->title(); }
    bool closeAnswering(QMessageBox::StandardButton answer);
    QTreeWidget* list() const { return m_window->findChild<QTreeWidget*>("ModuleList"); }

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoFakeModule> m_module;
    std::unique_ptr<zoHostMainWindow> m_window;
};

void tst_zoHostMainWindow::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_window = std::make_unique<zoHostMainWindow>(m_parts->services());
}

void tst_zoHostMainWindow::cleanup()
{
    // A drag that a test leaves open: the application would send the next drop to a window that is gone.
    QDragLeaveEvent leave;
    QWidget anyWindow;
    QCoreApplication::sendEvent(&anyWindow, &leave);
    m_window.reset();
    m_module.reset();
    m_parts.reset();
    zoTestCase::cleanup();
}

QWidget* tst_zoHostMainWindow::addModule(const QString& name, const QString& category)
{
    auto* window = new QMainWindow(m_window.get());
    window->setObjectName(name);
    m_window->addModule(name, category, window, QString(), QIcon(), name + QStringLiteral(" title"));
    return window;
}

void tst_zoHostMainWindow::titleAndIconAreSet()
{
    QCOMPARE(m_window->windowTitle(), QStringLiteral("zohost"));
    QVERIFY(!m_window->windowIcon().pixmap(32, 32).isNull());
}

void tst_zoHostMainWindow::moduleIsListedUnderItsCategory()
{
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    m_window->addModule("Cluster", "Rendering", new QMainWindow(m_window.get()), "Tipreel_Cluster",
                        QIcon(pixmap), "The cluster");

    QCOMPARE(list()->topLevelItemCount(), 1);
    QTreeWidgetItem* category = list()->topLevelItem(0);
    QCOMPARE(category->text(0), QStringLiteral("Rendering"));
    QVERIFY(category->isExpanded());
    QCOMPARE(category->childCount(), 1);
    QCOMPARE(category->child(0)->text(0), QStringLiteral("The cluster"));
    QCOMPARE(category->child(0)->toolTip(0), zoHostMainWindow::resolvedToolTip("Tipreel_Cluster"));
    QVERIFY(!category->child(0)->icon(0).isNull());
}

void tst_zoHostMainWindow::categoriesAreSharedByTheirModules()
{
    addModule("a", "Rendering");
    addModule("b", "Input");
    addModule("c", "Rendering");

    QCOMPARE(list()->topLevelItemCount(), 2);
    QCOMPARE(list()->topLevelItem(0)->childCount(), 2);
    QCOMPARE(list()->topLevelItem(1)->childCount(), 1);
}

void tst_zoHostMainWindow::windowBecomesAPageOwnedByTheHost()
{
    QPointer<QWidget> window = addModule("a", "Rendering");
    m_window->show();

    QVERIFY(m_window->isAncestorOf(window));
    QVERIFY(!window->isWindow());
    QVERIFY(window->isVisible());

    m_window.reset();

    QVERIFY(window.isNull());
}

void tst_zoHostMainWindow::firstModuleIsShownAndOthersOnDemand()
{
    QWidget* first = addModule("a", "Rendering");
    QWidget* second = addModule("b", "Input");
    m_window->show();
    QVERIFY(first->isVisible());
    QVERIFY(!second->isVisible());
    QCOMPARE(list()->currentItem(), list()->topLevelItem(0)->child(0));

    list()->setCurrentItem(list()->topLevelItem(1)->child(0));

    QVERIFY(!first->isVisible());
    QVERIFY(second->isVisible());
}

void tst_zoHostMainWindow::showOfAPageBringsItForward()
{
    QWidget* first = addModule("a", "Rendering");
    QWidget* second = addModule("b", "Rendering");
    m_window->show();

    second->show();

    QVERIFY(second->isVisible());
    QVERIFY(!first->isVisible());
    QCOMPARE(list()->currentItem(), list()->topLevelItem(0)->child(1));
}

void tst_zoHostMainWindow::destroyedWindowLeavesTheList()
{
    QWidget* first = addModule("a", "Rendering");
    QWidget* second = addModule("b", "Rendering");
    m_window->show();

    delete first;

    QCOMPARE(m_window->moduleWindows(), QList<QWidget*>({second}));
    QCOMPARE(list()->topLevelItem(0)->childCount(), 1);
    QVERIFY(second->isVisible());
}

void tst_zoHostMainWindow::lastDestroyedWindowTakesItsCategoryAlong()
{
    QWidget* window = addModule("a", "Rendering");
    m_window->show();

    window->setAttribute(Qt::WA_DeleteOnClose);
    window->close();

    QTRY_COMPARE(list()->topLevelItemCount(), 0);
    QCOMPARE(m_window->moduleWindows(), QList<QWidget*>());
    // The page that says so is there again.
    QVERIFY(m_window->findChild<QStackedWidget*>()->currentWidget() != nullptr);
}

void tst_zoHostMainWindow::nameRegisteredTwiceIsReplaced()
{
    addModule("a", "Rendering");
    QWidget* second = addModule("a", "Input");

    QCOMPARE(m_window->moduleWindows(), QList<QWidget*>({second}));
    QCOMPARE(list()->topLevelItemCount(), 1);
    QCOMPARE(list()->topLevelItem(0)->text(0), QStringLiteral("Input"));
}

void tst_zoHostMainWindow::nullWindowIsIgnored()
{
    m_window->addModule("a", "Rendering", nullptr, QString(), QIcon(), "A");

    QCOMPARE(list()->topLevelItemCount(), 0);
}

void tst_zoHostMainWindow::textsAreCopied()
{
    QString category = "Rendering";
    QString title = "Cluster";
    QString key = "Some key";

    // As texts of a module that is unloaded later.
    m_window->addModule("a", QString::fromRawData(category.constData(), category.size()),
                        new QMainWindow(m_window.get()), QString::fromRawData(key.constData(), key.size()),
                        QIcon(), QString::fromRawData(title.constData(), title.size()));
    category.fill(QLatin1Char('x'));
    title.fill(QLatin1Char('x'));
    key.fill(QLatin1Char('x'));

    QCOMPARE(list()->topLevelItem(0)->text(0), QStringLiteral("Rendering"));
    QCOMPARE(list()->topLevelItem(0)->child(0)->text(0), QStringLiteral("Cluster"));
    QCOMPARE(list()->topLevelItem(0)->child(0)->toolTip(0), QStringLiteral("Some key"));
}

void tst_zoHostMainWindow::hostSurvivesDestructionInEveryOrder()
{
    for (int order = 0; order < 6; ++order) {
        QList<QWidget*> windows{addModule("a", "x"), addModule("b", "x"), addModule("c", "y")};
        m_window->show();
        int rest = order;
        for (int left = 3; left > 0; --left) {
            delete windows.takeAt(rest % left);
            rest /= left;
        }
        QCOMPARE(list()->topLevelItemCount(), 0);
    }
}

void tst_zoHostMainWindow::toolTipKeyIsResolved()
{
    QAction action("Cluster");
    action.setToolTip("Tipreel_Cluster");

    m_window->moduleToolBar()->addAction(&action);

    QVERIFY(!action.toolTip().startsWith("Tipreel"));
    QVERIFY(action.toolTip().contains("luster"));
    auto* button = qobject_cast<QToolButton*>(m_window->moduleToolBar()->widgetForAction(&action));
    QVERIFY(button != nullptr);
    QCOMPARE(button->toolTip(), action.toolTip());
}

void tst_zoHostMainWindow::toolTipSetLaterIsResolvedToo()
{
    QAction action("Cluster");
    m_window->moduleToolBar()->addAction(&action);

    action.setToolTip("Tipreel_Cluster");

    QCOMPARE(action.toolTip(), zoHostMainWindow::resolvedToolTip("Tipreel_Cluster"));
}

void tst_zoHostMainWindow::otherToolTipsStandForThemselves()
{
    QCOMPARE(zoHostMainWindow::resolvedToolTip("Opens a file"), QStringLiteral("Opens a file"));
    QCOMPARE(zoHostMainWindow::resolvedToolTip(QString()), QString());
}

void tst_zoHostMainWindow::moduleObjectIsTheParentOfItsAction()
{
    ModuleObject module;
    m_window->moduleToolBar()->addAction("stray");
    QVERIFY(m_window->moduleObject("startCluster()") == nullptr);

    m_window->moduleToolBar()->addAction(new QAction("Cluster", &module));

    QCOMPARE(m_window->moduleObject("startCluster( )"), static_cast<QObject*>(&module));
    QVERIFY(m_window->moduleObject("stopCluster()") == nullptr);
}

void tst_zoHostMainWindow::serviceAnswersNullWithoutAWindow()
{
    zoHostMainWindowService service(m_window.get());
    QCOMPARE(service.mainWindowWidget(), static_cast<QWidget*>(m_window.get()));
    QCOMPARE(service.moduleToolBar(), static_cast<QWidget*>(m_window->moduleToolBar()));
    service.registerModule("a", "Rendering", new QMainWindow(service.mainWindowWidget()), QString(), QIcon(),
                           "A", 0);
    QCOMPARE(m_window->moduleWindows().size(), 1);

    m_window.reset();

    QVERIFY(service.mainWindowWidget() == nullptr);
    QVERIFY(service.moduleToolBar() == nullptr);
    QMainWindow late;
    service.registerModule("b", "Rendering", &late, QString(), QIcon(), "B", 0);
}

void tst_zoHostMainWindow::preferencesOpenOnceAndAgain()
{
    m_window->show();

    m_window->showPreferences();
    m_window->showPreferences();

    QCOMPARE(m_window->findChildren<QDialog*>("PreferencesDialog").size(), 1);
    QVERIFY(m_window->findChild<QDialog*>("PreferencesDialog")->isVisible());
    m_window->findChild<QDialog*>("PreferencesDialog")->reject();
    QTRY_VERIFY(m_window->findChild<QDialog*>("PreferencesDialog") == nullptr);
    m_window->showPreferences();
    QVERIFY(m_window->findChild<QDialog*>("PreferencesDialog")->isVisible());
}

void tst_zoHostMainWindow::closingIsAnnounced()
{
    QSignalSpy closing(m_window.get(), &zoHostMainWindow::closing);
    m_window->show();

    m_window->close();

    QCOMPARE(closing.count(), 1);
    QVERIFY(!m_window->isVisible());
}

void tst_zoHostMainWindow::docksCanBeHiddenAndShown()
{
    m_window->show();
    for (const char* name : {"ModuleDock", "CameraDock", "LogDock"}) {
        auto* dock = m_window->findChild<QDockWidget*>(name);
        QVERIFY2(dock != nullptr && dock->isVisible(), name);

        dock->toggleViewAction()->trigger();
        QVERIFY2(!dock->isVisible(), name);
        dock->toggleViewAction()->trigger();
        QVERIFY2(dock->isVisible(), name);
    }
}

zoFakeModuleWindow* tst_zoHostMainWindow::addFakeModule()
{
    auto* window = new zoFakeModuleWindow(m_window.get());
    m_module = std::make_unique<zoFakeModule>(window);
    m_window->addModule("Fake", "Rendering", window, QString(), QIcon(), "Fake");
    m_window->moduleToolBar()->addAction(m_module->toggleAction());
    m_window->show();
    return window;
}

// As if the host had been ended and started again.
void tst_zoHostMainWindow::restart()
{
    m_window.reset();
    m_window = std::make_unique<zoHostMainWindow>(m_parts->services());
}

// What a drop would do.
Qt::DropAction tst_zoHostMainWindow::drag(QWidget* target, const QMimeData& data, Qt::DropActions actions)
{
    QDragEnterEvent event(QPoint(5, 5), actions, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction tst_zoHostMainWindow::drop(QWidget* target, const QMimeData& data)
{
    QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

std::unique_ptr<QMimeData> tst_zoHostMainWindow::files(const QStringList& names)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString& name : names)
        urls << QUrl::fromLocalFile(name);
    data->setUrls(urls);
    return data;
}

// Whether the host closed; fails the test when it did not ask.
bool tst_zoHostMainWindow::closeAnswering(QMessageBox::StandardButton answer)
{
    const zoDialogRobot robot([answer](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        QVERIFY(box != nullptr);
        box->button(answer)->click();
    });
    const bool closed = m_window->close();
    QTest::qVerify(robot.handled() == 1, "robot.handled() == 1", "asked once", __FILE__, __LINE__);
    return closed;
}

void tst_zoHostMainWindow::titleShowsFileAndMark()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->loadConfig(m_parts->writeFile("wall.zhpc", "a"));
    QCOMPARE(title(), QStringLiteral("wall.zhpc - zohost"));

    module->edit("b");
    QCOMPARE(title(), QStringLiteral("wall.zhpc* - zohost"));
    QVERIFY(m_window->isWindowModified());

    module->saveConfig();
    QCOMPARE(title(), QStringLiteral("wall.zhpc - zohost"));
    QVERIFY(!m_window->isWindowModified());
}

void tst_zoHostMainWindow::titleOfAConfigurationWithoutAFile()
{
    zoFakeModuleWindow* module = addFakeModule();
    QCOMPARE(title(), QStringLiteral("zohost"));

    module->edit("b");
    QCOMPARE(title(), QStringLiteral("Untitled* - zohost"));

    module->setDefaultConfig();
    QCOMPARE(title(), QStringLiteral("zohost"));
}

void tst_zoHostMainWindow::titleFollowsTheCurrentModule()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->loadConfig(m_parts->writeFile("wall.zhpc", "a"));
    module->edit("b");
    QWidget* other = addModule("b", "Rendering");

    other->show();
    QCOMPARE(title(), QStringLiteral("zohost"));

    module->show();
    QCOMPARE(title(), QStringLiteral("wall.zhpc* - zohost"));

    delete module;
    QCOMPARE(title(), QStringLiteral("zohost"));
}

void tst_zoHostMainWindow::titleOfAPageWithADocumentOfItsOwn_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isModified");
    QTest::addColumn<QString>("expected");

    QTest::newRow("saved-file") << "/a/notes.txt" << false << "notes.txt - zohost";
    QTest::newRow("changed-file") << "/a/notes.txt" << true << "notes.txt* - zohost";
    QTest::newRow("changed-without-a-file") << "" << true << "Untitled* - zohost";
    QTest::newRow("none-of-its-own") << "" << false << "wall.zhpc - zohost";
}

void tst_zoHostMainWindow::titleOfAPageWithADocumentOfItsOwn()
{
    QFETCH(QString, file);
    QFETCH(bool, isModified);
    addFakeModule()->loadConfig(m_parts->writeFile("wall.zhpc", "a"));
    auto* page = new QWidget(m_window.get());
    m_window->addModule("b", "Rendering", page, QString(), QIcon(), "b title");
    page->setWindowFilePath(file);
    page->setWindowModified(isModified);

    page->show();

    QTEST(title(), "expected");
}

void tst_zoHostMainWindow::placeHolderInANameIsShown()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->loadConfig(m_parts->writeFile("a[*].zhpc", "a"));
    QCOMPARE(title(), QStringLiteral("a[*].zhpc - zohost"));

    module->edit("b");

    QCOMPARE(title(), QStringLiteral("a[*].zhpc* - zohost"));
}

void tst_zoHostMainWindow::recentFileIsOpened()
{
    zoFakeModuleWindow* module = addFakeModule();
    const QString file = m_parts->writeFile("wall.zhpc", "a");
    m_parts->recent.add(file);

    m_window->findChild<QMenu*>("RecentMenu")->actions().constFirst()->trigger();

    QTRY_COMPARE(module->windowFilePath(), file);
    QCOMPARE(m_module->loaded, QStringList(file));
}

void tst_zoHostMainWindow::missingRecentFileMayBeRemoved()
{
    addFakeModule();
    m_parts->recent.add(m_parts->filePath("gone.zhpc"));
    expectMessage(QtCriticalMsg, QRegularExpression("gone.zhpc is not there any more"));
    const zoDialogRobot robot([](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        QVERIFY(box != nullptr && box->text().contains("gone.zhpc"));
        for (QAbstractButton* button : box->buttons()) {
            if (box->buttonRole(button) == QMessageBox::AcceptRole)
                button->click();
        }
    });

    m_window->openConfiguration(m_parts->filePath("gone.zhpc"));

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(m_parts->recent.files(), QStringList());
    QCOMPARE(m_module->loaded, QStringList());
}

void tst_zoHostMainWindow::missingRecentFileMayBeKept()
{
    addFakeModule();
    m_parts->recent.add(m_parts->filePath("away.zhpc"));
    expectMessage(QtCriticalMsg, QRegularExpression("away.zhpc is not there any more"));
    const zoDialogRobot robot([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });

    m_window->openConfiguration(m_parts->filePath("away.zhpc"));

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(m_parts->recent.files(), QStringList(m_parts->filePath("away.zhpc")));
}

void tst_zoHostMainWindow::whatIsReplacedUnsavedIsTold()
{
    zoFakeModuleWindow* module = addFakeModule();
    const QString file = m_parts->writeFile("wall.zhpc", "a");
    m_window->openConfiguration(file);
    QCOMPARE(m_window->statusBar()->currentMessage(), QString());
    module->edit("work");

    m_window->openConfiguration(file);

    QVERIFY(m_window->statusBar()->currentMessage().contains("Earlier"));
}

void tst_zoHostMainWindow::nothingIsOpenedWhileASessionRuns()
{
    addFakeModule();
    const QString file = m_parts->writeFile("wall.zhpc", "a");
    m_parts->recent.add(file);
    m_parts->cluster.applyConfig("<cluster><master><network><node name='n'/></network></master></cluster>");
    QVERIFY(m_parts->cluster.start());
    auto* menu = m_window->findChild<QMenu*>("RecentMenu");
    QVERIFY(!menu->actions().constFirst()->isEnabled());

    m_window->openConfiguration(file);
    QCOMPARE(m_module->loaded, QStringList());

    m_parts->cluster.stop();
    QVERIFY(menu->actions().constFirst()->isEnabled());
    m_window->openConfiguration(file);
    QCOMPARE(m_module->loaded, QStringList(file));
}

void tst_zoHostMainWindow::configurationIsDropped()
{
    addFakeModule();
    const QString file = m_parts->writeFile(QString::fromUtf8("größe.ZHPC"), "a");
    const auto data = files({file});

    // Never a move, whatever the other program would rather do: the file must stay there.
    QCOMPARE(drag(m_window.get(), *data, Qt::CopyAction | Qt::MoveAction | Qt::LinkAction), Qt::CopyAction);
    QCOMPARE(drop(m_window.get(), *data), Qt::CopyAction);

    QTRY_COMPARE(m_module->loaded, QStringList(file));
}

void tst_zoHostMainWindow::dropOverAChildIsTaken()
{
    zoFakeModuleWindow* module = addFakeModule();
    const auto data = files({m_parts->writeFile("wall.zhpc", "a")});

    QCOMPARE(drag(module, *data), Qt::CopyAction);
    QCOMPARE(drag(m_window->logPanel()->view()->viewport(), *data), Qt::CopyAction);
}

void tst_zoHostMainWindow::otherDragsAreRefused_data()
{
    QTest::addColumn<QStringList>("names");

    QTest::newRow("other-suffix") << QStringList("wall.xml");
    QTest::newRow("two-files") << QStringList({"a.zhpc", "b.zhpc"});
    QTest::newRow("missing-file") << QStringList("gone.zhpc");
    QTest::newRow("folder") << QStringList("folder.zhpc");
    QTest::newRow("nothing") << QStringList();
}

void tst_zoHostMainWindow::otherDragsAreRefused()
{
    QFETCH(QStringList, names);
    addFakeModule();
    for (const char* name : {"wall.xml", "a.zhpc", "b.zhpc"})
        m_parts->writeFile(name, "a");
    QVERIFY(QDir(m_parts->directory.path()).mkdir("folder.zhpc"));
    for (QString& name : names)
        name = m_parts->filePath(name);
    const auto data = files(names);

    QCOMPARE(drag(m_window.get(), *data), Qt::IgnoreAction);
    QCOMPARE(drop(m_window.get(), *data), Qt::IgnoreAction);

    QCoreApplication::processEvents();
    QCOMPARE(m_module->loaded, QStringList());
}

void tst_zoHostMainWindow::dragThatOnlyMovesIsRefused()
{
    addFakeModule();
    const auto data = files({m_parts->writeFile("wall.zhpc", "a")});

    QCOMPARE(drag(m_window.get(), *data, Qt::MoveAction), Qt::IgnoreAction);
}

void tst_zoHostMainWindow::nothingIsDroppedWhileASessionRuns()
{
    addFakeModule();
    const auto data = files({m_parts->writeFile("wall.zhpc", "a")});
    QCOMPARE(drag(m_window.get(), *data), Qt::CopyAction);
    m_parts->cluster.applyConfig("<cluster><master><network><node name='n'/></network></master></cluster>");
    QVERIFY(m_parts->cluster.start());

    QCOMPARE(drop(m_window.get(), *data), Qt::IgnoreAction);
    QCOMPARE(drag(m_window.get(), *data), Qt::IgnoreAction);

    QCoreApplication::processEvents();
    QCOMPARE(m_module->loaded, QStringList());
}

void tst_zoHostMainWindow::nothingIsDroppedWhileADialogAsks()
{
    addFakeModule();
    const auto data = files({m_parts->writeFile("wall.zhpc", "a")});
    m_window->showPreferences();
    QVERIFY(QApplication::activeModalWidget() != nullptr);

    QCOMPARE(drag(m_window.get(), *data), Qt::IgnoreAction);
}

void tst_zoHostMainWindow::savedWorkIsNotAskedAbout()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");
    module->nextSaveName = m_parts->filePath("b.zhpc");
    module->saveConfig();

    QVERIFY(m_window->close());
}

void tst_zoHostMainWindow::unsavedWorkIsSaved()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");
    module->nextSaveName = m_parts->filePath("b.zhpc");
    QSignalSpy closing(m_window.get(), &zoHostMainWindow::closing);

    QVERIFY(closeAnswering(QMessageBox::Save));

    QVERIFY(!m_window->document()->differs(module));
    QVERIFY(QFile::exists(m_parts->filePath("b.zhpc")));
    QCOMPARE(closing.count(), 1);
}

void tst_zoHostMainWindow::unsavedWorkIsDiscarded()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");

    QVERIFY(closeAnswering(QMessageBox::Discard));

    QCOMPARE(module->saves, 0);
}

void tst_zoHostMainWindow::cancelKeepsTheHostOpen()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");
    QSignalSpy closing(m_window.get(), &zoHostMainWindow::closing);

    QVERIFY(!closeAnswering(QMessageBox::Cancel));

    QVERIFY(m_window->isVisible());
    QCOMPARE(module->saves, 0);
    // A start that is under way goes on.
    QCOMPARE(closing.count(), 0);
}

void tst_zoHostMainWindow::saveGivenUpKeepsTheHostOpen()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");

    QVERIFY(!closeAnswering(QMessageBox::Save));

    QVERIFY(m_window->isVisible());
    QCOMPARE(module->saves, 1);
}

void tst_zoHostMainWindow::saveThatFailsIsToldAndKeepsTheHostOpen()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");
    module->nextSaveName = m_parts->filePath("missing/b.zhpc");
    QString told;
    std::unique_ptr<zoDialogRobot> second;
    const zoDialogRobot first([&](QDialog* dialog) {
        second = std::make_unique<zoDialogRobot>([&told](QDialog* failure) {
            told = qobject_cast<QMessageBox*>(failure)->informativeText();
            failure->reject();
        });
        qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Save)->click();
    });
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save .*b\\.zhpc: No such file or directory"));

    QVERIFY(!m_window->close());

    QVERIFY2(told.startsWith("No such file or directory"), qUtf8Printable(told));
    QVERIFY(m_window->isVisible());
    QCOMPARE(module->text(), QStringLiteral("b"));
    QVERIFY(m_window->document()->differs(module));
}

void tst_zoHostMainWindow::saveThatFailsMayGoElsewhere()
{
    zoFakeModuleWindow* module = addFakeModule();
    module->edit("b");
    module->nextSaveName = m_parts->filePath("missing/b.zhpc");
    std::unique_ptr<zoDialogRobot> second;
    const zoDialogRobot first([&](QDialog* dialog) {
        second = std::make_unique<zoDialogRobot>([this, module](QDialog* failure) {
            module->nextSaveName = m_parts->filePath("b.zhpc");
            const QList<QPushButton*> buttons = failure->findChildren<QPushButton*>();
            for (QPushButton* button : buttons) {
                if (button->text() == QLatin1String("Save &As..."))
                    button->click();
            }
        });
        qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Save)->click();
    });
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save .*b\\.zhpc: No such file or directory"));

    QVERIFY(m_window->close());

    QVERIFY(QFile::exists(m_parts->filePath("b.zhpc")));
}

void tst_zoHostMainWindow::scriptIsNotAsked()
{
    m_window.reset();
    m_parts = std::make_unique<zoHostParts>(true);
    m_window = std::make_unique<zoHostMainWindow>(m_parts->services());
    addFakeModule()->edit("b");

    QVERIFY(m_window->close());
}

void tst_zoHostMainWindow::earlierConfigurationIsBroughtBack()
{
    zoFakeModuleWindow* module = addFakeModule();
    connect(m_window->document(), &zoHostDocument::replaced, &m_parts->earlier,
            &zoHostEarlierConfigurations::keep);
    module->edit("<first/>"); // what is no document is not brought back
    module->loadConfig(m_parts->writeFile("wall.zhpc", "second"));

    m_window->findChild<QAction*>("EarlierConfigurations")->trigger();
    auto* dialog = m_window->findChild<QDialog*>("EarlierDialog");
    QVERIFY(dialog != nullptr && dialog->isVisible());
    QTest::mouseClick(dialog->findChild<QPushButton*>("BringBack"), Qt::LeftButton);

    QCOMPARE(module->text(), QStringLiteral("<first/>"));
    QCOMPARE(title(), QStringLiteral("Untitled* - zohost"));
    // What it replaced is the newest now.
    QCOMPARE(m_parts->earlier.textOf(m_parts->earlier.entries().at(0)), QStringLiteral("new"));
    QCOMPARE(m_parts->earlier.textOf(m_parts->earlier.entries().at(1)), QStringLiteral("second"));
    QTRY_VERIFY(m_window->findChild<QDialog*>("EarlierDialog") == nullptr);
}

void tst_zoHostMainWindow::nothingIsBroughtBackWhileASessionRuns()
{
    addFakeModule();
    m_parts->earlier.keep("<first/>", QString());
    m_parts->cluster.applyConfig("<cluster><master><network><node name='n'/></network></master></cluster>");
    QVERIFY(m_parts->cluster.start());

    m_window->showEarlierConfigurations();
    auto* button = m_window->findChild<QPushButton*>("BringBack");
    QVERIFY(!button->isEnabled());

    m_parts->cluster.stop();
    QVERIFY(button->isEnabled());
}

void tst_zoHostMainWindow::placeAndDocksAreRemembered()
{
    m_window->show();
    m_window->setGeometry(20, 30, 700, 640);
    m_window->findChild<QDockWidget*>("CameraDock")->hide();
    auto* log = m_window->findChild<QDockWidget*>("LogDock");
    m_window->resizeDocks({log}, {260}, Qt::Vertical);
    QTRY_COMPARE(log->height(), 260);
    QVERIFY(m_window->close());

    restart();
    m_window->show();

    QCOMPARE(m_window->geometry(), QRect(20, 30, 700, 640));
    QVERIFY(m_window->findChild<QDockWidget*>("CameraDock")->isHidden());
    QVERIFY(m_window->findChild<QDockWidget*>("ModuleDock")->isVisible());
    QTRY_COMPARE(m_window->findChild<QDockWidget*>("LogDock")->height(), 260);
}

void tst_zoHostMainWindow::hostThatIsToldToEndRemembersToo()
{
    m_window->show();
    m_window->setGeometry(20, 30, 700, 640);

    restart();

    QCOMPARE(m_window->geometry(), QRect(20, 30, 700, 640));
}

void tst_zoHostMainWindow::placeOnAMissingScreenIsMoved()
{
    m_window->show();
    m_window->setGeometry(9000, 7000, 600, 500);
    QVERIFY(m_window->close());

    restart();
    m_window->show();

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QVERIFY(screen.contains(m_window->geometry()));
}

void tst_zoHostMainWindow::scriptHasTheStandardPlace()
{
    m_window->show();
    m_window->setGeometry(20, 30, 700, 640);
    QVERIFY(m_window->close());
    zoHostControllerService script(true);
    zoHostMainWindow::Services services = m_parts->services();
    services.controller = &script;

    m_window = std::make_unique<zoHostMainWindow>(services);
    QCOMPARE(m_window->size(), m_window->sizeHint());
    m_window->show();
    m_window->setGeometry(50, 60, 720, 650);
    m_window.reset();

    restart();
    QCOMPARE(m_window->geometry(), QRect(20, 30, 700, 640));
}

ZO_TEST_MAIN(tst_zoHostMainWindow)
#include "tst_zoHostMainWindow.moc"
