// The index vector as the bucket runs use it: exact reservation for a run,
// resize by half with zero fill, and growth on insertion.

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "interop/IntVector.h"

namespace qm {
namespace {

std::vector<std::int32_t> Elements(const IntVector& v) { return {v.data(), v.data() + v.size()}; }

template <class F>
void ExpectTooLong(F&& f) {
    try {
        f();
        ADD_FAILURE() << "no length failure";
    } catch (const std::length_error& e) {
        EXPECT_EQ(std::string(e.what()), "vector<T> too long");
    }
}

TEST(IntVectorReserveForAppend, ReservesExactlyOrFailsAboveTheLimit) {
    IntVector v = IntVector::Repeated(4, 10);
    const std::int32_t* storage = v.data();
    v.ReserveForAppend(0);
    EXPECT_EQ(v.capacity(), 10);
    EXPECT_EQ(v.data(), storage);
    v.ReserveForAppend(1);
    EXPECT_EQ(v.capacity(), 11);  // exact: no growth by half
    v.ReserveForAppend(5);
    EXPECT_EQ(Elements(v), std::vector<std::int32_t>(10, 4));
    v.ReserveForAppend(3);  // already there
    EXPECT_EQ(v.capacity(), 15);

    IntVector empty;
    ExpectTooLong([&] { empty.ReserveForAppend(0x40000000); });
    ExpectTooLong([&] { empty.ReserveForAppend(-1); });
    ExpectTooLong([&] { empty.ReserveForAppend(INT32_MIN); });
    IntVector ten = IntVector::Repeated(1, 10);
    ExpectTooLong([&] { ten.ReserveForAppend(0x3FFFFFF6); });  // 10 + that = 0x40000000
    ExpectTooLong([&] { ten.ReserveForAppend(-5); });          // carries: wanted 0xFFFFFFFF
    EXPECT_EQ(empty.capacity(), 0);
    EXPECT_EQ(Elements(ten), std::vector<std::int32_t>(10, 1));
}

TEST(IntVectorResize, GrowsByHalfNeverLessThanAskedAndFillsZeros) {
    IntVector v = IntVector::Repeated(7, 10);
    v.Resize(11);
    EXPECT_EQ(v.capacity(), 15);
    EXPECT_EQ(v[9], 7);
    EXPECT_EQ(v[10], 0);
    v.Resize(40);
    EXPECT_EQ(v.capacity(), 40);
    v.Resize(2);
    EXPECT_EQ(v.capacity(), 40);  // cutting keeps the storage
    EXPECT_EQ(Elements(v), (std::vector<std::int32_t>{7, 7}));
    // Growing again inside the capacity zeroes what an earlier size left.
    v.Resize(12);
    EXPECT_EQ(Elements(v), (std::vector<std::int32_t>{7, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    IntVector fresh;
    fresh.Resize(3);
    EXPECT_EQ(fresh.capacity(), 3);
    ExpectTooLong([&] { fresh.Resize(0x40000000u); });
    EXPECT_EQ(fresh.size(), 3);
}

TEST(IntVectorGrowth, InsertRangeUsesSpareRoomThenGrows) {
    IntVector v = IntVector::Repeated(0, 4);
    v.Reserve(8);
    const std::int32_t* storage = v.data();
    const std::int32_t two[] = {5, 6};
    v.InsertRange(1, two, 2);  // fits: no new storage
    EXPECT_EQ(v.data(), storage);
    EXPECT_EQ(Elements(v), (std::vector<std::int32_t>{0, 5, 6, 0, 0, 0}));
    const std::int32_t three[] = {1, 2, 3};
    v.InsertRange(6, three, 3);  // 6 + 3 > 8: grows to 8 + 4
    EXPECT_EQ(v.capacity(), 12);
    EXPECT_EQ(Elements(v), (std::vector<std::int32_t>{0, 5, 6, 0, 0, 0, 1, 2, 3}));
    const std::vector<std::int32_t> many(20, 4);
    v.InsertRange(0, many.data(), 20);  // 9 + 20 beats 12 + 6
    EXPECT_EQ(v.capacity(), 29);
    EXPECT_EQ(v[19], 4);
    EXPECT_EQ(v[20], 0);
    v.InsertRange(3, three, 0);
    EXPECT_EQ(v.size(), 29);
    ExpectTooLong([&] { v.InsertRange(0, three, 0x3FFFFFFF - 28); });
    EXPECT_EQ(v.size(), 29);
}

}  // namespace
}  // namespace qm
