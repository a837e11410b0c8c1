#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoFullDisk.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace
{
QString sample()
{
    return QStringLiteral(ZO_DATA_DIR "/cluster/powerwall-2x2.zhpc");
}

QString legacy()
{
    return QStringLiteral(ZO_TEST_DATA_DIR "/Legacy/old-rounded-planes.xml");
}

// The sample by hand: what formatting it writes differs.
QByteArray byHand()
{
    return QByteArray(zoCliFiles::read(sample())).replace("\n ", "\n\t");
}

// A line in which $0 is the tool and the arguments are $1 and so on.
zoCommandRun shell(const QString& line, const QStringList& arguments)
{
    return zoCommandRun::program(QStringLiteral("/bin/sh"),
                                 QStringList{"-c", line, QStringLiteral(ZO_ZOHPC)} + arguments, {},
                                 QProcess::systemEnvironment());
}
} // namespace

// What the commands do to the files that they read and write.
class tst_zohpcFiles final : public zoTestCase
{
    Q_OBJECT

private slots:
    void fullDiskIsToldAndLeavesTheOldFile_data();
    void fullDiskIsToldAndLeavesTheOldFile();
    void diskThatFillsUpIsToldWithItsReason();
    void inputIsNotOverwritten_data();
    void inputIsNotOverwritten();
    void inputOnStandardInputIsNotOverwritten();
    void twoOutputsDoNotGoIntoOneFile_data();
    void twoOutputsDoNotGoIntoOneFile();
    void twoOutputsDoNotGoToStandardOutput_data();
    void twoOutputsDoNotGoToStandardOutput();
    void standardOutputIsAppendedToUnderAnyName_data();
    void standardOutputIsAppendedToUnderAnyName();
    void twoOutputsDoNotGoIntoOneFileByLinks_data();
    void twoOutputsDoNotGoIntoOneFileByLinks();
    void outputIsLookedAtBeforeTheInput_data();
    void outputIsLookedAtBeforeTheInput();
    void whatHasNoEndIsRefused_data();
    void whatHasNoEndIsRefused();
    void pipeOfAShellIsRead_data();
    void pipeOfAShellIsRead();
    void closedStreamIsTold_data();
    void closedStreamIsTold();
    void closedStreamIsNoFile();
    void nameThatIsNoTextIsRefused_data();
    void nameThatIsNoTextIsRefused();
    void emptyNameIsTold_data();
    void emptyNameIsTold();

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

// Only the first bytes find room, in a file that is overwritten as it has two names.
void tst_zohpcFiles::diskThatFillsUpIsToldWithItsReason()
{
    QVERIFY(QDir(m_files.path(QString())).mkpath("disk"));
    zoFullDisk disk(m_files.path("disk"));
    const QString path = m_files.write("disk/out.svg", "old");
    QCOMPARE(::link(QFile::encodeName(path).constData(),
                    QFile::encodeName(m_files.path("disk/other.svg")).constData()),
             0);
    disk.fill(4096);

    const zoCommandRun run = zoCommandRun::zohpc({"draw", sample(), "-o", path});

    QCOMPARE(run.whole(),
             QStringLiteral("--- errors\nzohpc: Unable to save picture %1: %2\n--- exit code 2\n")
                 .arg(path, disk.reason())
                 .toUtf8());
    QCOMPARE(zoCliFiles::read(path), QByteArray("old"));
}

void tst_zohpcFiles::inputIsNotOverwritten_data()
{
    QTest::addColumn<QStringList>("arguments"); // input, then output
    QTest::addColumn<QString>("origin");
    QTest::addColumn<bool>("byLink");

    QTest::newRow("convert") << QStringList{"convert", "%1", "-o", "%2"} << legacy() << false;
    QTest::newRow("export-paraview") << QStringList{"export", "%1", "--paraview", "%2"} << sample() << false;
    QTest::newRow("export-equalizer")
        << QStringList{"export", "%1", "--equalizer", "%2"} << sample() << false;
    QTest::newRow("convert-by-link") << QStringList{"convert", "%1", "-o", "%2"} << legacy() << true;
    QTest::newRow("draw-by-link") << QStringList{"draw", "%1", "-o", "%2"} << sample() << true;
}

void tst_zohpcFiles::inputIsNotOverwritten()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, origin);
    QFETCH(bool, byLink);
    const QByteArray content = zoCliFiles::read(origin);
    const QString input = m_files.write("input", content);
    QString output = QDir(m_files.path(QString())).filePath("./input");
    if (byLink) {
        output = m_files.path("link.svg");
        QFile::remove(output);
        QVERIFY(QFile::link(input, output));
    }
    for (QString& argument : arguments)
        argument = QString(argument).replace("%1", input).replace("%2", output);

    const zoCommandRun run = zoCommandRun::zohpc(arguments);

    QCOMPARE(run.whole(),
             "--- errors\n" + output.toUtf8() + ": the input would be overwritten\n--- exit code 2\n");
    QCOMPARE(zoCliFiles::read(input), content);
}

void tst_zohpcFiles::inputOnStandardInputIsNotOverwritten()
{
    const QByteArray content = zoCliFiles::read(sample());
    const QString input = m_files.write("input.zhpc", content);

    const zoCommandRun run = shell("exec \"$0\" export --paraview \"$1\" < \"$1\"", {input});

    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.errors.endsWith("the input would be overwritten\n"), run.errors.constData());
    QCOMPARE(zoCliFiles::read(input), content);
}

void tst_zohpcFiles::twoOutputsDoNotGoIntoOneFile_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("export") << QStringList{"export", sample(), "--paraview", "%1", "--equalizer", "%2"};
    QTest::newRow("draw") << QStringList{"draw", sample(), "-o", "%1", "-o", "%2"};
}

void tst_zohpcFiles::twoOutputsDoNotGoIntoOneFile()
{
    QFETCH(QStringList, arguments);
    const QString first = m_files.path("out.svg");
    const QString second = QDir(m_files.path(QString())).filePath("./out.svg");
    QStringList standard = arguments;
    for (QString& argument : arguments)
        argument = QString(argument).replace("%1", first).replace("%2", second);
    standard.replaceInStrings("%1", "-").replaceInStrings("%2", "-");

    const QByteArray reason(": two outputs cannot go into one file\n--- exit code 2\n");
    QCOMPARE(zoCommandRun::zohpc(arguments).whole(), "--- errors\n" + second.toUtf8() + reason);
    QCOMPARE(zoCommandRun::zohpc(standard).whole(), "--- errors\n-" + reason);
    QVERIFY(!QFile::exists(first));
}

// By its name in the file system, too, and the file that it goes to.
void tst_zohpcFiles::twoOutputsDoNotGoToStandardOutput_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");

    QTest::newRow("device") << "-"
                            << "/dev/stdout";
    QTest::newRow("descriptor") << "/dev/fd/1"
                                << "/proc/self/fd/1";
    QTest::newRow("its-file") << m_files.path("standard.txt") << "-";
    QTest::newRow("its-file-first") << "/dev/stdout" << m_files.path("standard.txt");
}

void tst_zohpcFiles::twoOutputsDoNotGoToStandardOutput()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const QString file = m_files.path("standard.txt");

    const zoCommandRun run = shell("exec \"$0\" export \"$1\" --paraview \"$2\" --equalizer \"$3\" > \"$4\"",
                                   {sample(), first, second, file});

    QCOMPARE(run.whole(),
             "--- errors\n" + second.toUtf8() + ": two outputs cannot go into one file\n--- exit code 2\n");
    QCOMPARE(zoCliFiles::read(file), QByteArray());
}

// What others wrote to the same output before and write afterwards is not replaced.
void tst_zohpcFiles::standardOutputIsAppendedToUnderAnyName_data()
{
    QTest::addColumn<QString>("output");

    for (const char* name : {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"})
        QTest::newRow(name) << name;
}

void tst_zohpcFiles::standardOutputIsAppendedToUnderAnyName()
{
    QFETCH(QString, output);
    const QString file = m_files.path("standard.txt");

    const zoCommandRun run = shell("{ echo first; \"$0\" format \"$1\" -o \"$2\"; echo last; } > \"$3\"",
                                   {sample(), output, file});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
    QCOMPARE(zoCliFiles::read(file), "first\n" + zoCliFiles::read(sample()) + "last\n");
}

void tst_zohpcFiles::twoOutputsDoNotGoIntoOneFileByLinks_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("way");

    // The way up from a link is the one of the folder that it leads to.
    QTest::newRow("folder") << "a/b"
                            << "/../out.txt";
    QTest::newRow("file-that-is-not-there") << "a/out.txt"
                                            << "";
}

void tst_zohpcFiles::twoOutputsDoNotGoIntoOneFileByLinks()
{
    QFETCH(QString, target);
    QFETCH(QString, way);
    QVERIFY(QDir(m_files.path(QString())).mkpath("a/b"));
    const QString link = m_files.path("link");
    QFile::remove(link);
    QVERIFY(QFile::link(m_files.path(target), link));
    const QString first = m_files.path("a/out.txt");
    const QString second = link + way;

    const zoCommandRun run =
        zoCommandRun::zohpc({"export", sample(), "--paraview", first, "--equalizer", second});

    QCOMPARE(run.whole(),
             "--- errors\n" + second.toUtf8() + ": two outputs cannot go into one file\n--- exit code 2\n");
    QVERIFY(!QFile::exists(first));
}

void tst_zohpcFiles::outputIsLookedAtBeforeTheInput_data()
{
    QTest::addColumn<QStringList>("arguments"); // the output is added

    QTest::newRow("format") << QStringList{"format", "/nowhere/input", "-o"};
    QTest::newRow("convert") << QStringList{"convert", "/nowhere/input", "-o"};
    QTest::newRow("export") << QStringList{"export", "/nowhere/input", "--paraview"};
    QTest::newRow("draw") << QStringList{"draw", "/nowhere/input", "-o"};
}

// Nobody waits for work that is in vain; neither input nor output are there.
void tst_zohpcFiles::outputIsLookedAtBeforeTheInput()
{
    QFETCH(QStringList, arguments);
    const QString output = m_files.path("no/such/out.svg");

    const zoCommandRun run = zoCommandRun::zohpc(arguments + QStringList{output});

    QCOMPARE(run.whole(),
             "--- errors\n" + output.toUtf8() + ": No such file or directory\n--- exit code 2\n");
}

void tst_zohpcFiles::whatHasNoEndIsRefused_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("told");

    const QByteArray large("larger than 256 MiB");
    const QByteArray special("it is no regular file");
    QTest::newRow("check-endless") << "$limit \"$0\" check /dev/zero" << special;
    QTest::newRow("check-pipe") << "\"$0\" check fifo" << special;
    QTest::newRow("check-sparse") << "$limit \"$0\" check sparse" << large;
    QTest::newRow("check-standard-input") << "$limit \"$0\" check - < /dev/zero" << large;
    QTest::newRow("convert-endless") << "$limit \"$0\" convert /dev/zero" << special;
    QTest::newRow("format-sparse") << "$limit \"$0\" format -i sparse" << large;
    QTest::newRow("diff-pipe") << "\"$0\" diff fifo sparse" << special;
    QTest::newRow("hosts-standard-input") << "$limit \"$0\" hosts expand - < /dev/zero" << large;
    QTest::newRow("hosts-tree-standard-input") << "$limit \"$0\" hosts tree - < /dev/zero" << large;
    QTest::newRow("hosts-pipe") << "\"$0\" hosts expand -f fifo" << special;
}

void tst_zohpcFiles::whatHasNoEndIsRefused()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, told);
#ifdef __SANITIZE_ADDRESS__
    const QString limit; // its shadow memory alone is larger
#else
    const QString limit = QStringLiteral("ulimit -v 2000000;");
#endif
    const zoCommandRun run = shell("cd \"$1\"; mkfifo fifo; truncate -s 10G sparse; " +
                                       QString(line).replace(QStringLiteral("$limit"), limit),
                                   {m_files.path("")});

    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.errors.contains(told), run.errors.constData());
    QCOMPARE(run.output, QByteArray());
}

void tst_zohpcFiles::pipeOfAShellIsRead_data()
{
    QTest::addColumn<QString>("line");

    QTest::newRow("named-after-its-number") << "cat \"$1\" | \"$0\" format /dev/fd/0";
    QTest::newRow("standard-input") << "cat \"$1\" | \"$0\" format -";
    QTest::newRow("named-standard-input") << "cat \"$1\" | \"$0\" format /dev/stdin";
    QTest::newRow("file-as-standard-input") << "\"$0\" format /dev/stdin < \"$1\"";
}

void tst_zohpcFiles::pipeOfAShellIsRead()
{
    QFETCH(QString, line);

    const zoCommandRun run = shell(line, {sample()});

    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.output, zoCliFiles::read(sample()));
}

void tst_zohpcFiles::closedStreamIsTold_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("told");

    const QByteArray input("-: standard input is closed\n");
    const QByteArray output("zohpc: standard output: it is closed\n");
    QTest::newRow("document-input") << "\"$0\" check - <&-" << input;
    QTest::newRow("hosts-input") << "\"$0\" hosts expand - <&-" << input;
    QTest::newRow("document-output") << "\"$0\" format \"$1\" >&-" << output;
    QTest::newRow("hosts-output") << "\"$0\" hosts expand 'n1 - n3' >&-" << output;
    QTest::newRow("help-output") << "\"$0\" --help >&-" << output;
}

void tst_zohpcFiles::closedStreamIsTold()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, told);

    const zoCommandRun run = shell(line, {sample()});

    QCOMPARE(run.errors, told);
    QCOMPARE(run.exitCode, 2);
}

// Without streams of their own, the numbers would go to the next files that are opened.
void tst_zohpcFiles::closedStreamIsNoFile()
{
    const QString path = m_files.write("wall.zhpc", byHand());

    QCOMPARE(shell("\"$0\" format -i \"$1\" <&- >&- 2>&-", {path}).exitCode, 0);
    QCOMPARE(zoCliFiles::read(path), zoCliFiles::read(sample()));
    const QByteArray odd("<cluster version='1' odd='1'><master/></cluster>");
    const QString loses = m_files.write("loses.zhpc", odd);
    QCOMPARE(shell("\"$0\" format -i \"$1\" <&- >&- 2>&-", {loses}).exitCode, 2);
    QCOMPARE(zoCliFiles::read(loses), odd);
}

void tst_zohpcFiles::nameThatIsNoTextIsRefused_data()
{
    QTest::addColumn<QString>("line");

    QTest::newRow("input") << "\"$0\" check \"$n\"";
    QTest::newRow("output") << "\"$0\" format \"$1\" -o \"$n\"";
    QTest::newRow("in-place") << "\"$0\" format -i \"$n\"";
    QTest::newRow("hosts") << "\"$0\" hosts expand \"$n\"";
}

void tst_zohpcFiles::nameThatIsNoTextIsRefused()
{
    QFETCH(QString, line);
    QVERIFY(QDir(m_files.path("")).mkpath("names"));
    const QString folder = m_files.path("names");
    const QByteArray name("names/a\xff.zhpc");
    const QByteArray path = QFile::encodeName(m_files.path("")) + '/' + name;
    FILE* const file = std::fopen(path.constData(), "w");
    QVERIFY(file != nullptr);
    std::fputs("<cluster/>", file);
    std::fclose(file);

    const zoCommandRun run = shell(
        "cd \"$2\"; n=$(printf 'a\\377.zhpc'); LC_ALL=C.UTF-8; export LC_ALL; " + line, {sample(), folder});

    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.errors.startsWith("zohpc: the argument $'a\\xff.zhpc' is no text in the encoding of the "
                                   "locale (UTF-8); rename the file"),
             run.errors.constData());
    QCOMPARE(run.output, QByteArray());
    // The toolkit lists no such names.
    const std::filesystem::directory_iterator files(folder.toStdString());
    QCOMPARE(std::distance(begin(files), end(files)), std::ptrdiff_t(1));
    QCOMPARE(std::remove(path.constData()), 0);
}

void tst_zohpcFiles::emptyNameIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("input") << QStringList{"check", ""};
    QTest::newRow("output") << QStringList{"format", sample(), "-o", ""};
    QTest::newRow("convert") << QStringList{"convert", legacy(), "-o", ""};
    QTest::newRow("export") << QStringList{"export", sample(), "--paraview", ""};
    QTest::newRow("new") << QStringList{"new", "--wall", "1x1", "--hosts", "a", "-o", ""};
}

void tst_zohpcFiles::emptyNameIsTold()
{
    QFETCH(QStringList, arguments);

    const zoCommandRun run = zoCommandRun::zohpc(arguments);

    QCOMPARE(run.whole(), QByteArray("--- errors\n\"\": the file name is empty\n--- exit code 2\n"));
}

ZO_TEST_MAIN(tst_zohpcFiles)
#include "tst_zohpcFiles.moc"
