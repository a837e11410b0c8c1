#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTest>

namespace
{
const QString s_folder = QStringLiteral(ZO_COMPLETION_DIR);

QStringList environment()
{
    return {"PATH=" + QFileInfo(QStringLiteral(ZO_ZOHPC)).absolutePath() + ':' + qEnvironmentVariable("PATH"),
            "LC_ALL=C.UTF-8", "HOME=/nonexistent", "TERM=dumb"};
}

bool isMissing(const QString& shell)
{
    return QStandardPaths::findExecutable(shell).isEmpty();
}

QStringList lines(const QByteArray& text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

// What zsh is told for the last of the words; "FILES" for its own completion of files.
QStringList zshCompletions(const QStringList& words)
{
    const QString script =
        QStringLiteral("compadd() { while [[ $# -gt 0 && $1 != -- ]]; do shift; done; shift; local w; "
                       "for w in \"$@\"; do [[ $w == ${PREFIX}* ]] && print -r -- $w; done; return 0 }\n"
                       "_files() { print FILES }\n"
                       "file=$1; shift; words=(zohpc \"$@\"); CURRENT=$#words; PREFIX=$words[-1]\n"
                       "source $file");
    const zoCommandRun run = zoCommandRun::program(
        "zsh", QStringList{"-f", "-c", script, "zsh", s_folder + "/_zohpc"} + words, {}, environment());
    if (!run.errors.isEmpty())
        qWarning("%s", run.errors.constData());
    return lines(run.output);
}

// The same of fish, without its descriptions.
QStringList fishCompletions(const QStringList& words)
{
    const QString line = QLatin1String("zohpc ") + words.join(QLatin1Char(' '));
    const zoCommandRun run = zoCommandRun::program(
        "fish",
        {"--no-config", "-c",
         "source '" + s_folder + "/zohpc.fish'; cd '" + s_folder + "'; complete -C '" + line + "'"},
        {}, environment());
    if (!run.errors.isEmpty())
        qWarning("%s", run.errors.constData());
    QStringList result = lines(run.output);
    for (QString& word : result)
        word = word.section(QLatin1Char('\t'), 0, 0);
    return result;
}
} // namespace

// The completions for zsh and fish in these shells themselves; that for bash has a test of its own.
class tst_zohpcShells final : public zoTestCase
{
    Q_OBJECT

private slots:
    void wordIsCompleted_data();
    void wordIsCompleted();
    void everyOptionIsOffered_data();
    void everyOptionIsOffered();
    void zshFindsItByItsName();

private:
    zoCliFiles m_files;
};

void tst_zohpcShells::wordIsCompleted_data()
{
    QTest::addColumn<QString>("shell");
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("offered");

    QStringList first;
    const QStringList commands = lines(zoCommandRun::zohpc({"--list-commands"}).output);
    for (const QString& command : commands)
        first << command.section(QLatin1Char(' '), 0, 0);
    first.removeDuplicates();
    for (const char* shell : {"zsh", "fish"}) {
        QTest::addRow("%s-first-word", shell)
            << shell << QStringList{""} << first + QStringList{"help", "--help", "--version"};
        QTest::addRow("%s-begun-word", shell) << shell << QStringList{"de"} << QStringList{"describe"};
        QTest::addRow("%s-word-after-help", shell)
            << shell << QStringList{"help", "dr"} << QStringList{"draw"};
        QTest::addRow("%s-second-word", shell)
            << shell << QStringList{"hosts", ""} << QStringList{"expand", "fold", "tree", "--help"};
        QTest::addRow("%s-option", shell)
            << shell << QStringList{"draw", "--s"} << QStringList{"--scale", "--size"};
        QTest::addRow("%s-value-of-a-list", shell)
            << shell << QStringList{"draw", "--picture", ""} << QStringList{"room", "screens", "network"};
        QTest::addRow("%s-value-that-is-no-file", shell)
            << shell << QStringList{"draw", "--size", ""} << QStringList();
        QTest::addRow("%s-code-of-a-problem", shell)
            << shell << QStringList{"check", "--explain", "wall-"} << QStringList{"wall-in-metres"};
        QTest::addRow("%s-mode-of-one-window", shell) << shell << QStringList{"new", "--stereo", "split"}
                                                      << QStringList{"split-left-right", "split-top-bottom"};
        QTest::addRow("%s-hosts-text-is-no-file", shell)
            << shell << QStringList{"hosts", "fold", ""} << QStringList();
    }
    QTest::newRow("zsh-file") << "zsh" << QStringList{"check", ""} << QStringList{"FILES"};
    QTest::newRow("zsh-value-of-a-short-option")
        << "zsh" << QStringList{"draw", "-o", ""} << QStringList{"FILES"};
    QTest::newRow("fish-file") << "fish" << QStringList{"check", "_zo"} << QStringList{"_zohpc"};
    QTest::newRow("fish-value-of-a-short-option")
        << "fish" << QStringList{"draw", "-o", "_zo"} << QStringList{"_zohpc"};
}

void tst_zohpcShells::wordIsCompleted()
{
    QFETCH(QString, shell);
    QFETCH(QStringList, words);
    QFETCH(QStringList, offered);
    if (isMissing(shell))
        QSKIP(qPrintable(shell + QLatin1String(" is not installed")));

    QStringList result = shell == QLatin1String("zsh") ? zshCompletions(words) : fishCompletions(words);

    result.sort();
    offered.sort();
    QCOMPARE(result, offered);
}

void tst_zohpcShells::everyOptionIsOffered_data()
{
    QTest::addColumn<QString>("shell");
    QTest::addColumn<QString>("command");

    const QStringList commands = lines(zoCommandRun::zohpc({"--list-commands"}).output);
    for (const QString& command : commands) {
        QTest::newRow(qPrintable("zsh-" + command)) << "zsh" << command;
        QTest::newRow(qPrintable("fish-" + command)) << "fish" << command;
    }
}

void tst_zohpcShells::everyOptionIsOffered()
{
    QFETCH(QString, shell);
    QFETCH(QString, command);
    if (isMissing(shell))
        QSKIP(qPrintable(shell + QLatin1String(" is not installed")));
    const QStringList words = command.split(QLatin1Char(' '));
    QStringList known;
    const QStringList help = lines(zoCommandRun::zohpc(words + QStringList{"--help"}).output);
    for (const QString& line : help) {
        const int option = line.indexOf(QLatin1String("--"));
        if (line.startsWith(QLatin1String("  ")) && (option == 2 || option == 6))
            known << line.mid(option).section(QLatin1Char(' '), 0, 0);
    }
    QVERIFY(known.contains(QStringLiteral("--help")));

    QStringList offered = shell == QLatin1String("zsh") ? zshCompletions(words + QStringList{"--"})
                                                        : fishCompletions(words + QStringList{"--"});

    offered.sort();
    known.sort();
    QCOMPARE(offered, known);
}

void tst_zohpcShells::zshFindsItByItsName()
{
    if (isMissing(QStringLiteral("zsh")))
        QSKIP("zsh is not installed");

    const zoCommandRun run = zoCommandRun::program(
        "zsh",
        {"-f", "-c", "fpath=($1 $fpath); autoload -U compinit; compinit -u -d $2; print -r -- $_comps[zohpc]",
         "zsh", s_folder, m_files.path("dump")},
        {}, environment());

    QCOMPARE(run.output, QByteArray("_zohpc\n"));
}

ZO_TEST_MAIN(tst_zohpcShells)
#include "tst_zohpcShells.moc"
