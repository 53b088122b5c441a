// The scan and lookup exports of every element type. The scans themselves
// are tested on their kernels (tests/arrayops); here each export must reach
// its own operation of its own type, with its arguments in place: one call
// each, on data where every export answers differently, catches an overload
// or a type wired to another, a value or seed passed with the wrong width,
// a swapped record field, a lookup answer relative to start, and a wrong
// null-record message. The caller's variables are the seeds: a fresh record
// seeds with zeros.

#include <tuple>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

template <class T>
struct Api;
#define QM_ARRAY_API_(W, T, Name)                                                                            \
    template <>                                                                                             \
    struct Api<T> {                                                                                         \
        static constexpr const char* kNullRecord = "MinMaxPointSearchResult< " Name " > & type is null";     \
        static constexpr auto New = CSharp_new_ArrayOperations##W, Delete = CSharp_delete_ArrayOperations##W; \
        static constexpr auto Min = CSharp_ArrayOperations##W##_Min__SWIG_0;                                 \
        static constexpr auto MinAt = CSharp_ArrayOperations##W##_Min__SWIG_1;                               \
        static constexpr auto Max = CSharp_ArrayOperations##W##_Max__SWIG_0;                                 \
        static constexpr auto MaxAt = CSharp_ArrayOperations##W##_Max__SWIG_1;                               \
        static constexpr auto MinMax = CSharp_ArrayOperations##W##_MinMax__SWIG_0;                           \
        static constexpr auto MinMaxInto = CSharp_ArrayOperations##W##_MinMax__SWIG_1;                       \
        static constexpr auto FindUnsorted = CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData;       \
        static constexpr auto FindSorted = CSharp_ArrayOperations##W##_FindIndexExactInSortedData;           \
        static constexpr auto NewRecord = CSharp_new_MinMaxPointSearchResult##W;                             \
        static constexpr auto DeleteRecord = CSharp_delete_MinMaxPointSearchResult##W;                       \
        static void Set(QmMinMaxPointSearchResult##W* r, std::int32_t minAt, std::int32_t maxAt, T min, T max) { \
            CSharp_MinMaxPointSearchResult##W##_MinIndex_set(r, minAt);                                     \
            CSharp_MinMaxPointSearchResult##W##_MaxIndex_set(r, maxAt);                                     \
            CSharp_MinMaxPointSearchResult##W##_Min_set(r, min), CSharp_MinMaxPointSearchResult##W##_Max_set(r, max); \
        }                                                                                                   \
        static auto Get(const QmMinMaxPointSearchResult##W* r) {                                            \
            return std::tuple(CSharp_MinMaxPointSearchResult##W##_MinIndex_get(r),                          \
                              CSharp_MinMaxPointSearchResult##W##_MaxIndex_get(r),                          \
                              CSharp_MinMaxPointSearchResult##W##_Min_get(r),                               \
                              CSharp_MinMaxPointSearchResult##W##_Max_get(r));                              \
        }                                                                                                   \
    };
QM_ARRAY_API_(Double, double, "double")
QM_ARRAY_API_(Single, float, "float")
QM_ARRAY_API_(Int64, std::int64_t, "long long")
QM_ARRAY_API_(UInt64, std::uint64_t, "unsigned long long")
QM_ARRAY_API_(Int32, std::int32_t, "int")
QM_ARRAY_API_(UInt32, std::uint32_t, "unsigned int")
QM_ARRAY_API_(Int16, std::int16_t, "short")
QM_ARRAY_API_(UInt16, std::uint16_t, "unsigned short")
QM_ARRAY_API_(Byte, std::uint8_t, "unsigned char")
QM_ARRAY_API_(SByte, std::int8_t, "signed char")
#undef QM_ARRAY_API_

template <class T>
class ArrayOperationsExportsTest : public InterfaceTest {};
using ElementTypes =
    ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t, std::int16_t,
                     std::uint16_t, std::uint8_t, std::int8_t>;
TYPED_TEST_SUITE(ArrayOperationsExportsTest, ElementTypes);

TYPED_TEST(ArrayOperationsExportsTest, EachExportReachesItsOwnOperation) {
    using T = TypeParam;
    using A = Api<T>;
    const T d[6] = {T(4), T(2), T(7), T(2), T(9), T(7)}, sorted[6] = {T(1), T(3), T(3), T(5), T(8), T(8)};
    auto* ops = A::New();
    T min = T(100), max = T(0);
    std::int32_t minAt = -1, maxAt = -1;
    A::MinAt(ops, d, 2, 6, &min, &minAt);  // positions are absolute, not from start
    A::MaxAt(ops, d, 0, 4, &max, &maxAt);
    EXPECT_EQ(std::tuple(min, minAt, max, maxAt), std::tuple(T(2), 3, T(7), 2));
    min = T(3), max = T(8);  // the value-only forms; a seed no element beats survives
    A::Min(ops, d, 0, 6, &min), A::Max(ops, d, 0, 3, &max);
    EXPECT_EQ(std::pair(min, max), std::pair(T(2), T(8)));
    min = T(100), max = T(0);
    A::MinMax(ops, d, 0, 3, &min, &max);
    EXPECT_EQ(std::pair(min, max), std::pair(T(2), T(7)));
    auto* record = A::NewRecord();
    A::MinMaxInto(ops, d, 0, 5, record);
    EXPECT_EQ(A::Get(record), std::tuple(0, 4, T(0), T(9)));
    A::Set(record, -1, -1, T(100), T(0));
    A::MinMaxInto(ops, d, 2, 6, record);
    EXPECT_EQ(A::Get(record), std::tuple(3, 4, T(2), T(9)));
    A::Set(nullptr, 1, 1, T(1), T(1));  // setters on no record do nothing
    A::MinMaxInto(ops, d, 0, 6, nullptr);
    ExpectReport(Null(A::kNullRecord));
    EXPECT_EQ(A::FindUnsorted(ops, d, 3, 6, T(7)), 5);
    EXPECT_EQ(A::FindUnsorted(ops, d, 0, 6, T(6)), -1);
    EXPECT_EQ(A::FindSorted(ops, sorted, 0, 5, T(3)), 1);
    EXPECT_EQ(A::FindSorted(ops, sorted, 0, 4, T(8)), 4);  // above the range: data[end] is compared
    A::DeleteRecord(record), A::DeleteRecord(nullptr);
    A::Delete(ops), A::Delete(nullptr);
}

}  // namespace
