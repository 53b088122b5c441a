// The backbone of the resampling tests: each walk family (Linear, Category,
// UnevenlySpaced; bucket and NaN-aware) through the engine against the plain
// reference of ReferenceWalk.h, on random runs, in all modes, on plain arrays
// and in a turned ring. It catches a wrong bucket boundary (rounding, the
// point on a grid line, the clamped last bucket), a wrong reduction or
// tie-break, points ordered by slot instead of logical index, a ring seam
// searched on the wrong side, a NaN run joined to its neighbours or given the
// wrong index, a table cell holding the wrong strategy (the Double quirk of
// the plain NaN-aware Linear row included), X read on a category axis (it is
// null there), indices held before the run lost, and a reservation that is
// not cells times points per cell.

#include <type_traits>

#include "resampling/ReferenceWalk.h"
#include "resampling/ResamplingTestSupport.h"

namespace qm::test {
namespace {

struct Family {
    ResamplingData data;
    bool nanAware;
};

// Where TY is Double the plain NaN-aware Linear row runs Min as MinOrMax,
// Mid as Min and MinOrMax as Mid.
template <class TY>
ResamplingMode ColumnThatRuns(ResamplingMode mode, const ResamplingArgs& a) {
    if (!std::is_same_v<TY, double> || !a.HasNaN || a.Data != Linear || a.InputBaseIndex != 0) return mode;
    return mode == Min ? MinOrMax : mode == Mid ? Min : mode == MinOrMax ? Mid : mode;
}

template <class TY>
void CompareRandomRuns(const Family& family) {
    const ExtremeResampler<double, TY> engine;
    std::mt19937 rng(17 + family.data);
    std::int32_t ringRuns = 0;
    for (std::int32_t trial = 0; trial < 400; ++trial) {
        const RandomRun<TY> run(rng, family.data, family.nanAware);
        const auto size = static_cast<std::int32_t>(run.y.size() + 1 + rng() % 4);
        for (const std::int32_t base : {0, 1 + static_cast<std::int32_t>(rng() % static_cast<unsigned>(size - 1))}) {
            ResamplingArgs args = run.args;
            args.InputSize = base == 0 ? 0 : size, args.InputBaseIndex = base, args.HasNaN = family.nanAware;
            const std::vector<double> x = base == 0 ? run.x : ToRing(run.x, size, base);
            const std::vector<TY> y = base == 0 ? run.y : ToRing(run.y, size, base);
            for (ResamplingMode mode : kModes) {
                SCOPED_TRACE(testing::Message() << "trial " << trial << " base " << base << " mode " << mode);
                const auto want = reference::Expected(run.x, run.y, args, ColumnThatRuns<TY>(mode, args), family.nanAware);
                if (!want.predictable) continue;
                ringRuns += base != 0;
                const Output out = Resample(engine, mode, family.data == Category ? nullptr : x.data(), y.data(), args);
                ASSERT_FALSE(out.refused);
                ASSERT_EQ(out.indices, want.indices);
                EXPECT_EQ(Comparable(out.x), Comparable(want.x));
                EXPECT_EQ(Comparable(out.y), Comparable(want.y));
                const std::int32_t perCell = 1 + (mode == MinMax || mode == MinOrMax) + (family.data == UnevenlySpaced);
                if (mode == None || !family.nanAware) {
                    EXPECT_EQ(out.reserved, mode == None ? args.EndIndex - args.StartIndex + 1 : GridBucketCount(args, GridStep(args)) * perCell);
                }
            }
        }
    }
    EXPECT_GT(ringRuns, 900) << "too few ring runs could be predicted";
}

class WalkComparison : public ::testing::TestWithParam<Family> {};

TEST_P(WalkComparison, MatchesTheReferenceOnRandomRuns) {
    if (!GetParam().nanAware) CompareRandomRuns<std::int32_t>(GetParam());
    CompareRandomRuns<double>(GetParam());
    CompareRandomRuns<float>(GetParam());
}

std::string NameOf(const ::testing::TestParamInfo<Family>& family) {
    static const char* const kKinds[] = {"Linear", "Category", "UnevenlySpaced"};
    return std::string(family.param.nanAware ? "NaNAware" : "Bucket") + kKinds[family.param.data];
}
INSTANTIATE_TEST_SUITE_P(Families, WalkComparison,
                         ::testing::Values(Family{Linear, false}, Family{Category, false}, Family{UnevenlySpaced, false},
                                           Family{Linear, true}, Family{Category, true}, Family{UnevenlySpaced, true}),
                         NameOf);

}  // namespace
}  // namespace qm::test
