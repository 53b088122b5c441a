// The backbone of the resampling tests: each walk family (Linear, Category,
// UnevenlySpaced; bucket and NaN-aware) run through the exports against the
// plain reference of ReferenceWalk.h, on random runs, in all modes, on plain
// arrays and in a turned ring. It catches a wrong grid (a floor instead of a
// snap toward zero, a step off by a power of two), a wrong bucket boundary
// (rounding, the point on a grid line, the clamped last bucket), a wrong
// reduction or tie-break, points ordered by slot instead of logical index, a
// ring seam searched on the wrong side, a NaN run joined to its neighbours or
// given the wrong index, a table cell holding the wrong strategy (the Double
// quirk of the plain NaN-aware Linear row included), X read on a category
// axis (it is null there), indices held before the run lost, more points than
// room, and a reservation that is not cells times points per cell.

#include <random>

#include "resampling/ReferenceWalk.h"

using namespace qmtest;

namespace {

// A random run within the caller's contract: X rising (evenly for Linear,
// with ties and wide holes for UnevenlySpaced), Y from a few values so that
// ties are common, with +-0 and +-inf, and with NaN runs of every length
// (leading, trailing, whole buckets, everything) when `nan`.
template <class TY>
struct RandomRun {
    std::vector<double> x;
    std::vector<TY> y;
    Shape shape;

    RandomRun(std::mt19937& rng, std::int32_t data, bool nan) {
        auto uniform = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
        auto below = [&](std::int32_t n) { return static_cast<std::int32_t>(rng() % static_cast<unsigned>(n)); };
        const std::int32_t n = 2 + below(90);
        const double spacing = std::vector<double>{0.25, 1.0, 3.0, 0.7}[below(4)];
        x.push_back(uniform(-60.0, 60.0));
        for (std::int32_t i = 1, kind = below(20); i < n; ++i, kind = below(20))
            x.push_back(data != UnevenlySpaced ? x[0] + spacing * i : x.back() + (kind == 0 ? 0.0 : kind == 1 ? uniform(5, 40) : uniform(0.05, 2)));
        constexpr TY inf = std::numeric_limits<TY>::infinity();
        const TY values[] = {TY(-2), TY(-1), TY(-0.0), TY(0), TY(1), TY(2.5), TY(3), inf, -inf};
        const std::int32_t spread = std::is_floating_point_v<TY> && below(8) == 0 ? 9 : 7;
        for (std::int32_t i = 0; i < n; ++i) y.push_back(below(3) == 0 ? TY(uniform(-4, 4)) : values[below(spread)]);
        for (std::int32_t runs = nan ? below(6) : 0; runs > 0; --runs)
            for (std::int32_t i = below(n), last = std::min(n, i + 1 + below(below(4) == 0 ? n : 6)); i < last; ++i)
                y[i] = std::numeric_limits<TY>::quiet_NaN();
        const std::int32_t s = below(n - 1), e = data == Linear ? s + 1 + below(n - 1 - s) : s + below(n - s);
        const double first = data == Category ? s : x[s], last = data == Category ? e : x[e];
        shape = {.data = data, .start = s, .end = e, .width = 1 + below(25), .minX = first - (below(3) == 0 ? uniform(0, 60) : uniform(0, 2)),
                 .maxX = last + uniform(0.01, 3), .hasNaN = nan, .precision = static_cast<std::uint32_t>(below(3)),
                 .zeroLine = std::vector<double>{0.0, 1.0, -1.5, NAN}[below(4)]};
    }
};

// Where TY is Double the plain NaN-aware Linear row runs Min as MinOrMax, Mid
// as Min and MinOrMax as Mid.
template <class TY>
std::int32_t ColumnThatRuns(std::int32_t mode, const Shape& a) {
    if (!std::is_same_v<TY, double> || !a.hasNaN || a.data != Linear || a.base != 0) return mode;
    return mode == Min ? MinOrMax : mode == Mid ? Min : mode == MinOrMax ? Mid : mode;
}

template <class P>
void CompareRandomRuns(std::int32_t data, bool nanAware) {
    using TY = typename P::Y;
    auto* engine = P::make();
    std::mt19937 rng(17 + data);
    std::int32_t ringRuns = 0;
    for (std::int32_t trial = 0; trial < 400; ++trial) {
        const RandomRun<TY> run(rng, data, nanAware);
        Shape shape = run.shape;
        shape.size = static_cast<std::int32_t>(run.y.size() + 1 + rng() % 4);
        for (const std::int32_t base : {0, 1 + static_cast<std::int32_t>(rng() % static_cast<unsigned>(shape.size - 1))}) {
            shape.base = base;
            const ArgsPtr args = MakeArgs(shape);
            const std::vector<double> x = base == 0 ? run.x : ToRing(run.x, shape.size, base);
            const std::vector<TY> y = base == 0 ? run.y : ToRing(run.y, shape.size, base);
            for (std::int32_t mode = None; mode <= MinOrMax; ++mode) {
                SCOPED_TRACE(testing::Message() << "trial " << trial << " base " << base << " mode " << mode);
                auto want = reference::Expected(run.x, run.y, shape, ColumnThatRuns<TY>(mode, shape), nanAware);
                if (!want.predictable) continue;
                ringRuns += base != 0;
                VectorPtr indices = MakeVector({-5});
                const Frame f = P::Run(engine, data == Category ? nullptr : x.data(), y.data(), mode, args.get(), indices.get());
                // A ring's seam may add a pass beyond the grid's cells; a bucket walk stops at the room it counted.
                const auto room = static_cast<std::size_t>(std::max(f.count, 0));
                if (!nanAware && base != 0 && data == UnevenlySpaced && want.indices.size() > room)
                    want.indices.resize(room), want.x.resize(room), want.y.resize(room);
                ASSERT_TRUE(!f.indices.empty() && f.indices.front() == -5) << "the index held before the run was lost";
                ASSERT_EQ(Ints(f.indices.begin() + 1, f.indices.end()), want.indices);
                // A NaN-aware Execute gathers for the whole vector, the held index too; a bucket walk writes its points only.
                const std::size_t skip = nanAware && mode != None, made = want.x.size();
                ASSERT_LE(skip + made, f.x.size()) << "more points than room";
                EXPECT_EQ(Comparable({f.x.begin() + skip, f.x.begin() + skip + made}), Comparable(want.x));
                EXPECT_EQ(Comparable({f.y.begin() + skip, f.y.begin() + skip + made}), Comparable(want.y));
                EXPECT_EQ(std::vector<double>(f.x.begin() + skip + made, f.x.end()), std::vector<double>(f.x.size() - skip - made, -7.25));
                const std::int32_t perCell = 1 + (mode == MinMax || mode == MinOrMax) + (data == UnevenlySpaced);
                if (mode == None || !nanAware) { EXPECT_EQ(f.count, mode == None ? shape.end - shape.start + 1 : reference::Cells(shape) * perCell); }
            }
        }
    }
    P::destroy(engine);
    EXPECT_GT(ringRuns, 900) << "too few ring runs could be predicted";
}

class WalkComparison : public InterfaceTest, public ::testing::WithParamInterface<std::tuple<std::int32_t, bool>> {};

TEST_P(WalkComparison, MatchesTheReferenceOnRandomRuns) {
    const auto [data, nanAware] = GetParam();
    if (!nanAware) CompareRandomRuns<QM_PAIR_EXPORTS(Double, double, Int32, int32_t)>(data, nanAware);
    CompareRandomRuns<QM_PAIR_EXPORTS(Double, double, Double, double)>(data, nanAware);
    CompareRandomRuns<QM_PAIR_EXPORTS(Double, double, Single, float)>(data, nanAware);
}

std::string NameOf(const ::testing::TestParamInfo<std::tuple<std::int32_t, bool>>& family) {
    static const char* const kKinds[] = {"Linear", "Category", "UnevenlySpaced"};
    return std::string(std::get<1>(family.param) ? "NaNAware" : "Bucket") + kKinds[std::get<0>(family.param)];
}
INSTANTIATE_TEST_SUITE_P(Families, WalkComparison, ::testing::Combine(::testing::Values(0, 1, 2), ::testing::Bool()), NameOf);

}  // namespace
