#include "zoHostileInputs.h"
#include "zoMeasuredProcess.h"

#include <zoClusterDocument.h>
#include <zoHPCGUIW.h>
#include <zoHPCTreeGUIW.h>

#include <QApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

// How the time of the programs, of the window and of the host grows with inputs that are made to use it up: each row
// in a process of its own that may take a gibibyte, at a quarter of a mebibyte, half and all of it. Processor time in
// the process, less what it takes for the smallest input of the row. Exit code 1 when a doubling takes more than three
// times as long, or a mebibyte more than five seconds.

namespace
{
constexpr double s_largestGrowth = 3.0;
constexpr double s_largestTime = 5.0; // s
// Shorter times say nothing about growth.
constexpr double s_shortestTime = 0.02; // s
constexpr rlim_t s_memory = rlim_t(1) << 30;
constexpr rlim_t s_endOfPatience = 40; // s
const int s_sizes[] = {zoHostileInput::Mebibyte / 4, zoHostileInput::Mebibyte / 2, zoHostileInput::Mebibyte};

// What the options of the command line ask for.
struct Request
{
    QString zohpc;
    QRegularExpression filter;
    bool isMarkdown = false;
    int runs = 3;
};

// The window's and the host's own readers, by the word with which this program calls itself.
int readIn(const QString& reader, int argc, char** argv)
{
    QFile file;
    if (!file.open(stdin, QIODevice::ReadOnly))
        return 2;
    const QString text = QString::fromUtf8(file.readAll());
    if (reader == QLatin1String("host")) {
        zoClusterDocument document;
        QString reason;
        document.parse(text, reason);
        return 0;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    zoHPCGUIW window(nullptr, QStringLiteral("benchmark"));
    if (reader == QLatin1String("window-hosts")) {
        window.getTree()->setHostString(text);
        window.getTree()->getHostsString();
    } else {
        window.setConfigString(text);
        window.getConfigString();
    }
    return 0;
}

zoMeasuredProcess run(const QStringList& command, const QString& input)
{
    return zoMeasuredProcess::run(command, input, {s_memory, s_endOfPatience});
}

bool isEnded(const zoMeasuredProcess& process)
{
    return process.exitCode >= 0 && process.exitCode <= 2;
}

bool write(const QString& name, const QByteArray& text)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

// The least of some runs: other programs only ever add to the time.
zoMeasuredProcess measure(const zoHostileInput& row, const QStringList& program, const QString& folder,
                          int size, int runs)
{
    const QString input = folder + QLatin1String("/input");
    const QString other = folder + QLatin1String("/other");
    QStringList command = program + row.command;
    const QString half = folder + QLatin1String("/half");
    command.replaceInStrings(zoHostileInput::other(), other);
    command.replaceInStrings(zoHostileInput::half(), half);
    if (row.more)
        command += row.more(size);
    zoMeasuredProcess least;
    if (!write(input, row.text(size)) || !write(other, row.text(size / 4 * 3)) ||
        !write(half, row.text(size / 2)))
        return least;
    for (int i = 0; i < runs; ++i) {
        const zoMeasuredProcess usage = run(command, input);
        if (!isEnded(usage))
            return usage;
        if (i == 0 || usage.time < least.time)
            least = usage;
        if (usage.time > 1.0)
            break;
    }
    return least;
}

QString seconds(double time)
{
    return QString::number(time, 'f', 2) + QLatin1String(" s");
}

// One line of the table; whether the row holds what is promised.
bool report(const zoHostileInput& row, const QStringList& program, const QString& folder,
            const Request& request)
{
    const double start = measure(row, program, folder, 64, request.runs).time;
    std::vector<double> times;
    double memory = 0.0;
    bool areEnded = true;
    double growth = 0.0;
    for (const int size : s_sizes) {
        const zoMeasuredProcess usage = measure(row, program, folder, size, request.runs);
        areEnded = areEnded && isEnded(usage);
        memory = std::max(memory, usage.memory);
        const double time = std::max(usage.time - start, 0.0);
        if (!times.empty() && times.back() >= s_shortestTime)
            growth = std::max(growth, time / times.back());
        times.push_back(time);
    }
    const bool isMet = areEnded && growth <= s_largestGrowth && times.back() + start <= s_largestTime;
    QStringList cells{QString::fromLatin1(row.name)};
    for (const double time : times)
        cells << seconds(time);
    cells << (growth > 0.0 ? QString::number(growth, 'f', 1) : QStringLiteral("-"))
          << QString::number(memory, 'f', 0) + QLatin1String(" MiB");
    const char* const verdict = isMet ? "" : areEnded ? "missed" : "does not end";
    if (request.isMarkdown)
        std::printf("| %s |%s%s\n", qUtf8Printable(cells.join(QLatin1String(" | "))),
                    *verdict != '\0' ? " " : "", verdict);
    else
        std::printf("%-52s %9s %9s %9s %6s %9s  %s\n", qUtf8Printable(cells.at(0)),
                    qUtf8Printable(cells.at(1)), qUtf8Printable(cells.at(2)), qUtf8Printable(cells.at(3)),
                    qUtf8Printable(cells.at(4)), qUtf8Printable(cells.at(5)), verdict);
    std::fflush(stdout);
    return isMet;
}

// The rows of zohpc, and their texts as the window and the host read them.
std::vector<zoHostileInput> rowsOf(const QString& reader)
{
    std::vector<zoHostileInput> rows;
    for (const zoHostileInput& row : zoHostileInput::all()) {
        const bool isHosts = row.name.startsWith("fold-") && !row.name.startsWith("fold-brackets-");
        const bool isDocument = row.name.startsWith("format-");
        const QByteArray first = isHosts ? "fold-" : "format-";
        if (reader.isEmpty())
            rows.push_back(row);
        else if (reader == QLatin1String("window-hosts") ? isHosts : isDocument)
            rows.push_back({reader.toLatin1() + '-' + QByteArray(row.name).replace(first, ""),
                            {QStringLiteral("--read"), reader},
                            row.text,
                            {}});
    }
    return rows;
}
} // namespace

int main(int argc, char** argv)
{
    Request request;
    request.zohpc = QStringLiteral(ZO_ZOHPC);
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--read") == 0 && i + 1 < argc)
            return readIn(QString::fromLatin1(argv[i + 1]), argc, argv);
        if (std::strcmp(argv[i], "--markdown") == 0) {
            request.isMarkdown = true;
        } else if (std::strncmp(argv[i], "--runs=", 7) == 0 && std::atoi(argv[i] + 7) > 0) {
            request.runs = std::atoi(argv[i] + 7);
        } else if (std::strncmp(argv[i], "--zohpc=", 8) == 0) {
            request.zohpc = QFile::decodeName(argv[i] + 8);
        } else if (std::strncmp(argv[i], "--benchmark_filter=", 19) == 0) {
            request.filter.setPattern(QString::fromLocal8Bit(argv[i] + 19));
        } else {
            std::fprintf(stderr,
                         "Usage: %s [--markdown] [--runs=N] [--zohpc=PROGRAM] [--benchmark_filter=REGEX]\n",
                         argv[0]);
            return 2;
        }
    }
    const QTemporaryDir folder;
    if (!folder.isValid())
        return 2;
    if (request.isMarkdown)
        std::printf("| input | 256 KiB | 512 KiB | 1 MiB | largest growth per doubling | memory "
                    "|\n|---|---|---|---|---|---|\n");
    bool areMet = true;
    for (const char* const reader : {"", "window-hosts", "window", "host"}) {
        const QString word = QString::fromLatin1(reader);
        const QStringList program{word.isEmpty() ? request.zohpc : QFile::decodeName("/proc/self/exe")};
        const std::vector<zoHostileInput> rows = rowsOf(word);
        for (const zoHostileInput& row : rows) {
            if (QString::fromLatin1(row.name).contains(request.filter))
                areMet = report(row, program, folder.path(), request) && areMet;
        }
    }
    return areMet ? 0 : 1;
}
