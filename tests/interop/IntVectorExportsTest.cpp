// The index vector as the managed side sees it: growth by half, exact
// reservation, the list operations and every range check with the parameter
// name or message the managed exceptions are built from.

#include <climits>
#include <utility>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class IntVectorExportsTest : public InterfaceTest {};

constexpr const char* kConstVectorNull = "std::vector< int > const & type is null";

// Elements and capacity together.
using Shape = std::pair<Ints, std::int32_t>;
Shape ShapeOf(const VectorPtr& v) { return {Contents(v.get()), CSharp_IntVector_capacity(v.get())}; }

TEST_F(IntVectorExportsTest, AddGrowsByHalfStartingFromOne) {
    VectorPtr v(CSharp_new_IntVector__SWIG_0());
    Ints capacities{CSharp_IntVector_capacity(v.get())};
    for (std::int32_t i = 0; i < 28; ++i) {
        CSharp_IntVector_Add(v.get(), i * 3);
        if (capacities.back() != CSharp_IntVector_capacity(v.get()))
            capacities.push_back(CSharp_IntVector_capacity(v.get()));
    }
    EXPECT_EQ(capacities, (Ints{0, 1, 2, 3, 4, 6, 9, 13, 19, 28}));
    EXPECT_EQ(CSharp_IntVector_getitem(v.get(), 27), 81);
    CSharp_delete_IntVector(nullptr);
}

TEST_F(IntVectorExportsTest, ReserveIsExactAndCapacityNeverShrinks) {
    VectorPtr v(CSharp_new_IntVector__SWIG_2(7));
    EXPECT_EQ(ShapeOf(v), (Shape{{}, 7}));
    for (std::int32_t i = 0; i < 3; ++i) CSharp_IntVector_Add(v.get(), i);
    CSharp_IntVector_reserve(v.get(), 5);
    EXPECT_EQ(ShapeOf(v), (Shape{{0, 1, 2}, 7}));
    CSharp_IntVector_reserve(v.get(), 10);
    EXPECT_EQ(ShapeOf(v), (Shape{{0, 1, 2}, 10}));
    for (std::int32_t i = 3; i < 11; ++i) CSharp_IntVector_Add(v.get(), i);
    EXPECT_EQ(CSharp_IntVector_capacity(v.get()), 15);
    CSharp_IntVector_RemoveAt(v.get(), 0);
    CSharp_IntVector_RemoveRange(v.get(), 0, 4);
    EXPECT_EQ(CSharp_IntVector_Remove(v.get(), 10), 1);
    EXPECT_EQ(ShapeOf(v), (Shape{{5, 6, 7, 8, 9}, 15}));
    CSharp_IntVector_Clear(v.get());
    EXPECT_EQ(ShapeOf(v), (Shape{{}, 15}));
}

TEST_F(IntVectorExportsTest, CopiesRangesAndRepeatsHaveCapacityEqualToSize) {
    VectorPtr v = MakeVector({1, 2, 3, 4, 5});
    EXPECT_EQ(ShapeOf(v), (Shape{{1, 2, 3, 4, 5}, 6}));
    EXPECT_EQ(ShapeOf(VectorPtr(CSharp_new_IntVector__SWIG_1(v.get()))), (Shape{{1, 2, 3, 4, 5}, 5}));
    EXPECT_EQ(ShapeOf(VectorPtr(CSharp_IntVector_GetRange(v.get(), 1, 3))), (Shape{{2, 3, 4}, 3}));
    EXPECT_EQ(ShapeOf(VectorPtr(CSharp_IntVector_Repeat(-7, 3))), (Shape{{-7, -7, -7}, 3}));
    VectorPtr none(CSharp_IntVector_Repeat(-7, 0));
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(ShapeOf(none), (Shape{{}, 0}));
    EXPECT_EQ(ShapeOf(VectorPtr(CSharp_new_IntVector__SWIG_2(0))), (Shape{{}, 0}));

    EXPECT_EQ(CSharp_IntVector_Repeat(-7, -1), nullptr);
    ExpectOutOfRange("count");
    EXPECT_EQ(CSharp_new_IntVector__SWIG_2(-1), nullptr);
    ExpectOutOfRange("capacity");
    EXPECT_EQ(CSharp_new_IntVector__SWIG_1(nullptr), nullptr);
    ExpectArgumentNull(kConstVectorNull);
}

TEST_F(IntVectorExportsTest, ElementAccessChecksTheIndexAndReportsNoMessage) {
    VectorPtr v = MakeVector({10, 20, 30});
    EXPECT_EQ(CSharp_IntVector_getitem(v.get(), 2), 30);
    EXPECT_EQ(CSharp_IntVector_getitemcopy(v.get(), 0), 10);
    CSharp_IntVector_setitem(v.get(), 1, 99);
    EXPECT_EQ(CSharp_IntVector_getitem(v.get(), 3), 0);
    ExpectOutOfRange("index");
    EXPECT_EQ(CSharp_IntVector_getitemcopy(v.get(), -1), 0);
    ExpectOutOfRange("index");
    CSharp_IntVector_setitem(v.get(), 3, 1);
    ExpectOutOfRange("index");
    CSharp_IntVector_RemoveAt(v.get(), 3);
    ExpectOutOfRange("index");
    EXPECT_EQ(Contents(v.get()), (Ints{10, 99, 30}));
}

TEST_F(IntVectorExportsTest, InsertAcceptsTheEndAndRejectsBeyondIt) {
    VectorPtr v = MakeVector({1, 2, 3});
    CSharp_IntVector_Insert(v.get(), 3, 4);
    EXPECT_EQ(ShapeOf(v), (Shape{{1, 2, 3, 4}, 4}));
    CSharp_IntVector_Insert(v.get(), 0, 0);
    CSharp_IntVector_Insert(v.get(), 2, 9);
    EXPECT_EQ(ShapeOf(v), (Shape{{0, 1, 9, 2, 3, 4}, 6}));
    for (std::int32_t index : {7, -1}) {
        CSharp_IntVector_Insert(v.get(), index, 5);
        ExpectOutOfRange("index");
    }
    VectorPtr values = MakeVector({7, 8});
    CSharp_IntVector_InsertRange(v.get(), 6, values.get());
    CSharp_IntVector_InsertRange(v.get(), 1, values.get());
    EXPECT_EQ(Contents(v.get()), (Ints{0, 7, 8, 1, 9, 2, 3, 4, 7, 8}));
    CSharp_IntVector_InsertRange(v.get(), 11, values.get());
    ExpectOutOfRange("index");
    CSharp_IntVector_InsertRange(v.get(), 0, nullptr);
    ExpectArgumentNull(kConstVectorNull);
    EXPECT_EQ(CSharp_IntVector_size(v.get()), 10);

}

TEST_F(IntVectorExportsTest, RangeChecksRunInOrder) {
    VectorPtr v = MakeVector({10, 20, 30, 40, 50});
    EXPECT_EQ(ShapeOf(VectorPtr(CSharp_IntVector_GetRange(v.get(), 5, 0))), (Shape{{}, 0}));
    EXPECT_EQ(CSharp_IntVector_GetRange(v.get(), 6, 0), nullptr);
    ExpectInvalidRange();
    EXPECT_EQ(CSharp_IntVector_GetRange(v.get(), -1, -1), nullptr);
    ExpectOutOfRange("index");
    EXPECT_EQ(CSharp_IntVector_GetRange(v.get(), 0, -1), nullptr);
    ExpectOutOfRange("count");
    EXPECT_EQ(CSharp_IntVector_GetRange(v.get(), 3, 3), nullptr);
    ExpectInvalidRange();
    EXPECT_EQ(CSharp_IntVector_GetRange(v.get(), 0, INT32_MAX), nullptr);
    ExpectInvalidRange();
    CSharp_IntVector_RemoveRange(v.get(), 6, 0);
    ExpectInvalidRange();
    CSharp_IntVector_RemoveRange(v.get(), 1, -1);
    ExpectOutOfRange("count");
    CSharp_IntVector_Reverse__SWIG_1(v.get(), 4, 2);
    ExpectInvalidRange();
    CSharp_IntVector_Reverse__SWIG_1(v.get(), -1, 2);
    ExpectOutOfRange("index");
    EXPECT_EQ(Contents(v.get()), (Ints{10, 20, 30, 40, 50}));

}

TEST_F(IntVectorExportsTest, RemoveRangeReverseAndSetRangeWorkInPlace) {
    VectorPtr v = MakeVector({1, 2, 3, 4, 5, 6});
    CSharp_IntVector_RemoveRange(v.get(), 2, 0);
    CSharp_IntVector_Reverse__SWIG_1(v.get(), 1, 0);
    CSharp_IntVector_Reverse__SWIG_1(v.get(), 1, 1);
    EXPECT_EQ(Contents(v.get()), (Ints{1, 2, 3, 4, 5, 6}));
    CSharp_IntVector_RemoveRange(v.get(), 1, 2);
    CSharp_IntVector_Reverse__SWIG_1(v.get(), 1, 3);
    EXPECT_EQ(Contents(v.get()), (Ints{1, 6, 5, 4}));
    CSharp_IntVector_Reverse__SWIG_0(v.get());
    EXPECT_EQ(ShapeOf(v), (Shape{{4, 5, 6, 1}, 6}));

    VectorPtr values = MakeVector({8, 9});
    VectorPtr nothing = MakeVector({});
    CSharp_IntVector_SetRange(v.get(), 2, values.get());
    CSharp_IntVector_SetRange(v.get(), 4, nothing.get());
    CSharp_IntVector_SetRange(v.get(), 0, v.get());  // overlaps itself completely
    EXPECT_EQ(Contents(v.get()), (Ints{4, 5, 8, 9}));
    // Overrun is "index", not "invalid range"; the sum is unsigned, so a huge
    // index cannot wrap past the check.
    for (std::int32_t index : {3, -1, INT32_MAX}) {
        CSharp_IntVector_SetRange(v.get(), index, values.get());
        ExpectOutOfRange("index");
    }
    CSharp_IntVector_SetRange(v.get(), 0, nullptr);
    ExpectArgumentNull(kConstVectorNull);
    EXPECT_EQ(Contents(v.get()), (Ints{4, 5, 8, 9}));
}

TEST_F(IntVectorExportsTest, AddRangeAppendsAndGrowsByHalfOrToFit) {
    VectorPtr v = MakeVector({1, 2, 3});
    VectorPtr two = MakeVector({4, 5});
    VectorPtr one = MakeVector({6});
    CSharp_IntVector_AddRange(v.get(), two.get());
    EXPECT_EQ(CSharp_IntVector_capacity(v.get()), 5);
    CSharp_IntVector_AddRange(v.get(), one.get());
    EXPECT_EQ(CSharp_IntVector_capacity(v.get()), 7);
    CSharp_IntVector_reserve(v.get(), 20);
    CSharp_IntVector_AddRange(v.get(), two.get());
    EXPECT_EQ(ShapeOf(v), (Shape{{1, 2, 3, 4, 5, 6, 4, 5}, 20}));
    CSharp_IntVector_AddRange(v.get(), nullptr);
    ExpectArgumentNull(kConstVectorNull);
    EXPECT_EQ(CSharp_IntVector_size(v.get()), 8);
}

TEST_F(IntVectorExportsTest, SearchesUsePlainEqualityFromEitherEnd) {
    VectorPtr empty = MakeVector({});
    EXPECT_EQ((Ints{CSharp_IntVector_Contains(empty.get(), 0), CSharp_IntVector_IndexOf(empty.get(), 0),
                    CSharp_IntVector_LastIndexOf(empty.get(), 0), CSharp_IntVector_Remove(empty.get(), 0)}),
              (Ints{0, -1, -1, 0}));
    VectorPtr v = MakeVector({4, 7, 4, -9});
    EXPECT_EQ((Ints{CSharp_IntVector_Contains(v.get(), 4), CSharp_IntVector_Contains(v.get(), 5),
                    CSharp_IntVector_IndexOf(v.get(), 4), CSharp_IntVector_IndexOf(v.get(), 5),
                    CSharp_IntVector_LastIndexOf(v.get(), 4), CSharp_IntVector_LastIndexOf(v.get(), -9)}),
              (Ints{1, 0, 0, -1, 2, 3}));
    EXPECT_EQ(CSharp_IntVector_Remove(v.get(), 4), 1);
    EXPECT_EQ(CSharp_IntVector_Remove(v.get(), 5), 0);
    EXPECT_EQ(ShapeOf(v), (Shape{{7, 4, -9}, 4}));
}

}  // namespace
