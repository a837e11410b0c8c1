#include "zoTestCase.h"

#include <zoHostRecentFiles.h>
#include <zoHostRecentMenu.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// The menu of the files that were opened last.
class tst_zoHostRecentMenu final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptyListSaysSo();
    void entriesShowNameAndFolder();
    void ampersandsAreShown();
    void chosenFileIsTold();
    void menuMayChangeWhileAFileIsOpened();
    void openingCanBeBlocked();
    void clearEmptiesTheList();
    void filesOfAnotherHostAreSeen();

private:
    QAction* clearAction() const { return m_menu->findChild<QAction*>("ClearRecent"); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<zoHostRecentFiles> m_recent;
    std::unique_ptr<zoHostRecentMenu> m_menu;
};

void tst_zoHostRecentMenu::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    m_recent = std::make_unique<zoHostRecentFiles>(m_settings.get());
    m_menu = std::make_unique<zoHostRecentMenu>(m_recent.get());
}

void tst_zoHostRecentMenu::cleanup()
{
    m_menu.reset();
    zoTestCase::cleanup();
}

void tst_zoHostRecentMenu::emptyListSaysSo()
{
    QCOMPARE(m_menu->actions().constFirst()->text(), QStringLiteral("No files yet"));
    QVERIFY(!m_menu->actions().constFirst()->isEnabled());
    QVERIFY(!clearAction()->isEnabled());
}

void tst_zoHostRecentMenu::entriesShowNameAndFolder()
{
    m_recent->add("/walls/a.zhpc");
    m_recent->add(QDir::homePath() + "/walls/b.zhpc");

    const QList<QAction*> actions = m_menu->actions();
    QCOMPARE(actions.at(0)->text(), QStringLiteral("&1  b.zhpc\t~/walls"));
    QCOMPARE(actions.at(1)->text(), QStringLiteral("&2  a.zhpc\t/walls"));
    QCOMPARE(actions.at(1)->toolTip(), QStringLiteral("/walls/a.zhpc"));
    QVERIFY(clearAction()->isEnabled());
}

void tst_zoHostRecentMenu::ampersandsAreShown()
{
    m_recent->add("/x & y/a&b.zhpc");

    QCOMPARE(m_menu->actions().constFirst()->text(), QStringLiteral("&1  a&&b.zhpc\t/x && y"));
}

void tst_zoHostRecentMenu::chosenFileIsTold()
{
    m_recent->add("/walls/a.zhpc");
    m_recent->add("/walls/b.zhpc");
    QSignalSpy chosen(m_menu.get(), &zoHostRecentMenu::fileChosen);

    m_menu->actions().at(1)->trigger();
    QCOMPARE(chosen.count(), 0); // not from inside the action, which the opening may destroy

    QTRY_COMPARE(chosen.count(), 1);
    QCOMPARE(chosen.constFirst().constFirst().toString(), QStringLiteral("/walls/a.zhpc"));
}

void tst_zoHostRecentMenu::menuMayChangeWhileAFileIsOpened()
{
    m_recent->add("/walls/a.zhpc");
    m_recent->add("/walls/b.zhpc");
    connect(m_menu.get(), &zoHostRecentMenu::fileChosen, m_recent.get(), &zoHostRecentFiles::add);

    m_menu->actions().at(1)->trigger();

    QTRY_COMPARE(m_recent->files().constFirst(), QStringLiteral("/walls/a.zhpc"));
    QVERIFY(m_menu->actions().constFirst()->text().contains("a.zhpc"));
}

void tst_zoHostRecentMenu::openingCanBeBlocked()
{
    m_recent->add("/walls/a.zhpc");

    m_menu->setOpenEnabled(false);
    QVERIFY(!m_menu->actions().constFirst()->isEnabled());
    QVERIFY(clearAction()->isEnabled());

    m_menu->setOpenEnabled(true);
    QVERIFY(m_menu->actions().constFirst()->isEnabled());
}

void tst_zoHostRecentMenu::clearEmptiesTheList()
{
    m_recent->add("/walls/a.zhpc");

    clearAction()->trigger();

    QTRY_COMPARE(m_recent->files(), QStringList());
    QCOMPARE(m_menu->actions().constFirst()->text(), QStringLiteral("No files yet"));
}

void tst_zoHostRecentMenu::filesOfAnotherHostAreSeen()
{
    QSettings otherSettings(m_directory->filePath("settings.ini"), QSettings::IniFormat);
    zoHostRecentFiles(&otherSettings).add("/walls/a.zhpc");

    m_menu->popup(QPoint(0, 0));

    QVERIFY(m_menu->actions().constFirst()->text().contains("a.zhpc"));
}

ZO_TEST_MAIN(tst_zoHostRecentMenu)
#include "tst_zoHostRecentMenu.moc"
