#pragma once
// The lane-level pieces of the scans, over a set of lane operations `Ops`
// (see simd/LaneBasics.h): which element beats which, folding a vector's
// lanes onto one best, and finding the first lane a packed test selects.

#include <cstddef>
#include <cstdint>
#include <utility>

namespace qm::scan {

// Which element replaces the running value: strictly below (or above) it, so
// equal values, -0.0 against +0.0 and NaN on either side keep the running
// one. Beats works on scalars and on vectors alike.
template <class Ops>
struct Below {
    template <class A, class B>
    [[gnu::always_inline]] static auto Beats(A element, B running) {
        return running > element;
    }
    [[gnu::always_inline]] static auto Keep(typename Ops::V best, typename Ops::V e) { return Ops::Lower(best, e); }
};
template <class Ops>
struct Above {
    template <class A, class B>
    [[gnu::always_inline]] static auto Beats(A element, B running) {
        return element > running;
    }
    [[gnu::always_inline]] static auto Keep(typename Ops::V best, typename Ops::V e) { return Ops::Higher(best, e); }
};

// Lane i of the result is lane (i + kShift) mod kLanes of v; with kInBlocks
// the lane kShift further on within i's block of 16 bytes.
template <class Ops, std::int32_t kShift, bool kInBlocks, std::size_t... I>
[[gnu::always_inline]] inline typename Ops::V Rotate(typename Ops::V v, std::index_sequence<I...>) {
    constexpr std::size_t kBlock = kInBlocks ? 16 / sizeof(typename Ops::Element) : Ops::kLanes;
    return __builtin_shufflevector(v, v, static_cast<int>(I / kBlock * kBlock + (I % kBlock + kShift) % kBlock)...);
}

// Folds each half of the lanes onto the other until every lane holds the
// best of all; which of equal lanes survives does not matter, since the
// winner is searched in memory. Halves of 16 bytes or more move across the
// register; after them every block of 16 bytes holds the same lanes, so the
// rest fold within blocks, which the wide ISAs do in one cycle rather than
// three or four.
template <class Ops, class Rule, std::int32_t kHalf = Ops::kLanes / 2>
[[gnu::always_inline]] inline typename Ops::V FoldLanes(typename Ops::V v) {
    if constexpr (kHalf == 0) {
        return v;
    } else {
        constexpr bool kInBlocks = kHalf * sizeof(typename Ops::Element) < 16;
        return FoldLanes<Ops, Rule, kHalf / 2>(
            Rule::Keep(v, Rotate<Ops, kHalf, kInBlocks>(v, std::make_index_sequence<Ops::kLanes>{})));
    }
}

// `taken` if `take`, else `kept`, by arithmetic: a select on a condition
// that is as good as random, which neither a branch (mispredicted half the
// time) nor a vectorised reduction (packed through memory) serves.
[[gnu::always_inline]] inline std::int32_t Choose(bool take, std::int32_t taken, std::int32_t kept) {
    return kept ^ ((taken ^ kept) & -static_cast<std::int32_t>(take));
}

// Of kCount vectors' compare bits, the position of the first lane set,
// where vector v starts at at[v] and some lane is set: each vector with a
// lane set, from the last to the first, replaces the answer.
template <class Ops, std::size_t kCount>
[[gnu::always_inline]] inline std::int32_t FirstOf(const std::uint64_t (&bits)[kCount],
                                                   const std::int32_t (&at)[kCount]) {
    std::int32_t found = at[kCount - 1] + Ops::LaneOf(bits[kCount - 1]);
    for (std::size_t v = kCount - 1; v-- > 0;) found = Choose(bits[v] != 0, at[v] + Ops::LaneOf(bits[v]), found);
    return found;
}

// The first position of p[0, n) whose element `select` picks, when one is
// known to be there. Four vectors go to one test; the last eight (or four)
// are looked at together and end at p + n, overlapping where n is not a
// whole number of vectors. For n below a vector the one vector read ends
// at p + n: the scanned range goes on before p.
template <class Ops, class Select>
[[gnu::always_inline]] inline std::int32_t FirstSelectedIn(const typename Ops::Element* p, std::int32_t n,
                                                            Select select) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    const std::int32_t last = n - kLanes;
    std::int32_t k = 0;
    for (; n - k > 8 * kLanes; k += 4 * kLanes) {
        const auto m0 = select(Ops::Load(p + k)), m1 = select(Ops::Load(p + k + kLanes));
        const auto m2 = select(Ops::Load(p + k + 2 * kLanes)), m3 = select(Ops::Load(p + k + 3 * kLanes));
        if (Ops::Any((m0 | m1) | (m2 | m3))) {
            const std::uint64_t bits[4] = {Ops::ByteBits(m0), Ops::ByteBits(m1), Ops::ByteBits(m2), Ops::ByteBits(m3)};
            const std::int32_t at[4] = {k, k + kLanes, k + 2 * kLanes, k + 3 * kLanes};
            return FirstOf<Ops>(bits, at);
        }
    }
    auto lastAt = [&](std::int32_t v) { return k + v * kLanes < last ? k + v * kLanes : last; };
    auto bitsAt = [&](std::int32_t at) { return Ops::ByteBits(select(Ops::Load(p + at))); };
    if (n - k > 4 * kLanes) {
        const std::int32_t at[8] = {lastAt(0), lastAt(1), lastAt(2), lastAt(3), lastAt(4), lastAt(5), lastAt(6), last};
        const std::uint64_t bits[8] = {bitsAt(at[0]), bitsAt(at[1]), bitsAt(at[2]), bitsAt(at[3]),
                                       bitsAt(at[4]), bitsAt(at[5]), bitsAt(at[6]), bitsAt(at[7])};
        return FirstOf<Ops>(bits, at);
    }
    const std::int32_t at[4] = {lastAt(0), lastAt(1), lastAt(2), last};
    const std::uint64_t bits[4] = {bitsAt(at[0]), bitsAt(at[1]), bitsAt(at[2]), bitsAt(at[3])};
    return FirstOf<Ops>(bits, at);
}

// One bit per lane where a equals b, by the ISA's own compare into bits
// where it has one.
template <class Ops>
[[gnu::always_inline]] inline std::uint64_t EqualBits(typename Ops::V a, typename Ops::V b) {
    if constexpr (requires { Ops::EqualBits(a, b); })
        return Ops::EqualBits(a, b);
    else
        return Ops::LaneBits(Ops::Equal(a, b));
}

}  // namespace qm::scan
