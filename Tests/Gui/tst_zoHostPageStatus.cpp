#include "zoHostParts.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QLabel>
#include <QStatusBar>

#include <memory>

// The one status bar of the host and the module's window that it shows.
class tst_zoHostPageStatus final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void partsOfThePageStandInTheBarOfTheHost();
    void hiddenPartsStayHidden();
    void messagesOfThePageAreShown();
    void anotherPageTakesItsPlace();
    void pageWithoutABarShowsNothing();
    void partsGoWithTheirWindow();
    void hostGivesBackBeforeItGoes();

private:
    struct Page
    {
        QMainWindow* window;
        QPointer<QLabel> part;
    };
    Page add(const QString& name);
    QStatusBar* bar() const { return m_host->statusBar(); }

    std::unique_ptr<zoHostParts> m_parts;
    std::unique_ptr<zoHostMainWindow> m_host;
};

void tst_zoHostPageStatus::init()
{
    m_parts = std::make_unique<zoHostParts>();
    m_host = std::make_unique<zoHostMainWindow>(m_parts->services());
    m_host->show();
}

void tst_zoHostPageStatus::cleanup()
{
    m_host.reset();
    m_parts.reset();
    zoTestCase::cleanup();
}

tst_zoHostPageStatus::Page tst_zoHostPageStatus::add(const QString& name)
{
    auto* window = new QMainWindow(m_host.get());
    auto* part = new QLabel(name);
    window->statusBar()->addPermanentWidget(part);
    m_host->addModule(name, "Rendering", window, QString(), QIcon(), name);
    return {window, part};
}

void tst_zoHostPageStatus::partsOfThePageStandInTheBarOfTheHost()
{
    const Page page = add("a");

    QVERIFY(bar()->isAncestorOf(page.part));
    QVERIFY(page.part->isVisible());
    QVERIFY(page.window->statusBar()->isHidden());
    // Before those of the host.
    QVERIFY(page.part->x() <= bar()->findChild<QLabel*>("SessionLabel")->x());
}

void tst_zoHostPageStatus::hiddenPartsStayHidden()
{
    const Page first = add("a");
    const Page second = add("b");
    second.part->hide();

    second.window->show();

    QVERIFY(bar()->isAncestorOf(second.part));
    QVERIFY(second.part->isHidden());
    first.window->show();
    QVERIFY(second.part->isHidden());
}

void tst_zoHostPageStatus::messagesOfThePageAreShown()
{
    const Page page = add("a");

    page.window->statusBar()->showMessage("told");

    QCOMPARE(bar()->currentMessage(), QStringLiteral("told"));
    page.window->statusBar()->clearMessage();
    QCOMPARE(bar()->currentMessage(), QString());
}

void tst_zoHostPageStatus::anotherPageTakesItsPlace()
{
    const Page first = add("a");
    const Page second = add("b");

    second.window->show();

    QVERIFY(bar()->isAncestorOf(second.part));
    QVERIFY(!bar()->isAncestorOf(first.part));
    QVERIFY(first.window->isAncestorOf(first.part));
    first.window->statusBar()->showMessage("of nobody who is seen");
    QCOMPARE(bar()->currentMessage(), QString());
    first.window->show();
    QVERIFY(bar()->isAncestorOf(first.part));
    QVERIFY(first.part->isVisible());
}

void tst_zoHostPageStatus::pageWithoutABarShowsNothing()
{
    const Page page = add("a");

    m_host->showStartPage();

    QVERIFY(!bar()->isAncestorOf(page.part));
    m_host->showDocument();
    QVERIFY(bar()->isAncestorOf(page.part));
}

void tst_zoHostPageStatus::partsGoWithTheirWindow()
{
    const Page page = add("a");

    delete page.window;

    QVERIFY(page.part.isNull());
}

void tst_zoHostPageStatus::hostGivesBackBeforeItGoes()
{
    const Page page = add("a");
    bool isBack = false;
    connect(page.window, &QObject::destroyed, this, [&] { isBack = !page.part.isNull(); });

    m_host.reset();

    QVERIFY(isBack);
    QVERIFY(page.part.isNull());
}

ZO_TEST_MAIN(tst_zoHostPageStatus)
#include "tst_zoHostPageStatus.moc"
