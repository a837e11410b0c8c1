#include "zoDiffCommand.h"

#include "zoClusterComparison.h"
#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoJson.h"

#include <zoClusterTags.h>

QString zoDiffCommand::description() const
{
    return tr(
        "Tells what differs between two configurations in the words of a wall: nodes added, tiles moved, "
        "overlaps\n"
        "changed. What is only written in another way (65 and 65.0, a default and nothing) is no difference. "
        "Exit\n"
        "code 1 when something differs.");
}

QStringList zoDiffCommand::examples() const
{
    return {QStringLiteral("zohpc diff old.zhpc new.zhpc\t") + tr("two files"),
            QStringLiteral("git show HEAD:wall.zhpc | zohpc diff - wall.zhpc\t") +
                tr("since the last commit")};
}

void zoDiffCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption(
        {QStringLiteral("json"), tr("Write JSON: a list with an object for each item or attribute: \"kind\", "
                                    "\"path\", \"old\" and \"new\" (null "
                                    "where there is none), and \"text\", the line that tells of it.")});
    parser.addPositionalArgument(QStringLiteral("A"),
                                 tr("The configuration before, \"-\" for standard input."));
    parser.addPositionalArgument(QStringLiteral("B"),
                                 tr("The configuration after, \"-\" for standard input."));
}

int zoDiffCommand::execute(const QCommandLineParser& parser)
{
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2)
        return usageError(tr("two files are needed"));
    if (files.at(0) == QLatin1String("-") && files.at(1) == QLatin1String("-"))
        return usageError(tr("standard input can be one of the files only"));
    zoClusterSetup before;
    zoClusterSetup after;
    const bool isRead = before.readFile(files.at(0));
    if (!after.readFile(files.at(1)) || !isRead)
        return zoConsole::Unusable;

    const zoClusterComparison comparison(before.document(), after.document());
    std::vector<zoDifferences::Difference> differences = comparison.differences();
    // Whatever has no words of its own is not kept quiet.
    if (differences.empty() && !comparison.isSame())
        differences.push_back({QStringLiteral("other"),
                               tr("the canonical texts differ"),
                               {{zoClusterTags::Cluster, QJsonValue(), QJsonValue()}}});

    const bool isJson = parser.isSet(QStringLiteral("json"));
    QByteArray text;
    QJsonArray list;
    for (const zoDifferences::Difference& difference : differences) {
        text += difference.text.toUtf8() + '\n';
        for (const zoDifferences::Change& change : difference.changes)
            list << QJsonObject{{QStringLiteral("kind"), difference.kind},
                                {QStringLiteral("path"), change.path},
                                {QStringLiteral("old"), change.before},
                                {QStringLiteral("new"), change.after},
                                {QStringLiteral("text"), difference.text}};
    }
    if (!zoConsole::write(isJson ? zoJson::text(list) : text))
        return zoConsole::Unusable;
    return differences.empty() ? zoConsole::Fine : zoConsole::ProblemsFound;
}
