#include "zoHPCConfiguration.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCGrammar.h"
#include "zoHPCHostsSection.h"
#include "zoHPCOption.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoTestCase.h"

#include <zoClusterTags.h>

#include <QApplication>
#include <QDomDocument>
#include <QSet>
#include <QTest>

using Type = zoHPCGrammar::Type;

// The grammar against those who read: what it calls an attribute is one of theirs, what it takes as a value they read as
// that value.
class tst_zoHPCGrammar final : public zoTestCase
{
    Q_OBJECT

private slots:
    void elementsAreThoseOfDocuments();
    void attributesAreThoseOfTheItems_data();
    void attributesAreThoseOfTheItems();
    void everyOptionHasItsElement();
    void typesAreThoseOfTheDefaults_data();
    void typesAreThoseOfTheDefaults();
    void valuesAreReadAsMeant_data();
    void valuesAreReadAsMeant();
    void limitsHold_data();
    void limitsHold();

private:
    static const zoHPCGrammar::Attribute* attribute(const char* tag, const char* name);
};

const zoHPCGrammar::Attribute* tst_zoHPCGrammar::attribute(const char* tag, const char* name)
{
    for (const zoHPCGrammar::Variant& variant : zoHPCGrammar::element(QString::fromLatin1(tag))->variants) {
        if (const zoHPCGrammar::Attribute* const found = variant.attribute(QString::fromLatin1(name)))
            return found;
    }
    return nullptr;
}

void tst_zoHPCGrammar::elementsAreThoseOfDocuments()
{
    using namespace zoClusterTags;
    QStringList tags;
    // Without its namespace, Display is X11's.
    for (const QLatin1String tag :
         {Cluster, Master, Network, Node, Projection, zoClusterTags::Display, Window, Viewport})
        tags << tag;

    QCOMPARE(zoHPCGrammar::tags(), tags);
    QCOMPARE(zoHPCGrammar::element(QStringLiteral("Window")), nullptr);
    for (const zoHPCGrammar::Element& element : zoHPCGrammar::elements()) {
        for (const QString& parent : element.parents)
            QVERIFY(tags.contains(parent));
    }
}

void tst_zoHPCGrammar::attributesAreThoseOfTheItems_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QStringList>("columns");
    QTest::addColumn<QStringList>("more"); // that the import of legacy configurations writes

    const auto names = [](const zoHPCTreeWidgetItem::ColumnMap& columns) {
        return zoHPCTreeWidgetItem::attributeOrder(columns);
    };
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all()) {
        const QString word = QString::fromLatin1(type.value);
        const QStringList more = type.kind == zoHPCProjectionType::Kind::Wall
                                     ? QStringList{"offsetx", "offsety", "tilewidth", "tileheight"}
                                     : QStringList();
        QTest::newRow(type.value) << QStringLiteral("projection") << word
                                  << names(zoHPCProjectionItem::columns(word)) << more;
    }
    QTest::newRow("display") << QStringLiteral("display") << QString() << names(zoHPCDisplayItem::columns())
                             << QStringList();
    QTest::newRow("window") << QStringLiteral("window") << QString() << names(zoHPCWindowItem::columns())
                            << QStringList();
    QTest::newRow("viewport") << QStringLiteral("viewport") << QString()
                              << names(zoHPCViewportItem::columns()) << QStringList{"rotate"};
}

void tst_zoHPCGrammar::attributesAreThoseOfTheItems()
{
    QFETCH(QString, tag);
    QFETCH(QString, word);
    QFETCH(QStringList, columns);
    QFETCH(QStringList, more);

    QCOMPARE(zoHPCGrammar::element(tag)->variant(word)->names(), columns + more);
}

void tst_zoHPCGrammar::everyOptionHasItsElement()
{
    using namespace zoHPCOption;
    QSet<QString> options;
    for (const char* tag : {"master", "network", "node"}) {
        const QStringList names = zoHPCGrammar::element(QString::fromLatin1(tag))->variants.front().names();
        for (const QString& name : names)
            options.insert(name);
    }
    options.remove(zoClusterTags::NameAttribute);

    QCOMPARE(options, (QSet<QString>{Enabled, RenderNode, NetworkType, LinkSpeed, SceneCompression,
                                     ImageCompression, Description, IbDevice, IbPort, ServicePort,
                                     PixelFormat, StartStopAction, ParallelFrames, FramePipelineLength,
                                     StillFrameSupersampling, NodesFile, Encrypted, Homogeneous}));
}

void tst_zoHPCGrammar::typesAreThoseOfTheDefaults_data()
{
    QTest::addColumn<QString>("tag");

    for (const char* tag : {"projection", "display", "window", "viewport"})
        QTest::newRow(tag) << QString::fromLatin1(tag);
}

void tst_zoHPCGrammar::typesAreThoseOfTheDefaults()
{
    QFETCH(QString, tag);
    zoHPCProjectionItem projection({}, zoHPCProjectionType::Kind::Other);
    zoHPCDisplayItem display;
    zoHPCWindowItem window;
    zoHPCViewportItem viewport;
    const zoHPCTreeWidgetItem* item = &projection;
    for (zoHPCTreeWidgetItem* each :
         {static_cast<zoHPCTreeWidgetItem*>(&display), static_cast<zoHPCTreeWidgetItem*>(&window),
          static_cast<zoHPCTreeWidgetItem*>(&viewport)}) {
        if ((each == &display && tag == QLatin1String("display")) ||
            (each == &window && tag == QLatin1String("window")) ||
            (each == &viewport && tag == QLatin1String("viewport")))
            item = each;
    }
    int typed = 0;
    for (const auto& [column, name] : item->getColumns()) {
        const QVariant value = item->data(column, Qt::EditRole);
        const zoHPCGrammar::Attribute* const rule = attribute(tag.toLatin1(), name.toLatin1());
        QVERIFY(rule);
        if (value.type() == QVariant::Int)
            QVERIFY2(rule->type == Type::Integer, qPrintable(name));
        else if (value.type() == QVariant::Double)
            QVERIFY2(rule->type == Type::Number, qPrintable(name));
        else if (value.type() == QVariant::Bool)
            QVERIFY2(rule->type == Type::Truth, qPrintable(name));
        else
            continue;
        ++typed;
        QVERIFY2(rule->accepts(value.toString()), qPrintable(name));
    }
    QVERIFY(typed > 1);
}

void tst_zoHPCGrammar::valuesAreReadAsMeant_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QVariant>("meaning"); // what the columns read

    const auto row = [](const char* value, Type type, bool accepted, const QVariant& meaning) {
        QTest::newRow(qPrintable(QStringLiteral("%1 of %2").arg(QString::fromLatin1(value)).arg(int(type))))
            << QString::fromLatin1(value) << int(type) << accepted << meaning;
    };
    row("0", Type::Integer, true, 0);
    row("2147483647", Type::Integer, true, 2147483647);
    row("-2147483648", Type::Integer, true, -2147483647 - 1);
    row("2147483648", Type::Integer, false, QVariant());
    row("+5", Type::Integer, true, 5);
    row(" 5 ", Type::Integer, true, 5);
    row("5.0", Type::Integer, false, 0);
    row("5px", Type::Integer, false, 0);
    row("", Type::Integer, false, 0);
    row("0x10", Type::Integer, false, 0);
    row("65.5", Type::Number, true, 65.5);
    row("65,5", Type::Number, false, 0.0);
    row("1e3", Type::Number, true, 1000.0);
    row(".5", Type::Number, true, 0.5);
    row("5.", Type::Number, true, 5.0);
    row("", Type::Number, false, 0.0);
    row("nan", Type::Number, false, QVariant());
    row("inf", Type::Number, false, QVariant());
    row("1e999", Type::Number, false, QVariant());
    row("true", Type::Truth, true, true);
    row("TRUE", Type::Truth, true, true);
    row("1", Type::Truth, true, true);
    row("false", Type::Truth, true, false);
    row("False", Type::Truth, true, false);
    row("0", Type::Truth, true, false);
    // Words that would be read as their opposite.
    row("no", Type::Truth, false, true);
    row("off", Type::Truth, false, true);
    row("falsch", Type::Truth, false, true);
}

void tst_zoHPCGrammar::valuesAreReadAsMeant()
{
    QFETCH(QString, value);
    QFETCH(int, type);
    QFETCH(bool, accepted);
    QFETCH(QVariant, meaning);
    zoHPCGrammar::Attribute rule;
    rule.type = Type(type);

    QCOMPARE(rule.accepts(value), accepted);
    if (!meaning.isValid())
        return;
    zoHPCWindowItem item;
    item.setData(zoHPCWindowItem::X, Qt::EditRole, value);
    QCOMPARE(rule.type == Type::Integer  ? QVariant(item.getInt(zoHPCWindowItem::X))
             : rule.type == Type::Number ? QVariant(item.getDouble(zoHPCWindowItem::X))
                                         : QVariant(item.getBool(zoHPCWindowItem::X)),
             meaning);
}

void tst_zoHPCGrammar::limitsHold_data()
{
    QTest::addColumn<QByteArray>("tag");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("accepted");

    const auto row = [](const char* tag, const char* name, const char* value, bool accepted) {
        QTest::newRow(qPrintable(QStringLiteral("%1-%2").arg(name, value)))
            << QByteArray(tag) << QByteArray(name) << QString::fromLatin1(value) << accepted;
    };
    row("network", "serviceport", "0", false);
    row("network", "serviceport", "1", true);
    row("network", "serviceport", "65535", true);
    row("network", "serviceport", "65536", false);
    row("network", "serviceport", "", true);
    row("window", "screen", "-3", false);
    row("window", "screen", "-2", true);
    row("window", "screen", "99", true);
    row("window", "width", "", false);
    row("network", "speed", "", true);
    row("network", "speed", "40g10g", true);
    row("network", "speed", "40G", false);
    row("node", "enabled", "false", true);
    row("node", "enabled", "False", false);
    row("node", "enabled", "0", false);
    row("viewport", "eye", "greenmagenta", true);
    row("viewport", "eye", "both", false);
    row("viewport", "position", "", false);
    row("cluster", "version", "0", true);
    row("cluster", "version", "1", true);
    row("cluster", "version", "2", false);
}

void tst_zoHPCGrammar::limitsHold()
{
    QFETCH(QByteArray, tag);
    QFETCH(QByteArray, name);
    QFETCH(QString, value);
    QFETCH(bool, accepted);

    const zoHPCGrammar::Attribute* const rule = attribute(tag.constData(), name.constData());
    QVERIFY(rule);
    QCOMPARE(rule->accepts(value), accepted);
}

ZO_TEST_MAIN(tst_zoHPCGrammar)
#include "tst_zoHPCGrammar.moc"
