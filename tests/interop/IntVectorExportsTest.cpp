// The index vector as the managed side sees it. Its list exports run against
// a plain model (a std::vector, the growth rule written out) on random calls,
// many of them out of range: a wrong bound or order of checks, a wrong
// parameter name or report kind, an element moved wrongly, a capacity that
// grows by another rule or shrinks, a range whose end wraps, all show as a
// difference. The growth sequence is hand-checked by the C# tests, through
// the managed layer.

#include <algorithm>
#include <climits>
#include <random>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class IntVectorExportsTest : public InterfaceTest {};

TEST_F(IntVectorExportsTest, BehavesLikeItsModelOnRandomCalls) {
    std::mt19937 rng(4);
    VectorPtr v(CSharp_new_IntVector__SWIG_0());
    Ints model;
    std::int32_t capacity = 0;
    auto grow = [&](std::size_t needed) {  // by half, or to what is needed
        if (needed > static_cast<std::size_t>(capacity)) capacity = std::max(capacity + capacity / 2, static_cast<std::int32_t>(needed));
    };
    for (int step = 0; step < 5000; ++step) {
        const auto size = static_cast<std::int32_t>(model.size());
        auto around = [&] { return static_cast<std::int32_t>(rng() % static_cast<unsigned>(size + 5)) - 2; };
        const std::int32_t i = around(), n = rng() % 10 == 0 ? INT_MAX : around(), value = static_cast<std::int32_t>(rng() % 9);
        // GetRange, RemoveRange and Reverse check the index, the count, then the whole range.
        const std::optional<Report> range = i < 0 ? OutOfRange("index") : n < 0 ? OutOfRange("count")
                                            : std::int64_t{i} + n > size ? std::optional(Report{Report::Argument, -1, "invalid range", ""}) : std::nullopt;
        const auto at = model.begin() + std::clamp(i, 0, size), to = at + (range ? 0 : n);
        const bool inside = i >= 0 && i < size, insertable = i >= 0 && i <= size;
        const Ints three{value, value + 1, value + 2};
        const VectorPtr values = MakeVector(three);
        std::optional<Report> want;
        // The model's change when the index is valid, else the report "index".
        auto apply = [&](bool valid, auto change) { valid ? change() : void(want = OutOfRange("index")); };
        switch (rng() % 11) {
            case 0: CSharp_IntVector_Add(v.get(), value), grow(model.size() + 1), model.push_back(value); break;
            case 1: CSharp_IntVector_Insert(v.get(), i, value), apply(insertable, [&] { grow(model.size() + 1), model.insert(at, value); }); break;
            case 2:
                CSharp_IntVector_InsertRange(v.get(), i, values.get());
                apply(insertable, [&] { grow(model.size() + 3), model.insert(at, three.begin(), three.end()); });
                break;
            case 3: CSharp_IntVector_RemoveAt(v.get(), i), apply(inside, [&] { model.erase(at); }); break;
            case 4:
                CSharp_IntVector_RemoveRange(v.get(), i, n);
                if (!(want = range)) model.erase(at, to);
                break;
            case 5:
                CSharp_IntVector_Reverse__SWIG_1(v.get(), i, n);
                if (!(want = range)) std::reverse(at, to);
                break;
            case 6: {  // a new vector's capacity is its size
                const std::int32_t few = std::clamp(n, 0, 5);
                const VectorPtr got(CSharp_IntVector_GetRange(v.get(), i, n)), copy(CSharp_new_IntVector__SWIG_1(v.get())),
                    repeated(CSharp_IntVector_Repeat(value, few)), reserved(CSharp_new_IntVector__SWIG_2(few));
                EXPECT_EQ(got ? Contents(got.get()) : Ints{-1}, (want = range) ? Ints{-1} : Ints(at, to));
                EXPECT_EQ(got ? CSharp_IntVector_capacity(got.get()) : -1, range ? -1 : n);
                EXPECT_EQ(Contents(copy.get()), model);
                EXPECT_EQ(Contents(repeated.get()), Ints(static_cast<std::size_t>(few), value));
                EXPECT_EQ(Contents(reserved.get()), Ints{});
                EXPECT_EQ((Ints{CSharp_IntVector_capacity(copy.get()), CSharp_IntVector_capacity(repeated.get()), CSharp_IntVector_capacity(reserved.get())}),
                          (Ints{size, few, few}));
                break;
            }
            case 7:  // an overrun is "index" here, not an invalid range, and the sum cannot wrap
                CSharp_IntVector_SetRange(v.get(), i, values.get());
                apply(i >= 0 && std::int64_t{i} + 3 <= size, [&] { std::copy(three.begin(), three.end(), at); });
                break;
            case 8: CSharp_IntVector_setitem(v.get(), i, value), apply(inside, [&] { *at = value; }); break;
            case 9:
                apply(inside, [] {});
                EXPECT_EQ(CSharp_IntVector_getitem(v.get(), i), inside ? *at : 0);
                break;
            default: {
                const auto first = std::find(model.begin(), model.end(), value);
                const auto last = std::find(model.rbegin(), model.rend(), value);
                const bool found = first != model.end();
                EXPECT_EQ((Ints{CSharp_IntVector_Contains(v.get(), value), CSharp_IntVector_IndexOf(v.get(), value),
                                CSharp_IntVector_LastIndexOf(v.get(), value), CSharp_IntVector_Remove(v.get(), value)}),
                          (Ints{found, found ? static_cast<std::int32_t>(first - model.begin()) : -1,
                                found ? static_cast<std::int32_t>(model.rend() - last - 1) : -1, found}));
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
