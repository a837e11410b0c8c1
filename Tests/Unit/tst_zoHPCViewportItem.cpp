#include "zoTestCase.h"

#include <zoHPCViewportItem.h>

#include <QApplication>
#include <QBrush>
#include <QDomDocument>

#include <memory>

using Item = zoHPCViewportItem;

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

QVector<double> rectangle(const Item& item)
{
    return {item.getDouble(15), item.getDouble(16), item.getDouble(17), item.getDouble(18)};
}
} // namespace

// Viewports: what they show and where.
class tst_zoHPCViewportItem final : public zoTestCase
{
    Q_OBJECT

private slots:
    void newViewportHasDefaults_data();
    void newViewportHasDefaults();
    void newViewportIsOrangeAndNamesNothing();
    void projectionAndEyeAreShown_data();
    void projectionAndEyeAreShown();
    void placeholderInProjectionStays();
    void sameProjectionChangesNothing();
    void identifierIsNotSaved();
    void presetSetsTheRectangle_data();
    void presetSetsTheRectangle();
    void customKeepsTheRectangleOfThePreset();
    void presetWinsOverStoredRectangle();
    void setViewportFillsFourColumns();
    void cloneKeepsNameButNotIdentifier();
    void viewportsInsideViewportsLoadOnce();
    void roundTripKeepsTheSpellingOfNumbers();
};

void tst_zoHPCViewportItem::newViewportHasDefaults_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("projection") << 13 << "projection" << QVariant(QString::fromLatin1(""));
    QTest::newRow("position") << 14 << "position" << QVariant(text("fill"));
    QTest::newRow("x1") << 15 << "x1" << QVariant(0.0);
    QTest::newRow("y1") << 16 << "y1" << QVariant(0.0);
    QTest::newRow("x2") << 17 << "x2" << QVariant(1.0);
    QTest::newRow("y2") << 18 << "y2" << QVariant(1.0);
    QTest::newRow("flipx") << 19 << "flipx" << QVariant(false);
    QTest::newRow("flipy") << 20 << "flipy" << QVariant(false);
    QTest::newRow("eye") << 21 << "eye" << QVariant(text("mono"));
}

void tst_zoHPCViewportItem::newViewportHasDefaults()
{
    QFETCH(int, col);
    QFETCH(QString, attribute);
    QFETCH(QVariant, value);

    const Item item;

    QCOMPARE(int(item.data(col, Qt::EditRole).type()), int(value.type()));
    QCOMPARE(item.data(col, Qt::EditRole), value);
    QCOMPARE(item.getColumns().size(), std::size_t(9));
    QCOMPARE(item.getColumns().at(col), attribute);
    QDomDocument document;
    QCOMPARE(item.toXML(document, text("viewport")).attribute(attribute, text("missing")), value.toString());
}

void tst_zoHPCViewportItem::newViewportIsOrangeAndNamesNothing()
{
    const Item item;

    QCOMPARE(item.text(0), text("Viewport:  ")); // two blanks
    QCOMPARE(item.foreground(0).color(), QColor(text("#FF9900")));
    QCOMPARE(item.getString(12), QString());
}

void tst_zoHPCViewportItem::projectionAndEyeAreShown_data()
{
    QTest::addColumn<QString>("projection");
    QTest::addColumn<QString>("eye");
    QTest::addColumn<QString>("shown");

    QTest::newRow("left") << "p"
                          << "left"
                          << "Viewport: p left";
    QTest::newRow("right") << "p"
                           << "right"
                           << "Viewport: p right";
    QTest::newRow("mono-shows-no-eye") << "p"
                                       << "mono"
                                       << "Viewport: p ";
    QTest::newRow("stereo-shows-no-eye") << "p"
                                         << "stereo"
                                         << "Viewport: p ";
    QTest::newRow("case-matters") << "p"
                                  << "Left"
                                  << "Viewport: p ";
    QTest::newRow("eye-without-projection") << ""
                                            << "left"
                                            << "Viewport:  left";
}

void tst_zoHPCViewportItem::projectionAndEyeAreShown()
{
    QFETCH(QString, projection);
    QFETCH(QString, eye);
    QFETCH(QString, shown);
    Item item;

    item.setString(Item::Eye, eye);
    item.setString(Item::Projection, projection);
    item.update();

    QCOMPARE(item.text(0), shown);
    QCOMPARE(item.data(0, Qt::ForegroundRole).isValid(), projection.isEmpty());
}

void tst_zoHPCViewportItem::placeholderInProjectionStays()
{
    Item item;
    item.setString(Item::Eye, text("left"));

    item.setProjection(text("100%2 %1"));

    QCOMPARE(item.text(0), text("Viewport: 100%2 %1 left"));
}

void tst_zoHPCViewportItem::sameProjectionChangesNothing()
{
    Item item;
    item.setProjection(text("p"));
    item.setText(0, text("touched"));

    item.setProjection(text("p"));
    QCOMPARE(item.text(0), text("touched"));

    item.setProjection(text("q"));
    QCOMPARE(item.text(0), text("Viewport: q "));
}

void tst_zoHPCViewportItem::identifierIsNotSaved()
{
    Item item;
    item.setString(Item::ProjectionIdentifier, text("{id}"));
    QDomDocument document;

    QCOMPARE(item.toXML(document, text("viewport")).attributes().count(), 9);
    QCOMPARE(item.getColumns().count(12), std::size_t(0));
}

void tst_zoHPCViewportItem::presetSetsTheRectangle_data()
{
    QTest::addColumn<QVector<double>>("expected");

    QTest::newRow("fill") << QVector<double>{0.0, 0.0, 1.0, 1.0};
    QTest::newRow("left") << QVector<double>{0.0, 0.0, 0.5, 1.0};
    QTest::newRow("right") << QVector<double>{0.5, 0.0, 1.0, 1.0};
    QTest::newRow("top") << QVector<double>{0.0, 0.5, 1.0, 1.0};
    QTest::newRow("bottom") << QVector<double>{0.0, 0.0, 1.0, 0.5};
    QTest::newRow("custom") << QVector<double>{0.1, 0.2, 0.3, 0.4};
    QTest::newRow("middle") << QVector<double>{0.1, 0.2, 0.3, 0.4};
}

void tst_zoHPCViewportItem::presetSetsTheRectangle()
{
    QFETCH(QVector<double>, expected);
    Item item;
    item.setViewport(0.1, 0.2, 0.3, 0.4);

    item.setString(Item::Position, text(QTest::currentDataTag()));
    item.update();

    QCOMPARE(rectangle(item), expected);
}

void tst_zoHPCViewportItem::customKeepsTheRectangleOfThePreset()
{
    Item item;
    item.setString(Item::Position, text("left"));
    item.update();

    item.setString(Item::Position, text("custom"));
    item.update();

    QCOMPARE(rectangle(item), (QVector<double>{0.0, 0.0, 0.5, 1.0}));
}

void tst_zoHPCViewportItem::presetWinsOverStoredRectangle()
{
    QDomDocument document;
    document.setContent(text("<viewport position='right' x1='0.1' y1='0.1' x2='0.2' y2='0.2'/>"));
    Item item;

    item.fromXML(document.documentElement());

    QCOMPARE(rectangle(item), (QVector<double>{0.5, 0.0, 1.0, 1.0}));
}

void tst_zoHPCViewportItem::setViewportFillsFourColumns()
{
    Item item;

    item.setViewport(0.1, 0.2, 0.3, 0.4);

    QCOMPARE(rectangle(item), (QVector<double>{0.1, 0.2, 0.3, 0.4}));
}

void tst_zoHPCViewportItem::cloneKeepsNameButNotIdentifier()
{
    Item item;
    item.setString(Item::ProjectionIdentifier, text("{id}"));
    item.setProjection(text("p"));
    item.setString(Item::Eye, text("redcyan"));

    const std::unique_ptr<Item> copy(item.clone());

    QCOMPARE(copy->getString(Item::Projection), text("p"));
    QCOMPARE(copy->getString(Item::Eye), text("redcyan"));
    QCOMPARE(copy->getString(Item::ProjectionIdentifier), QString());
    QCOMPARE(item.getString(Item::ProjectionIdentifier), text("{id}"));
}

void tst_zoHPCViewportItem::viewportsInsideViewportsLoadOnce()
{
    constexpr int DEPTH = 1000;
    QString xml = text("<window>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("<viewport projection='p'>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("</viewport>");
    xml += text("</window>");
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    zoHPCWindowItem window;
    Item outermost;

    window.fromXML(document.documentElement());
    outermost.fromXML(document.documentElement().firstChildElement());

    QCOMPARE(window.childCount(), DEPTH);
    QCOMPARE(window.child(0)->childCount(), 0);
    QCOMPARE(outermost.childCount(), DEPTH - 1);
    QDomDocument saved;
    QCOMPARE(window.toXML(saved, text("window")).childNodes().count(), DEPTH);
}

void tst_zoHPCViewportItem::roundTripKeepsTheSpellingOfNumbers()
{
    QDomDocument document;
    document.setContent(text("<viewport position='custom' x1='0.50' y1='1e-1' x2='1.0' flipx='1'/>"));
    Item item;

    item.fromXML(document.documentElement());

    QDomDocument saved;
    const QDomElement element = item.toXML(saved, text("viewport"));
    QCOMPARE(element.attribute(text("x1")), text("0.50"));
    QCOMPARE(element.attribute(text("y1")), text("1e-1"));
    QCOMPARE(element.attribute(text("x2")), text("1.0"));
    QCOMPARE(element.attribute(text("flipx")), text("1"));
    QVERIFY(!element.hasAttribute(text("y2")));
    QCOMPARE(item.getDouble(Item::Y1), 0.1);
    QCOMPARE(item.getBool(Item::FlipX), true);
}

ZO_TEST_MAIN(tst_zoHPCViewportItem)
#include "tst_zoHPCViewportItem.moc"
