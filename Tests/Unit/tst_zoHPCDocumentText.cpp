#include "zoRandomConfiguration.h"
#include "zoTestCase.h"

#include <zoHPCDocumentText.h>
#include <zoHPCDocumentWriter.h>

#include <QApplication>
#include <QDomDocument>
#include <QProcess>

#include <functional>

namespace
{
QString nested(int depth)
{
    return QStringLiteral("<a>").repeated(depth) + QStringLiteral("</a>").repeated(depth);
}

// As deep, while what only looks like it closes each element at once.
QString nestedBehindSigns(int depth)
{
    return QStringLiteral("<a b='/>'><!--</a>--><![CDATA[</a>]]><?c </a>?>").repeated(depth) +
           QStringLiteral("</a>").repeated(depth);
}

// A document that shows every ordering rule, filled in an order that is none of them.
QDomDocument orderedSample()
{
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("cluster"));
    document.appendChild(root);
    for (const char* name : {"zebra", "booking", "alpha", "version"})
        root.setAttribute(QLatin1String(name), QStringLiteral("1"));
    QDomElement master = document.createElement(QStringLiteral("master"));
    root.appendChild(master);
    for (const char* name : {"scenecompression", "homogeneous", "nodesfile", "a"})
        master.setAttribute(QLatin1String(name), QStringLiteral("1"));
    QDomElement node = document.createElement(QStringLiteral("node"));
    master.appendChild(node);
    for (const char* name : {"serviceport", "enabled", "rendernode", "name", "Zone"})
        node.setAttribute(QLatin1String(name), QStringLiteral("1"));
    QDomElement window = document.createElement(QStringLiteral("window"));
    root.appendChild(window);
    for (const char* name : {"fullscreen", "height", "width", "y", "x", "screen", "node", "extra", "another"})
        window.setAttribute(QLatin1String(name), QStringLiteral("1"));
    QDomElement projection = document.createElement(QStringLiteral("projection"));
    root.appendChild(projection);
    for (const char* name : {"edgeblending", "columns", "rows", "distance", "type", "name", "overlapx"})
        projection.setAttribute(QLatin1String(name), QStringLiteral("1"));
    return document;
}
} // namespace

// The text form of documents.
class tst_zoHPCDocumentText final : public zoTestCase
{
    Q_OBJECT

private slots:
    void formIsThatOfTheDom_data();
    void formIsThatOfTheDom();
    void displaysAreWrittenAsTheirElements_data();
    void displaysAreWrittenAsTheirElements();
    void attributesComeInTheirFixedOrder();
    void emptyAttributeOfTheDisplaySectionIsLeftOut_data();
    void emptyAttributeOfTheDisplaySectionIsLeftOut();
    void hashSeedDoesNotChangeTheBytes_data();
    void hashSeedDoesNotChangeTheBytes();
    void charactersThatXmlCannotHoldAreLeftOut();
    void specialCharactersComeBack_data();
    void specialCharactersComeBack();
    void attributeThatIsNoXmlNameIsLeftOutAndReported_data();
    void attributeThatIsNoXmlNameIsLeftOutAndReported();
    void everyWrittenNameIsReadAgain_data();
    void everyWrittenNameIsReadAgain();
    void textThatIsNotWellFormedIsAnEmptyDocument_data();
    void textThatIsNotWellFormedIsAnEmptyDocument();
    void everyTruncationIsAnEmptyDocument();
    void errorNamesLineAndColumn();
    void emptyTextIsSilent();
    void thousandLevelsAreReadAndWritten();
    void nestingBeyondTheStackIsRefused();
    void depthIsTheSameFurtherDownTheStack();
    void angleBracketsInsideValuesAndCommentsDoNotCountAsNesting();
    void entitiesDoNotExpandWithoutBound();
    void whatOldToolsWroteIsRead_data();
    void whatOldToolsWroteIsRead();
    void documentTypeHasLimits_data();
    void documentTypeHasLimits();
    void depthIsTheSameOnEveryStack();
    void attributesOfAnElementHaveALimit();
};

void tst_zoHPCDocumentText::formIsThatOfTheDom_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty-element") << "<a/>";
    QTest::newRow("one-attribute") << "<a b=\"1\"/>";
    QTest::newRow("children") << "<a><b/><c d=\"2\"><e/></c></a>";
    QTest::newRow("deep-then-shallow") << "<a><b><c><d/></c></b><e/></a>";
    QTest::newRow("text") << "<a><b>text</b></a>";
    QTest::newRow("mixed") << "<a>one<b/>two<c>three</c></a>";
    QTest::newRow("escapes-in-text") << "<a>&lt;&gt;&amp;\"'</a>";
    QTest::newRow("escapes-in-attribute") << "<a b=\"&lt;&gt;&amp;&quot;'&#xa;&#x9;&#xd;\"/>";
    QTest::newRow("cdata") << "<a><![CDATA[<x>]]></a>";
    QTest::newRow("comment") << "<a><!-- c --><b/></a>";
    QTest::newRow("undeclared-prefix") << "<a x:b=\"1\"><y:c/></a>";
    QTest::newRow("declared-prefix") << "<a xmlns:y=\"1\"><y:c/></a>";
}

void tst_zoHPCDocumentText::formIsThatOfTheDom()
{
    QFETCH(QString, text);
    QDomDocument document;
    QVERIFY(zoHPCDocumentText::parse(text, document));

    const QString written = zoHPCDocumentText::toText(document);

    QCOMPARE(written, document.toString(1));
}

void tst_zoHPCDocumentText::displaysAreWrittenAsTheirElements_data()
{
    QTest::addColumn<uint>("seed");

    for (uint seed = 1; seed <= 20; ++seed)
        QTest::addRow("%u", seed) << seed;
}

void tst_zoHPCDocumentText::displaysAreWrittenAsTheirElements()
{
    QFETCH(uint, seed);
    const zoRandomConfiguration configuration(seed);
    QDomDocument document;
    document.appendChild(document.createElement(QStringLiteral("cluster")));
    configuration.displays().saveToXML(document);

    zoHPCDocumentWriter writer;
    writer.openElement(QStringLiteral("cluster"));
    zoHPCDocumentText::appendDisplays(configuration.displays(), zoHPCDocumentText::Tiles::Whole, writer);
    writer.closeElement();

    QCOMPARE(writer.takeText(), zoHPCDocumentText::toText(document));
}

void tst_zoHPCDocumentText::attributesComeInTheirFixedOrder()
{
    const QString written = zoHPCDocumentText::toText(orderedSample());

    QCOMPARE(written, QStringLiteral(
                          "<cluster version=\"1\" booking=\"1\" alpha=\"1\" zebra=\"1\">\n"
                          " <master nodesfile=\"1\" a=\"1\" homogeneous=\"1\" scenecompression=\"1\">\n"
                          "  <node name=\"1\" Zone=\"1\" enabled=\"1\" rendernode=\"1\" serviceport=\"1\"/>\n"
                          " </master>\n"
                          " <window node=\"1\" screen=\"1\" x=\"1\" y=\"1\" width=\"1\" height=\"1\""
                          " fullscreen=\"1\" another=\"1\" extra=\"1\"/>\n"
                          " <projection name=\"1\" type=\"1\" rows=\"1\" columns=\"1\" overlapx=\"1\""
                          " distance=\"1\" edgeblending=\"1\"/>\n"
                          "</cluster>\n"));
}

void tst_zoHPCDocumentText::emptyAttributeOfTheDisplaySectionIsLeftOut_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<bool>("leftOut");

    for (const char* tag : {"projection", "display", "window", "viewport"})
        QTest::newRow(tag) << QString::fromLatin1(tag) << true;
    // A node without a name reads as "localhost", one with an empty name does not.
    for (const char* tag : {"cluster", "master", "network", "node"})
        QTest::newRow(tag) << QString::fromLatin1(tag) << false;
}

void tst_zoHPCDocumentText::emptyAttributeOfTheDisplaySectionIsLeftOut()
{
    QFETCH(QString, tag);
    QFETCH(bool, leftOut);
    QDomDocument document;
    QDomElement element = document.createElement(tag);
    element.setAttribute(QStringLiteral("name"), QString());
    document.appendChild(element);

    const QString written = zoHPCDocumentText::toText(document);

    QCOMPARE(written, (leftOut ? QStringLiteral("<%1/>\n") : QStringLiteral("<%1 name=\"\"/>\n")).arg(tag));
}

void tst_zoHPCDocumentText::hashSeedDoesNotChangeTheBytes_data()
{
    QTest::addColumn<QString>("seed");

    QTest::newRow("seed-0") << "0";
    QTest::newRow("seed-1") << "1";
    QTest::newRow("seed-42") << "42";
}

void tst_zoHPCDocumentText::hashSeedDoesNotChangeTheBytes()
{
    QFETCH(QString, seed);
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_HASH_SEED"), seed);
    other.setProcessEnvironment(environment);

    other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--print-sample")});
    QVERIFY(other.waitForFinished());

    QCOMPARE(other.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(other.readAllStandardOutput()), zoHPCDocumentText::toText(orderedSample()));
}

void tst_zoHPCDocumentText::charactersThatXmlCannotHoldAreLeftOut()
{
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("a"));
    const QChar lone(0xd800);
    root.setAttribute(QStringLiteral("b"),
                      QStringLiteral("x\x01y") + lone + QStringLiteral("z") + QChar(0xfffe));
    document.appendChild(root);

    const QString written = zoHPCDocumentText::toText(document);

    QCOMPARE(written, QStringLiteral("<a b=\"xyz\"/>\n"));
}

void tst_zoHPCDocumentText::specialCharactersComeBack_data()
{
    QTest::addColumn<QString>("value");

    QTest::newRow("markup") << "<a href=\"x\">&amp;</a>";
    QTest::newRow("white-space") << " \ttab\nnewline\rreturn  ";
    QTest::newRow("cdata-end") << "]]>";
    QTest::newRow("umlauts") << QString::fromUtf8("M\xc3\xbcnchen");
    QTest::newRow("outside-the-basic-plane") << QString::fromUtf8("\xf0\x9f\x96\xa5 wall");
    QTest::newRow("placeholder") << "%1 %2";
}

void tst_zoHPCDocumentText::specialCharactersComeBack()
{
    QFETCH(QString, value);
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("a"));
    root.setAttribute(QStringLiteral("b"), value);
    document.appendChild(root);

    QDomDocument again;
    QVERIFY(zoHPCDocumentText::parse(zoHPCDocumentText::toText(document), again));

    QCOMPARE(again.documentElement().attribute(QStringLiteral("b")), value);
}

void tst_zoHPCDocumentText::attributeThatIsNoXmlNameIsLeftOutAndReported_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name :
         {"two words", "1st", "-a", "", ":", ":a", "a:", "a:b:c", "a:1", "a=", "a\"", "<", "a/"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_zoHPCDocumentText::attributeThatIsNoXmlNameIsLeftOutAndReported()
{
    QFETCH(QString, name);
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("a"));
    root.setAttribute(name, QStringLiteral("1"));
    root.setAttribute(QStringLiteral("good"), QStringLiteral("2"));
    document.appendChild(root);
    expectMessage(QtCriticalMsg, QRegularExpression(QRegularExpression::escape(name)));

    const QString written = zoHPCDocumentText::toText(document);

    QCOMPARE(written, QStringLiteral("<a good=\"2\"/>\n"));
}

void tst_zoHPCDocumentText::everyWrittenNameIsReadAgain_data()
{
    QTest::addColumn<QString>("name");

    for (const char* name : {"a", "A-1", "_", "a.b", "x:y", "x:_y.1", "xml:lang", "w\xc3\xa4nde"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void tst_zoHPCDocumentText::everyWrittenNameIsReadAgain()
{
    QFETCH(QString, name);
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("a"));
    root.setAttribute(name, QStringLiteral("1"));
    document.appendChild(root);

    QDomDocument again;
    QVERIFY(zoHPCDocumentText::parse(zoHPCDocumentText::toText(document), again));

    QCOMPARE(again.documentElement().attribute(name), QStringLiteral("1"));
}

void tst_zoHPCDocumentText::textThatIsNotWellFormedIsAnEmptyDocument_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("no-markup") << "hello";
    QTest::newRow("blanks-only") << "  \n";
    QTest::newRow("unclosed") << "<cluster><master/>";
    QTest::newRow("wrong-end") << "<cluster><master></cluster></master>";
    QTest::newRow("two-roots") << "<cluster/><cluster/>";
    QTest::newRow("rubbish-behind") << "<cluster><master/></cluster>x";
    QTest::newRow("attribute-without-quotes") << "<cluster a=1/>";
    QTest::newRow("odd-name") << "<cluster 1a=\"1\"/>";
    QTest::newRow("less-than-in-an-attribute") << "<cluster a=\"<\"/>";
}

void tst_zoHPCDocumentText::textThatIsNotWellFormedIsAnEmptyDocument()
{
    QFETCH(QString, text);
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("line \\d+, column \\d+: .")));
    QDomDocument document;

    const bool read = zoHPCDocumentText::parse(text, document);

    QVERIFY(!read);
    QVERIFY(document.documentElement().isNull());
    QVERIFY(!document.hasChildNodes());
}

void tst_zoHPCDocumentText::everyTruncationIsAnEmptyDocument()
{
    const QString whole = zoHPCDocumentText::toText(orderedSample()).trimmed();

    for (int length = 1; length < whole.size(); ++length) {
        expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("line \\d+, column \\d+: .")));
        QDomDocument document;
        QVERIFY2(!zoHPCDocumentText::parse(whole.left(length), document), qPrintable(whole.left(length)));
        QVERIFY(!document.hasChildNodes());
    }
}

void tst_zoHPCDocumentText::errorNamesLineAndColumn()
{
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("^Cluster config line 3, column \\d+: .+")));
    QDomDocument document;

    QVERIFY(!zoHPCDocumentText::parse(QStringLiteral("<cluster>\n <master/>\n <network>\n</cluster>")
                                          .replace(QStringLiteral("<network>"), QStringLiteral("<network<>")),
                                      document));
}

void tst_zoHPCDocumentText::emptyTextIsSilent()
{
    QDomDocument document;

    QVERIFY(!zoHPCDocumentText::parse(QString(), document));

    QVERIFY(!document.hasChildNodes());
    QVERIFY(messages().isEmpty());
}

void tst_zoHPCDocumentText::thousandLevelsAreReadAndWritten()
{
    QDomDocument document;
    QVERIFY(zoHPCDocumentText::parse(nested(1000), document));

    const QString written = zoHPCDocumentText::toText(document);

    QDomDocument again;
    QVERIFY(zoHPCDocumentText::parse(written, again));
    QCOMPARE(zoHPCDocumentText::toText(again), written);
    QCOMPARE(written.count(QStringLiteral("</a>")), 999);
}

void tst_zoHPCDocumentText::nestingBeyondTheStackIsRefused()
{
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("line 2, column \\d+: more than \\d+ elements")));
    QDomDocument document;

    QVERIFY(!zoHPCDocumentText::parse(QStringLiteral("\n") + nested(zoHPCDocumentText::maximumDepth() + 1),
                                      document));

    QVERIFY(!document.hasChildNodes());
}

void tst_zoHPCDocumentText::depthIsTheSameFurtherDownTheStack()
{
    const int here = zoHPCDocumentText::maximumDepth();
    const std::function<int(int)> further = [&further](int levels) {
        volatile char used[1024] = {};
        return levels > 0 ? further(levels - 1) + used[0] : zoHPCDocumentText::maximumDepth();
    };

    QCOMPARE(further(500), here);
}

void tst_zoHPCDocumentText::angleBracketsInsideValuesAndCommentsDoNotCountAsNesting()
{
    const QString many = QStringLiteral("<x>").repeated(zoHPCDocumentText::maximumDepth() + 10);
    QDomDocument document;

    QVERIFY(zoHPCDocumentText::parse(
        QStringLiteral("<a><!--%1--><![CDATA[%1]]><b c='>' d=\"/>\"/></a>").arg(many), document));
}

void tst_zoHPCDocumentText::entitiesDoNotExpandWithoutBound()
{
    QString text = QStringLiteral("<!DOCTYPE a [<!ENTITY e0 \"ha\">");
    for (int i = 1; i < 30; ++i)
        text += QStringLiteral("<!ENTITY e%1 \"&e%2;&e%2;\">").arg(i).arg(i - 1);
    text += QStringLiteral("]><a>&e29;</a>");
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("line 1, column \\d+: .")));
    QDomDocument document;

    QVERIFY(!zoHPCDocumentText::parse(text, document));
}

// What the toolkit's own reader of texts takes, and as it takes it: a stricter one refused these files.
void tst_zoHPCDocumentText::whatOldToolsWroteIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");

    QTest::newRow("xml-1.1") << "<?xml version=\"1.1\"?><a b=\"1\"/>"
                             << "<a b=\"1\"/>\n";
    QTest::newRow("unknown-encoding") << "<?xml version=\"1.0\" encoding=\"nope\"?><a/>"
                                      << "<a/>\n";
    QTest::newRow("other-encoding") << QString::fromUtf8(
                                           "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a b=\"\xc3\xa9\"/>")
                                    << QString::fromUtf8("<a b=\"\xc3\xa9\"/>\n");
    QTest::newRow("attribute-twice") << "<a b=\"1\" b=\"2\"/>"
                                     << "<a b=\"2\"/>\n";
    QTest::newRow("no-blank-between-attributes") << "<a b=\"1\"c='2'/>"
                                                 << "<a b=\"1\" c=\"2\"/>\n";
    QTest::newRow("newline-in-an-attribute") << "<a b=\"1\n2\t3\r\n4\"/>"
                                             << "<a b=\"1&#xa;2&#x9;3&#xd;&#xa;4\"/>\n";
    QTest::newRow("unknown-entity") << "<a b=\"&nope;\" c=\"1\">&nope;</a>"
                                    << "<a b=\"\" c=\"1\"/>\n";
    QTest::newRow("control-character") << "<a b=\"x\x01\"/>"
                                       << "<a b=\"x\"/>\n";
    QTest::newRow("odd-names") << "<a.b-c:d _e.f:g=\"1\"/>"
                               << "<a.b-c:d _e.f:g=\"1\"/>\n";
    QTest::newRow("long-name") << QStringLiteral("<a %1=\"1\"/>").arg(QString(5000, 'b'))
                               << QStringLiteral("<a %1=\"1\"/>\n").arg(QString(5000, 'b'));
    QTest::newRow("byte-order-mark") << QString(QChar(QChar::ByteOrderMark)) + "<a/>"
                                     << "<a/>\n";
    QTest::newRow("entity") << "<!DOCTYPE a [<!ENTITY e \"12\">]><a b=\"&e;\">&e;</a>"
                            << "<a b=\"12\">12</a>\n";
    QTest::newRow("document-type")
        << "<!DOCTYPE a SYSTEM \"a.dtd\" [<!-- <b/> --><?p q?><!NOTATION n SYSTEM \"n\">"
           "<!ENTITY u SYSTEM \"u\" NDATA n><!ENTITY x SYSTEM \"x\"><!ELEMENT a ANY>"
           "<!ATTLIST a d CDATA \"default\">]><a e=\"1\">&x;2</a>"
        << "<!-- <b/> -->\n<a e=\"1\">2</a>\n";
    QTest::newRow("reference") << "<a b=\"&#65;&#x42;\">&#x1f600;</a>"
                               << QStringLiteral("<a b=\"AB\">%1</a>\n").arg(QChar(0xf600));
    QTest::newRow("reference-beyond-65536")
        << "<!-- &#66304; --><a b=\"&#66369;\"><![CDATA[&#x10341;]]>&#x10341;</a>"
        << QStringLiteral("<!-- &#66304; -->\n<a b=\"%1\"><![CDATA[&#x10341;]]>%1</a>\n").arg(QChar(0x341));
    QTest::newRow("blanks-between-elements") << "<a> <b> </b>\n<c>&#32;</c> x <d/> </a>"
                                             << "<a>\n <b/>\n <c/> x <d/>\n</a>\n";
    QTest::newRow("namespaces") << "<a xmlns=\"u\" xmlns:p=\"v\" p:b=\"1\" q:b=\"2\"><p:c/></a>"
                                << "<a p:b=\"1\" q:b=\"2\" xmlns=\"u\" xmlns:p=\"v\">\n <p:c/>\n</a>\n";
    QTest::newRow("element-in-an-entity") << "<!DOCTYPE a [<!ENTITY e \"<b/>\">]><a>&e;&e;</a>"
                                          << "<a>\n <b/>\n <b/>\n</a>\n";
}

void tst_zoHPCDocumentText::whatOldToolsWroteIsRead()
{
    QFETCH(QString, text);
    QFETCH(QString, written);
    QDomDocument document;

    QVERIFY(zoHPCDocumentText::parse(text, document));

    QCOMPARE(zoHPCDocumentText::toText(document), written);
}

void tst_zoHPCDocumentText::documentTypeHasLimits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isRead");

    const auto declarations = [](int count) {
        QString text = QStringLiteral("<!DOCTYPE a [");
        for (int i = 0; i < count; ++i)
            text += QStringLiteral("<!ENTITY e%1 \"x\">").arg(i);
        return text + QStringLiteral("]><a/>");
    };
    QTest::newRow("declarations") << declarations(256) << true;
    // The toolkit takes the square of their number: six minutes for 50,000.
    QTest::newRow("one-declaration-too-many") << declarations(257) << false;
    QTest::newRow("many-declarations") << declarations(50000) << false;
    const auto references = [](int count) {
        return QStringLiteral("<!DOCTYPE a [<!ENTITY e \"x\">]><a>&#65;&amp;%1</a>")
            .arg(QStringLiteral("&e;").repeated(count));
    };
    QTest::newRow("references") << references(1000) << true;
    QTest::newRow("one-reference-too-many") << references(1001) << false;
    QTest::newRow("references-without-declarations")
        << QStringLiteral("<a>%1</a>").arg(QStringLiteral("&amp;&e;").repeated(2000)) << true;
    const auto value = [](int length) {
        return QStringLiteral("<!DOCTYPE a [<!ENTITY e \"%1\">]><a>&e;</a>").arg(QString(length, 'x'));
    };
    QTest::newRow("value") << value(4096) << true;
    QTest::newRow("value-too-long") << value(4097) << false;
    const auto attributes = [](int count) {
        QString text = QStringLiteral("<!DOCTYPE a [");
        for (int i = 0; i < count; ++i)
            text += QStringLiteral("<!ATTLIST a b%1 CDATA \"x\">").arg(i);
        return text + QStringLiteral("]><a/>");
    };
    QTest::newRow("attributes") << attributes(256) << true;
    QTest::newRow("one-attribute-too-many") << attributes(257) << false;
    // The toolkit recurses over these.
    QTest::newRow("brackets")
        << QStringLiteral("<!DOCTYPE a [<!ELEMENT a %1>]><a/>").arg(QString(500000, '(')) << false;
    QTest::newRow("brackets-of-parameters")
        << QStringLiteral("<!DOCTYPE a [<!ENTITY % p \"%1\"><!ELEMENT a %2>]><a/>")
               .arg(QString(4000, '('), QStringLiteral("%p;").repeated(200))
        << false;
}

void tst_zoHPCDocumentText::documentTypeHasLimits()
{
    QFETCH(QString, text);
    QFETCH(bool, isRead);
    if (!isRead)
        expectMessage(QtCriticalMsg,
                      QRegularExpression(QStringLiteral("the document type declares too much")));
    QDomDocument document;

    QCOMPARE(zoHPCDocumentText::parse(text, document), isRead);

    QCOMPARE(document.documentElement().isNull(), !isRead);
}

// The limit once followed from the stack of the process: what one program saved another one refused.
void tst_zoHPCDocumentText::depthIsTheSameOnEveryStack()
{
    for (const char* kibibytes : {"4096", "16384"}) {
        QProcess other;
        other.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"),
                     QStringLiteral("ulimit -s %1 && exec \"$0\" --print-depth").arg(kibibytes),
                     QCoreApplication::applicationFilePath()});
        QVERIFY(other.waitForFinished());

        QCOMPARE(other.exitCode(), 0);
        QCOMPARE(other.readAllStandardOutput(), QByteArray::number(zoHPCDocumentText::maximumDepth()) + ' ');
    }
}

void tst_zoHPCDocumentText::attributesOfAnElementHaveALimit()
{
    const auto element = [](int count, const char* end) {
        QString text = QStringLiteral("<a");
        for (int i = 0; i < count; ++i)
            text += QStringLiteral(" b%1=\"\"").arg(i);
        return text + QLatin1String(end);
    };
    QDomDocument document;
    QVERIFY(zoHPCDocumentText::parse(element(1000, "/>"), document));
    QCOMPARE(document.documentElement().attributes().count(), 1000);

    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("an element has more than 1000 attributes")));
    QVERIFY(!zoHPCDocumentText::parse(element(1001, "/>"), document));
    // Each of them was compared with all others: minutes, and the test would run into its time limit.
    expectMessage(QtCriticalMsg,
                  QRegularExpression(QStringLiteral("an element has more than 1000 attributes")));
    QVERIFY(!zoHPCDocumentText::parse(element(100000, "/>"), document));
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("line 1, column \\d+: .")));
    QVERIFY(!zoHPCDocumentText::parse(element(100000, "<"), document));
}

int main(int argc, char** argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--print-depth") == 0) {
        // As deep as the limit says, on this stack.
        const int depth = zoHPCDocumentText::maximumDepth();
        QDomDocument document;
        if (!zoHPCDocumentText::parse(nested(depth), document) ||
            zoHPCDocumentText::toText(document).isEmpty() ||
            !zoHPCDocumentText::parse(nestedBehindSigns(depth), document))
            return 1;
        printf("%d ", depth);
        return 0;
    }
    if (argc == 2 && qstrcmp(argv[1], "--print-sample") == 0) {
        const QCoreApplication application(argc, argv);
        fputs(zoHPCDocumentText::toText(orderedSample()).toUtf8().constData(), stdout);
        return 0;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    tst_zoHPCDocumentText test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_zoHPCDocumentText.moc"
