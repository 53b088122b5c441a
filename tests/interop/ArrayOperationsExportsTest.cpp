// The scan and lookup exports of every element type. The scans themselves are
// tested on their kernels (tests/arrayops); here each export must reach its
// own operation of its own type with its arguments in place. One call each,
// on data where every export answers differently, catches an overload or a
// type wired to another, a value or seed passed with the wrong width, a
// swapped record field and a lookup answer relative to start. The caller's
// variables are the seeds: a fresh record seeds with zeros.

#include <tuple>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class ArrayOperationsExportsTest : public InterfaceTest {};

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

TEST_F(ArrayOperationsExportsTest, EachExportReachesItsOwnOperation) { QM_Y_TYPES(QM_CHECK_EXPORTS_, _) }

// A null record is reported with the C++ name of its element type.
TEST_F(ArrayOperationsExportsTest, NullRecordNamesItsType) {
    const char* const names[] = {"double", "float", "long long", "unsigned long long", "int", "unsigned int", "short",
                                 "unsigned short", "unsigned char", "signed char"};
    std::vector<Report> expected;
    for (const char* name : names) expected.push_back(Null(std::string("MinMaxPointSearchResult< ") + name + " > & type is null"));
#define QM_MINMAX_INTO_NULL_(ctx, W, T, N) CSharp_ArrayOperations##W##_MinMax__SWIG_1(nullptr, nullptr, 0, 1, nullptr);
    QM_Y_TYPES(QM_MINMAX_INTO_NULL_, _)
    ExpectReports(expected);
}

}  // namespace
