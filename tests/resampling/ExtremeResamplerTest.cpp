// The engine picks a strategy by ring or not, NaN or not, data kind and
// mode, and forwards to it. Each cell is checked against the strategy class
// it must hold, and a steady run must not allocate.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "resampling/ExtremeResampler.h"
#include "resampling/ResamplingTestSupport.h"
#include "resampling/ModeMethods.h"
#include "resampling/drivers/PassThroughMethods.h"
#include "support/FailingAllocator.h"

namespace qm {
namespace {

using namespace drivertest;

// Uneven rising X, so that the Linear prediction and the unevenly spaced
// search cut differently; Y distinct, so that every mode picks differently.
class ExtremeResamplerTest : public ::testing::Test {
protected:
    static constexpr std::int32_t kSize = 200;
    GenericArrayOperations<double> ops;
    ExtremeResampler<double, double> engine;
    std::vector<double> x, y;
    ResamplingArgs args{};

    ExtremeResamplerTest() {
        std::mt19937 rng(31);
        double value = 10.0;
        for (std::int32_t i = 0; i < kSize; ++i) {
            value += std::uniform_real_distribution<double>(0.1, 3.0)(rng);
            x.push_back(value);
            // A slow wave under the noise puts some buckets wholly on one
            // side of the zero line, where MinOrMax differs from MinMax.
            y.push_back(2.0 * std::sin(i / 9.0) + std::uniform_real_distribution<double>(-0.3, 0.3)(rng));
        }
        args = Args(Linear, 3, 180, x[3], x[180], 20);
        args.ZeroLineY = 0.2;
    }

    Output Engine(ResamplingData data, ResamplingMode mode) {
        ResamplingArgs a = args;
        a.Data = data;
        return Resample(engine, mode, x.data(), y.data(), a);
    }

    template <class Method>
    Output Direct(ResamplingData data) {
        ResamplingArgs a = args;
        a.Data = data;
        const typename Method::Class method(&ops, Method::kMode);
        return Resample(method, x.data(), y.data(), a);
    }

    // One row of the table, columns MinMax to MinOrMax.
    template <template <class, class> class... Methods>
    std::vector<Output> Row(ResamplingData data) {
        return {Direct<Methods<double, double>>(data)...};
    }
};

void ExpectSameOutput(const Output& actual, const Output& expected) {
    EXPECT_EQ(actual.reserved, expected.reserved);
    EXPECT_EQ(actual.indices, expected.indices);
    EXPECT_EQ(actual.x, expected.x);
    EXPECT_EQ(actual.y, expected.y);
}

TEST_F(ExtremeResamplerTest, BucketCellsHoldTheirModesStrategy) {
    const std::vector<Output> rows[] = {
        Row<LinearMinMaxResamplingMethod, LinearMinResamplingMethod, LinearMaxResamplingMethod,
            LinearMidResamplingMethod, LinearMinOrMaxResamplingMethod>(Linear),
        Row<CategoryMinMaxResamplingMethod, CategoryMinResamplingMethod, CategoryMaxResamplingMethod,
            CategoryMidResamplingMethod, CategoryMinOrMaxResamplingMethod>(Category),
        Row<UnevenlySpacedMinMaxResamplingMethod, UnevenlySpacedMinResamplingMethod,
            UnevenlySpacedMaxResamplingMethod, UnevenlySpacedMidResamplingMethod,
            UnevenlySpacedMinOrMaxResamplingMethod>(UnevenlySpaced)};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 5; ++column) {
            SCOPED_TRACE(testing::Message() << "data " << kBucketData[row] << " mode " << kBucketModes[column]);
            ExpectSameOutput(Engine(kBucketData[row], kBucketModes[column]), rows[row][column]);
            // The data must tell the cells apart, or a swap would pass.
            for (std::size_t other = 0; other < column; ++other)
                EXPECT_NE(rows[row][column].indices, rows[row][other].indices);
        }
    EXPECT_NE(rows[0][1].indices, rows[1][1].indices);
}

// 126 grid cells; a cell yields 2 points in MinMax and MinOrMax, else 1, and
// one more for an unevenly spaced gap edge. The same in the ring tables.
TEST_F(ExtremeResamplerTest, EachCellReservesItsPointsPerCell) {
    const ResamplingArgs grid = Args(Linear, 0, 9, 0.0, 1000.0, 100);
    const std::int32_t expected[3][5] = {{252, 126, 126, 126, 252}, {252, 126, 126, 126, 252}, {378, 252, 252, 252, 378}};
    for (std::int32_t base : {0, 4})
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t column = 0; column < 5; ++column) {
                ResamplingArgs a = InRing(grid, 10, base);
                a.Data = kBucketData[row];
                IntVector indices;
                EXPECT_EQ(engine.UpdateIndices(indices, x.data(), y.data(), kBucketModes[column], a),
                          expected[row][column])
                    << "base " << base << " data " << a.Data << " mode " << kBucketModes[column];
            }
}

// A caller that reuses its index vector reaches its size once; after that a
// run allocates nothing, in any cell.
TEST_F(ExtremeResamplerTest, SteadyRunsDoNotAllocate) {
    std::vector<double> outX(1000), outY(1000);
    for (std::int32_t base : {0, 150})
        for (ResamplingData data : {Linear, Category, UnevenlySpaced, NotResampled})
            for (ResamplingMode mode : {None, MinMax, Min, Max, Mid, MinOrMax}) {
                ResamplingArgs a = InRing(args, kSize, base);
                a.Data = data;
                IntVector indices;
                std::int32_t counts[2] = {};
                for (int run = 0; run < 2; ++run) {
                    indices.Clear();
                    if (run == 1) qmtest::ResetAllocationCount();
                    counts[run] = engine.UpdateIndices(indices, x.data(), y.data(), mode, a);
                    engine.Execute(x.data(), y.data(), outX.data(), outY.data(), indices, mode, a);
                }
                const long allocations = qmtest::AllocationCount();
                ASSERT_LE(counts[0], 1000);
                EXPECT_EQ(counts[1], counts[0]);
                EXPECT_EQ(allocations, 0) << "base " << base << " data " << data << " mode " << mode;
            }
}

}  // namespace
}  // namespace qm
