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
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <csignal>
#include <memory>

// What is not saved, in a host with the cluster module from its file: kept while a person works and offered after a
// crash; and the steps of that work in the Edit menu.
class tst_zoHostAutosave final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void workOfAKilledHostIsOffered_data();
    void workOfAKilledHostIsOffered();
    void workIsOfferedUntilSomebodyAnswers();
    void workComesBackAsItsFile_data();
    void workComesBackAsItsFile();
    void workWaitsForTheEndOfASession();
    void damagedWorkIsToldAndStays_data();
    void damagedWorkIsToldAndStays();
    void severalWorksAreShown();
    void workOfALivingHostIsNotOffered();
    void workThatReachedItsFileIsNotOffered();
    void workIsKeptOnceForEachState();
    void savedWorkIsNotKept();
    void replacedWorkStays();
    void terminatedHostLeavesOneEntry();
    void closedHostLeavesNothing();
    void fullDiskIsToldOnce();
    void zeroSecondsKeepNothing();
    void scriptKeepsNothing();
    void editMenuTakesBackAndBringsAgain();
    void editMenuFollowsThePage();

private:
    static zoHostMainWindow* mainWindow()
    {
        auto* service = zoKernelServiceFactory::getService<zoMainWindowService>();
        return qobject_cast<zoHostMainWindow*>(service->mainWindowWidget());
    }
    static QWidget* moduleWindow() { return mainWindow()->moduleWindows().constFirst(); }
    static QString text() { return moduleWindow()->property("configuration").toString(); }
    static void addNetwork();
    void start(int seconds, bool nonInteractive = false);
    void killHost(const QString& file);
    // Runs the host until it asks, and answers with the button of this role.
    void answer(QMessageBox::ButtonRole role) const;
    static void write(const QString& fileName, const QByteArray& bytes);
    static QByteArray read(const QString& fileName);
    static int unanswered()
    {
        return zoHostEarlierConfigurations(zoHostEarlierConfigurations::defaultFolder()).unfinished().size();
    }
    QString copySample() const;
    static QVector<zoHostEarlierConfigurations::Entry> entries()
    {
        return zoHostEarlierConfigurations(zoHostEarlierConfigurations::defaultFolder()).entries();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<zoHostApplication> m_host;
};

void tst_zoHostAutosave::initTestCase()
{
    zoTestCase::initTestCase();
    qunsetenv("ZOKE_DATA");
    QCoreApplication::setOrganizationName("zo");
    QCoreApplication::setApplicationName("zohost");
}

void tst_zoHostAutosave::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        qputenv(variable, QFile::encodeName(m_directory->path()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory->path());
}

void tst_zoHostAutosave::cleanup()
{
    m_host.reset();
    m_directory.reset();
    zoTestCase::cleanup();
}

void tst_zoHostAutosave::start(int seconds, bool nonInteractive)
{
    QSettings().setValue("Preferences/Autosave seconds", QString::number(seconds));
    zoHostOptions options;
    options.engine = QStringLiteral("local");
    options.nonInteractive = nonInteractive;
    options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_host = std::make_unique<zoHostApplication>(options);
    mainWindow()->show();
}

void tst_zoHostAutosave::addNetwork()
{
    const QList<QAction*> actions = moduleWindow()->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->text() == QLatin1String("Add network"))
            action->trigger();
    }
    QCoreApplication::processEvents();
}

QString tst_zoHostAutosave::copySample() const
{
    const QString file = m_directory->filePath("wall.zhpc");
    QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc"), file);
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    return file;
}

// In a process of its own, once its work is kept.
void tst_zoHostAutosave::killHost(const QString& file)
{
    QSettings().setValue("Preferences/Autosave seconds", "1");
    QSettings().sync();
    QProcess host;
    host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    host.start(QStringLiteral(ZO_HOST_HOLDER), QStringList{QStringLiteral(ZO_MODULE_FILE)} +
                                                   (file.isEmpty() ? QStringList() : QStringList(file)));
    QVERIFY(host.waitForStarted(60000));
    while (host.state() == QProcess::Running && !host.canReadLine())
        QVERIFY(host.waitForReadyRead(60000));
    QCOMPARE(host.readLine().trimmed(), QByteArray("kept"));
    QCOMPARE(::kill(pid_t(host.processId()), SIGKILL), 0);
    QVERIFY(host.waitForFinished(60000));
    QCOMPARE(host.exitStatus(), QProcess::CrashExit);
}

void tst_zoHostAutosave::answer(QMessageBox::ButtonRole role) const
{
    const zoDialogRobot robot([role](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        for (QAbstractButton* button : box->buttons()) {
            if (box->buttonRole(button) == role)
                button->click();
        }
        QCoreApplication::exit();
    });
    m_host->run();
    QCOMPARE(robot.handled(), 1);
}

void tst_zoHostAutosave::write(const QString& fileName, const QByteArray& bytes)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray tst_zoHostAutosave::read(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_zoHostAutosave::workOfAKilledHostIsOffered_data()
{
    QTest::addColumn<bool>("hasFile");
    QTest::addColumn<QString>("difference");

    QTest::newRow("file") << true << "Against its file: 1 network more.";
    QTest::newRow("never-saved") << false << "It has 2 networks, 1 compute node";
}

void tst_zoHostAutosave::workOfAKilledHostIsOffered()
{
    QFETCH(bool, hasFile);
    QFETCH(QString, difference);
    const QString file = hasFile ? copySample() : QString();
    killHost(file);
    QCOMPARE(entries().size(), 1);

    start(0);
    QString question;
    QString details;
    const zoDialogRobot robot([&](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        question = box->text();
        details = box->informativeText();
        for (QAbstractButton* button : box->buttons()) {
            if (box->buttonRole(button) == QMessageBox::AcceptRole)
                button->click();
        }
        QCoreApplication::exit();
    });
    m_host->run();

    QCOMPARE(robot.handled(), 1);
    QVERIFY2(question.startsWith("Bring back"), qPrintable(question));
    QVERIFY2(question.contains(hasFile ? "wall.zhpc" : "never saved"), qPrintable(question));
    QVERIFY2(details.contains("broke off"), qPrintable(details));
    QVERIFY2(details.contains(hasFile ? QDir::toNativeSeparators(file) : QStringLiteral("never saved")),
             qPrintable(details));
    QVERIFY2(details.contains(difference), qPrintable(details));
    QCOMPARE(zoConfigurationCounts(text()).networks, 2);
    QVERIFY(mainWindow()->document()->differs());
    // Asked once.
    QCOMPARE(unanswered(), 0);
}

// A host that breaks off while it asks has asked nobody.
void tst_zoHostAutosave::workIsOfferedUntilSomebodyAnswers()
{
    killHost(copySample());
    for (const bool isAnswered : {false, true}) {
        start(0);
        bool isAsked = false;
        const zoDialogRobot robot([&](QDialog* dialog) {
            isAsked = dialog->objectName() == "RecoveryBox";
            if (isAnswered)
                dialog->reject();
            QCoreApplication::exit();
        });
        m_host->run();
        QVERIFY(isAsked);
        QCOMPARE(unanswered(), isAnswered ? 0 : 1);
        m_host.reset();
        QCOMPARE(unanswered(), isAnswered ? 0 : 1);
    }
    QCOMPARE(entries().size(), 1);
}

void tst_zoHostAutosave::workComesBackAsItsFile_data()
{
    QTest::addColumn<QByteArray>("now"); // what the file holds by then; null: it is gone
    QTest::addColumn<bool>("isOpen");
    QTest::addColumn<bool>("isAskedAbout");

    const QByteArray other("<cluster version=\"1\">\n <master/>\n</cluster>\n");
    QTest::newRow("as-it-was") << QByteArray("") << true << false;
    QTest::newRow("changed-since") << other << true << true;
    QTest::newRow("no-configuration-by-now") << QByteArray("lost") << true << true;
    QTest::newRow("gone") << QByteArray() << false << false;
}

void tst_zoHostAutosave::workComesBackAsItsFile()
{
    QFETCH(QByteArray, now);
    QFETCH(bool, isOpen);
    QFETCH(bool, isAskedAbout);
    const QString file = copySample();
    killHost(file);
    if (now.isNull())
        QVERIFY(QFile::remove(file));
    else if (!now.isEmpty())
        write(file, now);

    start(30);
    answer(QMessageBox::AcceptRole);

    QCOMPARE(zoConfigurationCounts(text()).networks, 2);
    QVERIFY(mainWindow()->document()->differs());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(moduleWindow()->windowFilePath(), isOpen ? file : QString());
    // This host keeps it from now on.
    QCOMPARE(unanswered(), 0);
    QVERIFY(!entries().constFirst().owner.isEmpty());
    if (!isOpen)
        return;
    QTRY_VERIFY2(mainWindow()->windowTitle().startsWith("wall.zhpc") && mainWindow()->isWindowModified(),
                 qPrintable(mainWindow()->windowTitle()));
    const QByteArray before = read(file);
    const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });
    QMetaObject::invokeMethod(moduleWindow(), "saveConfig");
    QCOMPARE(robot.handled(), isAskedAbout ? 1 : 0);
    QCOMPARE(read(file) == before, isAskedAbout);
}

void tst_zoHostAutosave::workWaitsForTheEndOfASession()
{
    killHost(copySample());
    start(0);
    auto* cluster = zoKernelServiceFactory::getService<zoClusterService>();
    cluster->applyConfig(text());
    QVERIFY(cluster->start());
    const QString shown = text();

    answer(QMessageBox::AcceptRole);

    QCOMPARE(text(), shown);
    QCOMPARE(unanswered(), 1);
    QVERIFY2(mainWindow()->statusBar()->currentMessage().contains("session is running"),
             qPrintable(mainWindow()->statusBar()->currentMessage()));
    cluster->stop();
}

void tst_zoHostAutosave::damagedWorkIsToldAndStays_data()
{
    QTest::addColumn<int>("size");

    QTest::newRow("cut") << 300;
    QTest::newRow("empty") << 0;
}

void tst_zoHostAutosave::damagedWorkIsToldAndStays()
{
    QFETCH(int, size);
    killHost(copySample());
    const QString kept = entries().constFirst().fileName;
    const QByteArray left = read(kept).left(size);
    write(kept, left);

    start(0);
    const QString before = text();
    QString told;
    const zoDialogRobot robot([&](QDialog* dialog) {
        auto* box = qobject_cast<QMessageBox*>(dialog);
        told = box->text() + box->informativeText();
        box->accept();
        QCoreApplication::exit();
    });
    m_host->run();

    QCOMPARE(robot.handled(), 1);
    QVERIFY2(told.contains("damaged") && told.contains("wall.zhpc"), qPrintable(told));
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(text(), before);
    QCOMPARE(entries().size(), 0);
    const QDir folder(zoHostEarlierConfigurations::defaultFolder());
    const QStringList files = folder.entryList({"*.damaged"});
    QCOMPARE(files.size(), 1);
    QVERIFY2(told.contains(folder.filePath(files.constFirst())), qPrintable(told));
    // The box is gone after a click.
    const QString logged = mainWindow()->logPanel()->toPlainText();
    QVERIFY2(logged.contains("damaged, what is left is kept in " + folder.filePath(files.constFirst())),
             qPrintable(logged));
    QCOMPARE(read(folder.filePath(files.constFirst())), left);
    QCOMPARE(folder.entryList({"*.origin"}), QStringList());
}

void tst_zoHostAutosave::severalWorksAreShown()
{
    const QString file = copySample();
    killHost(file);
    killHost(QString());
    QCOMPARE(unanswered(), 2);

    start(0);
    answer(QMessageBox::AcceptRole);
    auto* dialog = mainWindow()->findChild<QDialog*>("EarlierDialog");
    QVERIFY(dialog != nullptr && dialog->isVisible());
    // Nobody has answered yet.
    QCOMPARE(unanswered(), 2);
    auto* list = dialog->findChild<QTreeWidget*>("EarlierList");
    QCOMPARE(list->topLevelItemCount(), 2);
    list->setCurrentItem(list->topLevelItem(1));
    dialog->findChild<QPushButton*>("BringBack")->click();

    QCOMPARE(moduleWindow()->windowFilePath(), file);
    QVERIFY(mainWindow()->document()->differs());
    QCOMPARE(unanswered(), 0);
}

void tst_zoHostAutosave::workOfALivingHostIsNotOffered()
{
    start(1);
    addNetwork();
    QTRY_COMPARE_WITH_TIMEOUT(entries().size(), 1, 60000);

    zoHostEarlierConfigurations other(zoHostEarlierConfigurations::defaultFolder());

    QCOMPARE(other.entries().size(), 1);
    QCOMPARE(other.unfinished().size(), 0);
}

void tst_zoHostAutosave::workThatReachedItsFileIsNotOffered()
{
    const QString file = copySample();
    killHost(file);
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::WriteOnly));
    zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    saved.write(kept.textOf(kept.entries().constFirst()).toUtf8());
    saved.close();

    start(0);
    QTimer::singleShot(0, m_host.get(),
                       [] { QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); }); });
    m_host->run();

    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(kept.unfinished().size(), 0);
}

void tst_zoHostAutosave::workIsKeptOnceForEachState()
{
    start(1);
    const QDir folder(zoHostEarlierConfigurations::defaultFolder());
    addNetwork();
    QTRY_COMPARE_WITH_TIMEOUT(folder.entryList({"*.zhpc"}).size(), 1, 60000);
    const QString first = folder.entryList({"*.zhpc"}).constFirst();
    QFile file(folder.filePath(first));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), text());

    // Further turns change nothing while nothing changes.
    zoHostAutosave again(mainWindow(), m_host->earlier(), 0);
    again.keep();
    again.keep();
    QCOMPARE(folder.entryList({"*.zhpc"}), QStringList(first));

    addNetwork();
    again.keep();
    QCOMPARE(folder.entryList({"*.zhpc"}).size(), 1);
    QVERIFY(folder.entryList({"*.zhpc"}).constFirst() != first);
    // A file that somebody took away is no protection.
    QVERIFY(QFile::remove(folder.filePath(folder.entryList({"*.zhpc"}).constFirst())));
    again.keep();
    QCOMPARE(folder.entryList({"*.zhpc"}).size(), 1);
}

void tst_zoHostAutosave::savedWorkIsNotKept()
{
    start(0);
    const QString file = copySample();
    mainWindow()->openConfiguration(file);
    zoHostAutosave autosave(mainWindow(), m_host->earlier(), 0);
    autosave.keep();
    QCOMPARE(entries().size(), 0);
    addNetwork();
    autosave.keep();
    QCOMPARE(entries().size(), 1);
    QCOMPARE(entries().constFirst().originFile, file);

    QTRY_VERIFY(moduleWindow()->isWindowModified());
    QMetaObject::invokeMethod(moduleWindow(), "saveConfig");

    QTRY_COMPARE(entries().size(), 0);
    // Undo leaves the file again, redo comes back to it.
    QMetaObject::invokeMethod(moduleWindow(), "undo");
    autosave.keep();
    QCOMPARE(entries().size(), 1);
    QMetaObject::invokeMethod(moduleWindow(), "redo");
    autosave.keep();
    QCOMPARE(entries().size(), 0);
}

void tst_zoHostAutosave::replacedWorkStays()
{
    start(0);
    addNetwork();
    const QString work = text();
    zoHostAutosave autosave(mainWindow(), m_host->earlier(), 0);
    autosave.keep();

    mainWindow()->openConfiguration(copySample());
    autosave.keep();

    QCOMPARE(entries().size(), 1);
    QCOMPARE(zoHostEarlierConfigurations(zoHostEarlierConfigurations::defaultFolder())
                 .textOf(entries().constFirst()),
             work);
    QVERIFY(!entries().constFirst().isUnfinished);
}

void tst_zoHostAutosave::terminatedHostLeavesOneEntry()
{
    start(0);
    addNetwork();
    zoHostAutosave autosave(mainWindow(), m_host->earlier(), 0);
    autosave.keep();
    addNetwork();
    const QString work = text();

    QCOMPARE(::raise(SIGTERM), 0);

    QTRY_VERIFY(!entries().isEmpty() && entries().constFirst().owner.isEmpty());
    QCOMPARE(entries().size(), 1);
    QVERIFY(entries().constFirst().isUnfinished);
    QCOMPARE(zoHostEarlierConfigurations(zoHostEarlierConfigurations::defaultFolder())
                 .textOf(entries().constFirst()),
             work);
    // The host was told to end, which only ends a loop that runs.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QApplication::exec();
}

void tst_zoHostAutosave::closedHostLeavesNothing()
{
    start(0);
    addNetwork();
    zoHostAutosave autosave(mainWindow(), m_host->earlier(), 0);
    autosave.keep();
    QCOMPARE(entries().size(), 1);

    const zoDialogRobot robot(
        [](QDialog* dialog) { qobject_cast<QMessageBox*>(dialog)->button(QMessageBox::Discard)->click(); });
    mainWindow()->close();

    QCOMPARE(robot.handled(), 1);
    QCOMPARE(entries().size(), 0);
}

void tst_zoHostAutosave::fullDiskIsToldOnce()
{
    start(0);
    addNetwork();
    zoHostAutosave autosave(mainWindow(), m_host->earlier(), 0);
    // No folder can be made where a file is.
    QFile obstacle(zoHostEarlierConfigurations::defaultFolder());
    QDir().mkpath(QFileInfo(obstacle).absolutePath());
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    obstacle.close();

    const auto told = [] { return mainWindow()->logPanel()->toPlainText().count("cannot be kept"); };
    for (int turn = 0; turn < 5; ++turn)
        autosave.keep();
    QCOMPARE(told(), 1);
    QVERIFY(obstacle.remove());
    autosave.keep();
    QCOMPARE(entries().size(), 1);
    // Another time is told again.
    QVERIFY(QDir(zoHostEarlierConfigurations::defaultFolder()).removeRecursively());
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    obstacle.close();
    addNetwork();
    zoLog::info("Between them"); // the log counts lines that are repeated
    autosave.keep();
    autosave.keep();
    QCOMPARE(told(), 2);
}

void tst_zoHostAutosave::zeroSecondsKeepNothing()
{
    QSettings settings(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    zoHostPreferencesService stored(&settings);
    QCOMPARE(zoHostAutosave::storedSeconds(&stored), 30);
    const struct
    {
        const char* text;
        int seconds;
    } rows[] = {{"0", 0}, {"1", 1}, {"-5", 0}, {"often", 30}, {"", 30}, {"99999999", 86400}};
    for (const auto& row : rows) {
        stored.setString("Autosave seconds", row.text);
        QCOMPARE(zoHostAutosave::storedSeconds(&stored), row.seconds);
    }
}

void tst_zoHostAutosave::scriptKeepsNothing()
{
    start(1, true);
    addNetwork();
    QVERIFY(m_host->earlier() != nullptr);
    QVERIFY(!m_host->keepsUnsaved());
}

void tst_zoHostAutosave::editMenuTakesBackAndBringsAgain()
{
    start(0);
    auto* undo = mainWindow()->findChild<QAction*>("Undo");
    auto* redo = mainWindow()->findChild<QAction*>("Redo");
    QVERIFY(undo && redo);
    QCOMPARE(undo->text(), QStringLiteral("&Undo"));
    QVERIFY(!undo->isEnabled() && !redo->isEnabled());
    QCOMPARE(undo->shortcut(), QKeySequence("Ctrl+Z"));
    QCOMPARE(redo->shortcut(), QKeySequence("Ctrl+Shift+Z"));
    const QString before = text();

    addNetwork();
    const QString after = text();
    QTRY_COMPARE(undo->text(), QStringLiteral("&Undo Add network"));
    QVERIFY(undo->isEnabled());
    undo->trigger();

    QCOMPARE(text(), before);
    QVERIFY(!undo->isEnabled());
    QCOMPARE(redo->text(), QStringLiteral("&Redo Add network"));
    redo->trigger();
    QCOMPARE(text(), after);
    QVERIFY(!redo->isEnabled());
}

// A page without a document of its own, as an assistant's, works on the configuration: Undo, title and status bar
// are about that. Once they were grey and empty there.
void tst_zoHostAutosave::editMenuFollowsThePage()
{
    start(0);
    mainWindow()->openConfiguration(copySample());
    addNetwork();
    auto* undo = mainWindow()->findChild<QAction*>("Undo");
    QTRY_VERIFY(undo->isEnabled() && mainWindow()->isWindowModified());
    const QString title = mainWindow()->windowTitle();
    const auto shown = [] { return mainWindow()->statusBar()->findChildren<QLabel*>().size(); };
    const int labels = shown();
    QVERIFY(title.startsWith("wall.zhpc"));
    auto* panel = new QWidget;
    mainWindow()->addModule("Panel", "Rendering", panel, QString(), QIcon(), "Panel");
    auto* other = new QMainWindow;
    mainWindow()->addModule("Other", "Rendering", other, QString(), QIcon(), "Other");

    panel->show();
    QVERIFY(!moduleWindow()->isVisible());
    QCOMPARE(undo->text(), QStringLiteral("&Undo Add network"));
    QVERIFY(undo->isEnabled());
    QCOMPARE(mainWindow()->windowTitle(), title);
    QVERIFY(mainWindow()->isWindowModified());
    QCOMPARE(shown(), labels);
    undo->trigger();
    QTRY_VERIFY(!mainWindow()->isWindowModified());
    QVERIFY(panel->isVisible());

    other->show();
    QVERIFY(!undo->isEnabled());
    QCOMPARE(undo->text(), QStringLiteral("&Undo"));
    QCOMPARE(mainWindow()->windowTitle(), QStringLiteral("zohost"));
    QVERIFY(shown() < labels);
    moduleWindow()->show();
    QVERIFY(mainWindow()->windowTitle().startsWith("wall.zhpc"));
}

ZO_TEST_MAIN(tst_zoHostAutosave)
#include "tst_zoHostAutosave.moc"
