#include "zoTestCase.h"

#include <zoHPCDisplayItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QApplication>
#include <QDomDocument>
#include <QIcon>

#include <memory>

namespace
{
QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

std::unique_ptr<zoHPCDisplayItem> loaded(const QString& xml)
{
    QDomDocument document;
    QString message;
    if (!document.setContent(xml, &message))
        qFatal("%s", qPrintable(message));
    auto item = std::make_unique<zoHPCDisplayItem>();
    item->fromXML(document.documentElement());
    return item;
}

QString saved(const zoHPCDisplayItem& item)
{
    QDomDocument document;
    document.appendChild(item.toXML(document, text("display")));
    return document.toString(1);
}
} // namespace

// Displays with what hangs below them.
class tst_zoHPCDisplayItem final : public zoTestCase
{
    Q_OBJECT

private slots:
    void newDisplayHasDefaults_data();
    void newDisplayHasDefaults();
    void textEndsWithABlank();
    void savesItsFourColumns();
    void eyeSeparationIsColumnOne();
    void cameraNameIsColumnTwo();
    void loadingRebuildsThreeLevels();
    void windowsAreFoundAtAnyDepth();
    void viewportsBelongToTheirWindows();
    void attributesOfOtherLevelsStayAway();
    void childrenOfOtherKindsAreNotWritten();
    void roundTripIsAFixedPoint();
    void cloneHasTheWholeSubtree();
    void windowsInsideWindowsLoad();
    void explodingNestIsRefused();
};

void tst_zoHPCDisplayItem::newDisplayHasDefaults_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("eyeseparation") << 1 << "eyeseparation" << QVariant(65.0);
    QTest::newRow("camera") << 2 << "camera" << QVariant(QString::fromLatin1(""));
    QTest::newRow("user") << 3 << "user" << QVariant(text("1"));
    QTest::newRow("hardwaresync") << 4 << "hardwaresync" << QVariant(false);
}

void tst_zoHPCDisplayItem::newDisplayHasDefaults()
{
    QFETCH(int, col);
    QFETCH(QString, attribute);
    QFETCH(QVariant, value);

    const zoHPCDisplayItem item;

    QCOMPARE(int(item.data(col, Qt::EditRole).type()), int(value.type()));
    QCOMPARE(item.data(col, Qt::EditRole), value);
    QCOMPARE(item.getColumns().at(col), attribute);
    QDomDocument document;
    QCOMPARE(item.toXML(document, text("display")).attribute(attribute, text("missing")), value.toString());
}

void tst_zoHPCDisplayItem::textEndsWithABlank()
{
    const zoHPCDisplayItem item;

    QCOMPARE(item.text(0), text("Display "));
    QVERIFY(item.icon(0).isNull());
}

void tst_zoHPCDisplayItem::savesItsFourColumns()
{
    const zoHPCDisplayItem item;
    QDomDocument document;

    QCOMPARE(item.getColumns().size(), std::size_t(4));
    QCOMPARE(item.toXML(document, text("display")).attributes().count(), 4);
}

void tst_zoHPCDisplayItem::eyeSeparationIsColumnOne()
{
    zoHPCDisplayItem item;

    item.setEyeSeparation(62.5);

    QCOMPARE(item.getEyeSeparation(), 62.5);
    QCOMPARE(item.data(1, Qt::EditRole), QVariant(62.5));
}

void tst_zoHPCDisplayItem::cameraNameIsColumnTwo()
{
    zoHPCDisplayItem item;

    item.setString(2, text("Camera 7"));

    QCOMPARE(item.getCameraName(), text("Camera 7"));
}

void tst_zoHPCDisplayItem::loadingRebuildsThreeLevels()
{
    const auto display =
        loaded(text("<display eyeseparation='60'>"
                    "<window node='a'><viewport projection='p'/><viewport projection='q'/></window>"
                    "<window node='b'><viewport projection='r'/></window></display>"));

    QCOMPARE(display->getEyeSeparation(), 60.0);
    const QList<zoHPCWindowItem*> windows = display->children<zoHPCWindowItem>();
    QCOMPARE(windows.size(), 2);
    QCOMPARE(windows.at(0)->renderNode(), text("a"));
    QCOMPARE(windows.at(1)->renderNode(), text("b"));
    const QList<zoHPCViewportItem*> viewports = windows.at(0)->children<zoHPCViewportItem>();
    QCOMPARE(viewports.size(), 2);
    QVERIFY(viewports.at(0) && viewports.at(1));
    QCOMPARE(viewports.at(1)->getString(zoHPCViewportItem::Projection), text("q"));
    QCOMPARE(windows.at(1)->childCount(), 1);
    QCOMPARE(viewports.at(0)->childCount(), 0);
}

void tst_zoHPCDisplayItem::windowsAreFoundAtAnyDepth()
{
    const auto display =
        loaded(text("<display><group><rack><window node='a'/></rack></group><window node='b'/></display>"));

    QCOMPARE(display->childCount(), 2);
    QCOMPARE(display->children<zoHPCWindowItem>().at(0)->renderNode(), text("a"));
}

void tst_zoHPCDisplayItem::viewportsBelongToTheirWindows()
{
    const auto display = loaded(text("<display><viewport projection='stray'/><window node='a'>"
                                     "<group><viewport projection='p'/></group></window></display>"));

    QCOMPARE(display->childCount(), 1);
    QCOMPARE(display->child(0)->childCount(), 1);
}

void tst_zoHPCDisplayItem::attributesOfOtherLevelsStayAway()
{
    const auto display =
        loaded(text("<display eyeseparation='60' node='x' projection='y'><window/></display>"));
    QDomDocument document;

    const QDomElement element = display->toXML(document, text("display"));

    QCOMPARE(element.attributes().count(), 1);
    QCOMPARE(element.firstChildElement().attributes().count(), 0);
}

void tst_zoHPCDisplayItem::childrenOfOtherKindsAreNotWritten()
{
    zoHPCDisplayItem display;
    display.addChild(new QTreeWidgetItem);
    display.addChild(new zoHPCDisplayItem);
    display.addChild(new zoHPCWindowItem);
    QDomDocument document;

    const QDomElement element = display.toXML(document, text("display"));

    QCOMPARE(element.childNodes().count(), 1);
    QCOMPARE(element.firstChildElement().tagName(), text("window"));
}

void tst_zoHPCDisplayItem::roundTripIsAFixedPoint()
{
    zoHPCDisplayItem display;
    display.setString(zoHPCDisplayItem::Camera, QString::fromUtf8("Größe <&\"'> %1"));
    display.setEyeSeparation(64.123456789);
    auto* window = new zoHPCWindowItem;
    window->setRenderNode(text("render 1"));
    display.addChild(window);
    auto* viewport = new zoHPCViewportItem;
    viewport->setString(zoHPCViewportItem::Position, text("left"));
    viewport->update();
    window->addChild(viewport);

    const QString first = saved(display);
    const QString second = saved(*loaded(first));

    const auto copy = loaded(second);
    QCOMPARE(copy->getCameraName(), QString::fromUtf8("Größe <&\"'> %1"));
    QCOMPARE(copy->getEyeSeparation(), 64.123456789);
    QCOMPARE(copy->subChildren<zoHPCViewportItem>().first()->getDouble(zoHPCViewportItem::X2), 0.5);
    QCOMPARE(saved(*copy), second);
}

void tst_zoHPCDisplayItem::cloneHasTheWholeSubtree()
{
    const auto display =
        loaded(text("<display eyeseparation='60' user='2'><window node='a' fullscreen='false'>"
                    "<viewport projection='p' eye='left'/></window><window node='b'/></display>"));

    const std::unique_ptr<zoHPCDisplayItem> copy(display->clone());

    QDomDocument document;
    QCOMPARE(copy->getColumns().size(), std::size_t(4));
    QCOMPARE(copy->childCount(), 2);
    QCOMPARE(copy->getEyeSeparation(), 60.0);
    const zoHPCWindowItem* window = copy->children<zoHPCWindowItem>().first();
    QCOMPARE(window->renderNode(), text("a"));
    QCOMPARE(window->getBool(zoHPCWindowItem::FullScreen), false);
    QCOMPARE(window->children<zoHPCViewportItem>().first()->getString(zoHPCViewportItem::Eye), text("left"));
}

void tst_zoHPCDisplayItem::windowsInsideWindowsLoad()
{
    constexpr int DEPTH = 1000;
    QString xml = text("<display>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("<window node='n'>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("</window>");
    xml += text("</display>");

    const auto display = loaded(xml);

    QCOMPARE(display->childCount(), DEPTH);
    QCOMPARE(saved(*loaded(saved(*display))), saved(*display));
}

void tst_zoHPCDisplayItem::explodingNestIsRefused()
{
    constexpr int DEPTH = 500; // with a viewport each: 500 + 499 + ... of them
    QString xml = text("<display user='3'>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("<window node='n'><viewport/>");
    for (int i = 0; i < DEPTH; ++i)
        xml += text("</window>");
    xml += text("</display>");
    expectMessage(QtCriticalMsg, QRegularExpression(text("more than 100000 viewports")));

    const auto display = loaded(xml);

    QCOMPARE(display->childCount(), 0);
    QCOMPARE(display->getString(zoHPCDisplayItem::User), text("3"));
}

ZO_TEST_MAIN(tst_zoHPCDisplayItem)
#include "tst_zoHPCDisplayItem.moc"
