#pragma once
// Registers the summing yardstick over a Y series of n points, so that each
// program reports it beside its own cases in bytes of Y per second.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

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
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * n * static_cast<std::int64_t>(sizeof(YT)));
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * n);
    })->Unit(unit);
}

}  // namespace bench
