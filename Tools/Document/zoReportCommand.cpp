#include "zoReportCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCDocumentText.h"
#include "zoHPCPdfFile.h"
#include "zoHPCReport.h"
#include "zoTextFile.h"

#include <QBuffer>
#include <QFileInfo>

// What was asked for.
struct zoReportCommand::Request
{
    QString file;
    QString output;
    QString title;
    zoHPCReport::Paper paper = zoHPCReport::Paper::A4;
    double pixelPitch = 0.0; // mm; 0: unknown
};

QString zoReportCommand::description() const
{
    return tr(
        "Writes a PDF for those who build the wall: front elevations with the node, screen, row and column "
        "of "
        "each\n"
        "tile, the order of the cables, a table of all windows with their pixels, corners and blends, the "
        "networks with\n"
        "their gateways, the viewer, and the problems. Each page names the file's checksum.");
}

QStringList zoReportCommand::examples() const
{
    return {QStringLiteral("zohpc report wall.zhpc -o wall.pdf\t") + tr("for the ladder"),
            QStringLiteral("zohpc report wall.zhpc --paper A3 -o - | lp -o media=A3\t") + tr("to a printer")};
}

void zoReportCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>, \"-\" for standard output."),
                      tr("file")});
    parser.addOption({QStringLiteral("paper"), tr("Size of the pages (default A4), in landscape."),
                      QStringLiteral("A4|A3"), QStringLiteral("A4")});
    parser.addOption(
        {QStringLiteral("title"), tr("Title of the report (default: the name of the file)."), tr("text")});
    parser.addOption({QStringLiteral("pixel-pitch"),
                      tr("Millimetres of a pixel of tiled walls, which have no size of their own."),
                      tr("N")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
}

int zoReportCommand::execute(const QCommandLineParser& parser)
{
    Request request;
    if (!read(parser, request))
        return zoConsole::Unusable;
    bool isNumber = false;
    const QString date = qEnvironmentVariable("SOURCE_DATE_EPOCH");
    date.toULongLong(&isNumber);
    if (!date.isEmpty() && !isNumber)
        return usageError(tr("SOURCE_DATE_EPOCH: \"%1\" is no number of seconds").arg(date));
    // The form of a date in a file depends on the zone.
    if (isNumber)
        qputenv("TZ", "UTC");
    return write(request);
}

bool zoReportCommand::read(const QCommandLineParser& parser, Request& request) const
{
    const auto refuse = [&](const QString& reason) {
        usageError(reason);
        return false;
    };
    if (parser.positionalArguments().size() != 1)
        return refuse(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                             : tr("one file at a time"));
    request.file = parser.positionalArguments().constFirst();
    if (!parser.isSet(QStringLiteral("output")))
        return refuse(tr("--output is missing"));
    request.output = parser.value(QStringLiteral("output"));
    const QString paper = parser.value(QStringLiteral("paper"));
    if (paper != QLatin1String("A4") && paper != QLatin1String("A3"))
        return refuse(tr("--paper: \"%1\" is no paper: A4, A3").arg(paper));
    request.paper = paper == QLatin1String("A4") ? zoHPCReport::Paper::A4 : zoHPCReport::Paper::A3;
    request.title = parser.value(QStringLiteral("title"));
    if (parser.isSet(QStringLiteral("pixel-pitch"))) {
        const QString pitch = parser.value(QStringLiteral("pixel-pitch"));
        bool isNumber = false;
        request.pixelPitch = pitch.toDouble(&isNumber);
        if (!isNumber || !(request.pixelPitch >= 0.001 && request.pixelPitch <= 1000.0))
            return refuse(
                tr("--pixel-pitch: \"%1\" is no number of millimetres from 0.001 to 1000").arg(pitch));
    }
    return true;
}

int zoReportCommand::write(const Request& request)
{
    zoClusterSetup setup; // as the file was meant to be
    std::vector<zoHPCDocumentProblems::Problem> found;
    if (!zoTextFile::mayWrite({request.output}, request.file) || !setup.readFile(request.file, found))
        return zoConsole::Unusable;
    // What is told of the wall is what the file says, not what was guessed.
    zoClusterSetup asItIs;
    if (setup.hasGuessed()) {
        QDomDocument document;
        zoHPCDocumentText::Refusal refusal;
        zoHPCDocumentText::parse(setup.source(), document, refusal);
        asItIs.readDocument(document);
    }
    zoClusterSetup& told = setup.hasGuessed() ? asItIs : setup;

    zoHPCReport::Subject subject;
    if (request.file != QLatin1String("-"))
        subject.fileName = QFileInfo(request.file).fileName();
    const QString fallback = subject.fileName.isEmpty() ? tr("Report") : subject.fileName;
    subject.title = request.title.isEmpty() ? fallback : request.title;
    subject.checksum = zoHPCReport::checksumOf(setup.file().bytes);
    subject.date = zoHPCPdfFile::date();
    std::vector<zoHPCReport::Problem> problems;
    problems.reserve(found.size());
    for (const zoHPCDocumentProblems::Problem& problem : found)
        problems.push_back(
            {problem.kind, tr("line %1").arg(problem.place.line), problem.message, problem.fixText});
    const zoHPCReport report(subject, told.displays(), told.hosts().master(), problems, request.pixelPitch,
                             request.paper);
    if (!report.refusal().isEmpty()) {
        zoConsole::printError(tr("%1: %2").arg(request.file, report.refusal()));
        return zoConsole::Unusable;
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!report.writePdf(buffer)) {
        zoConsole::printError(tr("%1: the pages cannot be written").arg(request.output));
        return zoConsole::Unusable;
    }
    return zoTextFile::writeBytes(request.output, buffer.data()) ? zoConsole::Fine : zoConsole::Unusable;
}
