#include "zoHostParts.h"
#include "zoTestCase.h"

#include <zoHostGeneralPage.h>
#include <zoHostHelp.h>
#include <zoHostManual.h>
#include <zoHostManualWindow.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTextBrowser>

#include <memory>

// F1 and the window of the manual, with a manual of the test's own.
class tst_zoHostHelp final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pageIsThatOfTheFocus();
    void partsOfTheHostHaveTheirPages_data();
    void partsOfTheHostHaveTheirPages();
    void widgetsAroundCount();
    void windowMayListItsPages();
    void keyOpensThePage();
    void keyWorksInAModalDialog();
    void manualOfADialogGoesWithIt();
    void menuOpensThePage();
    void unknownPageIsTheFirstOne();
    void titleNamesThePage_data();
    void titleNamesThePage();
    void pageThatIsNotThereIsNotFound();
    void languageIsPreferred();
    void placeOnThePageIsShown();
    void wayBackLeadsToThePageBefore();
    void wordIsFoundOnThePage();
    void escapeClosesTheManual();

private:
    void write(const QString& language, const QString& page, const QString& body) const;
    zoHostManualWindow* manual(const QObject* parent = nullptr) const
    {
        return (parent != nullptr ? parent : m_host.get())
            ->findChild<zoHostManualWindow*>(QString(), Qt::FindDirectChildrenOnly);
    }
    void activate(QWidget* window) const
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

    QByteArray m_dataBefore;
    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
    QWidget* m_page = nullptr; // of a module
};

void tst_zoHostHelp::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_dataBefore = qgetenv("ZOKE_DATA");
    qputenv("ZOKE_DATA", m_parts->directory.path().toLocal8Bit());
    write("en", "index", "<h1>First</h1><a href=\"tiles.html\">tiles</a>");
    write("en", "tiles",
          "<h1>Tiles</h1><p>word one</p>" + QString("<p>filled</p>").repeated(200) +
              "<h2 id=\"low\"><a name=\"low\">Low</a></h2><p>word two</p>");
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_page = new QMainWindow(m_host.get());
    m_host->addModule("a", "Rendering", m_page, QString(), QIcon(), "a");
}

void tst_zoHostHelp::cleanup()
{
    m_host.reset();
    m_parts.reset();
    if (m_dataBefore.isNull())
        qunsetenv("ZOKE_DATA");
    else
        qputenv("ZOKE_DATA", m_dataBefore);
    zoTestCase::cleanup();
}

void tst_zoHostHelp::write(const QString& language, const QString& page, const QString& body) const
{
    QDir(m_parts->directory.path()).mkpath("manual/" + language);
    m_parts->writeFile("manual/" + language + '/' + page + ".html",
                       "<html><head><title>" + page + "</title></head><body>" + body + "</body></html>");
}

void tst_zoHostHelp::pageIsThatOfTheFocus()
{
    const auto* help = m_host->findChild<zoHostHelp*>();
    QWidget widget;

    QCOMPARE(help->pageOf(&widget), QStringLiteral("index"));
    widget.setProperty("manualPage", "tiles#low");
    QCOMPARE(help->pageOf(&widget), QStringLiteral("tiles#low"));
    QCOMPARE(help->pageOf(nullptr), QStringLiteral("index"));
}

// What the host itself shows: each page is one of the manual, which the tests of the manual look for.
void tst_zoHostHelp::partsOfTheHostHaveTheirPages_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("page");

    const struct
    {
        const char* name;
        const char* page;
    } rows[] = {{"ModuleList", "windows#the-host"},
                {"CameraList", "windows#the-host"},
                {"LogView", "messages"},
                {"StartNewWall", "index"},
                {"ModuleToolBar", "windows#hpc-cluster"},
                {"EarlierList", "undo#unsaved-work"},
                {"PreferencesDialog", "windows#preferences"},
                {"Language", "windows#preferences"},
                {"AboutLicence", "windows#the-host"}};
    for (const auto& row : rows)
        QTest::newRow(row.name) << row.name << row.page;
}

void tst_zoHostHelp::partsOfTheHostHaveTheirPages()
{
    QFETCH(QString, name);
    QFETCH(QString, page);
    const zoHostGeneralPage general(&m_parts->preferences);
    m_host->showStartPage();
    m_host->showEarlierConfigurations();
    m_host->showPreferences();
    m_host->showAbout();

    auto* widget = m_host->findChild<QWidget*>(name);
    QVERIFY(widget != nullptr);
    QCOMPARE(m_host->findChild<zoHostHelp*>()->pageOf(widget), page);
}

void tst_zoHostHelp::widgetsAroundCount()
{
    const auto* help = m_host->findChild<zoHostHelp*>();
    QDialog dialog;
    auto* group = new QWidget(&dialog);
    auto* field = new QLineEdit(group);
    dialog.setProperty("manualPage", "tiles");

    QCOMPARE(help->pageOf(field), QStringLiteral("tiles"));
    group->setProperty("manualPage", "tiles#low");
    QCOMPARE(help->pageOf(field), QStringLiteral("tiles#low"));
}

void tst_zoHostHelp::windowMayListItsPages()
{
    const auto* help = m_host->findChild<zoHostHelp*>();
    QDialog dialog;
    dialog.setObjectName("Setup");
    auto* field = new QLineEdit(&dialog);
    field->setObjectName("Field");

    m_page->setProperty("manualPages", QVariantMap{{"Setup", "tiles"}});
    QCOMPARE(help->pageOf(field), QStringLiteral("tiles"));

    m_page->setProperty("manualPages", QVariantMap{{"Setup", "tiles"}, {"Field", "tiles#low"}});
    QCOMPARE(help->pageOf(field), QStringLiteral("tiles#low"));
}

void tst_zoHostHelp::keyOpensThePage()
{
    auto* field = new QLineEdit(m_page);
    field->setProperty("manualPage", "tiles");
    activate(m_host.get());
    field->show();
    field->setFocus();

    QTest::keyClick(field, Qt::Key_F1);

    QTRY_VERIFY(manual() != nullptr && manual()->isVisible());
    QCOMPARE(manual()->page(), QStringLiteral("tiles"));
    QCOMPARE(manual()->windowTitle(), QStringLiteral("tiles - Manual"));
}

void tst_zoHostHelp::keyWorksInAModalDialog()
{
    QDialog dialog(m_host.get());
    dialog.setProperty("manualPage", "tiles#low");
    auto* field = new QLineEdit(&dialog);
    m_host->show();
    dialog.open();
    field->setFocus();

    QTest::keyClick(field, Qt::Key_F1);

    // In the dialog's care: another window could not be used now.
    QVERIFY(manual() == nullptr);
    QVERIFY(manual(&dialog) != nullptr && manual(&dialog)->isVisible());
    QCOMPARE(manual(&dialog)->page(), QStringLiteral("tiles#low"));
    QTest::keyClick(field, Qt::Key_F1);
    QCOMPARE(dialog.findChildren<zoHostManualWindow*>().size(), 1);
}

void tst_zoHostHelp::manualOfADialogGoesWithIt()
{
    auto dialog = std::make_unique<QDialog>(m_host.get());
    m_host->show();
    dialog->open();
    QTest::keyClick(dialog.get(), Qt::Key_F1);
    const QPointer<zoHostManualWindow> shown = manual(dialog.get());
    QVERIFY(shown);

    dialog.reset();

    QVERIFY(shown.isNull());
}

void tst_zoHostHelp::menuOpensThePage()
{
    m_page->setProperty("manualPage", "tiles");
    activate(m_host.get());
    m_page->setFocusPolicy(Qt::StrongFocus);
    m_page->setFocus();

    m_host->findChild<QAction*>("Manual")->trigger();

    QCOMPARE(manual()->page(), QStringLiteral("tiles"));
}

void tst_zoHostHelp::unknownPageIsTheFirstOne()
{
    zoHostManualWindow window;

    window.open("nowhere#at-all");

    QCOMPARE(window.page(), QStringLiteral("index"));
}

void tst_zoHostHelp::titleNamesThePage_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("title");

    QTest::newRow("page") << "tiles"
                          << "tiles - Manual";
    QTest::newRow("first-page-is-called-as-the-whole") << "index"
                                                       << "Manual";
    QTest::newRow("page-without-a-title") << "plain"
                                          << "Manual";
}

void tst_zoHostHelp::titleNamesThePage()
{
    QFETCH(QString, page);
    QFETCH(QString, title);
    m_parts->writeFile("manual/en/plain.html", "<html><body>word</body></html>");
    zoHostManualWindow window;

    window.open(page);

    QCOMPARE(window.page(), page);
    QCOMPARE(window.windowTitle(), title);
}

void tst_zoHostHelp::pageThatIsNotThereIsNotFound()
{
    QVERIFY(zoHostManual::find("page-that-nobody-writes", "en").isEmpty());
    QVERIFY(zoHostManual::find("", "en").isEmpty());
    QVERIFY(zoHostManual::folders().constFirst().startsWith(m_parts->directory.path()));
}

void tst_zoHostHelp::languageIsPreferred()
{
    write("de", "tiles", "<h1>Kacheln</h1>");

    QVERIFY(zoHostManual::find("tiles", "de_AT").toLocalFile().endsWith("/de/tiles.html"));
    QVERIFY(zoHostManual::find("index", "de_AT").toLocalFile().endsWith("/en/index.html"));
    QVERIFY(zoHostManual::find("tiles", "fr").toLocalFile().endsWith("/en/tiles.html"));
    QCOMPARE(zoHostManual::find("tiles#low", "en").fragment(), QStringLiteral("low"));
}

void tst_zoHostHelp::placeOnThePageIsShown()
{
    zoHostManualWindow window;
    auto* browser = window.findChild<QTextBrowser*>();

    window.open("tiles");
    QCOMPARE(browser->verticalScrollBar()->value(), 0);
    window.open("tiles#low");

    QTRY_VERIFY(browser->verticalScrollBar()->value() > 0);
}

void tst_zoHostHelp::wayBackLeadsToThePageBefore()
{
    zoHostManualWindow window;
    auto* browser = window.findChild<QTextBrowser*>();

    window.open("index");
    window.open("tiles");
    QVERIFY(browser->isBackwardAvailable());
    browser->backward();

    QCOMPARE(window.page(), QStringLiteral("index"));
}

void tst_zoHostHelp::wordIsFoundOnThePage()
{
    zoHostManualWindow window;
    window.open("tiles");
    auto* browser = window.findChild<QTextBrowser*>();
    auto* find = window.findChild<QLineEdit*>("ManualFind");

    QTest::keyClicks(find, "word");
    const int first = browser->textCursor().selectionStart();
    QTest::keyClick(find, Qt::Key_Return);

    QVERIFY(browser->textCursor().hasSelection());
    QVERIFY(browser->textCursor().selectionStart() > first);
    QTest::keyClick(find, Qt::Key_Return);
    QCOMPARE(browser->textCursor().selectionStart(), first);
}

void tst_zoHostHelp::escapeClosesTheManual()
{
    zoHostManualWindow window;
    window.open("tiles");

    QTest::keyClick(&window, Qt::Key_Escape);

    QVERIFY(!window.isVisible());
}

ZO_TEST_MAIN(tst_zoHostHelp)
#include "tst_zoHostHelp.moc"
