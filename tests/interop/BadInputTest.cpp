// Bad input from the managed side, one table per family (runs, scans,
// gathers and helpers, vectors). A refused row must leave exactly its report
// (kind, code, a message naming the argument and its value), the empty result
// and every array, vector and seed of the caller as it was; a row that is fine
// (an argument the call never reads) must leave no report. The caller's
// arrays end at a guard page, so a read or write past them, or through a
// pointer a check let by, faults at once instead of passing unseen.

#include <climits>
#include <functional>

#include "InterfaceTestSupport.h"
#include "support/FailingAllocator.h"
#include "support/GuardedArray.h"

using namespace qmtest;

namespace {

enum Nulls : unsigned { kSelf = 1, kX = 2, kY = 4, kOutX = 8, kOutY = 16, kArrays = 30, kIndices = 32, kArgs = 64 };

class BadInput;
struct Row {
    const char* name;
    std::function<void(BadInput&)> call;
    std::optional<Report> report;  // nullopt: the call is fine
    friend void PrintTo(const Row& row, std::ostream* os) { *os << row.name; }
};

class BadInput : public InterfaceTest, public ::testing::WithParamInterface<Row> {
public:
    GuardedArray<double> x{16, 0.0}, y{16, 1.0}, outX{40, -7.0}, outY{40, -7.0};
    GuardedArray<std::int16_t> data{5, 3};
    GuardedArray<std::int32_t> merged{4, -7};
    QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
    QmArrayOperationsInt16* ops = CSharp_new_ArrayOperationsInt16();
    VectorPtr indices = MakeVector({5, 6}), list = MakeVector({10, 20, 30, 40, 50});  // capacities 42 and 6
    std::int16_t seed = 9;
    std::int32_t seedIndex = 9, result = 0;  // what a call answered (1 for a new handle)

    BadInput() {
        for (int i = 0; i < 16; ++i) x[i] = i;
        CSharp_IntVector_reserve(indices.get(), 42);
    }
    ~BadInput() override { CSharp_delete_ExtremeResamplerDoubleDouble(engine), CSharp_delete_ArrayOperationsInt16(ops); }

    // One UpdateIndices or Execute over the 16 points, what `nulls` names passed as null.
    void Run(bool execute, std::int32_t mode, const Shape& shape, unsigned nulls = 0) {
        const ArgsPtr a = MakeArgs(shape);
        auto* self = nulls & kSelf ? nullptr : engine;
        const double *xs = nulls & kX ? nullptr : x.data(), *ys = nulls & kY ? nullptr : y.data();
        QmIntVector* v = nulls & kIndices ? nullptr : indices.get();
        const QmResamplingArgs* args = nulls & kArgs ? nullptr : a.get();
        if (!execute) result = CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(self, v, xs, ys, mode, args);
        if (execute) CSharp_ExtremeResamplerDoubleDouble_Execute(self, xs, ys, nulls & kOutX ? nullptr : outX.data(),
                                                                 nulls & kOutY ? nullptr : outY.data(), v, mode, args);
    }
    // Logical 1 and 2 gathered into out, out + 2 (Y and Y1 alike).
    void Gather(const double* xs, const double* y1, double* out, std::int32_t size, std::int32_t base, std::int32_t indexAsX) {
        const std::int32_t at[2] = {1, 2};
        CSharp_ExtremeResamplerDoubleDouble_CopyValuesByIndices(xs, y.data(), y1, at, out, out + 2, out + 2, 2, size, base, indexAsX);
    }
};

// A run over the 16 points in 4 pixels, plain unless a ring is given.
Shape S(std::int32_t data = 0, std::int32_t start = 0, std::int32_t end = 15, std::int32_t size = 0, std::int32_t base = 0) {
    return {.data = data, .start = start, .end = end, .width = 4, .maxX = 16, .size = size, .base = base};
}

TEST_P(BadInput, ReportsAndLeavesEverythingUntouched) {
    GetParam().call(*this);
    StopFailing();
    ExpectReports(GetParam().report ? std::vector{*GetParam().report} : std::vector<Report>{});
    if (!GetParam().report) return;  // a call that is fine may do its work
    EXPECT_EQ(result, 0);
    EXPECT_EQ(Contents(indices.get()), (Ints{5, 6}));
    EXPECT_EQ(Contents(list.get()), (Ints{10, 20, 30, 40, 50}));
    EXPECT_EQ(CSharp_IntVector_capacity(indices.get()) + CSharp_IntVector_capacity(list.get()), 48);
    EXPECT_EQ(outX.Contents(), std::vector<double>(40, -7.0));
    EXPECT_EQ(outY.Contents(), std::vector<double>(40, -7.0));
    EXPECT_EQ(merged.Contents(), Ints(4, -7));
    EXPECT_EQ(seed + seedIndex, 18);
}

using F = BadInput;
std::string NameOf(const ::testing::TestParamInfo<Row>& row) { return row.param.name; }
const char* const kConstVectorNull = "std::vector< int > const & type is null";

const Row kRuns[] = {
    {"ModeAboveTheEnumeration", [](F& f) { f.Run(true, 6, S()); }, App("mode 6 is not a ResamplingMode (0 to 5)")},
    {"ModeNegative", [](F& f) { f.Run(false, -1, S()); }, App("mode -1 is not a ResamplingMode (0 to 5)")},
    {"DataAboveTheEnumeration", [](F& f) { f.Run(false, 1, S(4)); }, App("Data 4 is not a ResamplingData (0 to 3)")},
    {"RingOfSizeZero", [](F& f) { f.Run(true, 0, S(0, 0, 15, 0, 3)); }, App("InputSize 0 must be above 0 in a ring run (InputBaseIndex 3)")},
    {"RingBaseNegative", [](F& f) { f.Run(true, 1, S(0, 0, 15, 16, -2)); }, App("InputBaseIndex -2 is outside the ring of InputSize 16")},
    {"RingBaseAtSize", [](F& f) { f.Run(true, 0, S(0, 0, 15, 16, 16)); }, App("InputBaseIndex 16 is outside the ring of InputSize 16")},
    {"RingSlotSumWraps", [](F& f) { f.Run(true, 0, S(0, 0, INT_MAX - 3, 16, 3)); },
     App("EndIndex 2147483644 with InputBaseIndex 3 passes the largest slot sum")},
    {"RingCountWrapsPastTheTop", [](F& f) { f.Run(true, 0, S(0, INT_MAX, INT_MIN + 5, 16, 3)); },
     App("EndIndex -2147483643 below StartIndex 2147483647 wraps to a count of 7")},
    {"RoomBeyondTheVectorsLimit", [](F& f) { f.Run(false, 2, {.end = 15, .width = 1073741823, .maxX = 1073741823}); }, App("vector<T> too long")},
    {"StartBelowZero", [](F& f) { f.Run(true, 1, S(0, -1)); }, App("StartIndex -1 is below 0")},
    {"NullSelf", [](F& f) { f.Run(false, 1, S(), kSelf); }, NullRef("self is null")},
    {"NullX", [](F& f) { f.Run(true, 1, S(), kX); }, NullRef("x is null")},
    {"NullY", [](F& f) { f.Run(true, 2, S(), kY); }, NullRef("y is null")},
    {"NullOutX", [](F& f) { f.Run(true, 3, S(), kOutX); }, NullRef("outX is null")},
    {"NullOutYOfAPassThrough", [](F& f) { f.Run(true, 0, S(), kOutY); }, NullRef("outY is null")},
    {"NullXOfANotResampledRun", [](F& f) { f.Run(true, 4, S(3), kX); }, NullRef("x is null")},
    {"NullYOfANaNAwareWalk", [](F& f) { f.Run(false, 1, {.end = 15, .width = 4, .maxX = 16, .hasNaN = 1}, kY); }, NullRef("y is null")},
    {"NullIndicesBeforeNullArgs", [](F& f) { f.Run(false, 1, S(), kIndices | kArgs); }, Null("std::vector< int > & type is null")},
    {"NullArgsBeforeNullSelf", [](F& f) { f.Run(true, 1, S(), kArgs | kSelf); }, Null("ResamplingArgs & type is null")},
    // Arrays a call does not touch may be null, as the managed side passes them.
    {"BucketUpdateReadsNoArray", [](F& f) { f.Run(false, 1, S(), kArrays); }, std::nullopt},
    {"EmptyRangeReadsNothing", [](F& f) { f.Run(true, 1, S(0, 9, 8), kArrays); }, std::nullopt},
    {"EmptyRingRangeReadsNothing", [](F& f) { f.Run(true, 0, S(0, 9, 8, 16, 3), kArrays); }, std::nullopt},
    {"CategoryRunReadsNoX", [](F& f) { f.Run(false, 3, S(1)), f.Run(true, 3, S(1), kX); }, std::nullopt},
    {"NoCellsWritesNoOutput", [](F& f) { f.Run(false, 1, {.end = 15}), f.Run(true, 1, {.end = 15}, kOutX | kOutY); }, std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(Runs, BadInput, ::testing::ValuesIn(kRuns), NameOf);

// On an Int16 handle over {3, 3, 3, 3, 3}, seeds 9 at index 9.
const Row kScans[] = {
    {"MinOfNullSelf", [](F& f) { CSharp_ArrayOperationsInt16_Min__SWIG_0(nullptr, f.data.data(), 0, 5, &f.seed); }, NullRef("self is null")},
    {"MinIntoNullIndex", [](F& f) { CSharp_ArrayOperationsInt16_Min__SWIG_1(f.ops, f.data.data(), 0, 5, &f.seed, nullptr); },
     NullRef("minIndex is null")},
    {"MaxIntoNull", [](F& f) { CSharp_ArrayOperationsInt16_Max__SWIG_0(f.ops, f.data.data(), 0, 5, nullptr); }, NullRef("max is null")},
    {"MaxFromBelowZero", [](F& f) { CSharp_ArrayOperationsInt16_Max__SWIG_1(f.ops, f.data.data(), -1, 5, &f.seed, &f.seedIndex); },
     App("start -1 is below 0")},
    {"EndWrapsBelowStart", [](F& f) { CSharp_ArrayOperationsInt16_MinMax__SWIG_0(f.ops, f.data.data(), 2, INT_MIN, &f.seed, &f.seed); },
     App("end -2147483648 is below start 2")},
    {"MinOfNullData", [](F& f) { CSharp_ArrayOperationsInt16_Min__SWIG_1(f.ops, nullptr, 0, 5, &f.seed, &f.seedIndex); },
     NullRef("data is null")},
    {"UnsortedOfNullData", [](F& f) { f.result = CSharp_ArrayOperationsInt16_FindIndexExactInUnsortedData(f.ops, nullptr, 0, 5, 4); },
     NullRef("data is null")},
    {"SortedFromBelowZero", [](F& f) { f.result = CSharp_ArrayOperationsInt16_FindIndexExactInSortedData(f.ops, f.data.data(), -4, 5, 3); },
     App("start -4 is below 0")},
    {"SortedReadsEvenAnEmptyRange", [](F& f) { f.result = CSharp_ArrayOperationsInt16_FindIndexExactInSortedData(f.ops, nullptr, 0, 0, 4); },
     NullRef("data is null")},
    {"EmptyScanReadsNothing", [](F& f) { CSharp_ArrayOperationsInt16_Max__SWIG_1(f.ops, nullptr, -3, -3, &f.seed, &f.seedIndex); },
     std::nullopt},
    {"UnsortedWithEndBelowStartFindsNothing",
     [](F& f) { EXPECT_EQ(CSharp_ArrayOperationsInt16_FindIndexExactInUnsortedData(f.ops, nullptr, 4, -9, 4), -1); }, std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(Scans, BadInput, ::testing::ValuesIn(kScans), NameOf);

const Row kGathersAndHelpers[] = {
    {"CopyOfNullX", [](F& f) { f.Gather(nullptr, f.y.data(), f.outX.data(), 0, 0, 0); }, NullRef("x is null")},
    {"CopyOfNullY1", [](F& f) { f.Gather(nullptr, nullptr, f.outX.data(), 0, 0, 1); }, NullRef("y1 is null")},
    {"CopyFromARingOfSizeZero", [](F& f) { f.Gather(f.x.data(), f.y.data(), f.outX.data(), 0, 5, 0); },
     App("size 0 must be above 0 in a ring run (baseIndex 5)")},
    {"CopyFromABaseOutsideTheRing", [](F& f) { f.Gather(f.x.data(), f.y.data(), f.outX.data(), 8, 9, 0); },
     App("baseIndex 9 is outside the ring of size 8")},
    {"MergePastTheVector", [](F& f) { f.result = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(f.list.get(), 3, 3, f.merged.data()); },
     App("firstCount 3 and secondCount 3 pass the 5 indices held")},
    {"MergeIntoNull", [](F& f) { f.result = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(f.list.get(), 2, 2, nullptr); },
     NullRef("output is null")},
    {"MergeOfNull", [](F& f) { f.result = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(nullptr, 1, 1, f.merged.data()); },
     Null("std::vector< int > & type is null")},
    {"CopyVectorToNull", [](F& f) { CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(f.list.get(), nullptr); },
     NullRef("destination is null")},
    {"CopyVectorOfNull", [](F& f) { CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(nullptr, f.merged.data()); },
     Null("std::vector< int > & type is null")},
    {"ActualResamplingOfNull", [](F& f) { f.result = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr); },
     Null("ResamplingArgs & type is null")},
    {"RecordGetterOfNull", [](F& f) { f.result = CSharp_MinMaxPointSearchResultDouble_Max_get(nullptr) != 0.0; }, NullRef("self is null")},
    {"ArgsGetterOfNull", [](F& f) { f.result = CSharp_ResamplingArgs_HasNaN_get(nullptr); }, NullRef("self is null")},
    {"CopyOfNothingReadsNothing", [](F&) {
         CSharp_ExtremeResamplerDoubleDouble_CopyValuesByIndices(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 5, 0);
     }, std::nullopt},
    {"CopyWithIndexAsXReadsNoX", [](F& f) {
         f.Gather(nullptr, f.y.data(), f.outX.data(), 8, 5, 1);
         EXPECT_EQ(f.outX[0], 1.0);  // the logical index, not the slot 6
     }, std::nullopt},
    {"MergeOfNothingIntoNull",
     [](F& f) { EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(f.list.get(), -2, 0, nullptr), 0); }, std::nullopt},
};
INSTANTIATE_TEST_SUITE_P(GathersAndHelpers, BadInput, ::testing::ValuesIn(kGathersAndHelpers), NameOf);

// On the vector {10, 20, 30, 40, 50} of capacity 6.
const Row kVectors[] = {
    {"ReserveTooLong", [](F& f) { CSharp_IntVector_reserve(f.list.get(), 0x40000000u); }, App("vector<T> too long")},
    {"NewWithCapacityTooLong", [](F& f) { f.result = CSharp_new_IntVector__SWIG_2(0x40000000) != nullptr; }, App("vector<T> too long")},
    {"RepeatTooLong", [](F& f) { f.result = CSharp_IntVector_Repeat(1, INT_MAX) != nullptr; }, App("vector<T> too long")},
    {"NewWithNegativeCapacity", [](F& f) { f.result = CSharp_new_IntVector__SWIG_2(-1) != nullptr; }, OutOfRange("capacity")},
    {"RepeatNegative", [](F& f) { f.result = CSharp_IntVector_Repeat(1, -1) != nullptr; }, OutOfRange("count")},
    {"GrowWithoutMemory", [](F& f) { FailAllocation(0), CSharp_IntVector_AddRange(f.list.get(), f.list.get()); }, App(std::bad_alloc().what())},
    {"CopyWithoutMemory", [](F& f) { f.result = (FailAllocation(0), CSharp_new_IntVector__SWIG_1(f.list.get())) != nullptr; },
     App(std::bad_alloc().what())},
    {"SizeOfNull", [](F& f) { f.result = CSharp_IntVector_size(nullptr); }, NullRef("self is null")},
    {"GetRangeOfNull", [](F& f) { f.result = CSharp_IntVector_GetRange(nullptr, 0, 0) != nullptr; }, NullRef("self is null")},
    {"AddRangeOfNull", [](F& f) { CSharp_IntVector_AddRange(f.list.get(), nullptr); }, Null(kConstVectorNull)},
    {"InsertRangeOfNull", [](F& f) { CSharp_IntVector_InsertRange(f.list.get(), 0, nullptr); }, Null(kConstVectorNull)},
    {"CopyOfNull", [](F& f) { f.result = CSharp_new_IntVector__SWIG_1(nullptr) != nullptr; }, Null(kConstVectorNull)},
    {"SetRangeOfNullFromNullChecksTheArgumentFirst", [](F&) { CSharp_IntVector_SetRange(nullptr, 0, nullptr); }, Null(kConstVectorNull)},
};
INSTANTIATE_TEST_SUITE_P(Vectors, BadInput, ::testing::ValuesIn(kVectors), NameOf);

}  // namespace
