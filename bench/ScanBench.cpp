// quillmap_scan_bench: the six scans of the ArrayOperations exports for five
// element types, on an array that fits in L1 (32 Ki elements) and one that
// only memory holds (64 Mi elements), each next to the summing baseline over
// the same array.

#include <cstdint>
#include <string>

#include <benchmark/benchmark.h>

#include "IsaCases.h"
#include "RatioReporter.h"
#include "ReadCounters.h"
#include "ScanData.h"
#include "ScanExports.h"
#include "SumBaseline.h"

namespace bench {

namespace {

struct ArraySize {
    std::int32_t elements;
    const char* label;
    benchmark::TimeUnit unit;
};

constexpr ArraySize kSizes[] = {{32 * 1024, "32Ki", benchmark::kMicrosecond},
                                {64 * 1024 * 1024, "64Mi", benchmark::kMillisecond}};

// A scan case: the call gets the handle, the array, its length and a record,
// and seeds its own outputs from element 0 (the library takes its seeds from
// the caller), then scans the rest.
template <class T, class Call>
void RegisterScan(const std::string& name, const std::string& baseline, const ArraySize& size, Call call) {
    using Api = ScanExports<T>;
    const std::int32_t n = size.elements;
    RegisterOnIsas(name, baseline, size.unit, [n, call](benchmark::State& state) {
        const T* data = ScanArray<T>(static_cast<std::size_t>(n));
        typename Api::Operations* operations = Api::New();
        typename Api::Record* record = Api::NewRecord();
        for (auto _ : state) call(operations, data, n, record);
        Api::DeleteRecord(record);
        Api::Delete(operations);
        SetReadCounters<T>(state, n);
    });
}

template <class T>
void RegisterType(const ArraySize& size) {
    using Api = ScanExports<T>;
    using Ops = typename Api::Operations;
    using Record = typename Api::Record;
    const std::string prefix = std::string(Api::kWord) + "/" + size.label + "/";
    const std::string sum = prefix + "Sum";
    const std::int32_t n = size.elements;

    benchmark::RegisterBenchmark(sum.c_str(), [n](benchmark::State& state) {
        const T* data = ScanArray<T>(static_cast<std::size_t>(n));
        for (auto _ : state) {
            auto total = SumAll(data, static_cast<std::size_t>(n));
            benchmark::DoNotOptimize(total);
        }
        SetReadCounters<T>(state, n);
    })->Unit(size.unit);

    RegisterScan<T>(prefix + "Min", sum, size, [](Ops* o, const T* d, std::int32_t count, Record*) {
        T min = d[0];
        Api::Min(o, d, 1, count, &min);
        benchmark::DoNotOptimize(min);
    });
    RegisterScan<T>(prefix + "MinIndex", sum, size, [](Ops* o, const T* d, std::int32_t count, Record*) {
        T min = d[0];
        std::int32_t at = 0;
        Api::MinIndex(o, d, 1, count, &min, &at);
        benchmark::DoNotOptimize(at);
    });
    RegisterScan<T>(prefix + "Max", sum, size, [](Ops* o, const T* d, std::int32_t count, Record*) {
        T max = d[0];
        Api::Max(o, d, 1, count, &max);
        benchmark::DoNotOptimize(max);
    });
    RegisterScan<T>(prefix + "MaxIndex", sum, size, [](Ops* o, const T* d, std::int32_t count, Record*) {
        T max = d[0];
        std::int32_t at = 0;
        Api::MaxIndex(o, d, 1, count, &max, &at);
        benchmark::DoNotOptimize(at);
    });
    RegisterScan<T>(prefix + "MinMax", sum, size, [](Ops* o, const T* d, std::int32_t count, Record*) {
        T min = d[0], max = d[0];
        Api::MinMax(o, d, 1, count, &min, &max);
        benchmark::DoNotOptimize(min);
        benchmark::DoNotOptimize(max);
    });
    RegisterScan<T>(prefix + "MinMaxRecord", sum, size, [](Ops* o, const T* d, std::int32_t count, Record* r) {
        Api::SeedRecord(r, d[0]);
        Api::MinMaxRecord(o, d, 1, count, r);
        benchmark::DoNotOptimize(r);
    });
}

}  // namespace

void RegisterCases() {
    for (const ArraySize& size : kSizes) {
        RegisterType<double>(size);
        RegisterType<float>(size);
        RegisterType<std::int32_t>(size);
        RegisterType<std::int16_t>(size);
        RegisterType<std::uint8_t>(size);
    }
}

}  // namespace bench
