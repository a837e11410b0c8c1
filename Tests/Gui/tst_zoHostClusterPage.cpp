#include "zoTestCase.h"

#include <zoHostClusterPage.h>
#include <zoHostPreferencesService.h>
#include <zoHostTranslations.h>
#include <zoLocalClusterService.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
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
    void paraViewIsStoredAndReadBack();
    void paraViewThatCannotBeUsedIsTheDefault_data();
    void paraViewThatCannotBeUsedIsTheDefault();
    void textsAreShownWhole_data();
    void textsAreShownWhole();

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

void tst_zoHostClusterPage::paraViewIsStoredAndReadBack()
{
    const zoParaViewService::Launch usual = zoParaViewPlan::defaultLaunch();
    m_page = std::make_unique<zoHostClusterPage>(m_preferences.get(), m_cluster.get());
    page().show();
    auto* engine = m_page->findChild<QComboBox*>("Engine");
    auto* program = m_page->findChild<QLineEdit*>("ParaViewProgram");
    auto* port = m_page->findChild<QSpinBox*>("ParaViewPort");
    auto* clients = m_page->findChild<QComboBox*>("ParaViewClients");
    auto* reverse = m_page->findChild<QLineEdit*>("ParaViewReverse");
    QCOMPARE(program->text(), usual.program);
    QCOMPARE(port->value(), usual.port);
    QCOMPARE(clients->currentIndex(), 0);
    QCOMPARE(reverse->text(), QString());

    engine->setCurrentIndex(engine->findData("paraview"));
    program->setText("/opt/pvserver");
    port->setValue(22222);
    clients->setCurrentIndex(clients->findData("anywhere"));
    reverse->setText(" desk ");
    page().saveChanges();

    QCOMPARE(zoHostClusterPage::storedEngine(m_preferences.get()), QStringLiteral("paraview"));
    const zoParaViewService::Launch launch = zoHostClusterPage::storedParaView(m_preferences.get());
    QCOMPARE(launch.program, QStringLiteral("/opt/pvserver"));
    QCOMPARE(launch.port, 22222);
    QVERIFY(launch.clients == zoParaViewService::Clients::Anywhere);
    QCOMPARE(launch.reverseClient, QStringLiteral("desk"));
    const zoHostPreferencesService::Page first = page();
    const zoHostClusterPage again(m_preferences.get(), m_cluster.get());
    m_preferences->pages().back().show();
    QCOMPARE(again.findChild<QComboBox*>("Engine")->currentData().toString(), QStringLiteral("paraview"));
    QCOMPARE(again.findChild<QLineEdit*>("ParaViewProgram")->text(), QStringLiteral("/opt/pvserver"));
    QCOMPARE(again.findChild<QSpinBox*>("ParaViewPort")->value(), 22222);
    QCOMPARE(again.findChild<QComboBox*>("ParaViewClients")->currentData().toString(),
             QStringLiteral("anywhere"));
    QCOMPARE(again.findChild<QLineEdit*>("ParaViewReverse")->text(), QStringLiteral("desk"));

    first.setDefaults();
    first.show();
    QCOMPARE(program->text(), usual.program);
    QCOMPARE(port->value(), usual.port);
    QCOMPARE(clients->currentIndex(), 0);
    QCOMPARE(reverse->text(), QString());
    QCOMPARE(zoHostClusterPage::storedEngine(m_preferences.get()), QStringLiteral("nodes"));
}

void tst_zoHostClusterPage::paraViewThatCannotBeUsedIsTheDefault_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<int>("used");

    const int usual = zoParaViewPlan::DefaultPort;
    QTest::newRow("none") << QString() << usual;
    QTest::newRow("zero") << "0" << usual;
    QTest::newRow("first") << "1" << 1;
    QTest::newRow("last") << "65527" << 65527; // the tries end at 65534
    QTest::newRow("too-large") << "65528" << usual;
    QTest::newRow("not-a-number") << "wall" << usual;
}

void tst_zoHostClusterPage::paraViewThatCannotBeUsedIsTheDefault()
{
    QFETCH(QString, port);
    QFETCH(int, used);
    m_preferences->setString("ParaView server port", port);
    m_preferences->setString("ParaView client that is called", "-oProxyCommand=x");
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("\"-oProxyCommand=x\".*ParaView")));

    const zoParaViewService::Launch launch = zoHostClusterPage::storedParaView(m_preferences.get());

    QCOMPARE(launch.port, used);
    QCOMPARE(launch.reverseClient, QString());
    QVERIFY(launch.clients == zoParaViewPlan::defaultLaunch().clients);
}

void tst_zoHostClusterPage::textsAreShownWhole_data()
{
    QTest::addColumn<QString>("language");

    QTest::newRow("english") << "en";
    QTest::newRow("german") << "de";
}

void tst_zoHostClusterPage::textsAreShownWhole()
{
    QFETCH(QString, language);
    const zoHostTranslations translations(language);
    m_page = std::make_unique<zoHostClusterPage>(m_preferences.get(), m_cluster.get());
    page().show();
    const QSize size = m_page->sizeHint();
    m_page->resize(size.width(), m_page->heightForWidth(size.width()));
    m_page->setVisible(true);

    if (qEnvironmentVariableIsSet("ZO_SCREENSHOTS"))
        m_page->grab().save(qEnvironmentVariable("ZO_SCREENSHOTS") + "/cluster-page-" + language + ".png");
    const QList<QLabel*> labels = m_page->findChildren<QLabel*>();
    for (const QLabel* label : labels)
        QVERIFY2(label->wordWrap() ? label->height() >= label->heightForWidth(label->width())
                                   : label->width() >= label->sizeHint().width(),
                 qPrintable(label->text()));
    const auto* reverse = m_page->findChild<QLineEdit*>("ParaViewReverse");
    QVERIFY(reverse->fontMetrics().horizontalAdvance(reverse->placeholderText()) < reverse->width());
}

ZO_TEST_MAIN(tst_zoHostClusterPage)
#include "tst_zoHostClusterPage.moc"
