#include "zoTestCase.h"

#include <zoHostClusterPage.h>
#include <zoHostPreferencesService.h>
#include <zoLocalClusterService.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>

#include <memory>

// The preferences page of the embedded cluster service.
class tst_zoHostClusterPage final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void storedValueIsShownAndUsed_data();
    void storedValueIsShownAndUsed();
    void savedValueIsUsedAtOnce();
    void defaultsAreRestored();
    void launchAndEngineAreStored();
    void launchThatCannotBeUsedIsTheDefault();

private:
    // Whether a session of one node starts without a question when this much memory is available.
    bool starts(qint64 available);
    const zoHostPreferencesService::Page& page() const { return m_preferences->pages().front(); }
    QSpinBox* spinBox() const { return m_page->findChild<QSpinBox*>("MemoryPerNode"); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostPreferencesService> m_preferences;
    std::unique_ptr<zoLocalClusterService> m_cluster;
    std::unique_ptr<zoHostClusterPage> m_page;
};

namespace
{
constexpr qint64 Mebibyte = 1024 * 1024;
const char Key[] = "Local cluster memory per node";
} // namespace

void tst_zoHostClusterPage::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_preferences = std::make_unique<zoHostPreferencesService>(m_settings.get());
    m_cluster = std::make_unique<zoLocalClusterService>();
    m_cluster->setLockDirectory(m_directory->path());
    m_cluster->applyConfig("<cluster><master><network><node/></network></master></cluster>");
}

void tst_zoHostClusterPage::cleanup()
{
    m_page.reset();
    zoTestCase::cleanup();
}

bool tst_zoHostClusterPage::starts(qint64 available)
{
    m_cluster->setAvailableMemory([available] { return available; });
    const bool started = m_cluster->start();
    m_cluster->stop();
    return started;
}

void tst_zoHostClusterPage::storedValueIsShownAndUsed_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("mebibytes");

    QTest::newRow("nothing-stored") << QString() << 256;
    QTest::newRow("number") << "100" << 100;
    QTest::newRow("not-a-number") << "much" << 256;
    QTest::newRow("too-large") << "2000000" << 1048576;
}

void tst_zoHostClusterPage::storedValueIsShownAndUsed()
{
    QFETCH(QString, stored);
    QFETCH(int, mebibytes);
    if (!stored.isNull())
        m_preferences->setString(Key, stored);

    m_page = std::make_unique<zoHostClusterPage>(m_preferences.get(), m_cluster.get());
    page().show();

    QCOMPARE(spinBox()->value(), mebibytes);
    QVERIFY(starts(mebibytes * Mebibyte));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("not enough memory")));
    QVERIFY(!starts(mebibytes * Mebibyte - 1));
}

void tst_zoHostClusterPage::savedValueIsUsedAtOnce()
{
    m_page = std::make_unique<zoHostClusterPage>(m_preferences.get(), m_cluster.get());
    page().show();

    spinBox()->setValue(0);
    page().saveChanges();

    QVERIFY(starts(0));
    QCOMPARE(m_preferences->getString(Key, QString()), QStringLiteral("0"));
}

void tst_zoHostClusterPage::defaultsAreRestored()
{
    m_preferences->setString(Key, "1");
    m_page = std::make_unique<zoHostClusterPage>(m_preferences.get(), m_cluster.get());

    page().setDefaults();
    page().show();

    QCOMPARE(spinBox()->value(), 256);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("not enough memory")));
    QVERIFY(!starts(255 * Mebibyte));
}

void tst_zoHostClusterPage::launchAndEngineAreStored()
{
    QCOMPARE(zoHostClusterPage::storedEngine(m_preferences.get()), QStringLiteral("nodes"));
    QVERIFY(!zoHostClusterPage::storedEndsWithLostNode(m_preferences.get()));
    m_page = std::make_unique<zoHostClusterPage>(m_preferences.get(), m_cluster.get());
    page().show();
    auto* engine = m_page->findChild<QComboBox*>("Engine");
    QCOMPARE(engine->currentData().toString(), QStringLiteral("nodes"));
    if (qEnvironmentVariableIsSet("ZO_SCREENSHOTS"))
        m_page->grab().save(qEnvironmentVariable("ZO_SCREENSHOTS") + "/cluster-page.png");

    engine->setCurrentIndex(engine->findData("local"));
    m_page->findChild<QLineEdit*>("LaunchCommand")->setText("rsh %h %program");
    m_page->findChild<QLineEdit*>("ServerProgram")->setText("/opt/server");
    m_page->findChild<QCheckBox*>("EndsWithLostNode")->setChecked(true);
    page().saveChanges();

    QCOMPARE(zoHostClusterPage::storedEngine(m_preferences.get()), QStringLiteral("local"));
    QVERIFY(zoHostClusterPage::storedEndsWithLostNode(m_preferences.get()));
    const zoNodeClusterService::Launch launch = zoHostClusterPage::storedLaunch(m_preferences.get());
    QCOMPARE(launch.pattern, QStringList({"rsh", "%h", "%program"}));
    QCOMPARE(launch.remoteProgram, QStringLiteral("/opt/server"));
    page().setDefaults();
    page().show();
    QCOMPARE(engine->currentData().toString(), QStringLiteral("nodes"));
    QCOMPARE(m_page->findChild<QLineEdit*>("ServerProgram")->text(), QStringLiteral("ZOKEClusterServer"));
}

void tst_zoHostClusterPage::launchThatCannotBeUsedIsTheDefault()
{
    m_preferences->setString("Cluster launch command", "ssh %program");
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("\"ssh %program\".*%h")));

    const zoNodeClusterService::Launch launch = zoHostClusterPage::storedLaunch(m_preferences.get());

    QCOMPARE(launch.pattern, zoNodeClusterService::defaultLaunch().pattern);
    QVERIFY(launch.pattern.contains("BatchMode=yes"));
}

ZO_TEST_MAIN(tst_zoHostClusterPage)
#include "tst_zoHostClusterPage.moc"
