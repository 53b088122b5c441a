#pragma once
// What every case reports per iteration: the bytes and the elements of the
// n-element array it reads, so that each program's ratios compare like with
// like.

#include <cstdint>

#include <benchmark/benchmark.h>

namespace bench {

template <class T>
void SetReadCounters(benchmark::State& state, std::int64_t n) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * n * static_cast<std::int64_t>(sizeof(T)));
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * n);
}

}  // namespace bench
