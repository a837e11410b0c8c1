#include "zoSurveyCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCSurveyPlanes.h"
#include "zoHPCSurveyReader.h"
#include "zoHPCSurveySolver.h"
#include "zoSurveyReport.h"
#include "zoTextFile.h"

#include <zoFileReader.h>
#include <zoFileText.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

QString zoSurveyCommand::description() const
{
    return tr(
        "Finds the planes of a room by least squares from what was measured in it: sizes of walls or tiles, "
        "distances\n"
        "between their corners, heights above the floor, angles, what is plumb, point lists of a total "
        "station. "
        "Prints the\n"
        "planes, how well each measurement fits, and which one fits worst. Exit status 1 when the "
        "measurements "
        "do not\n"
        "determine the room, or one is off by more than --limit.");
}

QStringList zoSurveyCommand::examples() const
{
    return {QStringLiteral("zohpc survey room.txt\t") + tr("planes and residuals"),
            QStringLiteral("zohpc survey room.txt --into wall.zhpc -o wall.zhpc\t") +
                tr("the windows of wall.zhpc on the measured planes"),
            QStringLiteral("zohpc survey room.txt --limit 5 -o room.zhpc\t") +
                tr("a new configuration, if all fits to 5 mm")};
}

void zoSurveyCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write a configuration with the planes to <file>, \"-\" for standard output, where "
                         "the tables are not printed then."),
                      tr("file")});
    parser.addOption(
        {QStringLiteral("into"),
         tr("Replace the planes of the same names in the configuration <file>, and keep all else of it. "
            "A new configuration otherwise."),
         tr("file")});
    parser.addOption(
        {QStringLiteral("force"), tr("Replace the file of --into even when something of it gets lost.")});
    parser.addOption({QStringLiteral("limit"),
                      tr("Exit with 1 and write nothing when a residual is larger than <N> millimetres."),
                      QStringLiteral("N")});
    parser.addOption({QStringLiteral("json"), tr("Print JSON.")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("Measurements, \"-\" for standard input."));
}

bool zoSurveyCommand::checkUsage(const QCommandLineParser& parser, double& limit) const
{
    const auto refuse = [&](const QString& reason) {
        usageError(reason);
        return false;
    };
    if (parser.positionalArguments().size() != 1)
        return refuse(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                             : tr("one file at a time"));
    if (parser.isSet(QStringLiteral("into")) && !parser.isSet(QStringLiteral("output")))
        return refuse(tr("--into needs --output"));
    limit = 0.0;
    if (parser.isSet(QStringLiteral("limit"))) {
        const QString given = parser.value(QStringLiteral("limit"));
        bool isNumber = false;
        limit = given.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(limit) || limit <= 0.0)
            return refuse(tr("--limit: \"%1\" is no number of millimetres above 0").arg(given));
    }
    return true;
}

bool zoSurveyCommand::read(const QString& fileName, zoHPCSurvey& survey)
{
    zoTextFile::Content content;
    if (!zoTextFile::read(fileName, content))
        return false;
    const QString nul = tr("a NUL byte; what follows it is not read. Save the measurements as text");
    if (content.isCut) {
        zoConsole::printError(fileName, content.cutLine, content.cutColumn, nul);
        return false;
    }
    const QDir folder = fileName == QLatin1String("-") ? QDir::current() : QFileInfo(fileName).absoluteDir();
    zoHPCSurveyReader reader([&folder, &nul](const QString& name, QString& list, QString& reason) {
        QByteArray bytes;
        if (zoFileReader::read(folder.filePath(name), bytes, &reason) != zoFileReader::Result::Read)
            return false;
        const zoFileText text(bytes);
        list = text.text();
        if (text.isCut())
            reason =
                QStringLiteral("%1:%2: %3").arg(text.cutPlace().line).arg(text.cutPlace().column).arg(nul);
        return !text.isCut();
    });
    const bool isGood = reader.read(content.text);
    for (const zoHPCSurveyReader::Mistake& mistake : reader.mistakes())
        zoConsole::printError(mistake.file.isEmpty() ? fileName : mistake.file, mistake.line, 1,
                              mistake.text);
    survey = reader.survey();
    for (const zoHPCSurvey::Remark& remark : survey.remarks)
        zoConsole::printError(remark.file.isEmpty() ? fileName : remark.file, remark.line, 1, remark.text);
    return isGood;
}

int zoSurveyCommand::execute(const QCommandLineParser& parser)
{
    double limit = 0.0;
    if (!checkUsage(parser, limit))
        return zoConsole::Unusable;
    const QString file = parser.positionalArguments().constFirst();
    const QString output = parser.value(QStringLiteral("output"));
    zoHPCSurvey survey;
    if ((parser.isSet(QStringLiteral("output")) && !zoTextFile::mayWrite({output}, file)) ||
        !read(file, survey))
        return zoConsole::Unusable;
    const zoHPCSurveySolution solution = zoHPCSurveySolver::solve(survey);
    const zoSurveyReport report(survey, solution, file);
    const bool isQuiet = output == QLatin1String("-");
    if (!isQuiet && !zoConsole::write(parser.isSet(QStringLiteral("json")) ? report.json() : report.text()))
        return zoConsole::Unusable;
    for (const QString& open : solution.undetermined)
        zoConsole::printError(QStringLiteral("%1: %2").arg(file, open));
    if (!solution.isDetermined())
        return zoConsole::ProblemsFound;
    const zoHPCSurveyPlanes planes(survey, solution);
    if (!planes.unusable().isEmpty()) {
        zoConsole::printError(QStringLiteral("%1: %2").arg(file, planes.unusable()));
        return zoConsole::Unusable;
    }
    bool isWithin = true;
    for (std::size_t i = 0; limit > 0.0 && i < solution.residuals.size(); ++i) {
        if (std::abs(solution.residuals[i].millimetres) <= limit)
            continue;
        const zoHPCSurvey::Measurement& measurement = survey.measurements[i];
        zoConsole::printError(measurement.file.isEmpty() ? file : measurement.file, measurement.line, 1,
                              tr("%1 is off by %2 mm, more than %3")
                                  .arg(measurement.text,
                                       QString::number(std::abs(solution.residuals[i].millimetres), 'f', 1),
                                       QString::number(limit)));
        isWithin = false;
    }
    if (!isWithin)
        return zoConsole::ProblemsFound;
    return !parser.isSet(QStringLiteral("output")) || write(parser, survey, solution) ? zoConsole::Fine
                                                                                      : zoConsole::Unusable;
}

bool zoSurveyCommand::keepsAll(const QCommandLineParser& parser, const zoClusterSetup& setup)
{
    const QString into = parser.value(QStringLiteral("into"));
    const QVector<zoHPCDocumentLosses::Loss> losses = setup.losses();
    for (const zoHPCDocumentLosses::Loss& loss : losses)
        zoConsole::printError(into, loss.line, loss.column, loss.text);
    if (setup.file().isCut)
        zoConsole::printError(into, setup.file().cutLine, setup.file().cutColumn,
                              zoHPCDocumentLosses::cutText());
    if ((losses.isEmpty() && !setup.file().isCut) || parser.isSet(QStringLiteral("force")) ||
        !zoTextFile::isSameFile(into, parser.value(QStringLiteral("output"))))
        return true;
    zoConsole::printError(
        tr("%1: not rewritten, for this would be lost; --force does it all the same").arg(into));
    return false;
}

bool zoSurveyCommand::sharesName(const zoHPCConfiguration& configuration, const zoHPCSurvey& survey,
                                 const zoHPCSurveyPlanes& planes)
{
    QStringList names = planes.names();
    for (const zoHPCSurvey::Wall& wall : survey.walls)
        names << wall.name;
    const QList<zoHPCProjectionItem*> projections = configuration.displays().getProjectionItems();
    return std::any_of(projections.begin(), projections.end(), [&names](const zoHPCProjectionItem* item) {
        return names.contains(item->getString(zoHPCProjectionItem::Name));
    });
}

bool zoSurveyCommand::write(const QCommandLineParser& parser, const zoHPCSurvey& survey,
                            const zoHPCSurveySolution& solution)
{
    const QString into = parser.value(QStringLiteral("into"));
    zoHPCConfiguration configuration;
    if (parser.isSet(QStringLiteral("into"))) {
        zoClusterSetup setup;
        if (!setup.readFile(into))
            return false;
        if (!keepsAll(parser, setup))
            return false;
        QDomDocument document = setup.document();
        configuration.read(document);
    } else {
        configuration.hosts().setDefaultConfig();
        configuration.displays().setDefaultConfig();
    }
    zoHPCSurveyPlanes planes(survey, solution);
    const bool replacesNothing =
        parser.isSet(QStringLiteral("into")) && !sharesName(configuration, survey, planes);
    if (!planes.putInto(configuration)) {
        const QString file = into.isEmpty() ? parser.positionalArguments().constFirst() : into;
        zoConsole::printError(QStringLiteral("%1: %2").arg(file, planes.mistake()));
        return false;
    }
    if (replacesNothing)
        zoConsole::printError(
            tr("%1: no projection there has the name of a measured plane: all were added, and windows "
               "show what they showed before")
                .arg(into));
    for (const QString& remark : planes.remarks())
        zoConsole::printError(QStringLiteral("%1: %2").arg(into, remark));
    return zoTextFile::write(parser.value(QStringLiteral("output")), configuration.text());
}
