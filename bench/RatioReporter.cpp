#include "RatioReporter.h"

#include <cstdio>

namespace bench {

namespace {

std::map<std::string, std::string>& Baselines() {
    static std::map<std::string, std::string> baselines;
    return baselines;
}

}  // namespace

void SetBaseline(const std::string& caseName, const std::string& baselineName) {
    Baselines()[caseName] = baselineName;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    benchmark::ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        // Repetitions are averaged here; their aggregates would count twice.
        if (run.run_type != Run::RT_Iteration) continue;
        const auto counter = run.counters.find("bytes_per_second");
        if (counter == run.counters.end()) continue;  // a skipped case sets none
        const std::string& name = run.run_name.function_name;
        auto [entry, added] = measured_.try_emplace(name);
        if (added) order_.push_back(name);
        entry->second.bytesPerSecondSum += counter->second.value;
        ++entry->second.runs;
    }
}

void RatioReporter::Finalize() {
    if (measured_.empty()) return;
    // Decimal units here; Google Benchmark's own table counts 1024-based G/s.
    std::printf("\n%-40s %12s %12s %8s\n", "case", "GB/s", "sum GB/s", "ratio");
    for (const std::string& name : order_) {
        const double rate = measured_[name].Mean() / 1e9;
        const auto baseline = Baselines().find(name);
        if (baseline == Baselines().end()) {
            std::printf("%-40s %12.2f %12s %8s\n", name.c_str(), rate, "(baseline)", "");
            continue;
        }
        const auto measuredBaseline = measured_.find(baseline->second);
        if (measuredBaseline == measured_.end()) {
            std::printf("%-40s %12.2f %12s %8s\n", name.c_str(), rate, "not run", "");
            continue;
        }
        const double baseRate = measuredBaseline->second.Mean() / 1e9;
        std::printf("%-40s %12.2f %12.2f %8.2f\n", name.c_str(), rate, baseRate, rate / baseRate);
    }
    std::fflush(stdout);
}

}  // namespace bench
