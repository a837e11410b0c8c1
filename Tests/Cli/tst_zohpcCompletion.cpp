#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

// The completion of the shell and the manual page know each command and option of the program.
class tst_zohpcCompletion final : public zoTestCase
{
    Q_OBJECT

private slots:
    void commandsAreThoseOfTheOverview();
    void wordIsCompleted_data();
    void wordIsCompleted();
    void everyOptionIsOffered_data();
    void everyOptionIsOffered();
    void offeredValueIsTaken_data();
    void offeredValueIsTaken();
    void manualPageNamesEveryOption_data();
    void manualPageNamesEveryOption();
    void manualHasNoMistakes();

private:
    static QStringList commands();
    static void addCommandRows();
    // The long options in the help of a command.
    static QStringList options(const QString& command);
    // What the shell offers for the last of the words, which may be empty.
    static QStringList completions(const QStringList& words);
};

QStringList tst_zohpcCompletion::commands()
{
    const QString names = QString::fromUtf8(zoCommandRun::zohpc({QStringLiteral("--list-commands")}).output);
    return names.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tst_zohpcCompletion::addCommandRows()
{
    QTest::addColumn<QString>("command");

    for (const QString& command : commands())
        QTest::newRow(qPrintable(command)) << command;
}

QStringList tst_zohpcCompletion::options(const QString& command)
{
    const QString help = QString::fromUtf8(
        zoCommandRun::zohpc(command.split(QLatin1Char(' ')) << QStringLiteral("--help")).output);
    static const QRegularExpression option(QStringLiteral("^  (?:-[a-z], )?(--[a-z-]+)"),
                                           QRegularExpression::MultilineOption);
    QStringList result;
    for (auto match = option.globalMatch(help); match.hasNext();)
        result << match.next().captured(1);
    return result;
}

QStringList tst_zohpcCompletion::completions(const QStringList& words)
{
    const QString script =
        QStringLiteral("source \"$1\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _zohpc; "
                       "printf '%s\\n' \"${COMPREPLY[@]}\"");
    const zoCommandRun run = zoCommandRun::program(
        QStringLiteral("bash"),
        QStringList{QStringLiteral("--norc"), QStringLiteral("-c"), script, QStringLiteral("bash"),
                    QStringLiteral(ZO_COMPLETION), QStringLiteral(ZO_ZOHPC)} +
            words,
        {}, {"PATH=" + qEnvironmentVariable("PATH"), QStringLiteral("LC_ALL=C.UTF-8")});
    if (!run.errors.isEmpty())
        qWarning("%s", run.errors.constData());
    return QString::fromUtf8(run.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tst_zohpcCompletion::commandsAreThoseOfTheOverview()
{
    const QByteArray overview = zoCommandRun::zohpc({QStringLiteral("--help")}).output;

    const QStringList names = commands();

    QVERIFY(names.size() >= 10);
    QByteArray listed;
    for (const QString& name : names)
        listed += "\n  " + name.toUtf8() + ' ';
    static const QRegularExpression command(QStringLiteral("^  ((?!zohpc)[a-z]+(?: [a-z]+)?) "),
                                            QRegularExpression::MultilineOption);
    QByteArray shown;
    for (auto match = command.globalMatch(QString::fromUtf8(overview)); match.hasNext();)
        shown += "\n  " + match.next().captured(1).toUtf8() + ' ';
    QCOMPARE(listed, shown);
}

void tst_zohpcCompletion::wordIsCompleted_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("offered");

    QStringList first;
    for (const QString& command : commands())
        first << command.section(QLatin1Char(' '), 0, 0);
    first.removeDuplicates();
    QTest::newRow("first-word") << QStringList{""} << first + QStringList{"help", "--help", "--version"};
    QTest::newRow("code-of-a-problem")
        << QStringList{"check", "--explain", "wall-"} << QStringList{"wall-in-metres"};
    QTest::newRow("begun-word") << QStringList{"c"} << QStringList{"check", "convert"};
    QTest::newRow("word-after-help") << QStringList{"help", ""} << first;
    QTest::newRow("second-word-of-a-command")
        << QStringList{"hosts", ""} << QStringList{"expand", "fold", "tree", "--help"};
    QTest::newRow("second-word-after-help") << QStringList{"help", "hosts", "f"} << QStringList{"fold"};
    QTest::newRow("option") << QStringList{"draw", "--s"} << QStringList{"--scale", "--size"};
    QTest::newRow("file") << QStringList{"check", ZO_COMPLETION ".f"} << QStringList{ZO_COMPLETION ".fish"};
    QTest::newRow("hosts-text-is-no-file") << QStringList{"hosts", "fold", ""} << QStringList();
    QTest::newRow("value-of-a-short-option")
        << QStringList{"hosts", "fold", "-f", ZO_COMPLETION ".f"} << QStringList{ZO_COMPLETION ".fish"};
    QTest::newRow("value-that-is-no-file") << QStringList{"draw", "--size", ""} << QStringList();
    QTest::newRow("value-of-a-list") << QStringList{"draw", "--picture", "s"} << QStringList{"screens"};
    QTest::newRow("mode-of-one-window")
        << QStringList{"new", "--stereo", "split"} << QStringList{"split-left-right", "split-top-bottom"};
    QTest::newRow("unknown-command") << QStringList{"frobnicate", "x"} << QStringList();
}

void tst_zohpcCompletion::wordIsCompleted()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, offered);

    QStringList result = completions(words);

    result.sort();
    offered.sort();
    QCOMPARE(result, offered);
}

void tst_zohpcCompletion::everyOptionIsOffered_data()
{
    addCommandRows();
}

void tst_zohpcCompletion::everyOptionIsOffered()
{
    QFETCH(QString, command);
    const QStringList known = options(command);
    QVERIFY(known.contains(QStringLiteral("--help")));

    const QStringList offered = completions(command.split(QLatin1Char(' ')) << QStringLiteral("--"));

    QCOMPARE(offered, known);
}

void tst_zohpcCompletion::offeredValueIsTaken_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("option");

    QTest::newRow("picture") << QStringList{"draw", "-o", "-", "-"} << "--picture";
    QTest::newRow("format") << QStringList{"draw", "-o", "-", "-"} << "--format";
    QTest::newRow("form") << QStringList{"nodes", "-"} << "--format";
    QTest::newRow("stereo") << QStringList{"new", "--wall", "1x1", "--hosts", "n[1-2]"} << "--stereo";
}

void tst_zohpcCompletion::offeredValueIsTaken()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, option);

    const QStringList values = completions({arguments.constFirst(), option, QString()});

    QVERIFY(values.size() > 1);
    for (const QString& value : values) {
        const zoCommandRun run = zoCommandRun::zohpc(arguments + QStringList{option, value},
                                                     "<cluster version=\"1\"><master><network><node "
                                                     "name=\"a\"/></network></master><display/></cluster>");
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.exitCode, 0);
    }
}

void tst_zohpcCompletion::manualPageNamesEveryOption_data()
{
    addCommandRows();
}

void tst_zohpcCompletion::manualPageNamesEveryOption()
{
    QFETCH(QString, command);

    QString page = QString::fromUtf8(zoCliFiles::read(QStringLiteral(ZO_MANUAL)));
    page.replace(QLatin1String("\\-"), QLatin1String("-"));

    QVERIFY(page.contains(QLatin1String("\n.SS zohpc ") + command + QLatin1Char(' ')));
    for (const QString& option : options(command)) {
        const QRegularExpression word(option + QStringLiteral("(?![a-z-])"));
        QVERIFY2(page.contains(word), qPrintable(option));
    }
}

void tst_zohpcCompletion::manualHasNoMistakes()
{
    if (QStandardPaths::findExecutable(QStringLiteral("mandoc")).isEmpty())
        QSKIP("mandoc (Debian package mandoc) is not installed");

    const zoCommandRun run = zoCommandRun::program(QStringLiteral("mandoc"), {"-T", "lint", ZO_MANUAL}, {},
                                                   {"PATH=" + qEnvironmentVariable("PATH")});

    QCOMPARE(run.whole(), QByteArray("--- errors\n--- exit code 0\n"));
}

ZO_TEST_MAIN(tst_zohpcCompletion)
#include "tst_zohpcCompletion.moc"
