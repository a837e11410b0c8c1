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
    expectMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not write")));
    expectMessage(QtWarningMsg, QRegularExpression(QStringLiteral("QPainter::begin.*false")));
    QBuffer buffer;
    buffer.open(QIODevice::ReadOnly);
    bool painted = false;

    QVERIFY(!zoSvgWriter::write(buffer, QSize(10, 10), 96, [&painted](QPainter&) { painted = true; }));

    QVERIFY(!painted);
}

ZO_TEST_MAIN(tst_zoSvgWriter)
#include "tst_zoSvgWriter.moc"
