#include "zoTestCase.h"

#include <zoHPCProjectionItem.h>

#include <QApplication>
#include <QDomDocument>
#include <QSignalSpy>
#include <QUuid>

#include <cmath>
#include <limits>
#include <memory>

using Item = zoHPCProjectionItem;
Q_DECLARE_METATYPE(Point3)

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QVector<double> corners(const Item* plane)
{
    QVector<double> values;
    for (int col = Item::X1; col <= Item::Z3; ++col)
        values << plane->getDouble(col);
    return values;
}

QStringList childNames(const Item& item)
{
    QStringList names;
    for (const Item* child : item.children<Item>())
        names << child->getString(Item::Name);
    return names;
}

std::unique_ptr<Item> loaded(const QString& xml)
{
    QDomDocument document;
    QString message;
    if (!document.setContent(xml, &message))
        qFatal("%s", qPrintable(message));
    auto item = std::make_unique<Item>(QString(), text("wall"));
    item->fromXML(document.documentElement());
    return item;
}

QSet<QString> attributeNames(const QDomElement& element)
{
    QSet<QString> names;
    for (int i = 0; i < element.attributes().count(); ++i)
        names.insert(element.attributes().item(i).nodeName());
    return names;
}

QSet<int> keys(const Item::ColumnMap& map)
{
    QSet<int> result;
    for (const auto& column : map)
        result.insert(column.first);
    return result;
}
} // namespace

// Projections and the planes and tiles that follow from them.
class tst_zoHPCProjectionItem final : public zoTestCase
{
    Q_OBJECT

private slots:
    void newProjectionHasDefaults_data();
    void newProjectionHasDefaults();
    void newProjectionLeavesTheRestUnset();
    void newProjectionHasItsOwnIdentifier();
    void columnHasItsAttribute_data();
    void columnHasItsAttribute();
    void typeDecidesWhatIsSaved_data();
    void typeDecidesWhatIsSaved();
    void unknownTypeSavesTheUnion();
    void iconFollowsType();
    void powerWallKeepsItsIcon();
    void setTypeWaitsForUpdate();

    void defaultPowerWallIsOnePlane();
    void powerWallIsCentredAtItsDistance();
    void splitPowerWallOverlapsItsTiles();
    void verticalEdgesBlendTheOtherWayRound();
    void withoutBlendingAllEdgesAreZero();
    void fractionOfAnOverlapIsDropped_data();
    void fractionOfAnOverlapIsDropped();
    void planesTakeWholeOverlapsOnly();
    void planesBearNameAndIdentifierOfTheWall();
    void noRowsGiveNoPlanes_data();
    void noRowsGiveNoPlanes();
    void updateReplacesChildren();
    void generatedRowsAreDisplayItems_data();
    void generatedRowsAreDisplayItems();

    void wallHasATilePerRowAndColumn();
    void wallTilesTakeTheParameters();
    void wallTileNameIsNotTrimmed();
    void wallOfTextsReadsThemAsNumbers();
    void noRowsGiveNoTiles_data();
    void noRowsGiveNoTiles();

    void caveWithoutWallsIsEmpty();
    void caveWithAllWallsHasSixPlanesInOrder();
    void caveWallHasItsCorners_data();
    void caveWallHasItsCorners();
    void splitCaveWallIsLabelledByRowAndColumn();

    void planeAndTileGenerateNothing_data();
    void planeAndTileGenerateNothing();
    void labelOfPlane_data();
    void labelOfPlane();
    void placeholdersInNamesStay();
    void degeneratePlaneCollapses();
    void unitVectorLimitIsSinglePrecision_data();
    void unitVectorLimitIsSinglePrecision();
    void skewedPlaneKeepsItsDirections();

    void savedWallHoldsItsTiles();
    void storedChildrenNeverSurvive();
    void missingParametersAreUnset();
    void otherTypesParametersAreReadButNotSaved();
    void roundTripKeepsParameters_data();
    void roundTripKeepsParameters();
    void nestedElementsNeitherOverflowNorExplode();
    void tooManyTilesAreRefused_data();
    void tooManyTilesAreRefused();
    void asManyTilesAsMayBeAreLaidOut_data();
    void asManyTilesAsMayBeAreLaidOut();

    void tilesRepeatOnlySoMuchOfTheName_data();
    void tilesRepeatOnlySoMuchOfTheName();

    void cloneIsEqualButForIdentifiers();
    void cloneRenewsIdentifierOfSource();
    void cloneLosesParametersOfOtherTypes();
    void shownWallIsRegeneratedInOneStep();
    void updateAnnouncesNoIconThatStays_data();
    void updateAnnouncesNoIconThatStays();
};

void tst_zoHPCProjectionItem::newProjectionHasDefaults_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("name") << 0 << QVariant(text("n"));
    QTest::newRow("type") << 2 << QVariant(text("plane"));
    QTest::newRow("rightoffsetx") << 3 << QVariant(0);
    QTest::newRow("rightoffsety") << 4 << QVariant(0);
    QTest::newRow("row") << 5 << QVariant(1);
    QTest::newRow("column") << 6 << QVariant(1);
    QTest::newRow("rows") << 7 << QVariant(1);
    QTest::newRow("columns") << 8 << QVariant(1);
    QTest::newRow("overlapx") << 9 << QVariant(0.0);
    QTest::newRow("overlapy") << 10 << QVariant(0.0);
    QTest::newRow("cavewidth") << 11 << QVariant(2000.0);
    QTest::newRow("caveheight") << 12 << QVariant(2000.0);
    QTest::newRow("cavedepth") << 13 << QVariant(2000.0);
    QTest::newRow("cavex") << 14 << QVariant(0.0);
    QTest::newRow("cavey") << 15 << QVariant(0.0);
    QTest::newRow("cavez") << 16 << QVariant(0.0);
    QTest::newRow("width") << 23 << QVariant(3000.0);
    QTest::newRow("height") << 24 << QVariant(2000.0);
    QTest::newRow("distance") << 25 << QVariant(1500.0);
    QTest::newRow("x1") << 26 << QVariant(-1.0);
    QTest::newRow("y1") << 27 << QVariant(-1.0);
    QTest::newRow("z1") << 28 << QVariant(-1.0);
    QTest::newRow("x2") << 29 << QVariant(1.0);
    QTest::newRow("y2") << 30 << QVariant(-1.0);
    QTest::newRow("z2") << 31 << QVariant(-1.0);
    QTest::newRow("x3") << 32 << QVariant(1.0);
    QTest::newRow("y3") << 33 << QVariant(1.0);
    QTest::newRow("z3") << 34 << QVariant(-1.0);
}

void tst_zoHPCProjectionItem::newProjectionHasDefaults()
{
    QFETCH(int, col);
    QFETCH(QVariant, value);

    const Item item(text("n"), text("plane"));

    QCOMPARE(int(item.data(col, Qt::EditRole).type()), int(value.type()));
    QCOMPARE(item.data(col, Qt::EditRole), value);
}

void tst_zoHPCProjectionItem::newProjectionLeavesTheRestUnset()
{
    const Item item(text("n"), text("plane"));

    for (const int col : {17, 18, 19, 20, 21, 22, 35, 36, 37, 38, 39})
        QVERIFY2(!item.data(col, Qt::EditRole).isValid(), qPrintable(QString::number(col)));
}

void tst_zoHPCProjectionItem::newProjectionHasItsOwnIdentifier()
{
    const Item first(text("n"), text("plane"));
    const Item second(text("n"), text("plane"));

    const QString identifier = first.getString(Item::Identifier);
    QVERIFY(!QUuid(identifier).isNull());
    QVERIFY(identifier.startsWith(QLatin1Char('{')));
    QVERIFY(identifier != second.getString(Item::Identifier));
}

void tst_zoHPCProjectionItem::columnHasItsAttribute_data()
{
    QTest::addColumn<int>("col");

    const char* const names[] = {
        "name",         nullptr,    "type",      "rightoffsetx", "rightoffsety", "row",        "column",
        "rows",         "columns",  "overlapx",  "overlapy",     "cavewidth",    "caveheight", "cavedepth",
        "cavex",        "cavey",    "cavez",     "left",         "right",        "top",        "bottom",
        "front",        "back",     "width",     "height",       "distance",     "x1",         "y1",
        "z1",           "x2",       "y2",        "z2",           "x3",           "y3",         "z3",
        "edgeblending", "leftedge", "rightedge", "topedge",      "bottomedge"};
    for (int col = 0; col < 40; ++col) {
        if (names[col])
            QTest::newRow(names[col]) << col;
    }
}

void tst_zoHPCProjectionItem::columnHasItsAttribute()
{
    QFETCH(int, col);

    QCOMPARE(Item::columns(QString()).at(col), text(QTest::currentDataTag()));
}

void tst_zoHPCProjectionItem::typeDecidesWhatIsSaved_data()
{
    QTest::addColumn<QSet<int>>("columns");

    QTest::newRow("cave") << QSet<int>{0, 2, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 35};
    QTest::newRow("wall") << QSet<int>{0, 2, 3, 4, 7, 8, 9, 10, 25, 35};
    QTest::newRow("powerwall") << QSet<int>{0, 2, 3, 4, 7, 8, 9, 10, 23, 24, 25, 35};
    QTest::newRow("plane") << QSet<int>{0, 2, 7, 8, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39};
    QTest::newRow("tile") << QSet<int>{0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 25, 35};
}

void tst_zoHPCProjectionItem::typeDecidesWhatIsSaved()
{
    QFETCH(QSet<int>, columns);
    Item item(text("n"), text(QTest::currentDataTag()));
    for (int col = 17; col < 40; ++col)
        item.setInt(col, 1);
    item.clearChildren();

    QCOMPARE(keys(item.getColumns()), columns);
    QSet<QString> names;
    for (const int col : columns)
        names.insert(Item::columns(QString()).at(col));
    QDomDocument document;
    QCOMPARE(attributeNames(item.toXML(document, text("projection"))), names);
}

void tst_zoHPCProjectionItem::unknownTypeSavesTheUnion()
{
    QSet<int> all;
    for (int col = 0; col < 40; ++col) {
        if (col != 1)
            all.insert(col);
    }

    for (const char* type : {"", "dome", "Wall"})
        QCOMPARE(keys(Item(text("n"), text(type)).getColumns()), all);
}

void tst_zoHPCProjectionItem::iconFollowsType()
{
    Item item(text("n"), text("powerwall"));

    // By key: two icons of one artwork share it.
    for (const char* type : {"wall", "cave", "plane", "tile"}) {
        item.setProjectionType(text(type));
        item.changeIcon();
        const Item other(text("n"), text(type));
        QCOMPARE(item.icon(0).cacheKey(), other.icon(0).cacheKey());
    }
}

void tst_zoHPCProjectionItem::powerWallKeepsItsIcon()
{
    Item item(text("n"), text("cave"));
    const qint64 caveIcon = item.icon(0).cacheKey();

    for (const char* type : {"powerwall", "dome"}) {
        item.setProjectionType(text(type));
        item.changeIcon();
        QCOMPARE(item.icon(0).cacheKey(), caveIcon);
    }
    QCOMPARE(Item(text("n"), text("powerwall")).icon(0).cacheKey(),
             Item(text("n"), text("plane")).icon(0).cacheKey());
}

void tst_zoHPCProjectionItem::setTypeWaitsForUpdate()
{
    Item item(text("n"), text("wall"));

    item.setProjectionType(text("plane"));
    QCOMPARE(item.projectionType(), text("plane"));
    QCOMPARE(item.childCount(), 1);

    item.update();
    QCOMPARE(item.childCount(), 0);
}

void tst_zoHPCProjectionItem::defaultPowerWallIsOnePlane()
{
    const Item item(text("Wall"), text("powerwall"));

    QCOMPARE(childNames(item), QStringList{text("Wall row:1 col:1")});
    const Item* plane = item.children<Item>().first();
    QCOMPARE(plane->projectionType(), text("plane"));
    QCOMPARE(corners(plane), (QVector<double>{-1500, -1000, -1500, 1500, -1000, -1500, 1500, 1000, -1500}));
}

void tst_zoHPCProjectionItem::powerWallIsCentredAtItsDistance()
{
    Item item(text("w"), text("powerwall"));
    item.setDouble(Item::Width, 400.0);
    item.setDouble(Item::Height, 100.0);
    item.setDouble(Item::Distance, 70.0);

    item.update();

    QCOMPARE(corners(item.children<Item>().first()),
             (QVector<double>{-200, -50, -70, 200, -50, -70, 200, 50, -70}));
}

void tst_zoHPCProjectionItem::splitPowerWallOverlapsItsTiles()
{
    Item item(text("w"), text("powerwall"));
    item.setInt(Item::Rows, 2);
    item.setInt(Item::Columns, 2);
    item.setDouble(Item::OverlapX, 100.0);
    item.setBool(Item::EdgeBlending, true);

    item.update();

    const QList<Item*> planes = item.children<Item>();
    QCOMPARE(planes.size(), 4);
    for (const Item* plane : planes) {
        QCOMPARE(plane->getDouble(Item::X2) - plane->getDouble(Item::X1), 1550.0);
        QCOMPARE(plane->getDouble(Item::Y3) - plane->getDouble(Item::Y2), 1000.0);
        QCOMPARE(plane->getBool(Item::EdgeBlending), true);
    }
    QCOMPARE(planes.at(1)->getDouble(Item::X1) - planes.at(0)->getDouble(Item::X1), 1450.0);
    // Row 1 is the top row.
    QCOMPARE(planes.at(0)->getDouble(Item::Y3), 1000.0);
    QCOMPARE(planes.at(2)->getDouble(Item::Y3), 0.0);
    for (const int left : {0, 2}) {
        QCOMPARE(planes.at(left)->getDouble(Item::LeftEdge), 0.0);
        QCOMPARE(planes.at(left)->getDouble(Item::RightEdge), 100.0 / 1550.0);
        QCOMPARE(planes.at(left + 1)->getDouble(Item::LeftEdge), 100.0 / 1550.0);
        QCOMPARE(planes.at(left + 1)->getDouble(Item::RightEdge), 0.0);
    }
}

void tst_zoHPCProjectionItem::verticalEdgesBlendTheOtherWayRound()
{
    Item item(text("w"), text("powerwall"));
    item.setInt(Item::Rows, 3);
    item.setDouble(Item::OverlapY, 50.0);
    item.setBool(Item::EdgeBlending, true);

    item.update();

    const double blend = 50.0 / 700.0; // tiles of (2000 + 2 * 50) / 3
    const QList<Item*> planes = item.children<Item>();
    QCOMPARE(planes.size(), 3);
    const double top[] = {blend, blend, 0.0};
    const double bottom[] = {0.0, blend, blend};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(planes.at(i)->getDouble(Item::TopEdge), top[i]);
        QCOMPARE(planes.at(i)->getDouble(Item::BottomEdge), bottom[i]);
    }
}

void tst_zoHPCProjectionItem::withoutBlendingAllEdgesAreZero()
{
    Item item(text("w"), text("powerwall"));
    item.setInt(Item::Rows, 2);
    item.setInt(Item::Columns, 2);
    item.setDouble(Item::OverlapX, 100.0);
    item.setDouble(Item::OverlapY, 100.0);

    item.update();

    for (const Item* plane : item.children<Item>()) {
        QCOMPARE(plane->data(Item::EdgeBlending, Qt::EditRole), QVariant(false));
        for (int edge = Item::LeftEdge; edge <= Item::BottomEdge; ++edge)
            QCOMPARE(plane->data(edge, Qt::EditRole), QVariant(0.0));
    }
}

void tst_zoHPCProjectionItem::fractionOfAnOverlapIsDropped_data()
{
    QTest::addColumn<QVariant>("overlap");
    QTest::addColumn<int>("whole");

    QTest::newRow("number") << QVariant(12.6) << 12;
    QTest::newRow("text") << QVariant(text("12.6")) << 12;
    QTest::newRow("half") << QVariant(2.5) << 2;
    QTest::newRow("negative") << QVariant(-12.6) << -12;
    QTest::newRow("negative-text") << QVariant(text("-12.6")) << -12;
    QTest::newRow("exponent") << QVariant(text("1.26e1")) << 12;
    QTest::newRow("word") << QVariant(text("wide")) << 0;
    QTest::newRow("unset") << QVariant() << 0;
    QTest::newRow("nan") << QVariant(text("nan")) << 0;
    QTest::newRow("far") << QVariant(1e300) << std::numeric_limits<int>::max();
    QTest::newRow("far-negative") << QVariant(-1e300) << -std::numeric_limits<int>::max();
}

void tst_zoHPCProjectionItem::fractionOfAnOverlapIsDropped()
{
    QFETCH(QVariant, overlap);
    QFETCH(int, whole);

    for (const char* type : {"wall", "powerwall"}) {
        Item item(text("w"), text(type));
        item.setData(Item::OverlapX, Qt::EditRole, overlap);
        item.setData(Item::OverlapY, Qt::EditRole, overlap);

        item.update();

        const Item* const child = item.children<Item>().first();
        QCOMPARE(child->data(Item::OverlapX, Qt::EditRole), QVariant(whole));
        QCOMPARE(child->data(Item::OverlapY, Qt::EditRole), QVariant(whole));
    }
}

void tst_zoHPCProjectionItem::planesTakeWholeOverlapsOnly()
{
    Item item(text("w"), text("powerwall"));
    item.setInt(Item::Columns, 2);
    item.setDouble(Item::OverlapX, 100.25);
    item.setDouble(Item::OverlapY, 3.25);

    item.update();

    for (const Item* plane : item.children<Item>()) {
        QCOMPARE(plane->getDouble(Item::OverlapX), 100.0);
        QCOMPARE(plane->getDouble(Item::OverlapY), 3.0);
    }
    // The geometry has the whole of it.
    QCOMPARE(item.children<Item>().first()->getDouble(Item::X2), -1500.0 + 1550.125);
}

void tst_zoHPCProjectionItem::planesBearNameAndIdentifierOfTheWall()
{
    Item item(text("Front wall"), text("powerwall"));
    item.setInt(Item::Rows, 2);
    item.setInt(Item::Columns, 2);

    item.update();

    QCOMPARE(childNames(item), (QStringList{text("Front wall row:1 col:1"), text("Front wall row:1 col:2"),
                                            text("Front wall row:2 col:1"), text("Front wall row:2 col:2")}));
    const QString identifier = item.getString(Item::Identifier);
    QCOMPARE(item.children<Item>().at(1)->getString(Item::Identifier), identifier + text("/row:1 col:2"));
    QCOMPARE(item.children<Item>().at(2)->getString(Item::Identifier), identifier + text("/row:2 col:1"));
}

void tst_zoHPCProjectionItem::noRowsGiveNoPlanes_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");

    QTest::newRow("no-rows") << 0 << 1;
    QTest::newRow("no-columns") << 1 << 0;
    QTest::newRow("negative-rows") << -1 << 1;
    QTest::newRow("both-negative") << -3 << -3;
}

void tst_zoHPCProjectionItem::noRowsGiveNoPlanes()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    Item item(text("w"), text("powerwall"));
    item.setInt(Item::Rows, rows);
    item.setInt(Item::Columns, columns);

    item.update();

    QCOMPARE(item.childCount(), 0);
}

void tst_zoHPCProjectionItem::updateReplacesChildren()
{
    Item item(text("w"), text("powerwall"));
    item.addChild(new Item(text("stray"), text("plane")));

    item.update();
    item.update();

    QCOMPARE(childNames(item), QStringList{text("w row:1 col:1")});
}

void tst_zoHPCProjectionItem::generatedRowsAreDisplayItems_data()
{
    QTest::addColumn<QString>("type");

    QTest::newRow("plane-of-powerwall") << text("powerwall");
    QTest::newRow("tile-of-wall") << text("wall");
    QTest::newRow("wall-of-cave") << text("cave");
}

void tst_zoHPCProjectionItem::generatedRowsAreDisplayItems()
{
    QFETCH(QString, type);
    Item item(text("W"), type);
    item.setBool(Item::FrontWall, true);

    item.update();

    QCOMPARE(item.childCount(), 1);
    QCOMPARE(item.child(0)->type(), int(QTreeWidgetItem::UserType));
    QCOMPARE(item.child(0)->flags(), item.flags());
}

void tst_zoHPCProjectionItem::wallHasATilePerRowAndColumn()
{
    Item item(text("W"), text("wall"));
    item.setInt(Item::Rows, 2);
    item.setInt(Item::Columns, 3);

    item.update();

    QCOMPARE(childNames(item),
             (QStringList{text("W row:1 col:1"), text("W row:1 col:2"), text("W row:1 col:3"),
                          text("W row:2 col:1"), text("W row:2 col:2"), text("W row:2 col:3")}));
    const QList<Item*> tiles = item.children<Item>();
    for (int i = 0; i < tiles.size(); ++i) {
        QCOMPARE(tiles.at(i)->projectionType(), text("tile"));
        QCOMPARE(tiles.at(i)->getInt(Item::Row), i / 3 + 1);
        QCOMPARE(tiles.at(i)->getInt(Item::TileColumn), i % 3 + 1);
        QCOMPARE(tiles.at(i)->childCount(), 0);
    }
    QCOMPARE(tiles.at(5)->getString(Item::Identifier),
             item.getString(Item::Identifier) + text("/row:2 col:3"));
}

void tst_zoHPCProjectionItem::wallTilesTakeTheParameters()
{
    Item item(text("W"), text("wall"));
    item.setInt(Item::Rows, 1);
    item.setInt(Item::Columns, 2);
    item.setDouble(Item::OverlapX, 12.25);
    item.setDouble(Item::OverlapY, 7.25);
    item.setInt(Item::RightOffsetX, 5);
    item.setInt(Item::RightOffsetY, -6);
    item.setBool(Item::EdgeBlending, true);
    item.setDouble(Item::Distance, 1234.5);

    item.update();

    for (const Item* tile : item.children<Item>()) {
        QCOMPARE(tile->getInt(Item::Rows), 1);
        QCOMPARE(tile->getInt(Item::Columns), 2);
        QCOMPARE(tile->getDouble(Item::OverlapX), 12.0);
        QCOMPARE(tile->getDouble(Item::OverlapY), 7.0);
        QCOMPARE(tile->getInt(Item::RightOffsetX), 5);
        QCOMPARE(tile->getInt(Item::RightOffsetY), -6);
        QCOMPARE(tile->data(Item::EdgeBlending, Qt::EditRole), QVariant(true));
        QCOMPARE(tile->getDouble(Item::Distance), 1234.5);
    }
}

void tst_zoHPCProjectionItem::wallTileNameIsNotTrimmed()
{
    const Item item(text(""), text("wall"));

    QCOMPARE(childNames(item), QStringList{text(" row:1 col:1")});
}

void tst_zoHPCProjectionItem::wallOfTextsReadsThemAsNumbers()
{
    const auto item =
        loaded(text("<projection name='W' type='wall' rows='2' columns='1' overlapx='3.7' overlapy='4' "
                    "edgeblending='true' distance='2.5'/>"));

    QCOMPARE(item->childCount(), 2);
    const Item* tile = item->children<Item>().first();
    // It was 0, while a number of the same value gave 4: a wall must be the same before and after a reload.
    QCOMPARE(tile->getInt(Item::OverlapX), 3);
    QCOMPARE(tile->getInt(Item::OverlapY), 4);
    QCOMPARE(tile->getBool(Item::EdgeBlending), true);
    QCOMPARE(tile->getDouble(Item::Distance), 2.5);
}

void tst_zoHPCProjectionItem::noRowsGiveNoTiles_data()
{
    noRowsGiveNoPlanes_data();
}

void tst_zoHPCProjectionItem::noRowsGiveNoTiles()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    Item item(text("w"), text("wall"));
    item.setInt(Item::Rows, rows);
    item.setInt(Item::Columns, columns);

    item.update();

    QCOMPARE(item.childCount(), 0);
}

void tst_zoHPCProjectionItem::caveWithoutWallsIsEmpty()
{
    const Item item(text("C"), text("cave"));

    QCOMPARE(item.childCount(), 0);
}

void tst_zoHPCProjectionItem::caveWithAllWallsHasSixPlanesInOrder()
{
    Item item(text("C"), text("cave"));
    for (int wall = Item::LeftWall; wall <= Item::BackWall; ++wall)
        item.setBool(wall, true);

    item.update();

    QCOMPARE(childNames(item), (QStringList{text("C Left"), text("C Right"), text("C Top"), text("C Bottom"),
                                            text("C Front"), text("C Back")}));
    QCOMPARE(item.children<Item>().first()->getString(Item::Identifier),
             item.getString(Item::Identifier) + text("/Left"));
}

void tst_zoHPCProjectionItem::caveWallHasItsCorners_data()
{
    QTest::addColumn<int>("wall");
    QTest::addColumn<QVector<double>>("expected");

    // Centre (10, 20, 30), size (200, 400, 600): min (-90, -180, -270), max (110, 220, 330).
    QTest::newRow("Left") << 17 << QVector<double>{-90, -180, 330, -90, -180, -270, -90, 220, -270};
    QTest::newRow("Right") << 18 << QVector<double>{110, -180, -270, 110, -180, 330, 110, 220, 330};
    QTest::newRow("Top") << 19 << QVector<double>{-90, 220, -270, 110, 220, -270, 110, 220, 330};
    QTest::newRow("Bottom") << 20 << QVector<double>{-90, -180, 330, 110, -180, 330, 110, -180, -270};
    QTest::newRow("Front") << 21 << QVector<double>{-90, -180, -270, 110, -180, -270, 110, 220, -270};
    QTest::newRow("Back") << 22 << QVector<double>{110, -180, 330, -90, -180, 330, -90, 220, 330};
}

void tst_zoHPCProjectionItem::caveWallHasItsCorners()
{
    QFETCH(int, wall);
    QFETCH(QVector<double>, expected);
    Item item(text("C"), text("cave"));
    item.setDouble(Item::CaveX, 10);
    item.setDouble(Item::CaveY, 20);
    item.setDouble(Item::CaveZ, 30);
    item.setDouble(Item::CaveWidth, 200);
    item.setDouble(Item::CaveHeight, 400);
    item.setDouble(Item::CaveDepth, 600);
    item.setBool(wall, true);

    item.update();

    QCOMPARE(childNames(item), QStringList{text("C ") + text(QTest::currentDataTag())});
    QCOMPARE(corners(item.children<Item>().first()), expected);
}

void tst_zoHPCProjectionItem::splitCaveWallIsLabelledByRowAndColumn()
{
    Item item(text("C"), text("cave"));
    item.setInt(Item::Rows, 2);
    item.setInt(Item::Columns, 3);
    item.setBool(Item::LeftWall, true);
    item.setBool(Item::BackWall, true);

    item.update();

    QCOMPARE(item.childCount(), 12);
    QCOMPARE(childNames(item).at(5), text("C Left row:2 col:3"));
    QCOMPARE(childNames(item).at(6), text("C Back row:1 col:1"));
}

void tst_zoHPCProjectionItem::planeAndTileGenerateNothing_data()
{
    QTest::addColumn<QString>("type");

    for (const char* type : {"plane", "tile", "", "dome", "WALL"})
        QTest::newRow(*type ? type : "empty") << text(type);
}

void tst_zoHPCProjectionItem::planeAndTileGenerateNothing()
{
    QFETCH(QString, type);
    Item item(text("p"), type);
    item.setInt(Item::Rows, 3);
    item.setInt(Item::Columns, 3);

    item.update();

    QCOMPARE(item.childCount(), 0);
}

void tst_zoHPCProjectionItem::labelOfPlane_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("name");

    QTest::newRow("single-keeps-name") << 1 << 1 << "Left"
                                       << "P Left";
    QTest::newRow("single-name-is-trimmed") << 1 << 1 << "  Left "
                                            << "P Left";
    QTest::newRow("nameless") << 1 << 1 << ""
                              << "P row:1 col:1";
    QTest::newRow("blank-is-a-name") << 1 << 1 << " "
                                     << "P";
    QTest::newRow("split") << 2 << 1 << " Left "
                           << "P Left row:1 col:1";
    QTest::newRow("split-columns") << 1 << 2 << "Left"
                                   << "P Left row:1 col:1";
}

void tst_zoHPCProjectionItem::labelOfPlane()
{
    QFETCH(int, rows);
    QFETCH(int, columns);
    QFETCH(QString, label);
    QFETCH(QString, name);
    Item item(text("P"), text("plane"));
    item.setInt(Item::Rows, rows);
    item.setInt(Item::Columns, columns);

    item.addPlane(label, {0, 0, 0}, {1, 0, 0}, {1, 1, 0});

    QCOMPARE(childNames(item).first(), name);
}

void tst_zoHPCProjectionItem::placeholdersInNamesStay()
{
    Item powerWall(text("100%1 %2 %3"), text("powerwall"));
    Item wall(text("%3 %1"), text("wall"));
    Item plane(text("p"), text("plane"));
    plane.setInt(Item::Rows, 2);
    plane.addPlane(text("%2 %1"), {0, 0, 0}, {1, 0, 0}, {1, 1, 0});

    QCOMPARE(childNames(powerWall), QStringList{text("100%1 %2 %3 row:1 col:1")});
    QCOMPARE(childNames(wall), QStringList{text("%3 %1 row:1 col:1")});
    QCOMPARE(childNames(plane).last(), text("p %2 %1 row:2 col:1"));
}

void tst_zoHPCProjectionItem::degeneratePlaneCollapses()
{
    Item item(text("p"), text("plane"));
    item.setInt(Item::Columns, 2);
    item.setInt(Item::Rows, 2);

    item.addPlane(text("d"), {5, 6, 7}, {5, 6, 7}, {5, 6, 7});

    QCOMPARE(item.childCount(), 4);
    for (const Item* plane : item.children<Item>())
        QCOMPARE(corners(plane), (QVector<double>{5, 6, 7, 5, 6, 7, 5, 6, 7}));
}

void tst_zoHPCProjectionItem::unitVectorLimitIsSinglePrecision_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("reach"); // of the lower right corner from the lower left one

    // Below the limit the vector is taken as it is, so the tile shrinks to the square of the width.
    QTest::newRow("tiny") << 1e-8 << 1e-16;
    QTest::newRow("just-below") << 9.9e-7 << 9.9e-7 * 9.9e-7;
    QTest::newRow("between-single-and-double") << 9.99999998e-7 << 9.99999998e-7;
    QTest::newRow("one-millionth") << 1e-6 << 1e-6;
}

void tst_zoHPCProjectionItem::unitVectorLimitIsSinglePrecision()
{
    QFETCH(double, width);
    QFETCH(double, reach);
    Item item(text("p"), text("plane"));

    item.addPlane(text("d"), {0, 0, 0}, {width, 0, 0}, {width, 1, 0});

    const Item* plane = item.children<Item>().first();
    QCOMPARE(plane->getDouble(Item::X2) - plane->getDouble(Item::X1), reach);
}

void tst_zoHPCProjectionItem::skewedPlaneKeepsItsDirections()
{
    Item item(text("p"), text("plane"));
    item.setInt(Item::Columns, 2);

    // 30 wide along x, 50 high along (0, 4, 3) / 5.
    item.addPlane(text("s"), {0, 0, 0}, {30, 0, 0}, {30, 40, 30});

    const QList<Item*> planes = item.children<Item>();
    QCOMPARE(corners(planes.at(0)), (QVector<double>{0, 0, 0, 15, 0, 0, 15, 40, 30}));
    QCOMPARE(corners(planes.at(1)), (QVector<double>{15, 0, 0, 30, 0, 0, 30, 40, 30}));
}

void tst_zoHPCProjectionItem::savedWallHoldsItsTiles()
{
    Item item(text("W"), text("wall"));
    item.setInt(Item::Columns, 2);
    item.update();
    QDomDocument document;

    const QDomElement element = item.toXML(document, text("projection"));

    QCOMPARE(element.childNodes().count(), 2);
    const QDomElement second = element.lastChildElement();
    QCOMPARE(second.tagName(), text("projection"));
    QCOMPARE(second.attribute(text("name")), text("W row:1 col:2"));
    QCOMPARE(second.attribute(text("type")), text("tile"));
    QCOMPARE(second.attribute(text("column")), text("2"));
    QVERIFY(!second.hasAttribute(text("x1")));
}

void tst_zoHPCProjectionItem::storedChildrenNeverSurvive()
{
    const auto wall =
        loaded(text("<projection name='W' type='wall' rows='1' columns='2'>"
                    "<projection name='stored' type='tile'><projection name='deeper' type='tile'/>"
                    "</projection><group><projection name='other' type='plane'/></group></projection>"));
    const auto plane =
        loaded(text("<projection name='P' type='plane'><projection name='stored' type='plane'/>"
                    "</projection>"));

    QCOMPARE(childNames(*wall), (QStringList{text("W row:1 col:1"), text("W row:1 col:2")}));
    QCOMPARE(plane->childCount(), 0);
}

void tst_zoHPCProjectionItem::missingParametersAreUnset()
{
    const auto wall = loaded(text("<projection type='powerwall' rows='1'/>"));

    QVERIFY(!wall->data(Item::Name, Qt::EditRole).isValid());
    QVERIFY(!wall->data(Item::Columns, Qt::EditRole).isValid());
    QVERIFY(!wall->data(Item::Width, Qt::EditRole).isValid());
    QCOMPARE(wall->childCount(), 0); // no columns
    QVERIFY(!wall->getString(Item::Identifier).isEmpty());
}

void tst_zoHPCProjectionItem::otherTypesParametersAreReadButNotSaved()
{
    const auto wall =
        loaded(text("<projection name='W' type='wall' rows='1' columns='1' cavewidth='77' x1='5'/>"));

    QCOMPARE(wall->getDouble(Item::CaveWidth), 77.0);
    QCOMPARE(wall->getDouble(Item::X1), 5.0);
    QDomDocument document;
    QVERIFY(!wall->toXML(document, text("projection")).hasAttribute(text("cavewidth")));
}

void tst_zoHPCProjectionItem::roundTripKeepsParameters_data()
{
    QTest::addColumn<QString>("type");

    for (const char* type : {"powerwall", "wall", "cave", "plane", "tile"})
        QTest::newRow(type) << text(type);
}

void tst_zoHPCProjectionItem::roundTripKeepsParameters()
{
    QFETCH(QString, type);
    Item item(text("Näme <&\"'> %1"), type);
    item.setInt(Item::Rows, 2);
    item.setInt(Item::Columns, 2);
    item.setDouble(Item::OverlapX, 10.5);
    item.setDouble(Item::Width, 1234.5);
    item.setDouble(Item::X1, -0.1);
    item.setBool(Item::FrontWall, true);
    item.setBool(Item::EdgeBlending, true);
    item.setDouble(Item::LeftEdge, 0.125);
    item.update();
    QDomDocument first;
    first.appendChild(item.toXML(first, text("projection")));

    const auto copy = loaded(first.toString(1));
    QDomDocument second;
    second.appendChild(copy->toXML(second, text("projection")));
    const auto copyOfCopy = loaded(second.toString(1));
    QDomDocument third;
    third.appendChild(copyOfCopy->toXML(third, text("projection")));

    for (const auto& column : item.getColumns())
        QCOMPARE(copy->getString(column.first), item.getString(column.first));
    QCOMPARE(copy->childCount(), item.childCount());
    QCOMPARE(third.toString(1), second.toString(1));
}

void tst_zoHPCProjectionItem::nestedElementsNeitherOverflowNorExplode()
{
    constexpr int DEPTH = 1000;
    QString xml;
    for (int i = 0; i < DEPTH; ++i)
        xml += text("<projection name='p' type='wall' rows='1' columns='1'>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("</projection>");

    // Reading each level again for the levels around it would run into the time limit of the test.
    const auto item = loaded(xml);

    QCOMPARE(item->childCount(), 1);
    QCOMPARE(item->children<Item>().first()->childCount(), 0);
}

void tst_zoHPCProjectionItem::tooManyTilesAreRefused_data()
{
    QTest::addColumn<QString>("xml");

    QTest::newRow("wall-million-squared")
        << "<projection name='N' type='wall' rows='1000000' columns='1000000'/>";
    QTest::newRow("powerwall-largest-ints") << "<projection name='N' type='powerwall' rows='2147483647' "
                                               "columns='2147483647' width='1' height='1'/>";
    QTest::newRow("wall-one-row-too-many") << "<projection name='N' type='wall' rows='100001' columns='1'/>";
    QTest::newRow("cave-one-column-too-many") << "<projection name='N' type='cave' rows='1' columns='33334' "
                                                 "left='true' right='true' front='true'/>";
    QTest::newRow("cave-counts-all-walls")
        << "<projection name='N' type='cave' rows='200' columns='300' left='true' right='true'/>";
}

void tst_zoHPCProjectionItem::tooManyTilesAreRefused()
{
    QFETCH(QString, xml);
    expectMessage(QtCriticalMsg,
                  QRegularExpression(text("^Projection N .*not laid out: at most 100000 tiles")));

    const auto item = loaded(xml);

    QCOMPARE(item->childCount(), 0);
    QVERIFY(item->getInt(Item::Rows) > 0); // the parameters stay
}

void tst_zoHPCProjectionItem::asManyTilesAsMayBeAreLaidOut_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("tiles");

    QTest::newRow("wall-of-one-column")
        << "<projection name='N' type='wall' rows='100000' columns='1'/>" << 100000;
    QTest::newRow("wall") << "<projection name='N' type='wall' rows='100' columns='1000'/>" << 100000;
    QTest::newRow("powerwall") << "<projection name='N' type='powerwall' rows='400' columns='250' width='1' "
                                  "height='1'/>"
                               << 100000;
    // 100,000 do not divide by three.
    QTest::newRow("cave")
        << "<projection name='N' type='cave' rows='1' columns='33333' left='true' right='true' "
           "front='true'/>"
        << 99999;
}

void tst_zoHPCProjectionItem::asManyTilesAsMayBeAreLaidOut()
{
    QFETCH(QString, xml);
    QFETCH(int, tiles);

    const auto item = loaded(xml);

    QCOMPARE(item->childCount(), tiles);
}

void tst_zoHPCProjectionItem::tilesRepeatOnlySoMuchOfTheName_data()
{
    QTest::addColumn<int>("tiles");
    QTest::addColumn<int>("characters");
    QTest::addColumn<bool>("areLaidOut");

    // Ten million characters altogether.
    QTest::newRow("all-tiles") << 100000 << 100 << true;
    QTest::newRow("all-tiles-one-more") << 100000 << 101 << false;
    QTest::newRow("few-tiles") << 10 << 1000000 << true;
    QTest::newRow("few-tiles-one-more") << 10 << 1000001 << false;
}

void tst_zoHPCProjectionItem::tilesRepeatOnlySoMuchOfTheName()
{
    QFETCH(int, tiles);
    QFETCH(int, characters);
    QFETCH(bool, areLaidOut);
    if (!areLaidOut)
        expectMessage(QtCriticalMsg,
                      QRegularExpression(text("^Projection n{40}\\.\\.\\. is not laid out: its tiles")));

    const auto item = loaded(text("<projection name='%1' type='wall' rows='%2' columns='1'/>")
                                 .arg(QString(characters, QLatin1Char('n')), QString::number(tiles)));

    QCOMPARE(item->childCount(), areLaidOut ? tiles : 0);
}

void tst_zoHPCProjectionItem::cloneIsEqualButForIdentifiers()
{
    Item item(text("C"), text("cave"));
    item.setBool(Item::LeftWall, true);
    item.setDouble(Item::CaveX, 12.5);
    item.update();

    const std::unique_ptr<Item> copy(item.clone());

    QDomDocument document;
    QDomDocument ofCopy;
    document.appendChild(item.toXML(document, text("projection")));
    ofCopy.appendChild(copy->toXML(ofCopy, text("projection")));
    QCOMPARE(attributeNames(ofCopy.documentElement()), attributeNames(document.documentElement()));
    for (const auto& column : item.getColumns())
        QCOMPARE(copy->getString(column.first), item.getString(column.first));
    QCOMPARE(childNames(*copy), childNames(item));
    QVERIFY(copy->getString(Item::Identifier) != item.getString(Item::Identifier));
}

void tst_zoHPCProjectionItem::cloneRenewsIdentifierOfSource()
{
    Item item(text("W"), text("wall"));
    const QString before = item.getString(Item::Identifier);

    const std::unique_ptr<Item> copy(item.clone());

    const QString after = item.getString(Item::Identifier);
    QVERIFY(!QUuid(after).isNull());
    QVERIFY(after != before);
    QVERIFY(copy->getString(Item::Identifier) != before);
    QCOMPARE(copy->children<Item>().first()->getString(Item::Identifier),
             copy->getString(Item::Identifier) + text("/row:1 col:1"));
}

void tst_zoHPCProjectionItem::cloneLosesParametersOfOtherTypes()
{
    Item item(text("W"), text("wall"));
    item.setDouble(Item::CaveWidth, 5.0);

    const std::unique_ptr<Item> copy(item.clone());

    QVERIFY(!copy->data(Item::CaveWidth, Qt::EditRole).isValid());
}

void tst_zoHPCProjectionItem::shownWallIsRegeneratedInOneStep()
{
    QTreeWidget tree;
    auto* item = new Item(text("W"), text("wall"));
    item->setInt(Item::Rows, 20);
    item->setInt(Item::Columns, 20);
    item->update();
    tree.addTopLevelItem(item);
    item->setExpanded(true);
    tree.setCurrentItem(item->child(3));
    const QSignalSpy removals(tree.model(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy insertions(tree.model(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy changes(tree.model(), &QAbstractItemModel::dataChanged);

    item->update();

    QCOMPARE(removals.count(), 1);
    QCOMPARE(insertions.count(), 1);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(item->childCount(), 400);
    QVERIFY(item->isExpanded());
}

void tst_zoHPCProjectionItem::updateAnnouncesNoIconThatStays_data()
{
    QTest::addColumn<QString>("type");

    for (const char* const type : {"wall", "powerwall", "cave", "plane", "tile"})
        QTest::newRow(type) << text(type);
}

void tst_zoHPCProjectionItem::updateAnnouncesNoIconThatStays()
{
    QFETCH(QString, type);
    QTreeWidget tree;
    tree.setColumnCount(Item::ColumnCount);
    auto* item = new Item(text("P"), type);
    tree.addTopLevelItem(item);
    const QSignalSpy changes(tree.model(), &QAbstractItemModel::dataChanged);

    item->update();

    // Whoever answers a change with an update would never come to an end.
    QCOMPARE(changes.count(), 0);
}

ZO_TEST_MAIN(tst_zoHPCProjectionItem)
#include "tst_zoHPCProjectionItem.moc"
