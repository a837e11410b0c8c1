#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoFullDisk.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QTest>

namespace
{
QString sample()
{
    return QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc");
}

QString legacy()
{
    return QStringLiteral(ZO_TEST_DATA_DIR "/Legacy/wall-defaults.xml");
}

// The sample by hand: what formatting it writes differs.
QByteArray byHand()
{
    return QByteArray(zoCliFiles::read(sample())).replace("\n ", "\n\t");
}
} // namespace

// What the commands do to the files that they read and write.
class tst_zohpcFiles final : public zoTestCase
{
    Q_OBJECT

private slots:
    void fullDiskIsToldAndLeavesTheOldFile_data();
    void fullDiskIsToldAndLeavesTheOldFile();

private:
    zoCliFiles m_files;
};

void tst_zohpcFiles::fullDiskIsToldAndLeavesTheOldFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("arguments"); // the file is added
    QTest::addColumn<QByteArray>("before");

    QTest::newRow("format-in-place") << "wall.zhpc" << QStringList{"format", "-i"} << byHand();
    QTest::newRow("format-output") << "out.zhpc" << QStringList{"format", sample(), "-o"}
                                   << QByteArray("old");
    QTest::newRow("convert") << "out.zhpc" << QStringList{"convert", legacy(), "-o"} << QByteArray("old");
    QTest::newRow("export-paraview") << "out.pvx" << QStringList{"export", sample(), "--paraview"}
                                     << QByteArray("old");
    QTest::newRow("export-equalizer")
        << "out.eqc" << QStringList{"export", sample(), "--equalizer"} << QByteArray("old");
    for (const char* file : {"out.svg", "out.png", "out.pdf"})
        QTest::newRow(file) << file << QStringList{"draw", sample(), "-o"} << QByteArray("old");
}

void tst_zohpcFiles::fullDiskIsToldAndLeavesTheOldFile()
{
    QFETCH(QString, file);
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, before);
    QVERIFY(QDir(m_files.path(QString())).mkpath("disk"));
    zoFullDisk disk(m_files.path("disk"));
    const QString path = m_files.write("disk/" + file, before);
    disk.fill();

    const zoCommandRun run = zoCommandRun::zohpc(arguments + QStringList{path});

    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.errors.endsWith(QStringLiteral("%1: %2\n").arg(path, disk.reason()).toUtf8()),
             run.errors.constData());
    QCOMPARE(zoCliFiles::read(path), before);
    QCOMPARE(disk.countFiles(), 1);
}

ZO_TEST_MAIN(tst_zohpcFiles)
#include "tst_zohpcFiles.moc"
