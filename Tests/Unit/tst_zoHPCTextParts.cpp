#include "zoHPCTextParts.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QTest>

using Kind = zoHPCTextParts::Kind;

// The parts of a text: what they are, where they begin, what they hold.
class tst_zoHPCTextParts final : public zoTestCase
{
    Q_OBJECT

private slots:
    void partsHaveTheirPlaces();
    void partIsRead_data();
    void partIsRead();
    void valueIsDecoded_data();
    void valueIsDecoded();
    void lastOneOfRepeatedAttributesCounts();
    void placesCountLines_data();
    void placesCountLines();
    void textsInPiecesEnd();

private:
    // Each part in a word: its kind or tag, its parent, its attributes.
    static QStringList told(const zoHPCTextParts& text);
};

QStringList tst_zoHPCTextParts::told(const zoHPCTextParts& text)
{
    QStringList result;
    for (const zoHPCTextParts::Part& part : text.parts()) {
        QString word = part.kind == Kind::Element   ? part.tag
                       : part.kind == Kind::Text    ? QStringLiteral("TEXT")
                       : part.kind == Kind::Comment ? QStringLiteral("COMMENT")
                                                    : QStringLiteral("INSTRUCTION");
        word += QStringLiteral("@%1^%2").arg(QString::number(part.offset), QString::number(part.parent));
        for (const zoHPCTextParts::Attribute& attribute : part.attributes)
            word += QStringLiteral(" %1=%2").arg(attribute.name, attribute.value);
        result << word;
    }
    return result;
}

void tst_zoHPCTextParts::partsHaveTheirPlaces()
{
    const zoHPCTextParts text(QStringLiteral("<a>\n <b x = '1'\n  y=\"2\"/>\n</a>"));

    QCOMPARE(text.parts().size(), 2);
    const zoHPCTextParts::Part& a = text.parts().at(0);
    const zoHPCTextParts::Part& b = text.parts().at(1);
    QCOMPARE(a.offset, 0);
    QCOMPARE(a.parent, -1);
    QCOMPARE(a.closing, 26);
    QCOMPARE(b.offset, 5);
    QCOMPARE(b.parent, 0);
    QCOMPARE(b.closing, -1);
    QCOMPARE(b.attributes.at(0).offset, 8);
    QCOMPARE(b.attributes.at(0).valueOffset, 13);
    const zoHPCTextParts::Place place = text.place(b.attributes.at(1).valueOffset);
    QCOMPARE(place.line, 3);
    QCOMPARE(place.column, 6);
}

void tst_zoHPCTextParts::partIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("parts");

    const auto row = [](const char* tag, const char* text, const QStringList& parts) {
        QTest::newRow(tag) << QString::fromUtf8(text) << parts;
    };
    row("empty", "", {});
    row("declaration", "<?xml version='1.0'?><a/>", {"a@21^-1"});
    row("instruction", "<?xml-model href='x>y'?><a/>", {"INSTRUCTION@0^-1", "a@24^-1"});
    row("comment", "<a><!-- <b/> > --></a>", {"a@0^-1", "COMMENT@3^0"});
    row("section", "<a><![CDATA[<b/>]]></a>", {"a@0^-1", "TEXT@3^0"});
    row("text", "<a>  x  <b/> </a>", {"a@0^-1", "TEXT@5^0", "b@8^0"});
    row("document-type", "<!DOCTYPE a [<!ENTITY e '>]'><!-- ]> -->]><a/>", {"a@42^-1"});
    row("siblings", "<a><b><c/></b><d/></a>", {"a@0^-1", "b@3^0", "c@6^1", "d@14^0"});
    row("no-blank-between", "<a b='1'c='2'/>", {"a@0^-1 b=1 c=2"});
    row("bracket-in-a-value", "<a b='/>'><c/></a>", {"a@0^-1 b=/>", "c@10^0"});
    QTest::newRow("byte-order-mark") << QString(QChar(QChar::ByteOrderMark)) + "<a/>"
                                     << QStringList{"a@1^-1"};
}

void tst_zoHPCTextParts::partIsRead()
{
    QFETCH(QString, text);
    QFETCH(QStringList, parts);

    QCOMPARE(told(zoHPCTextParts(text)), parts);
}

void tst_zoHPCTextParts::valueIsDecoded_data()
{
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("isWhole");

    QTest::newRow("predefined") << "&lt;&gt;&amp;&quot;&apos;"
                                << "<>&\"'" << true;
    QTest::newRow("decimal") << "a&#65;b"
                             << "aAb" << true;
    QTest::newRow("hexadecimal") << "&#x1F600;" << QString::fromUtf8("\xf0\x9f\x98\x80") << true;
    QTest::newRow("ampersand-twice") << "&amp;amp;"
                                     << "&amp;" << true;
    QTest::newRow("own-entity") << "a&b;c&lt;"
                                << "a&b;c<" << false;
    QTest::newRow("no-character") << "&#x110000;"
                                  << "&#x110000;" << false;
    QTest::newRow("unfinished") << "&lt"
                                << "&lt" << false;
}

void tst_zoHPCTextParts::valueIsDecoded()
{
    QFETCH(QString, raw);
    QFETCH(QString, value);
    QFETCH(bool, isWhole);

    const zoHPCTextParts text("<a b=\"" + raw + "\"/>");

    QCOMPARE(text.parts().at(0).attributes.at(0).value, value);
    QCOMPARE(text.parts().at(0).attributes.at(0).isWhole, isWhole);
}

void tst_zoHPCTextParts::lastOneOfRepeatedAttributesCounts()
{
    const zoHPCTextParts text(QStringLiteral("<a b='1' b='2' c='3'/>"));

    QCOMPARE(text.parts().at(0).value(QStringLiteral("b")), QStringLiteral("2"));
    QCOMPARE(text.parts().at(0).attributes.size(), 3);
    QCOMPARE(text.parts().at(0).attribute(QStringLiteral("d")), nullptr);
}

void tst_zoHPCTextParts::placesCountLines_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    QTest::newRow("first") << "<a>\n</a>" << 0 << 1 << 1;
    QTest::newRow("line-end") << "<a>\n</a>" << 3 << 1 << 4;
    QTest::newRow("second-line") << "<a>\n</a>" << 4 << 2 << 1;
    QTest::newRow("end") << "<a>\n</a>" << 8 << 2 << 5;
    QTest::newRow("behind-a-mark") << QString(QChar(QChar::ByteOrderMark)) + "<a/>" << 1 << 1 << 1;
    QTest::newRow("carriage-return") << "<a>\r\n</a>" << 5 << 2 << 1;
}

void tst_zoHPCTextParts::placesCountLines()
{
    QFETCH(QString, text);
    QFETCH(int, offset);
    QFETCH(int, line);
    QFETCH(int, column);

    const zoHPCTextParts::Place place = zoHPCTextParts(text).place(offset);

    QCOMPARE(place.line, line);
    QCOMPARE(place.column, column);
}

// Texts that no reader takes: they end, whatever is in them.
void tst_zoHPCTextParts::textsInPiecesEnd()
{
    const QString text =
        QStringLiteral("<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e \"x\">]><!-- c --><a b='1' c=\"&lt;\">"
                       "t<![CDATA[x]]><?p q?></a>");
    for (int begin = 0; begin < text.size(); ++begin) {
        for (int size = 0; size <= text.size() - begin; ++size)
            QVERIFY(zoHPCTextParts(text.mid(begin, size)).parts().size() < text.size());
    }
}

ZO_TEST_MAIN(tst_zoHPCTextParts)
#include "tst_zoHPCTextParts.moc"
