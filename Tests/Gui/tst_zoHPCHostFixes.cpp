#include "zoTestCase.h"

#include <zoHPCHostFixes.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>

#include <QApplication>
#include <QSignalSpy>

#include <memory>

// The log of fixes to the host tree.
class tst_zoHPCHostFixes final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void withoutAHostTreeNothingHappens();
    void fixIsTakenBackAndAnnouncedOnce();
    void whatWasNoFixStays();
    void firstOfTwoChangesCounts();
    void clearedFixesStay();
    void hostTreeMayGoFirst();

private:
    std::unique_ptr<zoHPCTreeGUIW> m_hosts;
    zoHPCTreeItem* m_node = nullptr;
    zoHPCHostFixes m_fixes;
};

void tst_zoHPCHostFixes::init()
{
    m_hosts = std::make_unique<zoHPCTreeGUIW>();
    m_hosts->setDefaultConfig();
    m_node = m_hosts->getNodeItems().front();
    m_node->setIsEnabled(false);
    m_fixes.clear();
    m_fixes.setHostTree(m_hosts.get());
}

void tst_zoHPCHostFixes::withoutAHostTreeNothingHappens()
{
    zoHPCHostFixes fixes;

    fixes.noteBefore();
    fixes.noteAfter();
    fixes.takeBack();

    QVERIFY(fixes.hostTree() == nullptr);
}

void tst_zoHPCHostFixes::fixIsTakenBackAndAnnouncedOnce()
{
    m_fixes.noteBefore();
    m_node->setIsEnabled(true);
    m_fixes.noteAfter();
    const QSignalSpy hosts(m_hosts.get(), &zoHPCTreeGUIW::hostsChanged);

    m_fixes.takeBack();
    QVERIFY(!m_node->isEnabled());
    QCOMPARE(hosts.count(), 1);

    m_node->setIsEnabled(true);
    m_fixes.takeBack();
    QVERIFY(m_node->isEnabled());
    QCOMPARE(hosts.count(), 1);
}

void tst_zoHPCHostFixes::whatWasNoFixStays()
{
    m_fixes.noteBefore();
    m_fixes.noteAfter();
    m_node->setIsEnabled(true);
    const QSignalSpy hosts(m_hosts.get(), &zoHPCTreeGUIW::hostsChanged);

    m_fixes.takeBack();

    QVERIFY(m_node->isEnabled());
    QCOMPARE(hosts.count(), 0);
}

void tst_zoHPCHostFixes::firstOfTwoChangesCounts()
{
    for (const bool isEnabled : {true, false, true}) {
        m_fixes.noteBefore();
        m_node->setIsEnabled(isEnabled);
        m_fixes.noteAfter();
    }

    m_fixes.takeBack();

    QVERIFY(!m_node->isEnabled());
}

void tst_zoHPCHostFixes::clearedFixesStay()
{
    m_fixes.noteBefore();
    m_node->setIsEnabled(true);
    m_fixes.noteAfter();

    m_fixes.clear();
    m_fixes.takeBack();

    QVERIFY(m_node->isEnabled());
}

void tst_zoHPCHostFixes::hostTreeMayGoFirst()
{
    m_fixes.noteBefore();
    m_node->setIsEnabled(true);
    m_fixes.noteAfter();

    m_hosts.reset();
    m_fixes.takeBack();

    QVERIFY(m_fixes.hostTree() == nullptr);
}

ZO_TEST_MAIN(tst_zoHPCHostFixes)
#include "tst_zoHPCHostFixes.moc"
