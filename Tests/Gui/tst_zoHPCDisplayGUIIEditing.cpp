#include "zoHPCDisplaySetupTest.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTreeWidget>

#include <functional>
#include <map>

// The display setup in a user's hands: OK and Cancel, adding, deleting, copying, converting.
class tst_zoHPCDisplayGUIIEditing final : public zoHPCDisplaySetupTest
{
    Q_OBJECT

private slots:
    void openTakesASnapshot();
    void openClearsTheCurrentRows();
    void cancelRestoresWithoutAnnouncing();
    void cancelBringsBackNodesThatOpeningTookAway();
    void cancelWithoutOpeningChangesNothing();
    void applyAnnouncesAndStays();
    void okAnnouncesAndHides();
    void returnKeyStaysInTheDialog();
    void escapeCancels();

    void changesAreSaid_data();
    void changesAreSaid();
    void lookingAroundIsNoChange();
    void loadingIsSaidOnce();
    void cancelSaysThatAllChangedBack();

    void changedValueKeepsTilesAndLinks();
    void projectionsThatCameAreLinkedByTheNextValue();

    void addedProjectionsAreNumbered();
    void freedNumberIsTakenAgain();
    void tileNamesCountAsTaken();
    void newProjectionIsACurrentWall();
    void addedDisplaysStandAtTopLevel();
    void windowComesWithAViewport();
    void windowGoesToTheDisplayOfTheCurrentRow();
    void viewportGoesToTheWindowOfTheCurrentRow();
    void withoutCurrentRowNothingIsAdded();
    void deleteTakesTheRowChosenLast();
    void deletingTheLastRowLeavesNothingCurrent();
    void copiedProjectionIsPastedUnderANewName();
    void copyingKeepsTheLinksOfTheSource();
    void copyingATileKeepsTheWall();
    void copyOutlivesItsSource();
    void pastedWindowGoesBelowTheCurrentDisplay();
    void pastedWindowNeedsADisplay();
    void pastedViewportNeedsAWindow();
    void pastedDisplayStandsAtTopLevel();
    void pastedViewportsAreLinked();
    void pasteWithoutCopyDoesNothing();
    void wallBecomesItsTiles();
    void convertedPlanesKeepTheirViewports();
    void viewportOfAConvertedWallLosesIt();
    void convertingNothingChangesNothing();

    void runningBlocksComingAndGoing();
    void runningLeavesValuesEditable();
    void actionsFollowTheCurrentRow();
    void actionsStandInTheContextMenus();
    void actionMeansItsOwnTree();
};

void tst_zoHPCDisplayGUIIEditing::openTakesASnapshot()
{
    load(SMALL_SETUP);

    m_editor->open({text("a"), text("b")});

    QVERIFY(m_editor->isVisible());
    QVERIFY(m_editor->isModal());
    QCOMPARE(renderNodes(), (QStringList{text("a"), text("b")}));
}

void tst_zoHPCDisplayGUIIEditing::openClearsTheCurrentRows()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));
    displayTree()->setCurrentItem(display(0));

    m_editor->open({});

    QVERIFY(!projectionTree()->currentItem());
    QVERIFY(!displayTree()->currentItem());
    QVERIFY(projectionTree()->selectedItems().isEmpty());
    QVERIFY(displayTree()->selectedItems().isEmpty());
}

void tst_zoHPCDisplayGUIIEditing::cancelRestoresWithoutAnnouncing()
{
    load(SMALL_SETUP);
    const QString before = saved();
    m_editor->open({text("a"), text("b")});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);
    m_editor->addProjection();
    m_editor->addDisplay();
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->deleteItem();
    QVERIFY(saved() != before);

    m_editor->reject();

    QCOMPARE(saved(), before);
    QCOMPARE(announced.count(), 0);
    QVERIFY(!m_editor->isVisible());
    QVERIFY(!m_editor->signalsBlocked());
}

void tst_zoHPCDisplayGUIIEditing::cancelBringsBackNodesThatOpeningTookAway()
{
    load(SMALL_SETUP);
    m_editor->open({text("b")});
    QCOMPARE(renderNodes(), (QStringList{QString(), text("b")}));

    m_editor->reject();

    QCOMPARE(renderNodes(), (QStringList{text("a"), text("b")}));
}

void tst_zoHPCDisplayGUIIEditing::cancelWithoutOpeningChangesNothing()
{
    load(SMALL_SETUP);
    const QString before = saved();

    m_editor->reject();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIEditing::applyAnnouncesAndStays()
{
    m_editor->open({});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    m_editor->apply();

    QCOMPARE(announced.count(), 1);
    QVERIFY(m_editor->isVisible());
}

void tst_zoHPCDisplayGUIIEditing::okAnnouncesAndHides()
{
    m_editor->open({});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    m_editor->accept();

    QCOMPARE(announced.count(), 1);
    QVERIFY(!m_editor->isVisible());
}

void tst_zoHPCDisplayGUIIEditing::returnKeyStaysInTheDialog()
{
    m_editor->open({});
    QVERIFY(QTest::qWaitForWindowExposed(m_editor.get()));

    QTest::keyClick(m_editor.get(), Qt::Key_Return);
    QVERIFY(m_editor->isVisible());

    const QList<QWidget*> widgets = m_editor->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (qobject_cast<QLineEdit*>(widget) && widget->isVisible())
            QTest::keyClick(widget, Qt::Key_Return);
        if (qobject_cast<QTreeWidget*>(widget))
            QTest::keyClick(widget, Qt::Key_Return);
    }
    QVERIFY(m_editor->isVisible());
}

void tst_zoHPCDisplayGUIIEditing::escapeCancels()
{
    load(SMALL_SETUP);
    m_editor->open({});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    QTest::keyClick(m_editor.get(), Qt::Key_Escape);

    QVERIFY(!m_editor->isVisible());
    QCOMPARE(announced.count(), 0);
}

void tst_zoHPCDisplayGUIIEditing::changesAreSaid_data()
{
    QTest::addColumn<QString>("operation");

    for (const char* operation :
         {"name", "rows", "camera", "position", "assign", "add-projection", "add-display", "add-window",
          "delete", "paste", "convert", "separation", "parallax", "nodes", "link", "default"})
        QTest::newRow(operation) << text(operation);
}

void tst_zoHPCDisplayGUIIEditing::changesAreSaid()
{
    QFETCH(QString, operation);
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    m_editor->copyDisplay();
    const QString before = saved();
    const std::map<QString, std::function<void()>> operations{
        {text("name"), [this] { projection(0)->setName(text("other")); }},
        {text("rows"), [this] { projection(0)->setInt(zoHPCProjectionItem::Rows, 3); }},
        {text("camera"), [this] { display(0)->setString(zoHPCDisplayItem::Camera, text("front")); }},
        {text("position"),
         [this] {
             m_editor->getViewportItems().first()->setString(zoHPCViewportItem::Position, text("left"));
         }},
        {text("assign"),
         [this] { m_editor->getViewportItems().first()->setProjection(projectionNames().constLast()); }},
        {text("add-projection"), [this] { m_editor->addProjection(); }},
        {text("add-display"), [this] { m_editor->addDisplay(); }},
        {text("add-window"), [this] { m_editor->addWindow(); }},
        {text("delete"), [this] { m_editor->deleteItem(); }},
        {text("paste"), [this] { m_editor->pasteDisplay(); }},
        {text("convert"), [this] { m_editor->convertToPlanes(); }},
        {text("separation"), [this] { m_editor->setEyeSeparation(70.0F); }},
        {text("parallax"), [this] { m_editor->setZeroParallax(2000.0F); }},
        {text("nodes"), [this] { m_editor->setNodeNames({text("elsewhere")}); }},
        // Linking changes rows without a word from their tree.
        {text("link"),
         [this] {
             const QSignalBlocker blocker(projectionTree()->model());
             projection(0)->setName(text("other"));
             projection(0)->update();
             m_editor->correctProjectionViewportsAssignments();
         }},
        {text("default"), [this] { m_editor->setDefaultConfig(); }},
    };
    const QSignalSpy changed(m_editor.get(), &zoHPCDisplayGUII::changed);

    operations.at(operation)();

    QVERIFY(saved() != before);
    QVERIFY(!changed.isEmpty());
}

void tst_zoHPCDisplayGUIIEditing::lookingAroundIsNoChange()
{
    load(SMALL_SETUP);
    const QSignalSpy changed(m_editor.get(), &zoHPCDisplayGUII::changed);

    projectionTree()->setCurrentItem(projection(0)->child(1));
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->correctProjectionViewportsAssignments();
    m_editor->setNodeNames({text("a"), text("b")});
    m_editor->updateCameraList();

    QCOMPARE(changed.count(), 0);
}

void tst_zoHPCDisplayGUIIEditing::loadingIsSaidOnce()
{
    load(SMALL_SETUP);
    const QSignalSpy changed(m_editor.get(), &zoHPCDisplayGUII::changed);
    int projectionsThen = 0;
    QString linkedThen;
    connect(m_editor.get(), &zoHPCDisplayGUII::changed, this, [&] {
        projectionsThen = m_editor->getProjectionItems().size();
        linkedThen = m_editor->getViewportItems().first()->getString(zoHPCViewportItem::ProjectionIdentifier);
    });

    load(SMALL_SETUP);

    QCOMPARE(changed.count(), 1);
    QCOMPARE(projectionsThen, m_editor->getProjectionItems().size());
    QVERIFY(!linkedThen.isEmpty());
}

void tst_zoHPCDisplayGUIIEditing::cancelSaysThatAllChangedBack()
{
    load(SMALL_SETUP);
    const QString before = saved();
    m_editor->open({text("a"), text("b")});
    m_editor->addProjection();
    const QSignalSpy changed(m_editor.get(), &zoHPCDisplayGUII::changed);

    m_editor->reject();

    QCOMPARE(changed.count(), 1);
    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIEditing::changedValueKeepsTilesAndLinks()
{
    load(SMALL_SETUP);
    projection(0)->setDouble(zoHPCProjectionItem::Distance, 1600.0);
    const QTreeWidgetItem* const tile = projection(0)->child(1);
    const QStringList shown = viewportProjections();
    const QSignalSpy changes(m_editor.get(), &zoHPCDisplayGUII::changed);

    projection(0)->setDouble(zoHPCProjectionItem::Distance, 1700.0);

    QCOMPARE(projection(0)->child(1), tile);
    QCOMPARE(tile->data(zoHPCProjectionItem::Distance, Qt::EditRole).toDouble(), 1700.0);
    QCOMPARE(viewportProjections(), shown);
    QVERIFY(!changes.isEmpty());
    projection(0)->setName(text("V"));
    QCOMPARE(viewportProjections().constFirst(), text("V row:1 col:2"));
}

// The names are not collected for each value, but for the first one after they changed.
void tst_zoHPCDisplayGUIIEditing::projectionsThatCameAreLinkedByTheNextValue()
{
    load(SMALL_SETUP);
    projection(0)->setDouble(zoHPCProjectionItem::Distance, 1600.0);
    m_editor->addProjection();
    zoHPCViewportItem* const viewport = m_editor->getViewportItems().constFirst();
    viewport->setString(zoHPCViewportItem::ProjectionIdentifier, QString());
    viewport->setProjection(text("Projection1"));

    projection(0)->setDouble(zoHPCProjectionItem::Distance, 1700.0);

    QCOMPARE(viewportProjections().constFirst(), text("Projection1"));
    projectionTree()->topLevelItem(2)->setText(0, text("Other"));
    QCOMPARE(viewportProjections().constFirst(), text("Other"));
}

void tst_zoHPCDisplayGUIIEditing::addedProjectionsAreNumbered()
{
    for (int i = 0; i < 3; ++i)
        m_editor->addProjection();

    QCOMPARE(projectionNames(), (QStringList{text("Projection1"), text("Projection2"), text("Projection3")}));
}

void tst_zoHPCDisplayGUIIEditing::freedNumberIsTakenAgain()
{
    for (int i = 0; i < 3; ++i)
        m_editor->addProjection();
    projectionTree()->setCurrentItem(projection(1));

    m_editor->deleteItem();
    m_editor->addProjection();

    QCOMPARE(projectionNames(), (QStringList{text("Projection1"), text("Projection3"), text("Projection2")}));
}

void tst_zoHPCDisplayGUIIEditing::tileNamesCountAsTaken()
{
    m_editor->addProjection();
    projection(0)->addChild(new zoHPCProjectionItem(text("Projection2"), text("tile")));

    QCOMPARE(m_editor->getUniqueProjectionName(), text("Projection3"));
}

void tst_zoHPCDisplayGUIIEditing::newProjectionIsACurrentWall()
{
    m_editor->addProjection();

    QCOMPARE(projection(0)->projectionType(), text("wall"));
    QCOMPARE(projectionTree()->currentItem(), projection(0));
}

void tst_zoHPCDisplayGUIIEditing::addedDisplaysStandAtTopLevel()
{
    m_editor->addDisplay();
    m_editor->addWindow();
    m_editor->addDisplay();

    QCOMPARE(displayTree()->topLevelItemCount(), 2);
    QCOMPARE(display(1)->childCount(), 0);
}

void tst_zoHPCDisplayGUIIEditing::windowComesWithAViewport()
{
    m_editor->addDisplay();
    displayTree()->setCurrentItem(display(0));

    m_editor->addWindow();

    QCOMPARE(display(0)->childCount(), 1);
    QCOMPARE(display(0)->child(0)->childCount(), 1);
    QVERIFY(dynamic_cast<zoHPCViewportItem*>(display(0)->child(0)->child(0)));
    QCOMPARE(displayTree()->currentItem(), display(0)->child(0)->child(0));
    QVERIFY(display(0)->isExpanded());
    QVERIFY(display(0)->child(0)->isExpanded());
}

void tst_zoHPCDisplayGUIIEditing::windowGoesToTheDisplayOfTheCurrentRow()
{
    load("<cluster version='1'><display/><display><window><viewport/></window></display></cluster>");

    displayTree()->setCurrentItem(display(1)->child(0));
    m_editor->addWindow();
    displayTree()->setCurrentItem(display(1)->child(0)->child(0));
    m_editor->addWindow();

    QCOMPARE(display(0)->childCount(), 0);
    QCOMPARE(display(1)->childCount(), 3);
}

void tst_zoHPCDisplayGUIIEditing::viewportGoesToTheWindowOfTheCurrentRow()
{
    load("<cluster version='1'><display><window/><window><viewport/></window></display></cluster>");

    displayTree()->setCurrentItem(display(0)->child(1));
    m_editor->addViewport();
    QCOMPARE(displayTree()->currentItem(), display(0)->child(1)->child(1));
    m_editor->addViewport();

    QCOMPARE(display(0)->child(0)->childCount(), 0);
    QCOMPARE(display(0)->child(1)->childCount(), 3);
}

void tst_zoHPCDisplayGUIIEditing::withoutCurrentRowNothingIsAdded()
{
    load(SMALL_SETUP);
    const QString before = saved();

    m_editor->addWindow();
    m_editor->addViewport();
    displayTree()->setCurrentItem(display(0));
    m_editor->addViewport();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIEditing::deleteTakesTheRowChosenLast()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(1));
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    m_editor->deleteItem();
    QCOMPARE(projectionNames().size(), 2);
    QCOMPARE(display(0)->child(0)->childCount(), 1);

    // Current in its tree already, but chosen again.
    projectionTree()->setCurrentItem(projection(1));
    m_editor->deleteItem();
    QCOMPARE(projectionNames(), QStringList{text("Wall")});
    QCOMPARE(display(0)->child(0)->childCount(), 1);
}

void tst_zoHPCDisplayGUIIEditing::deletingTheLastRowLeavesNothingCurrent()
{
    m_editor->addDisplay();
    displayTree()->setCurrentItem(display(0));

    m_editor->deleteItem();
    m_editor->deleteItem();
    m_editor->addWindow();

    QCOMPARE(displayTree()->topLevelItemCount(), 0);
    QVERIFY(!displayTree()->currentItem());
}

void tst_zoHPCDisplayGUIIEditing::copiedProjectionIsPastedUnderANewName()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));
    m_editor->copyProjection();

    m_editor->pasteProjection();
    m_editor->pasteProjection();

    QCOMPARE(projectionNames(),
             (QStringList{text("Wall"), text("P"), text("Projection1"), text("Projection2")}));
    QCOMPARE(projection(3)->childCount(), 4);
    QCOMPARE(projection(3)->child(0)->text(0), text("Projection2 row:1 col:1"));
    QCOMPARE(projectionTree()->currentItem(), projection(3));
    QStringList identifiers;
    for (const zoHPCProjectionItem* item : m_editor->getProjectionItems())
        identifiers << item->getString(zoHPCProjectionItem::Identifier);
    QCOMPARE(identifiers.removeDuplicates(), 0);
}

void tst_zoHPCDisplayGUIIEditing::copyingKeepsTheLinksOfTheSource()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));
    const QString before = projection(0)->getString(zoHPCProjectionItem::Identifier);

    m_editor->copyProjection();

    const QString after = projection(0)->getString(zoHPCProjectionItem::Identifier);
    QVERIFY(after != before);
    QCOMPARE(viewportProjections(),
             (QStringList{text("Wall row:1 col:2"), text("P"), text("Wall row:2 col:1")}));
    QCOMPARE(m_editor->getViewportItems().first()->getString(zoHPCViewportItem::ProjectionIdentifier),
             after + text("/row:1 col:2"));
    projection(0)->setName(text("Renamed"));
    QCOMPARE(viewportProjections().first(), text("Renamed row:1 col:2"));
}

void tst_zoHPCDisplayGUIIEditing::copyingATileKeepsTheWall()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0)->child(1));

    m_editor->copyProjection();
    m_editor->pasteProjection();

    QCOMPARE(projection(0)->childCount(), 4);
    QCOMPARE(projection(2)->projectionType(), text("tile"));
    QCOMPARE(projection(2)->getInt(zoHPCProjectionItem::TileColumn), 2);
    QCOMPARE(viewportProjections().first(), text("Wall row:1 col:2"));
}

void tst_zoHPCDisplayGUIIEditing::copyOutlivesItsSource()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));
    m_editor->copyProjection();
    displayTree()->setCurrentItem(display(0));
    m_editor->copyDisplay();

    load("<cluster version='1'/>");
    m_editor->pasteProjection();
    m_editor->pasteDisplay();

    QCOMPARE(projection(0)->childCount(), 4);
    QCOMPARE(display(0)->childCount(), 2);
}

void tst_zoHPCDisplayGUIIEditing::pastedWindowGoesBelowTheCurrentDisplay()
{
    load(SMALL_SETUP);
    m_editor->addDisplay();
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->copyDisplay();

    displayTree()->setCurrentItem(display(1));
    m_editor->pasteDisplay();
    QCOMPARE(display(1)->childCount(), 1);
    QCOMPARE(display(1)->child(0)->childCount(), 2);
    QCOMPARE(displayTree()->currentItem(), display(1)->child(0));

    // Below the display of the current row, too.
    displayTree()->setCurrentItem(display(1)->child(0)->child(0));
    m_editor->pasteDisplay();
    QCOMPARE(display(1)->childCount(), 2);
}

void tst_zoHPCDisplayGUIIEditing::pastedWindowNeedsADisplay()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->copyDisplay();
    displayTree()->setCurrentItem(nullptr);
    const QString before = saved();

    m_editor->pasteDisplay();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIEditing::pastedViewportNeedsAWindow()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0)->child(1));
    m_editor->copyDisplay();
    displayTree()->setCurrentItem(display(0));
    const QString before = saved();

    m_editor->pasteDisplay();
    QCOMPARE(saved(), before);

    displayTree()->setCurrentItem(display(0)->child(1));
    m_editor->pasteDisplay();
    QCOMPARE(display(0)->child(1)->childCount(), 2);
}

void tst_zoHPCDisplayGUIIEditing::pastedDisplayStandsAtTopLevel()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0));
    m_editor->copyDisplay();
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));

    m_editor->pasteDisplay();

    QCOMPARE(displayTree()->topLevelItemCount(), 2);
    QCOMPARE(display(1)->childCount(), 2);
    QCOMPARE(display(1)->getCameraName(), text("Cam"));
    QCOMPARE(displayTree()->currentItem(), display(1));
}

void tst_zoHPCDisplayGUIIEditing::pastedViewportsAreLinked()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->copyDisplay();

    m_editor->pasteDisplay();

    projection(1)->setName(text("Renamed"));
    QCOMPARE(viewportProjections().last(), text("Renamed"));
}

void tst_zoHPCDisplayGUIIEditing::pasteWithoutCopyDoesNothing()
{
    load(SMALL_SETUP);
    const QString before = saved();

    m_editor->pasteDisplay();
    m_editor->pasteProjection();
    m_editor->copyDisplay();
    m_editor->copyProjection();
    m_editor->pasteDisplay();
    m_editor->pasteProjection();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIEditing::wallBecomesItsTiles()
{
    load("<cluster version='1'><projection name='A' type='plane'/>"
         "<projection name='W' type='powerwall' rows='1' columns='2' width='10' height='10' distance='5'/>"
         "<projection name='B' type='plane'/></cluster>");
    projectionTree()->setCurrentItem(projection(1));

    m_editor->convertToPlanes();

    QCOMPARE(projectionNames(),
             (QStringList{text("A"), text("W row:1 col:1"), text("W row:1 col:2"), text("B")}));
    QCOMPARE(projection(1)->projectionType(), text("plane"));
    QCOMPARE(projection(2)->getDouble(zoHPCProjectionItem::X2), 5.0);
}

void tst_zoHPCDisplayGUIIEditing::convertedPlanesKeepTheirViewports()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));

    m_editor->convertToPlanes();

    QCOMPARE(viewportProjections(),
             (QStringList{text("Wall row:1 col:2"), text("P"), text("Wall row:2 col:1")}));
    projection(1)->setName(text("Upper right"));
    QCOMPARE(viewportProjections().first(), text("Upper right"));
}

void tst_zoHPCDisplayGUIIEditing::viewportOfAConvertedWallLosesIt()
{
    load("<cluster version='1'><projection name='W' type='wall' rows='1' columns='2'/><display><window>"
         "<viewport projection='W'/><viewport projection='W row:1 col:1'/></window></display></cluster>");
    projectionTree()->setCurrentItem(projection(0));

    m_editor->convertToPlanes();

    QCOMPARE(viewportProjections(), (QStringList{QString(), text("W row:1 col:1")}));
    QCOMPARE(projectionTree()->currentItem(), projection(0));
}

void tst_zoHPCDisplayGUIIEditing::convertingNothingChangesNothing()
{
    load(SMALL_SETUP);
    const QString before = saved();

    m_editor->convertToPlanes();
    projectionTree()->setCurrentItem(projection(1)); // a plane
    m_editor->convertToPlanes();
    projectionTree()->setCurrentItem(projection(0)->child(0));
    m_editor->convertToPlanes();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIEditing::runningBlocksComingAndGoing()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));
    m_editor->copyProjection();
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->copyDisplay();
    const QString before = saved();

    m_editor->setIsRunning(true);
    m_editor->addProjection();
    m_editor->addDisplay();
    m_editor->addWindow();
    m_editor->addViewport();
    m_editor->pasteProjection();
    m_editor->pasteDisplay();
    m_editor->deleteItem();
    projectionTree()->setCurrentItem(projection(0));
    m_editor->convertToPlanes();
    m_editor->deleteItem();

    QCOMPARE(saved(), before);
    for (const char* button :
         {"m_addProjectionButton", "m_addDisplayButton", "m_addWindowButton", "m_addViewportButton"})
        QVERIFY2(!field<QPushButton>(button)->isEnabled(), button);
    for (const char* name : {"Delete", "Paste", "Convert to planes"})
        QVERIFY2(!action(projectionTree(), name)->isEnabled(), name);
    QVERIFY(action(projectionTree(), "Copy")->isEnabled());

    m_editor->setIsRunning(false);
    m_editor->addProjection();
    QCOMPARE(projectionNames().size(), 3);
    QVERIFY(field<QPushButton>("m_addWindowButton")->isEnabled());
}

void tst_zoHPCDisplayGUIIEditing::runningLeavesValuesEditable()
{
    load(SMALL_SETUP);
    m_editor->setIsRunning(true);
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);
    projectionTree()->setCurrentItem(projection(0));

    field<QDoubleSpinBox>("m_distance")->setValue(900.0);

    QVERIFY(field<QDoubleSpinBox>("m_distance")->isEnabled());
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Distance), 900.0);
    // The session hears of it with Apply.
    QCOMPARE(announced.count(), 0);
    field<QDialogButtonBox>("m_buttonBox")->button(QDialogButtonBox::Apply)->click();
    QCOMPARE(announced.count(), 1);
}

void tst_zoHPCDisplayGUIIEditing::actionsFollowTheCurrentRow()
{
    const auto enabled = [this](QTreeWidget* tree, const char* name) {
        return action(tree, name)->isEnabled();
    };
    load(SMALL_SETUP);
    for (const char* name : {"Delete", "Copy", "Paste"}) {
        QVERIFY(!enabled(projectionTree(), name));
        QVERIFY(!enabled(displayTree(), name));
    }

    projectionTree()->setCurrentItem(projection(0));
    QVERIFY(enabled(projectionTree(), "Delete"));
    QVERIFY(enabled(projectionTree(), "Convert to planes"));
    projectionTree()->setCurrentItem(projection(1)); // a plane
    QVERIFY(!enabled(projectionTree(), "Convert to planes"));
    projectionTree()->setCurrentItem(projection(0)->child(0)); // goes with its wall only
    QVERIFY(!enabled(projectionTree(), "Delete"));
    QVERIFY(enabled(projectionTree(), "Copy"));
    m_editor->copyProjection();
    QVERIFY(enabled(projectionTree(), "Paste"));
    QVERIFY(!enabled(displayTree(), "Paste"));

    displayTree()->setCurrentItem(display(0));
    QVERIFY(enabled(displayTree(), "Delete"));
    QVERIFY(field<QPushButton>("m_addWindowButton")->isEnabled());
    QVERIFY(!field<QPushButton>("m_addViewportButton")->isEnabled());
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    QVERIFY(field<QPushButton>("m_addViewportButton")->isEnabled());
    m_editor->copyDisplay();
    QVERIFY(enabled(displayTree(), "Paste"));
}

void tst_zoHPCDisplayGUIIEditing::actionsStandInTheContextMenus()
{
    const auto texts = [](const QTreeWidget* tree) {
        QStringList result;
        for (const QAction* candidate : tree->actions())
            result << candidate->text();
        return result;
    };

    QCOMPARE(int(projectionTree()->contextMenuPolicy()), int(Qt::ActionsContextMenu));
    QCOMPARE(int(displayTree()->contextMenuPolicy()), int(Qt::ActionsContextMenu));
    QCOMPARE(texts(projectionTree()),
             (QStringList{text("Delete"), text("Copy"), text("Paste"), text("Convert to planes")}));
    QCOMPARE(texts(displayTree()), (QStringList{text("Delete"), text("Copy"), text("Paste")}));
}

void tst_zoHPCDisplayGUIIEditing::actionMeansItsOwnTree()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(1));
    displayTree()->setCurrentItem(display(0)->child(1));

    action(projectionTree(), "Delete")->trigger();

    QCOMPARE(projectionNames(), QStringList{text("Wall")});
    QCOMPARE(display(0)->childCount(), 2);
}

ZO_TEST_MAIN(tst_zoHPCDisplayGUIIEditing)
#include "tst_zoHPCDisplayGUIIEditing.moc"
