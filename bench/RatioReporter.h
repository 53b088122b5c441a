#pragma once
// Console output as usual, then one table that divides each case's bytes
// per second by those of its baseline over the same memory: the summing
// loop, or the faster of it and a second reading where one is set.

#include <map>
#include <string>

#include <benchmark/benchmark.h>

namespace bench {

// Ties a case to its summing baseline; the benchmarks call it as they
// register themselves.
void SetBaseline(const std::string& caseName, const std::string& baselineName);
// A second reading of the same memory beside a baseline: the cases tied to
// `baselineName` are measured against whichever of the two read faster.
void SetFasterBaseline(const std::string& baselineName, const std::string& alternativeName);

class RatioReporter : public benchmark::ConsoleReporter {
public:
    explicit RatioReporter(OutputOptions options) : benchmark::ConsoleReporter(options) {}
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Throughput {
        double bytesPerSecondSum = 0.0;
        double itemsPerSecondSum = 0.0;  // elements (points) per second
        int runs = 0;
        double Mean() const { return runs ? bytesPerSecondSum / runs : 0.0; }
        double MeanItems() const { return runs ? itemsPerSecondSum / runs : 0.0; }
    };
    std::map<std::string, Throughput> measured_;
    std::vector<std::string> order_;
};

}  // namespace bench
