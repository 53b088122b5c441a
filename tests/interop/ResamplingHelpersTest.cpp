// The helpers beside a run. GetActualResampling on worked viewports catches a
// threshold that is not strict or not two points per cell for every mode, a
// NotResampled or None request that resamples, a degenerate grid whose count
// does not wrap, a signed precision. MergeIndices against std::set_union on
// random ascending runs catches a lost, repeated or misordered index and a
// count past the union. (CopyVectorTo is a row of the bad-input tables.)

#include <algorithm>
#include <iterator>
#include <random>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class ResamplingHelpersTest : public InterfaceTest {};

TEST_F(ResamplingHelpersTest, ResamplesOnlyAboveTwoPointsPerCell) {
    // X from 50 to 89 over 5 pixels: step 4, 11 cells from 48 to 92, so more
    // than 22 points resample; with precision 1, 20 cells and 40 points.
    const std::pair<Shape, std::int32_t> rows[] = {
        {{.end = 39, .width = 5, .minX = 50, .maxX = 89, .resampling = 1}, 1},
        {{.end = 21, .width = 5, .minX = 50, .maxX = 89, .resampling = 1}, 0},
        {{.end = 21, .width = 5, .minX = 50, .maxX = 89, .resampling = 4}, 0},
        {{.end = 39, .width = 5, .minX = 50, .maxX = 89, .resampling = 4, .precision = 1}, 0},
        {{.end = 40, .width = 5, .minX = 50, .maxX = 89, .resampling = 4, .precision = 1}, 4},
        {{.end = -1, .width = 5, .minX = 50, .maxX = 89, .resampling = 1}, 0},
        {{.data = 3, .end = 39, .width = 5, .minX = 50, .maxX = 89, .resampling = 1}, 0},
        {{.end = 39, .width = 5, .minX = 50, .maxX = 89}, 0},
        {{.end = 1, .width = 0, .minX = 50, .maxX = 89, .resampling = 1}, 1},  // no cells: the doubled count wraps to 0
        {{.end = 1, .width = 1, .maxX = 1e6, .resampling = 1, .precision = 40}, 1},  // cells beyond int32 likewise
        {{.end = 1, .width = 100, .maxX = 1000, .resampling = 3, .precision = 0xFFFFFFFFu}, 3},
        {{.end = 1, .width = 100, .maxX = 1000, .resampling = 3}, 0},
    };
    for (const auto& [shape, mode] : rows)
        EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(MakeArgs(shape).get()), mode)
            << "end " << shape.end << " width " << shape.width << " precision " << shape.precision;
}

TEST_F(ResamplingHelpersTest, MergeIsTheUnionOfTwoAscendingRuns) {
    std::mt19937 rng(8);
    for (int trial = 0; trial < 300; ++trial) {
        Ints runs[2], expected;
        for (Ints& run : runs) {
            for (auto n = rng() % 7; n > 0; --n) run.push_back(static_cast<std::int32_t>(rng() % 9) - 3);
            std::sort(run.begin(), run.end());
        }
        std::set_union(runs[0].begin(), runs[0].end(), runs[1].begin(), runs[1].end(), std::back_inserter(expected));
        Ints both = runs[0], out(runs[0].size() + runs[1].size() + 1, 99);
        both.insert(both.end(), runs[1].begin(), runs[1].end());
        const auto sizes = std::pair(static_cast<std::int32_t>(runs[0].size()), static_cast<std::int32_t>(runs[1].size()));
        const std::int32_t first = sizes.first == 0 && trial % 2 ? -1 : sizes.first;  // a count below 0 is an empty run too
        const std::int32_t k = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(MakeVector(both).get(), first, sizes.second, out.data());
        ASSERT_EQ(k, static_cast<std::int32_t>(expected.size())) << "trial " << trial;
        expected.push_back(99);  // nothing written past the union
        EXPECT_EQ(Ints(out.begin(), out.begin() + k + 1), expected);
    }
}

}  // namespace
