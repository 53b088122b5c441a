#pragma once
// Registers the summing yardstick over a whole Y series, so that each
// program reports it beside its own cases in bytes of Y per second.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "SeriesArrays.h"
#include "SumBaseline.h"

namespace bench {

template <class YT>
void RegisterSumOfSeries(const std::string& name, const YT* (*yArray)()) {
    benchmark::RegisterBenchmark(name.c_str(), [yArray](benchmark::State& state) {
        const YT* y = yArray();
        const auto n = static_cast<std::size_t>(SeriesPoints());
        for (auto _ : state) {
            auto total = SumAll(y, n);
            benchmark::DoNotOptimize(total);
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(n) *
                                static_cast<std::int64_t>(sizeof(YT)));
    })->Unit(benchmark::kMillisecond);
}

}  // namespace bench
