// The three helpers beside a run: whether resampling pays off, the merge of
// two ascending index runs, and the copy of a vector into a caller array.

#include <algorithm>
#include <iterator>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class ResamplingHelpersExportsTest : public InterfaceTest {
protected:
    // X from 50 to 89 over 5 pixels: step 4, grid cells from 48 to 92, so 11
    // buckets and a threshold of 22 points.
    void SetUp() override {
        InterfaceTest::SetUp();
        CSharp_ResamplingArgs_Resampling_set(args.get(), 1);
        CSharp_ResamplingArgs_EndIndex_set(args.get(), 39);
        CSharp_ResamplingArgs_ViewportWidth_set(args.get(), 5);
        CSharp_ResamplingArgs_MinXInclusive_set(args.get(), 50.0);
        CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), 89.0);
    }
    // Sets one field, then asks which mode would run.
    template <class V>
    std::int32_t With(void (*set)(QmResamplingArgs*, V), V value) {
        set(args.get(), value);
        return CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get());
    }
    ArgsPtr args{CSharp_new_ResamplingArgs()};
};

TEST_F(ResamplingHelpersExportsTest, ResamplesOnlyWhenThePointsExceedTwoPerBucket) {
    EXPECT_EQ(With(CSharp_ResamplingArgs_EndIndex_set, 39), 1);
    EXPECT_EQ(With(CSharp_ResamplingArgs_EndIndex_set, 22), 1);
    EXPECT_EQ(With(CSharp_ResamplingArgs_EndIndex_set, 21), 0);
    // Doubled for every mode, even those that keep one point a bucket.
    EXPECT_EQ(With(CSharp_ResamplingArgs_Resampling_set, 4), 0);
    EXPECT_EQ(With(CSharp_ResamplingArgs_EndIndex_set, 39), 4);
    // One halving of the step doubles the buckets: 20 cells, 40 points.
    EXPECT_EQ(With(CSharp_ResamplingArgs_ResamplingPrecision_set, 1u), 0);
    EXPECT_EQ(With(CSharp_ResamplingArgs_EndIndex_set, 40), 4);
    EXPECT_EQ(With(CSharp_ResamplingArgs_EndIndex_set, -1), 0);
}

TEST_F(ResamplingHelpersExportsTest, NoneForUnresampledDataAnUnrequestedModeOrNullArgs) {
    ArgsPtr fresh(CSharp_new_ResamplingArgs());
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(fresh.get()), 0);
    EXPECT_EQ(With(CSharp_ResamplingArgs_Data_set, 3), 0);
    EXPECT_EQ(With(CSharp_ResamplingArgs_Data_set, 2), 1);
    EXPECT_EQ(With(CSharp_ResamplingArgs_Resampling_set, 0), 0);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr), 0);
    ExpectArgumentNull("ResamplingArgs & type is null");
}

TEST_F(ResamplingHelpersExportsTest, DegenerateGridAlwaysAnswersTheRequestedMode) {
    // The bucket count truncates to INT32_MIN and its doubling wraps to 0.
    CSharp_ResamplingArgs_EndIndex_set(args.get(), 1);
    EXPECT_EQ(With(CSharp_ResamplingArgs_ViewportWidth_set, 0), 1);
    CSharp_ResamplingArgs_ViewportWidth_set(args.get(), 5);
    EXPECT_EQ(With(CSharp_ResamplingArgs_MaxXInclusive_set, 50.0), 1);
}

TEST_F(ResamplingHelpersExportsTest, MergeWritesTheUnionOfTwoAscendingRuns) {
    std::int32_t out[8];
    auto merge = [&](std::initializer_list<std::int32_t> values, std::int32_t first, std::int32_t second) {
        std::fill(std::begin(out), std::end(out), 99);
        VectorPtr v = MakeVector(values);
        const std::int32_t k = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(v.get(), first, second, out);
        EXPECT_EQ(out[k], 99) << "wrote past the union";
        return Ints(out, out + k);
    };
    EXPECT_EQ(merge({1, 3, 2, 3, 4}, 2, 3), (Ints{1, 2, 3, 4}));
    EXPECT_EQ(merge({1, 1, 2}, 2, 1), (Ints{1, 1, 2}));
    EXPECT_EQ(merge({5, 6, 7}, 0, 3), (Ints{5, 6, 7}));
    EXPECT_EQ(merge({7, 8, 9}, 3, 0), (Ints{7, 8, 9}));
    EXPECT_EQ(merge({-5, 2, -7, 3}, 2, 2), (Ints{-7, -5, 2, 3}));
    out[0] = 99;
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(nullptr, 1, 1, out), 0);
    ExpectArgumentNull("std::vector< int > & type is null");
    EXPECT_EQ(out[0], 99);
}

TEST_F(ResamplingHelpersExportsTest, CopyVectorToCopiesExactlyTheElements) {
    std::int32_t out[4] = {99, 99, 99, 99};
    VectorPtr v = MakeVector({4, -5, 6});
    VectorPtr empty = MakeVector({});
    CSharp_IntVector_reserve(v.get(), 10);
    CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(v.get(), out);
    CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(empty.get(), out);
    CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(empty.get(), nullptr);
    EXPECT_EQ(Ints(out, out + 4), (Ints{4, -5, 6, 99}));
    CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(nullptr, out);
    ExpectArgumentNull("std::vector< int > & type is null");
}

}  // namespace
