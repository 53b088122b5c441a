// The index vector as the managed side sees it. Every list export runs
// against a plain model (a std::vector, and the growth rule written out) on
// random calls, many of them out of range: a wrong bound or order of checks,
// a wrong parameter name or report kind, an element moved wrongly, a capacity
// that grows by another rule or shrinks, a range whose end wraps, all show as
// a difference. The growth sequence and the constructors are checked by hand.

#include <algorithm>
#include <climits>
#include <random>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class IntVectorExportsTest : public InterfaceTest {};

TEST_F(IntVectorExportsTest, GrowsByHalfAndCopiesHaveCapacityEqualToSize) {
    VectorPtr v(CSharp_new_IntVector__SWIG_0());
    Ints capacities{CSharp_IntVector_capacity(v.get())};
    for (std::int32_t i = 0; i < 28; ++i) {
        CSharp_IntVector_Add(v.get(), i);
        if (capacities.back() != CSharp_IntVector_capacity(v.get())) capacities.push_back(CSharp_IntVector_capacity(v.get()));
    }
    EXPECT_EQ(capacities, (Ints{0, 1, 2, 3, 4, 6, 9, 13, 19, 28}));
    const VectorPtr copy(CSharp_new_IntVector__SWIG_1(v.get())), repeated(CSharp_IntVector_Repeat(-7, 3)),
        reserved(CSharp_new_IntVector__SWIG_2(5)), none(CSharp_new_IntVector__SWIG_2(0));
    EXPECT_EQ(Contents(copy.get()), Contents(v.get()));
    EXPECT_EQ(CSharp_IntVector_capacity(copy.get()), 28);
    EXPECT_EQ(Contents(repeated.get()), (Ints{-7, -7, -7}));
    EXPECT_EQ(CSharp_IntVector_capacity(repeated.get()), 3);
    EXPECT_EQ(CSharp_IntVector_capacity(reserved.get()) + CSharp_IntVector_size(reserved.get()), 5);
    EXPECT_EQ(CSharp_IntVector_capacity(none.get()), 0);
    EXPECT_EQ(CSharp_new_IntVector__SWIG_2(-1), nullptr);
    ExpectReport(OutOfRange("capacity"));
    EXPECT_EQ(CSharp_IntVector_Repeat(1, -1), nullptr);
    ExpectReport(OutOfRange("count"));
}

TEST_F(IntVectorExportsTest, BehavesLikeItsModelOnRandomCalls) {
    std::mt19937 rng(4);
    VectorPtr v(CSharp_new_IntVector__SWIG_0());
    Ints model;
    std::int32_t capacity = 0;
    auto grow = [&](std::size_t needed) {
        if (needed > static_cast<std::size_t>(capacity))
            capacity = std::max(capacity + capacity / 2, static_cast<std::int32_t>(needed));
    };
    for (int step = 0; step < 5000; ++step) {
        const auto size = static_cast<std::int32_t>(model.size());
        const std::int32_t i = static_cast<std::int32_t>(rng() % static_cast<unsigned>(size + 5)) - 2;
        const std::int32_t n = rng() % 10 == 0 ? INT_MAX : static_cast<std::int32_t>(rng() % static_cast<unsigned>(size + 5)) - 2;
        const std::int32_t value = static_cast<std::int32_t>(rng() % 9);
        // GetRange, RemoveRange and Reverse check the index, the count, then the whole range.
        const std::optional<Report> range = i < 0 ? OutOfRange("index") : n < 0 ? OutOfRange("count")
                                            : std::int64_t{i} + n > size ? std::optional(InvalidRange()) : std::nullopt;
        const auto at = model.begin() + std::clamp(i, 0, size), to = at + (range ? 0 : n);
        const bool inside = i >= 0 && i < size, insertable = i >= 0 && i <= size;
        const Ints three{value, value + 1, value + 2};
        const VectorPtr values = MakeVector(three);
        std::optional<Report> want;
        switch (rng() % 11) {
            case 0: CSharp_IntVector_Add(v.get(), value), grow(model.size() + 1), model.push_back(value); break;
            case 1:
                CSharp_IntVector_Insert(v.get(), i, value);
                if (!insertable) want = OutOfRange("index"); else grow(model.size() + 1), model.insert(at, value);
                break;
            case 2:
                CSharp_IntVector_InsertRange(v.get(), i, values.get());
                if (!insertable) want = OutOfRange("index"); else grow(model.size() + 3), model.insert(at, three.begin(), three.end());
                break;
            case 3:
                CSharp_IntVector_RemoveAt(v.get(), i);
                if (!inside) want = OutOfRange("index"); else model.erase(at);
                break;
            case 4:
                CSharp_IntVector_RemoveRange(v.get(), i, n);
                if (!(want = range)) model.erase(at, to);
                break;
            case 5:
                CSharp_IntVector_Reverse__SWIG_1(v.get(), i, n);
                if (!(want = range)) std::reverse(at, to);
                break;
            case 6: {
                const VectorPtr got(CSharp_IntVector_GetRange(v.get(), i, n));
                want = range;
                EXPECT_EQ(got == nullptr, range.has_value());
                if (got) {
                    EXPECT_EQ(Contents(got.get()), Ints(at, to));
                    EXPECT_EQ(CSharp_IntVector_capacity(got.get()), n);
                }
                break;
            }
            case 7:  // the overrun of SetRange is "index", not an invalid range, and cannot wrap
                CSharp_IntVector_SetRange(v.get(), i, values.get());
                if (i < 0 || static_cast<std::uint32_t>(i) + 3 > static_cast<std::uint32_t>(size)) want = OutOfRange("index"); else std::copy(three.begin(), three.end(), at);
                break;
            case 8:
                CSharp_IntVector_setitem(v.get(), i, value);
                if (!inside) want = OutOfRange("index"); else *at = value;
                break;
            case 9:
                EXPECT_EQ(CSharp_IntVector_getitem(v.get(), i), inside ? *at : 0);
                if (!inside) want = OutOfRange("index");
                break;
            default: {
                const auto first = std::find(model.begin(), model.end(), value);
                const auto last = std::find(model.rbegin(), model.rend(), value);
                const bool found = first != model.end();
                EXPECT_EQ(CSharp_IntVector_Contains(v.get(), value), found ? 1 : 0);
                EXPECT_EQ(CSharp_IntVector_IndexOf(v.get(), value), found ? first - model.begin() : -1);
                EXPECT_EQ(CSharp_IntVector_LastIndexOf(v.get(), value), found ? model.rend() - last - 1 : -1);
                EXPECT_EQ(CSharp_IntVector_Remove(v.get(), value), found ? 1 : 0);
                if (found) model.erase(first);
                if (n >= 0 && n != INT_MAX) CSharp_IntVector_reserve(v.get(), static_cast<std::uint32_t>(n)), capacity = std::max(capacity, n);
            }
        }
        want ? ExpectReport(*want) : ExpectReports({});
        ASSERT_EQ(Contents(v.get()), model) << "step " << step;
        ASSERT_EQ(CSharp_IntVector_capacity(v.get()), capacity) << "step " << step;
        if (model.size() > 40) CSharp_IntVector_Clear(v.get()), model.clear();  // keeps the capacity
    }
}

}  // namespace
