// The run record as the managed side fills it: zero-filled on creation,
// every field its own slot, HasNaN normalised to 0 or 1, the unsigned
// precision kept bit for bit, setters that tolerate a null record; and the
// table constants.

#include <cmath>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class ResamplingArgsExportsTest : public InterfaceTest {};

TEST_F(ResamplingArgsExportsTest, NewRecordIsZeroFilledAndConstantsDescribeTheTables) {
    ArgsPtr args(CSharp_new_ResamplingArgs());
    ASSERT_NE(args, nullptr);
#define QM_EXPECT_ZERO_(Field, Type) EXPECT_EQ(CSharp_ResamplingArgs_##Field##_get(args.get()), Type{}) << #Field;
    QM_RESAMPLING_ARGS_FIELDS(QM_EXPECT_ZERO_)
#undef QM_EXPECT_ZERO_
    EXPECT_FALSE(std::signbit(CSharp_ResamplingArgs_ZeroLineY_get(args.get())));
    CSharp_delete_ResamplingArgs(nullptr);
    EXPECT_EQ(CSharp_NORMALIZED_BASE_INDEX_get(), 0);
    EXPECT_EQ(CSharp_RESAMPLING_MODE_COUNT_get(), 6);
    EXPECT_EQ(CSharp_RESAMPLING_DATA_COUNT_get(), 4);
}

TEST_F(ResamplingArgsExportsTest, EveryFieldKeepsItsOwnValue) {
    // All fields are set before any is read back, so two accessors sharing
    // one slot would show.
    ArgsPtr args(CSharp_new_ResamplingArgs());
    int k = 0;
#define QM_SET_(Field, Type) CSharp_ResamplingArgs_##Field##_set(args.get(), static_cast<Type>(-1000 * ++k - 1));
    QM_RESAMPLING_ARGS_FIELDS(QM_SET_)
#undef QM_SET_
    k = 0;
#define QM_GET_(Field, Type)                                                                 \
    ++k;                                                                                     \
    EXPECT_EQ(CSharp_ResamplingArgs_##Field##_get(args.get()),                               \
              std::string(#Field) == "HasNaN" ? Type{1} : static_cast<Type>(-1000 * k - 1)) \
        << #Field;
    QM_RESAMPLING_ARGS_FIELDS(QM_GET_)
#undef QM_GET_
}

TEST_F(ResamplingArgsExportsTest, HasNaNStoresWhetherTheWholeValueIsNonZero) {
    ArgsPtr args(CSharp_new_ResamplingArgs());
    // 256 has a zero low byte: only a test of all 32 bits sees it as set.
    for (std::int32_t value : {2, 256, -1, 0x10000, 0}) {
        CSharp_ResamplingArgs_HasNaN_set(args.get(), value);
        EXPECT_EQ(CSharp_ResamplingArgs_HasNaN_get(args.get()), value != 0 ? 1 : 0) << value;
    }
}

TEST_F(ResamplingArgsExportsTest, PrecisionOfMinusOneIsKeptAndReadAsUnsigned) {
    ArgsPtr args(CSharp_new_ResamplingArgs());
    CSharp_ResamplingArgs_ResamplingPrecision_set(args.get(), static_cast<std::uint32_t>(-1));
    EXPECT_EQ(CSharp_ResamplingArgs_ResamplingPrecision_get(args.get()), 4294967295u);
    // Read as 4294967295 the step underflows to 0 and the bucket count
    // degenerates, so even two points answer the requested mode. Read as -1
    // the step would double and two points would stay unresampled.
    CSharp_ResamplingArgs_Resampling_set(args.get(), 3);
    CSharp_ResamplingArgs_EndIndex_set(args.get(), 1);
    CSharp_ResamplingArgs_ViewportWidth_set(args.get(), 100);
    CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), 1000.0);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get()), 3);
    CSharp_ResamplingArgs_ResamplingPrecision_set(args.get(), 0);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get()), 0);
}

TEST_F(ResamplingArgsExportsTest, SettersOnANullRecordDoNothingQuietly) {
#define QM_SET_ON_NULL_(Field, Type) CSharp_ResamplingArgs_##Field##_set(nullptr, Type{1});
    QM_RESAMPLING_ARGS_FIELDS(QM_SET_ON_NULL_)
#undef QM_SET_ON_NULL_
}

}  // namespace
