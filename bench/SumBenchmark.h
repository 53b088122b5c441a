#pragma once
// Registers the yardsticks over a Y series of n points, so that each
// program reports them beside its own cases in bytes of Y per second.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "RatioReporter.h"
#include "ReadCounters.h"
#include "ScanExports.h"
#include "SumBaseline.h"

namespace bench {

template <class YT>
void RegisterSumOfSeries(const std::string& name, const YT* (*yArray)(std::int32_t), std::int32_t n,
                         benchmark::TimeUnit unit = benchmark::kMillisecond) {
    benchmark::RegisterBenchmark(name.c_str(), [yArray, n](benchmark::State& state) {
        const YT* y = yArray(n);
        for (auto _ : state) {
            auto total = SumAll(y, static_cast<std::size_t>(n));
            benchmark::DoNotOptimize(total);
        }
        SetReadCounters<YT>(state, n);
    })->Unit(unit);
}

// The baselines of a series that only memory holds: the summing loop
// (`name`) and the library's own Max over the whole array in one call
// (`name` + "/WholeMax"), the cases being measured against the faster. On
// Zen 5 the summing loop, and every plain loop tried beside it, read memory
// 10 to 25 % slower than the library's scans do, and a yardstick slower
// than memory would flatter every case; where the summing loop is the
// faster, nothing changes.
template <class YT>
void RegisterReadsOfSeries(const std::string& name, const YT* (*yArray)(std::int32_t), std::int32_t n) {
    RegisterSumOfSeries(name, yArray, n);
    const std::string whole = name + "/WholeMax";
    benchmark::RegisterBenchmark(whole.c_str(), [yArray, n](benchmark::State& state) {
        using Api = ScanExports<YT>;
        const YT* y = yArray(n);
        typename Api::Operations* operations = Api::New();
        for (auto _ : state) {
            YT max = y[0];
            Api::Max(operations, y, 1, n, &max);
            benchmark::DoNotOptimize(max);
        }
        Api::Delete(operations);
        SetReadCounters<YT>(state, n);
    })->Unit(benchmark::kMillisecond);
    SetFasterBaseline(name, whole);
}

}  // namespace bench
