// The operations beside the engine: whether resampling pays off, the merge
// of two ascending index runs, and the copy of an index vector.

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "interop/IntVector.h"
#include "resampling/ExtremeResamplingHelpers.h"

namespace qm {
namespace {

// 0..1000 in 100 pixels: 126 cells, so more than 252 visible points pay off.
ResamplingArgs Visible(std::int32_t mode, std::int32_t start, std::int32_t end) {
    ResamplingArgs args{};
    args.Resampling = mode;
    args.Data = Linear;
    args.StartIndex = start;
    args.EndIndex = end;
    args.ViewportWidth = 100;
    args.MaxXInclusive = 1000;
    return args;
}

TEST(GetActualResampling, AnswersTheModeOnlyWhenPointsExceedTwiceTheCells) {
    const ResamplingArgs fresh{};
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(fresh), None);
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(Visible(Mid, 0, 251)), None);  // exactly 252
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(Visible(Mid, 0, 252)), Mid);
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(Visible(MinMax, 100, 352)), MinMax);
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(Visible(None, 0, 100000)), None);
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(Visible(Min, 500, 100)), None);
    ResamplingArgs kept = Visible(MinMax, 0, 100000);
    kept.Data = NotResampled;
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(kept), None);
}

TEST(GetActualResampling, DegenerateGridAlwaysResamples) {
    // INT32_MIN cells doubled wrap to a threshold of 0.
    ResamplingArgs noWidth = Visible(MinOrMax, 0, 0);
    noWidth.ViewportWidth = 0;
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(noWidth), MinOrMax);
    ResamplingArgs flat = Visible(Min, 3, 4);
    flat.MaxXInclusive = flat.MinXInclusive;
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(flat), Min);
    flat.EndIndex = 2;  // no visible points: still nothing to do
    EXPECT_EQ(ExtremeResamplingHelpersWrapper::GetActualResampling(flat), None);
}

std::vector<std::int32_t> Merge(std::vector<std::int32_t> first, const std::vector<std::int32_t>& second) {
    const auto firstCount = static_cast<std::int32_t>(first.size());
    const auto secondCount = static_cast<std::int32_t>(second.size());
    first.insert(first.end(), second.begin(), second.end());
    const IntVector indices(first.data(), static_cast<std::int32_t>(first.size()));
    std::vector<std::int32_t> out(first.size() + 2, -999);
    const std::int32_t written =
        ExtremeResamplingHelpersWrapper::MergeIndices(indices, firstCount, secondCount, out.data());
    for (std::size_t k = static_cast<std::size_t>(written); k < out.size(); ++k)
        EXPECT_EQ(out[k], -999) << "written past the count at " << k;
    out.resize(static_cast<std::size_t>(written));
    return out;
}

TEST(MergeIndices, UnionOfTwoAscendingRuns) {
    using V = std::vector<std::int32_t>;
    EXPECT_EQ(Merge({1, 3}, {2, 3, 4}), (V{1, 2, 3, 4}));
    EXPECT_EQ(Merge({1, 1}, {2}), (V{1, 1, 2}));  // a run keeps its own duplicates
    EXPECT_EQ(Merge({}, {4, 5, 6}), (V{4, 5, 6}));
    EXPECT_EQ(Merge({4, 5, 6}, {}), (V{4, 5, 6}));
    EXPECT_EQ(Merge({}, {}), V{});
    EXPECT_EQ(Merge({-5, 2, 9}, {-7, 2, 3}), (V{-7, -5, 2, 3, 9}));  // signed order
    EXPECT_EQ(Merge({0, 10, 20}, {0, 10, 20}), (V{0, 10, 20}));
    EXPECT_EQ(Merge({7}, {1, 2, 3}), (V{1, 2, 3, 7}));
}

TEST(CopyVectorTo, CopiesAllElementsAndNothingForAnEmptyVector) {
    const std::int32_t values[] = {3, -1, 8};
    std::vector<std::int32_t> dest(4, 9);
    ExtremeResamplingHelpersWrapper::CopyVectorTo(IntVector(values, 3), dest.data());
    EXPECT_EQ(dest, (std::vector<std::int32_t>{3, -1, 8, 9}));
    ExtremeResamplingHelpersWrapper::CopyVectorTo(IntVector(), dest.data());
    EXPECT_EQ(dest, (std::vector<std::int32_t>{3, -1, 8, 9}));
    ExtremeResamplingHelpersWrapper::CopyVectorTo(IntVector(), nullptr);  // nothing is written
}

}  // namespace
}  // namespace qm
