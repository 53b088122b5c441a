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
        if (execute)
            CSharp_ExtremeResamplerDoubleDouble_Execute(self, xs, ys, nulls & kOutX ? nullptr : outX.data(), nulls & kOutY ? nullptr : outY.data(),
                                                        v, mode, args);
        else
            result = CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(self, v, xs, ys, mode, args);
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
    EXPECT_EQ(std::tuple(result, Contents(indices.get()), Contents(list.get()), merged.Contents(), seed, seedIndex),
              std::tuple(0, Ints{5, 6}, Ints{10, 20, 30, 40, 50}, Ints(4, -7), std::int16_t{9}, 9));
    EXPECT_EQ(CSharp_IntVector_capacity(indices.get()) + CSharp_IntVector_capacity(list.get()), 48);
    EXPECT_EQ(outX.Contents(), std::vector<double>(40, -7.0));
    EXPECT_EQ(outY.Contents(), std::vector<double>(40, -7.0));
}

using F = BadInput;
std::string NameOf(const ::testing::TestParamInfo<Row>& row) { return row.param.name; }
// A row: its name, the report it must leave (kFine: none), and the call, made on the fixture f.
#define ROW(name, report, ...) Row{#name, []([[maybe_unused]] F& f) { __VA_ARGS__; }, report}
const std::optional<Report> kFine;
const char* const kConstVectorNull = "std::vector< int > const & type is null";

const Row kRuns[] = {
    ROW(ModeAboveTheEnumeration, App("mode 6 is not a ResamplingMode (0 to 5)"), f.Run(true, 6, S())),
    ROW(ModeNegative, App("mode -1 is not a ResamplingMode (0 to 5)"), f.Run(false, -1, S())),
    ROW(DataAboveTheEnumeration, App("Data 4 is not a ResamplingData (0 to 3)"), f.Run(false, 1, S(4))),
    ROW(RingOfSizeZero, App("InputSize 0 must be above 0 in a ring run (InputBaseIndex 3)"), f.Run(true, 0, S(0, 0, 15, 0, 3))),
    ROW(RingBaseNegative, App("InputBaseIndex -2 is outside the ring of InputSize 16"), f.Run(true, 1, S(0, 0, 15, 16, -2))),
    ROW(RingBaseAtSize, App("InputBaseIndex 16 is outside the ring of InputSize 16"), f.Run(true, 0, S(0, 0, 15, 16, 16))),
    ROW(RingSlotSumWraps, App("EndIndex 2147483644 with InputBaseIndex 3 passes the largest slot sum"),
        f.Run(true, 0, S(0, 0, INT_MAX - 3, 16, 3))),
    ROW(RingCountWrapsPastTheTop, App("EndIndex -2147483643 below StartIndex 2147483647 wraps to a count of 7"),
        f.Run(true, 0, S(0, INT_MAX, INT_MIN + 5, 16, 3))),
    ROW(RoomBeyondTheVectorsLimit, App("vector<T> too long"),
        f.Run(false, 2, {.end = 15, .width = 1073741823, .maxX = 1073741823})),
    ROW(StartBelowZero, App("StartIndex -1 is below 0"), f.Run(true, 1, S(0, -1))),
    ROW(NullSelf, NullRef("self is null"), f.Run(false, 1, S(), kSelf)),
    ROW(NullX, NullRef("x is null"), f.Run(true, 1, S(), kX)),
    ROW(NullY, NullRef("y is null"), f.Run(true, 2, S(), kY)),
    ROW(NullOutX, NullRef("outX is null"), f.Run(true, 3, S(), kOutX)),
    ROW(NullOutYOfAPassThrough, NullRef("outY is null"), f.Run(true, 0, S(), kOutY)),
    ROW(NullXOfANotResampledRun, NullRef("x is null"), f.Run(true, 4, S(3), kX)),
    ROW(NullYOfANaNAwareWalk, NullRef("y is null"), f.Run(false, 1, {.end = 15, .width = 4, .maxX = 16, .hasNaN = 1}, kY)),
    ROW(NullIndicesBeforeNullArgs, Null("std::vector< int > & type is null"), f.Run(false, 1, S(), kIndices | kArgs)),
    ROW(NullArgsBeforeNullSelf, Null("ResamplingArgs & type is null"), f.Run(true, 1, S(), kArgs | kSelf)),
    // Arrays a call does not touch may be null, as the managed side passes them.
    ROW(BucketUpdateReadsNoArray, kFine, f.Run(false, 1, S(), kArrays)),
    ROW(EmptyRangeReadsNothing, kFine, f.Run(true, 1, S(0, 9, 8), kArrays)),
    ROW(EmptyRingRangeReadsNothing, kFine, f.Run(true, 0, S(0, 9, 8, 16, 3), kArrays)),
    ROW(CategoryRunReadsNoX, kFine, f.Run(false, 3, S(1)), f.Run(true, 3, S(1), kX)),
    ROW(NoCellsWritesNoOutput, kFine, f.Run(false, 1, {.end = 15}), f.Run(true, 1, {.end = 15}, kOutX | kOutY)),
};
INSTANTIATE_TEST_SUITE_P(Runs, BadInput, ::testing::ValuesIn(kRuns), NameOf);

// On an Int16 handle over {3, 3, 3, 3, 3}, seeds 9 at index 9.
const Row kScans[] = {
    ROW(MinOfNullSelf, NullRef("self is null"), CSharp_ArrayOperationsInt16_Min__SWIG_0(nullptr, f.data.data(), 0, 5, &f.seed)),
    ROW(MinIntoNullIndex, NullRef("minIndex is null"),
        CSharp_ArrayOperationsInt16_Min__SWIG_1(f.ops, f.data.data(), 0, 5, &f.seed, nullptr)),
    ROW(MaxIntoNull, NullRef("max is null"), CSharp_ArrayOperationsInt16_Max__SWIG_0(f.ops, f.data.data(), 0, 5, nullptr)),
    ROW(MaxFromBelowZero, App("start -1 is below 0"),
        CSharp_ArrayOperationsInt16_Max__SWIG_1(f.ops, f.data.data(), -1, 5, &f.seed, &f.seedIndex)),
    ROW(EndWrapsBelowStart, App("end -2147483648 is below start 2"),
        CSharp_ArrayOperationsInt16_MinMax__SWIG_0(f.ops, f.data.data(), 2, INT_MIN, &f.seed, &f.seed)),
    ROW(MinOfNullData, NullRef("data is null"),
        CSharp_ArrayOperationsInt16_Min__SWIG_1(f.ops, nullptr, 0, 5, &f.seed, &f.seedIndex)),
    ROW(UnsortedOfNullData, NullRef("data is null"),
        f.result = CSharp_ArrayOperationsInt16_FindIndexExactInUnsortedData(f.ops, nullptr, 0, 5, 4)),
    ROW(SortedFromBelowZero, App("start -4 is below 0"),
        f.result = CSharp_ArrayOperationsInt16_FindIndexExactInSortedData(f.ops, f.data.data(), -4, 5, 3)),
    ROW(SortedReadsEvenAnEmptyRange, NullRef("data is null"),
        f.result = CSharp_ArrayOperationsInt16_FindIndexExactInSortedData(f.ops, nullptr, 0, 0, 4)),
    ROW(EmptyScanReadsNothing, kFine, CSharp_ArrayOperationsInt16_Max__SWIG_1(f.ops, nullptr, -3, -3, &f.seed, &f.seedIndex)),
    ROW(UnsortedWithEndBelowStartFindsNothing, kFine,
        EXPECT_EQ(CSharp_ArrayOperationsInt16_FindIndexExactInUnsortedData(f.ops, nullptr, 4, -9, 4), -1)),
};
INSTANTIATE_TEST_SUITE_P(Scans, BadInput, ::testing::ValuesIn(kScans), NameOf);

const Row kGathersAndHelpers[] = {
    ROW(CopyOfNullX, NullRef("x is null"), f.Gather(nullptr, f.y.data(), f.outX.data(), 0, 0, 0)),
    ROW(CopyOfNullY1, NullRef("y1 is null"), f.Gather(nullptr, nullptr, f.outX.data(), 0, 0, 1)),
    ROW(CopyFromARingOfSizeZero, App("size 0 must be above 0 in a ring run (baseIndex 5)"),
        f.Gather(f.x.data(), f.y.data(), f.outX.data(), 0, 5, 0)),
    ROW(CopyFromABaseOutsideTheRing, App("baseIndex 9 is outside the ring of size 8"),
        f.Gather(f.x.data(), f.y.data(), f.outX.data(), 8, 9, 0)),
    ROW(MergePastTheVector, App("firstCount 3 and secondCount 3 pass the 5 indices held"),
        f.result = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(f.list.get(), 3, 3, f.merged.data())),
    ROW(MergeIntoNull, NullRef("output is null"),
        f.result = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(f.list.get(), 2, 2, nullptr)),
    ROW(MergeOfNull, Null("std::vector< int > & type is null"),
        f.result = CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(nullptr, 1, 1, f.merged.data())),
    ROW(CopyVectorToNull, NullRef("destination is null"),
        CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(f.list.get(), nullptr)),
    ROW(CopyVectorOfNull, Null("std::vector< int > & type is null"),
        CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(nullptr, f.merged.data())),
    ROW(ActualResamplingOfNull, Null("ResamplingArgs & type is null"),
        f.result = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr)),
    ROW(RecordGetterOfNull, NullRef("self is null"), f.result = CSharp_MinMaxPointSearchResultDouble_Max_get(nullptr) != 0.0),
    ROW(ArgsGetterOfNull, NullRef("self is null"), f.result = CSharp_ResamplingArgs_HasNaN_get(nullptr)),
    ROW(CopyOfNothingReadsNothing, kFine,
        CSharp_ExtremeResamplerDoubleDouble_CopyValuesByIndices(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0, 5, 0)),
    // Exactly the elements, not the capacity: a copy of more faults on the guard page.
    ROW(CopyVectorToWritesTheElementsOnly, kFine, CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(f.indices.get(), f.merged.data() + 2);
        CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(MakeVector({}).get(), nullptr); EXPECT_EQ(f.merged.Contents(), (Ints{-7, -7, 5, 6}))),
    ROW(MergeOfNothingIntoNull, kFine,
        EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(f.list.get(), -2, 0, nullptr), 0)),
};
INSTANTIATE_TEST_SUITE_P(GathersAndHelpers, BadInput, ::testing::ValuesIn(kGathersAndHelpers), NameOf);

// On the vector {10, 20, 30, 40, 50} of capacity 6.
const Row kVectors[] = {
    ROW(ReserveTooLong, App("vector<T> too long"), CSharp_IntVector_reserve(f.list.get(), 0x40000000u)),
    ROW(NewWithCapacityTooLong, App("vector<T> too long"), f.result = CSharp_new_IntVector__SWIG_2(0x40000000) != nullptr),
    ROW(RepeatTooLong, App("vector<T> too long"), f.result = CSharp_IntVector_Repeat(1, INT_MAX) != nullptr),
    ROW(NewWithNegativeCapacity, OutOfRange("capacity"), f.result = CSharp_new_IntVector__SWIG_2(-1) != nullptr),
    ROW(RepeatNegative, OutOfRange("count"), f.result = CSharp_IntVector_Repeat(1, -1) != nullptr),
    ROW(GrowWithoutMemory, App(std::bad_alloc().what()), FailAllocation(0), CSharp_IntVector_AddRange(f.list.get(), f.list.get())),
    ROW(CopyWithoutMemory, App(std::bad_alloc().what()),
        f.result = (FailAllocation(0), CSharp_new_IntVector__SWIG_1(f.list.get())) != nullptr),
    ROW(SizeOfNull, NullRef("self is null"), f.result = CSharp_IntVector_size(nullptr)),
    ROW(GetRangeOfNull, NullRef("self is null"), f.result = CSharp_IntVector_GetRange(nullptr, 0, 0) != nullptr),
    ROW(AddRangeOfNull, Null(kConstVectorNull), CSharp_IntVector_AddRange(f.list.get(), nullptr)),
    ROW(InsertRangeOfNull, Null(kConstVectorNull), CSharp_IntVector_InsertRange(f.list.get(), 0, nullptr)),
    ROW(CopyOfNull, Null(kConstVectorNull), f.result = CSharp_new_IntVector__SWIG_1(nullptr) != nullptr),
    ROW(SetRangeOfNullFromNullChecksTheArgumentFirst, Null(kConstVectorNull), CSharp_IntVector_SetRange(nullptr, 0, nullptr)),
};
INSTANTIATE_TEST_SUITE_P(Vectors, BadInput, ::testing::ValuesIn(kVectors), NameOf);

}  // namespace
