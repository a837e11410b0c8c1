#include "zoNewCommand.h"

#include "zoConsole.h"
#include "zoHPCWallBuilder.h"
#include "zoHostsInput.h"
#include "zoHostsReading.h"
#include "zoTextFile.h"
#include "zoWallOptions.h"

namespace
{
constexpr char s_listModes[] = "list-modes";
} // namespace

QString zoNewCommand::description() const
{
    return tr(
        "Writes a whole configuration of a wall, a cave or free planes: the hosts, the projections, and a "
        "full-screen window\n"
        "for each tile. Tiles go to the hosts in order, row by row from the upper left; with fewer "
        "hosts than tiles\n"
        "each host drives several screens, the first ones one more where they do not spread evenly. "
        "Gateways drive\n"
        "none, nor do nodes that do not render ([rt=0]) and hosts left over.");
}

QStringList zoNewCommand::examples() const
{
    return {
        QStringLiteral("zohpc new --wall 3x2 --tile 1920x1080 --overlap 120 --hosts 'node01 - node06'\t") +
            tr("three tiles across, two down, blended over 120 pixels"),
        QStringLiteral("zohpc new --wall 4x2 --tile 1920x1080 --size 6400x1800 --hosts 'node[1-4]'\t") +
            tr("a power wall of 6.4 by 1.8 metres for tracked viewers, two screens per host"),
        QStringLiteral("zohpc new --wall 4x3 --size 4120x1760 --bezel 12x14 --hosts 'panel[01-12]'\t") +
            tr("panels with frames: 12 mm from picture to picture across, 14 mm down"),
        QStringLiteral(
            "zohpc new --wall 6x4 --tile-size 1209.6x680.4 --bezel 1.8x1.8 --windows-per-node 2 --hosts "
            "'gate[rt=0] { node[01-12] }'\t") +
            tr("panels as their data sheet has them, two screens per node behind a gateway"),
        QStringLiteral(
            "zohpc new --curved 8x3 --tile-size 1209.6x680.4 --bezel 3.5x3.5 --radius 4000 --hosts "
            "'node[01-24]'\t") +
            tr("eight columns of panels around the viewer, four metres away"),
        QStringLiteral("zohpc new --cave 3000x2400x3000 --stereo left-right --tile 2400x1920 --hosts 'cave1 "
                       "- cave8'\t") +
            tr("left, right, bottom and front, two hosts per wall"),
        QStringLiteral("zohpc new --wall 2x2 --tile-size 1600x900 --stereo left-right --eyes left-first "
                       "--hosts 'left[1-4] right[1-4]'\t") +
            tr("two projectors per tile, those for the left eye on nodes of their own"),
        QStringLiteral(
            "zohpc new --plane Front=2400x1350@0,0,-1200 --plane Desk=2400x1350@0,-675,-525,0,90 --hosts "
            "'bench1 bench2'\t") +
            tr("a workbench: a plane before the viewer and one that lies below it")};
}

void zoNewCommand::addArguments(QCommandLineParser& parser) const
{
    zoWallOptions::add(parser);
    parser.addOption({QStringLiteral("hosts"),
                      tr("Hosts text or the bracket form; \"-\" for standard input."), tr("text")});
    parser.addOption({{QStringLiteral("o"), QStringLiteral("output")},
                      tr("Write to <file>. Standard output otherwise."),
                      tr("file")});
    // Not in the help: the completion asks for it.
    QCommandLineOption modes{QLatin1String(s_listModes)};
    modes.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(modes);
}

int zoNewCommand::execute(const QCommandLineParser& parser)
{
    if (!parser.positionalArguments().isEmpty())
        return usageError(tr("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));
    if (parser.isSet(QLatin1String(s_listModes))) {
        const QString words = zoWallOptions::stereoWords().join(QLatin1Char('\n')) + QLatin1Char('\n');
        return zoConsole::write(words.toUtf8()) ? zoConsole::Fine : zoConsole::Unusable;
    }
    zoWallOptions options(parser);
    if (!options.read())
        return usageError(options.reason());
    if (!parser.isSet(QStringLiteral("hosts")))
        return usageError(tr("--hosts is missing"));
    if (!zoTextFile::mayWrite(parser.values(QStringLiteral("output")), QString()))
        return zoConsole::Unusable;

    zoHPCWallPlan plan = options.plan();
    zoConsole::ExitCode exitCode = readHosts(parser.value(QStringLiteral("hosts")), plan.hosts);
    if (exitCode == zoConsole::Unusable)
        return exitCode;
    const zoHPCWallBuilder::Result result = zoHPCWallBuilder::build(plan);
    const auto told = [&options](const zoHPCWallPlan::Mistake& mistake) -> QString {
        return options.optionOf(mistake.field) + QLatin1String(": ") + mistake.text;
    };
    if (!result.isGood())
        return usageError(told(result.mistakes.front()));
    for (const zoHPCWallPlan::Mistake& note : result.notes)
        zoConsole::printError(tr("zohpc %1: %2").arg(name(), told(note)));
    for (const zoHPCWallPlan::Mistake& warning : result.warnings) {
        zoConsole::printError(tr("zohpc %1: %2").arg(name(), told(warning)));
        exitCode = zoConsole::ProblemsFound;
    }
    const QString output = parser.value(QStringLiteral("output"));
    const bool isWritten =
        zoTextFile::write(parser.isSet(QStringLiteral("output")) ? output : QStringLiteral("-"), result.text);
    return isWritten ? exitCode : zoConsole::Unusable;
}

// A million of them leave the memory again before the wall is built.
zoConsole::ExitCode zoNewCommand::readHosts(const QString& argument, QString& hosts)
{
    zoHostsInput input;
    if (!input.readArguments({argument}))
        return zoConsole::Unusable;
    zoHostsReading reading;
    const zoConsole::ExitCode exitCode = reading.read(input, zoHPCHostsSyntax::Form::HostsText);
    hosts = reading.text();
    return exitCode;
}
