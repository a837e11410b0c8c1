#include "zoTestCase.h"

#include <zoSvgWriter.h>

#include <QApplication>
#include <QBuffer>
#include <QDomDocument>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

// SVG of what a painter draws.
class tst_zoSvgWriter final : public zoTestCase
{
    Q_OBJECT

private slots:
    void drawingIsWrittenInItsSize();
    void charactersThatXmlForbidsAreReplaced_data();
    void charactersThatXmlForbidsAreReplaced();
    void closedDeviceIsOpened();
    void deviceThatTakesNothingIsAFailure();
};

void tst_zoSvgWriter::drawingIsWrittenInItsSize()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);

    QVERIFY(zoSvgWriter::write(buffer, QSize(192, 96), 96, [](QPainter& painter) {
        painter.fillRect(QRectF(10, 20, 30, 40), QColor(1, 2, 3));
        painter.drawText(QPointF(5, 5), QString::fromUtf8("W\xc3\xa4nde"));
    }));

    QDomDocument document;
    QVERIFY(document.setContent(buffer.data()));
    const QDomElement root = document.documentElement();
    QCOMPARE(root.tagName(), QStringLiteral("svg"));
    QCOMPARE(root.attribute(QStringLiteral("viewBox")), QStringLiteral("0 0 192 96"));
    QCOMPARE(root.attribute(QStringLiteral("width")), QStringLiteral("50.8mm"));
    const QString text = QString::fromUtf8(buffer.data());
    QVERIFY(text.contains(QStringLiteral("#010203")));
    QVERIFY(text.contains(QString::fromUtf8("W\xc3\xa4nde")));
}

void tst_zoSvgWriter::charactersThatXmlForbidsAreReplaced_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    QTest::newRow("control") << QStringLiteral("a\u0001b") << QStringLiteral("a\ufffdb");
    QTest::newRow("escape") << QStringLiteral("\u001b[31m") << QStringLiteral("\ufffd[31m");
    QTest::newRow("no-character") << QStringLiteral("a\uffff") << QStringLiteral("a\ufffd");
    QTest::newRow("mark-of-order-turned") << QStringLiteral("\ufffeb") << QStringLiteral("\ufffdb");
    QTest::newRow("their-neighbours")
        << QStringLiteral("\uffe6\u00bf\u007f") << QStringLiteral("\uffe6\u00bf\u007f");
}

void tst_zoSvgWriter::charactersThatXmlForbidsAreReplaced()
{
    QFETCH(QString, text);
    QFETCH(QString, written);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);

    QVERIFY(zoSvgWriter::write(
        buffer, QSize(192, 96), 96, [&text](QPainter& painter) { painter.drawText(QPointF(5, 5), text); },
        text));

    QDomDocument document;
    QVERIFY(document.setContent(buffer.data()));
    // A text that one font does not have comes in pieces.
    const auto textOf = [&document](const char* tag) {
        QString joined;
        const QDomNodeList elements = document.elementsByTagName(QLatin1String(tag));
        for (int i = 0; i < elements.size(); ++i)
            joined += elements.at(i).toElement().text().trimmed();
        return joined;
    };
    QCOMPARE(textOf("title"), written);
    QCOMPARE(textOf("text"), written);
}

void tst_zoSvgWriter::closedDeviceIsOpened()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("a.svg")));

    QVERIFY(zoSvgWriter::write(file, QSize(10, 10), 96, [](QPainter&) {}));

    file.close();
    QVERIFY(file.size() > 0);
}

void tst_zoSvgWriter::deviceThatTakesNothingIsAFailure()
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadOnly);
    bool painted = false;

    QVERIFY(!zoSvgWriter::write(buffer, QSize(10, 10), 96, [&painted](QPainter&) { painted = true; }));

    QVERIFY(!painted);
}

ZO_TEST_MAIN(tst_zoSvgWriter)
#include "tst_zoSvgWriter.moc"
