#include "zoDiffCommand.h"

#include "zoClusterComparison.h"
#include "zoClusterSetup.h"
#include "zoComparedDocument.h"
#include "zoConsole.h"
#include "zoHPCDocumentText.h"
#include "zoJson.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QJsonDocument>

#include <vector>

namespace
{
using Differences = std::vector<zoDifferences::Difference>;

QByteArray textOf(const Differences& differences)
{
    QByteArray text;
    for (const zoDifferences::Difference& difference : differences)
        text += difference.text.toUtf8() + '\n';
    return text;
}

QByteArray valueOf(const QJsonValue& value)
{
    return value.isString() ? zoJson::quoted(value.toString())
           : value.isNull() ? QByteArray("null")
                            : QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
}

// One after the other: a line that tells of many changes stands in each of them.
QByteArray jsonOf(const Differences& differences)
{
    QByteArray text("[");
    for (const zoDifferences::Difference& difference : differences) {
        const QByteArray kind = zoJson::quoted(difference.kind);
        const QByteArray line = zoJson::quoted(difference.text);
        for (const zoDifferences::Change& change : difference.changes) {
            if (text.size() > 1)
                text += ",\n ";
            text += "{\"kind\":" + kind + ",\"new\":" + valueOf(change.after) +
                    ",\"old\":" + valueOf(change.before) + ",\"path\":" + zoJson::quoted(change.path) +
                    ",\"text\":" + line + '}';
        }
    }
    return text + "]\n";
}
} // namespace

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
    const std::unique_ptr<zoComparedDocument> before = read(files.at(0));
    const std::unique_ptr<zoComparedDocument> after = read(files.at(1));
    if (!before || !after)
        return zoConsole::Unusable;

    zoClusterComparison comparison(*before, *after);
    std::vector<zoDifferences::Difference> differences = comparison.takeDifferences();
    // Whatever has no words of its own is not kept quiet.
    if (differences.empty() && !comparison.isSame())
        differences.push_back({QStringLiteral("other"),
                               tr("the canonical texts differ"),
                               {{zoClusterTags::Cluster, QJsonValue(), QJsonValue()}}});
    if (!zoConsole::write(parser.isSet(QStringLiteral("json")) ? jsonOf(differences) : textOf(differences)))
        return zoConsole::Unusable;
    return differences.empty() ? zoConsole::Fine : zoConsole::ProblemsFound;
}

// The items are gone before their document is built, and before the other file is read: a hundred thousand tiles take
// more than both documents.
std::unique_ptr<zoComparedDocument> zoDiffCommand::read(const QString& fileName)
{
    QString text;
    {
        zoClusterSetup setup;
        if (!setup.readFile(fileName))
            return nullptr;
        text = setup.outline();
    }
    QDomDocument document;
    zoHPCDocumentText::parse(text, document);
    return std::make_unique<zoComparedDocument>(document);
}
