#include "zoTestCase.h"

#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QBrush>
#include <QDomDocument>

#include <memory>

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}
} // namespace

// Windows on the screens of render nodes.
class tst_zoHPCWindowItem final : public zoTestCase
{
    Q_OBJECT

private slots:
    void newWindowHasDefaults_data();
    void newWindowHasDefaults();
    void newWindowCarriesTheDisplaysColumns();
    void windowWithoutNodeIsOrange();
    void assignedWindowHasThePlainColour();
    void losingTheNodeTurnsItOrangeAgain();
    void placeholderInNodeStays();
    void savesItsOwnColumnsOnly();
    void fullScreenIsWrittenLast();
    void savesItsViewports();
    void viewportsAreFoundAtAnyDepth();
    void loadedTwiceKeepsTheFormerViewports();
    void cloneCopiesViewports();
};

void tst_zoHPCWindowItem::newWindowHasDefaults_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("node") << 5 << "node" << QVariant(QString::fromLatin1(""));
    QTest::newRow("screen") << 6 << "screen" << QVariant(text("0"));
    QTest::newRow("x") << 7 << "x" << QVariant(0);
    QTest::newRow("y") << 8 << "y" << QVariant(0);
    QTest::newRow("width") << 9 << "width" << QVariant(1280);
    QTest::newRow("height") << 10 << "height" << QVariant(1024);
    QTest::newRow("fullscreen") << 11 << "fullscreen" << QVariant(true);
}

void tst_zoHPCWindowItem::newWindowHasDefaults()
{
    QFETCH(int, col);
    QFETCH(QString, attribute);
    QFETCH(QVariant, value);

    const zoHPCWindowItem item;

    QCOMPARE(int(item.data(col, Qt::EditRole).type()), int(value.type()));
    QCOMPARE(item.data(col, Qt::EditRole), value);
    QCOMPARE(item.getColumns().at(col), attribute);
    QDomDocument document;
    QCOMPARE(item.toXML(document, text("window")).attribute(attribute, text("missing")), value.toString());
}

void tst_zoHPCWindowItem::newWindowCarriesTheDisplaysColumns()
{
    const zoHPCWindowItem item;

    QCOMPARE(item.getEyeSeparation(), 65.0);
    QCOMPARE(item.getString(3), text("1"));
}

void tst_zoHPCWindowItem::windowWithoutNodeIsOrange()
{
    const zoHPCWindowItem item;

    QCOMPARE(item.text(0), text("Window: "));
    QCOMPARE(item.foreground(0).color(), QColor(text("#FF9900")));
}

void tst_zoHPCWindowItem::assignedWindowHasThePlainColour()
{
    zoHPCWindowItem item;

    item.setRenderNode(text("render1"));
    item.update();

    QCOMPARE(item.renderNode(), text("render1"));
    QCOMPARE(item.text(0), text("Window: render1"));
    QVERIFY(!item.data(0, Qt::ForegroundRole).isValid());
}

void tst_zoHPCWindowItem::losingTheNodeTurnsItOrangeAgain()
{
    zoHPCWindowItem item;
    item.setRenderNode(text("render1"));
    item.update();

    item.setRenderNode(QString());
    item.update();

    QCOMPARE(item.foreground(0).color(), QColor(text("#FF9900")));
}

void tst_zoHPCWindowItem::placeholderInNodeStays()
{
    zoHPCWindowItem item;

    item.setRenderNode(text("%1 %2"));
    item.update();

    QCOMPARE(item.text(0), text("Window: %1 %2"));
}

void tst_zoHPCWindowItem::savesItsOwnColumnsOnly()
{
    zoHPCWindowItem item;
    item.setEyeSeparation(1.0);
    QDomDocument document;

    QCOMPARE(item.getColumns().size(), std::size_t(7));
    QCOMPARE(item.toXML(document, text("window")).attributes().count(), 7);
}

void tst_zoHPCWindowItem::fullScreenIsWrittenLast()
{
    QCOMPARE(zoHPCTreeWidgetItem::attributeOrder(zoHPCWindowItem::columns()),
             (QStringList{text("node"), text("screen"), text("x"), text("y"), text("width"), text("height"),
                          text("fullscreen")}));
}

void tst_zoHPCWindowItem::savesItsViewports()
{
    zoHPCWindowItem item;
    item.addChild(new zoHPCViewportItem);
    item.addChild(new zoHPCWindowItem); // no viewport
    item.addChild(new zoHPCViewportItem);
    QDomDocument document;

    const QDomElement element = item.toXML(document, text("window"));

    QCOMPARE(element.childNodes().count(), 2);
    QCOMPARE(element.firstChildElement().tagName(), text("viewport"));
}

void tst_zoHPCWindowItem::viewportsAreFoundAtAnyDepth()
{
    QDomDocument document;
    document.setContent(
        text("<window node='a'><g><viewport projection='p'/></g><viewport projection='q'/></window>"));
    zoHPCWindowItem item;

    item.fromXML(document.documentElement());

    QCOMPARE(item.childCount(), 2);
    QCOMPARE(item.children<zoHPCViewportItem>().at(0)->text(0), text("Viewport: p "));
    QCOMPARE(item.text(0), text("Window: a"));
}

void tst_zoHPCWindowItem::loadedTwiceKeepsTheFormerViewports()
{
    // Reading appends: an item is read once in its life.
    QDomDocument document;
    document.setContent(text("<window><viewport/></window>"));
    zoHPCWindowItem item;

    item.fromXML(document.documentElement());
    item.fromXML(document.documentElement());

    QCOMPARE(item.childCount(), 2);
}

void tst_zoHPCWindowItem::cloneCopiesViewports()
{
    zoHPCWindowItem item;
    item.setRenderNode(text("a"));
    auto* viewport = new zoHPCViewportItem;
    viewport->setString(zoHPCViewportItem::ProjectionIdentifier, text("{id}"));
    viewport->setProjection(text("p"));
    item.addChild(viewport);

    const std::unique_ptr<zoHPCWindowItem> copy(item.clone());

    QCOMPARE(copy->renderNode(), text("a"));
    QCOMPARE(copy->childCount(), 1);
    const zoHPCViewportItem* copied = copy->children<zoHPCViewportItem>().first();
    QCOMPARE(copied->getString(zoHPCViewportItem::Projection), text("p"));
    QCOMPARE(copied->getString(zoHPCViewportItem::ProjectionIdentifier), QString());
    QVERIFY(dynamic_cast<zoHPCViewportItem*>(copy.get()) == nullptr);
}

ZO_TEST_MAIN(tst_zoHPCWindowItem)
#include "tst_zoHPCWindowItem.moc"
