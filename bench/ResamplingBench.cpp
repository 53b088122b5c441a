// quillmap_resampling_bench: whole resampling runs (UpdateIndices + Execute
// through the C exports) of a 10^8-point series to a 1920-pixel viewport,
// for four layouts and five modes, with Double, Single, Int32, Int16 and Byte
// Y, next to the summing baseline over the same Y array; and a run that
// stays in cache (32 Ki points in buckets of 32, MinMax), where the cost of
// each bucket's call chain shows.

#include <cstdint>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "BenchFailures.h"
#include "IsaCases.h"
#include "RatioReporter.h"
#include "ReadCounters.h"
#include "RunExports.h"
#include "SeriesArrays.h"
#include "SumBenchmark.h"
#include "quillmap/QuillmapCore.h"

namespace bench {

namespace {

// The in-cache run's points on 4 pixels: buckets of 8 Ki points, about what a
// NaN-aware run reduces between two gaps, read from cache. Mid's search
// of a cached range shows against MinMax's one read.
constexpr std::int32_t kInCacheWideWidth = 4;

enum Data : std::int32_t { kLinear = 0, kCategory = 1, kUnevenlySpaced = 2 };

struct Layout {
    const char* name;
    std::int32_t data;
    bool ring;
};
constexpr Layout kLayouts[] = {
    {"Linear", kLinear, false}, {"Category", kCategory, false}, {"Uneven", kUnevenlySpaced, false}, {"Ring", kLinear, true}};
constexpr Layout kInCache = {"InCache", kLinear, false};

struct Mode {
    const char* name;
    std::int32_t value;
};
constexpr Mode kModes[] = {{"MinMax", 1}, {"Min", 2}, {"Max", 3}, {"Mid", 4}, {"MinOrMax", 5}};
constexpr Mode kMinMax = kModes[0];

struct Series {
    std::int32_t points;
    std::int32_t width;
};

const double* XOf(const Layout& layout, std::int32_t n) {
    if (layout.ring) return RingX();
    return layout.data == kUnevenlySpaced ? UnevenX() : EvenX(n);
}

QmResamplingArgs* MakeArgs(const Layout& layout, std::int32_t mode, const double* x, const Series& series) {
    const std::int32_t n = series.points;
    QmResamplingArgs* args = CSharp_new_ResamplingArgs();
    CSharp_ResamplingArgs_Resampling_set(args, mode);
    CSharp_ResamplingArgs_Data_set(args, layout.data);
    CSharp_ResamplingArgs_StartIndex_set(args, 0);
    CSharp_ResamplingArgs_EndIndex_set(args, n - 1);
    CSharp_ResamplingArgs_ViewportWidth_set(args, series.width);
    CSharp_ResamplingArgs_ResamplingPrecision_set(args, 0);
    // The whole series is visible. Category X is the index; the even X are
    // the index too; the uneven X go from their first to their last value.
    const bool uneven = layout.data == kUnevenlySpaced;
    CSharp_ResamplingArgs_MinXInclusive_set(args, uneven ? x[0] : 0.0);
    CSharp_ResamplingArgs_MaxXInclusive_set(args, uneven ? x[n - 1] : n - 1.0);
    CSharp_ResamplingArgs_InputSize_set(args, n);
    CSharp_ResamplingArgs_InputBaseIndex_set(args, layout.ring ? RingBaseIndex() : 0);
    CSharp_ResamplingArgs_HasNaN_set(args, 0);
    CSharp_ResamplingArgs_ZeroLineY_set(args, 0.0);
    return args;
}

// What a managed caller keeps between frames: one engine per type pair, one
// index vector and the output arrays, reused by every run.
template <class YT>
struct Reused {
    typename RunExports<YT>::Engine* engine = RunExports<YT>::Create();
    QmIntVector* indices = CSharp_new_IntVector__SWIG_0();
    std::vector<double> outX, outY;
};

template <class YT>
Reused<YT>& ReusedFor() {
    static Reused<YT> reused;
    return reused;
}

template <class YT>
void RunCase(benchmark::State& state, const Layout& layout, std::int32_t mode, const Series& series) {
    using Api = RunExports<YT>;
    Reused<YT>& r = ReusedFor<YT>();
    const double* x = XOf(layout, series.points);
    const YT* y = Walk<YT>(series.points);
    QmResamplingArgs* args = MakeArgs(layout, mode, x, series);
    TakeFailure();
    const std::int32_t actual = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args);
    CSharp_IntVector_Clear(r.indices);
    const std::int32_t room = Api::UpdateIndices(r.engine, r.indices, x, y, actual, args);
    if (actual != mode) {
        state.SkipWithError(("GetActualResampling answered mode " + std::to_string(actual)).c_str());
    } else if (auto failure = TakeFailure()) {
        state.SkipWithError(failure->c_str());
    } else {
        if (r.outX.size() < static_cast<std::size_t>(room)) {
            r.outX.resize(static_cast<std::size_t>(room));
            r.outY.resize(static_cast<std::size_t>(room));
        }
        for (auto _ : state) {
            CSharp_IntVector_Clear(r.indices);  // a new frame: Execute appends behind what the vector holds
            Api::UpdateIndices(r.engine, r.indices, x, y, actual, args);
            Api::Execute(r.engine, x, y, r.outX.data(), r.outY.data(), r.indices, actual, args);
            benchmark::ClobberMemory();
        }
        if (auto late = TakeFailure()) state.SkipWithError(late->c_str());
        state.counters["points_out"] = CSharp_IntVector_size(r.indices);
        SetReadCounters<YT>(state, series.points);
    }
    CSharp_delete_ResamplingArgs(args);
}

// The second yardstick: what a user writes by hand, a plain loop per bucket
// keeping the minimum and maximum with their positions, on buckets of 2^15
// points (the library's grid for 10^8 points on 1920 pixels).
constexpr std::int32_t kHandBucket = 1 << 15;

template <class YT>
std::int64_t HandMinMax(const YT* y, std::int32_t n) {
    std::int64_t positions = 0;
    for (std::int32_t start = 0; start < n; start += kHandBucket) {
        const std::int32_t end = n - start > kHandBucket ? start + kHandBucket : n;
        YT lo = y[start], hi = y[start];
        std::int32_t loAt = start, hiAt = start;
        for (std::int32_t i = start + 1; i < end; ++i) {
            if (y[i] < lo) lo = y[i], loAt = i;
            if (y[i] > hi) hi = y[i], hiAt = i;
        }
        positions += loAt + hiAt;
    }
    return positions;
}

template <class YT>
void RegisterY(const std::string& word) {
    const Series whole{SeriesPoints(), kViewportWidth};
    const std::string sum = word + "/Sum";
    RegisterReadsOfSeries<YT>(sum, &Walk<YT>, whole.points);
    const std::string hand = word + "/HandMinMax";
    benchmark::RegisterBenchmark(hand.c_str(), [](benchmark::State& state) {
        const YT* y = Walk<YT>(SeriesPoints());
        for (auto _ : state) benchmark::DoNotOptimize(HandMinMax(y, SeriesPoints()));
        SetReadCounters<YT>(state, SeriesPoints());
    })->Unit(benchmark::kMillisecond);
    SetBaseline(hand, sum);
    for (const Layout& layout : kLayouts) {
        for (const Mode& mode : kModes) {
            const std::string name = word + "/" + layout.name + "/" + mode.name;
            RegisterOnIsas(name, sum, benchmark::kMillisecond, [&layout, &mode, whole](benchmark::State& state) {
                RunCase<YT>(state, layout, mode.value, whole);
            });
        }
    }
    const Series small{kInCachePoints, kInCacheWidth};
    const std::string smallSum = word + "/InCache/Sum";
    RegisterSumOfSeries<YT>(smallSum, &Walk<YT>, small.points, benchmark::kMicrosecond);
    for (const Mode& mode : {kMinMax, kModes[3]}) {
        RegisterOnIsas(word + "/InCache/" + mode.name, smallSum, benchmark::kMicrosecond,
                       [small, mode](benchmark::State& state) { RunCase<YT>(state, kInCache, mode.value, small); });
    }
    const Series wide{kInCachePoints, kInCacheWideWidth};
    for (const Mode& mode : {kMinMax, kModes[3]}) {
        RegisterOnIsas(word + "/InCache/Wide" + mode.name, smallSum, benchmark::kMicrosecond,
                       [wide, mode](benchmark::State& state) { RunCase<YT>(state, kInCache, mode.value, wide); });
    }
}

}  // namespace

void RegisterCases() {
    RegisterY<double>("Double");
    RegisterY<float>("Single");
    RegisterY<std::int32_t>("Int32");
    RegisterY<std::int16_t>("Int16");
    RegisterY<std::uint8_t>("Byte");
}

}  // namespace bench
