#include "zoTestCase.h"

#include <zoHostClusterPage.h>
#include <zoHostPreferencesService.h>
#include <zoLocalClusterService.h>

#include <QApplication>
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

ZO_TEST_MAIN(tst_zoHostClusterPage)
#include "tst_zoHostClusterPage.moc"
