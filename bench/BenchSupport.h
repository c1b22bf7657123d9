// Benchmark support: a reporter that prints Google Benchmark's table and keeps each run's time per
// iteration, so a benchmark program can print ratios between runs measured in one process.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

class KivRatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.iterations > 0) nanoseconds[run.benchmark_name()] = run.GetAdjustedRealTime();  // in the run's unit
    }
    // The time per iteration of a run, or -1 when it did not run.
    double time(const std::string& name) const {
        const auto it = nanoseconds.find(name);
        return it == nanoseconds.end() ? -1.0 : it->second;
    }
    std::map<std::string, double> nanoseconds;
};

// The largest file of ../shared/data/<folder> (the real files, read in place).
std::string kivLargestSharedFile(const std::string& folder);
