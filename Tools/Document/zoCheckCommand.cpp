#include "zoCheckCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCDocumentProblems.h"
#include "zoHPCSuggestion.h"
#include "zoJson.h"

#include <QFile>

namespace
{
using Problem = zoHPCDocumentProblems::Problem;

QJsonObject jsonOf(const Problem& problem, const QString& file)
{
    return {{QStringLiteral("file"), file},
            {QStringLiteral("line"), problem.place.line},
            {QStringLiteral("column"), problem.place.column},
            {QStringLiteral("code"), zoHPCProblem::kindName(problem.kind)},
            {QStringLiteral("severity"), zoHPCProblem::severityName(zoHPCProblem::severityOf(problem.kind))},
            {QStringLiteral("text"), problem.message},
            {QStringLiteral("fix"), problem.fixText.isEmpty() ? QJsonValue() : QJsonValue(problem.fixText)}};
}

QByteArray lineOf(const Problem& problem, const QString& file)
{
    return QStringLiteral("%1:%2:%3: %4: %5 [%6]\n")
        .arg(file, QString::number(problem.place.line), QString::number(problem.place.column),
             zoHPCProblem::severityName(zoHPCProblem::severityOf(problem.kind)), problem.message,
             zoHPCProblem::kindName(problem.kind))
        .toUtf8();
}
} // namespace

QString zoCheckCommand::description() const
{
    return tr(
        "Reads configurations and lists their problems, as the problem list of the cluster window does: "
        "what would\n"
        "keep a window dark or make it show something wrong. What the text holds and nobody reads, such as\n"
        "misspelt attributes, is told as well. Exit code 1 when errors or warnings were found, 0 for notes "
        "only.");
}

QStringList zoCheckCommand::examples() const
{
    return {QStringLiteral("zohpc check *.zhpc\t") + tr("before a commit"),
            QStringLiteral("zohpc convert old.xml | zohpc check --json -\t") + tr("for a script")};
}

void zoCheckCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("explain"),
                      tr("Tell what a problem means on the wall and how to mend it, by the code that stands "
                         "behind each message; without <CODE> the codes and titles of all problems."),
                      tr("CODE")});
    parser.addOption(
        {QStringLiteral("json"), tr("Write JSON: a list of objects with \"file\", \"line\", "
                                    "\"column\", \"code\", \"severity\", \"text\" and \"fix\".")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."),
                                 QStringLiteral("FILE..."));
}

QStringList zoCheckCommand::optionsWithoutValue() const
{
    return {QStringLiteral("--explain")};
}

int zoCheckCommand::execute(const QCommandLineParser& parser)
{
    if (parser.isSet(QStringLiteral("explain"))) {
        const QString code = parser.value(QStringLiteral("explain"));
        return code.isEmpty() ? listCodes() : explain(code);
    }
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty())
        return usageError(tr("no file given"));

    const bool isJson = parser.isSet(QStringLiteral("json"));
    int result = zoConsole::Fine;
    QByteArray text;
    QJsonArray list;
    for (const QString& file : files) {
        zoClusterSetup setup;
        std::vector<Problem> problems;
        if (!setup.readFile(file, problems)) {
            result = zoConsole::Unusable;
            continue;
        }
        for (const Problem& problem : problems) {
            if (zoHPCProblem::severityOf(problem.kind) != zoHPCProblem::Severity::Note)
                result = qMax<int>(result, zoConsole::ProblemsFound);
            if (isJson)
                list << jsonOf(problem, file);
            else
                text += lineOf(problem, file);
        }
    }
    if (!zoConsole::write(isJson ? zoJson::text(list) : text))
        return zoConsole::Unusable;
    return result;
}

int zoCheckCommand::listCodes()
{
    QByteArray text;
    for (int i = 0; i < zoHPCProblem::kindCount(); ++i) {
        const auto kind = zoHPCProblem::Kind(i);
        text +=
            QStringLiteral("%1  %2: %3\n")
                .arg(zoHPCProblem::kindName(kind), -30)
                .arg(zoHPCProblem::severityName(zoHPCProblem::severityOf(kind)), zoHPCProblem::titleOf(kind))
                .toUtf8();
    }
    return zoConsole::write(text) ? zoConsole::Fine : zoConsole::Unusable;
}

int zoCheckCommand::explain(const QString& code) const
{
    QFile page(QStringLiteral(":/manual/problems.md"));
    QString section;
    QStringList codes;
    if (page.open(QIODevice::ReadOnly)) {
        const QStringList lines = QString::fromUtf8(page.readAll()).split(QLatin1Char('\n'));
        bool isIn = false;
        for (const QString& line : lines) {
            if (line.startsWith(QLatin1Char('#'))) {
                isIn = line == QLatin1String("### ") + code;
                if (line.startsWith(QLatin1String("### ")))
                    codes << line.mid(4);
            }
            if (isIn)
                section += line + QLatin1Char('\n');
        }
    }
    if (!section.isEmpty())
        return zoConsole::write((section.trimmed() + QLatin1Char('\n')).toUtf8()) ? zoConsole::Fine
                                                                                  : zoConsole::Unusable;
    const QString meant = zoHPCSuggestion::closest(code, codes);
    return usageError(meant.isEmpty()
                          ? tr("there is no problem \"%1\"").arg(code)
                          : tr("there is no problem \"%1\": did you mean \"%2\"?").arg(code, meant));
}
