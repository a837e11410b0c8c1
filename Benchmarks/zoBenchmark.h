#pragma once

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <ostream>
#include <set>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <malloc.h>

// What the benchmark programs share: works are timed beside the least that the toolkit needs for them, or
// beside the plain way to write them, in the same run, and a table of the ratios is printed at the end.
namespace zoBenchmark
{
using Function = std::function<void(benchmark::State&)>;

// A benchmark of a wrong result is none.
inline void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(1);
}

// Before timing: trees are laid out, and the allocator has put together what was freed, which it would
// otherwise do at the first larger request, for whoever makes it.
inline void settle()
{
    QCoreApplication::processEvents();
    void* block = std::malloc(60000);
    benchmark::DoNotOptimize(block);
    std::free(block);
}

// Prints as usual, unless silenced, and keeps the medians: of processor time, or of what the work itself has measured.
class Medians final : public benchmark::ConsoleReporter
{
public:
    explicit Medians(bool silent) : m_nowhere(&m_swallow)
    {
        if (silent)
            SetOutputStream(&m_nowhere);
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                m_times[run.run_name.function_name] = run.run_name.time_type == "manual_time"
                                                          ? run.GetAdjustedRealTime()
                                                          : run.GetAdjustedCPUTime();
        }
        if (!isSilent())
            ConsoleReporter::ReportRuns(runs);
    }

    bool ReportContext(const Context& context) override
    {
        return isSilent() || ConsoleReporter::ReportContext(context);
    }

    // ms; 0 when it did not run.
    double of(const std::string& name) const
    {
        const auto found = m_times.find(name);
        return found == m_times.end() ? 0 : found->second;
    }

private:
    struct Swallow final : std::streambuf
    {
        int overflow(int character) override { return character; }
    };

    bool isSilent() { return &GetOutputStream() == &m_nowhere; }

    Swallow m_swallow;
    std::ostream m_nowhere;
    std::map<std::string, double> m_times;
};

// A line of the table.
struct Row
{
    std::string work;
    std::string beside;
    std::string size;   // of the input, empty when the program has but one
    double value = 0.0; // filled in by run() for works that it times
    double besideValue = 0.0;
    double goal = 0.0;  // highest ratio; 0 is none
    double limit = 0.0; // highest value, ms; 0 is none
    const char* unit = "ms";

    bool isMet() const
    {
        return (goal <= 0.0 || value <= goal * besideValue) && (limit <= 0.0 || value <= limit);
    }
};

// The works of a program.
class Suite final
{
public:
    // Timed as often as this, all of them in turns, so that a busy moment of the machine does not hit one
    // side only.
    explicit Suite(int repetitions) : m_repetitions(repetitions)
    {
        // What is freed stays with the process: to give it back and to ask for it again costs whichever side
        // happens to stand at the end of the heap.
        mallopt(M_TRIM_THRESHOLD, 1 << 30);
        mallopt(M_TOP_PAD, 64 << 20);
    }

    // A row whose two sides are timed. Works of one name and size are the same and are timed once.
    void compare(const Row& row, const Function& work, const Function& beside)
    {
        add(nameOf(row.work, row.size), work);
        add(nameOf(row.beside, row.size), beside);
        m_timed.push_back(row);
    }

    // The same for works that say themselves how long they took, as those of other processes: once for each repetition.
    void compareMeasured(const Row& row, const Function& work, const Function& beside)
    {
        m_measuring.insert({nameOf(row.work, row.size), nameOf(row.beside, row.size)});
        compare(row, work, beside);
    }

    // Takes --markdown, which prints nothing but the table, ready for Docs/performance.md, --gate, with which missed goals
    // are a failure, and what the library takes.
    void run(int argc, char** argv)
    {
        std::vector<char*> arguments;
        for (int i = 0; i < argc; ++i) {
            if (std::strcmp(argv[i], "--markdown") == 0)
                m_markdown = true;
            else if (std::strcmp(argv[i], "--gate") == 0)
                m_isGate = true;
            else
                arguments.push_back(argv[i]);
        }
        std::string interleave = "--benchmark_enable_random_interleaving=true";
        std::string quiet = "--benchmark_report_aggregates_only=true";
        arguments.insert(arguments.begin() + 1, {&interleave[0], &quiet[0]});
        int count = static_cast<int>(arguments.size());
        benchmark::Initialize(&count, arguments.data());
        for (const auto& work : m_works) {
            auto* const entry = benchmark::RegisterBenchmark(work.first.c_str(), work.second)
                                    ->Unit(benchmark::kMillisecond)
                                    ->Repetitions(m_repetitions);
            if (m_measuring.count(work.first) > 0)
                entry->UseManualTime()->Iterations(1);
            else
                entry->MinTime(0.05);
        }
        Medians medians(m_markdown);
        benchmark::RunSpecifiedBenchmarks(&medians);
        for (Row row : m_timed) {
            row.value = medians.of(nameOf(row.work, row.size));
            row.besideValue = medians.of(nameOf(row.beside, row.size));
            // One of them was filtered away.
            if (row.value > 0.0 && row.besideValue > 0.0)
                m_rows.push_back(row);
        }
    }

    // Values measured otherwise, and comparisons among those that were timed.
    void append(const Row& row)
    {
        if (row.value > 0.0 && row.besideValue > 0.0)
            m_rows.push_back(row);
    }

    // The timed ones after run(), to be appended again in the order of the tables.
    std::vector<Row> takeRows() { return std::exchange(m_rows, {}); }

    // A table of the rows since the last one; returns whether they met their goals.
    bool print()
    {
        bool met = true;
        std::vector<std::string> sizes;
        for (const Row& row : m_rows) {
            met &= row.isMet();
            if (std::find(sizes.begin(), sizes.end(), row.size) == sizes.end())
                sizes.push_back(row.size);
        }
        if (m_rows.empty())
            return true;
        if (!m_markdown)
            printAligned();
        else if (sizes.size() == 2)
            printMarkdownBySize(sizes);
        else
            printMarkdown(sizes.size() > 1);
        m_rows.clear();
        return met;
    }

    // Of all tables: the exit status.
    int finish(bool met) const
    {
        if (!m_markdown)
            std::printf("\n%s\n", met ? "All goals met." : "Some goals missed.");
        return m_isGate && !met ? 1 : 0;
    }

private:
    static std::string nameOf(const std::string& work, const std::string& size)
    {
        return size.empty() ? work : work + " / " + size;
    }

    void add(const std::string& name, const Function& function)
    {
        for (const auto& work : m_works) {
            if (work.first == name)
                return;
        }
        m_works.emplace_back(name, function);
    }

    static std::string goalOf(const Row& row)
    {
        char text[64];
        std::string result;
        if (row.goal > 0.0) {
            std::snprintf(text, sizeof text, "%.2f", row.goal);
            result = text;
        }
        if (row.limit > 0.0) {
            std::snprintf(text, sizeof text, "%s%.0f %s", result.empty() ? "" : ", ", row.limit, row.unit);
            result += text;
        }
        return result.empty() ? "none" : result;
    }

    void printAligned() const
    {
        std::printf("\n%-38s %8s %10s  %-38s %10s %-5s %7s  %s\n", "work", "size", "measured", "beside",
                    "measured", "", "ratio", "goal");
        for (const Row& row : m_rows)
            std::printf("%-38s %8s %10.3f  %-38s %10.3f %-5s %7.3f  %s%s\n", row.work.c_str(),
                        row.size.c_str(), row.value, row.beside.c_str(), row.besideValue, row.unit,
                        row.value / row.besideValue, goalOf(row).c_str(), row.isMet() ? "" : "  MISSED");
    }

    void printMarkdown(bool hasSizes) const
    {
        const char* const size = hasSizes ? " size |" : "";
        std::printf("| work |%s measured | beside | measured | ratio | goal |\n", size);
        std::printf("|---|%s---|---|---|---|---|\n", hasSizes ? "---|" : "");
        for (const Row& row : m_rows)
            std::printf("| %s |%s %s | %s | %s | %.2f%s | %s |\n", row.work.c_str(),
                        hasSizes ? (' ' + row.size + " |").c_str() : "", amount(row.value, row.unit).c_str(),
                        row.beside.c_str(), amount(row.besideValue, row.unit).c_str(),
                        row.value / row.besideValue, row.isMet() ? "" : " (missed)", goalOf(row).c_str());
        std::printf("\n");
    }

    // Two sizes stand side by side.
    void printMarkdownBySize(const std::vector<std::string>& sizes) const
    {
        std::printf("| work | beside |");
        for (const std::string& size : sizes)
            std::printf(" %s | goal |", size.c_str());
        std::printf("\n|---|---|---|---|---|---|\n");
        std::vector<std::string> done;
        for (const Row& first : m_rows) {
            if (std::find(done.begin(), done.end(), first.work) != done.end())
                continue;
            done.push_back(first.work);
            std::printf("| %s | %s |", first.work.c_str(), first.beside.c_str());
            for (const std::string& size : sizes) {
                const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& candidate) {
                    return candidate.work == first.work && candidate.size == size;
                });
                if (row == m_rows.end())
                    std::printf(" | |");
                else
                    std::printf(" %.2f (%s%s) | %s |", row->value / row->besideValue,
                                amount(row->value, row->unit).c_str(), row->isMet() ? "" : ", missed",
                                goalOf(*row).c_str());
            }
            std::printf("\n");
        }
        std::printf("\n");
    }

    static std::string amount(double value, const char* unit)
    {
        char text[64];
        std::snprintf(text, sizeof text, value < 10.0 ? "%.2f %s" : "%.0f %s", value, unit);
        return text;
    }

    std::vector<std::pair<std::string, Function>> m_works;
    std::vector<Row> m_timed;
    std::vector<Row> m_rows;
    int m_repetitions;
    std::set<std::string> m_measuring;
    bool m_markdown = false;
    bool m_isGate = false;
};
} // namespace zoBenchmark
