#include "RatioReporter.h"

#include <cstdio>

namespace bench {

namespace {

std::map<std::string, std::string>& Baselines() {
    static std::map<std::string, std::string> baselines;
    return baselines;
}

std::map<std::string, std::string>& Alternatives() {
    static std::map<std::string, std::string> alternatives;
    return alternatives;
}

}  // namespace

void SetBaseline(const std::string& caseName, const std::string& baselineName) {
    Baselines()[caseName] = baselineName;
}

void SetFasterBaseline(const std::string& baselineName, const std::string& alternativeName) {
    Alternatives()[baselineName] = alternativeName;
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
        const auto items = run.counters.find("items_per_second");
        if (items != run.counters.end()) entry->second.itemsPerSecondSum += items->second.value;
        ++entry->second.runs;
    }
}

void RatioReporter::Finalize() {
    if (measured_.empty()) return;
    // Decimal units here; Google Benchmark's own table counts 1024-based G/s.
    // `ratio` is speed over the baseline's, `time` its inverse: the time of
    // the case in units of the baseline's time over the same data.
    std::printf("\n%-40s %8s %8s %10s %8s %8s\n", "case", "pts/ns", "GB/s", "base GB/s", "ratio", "time");
    for (const std::string& name : order_) {
        const Throughput& own = measured_[name];
        const double rate = own.Mean() / 1e9;
        std::printf("%-40s %8.3f %8.2f ", name.c_str(), own.MeanItems() / 1e9, rate);
        const auto baseline = Baselines().find(name);
        if (baseline == Baselines().end()) {
            std::printf("%10s\n", "(baseline)");
            continue;
        }
        const auto measuredBaseline = measured_.find(baseline->second);
        if (measuredBaseline == measured_.end()) {
            std::printf("%10s\n", "not run");
            continue;
        }
        double baseRate = measuredBaseline->second.Mean() / 1e9;
        const auto alternative = Alternatives().find(baseline->second);
        if (alternative != Alternatives().end()) {
            const auto measuredAlternative = measured_.find(alternative->second);
            if (measuredAlternative != measured_.end() && measuredAlternative->second.Mean() / 1e9 > baseRate)
                baseRate = measuredAlternative->second.Mean() / 1e9;
        }
        std::printf("%10.2f %8.2f %8.2f\n", baseRate, rate / baseRate, baseRate / rate);
    }
    std::fflush(stdout);
}

}  // namespace bench
