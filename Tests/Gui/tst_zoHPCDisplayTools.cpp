#include "zoFakeHost.h"
#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayTools.h>
#include <zoHPCGUIW.h>
#include <zoHPCHistory.h>
#include <zoHPCLayoutPane.h>
#include <zoHPCProblemsView.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCRoomView.h>
#include <zoHPCScreensView.h>
#include <zoHPCUndo.h>
#include <zoHPCViewportItem.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTranslator>
#include <QTreeView>
#include <QTreeWidget>

#include <memory>

#include <algorithm>

// The display setup with many rows: filters, several rows at once, copies on the next nodes, the node beside a surface.
// Each of them is one step of the dialog.
class tst_zoHPCDisplayTools final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void filterFindsNodeTileAndOption_data();
    void filterFindsNodeTileAndOption();
    void filterOfProjectionsFindsTileAndNode();
    void findKeyLeadsToTheFilter();
    void openedAgainItShowsAllRows();
    void severalRowsHaveAPanel();
    void severalRowsShowWhatTheyShare();
    void valueIsSetForAllAsOneStep_data();
    void valueIsSetForAllAsOneStep();
    void typedNumberIsOneStep();
    void unreadableNumberChangesNothing();
    void stereoIsSetForAllViewports();
    void nodesAreSetInTheirOrder();
    void deleteTakesAllThatIsSelected();
    void deletedRowsBelowOthersGoOnce();
    void duplicateIsOneStep();
    void duplicatesOfDuplicatesGoOn();
    void duplicateWaitsForTheEndOfTheSession();
    void windowForEverySurfaceIsOneStep();
    void windowForEverySurfaceWaitsForTheEndOfTheSession();
    void nodeStandsBesideItsSurface();
    void nodesBesideSurfacesKeepTheRows();
    void nodesThatChangedUnseenStandThereOnceShown();
    void clickedSurfaceIsAssignedAsOneStep();
    void clickWithControlKeySelects();
    void draggedWindowIsSelectedAndShowsItsPlace();
    void viewIsKeptWhileViewportsAreAdded();
    void tabKeyReachesTabsPicturesAndProblems();
    void fitsTheScreenWithManyRows_data();
    void fitsTheScreenWithManyRows();

private:
    template <class Widget = QWidget>
    Widget* inDialog(const char* name) const
    {
        return dialog()->findChild<Widget*>(QLatin1String(name));
    }
    zoHPCDisplayGUII* dialog() const { return m_window->getDisplayEditor(); }
    zoHPCLayoutPane* pane() const { return dialog()->findChild<zoHPCLayoutPane*>(); }
    // The first problem that can be mended at once, -1 for none.
    int rowWithFix() const
    {
        const auto& problems = pane()->problemsView()->problems();
        const auto found = std::find_if(problems.begin(), problems.end(),
                                        [](const zoHPCProblem& problem) { return problem.hasFix(); });
        return found == problems.end() ? -1 : int(found - problems.begin());
    }
    QTreeWidget* projections() const { return inDialog<QTreeWidget>("m_projectionTree"); }
    QTreeWidget* outputs() const { return inDialog<QTreeWidget>("m_displayTree"); }
    QTreeWidgetItem* window(int row) const { return outputs()->topLevelItem(0)->child(row); }
    QString page() const { return inDialog<QStackedWidget>("m_panels")->currentWidget()->objectName(); }
    void load(int nodes, int windows, int rows = 2, int columns = 4);
    void selectWindows(int first, int last);
    QStringList values(int column) const;
    QStringList shown() const;
    int steps() const { return int(m_window->undoSteps()->steps().stepCount()); }
    void settle() const;

    std::unique_ptr<zoFakeHost> m_host;
    std::unique_ptr<zoHPCGUIW> m_window;
};

void tst_zoHPCDisplayTools::init()
{
    m_host = std::make_unique<zoFakeHost>();
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
}

void tst_zoHPCDisplayTools::cleanup()
{
    m_window.reset();
    m_host.reset();
    zoTestCase::cleanup();
}

// A wall with tiles of 1 x 1 m.
void tst_zoHPCDisplayTools::load(int nodes, int windows, int rows, int columns)
{
    QString text = QStringLiteral("<cluster version=\"1\"><master><network>");
    for (int i = 1; i <= nodes; ++i)
        text += QStringLiteral("<node name=\"n%1\"/>").arg(i);
    text +=
        QStringLiteral("</network></master><projection name=\"Wall\" type=\"powerwall\" rows=\"%1\" "
                       "columns=\"%2\" width=\"%3\" height=\"%4\" distance=\"2000\"/><display user=\"1\">")
            .arg(rows)
            .arg(columns)
            .arg(1000 * columns)
            .arg(1000 * rows);
    for (int i = 0; i < windows; ++i)
        text +=
            QStringLiteral("<window node=\"n%1\" screen=\"0\" fullscreen=\"true\" width=\"1920\" "
                           "height=\"1080\"><viewport projection=\"Wall row:%2 col:%3\" position=\"fill\" "
                           "eye=\"mono\"/></window>")
                .arg(i + 1)
                .arg(i / columns + 1)
                .arg(i % columns + 1);
    text += QStringLiteral("</display></cluster>");
    m_window->replaceConfigString(text);
    m_window->displaySetup();
    QApplication::setActiveWindow(dialog());
    QVERIFY(QTest::qWaitForWindowActive(dialog()));
    settle();
}

// Until what was done is a step.
void tst_zoHPCDisplayTools::settle() const
{
    QCoreApplication::processEvents();
    m_window->undoSteps()->commit();
    QCoreApplication::processEvents();
}

void tst_zoHPCDisplayTools::selectWindows(int first, int last)
{
    outputs()->setCurrentItem(window(first));
    for (int row = first; row <= last; ++row)
        window(row)->setSelected(true);
    settle();
}

QStringList tst_zoHPCDisplayTools::values(int column) const
{
    QStringList result;
    for (int row = 0; row < outputs()->topLevelItem(0)->childCount(); ++row)
        result << window(row)->data(column, Qt::EditRole).toString();
    return result;
}

QStringList tst_zoHPCDisplayTools::shown() const
{
    QStringList result;
    for (int row = 0; row < outputs()->topLevelItem(0)->childCount(); ++row)
        result << window(row)->child(0)->data(zoHPCViewportItem::Projection, Qt::EditRole).toString();
    return result;
}

void tst_zoHPCDisplayTools::filterFindsNodeTileAndOption_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("windows");

    QTest::newRow("node") << "n3" << 1;
    QTest::newRow("tile") << "row:2" << 4;
    QTest::newRow("screen") << "screen:1" << 8;
    QTest::newRow("size") << "1920x1080" << 8;
    QTest::newRow("node-and-tile") << "n3 row:1" << 1;
    QTest::newRow("node-and-tile-of-others") << "n3 row:2" << 0;
}

void tst_zoHPCDisplayTools::filterFindsNodeTileAndOption()
{
    QFETCH(QString, words);
    QFETCH(int, windows);
    load(8, 8);

    inDialog<QLineEdit>("m_outputFilter")->setText(words);

    int shownWindows = 0;
    for (int row = 0; row < 8; ++row)
        shownWindows += window(row)->isHidden() ? 0 : 1;
    QCOMPARE(shownWindows, windows);
    settle();
    QCOMPARE(steps(), 0); // looking is no change
}

void tst_zoHPCDisplayTools::filterOfProjectionsFindsTileAndNode()
{
    load(8, 8);
    QTRY_COMPARE(projections()->topLevelItem(0)->child(2)->text(zoHPCProjectionItem::ColumnCount),
                 QStringLiteral("n3"));

    inDialog<QLineEdit>("m_projectionFilter")->setText(QStringLiteral("n3"));

    QVERIFY(!projections()->topLevelItem(0)->child(2)->isHidden());
    QVERIFY(projections()->topLevelItem(0)->child(3)->isHidden());
    QVERIFY(projections()->topLevelItem(0)->isExpanded());
}

void tst_zoHPCDisplayTools::openedAgainItShowsAllRows()
{
    load(8, 8);
    inDialog<QLineEdit>("m_outputFilter")->setText(QStringLiteral("n3"));
    inDialog<QLineEdit>("m_projectionFilter")->setText(QStringLiteral("n3"));
    QVERIFY(window(0)->isHidden());
    QVERIFY(projections()->topLevelItem(0)->child(0)->isHidden());

    dialog()->reject();
    m_window->displaySetup();

    QCOMPARE(inDialog<QLineEdit>("m_outputFilter")->text(), QString());
    QCOMPARE(inDialog<QLineEdit>("m_projectionFilter")->text(), QString());
    QVERIFY(!window(0)->isHidden());
    QVERIFY(!projections()->topLevelItem(0)->child(0)->isHidden());
}

void tst_zoHPCDisplayTools::findKeyLeadsToTheFilter()
{
    load(8, 8);
    outputs()->setFocus();
    QTest::keyClick(outputs(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(inDialog("m_outputFilter")->hasFocus());

    projections()->setFocus();
    QTest::keyClick(projections(), Qt::Key_F, Qt::ControlModifier);
    QVERIFY(inDialog("m_projectionFilter")->hasFocus());
}

void tst_zoHPCDisplayTools::severalRowsHaveAPanel()
{
    load(8, 8);
    outputs()->setCurrentItem(window(0));
    QCOMPARE(page(), QStringLiteral("m_windowPage"));

    selectWindows(0, 3);
    QCOMPARE(page(), QStringLiteral("m_severalPage"));
    QVERIFY(
        inDialog<QLabel>("m_severalSummary")->text().startsWith(QStringLiteral("4 windows, 4 viewports")));

    // A range of rows takes viewports along: the windows are the same.
    window(0)->child(0)->setSelected(true);
    settle();
    QVERIFY(
        inDialog<QLabel>("m_severalSummary")->text().startsWith(QStringLiteral("4 windows, 4 viewports")));
    outputs()->setCurrentItem(nullptr);
    outputs()->selectAll();
    QCOMPARE(page(), QStringLiteral("m_severalPage"));
    // Chosen elsewhere, as in a picture, it is alone.
    emit pane()->itemActivated(window(1)->child(0));
    QCOMPARE(page(), QStringLiteral("m_viewportPage"));
}

void tst_zoHPCDisplayTools::severalRowsShowWhatTheyShare()
{
    load(8, 8);
    window(1)->setData(zoHPCWindowItem::Width, Qt::EditRole, 3840);
    window(1)->setData(zoHPCWindowItem::FullScreen, Qt::EditRole, false);

    selectWindows(0, 2);

    QVERIFY(inDialog<QLineEdit>("m_severalNumber9")->text().isEmpty());
    QCOMPARE(inDialog<QLineEdit>("m_severalNumber10")->text(), QStringLiteral("1080"));
    QCOMPARE(inDialog<QCheckBox>("m_severalFullScreen")->checkState(), Qt::PartiallyChecked);
    QCOMPARE(inDialog<QComboBox>("m_severalScreen")->currentData().toString(), QStringLiteral("0"));
}

void tst_zoHPCDisplayTools::valueIsSetForAllAsOneStep_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("value");

    QTest::newRow("screen") << "m_severalScreen" << int(zoHPCWindowItem::Screen) << "2";
    QTest::newRow("full-screen") << "m_severalFullScreen" << int(zoHPCWindowItem::FullScreen) << "false";
}

void tst_zoHPCDisplayTools::valueIsSetForAllAsOneStep()
{
    QFETCH(QString, field);
    QFETCH(int, column);
    QFETCH(QString, value);
    load(8, 8);
    const QStringList before = values(column);
    selectWindows(2, 5);

    if (auto* const combo = dialog()->findChild<QComboBox*>(field)) {
        const int index = combo->findData(value);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    } else {
        dialog()->findChild<QCheckBox*>(field)->click();
    }
    settle();

    QStringList expected = before;
    for (int row = 2; row <= 5; ++row)
        expected[row] = value;
    QCOMPARE(values(column), expected);
    QCOMPARE(steps(), 1);
    m_window->undoSteps()->undo();
    QCOMPARE(values(column), before);
}

void tst_zoHPCDisplayTools::typedNumberIsOneStep()
{
    load(8, 8);
    selectWindows(0, 7);
    auto* const field = inDialog<QLineEdit>("m_severalNumber9");
    field->setFocus();
    field->selectAll();

    QTest::keyClicks(field, QStringLiteral("5520/3"));
    settle();
    QTest::keyClick(field, Qt::Key_Return);
    settle();

    QVERIFY(dialog()->isVisible());
    QCOMPARE(values(zoHPCWindowItem::Width), QVector<QString>(8, QStringLiteral("1840")).toList());
    QCOMPARE(field->text(), QStringLiteral("1840"));
    QCOMPARE(steps(), 1);
    QCOMPARE(outputs()->selectedItems().size(), 8);
}

void tst_zoHPCDisplayTools::unreadableNumberChangesNothing()
{
    load(8, 8);
    selectWindows(0, 7);
    auto* const field = inDialog<QLineEdit>("m_severalNumber9");
    field->setFocus();
    field->selectAll();

    QTest::keyClicks(field, QStringLiteral("-5"));
    QTest::keyClick(field, Qt::Key_Return);
    settle();

    QCOMPARE(values(zoHPCWindowItem::Width), QVector<QString>(8, QStringLiteral("1920")).toList());
    QCOMPARE(field->text(), QStringLiteral("1920"));
    QCOMPARE(steps(), 0);
}

void tst_zoHPCDisplayTools::stereoIsSetForAllViewports()
{
    load(8, 8);
    selectWindows(0, 7);
    auto* const combo = inDialog<QComboBox>("m_severalStereo");
    combo->setCurrentIndex(combo->findData(QStringLiteral("stereo")));

    emit combo->activated(combo->currentIndex());
    settle();

    for (int row = 0; row < 8; ++row)
        QCOMPARE(window(row)->child(0)->data(zoHPCViewportItem::Eye, Qt::EditRole).toString(),
                 QStringLiteral("stereo"));
    QCOMPARE(steps(), 1);
}

void tst_zoHPCDisplayTools::nodesAreSetInTheirOrder()
{
    load(8, 4);
    selectWindows(0, 3);
    auto* const combo = inDialog<QComboBox>("m_severalNodes");
    combo->setCurrentIndex(combo->findText(QStringLiteral("n5")));

    emit combo->activated(combo->currentIndex());
    settle();

    QCOMPARE(values(zoHPCWindowItem::Node), (QStringList{QStringLiteral("n5"), QStringLiteral("n6"),
                                                         QStringLiteral("n7"), QStringLiteral("n8")}));
    QCOMPARE(window(0)->text(0), QStringLiteral("Window: n5"));
    QCOMPARE(steps(), 1);
}

void tst_zoHPCDisplayTools::deleteTakesAllThatIsSelected()
{
    load(8, 8);
    selectWindows(2, 6);
    outputs()->setFocus();

    QTest::keyClick(outputs(), Qt::Key_Delete);
    settle();

    QCOMPARE(values(zoHPCWindowItem::Node),
             (QStringList{QStringLiteral("n1"), QStringLiteral("n2"), QStringLiteral("n8")}));
    QCOMPARE(steps(), 1);
    m_window->undoSteps()->undo();
    QCOMPARE(values(zoHPCWindowItem::Node).size(), 8);
}

void tst_zoHPCDisplayTools::deletedRowsBelowOthersGoOnce()
{
    load(8, 8);
    outputs()->selectAll();
    outputs()->setFocus();
    settle();

    QTest::keyClick(outputs(), Qt::Key_Delete);
    settle();

    QCOMPARE(outputs()->topLevelItemCount(), 0);
    QCOMPARE(steps(), 1);
}

void tst_zoHPCDisplayTools::duplicateIsOneStep()
{
    load(8, 1);
    outputs()->setCurrentItem(window(0));

    QTest::mouseClick(inDialog("m_duplicateButton"), Qt::LeftButton);
    settle();

    QCOMPARE(values(zoHPCWindowItem::Node), (QStringList{QStringLiteral("n1"), QStringLiteral("n2")}));
    QCOMPARE(shown(), (QStringList{QStringLiteral("Wall row:1 col:1"), QStringLiteral("Wall row:1 col:2")}));
    QCOMPARE(steps(), 1);
    QCOMPARE(outputs()->currentItem(), window(1));
    m_window->undoSteps()->undo();
    QCOMPARE(outputs()->topLevelItem(0)->childCount(), 1);
}

void tst_zoHPCDisplayTools::duplicatesOfDuplicatesGoOn()
{
    load(8, 1);
    outputs()->setCurrentItem(window(0));
    outputs()->setFocus();

    QTest::keyClick(outputs(), Qt::Key_D, Qt::ControlModifier);
    settle();
    window(0)->setSelected(true);
    QTest::keyClick(outputs(), Qt::Key_D, Qt::ControlModifier);
    settle();
    QCOMPARE(outputs()->selectedItems().size(), 2);
    window(0)->setSelected(true);
    window(1)->setSelected(true);
    QTest::keyClick(outputs(), Qt::Key_D, Qt::ControlModifier);
    settle();

    QStringList nodes;
    for (int i = 1; i <= 8; ++i)
        nodes << QStringLiteral("n%1").arg(i);
    QCOMPARE(values(zoHPCWindowItem::Node), nodes);
    QCOMPARE(shown().last(), QStringLiteral("Wall row:2 col:4"));
    QCOMPARE(pane()->problemCount(), 0);
}

void tst_zoHPCDisplayTools::duplicateWaitsForTheEndOfTheSession()
{
    load(8, 1);
    outputs()->setCurrentItem(window(0));
    outputs()->setFocus();

    dialog()->setIsRunning(true);
    QVERIFY(!inDialog("m_duplicateButton")->isEnabled());
    QTest::keyClick(outputs(), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(outputs()->topLevelItem(0)->childCount(), 1);

    dialog()->setIsRunning(false);
    QVERIFY(inDialog("m_duplicateButton")->isEnabled());
}

void tst_zoHPCDisplayTools::windowForEverySurfaceIsOneStep()
{
    load(8, 0);
    pane()->refresh();
    auto* const list = pane()->problemsView()->list();
    // The display without a window is told, too.
    const int row = rowWithFix();
    QVERIFY(row >= 0);
    QCOMPARE(pane()->problemsView()->problems()[std::size_t(row)].fixText, QStringLiteral("Add 8 windows"));

    list->setCurrentIndex(list->model()->index(row, 0));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Space);
    settle();

    QCOMPARE(outputs()->topLevelItem(0)->childCount(), 8);
    QTRY_COMPARE(pane()->problemCount(), 0);
    QCOMPARE(steps(), 1);
    m_window->undoSteps()->undo();
    QCOMPARE(outputs()->topLevelItem(0)->childCount(), 0);
}

void tst_zoHPCDisplayTools::windowForEverySurfaceWaitsForTheEndOfTheSession()
{
    load(8, 0);

    dialog()->setIsRunning(true);
    QCOMPARE(rowWithFix(), -1);

    dialog()->setIsRunning(false);
    QVERIFY(rowWithFix() >= 0);
}

void tst_zoHPCDisplayTools::nodesThatChangedUnseenStandThereOnceShown()
{
    load(8, 8);
    const QTreeWidgetItem* const tile = projections()->topLevelItem(0)->child(5);
    QTRY_COMPARE(tile->text(zoHPCProjectionItem::ColumnCount), QStringLiteral("n6"));

    dialog()->hide();
    static_cast<zoHPCWindowItem*>(window(5))->setRenderNode(QStringLiteral("n1"));
    pane()->refresh();
    QCoreApplication::processEvents();
    dialog()->show();

    QTRY_COMPARE(tile->text(zoHPCProjectionItem::ColumnCount), QStringLiteral("n1"));
}

void tst_zoHPCDisplayTools::nodeStandsBesideItsSurface()
{
    load(8, 8);
    const QTreeWidgetItem* const tile = projections()->topLevelItem(0)->child(5);
    QTRY_COMPARE(tile->text(zoHPCProjectionItem::ColumnCount), QStringLiteral("n6"));
    QVERIFY(tile->toolTip(0).contains(QStringLiteral("n6")));
    QVERIFY(!projections()->isColumnHidden(zoHPCProjectionItem::ColumnCount));

    static_cast<zoHPCWindowItem*>(window(5))->setRenderNode(QStringLiteral("n1"));

    QTRY_COMPARE(tile->text(zoHPCProjectionItem::ColumnCount), QStringLiteral("n1"));
    settle();
    QVERIFY(!m_window->documentText().contains(QStringLiteral("n6\" screen")));
}

// While a value is dragged ten thousand tiles are not made anew for each step.
void tst_zoHPCDisplayTools::nodesBesideSurfacesKeepTheRows()
{
    load(8, 8);
    auto* const wall = static_cast<zoHPCProjectionItem*>(projections()->topLevelItem(0));
    QTRY_COMPARE(wall->child(5)->text(zoHPCProjectionItem::ColumnCount), QStringLiteral("n6"));
    const QList<zoHPCProjectionItem*> tiles = wall->children<zoHPCProjectionItem>();

    wall->setDouble(zoHPCProjectionItem::Distance, 2500.0);

    QCOMPARE(wall->children<zoHPCProjectionItem>(), tiles);
    QCOMPARE(tiles.at(5)->plane().lowerLeft.z, -2500.0);
    QCOMPARE(wall->child(5)->text(zoHPCProjectionItem::ColumnCount), QStringLiteral("n6"));
}

void tst_zoHPCDisplayTools::clickedSurfaceIsAssignedAsOneStep()
{
    load(8, 1);
    pane()->refresh();
    outputs()->setCurrentItem(window(0)->child(0));
    zoHPCRoomView* const room = pane()->roomView();
    const zoHPCRoomCamera& camera = room->picture().camera();

    QTest::mouseClick(room, Qt::LeftButton, Qt::NoModifier,
                      camera.toPicture(camera.see({1600.0, -500.0, -2000.0}), room->rect()).toPoint());
    settle();

    QCOMPARE(shown(), QStringList{QStringLiteral("Wall row:2 col:4")});
    QCOMPARE(outputs()->currentItem(), window(0)->child(0));
    QCOMPARE(page(), QStringLiteral("m_viewportPage"));
    QCOMPARE(steps(), 1);
}

void tst_zoHPCDisplayTools::clickWithControlKeySelects()
{
    load(8, 1);
    pane()->refresh();
    outputs()->setCurrentItem(window(0)->child(0));
    zoHPCRoomView* const room = pane()->roomView();
    const zoHPCRoomCamera& camera = room->picture().camera();

    QTest::mouseClick(room, Qt::LeftButton, Qt::ControlModifier,
                      camera.toPicture(camera.see({1600.0, -500.0, -2000.0}), room->rect()).toPoint());
    settle();

    QCOMPARE(projections()->currentItem(), projections()->topLevelItem(0)->child(7));
    QCOMPARE(shown(), QStringList{QStringLiteral("Wall row:1 col:1")});
}

void tst_zoHPCDisplayTools::draggedWindowIsSelectedAndShowsItsPlace()
{
    load(8, 2);
    for (int row = 0; row < 2; ++row)
        window(row)->setData(zoHPCWindowItem::FullScreen, Qt::EditRole, false);
    inDialog<QTabWidget>("m_layoutTabs")->setCurrentIndex(1);
    pane()->refresh();
    outputs()->setCurrentItem(window(0));
    settle();
    zoHPCScreensView* const screens = pane()->screensView();
    const QPoint from =
        screens->picture().placeOf(static_cast<zoHPCWindowItem*>(window(1))).center().toPoint();

    QTest::mousePress(screens, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(40, 30), Qt::LeftButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(screens, &move);

    QCOMPARE(outputs()->currentItem(), window(1));
    QCOMPARE(page(), QStringLiteral("m_windowPage"));
    QTest::mouseRelease(screens, Qt::LeftButton, Qt::NoModifier, from + QPoint(40, 30));
    QCOMPARE(inDialog<QSpinBox>("m_windowX")->value(), values(zoHPCWindowItem::X).at(1).toInt());
    QVERIFY(inDialog<QSpinBox>("m_windowX")->value() > 0);
}

void tst_zoHPCDisplayTools::viewIsKeptWhileViewportsAreAdded()
{
    load(8, 1);
    inDialog<QTabWidget>("m_layoutTabs")->setCurrentIndex(1);
    auto* const panes = inDialog<QSplitter>("m_layoutSplitter");
    panes->setSizes({200, 300});
    const QList<int> sizes = panes->sizes();
    outputs()->setCurrentItem(window(0)->child(0));
    auto* const picker = inDialog<QTreeView>("m_planeView");
    picker->expand(picker->model()->index(0, 0));

    for (int i = 0; i < 3; ++i) {
        outputs()->setCurrentItem(window(0));
        QTest::mouseClick(inDialog("m_addViewportButton"), Qt::LeftButton);
        settle();
    }

    QCOMPARE(window(0)->childCount(), 4);
    QCOMPARE(inDialog<QTabWidget>("m_layoutTabs")->currentIndex(), 1);
    QCOMPARE(panes->sizes(), sizes);
    QVERIFY(picker->isExpanded(picker->model()->index(0, 0)));
}

void tst_zoHPCDisplayTools::tabKeyReachesTabsPicturesAndProblems()
{
    load(8, 1);
    inDialog<QTabWidget>("m_layoutTabs")->setCurrentIndex(0);
    outputs()->setFocus();

    QStringList visited;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited << QApplication::focusWidget()->objectName();
    }

    for (const char* name : {"qt_tabwidget_tabbar", "m_roomView", "m_problemList", "m_outputFilter",
                             "m_projectionFilter", "m_duplicateButton", "m_undoButton"}) {
        if (inDialog(name)->isEnabled())
            QVERIFY2(visited.contains(QLatin1String(name)),
                     qPrintable(QLatin1String(name) + QLatin1String(" is not in ") +
                                visited.join(QLatin1Char(' '))));
    }
}

void tst_zoHPCDisplayTools::fitsTheScreenWithManyRows_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("language");

    for (const char* language : {"en", "de"}) {
        QTest::addRow("24-%s", language) << 4 << 6 << QString::fromLatin1(language);
        QTest::addRow("500-%s", language) << 20 << 25 << QString::fromLatin1(language);
    }
}

// ZO_SCREENSHOTS=FOLDER keeps what it looks like.
void tst_zoHPCDisplayTools::fitsTheScreenWithManyRows()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY(language == QLatin1String("en") ||
            translator.load(QStringLiteral("zoHPC_") + language, QStringLiteral(ZO_TRANSLATION_DIR)));
    QApplication::installTranslator(&translator);
    m_window = std::make_unique<zoHPCGUIW>(nullptr, QStringLiteral("Module"));
    load(rows * columns, rows * columns - 2, rows, columns);
    dialog()->resize(1366, 730);
    selectWindows(1, 9);
    pane()->refresh();
    QCoreApplication::processEvents();

    QVERIFY(dialog()->minimumSizeHint().height() <= 730);
    QStringList cut;
    const QList<QWidget*> fields = inDialog("m_severalPage")->findChildren<QWidget*>();
    for (const QWidget* field : fields) {
        const int right = field->mapTo(inDialog("m_panelArea"), QPoint(field->width(), 0)).x();
        if (field->isVisible() && right > inDialog("m_panelArea")->width())
            cut << field->objectName();
    }
    const QString folder = qEnvironmentVariable("ZO_SCREENSHOTS");
    for (int tab = 0; tab < 2 && !folder.isEmpty(); ++tab) {
        inDialog<QTabWidget>("m_layoutTabs")->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        QVERIFY(dialog()->grab().save(QStringLiteral("%1/display-setup-%2-%3-%4.png")
                                          .arg(folder)
                                          .arg(rows * columns)
                                          .arg(tab)
                                          .arg(language)));
    }
    QCOMPARE(cut, QStringList());
    m_window.reset();
    QApplication::removeTranslator(&translator);
}

ZO_TEST_MAIN(tst_zoHPCDisplayTools)
#include "tst_zoHPCDisplayTools.moc"
