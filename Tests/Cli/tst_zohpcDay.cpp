#include "zoCliFiles.h"
#include "zoCommandRun.h"
#include "zoTestCase.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

namespace
{
struct Step
{
    QString commands;
    QByteArray output; // as the document shows it; empty where it shows none
};

// Fenced blocks of commands in the section of that title, with the output that follows.
std::vector<Step> stepsOfRecipe()
{
    const QString text = QString::fromUtf8(zoCliFiles::read(QStringLiteral(ZO_RECIPES)));
    static const QRegularExpression section(QStringLiteral("\n## A day with a wall\n(.*?)\n## "),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression step(QStringLiteral("\n```sh\n(.*?)```\n(?:\n```text\n(.*?)```\n)?"),
                                         QRegularExpression::DotMatchesEverythingOption);
    std::vector<Step> steps;
    for (auto match = step.globalMatch(section.match(text).captured(1)); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        steps.push_back({found.captured(1), found.captured(2).toUtf8()});
    }
    return steps;
}

// The same of the page of man, which shows no output.
std::vector<Step> stepsOfManPage()
{
    const QString text = QString::fromUtf8(zoCliFiles::read(QStringLiteral(ZO_MAN_PAGE)));
    static const QRegularExpression section(QStringLiteral("\n\\.SH A DAY WITH A WALL\n(.*?)\n\\.SH "),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression step(QStringLiteral("\n\\.nf\n(.*?)\\.fi"),
                                         QRegularExpression::DotMatchesEverythingOption);
    std::vector<Step> steps;
    for (auto match = step.globalMatch(section.match(text).captured(1)); match.hasNext();) {
        QString commands = match.next().captured(1);
        commands.replace(QLatin1String("\\-"), QLatin1String("-"));
        commands.replace(QLatin1String("\\(dq"), QLatin1String("\""));
        commands.replace(QLatin1String("\\(aq"), QLatin1String("'"));
        steps.push_back({commands, {}});
    }
    return steps;
}
} // namespace

// The day of an administrator that the manual's recipes and the page of man show, command by command as it stands there.
class tst_zohpcDay final : public zoTestCase
{
    Q_OBJECT

private slots:
    void commandsOfTheDocumentWork_data();
    void commandsOfTheDocumentWork();

private:
    zoCliFiles m_files;
};

void tst_zohpcDay::commandsOfTheDocumentWork_data()
{
    QTest::addColumn<bool>("isManPage");

    QTest::newRow("recipe") << false;
    QTest::newRow("man") << true;
}

void tst_zohpcDay::commandsOfTheDocumentWork()
{
    QFETCH(bool, isManPage);
    if (QStandardPaths::findExecutable(QStringLiteral("git")).isEmpty())
        QSKIP("git is not installed");
    const std::vector<Step> steps = isManPage ? stepsOfManPage() : stepsOfRecipe();
    QCOMPARE(steps.size(), std::size_t(5));
    // A person has a name, and the repository of the site is there.
    const QString folder = m_files.path(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(QDir().mkpath(folder + "/wall"));
    const QStringList environment{"PATH=" + QFileInfo(QStringLiteral(ZO_ZOHPC)).absolutePath() + ':' +
                                      qEnvironmentVariable("PATH"),
                                  "LC_ALL=C.UTF-8",
                                  "HOME=" + folder,
                                  "GIT_CONFIG_NOSYSTEM=1",
                                  "GIT_AUTHOR_NAME=a",
                                  "GIT_AUTHOR_EMAIL=a@b",
                                  "GIT_COMMITTER_NAME=a",
                                  "GIT_COMMITTER_EMAIL=a@b"};
    const auto run = [&](const QString& commands) {
        return zoCommandRun::program("sh", {"-ec", "cd '" + folder + "/wall'\n" + commands}, {}, environment);
    };
    QCOMPARE(run("git init -q --bare ../site.git").exitCode, 0);

    zoCommandRun last;
    for (const Step& step : steps) {
        last = run(step.commands);
        QCOMPARE(last.errors, QByteArray());
        QCOMPARE(last.exitCode, 0);
        if (!isManPage)
            QCOMPARE(last.output, step.output);
    }
    QVERIFY2(last.output.startsWith("node[01-04,06],spare1\n"), last.output.constData());
    QCOMPARE(run("git --git-dir=../site.git show main:wall.zhpc | cmp - wall.zhpc").exitCode, 0);
}

ZO_TEST_MAIN(tst_zohpcDay)
#include "tst_zohpcDay.moc"
