// Bad input from the managed side, one table per family: every row must
// come back with exactly its report and the empty result, and leave the
// caller's arrays and vectors as they were. Arrays end at a guard page, so a
// write or read past them faults instead of passing unseen.

#include <climits>
#include <functional>

#include "InterfaceTestSupport.h"
#include "support/GuardedArray.h"

using namespace qmtest;

namespace {

using Doubles = std::vector<double>;


// What a row expects: a NullReferenceException (code 7), an
// ApplicationException (code 0), or no report at all.
struct Expected {
    int code;  // -1: no report
    const char* message;
};
constexpr Expected kQuiet{-1, nullptr};
void ExpectReport(const Expected& e) {
    if (e.code < 0) {
        EXPECT_TRUE(Reports().empty()) << Reports().size() << " report(s), the first: "
                                       << Reports().front().message.value_or("(null)");
    } else {
        ExpectOneReport(Report::Kind::Exception, e.code, e.message, std::nullopt);
    }
    StartRecording();
}

template <class Row>
std::string NameOf(const ::testing::TestParamInfo<Row>& row) {
    return row.param.name;
}

// ---------------------------------------------------------------- runs

struct RunArgs {
    std::int32_t data = 0, start = 0, end = 15, width = 4, size = 0, base = 0;
    bool hasNaN = false;
};

ArgsPtr MakeArgs(const RunArgs& a) {
    ArgsPtr args(CSharp_new_ResamplingArgs());
    CSharp_ResamplingArgs_Data_set(args.get(), a.data);
    CSharp_ResamplingArgs_StartIndex_set(args.get(), a.start);
    CSharp_ResamplingArgs_EndIndex_set(args.get(), a.end);
    CSharp_ResamplingArgs_ViewportWidth_set(args.get(), a.width);
    CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), 16.0);
    CSharp_ResamplingArgs_InputSize_set(args.get(), a.size);
    CSharp_ResamplingArgs_InputBaseIndex_set(args.get(), a.base);
    CSharp_ResamplingArgs_HasNaN_set(args.get(), a.hasNaN);
    return args;
}

enum Null : unsigned { kNone = 0, kSelf = 1, kX = 2, kY = 4, kOutX = 8, kOutY = 16, kAllArrays = 30 };

// One UpdateIndices or Execute on Double/Double over 16 points, with a
// vector that holds {5, 6} and room for 40 more, so a run that slipped past
// its check would show in the vector or the outputs.
struct RunRow {
    const char* name;
    bool execute;
    std::int32_t mode;
    RunArgs args;
    unsigned nulls;
    Expected expected;
};

class BadRunTest : public InterfaceTest, public ::testing::WithParamInterface<RunRow> {};

TEST_P(BadRunTest, ReportsAndLeavesEverythingUntouched) {
    const RunRow& row = GetParam();
    GuardedArray<double> x(16, 0.0), y(16, 1.0), outX(40, -7.0), outY(40, -7.0);
    for (int i = 0; i < 16; ++i) x[i] = i;
    QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
    VectorPtr indices = MakeVector({5, 6});
    CSharp_IntVector_reserve(indices.get(), 42);
    ArgsPtr args = MakeArgs(row.args);
    auto* self = row.nulls & kSelf ? nullptr : engine;
    const double* xp = row.nulls & kX ? nullptr : x.data();
    const double* yp = row.nulls & kY ? nullptr : y.data();
    if (row.execute) {
        CSharp_ExtremeResamplerDoubleDouble_Execute(self, xp, yp, row.nulls & kOutX ? nullptr : outX.data(),
                                                    row.nulls & kOutY ? nullptr : outY.data(), indices.get(),
                                                    row.mode, args.get());
    } else {
        const std::int32_t count =
            CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(self, indices.get(), xp, yp, row.mode, args.get());
        EXPECT_TRUE(row.expected.code < 0 || count == 0) << count;
    }
    ExpectReport(row.expected);
    EXPECT_EQ(Contents(indices.get()), (Ints{5, 6}));
    EXPECT_EQ(CSharp_IntVector_capacity(indices.get()), 42);
    EXPECT_EQ(outX.Contents(), Doubles(40, -7.0));
    EXPECT_EQ(outY.Contents(), Doubles(40, -7.0));
    CSharp_delete_ExtremeResamplerDoubleDouble(engine);
}

constexpr RunArgs kPlain{};
constexpr RunArgs Ring(std::int32_t size, std::int32_t base, std::int32_t start = 0, std::int32_t end = 15) {
    return {0, start, end, 4, size, base, false};
}
constexpr RunArgs kEmpty{0, 9, 8, 4, 0, 0, false};

const RunRow kBadRuns[] = {
    {"ModeAboveTheEnumeration", true, 6, kPlain, kNone, {0, "mode 6 is not a ResamplingMode (0 to 5)"}},
    {"ModeFarAbove", false, INT_MAX, kPlain, kNone, {0, "mode 2147483647 is not a ResamplingMode (0 to 5)"}},
    {"ModeNegative", true, -1, kPlain, kNone, {0, "mode -1 is not a ResamplingMode (0 to 5)"}},
    {"DataAboveTheEnumeration", false, 1, {4}, kNone, {0, "Data 4 is not a ResamplingData (0 to 3)"}},
    {"DataNegative", true, 1, {-1}, kNone, {0, "Data -1 is not a ResamplingData (0 to 3)"}},
    {"RingOfSizeZero", true, 0, Ring(0, 3), kNone, {0, "InputSize 0 must be above 0 in a ring run (InputBaseIndex 3)"}},
    {"RingOfSizeMinusOne", false, 1, Ring(-1, 3, INT_MIN), kNone,
     {0, "InputSize -1 must be above 0 in a ring run (InputBaseIndex 3)"}},
    {"RingBaseNegative", true, 1, Ring(16, -2), kNone, {0, "InputBaseIndex -2 is outside the ring of InputSize 16"}},
    {"RingBaseAtSize", true, 0, Ring(16, 16), kNone, {0, "InputBaseIndex 16 is outside the ring of InputSize 16"}},
    {"RingSlotSumWraps", true, 0, Ring(16, 3, 0, INT_MAX - 3), kNone,
     {0, "EndIndex 2147483644 with InputBaseIndex 3 passes the largest slot sum"}},
    {"RingCountWrapsPastTheTop", true, 0, Ring(16, 3, INT_MAX, INT_MIN + 5), kNone,
     {0, "EndIndex -2147483643 below StartIndex 2147483647 wraps to a count of 7"}},
    {"StartBelowZero", true, 1, {0, -1, 15}, kNone, {0, "StartIndex -1 is below 0"}},
    {"NullSelfInUpdate", false, 1, kPlain, kSelf, {7, "self is null"}},
    {"NullSelfInExecute", true, 1, kPlain, kSelf, {7, "self is null"}},
    {"NullX", true, 1, kPlain, kX, {7, "x is null"}},
    {"NullY", true, 2, kPlain, kY, {7, "y is null"}},
    {"NullOutX", true, 3, kPlain, kOutX, {7, "outX is null"}},
    {"NullOutYOfAPassThrough", true, 0, kPlain, kOutY, {7, "outY is null"}},
    {"NullXOfANotResampledRun", true, 4, {3}, kX, {7, "x is null"}},
    {"NullYOfANaNAwareWalk", false, 1, {0, 0, 15, 4, 0, 0, true}, kY, {7, "y is null"}},
    // Calls that read nothing they were not given pass as before.
    {"BucketUpdateReadsNoArray", false, 1, kPlain, kAllArrays, kQuiet},
    {"EmptyRangeReadsNothing", true, 1, kEmpty, kAllArrays, kQuiet},
    {"EmptyRingRangeReadsNothing", true, 0, Ring(16, 3, 9, 8), kAllArrays, kQuiet},
};
INSTANTIATE_TEST_SUITE_P(Rows, BadRunTest, ::testing::ValuesIn(kBadRuns), NameOf<RunRow>);

class ValidRunTest : public InterfaceTest {};

// A category run never reads X, and an Execute after a count of 0 gets empty
// (null) outputs from the managed side: both must run as they always did.
TEST_F(ValidRunTest, UnusedArraysMayBeNull) {
    GuardedArray<double> y(16, 1.0);
    y[5] = 9.0;
    const double x[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
    ArgsPtr category = MakeArgs({1, 0, 15});
    auto runCategory = [&](const double* xp) {
        VectorPtr indices = MakeVector({});
        const std::int32_t count =
            CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, indices.get(), nullptr, nullptr, 3, category.get());
        Doubles out(static_cast<std::size_t>(count) * 2, -7.0);
        CSharp_ExtremeResamplerDoubleDouble_Execute(engine, xp, y.data(), out.data(), out.data() + count, indices.get(),
                                                    3, category.get());
        return std::make_pair(Contents(indices.get()), out);
    };
    const auto withX = runCategory(x);
    EXPECT_FALSE(withX.first.empty());
    EXPECT_EQ(runCategory(nullptr), withX);

    VectorPtr indices = MakeVector({});
    CSharp_IntVector_reserve(indices.get(), 4);
    ArgsPtr degenerate = MakeArgs({0, 0, 15, 0});  // width 0: no cells, count 0
    ASSERT_EQ(CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, indices.get(), nullptr, nullptr, 1, degenerate.get()), 0);
    CSharp_ExtremeResamplerDoubleDouble_Execute(engine, x, y.data(), nullptr, nullptr, indices.get(), 1, degenerate.get());
    EXPECT_EQ(Contents(indices.get()), Ints{});
    CSharp_delete_ExtremeResamplerDoubleDouble(engine);
}

// ------------------------------------------------- scans and lookups

// Each row is one call on an Int16 handle over {3, 1, 2, 5, 4}, whose seed
// outputs start at 9 and index 9: refused calls must leave them there.
struct ScanRow {
    const char* name;
    std::function<std::int32_t(QmArrayOperationsInt16*, const std::int16_t*, std::int16_t*, std::int32_t*)> call;
    bool nullSelf, nullData;
    Expected expected;
};

class BadScanTest : public InterfaceTest, public ::testing::WithParamInterface<ScanRow> {};

TEST_P(BadScanTest, ReportsAndLeavesTheSeeds) {
    const ScanRow& row = GetParam();
    GuardedArray<std::int16_t> data(5, 0);
    const std::int16_t values[5] = {3, 1, 2, 5, 4};
    for (int i = 0; i < 5; ++i) data[i] = values[i];
    QmArrayOperationsInt16* ops = CSharp_new_ArrayOperationsInt16();
    std::int16_t seed = 9;
    std::int32_t index = 9;
    const std::int32_t result =
        row.call(row.nullSelf ? nullptr : ops, row.nullData ? nullptr : data.data(), &seed, &index);
    ExpectReport(row.expected);
    EXPECT_EQ(seed, 9);
    EXPECT_EQ(index, 9);
    EXPECT_EQ(result, row.expected.code < 0 ? -1 : 0);
    CSharp_delete_ArrayOperationsInt16(ops);
}

using S = QmArrayOperationsInt16*;
using D = const std::int16_t*;
using V = std::int16_t*;
using I = std::int32_t*;
const ScanRow kBadScans[] = {
    {"MinOfNullSelf", [](S s, D d, V v, I) { return CSharp_ArrayOperationsInt16_Min__SWIG_0(s, d, 0, 5, v), 0; },
     true, false, {7, "self is null"}},
    {"MinIntoNullIndex", [](S s, D d, V v, I) { return CSharp_ArrayOperationsInt16_Min__SWIG_1(s, d, 0, 5, v, nullptr), 0; },
     false, false, {7, "minIndex is null"}},
    {"MaxIntoNull", [](S s, D d, V, I) { return CSharp_ArrayOperationsInt16_Max__SWIG_0(s, d, 0, 5, nullptr), 0; },
     false, false, {7, "max is null"}},
    {"MaxFromBelowZero", [](S s, D d, V v, I i) { return CSharp_ArrayOperationsInt16_Max__SWIG_1(s, d, -1, 5, v, i), 0; },
     false, false, {0, "start -1 is below 0"}},
    {"MinMaxEndBelowStart",
     [](S s, D d, V v, I) { return CSharp_ArrayOperationsInt16_MinMax__SWIG_0(s, d, 3, 1, v, v), 0; }, false, false,
     {0, "end 1 is below start 3"}},
    {"MinMaxWrappingPastTheTop",
     [](S s, D d, V v, I) { return CSharp_ArrayOperationsInt16_MinMax__SWIG_0(s, d, 2, INT_MIN, v, v), 0; }, false,
     false, {0, "end -2147483648 is below start 2"}},
    {"MinOfNullData", [](S s, D d, V v, I i) { return CSharp_ArrayOperationsInt16_Min__SWIG_1(s, d, 0, 5, v, i), 0; },
     false, true, {7, "data is null"}},
    {"UnsortedOfNullData",
     [](S s, D d, V, I) { return CSharp_ArrayOperationsInt16_FindIndexExactInUnsortedData(s, d, 0, 5, 4); }, false,
     true, {7, "data is null"}},
    {"SortedFromBelowZero",
     [](S s, D d, V, I) { return CSharp_ArrayOperationsInt16_FindIndexExactInSortedData(s, d, -4, 5, 4); }, false,
     false, {0, "start -4 is below 0"}},
    {"SortedOfNullDataReadsEvenAnEmptyRange",
     [](S s, D d, V, I) { return CSharp_ArrayOperationsInt16_FindIndexExactInSortedData(s, d, 0, 0, 4); }, false,
     true, {7, "data is null"}},
    // Empty ranges read nothing: null data and odd bounds stay quiet.
    {"EmptyScanOfNullData",
     [](S s, D d, V v, I i) { return CSharp_ArrayOperationsInt16_Max__SWIG_1(s, d, -3, -3, v, i), -1; }, false, true,
     kQuiet},
    {"UnsortedWithEndBelowStart",
     [](S s, D d, V, I) { return CSharp_ArrayOperationsInt16_FindIndexExactInUnsortedData(s, d, 4, -9, 4); }, false,
     true, kQuiet},
};
INSTANTIATE_TEST_SUITE_P(Rows, BadScanTest, ::testing::ValuesIn(kBadScans), NameOf<ScanRow>);

// -------------------------------------- gathers, merges, records, args

// Each row runs against a vector {1, 3, 2, 4} and guarded outputs of 4.
struct GatherRow {
    const char* name;
    std::function<void(QmIntVector*, double*, std::int32_t*)> call;
    Expected expected;
};

class BadGatherTest : public InterfaceTest, public ::testing::WithParamInterface<GatherRow> {};

TEST_P(BadGatherTest, ReportsAndWritesNothing) {
    VectorPtr v = MakeVector({1, 3, 2, 4});
    GuardedArray<double> out(4, -7.0);
    GuardedArray<std::int32_t> merged(4, -7);
    GetParam().call(v.get(), out.data(), merged.data());
    ExpectReport(GetParam().expected);
    EXPECT_EQ(out.Contents(), Doubles(4, -7.0));
    EXPECT_EQ(merged.Contents(), Ints(4, -7));
    EXPECT_EQ(Contents(v.get()), (Ints{1, 3, 2, 4}));
}

const double kSeries[8] = {10, 11, 12, 13, 14, 15, 16, 17};
const std::int32_t kAt[2] = {1, 2};
void Gather(const double* x, const double* y1, double* out, std::int32_t count, std::int32_t size,
            std::int32_t base, std::int32_t indexAsX) {
    CSharp_ExtremeResamplerDoubleDouble_CopyValuesByIndices(x, kSeries, y1, kAt, out, out + 2, out + 2, count, size,
                                                            base, indexAsX);
}

const GatherRow kBadGathers[] = {
    {"CopyOfNullX", [](QmIntVector*, double* o, std::int32_t*) { Gather(nullptr, kSeries, o, 2, 0, 0, 0); },
     {7, "x is null"}},
    {"CopyOfNullY1", [](QmIntVector*, double* o, std::int32_t*) { Gather(kSeries, nullptr, o, 2, 0, 0, 1); },
     {7, "y1 is null"}},
    {"CopyFromARingOfSizeZero", [](QmIntVector*, double* o, std::int32_t*) { Gather(kSeries, kSeries, o, 2, 0, 5, 0); },
     {0, "size 0 must be above 0 in a ring run (baseIndex 5)"}},
    {"CopyFromABaseOutsideTheRing",
     [](QmIntVector*, double* o, std::int32_t*) { Gather(kSeries, kSeries, o, 2, 8, 9, 0); },
     {0, "baseIndex 9 is outside the ring of size 8"}},
    {"MergePastTheVector",
     [](QmIntVector* v, double*, std::int32_t* m) { CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(v, 3, 2, m); },
     {0, "firstCount 3 and secondCount 2 pass the 4 indices held"}},
    {"MergeIntoNull",
     [](QmIntVector* v, double*, std::int32_t*) {
         EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(v, 2, 2, nullptr), 0);
     },
     {7, "output is null"}},
    {"CopyVectorToNull",
     [](QmIntVector* v, double*, std::int32_t*) { CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(v, nullptr); },
     {7, "destination is null"}},
    {"RecordGetterOfNull",
     [](QmIntVector*, double*, std::int32_t*) { EXPECT_EQ(CSharp_MinMaxPointSearchResultDouble_Max_get(nullptr), 0.0); },
     {7, "self is null"}},
    {"ArgsGetterOfNull",
     [](QmIntVector*, double*, std::int32_t*) { EXPECT_EQ(CSharp_ResamplingArgs_HasNaN_get(nullptr), 0); },
     {7, "self is null"}},
    // Nothing to gather, nothing read: null everywhere is fine.
    {"CopyOfNothing", [](QmIntVector*, double*, std::int32_t*) { Gather(nullptr, nullptr, nullptr, 0, 0, 5, 0); },
     kQuiet},
    {"CopyWithIndexAsXReadsNoX",
     [](QmIntVector*, double*, std::int32_t*) {
         double out[4];
         Gather(nullptr, kSeries, out, 2, 8, 5, 1);
         EXPECT_EQ(out[0], 1.0);
         EXPECT_EQ(out[2], 16.0);
     },
     kQuiet},
    {"MergeOfNothingIntoNull",
     [](QmIntVector* v, double*, std::int32_t*) {
         EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(v, -2, 0, nullptr), 0);
     },
     kQuiet},
};
INSTANTIATE_TEST_SUITE_P(Rows, BadGatherTest, ::testing::ValuesIn(kBadGathers), NameOf<GatherRow>);

// ----------------------------------------------------------- vectors

// Each row runs on a vector {10, 20, 30, 40, 50} of capacity 6 and returns
// whatever vector the call made (to be null); the vector must keep its shape.
struct VectorRow {
    const char* name;
    std::function<QmIntVector*(QmIntVector*)> call;
    Report::Kind kind;
    int code;
    std::optional<std::string> message;
};

class BadVectorCallTest : public InterfaceTest, public ::testing::WithParamInterface<VectorRow> {};

TEST_P(BadVectorCallTest, ReportsAndKeepsTheVector) {
    const VectorRow& row = GetParam();
    VectorPtr v = MakeVector({10, 20, 30, 40, 50});
    EXPECT_EQ(row.call(v.get()), nullptr);
    StopFailing();
    ExpectOneReport(row.kind, row.code, row.message, row.kind == Report::Kind::Argument ? std::optional<std::string>("") : std::nullopt);
    EXPECT_EQ(Contents(v.get()), (Ints{10, 20, 30, 40, 50}));
    EXPECT_EQ(CSharp_IntVector_capacity(v.get()), 6);
}

// A result that fails the row's null check when an answer was wrong.
QmIntVector* Dummy() {
    static QmIntVector* const wrong = CSharp_new_IntVector__SWIG_0();
    return wrong;
}

constexpr auto kApp = Report::Kind::Exception;
constexpr auto kRange = Report::Kind::Argument;
const VectorRow kBadVectorCalls[] = {
    {"ReserveTooLong", [](QmIntVector* v) { return CSharp_IntVector_reserve(v, 0x40000000u), nullptr; }, kApp, 0,
     "vector<T> too long"},
    {"NewWithCapacityTooLong", [](QmIntVector*) { return CSharp_new_IntVector__SWIG_2(0x40000000); }, kApp, 0,
     "vector<T> too long"},
    {"RepeatTooLong", [](QmIntVector*) { return CSharp_IntVector_Repeat(1, INT_MAX); }, kApp, 0, "vector<T> too long"},
    {"GrowWithoutMemory", [](QmIntVector* v) { return FailAllocation(0), CSharp_IntVector_AddRange(v, v), nullptr; },
     kApp, 0, std::bad_alloc().what()},
    {"CopyWithoutMemory", [](QmIntVector* v) { return FailAllocation(0), CSharp_new_IntVector__SWIG_1(v); }, kApp, 0,
     std::bad_alloc().what()},
    {"GetRangeWhoseEndWraps", [](QmIntVector* v) { return CSharp_IntVector_GetRange(v, 1, INT_MAX); }, kRange, -1,
     "invalid range"},
    {"RemoveRangeWhoseEndWraps", [](QmIntVector* v) { return CSharp_IntVector_RemoveRange(v, 2, INT_MAX), nullptr; },
     kRange, -1, "invalid range"},
    {"ReverseWhoseEndWraps", [](QmIntVector* v) { return CSharp_IntVector_Reverse__SWIG_1(v, 1, INT_MAX), nullptr; },
     kRange, -1, "invalid range"},
    {"SizeOfNull", [](QmIntVector*) -> QmIntVector* { return CSharp_IntVector_size(nullptr) == 0 ? nullptr : Dummy(); },
     kApp, 7, "self is null"},
    {"GetRangeOfNull", [](QmIntVector*) { return CSharp_IntVector_GetRange(nullptr, 0, 0); }, kApp, 7, "self is null"},
    {"AddRangeToNull", [](QmIntVector* v) { return CSharp_IntVector_AddRange(nullptr, v), nullptr; }, kApp, 7,
     "self is null"},
    {"IndexOfInNull", [](QmIntVector*) { return CSharp_IntVector_IndexOf(nullptr, 1) == -1 ? nullptr : Dummy(); },
     kApp, 7, "self is null"},
    // The null test of the vector argument still comes first.
    {"SetRangeOfNullFromNull", [](QmIntVector*) { return CSharp_IntVector_SetRange(nullptr, 0, nullptr), nullptr; },
     Report::Kind::ArgumentNull, -1, "std::vector< int > const & type is null"},
};
INSTANTIATE_TEST_SUITE_P(Rows, BadVectorCallTest, ::testing::ValuesIn(kBadVectorCalls), NameOf<VectorRow>);

// Before the managed side registers its callbacks there is nobody to tell;
// a failing call must still come back with its empty result.
TEST_F(ValidRunTest, FailuresBeforeRegistrationAreDropped) {
    SWIGRegisterExceptionCallbacks_QuillmapCore(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                nullptr, nullptr, nullptr);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(nullptr, nullptr, nullptr);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr), 0);
    EXPECT_EQ(CSharp_IntVector_getitem(nullptr, 0), 0);
    EXPECT_EQ(CSharp_IntVector_Repeat(1, -1), nullptr);
    StartRecording();
}

}  // namespace
