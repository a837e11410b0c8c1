#include "zoDialogRobot.h"
#include "zoTestCase.h"

#include <zoHostApplication.h>
#include <zoHostChoices.h>
#include <zoHostDocument.h>
#include <zoHostLogPanel.h>
#include <zoHostStartPage.h>
#include <zoKernelServiceFactory.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <memory>

namespace
{
zoHostMainWindow* mainWindow()
{
    return qobject_cast<zoHostMainWindow*>(
        zoKernelServiceFactory::getService<zoMainWindowService>()->mainWindowWidget());
}
} // namespace

// What a person finds after a start of the host with its modules.
class tst_zoHostStartup final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startPageComesWithoutAFile();
    void startPageStaysAwayWhenItIsNotWanted();
    void startPageStaysAwayWithAFile();
    void newWallOfTheModulesIsOffered();
    void lastConfigurationIsOpenedAgain_data();
    void lastConfigurationIsOpenedAgain();
    void chosenLanguageIsSpoken();
    void lettersOfMenusAreDifferent_data();
    void lettersOfMenusAreDifferent();
    void thereIsOneStatusBar();
    void windowFitsASmallScreen();
    void truncatedFileIsNotOverwrittenUnasked();

private:
    // Runs until `look` has looked, in the event loop of the host.
    void run(const zoHostOptions& options, const std::function<void()>& look);
    void run(const std::function<void()>& look) { run(m_options, look); }
    QString copySample(const QString& sample, const QString& name) const;

    QTemporaryDir m_directory;
    zoHostOptions m_options;
};

void tst_zoHostStartup::initTestCase()
{
    zoTestCase::initTestCase();
    QVERIFY(m_directory.isValid());
    qunsetenv("ZOKE_DATA");
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        qputenv(variable, QFile::encodeName(m_directory.path()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QCoreApplication::setOrganizationName("zo");
}

void tst_zoHostStartup::init()
{
    QSettings().clear();
    m_options = zoHostOptions();
    m_options.moduleFiles = QStringList(QStringLiteral(ZO_MODULE_FILE));
    m_options.engine = "local";
    m_options.language = "en";
}

void tst_zoHostStartup::cleanup()
{
    QDir(zoHostEarlierConfigurations::defaultFolder()).removeRecursively();
    zoTestCase::cleanup();
}

void tst_zoHostStartup::run(const zoHostOptions& options, const std::function<void()>& look)
{
    bool hasLooked = false;
    auto host = std::make_unique<zoHostApplication>(options);
    QTimer timer;
    timer.setSingleShot(true);
    // After what the host puts off until its loop runs.
    connect(&timer, &QTimer::timeout, this, [&] {
        QMetaObject::invokeMethod(
            this,
            [&] {
                look();
                hasLooked = true;
                QCoreApplication::exit();
            },
            Qt::QueuedConnection);
    });
    timer.start(0);
    QCOMPARE(host->run(), 0);
    QVERIFY(hasLooked);
}

QString tst_zoHostStartup::copySample(const QString& sample, const QString& name) const
{
    const QString file = m_directory.filePath(name);
    QFile::remove(file);
    QFile::copy(QStringLiteral(ZO_DATA_DIR "/cluster/") + sample, file);
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    return file;
}

void tst_zoHostStartup::startPageComesWithoutAFile()
{
    run([] {
        const auto* page = mainWindow()->findChild<zoHostStartPage*>();
        QVERIFY(page != nullptr && page->isVisible());
    });
}

void tst_zoHostStartup::startPageStaysAwayWhenItIsNotWanted()
{
    QSettings().setValue("Preferences/Show start page", "false");

    run([] { QVERIFY(mainWindow()->findChild<zoHostStartPage*>() == nullptr); });
}

void tst_zoHostStartup::startPageStaysAwayWithAFile()
{
    m_options.configFile = copySample("powerwall-2x2.zhpc", "wall.zhpc");

    run([] {
        QVERIFY(mainWindow()->findChild<zoHostStartPage*>() == nullptr);
        QVERIFY(mainWindow()->document()->configurationWindow()->isVisible());
    });
}

void tst_zoHostStartup::newWallOfTheModulesIsOffered()
{
    run([] {
        const bool isThere = mainWindow()->moduleObject("newWall()") != nullptr;
        const auto* page = mainWindow()->findChild<zoHostStartPage*>();
        QCOMPARE(page->findChild<QWidget*>("StartNewWall")->isVisible(), isThere);
    });
}

void tst_zoHostStartup::lastConfigurationIsOpenedAgain_data()
{
    QTest::addColumn<bool>("isWanted");
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<bool>("isScript");
    QTest::addColumn<bool>("isOpened");

    QTest::newRow("wanted") << true << true << false << true;
    QTest::newRow("not-wanted") << false << true << false << false;
    QTest::newRow("gone") << true << false << false << false;
    QTest::newRow("script") << true << true << true << false;
}

void tst_zoHostStartup::lastConfigurationIsOpenedAgain()
{
    QFETCH(bool, isWanted);
    QFETCH(bool, isThere);
    QFETCH(bool, isScript);
    QFETCH(bool, isOpened);
    const QString file = copySample("powerwall-2x2.zhpc", "last.zhpc");
    if (!isThere)
        QVERIFY(QFile::remove(file));
    QSettings().setValue("Preferences/Reopen last configuration", isWanted ? "true" : "false");
    QSettings().setValue("Recent/Files", QStringList(file));
    m_options.nonInteractive = isScript;
    zoHostApplication host(m_options);

    QCOMPARE(host.configurationFile(), isOpened ? file : QString());
}

void tst_zoHostStartup::chosenLanguageIsSpoken()
{
    QSettings().setValue("Preferences/Language", "de");
    m_options.language.clear();

    run([] { QVERIFY(mainWindow()->menuBar()->actions().constFirst()->text().startsWith("Date")); });

    m_options.language = "en"; // of the command line
    run([] { QVERIFY(mainWindow()->menuBar()->actions().constFirst()->text().startsWith("Fi")); });
}

void tst_zoHostStartup::lettersOfMenusAreDifferent_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("en") << "en";
    QTest::newRow("de") << "de";
}

void tst_zoHostStartup::lettersOfMenusAreDifferent()
{
    QFETCH(QString, language);
    m_options.language = language;

    run([] {
        QSet<QChar> letters;
        mainWindow()->showDocument();
        const QList<QMenuBar*> bars = mainWindow()->findChildren<QMenuBar*>();
        QVERIFY(bars.size() >= 2); // of the host and of the cluster window
        for (const QMenuBar* bar : bars) {
            const QList<QAction*> menus = bar->actions();
            for (const QAction* menu : menus) {
                const int place = menu->text().indexOf('&');
                QVERIFY2(place >= 0, qUtf8Printable(menu->text()));
                const QChar letter = menu->text().at(place + 1).toLower();
                QVERIFY2(!letters.contains(letter), qUtf8Printable(menu->text()));
                letters.insert(letter);
            }
        }
    });
}

void tst_zoHostStartup::thereIsOneStatusBar()
{
    run([] {
        mainWindow()->showDocument();
        int visible = 0;
        const QList<QStatusBar*> bars = mainWindow()->findChildren<QStatusBar*>();
        for (const QStatusBar* bar : bars)
            visible += bar->isVisible() ? 1 : 0;
        QCOMPARE(visible, 1);
        QVERIFY(mainWindow()->statusBar()->findChild<QWidget*>("m_problemsStatus")->isVisible());
    });
}

void tst_zoHostStartup::windowFitsASmallScreen()
{
    run([] {
        mainWindow()->showDocument();
        // With room for a frame and a panel of the desktop.
        const QSize most(1366, 768 - 60);
        const QSize least = mainWindow()->minimumSizeHint();
        QVERIFY2(least.width() <= most.width() && least.height() <= most.height(),
                 qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
        QVERIFY(mainWindow()->sizeHint().height() <= most.height());
        QVERIFY(mainWindow()->sizeHint().width() <= most.width());
    });
}

void tst_zoHostStartup::truncatedFileIsNotOverwrittenUnasked()
{
    const QString file = copySample("powerwall-2x2.zhpc", "cut.zhpc");
    QFile cut(file);
    QVERIFY(cut.resize(cut.size() / 2));
    QVERIFY(cut.open(QIODevice::ReadOnly));
    const QByteArray before = cut.readAll();
    QSettings().setValue("Preferences/Show start page", "false");

    run([&] {
        mainWindow()->openConfiguration(file);
        auto* told = mainWindow()->findChild<QMessageBox*>("ForeignBox");
        QVERIFY(told != nullptr);
        told->accept();
        QWidget* module = mainWindow()->document()->configurationWindow();
        {
            const zoDialogRobot robot([](QDialog* dialog) { dialog->reject(); });
            QMetaObject::invokeMethod(module, "saveConfig");
            QCOMPARE(robot.handled(), 1);
        }
        QFile now(file);
        QVERIFY(now.open(QIODevice::ReadOnly));
        QCOMPARE(now.readAll(), before);
        const zoDialogRobot robot([](QDialog* dialog) {
            const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
            for (QPushButton* button : buttons) {
                if (button->text() == QLatin1String("&Overwrite"))
                    button->click();
            }
        });
        QMetaObject::invokeMethod(module, "saveConfig");
        QCOMPARE(robot.handled(), 1);
    });

    const zoHostEarlierConfigurations kept(zoHostEarlierConfigurations::defaultFolder());
    bool isKept = false;
    const QVector<zoHostEarlierConfigurations::Entry> entries = kept.entries();
    for (const zoHostEarlierConfigurations::Entry& entry : entries)
        isKept = isKept || kept.textOf(entry).toUtf8() == before;
    QVERIFY(isKept);
}

ZO_TEST_MAIN(tst_zoHostStartup)
#include "tst_zoHostStartup.moc"
