// Arguments outside the caller's contract: a degenerate grid, a spacing that
// makes no sense, X unsorted or NaN, a one-point range, points beyond the
// viewport, a plain run with InputSize 0, an Execute without UpdateIndices.
// Without the walk guards such runs never end or write past the room the
// caller made, so each row runs in every cell of the tables (plain and ring,
// with and without NaN handling, every data kind and mode), and Resample checks
// that every call returns and writes nothing beyond the room it was given.

#include "resampling/ResamplingTestSupport.h"

namespace qm::test {
namespace {

constexpr std::int32_t kSize = 1003;  // the ring is never quite full

std::vector<double> Ramp(double first, double spacing, std::int32_t n = kSize) {
    std::vector<double> v(static_cast<std::size_t>(n));
    for (std::int32_t i = 0; i < n; ++i) v[static_cast<std::size_t>(i)] = first + spacing * i;
    return v;
}

struct Row {
    const char* name;
    std::vector<double> x;
    ResamplingArgs args;
    bool noCells = false;     // a grid without cells: nothing is made
    bool skipUpdate = false;  // Execute on a vector without reserved room
};

TEST(WalkGuard, EveryCallEndsWithinItsRoom) {
    std::vector<double> unsorted = Ramp(0, 1), holes = Ramp(0, 1);
    std::mt19937 rng(5);
    std::shuffle(unsorted.begin(), unsorted.end(), rng);
    for (std::size_t i = 0; i < holes.size(); i += 3) holes[i] = kNaN;
    const Row rows[] = {
        {"WidthZero", Ramp(0, 1), Args(Linear, 0, 99, 0, 100, 0), true},
        {"EmptyXRange", Ramp(0, 1), Args(Linear, 0, 99, 0, 0, 10), true},
        {"ReversedXRange", Ramp(0, 1), Args(Linear, 0, 99, 0, -5, 10), true},
        {"StepBelowTheDoubleRange", Ramp(0, 1), Args(Linear, 0, 99, 0, 100, 10, ~0u), true},
        {"FlatX", std::vector<double>(kSize, 5.0), Args(Linear, 0, 10, 0, 10, 5)},
        {"SpacingOverflowsThePosition", Ramp(0, 1e-13), Args(Linear, 0, 10, 0, 10, 10)},
        {"FallingX", Ramp(64, -2), Args(Linear, 0, 10, 0, 64, 8)},
        {"OnePoint", Ramp(0, 1), Args(Linear, 4, 4, 0, 9, 3)},
        {"UnsortedX", unsorted, Args(Linear, 0, 999, 0, 1002, 40)},
        {"NaNInX", holes, Args(Linear, 0, 999, 0, 1002, 40)},
        {"PointsBeyondTheViewport", Ramp(0, 1), Args(Linear, 0, 999, 0, 100, 100)},
        {"ExecuteWithoutRoom", Ramp(0, 1), Args(Linear, 0, 99, 0, 99, 10), false, true},
    };
    const ExtremeResampler<double, float> engine;
    std::vector<float> y(kSize);
    for (float& v : y) v = std::uniform_real_distribution<float>(-1.0f, 1.0f)(rng);
    for (const Row& row : rows)
        for (std::int32_t base : {0, 7})
            for (std::int32_t data = Linear; data <= NotResampled; ++data)
                for (bool nan : {false, true})
                    for (ResamplingMode mode : kModes) {
                        SCOPED_TRACE(testing::Message() << row.name << " base " << base << " data " << data << " mode "
                                                        << mode << (nan ? " NaN" : ""));
                        ResamplingArgs args = InRing(row.args, base == 0 ? 0 : kSize, base);
                        args.Data = data, args.HasNaN = nan;
                        const std::vector<double> x = base == 0 ? row.x : ToRing(row.x, kSize, base);
                        const std::vector<float> ys = base == 0 ? y : ToRing(y, kSize, base);
                        const bool bucket = mode != None && data != NotResampled, nanAware = bucket && nan;
                        if (row.skipUpdate) {
                            IntVector indices;
                            double sink[1] = {kNaN};
                            try {
                                if (bucket) engine.Execute(x.data(), ys.data(), sink, sink, indices, mode, args);
                            } catch (const std::length_error&) {
                            }
                            EXPECT_EQ(indices.size(), 0);
                            continue;
                        }
                        const Output out = Resample(engine, mode, x.data(), ys.data(), args);
                        // The cell count is INT32_MIN: an even number of points per cell wraps the
                        // room to 0, an odd number fails to reserve.
                        const std::int32_t perCell = (mode == MinMax || mode == MinOrMax ? 2 : 1) + (data == UnevenlySpaced);
                        if (row.noCells && bucket) {
                            EXPECT_TRUE(out.indices.empty());
                            EXPECT_EQ(out.refused, !nanAware && perCell % 2 == 1);
                        }
                    }
}

}  // namespace
}  // namespace qm::test
