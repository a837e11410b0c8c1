#include <zoHPCConfigConverter.h>
#include <zoHPCDocumentText.h>

#include <QDomDocument>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <string>

// Time of the conversion of legacy texts over its floor, which reads the same text and builds and writes a
// document of the same elements, and its growth when the text doubles. Fails when a bound is exceeded.

namespace
{
constexpr int s_counts[] = {10000, 20000};
constexpr double s_largestRatio = 2.0;
constexpr double s_largestGrowth = 3.0; // per doubling; a quadratic step gives 4

QString keyElement(const QString& name, const QString& value)
{
    return QStringLiteral("<key name=\"%1\">%2</key>").arg(name, value);
}

// Hosts of a wall, in pairs of equal names.
QString wallText(int count)
{
    QStringList hosts;
    for (int i = 0; i < count; ++i)
        hosts << QStringLiteral("node%1[xpos=%2,ypos=0]").arg(i / 2).arg(i);
    return QStringLiteral("<config>") +
           keyElement(QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")) +
           keyElement(QStringLiteral("zoClusterPWCols"), QString::number(count)) +
           keyElement(QStringLiteral("zoClusterPWServers"), hosts.join(QLatin1Char(' '))) +
           QStringLiteral("</config>");
}

QString customText(int count)
{
    QString text = QStringLiteral("<config>");
    for (int i = 0; i < count; ++i) {
        text += keyElement(
            QStringLiteral("zoClusterPipe%1").arg(i),
            QStringLiteral("\"node%1\" 0 0 1920 1200 plane 0 0 0 1920 1200 0 %1 0 0 1 0 0 0 1 0").arg(i));
    }
    return text + QStringLiteral("</config>");
}

QString oldText(int count)
{
    QStringList hosts;
    for (int i = 0; i < count; ++i)
        hosts << QStringLiteral("\"node%1\" 0 0 1920 1200 0 0 1 1 %1 0 0 1 0 0 0 1 0").arg(i);
    return QStringLiteral("<config>") +
           keyElement(QStringLiteral("zoClusterHosts"), hosts.join(QLatin1Char(','))) +
           QStringLiteral("</config>");
}

struct Layout
{
    const char* name;
    QString (*text)(int);
};

constexpr Layout s_layouts[] = {{"wall", wallText}, {"custom", customText}, {"old", oldText}};

// An element that has as many attributes of the same texts as the given one, and the same below it.
void copyElement(const QDomElement& from, QDomDocument& document, QDomNode parent)
{
    QDomElement element = document.createElement(from.tagName());
    const QDomNamedNodeMap attributes = from.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        element.setAttribute(attributes.item(i).nodeName(), attributes.item(i).nodeValue());
    parent.appendChild(element);
    for (QDomElement child = from.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        copyElement(child, document, element);
}

void convert(benchmark::State& state, QString (*text)(int))
{
    const QString legacy = text(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(zoHPCConfigConverter().convert(legacy));
}

void buildFloor(benchmark::State& state, QString (*text)(int))
{
    const QString legacy = text(int(state.range(0)));
    QDomDocument result;
    zoHPCDocumentText::parse(zoHPCConfigConverter().convert(legacy), result);
    for (auto _ : state) {
        QDomDocument read;
        zoHPCDocumentText::parse(legacy, read);
        QDomDocument built{QString()}; // a document that is no null node
        copyElement(result.documentElement(), built, built);
        benchmark::DoNotOptimize(zoHPCDocumentText::toText(built));
    }
}

// Entry by entry as the format tells it, each section counted from the beginning of the text.
QStringList sections(const QString& text)
{
    QStringList entries;
    const int count = text.count(QLatin1Char(',')) + 1;
    for (int i = 0; i < count; ++i)
        entries << text.section(QLatin1Char(','), i, i);
    return entries;
}

// As the converter does it.
QStringList split(const QString& text)
{
    return text.split(QLatin1Char(','));
}

void splitEntries(benchmark::State& state, QStringList (*entriesOf)(const QString&))
{
    const QString text = oldText(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(entriesOf(text));
}

// The conversion does what it is timed for.
bool isWhole(const Layout& layout)
{
    const int count = s_counts[0];
    const QString text = zoHPCConfigConverter().convert(layout.text(count));
    return text.count(QLatin1String("<node ")) == count && text.count(QLatin1String("<window ")) == count &&
           text.count(QLatin1String("<viewport ")) == count;
}

// Keeps the medians beside printing them.
class Medians final : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.aggregate_name == "median")
                m_times[run.run_name.function_name + "/" + run.run_name.args] = run.GetAdjustedCPUTime();
        }
    }

    double time(const std::string& work, const char* layout, int count) const
    {
        const auto it = m_times.find(work + "/" + layout + "/" + std::to_string(count));
        return it == m_times.end() ? 0.0 : it->second;
    }

private:
    std::map<std::string, double> m_times;
};
} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    for (const Layout& layout : s_layouts) {
        if (!isWhole(layout)) {
            std::fprintf(stderr, "%s: the conversion is not whole\n", layout.name);
            return 1;
        }
        for (const int count : s_counts) {
            for (const auto& [work, function] :
                 {std::pair("floor", buildFloor), std::pair("convert", convert)}) {
                benchmark::RegisterBenchmark((std::string(work) + "/" + layout.name).c_str(), function,
                                             layout.text)
                    ->Arg(count)
                    ->Unit(benchmark::kMillisecond)
                    ->Repetitions(5)
                    ->MinTime(0.1)
                    ->ReportAggregatesOnly();
            }
        }
    }
    if (sections(oldText(100)) != split(oldText(100))) {
        std::fprintf(stderr, "sections and parts are not the same\n");
        return 1;
    }
    for (const int count : s_counts) {
        benchmark::RegisterBenchmark("split/once", splitEntries, split)
            ->Arg(count)
            ->Unit(benchmark::kMillisecond)
            ->Repetitions(5)
            ->MinTime(0.1)
            ->ReportAggregatesOnly();
        benchmark::RegisterBenchmark("split/sections", splitEntries, sections)
            ->Arg(count)
            ->Unit(benchmark::kMillisecond)
            ->Repetitions(2)
            ->Iterations(1)
            ->ReportAggregatesOnly();
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);

    bool fine = true;
    for (const Layout& layout : s_layouts) {
        double before = 0.0;
        for (const int count : s_counts) {
            const double time = medians.time("convert", layout.name, count);
            const double floor = medians.time("floor", layout.name, count);
            if (time <= 0.0 || floor <= 0.0)
                continue; // left out by a filter
            const double ratio = time / floor;
            const double growth = before > 0.0 ? time / before : 0.0;
            const bool kept = ratio <= s_largestRatio && growth <= s_largestGrowth;
            std::printf("%-6s %6d: %8.2f ms, %.2f x floor (at most %.2f), growth %.2f (at most %.2f)%s\n",
                        layout.name, count, time, ratio, s_largestRatio, growth, s_largestGrowth,
                        kept ? "" : "  EXCEEDED");
            fine = fine && kept;
            before = time;
        }
    }
    for (const int count : s_counts) {
        const double once = medians.time("split", "once", count);
        const double literal = medians.time("split", "sections", count);
        const double whole = medians.time("convert", "old", count);
        if (once > 0.0 && literal > 0.0 && whole > 0.0) {
            std::printf("split  %6d: section by section takes %.0f x one pass, %.1f x the whole conversion\n",
                        count, literal / once, literal / whole);
        }
    }
    return fine ? 0 : 1;
}
