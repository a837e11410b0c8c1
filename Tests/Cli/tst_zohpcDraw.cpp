#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QImage>
#include <QTest>

namespace
{
const QString s_cave = QStringLiteral(ZO_DATA_DIR "/cluster/cave-4-sided.zhpc");
} // namespace

// "zohpc draw" as a whole process. What is in the pictures is tested with them.
class tst_zohpcDraw final : public zoTestCase
{
    Q_OBJECT

private slots:
    void suffixIsTheFormat_data();
    void suffixIsTheFormat();
    void nameOfTheFileChoosesThePicture();
    void optionChoosesThePicture();
    void sizeAndScaleArePixels();
    void standardOutputHasAFormat();
    void sameBytesInEveryProcess();
    void failureLeavesTheOldFile();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();

private:
    zoCliFiles m_files;
};

void tst_zohpcDraw::suffixIsTheFormat_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("begin");

    QTest::newRow("svg") << "room.svg" << QByteArray("<?xml");
    QTest::newRow("png") << "room.png" << QByteArray("\x89PNG");
    QTest::newRow("pdf") << "room.pdf" << QByteArray("%PDF-");
    QTest::newRow("upper-case") << "ROOM.PNG" << QByteArray("\x89PNG");
}

void tst_zohpcDraw::suffixIsTheFormat()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, begin);
    const QString file = m_files.write(name, "old");

    const zoCommandRun run = zoCommandRun::zohpcIn({}, {"draw", s_cave, "-o", file});

    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(zoCliFiles::read(file).startsWith(begin));
}

void tst_zohpcDraw::nameOfTheFileChoosesThePicture()
{
    const QString room = m_files.path("room.svg");
    const QString screens = m_files.path("my-screens.svg");

    const zoCommandRun run = zoCommandRun::zohpc({"draw", s_cave, "-o", room, "-o", screens});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QVERIFY(zoCliFiles::read(room).contains("Viewer"));
    QVERIFY(!zoCliFiles::read(room).contains("Window 1"));
    QVERIFY(zoCliFiles::read(screens).contains("Window 1"));
    QVERIFY(!zoCliFiles::read(screens).contains("Viewer"));
}

void tst_zohpcDraw::optionChoosesThePicture()
{
    QVERIFY(
        zoCommandRun::zohpc({"draw", s_cave, "--picture", "screens", "-o", "-"}).output.contains("Window 1"));
    QVERIFY(zoCommandRun::zohpc({"draw", s_cave, "--picture", "room", "-o", "-"}).output.contains("Viewer"));
}

void tst_zohpcDraw::sizeAndScaleArePixels()
{
    const QString file = m_files.path("sized.png");

    QCOMPARE(zoCommandRun::zohpc({"draw", s_cave, "-o", file, "--size", "300x200", "--scale", "2"}).exitCode,
             0);
    const QImage image(file);
    QCOMPARE(image.size(), QSize(600, 400));

    // Something is drawn on it.
    QSet<QRgb> colors;
    for (int x = 0; x < image.width(); ++x)
        colors.insert(image.pixel(x, image.height() / 2));
    QVERIFY(colors.size() > 2);
}

void tst_zohpcDraw::standardOutputHasAFormat()
{
    const QByteArray text = zoCliFiles::read(s_cave);

    QVERIFY(
        zoCommandRun::zohpc({"draw", "-", "-o", "-", "--format", "pdf"}, text).output.startsWith("%PDF-"));
    QVERIFY(zoCommandRun::zohpc({"draw", "-", "-o", "-"}, text).output.startsWith("<?xml"));
}

void tst_zohpcDraw::sameBytesInEveryProcess()
{
    const QStringList arguments{"draw", s_cave, "--picture", "screens", "-o", "-"};
    const QByteArray first = zoCommandRun::zohpcIn({"QT_HASH_SEED=0"}, arguments).output;

    QVERIFY(!first.isEmpty());
    QCOMPARE(zoCommandRun::zohpcIn({"QT_HASH_SEED=42"}, arguments).output, first);
}

void tst_zohpcDraw::failureLeavesTheOldFile()
{
    const QString kept = m_files.write("kept.svg", "old");
    const QString nowhere = m_files.path("none/room.svg");

    const zoCommandRun broken = zoCommandRun::zohpc({"draw", "-", "-o", kept}, "<cluster>");
    const zoCommandRun unwritable = zoCommandRun::zohpc({"draw", s_cave, "-o", nowhere});

    QCOMPARE(broken.whole(), QByteArray("--- errors\n-:1:10: Premature end of document.\n--- exit code 2\n"));
    QCOMPARE(zoCliFiles::read(kept), QByteArray("old"));
    QCOMPARE(unwritable.whole(),
             "--- errors\n" + nowhere.toUtf8() + ": No such file or directory\n--- exit code 2\n");
}

void tst_zohpcDraw::wrongUsageIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");

    QTest::newRow("no-file") << QStringList{"-o", "a.svg"} << QByteArray("no file given");
    QTest::newRow("two-files") << QStringList{"a", "b", "-o", "a.svg"} << QByteArray("one file at a time");
    QTest::newRow("no-output") << QStringList{"a"} << QByteArray("--output is missing");
    QTest::newRow("suffix") << QStringList{"a", "-o", "a.gif"}
                            << QByteArray("--output: \"a.gif\" does not end in .svg, .png or .pdf");
    QTest::newRow("picture") << QStringList{"a", "-o", "a.svg", "--picture", "x"}
                             << QByteArray("--picture: \"x\" is no picture: room, screens");
    QTest::newRow("format") << QStringList{"a", "-o", "-", "--format", "gif"}
                            << QByteArray("--format: \"gif\" is no format: svg, png, pdf");
    QTest::newRow("size") << QStringList{"a", "-o", "-", "--size", "0x5"}
                          << QByteArray("--size: \"0x5\" is no size in points such as 1200x800");
    QTest::newRow("scale") << QStringList{"a", "-o", "-", "--scale", "nan"}
                           << QByteArray("--scale: \"nan\" is no number from 0.1 to 16");
}

void tst_zohpcDraw::wrongUsageIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);

    const zoCommandRun run = zoCommandRun::zohpc(QStringList{"draw"} + arguments);

    QCOMPARE(run.whole(),
             "--- errors\nzohpc draw: " + reason + "\nTry 'zohpc draw --help'.\n--- exit code 2\n");
}

ZO_TEST_MAIN(tst_zohpcDraw)
#include "tst_zohpcDraw.moc"
