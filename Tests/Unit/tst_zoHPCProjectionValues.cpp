#include "zoTestCase.h"

#include <zoHPCProjectionItem.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QUuid>

#include <cmath>
#include <functional>
#include <iterator>
#include <memory>

using Item = zoHPCProjectionItem;
Q_DECLARE_METATYPE(std::function<void(Item&)>)

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

// All parameters, without the children.
std::unique_ptr<Item> copyOf(const Item& item)
{
    auto copy = std::make_unique<Item>(QString(), item.projectionType());
    for (int col = 0; col < Item::ColumnCount; ++col) {
        // Unset first: 0 would stay where -0 is to stand.
        copy->setData(col, Qt::EditRole, QVariant());
        copy->setData(col, Qt::EditRole, item.data(col, Qt::EditRole));
    }
    return copy;
}

QStringList valuesOfChildren(const Item& item)
{
    QStringList rows;
    for (const Item* child : item.children<Item>()) {
        QStringList values;
        for (int col = 0; col < Item::ColumnCount; ++col)
            values << child->getString(col);
        rows << values.join(QLatin1Char('|'));
    }
    return rows;
}

// One parameter, or a child, as users, files and other modules may change it. Returns what.
QString changeSomething(Item& item, QRandomGenerator& random)
{
    const auto below = [&random](int bound) { return int(random.bounded(bound)); };
    const QVariant values[] = {0.0,          -0.0,         1.0,       -1.0, 12.6, -12.6, 2500.0,    1e300,
                               std::nan(""), text("12.6"), text("x"), 7,    true, false, QVariant()};
    const QVariant value = values[below(int(std::size(values)))];
    const int columns[] = {Item::RightOffsetX, Item::RightOffsetY, Item::OverlapX,  Item::OverlapY,
                           Item::CaveWidth,    Item::CaveHeight,   Item::CaveDepth, Item::CaveX,
                           Item::Width,        Item::Height,       Item::Distance,  Item::EdgeBlending};
    const int column = columns[below(int(std::size(columns)))];
    switch (below(24)) {
    case 0: {
        const char* const types[] = {"wall", "powerwall", "cave", "plane", "odd"};
        item.setProjectionType(text(types[below(5)]));
        return text("type");
    }
    case 1:
        item.setInt(Item::Rows, below(4));
        return text("rows");
    case 2:
        item.setInt(Item::Columns, 1 + below(3));
        return text("columns");
    case 3:
        item.setName(text(below(2) == 0 ? "W" : " V "));
        return text("name");
    case 4:
        item.setString(Item::Identifier, QUuid::createUuid().toString());
        return text("identifier");
    case 5: {
        const int flags[] = {Item::LeftWall, Item::RightWall, Item::TopWall, Item::FrontWall};
        item.setBool(flags[below(4)], below(3) > 0);
        return text("wall of a cave");
    }
    case 6:
        if (item.childCount() > 0)
            item.child(below(item.childCount()))->setData(column, Qt::EditRole, value);
        return text("child's value");
    case 7:
        if (item.childCount() > 0)
            delete item.takeChild(below(item.childCount()));
        return text("child taken");
    default:
        item.setData(column, Qt::EditRole, value);
        return QStringLiteral("column %1 to %2").arg(column).arg(value.toString());
    }
}
} // namespace

// Tiles and planes that stay where only values of their projection change.
class tst_zoHPCProjectionValues final : public zoTestCase
{
    Q_OBJECT

private slots:
    void changedValuesAreThoseOfAWholeUpdate_data();
    void changedValuesAreThoseOfAWholeUpdate();
    void changedValuesKeepTheirRows();
    void touchedRowsAreMadeAnew_data();
    void touchedRowsAreMadeAnew();
    void whatViewsWriteBesideTouchesNoRow();
    void tilesAreOthersAfterAnUpdate();
};

void tst_zoHPCProjectionValues::changedValuesAreThoseOfAWholeUpdate_data()
{
    QTest::addColumn<uint>("seed");

    for (uint seed = 1; seed <= 8; ++seed)
        QTest::addRow("%u", seed) << seed;
}

void tst_zoHPCProjectionValues::changedValuesAreThoseOfAWholeUpdate()
{
    QFETCH(uint, seed);
    QRandomGenerator random(seed);
    Item item(text("W"), text("wall"));
    int kept = 0;
    constexpr int Steps = 400;
    for (int step = 0; step < Steps; ++step) {
        const QString change = changeSomething(item, random);

        if (item.updateValues())
            ++kept;
        else
            item.update();

        const std::unique_ptr<Item> whole = copyOf(item);
        whole->update();
        QVERIFY2(valuesOfChildren(item) == valuesOfChildren(*whole),
                 qPrintable(QStringLiteral("step %1: %2\n%3\n%4")
                                .arg(QString::number(step), change, valuesOfChildren(item).join('\n'),
                                     valuesOfChildren(*whole).join('\n'))));
    }
    QVERIFY2(kept > Steps / 20 && kept < Steps * 19 / 20, qPrintable(QString::number(kept)));
}

void tst_zoHPCProjectionValues::changedValuesKeepTheirRows()
{
    Item item(text("w"), text("powerwall"));
    item.setInt(Item::Columns, 3);
    item.update();
    const QList<Item*> rows = item.children<Item>();

    item.setDouble(Item::Distance, 2500.0);
    const bool isKept = item.updateValues();

    QVERIFY(isKept);
    QCOMPARE(item.children<Item>(), rows);
    QCOMPARE(rows[1]->getDouble(Item::Z2), -2500.0);
}

void tst_zoHPCProjectionValues::touchedRowsAreMadeAnew_data()
{
    QTest::addColumn<std::function<void(Item&)>>("touch");
    using Touch = std::function<void(Item&)>;

    QTest::newRow("edited") << Touch(
        [](Item& item) { static_cast<Item*>(item.child(1))->setDouble(Item::Distance, 1.0); });
    QTest::newRow("deleted") << Touch([](Item& item) { delete item.takeChild(1); });
    QTest::newRow("moved") << Touch([](Item& item) { item.addChild(item.takeChild(0)); });
    QTest::newRow("added") << Touch([](Item& item) { item.addChild(new Item(text("x"), text("tile"))); });
    QTest::newRow("replaced") << Touch([](Item& item) {
        delete item.takeChild(1);
        item.insertChild(1, new Item(text("x"), text("tile")));
    });
    QTest::newRow("replaced-by-another-row") << Touch([](Item& item) {
        delete item.takeChild(1);
        item.insertChild(1, new QTreeWidgetItem);
    });
    QTest::newRow("with-a-row-below")
        << Touch([](Item& item) { item.child(1)->addChild(new Item(text("x"), text("tile"))); });
}

void tst_zoHPCProjectionValues::touchedRowsAreMadeAnew()
{
    QFETCH(std::function<void(Item&)>, touch);
    Item item(text("w"), text("wall"));
    item.setInt(Item::Columns, 3);
    item.update();
    QVERIFY(item.updateValues());

    touch(item);

    QVERIFY(!item.updateValues());
}

// As the node beside a surface, and tool tips.
void tst_zoHPCProjectionValues::whatViewsWriteBesideTouchesNoRow()
{
    Item item(text("w"), text("wall"));
    item.setInt(Item::Columns, 3);
    item.update();
    const unsigned tiles = item.ownTiles();

    item.child(1)->setText(Item::ColumnCount, text("node1"));
    item.child(1)->setToolTip(0, text("shown by node1"));

    QVERIFY(tiles != 0);
    QCOMPARE(item.ownTiles(), tiles);
    QVERIFY(item.updateValues());
}

void tst_zoHPCProjectionValues::tilesAreOthersAfterAnUpdate()
{
    Item item(text("w"), text("wall"));
    item.setInt(Item::Columns, 3);
    item.update();
    const unsigned tiles = item.ownTiles();

    item.update();

    QVERIFY(item.ownTiles() != 0);
    QVERIFY(item.ownTiles() != tiles);
}

ZO_TEST_MAIN(tst_zoHPCProjectionValues)
#include "tst_zoHPCProjectionValues.moc"
