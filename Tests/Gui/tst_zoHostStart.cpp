#include "zoDialogRobot.h"
#include "zoFakeModule.h"
#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostChoices.h>
#include <zoHostDocument.h>
#include <zoHostManualWindow.h>
#include <zoHostStartPage.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCommandLinkButton>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSet>
#include <QToolBar>
#include <QTreeWidget>

#include <memory>

namespace
{
// A module that makes walls.
class WallModule final : public QObject
{
    Q_OBJECT

public:
    int walls = 0;

public slots:
    void newWall() { ++walls; }
};
} // namespace

// The start page and what its offers do.
class tst_zoHostStart final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pageTakesThePlaceOfTheModule();
    void pictureOfTheHostIsShown();
    void moduleListLeadsBack();
    void recentFileIsOpened();
    void recentListFollows();
    void sampleIsOpenedWithoutItsName();
    void sampleOfTheKeyboard();
    void fileIsAskedFor();
    void givenUpDialogLeadsBackToThePage();
    void emptyConfigurationIsBegun();
    void newWallIsOfferedWhenAModuleMakesOne();
    void keyboardGoesThroughThePageInItsOrder();
    void returnPressesTheButtonOfTheFocus();
    void nothingIsOpenedWhileASessionRuns();
    void fileThatIsOpenedElsewhereLeavesThePage();
    void changeOfTheConfigurationLeavesThePage();
    void choiceAtTheStartIsKept();
    void manualIsOpened();
    void pageFitsASmallScreen();

private:
    zoHostStartPage* page() const { return m_host->findChild<zoHostStartPage*>(); }
    template <class Widget>
    Widget* part(const char* name) const
    {
        return page()->findChild<Widget*>(QLatin1String(name));
    }
    static void choose(QListWidget* list, int row);

    QByteArray m_dataBefore;
    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    std::unique_ptr<zoFakeModule> m_module;
    zoFakeModuleWindow* m_window = nullptr; // owned by the host's window
};

void tst_zoHostStart::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_dataBefore = qgetenv("ZOKE_DATA");
    qputenv("ZOKE_DATA", m_parts->directory.path().toLocal8Bit());
    QVERIFY(QDir(m_parts->directory.path()).mkpath("cluster"));
    m_parts->writeFile("cluster/default.zhpc", "<cluster/>");
    m_parts->writeFile("cluster/wall.zhpc",
                       "<cluster><master><network><node name='a'/></network></master></cluster>");
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_window = new zoFakeModuleWindow(m_host.get());
    m_module = std::make_unique<zoFakeModule>(m_window);
    m_host->addModule("Fake", "Rendering", m_window, QString(), QIcon(), "Fake");
    m_host->moduleToolBar()->addAction(m_module->toggleAction());
    m_host->show();
    m_host->showStartPage();
}

void tst_zoHostStart::cleanup()
{
    m_host.reset();
    m_module.reset();
    m_parts.reset();
    if (m_dataBefore.isNull())
        qunsetenv("ZOKE_DATA");
    else
        qputenv("ZOKE_DATA", m_dataBefore);
    zoTestCase::cleanup();
}

void tst_zoHostStart::choose(QListWidget* list, int row)
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

void tst_zoHostStart::pageTakesThePlaceOfTheModule()
{
    QVERIFY(page()->isVisible());
    QVERIFY(!m_window->isVisible());
    QCOMPARE(m_host->windowTitle(), QStringLiteral("zohost"));
}

// Not a square of one colour.
void tst_zoHostStart::pictureOfTheHostIsShown()
{
    const QImage picture = part<QLabel>("StartIcon")->grab().toImage();
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colors << picture.pixel(x, y);
    }

    QVERIFY2(colors.size() > 4, qPrintable(QString::number(colors.size())));
}

void tst_zoHostStart::moduleListLeadsBack()
{
    auto* list = m_host->findChild<QTreeWidget*>("ModuleList");

    list->setCurrentItem(list->topLevelItem(0)->child(0));

    QVERIFY(m_window->isVisible());
    m_host->showStartPage();
    QVERIFY(page()->isVisible());
    QCOMPARE(m_host->findChildren<zoHostStartPage*>().size(), 1);
}

void tst_zoHostStart::recentFileIsOpened()
{
    const QString file = m_parts->writeFile("mine.zhpc", "mine");
    m_parts->recent.add(file);

    choose(part<QListWidget>("StartRecent"), 0);

    QTRY_COMPARE(m_window->loaded, QStringList(file));
    QVERIFY(m_window->isVisible());
}

void tst_zoHostStart::recentListFollows()
{
    auto* list = part<QListWidget>("StartRecent");
    QCOMPARE(list->count(), 1);
    QCOMPARE(list->item(0)->flags(), Qt::ItemFlags(Qt::NoItemFlags));

    for (int i = 0; i < zoHostRecentFiles::Limit + 1; ++i)
        m_parts->recent.add(m_parts->filePath(QString::number(i) + ".zhpc"));

    QCOMPARE(list->count(), zoHostRecentFiles::Limit);
    QVERIFY(list->item(0)->text().startsWith("10\n"));
}

void tst_zoHostStart::sampleIsOpenedWithoutItsName()
{
    auto* list = part<QListWidget>("StartSamples");
    QCOMPARE(list->count(), 1); // without the empty one
    QVERIFY(list->item(0)->text().startsWith("wall\n1 nodes, 0 windows"));

    choose(list, 0);

    QTRY_VERIFY(m_window->text().contains("<node name='a'/>"));
    QCOMPARE(m_window->windowFilePath(), QString());
    QVERIFY(!m_host->document()->differs());
    QVERIFY(m_window->isVisible());
}

void tst_zoHostStart::sampleOfTheKeyboard()
{
    auto* list = part<QListWidget>("StartSamples");
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host.get()));
    list->setFocus();
    list->setCurrentRow(0);

    QTest::keyClick(list, Qt::Key_Return);

    QTRY_VERIFY(m_window->text().contains("<node name='a'/>"));
}

void tst_zoHostStart::fileIsAskedFor()
{
    m_window->nextLoadName = m_parts->writeFile("mine.zhpc", "mine");

    part<QCommandLinkButton>("StartOpen")->click();

    QCOMPARE(m_window->text(), QStringLiteral("mine"));
    QVERIFY(m_window->isVisible());
}

void tst_zoHostStart::givenUpDialogLeadsBackToThePage()
{
    part<QCommandLinkButton>("StartOpen")->click();

    QVERIFY(page()->isVisible());
}

void tst_zoHostStart::emptyConfigurationIsBegun()
{
    m_window->edit("work");

    part<QCommandLinkButton>("StartEmpty")->click();

    QCOMPARE(m_window->text(), QStringLiteral("new"));
    QVERIFY(m_window->isVisible());
}

void tst_zoHostStart::newWallIsOfferedWhenAModuleMakesOne()
{
    QVERIFY(part<QCommandLinkButton>("StartNewWall")->isHidden());
    WallModule module;
    m_host->moduleToolBar()->addAction(new QAction(&module));

    m_host->showStartPage();

    auto* button = part<QCommandLinkButton>("StartNewWall");
    QVERIFY(button->isVisible());
    button->click();
    QTRY_COMPARE(module.walls, 1);
    // Whoever gives up is where they were; a wall that is made leaves the page as any change does.
    QVERIFY(page()->isVisible());
    m_window->setProperty("revision", 1U);
    QTRY_VERIFY(m_window->isVisible());
}

void tst_zoHostStart::keyboardGoesThroughThePageInItsOrder()
{
    WallModule module;
    m_host->moduleToolBar()->addAction(new QAction(&module));
    m_host->showStartPage();
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host.get()));
    m_parts->recent.add(m_parts->writeFile("mine.zhpc", "mine"));

    // Where Return goes is seen.
    const auto frame = [this](const char* name) {
        const QImage picture = part<QWidget>(name)->grab().toImage();
        return picture.pixelColor(picture.width() / 2, 0);
    };
    const QColor highlight = page()->palette().color(QPalette::Highlight);
    QCOMPARE(frame("StartNewWall"), highlight);
    QVERIFY(frame("StartOpen") != highlight);

    for (const char* name : {"StartNewWall", "StartOpen", "StartEmpty", "StartRecent", "StartSamples",
                             "StartManual", "ShownAtStart"}) {
        QWidget* widget = QApplication::focusWidget();
        QCOMPARE(widget->objectName(), QLatin1String(name));
        QTest::keyClick(widget, Qt::Key_Tab);
        if (QApplication::focusWidget() == widget) // a text with a link: on the link now
            QTest::keyClick(widget, Qt::Key_Tab);
    }
}

void tst_zoHostStart::returnPressesTheButtonOfTheFocus()
{
    WallModule module;
    m_host->moduleToolBar()->addAction(new QAction(&module));
    m_host->showStartPage();
    m_host->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_host.get()));

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    QTRY_COMPARE(module.walls, 1);
}

void tst_zoHostStart::nothingIsOpenedWhileASessionRuns()
{
    m_parts->cluster.applyConfig("<cluster><master><network><node name='n'/></network></master></cluster>");

    QVERIFY(m_parts->cluster.start());

    QVERIFY(m_window->isVisible()); // what runs is seen
    m_host->showStartPage();
    QVERIFY(!part<QCommandLinkButton>("StartOpen")->isEnabled());
    m_parts->cluster.stop();
    QVERIFY(part<QCommandLinkButton>("StartOpen")->isEnabled());
}

void tst_zoHostStart::fileThatIsOpenedElsewhereLeavesThePage()
{
    m_host->openConfiguration(m_parts->writeFile("mine.zhpc", "mine"));

    QVERIFY(m_window->isVisible());
}

void tst_zoHostStart::changeOfTheConfigurationLeavesThePage()
{
    // As a module does that replaces it.
    m_window->setProperty("revision", 2);

    QVERIFY(m_window->isVisible());
}

void tst_zoHostStart::choiceAtTheStartIsKept()
{
    auto* box = part<QCheckBox>("ShownAtStart");
    QVERIFY(box->isChecked());

    box->click();

    QVERIFY(!zoHostChoices::showsStartPage(&m_parts->preferences));
    m_host->showDocument();
    m_host->showStartPage();
    QVERIFY(!box->isChecked());
}

void tst_zoHostStart::manualIsOpened()
{
    emit part<QLabel>("StartManual")->linkActivated("manual");

    QVERIFY(m_host->findChild<zoHostManualWindow*>() != nullptr);
}

void tst_zoHostStart::pageFitsASmallScreen()
{
    const QSize most(1366, 768);

    QVERIFY2(m_host->minimumSizeHint().width() <= most.width() &&
                 m_host->minimumSizeHint().height() <= most.height(),
             qPrintable(QStringLiteral("%1 x %2")
                            .arg(m_host->minimumSizeHint().width())
                            .arg(m_host->minimumSizeHint().height())));
}

ZO_TEST_MAIN(tst_zoHostStart)
#include "tst_zoHostStart.moc"
