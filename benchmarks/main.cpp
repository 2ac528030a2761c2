#include "compare.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <vector>

#include <unistd.h>

namespace
{

std::vector<Comparison>& comparisons()
{
    static std::vector<Comparison> all;
    return all;
}

// Prints what the console reporter prints and keeps the medians for the table of ratios.
class Reporter : public benchmark::ConsoleReporter
{
public:
    // Colours for people only.
    Reporter() : ConsoleReporter(isatty(fileno(stdout)) ? OO_ColorTabular : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.error_occurred || run.aggregate_name != "median")
                continue;
            m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
            for (const auto& [name, counter] : run.counters)
                m_medians[run.run_name.function_name + name] = counter.value;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatios() const
    {
        std::printf("\n%-48s %14s %14s %8s %8s\n", "Comparison (medians, one run)", "ours [us]", "other [us]", "ratio",
                    "limit");
        for (const Comparison& one : comparisons()) {
            const auto ours = m_medians.find(one.ours + one.counter);
            const auto theirs = m_medians.find(one.theirs + one.counter);
            if (ours == m_medians.end() || theirs == m_medians.end())
                continue;
            const double ratio = ours->second / theirs->second;
            std::printf("%-48s %14.2f %14.2f %8.2f ", one.title.c_str(), ours->second, theirs->second, ratio);
            if (one.limit > 0)
                std::printf("%8.2f%s", one.limit, ratio > one.limit ? "  missed" : "");
            std::printf("\n");
        }
    }

private:
    std::map<std::string, double> m_medians;
};

} // namespace

bool compare(Comparison comparison)
{
    comparisons().push_back(std::move(comparison));
    return true;
}

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=9";
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char minimum[] = "--benchmark_min_time=0.05";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    // Given arguments come last and win.
    arguments.insert(arguments.begin() + 1, {repetitions, interleaved, minimum, aggregates});
    auto count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    const QApplication application(argc, argv);
    benchmark::Initialize(&count, arguments.data());
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
