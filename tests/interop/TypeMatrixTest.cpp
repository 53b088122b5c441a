// Every element type through its exports. All 120 type pairs in whole runs
// the way the managed side makes them and in the gather by index: a pair
// wired to another pair's instance, an element read with the wrong width or
// signedness, a DateTime's kind bits taken for ticks, a 64-bit value
// truncated instead of rounded, a Single not widened exactly, HasNaN honoured
// where Y cannot hold NaN (or ignored where it can), a NotResampled run that
// resamples, indices held before a run lost, and a gather that mixes up
// slots and logical indices. And each scan and lookup export of the ten
// element types, once each on data where every export answers differently
// (the scans themselves are tested on their kernels): an overload or a type
// wired to another, a value or seed passed with the wrong width, a swapped
// record field, a lookup answer relative to start.

#include <cmath>
#include <limits>
#include <numeric>
#include <tuple>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

// X runs from 50 to 89, so no output X equals its index; Y is flat at 10 but
// for the type's largest value at 21 and its lowest at 29. Over 5 pixels the
// step is 4 and the grid starts at 48: buckets [0,3), [3,7), ..., [35,39),
// [39,40) of 11 cells. A flat bucket gives its first point, the spike's
// bucket 19 then 21, the dip's its maximum 27 before its minimum 29.
template <class P>
void CheckPair() {
    using TX = typename P::X;
    using TY = typename P::Y;
    // The type's extremes as they must arrive: unsigned stays positive, a
    // 64-bit integer rounds to nearest, a Single widens exactly.
    const double top = static_cast<double>(std::numeric_limits<TY>::max()), bottom = static_cast<double>(std::numeric_limits<TY>::lowest());
    std::vector<TX> x;
    std::vector<TY> y;
    for (int i = 0; i < 40; ++i)
        x.push_back(Element<TX>(50 + i)), y.push_back(i == 21 ? std::numeric_limits<TY>::max() : i == 29 ? std::numeric_limits<TY>::lowest() : TY(10));
    const Ints minMax{0, 3, 7, 11, 15, 19, 21, 23, 27, 29, 31, 35, 39};
    Ints all(40);
    std::iota(all.begin(), all.end(), 0);
    // Data kind and HasNaN of a MinMax run, its points and the room it asks
    // for: 11 cells of 2, a NaN-aware walk's whole vector (3 held before
    // included), or every point of a run that is never resampled.
    const bool nanAware = std::is_floating_point_v<TY>;
    const std::tuple<std::int32_t, std::int32_t, Ints, std::int32_t> runs[] = {
        {0, 0, minMax, 22}, {0, 1, minMax, nanAware ? 16 : 22}, {3, 1, all, 40}};
    auto* engine = P::make();
    for (const auto& [data, hasNaN, points, count] : runs) {
        SCOPED_TRACE(testing::Message() << "data " << data << " HasNaN " << hasNaN);
        const ArgsPtr args = MakeArgs({.data = data, .end = 39, .width = 5, .minX = 50, .maxX = 89, .hasNaN = hasNaN});
        VectorPtr indices = MakeVector({-4, -4, -4});
        const Frame f = P::Run(engine, x.data(), y.data(), 1, args.get(), indices.get());
        Ints expected{-4, -4, -4};
        expected.insert(expected.end(), points.begin(), points.end());
        ASSERT_EQ(f.indices, expected);
        ASSERT_EQ(f.count, count);
        // A NaN-aware Execute gathers for the whole vector: the held indices have no point and gather NaN.
        const std::size_t skip = nanAware && hasNaN && data != 3 ? 3 : 0;
        for (std::size_t k = 0; k < skip; ++k) EXPECT_TRUE(std::isnan(f.x[k]) && std::isnan(f.y[k]));
        for (std::size_t k = 0; k < points.size(); ++k) {
            const std::int32_t i = points[k];
            EXPECT_EQ(f.x[skip + k], 50 + i);
            EXPECT_EQ(f.y[skip + k], i == 21 ? top : i == 29 ? bottom : 10.0);
        }
        for (std::size_t k = skip + points.size(); k < f.x.size(); ++k) EXPECT_EQ(f.x[k], -7.25) << "past the points";
        EXPECT_TRUE(skip || CSharp_IntVector_capacity(indices.get()) == 3 + count) << "the room is not reserved exactly";
    }
    P::destroy(engine);

    // Logical 6, 2, 0 from eight slots holding x = 50 + slot, y = slot + 1 (the
    // type's largest value in slot 7) and y1 = 20 + slot: in a ring of 8 with
    // base 5 they lie in slots 3, 7, 5. A plain series never reads the size,
    // and the index as X reads no X.
    auto gather = [](std::int32_t size, std::int32_t base, bool indexAsX) {
        std::vector<TX> gx;
        std::vector<TY> gy, gy1;
        for (int s = 0; s < 8; ++s) gx.push_back(Element<TX>(50 + s)), gy.push_back(s == 7 ? std::numeric_limits<TY>::max() : TY(s + 1)), gy1.push_back(TY(20 + s));
        const Ints at{6, 2, 0};
        std::vector<double> out(9, -1.0);
        P::copy(indexAsX ? nullptr : gx.data(), gy.data(), gy1.data(), at.data(), out.data(), out.data() + 3, out.data() + 6, 3,
                size, base, indexAsX);
        return out;
    };
    EXPECT_EQ(gather(8, 5, false), (std::vector<double>{53, 57, 55, 4, top, 6, 23, 27, 25}));
    EXPECT_EQ(gather(8, 5, true), (std::vector<double>{6, 2, 0, 4, top, 6, 23, 27, 25}));
    EXPECT_EQ(gather(0, 0, false), (std::vector<double>{56, 52, 50, 7, 3, 1, 26, 22, 20}));
}

struct PairCase {
    const char* name;
    void (*check)();
};
#define QM_PAIR_CASE_(XW, XT, YW, YT) PairCase{#XW #YW, &CheckPair<QM_PAIR_EXPORTS(XW, XT, YW, YT)>},
const PairCase kPairs[] = {QM_FOR_EACH_PAIR(QM_PAIR_CASE_)};

class TypeMatrix : public InterfaceTest, public ::testing::WithParamInterface<PairCase> {};

TEST_P(TypeMatrix, RunsAndGathersKeepEveryValue) { GetParam().check(); }

INSTANTIATE_TEST_SUITE_P(AllPairs, TypeMatrix, ::testing::ValuesIn(kPairs),
                         [](const ::testing::TestParamInfo<PairCase>& pair) { return std::string(pair.param.name); });

// The exports of one element type, in the order of the macro below.
template <class T, class... Exports>
void CheckExports(const char* word, Exports... exports) {
    SCOPED_TRACE(word);
    const auto [make, destroy, min, minAt, max, maxAt, minMax, minMaxInto, unsorted, sorted, newRecord, deleteRecord,
                setMinAt, setMaxAt, setMin, setMax, minAtOf, maxAtOf, minOf, maxOf] = std::tuple(exports...);
    const T d[6] = {T(4), T(2), T(7), T(2), T(9), T(7)}, ascending[6] = {T(1), T(3), T(3), T(5), T(8), T(8)};
    auto* ops = make();
    auto* record = newRecord();
    T lo = T(100), hi = T(0), lo2 = T(3), hi2 = T(8), lo3 = T(100), hi3 = T(0);  // seeds that no element beats stay
    std::int32_t loAt = -1, hiAt = -1;
    minAt(ops, d, 2, 6, &lo, &loAt), maxAt(ops, d, 0, 4, &hi, &hiAt);  // positions are absolute, not from start
    min(ops, d, 0, 6, &lo2), max(ops, d, 0, 3, &hi2), minMax(ops, d, 0, 3, &lo3, &hi3);
    EXPECT_EQ(std::tuple(lo, loAt, hi, hiAt, lo2, hi2, lo3, hi3), std::tuple(T(2), 3, T(7), 2, T(2), T(8), T(2), T(7)));
    minMaxInto(ops, d, 0, 5, record);  // a fresh record seeds with zeros
    EXPECT_EQ(std::tuple(minAtOf(record), maxAtOf(record), minOf(record), maxOf(record)), std::tuple(0, 4, T(0), T(9)));
    setMinAt(record, -1), setMaxAt(record, -1), setMin(record, T(100)), setMax(record, T(0));
    setMinAt(nullptr, 1), setMaxAt(nullptr, 1), setMin(nullptr, T(1)), setMax(nullptr, T(1));  // no record: nothing happens
    minMaxInto(ops, d, 2, 6, record);
    EXPECT_EQ(std::tuple(minAtOf(record), maxAtOf(record), minOf(record), maxOf(record)), std::tuple(3, 4, T(2), T(9)));
    EXPECT_EQ((std::vector{unsorted(ops, d, 3, 6, T(7)), unsorted(ops, d, 0, 6, T(6)), sorted(ops, ascending, 0, 5, T(3)),
                           sorted(ops, ascending, 0, 4, T(8))}),  // the last above its range: data[end] is compared
              (std::vector{5, -1, 1, 4}));
    deleteRecord(record), deleteRecord(nullptr), destroy(ops), destroy(nullptr);
}

#define QM_CHECK_EXPORTS_(ctx, W, T, N)                                                                                  \
    CheckExports<T>(#W, CSharp_new_ArrayOperations##W, CSharp_delete_ArrayOperations##W, CSharp_ArrayOperations##W##_Min__SWIG_0, \
                    CSharp_ArrayOperations##W##_Min__SWIG_1, CSharp_ArrayOperations##W##_Max__SWIG_0,                    \
                    CSharp_ArrayOperations##W##_Max__SWIG_1, CSharp_ArrayOperations##W##_MinMax__SWIG_0,                 \
                    CSharp_ArrayOperations##W##_MinMax__SWIG_1, CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData, \
                    CSharp_ArrayOperations##W##_FindIndexExactInSortedData, CSharp_new_MinMaxPointSearchResult##W,       \
                    CSharp_delete_MinMaxPointSearchResult##W, CSharp_MinMaxPointSearchResult##W##_MinIndex_set,          \
                    CSharp_MinMaxPointSearchResult##W##_MaxIndex_set, CSharp_MinMaxPointSearchResult##W##_Min_set,       \
                    CSharp_MinMaxPointSearchResult##W##_Max_set, CSharp_MinMaxPointSearchResult##W##_MinIndex_get,       \
                    CSharp_MinMaxPointSearchResult##W##_MaxIndex_get, CSharp_MinMaxPointSearchResult##W##_Min_get,       \
                    CSharp_MinMaxPointSearchResult##W##_Max_get);

class ScanExports : public InterfaceTest {};

TEST_F(ScanExports, EachReachesItsOwnOperation) { QM_Y_TYPES(QM_CHECK_EXPORTS_, _) }

}  // namespace
