#include "zoDialogRobot.h"
#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCDebounce.h>
#include <zoHPCLayoutPane.h>
#include <zoHPCProblemsView.h>
#include <zoHPCReview.h>
#include <zoHPCRoomView.h>
#include <zoHPCScreensView.h>

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>

#include <memory>

Q_DECLARE_METATYPE(QTreeWidgetItem*)

// The layout preview as a whole.
class tst_zoHPCLayoutPane final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsWhatTheTreesHold();
    void changedValueIsShown();
    void addedRowIsShown();
    void removedRowIsForgottenAtOnce();
    void clearedTreeIsForgottenAtOnce();
    void manyChangesAreReadOnce();
    void othersShareWhatThePaneRead();
    void largeWallIsFollowedInLessDetail_data();
    void largeWallIsFollowedInLessDetail();
    void otherTabSettlesAtOnce();
    void smallWallIsFollowedWhole();
    void changesThatSettleWhileHiddenAreReadWhenShown();
    void hiddenPaneReadsNothing();
    void treesMayGoFirst();
    void otherModelReplacesTheFirst();
    void withoutTreesNothingIsShown();
    void countOfProblemsIsAnnouncedOnChange();
    void clickInThePicturesIsAnnounced();
    void clickInTheProblemsIsAnnounced();
    void dragIsAnnouncedAndShown();
    void fixIsAnnouncedAndShown();
    void fixOfTheHostTreeIsAnnounced();
    void screenSizeIsOfferedForTheScreensOnly();
    void fitButtonFitsTheCurrentPicture();
    void pictureIsSaved();
    void noButtonTakesTheReturnKey();

private:
    void setSettlingTime(int milliseconds) const;
    void changeQuickly();

    std::unique_ptr<zoHPCSetup> m_setup;
    std::unique_ptr<zoHPCLayoutPane> m_pane;
    zoHPCProjectionItem* m_wall = nullptr;
    zoHPCWindowItem* m_window = nullptr;
};

void tst_zoHPCLayoutPane::init()
{
    // What signal spies record.
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*");
    m_setup = std::make_unique<zoHPCSetup>();
    m_setup->addNode(QStringLiteral("n"));
    m_wall = m_setup->addPowerWall(QStringLiteral("wall"), 1, 2);
    // Of the shape of the window.
    m_wall->setDouble(zoHPCProjectionItem::Width, 4000.0);
    m_wall->setDouble(zoHPCProjectionItem::Height, 3000.0);
    m_wall->update();
    m_window = m_setup->addWindowAt(QStringLiteral("n"), QStringLiteral("0"), 0, 0, 1600, 1200);
    m_setup->addViewport(m_window, QStringLiteral("wall"), QStringLiteral("mono"));
    m_pane = std::make_unique<zoHPCLayoutPane>();
    m_pane->resize(700, 600);
    m_pane->setModel(&m_setup->projections, &m_setup->displays, &m_setup->hosts);
    m_pane->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pane.get()));
}

void tst_zoHPCLayoutPane::cleanup()
{
    m_pane.reset();
    m_setup.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCLayoutPane::showsWhatTheTreesHold()
{
    QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(1));
    QCOMPARE(m_pane->screensView()->picture().nodes().size(), size_t(1));
    QCOMPARE(m_pane->problemCount(), 0);
}

void tst_zoHPCLayoutPane::changedValueIsShown()
{
    m_wall->setInt(zoHPCProjectionItem::Columns, 5);
    m_wall->update();
    m_window->setString(zoHPCWindowItem::Node, QStringLiteral("other"));

    QTRY_COMPARE(m_pane->roomView()->picture().walls().size(), size_t(1));
    QCOMPARE(m_pane->roomView()->picture().walls()[0].columns, 5);
    QCOMPARE(m_pane->screensView()->picture().nodes()[0].name, QStringLiteral("other"));
    QCOMPARE(m_pane->problemCount(), 1);
}

void tst_zoHPCLayoutPane::addedRowIsShown()
{
    m_setup->addPowerWall(QStringLiteral("second"), 1, 1);
    m_setup->addWindow(QStringLiteral("m"), QString());

    QTRY_COMPARE(m_pane->roomView()->picture().walls().size(), size_t(2));
    QCOMPARE(m_pane->screensView()->picture().nodes().size(), size_t(2));
}

void tst_zoHPCLayoutPane::removedRowIsForgottenAtOnce()
{
    delete m_window;

    // Before the event loop turns, a click finds nothing that is gone.
    QVERIFY(m_pane->screensView()->picture().nodes().empty());
    for (const zoHPCProblem& problem : m_pane->problemsView()->problems()) {
        QVERIFY(!problem.item);
        QVERIFY(!problem.hasFix());
    }
    QTRY_COMPARE(m_pane->problemCount(), 2);
    QCOMPARE(m_pane->problemsView()->problems()[0].item, m_setup->display());
    QCOMPARE(m_pane->problemsView()->problems()[1].item, m_wall);
}

void tst_zoHPCLayoutPane::clearedTreeIsForgottenAtOnce()
{
    m_setup->projections.clear();

    QVERIFY(m_pane->roomView()->picture().walls().empty());
    QTRY_COMPARE(m_pane->problemCount(), 1);
}

void tst_zoHPCLayoutPane::manyChangesAreReadOnce()
{
    QSignalSpy counted(m_pane.get(), &zoHPCLayoutPane::problemCountChanged);

    for (int i = 0; i < 10; ++i)
        m_setup->addWindow(QStringLiteral("gone"), QString());

    QTRY_COMPARE(counted.size(), 1);
    QCOMPARE(m_pane->problemCount(), counted[0][0].toInt());
}

void tst_zoHPCLayoutPane::othersShareWhatThePaneRead()
{
    m_setup->addPowerWall(QStringLiteral("dark"), 1, 1);
    const auto read = m_pane->review().layout();
    const zoHPCProblem* const problems = m_pane->review().problems().data();

    QTRY_COMPARE(m_pane->problemCount(), 1);

    QCOMPARE(m_pane->review().layout(), read);
    QCOMPARE(m_pane->review().problems().data(), problems);
}

// However long a turn of the event loop takes, changes settle when the test says so.
void tst_zoHPCLayoutPane::setSettlingTime(int milliseconds) const
{
    const QList<zoHPCDebounce*> all = m_pane->findChildren<zoHPCDebounce*>();
    QCOMPARE(all.size(), 3); // of the pane and of both pictures
    for (const zoHPCDebounce* debounce : all)
        debounce->findChild<QTimer*>()->setInterval(milliseconds);
}

// A wall of 40 x 40 tiles gets wider and wider, as while its spin box is held.
void tst_zoHPCLayoutPane::changeQuickly()
{
    constexpr int hour = 3600 * 1000;
    setSettlingTime(hour);
    QSignalSpy settled(m_pane.get(), &zoHPCLayoutPane::settled);
    m_setup->addPowerWall(QStringLiteral("dark"), 1, 1); // which is a problem
    m_wall->setInt(zoHPCProjectionItem::Rows, 40);
    m_wall->setInt(zoHPCProjectionItem::Columns, 40);
    m_wall->update();
    m_pane->refresh();
    const auto shown = [this] {
        return m_pane->roomView()->picture().walls().empty()
                   ? 0.0
                   : m_pane->roomView()->picture().walls()[0].plane.width();
    };
    const bool isRoom = m_pane->findChild<QTabWidget*>()->currentIndex() == 0;
    double width = 4000.0; // the shape of the window, nearly
    for (int turn = 0; turn < 100 && m_pane->isSettled(); ++turn) {
        m_wall->setDouble(zoHPCProjectionItem::Width, width += 10.0);
        m_wall->update();
        QCoreApplication::processEvents();
        if (isRoom)
            QCOMPARE(shown(), width);
    }
    QVERIFY(!m_pane->isSettled());
    QCOMPARE(settled.size(), 0);
}

void tst_zoHPCLayoutPane::largeWallIsFollowedInLessDetail_data()
{
    QTest::addColumn<int>("tab");

    QTest::newRow("room") << 0;
    QTest::newRow("screens") << 1;
}

void tst_zoHPCLayoutPane::largeWallIsFollowedInLessDetail()
{
    QFETCH(int, tab);
    m_pane->findChild<QTabWidget*>()->setCurrentIndex(tab);
    QSignalSpy settled(m_pane.get(), &zoHPCLayoutPane::settled);

    changeQuickly();

    // The picture that is seen follows; what was found wrong before can be read on.
    QCOMPARE(m_pane->roomView()->picture().walls().empty(), tab == 1);
    QCOMPARE(m_pane->screensView()->picture().nodes().empty(), tab == 0);
    if (tab == 0)
        QCOMPARE(m_pane->roomView()->detail(), zoHPCPicture::Detail::Fast);
    QCOMPARE(m_pane->problemsView()->problems().size(), size_t(1));
    QVERIFY(!m_pane->problemsView()->problems()[0].item);

    setSettlingTime(0);
    QTRY_COMPARE(settled.size(), 1);
    QVERIFY(m_pane->isSettled());
    QCOMPARE(m_pane->roomView()->detail(), zoHPCPicture::Detail::Full);
    QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(2));
    QCOMPARE(m_pane->screensView()->picture().nodes().size(), size_t(1));
    QVERIFY(m_pane->problemsView()->problems()[0].item);
}

void tst_zoHPCLayoutPane::otherTabSettlesAtOnce()
{
    changeQuickly();

    m_pane->findChild<QTabWidget*>()->setCurrentIndex(1);

    QVERIFY(m_pane->isSettled());
    QCOMPARE(m_pane->screensView()->picture().nodes().size(), size_t(1));
    QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(2));
}

void tst_zoHPCLayoutPane::smallWallIsFollowedWhole()
{
    for (int turn = 0; turn < 5; ++turn) {
        m_wall->setDouble(zoHPCProjectionItem::Width, 5000.0 + turn);
        m_wall->update();
        QCoreApplication::processEvents();

        QVERIFY(m_pane->isSettled());
        QCOMPARE(m_pane->roomView()->detail(), zoHPCPicture::Detail::Full);
        QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(1));
        QCOMPARE(m_pane->screensView()->picture().nodes().size(), size_t(1));
    }
}

void tst_zoHPCLayoutPane::changesThatSettleWhileHiddenAreReadWhenShown()
{
    changeQuickly();

    m_pane->hide();
    delete m_window;
    m_pane->show();

    QVERIFY(m_pane->isSettled());
    QVERIFY(m_pane->screensView()->picture().nodes().empty());
}

void tst_zoHPCLayoutPane::hiddenPaneReadsNothing()
{
    m_pane->hide();
    m_setup->addPowerWall(QStringLiteral("second"), 1, 1);
    QCoreApplication::processEvents();
    QVERIFY(m_pane->roomView()->picture().walls().empty());

    m_pane->show();

    QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(2));
}

void tst_zoHPCLayoutPane::treesMayGoFirst()
{
    m_setup.reset();

    QVERIFY(m_pane->roomView()->picture().walls().empty());
    QVERIFY(m_pane->screensView()->picture().nodes().empty());
    m_pane->refresh();
    QCOMPARE(m_pane->problemCount(), 0);
}

void tst_zoHPCLayoutPane::otherModelReplacesTheFirst()
{
    zoHPCSetup other;
    other.addPowerWall(QStringLiteral("a"), 1, 1);
    other.addPowerWall(QStringLiteral("b"), 1, 1);

    m_pane->setModel(&other.projections, &other.displays, &other.hosts);
    m_pane->refresh();
    QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(2));
    m_setup->projections.clear();
    QCOMPARE(m_pane->roomView()->picture().walls().size(), size_t(2));
    m_pane->setModel(nullptr, nullptr, nullptr);
    QVERIFY(m_pane->roomView()->picture().walls().empty());
}

void tst_zoHPCLayoutPane::withoutTreesNothingIsShown()
{
    zoHPCLayoutPane pane;
    pane.refresh();
    pane.setCurrentItems({});

    QCOMPARE(pane.problemCount(), 0);
    QVERIFY(!pane.grab().isNull());
}

void tst_zoHPCLayoutPane::countOfProblemsIsAnnouncedOnChange()
{
    QSignalSpy counted(m_pane.get(), &zoHPCLayoutPane::problemCountChanged);

    m_pane->refresh();
    QCOMPARE(counted.size(), 0);
    m_setup->addWindow(QString(), QStringLiteral("gone"));
    m_pane->refresh();

    QCOMPARE(counted.size(), 1);
    QCOMPARE(counted[0][0].toInt(), 2);
}

void tst_zoHPCLayoutPane::clickInThePicturesIsAnnounced()
{
    QSignalSpy activated(m_pane.get(), &zoHPCLayoutPane::itemActivated);
    zoHPCRoomView* const room = m_pane->roomView();
    const zoHPCRoomCamera& camera = room->picture().camera();

    QTest::mouseClick(room, Qt::LeftButton, Qt::NoModifier,
                      camera.toPicture(camera.see({-700.0, 0.0, -1500.0}), room->rect()).toPoint());
    m_pane->findChild<QTabWidget*>()->setCurrentIndex(1);
    zoHPCScreensView* const screens = m_pane->screensView();
    QTest::mouseClick(screens, Qt::LeftButton, Qt::NoModifier,
                      screens->picture().placeOf(m_window).center().toPoint());

    QCOMPARE(activated.size(), 2);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), m_wall->child(0));
    QCOMPARE(activated[1][0].value<QTreeWidgetItem*>(), m_window->child(0));
}

void tst_zoHPCLayoutPane::clickInTheProblemsIsAnnounced()
{
    QSignalSpy activated(m_pane.get(), &zoHPCLayoutPane::itemActivated);
    zoHPCWindowItem* const lost = m_setup->addWindow(QStringLiteral("gone"), QStringLiteral("wall"));
    m_pane->refresh();
    QTreeView* const list = m_pane->problemsView()->findChild<QTreeView*>();

    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualRect(list->model()->index(0, 0)).center());

    QCOMPARE(activated.size(), 1);
    QCOMPARE(activated[0][0].value<QTreeWidgetItem*>(), lost);
}

void tst_zoHPCLayoutPane::dragIsAnnouncedAndShown()
{
    QSignalSpy edited(m_pane.get(), &zoHPCLayoutPane::displayEdited);
    m_pane->findChild<QTabWidget*>()->setCurrentIndex(1);
    zoHPCScreensView* const view = m_pane->screensView();
    const QPoint start = view->picture().placeOf(m_window).center().toPoint();

    QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(40, 0), view->mapToGlobal(start + QPoint(40, 0)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view, &move);

    QCOMPARE(edited.size(), 1);
    const int x = m_window->getInt(zoHPCWindowItem::X);
    QVERIFY(x > 0);
    QTRY_COMPARE(view->picture().nodes()[0].screens[0].windows[0].geometry.x(), double(x));
    QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, start + QPoint(40, 0));
    QCOMPARE(m_window->getInt(zoHPCWindowItem::X), x);
}

void tst_zoHPCLayoutPane::fixIsAnnouncedAndShown()
{
    QSignalSpy edited(m_pane.get(), &zoHPCLayoutPane::displayEdited);
    QSignalSpy hosts(m_pane.get(), &zoHPCLayoutPane::hostsEdited);
    m_wall->setDouble(zoHPCProjectionItem::Distance, -1500.0);
    m_wall->update();
    m_pane->refresh();
    QCOMPARE(m_pane->problemCount(), 1);
    QTreeView* const list = m_pane->problemsView()->findChild<QTreeView*>();

    list->setCurrentIndex(list->model()->index(0, 0));
    QTest::keyClick(list, Qt::Key_Space);

    QCOMPARE(m_wall->getDouble(zoHPCProjectionItem::Distance), 1500.0);
    QCOMPARE(edited.size(), 1);
    QCOMPARE(hosts.size(), 0);
    QTRY_COMPARE(m_pane->problemCount(), 0);
}

void tst_zoHPCLayoutPane::fixOfTheHostTreeIsAnnounced()
{
    QSignalSpy edited(m_pane.get(), &zoHPCLayoutPane::displayEdited);
    QSignalSpy hosts(m_pane.get(), &zoHPCLayoutPane::hostsEdited);
    m_setup->hosts.getNodeItems()[0]->setIsEnabled(false);
    // The window's node and the network.
    QTRY_COMPARE(m_pane->problemCount(), 2);
    QTreeView* const list = m_pane->problemsView()->findChild<QTreeView*>();

    list->setCurrentIndex(list->model()->index(0, 0));
    QTest::keyClick(list, Qt::Key_Space);

    QCOMPARE(hosts.size(), 1);
    QCOMPARE(edited.size(), 0);
    QVERIFY(m_setup->hosts.getNodeItems()[0]->isEnabled());
    QTRY_COMPARE(m_pane->problemCount(), 0);
}

void tst_zoHPCLayoutPane::screenSizeIsOfferedForTheScreensOnly()
{
    auto* const size = m_pane->findChild<QComboBox*>(QStringLiteral("m_screenSize"));
    auto* const tabs = m_pane->findChild<QTabWidget*>();

    QVERIFY(!size->isVisible());
    tabs->setCurrentIndex(1);
    QVERIFY(size->isVisible());
    QVERIFY(!m_pane->screensView()->picture().nodes()[0].screens[0].isSizeKnown);
    size->setCurrentIndex(size->findText(QStringLiteral("1920 x 1080")));
    QCOMPARE(m_pane->screensView()->picture().nodes()[0].screens[0].size, QSizeF(1920, 1080));
    size->setCurrentIndex(0);
    QVERIFY(!m_pane->screensView()->picture().nodes()[0].screens[0].isSizeKnown);
}

void tst_zoHPCLayoutPane::fitButtonFitsTheCurrentPicture()
{
    auto* const fit = m_pane->findChild<QPushButton*>(QStringLiteral("m_fitButton"));
    const double distance = m_pane->roomView()->picture().camera().distance;
    QTest::keyClick(m_pane->roomView(), Qt::Key_Plus);
    QVERIFY(m_pane->roomView()->picture().camera().distance < distance);

    fit->click();
    QVERIFY(qAbs(m_pane->roomView()->picture().camera().distance - distance) < 1e-6 * distance);

    m_pane->findChild<QTabWidget*>()->setCurrentIndex(1);
    const double scale = m_pane->screensView()->picture().scale();
    QTest::keyClick(m_pane->screensView(), Qt::Key_Plus);
    fit->click();
    QVERIFY(qAbs(m_pane->screensView()->picture().scale() - scale) < 1e-9);
}

void tst_zoHPCLayoutPane::pictureIsSaved()
{
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("room.png"));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    zoDialogRobot robot([&](QDialog* dialog) {
        auto* const files = qobject_cast<QFileDialog*>(dialog);
        QVERIFY(files);
        files->findChild<QLineEdit*>()->setText(fileName);
        dialog->accept();
    });

    m_pane->findChild<QPushButton*>(QStringLiteral("m_savePictureButton"))->click();
    QCOMPARE(robot.handled(), 1);
    QCOMPARE(QImage(fileName).size(), m_pane->roomView()->size() * 2);

    // Cancelled: nothing is written.
    zoDialogRobot cancel([](QDialog* dialog) { dialog->reject(); });
    m_pane->savePicture();
    QCOMPARE(cancel.handled(), 1);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

void tst_zoHPCLayoutPane::noButtonTakesTheReturnKey()
{
    // In a dialog Return must not press one of them.
    const QList<QPushButton*> buttons = m_pane->findChildren<QPushButton*>();

    QVERIFY(!buttons.isEmpty());
    for (const QPushButton* button : buttons)
        QVERIFY(!button->autoDefault());
}

ZO_TEST_MAIN(tst_zoHPCLayoutPane)

#include "tst_zoHPCLayoutPane.moc"
