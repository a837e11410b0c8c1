#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostDocument.h>
#include <zoHostJournal.h>

#include <QApplication>
#include <QMessageBox>
#include <QRegularExpression>

#include <memory>

// What the log says of configurations that come and go.
class tst_zoHostJournal final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void loadIsLogged();
    void fileThatIsNoConfigurationIsNotLoaded();
    void saveIsLogged();
    void saveThatFailsIsNone();

private:
    QString logged() const { return messages().join(QLatin1Char('\n')); }

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    std::unique_ptr<zoHostJournal> m_journal;
    zoFakeModuleWindow* m_window = nullptr; // owned by the host's window
};

void tst_zoHostJournal::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_window = new zoFakeModuleWindow(m_host.get());
    m_host->addModule("Fake", "Rendering", m_window, QString(), QIcon(), "Fake");
    m_journal = std::make_unique<zoHostJournal>(m_host->document());
}

void tst_zoHostJournal::cleanup()
{
    m_journal.reset();
    m_host.reset();
    m_parts.reset();
    zoTestCase::cleanup();
}

void tst_zoHostJournal::loadIsLogged()
{
    m_window->loadConfig(m_parts->writeFile("wall.zhpc", "a"));

    QTRY_VERIFY(logged().contains("Configuration " + m_parts->filePath("wall.zhpc") + " loaded"));
}

void tst_zoHostJournal::fileThatIsNoConfigurationIsNotLoaded()
{
    expectMessage(QtCriticalMsg, QRegularExpression("wall\\.zhpc cannot be used: .*strange"));
    m_window->loadConfig(m_parts->writeFile("wall.zhpc", "foreign"));
    m_host->findChild<QMessageBox*>("ForeignBox")->accept();
    m_window->loadConfig(m_parts->writeFile("other.zhpc", "a"));

    QTRY_VERIFY(logged().contains("other.zhpc loaded"));
    QVERIFY(!logged().contains("wall.zhpc loaded"));
}

void tst_zoHostJournal::saveIsLogged()
{
    m_window->edit("mine");
    m_window->nextSaveName = m_parts->filePath("wall.zhpc");

    m_window->saveConfig();

    QVERIFY(logged().contains("Configuration " + m_parts->filePath("wall.zhpc") + " saved"));
}

void tst_zoHostJournal::saveThatFailsIsNone()
{
    m_window->edit("mine");
    m_window->nextSaveName = m_parts->filePath("missing/wall.zhpc");
    expectMessage(QtCriticalMsg, QRegularExpression("Unable to save"));

    m_window->saveConfig();

    QVERIFY(!logged().contains(" saved"));
}

ZO_TEST_MAIN(tst_zoHostJournal)
#include "tst_zoHostJournal.moc"
