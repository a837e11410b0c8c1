#include "zoTestCase.h"

#include <zoFileText.h>

#include <QApplication>
#include <QTextCodec>

// The text of an XML file in the encodings of old tools.
class tst_zoFileText final : public zoTestCase
{
    Q_OBJECT

private slots:
    void bytesBecomeText_data();
    void bytesBecomeText();
    void invalidBytesHaveAPlace_data();
    void invalidBytesHaveAPlace();
    void invalidBytesOfDeclaredEncodingsHaveAPlace_data();
    void invalidBytesOfDeclaredEncodingsHaveAPlace();
    void textEndsAtTheFirstNul_data();
    void textEndsAtTheFirstNul();
};

void tst_zoFileText::bytesBecomeText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("encoding");

    const QString plain = QString::fromUtf8("<a b='größe €'/>\n");
    const QByteArray latin("<?xml version='1.0' encoding='ISO-8859-1'?><a b='gr\xf6\xdf"
                           "e'/>");
    QTest::newRow("utf-8") << plain.toUtf8() << plain << QByteArray("UTF-8");
    QTest::newRow("utf-8-with-mark") << QByteArray("\xef\xbb\xbf") + plain.toUtf8() << plain
                                     << QByteArray("UTF-8");
    QTest::newRow("latin-1") << latin << QString::fromLatin1(latin) << QByteArray("ISO-8859-1");
    const QByteArray windows("<?xml version=\"1.0\" encoding = \"windows-1252\" ?><a b='\x80'/>");
    QTest::newRow("windows-1252") << windows
                                  << QString::fromLatin1(windows).replace(QChar(0x80), QChar(0x20ac))
                                  << QByteArray("WINDOWS-1252");
    for (const char* name : {"UTF-16LE", "UTF-16BE"}) {
        QTextCodec* codec = QTextCodec::codecForName(name);
        QTest::newRow(name) << codec->fromUnicode(QChar(QChar::ByteOrderMark) + plain) << plain
                            << QByteArray("UTF-16");
        const QString unmarked = QStringLiteral("<?xml version='1.0' encoding='UTF-16'?>\n") + plain;
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        QTest::newRow(qPrintable(QString::fromLatin1(name) + "-without-mark"))
            << codec->fromUnicode(unmarked.constData(), unmarked.size(), &state) << unmarked
            << QByteArray(name);
    }
    // What the window loads does not depend on a declaration.
    const QString declared = QString::fromUtf8("<?xml version='1.0' encoding='ISO-8859-1'?><a b='größe'/>");
    QTest::newRow("utf-8-that-says-latin-1") << declared.toUtf8() << declared << QByteArray("UTF-8");
    QTest::newRow("empty") << QByteArray() << QString() << QByteArray("UTF-8");
}

void tst_zoFileText::bytesBecomeText()
{
    QFETCH(QByteArray, bytes);

    const zoFileText file(bytes);

    QTEST(file.text(), "text");
    QTEST(file.encoding(), "encoding");
    QVERIFY(file.isValid());
    QVERIFY(!file.isCut());
}

void tst_zoFileText::invalidBytesHaveAPlace_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    QTest::newRow("first") << QByteArray("\xff<a/>") << 1 << 1;
    QTest::newRow("latin-1-unsaid") << QByteArray("<a>\n<b c='\xc3\xa4 \xe4'/>") << 2 << 9;
    QTest::newRow("declaration-of-utf-8")
        << QByteArray("<?xml version='1.0' encoding='UTF-8'?>\n\xe4") << 2 << 1;
    QTest::newRow("unknown-encoding") << QByteArray("<?xml version='1.0' encoding='nope'?>\n \xe4") << 2 << 2;
    QTest::newRow("longer-than-needed") << QByteArray("a\xc0\xaf") << 1 << 2;
    QTest::newRow("longer-than-needed-3") << QByteArray("a\xe0\x80\xaf") << 1 << 2;
    QTest::newRow("half-a-pair") << QByteArray("a\xed\xa0\x80") << 1 << 2;
    QTest::newRow("beyond-the-last") << QByteArray("a\xf4\x90\x80\x80") << 1 << 2;
    QTest::newRow("cut-off") << QByteArray("a\xf0\x9f\x98") << 1 << 2;
    QTest::newRow("after-a-pair") << QByteArray("\xf0\x9f\x98\x80\xff") << 1 << 3;
}

void tst_zoFileText::invalidBytesHaveAPlace()
{
    QFETCH(QByteArray, bytes);

    const zoFileText file(bytes);

    QVERIFY(!file.isValid());
    QTEST(file.invalidPlace().line, "line");
    QTEST(file.invalidPlace().column, "column");
    QCOMPARE(file.text(), QString::fromUtf8(bytes));
}

void tst_zoFileText::invalidBytesOfDeclaredEncodingsHaveAPlace_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("ascii") << QByteArray("US-ASCII") << QByteArray("\xe9");
    QTest::newRow("japanese") << QByteArray("SHIFT_JIS") << QByteArray("\x81");
    QTest::newRow("greek") << QByteArray("ISO-8859-7") << QByteArray("\xff");
    QTest::newRow("chinese") << QByteArray("GB18030") << QByteArray("\xff\xfe");
}

// Which of them a codec counts is its own affair.
void tst_zoFileText::invalidBytesOfDeclaredEncodingsHaveAPlace()
{
    QFETCH(QByteArray, encoding);
    QFETCH(QByteArray, bytes);
    if (QTextCodec::codecForName(encoding) == nullptr)
        QSKIP("The toolkit was built without this encoding.");

    const zoFileText file("<?xml version='1.0' encoding='" + encoding + "'?>\n<a b='" + bytes + "'/>");

    QVERIFY(!file.isValid());
    QCOMPARE(file.encoding(), encoding);
    QCOMPARE(file.invalidPlace().line, 2);
    QCOMPARE(file.invalidPlace().column, 7);
}

void tst_zoFileText::textEndsAtTheFirstNul_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isCut");

    QTest::newRow("text-after") << QByteArray("<a>\n\0</a>", 9) << "<a>\n" << true;
    QTest::newRow("invalid-after") << QByteArray("<a/>\0\xff", 6) << "<a/>" << true;
    QTest::newRow("only-blanks-after") << QByteArray("<a/>\0 \n\0", 8) << "<a/>" << false;
    QTest::newRow("utf-16") << QByteArray("\xff\xfe<\0\0\0a\0", 8) << "<" << true;
    // Neither a mark nor a declaration.
    QTest::newRow("utf-16le-unsaid") << QByteArray("<\0a\0/\0>\0", 8) << "<" << true;
    QTest::newRow("utf-16be-unsaid") << QByteArray("\0<\0a\0/\0>", 8) << "" << true;
}

void tst_zoFileText::textEndsAtTheFirstNul()
{
    QFETCH(QByteArray, bytes);

    const zoFileText file(bytes);

    QTEST(file.text(), "text");
    QTEST(file.isCut(), "isCut");
    QVERIFY(file.isValid());
    QCOMPARE(file.cutPlace().column, file.text().endsWith('\n') ? 1 : file.text().size() + 1);
}

ZO_TEST_MAIN(tst_zoFileText)
#include "tst_zoFileText.moc"
