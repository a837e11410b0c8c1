#include "zoHPCDisplaySetupTest.h"

#include <zoCameraService.h>
#include <zoHPCDisplayGUII.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCDisplayTables.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>
#include <zoKernelServiceFactory.h>
#include <zoNodeService.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalSpy>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeView>
#include <QTreeWidget>
#include <QWheelEvent>

#include <algorithm>
#include <memory>

namespace
{
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
            combo->setEditText(QStringLiteral("typed"));
            return QStringLiteral("typed");
        }
        combo->setCurrentIndex(combo->currentIndex() == 1 ? 2 : 1);
        return combo->currentData().isValid() ? combo->currentData() : QVariant(combo->currentText());
    }
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->setText(QStringLiteral("typed"));
        return QStringLiteral("typed");
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

// The panels of the display setup: which is shown, and the fields bound to the items.
class tst_zoHPCDisplayGUIIPanels final : public zoHPCDisplaySetupTest
{
    Q_OBJECT

private slots:
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
    void pointAndCommaAreDecimalMarks_data();
    void pointAndCommaAreDecimalMarks();
    void wheelChangesNothingThatLacksTheFocus();
    void chosenTypeOfALoadedProjectionStartsWithItsDefaults();
    void choosingATypeKeepsWhatWasSet();
    void fractionOfAnOverlapIsDroppedBeforeAndAfterCancel();
    void tilesAreReadOnly();
    void edgesShowWithBlendingOnly();
    void rectangleIsEditableWhenCustomOnly();
    void rectangleIsShownInPixels();
    void geometryIsHiddenOfFullScreenWindows();
    void cornersInPixelsAreShownAsTheyAre();
    void eyesAreNamed_data();
    void eyesAreNamed();
    void namedEyesAreChosen();
    void nodeChoicesAreToldApart();
    void newNodeChoicesKeepTheWindowsNode();
    void clickedSurfaceIsAssigned();
    void shownSurfacesLeaveNoSelectionBehind();
    void assignedSurfaceIsHighlighted();
    void cameraChoicesFollowTheHost();
    void cameraThatIsGoneStays();
    void cameraStaysAsItIsTyped();
    void displayShowsItsCamera();
    void namedFieldGetsTheFocusWithF2();
    void noFieldIsCutOff();
    void fitsASmallScreen();
    void tabKeyVisitsThePartsInTheirOrder();
    void everyNumberHasANameToBeRead();
    void fieldsShowUsualNumbersWhole();
};

void tst_zoHPCDisplayGUIIPanels::comboHoldsTheTable_data()
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
    add("types", "m_type", zoHPCProjectionType::all());
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

void tst_zoHPCDisplayGUIIPanels::comboHoldsTheTable()
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

void tst_zoHPCDisplayGUIIPanels::panelFollowsTheCurrentRow()
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

void tst_zoHPCDisplayGUIIPanels::labelsOfThePanelsAreThere_data()
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
                              "Mono",
                              "Both",
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

void tst_zoHPCDisplayGUIIPanels::labelsOfThePanelsAreThere()
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

void tst_zoHPCDisplayGUIIPanels::typeDecidesWhatIsShown_data()
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

void tst_zoHPCDisplayGUIIPanels::typeDecidesWhatIsShown()
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

void tst_zoHPCDisplayGUIIPanels::projectionFieldIsBoundToItsColumn_data()
{
    QTest::addColumn<int>("col");

    for (const Field& one : PROJECTION_FIELDS)
        QTest::newRow(one.widget) << one.col;
}

void tst_zoHPCDisplayGUIIPanels::projectionFieldIsBoundToItsColumn()
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

void tst_zoHPCDisplayGUIIPanels::outputFieldIsBoundToItsColumn_data()
{
    QTest::addColumn<int>("col");

    for (const Field& one : OUTPUT_FIELDS)
        QTest::newRow(one.widget) << one.col;
}

void tst_zoHPCDisplayGUIIPanels::outputFieldIsBoundToItsColumn()
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

void tst_zoHPCDisplayGUIIPanels::choosingRowsWritesNothing()
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

void tst_zoHPCDisplayGUIIPanels::chosenTypeLaysOutTheWallAnew()
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

void tst_zoHPCDisplayGUIIPanels::unknownTypeIsLeftAlone()
{
    load("<cluster version='1'><projection name='D' type='dome'/></cluster>");
    projectionTree()->setCurrentItem(projection(0));

    m_editor->setProjectionType();
    field<QLineEdit>("m_name")->setText(text("E"));

    QCOMPARE(projection(0)->projectionType(), text("dome"));
    QCOMPARE(field<QComboBox>("m_type")->currentIndex(), -1);
}

void tst_zoHPCDisplayGUIIPanels::typedNameRenamesTilesAndViewports()
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

void tst_zoHPCDisplayGUIIPanels::numberTypedDigitByDigitIsKept()
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

void tst_zoHPCDisplayGUIIPanels::pointAndCommaAreDecimalMarks_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("typed");

    QTest::newRow("german") << QLocale(QLocale::German, QLocale::Germany) << "63.5";
    QTest::newRow("english") << QLocale(QLocale::English, QLocale::UnitedStates) << "63,5";
}

void tst_zoHPCDisplayGUIIPanels::pointAndCommaAreDecimalMarks()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, typed);
    load(SMALL_SETUP);
    m_editor->open({});
    m_editor->setLocale(locale);
    const auto type = [&](const char* name) {
        auto* const number = field<QAbstractSpinBox>(name);
        number->selectAll();
        QTest::keyClicks(number, typed);
    };

    projectionTree()->setCurrentItem(projection(0));
    type("m_distance");
    type("m_rightOffsetX");
    displayTree()->setCurrentItem(display(0));
    type("m_eyeSeparation");

    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Distance), 63.5);
    QCOMPARE(projection(0)->getInt(zoHPCProjectionItem::RightOffsetX), 63);
    QCOMPARE(display(0)->getEyeSeparation(), 63.5);
}

void tst_zoHPCDisplayGUIIPanels::wheelChangesNothingThatLacksTheFocus()
{
    load(SMALL_SETUP);
    m_editor->open({text("a"), text("b")});
    projectionTree()->setFocus();
    const QString before = saved();
    const auto turnAll = [this] {
        const QWidget* const panel = field<QStackedWidget>("m_panels")->currentWidget();
        QList<QWidget*> fields;
        for (QAbstractSpinBox* number : panel->findChildren<QAbstractSpinBox*>())
            fields << number;
        for (QComboBox* choice : panel->findChildren<QComboBox*>())
            fields << choice;
        for (QWidget* one : qAsConst(fields)) {
            QCOMPARE(one->focusPolicy(), Qt::StrongFocus);
            QWheelEvent event(QPointF(1, 1), one->mapToGlobal(QPoint(1, 1)), QPoint(), QPoint(0, -120),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(one, &event);
        }
    };

    projectionTree()->setCurrentItem(projection(0));
    turnAll();
    QTreeWidgetItem* const rows[] = {display(0), display(0)->child(0), display(0)->child(0)->child(0)};
    for (QTreeWidgetItem* row : rows) {
        displayTree()->setCurrentItem(row);
        turnAll();
    }

    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIPanels::chosenTypeOfALoadedProjectionStartsWithItsDefaults()
{
    load("<cluster version='1'><projection name='A' type='wall' rows='2' columns='1' "
         "distance='2500'/></cluster>");
    projectionTree()->setCurrentItem(projection(0));
    auto* type = field<QComboBox>("m_type");

    type->setCurrentIndex(type->findData(text("powerwall")));
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Width), 3000.0);
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Height), 2000.0);
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Distance), 2500.0);
    QCOMPARE(field<QDoubleSpinBox>("m_areaWidth")->value(), 3000.0);
    const auto* plane = static_cast<zoHPCProjectionItem*>(projection(0)->child(0));
    QCOMPARE(plane->getDouble(zoHPCProjectionItem::X2), 1500.0);

    type->setCurrentIndex(type->findData(text("cave")));
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::CaveDepth), 2000.0);
    // Only a person gives a cave its walls.
    QVERIFY(!projection(0)->data(zoHPCProjectionItem::LeftWall, Qt::EditRole).isValid());

    type->setCurrentIndex(type->findData(text("plane")));
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::X1), -1.0);
    QCOMPARE(projection(0)->getDouble(zoHPCProjectionItem::Y3), 1.0);
}

void tst_zoHPCDisplayGUIIPanels::choosingATypeKeepsWhatWasSet()
{
    load("<cluster version='1'><projection name='A' type='wall' rows='1' columns='1' "
         "distance='0'/></cluster>");
    projectionTree()->setCurrentItem(projection(0));
    // Choosing the row alone sets nothing.
    QVERIFY(!projection(0)->data(zoHPCProjectionItem::OverlapX, Qt::EditRole).isValid());
    auto* type = field<QComboBox>("m_type");

    type->setCurrentIndex(type->findData(text("powerwall")));

    QCOMPARE(projection(0)->getString(zoHPCProjectionItem::Distance), text("0"));
}

void tst_zoHPCDisplayGUIIPanels::fractionOfAnOverlapIsDroppedBeforeAndAfterCancel()
{
    load("<cluster version='1'><projection name='A' type='wall' rows='1' columns='2'/></cluster>");
    projectionTree()->setCurrentItem(projection(0));
    field<QDoubleSpinBox>("m_overlapX")->setValue(12.6);
    const QString before = saved();
    const auto overlapOfATile = [this] {
        return static_cast<zoHPCProjectionItem*>(projection(0)->child(0))
            ->getString(zoHPCProjectionItem::OverlapX);
    };
    QCOMPARE(overlapOfATile(), text("12"));

    m_editor->open({});
    m_editor->reject();

    QCOMPARE(overlapOfATile(), text("12"));
    QCOMPARE(saved(), before);
}

void tst_zoHPCDisplayGUIIPanels::tilesAreReadOnly()
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

void tst_zoHPCDisplayGUIIPanels::edgesShowWithBlendingOnly()
{
    load(SMALL_SETUP);
    projectionTree()->setCurrentItem(projection(1));
    QVERIFY(!isShown(field("m_edgesGroup")));

    field<QCheckBox>("m_edgeBlending")->click();

    QVERIFY(isShown(field("m_edgesGroup")));
    QCOMPARE(projection(1)->getBool(zoHPCProjectionItem::EdgeBlending), true);
}

void tst_zoHPCDisplayGUIIPanels::rectangleIsEditableWhenCustomOnly()
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

void tst_zoHPCDisplayGUIIPanels::rectangleIsShownInPixels()
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

void tst_zoHPCDisplayGUIIPanels::geometryIsHiddenOfFullScreenWindows()
{
    load(SMALL_SETUP);

    displayTree()->setCurrentItem(display(0)->child(0));
    QVERIFY(!isShown(field("m_geometryGroup")));
    field<QCheckBox>("m_fullScreen")->click();

    QVERIFY(isShown(field("m_geometryGroup")));
    QCOMPARE(static_cast<zoHPCWindowItem*>(display(0)->child(0))->getBool(zoHPCWindowItem::FullScreen),
             false);
}

void tst_zoHPCDisplayGUIIPanels::cornersInPixelsAreShownAsTheyAre()
{
    load("<cluster version='1'><display><window width='1280' height='1024' fullscreen='false'>"
         "<viewport position='custom' x1='640' y1='0.5' x2='1280' y2='1024'/></window></display></cluster>");
    auto* const window = static_cast<zoHPCWindowItem*>(display(0)->child(0));

    displayTree()->setCurrentItem(window->child(0));
    QCOMPARE(field<QLabel>("m_lowerLeftPixel")->text(), text("640, 1"));
    QCOMPARE(field<QLabel>("m_viewportX2Label")->text(), text("Upper right")); // no fraction
    QCOMPARE(field<QLabel>("m_upperRightPixel")->text(), text("1280, 1024"));

    // They do not depend on how large the window is.
    displayTree()->setCurrentItem(nullptr);
    window->setBool(zoHPCWindowItem::FullScreen, true);
    displayTree()->setCurrentItem(window->child(0));
    QVERIFY(isShown(field("m_upperRightPixel")));
    QCOMPARE(field<QLabel>("m_upperRightPixel")->text(), text("1280, 1024"));

    field<QComboBox>("m_position")->setCurrentIndex(0);
    QCOMPARE(field<QLabel>("m_viewportX2Label")->text(), text("Upper right (fraction)"));
}

void tst_zoHPCDisplayGUIIPanels::eyesAreNamed_data()
{
    QTest::addColumn<QString>("shown");

    for (const zoHPCDisplayTables::StereoMode& row : zoHPCDisplayTables::Eyes) {
        const QString value = text(row.value);
        const bool one = value == text("left") || value == text("right");
        QTest::newRow(row.value) << (one                     ? QString()
                                     : value == text("mono") ? text("m_mono")
                                                             : text("m_both"));
    }
}

void tst_zoHPCDisplayGUIIPanels::eyesAreNamed()
{
    QFETCH(QString, shown);
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    auto* eye = field<QComboBox>("m_eye");

    eye->setCurrentIndex(eye->findData(text(QTest::currentDataTag())));

    // Both words stand there all the time, as buttons: before, the one that did not apply was nowhere to be found.
    for (const char* name : {"m_mono", "m_both"})
        QCOMPARE(field<QRadioButton>(name)->isChecked(), text(name) == shown);
    QCOMPARE(m_editor->getViewportItems().first()->getString(zoHPCViewportItem::Eye),
             text(QTest::currentDataTag()));
}

void tst_zoHPCDisplayGUIIPanels::namedEyesAreChosen()
{
    load(SMALL_SETUP);
    displayTree()->setCurrentItem(display(0)->child(0)->child(0));
    const auto* viewport = m_editor->getViewportItems().first();
    auto* eye = field<QComboBox>("m_eye");
    eye->setCurrentIndex(eye->findData(text("left")));

    field<QRadioButton>("m_both")->click();
    QCOMPARE(viewport->getString(zoHPCViewportItem::Eye), text("stereo"));
    QCOMPARE(eye->currentText(), text("Double Buffered"));
    field<QRadioButton>("m_mono")->click();
    QCOMPARE(viewport->getString(zoHPCViewportItem::Eye), text("mono"));
    QVERIFY(!field<QRadioButton>("m_both")->isChecked());

    eye->setCurrentIndex(eye->findData(text("redcyan")));
    field<QRadioButton>("m_both")->click(); // the way that was chosen stays
    QCOMPARE(viewport->getString(zoHPCViewportItem::Eye), text("redcyan"));
}

void tst_zoHPCDisplayGUIIPanels::nodeChoicesAreToldApart()
{
    m_editor->setNodeNames({text("a"), text("b"), text("a"), text("%1"), text("a"), text("%1")});

    const auto* nodes = field<QComboBox>("m_renderNode");
    QStringList shown;
    for (int i = 0; i < nodes->count(); ++i)
        shown << nodes->itemText(i);
    QCOMPARE(shown,
             (QStringList{text("a 1"), text("b"), text("a 2"), text("%1 1"), text("a 3"), text("%1 2")}));
}

void tst_zoHPCDisplayGUIIPanels::newNodeChoicesKeepTheWindowsNode()
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

void tst_zoHPCDisplayGUIIPanels::clickedSurfaceIsAssigned()
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

void tst_zoHPCDisplayGUIIPanels::shownSurfacesLeaveNoSelectionBehind()
{
    load(SMALL_SETUP);
    auto* planes = field<QTreeView>("m_planeView");
    const auto lookAtAViewportAndAway = [this] {
        displayTree()->setCurrentItem(display(0)->child(0)->child(0));
        displayTree()->setCurrentItem(display(0));
    };
    lookAtAViewportAndAway();
    const int before = planes->findChildren<QItemSelectionModel*>().size();

    for (int i = 0; i < 5; ++i)
        lookAtAViewportAndAway();

    QCOMPARE(planes->findChildren<QItemSelectionModel*>().size(), before);
}

void tst_zoHPCDisplayGUIIPanels::assignedSurfaceIsHighlighted()
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

void tst_zoHPCDisplayGUIIPanels::cameraChoicesFollowTheHost()
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

void tst_zoHPCDisplayGUIIPanels::cameraThatIsGoneStays()
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

void tst_zoHPCDisplayGUIIPanels::cameraStaysAsItIsTyped()
{
    Cameras cameras;
    cameras.names = QStringList{text("Cam1")};
    m_editor = std::make_unique<zoHPCDisplayGUII>();
    load(SMALL_SETUP);
    m_editor->open({});
    QApplication::setActiveWindow(m_editor.get());
    displayTree()->setCurrentItem(display(0));
    auto* camera = field<QComboBox>("m_camera");
    camera->setFocus();
    QTRY_VERIFY(camera->hasFocus());
    camera->lineEdit()->selectAll();

    QTest::keyClicks(camera->lineEdit(), text("cam"));
    QCOMPARE(display(0)->getCameraName(), text("cam"));
    QTest::keyClicks(camera->lineEdit(), text("1"));
    QTest::keyClick(camera->lineEdit(), Qt::Key_Return);
    field("m_user")->setFocus();

    QCOMPARE(camera->currentText(), text("cam1"));
    QCOMPARE(display(0)->getCameraName(), text("cam1"));
    m_editor.reset();
}

void tst_zoHPCDisplayGUIIPanels::displayShowsItsCamera()
{
    load("<cluster version='1'><display camera='A'/><display camera='%1'/><display/></cluster>");

    QStringList shown;
    for (int i = 0; i < 3; ++i) {
        displayTree()->setCurrentItem(display(i));
        shown << field<QComboBox>("m_camera")->currentText();
    }

    QCOMPARE(shown, (QStringList{text("A"), text("%1"), QString()}));
}

void tst_zoHPCDisplayGUIIPanels::namedFieldGetsTheFocusWithF2()
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

void tst_zoHPCDisplayGUIIPanels::noFieldIsCutOff()
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

void tst_zoHPCDisplayGUIIPanels::fitsASmallScreen()
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

void tst_zoHPCDisplayGUIIPanels::tabKeyVisitsThePartsInTheirOrder()
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
                                   text("m_outputFilter"),
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
                                   text("m_frontButton"),
                                   text("m_topButton"),
                                   text("m_dimensions"),
                                   text("m_frames"),
                                   text("m_fitButton"),
                                   text("m_savePictureButton"),
                                   text("m_problemList"),
                                   text("OK"),
                                   text("Cancel"),
                                   text("Apply"),
                                   text("m_projectionFilter")}));
}

void tst_zoHPCDisplayGUIIPanels::everyNumberHasANameToBeRead()
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

void tst_zoHPCDisplayGUIIPanels::fieldsShowUsualNumbersWhole()
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

ZO_TEST_MAIN(tst_zoHPCDisplayGUIIPanels)
#include "tst_zoHPCDisplayGUIIPanels.moc"
