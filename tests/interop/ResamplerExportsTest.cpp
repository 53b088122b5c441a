// The resampler exports of all 120 type pairs, each driven through a whole
// run the way the managed side drives it, and the gather of values by
// logical index.

#include <ostream>
#include <type_traits>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

using Doubles = std::vector<double>;

// X runs from 50 to 89, one per index, so an output X never equals its
// index. Y is flat at 10 but for a spike at 21 and a dip at 29; every value
// fits all ten Y types and every X fits all twelve X types.
constexpr int kPoints = 40;
constexpr int kXOffset = 50;
constexpr std::size_t kOutputRoom = 64;
int SeriesY(int i) { return i == 21 ? 100 : i == 29 ? 1 : 10; }

// Over 5 pixels the step is 4 and the grid starts at 48, so the buckets are
// [0,3) [3,7) ... [35,39) [39,40). A flat bucket gives its first point; the
// spike bucket gives 19 then 21, the dip bucket its maximum 27 before its
// minimum 29.
const Ints kMinMaxIndices{0, 3, 7, 11, 15, 19, 21, 23, 27, 29, 31, 35, 39};
const Ints kPrefix{-4, -4, -4};

struct Outcome {
    std::int32_t reserved = 0;
    Ints indices;
    Doubles x, y, y1;
};

struct PairCase {
    const char* name;
    bool floatingY;
    Outcome (*run)(const QmResamplingArgs* args, std::int32_t mode);
    Outcome (*gather)(std::int32_t size, std::int32_t baseIndex, bool indexAsX);
};
void PrintTo(const PairCase& c, std::ostream* os) { *os << c.name; }

template <class TX, class TY, auto New, auto Delete, auto Update, auto Execute, auto Copy>
struct PairRunner {
    // UpdateIndices, then Execute with the same mode and args, on a fresh
    // engine and a vector that already holds kPrefix, which must stay in
    // front while the output arrays fill from their start.
    static Outcome Run(const QmResamplingArgs* args, std::int32_t mode) {
        std::vector<TX> x;
        std::vector<TY> y;
        for (int i = 0; i < kPoints; ++i) x.push_back(Element<TX>(kXOffset + i)), y.push_back(Element<TY>(SeriesY(i)));
        auto* engine = New();
        VectorPtr indices = MakeVector({-4, -4, -4});
        Outcome out{Update(engine, indices.get(), x.data(), y.data(), mode, args), {}, Doubles(kOutputRoom, -1.0),
                    Doubles(kOutputRoom, -1.0), {}};
        if (out.reserved <= static_cast<std::int32_t>(kOutputRoom))
            Execute(engine, x.data(), y.data(), out.x.data(), out.y.data(), indices.get(), mode, args);
        Delete(engine);
        out.indices = Contents(indices.get());
        const bool prefixKept =
            out.indices.size() >= 3 && Ints(out.indices.begin(), out.indices.begin() + 3) == kPrefix;
        EXPECT_TRUE(prefixKept) << "the indices held before the run were lost";
        if (prefixKept) out.indices.erase(out.indices.begin(), out.indices.begin() + 3);
        // A NaN-aware run gathers for the whole vector, the indices held
        // before included; those have no slot here and gather NaN, not a read
        // before the arrays.
        if (std::is_floating_point_v<TY> && CSharp_ResamplingArgs_HasNaN_get(args) != 0 && mode != 0) {
            for (int k = 0; k < 3; ++k) EXPECT_TRUE(out.x[k] != out.x[k] && out.y[k] != out.y[k]);
            out.x.erase(out.x.begin(), out.x.begin() + 3), out.y.erase(out.y.begin(), out.y.begin() + 3);
        }
        EXPECT_EQ(out.x[out.indices.size()], -1.0) << "wrote past the points kept";
        out.x.resize(out.indices.size()), out.y.resize(out.indices.size());
        return out;
    }

    // Logical indices 6, 2, 0 gathered from eight slots holding x = 50 + slot,
    // y = slot + 1 and y1 = 20 + slot. X is passed as null when the index
    // stands in for it, to show it is not read.
    static Outcome Gather(std::int32_t size, std::int32_t baseIndex, bool indexAsX) {
        std::vector<TX> x;
        std::vector<TY> y, y1;
        for (int s = 0; s < 8; ++s)
            x.push_back(Element<TX>(kXOffset + s)), y.push_back(Element<TY>(s + 1)), y1.push_back(Element<TY>(20 + s));
        const Ints logical{6, 2, 0};
        Outcome out{0, logical, Doubles(3, -1.0), Doubles(3, -1.0), Doubles(3, -1.0)};
        Copy(indexAsX ? nullptr : x.data(), y.data(), y1.data(), logical.data(), out.x.data(), out.y.data(),
             out.y1.data(), 3, size, baseIndex, indexAsX ? 1 : 0);
        return out;
    }
};

template <class Runner>
PairCase Case(const char* name, bool floatingY) {
    return PairCase{name, floatingY, &Runner::Run, &Runner::Gather};
}
#define QM_PAIR_CASE_(XW, XT, YW, YT)                                                                          \
    Case<PairRunner<XT, YT, &CSharp_new_ExtremeResampler##XW##YW, &CSharp_delete_ExtremeResampler##XW##YW,     \
                    &CSharp_ExtremeResampler##XW##YW##_UpdateIndices, &CSharp_ExtremeResampler##XW##YW##_Execute, \
                    &CSharp_ExtremeResampler##XW##YW##_CopyValuesByIndices>>(#XW #YW, std::is_floating_point_v<YT>),
const PairCase kPairs[] = {QM_FOR_EACH_PAIR(QM_PAIR_CASE_)};
#undef QM_PAIR_CASE_

class ResamplerPairTest : public InterfaceTest, public ::testing::WithParamInterface<PairCase> {
protected:
    void SetUp() override {
        InterfaceTest::SetUp();
        CSharp_ResamplingArgs_Resampling_set(args.get(), 1);
        CSharp_ResamplingArgs_EndIndex_set(args.get(), kPoints - 1);
        CSharp_ResamplingArgs_ViewportWidth_set(args.get(), 5);
        CSharp_ResamplingArgs_MinXInclusive_set(args.get(), kXOffset);
        CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), kXOffset + kPoints - 1);
    }
    static void ExpectPointsOfTheSeries(const Outcome& run) {
        for (std::size_t k = 0; k < run.indices.size(); ++k) {
            EXPECT_EQ(run.x[k], kXOffset + run.indices[k]) << "point " << k;
            EXPECT_EQ(run.y[k], SeriesY(run.indices[k])) << "point " << k;
        }
    }
    ArgsPtr args{CSharp_new_ResamplingArgs()};
};

TEST_P(ResamplerPairTest, MinMaxRunKeepsTheSpikeAndTheDip) {
    const std::int32_t mode = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get());
    ASSERT_EQ(mode, 1);
    const Outcome run = GetParam().run(args.get(), mode);
    EXPECT_EQ(run.reserved, 22);
    EXPECT_EQ(run.indices, kMinMaxIndices);
    ExpectPointsOfTheSeries(run);
}

// Without NaN in the data the NaN-aware walk keeps the points of the plain
// one; it returns the whole size of the vector rather than a reservation.
TEST_P(ResamplerPairTest, HasNaNRunsTheNaNAwareWalkWhereYCanHoldNaN) {
    CSharp_ResamplingArgs_HasNaN_set(args.get(), 1);
    const Outcome run = GetParam().run(args.get(), 1);
    EXPECT_EQ(run.indices, kMinMaxIndices);
    ExpectPointsOfTheSeries(run);
    EXPECT_EQ(run.reserved, GetParam().floatingY ? 3 + 13 : 22);
}

TEST_P(ResamplerPairTest, NoneModePassesEveryPointThroughEvenWithHasNaN) {
    CSharp_ResamplingArgs_HasNaN_set(args.get(), 1);
    const Outcome run = GetParam().run(args.get(), 0);
    EXPECT_EQ(run.reserved, kPoints);
    ASSERT_EQ(run.indices.size(), static_cast<std::size_t>(kPoints));
    for (std::int32_t i = 0; i < kPoints; ++i) EXPECT_EQ(run.indices[static_cast<std::size_t>(i)], i);
    ExpectPointsOfTheSeries(run);
}

TEST_P(ResamplerPairTest, CopyValuesByIndicesReadsRingSlotsAndWritesLogicalIndices) {
    // Base 5 in a ring of 8: logical 6, 2, 0 lie in slots 3, 7, 5.
    const Outcome ring = GetParam().gather(8, 5, false);
    EXPECT_EQ(ring.x, (Doubles{53, 57, 55}));
    EXPECT_EQ(ring.y, (Doubles{4, 8, 6}));
    EXPECT_EQ(ring.y1, (Doubles{23, 27, 25}));
    const Outcome asX = GetParam().gather(8, 5, true);
    EXPECT_EQ(asX.x, (Doubles{6, 2, 0}));
    EXPECT_EQ(asX.y1, ring.y1);
    // Base 0 never reads the size, so 0 does not divide.
    const Outcome plain = GetParam().gather(0, 0, false);
    EXPECT_EQ(plain.x, (Doubles{56, 52, 50}));
    EXPECT_EQ(plain.y, (Doubles{7, 3, 1}));
}

INSTANTIATE_TEST_SUITE_P(AllPairs, ResamplerPairTest, ::testing::ValuesIn(kPairs),
                         [](const ::testing::TestParamInfo<PairCase>& pair) { return std::string(pair.param.name); });

class ResamplerExportsTest : public InterfaceTest {};

TEST_F(ResamplerExportsTest, CopyValuesByIndicesConvertsByTypeAndKeepsANegativeSlot) {
    const std::int32_t at[2] = {0, 1};
    double outX[2], outY[2], outY1[2];
    // No index, nothing read: every pointer may be null.
    for (std::int32_t count : {0, -3})
        CSharp_ExtremeResamplerInt64Int64_CopyValuesByIndices(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                              nullptr, count, 0, 5, 0);
    const std::uint32_t big[2] = {4294967295u, 1u};
    CSharp_ExtremeResamplerUInt32UInt32_CopyValuesByIndices(big, big, big, at, outX, outY, outY1, 2, 0, 0, 0);
    EXPECT_EQ(outX[0], 4294967295.0);
    EXPECT_EQ(outY1[0], 4294967295.0);
    // The two flag bits of a date are not part of its ticks; a span is signed.
    const QmDateTime dates[2] = {{0xC000000000000064u}, {0x4000000000000064u}};
    const std::int8_t y[2] = {-1, -128};
    CSharp_ExtremeResamplerDateTimeSByte_CopyValuesByIndices(dates, y, y, at, outX, outY, outY1, 2, 0, 0, 0);
    EXPECT_EQ(Doubles(outX, outX + 2), (Doubles{100.0, 100.0}));
    EXPECT_EQ(outY[1], -128.0);
    const QmTimeSpan spans[2] = {{-5}, {7}};
    CSharp_ExtremeResamplerTimeSpanSByte_CopyValuesByIndices(spans, y, y, at, outX, outY, outY1, 2, 0, 0, 0);
    EXPECT_EQ(outX[0], -5.0);

    // Logical -7 at base 5 in a ring of 8 sums to -2, and the truncating
    // remainder leaves it there: the read lands two before the given start.
    double storage[12];
    for (int j = 0; j < 12; ++j) storage[j] = 100 + j;
    const std::int32_t negative[1] = {-7};
    CSharp_ExtremeResamplerDoubleDouble_CopyValuesByIndices(storage + 4, storage + 4, storage + 4, negative, outX,
                                                            outY, outY1, 1, 8, 5, 0);
    EXPECT_EQ(outX[0], 102.0);
}

}  // namespace
