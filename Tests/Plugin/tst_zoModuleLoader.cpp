#include "zoTestCase.h"

#include <zoHostCameraService.h>
#include <zoHostControllerService.h>
#include <zoHostEarlierConfigurations.h>
#include <zoHostMainWindow.h>
#include <zoHostMainWindowService.h>
#include <zoHostNodeService.h>
#include <zoHostPreferencesService.h>
#include <zoHostRecentFiles.h>
#include <zoKernelServiceFactory.h>
#include <zoLocalClusterService.h>
#include <zoModuleInterface.h>
#include <zoModuleLoader.h>
#include <zoModuleMetadata.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolBar>

#include <elf.h>
#include <sys/stat.h>

#include <cstring>
#include <memory>

namespace
{
QString fixture(const QString& name)
{
    return QStringLiteral(ZO_FIXTURE_DIR "/lib") + name + QStringLiteral(".so");
}

// Whether the operating system still has the file in the memory of this process.
bool isMapped(const QString& fileName)
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) &&
           maps.readAll().contains(QFile::encodeName(QFileInfo(fileName).fileName()));
}

// A library whose headers name what is not there.
QByteArray hostile(QByteArray bytes, const QString& how)
{
    Elf64_Ehdr header{};
    std::memcpy(&header, bytes.constData(), sizeof header);
    if (how.endsWith(QLatin1String("count")))
        header.e_phnum = 0xffff;
    std::memcpy(bytes.data(), &header, sizeof header);
    for (int i = 0; i < int(header.e_phnum) && header.e_phnum != 0xffff; ++i) {
        char* const place = bytes.data() + header.e_phoff + std::size_t(i) * sizeof(Elf64_Phdr);
        Elf64_Phdr segment{};
        std::memcpy(&segment, place, sizeof segment);
        if (how.endsWith(QLatin1String("segment")) && segment.p_type == PT_LOAD)
            segment.p_offset = ~Elf64_Off(0) - 10;
        if (how.endsWith(QLatin1String("dynamic")) && segment.p_type == PT_DYNAMIC)
            segment.p_vaddr = 0x7fffffff0000;
        std::memcpy(place, &segment, sizeof segment);
    }
    return bytes;
}

// A host with all services, as modules expect it.
struct Host
{
    Host()
        : settings(directory.filePath("settings.ini"), QSettings::IniFormat)
        , preferences(&settings)
        , cameras(&settings, &nodes)
        , window(std::make_unique<zoHostMainWindow>(zoHostMainWindow::Services{
              &preferences, &cameras, &nodes, &controller, &cluster, &settings, &recent, &earlier}))
        , mainWindowService(window.get())
        , loader(std::make_unique<zoModuleLoader>())
    {
        cluster.setLockDirectory(directory.path());
        zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
        factory.registerService<zoControllerService>(&controller);
        factory.registerService<zoPreferencesService>(&preferences);
        factory.registerService<zoClusterService>(&cluster);
        factory.registerService<zoMainWindowService>(&mainWindowService);
    }

    ~Host()
    {
        window.reset();
        loader.reset();
        zoKernelServiceFactory& factory = zoKernelServiceFactory::the();
        factory.unregisterService<zoMainWindowService>();
        factory.unregisterService<zoClusterService>();
        factory.unregisterService<zoPreferencesService>();
        factory.unregisterService<zoControllerService>();
    }

    QTemporaryDir directory;
    QSettings settings;
    zoHostControllerService controller{true};
    zoHostPreferencesService preferences;
    zoHostNodeService nodes;
    zoHostCameraService cameras;
    zoLocalClusterService cluster;
    zoHostRecentFiles recent{&settings};
    zoHostEarlierConfigurations earlier{directory.filePath("earlier")};
    std::unique_ptr<zoHostMainWindow> window;
    zoHostMainWindowService mainWindowService;
    std::unique_ptr<zoModuleLoader> loader;
};
} // namespace

// Loading and unloading of modules, good and broken ones.
class tst_zoModuleLoader final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init() { m_host = std::make_unique<Host>(); }
    void cleanup()
    {
        m_host.reset();
        zoTestCase::cleanup();
    }

    void goodModuleCallsBothEntries();
    void moduleObjectIsFoundByItsAction();
    void unloadedModuleLeavesMemory();
    void modulesUnloadInReverseOrder();
    void windowsGoBeforeTheModule();
    void windowOfTheModuleIsDestroyedWithItAtTheLatest();
    void forgottenDialogIsDestroyed();
    void pageOfTheModuleGoesWithIt();
    void pageShownInTheDialogSurvivesTheDialog();
    void moduleMayDestroyItsWindow();
    void moduleLoadsAgain();

    void brokenModuleIsReportedWithFileAndReason_data();
    void brokenModuleIsReportedWithFileAndReason();
    void goodModuleLoadsAfterABrokenOne();
    void sameFileTwiceIsReported();
    void relativeNameIsUnderstood();
    void moduleTellsWhatItIs();
    void moduleOfThisInterfaceIsLoaded();
    void moduleOfAnotherInterfaceIsRefusedBeforeItsCodeRuns_data();
    void moduleOfAnotherInterfaceIsRefusedBeforeItsCodeRuns();
    void moduleWithDamagedMetadataIsRefusedBeforeItsCodeRuns_data();
    void moduleWithDamagedMetadataIsRefusedBeforeItsCodeRuns();

private:
    std::unique_ptr<Host> m_host;
};

void tst_zoModuleLoader::goodModuleCallsBothEntries()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    QCOMPARE(m_host->window->moduleWindows().size(), 1);
    QCOMPARE(m_host->window->moduleWindows().constFirst()->objectName(), QStringLiteral("GoodWindow"));
    QCOMPARE(m_host->preferences.pages().size(), size_t(1));
    QCOMPARE(m_host->preferences.pages().front().title, QStringLiteral("Good page"));
    QCOMPARE(m_host->loader->loadedFiles(),
             QStringList(QFileInfo(fixture("zoGoodModule")).absoluteFilePath()));
}

void tst_zoModuleLoader::moduleObjectIsFoundByItsAction()
{
    QVERIFY(m_host->window->moduleObject("startCluster()") == nullptr);
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    QObject* module = m_host->window->moduleObject("loadConfig(const char *)");

    QVERIFY(module != nullptr);
    QCOMPARE(QByteArray(module->metaObject()->className()).right(10), QByteArray("GoodModule"));
    QVERIFY(m_host->window->moduleObject("noSuchSlot()") == nullptr);
    QCOMPARE(m_host->window->moduleToolBar()->actions().constFirst()->toolTip(),
             zoHostMainWindow::resolvedToolTip("Tipreel_Cluster"));
}

void tst_zoModuleLoader::unloadedModuleLeavesMemory()
{
    QVERIFY(!isMapped(fixture("zoGoodModule")));
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));
    QVERIFY(isMapped(fixture("zoGoodModule")));

    m_host->window.reset();
    m_host->loader->unloadAll();

    QVERIFY(!isMapped(fixture("zoGoodModule")));
    QCOMPARE(m_host->loader->loadedFiles(), QStringList());
}

void tst_zoModuleLoader::modulesUnloadInReverseOrder()
{
    QTemporaryDir directory;
    const QString second = directory.filePath("libzoSecond.so");
    QVERIFY(QFile::copy(fixture("zoGoodModule"), second));
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));
    QVERIFY(m_host->loader->load(second));
    // The second has the same module name, so its window took the place of the first.
    QCOMPARE(m_host->window->moduleWindows().size(), 1);

    m_host->loader->unloadAll();

    QVERIFY(!isMapped(fixture("zoGoodModule")));
    QVERIFY(!isMapped(second));
}

void tst_zoModuleLoader::windowsGoBeforeTheModule()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    m_host->window.reset();
    m_host->loader->unloadAll();

    QVERIFY(messages().contains(QStringLiteral("module object destroyed, window gone")));
}

void tst_zoModuleLoader::windowOfTheModuleIsDestroyedWithItAtTheLatest()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    m_host->loader->unloadAll();

    QCOMPARE(m_host->window->moduleWindows().size(), 0);
    QVERIFY(m_host->window->moduleToolBar()->actions().isEmpty());
}

void tst_zoModuleLoader::forgottenDialogIsDestroyed()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    m_host->loader->unloadAll();

    QVERIFY(messages().contains(QStringLiteral("forgotten dialog destroyed")));
}

void tst_zoModuleLoader::pageOfTheModuleGoesWithIt()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));
    m_host->preferences.pages().front().setDefaults();

    m_host->loader->unloadAll();

    QVERIFY(m_host->preferences.pages().empty());
    QCOMPARE(m_host->preferences.getString("Good key", QString()), QStringLiteral("the default"));
}

void tst_zoModuleLoader::pageShownInTheDialogSurvivesTheDialog()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));
    m_host->window->showPreferences();
    auto* dialog = m_host->window->findChild<QDialog*>("PreferencesDialog");
    QVERIFY(dialog != nullptr);

    // With the dialog still open.
    m_host->window.reset();

    QCOMPARE(m_host->preferences.pages().size(), size_t(1));
    QVERIFY(m_host->preferences.pages().front().widget->parent() == nullptr);
    m_host->loader->unloadAll();
    QVERIFY(m_host->preferences.pages().empty());
}

void tst_zoModuleLoader::moduleMayDestroyItsWindow()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    QVERIFY(QMetaObject::invokeMethod(m_host->window->moduleObject("destroyWindow()"), "destroyWindow"));

    QCOMPARE(m_host->window->moduleWindows().size(), 0);
}

void tst_zoModuleLoader::moduleLoadsAgain()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));
    m_host->loader->unloadAll();

    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    QCOMPARE(m_host->window->moduleWindows().size(), 1);
}

void tst_zoModuleLoader::brokenModuleIsReportedWithFileAndReason_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");

    QTest::newRow("missing-file") << fixture("zoNobodyBuiltThis") << "There is no such file";
    QTest::newRow("no-entry") << fixture("zoNoEntryModule") << "It has no entry initPlugin";
    QTest::newRow("unresolved-symbol") << fixture("zoUnresolvedModule") << "zoSymbolThatNobodyDefines";
    QTest::newRow("entry-throws") << fixture("zoThrowingModule") << "the licence ran out";
    QTest::newRow("entry-throws-anything") << fixture("zoThrowingAnythingModule") << "Its entry failed";
    QTest::newRow("text-file") << "text"
                               << "invalid ELF header|file too short";
    QTest::newRow("empty-file") << "empty"
                                << "file too short";
    QTest::newRow("truncated-module") << "truncated"
                                      << "The file is cut off: it has 200 bytes";
    // Without the look at its headers these end the process by a signal.
    QTest::newRow("module-cut-in-the-middle") << "cut-in-the-middle"
                                              << "The file is cut off";
    QTest::newRow("module-without-its-end") << "cut-last-byte"
                                            << "The file is cut off";
    QTest::newRow("segment-beyond-all-numbers") << "hostile-segment"
                                                << "The file is cut off";
    QTest::newRow("too-many-segments") << "hostile-count"
                                       << "The file is damaged";
    QTest::newRow("dynamic-section-nowhere") << "hostile-dynamic"
                                             << "The file is damaged";
    QTest::newRow("pipe") << "pipe"
                          << "It is no file";
    QTest::newRow("directory") << "directory"
                               << "It is no file";
}

void tst_zoModuleLoader::brokenModuleIsReportedWithFileAndReason()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    const QTemporaryDir directory;
    if (!file.contains(QLatin1Char('/'))) {
        QFile made(directory.filePath(file + QStringLiteral(".so")));
        if (file == QLatin1String("pipe")) {
            QCOMPARE(::mkfifo(QFile::encodeName(made.fileName()).constData(), 0600), 0);
        } else if (file == QLatin1String("directory")) {
            QVERIFY(QDir(directory.path()).mkdir("directory.so"));
        } else {
            QVERIFY(made.open(QIODevice::WriteOnly));
            QFile good(fixture("zoGoodModule"));
            QVERIFY(good.open(QIODevice::ReadOnly));
            if (file == QLatin1String("text"))
                made.write(QByteArray("This is no library, whatever its name says.\n").repeated(20));
            if (file == QLatin1String("truncated"))
                made.write(good.read(200));
            if (file.startsWith(QLatin1String("cut-")))
                made.write(
                    good.read(file.endsWith(QLatin1String("middle")) ? good.size() / 2 : good.size() - 1));
            if (file.startsWith(QLatin1String("hostile-")))
                made.write(hostile(good.readAll(), file));
        }
        file = made.fileName();
    }
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(QStringLiteral("^Unable to load module %1: .*(%2)")
                               .arg(QRegularExpression::escape(QFileInfo(file).absoluteFilePath()), reason)));

    const bool loaded = m_host->loader->load(file);

    QVERIFY(!loaded);
    QVERIFY(!isMapped(file));
    QCOMPARE(m_host->window->moduleWindows().size(), 0);
    QCOMPARE(m_host->loader->loadedFiles(), QStringList());
}

void tst_zoModuleLoader::goodModuleLoadsAfterABrokenOne()
{
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("licence")));
    QVERIFY(!m_host->loader->load(fixture("zoThrowingModule")));

    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));

    QCOMPARE(m_host->window->moduleWindows().size(), 1);
}

void tst_zoModuleLoader::sameFileTwiceIsReported()
{
    QVERIFY(m_host->loader->load(fixture("zoGoodModule")));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("loaded already")));

    QVERIFY(!m_host->loader->load(QStringLiteral(ZO_FIXTURE_DIR "/../fixtures/libzoGoodModule.so")));

    QCOMPARE(m_host->window->moduleWindows().size(), 1);
}

void tst_zoModuleLoader::relativeNameIsUnderstood()
{
    const QString relative = QDir::current().relativeFilePath(fixture("zoGoodModule"));
    QVERIFY(QFileInfo(relative).isRelative());

    QVERIFY(m_host->loader->load(relative));
}

void tst_zoModuleLoader::moduleTellsWhatItIs()
{
    const zoModuleMetadata cluster = zoModuleMetadata::read(QStringLiteral(ZO_MODULE_FILE));
    const zoModuleMetadata plain = zoModuleMetadata::read(fixture("zoGoodModule"));

    QVERIFY(cluster.isPresent());
    QCOMPARE(cluster.name(), QStringLiteral("Cluster"));
    QCOMPARE(cluster.version(), QStringLiteral(ZO_VERSION));
    QCOMPARE(cluster.licence(), QStringLiteral("Apache-2.0"));
    QCOMPARE(cluster.interfaceVersion(), ZO_MODULE_INTERFACE);
    QCOMPARE(cluster.refusal(), QString());
    QVERIFY(!plain.isPresent());
    QCOMPARE(plain.refusal(), QString());
    QVERIFY(!isMapped(QStringLiteral(ZO_MODULE_FILE)));
}

void tst_zoModuleLoader::moduleOfThisInterfaceIsLoaded()
{
    qunsetenv("ZO_TELLTALE");

    QVERIFY(m_host->loader->load(fixture("zoSameInterfaceModule")));

    QCOMPARE(qgetenv("ZO_TELLTALE"), QByteArray("called"));
    // Also now that it is loaded.
    QCOMPARE(zoModuleMetadata::read(fixture("zoSameInterfaceModule")).name(), QStringLiteral("Same"));
    m_host->loader->unloadAll();
    QVERIFY(!isMapped(fixture("zoSameInterfaceModule")));
}

void tst_zoModuleLoader::moduleOfAnotherInterfaceIsRefusedBeforeItsCodeRuns_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");

    const auto text = [](const char* pattern, int interface) {
        return QString::fromLatin1(pattern).arg(interface).arg(ZO_MODULE_INTERFACE);
    };
    QTest::newRow("newer")
        << fixture("zoNewerModule")
        << text("Newer 7\\.1 needs a newer host: .* interface %1, this host has interface %2",
                ZO_MODULE_INTERFACE + 1);
    QTest::newRow("older")
        << fixture("zoOlderModule")
        << text("Older 0\\.4 was built for interface %1, this host has interface %2: install",
                ZO_MODULE_INTERFACE - 1);
    QTest::newRow("other-qt") << fixture("zoOtherQtModule")
                              << QStringLiteral(
                                     "Other 3\\.0 was built with Qt %1, this host with Qt %2: install")
                                     .arg(QT_VERSION_MAJOR == 5 ? 6 : 5)
                                     .arg(QT_VERSION_MAJOR);
    QTest::newRow("other-program") << fixture("zoOtherPlugin")
                                   << "It is a plug-in for another program \\(org\\.example\\.Editor";
}

void tst_zoModuleLoader::moduleOfAnotherInterfaceIsRefusedBeforeItsCodeRuns()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    qunsetenv("ZO_TELLTALE");
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(
            QStringLiteral("^Unable to load module %1: %2").arg(QRegularExpression::escape(file), reason)));

    QVERIFY(!m_host->loader->load(file));

    QCOMPARE(qgetenv("ZO_TELLTALE"), QByteArray());
    QVERIFY(!isMapped(file));
    QCOMPARE(m_host->loader->loadedFiles(), QStringList());
}

void tst_zoModuleLoader::moduleWithDamagedMetadataIsRefusedBeforeItsCodeRuns_data()
{
    QTest::addColumn<int>("at"); // behind the mark
    QTest::addColumn<QByteArray>("bytes");
    constexpr int Begin = 16;

    QTest::newRow("no-map") << Begin << QByteArray(1, '\0');
    QTest::newRow("broken-stream") << Begin << QByteArray(1, '\xff');
    QTest::newRow("nothing-whole") << Begin + 1 << QByteArray(64, '\xff');
}

void tst_zoModuleLoader::moduleWithDamagedMetadataIsRefusedBeforeItsCodeRuns()
{
    QFETCH(int, at);
    QFETCH(QByteArray, bytes);
    QFile good(fixture("zoSameInterfaceModule"));
    QVERIFY(good.open(QIODevice::ReadOnly));
    QByteArray module = good.readAll();
    const int mark = module.indexOf("QTMETADATA !");
    if (mark < 0)
        QSKIP("this Qt marks metadata in another way");
    module.replace(mark + at, bytes.size(), bytes);
    const QTemporaryDir directory;
    QFile damaged(directory.filePath(QStringLiteral("damaged.so")));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write(module);
    damaged.close();
    qunsetenv("ZO_TELLTALE");
    expectMessage(
        QtCriticalMsg,
        QRegularExpression(QStringLiteral("^Unable to load module %1: The file is damaged: what it says")
                               .arg(QRegularExpression::escape(damaged.fileName()))));

    QVERIFY(!m_host->loader->load(damaged.fileName()));

    QCOMPARE(qgetenv("ZO_TELLTALE"), QByteArray());
    QVERIFY(!isMapped(damaged.fileName()));
}

ZO_TEST_MAIN(tst_zoModuleLoader)
#include "tst_zoModuleLoader.moc"
