#include "zoCheckCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCLayout.h"
#include "zoHPCProblems.h"
#include "zoJson.h"
#include "zoSourcePlaces.h"

namespace
{
QJsonObject jsonOf(const zoHPCProblem& problem, const QString& file, const zoSourcePlaces::Place& place)
{
    return {{QStringLiteral("file"), file},
            {QStringLiteral("line"), place.line},
            {QStringLiteral("column"), place.column},
            {QStringLiteral("code"), zoHPCProblem::kindName(problem.kind)},
            {QStringLiteral("severity"), zoHPCProblem::severityName(problem.severity())},
            {QStringLiteral("text"), problem.message},
            {QStringLiteral("fix"), problem.hasFix() ? QJsonValue(problem.fixText) : QJsonValue()}};
}
} // namespace

QString zoCheckCommand::description() const
{
    return tr(
        "Reads configurations and lists their problems, as the problem list of the cluster window does: "
        "what would\n"
        "keep a window dark or make it show something wrong. Exit code 1 when something was found.");
}

QStringList zoCheckCommand::examples() const
{
    return {QStringLiteral("zohpc check *.zhpc\t") + tr("before a commit"),
            QStringLiteral("zohpc convert old.xml | zohpc check --json -\t") + tr("for a script")};
}

void zoCheckCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption(
        {QStringLiteral("json"), tr("Write JSON: a list of objects with \"file\", \"line\", "
                                    "\"column\", \"code\", \"severity\", \"text\" and \"fix\".")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."),
                                 QStringLiteral("FILE..."));
}

int zoCheckCommand::execute(const QCommandLineParser& parser)
{
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty())
        return usageError(tr("no file given"));

    const bool isJson = parser.isSet(QStringLiteral("json"));
    int result = zoConsole::Fine;
    QByteArray text;
    QJsonArray list;
    for (const QString& file : files) {
        zoClusterSetup setup;
        if (!setup.readFile(file)) {
            result = zoConsole::Unusable;
            continue;
        }
        const zoHPCLayout layout(setup.displays().getProjectionItems(), setup.displays().getWindowItems(),
                                 setup.hosts().master());
        const zoHPCProblems::List problems = zoHPCProblems::find(layout);
        if (problems.empty())
            continue;
        const zoSourcePlaces places(setup);
        for (const zoHPCProblem& problem : problems) {
            const zoSourcePlaces::Place place = places.place(problem.item);
            if (problem.severity() != zoHPCProblem::Severity::Note)
                result = qMax<int>(result, zoConsole::ProblemsFound);
            if (isJson)
                list << jsonOf(problem, file, place);
            else
                text += QStringLiteral("%1:%2:%3: %4: %5 [%6]\n")
                            .arg(file, QString::number(place.line), QString::number(place.column),
                                 zoHPCProblem::severityName(problem.severity()), problem.message,
                                 zoHPCProblem::kindName(problem.kind))
                            .toUtf8();
        }
    }
    if (!zoConsole::write(isJson ? zoJson::text(list) : text))
        return zoConsole::Unusable;
    return result;
}
