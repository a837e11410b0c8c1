#include "zoHPCSetup.h"
#include "zoTestCase.h"

#include <zoHPCPictureFile.h>
#include <zoHPCRoomPicture.h>
#include <zoHPCScreensPicture.h>

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

// Pictures as files.
class tst_zoHPCPictureFile final : public zoTestCase
{
    Q_OBJECT

private slots:
    void init();

    void svgHoldsTheTexts();
    void pngHasTheSizeAndTheScale();
    void pdfIsWritten();
    void suffixIsReadInEitherCase();
    void sameContentGivesTheSameBytes_data();
    void sameContentGivesTheSameBytes();
    void unknownFormatLeavesTheOldFile();
    void impossibleSizeIsRefused_data();
    void impossibleSizeIsRefused();
    void folderThatIsNotThereIsReported();
    void filterNamesAllFormats();

private:
    zoHPCSetup m_setup;
    zoHPCRoomPicture m_room;
    zoHPCScreensPicture m_screens;
};

namespace
{
QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

void tst_zoHPCPictureFile::init()
{
    QVERIFY(m_setup.load(QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc")));
    m_room.setLayout(m_setup.layout());
    m_room.fit(QRectF(0, 0, 400, 300));
    m_screens.setLayout(m_setup.layout());
    m_screens.fit(QRectF(0, 0, 800, 600));
}

void tst_zoHPCPictureFile::svgHoldsTheTexts()
{
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("screens.svg"));

    QVERIFY(zoHPCPictureFile::save(m_screens, fileName, QSize(800, 600)));

    QDomDocument document;
    QVERIFY(document.setContent(contentOf(fileName)));
    const QDomElement root = document.documentElement();
    QCOMPARE(root.tagName(), QStringLiteral("svg"));
    QCOMPARE(root.attribute(QStringLiteral("viewBox")), QStringLiteral("0 0 800 600"));
    QStringList texts;
    const QDomNodeList elements = root.elementsByTagName(QStringLiteral("text"));
    for (int i = 0; i < elements.size(); ++i)
        texts << elements.at(i).toElement().text().trimmed();
    QVERIFY(texts.contains(QStringLiteral("cave-front-right")));
    QVERIFY(texts.contains(QStringLiteral("Cave Front")));
}

void tst_zoHPCPictureFile::pngHasTheSizeAndTheScale()
{
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("room.png"));

    QVERIFY(zoHPCPictureFile::save(m_room, fileName, QSize(400, 300)));
    QCOMPARE(QImage(fileName).size(), QSize(400, 300));
    QVERIFY(zoHPCPictureFile::save(m_room, fileName, QSize(400, 300), QPalette(), 2.0));
    const QImage image(fileName);
    QCOMPARE(image.size(), QSize(800, 600));
    // Twice the pixels, not a corner of the picture: the lower right half is painted, too.
    bool isPainted = false;
    for (int x = 400; x < 800 && !isPainted; ++x)
        isPainted = image.pixelColor(x, 350) != image.pixelColor(799, 5);
    QVERIFY(isPainted);
}

void tst_zoHPCPictureFile::pdfIsWritten()
{
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("room.pdf"));

    QVERIFY(zoHPCPictureFile::save(m_room, fileName, QSize(400, 300)));

    const QByteArray content = contentOf(fileName);
    QVERIFY(content.startsWith("%PDF-"));
    QVERIFY(content.trimmed().endsWith("%%EOF"));
    // 400 x 300 points of 1/96 inch are 300 x 225 of 1/72.
    QVERIFY(content.contains("/MediaBox [0 0 300 225]") ||
            content.contains("/MediaBox [0 0 300.000000 225.000000]"));
}

void tst_zoHPCPictureFile::suffixIsReadInEitherCase()
{
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("room.old.PNG"));

    QVERIFY(zoHPCPictureFile::save(m_room, fileName, QSize(40, 30)));

    QVERIFY(contentOf(fileName).startsWith("\x89PNG"));
}

void tst_zoHPCPictureFile::sameContentGivesTheSameBytes_data()
{
    QTest::addColumn<QString>("format");

    QTest::newRow("svg") << "svg";
    QTest::newRow("png") << "png";
}

void tst_zoHPCPictureFile::sameContentGivesTheSameBytes()
{
    QFETCH(QString, format);
    QByteArray bytes[2];
    for (QByteArray& content : bytes) {
        QBuffer buffer(&content);
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        QVERIFY(zoHPCPictureFile::write(m_room, buffer, format, QSize(400, 300)));
    }

    QVERIFY(!bytes[0].isEmpty());
    QCOMPARE(bytes[0], bytes[1]);
}

void tst_zoHPCPictureFile::unknownFormatLeavesTheOldFile()
{
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("picture.tiff"));
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();

    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("picture\\.tiff.*\"tiff\"")));
    QVERIFY(!zoHPCPictureFile::save(m_room, fileName, QSize(400, 300)));

    QCOMPARE(contentOf(fileName), QByteArray("old"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

void tst_zoHPCPictureFile::impossibleSizeIsRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");

    QTest::newRow("empty") << QSize(0, 300) << 1.0;
    QTest::newRow("negative") << QSize(400, -1) << 1.0;
    QTest::newRow("too-large") << QSize(100000, 300) << 1.0;
    QTest::newRow("scale-of-nothing") << QSize(400, 300) << 0.0;
    QTest::newRow("scale-too-large") << QSize(400, 300) << 1e6;
}

void tst_zoHPCPictureFile::impossibleSizeIsRefused()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));

    QVERIFY(!zoHPCPictureFile::write(m_room, buffer, QStringLiteral("png"), size, QPalette(), scale));
    QVERIFY(buffer.data().isEmpty());
}

void tst_zoHPCPictureFile::folderThatIsNotThereIsReported()
{
    QTemporaryDir folder;

    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("Unable to save picture .*room\\.png")));
    QVERIFY(!zoHPCPictureFile::save(m_room, folder.filePath(QStringLiteral("none/room.png")), QSize(40, 30)));
}

void tst_zoHPCPictureFile::filterNamesAllFormats()
{
    for (const char* format : {"*.svg", "*.png", "*.pdf"})
        QVERIFY(zoHPCPictureFile::filter().contains(QString::fromLatin1(format)));
}

ZO_TEST_MAIN(tst_zoHPCPictureFile)

#include "tst_zoHPCPictureFile.moc"
