#include "zoTestCase.h"

#include <zoHPCDisplayItem.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCTreeWidgetItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QDomDocument>
#include <QSignalSpy>

namespace
{
// Three saved columns and one that is not.
class PlainItem final : public zoHPCTreeWidgetItem
{
public:
    void update() override
    {
        ++updates;
        lastAtUpdate = getString(7);
    }
    const ColumnMap& getColumns() const override
    {
        static const ColumnMap map{{7, QString::fromLatin1("last")},
                                   {0, QString::fromLatin1("first")},
                                   {3, QString::fromLatin1("middle")}};
        return map;
    }

    int updates = 0;
    QString lastAtUpdate;
};

// Nothing of its own.
class BareItem final : public zoHPCTreeWidgetItem
{
public:
    void update() override {}
};

QDomElement elementOf(QDomDocument& document, const QString& xml)
{
    document.setContent(xml);
    return document.documentElement();
}
} // namespace

// The base of all rows of the display setup.
class tst_zoHPCTreeWidgetItem final : public zoTestCase
{
    Q_OBJECT

private slots:
    void itemTypeIsUserType();
    void unsetColumnReadsAsNothing();
    void setterKeepsTypeOfValue();
    void getterConvertsAsVariantDoes_data();
    void getterConvertsAsVariantDoes();
    void neverSetColumnsWriteNoAttributes();
    void baseMapIsEmpty();
    void onlyMappedColumnsAreWritten();
    void valueIsWrittenAsVariantText_data();
    void valueIsWrittenAsVariantText();
    void writtenElementHasNoParent();
    void attributesBecomeTexts();
    void textKeepsItsSpelling();
    void emptyAttributeIsMissing();
    void missingAttributeUnsetsColumn();
    void readingEndsWithUpdate();
    void readingTwiceKeepsNothingOfTheFirst();
    void clearChildrenLeavesNone();
    void clearChildrenOfShownItemIsOneRemoval();
    void childrenKeepOneEntryPerChild();
    void windowsIncludeViewports();
    void subChildrenAreInDepthFirstOrder();
    void subChildrenOfTreeStartAtTopLevel();
    void foreignRowsAreSkippedWithAllBelow();
    void orderOfAttributesIsAscending();
};

void tst_zoHPCTreeWidgetItem::itemTypeIsUserType()
{
    const BareItem item;

    QCOMPARE(item.type(), 1000);
}

void tst_zoHPCTreeWidgetItem::unsetColumnReadsAsNothing()
{
    const BareItem item;

    QVERIFY(!item.data(5, Qt::EditRole).isValid());
    QCOMPARE(item.getInt(5), 0);
    QCOMPARE(item.getDouble(5), 0.0);
    QCOMPARE(item.getString(5), QString());
    QCOMPARE(item.getBool(5), false);
}

void tst_zoHPCTreeWidgetItem::setterKeepsTypeOfValue()
{
    BareItem item;

    item.setInt(1, 7);
    item.setDouble(2, 2.5);
    item.setString(3, QStringLiteral("text"));
    item.setBool(4, true);

    QCOMPARE(item.data(1, Qt::EditRole), QVariant(7));
    QCOMPARE(int(item.data(1, Qt::EditRole).type()), int(QVariant::Int));
    QCOMPARE(int(item.data(2, Qt::EditRole).type()), int(QVariant::Double));
    QCOMPARE(int(item.data(3, Qt::EditRole).type()), int(QVariant::String));
    QCOMPARE(int(item.data(4, Qt::EditRole).type()), int(QVariant::Bool));
}

void tst_zoHPCTreeWidgetItem::getterConvertsAsVariantDoes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("asInt");
    QTest::addColumn<double>("asDouble");
    QTest::addColumn<QString>("asString");
    QTest::addColumn<bool>("asBool");

    QTest::newRow("int") << QVariant(-3) << -3 << -3.0 << "-3" << true;
    QTest::newRow("double") << QVariant(12.25) << 12 << 12.25 << "12.25" << true;
    QTest::newRow("text-of-int") << QVariant(QStringLiteral("42")) << 42 << 42.0 << "42" << true;
    QTest::newRow("text-of-fraction-is-no-int")
        << QVariant(QStringLiteral("2.5")) << 0 << 2.5 << "2.5" << true;
    QTest::newRow("text-of-no-number") << QVariant(QStringLiteral("wall")) << 0 << 0.0 << "wall" << true;
    QTest::newRow("text-false") << QVariant(QStringLiteral("false")) << 0 << 0.0 << "false" << false;
    QTest::newRow("text-zero-is-false") << QVariant(QStringLiteral("0")) << 0 << 0.0 << "0" << false;
    QTest::newRow("true") << QVariant(true) << 1 << 1.0 << "true" << true;
}

void tst_zoHPCTreeWidgetItem::getterConvertsAsVariantDoes()
{
    QFETCH(QVariant, value);
    QFETCH(int, asInt);
    QFETCH(double, asDouble);
    QFETCH(QString, asString);
    QFETCH(bool, asBool);
    BareItem item;

    item.setData(9, Qt::EditRole, value);

    QCOMPARE(item.getInt(9), asInt);
    QCOMPARE(item.getDouble(9), asDouble);
    QCOMPARE(item.getString(9), asString);
    QCOMPARE(item.getBool(9), asBool);
}

void tst_zoHPCTreeWidgetItem::neverSetColumnsWriteNoAttributes()
{
    const PlainItem item;
    QDomDocument document;

    const QDomElement element = item.toXML(document, QStringLiteral("thing"));

    QCOMPARE(element.tagName(), QStringLiteral("thing"));
    QCOMPARE(element.attributes().count(), 0);
}

void tst_zoHPCTreeWidgetItem::baseMapIsEmpty()
{
    BareItem item;
    item.setString(0, QStringLiteral("name"));
    QDomDocument document;

    QVERIFY(item.getColumns().empty());
    QCOMPARE(item.toXML(document, QStringLiteral("thing")).attributes().count(), 0);
}

void tst_zoHPCTreeWidgetItem::onlyMappedColumnsAreWritten()
{
    PlainItem item;
    for (int col = 0; col < 10; ++col)
        item.setInt(col, col);
    QDomDocument document;

    const QDomElement element = item.toXML(document, QStringLiteral("thing"));

    QCOMPARE(element.attributes().count(), 3);
    QCOMPARE(element.attribute(QStringLiteral("first")), QStringLiteral("0"));
    QCOMPARE(element.attribute(QStringLiteral("middle")), QStringLiteral("3"));
    QCOMPARE(element.attribute(QStringLiteral("last")), QStringLiteral("7"));
}

void tst_zoHPCTreeWidgetItem::valueIsWrittenAsVariantText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("true") << QVariant(true) << "true";
    QTest::newRow("false") << QVariant(false) << "false";
    QTest::newRow("int") << QVariant(-1280) << "-1280";
    QTest::newRow("whole-double") << QVariant(1500.0) << "1500";
    QTest::newRow("fraction") << QVariant(0.1) << "0.1";
    QTest::newRow("third") << QVariant(1.0 / 3.0) << "0.3333333333333333";
    QTest::newRow("empty-text-is-written") << QVariant(QString::fromLatin1("")) << "";
    QTest::newRow("placeholder-stays") << QVariant(QStringLiteral("100 %1")) << "100 %1";
}

void tst_zoHPCTreeWidgetItem::valueIsWrittenAsVariantText()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    PlainItem item;
    item.setData(3, Qt::EditRole, value);
    QDomDocument document;

    const QDomElement element = item.toXML(document, QStringLiteral("thing"));

    QVERIFY(element.hasAttribute(QStringLiteral("middle")));
    QCOMPARE(element.attribute(QStringLiteral("middle")), text);
}

void tst_zoHPCTreeWidgetItem::writtenElementHasNoParent()
{
    const PlainItem item;
    QDomDocument document;

    const QDomElement element = item.toXML(document, QStringLiteral("thing"));

    QVERIFY(element.parentNode().isNull());
    QVERIFY(document.documentElement().isNull());
}

void tst_zoHPCTreeWidgetItem::attributesBecomeTexts()
{
    QDomDocument document;
    PlainItem item;

    item.fromXML(elementOf(document, QStringLiteral("<x first='1' middle='2.5' last='true' other='9'/>")));

    QCOMPARE(int(item.data(0, Qt::EditRole).type()), int(QVariant::String));
    QCOMPARE(item.getInt(0), 1);
    QCOMPARE(item.getDouble(3), 2.5);
    QCOMPARE(item.getBool(7), true);
}

void tst_zoHPCTreeWidgetItem::textKeepsItsSpelling()
{
    // 65 and "65.0" are equal as variants.
    QDomDocument document;
    PlainItem item;
    item.setDouble(3, 65.0);

    item.fromXML(elementOf(document, QStringLiteral("<x middle='65.0'/>")));

    QCOMPARE(item.data(3, Qt::EditRole).toString(), QStringLiteral("65.0"));
    QCOMPARE(int(item.data(3, Qt::EditRole).type()), int(QVariant::String));
}

void tst_zoHPCTreeWidgetItem::emptyAttributeIsMissing()
{
    QDomDocument document;
    PlainItem item;
    item.setInt(3, 12);

    item.fromXML(elementOf(document, QStringLiteral("<x first='a' middle=''/>")));

    QVERIFY(!item.data(3, Qt::EditRole).isValid());
    QDomDocument saved;
    QVERIFY(!item.toXML(saved, QStringLiteral("x")).hasAttribute(QStringLiteral("middle")));
}

void tst_zoHPCTreeWidgetItem::missingAttributeUnsetsColumn()
{
    QDomDocument document;
    PlainItem item;
    item.setInt(3, 12);
    item.setInt(5, 13); // not in the map

    item.fromXML(elementOf(document, QStringLiteral("<x/>")));

    QVERIFY(!item.data(3, Qt::EditRole).isValid());
    QCOMPARE(item.getInt(5), 13);
}

void tst_zoHPCTreeWidgetItem::readingEndsWithUpdate()
{
    QDomDocument document;
    PlainItem item;

    item.fromXML(elementOf(document, QStringLiteral("<x last='read'/>")));

    QCOMPARE(item.updates, 1);
    QCOMPARE(item.lastAtUpdate, QStringLiteral("read"));
}

void tst_zoHPCTreeWidgetItem::readingTwiceKeepsNothingOfTheFirst()
{
    QDomDocument first;
    QDomDocument second;
    PlainItem item;
    item.fromXML(elementOf(first, QStringLiteral("<x first='a' middle='b' last='c'/>")));

    item.fromXML(elementOf(second, QStringLiteral("<x last='d'/>")));

    QVERIFY(!item.data(0, Qt::EditRole).isValid());
    QVERIFY(!item.data(3, Qt::EditRole).isValid());
    QCOMPARE(item.getString(7), QStringLiteral("d"));
}

void tst_zoHPCTreeWidgetItem::clearChildrenLeavesNone()
{
    PlainItem item;
    for (int i = 0; i < 3; ++i)
        item.addChild(new BareItem);

    item.clearChildren();

    QCOMPARE(item.childCount(), 0);
}

void tst_zoHPCTreeWidgetItem::clearChildrenOfShownItemIsOneRemoval()
{
    QTreeWidget tree;
    auto* item = new PlainItem;
    for (int i = 0; i < 3; ++i)
        item->addChild(new BareItem);
    tree.addTopLevelItem(item);
    item->setExpanded(true);
    const QSignalSpy removals(tree.model(), &QAbstractItemModel::rowsRemoved);

    item->clearChildren();

    QCOMPARE(item->childCount(), 0);
    QCOMPARE(removals.count(), 1);
}

void tst_zoHPCTreeWidgetItem::childrenKeepOneEntryPerChild()
{
    BareItem item;
    auto* projection = new zoHPCProjectionItem(QStringLiteral("p"), QStringLiteral("plane"));
    auto* window = new zoHPCWindowItem;
    item.addChild(projection);
    item.addChild(new QTreeWidgetItem);
    item.addChild(window);

    const QList<zoHPCProjectionItem*> projections = item.children<zoHPCProjectionItem>();
    const QList<zoHPCWindowItem*> windows = item.children<zoHPCWindowItem>();

    QCOMPARE(projections, (QList<zoHPCProjectionItem*>{projection, nullptr, nullptr}));
    QCOMPARE(windows, (QList<zoHPCWindowItem*>{nullptr, nullptr, window}));
}

void tst_zoHPCTreeWidgetItem::windowsIncludeViewports()
{
    zoHPCDisplayItem display;
    auto* window = new zoHPCWindowItem;
    auto* viewport = new zoHPCViewportItem;
    display.addChild(window);
    window->addChild(viewport);

    QCOMPARE(display.subChildren<zoHPCWindowItem>(), (QList<zoHPCWindowItem*>{window, viewport}));
    QCOMPARE(display.subChildren<zoHPCViewportItem>(), (QList<zoHPCViewportItem*>{viewport}));
}

void tst_zoHPCTreeWidgetItem::subChildrenAreInDepthFirstOrder()
{
    BareItem root;
    QList<zoHPCWindowItem*> expected;
    for (int i = 0; i < 2; ++i) {
        auto* window = new zoHPCWindowItem;
        root.addChild(window);
        expected << window;
        for (int j = 0; j < 2; ++j) {
            auto* viewport = new zoHPCViewportItem;
            window->addChild(viewport);
            expected << viewport;
        }
    }

    QCOMPARE(root.subChildren<zoHPCWindowItem>(), expected);
}

void tst_zoHPCTreeWidgetItem::subChildrenOfTreeStartAtTopLevel()
{
    QTreeWidget tree;
    auto* first = new zoHPCWindowItem;
    auto* inner = new zoHPCViewportItem;
    auto* second = new zoHPCWindowItem;
    first->addChild(inner);
    tree.addTopLevelItems({first, second});

    QCOMPARE(zoHPCTreeWidgetItem::subChildren<zoHPCWindowItem>(&tree),
             (QList<zoHPCWindowItem*>{first, inner, second}));
}

void tst_zoHPCTreeWidgetItem::foreignRowsAreSkippedWithAllBelow()
{
    BareItem root;
    auto* foreign = new QTreeWidgetItem;
    foreign->addChild(new zoHPCWindowItem);
    auto* otherKind = new BareItem;
    auto* window = new zoHPCWindowItem;
    otherKind->addChild(window);
    root.addChild(foreign);
    root.addChild(otherKind);

    QCOMPARE(root.subChildren<zoHPCWindowItem>(), (QList<zoHPCWindowItem*>{window}));
}

void tst_zoHPCTreeWidgetItem::orderOfAttributesIsAscending()
{
    const PlainItem item;

    QCOMPARE(zoHPCTreeWidgetItem::attributeOrder(item.getColumns()),
             (QStringList{QStringLiteral("first"), QStringLiteral("middle"), QStringLiteral("last")}));
}

ZO_TEST_MAIN(tst_zoHPCTreeWidgetItem)
#include "tst_zoHPCTreeWidgetItem.moc"
