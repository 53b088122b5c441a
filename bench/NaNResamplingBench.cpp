// quillmap_nan_resampling_bench: whole NaN-aware runs (UpdateIndices walks,
// Execute gathers, through the C exports) of a 10^8-point series with 1 % of
// its points in NaN runs of random length, to a 1920-pixel viewport, for
// Linear, Uneven and ring layouts, the five modes, Double and Single Y, next
// to the summing baseline over the same Y array.

#include <cstdint>
#include <string>
#include <type_traits>
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

struct Layout {
    const char* name;
    std::int32_t data;  // Linear 0, UnevenlySpaced 2
    bool ring;
};
constexpr Layout kLayouts[] = {{"Linear", 0, false}, {"Uneven", 2, false}, {"Ring", 0, true}};

struct Mode {
    const char* name;
    std::int32_t value;
};
constexpr Mode kModes[] = {{"MinMax", 1}, {"Min", 2}, {"Max", 3}, {"Mid", 4}, {"MinOrMax", 5}};

template <class YT>
void RunCase(benchmark::State& state, const Layout& layout, std::int32_t mode) {
    using Api = RunExports<YT>;
    static typename Api::Engine* engine = Api::Create();
    static QmIntVector* indices = CSharp_new_IntVector__SWIG_0();
    static std::vector<double> outX, outY;
    const std::int32_t n = SeriesPoints();
    const double* x = layout.ring ? RingX() : layout.data == 2 ? UnevenX() : EvenX(n);
    const YT* y = WalkWithGaps<YT>(n);
    QmResamplingArgs* args = CSharp_new_ResamplingArgs();
    CSharp_ResamplingArgs_Data_set(args, layout.data);
    CSharp_ResamplingArgs_EndIndex_set(args, n - 1);
    CSharp_ResamplingArgs_ViewportWidth_set(args, kViewportWidth);
    CSharp_ResamplingArgs_MinXInclusive_set(args, layout.data == 2 ? x[0] : 0.0);
    CSharp_ResamplingArgs_MaxXInclusive_set(args, layout.data == 2 ? x[n - 1] : n - 1.0);
    CSharp_ResamplingArgs_InputSize_set(args, n);
    CSharp_ResamplingArgs_InputBaseIndex_set(args, layout.ring ? RingBaseIndex() : 0);
    CSharp_ResamplingArgs_HasNaN_set(args, 1);
    TakeFailure();
    for (auto _ : state) {
        CSharp_IntVector_Clear(indices);
        const std::int32_t count = Api::UpdateIndices(engine, indices, x, y, mode, args);
        if (outX.size() < static_cast<std::size_t>(count)) {
            outX.resize(static_cast<std::size_t>(count));
            outY.resize(static_cast<std::size_t>(count));
        }
        Api::Execute(engine, x, y, outX.data(), outY.data(), indices, mode, args);
        benchmark::ClobberMemory();
    }
    if (auto failure = TakeFailure()) state.SkipWithError(failure->c_str());
    state.counters["points_out"] = CSharp_IntVector_size(indices);
    SetReadCounters<YT>(state, n);
    CSharp_delete_ResamplingArgs(args);
}

// Where Y is Double, the NaN-aware table for plain arrays holds in its
// Linear row, by a kept quirk, another reduction than three modes name: such
// a case is named after the mode it passes and the reduction that runs, so
// that no figure is read as another mode's.
template <class YT>
std::string CaseName(const std::string& word, const Layout& layout, const Mode& mode) {
    std::string name = word + "/NaN/" + layout.name + "/" + mode.name;
    if (!std::is_same_v<YT, double> || layout.ring || layout.data != 0) return name;
    switch (mode.value) {  // as kModes numbers them
        case 2: return name + "=MinOrMax";
        case 4: return name + "=Min";
        case 5: return name + "=Mid";
        default: return name;
    }
}

template <class YT>
void RegisterY(const std::string& word) {
    const std::string sum = word + "/Sum";
    RegisterReadsOfSeries<YT>(sum, &WalkWithGaps<YT>, SeriesPoints());
    for (const Layout& layout : kLayouts)
        for (const Mode& mode : kModes) {
            const std::string name = CaseName<YT>(word, layout, mode);
            RegisterOnIsas(name, sum, benchmark::kMillisecond, [&layout, &mode](benchmark::State& state) {
                RunCase<YT>(state, layout, mode.value);
            });
        }
}

}  // namespace

void RegisterCases() {
    RegisterY<double>("Double");
    RegisterY<float>("Single");
}

}  // namespace bench
