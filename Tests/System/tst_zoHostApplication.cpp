#include "zoDialogRobot.h"
#include "zoTestCase.h"

#include <zoConfigurationCounts.h>
#include <zoHostApplication.h>
#include <zoHostDocument.h>
#include <zoHostLogPanel.h>
#include <zoKernelServiceFactory.h>
#include <zoLog.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSessionManager>
#include <QSettings>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QWindow>

#include <csignal>
#include <cstddef>
#include <memory>

namespace
{
// Whether the operating system still has the cluster module in the memory of this process.
bool isModuleMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libzoHPC.so");
}

zoHostMainWindow* mainWindow()
{
    auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
    return service == nullptr ? nullptr : qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
}

QAction* actionOf(QWidget* window, const QString& text)
{
    const QList<QAction*> actions = window->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}
} // namespace

// The host and the cluster module from its file, in one process and with a person at the window.
class tst_zoHostApplication final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void windowOfTheModuleIsShown();
    void emptyHostShowsTheDefaultConfiguration();
    void toolTipOfTheToggleActionIsResolved();
    void startAndStopActionsRunASession();
    void abortButtonOfTheOverlayEndsTheStart();
    void defaultFileIsExpanded();
    void closedHostLeavesNothingBehind();
    void hostClosesWhileASessionRuns();
    void hostClosesWithThePreferencesOpen();

    void openedFileIsInTitleAndMenu();
    void fileWithANameOutsideLatin1IsOpened();
    void changeIsMarkedAndAskedAbout();
    void saveBeforeClosingAsksForAName();
    void replacedConfigurationComesBack_data();
    void replacedConfigurationComesBack();
    void untouchedNewConfigurationIsNotKept();
    void configurationOfTheServiceIsRemembered();
    void unsavedWorkIsOfferedAgain_data();
    void unsavedWorkIsOfferedAgain();
    void workThatFindsNoRoomIsKeptElsewhere_data();
    void workThatFindsNoRoomIsKeptElsewhere();
    void workBesideAFileIsOfferedWithTheFile();
    void workThatWasSavedAfterAllIsTakenAway();
    void hangUpThatIsIgnoredStaysIgnored();
    void endOfTheSessionAsksNobody();
    void errorIsShownWithoutTheLog();
    void errorIsShownWithTheLogBehindAnotherTab();
    void savedWorkIsNotOffered();
    void workOfALogoutThatWasCalledOffIsNotOffered();
    void changedFileIsNotOverwrittenUnasked();
    void scriptLeavesNoTrace();

private:
    QWidget* moduleWindow() const { return mainWindow()->moduleWindows().constFirst(); }
    QMenu* recentMenu() const { return mainWindow()->findChild<QMenu*>("RecentMenu"); }
    QString title() const { return mainWindow()->windowHandle()->title(); }
    QString temporaryFolder() const { return m_directory.filePath("tmp"); }
    // The folder of the earlier configurations takes nothing.
    void blockEarlier() const;
    static QStringList refuges(const QString& folder)
    {
        return QDir(folder).entryList({"zohost-unsaved-*"}, QDir::Files);
    }
    void restart(const QString& file);
    QString copySample(const QString& sample, const QString& name) const;
    QByteArray savedText() const;
    zoClusterService* cluster() const { return zoKernelServiceFactory::getService<zoClusterService>(); }

    QTemporaryDir m_directory;
    std::unique_ptr<zoHostApplication> m_host;
};

void tst_zoHostApplication::initTestCase()
{
    zoTestCase::initTestCase();
    QVERIFY(m_directory.isValid());
    qunsetenv("ZOKE_DATA");
    // Of tests that are run by nohup the host would take no hang-up.
    std::signal(SIGHUP, SIG_DFL);
    // Settings and marks of sessions of this test alone.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_directory.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_directory.path()));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_directory.path()));
    QDir(m_directory.path()).mkpath("tmp");
    qputenv("TMPDIR", QFile::encodeName(temporaryFolder()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QCoreApplication::setOrganizationName("zo");
}

void tst_zoHostApplication::init()
{
    QSettings().clear();
    QDir(zoHostEarlierConfigurations::defaultFolder()).removeRecursively();
    zoHostOptions options;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
    QVERIFY(mainWindow() != nullptr);
    QCOMPARE(mainWindow()->moduleWindows().size(), 1);
    mainWindow()->show();
}

void tst_zoHostApplication::cleanup()
{
    m_host.reset();
    zoTestCase::cleanup();
}

void tst_zoHostApplication::windowOfTheModuleIsShown()
{
    QWidget* window = mainWindow()->moduleWindows().constFirst();

    QVERIFY(window->isVisible());
    QVERIFY(!window->isWindow());
    QCOMPARE(window->objectName(), QStringLiteral("Module"));
}

void tst_zoHostApplication::emptyHostShowsTheDefaultConfiguration()
{
    QFile file(QStringLiteral(ZO_DATA_DIR "/cluster/default.zhpc"));
    QVERIFY(file.open(QIODevice::ReadOnly));

    QCOMPARE(cluster()->currentConfig(), QString::fromUtf8(file.readAll()));
}

void tst_zoHostApplication::toolTipOfTheToggleActionIsResolved()
{
    const QList<QAction*> actions = mainWindow()->moduleToolBar()->actions();

    QCOMPARE(actions.size(), 1);
    QCOMPARE(actions.constFirst()->toolTip(), zoHostMainWindow::resolvedToolTip("Tipreel_Cluster"));
    QVERIFY(actions.constFirst()->toolTip() != QLatin1String("Tipreel_Cluster"));
}

void tst_zoHostApplication::startAndStopActionsRunASession()
{
    QAction* start = actionOf(mainWindow()->moduleWindows().constFirst(), "Start");
    QAction* stop = actionOf(mainWindow()->moduleWindows().constFirst(), "Stop");
    QVERIFY(start != nullptr && stop != nullptr);
    QVERIFY(start->isEnabled() && !stop->isEnabled());

    start->trigger();

    QVERIFY(cluster()->isRunning());
    QCOMPARE(cluster()->runningNodes(), QStringList("localhost"));
    QVERIFY(!start->isEnabled() && stop->isEnabled());

    stop->trigger();

    QVERIFY(!cluster()->isRunning());
    QVERIFY(start->isEnabled() && !stop->isEnabled());
}

void tst_zoHostApplication::abortButtonOfTheOverlayEndsTheStart()
{
    QAction* start = actionOf(mainWindow()->moduleWindows().constFirst(), "Start");
    auto* abort = mainWindow()->findChild<QPushButton*>("m_abortButton");
    QVERIFY(abort != nullptr);
    QSignalSpy stopped(cluster(), &zoClusterService::stopped);
    bool wasSeen = false;
    connect(cluster(), &zoClusterService::progressChanged, this, [&] {
        wasSeen = wasSeen || abort->isVisible();
        QTest::mouseClick(abort, Qt::LeftButton);
    });

    start->trigger();

    QVERIFY(wasSeen);
    QVERIFY(!cluster()->isRunning());
    QCOMPARE(stopped.count(), 1);
    QVERIFY(start->isEnabled());
    QVERIFY(!abort->isVisible());
}

void tst_zoHostApplication::defaultFileIsExpanded()
{
    QCOMPARE(m_host->configurationFile(), QString());

    zoKernelServiceFactory::getService<zoPreferencesService>()->setString("HPC Cluster default file",
                                                                          "$ZOKE_DATA/cluster/wall.zhpc");

    QCOMPARE(m_host->configurationFile(), QStringLiteral(ZO_DATA_DIR "/cluster/wall.zhpc"));
}

void tst_zoHostApplication::closedHostLeavesNothingBehind()
{
    QVERIFY(isModuleMapped());
    const QPointer<QWidget> window = mainWindow();

    m_host.reset();

    QVERIFY(window.isNull());
    QVERIFY(!isModuleMapped());
    // Each says on standard error that it is not there.
    QVERIFY(zoKernelServiceFactory::getService<zoMainWindowService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoClusterService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoControllerService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoPreferencesService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoCameraService>() == nullptr);
    QVERIFY(zoKernelServiceFactory::getService<zoNodeService>() == nullptr);
    QCOMPARE(QApplication::allWidgets(), QWidgetList());
}

void tst_zoHostApplication::hostClosesWhileASessionRuns()
{
    QVERIFY(cluster()->start());
    QSignalSpy stopped(cluster(), &zoClusterService::stopped);

    m_host.reset();

    QCOMPARE(stopped.count(), 1);
    QVERIFY(!isModuleMapped());
}

void tst_zoHostApplication::hostClosesWithThePreferencesOpen()
{
    mainWindow()->showPreferences();
    QCoreApplication::processEvents();

    m_host.reset();

    QVERIFY(!isModuleMapped());
    QCOMPARE(QApplication::allWidgets(), QWidgetList());
}

QString tst_zoHostApplication::copySample(const QString& sample, const QString& name) const
{
    const QString file = m_directory.filePath(name);
    QFile::remove(file);
    return QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/") + sample, file) ? file : QString();
}

// The document as the module writes it now.
QByteArray tst_zoHostApplication::savedText() const
{
    QFile file(m_directory.filePath("look.zhpc"));
    QMetaObject::invokeMethod(moduleWindow(), "saveConfig", Q_ARG(QString, file.fileName()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_zoHostApplication::openedFileIsInTitleAndMenu()
{
    QCOMPARE(title(), QStringLiteral("zohost"));
    const QString file = copySample("powerwall-2x2.zhpc", "wall.zhpc");

    mainWindow()->openConfiguration(file);

    QCOMPARE(title(), QStringLiteral("wall.zhpc - zohost"));
    QCOMPARE(recentMenu()->actions().constFirst()->data().toString(), file);
}

void tst_zoHostApplication::fileWithANameOutsideLatin1IsOpened()
{
    const QString file = copySample("powerwall-2x2.zhpc", QString::fromUtf8("стена.zhpc"));
    mainWindow()->openConfiguration(file);
    actionOf(moduleWindow(), "New")->trigger();
    QCOMPARE(title(), QStringLiteral("zohost"));

    recentMenu()->actions().constFirst()->trigger();

    QTRY_COMPARE(title(), QString::fromUtf8("стена.zhpc - zohost"));
}

void tst_zoHostApplication::changeIsMarkedAndAskedAbout()
{
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));
    actionOf(moduleWindow(), "Add network")->trigger();
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });

    // Asked at once, although the mark follows later.
    QVERIFY(!mainWindow()->close());

    QCOMPARE(robot.handled(), 1);
    QTRY_COMPARE(title(), QStringLiteral("wall.zhpc* - zohost"));
    actionOf(moduleWindow(), "Save")->trigger();
    QTRY_COMPARE(title(), QStringLiteral("wall.zhpc - zohost"));
    QVERIFY(mainWindow()->close());
}

void tst_zoHostApplication::saveBeforeClosingAsksForAName()
{
    actionOf(moduleWindow(), "Add network")->trigger();
    std::unique_ptr<zoDialogRobot> second;
    const zoDialogRobot first([&second](QDialog* dialog) {
        second = std::make_unique<zoDialogRobot>([](QDialog* asking) { asking->reject(); });
        qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Save)->click();
    });

    QVERIFY(!mainWindow()->close());

    QCOMPARE(second->handled(), 1);
    QVERIFY(mainWindow()->isVisible());
}

void tst_zoHostApplication::replacedConfigurationComesBack_data()
{
    QTest::addColumn<QString>("how");

    QTest::newRow("new") << "new";
    QTest::newRow("load") << "load";
    QTest::newRow("service") << "service";
}

void tst_zoHostApplication::replacedConfigurationComesBack()
{
    QFETCH(QString, how);
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));
    actionOf(moduleWindow(), "Add network")->trigger();

    if (how == "new")
        actionOf(moduleWindow(), "New")->trigger();
    else if (how == "load")
        mainWindow()->openConfiguration(copySample("cave-4-sided.zhpc", "cave.zhpc"));
    else
        emit cluster()->configChanged("<cluster version=\"1\"/>");
    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    QCOMPARE(kept.entries().size(), 1);
    const QString work = kept.textOf(kept.entries().constFirst());
    QCOMPARE(zoConfigurationCounts(work).networks, 2);
    mainWindow()->showEarlierConfigurations();
    auto* dialog = mainWindow()->findChild<QDialog*>("EarlierDialog");
    QCOMPARE(dialog->findChild<QTreeWidget*>("EarlierList")->topLevelItem(0)->text(1),
             QStringLiteral("wall.zhpc"));
    QTest::mouseClick(dialog->findChild<QPushButton*>("BringBack"), Qt::LeftButton);

    // The service leaves the file, which it came from, open.
    QTRY_COMPARE(title(), how == "service" ? QStringLiteral("wall.zhpc* - zohost")
                                           : QStringLiteral("Untitled* - zohost"));
    QCOMPARE(QString::fromUtf8(savedText()), work);
}

void tst_zoHostApplication::untouchedNewConfigurationIsNotKept()
{
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));

    QCOMPARE(zoHostEarlierConfigurations(zoHostEarlierConfigurations::defaultFolder()).entries().size(), 0);
    actionOf(moduleWindow(), "New")->trigger();
    QCOMPARE(zoHostEarlierConfigurations(zoHostEarlierConfigurations::defaultFolder()).entries().size(), 1);
}

void tst_zoHostApplication::configurationOfTheServiceIsRemembered()
{
    emit cluster()->configChanged("<cluster version=\"1\"><master><network/></master></cluster>");
    emit cluster()->configChanged("<cluster version=\"1\"/>");

    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    QVERIFY(kept.textOf(kept.entries().constFirst()).contains("<network"));
    QCOMPARE(kept.entries().constFirst().originFile, QString());
}

namespace
{
// No platform of a test has a session manager; nobody looks at the argument.
void logOut()
{
    alignas(std::max_align_t) static char manager[256];
    emit qGuiApp->commitDataRequest(*reinterpret_cast<QSessionManager*>(manager));
}

void clickRole(QDialog* dialog, QMessageBox::ButtonRole role)
{
    auto* box = qobject_cast<QMessageBox*>(dialog);
    QVERIFY(box != nullptr);
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* button : buttons) {
        if (box->buttonRole(button) == role)
            button->click();
    }
}
} // namespace

void tst_zoHostApplication::unsavedWorkIsOfferedAgain_data()
{
    QTest::addColumn<int>("signal"); // 0: a logout
    QTest::addColumn<bool>("hasFile");

    QTest::newRow("terminate") << SIGTERM << true;
    QTest::newRow("terminate-never-saved") << SIGTERM << false;
    QTest::newRow("hang-up") << SIGHUP << true;
    QTest::newRow("logout") << 0 << true;
}

void tst_zoHostApplication::unsavedWorkIsOfferedAgain()
{
    QFETCH(int, signal);
    QFETCH(bool, hasFile);
    const QString file = hasFile ? copySample("powerwall-2x2.zhpc", "wall.zhpc") : QString();
    if (hasFile)
        mainWindow()->openConfiguration(file);
    actionOf(moduleWindow(), "Add network")->trigger();
    const QString work = moduleWindow()->property("configuration").toString();
    QCOMPARE(zoConfigurationCounts(work).networks, 2);

    if (signal == 0)
        logOut();
    else
        QCOMPARE(::raise(signal), 0);

    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    QTRY_COMPARE(kept.entries().size(), 1);
    QCOMPARE(kept.textOf(kept.entries().constFirst()), work);
    QCOMPARE(kept.entries().constFirst().originFile, file);
    m_host.reset();
    zoHostOptions options;
    options.configFile = file;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
    QString question;
    const zoDialogRobot robot([&](QDialog* dialog) {
        question = qobject_cast<QMessageBox*>(dialog)->informativeText();
        clickRole(dialog, QMessageBox::AcceptRole);
        QCoreApplication::exit();
    });
    m_host->run();

    QCOMPARE(robot.handled(), 1);
    QVERIFY2(question.contains(hasFile ? file : QStringLiteral("never saved")), qPrintable(question));
    QCOMPARE(moduleWindow()->property("configuration").toString(), work);
    QCOMPARE(moduleWindow()->windowFilePath(), file);
    QVERIFY(mainWindow()->document()->differs());
    QCOMPARE(kept.unfinished().size(), 0);
}

void tst_zoHostApplication::blockEarlier() const
{
    const QString folder = zoHostEarlierConfigurations::defaultFolder();
    QDir().mkpath(QFileInfo(folder).absolutePath());
    QDir(folder).removeRecursively();
    QFile file(folder);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void tst_zoHostApplication::restart(const QString& file)
{
    m_host.reset();
    zoHostOptions options;
    options.configFile = file;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
}

void tst_zoHostApplication::workThatFindsNoRoomIsKeptElsewhere_data()
{
    QTest::addColumn<int>("signal"); // 0: a logout
    QTest::addColumn<bool>("isBlockedYet");

    QTest::newRow("terminate") << SIGTERM << false;
    QTest::newRow("hang-up") << SIGHUP << false;
    QTest::newRow("logout") << 0 << false;
    QTest::newRow("room-is-never-made") << SIGTERM << true;
}

void tst_zoHostApplication::workThatFindsNoRoomIsKeptElsewhere()
{
    QFETCH(int, signal);
    QFETCH(bool, isBlockedYet);
    const QString file = copySample("powerwall-2x2.zhpc", "wall.zhpc");
    mainWindow()->openConfiguration(file);
    actionOf(moduleWindow(), "Add network")->trigger();
    const QString work = moduleWindow()->property("configuration").toString();
    blockEarlier();
    if (signal == 0)
        logOut();
    else
        QCOMPARE(::raise(signal), 0);
    QTRY_COMPARE(refuges(temporaryFolder()).size(), 1);
    const QString told = mainWindow()->logPanel()->toPlainText();
    QVERIFY2(
        told.contains("are kept in " + temporaryFolder() + '/' + refuges(temporaryFolder()).constFirst()),
        qPrintable(told));
    m_host.reset();

    // Else it is offered from memory, and stays where it is.
    if (!isBlockedYet)
        QVERIFY(QFile::remove(zoHostEarlierConfigurations::defaultFolder()));
    restart(file);
    QString question;
    const zoDialogRobot robot([&](QDialog* dialog) {
        question = qobject_cast<QMessageBox*>(dialog)->informativeText();
        clickRole(dialog, QMessageBox::AcceptRole);
        QCoreApplication::exit();
    });
    m_host->run();

    QCOMPARE(robot.handled(), 1);
    QVERIFY2(question.contains(file), qPrintable(question));
    QCOMPARE(moduleWindow()->property("configuration").toString(), work);
    QVERIFY(mainWindow()->document()->differs());
    QCOMPARE(refuges(temporaryFolder()).size(), isBlockedYet ? 1 : 0);
    m_host.reset();
    QFile::remove(zoHostEarlierConfigurations::defaultFolder());
    for (const QString& name : refuges(temporaryFolder()))
        QVERIFY(QFile::remove(temporaryFolder() + '/' + name));
}

// Not looked for at the start: folders of other machines may be away.
void tst_zoHostApplication::workBesideAFileIsOfferedWithTheFile()
{
    const QString folder = m_directory.filePath("walls");
    QVERIFY(QDir(m_directory.path()).mkpath("walls"));
    const QString file = folder + "/wall.zhpc";
    QVERIFY(QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"), file));
    mainWindow()->openConfiguration(file);
    actionOf(moduleWindow(), "Add network")->trigger();
    const QString work = moduleWindow()->property("configuration").toString();
    blockEarlier();
    qputenv("TMPDIR", QFile::encodeName(m_directory.filePath("none")));
    logOut();
    QCOMPARE(refuges(folder).size(), 1);
    m_host.reset();
    qputenv("TMPDIR", QFile::encodeName(temporaryFolder()));
    QVERIFY(QFile::remove(zoHostEarlierConfigurations::defaultFolder()));

    restart(QString());
    const zoDialogRobot robot([&](QDialog* dialog) {
        clickRole(dialog, QMessageBox::AcceptRole);
        QCoreApplication::exit();
    });
    QTimer::singleShot(0, this,
                       [&] { QTimer::singleShot(0, this, [&] { mainWindow()->openConfiguration(file); }); });
    m_host->run();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(moduleWindow()->property("configuration").toString(), work);
    QCOMPARE(refuges(folder).size(), 0);
}

void tst_zoHostApplication::workThatWasSavedAfterAllIsTakenAway()
{
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));
    actionOf(moduleWindow(), "Add network")->trigger();
    blockEarlier();
    logOut();
    QCOMPARE(refuges(temporaryFolder()).size(), 1);
    QVERIFY(QFile::remove(zoHostEarlierConfigurations::defaultFolder()));
    QVERIFY(mainWindow()->document()->save(moduleWindow()));

    QVERIFY(mainWindow()->close());

    QCOMPARE(refuges(temporaryFolder()).size(), 0);
}

// As under nohup.
void tst_zoHostApplication::hangUpThatIsIgnoredStaysIgnored()
{
    m_host.reset();
    auto* const before = std::signal(SIGHUP, SIG_IGN);
    {
        zoHostOptions options;
        options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
        const zoHostApplication host(options);
        QVERIFY(std::signal(SIGHUP, SIG_IGN) == SIG_IGN);
    }
    QVERIFY(std::signal(SIGHUP, before) == SIG_IGN);
}

// What a session manager says after the logout: an answer would be waited for until the display is gone.
void tst_zoHostApplication::endOfTheSessionAsksNobody()
{
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));
    actionOf(moduleWindow(), "Add network")->trigger();
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });
    bool isEaten = false;
    // After the host has begun, which offers what was kept before.
    QTimer::singleShot(0, this, [this, &isEaten] {
        QTimer::singleShot(0, this, [&isEaten] {
            logOut();
            QEvent quit(QEvent::Quit);
            isEaten = QCoreApplication::sendEvent(qApp, &quit);
        });
    });

    QCOMPARE(m_host->run(), 0);

    QVERIFY(isEaten);
    QCOMPARE(robot.handled(), 0);
    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    QCOMPARE(kept.unfinished().size(), 1);
}

void tst_zoHostApplication::errorIsShownWithoutTheLog()
{
    zoLog::error("a first one");
    QCOMPARE(mainWindow()->statusBar()->currentMessage(), QString());
    mainWindow()->logPanel()->parentWidget()->hide();

    zoLog::error("a second one");

    QCOMPARE(mainWindow()->statusBar()->currentMessage(), QString("a second one"));
}

void tst_zoHostApplication::errorIsShownWithTheLogBehindAnotherTab()
{
    QDockWidget front;
    mainWindow()->tabifyDockWidget(mainWindow()->findChild<QDockWidget*>("LogDock"), &front);
    front.show();
    front.raise();
    QTRY_VERIFY(!front.visibleRegion().isEmpty());

    zoLog::error("behind it");

    QCOMPARE(mainWindow()->statusBar()->currentMessage(), QString("behind it"));
}

void tst_zoHostApplication::savedWorkIsNotOffered()
{
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));

    logOut();

    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    QCOMPARE(kept.entries().size(), 0);
}

void tst_zoHostApplication::workOfALogoutThatWasCalledOffIsNotOffered()
{
    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));
    actionOf(moduleWindow(), "Add network")->trigger();
    logOut();
    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    QCOMPARE(kept.unfinished().size(), 1);
    QVERIFY(mainWindow()->document()->save(moduleWindow()));

    QVERIFY(mainWindow()->close());

    QCOMPARE(kept.unfinished().size(), 0);
    QCOMPARE(kept.entries().size(), 1);
}

void tst_zoHostApplication::changedFileIsNotOverwrittenUnasked()
{
    const QString file = copySample("powerwall-2x2.zhpc", "wall.zhpc");
    mainWindow()->openConfiguration(file);
    actionOf(moduleWindow(), "Add network")->trigger();
    const QByteArray foreign("<cluster version=\"1\"/>");
    {
        QFile another(file);
        QVERIFY(another.open(QIODevice::WriteOnly));
        another.write(foreign);
    }
    {
        const zoDialogRobot robot([&](QDialog* dialog) { clickRole(dialog, QMessageBox::RejectRole); });
        actionOf(moduleWindow(), "Save")->trigger();
        QCOMPARE(robot.handled(), 1);
    }
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(saved.readAll(), foreign);
    QVERIFY(mainWindow()->document()->differs());

    const zoDialogRobot robot([&](QDialog* dialog) { clickRole(dialog, QMessageBox::AcceptRole); });
    actionOf(moduleWindow(), "Save")->trigger();
    QCOMPARE(robot.handled(), 1);
    actionOf(moduleWindow(), "Add network")->trigger();
    actionOf(moduleWindow(), "Save")->trigger();

    QVERIFY(!mainWindow()->document()->differs());
}

void tst_zoHostApplication::scriptLeavesNoTrace()
{
    m_host.reset();
    zoHostOptions options;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    options.nonInteractive = true;
    m_host = std::make_unique<zoHostApplication>(options);
    mainWindow()->show();

    mainWindow()->openConfiguration(copySample("powerwall-2x2.zhpc", "wall.zhpc"));
    actionOf(moduleWindow(), "New")->trigger();

    QVERIFY(!recentMenu()->actions().constFirst()->isEnabled());
    QVERIFY(!QDir(zoHostEarlierConfigurations::defaultFolder()).exists());
    actionOf(moduleWindow(), "Add network")->trigger();
    QVERIFY(mainWindow()->close());
}

ZO_TEST_MAIN(tst_zoHostApplication)
#include "tst_zoHostApplication.moc"
