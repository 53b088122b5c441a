// Arguments outside the caller's contract: a grid without cells, a spacing
// that makes no sense, X unsorted or NaN, a one-point range, points beyond
// the viewport, a plain run with InputSize 0, an Execute without
// UpdateIndices. Without the walk guards such runs never end or write past
// the room the caller made. Each row runs in every cell of the tables (plain
// and ring, NaN-aware or not, every data kind and mode); Resample checks that
// every call returns and writes within its room, and a grid without cells
// must make nothing, refusing the room only where the points per cell are odd.

#include "resampling/ResamplingTestSupport.h"

namespace qm::test {
namespace {

constexpr std::int32_t kSize = 1003;  // the visible stretch never fills the ring

std::vector<double> Ramp(double first, double spacing) {
    std::vector<double> v(kSize);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = first + spacing * static_cast<double>(i);
    return v;
}

TEST(WalkGuard, EveryCallEndsWithinItsRoom) {
    std::mt19937 rng(5);
    std::vector<double> unsorted = Ramp(0, 1), holes = Ramp(0, 1);
    std::shuffle(unsorted.begin(), unsorted.end(), rng);
    for (std::size_t i = 0; i < holes.size(); i += 3) holes[i] = kNaN;
    ResamplingArgs tiny = Args(Linear, 0, 99, 0, 100, 10);
    tiny.ResamplingPrecision = ~0u;  // the step underflows
    const struct {
        std::vector<double> x;
        ResamplingArgs args;
        bool noCells = false, skipUpdate = false;
    } rows[] = {
        {Ramp(0, 1), Args(Linear, 0, 99, 0, 100, 0), true}, {Ramp(0, 1), Args(Linear, 0, 99, 0, 0, 10), true},
        {Ramp(0, 1), Args(Linear, 0, 99, 0, -5, 10), true}, {Ramp(0, 1), tiny, true},
        {Ramp(5, 0), Args(Linear, 0, 10, 0, 10, 5)},        {Ramp(0, 1e-13), Args(Linear, 0, 10, 0, 10, 10)},
        {Ramp(64, -2), Args(Linear, 0, 10, 0, 64, 8)},      {Ramp(0, 1), Args(Linear, 4, 4, 0, 9, 3)},
        {unsorted, Args(Linear, 0, 999, 0, 1002, 40)},      {holes, Args(Linear, 0, 999, 0, 1002, 40)},
        {Ramp(0, 1), Args(Linear, 0, 999, 0, 100, 100)},    {Ramp(0, 1), Args(Linear, 0, 99, 0, 99, 10), false, true},
    };
    const ExtremeResampler<double, float> engine;
    std::vector<float> y(kSize);
    for (float& v : y) v = std::uniform_real_distribution<float>(-1.0f, 1.0f)(rng);
    for (std::size_t row = 0; row < std::size(rows); ++row)
        for (std::int32_t cell = 0; cell < 2 * 2 * 4 * 6; ++cell) {
            const std::int32_t base = cell % 2 * 7, data = cell / 2 % 4, mode = cell / 8 % 6;
            ResamplingArgs args = rows[row].args;
            args.InputSize = base == 0 ? 0 : kSize, args.InputBaseIndex = base, args.Data = data, args.HasNaN = cell >= 48;
            SCOPED_TRACE(testing::Message() << "row " << row << " base " << base << " data " << data << " mode " << mode << " NaN " << args.HasNaN);
            const std::vector<double> x = base == 0 ? rows[row].x : ToRing(rows[row].x, kSize, base);
            const std::vector<float> ys = base == 0 ? y : ToRing(y, kSize, base);
            const bool bucket = mode != None && data != NotResampled;
            if (rows[row].skipUpdate) {
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
            // INT32_MIN cells: an even count of points per cell wraps the room to 0, an odd one fails to reserve.
            const std::int32_t perCell = 1 + (mode == MinMax || mode == MinOrMax) + (data == UnevenlySpaced);
            if (rows[row].noCells && bucket) {
                EXPECT_TRUE(out.indices.empty());
                EXPECT_EQ(out.refused, !args.HasNaN && perCell % 2 == 1);
            }
        }
}

}  // namespace
}  // namespace qm::test
