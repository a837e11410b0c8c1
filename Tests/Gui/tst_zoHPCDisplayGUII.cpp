#include "zoTestCase.h"

#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCDisplayTables.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <zoCameraService.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QBrush>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDomDocument>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeView>
#include <QTreeWidget>

#include <algorithm>
#include <memory>

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QDomDocument documentOf(const QString& xml)
{
    QDomDocument document;
    QString message;
    if (!document.setContent(xml, &message))
        qFatal("%s", qPrintable(message));
    return document;
}

// A wall of 2 x 2 tiles, two windows with three viewports.
const char* const SMALL_SETUP =
    "<cluster version='1'>"
    "<projection name='Wall' type='wall' rows='2' columns='2' distance='1500'/>"
    "<projection name='P' type='plane' rows='1' columns='1'/>"
    "<display eyeseparation='60' camera='Cam' user='1' hardwaresync='false'>"
    "<window node='a' screen='0' x='0' y='0' width='640' height='480' fullscreen='true'>"
    "<viewport projection='Wall row:1 col:2' position='fill' eye='mono'/>"
    "<viewport projection='P' position='left' eye='left'/></window>"
    "<window node='b'><viewport projection='Wall row:2 col:1' position='fill'/></window>"
    "</display></cluster>";
class Cameras final : public zoCameraService
{
    Q_OBJECT

public:
    Cameras() { zoKernelServiceFactory::the().registerService<zoCameraService>(this); }
    ~Cameras() override { zoKernelServiceFactory::the().unregisterService<zoCameraService>(); }

    QStringList cameraNames() override { return names; }

    QStringList names;
};

class Nodes final : public zoNodeService
{
    Q_OBJECT

public:
    Nodes() { zoKernelServiceFactory::the().registerService<zoNodeService>(this); }
    ~Nodes() override { zoKernelServiceFactory::the().unregisterService<zoNodeService>(); }
};

// One column of an item and the field of a panel that edits it.
struct Field
{
    const char* widget;
    int col;
};

constexpr Field PROJECTION_FIELDS[] = {
    {"m_name", 0},         {"m_type", 2},         {"m_rightOffsetX", 3},  {"m_rightOffsetY", 4},
    {"m_row", 5},          {"m_column", 6},       {"m_rows", 7},          {"m_columns", 8},
    {"m_overlapX", 9},     {"m_overlapY", 10},    {"m_caveWidth", 11},    {"m_caveHeight", 12},
    {"m_caveDepth", 13},   {"m_caveCenterX", 14}, {"m_caveCenterY", 15},  {"m_caveCenterZ", 16},
    {"m_leftWall", 17},    {"m_rightWall", 18},   {"m_topWall", 19},      {"m_bottomWall", 20},
    {"m_frontWall", 21},   {"m_backWall", 22},    {"m_areaWidth", 23},    {"m_areaHeight", 24},
    {"m_distance", 25},    {"m_lowerLeftX", 26},  {"m_lowerLeftY", 27},   {"m_lowerLeftZ", 28},
    {"m_lowerRightX", 29}, {"m_lowerRightY", 30}, {"m_lowerRightZ", 31},  {"m_upperRightX", 32},
    {"m_upperRightY", 33}, {"m_upperRightZ", 34}, {"m_edgeBlending", 35}, {"m_leftEdge", 36},
    {"m_rightEdge", 37},   {"m_topEdge", 38},     {"m_bottomEdge", 39},
};

constexpr Field OUTPUT_FIELDS[] = {
    {"m_eyeSeparation", 1}, {"m_camera", 2},        {"m_user", 3},        {"m_hardwareSync", 4},
    {"m_renderNode", 5},    {"m_screen", 6},        {"m_windowX", 7},     {"m_windowY", 8},
    {"m_windowWidth", 9},   {"m_windowHeight", 10}, {"m_fullScreen", 11}, {"m_position", 14},
    {"m_viewportX1", 15},   {"m_viewportY1", 16},   {"m_viewportX2", 17}, {"m_viewportY2", 18},
    {"m_flipX", 19},        {"m_flipY", 20},        {"m_eye", 21},
};

// Changes a field as a user would; returns the value that the item should hold then.
QVariant changeField(QWidget* widget)
{
    if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        if (combo->isEditable()) {
            combo->setEditText(text("typed"));
            return text("typed");
        }
        combo->setCurrentIndex(combo->currentIndex() == 1 ? 2 : 1);
        return combo->currentData().isValid() ? combo->currentData() : QVariant(combo->currentText());
    }
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->setText(text("typed"));
        return text("typed");
    }
    if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        box->click();
        return box->isChecked();
    }
    if (auto* spin = qobject_cast<QSpinBox*>(widget)) {
        spin->stepUp();
        return spin->value();
    }
    auto* spin = qobject_cast<QDoubleSpinBox*>(widget);
    spin->stepDown();
    if (!(spin->value() < 0 || spin->value() > 0))
        spin->stepUp();
    return spin->value();
}

bool isShown(const QWidget* widget)
{
    return widget && !widget->isHidden();
}
} // namespace

// The display-setup dialog and the display section of the document.
class tst_zoHPCDisplayGUII final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newEditorIsEmpty();
    void longNamesAreCutInTheMiddle();
    void defaultConfigIsOneDisplay();

    void savesProjectionsBeforeDisplays();
    void savesOutsideTheDocumentElementNothing();
    void loadsWhatItSaved();
    void loadReplacesBothTrees();
    void loadAnnouncesOnce();
    void loadTakesDirectChildrenOnly();
    void documentWithoutRootEmptiesTheTrees();
    void loadedViewportsAreLinked();
    void unknownProjectionIsCleared();
    void loadedOutputsAreExpanded();
    void loadSurvivesACurrentRow_data();
    void loadSurvivesACurrentRow();

    void versionDecidesAboutRows_data();
    void versionDecidesAboutRows();
    void wrongRowsOfEveryWallAreCorrected();
    void rowTextInWallNameStays();
    void correctedRowsWinOverFormerLinks();
    void cancelLeavesTheRowsOfWalls();
    void onlyWallsAreCorrected();

    void windowItemsIncludeViewports();
    void projectionItemsIncludeTiles();
    void viewportItemsAreInTreeOrder();

    void renamingCarriesOverToViewports();
    void renamingAWallRenamesItsTiles();
    void laterProjectionOfANameWins();
    void identifierIsTakenFromName();
    void deletingAProjectionClearsItsViewports();
    void shrinkingAWallClearsLostTiles();
    void changingAParameterRegeneratesTheTiles();
    void changingATileRegeneratesTheWall();
    void currentTileIsFollowedThroughRegeneration();
    void currentTileThatIsGoneLeavesTheWallCurrent();
    void changedWindowShowsItsNode();
    void changedPositionMovesTheRectangle();

    void nodeNamesToldApart_data();
    void nodeNamesToldApart();
    void windowsOfUnknownNodesTurnOrange();
    void ambiguousNodeIsUnknown();
    void viewportsKeepTheirProjectionWithoutNodes();
    void eyeSeparationReachesEveryDisplay();
    void zeroParallaxReachesWallsOnly();
    void zeroParallaxReachesNestedWalls();

    void openTakesASnapshot();
    void openClearsTheCurrentRows();
    void cancelRestoresWithoutAnnouncing();
    void cancelBringsBackNodesThatOpeningTookAway();
    void cancelWithoutOpeningChangesNothing();
    void applyAnnouncesAndStays();
    void okAnnouncesAndHides();
    void returnKeyStaysInTheDialog();
    void escapeCancels();

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

    void comboHoldsTheTable_data();
    void comboHoldsTheTable();
    void panelFollowsTheCurrentRow();
    void labelsOfThePanelsAreThere_data();
    void labelsOfThePanelsAreThere();
    void typeDecidesWhatIsShown_data();
    void typeDecidesWhatIsShown();
    void projectionFieldIsBoundToItsColumn_data();
    void projectionFieldIsBoundToItsColumn();
    void outputFieldIsBoundToItsColumn_data();
    void outputFieldIsBoundToItsColumn();
    void choosingRowsWritesNothing();
    void chosenTypeLaysOutTheWallAnew();
    void unknownTypeIsLeftAlone();
    void typedNameRenamesTilesAndViewports();
    void numberTypedDigitByDigitIsKept();
    void tilesAreReadOnly();
    void edgesShowWithBlendingOnly();
    void rectangleIsEditableWhenCustomOnly();
    void rectangleIsShownInPixels();
    void geometryIsHiddenOfFullScreenWindows();
    void eyesAreNamed_data();
    void eyesAreNamed();
    void nodeChoicesAreToldApart();
    void newNodeChoicesKeepTheWindowsNode();
    void clickedSurfaceIsAssigned();
    void assignedSurfaceIsHighlighted();
    void cameraChoicesFollowTheHost();
    void cameraThatIsGoneStays();
    void displayShowsItsCamera();
    void namedFieldGetsTheFocusWithF2();
    void noFieldIsCutOff();
    void fitsASmallScreen();
    void tabKeyVisitsThePartsInTheirOrder();
    void everyNumberHasANameToBeRead();
    void fieldsShowUsualNumbersWhole();

    void attributeOrderFollowsColumns();
    void nestedProjectionsLoadAndSave();
    void hugeWallInAFileIsRefused();
    void bigWallIsConvertedWithItsLinks();
    void randomOperationsKeepTheDocumentSound();

private:
    QTreeWidget* projectionTree() const
    {
        return m_editor->findChild<QTreeWidget*>(text("m_projectionTree"));
    }
    QTreeWidget* displayTree() const { return m_editor->findChild<QTreeWidget*>(text("m_displayTree")); }
    zoHPCProjectionItem* projection(int row) const
    {
        return dynamic_cast<zoHPCProjectionItem*>(projectionTree()->topLevelItem(row));
    }
    zoHPCDisplayItem* display(int row) const
    {
        return dynamic_cast<zoHPCDisplayItem*>(displayTree()->topLevelItem(row));
    }
    QStringList projectionNames() const;
    QStringList viewportProjections() const;
    QStringList renderNodes() const; // of plain windows
    QString saved() const;
    template <class T = QWidget>
    T* field(const char* name) const
    {
        return m_editor->findChild<T*>(text(name));
    }
    QString page() const { return field<QStackedWidget>("m_panels")->currentWidget()->objectName(); }
    QAction* action(QTreeWidget* tree, const char* name) const
    {
        for (QAction* candidate : tree->actions()) {
            if (candidate->text() == text(name))
                return candidate;
        }
        return nullptr;
    }
    void load(const char* xml) { m_editor->loadFromXML(documentOf(text(xml))); }
    void load(const QString& xml) { m_editor->loadFromXML(documentOf(xml)); }

    std::unique_ptr<zoHPCDisplayGUII> m_editor;
};

QStringList tst_zoHPCDisplayGUII::projectionNames() const
{
    QStringList names;
    for (int i = 0; i < projectionTree()->topLevelItemCount(); ++i)
        names << projectionTree()->topLevelItem(i)->text(0);
    return names;
}

QStringList tst_zoHPCDisplayGUII::viewportProjections() const
{
    QStringList names;
    for (const zoHPCViewportItem* viewport : m_editor->getViewportItems())
        names << viewport->getString(zoHPCViewportItem::Projection);
    return names;
}

QStringList tst_zoHPCDisplayGUII::renderNodes() const
{
    QStringList names;
    for (zoHPCWindowItem* window : m_editor->getWindowItems()) {
        if (!dynamic_cast<zoHPCViewportItem*>(window))
            names << window->renderNode();
    }
    return names;
}

// The order of attributes is that of the DOM, which is the same within one process.
QString tst_zoHPCDisplayGUII::saved() const
{
    QDomDocument document;
    document.appendChild(document.createElement(text("cluster")));
    document.documentElement().setAttribute(text("version"), text("1"));
    m_editor->saveToXML(document);
    return document.toString(1);
}

void tst_zoHPCDisplayGUII::init()
{
    m_editor = std::make_unique<zoHPCDisplayGUII>();
}

void tst_zoHPCDisplayGUII::cleanup()
{
    m_editor.reset();
    zoTestCase::cleanup();
}

void tst_zoHPCDisplayGUII::newEditorIsEmpty()
{
    QVERIFY(projectionTree());
    QVERIFY(displayTree());
    QCOMPARE(projectionTree()->topLevelItemCount(), 0);
    QCOMPARE(displayTree()->topLevelItemCount(), 0);
    QVERIFY(m_editor->getWindowItems().isEmpty());
}

void tst_zoHPCDisplayGUII::longNamesAreCutInTheMiddle()
{
    // Tiles and their viewports differ at the end of their names.
    for (const char* name : {"m_projectionTree", "m_displayTree", "m_planeView"})
        QCOMPARE(field<QTreeView>(name)->textElideMode(), Qt::ElideMiddle);
}

void tst_zoHPCDisplayGUII::defaultConfigIsOneDisplay()
{
    load(SMALL_SETUP);

    m_editor->setDefaultConfig();

    QCOMPARE(projectionTree()->topLevelItemCount(), 0);
    QCOMPARE(displayTree()->topLevelItemCount(), 1);
    QCOMPARE(display(0)->childCount(), 0);
    QCOMPARE(display(0)->getEyeSeparation(), 65.0);
}

void tst_zoHPCDisplayGUII::savesProjectionsBeforeDisplays()
{
    m_editor->addDisplay();
    m_editor->addProjection();
    m_editor->addProjection();
    QDomDocument document = documentOf(text("<cluster><master/></cluster>"));

    m_editor->saveToXML(document);

    QStringList tags;
    for (QDomElement e = document.documentElement().firstChildElement(); !e.isNull();
         e = e.nextSiblingElement())
        tags << e.tagName();
    QCOMPARE(tags, (QStringList{text("master"), text("projection"), text("projection"), text("display")}));
}

void tst_zoHPCDisplayGUII::savesOutsideTheDocumentElementNothing()
{
    m_editor->addDisplay();
    QDomDocument document;

    m_editor->saveToXML(document);

    QVERIFY(document.documentElement().isNull());
    QVERIFY(!document.hasChildNodes());
}

void tst_zoHPCDisplayGUII::loadsWhatItSaved()
{
    load(SMALL_SETUP);
    const QString first = saved();

    load(first);

    QCOMPARE(saved(), first);
    QCOMPARE(projectionNames(), (QStringList{text("Wall"), text("P")}));
    QCOMPARE(viewportProjections(),
             (QStringList{text("Wall row:1 col:2"), text("P"), text("Wall row:2 col:1")}));
    QCOMPARE(renderNodes(), (QStringList{text("a"), text("b")}));
    QCOMPARE(display(0)->getCameraName(), text("Cam"));
}

void tst_zoHPCDisplayGUII::loadReplacesBothTrees()
{
    load(SMALL_SETUP);

    load("<cluster version='1'><projection name='Q' type='plane'/><display/><display/></cluster>");

    QCOMPARE(projectionNames(), QStringList{text("Q")});
    QCOMPARE(displayTree()->topLevelItemCount(), 2);
}

void tst_zoHPCDisplayGUII::loadAnnouncesOnce()
{
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    load(SMALL_SETUP);

    QCOMPARE(announced.count(), 1);
}

void tst_zoHPCDisplayGUII::loadTakesDirectChildrenOnly()
{
    load("<any version='1'><group><projection name='x' type='plane'/><display/></group>"
         "<display user='1'/><other/><projection name='y' type='plane'/><display user='2'/></any>");

    QCOMPARE(projectionNames(), QStringList{text("y")});
    QCOMPARE(displayTree()->topLevelItemCount(), 2);
    QCOMPARE(display(1)->getString(zoHPCDisplayItem::User), text("2"));
}

void tst_zoHPCDisplayGUII::documentWithoutRootEmptiesTheTrees()
{
    load(SMALL_SETUP);
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    m_editor->loadFromXML(QDomDocument());

    QCOMPARE(projectionTree()->topLevelItemCount(), 0);
    QCOMPARE(displayTree()->topLevelItemCount(), 0);
    QCOMPARE(announced.count(), 1);
}

void tst_zoHPCDisplayGUII::loadedViewportsAreLinked()
{
    load(SMALL_SETUP);

    const zoHPCProjectionItem* tile = projection(0)->children<zoHPCProjectionItem>().at(1);
    const zoHPCViewportItem* viewport = m_editor->getViewportItems().first();
    QCOMPARE(viewport->getString(zoHPCViewportItem::ProjectionIdentifier),
             tile->getString(zoHPCProjectionItem::Identifier));
    QVERIFY(!viewport->data(0, Qt::ForegroundRole).isValid());
}

void tst_zoHPCDisplayGUII::unknownProjectionIsCleared()
{
    load("<cluster version='1'><display><window node='a'><viewport "
         "projection='nowhere'/></window></display></cluster>");

    QCOMPARE(viewportProjections(), QStringList{QString()});
    QCOMPARE(m_editor->getViewportItems().first()->foreground(0).color(), QColor(text("#FF9900")));
}

void tst_zoHPCDisplayGUII::loadedOutputsAreExpanded()
{
    load(SMALL_SETUP);

    QVERIFY(display(0)->isExpanded());
    QVERIFY(display(0)->child(1)->isExpanded());
}

void tst_zoHPCDisplayGUII::loadSurvivesACurrentRow_data()
{
    QTest::addColumn<bool>("shown");

    QTest::newRow("hidden") << false;
    QTest::newRow("shown") << true;
}

void tst_zoHPCDisplayGUII::loadSurvivesACurrentRow()
{
    QFETCH(bool, shown);
    load(SMALL_SETUP);
    if (shown)
        m_editor->open({text("a"), text("b")});
    projectionTree()->setCurrentItem(projection(0)->child(2));
    displayTree()->setCurrentItem(display(0)->child(0)->child(1));
    m_editor->copyDisplay();
    m_editor->copyProjection();

    load(SMALL_SETUP);

    QVERIFY(!projectionTree()->currentItem());
    QVERIFY(!displayTree()->currentItem());
    QCOMPARE(m_editor->getViewportItems().size(), 3);
    QCoreApplication::processEvents();
}

void tst_zoHPCDisplayGUII::versionDecidesAboutRows_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("shown");

    QTest::newRow("without-version") << ""
                                     << "W row:3 col:2";
    QTest::newRow("version-zero") << "version='0'"
                                  << "W row:3 col:2";
    QTest::newRow("version-of-no-number") << "version='new'"
                                          << "W row:3 col:2";
    QTest::newRow("version-one") << "version='1'"
                                 << "W row:1 col:2";
    QTest::newRow("version-two") << "version='2'"
                                 << "W row:1 col:2";
}

void tst_zoHPCDisplayGUII::versionDecidesAboutRows()
{
    QFETCH(QString, version);
    QFETCH(QString, shown);

    load(
        text("<cluster ") + version +
        text("><projection name='W' type='wall' rows='3' columns='2'/><display><window>"
             "<viewport projection='W row:1 col:2'/><viewport projection='W row:2 col:1'/></window></display>"
             "</cluster>"));

    QCOMPARE(viewportProjections(), (QStringList{shown, text("W row:2 col:1")}));
    QVERIFY(
        !m_editor->getViewportItems().first()->getString(zoHPCViewportItem::ProjectionIdentifier).isEmpty());
}

void tst_zoHPCDisplayGUII::wrongRowsOfEveryWallAreCorrected()
{
    load("<cluster><projection name='A' type='wall' rows='12' columns='1'/>"
         "<projection name='B' type='wall' rows='2' columns='11'/>"
         "<projection name='C' type='wall' rows='1' columns='2'/><display><window>"
         "<viewport projection='A row:1 col:1'/><viewport projection='A row:12 col:1'/>"
         "<viewport projection='B row:2 col:11'/><viewport projection='C row:1 "
         "col:2'/></window></display></cluster>");

    QCOMPARE(viewportProjections(), (QStringList{text("A row:12 col:1"), text("A row:1 col:1"),
                                                 text("B row:1 col:11"), text("C row:1 col:2")}));
}

void tst_zoHPCDisplayGUII::rowTextInWallNameStays()
{
    load("<cluster><projection name='row:2 hall' type='wall' rows='3' columns='1'/><display><window>"
         "<viewport projection='row:2 hall row:1 col:1'/></window></display></cluster>");

    QCOMPARE(viewportProjections(), QStringList{text("row:2 hall row:3 col:1")});
}

void tst_zoHPCDisplayGUII::correctedRowsWinOverFormerLinks()
{
    load("<cluster version='1'><projection name='W' type='wall' rows='2' columns='1'/>"
         "<display><window><viewport projection='W row:1 col:1'/></window></display></cluster>");
    QCOMPARE(viewportProjections(), QStringList{text("W row:1 col:1")});

    m_editor->correctWrongRows();
    m_editor->correctProjectionViewportsAssignments();

    QCOMPARE(viewportProjections(), QStringList{text("W row:2 col:1")});
}

void tst_zoHPCDisplayGUII::cancelLeavesTheRowsOfWalls()
{
    load("<cluster version='1'><projection name='W' type='wall' rows='2' columns='1'/>"
         "<display><window><viewport projection='W row:1 col:1'/></window></display></cluster>");
    m_editor->open({});

    m_editor->reject();

    // What was saved for it is of this version, whose rows are right.
    QCOMPARE(viewportProjections(), QStringList{text("W row:1 col:1")});
}

void tst_zoHPCDisplayGUII::onlyWallsAreCorrected()
{
    load("<cluster><projection name='W' type='powerwall' rows='2' columns='1' width='10' height='10'/>"
         "<display><window><viewport projection='W row:1 col:1'/></window></display></cluster>");

    QCOMPARE(viewportProjections(), QStringList{text("W row:1 col:1")});
}

void tst_zoHPCDisplayGUII::windowItemsIncludeViewports()
{
    load(SMALL_SETUP);

    const QList<zoHPCWindowItem*> windows = m_editor->getWindowItems();

    QCOMPARE(windows.size(), 5);
    QCOMPARE(windows.at(0), display(0)->child(0));
    QCOMPARE(windows.at(1), display(0)->child(0)->child(0));
    QCOMPARE(windows.at(3), display(0)->child(1));
    QCOMPARE(m_editor->getDisplayItems(), windows);
}

void tst_zoHPCDisplayGUII::projectionItemsIncludeTiles()
{
    load(SMALL_SETUP);

    const QList<zoHPCProjectionItem*> projections = m_editor->getProjectionItems();

    QCOMPARE(projections.size(), 6);
    QCOMPARE(projections.at(0), projection(0));
    QCOMPARE(projections.at(1), projection(0)->child(0));
    QCOMPARE(projections.at(5), projection(1));
}

void tst_zoHPCDisplayGUII::viewportItemsAreInTreeOrder()
{
    load(SMALL_SETUP);

    const QList<zoHPCViewportItem*> viewports = m_editor->getViewportItems();

    QCOMPARE(viewports.size(), 3);
    QCOMPARE(viewports.at(0), display(0)->child(0)->child(0));
    QCOMPARE(viewports.at(2), display(0)->child(1)->child(0));
}

void tst_zoHPCDisplayGUII::renamingCarriesOverToViewports()
{
    load(SMALL_SETUP);

    projection(1)->setName(text("Side"));

    QCOMPARE(viewportProjections().at(1), text("Side"));
    QCOMPARE(m_editor->getViewportItems().at(1)->text(0), text("Viewport: Side left"));
}

void tst_zoHPCDisplayGUII::renamingAWallRenamesItsTiles()
{
    load(SMALL_SETUP);

    projection(0)->setName(text("%1"));

    QCOMPARE(projection(0)->child(3)->text(0), text("%1 row:2 col:2"));
    QCOMPARE(viewportProjections(), (QStringList{text("%1 row:1 col:2"), text("P"), text("%1 row:2 col:1")}));
}

void tst_zoHPCDisplayGUII::laterProjectionOfANameWins()
{
    load("<cluster version='1'><projection name='P' type='plane'/><projection name='P' type='plane'/>"
         "<display><window><viewport projection='P'/></window></display></cluster>");

    QCOMPARE(m_editor->getViewportItems().first()->getString(zoHPCViewportItem::ProjectionIdentifier),
             projection(1)->getString(zoHPCProjectionItem::Identifier));
}

void tst_zoHPCDisplayGUII::identifierIsTakenFromName()
{
    load(SMALL_SETUP);
    zoHPCViewportItem* viewport = m_editor->getViewportItems().first();
    viewport->setString(zoHPCViewportItem::ProjectionIdentifier, text("{stale}"));
    viewport->setProjection(text("P"));

    m_editor->correctProjectionViewportsAssignments();

    QCOMPARE(viewport->getString(zoHPCViewportItem::ProjectionIdentifier),
             projection(1)->getString(zoHPCProjectionItem::Identifier));
}

void tst_zoHPCDisplayGUII::deletingAProjectionClearsItsViewports()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));

    m_editor->deleteItem();

    QCOMPARE(projectionNames(), QStringList{text("P")});
    QCOMPARE(viewportProjections(), (QStringList{QString(), text("P"), QString()}));
    QCOMPARE(m_editor->getViewportItems().first()->foreground(0).color(), QColor(text("#FF9900")));
}

void tst_zoHPCDisplayGUII::shrinkingAWallClearsLostTiles()
{
    load(SMALL_SETUP);

    projection(0)->setInt(zoHPCProjectionItem::Rows, 1);

    QCOMPARE(projection(0)->childCount(), 2);
    QCOMPARE(viewportProjections(), (QStringList{text("Wall row:1 col:2"), text("P"), QString()}));
}

void tst_zoHPCDisplayGUII::changingAParameterRegeneratesTheTiles()
{
    load(SMALL_SETUP);

    projection(0)->setDouble(zoHPCProjectionItem::Distance, 777.0);
    projection(0)->setInt(zoHPCProjectionItem::Columns, 3);

    QCOMPARE(projection(0)->childCount(), 6);
    QCOMPARE(projection(0)->children<zoHPCProjectionItem>().last()->getDouble(zoHPCProjectionItem::Distance),
             777.0);
}

void tst_zoHPCDisplayGUII::changingATileRegeneratesTheWall()
{
    load(SMALL_SETUP);

    static_cast<zoHPCProjectionItem*>(projection(0)->child(0))
        ->setString(zoHPCProjectionItem::Name, text("mine"));

    QCOMPARE(projection(0)->child(0)->text(0), text("Wall row:1 col:1"));
}

void tst_zoHPCDisplayGUII::currentTileIsFollowedThroughRegeneration()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0)->child(2));

    projection(0)->setDouble(zoHPCProjectionItem::Distance, 5.0);

    QCOMPARE(projectionTree()->currentItem(), projection(0)->child(2));
}

void tst_zoHPCDisplayGUII::currentTileThatIsGoneLeavesTheWallCurrent()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0)->child(3));

    projection(0)->setInt(zoHPCProjectionItem::Rows, 1);

    QCOMPARE(projectionTree()->currentItem(), projection(0));
}

void tst_zoHPCDisplayGUII::changedWindowShowsItsNode()
{
    load(SMALL_SETUP);
    auto* window = static_cast<zoHPCWindowItem*>(display(0)->child(0));

    window->setRenderNode(text("c"));
    QCOMPARE(window->text(0), text("Window: c"));

    window->setRenderNode(QString());
    QCOMPARE(window->foreground(0).color(), QColor(text("#FF9900")));
}

void tst_zoHPCDisplayGUII::changedPositionMovesTheRectangle()
{
    load(SMALL_SETUP);
    zoHPCViewportItem* viewport = m_editor->getViewportItems().first();

    viewport->setString(zoHPCViewportItem::Position, text("bottom"));

    QCOMPARE(viewport->getDouble(zoHPCViewportItem::Y2), 0.5);
}

void tst_zoHPCDisplayGUII::nodeNamesToldApart_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("known"); // of "a", "a 1", "a 2", "a 3", "b", "%1 1"

    QTest::newRow("single") << QStringList{text("a"), text("b")} << QStringList{text("a"), text("b")};
    QTest::newRow("twice") << QStringList{text("a"), text("b"), text("a")}
                           << QStringList{text("a 1"), text("a 2"), text("b")};
    QTest::newRow("thrice") << QStringList{text("a"), text("a"), text("a")}
                            << QStringList{text("a 1"), text("a 2"), text("a 3")};
    QTest::newRow("placeholder") << QStringList{text("%1"), text("%1")} << QStringList{text("%1 1")};
    QTest::newRow("none") << QStringList{} << QStringList{};
}

void tst_zoHPCDisplayGUII::nodeNamesToldApart()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, known);
    const QStringList wanted{text("a"), text("a 1"), text("a 2"), text("a 3"), text("b"), text("%1 1")};
    QString xml = text("<cluster version='1'><display>");
    for (const QString& node : wanted)
        xml += text("<window node='") + node + text("'/>");
    load(xml + text("</display></cluster>"));

    m_editor->setNodeNames(names);

    QStringList kept = renderNodes();
    kept.removeAll(QString());
    QCOMPARE(kept, known);
}

void tst_zoHPCDisplayGUII::windowsOfUnknownNodesTurnOrange()
{
    load(SMALL_SETUP);

    m_editor->setNodeNames({text("b")});

    QCOMPARE(renderNodes(), (QStringList{QString(), text("b")}));
    QCOMPARE(display(0)->child(0)->foreground(0).color(), QColor(text("#FF9900")));
    QCOMPARE(display(0)->child(0)->text(0), text("Window: "));
    QVERIFY(!display(0)->child(1)->data(0, Qt::ForegroundRole).isValid());
}

void tst_zoHPCDisplayGUII::ambiguousNodeIsUnknown()
{
    load(SMALL_SETUP);

    m_editor->setNodeNames({text("a"), text("b"), text("a")});

    QCOMPARE(renderNodes(), (QStringList{QString(), text("b")}));
}

void tst_zoHPCDisplayGUII::viewportsKeepTheirProjectionWithoutNodes()
{
    load(SMALL_SETUP);

    m_editor->setNodeNames({});

    QCOMPARE(viewportProjections(),
             (QStringList{text("Wall row:1 col:2"), text("P"), text("Wall row:2 col:1")}));
    QCOMPARE(m_editor->getViewportItems().first()->text(0), text("Viewport: Wall row:1 col:2 "));
}

void tst_zoHPCDisplayGUII::eyeSeparationReachesEveryDisplay()
{
    load("<cluster version='1'><display/><display><window/></display></cluster>");

    m_editor->setEyeSeparation(72.5F);

    QCOMPARE(display(0)->getEyeSeparation(), 72.5);
    QCOMPARE(display(1)->getEyeSeparation(), 72.5);
    QCOMPARE(static_cast<zoHPCDisplayItem*>(display(1)->child(0))->getEyeSeparation(), 65.0);
}

void tst_zoHPCDisplayGUII::zeroParallaxReachesWallsOnly()
{
    load("<cluster version='1'><projection name='W' type='wall' rows='1' columns='2' distance='1'/>"
         "<projection name='P' type='powerwall' rows='1' columns='1' width='10' height='10' distance='1'/>"
         "<display><window><viewport projection='W row:1 col:2'/></window></display></cluster>");

    m_editor->setZeroParallax(812.5F);

    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Distance), 812.5);
    QCOMPARE(projection(0)->children<zoHPCProjectionItem>().at(1)->getDouble(zoHPCProjectionItem::Distance),
             812.5);
    QCOMPARE(projection(1)->getDouble(zoHPCProjectionItem::Distance), 1.0);
    QCOMPARE(viewportProjections(), QStringList{text("W row:1 col:2")});
}

void tst_zoHPCDisplayGUII::zeroParallaxReachesNestedWalls()
{
    load("<cluster version='1'><projection name='P' type='plane'/></cluster>");
    auto* inner = new zoHPCProjectionItem(text("inner"), text("wall"));
    auto* innermost = new zoHPCProjectionItem(text("innermost"), text("wall"));
    inner->addChild(innermost);
    projection(0)->addChild(inner);

    m_editor->setZeroParallax(10.0F);

    QCOMPARE(inner->getDouble(zoHPCProjectionItem::Distance), 10.0);
    QCOMPARE(inner->childCount(), 1); // its own tile, laid out anew
}

void tst_zoHPCDisplayGUII::openTakesASnapshot()
{
    load(SMALL_SETUP);

    m_editor->open({text("a"), text("b")});

    QVERIFY(m_editor->isVisible());
    QVERIFY(m_editor->isModal());
    QCOMPARE(renderNodes(), (QStringList{text("a"), text("b")}));
}

void tst_zoHPCDisplayGUII::openClearsTheCurrentRows()
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

void tst_zoHPCDisplayGUII::cancelRestoresWithoutAnnouncing()
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

void tst_zoHPCDisplayGUII::cancelBringsBackNodesThatOpeningTookAway()
{
    load(SMALL_SETUP);
    m_editor->open({text("b")});
    QCOMPARE(renderNodes(), (QStringList{QString(), text("b")}));

    m_editor->reject();

    QCOMPARE(renderNodes(), (QStringList{text("a"), text("b")}));
}

void tst_zoHPCDisplayGUII::cancelWithoutOpeningChangesNothing()
{
    load(SMALL_SETUP);
    const QString before = saved();

    m_editor->reject();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUII::applyAnnouncesAndStays()
{
    m_editor->open({});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    m_editor->apply();

    QCOMPARE(announced.count(), 1);
    QVERIFY(m_editor->isVisible());
}

void tst_zoHPCDisplayGUII::okAnnouncesAndHides()
{
    m_editor->open({});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    m_editor->accept();

    QCOMPARE(announced.count(), 1);
    QVERIFY(!m_editor->isVisible());
}

void tst_zoHPCDisplayGUII::returnKeyStaysInTheDialog()
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

void tst_zoHPCDisplayGUII::escapeCancels()
{
    load(SMALL_SETUP);
    m_editor->open({});
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    QTest::keyClick(m_editor.get(), Qt::Key_Escape);

    QVERIFY(!m_editor->isVisible());
    QCOMPARE(announced.count(), 0);
}

void tst_zoHPCDisplayGUII::addedProjectionsAreNumbered()
{
    for (int i = 0; i < 3; ++i)
        m_editor->addProjection();

    QCOMPARE(projectionNames(), (QStringList{text("Projection1"), text("Projection2"), text("Projection3")}));
}

void tst_zoHPCDisplayGUII::freedNumberIsTakenAgain()
{
    for (int i = 0; i < 3; ++i)
        m_editor->addProjection();
    projectionTree()->setCurrentItem(projection(1));

    m_editor->deleteItem();
    m_editor->addProjection();

    QCOMPARE(projectionNames(), (QStringList{text("Projection1"), text("Projection3"), text("Projection2")}));
}

void tst_zoHPCDisplayGUII::tileNamesCountAsTaken()
{
    m_editor->addProjection();
    projection(0)->addChild(new zoHPCProjectionItem(text("Projection2"), text("tile")));

    QCOMPARE(m_editor->getUniqueProjectionName(), text("Projection3"));
}

void tst_zoHPCDisplayGUII::newProjectionIsACurrentWall()
{
    m_editor->addProjection();

    QCOMPARE(projection(0)->projectionType(), text("wall"));
    QCOMPARE(projectionTree()->currentItem(), projection(0));
}

void tst_zoHPCDisplayGUII::addedDisplaysStandAtTopLevel()
{
    m_editor->addDisplay();
    m_editor->addWindow();
    m_editor->addDisplay();

    QCOMPARE(displayTree()->topLevelItemCount(), 2);
    QCOMPARE(display(1)->childCount(), 0);
}

void tst_zoHPCDisplayGUII::windowComesWithAViewport()
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

void tst_zoHPCDisplayGUII::windowGoesToTheDisplayOfTheCurrentRow()
{
    load("<cluster version='1'><display/><display><window><viewport/></window></display></cluster>");

    displayTree()->setCurrentItem(display(1)->child(0));
    m_editor->addWindow();
    displayTree()->setCurrentItem(display(1)->child(0)->child(0));
    m_editor->addWindow();

    QCOMPARE(display(0)->childCount(), 0);
    QCOMPARE(display(1)->childCount(), 3);
}

void tst_zoHPCDisplayGUII::viewportGoesToTheWindowOfTheCurrentRow()
{
    load("<cluster version='1'><display><window/><window><viewport/></window></display></cluster>");

    displayTree()->setCurrentItem(display(0)->child(1));
    m_editor->addViewport();
    QCOMPARE(displayTree()->currentItem(), display(0)->child(1)->child(1));
    m_editor->addViewport();

    QCOMPARE(display(0)->child(0)->childCount(), 0);
    QCOMPARE(display(0)->child(1)->childCount(), 3);
}

void tst_zoHPCDisplayGUII::withoutCurrentRowNothingIsAdded()
{
    load(SMALL_SETUP);
    const QString before = saved();

    m_editor->addWindow();
    m_editor->addViewport();
    displayTree()->setCurrentItem(display(0));
    m_editor->addViewport();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUII::deleteTakesTheRowChosenLast()
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

void tst_zoHPCDisplayGUII::deletingTheLastRowLeavesNothingCurrent()
{
    m_editor->addDisplay();
    displayTree()->setCurrentItem(display(0));

    m_editor->deleteItem();
    m_editor->deleteItem();
    m_editor->addWindow();

    QCOMPARE(displayTree()->topLevelItemCount(), 0);
    QVERIFY(!displayTree()->currentItem());
}

void tst_zoHPCDisplayGUII::copiedProjectionIsPastedUnderANewName()
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

void tst_zoHPCDisplayGUII::copyingKeepsTheLinksOfTheSource()
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

void tst_zoHPCDisplayGUII::copyingATileKeepsTheWall()
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

void tst_zoHPCDisplayGUII::copyOutlivesItsSource()
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

void tst_zoHPCDisplayGUII::pastedWindowGoesBelowTheCurrentDisplay()
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

void tst_zoHPCDisplayGUII::pastedWindowNeedsADisplay()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->copyDisplay();
    displayTree()->setCurrentItem(nullptr);
    const QString before = saved();

    m_editor->pasteDisplay();

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUII::pastedViewportNeedsAWindow()
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

void tst_zoHPCDisplayGUII::pastedDisplayStandsAtTopLevel()
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

void tst_zoHPCDisplayGUII::pastedViewportsAreLinked()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0));
    m_editor->copyDisplay();

    m_editor->pasteDisplay();

    projection(1)->setName(text("Renamed"));
    QCOMPARE(viewportProjections().last(), text("Renamed"));
}

void tst_zoHPCDisplayGUII::pasteWithoutCopyDoesNothing()
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

void tst_zoHPCDisplayGUII::wallBecomesItsTiles()
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

void tst_zoHPCDisplayGUII::convertedPlanesKeepTheirViewports()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(0));

    m_editor->convertToPlanes();

    QCOMPARE(viewportProjections(),
             (QStringList{text("Wall row:1 col:2"), text("P"), text("Wall row:2 col:1")}));
    projection(1)->setName(text("Upper right"));
    QCOMPARE(viewportProjections().first(), text("Upper right"));
}

void tst_zoHPCDisplayGUII::viewportOfAConvertedWallLosesIt()
{
    load("<cluster version='1'><projection name='W' type='wall' rows='1' columns='2'/><display><window>"
         "<viewport projection='W'/><viewport projection='W row:1 col:1'/></window></display></cluster>");
    projectionTree()->setCurrentItem(projection(0));

    m_editor->convertToPlanes();

    QCOMPARE(viewportProjections(), (QStringList{QString(), text("W row:1 col:1")}));
    QCOMPARE(projectionTree()->currentItem(), projection(0));
}

void tst_zoHPCDisplayGUII::convertingNothingChangesNothing()
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

void tst_zoHPCDisplayGUII::runningBlocksComingAndGoing()
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

void tst_zoHPCDisplayGUII::runningLeavesValuesEditable()
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

void tst_zoHPCDisplayGUII::actionsFollowTheCurrentRow()
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

void tst_zoHPCDisplayGUII::actionsStandInTheContextMenus()
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

void tst_zoHPCDisplayGUII::actionMeansItsOwnTree()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(1));
    displayTree()->setCurrentItem(display(0)->child(1));

    action(projectionTree(), "Delete")->trigger();

    QCOMPARE(projectionNames(), QStringList{text("Wall")});
    QCOMPARE(display(0)->childCount(), 2);
}

void tst_zoHPCDisplayGUII::comboHoldsTheTable_data()
{
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("values");

    const auto add = [](const char* name, const char* combo, auto& table) {
        QStringList texts;
        QStringList values;
        for (const auto& row : table) {
            texts << text(row.text);
            values << text(row.value);
        }
        QTest::newRow(name) << text(combo) << texts << values;
    };
    add("types", "m_type", zoHPCDisplayTables::ProjectionTypes);
    add("positions", "m_position", zoHPCDisplayTables::Positions);
    add("eyes", "m_eye", zoHPCDisplayTables::Eyes);
    add("screens", "m_screen", zoHPCDisplayTables::Screens);
    // Once more by hand, as files and manuals have them.
    QTest::newRow("types-by-hand") << "m_type"
                                   << QStringList{text("Wall (No head tracking)"), text("Power Wall"),
                                                  text("Cave"), text("Plane"), text("Tile")}
                                   << QStringList{text("wall"), text("powerwall"), text("cave"),
                                                  text("plane"), text("tile")};
    QTest::newRow("positions-by-hand")
        << "m_position" << QStringList{text("Whole window"), text("Left"),   text("Right"),
                                       text("Top"),          text("Bottom"), text("Custom")}
        << QStringList{text("fill"), text("left"),   text("right"),
                       text("top"),  text("bottom"), text("custom")};
    QTest::newRow("eyes-by-hand") << "m_eye"
                                  << QStringList{text("Disabled"),
                                                 text("Left"),
                                                 text("Right"),
                                                 text("Double Buffered"),
                                                 text("Horizontal Interlaced"),
                                                 text("Vertical Interlaced"),
                                                 text("Left/Right Split"),
                                                 text("Top/Bottom Split"),
                                                 text("Red/Cyan"),
                                                 text("Blue/Yellow"),
                                                 text("Green/Magenta")}
                                  << QStringList{text("mono"),
                                                 text("left"),
                                                 text("right"),
                                                 text("stereo"),
                                                 text("horizontalinterlaced"),
                                                 text("verticalinterlaced"),
                                                 text("splitleftright"),
                                                 text("splitbottomtop"),
                                                 text("redcyan"),
                                                 text("blueyellow"),
                                                 text("greenmagenta")};
    QStringList screenTexts{text("Extended desktop"), text("Primary screen")};
    QStringList screenValues{text("-2"), text("-1")};
    for (int screen = 0; screen < 16; ++screen) {
        screenTexts << QString::number(screen + 1);
        screenValues << QString::number(screen);
    }
    QTest::newRow("screens-by-hand") << "m_screen" << screenTexts << screenValues;
}

void tst_zoHPCDisplayGUII::comboHoldsTheTable()
{
    QFETCH(QString, combo);
    QFETCH(QStringList, texts);
    QFETCH(QStringList, values);
    const auto* box = m_editor->findChild<QComboBox*>(combo);
    QVERIFY(box);

    QStringList shown;
    QStringList held;
    for (int i = 0; i < box->count(); ++i) {
        shown << box->itemText(i);
        held << box->itemData(i).toString();
    }

    QCOMPARE(shown, texts);
    QCOMPARE(held, values);
}

void tst_zoHPCDisplayGUII::panelFollowsTheCurrentRow()
{
    load(SMALL_SETUP);
    QCOMPARE(page(), text("m_nothingPage"));

    projectionTree()->setCurrentItem(projection(0));
    QCOMPARE(page(), text("m_projectionPage"));
    displayTree()->setCurrentItem(display(0));
    QCOMPARE(page(), text("m_displayPage"));
    displayTree()->setCurrentItem(display(0)->child(0));
    QCOMPARE(page(), text("m_windowPage"));
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    QCOMPARE(page(), text("m_viewportPage"));
    projectionTree()->setCurrentItem(projection(0)); // current in its tree all the time
    QCOMPARE(page(), text("m_projectionPage"));
    QCOMPARE(projectionTree()->selectedItems().size(), 1);
    QCOMPARE(displayTree()->selectedItems().size(), 0);

    load("<cluster version='1'/>");
    QCOMPARE(page(), text("m_nothingPage"));
}

void tst_zoHPCDisplayGUII::labelsOfThePanelsAreThere_data()
{
    QTest::addColumn<QString>("label");

    for (const char* label : {"Eye separation [mm]",
                              "Hardware sync",
                              "Camera",
                              "User",
                              "Render node",
                              "Screen",
                              "Full screen",
                              "Geometry [pixel]",
                              "Lower left [pixel]",
                              "Upper right [pixel]",
                              "Position",
                              "Stereo",
                              "Flip",
                              "Horizontal",
                              "Vertical",
                              "Cave center [mm]",
                              "Cave size [mm]",
                              "Cave walls",
                              "Projection area [mm]",
                              "Distance [mm]",
                              "Right eye offset [pixel]",
                              "Tile overlap",
                              "Edge Blending",
                              "Tile Layout",
                              "Edges",
                              "Add Projection",
                              "Add Display",
                              "Add Window",
                              "Add Viewport"})
        QTest::newRow(label) << text(label);
}

void tst_zoHPCDisplayGUII::labelsOfThePanelsAreThere()
{
    QFETCH(QString, label);

    QStringList texts;
    for (const QLabel* widget : m_editor->findChildren<QLabel*>())
        texts << widget->text();
    for (const QAbstractButton* widget : m_editor->findChildren<QAbstractButton*>())
        texts << widget->text();
    for (const QGroupBox* widget : m_editor->findChildren<QGroupBox*>())
        texts << widget->title();

    QVERIFY(texts.contains(label));
}

void tst_zoHPCDisplayGUII::typeDecidesWhatIsShown_data()
{
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QString>("unit");

    QTest::newRow("wall") << QStringList{text("m_tileLayoutGroup"), text("m_distance"),
                                         text("m_rightOffsetX")}
                          << "[pixel]";
    QTest::newRow("powerwall") << QStringList{text("m_tileLayoutGroup"), text("m_areaGroup"),
                                              text("m_distance"), text("m_rightOffsetX")}
                               << "[mm]";
    QTest::newRow("cave") << QStringList{text("m_tileLayoutGroup"), text("m_caveWallsGroup"),
                                         text("m_caveSizeGroup"), text("m_caveCenterGroup")}
                          << "[mm]";
    QTest::newRow("plane") << QStringList{text("m_cornersGroup"), text("m_edgesGroup")} << "[mm]";
    QTest::newRow("tile") << QStringList{text("m_tileLayoutGroup"), text("m_row"), text("m_distance"),
                                         text("m_rightOffsetX")}
                          << "[mm]";
    QTest::newRow("dome") << QStringList{} << "";
}

void tst_zoHPCDisplayGUII::typeDecidesWhatIsShown()
{
    QFETCH(QStringList, shown);
    QFETCH(QString, unit);
    load(text("<cluster version='1'><projection name='A' type='") + text(QTest::currentDataTag()) +
         text("' edgeblending='true'/></cluster>"));
    m_editor->open({});

    projectionTree()->setCurrentItem(projection(0));

    for (const char* name :
         {"m_tileLayoutGroup", "m_row", "m_areaGroup", "m_cornersGroup", "m_caveWallsGroup",
          "m_caveSizeGroup", "m_caveCenterGroup", "m_distance", "m_rightOffsetX", "m_edgesGroup"}) {
        QVERIFY2(isShown(field(name)) == shown.contains(text(name)), name);
    }
    QCOMPARE(field<QLabel>("m_overlapUnit")->text(), unit);
}

void tst_zoHPCDisplayGUII::projectionFieldIsBoundToItsColumn_data()
{
    QTest::addColumn<int>("col");

    for (const Field& one : PROJECTION_FIELDS)
        QTest::newRow(one.widget) << one.col;
}

void tst_zoHPCDisplayGUII::projectionFieldIsBoundToItsColumn()
{
    QFETCH(int, col);
    m_editor->addProjection();
    auto* widget = field(QTest::currentDataTag());
    QVERIFY(widget);
    zoHPCProjectionItem before(text("before"), text("wall"));

    const QVariant expected = changeField(widget);

    QCOMPARE(projection(0)->data(col, Qt::EditRole), expected);
    QVERIFY(projection(0)->data(col, Qt::EditRole) != before.data(col, Qt::EditRole));
}

void tst_zoHPCDisplayGUII::outputFieldIsBoundToItsColumn_data()
{
    QTest::addColumn<int>("col");

    for (const Field& one : OUTPUT_FIELDS)
        QTest::newRow(one.widget) << one.col;
}

void tst_zoHPCDisplayGUII::outputFieldIsBoundToItsColumn()
{
    QFETCH(int, col);
    load(SMALL_SETUP);
    m_editor->setNodeNames({text("a"), text("b"), text("c")});
    QTreeWidgetItem* item = display(0);
    if (col > zoHPCDisplayItem::HardwareSync)
        item = item->child(0);
    if (col > zoHPCWindowItem::FullScreen)
        item = item->child(0);
    displayTree()->setCurrentItem(item);
    if (col >= zoHPCViewportItem::X1 && col <= zoHPCViewportItem::Y2)
        field<QComboBox>("m_position")->setCurrentIndex(5); // a preset would win
    const QVariant before = item->data(col, Qt::EditRole);

    const QVariant expected = changeField(field(QTest::currentDataTag()));

    QCOMPARE(item->data(col, Qt::EditRole), expected);
    QVERIFY(item->data(col, Qt::EditRole) != before);
}

void tst_zoHPCDisplayGUII::choosingRowsWritesNothing()
{
    load("<cluster version='1'>"
         "<projection name='W' type='wall' rows='2' columns='2' overlapx='1.23456789' distance='abc'/>"
         "<projection name='C' type='cave' rows='1000000000000' columns='1' cavex='1e9' left='1'/>"
         "<projection name='D' type='dome' x1='0.000123'/>"
         "<display eyeseparation='65.0009' camera='Gone'><window node='a' screen='77' x='-2000000' "
         "fullscreen='no'>"
         "<viewport projection='W row:1 col:1' position='middle' x1='0.123456789' y1='1080' eye='hologram'/>"
         "</window></display></cluster>");
    m_editor->setNodeNames({text("a")});
    m_editor->open({text("a")});
    const QString before = saved();
    const QSignalSpy announced(m_editor.get(), &zoHPCDisplayGUII::displayChanged);

    for (int round = 0; round < 2; ++round) {
        for (QTreeWidget* tree : {projectionTree(), displayTree()}) {
            for (QTreeWidgetItemIterator it(tree); *it; ++it) {
                tree->setCurrentItem(*it);
                for (QWidget* widget : m_editor->findChildren<QWidget*>()) {
                    if (widget->isVisible() && widget->focusPolicy() != Qt::NoFocus)
                        widget->setFocus();
                }
            }
        }
    }

    QCOMPARE(saved(), before);
    QCOMPARE(announced.count(), 0);
}

void tst_zoHPCDisplayGUII::chosenTypeLaysOutTheWallAnew()
{
    m_editor->addProjection();
    auto* type = field<QComboBox>("m_type");

    type->setCurrentIndex(type->findData(text("powerwall")));

    QCOMPARE(projection(0)->projectionType(), text("powerwall"));
    QCOMPARE(static_cast<zoHPCProjectionItem*>(projection(0)->child(0))->projectionType(), text("plane"));
    type->setCurrentIndex(type->findData(text("cave")));
    QCOMPARE(projection(0)->childCount(), 0);
    field<QCheckBox>("m_leftWall")->click();
    QCOMPARE(projection(0)->childCount(), 1);
}

void tst_zoHPCDisplayGUII::unknownTypeIsLeftAlone()
{
    load("<cluster version='1'><projection name='D' type='dome'/></cluster>");
    projectionTree()->setCurrentItem(projection(0));

    m_editor->setProjectionType();
    field<QLineEdit>("m_name")->setText(text("E"));

    QCOMPARE(projection(0)->projectionType(), text("dome"));
    QCOMPARE(field<QComboBox>("m_type")->currentIndex(), -1);
}

void tst_zoHPCDisplayGUII::typedNameRenamesTilesAndViewports()
{
    load(SMALL_SETUP);
    m_editor->open({text("a"), text("b")});
    projectionTree()->setCurrentItem(projection(0));
    auto* name = field<QLineEdit>("m_name");
    name->selectAll();

    QTest::keyClicks(name, text("Ab"));

    QCOMPARE(name->text(), text("Ab"));
    QCOMPARE(projection(0)->child(0)->text(0), text("Ab row:1 col:1"));
    QCOMPARE(viewportProjections().first(), text("Ab row:1 col:2"));
}

void tst_zoHPCDisplayGUII::numberTypedDigitByDigitIsKept()
{
    load(SMALL_SETUP);
    m_editor->open({});
    projectionTree()->setCurrentItem(projection(0));
    auto* distance = field<QDoubleSpinBox>("m_distance");
    distance->selectAll();

    QTest::keyClicks(distance, text("12") + distance->locale().decimalPoint() + text("5"));

    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Distance), 12.5);
    QCOMPARE(
        static_cast<zoHPCProjectionItem*>(projection(0)->child(3))->getDouble(zoHPCProjectionItem::Distance),
        12.5);
}

void tst_zoHPCDisplayGUII::tilesAreReadOnly()
{
    load(SMALL_SETUP);

    projectionTree()->setCurrentItem(projection(0)->child(1));
    QVERIFY(isShown(field("m_generatedHint")));
    QVERIFY(field<QDoubleSpinBox>("m_distance")->isReadOnly());
    QVERIFY(field<QLineEdit>("m_name")->isReadOnly());
    QVERIFY(!field("m_type")->isEnabled());
    QCOMPARE(field<QSpinBox>("m_column")->value(), 2);

    projectionTree()->setCurrentItem(projection(0));
    QVERIFY(!isShown(field("m_generatedHint")));
    QVERIFY(!field<QDoubleSpinBox>("m_distance")->isReadOnly());
    QVERIFY(field("m_type")->isEnabled());
}

void tst_zoHPCDisplayGUII::edgesShowWithBlendingOnly()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(1));
    QVERIFY(!isShown(field("m_edgesGroup")));

    field<QCheckBox>("m_edgeBlending")->click();

    QVERIFY(isShown(field("m_edgesGroup")));
    QCOMPARE(projection(1)->getBool(zoHPCProjectionItem::EdgeBlending), true);
}

void tst_zoHPCDisplayGUII::rectangleIsEditableWhenCustomOnly()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    auto* position = field<QComboBox>("m_position");

    for (int i = 0; i < position->count(); ++i) {
        position->setCurrentIndex(i);
        const bool custom = position->itemData(i).toString() == text("custom");
        for (const char* name : {"m_viewportX1", "m_viewportY1", "m_viewportX2", "m_viewportY2"})
            QCOMPARE(field(name)->isEnabled(), custom);
    }
    position->setCurrentIndex(4); // the lower half
    QCOMPARE(field<QDoubleSpinBox>("m_viewportY2")->value(), 0.5);
}

void tst_zoHPCDisplayGUII::rectangleIsShownInPixels()
{
    load(SMALL_SETUP);
    static_cast<zoHPCWindowItem*>(display(0)->child(0))->setBool(zoHPCWindowItem::FullScreen, false);
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));

    field<QComboBox>("m_position")->setCurrentIndex(2); // the right half of 640 x 480

    QVERIFY(isShown(field("m_lowerLeftPixel")));
    QCOMPARE(field<QLabel>("m_lowerLeftPixel")->text(), text("320, 0"));
    QCOMPARE(field<QLabel>("m_upperRightPixel")->text(), text("640, 480"));
    // The size of a full-screen window is not known here.
    static_cast<zoHPCWindowItem*>(display(0)->child(1))->setBool(zoHPCWindowItem::FullScreen, true);
    displayTree()->setCurrentItem(display(0)->child(1)->child(0));
    QVERIFY(!isShown(field("m_lowerLeftPixel")));
}

void tst_zoHPCDisplayGUII::geometryIsHiddenOfFullScreenWindows()
{
    load(SMALL_SETUP);

    displayTree()->setCurrentItem(display(0)->child(0));
    QVERIFY(!isShown(field("m_geometryGroup")));
    field<QCheckBox>("m_fullScreen")->click();

    QVERIFY(isShown(field("m_geometryGroup")));
    QCOMPARE(static_cast<zoHPCWindowItem*>(display(0)->child(0))->getBool(zoHPCWindowItem::FullScreen),
             false);
}

void tst_zoHPCDisplayGUII::eyesAreNamed_data()
{
    QTest::addColumn<QString>("shown");

    for (const zoHPCDisplayTables::ComboRow& row : zoHPCDisplayTables::Eyes) {
        const QString value = text(row.value);
        const bool one = value == text("left") || value == text("right");
        QTest::newRow(row.value) << (one ? QString() : value == text("mono") ? text("Mono") : text("Both"));
    }
}

void tst_zoHPCDisplayGUII::eyesAreNamed()
{
    QFETCH(QString, shown);
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    auto* eye = field<QComboBox>("m_eye");

    eye->setCurrentIndex(eye->findData(text(QTest::currentDataTag())));

    QCOMPARE(field<QLabel>("m_eyesShown")->text(), shown);
    QCOMPARE(m_editor->getViewportItems().first()->getString(zoHPCViewportItem::Eye),
             text(QTest::currentDataTag()));
}

void tst_zoHPCDisplayGUII::nodeChoicesAreToldApart()
{
    m_editor->setNodeNames({text("a"), text("b"), text("a"), text("%1"), text("a"), text("%1")});

    const auto* nodes = field<QComboBox>("m_renderNode");
    QStringList shown;
    for (int i = 0; i < nodes->count(); ++i)
        shown << nodes->itemText(i);
    QCOMPARE(shown,
             (QStringList{text("a 1"), text("b"), text("a 2"), text("%1 1"), text("a 3"), text("%1 2")}));
}

void tst_zoHPCDisplayGUII::newNodeChoicesKeepTheWindowsNode()
{
    load(SMALL_SETUP);
    m_editor->setNodeNames({text("a"), text("b")});
    displayTree()->setCurrentItem(display(0)->child(1));
    QCOMPARE(field<QComboBox>("m_renderNode")->currentText(), text("b"));

    m_editor->setNodeNames({text("x"), text("y"), text("b"), text("a")});
    QCOMPARE(field<QComboBox>("m_renderNode")->currentText(), text("b"));
    QCOMPARE(renderNodes(), (QStringList{text("a"), text("b")}));

    m_editor->setNodeNames({text("a")});
    QCOMPARE(field<QComboBox>("m_renderNode")->currentIndex(), -1);
    QCOMPARE(renderNodes(), (QStringList{text("a"), QString()}));
}

void tst_zoHPCDisplayGUII::clickedSurfaceIsAssigned()
{
    load(SMALL_SETUP);
    m_editor->open({text("a"), text("b")});
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    auto* planes = field<QTreeView>("m_planeView");
    const QModelIndex plane = planes->model()->index(1, 0);
    planes->scrollTo(plane);
    QCoreApplication::processEvents();

    QTest::mouseClick(planes->viewport(), Qt::LeftButton, Qt::NoModifier, planes->visualRect(plane).center());

    QCOMPARE(viewportProjections().first(), text("P"));
    QCOMPARE(display(0)->child(0)->child(0)->text(0), text("Viewport: P "));
    QCOMPARE(field<QLabel>("m_planeName")->text(), text("P"));
    projection(1)->setName(text("Q"));
    QCOMPARE(viewportProjections().first(), text("Q"));
}

void tst_zoHPCDisplayGUII::assignedSurfaceIsHighlighted()
{
    load(SMALL_SETUP);
    auto* planes = field<QTreeView>("m_planeView");

    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    QCOMPARE(planes->currentIndex().data().toString(), text("Wall row:1 col:2"));
    displayTree()->setCurrentItem(display(0)->child(0)->child(1));
    QCOMPARE(planes->currentIndex().data().toString(), text("P"));
    m_editor->addViewport();
    QVERIFY(!planes->currentIndex().isValid());
    QVERIFY(!field<QLabel>("m_planeName")->text().isEmpty());
}

void tst_zoHPCDisplayGUII::cameraChoicesFollowTheHost()
{
    Cameras cameras;
    Nodes nodes;
    cameras.names = QStringList{text("One"), text("Two")};
    m_editor = std::make_unique<zoHPCDisplayGUII>();
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0));
    const auto* box = field<QComboBox>("m_camera");
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->currentText(), text("Cam"));
    field<QComboBox>("m_camera")->setCurrentIndex(1);
    QCOMPARE(display(0)->getCameraName(), text("Two"));

    cameras.names = QStringList{text("Zero"), text("One"), text("Two")};
    emit cameras.camerasChanged();
    QCOMPARE(box->count(), 3);
    QCOMPARE(box->currentText(), text("Two"));
    QCOMPARE(box->currentIndex(), 2);
    QCOMPARE(display(0)->getCameraName(), text("Two"));

    cameras.names = QStringList{text("Zero"), text("Eins")};
    emit nodes.cameraNameChanged(1, text("Eins"));
    QCOMPARE(box->itemText(1), text("Eins"));
    m_editor.reset();
}

void tst_zoHPCDisplayGUII::cameraThatIsGoneStays()
{
    Cameras cameras;
    cameras.names = QStringList{text("Cam")};
    m_editor = std::make_unique<zoHPCDisplayGUII>();
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0));

    cameras.names.clear();
    emit cameras.camerasChanged();

    QCOMPARE(field<QComboBox>("m_camera")->currentText(), text("Cam"));
    QCOMPARE(display(0)->getCameraName(), text("Cam"));
}

void tst_zoHPCDisplayGUII::displayShowsItsCamera()
{
    load("<cluster version='1'><display camera='A'/><display camera='%1'/><display/></cluster>");

    QStringList shown;
    for (int i = 0; i < 3; ++i) {
        displayTree()->setCurrentItem(display(i));
        shown << field<QComboBox>("m_camera")->currentText();
    }

    QCOMPARE(shown, (QStringList{text("A"), text("%1"), QString()}));
}

void tst_zoHPCDisplayGUII::namedFieldGetsTheFocusWithF2()
{
    load(SMALL_SETUP);
    m_editor->open({});
    QApplication::setActiveWindow(m_editor.get());
    projectionTree()->setFocus();
    projectionTree()->setCurrentItem(projection(0));

    QTest::keyClick(projectionTree(), Qt::Key_F2);

    QTRY_COMPARE(m_editor->focusWidget(), field("m_name"));
    QCOMPARE(field<QLineEdit>("m_name")->selectedText(), text("Wall"));
}

void tst_zoHPCDisplayGUII::noFieldIsCutOff()
{
    load(
        "<cluster version='1'><projection name='a' type='wall'/><projection name='b' type='powerwall'/>"
        "<projection name='c' type='cave'/><projection name='d' type='plane' edgeblending='true'/>"
        "<projection name='e' type='tile'/><display><window fullscreen='false'><viewport/></window></display>"
        "</cluster>");
    m_editor->open({});
    m_editor->resize(1366, 640);

    QStringList cut;
    for (QTreeWidget* tree : {projectionTree(), displayTree()}) {
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            tree->setCurrentItem(*it);
            QCoreApplication::processEvents();
            const QWidget* panel = field<QStackedWidget>("m_panels")->currentWidget();
            const int right = field("m_panelArea")->width();
            for (const QWidget* widget : panel->findChildren<QWidget*>()) {
                if (!widget->isVisible() || widget->width() == 0)
                    continue;
                if (widget->mapTo(m_editor.get(), QPoint(widget->width(), 0)).x() -
                        field("m_panelArea")->mapTo(m_editor.get(), QPoint()).x() >
                    right)
                    cut << (*it)->text(0) + QLatin1Char(' ') + widget->objectName();
            }
        }
    }

    QCOMPARE(cut, QStringList());
}

void tst_zoHPCDisplayGUII::fitsASmallScreen()
{
    m_editor->open({});
    QCoreApplication::processEvents();

    // Frame and panels of a desktop take some of the height.
    QVERIFY(m_editor->minimumSizeHint().height() <= 640);
    // Narrower than all panes together: the panels scroll.
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    QVERIFY(screen.width() < 1024);
    QCOMPARE(std::max(m_editor->minimumSizeHint().width(), screen.width()), screen.width());
    QVERIFY(m_editor->height() < screen.height());
    QVERIFY(m_editor->width() <= screen.width());

    const QSplitter* const panes = field<QSplitter>("m_splitter");
    for (int i = 1; i < panes->count(); ++i)
        QVERIFY(panes->widget(i)->x() > panes->widget(i - 1)->geometry().right());
    QVERIFY(panes->widget(panes->count() - 1)->geometry().right() < panes->width());
}

void tst_zoHPCDisplayGUII::tabKeyVisitsThePartsInTheirOrder()
{
    load("<cluster version='1'><projection name='a' type='powerwall'/><display/></cluster>");
    m_editor->open({});
    projectionTree()->setCurrentItem(projectionTree()->topLevelItem(0));
    projectionTree()->setFocus();

    QStringList visited;
    const QWidget* const first = projectionTree();
    const QWidget* widget = first;
    do {
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled() &&
            !widget->focusProxy() && !qobject_cast<const QAbstractSpinBox*>(widget->parentWidget())) {
            const auto* const button = qobject_cast<const QPushButton*>(widget);
            visited << (widget->objectName().isEmpty() && button ? button->text().remove(QLatin1Char('&'))
                                                                 : widget->objectName());
        }
        widget = widget->nextInFocusChain();
    } while (widget != first);

    QCOMPARE(visited, (QStringList{text("m_projectionTree"),
                                   text("m_addProjectionButton"),
                                   text("m_displayTree"),
                                   text("m_addDisplayButton"),
                                   text("m_name"),
                                   text("m_type"),
                                   text("m_rows"),
                                   text("m_columns"),
                                   text("m_overlapX"),
                                   text("m_overlapY"),
                                   text("m_areaWidth"),
                                   text("m_areaHeight"),
                                   text("m_distance"),
                                   text("m_rightOffsetX"),
                                   text("m_rightOffsetY"),
                                   text("m_edgeBlending"),
                                   text("qt_tabwidget_tabbar"),
                                   text("m_roomView"),
                                   text("m_fitButton"),
                                   text("m_savePictureButton"),
                                   text("m_problemList"),
                                   text("OK"),
                                   text("Cancel"),
                                   text("Apply")}));
}

void tst_zoHPCDisplayGUII::everyNumberHasANameToBeRead()
{
    QStringList nameless;
    const QList<QAbstractSpinBox*> numbers = m_editor->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers) {
        const QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(number);
        QVERIFY(reader);
        const QString name = reader->text(QAccessible::Name);
        if (name.size() < 2 && name != QLatin1String("X") && name != QLatin1String("Y") &&
            name != QLatin1String("Z"))
            nameless << number->objectName();
    }

    QVERIFY(!numbers.isEmpty());
    QCOMPARE(nameless, QStringList());
}

void tst_zoHPCDisplayGUII::fieldsShowUsualNumbersWhole()
{
    load("<cluster version='1'><projection name='d' type='plane' x1='-10000' y1='-10000' z1='-10000'/>"
         "<display><window x='-10000' fullscreen='false'/></display></cluster>");
    m_editor->open({});
    const auto check = [this](QTreeWidget* tree, QTreeWidgetItem* item, const char* name) {
        tree->setCurrentItem(item);
        auto* const number = field<QAbstractSpinBox>(name);
        // Narrower than its range asks for, and still wide enough.
        QVERIFY(number->minimumWidth() > 0);
        QVERIFY(number->minimumWidth() < number->minimumSizeHint().width());
        number->resize(number->minimumWidth(), number->height());
        auto* const edit = number->findChild<QLineEdit*>();
        QVERIFY(edit->text().startsWith(text("-10000")));
        QVERIFY(edit->contentsRect().width() >= edit->fontMetrics().horizontalAdvance(edit->text()));
    };

    check(projectionTree(), projectionTree()->topLevelItem(0), "m_lowerLeftX");
    check(projectionTree(), projectionTree()->topLevelItem(0), "m_lowerLeftZ");
    check(displayTree(), displayTree()->topLevelItem(0)->child(0), "m_windowX");
}

void tst_zoHPCDisplayGUII::attributeOrderFollowsColumns()
{
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("display")),
             (QStringList{text("eyeseparation"), text("camera"), text("user"), text("hardwaresync")}));
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("window")),
             (QStringList{text("node"), text("screen"), text("x"), text("y"), text("width"), text("height"),
                          text("fullscreen")}));
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("viewport")).mid(0, 3),
             (QStringList{text("projection"), text("position"), text("x1")}));
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("projection")).size(), 39);
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("projection")).first(), text("name"));
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("projection")).last(), text("bottomedge"));
    QCOMPARE(zoHPCDisplayGUII::attributeOrder(text("master")), QStringList());
}

void tst_zoHPCDisplayGUII::nestedProjectionsLoadAndSave()
{
    QString xml = text("<cluster version='1'>");
    for (int i = 0; i < 1000; ++i)
        xml += text("<projection name='p' type='wall' rows='2' columns='1'>");
    for (int i = 0; i < 1000; ++i)
        xml += text("</projection>");

    load(xml + text("</cluster>"));
    const QString first = saved();
    load(first);

    QCOMPARE(projectionTree()->topLevelItemCount(), 1);
    QCOMPARE(projection(0)->childCount(), 2);
    QCOMPARE(saved(), first);
}

void tst_zoHPCDisplayGUII::hugeWallInAFileIsRefused()
{
    expectMessage(QtCriticalMsg, QRegularExpression(text("^Projection Huge with 1000000 x 1000000 tiles")));

    load("<cluster version='1'><projection name='Huge' type='wall' rows='1000000' columns='1000000'/>"
         "<projection name='P' type='plane'/></cluster>");

    QCOMPARE(projectionNames(), (QStringList{text("Huge"), text("P")}));
    QCOMPARE(projection(0)->childCount(), 0);
    QVERIFY(saved().contains(text("rows=\"1000000\"")));
}

void tst_zoHPCDisplayGUII::bigWallIsConvertedWithItsLinks()
{
    // Expanded, shown and with many viewports; how fast is for the benchmark to say.
    QString xml =
        text("<cluster version='1'><projection name='W' type='wall' rows='100' columns='100'/><display>");
    for (int i = 0; i < 1000; ++i)
        xml += text("<window node='n%1'><viewport projection='W row:%2 col:1'/></window>")
                   .arg(QString::number(i), QString::number(i % 100 + 1));
    load(xml + text("</display></cluster>"));
    m_editor->open({});
    projection(0)->setExpanded(true);
    projectionTree()->setCurrentItem(projection(0)->child(5000));
    QCoreApplication::processEvents();

    projection(0)->setDouble(zoHPCProjectionItem::Distance, 7.0);
    projection(0)->setName(text("V"));
    projectionTree()->setCurrentItem(projection(0));
    m_editor->convertToPlanes();

    QCOMPARE(projectionTree()->topLevelItemCount(), 10000);
    QCOMPARE(viewportProjections().at(3), text("V row:4 col:1"));
}

void tst_zoHPCDisplayGUII::randomOperationsKeepTheDocumentSound()
{
    // Deleting, pasting and regenerating what is current, copied or shown, in every order.
    quint32 seed = 20260729;
    const auto random = [&seed](int bound) {
        seed = seed * 1664525U + 1013904223U;
        return static_cast<int>((seed >> 8) % static_cast<quint32>(bound));
    };
    const auto chooseRow = [&random](QTreeWidget* tree) {
        QList<QTreeWidgetItem*> rows{nullptr};
        for (QTreeWidgetItemIterator it(tree); *it; ++it)
            rows << *it;
        tree->setCurrentItem(rows.at(random(rows.size())));
    };
    zoHPCDisplayGUII other;
    zoHPCDisplayGUII another;
    const char* const types[] = {"wall", "powerwall", "cave", "plane", "tile", "dome"};
    load(SMALL_SETUP);
    m_editor->open({text("a"), text("b")});

    for (int step = 1; step <= 10000; ++step) {
        if (m_editor->getProjectionItems().size() > 200 || m_editor->getWindowItems().size() > 200)
            load(SMALL_SETUP);
        auto* projectionItem = dynamic_cast<zoHPCProjectionItem*>(projectionTree()->currentItem());
        auto* outputItem = dynamic_cast<zoHPCTreeWidgetItem*>(displayTree()->currentItem());
        switch (random(24)) {
        case 0:
        case 1:
            chooseRow(projectionTree());
            break;
        case 2:
        case 3:
            chooseRow(displayTree());
            break;
        case 4:
            m_editor->addProjection();
            break;
        case 5:
            m_editor->addDisplay();
            break;
        case 6:
            m_editor->addWindow();
            break;
        case 7:
            m_editor->addViewport();
            break;
        case 8:
        case 9:
            m_editor->deleteItem();
            break;
        case 10:
            m_editor->copyProjection();
            break;
        case 11:
            m_editor->copyDisplay();
            break;
        case 12:
            m_editor->pasteProjection();
            break;
        case 13:
            m_editor->pasteDisplay();
            break;
        case 14:
            m_editor->convertToPlanes();
            break;
        case 15:
            if (projectionItem)
                projectionItem->setProjectionType(text(types[random(6)]));
            break;
        case 16:
            if (projectionItem)
                projectionItem->setInt(zoHPCProjectionItem::Rows, random(4));
            break;
        case 17:
            if (projectionItem)
                projectionItem->setBool(zoHPCProjectionItem::LeftWall + random(6), random(2) == 1);
            break;
        case 18:
            if (projectionItem)
                projectionItem->setName(QString::number(random(50)));
            break;
        case 19:
            if (outputItem)
                outputItem->setString(zoHPCWindowItem::Node, QString::number(random(3)));
            break;
        case 20:
            if (outputItem)
                outputItem->setString(zoHPCViewportItem::Position,
                                      random(2) == 1 ? text("left") : text("custom"));
            break;
        case 21:
            m_editor->setZeroParallax(static_cast<float>(random(2000)));
            break;
        case 22:
            m_editor->setNodeNames({text("0"), text("1")});
            break;
        case 23:
            if (random(20) == 0) {
                m_editor->reject();
                m_editor->open({text("0"), text("1")});
            }
            break;
        }
        if (step % 100 == 0) {
            // A tile that was deleted alone is back after the next change of its wall, as after a load.
            for (int i = 0; i < projectionTree()->topLevelItemCount(); ++i)
                projection(i)->update();
            // Empty attributes are gone after a load, so the fixed point begins with the second text.
            other.loadFromXML(documentOf(saved()));
            QDomDocument first = documentOf(text("<cluster version='1'/>"));
            other.saveToXML(first);
            another.loadFromXML(documentOf(first.toString(1)));
            QDomDocument second = documentOf(text("<cluster version='1'/>"));
            another.saveToXML(second);
            QCOMPARE(second.toString(1), first.toString(1));
            QCOMPARE(other.getProjectionItems().size(), m_editor->getProjectionItems().size());
            QCOMPARE(other.getWindowItems().size(), m_editor->getWindowItems().size());
            QCoreApplication::processEvents();
        }
    }
}

ZO_TEST_MAIN(tst_zoHPCDisplayGUII)
#include "tst_zoHPCDisplayGUII.moc"
