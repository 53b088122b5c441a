#pragma once
// The running extremes of the scans (ScanKernels.h): the chains of lane
// bests a stretch feeds, the test after each stretch of whether it beat the
// running value, and the final search of the last stretch that did.

#include <cstddef>
#include <cstdint>

#include "arrayops/LaneFolds.h"

namespace qm::scan {

// One running extreme with the position it came from. Only `value` and
// `index` mean anything before Start; the rest is set there.
template <class Ops, class Rule>
struct Extreme {
    using T = typename Ops::Element;
    using V = typename Ops::V;

    Extreme(T seed, std::int32_t seedIndex) : value(seed), index(seedIndex) {}

    T value;
    std::int32_t index;
    V c0, c1, c2, c3;          // the chains
    V running;                 // the running value in every lane
    const T* won;              // the last stretch that beat the running value
    std::int32_t wonAt;        // its position
    std::int32_t wonLength;

    void Visit(T e, std::int32_t i) {
        if (Rule::Beats(e, value)) {
            value = e;
            index = i;
        }
    }

    [[gnu::always_inline]] void Start() {
        running = Ops::Splat(value);
        c0 = c1 = c2 = c3 = running;
        won = nullptr;
        wonAt = wonLength = 0;
    }

    template <std::int32_t kChain>
    [[gnu::always_inline]] void Take(V e) {
        V& c = kChain == 0 ? c0 : kChain == 1 ? c1 : kChain == 2 ? c2 : c3;
        c = Rule::Keep(c, e);
    }

    // After the stretch of n elements at p (position at): did it beat the
    // running value? The chains hold everything so far, and every lane of
    // them is at best equal to the running value until this stretch, so a
    // lane that beats it came from this stretch.
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) {
        const V merged = Rule::Keep(Rule::Keep(c0, c1), Rule::Keep(c2, c3));
        if (!Ops::Any(Rule::Beats(merged, running))) return;
        running = FoldLanes<Ops, Rule>(merged);
        won = p;
        wonAt = at;
        wonLength = n;
    }

    // A short range, whose kCount vectors (at p + at[v], in order) are all
    // held in registers: their best against the running value, and the
    // winner found among the registers without reading them again. Each
    // chain starts from the running value, so NaN never enters a lane.
    template <std::size_t kCount>
    [[gnu::always_inline]] void TakeShort(const V (&e)[kCount], const std::int32_t (&at)[kCount], const T* p,
                                          std::int32_t position) {
        constexpr std::size_t kUsed = kCount < 4 ? kCount : 4;
        const V seed = Ops::Splat(value);
        V chains[kUsed];
        for (std::size_t v = 0; v < kUsed; ++v) chains[v] = Rule::Keep(seed, e[v]);
        for (std::size_t v = 4; v < kCount; ++v) chains[v - 4] = Rule::Keep(chains[v - 4], e[v]);
        V merged = chains[0];
        if constexpr (kUsed == 4)
            merged = Rule::Keep(Rule::Keep(chains[0], chains[1]), Rule::Keep(chains[2], chains[3]));
        else if constexpr (kUsed == 2) merged = Rule::Keep(chains[0], chains[1]);
        const V final = FoldLanes<Ops, Rule>(merged);
        if (!Rule::Beats(final[0], value)) return;
        // One bit per position (the range is at most 64 long), each
        // vector's lanes at its own place, so the first set bit is the
        // winner; where vectors overlap they agree.
        std::uint64_t bits = 0;
        for (std::size_t v = 0; v < kCount; ++v) bits |= EqualBits<Ops>(e[v], final) << at[v];
        const auto k = static_cast<std::int32_t>(__builtin_ctzll(bits | (std::uint64_t{1} << 63)));
        value = p[k];
        index = position + k;
    }

    // The winner is the first element of the last stretch that won equal to
    // the final value; its value is read back, so that of -0.0 and +0.0 the
    // first one's sign stays.
    [[gnu::always_inline]] void Finish() {
        if (won == nullptr) return;
        const V final = running;
        const std::int32_t k = FirstSelectedIn<Ops>(won, wonLength, [final](V e) { return Ops::Equal(e, final); });
        value = won[k];
        index = wonAt + k;
        won = nullptr;
    }
};

// A scan for one extreme.
template <class Ops, class Rule>
struct OneSide {
    using T = typename Ops::Element;
    Extreme<Ops, Rule> side;
    void Visit(T e, std::int32_t i) { side.Visit(e, i); }
    [[gnu::always_inline]] void Start() { side.Start(); }
    static constexpr std::int32_t kSides = 1;
    template <std::int32_t kChain, std::int32_t kSide>
    [[gnu::always_inline]] void Take(typename Ops::V e) {
        side.template Take<kChain>(e);
    }
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) { side.EndStretch(p, at, n); }
    [[gnu::always_inline]] void Finish() { side.Finish(); }
    template <std::size_t kCount>
    [[gnu::always_inline]] void TakeShort(const typename Ops::V (&e)[kCount], const std::int32_t (&at)[kCount],
                                          const T* p, std::int32_t position) {
        side.TakeShort(e, at, p, position);
    }
};

template <class Ops>
using MinScan = OneSide<Ops, Below<Ops>>;
template <class Ops>
using MaxScan = OneSide<Ops, Above<Ops>>;

// Both extremes at once, from one read of each vector (the stretches hold
// it in a register for both sides); the two sides never influence each
// other, so the element order of their tests (Max first) cannot change a
// result.
template <class Ops>
struct MinMaxScan {
    using T = typename Ops::Element;
    Extreme<Ops, Below<Ops>> min;
    Extreme<Ops, Above<Ops>> max;

    void Visit(T e, std::int32_t i) {
        max.Visit(e, i);
        min.Visit(e, i);
    }
    [[gnu::always_inline]] void Start() {
        min.Start();
        max.Start();
    }
    static constexpr std::int32_t kSides = 2;
    template <std::int32_t kChain, std::int32_t kSide>
    [[gnu::always_inline]] void Take(typename Ops::V e) {
        if constexpr (kSide == 0)
            min.template Take<kChain>(e);
        else
            max.template Take<kChain>(e);
    }
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) {
        max.EndStretch(p, at, n);
        min.EndStretch(p, at, n);
    }
    [[gnu::always_inline]] void Finish() {
        max.Finish();
        min.Finish();
    }
    template <std::size_t kCount>
    [[gnu::always_inline]] void TakeShort(const typename Ops::V (&e)[kCount], const std::int32_t (&at)[kCount],
                                          const T* p, std::int32_t position) {
        max.TakeShort(e, at, p, position);
        min.TakeShort(e, at, p, position);
    }
};

}  // namespace qm::scan
