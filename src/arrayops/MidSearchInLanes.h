#pragma once
// The Mid search of a range held in cache, by measures in lanes: every
// element's distance to the final middle measured in its type's own lanes,
// record by record (MidRecords.h) and without a branch, and then only the
// record that holds the least distance searched for its first element. For
// floating types and integers of up to 32 bits; what this cannot settle is
// left to the search by bound of NearestToMidScan.h. The band test and its
// visits cost about twice this read.

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "arrayops/LaneFolds.h"
#include "arrayops/LaneMagnitude.h"
#include "arrayops/MidRecords.h"
#include "arrayops/Midrange.h"
#include "arrayops/ScanStretches.h"

namespace qm::scan {

// The lines of what the caller reads next, asked for while a search runs
// from cache (a prefetch is a hint; it never faults): where the asking has
// got to, and where it stops.
struct LinesAhead {
    std::uintptr_t next = 0;
    std::uintptr_t end = 0;

    // Two more lines, while any are left: what a group of four vectors read
    // from cache makes room for.
    [[gnu::always_inline]] void AskTwo() {
        if (next < end) {
            __builtin_prefetch(reinterpret_cast<const void*>(next), 0, 2);
            __builtin_prefetch(reinterpret_cast<const void*>(next + kCacheLine), 0, 2);
            next += 2 * kCacheLine;
        }
    }

    // The share of a read of `bytes` that is passed over: half as many bytes.
    [[gnu::always_inline]] void AskShareOf(std::uintptr_t bytes) {
        const std::uintptr_t share = next + bytes / 2;
        for (; next < share && next < end; next += kCacheLine)
            __builtin_prefetch(reinterpret_cast<const void*>(next), 0, 2);
    }
};

template <class Ops>
class MidSearchInLanes {
public:
    using T = typename Ops::Element;
    using V = typename Ops::V;
    using Piece = MidPiece<Ops>;

    // Integers of up to 32 bits, whose distances to the middle are exact in
    // double, measure them in their own lanes (Exactly).
    static constexpr bool kExactInLanes = std::is_integral_v<T> && sizeof(T) <= sizeof(std::int32_t);

    // `pastL1`: whether the cached range is larger than L1.
    MidSearchInLanes(const T* y, LinesAhead& ahead, bool pastL1) : y_(y), ahead_(ahead), pastL1_(pastL1) {}

    // Floating types, when the middle is a T (as Max + Min halved nearly
    // always is): each record's least distance to it, lane by lane in the
    // type's own lanes, in one read without a branch. Where the least of
    // all, L, is exact (nearly always), the first element at it is the
    // answer. Otherwise the records that can reach the step above L are
    // searched with that step as the bound (`searchByBound(at, length,
    // bound, chosen)`). A lane distance is the exact distance rounded to T,
    // and rounding keeps order: the element that gives L lies less than half
    // a step of T above L, in double too, so the search finds it or a nearer
    // one, first of equals first; an element whose lane distance is above
    // the step lies at least that step away in double, and a bound it does
    // not beat cannot take it. False, with nothing chosen, when the middle
    // is no T or no distance is below DBL_MAX.
    template <class SearchByBound>
    bool FromLeastDistance(const Piece& piece, double mid, std::int32_t& chosen, SearchByBound&& searchByBound) const {
        const T middle = static_cast<T>(mid);
        if (!(static_cast<double>(middle) == mid)) return false;
        const FloatingMeasure measure{Ops::Splat(middle)};
        V least[kMidRecords];
        const T floor = MeasureRecords(piece, mid, least, measure);
        if (!(floor < std::numeric_limits<T>::infinity())) return false;
        if (LaneDistanceIsExact(floor, mid)) return FirstAtFloor(piece, least, floor, measure, chosen);
        const T step = Step(floor, true);
        const V stepLanes = Ops::Splat(step);
        // No distance of DBL_MAX or more counts (a Double step above it is infinite).
        double bound = static_cast<double>(step) < DBL_MAX ? static_cast<double>(step) : DBL_MAX;
        std::int32_t at = -1;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            if (Ops::Any(least[r] <= stepLanes)) searchByBound(piece.records[r].at, piece.records[r].length, bound, at);
        }
        if (at < 0) return false;
        chosen = at;
        return true;
    }

    // Integers of up to 32 bits: the same order as their distances, in their
    // own lanes and without the middle. Measured from the range's least
    // value (u = e - min, unsigned, in [0, R] where R = max - min), twice the
    // distance is |2u - R|; with h = R / 2 rounded down and h' = R - h, the
    // whole number min(u - h', h - u), where each difference wraps and the
    // one that does is the larger, is that distance rounded down, in the
    // same order. The least of them is then found first, and the first
    // element at it is the nearest. False when Max + Min wrapped (32 bits),
    // which leaves the middle outside the range.
    bool Exactly(const Piece& piece, double mid, T min, T max, std::int32_t& chosen) const {
        if (piece.count == 0 || Wrapped(mid, min, max)) return false;
        const IntegerMeasure measure = IntegerMeasure::Of(min, max);
        UV least[kMidRecords];
        const U floor = MeasureRecords(piece, mid, least, measure);
        return FirstAtFloor(piece, least, floor, measure, chosen);
    }

    // The n elements at p (n at most 64), held in kCount registers: e[v]
    // from position at[v], in order, overlapping where they agree, and
    // lanes past n, if any, holding p[0]. Their value range is [min, max].
    // Answers the position of the nearest element to `mid` by the same
    // measures, found among the registers without records; false, with
    // nothing chosen, where those do not settle it (64-bit integers, a
    // middle that is no T or wrapped, no lane distance below infinity).
    template <std::size_t kCount>
    static bool InRegisters(const V (&e)[kCount], const std::int32_t (&at)[kCount], const T* p, std::int32_t n,
                            double mid, T min, T max, std::int32_t& chosen) {
        if constexpr (std::is_floating_point_v<T>) {
            const T middle = static_cast<T>(mid);
            if (!(static_cast<double>(middle) == mid)) return false;
            const FloatingMeasure measure{Ops::Splat(middle)};
            const T floor = LeastInRegisters(e, measure);
            if (!(floor < std::numeric_limits<T>::infinity())) return false;
            if (LaneDistanceIsExact(floor, mid)) {
                chosen = FirstBit(BitsInRegisters(e, at, [&](V x) { return measure.Of(x) == floor - V{}; }));
                return true;
            }
            // As in FromLeastDistance, the nearest is among the elements
            // whose lane distance is at most the step above floor: those
            // few are measured exactly, in order, the first of equals kept.
            const T step = Step(floor, true);
            if (!(step < std::numeric_limits<T>::infinity())) return false;
            std::uint64_t bits = BitsInRegisters(e, at, [&](V x) { return measure.Of(x) <= step - V{}; });
            if (n < 64) bits &= (std::uint64_t{1} << n) - 1;  // the lanes past n repeat p[0]
            double best = DBL_MAX;
            for (; bits != 0; bits &= bits - 1) {
                const std::int32_t k = FirstBit(bits);
                const double d = DistanceToMid(p[k], mid);
                if (best > d) {
                    best = d;
                    chosen = k;
                }
            }
            return best < DBL_MAX;
        } else if constexpr (kExactInLanes) {
            if (Wrapped(mid, min, max)) return false;
            const IntegerMeasure measure = IntegerMeasure::Of(min, max);
            const auto floorLanes = LeastInRegisters(e, measure) - UV{};
            chosen = FirstBit(BitsInRegisters(e, at, [&](V x) { return measure.Of(x) == floorLanes; }));
            return true;
        } else {
            return false;
        }
    }

private:
    static constexpr std::int32_t kLanes = Ops::kLanes;

    using U = std::make_unsigned_t<std::conditional_t<kExactInLanes, T, int>>;
    struct UnsignedLanes {
        typedef U type __attribute__((vector_size(sizeof(V))));
    };
    using UV = typename UnsignedLanes::type;

    // Floating lanes against a middle m that is a T: |e - m| rounded to T,
    // a NaN element measuring as nothing.
    struct FloatingMeasure {
        using D = V;
        V m;
        static D None() { return Ops::Splat(std::numeric_limits<T>::infinity()); }
        [[gnu::always_inline]] D Of(V e) const { return scan::Magnitude<Ops>(e - m); }
        [[gnu::always_inline]] D Take(D less, V e) const { return scan::LowerMagnitude<Ops>(less, e - m); }
        [[gnu::always_inline]] static D Lower(D a, D b) { return Ops::Lower(a, b); }
    };

    // Integers of up to 32 bits in unsigned lanes, as Exactly has them.
    struct IntegerMeasure {
        using D = UV;
        UV high, low;
        static IntegerMeasure Of(T min, T max) {
            const U range = static_cast<U>(static_cast<U>(max) - static_cast<U>(min));
            const U below = static_cast<U>(range / 2), above = static_cast<U>(range - range / 2);
            const U base = static_cast<U>(min);
            return {static_cast<U>(base + above) - UV{}, static_cast<U>(base + below) - UV{}};
        }
        static D None() { return std::numeric_limits<U>::max() - UV{}; }
        [[gnu::always_inline]] D Of(V e) const {
            const UV up = (UV)e - high, down = low - (UV)e;
            return up < down ? up : down;
        }
        [[gnu::always_inline]] D Take(D less, V e) const { return Lower(less, Of(e)); }
        [[gnu::always_inline]] static D Lower(D a, D b) { return b < a ? b : a; }
    };

    // A 32-bit Max + Min that wrapped puts the middle outside the range.
    static bool Wrapped(double mid, T min, T max) {
        return mid != (static_cast<double>(max) + static_cast<double>(min)) * 0.5;
    }

    // The least lane of d in a few shuffles: a pass over the lanes one by
    // one is a chain of 64 compares for bytes.
    template <class Measure>
    [[gnu::always_inline]] static auto LeastLane(typename Measure::D d) {
        using D = typename Measure::D;
        struct Least {
            [[gnu::always_inline]] static V Keep(V a, V b) { return (V)Measure::Lower((D)a, (D)b); }
        };
        return ((D)FoldLanes<Ops, Least>((V)d))[0];
    }

    template <std::size_t kCount, class Measure>
    [[gnu::always_inline]] static auto LeastInRegisters(const V (&e)[kCount], const Measure& measure) {
        typename Measure::D least = Measure::None();
        for (std::size_t v = 0; v < kCount; ++v) least = measure.Take(least, e[v]);
        return LeastLane<Measure>(least);
    }

    // One bit per position of the registers whose lane `select` picks, as
    // the scans' short ranges find theirs.
    template <std::size_t kCount, class Select>
    [[gnu::always_inline]] static std::uint64_t BitsInRegisters(const V (&e)[kCount], const std::int32_t (&at)[kCount],
                                                                Select select) {
        std::uint64_t bits = 0;
        for (std::size_t v = 0; v < kCount; ++v) bits |= Ops::LaneBits(select(e[v])) << at[v];
        return bits;
    }

    // The first position set, of bits that have one.
    static std::int32_t FirstBit(std::uint64_t bits) {
        return static_cast<std::int32_t>(__builtin_ctzll(bits | (std::uint64_t{1} << 63)));
    }

    // A cached range larger than L1 is mostly in L2 when it is searched, and
    // a loop that waits for the L1 to ask for its lines reads L2 a fifth
    // slower than one that asks a few KiB ahead into L1 (lines past the range
    // cost only a little bandwidth). A range within L1 only loses by it.
    static constexpr std::uintptr_t kFromL2Ahead = 2048;

    // Whether every element whose lane distance is the least, `floor`, lies
    // exactly that far from the middle: none is then nearer, and the first
    // of them is the nearest, found without the search by bound. Double
    // measures in the distance's own arithmetic. Single rounds e - m, but an
    // element at most a quarter of |m| from m lies within half of m, where
    // the difference of two floats is exact (Sterbenz), and an element whose
    // exact distance is above floor measures above it (a float distance
    // rounds to floor only from within half a step of it). Only a distance
    // below DBL_MAX counts at all.
    static bool LaneDistanceIsExact(T floor, double mid) {
        if constexpr (sizeof(T) == sizeof(double)) return floor < DBL_MAX;
        return floor == 0 || static_cast<double>(floor) <= std::fabs(mid) * 0.25;
    }

    // The first element of the piece whose lane measure is `floor`: the
    // first record whose lanes reach it is searched for it. False when no
    // record's lanes do.
    template <class D, class Lane, class Measure>
    bool FirstAtFloor(const Piece& piece, const D (&least)[kMidRecords], Lane floor, const Measure& measure,
                      std::int32_t& chosen) const {
        const D floorLanes = floor - D{};
        std::int32_t r = 0;
        while (r < piece.count && !Ops::Any(least[r] == floorLanes)) ++r;
        if (r == piece.count) return false;
        const T* p = y_ + piece.records[r].at;
        const std::int32_t n = piece.records[r].length;
        if (n >= kLanes) {
            chosen = piece.records[r].at + FirstSelectedIn<Ops>(p, n, [&](V e) { return measure.Of(e) == floorLanes; });
            return true;
        }
        for (std::int32_t i = 0; i < n; ++i) {
            if (measure.Of(Ops::Splat(p[i]))[0] == floor) {
                chosen = piece.records[r].at + i;
                return true;
            }
        }
        return false;
    }

    // Each record's least measure (a lane of D per lane of V) lane by lane
    // into `least`, and the least of all. One read without a branch: four
    // chains, since one would wait on each minimum; the elements behind the
    // last whole vector measured one at a time in every lane.
    //
    // A record whose value range lies farther from `mid` than the nearer end
    // of some record's range holds nothing that near, and is not read: those
    // ends are elements, so that distance is reached. Its lanes stay `none`,
    // as do those of the records after the first that measures 0.
    // A bucket's values mostly cross the middle in a few of its stretches.
    template <class Measure, class D = typename Measure::D>
    auto MeasureRecords(const Piece& piece, double mid, D (&least)[kMidRecords], const Measure& measure) const {
        const D none = Measure::None();
        const auto take = [&measure](D less, V e) { return measure.Take(less, e); };
        const auto lower = [](D a, D b) { return Measure::Lower(a, b); };
        double reached = HUGE_VAL;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            const auto& record = piece.records[r];
            if (record.low > record.high) continue;
            const double low = DistanceToMid(record.low, mid), high = DistanceToMid(record.high, mid);
            const double nearerEnd = low < high ? low : high;
            if (reached > nearerEnd) reached = nearerEnd;
        }
        D all = none;
        // In registers, not behind the reference: a store and reload per
        // group would chain the loop's iterations.
        LinesAhead ahead = ahead_;
        const bool pastL1 = pastL1_;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            least[r] = none;
            const T* p = y_ + piece.records[r].at;
            const std::int32_t n = piece.records[r].length;
            if (LeastDistance(piece.records[r].low, piece.records[r].high, mid) > reached) {
                // Its share of the lines asked for ahead is asked for all the same.
                ahead.AskShareOf(static_cast<std::uintptr_t>(n) * sizeof(T));
                continue;
            }
            D l0 = none, l1 = none, l2 = none, l3 = none;
            std::int32_t i = 0;
            for (; n - i >= 4 * kLanes; i += 4 * kLanes) {
                ahead.AskTwo();
                if (pastL1) PrefetchGroupAhead<Ops, kFromL2Ahead>(p + i, false);
                l0 = take(l0, Ops::Load(p + i));
                l1 = take(l1, Ops::Load(p + i + kLanes));
                l2 = take(l2, Ops::Load(p + i + 2 * kLanes));
                l3 = take(l3, Ops::Load(p + i + 3 * kLanes));
            }
            for (; n - i >= kLanes; i += kLanes) l0 = take(l0, Ops::Load(p + i));
            for (; i < n; ++i) l1 = take(l1, Ops::Splat(p[i]));
            least[r] = lower(lower(l0, l1), lower(l2, l3));
            all = lower(all, least[r]);
            // Nothing measures below 0, so the first record that reaches it
            // holds the first nearest element, and the rest need not be
            // read: on data with few distinct values (integers from a
            // sensor, say) that is most of the search.
            if (Ops::Any(least[r] == D{})) {
                for (std::int32_t later = r + 1; later < piece.count; ++later) least[later] = none;
                break;
            }
        }
        ahead_ = ahead;
        return LeastLane<Measure>(all);
    }

    const T* y_;
    LinesAhead& ahead_;
    bool pastL1_;
};

}  // namespace qm::scan
