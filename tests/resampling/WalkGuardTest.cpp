// Arguments outside the caller's contract: a grid without cells, a spacing
// that makes no sense, X unsorted or NaN, a one-point range, points beyond
// the viewport, a plain run with InputSize 0, an Execute without
// UpdateIndices; and one run within it. Without the walk guards such runs
// never end or write past the room the caller made. Each row runs in every
// cell of the tables (plain and ring, NaN-aware or not, every data kind and
// mode): every call must return and write within its room, a grid without
// cells must make nothing, refusing the room (a report) only where the
// points per cell are odd, and the same run again on its index vector must
// allocate nothing (counted by support/FailingAllocator.cpp's operator new).

#include <algorithm>
#include <random>

#include "interop/InterfaceTestSupport.h"
#include "support/FailingAllocator.h"

using namespace qmtest;

namespace {

constexpr std::int32_t kSize = 1003;  // the visible stretch never fills the ring
using DoubleSingle = QM_PAIR_EXPORTS(Double, double, Single, float);

std::vector<double> Ramp(double first, double spacing) {
    std::vector<double> v(kSize);
    for (std::size_t i = 0; i < v.size(); ++i) v[i] = first + spacing * static_cast<double>(i);
    return v;
}

class WalkGuard : public InterfaceTest {};

TEST_F(WalkGuard, EveryCallEndsWithinItsRoom) {
    std::mt19937 rng(5);
    std::vector<double> unsorted = Ramp(0, 1), holes = Ramp(0, 1);
    std::shuffle(unsorted.begin(), unsorted.end(), rng);
    for (std::size_t i = 0; i < holes.size(); i += 3) holes[i] = NAN;
    const struct {
        std::vector<double> x;
        Shape shape;
        bool noCells = false, skipUpdate = false;
    } rows[] = {
        {Ramp(0, 1), {.end = 99, .width = 0, .maxX = 100}, true},  {Ramp(0, 1), {.end = 99, .width = 10, .maxX = 0}, true},
        {Ramp(0, 1), {.end = 99, .width = 10, .maxX = -5}, true},  {Ramp(0, 1), {.end = 99, .width = 10, .maxX = 100, .precision = ~0u}, true},
        {Ramp(5, 0), {.end = 10, .width = 5, .maxX = 10}},         {Ramp(0, 1e-13), {.end = 10, .width = 10, .maxX = 10}},
        {Ramp(64, -2), {.end = 10, .width = 8, .maxX = 64}},       {Ramp(0, 1), {.start = 4, .end = 4, .width = 3, .maxX = 9}},
        {unsorted, {.end = 999, .width = 40, .maxX = 1002}},       {holes, {.end = 999, .width = 40, .maxX = 1002}},
        {Ramp(0, 1), {.end = 999, .width = 100, .maxX = 100}},     {Ramp(0, 1), {.end = 99, .width = 10, .maxX = 99}, false, true},
        {Ramp(0, 1.5), {.start = 3, .end = 900, .width = 40, .minX = 4, .maxX = 1400}},
    };
    auto* engine = DoubleSingle::make();
    std::vector<float> y(kSize);
    for (std::size_t i = 0; i < y.size(); ++i) y[i] = i % 17 == 0 ? NAN : std::uniform_real_distribution<float>(-1.0f, 1.0f)(rng);
    for (std::size_t row = 0; row < std::size(rows); ++row)
        for (std::int32_t cell = 0; cell < 2 * 4 * 6 * 2; ++cell) {
            Shape shape = rows[row].shape;
            shape.base = cell % 2 * 7, shape.size = shape.base == 0 ? 0 : kSize, shape.data = cell / 2 % 4, shape.hasNaN = cell / 48;
            const std::int32_t mode = cell / 8 % 6;
            SCOPED_TRACE(testing::Message() << "row " << row << " base " << shape.base << " data " << shape.data << " mode " << mode << " NaN " << shape.hasNaN);
            const std::vector<double> x = shape.base == 0 ? rows[row].x : ToRing(rows[row].x, kSize, shape.base);
            const std::vector<float> ys = shape.base == 0 ? y : ToRing(y, kSize, shape.base);
            const bool bucket = mode != None && shape.data != NotResampled;
            const ArgsPtr args = MakeArgs(shape);
            VectorPtr indices = MakeVector({});
            if (rows[row].skipUpdate && bucket) {  // a bucket walk refuses, a NaN-aware one gathers the empty vector
                double sink[1] = {NAN};
                CSharp_ExtremeResamplerDoubleSingle_Execute(engine, x.data(), ys.data(), sink, sink, indices.get(), mode, args.get());
                EXPECT_EQ(Reports().size(), shape.hasNaN ? 0u : 1u);
                Reports().clear();
            } else if (!rows[row].skipUpdate) {
                const Frame f = DoubleSingle::Run(engine, x.data(), ys.data(), mode, args.get(), indices.get());
                const std::int32_t perCell = 1 + (mode == MinMax || mode == MinOrMax) + (shape.data == UnevenlySpaced);
                EXPECT_TRUE(f.indices.empty() || !(rows[row].noCells && bucket));
                const bool refused = rows[row].noCells && bucket && !shape.hasNaN && perCell % 2;
                ExpectReports(refused ? std::vector{App("vector<T> too long")} : std::vector<Report>{});
                if (refused) continue;
                // The same run again on its vector: a steady run allocates nothing.
                std::vector<double> outX(f.x.size() + 1), outY(f.x.size() + 1);
                CSharp_IntVector_Clear(indices.get());
                ResetAllocationCount();
                CSharp_ExtremeResamplerDoubleSingle_UpdateIndices(engine, indices.get(), x.data(), ys.data(), mode, args.get());
                CSharp_ExtremeResamplerDoubleSingle_Execute(engine, x.data(), ys.data(), outX.data(), outY.data(), indices.get(), mode, args.get());
                EXPECT_EQ(AllocationCount(), 0) << "a steady run allocated";
            }
        }
    DoubleSingle::destroy(engine);
}

}  // namespace
