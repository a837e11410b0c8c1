#include "zoExportCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoEngineFiles.h"
#include "zoExportNotes.h"
#include "zoHPCRenderSetup.h"
#include "zoSourcePlaces.h"
#include "zoTextFile.h"

#include <cmath>

QString zoExportCommand::description() const
{
    return tr("Writes the same wall for other engines that render distributed. What these cannot say, such "
              "as blending,\n"
              "flips and gateways, is listed on standard error; the exit code is 0 all the same.");
}

QStringList zoExportCommand::examples() const
{
    return {QStringLiteral("zohpc export wall.zhpc --paraview wall.pvx\t") +
                tr("then, with one rank per machine in the file's order: mpirun -host ... pvserver --pvx "
                   "wall.pvx"),
            QStringLiteral("zohpc export wall.zhpc --equalizer wall.eqc\t") + tr("for eqServer"),
            QStringLiteral("zohpc convert old.xml | zohpc export --paraview -\t") +
                tr("from standard input to standard output")};
}

void zoExportCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption({QStringLiteral("paraview"),
                      tr("Write <file.pvx> for pvserver; \"-\" for standard output."), tr("file.pvx")});
    parser.addOption({QStringLiteral("equalizer"),
                      tr("Write <file.eqc> for an Equalizer server; \"-\" for standard output."),
                      tr("file.eqc")});
    parser.addOption(
        {QStringLiteral("release"),
         tr("The release of ParaView (default 5.11); from 6.2 on each machine has its eye and its "
            "viewer."),
         tr("N.M"), QStringLiteral("5.11")});
    parser.addOption(
        {QStringLiteral("pixel-pitch"),
         tr("Millimetres of a pixel of tiled walls, which have no size of their own (default 1)."), tr("N"),
         QStringLiteral("1")});
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 tr("A configuration. \"-\" or none: standard input."),
                                 QStringLiteral("[FILE]"));
}

int zoExportCommand::execute(const QCommandLineParser& parser)
{
    const QString paraView = parser.value(QStringLiteral("paraview"));
    const QString equalizer = parser.value(QStringLiteral("equalizer"));
    const bool isForParaView = parser.isSet(QStringLiteral("paraview"));
    const bool isForEqualizer = parser.isSet(QStringLiteral("equalizer"));
    if (!isForParaView && !isForEqualizer)
        return usageError(tr("--paraview or --equalizer is missing"));
    if (parser.positionalArguments().size() > 1)
        return usageError(tr("one file at a time"));
    bool isNumber = false;
    const double pitch = parser.value(QStringLiteral("pixel-pitch")).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(pitch) || pitch <= 0.0)
        return usageError(tr("--pixel-pitch: \"%1\" is no size in millimetres")
                              .arg(parser.value(QStringLiteral("pixel-pitch"))));

    zoExportNotes::Targets targets{isForParaView, isForEqualizer, zoParaViewRelease()};
    if (!targets.release.read(parser.value(QStringLiteral("release"))))
        return usageError(
            tr("--release: \"%1\" is no release such as 5.11").arg(parser.value(QStringLiteral("release"))));
    if (parser.isSet(QStringLiteral("release")) && !isForParaView)
        return usageError(tr("--release is for --paraview"));

    const QString file = parser.positionalArguments().value(0, QStringLiteral("-"));
    QStringList outputs;
    if (isForParaView)
        outputs << paraView;
    if (isForEqualizer)
        outputs << equalizer;
    zoClusterSetup setup;
    if (!zoTextFile::mayWrite(outputs, file) || !setup.readFile(file))
        return zoConsole::Unusable;
    const zoHPCRenderSetup rendering(setup.displays(), setup.hosts().master(), pitch);
    const zoExportNotes notes(rendering, targets);
    const zoSourcePlaces places(setup);
    for (const zoExportNotes::Note& note : notes.notes()) {
        const zoSourcePlaces::Place place = places.place(note.item);
        zoConsole::printError(file, place.line, place.column, note.text);
    }
    if (rendering.pictures().empty()) {
        zoConsole::printError(file, 1, 1, tr("nothing to render: no window of a node shows a plane"));
        return zoConsole::ProblemsFound;
    }
    if (isForParaView &&
        !zoTextFile::write(paraView, QString::fromUtf8(zoEngineFiles::paraView(rendering, targets.release))))
        return zoConsole::Unusable;
    if (isForEqualizer &&
        !zoTextFile::write(equalizer, QString::fromUtf8(zoEngineFiles::equalizer(rendering))))
        return zoConsole::Unusable;
    return zoConsole::Fine;
}
