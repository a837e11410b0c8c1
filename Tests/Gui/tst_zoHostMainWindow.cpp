#include "zoTestCase.h"

#include <zoHostCameraService.h>
#include <zoHostMainWindow.h>
#include <zoHostMainWindowService.h>
#include <zoHostNodeService.h>
#include <zoHostPreferencesService.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

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

private:
    QWidget* addModule(const QString& name, const QString& category);
    QTreeWidget* list() const { return m_window->findChild<QTreeWidget*>("ModuleList"); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostPreferencesService> m_preferences;
    std::unique_ptr<zoHostNodeService> m_nodes;
    std::unique_ptr<zoHostCameraService> m_cameras;
    std::unique_ptr<zoHostMainWindow> m_window;
};

void tst_zoHostMainWindow::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_preferences = std::make_unique<zoHostPreferencesService>(m_settings.get());
    m_nodes = std::make_unique<zoHostNodeService>();
    m_cameras = std::make_unique<zoHostCameraService>(m_settings.get(), m_nodes.get());
    m_window = std::make_unique<zoHostMainWindow>(
        zoHostMainWindow::Services{m_preferences.get(), m_cameras.get(), m_nodes.get()});
}

void tst_zoHostMainWindow::cleanup()
{
    m_window.reset();
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

ZO_TEST_MAIN(tst_zoHostMainWindow)
#include "tst_zoHostMainWindow.moc"
