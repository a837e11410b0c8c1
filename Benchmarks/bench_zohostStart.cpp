// zohost from its start until its window with a wall of 2 x 2 tiles is painted and nothing is left to do, beside main windows
// of the toolkit in processes with the same libraries: an empty one, and one with the words that zohost shows. Whole
// processes in turns: processor time, elapsed time, and what each has of memory then.

#include "zoBenchmark.h"
#include "zoMeasuredProcess.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>

#include <time.h>

namespace
{
using zoBenchmark::require;

constexpr int s_repetitions = 15;

enum class Figure { Processor, Elapsed, Memory };

struct Start
{
    double figures[3]; // in seconds; memory, too: a millisecond for each MiB
    QStringList libraries;
};

std::unique_ptr<QTemporaryDir> s_folder;

Start start(const QStringList& command)
{
    const QString file = s_folder->filePath(QStringLiteral("probe"));
    QFile::remove(file);
    qputenv("ZO_PROBE_FILE", QFile::encodeName(file));
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    require(zoMeasuredProcess::run(command).exitCode == 0, qPrintable(command.constFirst()));
    QFile report(file);
    require(report.open(QIODevice::ReadOnly), "what the probe tells");
    QStringList lines = QString::fromLocal8Bit(report.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    require(lines.size() > 3, "figures and libraries");
    const double begin = double(now.tv_sec) + double(now.tv_nsec) / 1e9;
    return {{lines.at(0).toDouble() / 1e6, lines.at(1).toDouble() / 1e6 - begin,
             lines.at(2).toDouble() / 1024.0 / 1000.0},
            lines.mid(3)};
}

zoBenchmark::Function timed(const QStringList& command, Figure figure)
{
    return [command, figure](benchmark::State& state) {
        for (auto _ : state)
            state.SetIterationTime(start(command).figures[int(figure)]);
    };
}
} // namespace

int main(int argc, char** argv)
{
    s_folder = std::make_unique<QTemporaryDir>();
    require(s_folder->isValid(), "a home of its own");
    for (const char* variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, QFile::encodeName(s_folder->path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_PLUGIN_PATH", ZO_PROBE_PLUGINS);
    qputenv("QT_QPA_GENERIC_PLUGINS", "zofirstwindow");

    const QStringList host{QStringLiteral(ZO_ZOHOST), QStringLiteral(ZO_WALL)};
    start(host); // the first one finds nothing of its own in the home
    const Start loaded = start(host);
    const QString plain = QStringLiteral(ZO_PLAIN_WINDOW);
    const QStringList empty = QStringList{plain, QStringLiteral("empty")} + loaded.libraries;
    const QStringList words = QStringList{plain, QStringLiteral("words")} + loaded.libraries;
    for (const QStringList& command : {empty, words}) {
        const QStringList libraries = start(command).libraries;
        for (const QString& library : loaded.libraries)
            require(libraries.contains(library), qPrintable(library));
    }

    zoBenchmark::Suite suite(s_repetitions);
    const struct
    {
        const char* work;
        const char* beside;
        const QStringList& command;
        Figure figure;
        const char* unit;
        double goal;
    } rows[] = {
        {"first window, processor time", "an empty window", empty, Figure::Processor, "ms", 1.5},
        {"first window, elapsed", "an empty window, elapsed", empty, Figure::Elapsed, "ms", 1.5},
        {"memory with its share of the libraries", "of an empty window's process", empty, Figure::Memory,
         "MiB", 1.5},
        {"the same, processor time", "a window with its words", words, Figure::Processor, "ms", 1.75},
        {"the same, elapsed", "a window with its words, elapsed", words, Figure::Elapsed, "ms", 1.75},
        {"the same, memory", "of a process with that window", words, Figure::Memory, "MiB", 1.75},
    };
    for (const auto& row : rows)
        suite.compareMeasured({row.work, row.beside, "", 0, 0, row.goal, 0, row.unit},
                              timed(host, row.figure), timed(row.command, row.figure));
    suite.run(argc, argv);
    const bool met = suite.print();
    s_folder.reset();
    return suite.finish(met);
}
