#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCGUIW.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>
#include <zoHostCameraService.h>
#include <zoHostNodeService.h>
#include <zoKernelServiceFactory.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>

namespace
{
constexpr int ProcessTimeoutMs = 60000;

QString sampleFile(const QString& name)
{
    return QStringLiteral(ZO_DATA_DIR "/cluster/") + name;
}

QString readText(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
} // namespace

// The sample configurations: each is opened, describes a wall that lights up, and runs in the whole program.
class tst_zohostSamples final : public zoTestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void everySampleIsTested();
    void loadAndSaveGivesTheSameBytes_data();
    void loadAndSaveGivesTheSameBytes();
    void everyWindowHasANodeOfTheTree_data() { loadAndSaveGivesTheSameBytes_data(); }
    void everyWindowHasANodeOfTheTree();
    void everyTileIsShownOnceForEachEye_data() { loadAndSaveGivesTheSameBytes_data(); }
    void everyTileIsShownOnceForEachEye();
    void caveHasALeftAndARightNodeForEachWall();
    void powerWallBlendsItsOverlap();
    void tiledWallIsBehindAGateway();
    void sampleRunsInTheHost_data() { loadAndSaveGivesTheSameBytes_data(); }
    void sampleRunsInTheHost();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostNodeService> m_nodes;
    std::unique_ptr<zoHostCameraService> m_cameras;
    std::unique_ptr<zoHPCGUIW> m_window;
};

void tst_zohostSamples::initTestCase()
{
    zoTestCase::initTestCase();
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_nodes = std::make_unique<zoHostNodeService>();
    m_cameras = std::make_unique<zoHostCameraService>(m_settings.get(), m_nodes.get());
    zoKernelServiceFactory::the().registerService<zoNodeService>(m_nodes.get());
    zoKernelServiceFactory::the().registerService<zoCameraService>(m_cameras.get());
}

void tst_zohostSamples::cleanupTestCase()
{
    zoKernelServiceFactory::the().unregisterService<zoCameraService>();
    zoKernelServiceFactory::the().unregisterService<zoNodeService>();
}

void tst_zohostSamples::init()
{
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
}

void tst_zohostSamples::cleanup()
{
    m_window.reset();
    zoTestCase::cleanup();
}

void tst_zohostSamples::everySampleIsTested()
{
    const QStringList files = QDir(sampleFile(QString())).entryList({"*.zhpc"}, QDir::Files, QDir::Name);

    QCOMPARE(files, QStringList({"cave-4-sided.zhpc", "default.zhpc", "powerwall-2x2.zhpc",
                                 "tiledwall-3x5-gateway.zhpc"}));
}

void tst_zohostSamples::loadAndSaveGivesTheSameBytes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("nodes");

    QTest::newRow("default") << "default.zhpc" << 1;
    QTest::newRow("power-wall") << "powerwall-2x2.zhpc" << 4;
    QTest::newRow("cave") << "cave-4-sided.zhpc" << 8;
    QTest::newRow("tiled-wall") << "tiledwall-3x5-gateway.zhpc" << 16;
}

void tst_zohostSamples::loadAndSaveGivesTheSameBytes()
{
    QFETCH(QString, file);
    const QString copy = m_directory->filePath(file);

    m_window->loadConfig(sampleFile(file));
    m_window->saveConfig(copy);

    QCOMPARE(readText(copy), readText(sampleFile(file)));
    QVERIFY(!readText(copy).isEmpty());
}

void tst_zohostSamples::everyWindowHasANodeOfTheTree()
{
    QFETCH(QString, file);
    QFETCH(int, nodes);

    m_window->loadConfig(sampleFile(file));

    const QStringList names = m_window->getTree()->getNodeNames();
    QCOMPARE(names.size(), nodes);
    QCOMPARE(QSet<QString>(names.cbegin(), names.cend()).size(), nodes);
    const QList<zoHPCWindowItem*> windows = m_window->getDisplayEditor()->getWindowItems();
    for (zoHPCWindowItem* window : windows) {
        // The list holds viewports, too.
        if (dynamic_cast<zoHPCViewportItem*>(window) == nullptr)
            QVERIFY2(names.contains(window->renderNode()), qPrintable(window->renderNode()));
    }
}

void tst_zohostSamples::everyTileIsShownOnceForEachEye()
{
    QFETCH(QString, file);

    m_window->loadConfig(sampleFile(file));

    QSet<QString> tiles;
    const QList<zoHPCProjectionItem*> projections = m_window->getDisplayEditor()->getProjectionItems();
    for (zoHPCProjectionItem* projection : projections) {
        if (projection->childCount() == 0)
            tiles.insert(projection->text(0));
    }
    QSet<QString> shown;
    QSet<QString> eyes;
    const QList<zoHPCViewportItem*> viewports = m_window->getDisplayEditor()->getViewportItems();
    for (zoHPCViewportItem* viewport : viewports) {
        const QString tile = viewport->data(13, Qt::EditRole).toString();
        const QString eye = viewport->data(21, Qt::EditRole).toString();
        QVERIFY2(tiles.contains(tile), qPrintable(tile));
        QVERIFY2(!shown.contains(tile + eye), qPrintable(tile + eye));
        shown.insert(tile + eye);
        eyes.insert(eye);
    }
    QCOMPARE(shown.size(), tiles.size() * eyes.size());
}

void tst_zohostSamples::caveHasALeftAndARightNodeForEachWall()
{
    m_window->loadConfig(sampleFile("cave-4-sided.zhpc"));

    QStringList views;
    const QList<zoHPCViewportItem*> viewports = m_window->getDisplayEditor()->getViewportItems();
    for (zoHPCViewportItem* viewport : viewports)
        views << viewport->text(0);
    QCOMPARE(views, QStringList({"Viewport: Cave Left left", "Viewport: Cave Left right",
                                 "Viewport: Cave Right left", "Viewport: Cave Right right",
                                 "Viewport: Cave Bottom left", "Viewport: Cave Bottom right",
                                 "Viewport: Cave Front left", "Viewport: Cave Front right"}));
}

void tst_zohostSamples::powerWallBlendsItsOverlap()
{
    m_window->loadConfig(sampleFile("powerwall-2x2.zhpc"));

    const QList<zoHPCProjectionItem*> projections = m_window->getDisplayEditor()->getProjectionItems();
    QCOMPARE(projections.size(), 5);
    QCOMPARE(projections.at(1)->text(0), QStringLiteral("Wall row:1 col:1"));
    // 240 mm of a tile that is 1920 mm wide.
    QCOMPARE(projections.at(1)->data(37, Qt::EditRole).toDouble(), 0.125);
    QCOMPARE(projections.at(1)->data(36, Qt::EditRole).toDouble(), 0.0);
    QCOMPARE(projections.at(2)->data(36, Qt::EditRole).toDouble(), 0.125);
}

void tst_zohostSamples::tiledWallIsBehindAGateway()
{
    m_window->loadConfig(sampleFile("tiledwall-3x5-gateway.zhpc"));

    QCOMPARE(m_window->getTree()->getNodeNames().mid(0, 3),
             QStringList({"gateway", "tile-r1-c1", "tile-r1-c2"}));
    QVERIFY(m_window->getTree()->findNetworkByIndex(2) != nullptr);
    QCOMPARE(m_window->getTree()->findNetworkByIndex(2)->childCount(), 15);
    QVERIFY(m_window->getTree()->findNetworkByIndex(3) == nullptr);
}

void tst_zohostSamples::sampleRunsInTheHost()
{
    QFETCH(QString, file);
    QFETCH(int, nodes);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_CONFIG_HOME", m_directory->path());
    environment.insert("XDG_DATA_HOME", m_directory->path());
    environment.insert("XDG_RUNTIME_DIR", m_directory->path());
    process.setProcessEnvironment(environment);
    const QString screenshot = m_directory->filePath(file + QStringLiteral(".png"));

    process.start(QStringLiteral(ZO_HOST_FILE),
                  {"--engine", "local", "--config", sampleFile(file), "--start", "--non-interactive",
                   "--exit-after-stop", "--screenshot", screenshot});
    QVERIFY(process.waitForFinished(ProcessTimeoutMs));

    const QByteArray log = process.readAllStandardError();
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY2(process.exitCode() == 0, log.constData());
    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
    QCOMPARE(lines.constFirst(), QStringLiteral("configuration: ") + sampleFile(file));
    QCOMPARE(lines.filter(QRegularExpression(QStringLiteral("^progress: "))).size(), nodes + 1);
    const QStringList running = lines.filter(QRegularExpression(QStringLiteral("^running: ")));
    QCOMPARE(running.size(), 1);
    QCOMPARE(running.constFirst().split(QStringLiteral(", ")).size(), nodes);
    QCOMPARE(lines
                 .filter(QRegularExpression(
                     QStringLiteral("^speed test: sent [1-9]\\d* bytes/s, received [1-9]\\d* bytes/s, "
                                    "synchronised [1-9]\\d* frames/s$")))
                 .size(),
             1);
    QCOMPARE(lines.mid(lines.size() - 3), QStringList({"screenshot: " + screenshot, "stopped", ""}));
    QVERIFY(!QImage(screenshot, "PNG").isNull());
    // Nothing but information: no warning, no error.
    const QStringList messages = QString::fromUtf8(log).split(QLatin1Char('\n'));
    QCOMPARE(messages.size(), 7);
    QCOMPARE(messages.at(0), QStringLiteral("zo: Module " ZO_MODULE_FILE " loaded"));
    QCOMPARE(messages.at(1), QStringLiteral("zo: Module " ZO_ASSISTANT_FILE " loaded"));
    QCOMPARE(messages.at(2), "zo: Configuration " + sampleFile(file) + " loaded");
    QVERIFY2(messages.at(3).startsWith(QStringLiteral("zo: Cluster runs on ")), log.constData());
    QVERIFY2(messages.at(4).startsWith(QStringLiteral("zo: Session: rehearsal of ")), log.constData());
    QCOMPARE(messages.mid(5), QStringList({"zo: Cluster stopped", ""}));
}

ZO_TEST_MAIN(tst_zohostSamples)
#include "tst_zohostSamples.moc"
