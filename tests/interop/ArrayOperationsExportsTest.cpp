// The scan and lookup exports for every element type. The caller's
// variables are the seeds, positions are absolute in the array, ties keep
// the earliest position, and the sorted lookup reads one element past its
// range when the value lies above it.

#include <cmath>
#include <limits>
#include <tuple>
#include <type_traits>
#include <utility>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

template <class T>
struct ArrayApi;

#define QM_ARRAY_API_(W, T, NullRecordMessage)                                                              \
    template <>                                                                                             \
    struct ArrayApi<T> {                                                                                    \
        static constexpr const char *kWord = #W, *kNullRecordMessage = NullRecordMessage;                   \
        static constexpr auto New = &CSharp_new_ArrayOperations##W;                                         \
        static constexpr auto Delete = &CSharp_delete_ArrayOperations##W;                                   \
        static constexpr auto Min = &CSharp_ArrayOperations##W##_Min__SWIG_0;                               \
        static constexpr auto MinAt = &CSharp_ArrayOperations##W##_Min__SWIG_1;                             \
        static constexpr auto Max = &CSharp_ArrayOperations##W##_Max__SWIG_0;                               \
        static constexpr auto MaxAt = &CSharp_ArrayOperations##W##_Max__SWIG_1;                             \
        static constexpr auto MinMax = &CSharp_ArrayOperations##W##_MinMax__SWIG_0;                         \
        static constexpr auto MinMaxInto = &CSharp_ArrayOperations##W##_MinMax__SWIG_1;                     \
        static constexpr auto FindUnsorted = &CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData;     \
        static constexpr auto FindSorted = &CSharp_ArrayOperations##W##_FindIndexExactInSortedData;         \
        static constexpr auto NewRecord = &CSharp_new_MinMaxPointSearchResult##W;                           \
        static constexpr auto DeleteRecord = &CSharp_delete_MinMaxPointSearchResult##W;                     \
        static constexpr auto SetMinIndex = &CSharp_MinMaxPointSearchResult##W##_MinIndex_set;              \
        static constexpr auto SetMaxIndex = &CSharp_MinMaxPointSearchResult##W##_MaxIndex_set;              \
        static constexpr auto SetMin = &CSharp_MinMaxPointSearchResult##W##_Min_set;                        \
        static constexpr auto SetMax = &CSharp_MinMaxPointSearchResult##W##_Max_set;                        \
        static auto Get(const QmMinMaxPointSearchResult##W* r) {                                            \
            return std::make_tuple(CSharp_MinMaxPointSearchResult##W##_MinIndex_get(r),                     \
                                   CSharp_MinMaxPointSearchResult##W##_MaxIndex_get(r),                     \
                                   CSharp_MinMaxPointSearchResult##W##_Min_get(r),                          \
                                   CSharp_MinMaxPointSearchResult##W##_Max_get(r));                         \
        }                                                                                                   \
    };
QM_ARRAY_API_(Double, double, "MinMaxPointSearchResult< double > & type is null")
QM_ARRAY_API_(Single, float, "MinMaxPointSearchResult< float > & type is null")
QM_ARRAY_API_(Int64, int64_t, "MinMaxPointSearchResult< long long > & type is null")
QM_ARRAY_API_(UInt64, uint64_t, "MinMaxPointSearchResult< unsigned long long > & type is null")
QM_ARRAY_API_(Int32, int32_t, "MinMaxPointSearchResult< int > & type is null")
QM_ARRAY_API_(UInt32, uint32_t, "MinMaxPointSearchResult< unsigned int > & type is null")
QM_ARRAY_API_(Int16, int16_t, "MinMaxPointSearchResult< short > & type is null")
QM_ARRAY_API_(UInt16, uint16_t, "MinMaxPointSearchResult< unsigned short > & type is null")
QM_ARRAY_API_(Byte, uint8_t, "MinMaxPointSearchResult< unsigned char > & type is null")
QM_ARRAY_API_(SByte, int8_t, "MinMaxPointSearchResult< signed char > & type is null")
#undef QM_ARRAY_API_

struct ElementWord {
    template <class T>
    static std::string GetName(int) { return ArrayApi<T>::kWord; }
};

template <class T>
class ArrayOperationsExportsTest : public InterfaceTest {
protected:
    using Own = ArrayApi<T>;
    void SetUp() override {
        InterfaceTest::SetUp();
        ASSERT_NE(ops = Own::New(), nullptr);
        ASSERT_NE(record = Own::NewRecord(), nullptr);
    }
    void TearDown() override {
        Own::DeleteRecord(record);
        Own::Delete(ops);
        InterfaceTest::TearDown();
    }
    void Seed(std::int32_t minIndex, std::int32_t maxIndex, T min, T max) {
        Own::SetMinIndex(record, minIndex), Own::SetMaxIndex(record, maxIndex);
        Own::SetMin(record, min), Own::SetMax(record, max);
    }
    void ExpectRecord(std::int32_t minIndex, std::int32_t maxIndex, T min, T max) {
        EXPECT_EQ(Own::Get(record), std::make_tuple(minIndex, maxIndex, min, max));
    }
    std::remove_pointer_t<decltype(Own::New())>* ops = nullptr;
    std::remove_pointer_t<decltype(Own::NewRecord())>* record = nullptr;
};

using ElementTypes =
    ::testing::Types<double, float, int64_t, uint64_t, int32_t, uint32_t, int16_t, uint16_t, uint8_t, int8_t>;
TYPED_TEST_SUITE(ArrayOperationsExportsTest, ElementTypes, ElementWord);

TYPED_TEST(ArrayOperationsExportsTest, EveryScanImprovesTheCallersSeeds) {
    using T = TypeParam;
    using Api = ArrayApi<T>;
    // 20 + i % 5 with minima 5 at 17 and 33 and maxima 60 at 20 and 35.
    std::vector<T> data;
    for (int i = 0; i < 40; ++i) data.push_back(static_cast<T>(20 + i % 5));
    data[17] = data[33] = T(5);
    data[20] = data[35] = T(60);
    struct Case {
        std::int32_t start, end, minIndex, maxIndex;
        int min, max;
    };
    // The scan semantics are tested on the kernels; here each export must
    // reach its own scan: extremes in a block, in a tail, and an empty range.
    for (const Case& c : {Case{0, 33, 17, 20, 5, 60}, Case{21, 36, 33, 35, 5, 60}, Case{6, 6, -1, -1, 100, 0}}) {
        SCOPED_TRACE(testing::Message() << "[" << c.start << ", " << c.end << ")");
        const T* d = data.data();
        const auto expected = std::make_tuple(T(c.min), c.minIndex, T(c.max), c.maxIndex);
        T min = T(100), max = T(0);
        std::int32_t minIndex = -1, maxIndex = -1;
        Api::MinAt(this->ops, d, c.start, c.end, &min, &minIndex);
        Api::MaxAt(this->ops, d, c.start, c.end, &max, &maxIndex);
        EXPECT_EQ(std::make_tuple(min, minIndex, max, maxIndex), expected);
        this->Seed(-1, -1, T(100), T(0));
        Api::MinMaxInto(this->ops, d, c.start, c.end, this->record);
        this->ExpectRecord(c.minIndex, c.maxIndex, T(c.min), T(c.max));
        min = T(100), max = T(0);
        Api::Min(this->ops, d, c.start, c.end, &min);
        Api::Max(this->ops, d, c.start, c.end, &max);
        EXPECT_EQ(std::make_pair(min, max), std::make_pair(T(c.min), T(c.max)));
        min = T(100), max = T(0);
        Api::MinMax(this->ops, d, c.start, c.end, &min, &max);
        EXPECT_EQ(std::make_pair(min, max), std::make_pair(T(c.min), T(c.max)));
        // Seeds that no element beats survive, with their own index.
        min = T(5), max = T(60), minIndex = 77, maxIndex = 78;
        Api::MinAt(this->ops, d, c.start, c.end, &min, &minIndex);
        Api::MaxAt(this->ops, d, c.start, c.end, &max, &maxIndex);
        EXPECT_EQ(std::make_pair(minIndex, maxIndex), std::make_pair(77, 78));
        min = T(4), max = T(61);
        Api::Min(this->ops, d, c.start, c.end, &min);
        Api::Max(this->ops, d, c.start, c.end, &max);
        EXPECT_EQ(std::make_pair(min, max), std::make_pair(T(4), T(61)));
    }
}

TYPED_TEST(ArrayOperationsExportsTest, FreshRecordSeedsTheScanWithZeros) {
    const TypeParam data[2] = {TypeParam(5), TypeParam(6)};
    this->ExpectRecord(0, 0, TypeParam(0), TypeParam(0));
    ArrayApi<TypeParam>::MinMaxInto(this->ops, data, 0, 2, this->record);
    this->ExpectRecord(0, 1, TypeParam(0), TypeParam(6));
}

TYPED_TEST(ArrayOperationsExportsTest, RecordAccessorsNullsAndFailedAllocations) {
    using T = TypeParam;
    using Api = ArrayApi<T>;
    this->Seed(4, -9, T(7), T(120));
    this->ExpectRecord(4, -9, T(7), T(120));
    Api::SetMinIndex(nullptr, 1), Api::SetMaxIndex(nullptr, 1), Api::SetMin(nullptr, T(1)), Api::SetMax(nullptr, T(1));
    Api::DeleteRecord(nullptr), Api::Delete(nullptr);
    const T one = T(1);
    Api::MinMaxInto(this->ops, &one, 0, 1, nullptr);
    ExpectArgumentNull(Api::kNullRecordMessage);
    ExpectEveryAllocationFailureReported(Api::New, Api::Delete);
    ExpectEveryAllocationFailureReported(Api::NewRecord, Api::DeleteRecord);
}

TYPED_TEST(ArrayOperationsExportsTest, LookupsGiveAbsolutePositionsOrMinusOne) {
    using T = TypeParam;
    using Api = ArrayApi<T>;
    const T u[5] = {T(4), T(2), T(7), T(2), T(9)};
    EXPECT_EQ(Api::FindUnsorted(this->ops, u, 0, 5, T(2)), 1);
    EXPECT_EQ(Api::FindUnsorted(this->ops, u, 2, 5, T(2)), 3);
    const T s[6] = {T(1), T(3), T(3), T(5), T(8), T(8)};
    EXPECT_EQ(Api::FindSorted(this->ops, s, 0, 5, T(3)), 1);
    EXPECT_EQ(Api::FindSorted(this->ops, s, 0, 6, T(8)), 4);
    EXPECT_EQ(Api::FindSorted(this->ops, s, 0, 5, T(6)), -1);
    // Above the whole range the search lands on data[end] and compares it.
    EXPECT_EQ(Api::FindSorted(this->ops, s, 0, 4, T(8)), 4);
    EXPECT_EQ(Api::FindSorted(this->ops, s, 0, 3, T(5)), 3);
}

}  // namespace
