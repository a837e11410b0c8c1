// What zohpc takes for a wall of 100 x 100 tiles, with its hosts and windows, beside reading that file: whole processes
// in turns, the processor time of each. Reading is this program, which reads the file as zohpc does and lets go of it.

#include "zoBenchmark.h"
#include "zoMeasuredProcess.h"

#include <zoHPCDocumentText.h>
#include <zoTextFile.h>

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstring>
#include <memory>

#include <malloc.h>

namespace
{
using zoBenchmark::require;

constexpr int s_repetitions = 9;

std::unique_ptr<QTemporaryDir> s_folder;

QString inFolder(const char* name)
{
    return s_folder->filePath(QString::fromLatin1(name));
}

// As zohpc is set up, see its document program.
int readOnce(int argc, char** argv)
{
    mallopt(M_MXFAST, 0);
    const QCoreApplication application(argc, argv);
    zoTextFile::Content content;
    QDomDocument document;
    const bool isRead = zoTextFile::read(QCoreApplication::arguments().constLast(), content) &&
                        zoHPCDocumentText::parse(content.text, document);
    return isRead && !document.documentElement().isNull() ? 0 : 1;
}

zoBenchmark::Function timed(const QStringList& command)
{
    return [command](benchmark::State& state) {
        for (auto _ : state) {
            const zoMeasuredProcess process = zoMeasuredProcess::run(command);
            // The wall has notes, at most.
            require(process.exitCode == 0, qPrintable(command.join(QLatin1Char(' '))));
            state.SetIterationTime(process.time);
        }
    };
}

zoBenchmark::Function zohpc(const QStringList& arguments)
{
    return timed(QStringList(QStringLiteral(ZO_ZOHPC)) + arguments);
}
} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--read") == 0)
        return readOnce(argc, argv);
    s_folder = std::make_unique<QTemporaryDir>();
    require(s_folder->isValid(), "a folder for the wall");
    const QString wall = inFolder("wall.zhpc");
    const zoMeasuredProcess made = zoMeasuredProcess::run(
        {QStringLiteral(ZO_ZOHPC), QStringLiteral("new"), QStringLiteral("--wall"), QStringLiteral("100x100"),
         QStringLiteral("--hosts"), QStringLiteral("n[1-10000]"), QStringLiteral("-o"), wall});
    require(made.exitCode == 0 && QFileInfo(wall).size() > 1000000, "a wall with its hosts and windows");

    zoBenchmark::Suite suite(s_repetitions);
    const zoBenchmark::Function reading =
        timed({QFile::decodeName("/proc/self/exe"), QStringLiteral("--read"), wall});
    const auto add = [&](const char* work, const QStringList& arguments, double goal) {
        suite.compareMeasured({work, "reading the file", "", 0, 0, goal}, zohpc(arguments), reading);
    };
    const auto drawing = [&](const char* picture) {
        return QStringList{QStringLiteral("draw"), wall, QStringLiteral("-o"), inFolder(picture)};
    };
    add("zohpc check", {QStringLiteral("check"), wall}, 3);
    add("zohpc draw, the room", drawing("room.svg"), 3);
    // With a card for each of ten thousand nodes.
    add("zohpc draw, the screens", drawing("screens.svg"), 4.5);
    add("zohpc draw, the network", drawing("network.svg"), 4);
    suite.run(argc, argv);
    const bool met = suite.print();
    s_folder.reset();
    return suite.finish(met);
}
