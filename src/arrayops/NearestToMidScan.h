#pragma once
// The Mid search in one read of the data: the element nearest to the middle
// of the range's values, (Max + Min) / 2, where the first of equally near
// elements wins and a piece with no distance below DBL_MAX answers its own
// start. Written once over a set of lane operations `Ops`.
//
// The middle is known only at the end, so the search is speculative. The
// range goes in stretches of 16 KiB; each is read from memory once, and in
// that one pass gives its minimum and maximum and is searched against the
// middle of everything before it, for elements nearer than the best one
// known (a packed test against the band of values that can be that near
// passes over most vectors). A record keeps each stretch's value range, the
// middle it was searched against and what it found. Stale stretches are
// searched again at the end, from L2 for buckets of up to a few hundred KiB.
//
// At the end each piece is settled from its last stretch back to its
// first, where the stretches just read are still in the nearest cache; an
// earlier stretch takes over on an element at least as near, so the first
// nearest wins. A stretch searched against the final middle gives its
// answer as it stands: it looked for everything nearer than an earlier
// element, and anything not nearer than that cannot be the first nearest.
// Any other stretch is searched again only if its value range could hold
// an element at least as near as the best distance known to be reached (an
// element of a valid stretch, or the answer of a stale one measured again);
// what it cannot hold, it cannot win.
//
// A range of up to half an L2 (most buckets; CacheSizes.h) skips the
// speculation: one read takes the value range of each short stretch, and
// the search against the final middle then runs from cache, first in the
// stretch read last of those that can come nearest and then only in
// stretches whose values can come as near. That costs less than searching
// against a middle that still moves. Floating types and integers of up to
// 32 bits first measure every element's distance in their own lanes without
// a branch, and then search only the stretches that hold the least one: the
// band test and its visits cost about twice that read. The measuring stops
// at the first stretch that reaches a distance nothing can be below (an
// integer's nearest, a float equal to the middle), which on data with
// repeated values is early.
//
// A range of two pieces (a ring buffer's wrapped bucket) has one middle but
// its own nearest element per piece, the second piece starting afresh. The
// variant that stops at NaN ends the range in front of its first NaN.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "arrayops/LaneFolds.h"
#include "arrayops/MidBandSearch.h"
#include "arrayops/Midrange.h"
#include "arrayops/ScanStretches.h"
#include "arrayops/ScanTable.h"
#include "model/CacheSizes.h"

namespace qm::scan {

template <class Ops, bool kStopAtNaN>
class NearestToMidScan {
public:
    using T = typename Ops::Element;
    using V = typename Ops::V;

    static NearestAnswer Run(const T* y, const ScanPieces& pieces) {
        std::int64_t total = 0;
        for (std::int32_t k = 0; k < pieces.count; ++k) total += pieces.end[k] - pieces.start[k];
        if (total * static_cast<std::int64_t>(sizeof(T)) <= MidCachedBytes()) return RunFromCache(y, pieces);
        NearestToMidScan scan(y);
        NearestAnswer answer{};
        const std::int32_t read = scan.ReadPieces(pieces, answer, &NearestToMidScan::Speculate);
        answer.mid = Midpoint(scan.max_, scan.min_);
        for (std::int32_t k = 0; k < read; ++k) scan.Settle(k, answer.mid, answer.chosen[k]);
        return answer;
    }

private:
    static constexpr std::int64_t kL1Bytes = 32 * 1024;  // the L1 data cache of most x86-64 cores

    // Reads the pieces in order with `read(k, start, end)`, which answers
    // where it stopped (short of the end only in front of a NaN, which ends
    // the range); each piece answers its own start until it is settled.
    // Answers how many pieces were read.
    std::int32_t ReadPieces(const ScanPieces& pieces, NearestAnswer& answer,
                            std::int32_t (NearestToMidScan::*read)(std::int32_t, std::int32_t, std::int32_t)) {
        answer.stop = pieces.end[pieces.count - 1];
        for (std::int32_t k = 0; k < pieces.count; ++k) {
            answer.chosen[k] = pieces.start[k];
            const std::int32_t stop = (this->*read)(k, pieces.start[k], pieces.end[k]);
            if (stop != pieces.end[k]) {
                answer.stop = stop;
                return k + 1;
            }
        }
        return pieces.count;
    }

    // A range that stays in cache after one read: its value range first,
    // kept per short stretch, and then the search against the final middle.
    // Floating types and integers of up to 32 bits measure every element in
    // lanes and search only where the least distance lies; what they leave
    // (64-bit integers and rare cases) searches the stretch that can come
    // nearest first, and the others only where their values can come as near.
    static NearestAnswer RunFromCache(const T* y, const ScanPieces& pieces) {
        NearestToMidScan scan(y);
        NearestAnswer answer{};
        const std::int32_t read = scan.ReadPieces(pieces, answer, &NearestToMidScan::TakeRanges);
        answer.mid = Midpoint(scan.max_, scan.min_);
        // While the search runs from cache, memory would idle: the caller
        // walks on from where this range ends, so those lines are asked for
        // meanwhile (a prefetch is a hint; it never faults), at most half
        // as many bytes as were read. Only when those fit in L1: measured,
        // a search that reads from L2 waits on the prefetches (most likely
        // for the miss buffers they hold for a whole memory latency) and
        // loses more than they save the next range.
        const std::int64_t bytes = scan.BytesRead(read);
        scan.ahead_ = reinterpret_cast<std::uintptr_t>(y + answer.stop);
        scan.aheadEnd_ = scan.ahead_ + static_cast<std::uintptr_t>(bytes <= kL1Bytes ? bytes / 2 : 0);
        scan.pastL1_ = bytes > kL1Bytes;
        for (std::int32_t k = 0; k < read; ++k) {
            if constexpr (std::is_floating_point_v<T>) {
                if (scan.SearchFromLeastDistance(k, answer.mid, answer.chosen[k])) continue;
            } else if constexpr (kExactInLanes) {
                if (scan.SearchExactly(k, answer.mid, answer.chosen[k])) continue;
            }
            scan.SearchNearestRecord(k, answer.mid);
            scan.Settle(k, answer.mid, answer.chosen[k]);
        }
        return answer;
    }

    // What the records of the first `read` pieces cover.
    std::int64_t BytesRead(std::int32_t read) const {
        std::int64_t elements = 0;
        for (std::int32_t k = 0; k < read; ++k)
            for (std::int32_t r = 0; r < pieces_[k].count; ++r) elements += pieces_[k].records[r].length;
        return elements * static_cast<std::int64_t>(sizeof(T));
    }

    // Floating types, when the middle is a T (as Max + Min halved nearly
    // always is): each record's least distance to it, lane by lane in the
    // type's own lanes, in one read without a branch. Where the least of
    // all, L, is exact (nearly always), the first element at it is the
    // answer. Otherwise the records that can reach the step above L are
    // searched with that step as the bound. A lane distance is the exact
    // distance rounded to T, and rounding keeps order: the element that
    // gives L lies less than half a step of T above L, in double too, so the
    // search finds it or a nearer one, first of equals first; an element
    // whose lane distance is above the step lies at least that step away in
    // double, and a bound it does not beat cannot take it. False, with
    // nothing chosen, when the middle is no T or no distance is below
    // DBL_MAX.
    bool SearchFromLeastDistance(std::int32_t k, double mid, std::int32_t& chosen) {
        const T middle = static_cast<T>(mid);
        if (!(static_cast<double>(middle) == mid)) return false;
        const Piece& piece = pieces_[k];
        const V m = Ops::Splat(middle);
        V least[kRecords];
        const auto measure = [m](V e) { return Magnitude(e - m); };
        const T floor = MeasureRecords(piece, mid, least, Ops::Splat(std::numeric_limits<T>::infinity()),
                                       [m](V less, V e) { return LowerMagnitude(less, e - m); },
                                       [](V a, V b) { return Ops::Lower(a, b); });
        if (!(floor < std::numeric_limits<T>::infinity())) return false;
        if (LaneDistanceIsExact(floor, mid)) return FirstAtFloor(piece, least, floor, measure, chosen);
        const T step = Step(floor, true);
        const V stepLanes = Ops::Splat(step);
        // No distance of DBL_MAX or more counts (a Double step above it is infinite).
        double bound = static_cast<double>(step) < DBL_MAX ? static_cast<double>(step) : DBL_MAX;
        std::int32_t at = -1;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            if (Ops::Any(least[r] <= stepLanes)) Pass<false>(piece.records[r].at, piece.records[r].length, mid, bound, at);
        }
        if (at < 0) return false;
        chosen = at;
        return true;
    }

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

    // Integers of up to 32 bits, whose distances to the middle are exact in
    // double: the same order in their own lanes, without the middle.
    // Measured from the range's least value (u = e - min, unsigned, in
    // [0, R] where R = max - min), twice the distance is |2u - R|; with h =
    // R / 2 rounded down and h' = R - h, the whole number
    // min(u - h', h - u), where each difference wraps and the one that does
    // is the larger, is that distance rounded down, in the same order. The
    // least of them is then found first, and the first element at it is
    // the nearest. False when Max + Min wrapped (32 bits), which leaves the
    // middle outside the range.
    static constexpr bool kExactInLanes = std::is_integral_v<T> && sizeof(T) <= sizeof(std::int32_t);
    using U = std::make_unsigned_t<std::conditional_t<kExactInLanes, T, int>>;
    struct UnsignedLanes {
        typedef U type __attribute__((vector_size(sizeof(V))));
    };
    using UV = typename UnsignedLanes::type;

    bool SearchExactly(std::int32_t k, double mid, std::int32_t& chosen) {
        const Piece& piece = pieces_[k];
        // A 32-bit Max + Min that wrapped puts the middle outside the range.
        const bool wrapped = mid != (static_cast<double>(max_) + static_cast<double>(min_)) * 0.5;
        if (piece.count == 0 || wrapped) return false;
        const U range = static_cast<U>(static_cast<U>(max_) - static_cast<U>(min_));
        const U below = static_cast<U>(range / 2), above = static_cast<U>(range - range / 2);
        const UV high = static_cast<U>(static_cast<U>(min_) + above) - UV{};
        const UV low = static_cast<U>(static_cast<U>(min_) + below) - UV{};
        const auto measure = [high, low](V e) {
            const UV up = (UV)e - high, down = low - (UV)e;
            return up < down ? up : down;
        };
        UV least[kRecords];
        const auto lower = [](UV a, UV b) { return b < a ? b : a; };
        const U floor = MeasureRecords(piece, mid, least, std::numeric_limits<U>::max() - UV{},
                                       [&](UV less, V e) { return lower(less, measure(e)); }, lower);
        return FirstAtFloor(piece, least, floor, measure, chosen);
    }

    // The lesser of `less` and |v| lane by lane, NaN in v keeping `less`: in
    // one operation where the ISA has one.
    [[gnu::always_inline]] static V LowerMagnitude(V less, V v) {
        if constexpr (requires { Ops::LowerMagnitude(less, v); }) return Ops::LowerMagnitude(less, v);
        else return Ops::Lower(less, Magnitude(v));
    }

    // |v| lane by lane: the sign bit cleared, NaN left NaN.
    [[gnu::always_inline]] static V Magnitude(V v) {
        using Bits = std::conditional_t<sizeof(T) == 8, std::int64_t, std::int32_t>;
        typedef Bits BitsV __attribute__((vector_size(sizeof(V))));
        return (V)((BitsV)v & (std::numeric_limits<Bits>::max() - BitsV{}));
    }

    // The lane bests of one stretch, four chains a side, taken by the
    // MinMax scan's own stretch loops: the range pass then reads memory as
    // fast as that scan does.
    struct LaneRange {
        V low0, low1, low2, low3, high0, high1, high2, high3;
        LaneRange() {
            low0 = low1 = low2 = low3 = Ops::Splat(std::numeric_limits<T>::max());
            high0 = high1 = high2 = high3 = Ops::Splat(std::numeric_limits<T>::lowest());
        }
        template <std::int32_t kChain>
        [[gnu::always_inline]] void Take(V e) {
            e = Ops::Held(e);
            V& low = kChain == 0 ? low0 : kChain == 1 ? low1 : kChain == 2 ? low2 : low3;
            V& high = kChain == 0 ? high0 : kChain == 1 ? high1 : kChain == 2 ? high2 : high3;
            low = Ops::Lower(low, e);
            high = Ops::Higher(high, e);
        }
        [[gnu::always_inline]] void Fold(T& low, T& high) const {
            low = FoldLanes<Ops, Below<Ops>>(Ops::Lower(Ops::Lower(low0, low1), Ops::Lower(low2, low3)))[0];
            high = FoldLanes<Ops, Above<Ops>>(Ops::Higher(Ops::Higher(high0, high1), Ops::Higher(high2, high3)))[0];
        }
    };

    // The value range of [start, end) stretch by stretch, up to its first
    // NaN in the variant that stops there; answers where it stopped.
    std::int32_t TakeRanges(std::int32_t k, std::int32_t start, std::int32_t end) {
        constexpr double kNoMiddle = std::numeric_limits<double>::quiet_NaN();
        std::int32_t at = start;
        std::int32_t stretch = FirstStretchLength(y_ + start, kRangeStretchLength);
        while (at < end) {
            const std::int32_t length = end - at > stretch ? stretch : end - at;
            stretch = kRangeStretchLength;
            Record record{at, length, std::numeric_limits<T>::max(), std::numeric_limits<T>::lowest(), false, kNoMiddle,
                          -1, DBL_MAX};
            const T* p = y_ + at;
            std::int32_t taken = 0;  // what the vectors took
            std::int32_t stop = length;
            if (length >= kLanes) {
                LaneRange lanes;
                if constexpr (kStopAtNaN) {
                    stop = scan::TakeStretchToNaN<Ops>(lanes, p, length, taken);
                } else {
                    scan::TakeStretch<Ops>(lanes, p, length);
                    taken = length;
                }
                if (taken > 0) lanes.Fold(record.low, record.high);
            }
            for (std::int32_t i = taken; i < stop; ++i) {
                if (kStopAtNaN && p[i] != p[i]) {
                    stop = i;
                    break;
                }
                if (record.low > p[i]) record.low = p[i];
                if (p[i] > record.high) record.high = p[i];
            }
            record.length = stop;
            if (stop == 0) return at;
            if (min_ > record.low) min_ = record.low;
            if (record.high > max_) max_ = record.high;
            Add(pieces_[k], record);
            at += stop;
            if (stop != length) return at;
        }
        return end;
    }

    // The last record whose values can come nearest to `mid` (the one most
    // likely still in the nearest cache), searched whole against it: its
    // find is a distance the piece reaches, which bounds the search of all
    // the others.
    void SearchNearestRecord(std::int32_t k, double mid) {
        Piece& piece = pieces_[k];
        Record* nearest = nullptr;
        double least = HUGE_VAL;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            const double d = LeastDistance(piece.records[r].low, piece.records[r].high, mid);
            if (least >= d) {
                least = d;
                nearest = &piece.records[r];
            }
        }
        if (nearest == nullptr) return;
        nearest->searched = true;
        nearest->mid = mid;
        nearest->chosen = -1;
        // Only what the searches in lanes leave comes here: 64-bit integers,
        // and floating ranges whose middle is no T or that have no finite
        // distance. Searched from no bound at all, the band narrows with
        // every element nearer than all before it.
        nearest->distance = DBL_MAX;
        Pass<false>(nearest->at, nearest->length, mid, nearest->distance, nearest->chosen);
    }

    static constexpr std::int32_t kLanes = Ops::kLanes;
    static constexpr std::int32_t kStretchLength = static_cast<std::int32_t>(16384 / sizeof(T));
    static constexpr std::int32_t kRangeStretchLength = static_cast<std::int32_t>(4096 / sizeof(T));
    // A cached range's stretches, with a short first one and a short last one.
    static constexpr std::int32_t kRecords = 72;

    // One stretch, or several neighbours merged when the records ran out.
    struct Record {
        std::int32_t at;
        std::int32_t length;
        T low;   // value range of its numbers; low above high if it has none
        T high;
        bool searched;      // against `mid`; merged neighbours with different middles are not
        double mid;
        std::int32_t chosen;  // what it found nearer than the bound it was searched with, or -1
        double distance;
    };

    struct Piece {
        Record records[kRecords];
        std::int32_t count = 0;
        std::int32_t chosen = -1;  // the nearest so far to the middle so far, and its distance
        double distance = DBL_MAX;
    };

    // The first element of the piece whose lane measure is `floor`: the
    // first record whose lanes reach it is searched for it. False when no
    // record's lanes do.
    template <class D, class Lane, class Measure>
    bool FirstAtFloor(const Piece& piece, const D (&least)[kRecords], Lane floor, Measure measure,
                      std::int32_t& chosen) const {
        const D floorLanes = floor - D{};
        std::int32_t r = 0;
        while (r < piece.count && !Ops::Any(least[r] == floorLanes)) ++r;
        if (r == piece.count) return false;
        const T* p = y_ + piece.records[r].at;
        const std::int32_t n = piece.records[r].length;
        if (n >= kLanes) {
            chosen = piece.records[r].at + FirstSelectedIn<Ops>(p, n, [&](V e) { return measure(e) == floorLanes; });
            return true;
        }
        for (std::int32_t i = 0; i < n; ++i) {
            if (measure(Ops::Splat(p[i]))[0] == floor) {
                chosen = piece.records[r].at + i;
                return true;
            }
        }
        return false;
    }

    // Each record's least measure (a lane of D per lane of V) lane by lane
    // into `least`, and the least of all: `take(less, e)` is the lesser of
    // `less` and the measure of e, `lower` the lesser of two measures. One
    // read without a branch: four chains, since one would wait on each
    // minimum; the elements behind the last whole vector measured one at a
    // time in every lane.
    //
    // A record whose value range lies farther from `mid` than the nearer end
    // of some record's range holds nothing that near, and is not read: those
    // ends are elements, so that distance is reached. Its lanes stay `none`,
    // as do those of the records after the first that measures 0.
    // A bucket's values mostly cross the middle in a few of its stretches.
    template <class D, class Take, class Lower>
    auto MeasureRecords(const Piece& piece, double mid, D (&least)[kRecords], D none, Take take,
                        Lower lower) const {
        double reached = HUGE_VAL;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            const Record& record = piece.records[r];
            if (record.low > record.high) continue;
            const double low = DistanceToMid(record.low, mid), high = DistanceToMid(record.high, mid);
            const double nearerEnd = low < high ? low : high;
            if (reached > nearerEnd) reached = nearerEnd;
        }
        D all = none;
        std::uintptr_t ahead = ahead_;  // as in Pass
        const bool pastL1 = pastL1_;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            least[r] = none;
            const T* p = y_ + piece.records[r].at;
            const std::int32_t n = piece.records[r].length;
            if (LeastDistance(piece.records[r].low, piece.records[r].high, mid) > reached) {
                // Its share of the lines asked for ahead is asked for all the same.
                const std::uintptr_t share = ahead + static_cast<std::uintptr_t>(n) * sizeof(T) / 2;
                for (; ahead < share && ahead < aheadEnd_; ahead += 64)
                    __builtin_prefetch(reinterpret_cast<const void*>(ahead), 0, 2);
                continue;
            }
            D l0 = none, l1 = none, l2 = none, l3 = none;
            std::int32_t i = 0;
            for (; n - i >= 4 * kLanes; i += 4 * kLanes) {
                if (ahead < aheadEnd_) {
                    __builtin_prefetch(reinterpret_cast<const void*>(ahead), 0, 2);
                    __builtin_prefetch(reinterpret_cast<const void*>(ahead + 64), 0, 2);
                    ahead += 128;
                }
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
        // The least lane in a few shuffles: a pass over the lanes one by one
        // is a chain of 64 compares for bytes.
        struct Least {
            [[gnu::always_inline]] static V Keep(V a, V b) { return (V)Lower{}((D)a, (D)b); }
        };
        return ((D)FoldLanes<Ops, Least>((V)all))[0];
    }

    // A cached range larger than L1 is mostly in L2 when it is searched, and
    // a loop that waits for the L1 to ask for its lines reads L2 a fifth
    // slower than one that asks a few KiB ahead into L1 (lines past the range
    // cost only a little bandwidth). A range within L1 only loses by it.
    static constexpr std::uintptr_t kFromL2Ahead = 2048;

    explicit NearestToMidScan(const T* y) : y_(y) {}

    // Reads [start, end) once, stretch by stretch; returns where it stopped.
    std::int32_t Speculate(std::int32_t k, std::int32_t start, std::int32_t end) {
        Piece& piece = pieces_[k];
        std::int32_t at = start;
        std::int32_t stretch = FirstStretchLength(y_ + start, kStretchLength);
        while (at < end) {
            const std::int32_t length = end - at > stretch ? stretch : end - at;
            stretch = kStretchLength;
            const std::int32_t taken = TakeStretch(piece, at, length);
            at += taken;
            if (taken != length) return at;
        }
        return end;
    }

    // The stretch is searched, in the same pass that takes its value range,
    // against the middle of everything before it, for elements nearer than
    // the piece's best so far; the middle then moves to include it. Answers
    // how much of it was taken: all, or what lies in front of its first NaN
    // when the scan stops there.
    std::int32_t TakeStretch(Piece& piece, std::int32_t at, std::int32_t length) {
        const double bound = piece.chosen >= 0 && piece.distance < DBL_MAX ? piece.distance : DBL_MAX;
        Record record{at, length, T{}, T{}, true, mid_, -1, bound};
        record.length = length = Pass<true>(at, length, mid_, record.distance, record.chosen, &record.low, &record.high);
        if (length == 0) return 0;
        if (record.chosen >= 0) {
            piece.chosen = record.chosen;
            piece.distance = record.distance;
        }
        if (min_ > record.low) min_ = record.low;
        if (record.high > max_) max_ = record.high;
        const double mid = Midpoint(max_, min_);
        if (!(mid == mid_)) {
            mid_ = mid;
            if (piece.chosen >= 0) piece.distance = DistanceToMid(y_[piece.chosen], mid);
        }
        Add(piece, record);
        return length;
    }

    // One read of [at, at + n): the first element with the smallest
    // distance to mid below `bound` (`chosen` and `bound` become it and its
    // distance; both stay when there is none), and with kRange the value
    // range of the numbers in it (the scans' seeds when it has none). Two
    // chains a side keep the loop in registers; it waits on memory anyway.
    // With kRange in the variant that stops at NaN, the read ends at the
    // first NaN: answers how much it took, n when there is none. A group of
    // vectors with a NaN leaves the packed loops before it counts, and the
    // element loop takes it up to the NaN.
    template <bool kRange>
    std::int32_t Pass(std::int32_t at, std::int32_t n, double mid, double& bound, std::int32_t& chosen,
                      T* low = nullptr, T* high = nullptr) const {
        BandSearch<Ops> search{y_ + at, at, mid, bound, chosen, BandLanes<Ops>(BandOf<T>(mid, bound))};
        const T* p = search.p;
        const V seedLow = Ops::Splat(std::numeric_limits<T>::max());
        const V seedHigh = Ops::Splat(std::numeric_limits<T>::lowest());
        V low0 = seedLow, low1 = seedLow, high0 = seedHigh, high1 = seedHigh;
        constexpr bool kFindNaN = kRange && kStopAtNaN;
        const auto none = Ops::Unordered(seedLow, seedLow);
        V bandLow = search.band.low, bandHigh = search.band.high;
        // In a register, not in the object: a store and reload per group
        // would chain the loop's iterations.
        std::uintptr_t ahead = ahead_;
        std::int32_t i = 0;
        for (; n - i >= 4 * kLanes; i += 4 * kLanes) {
            // Held: each band test would otherwise read its vector twice.
            const V e0 = Ops::Held(Ops::Load(p + i)), e1 = Ops::Held(Ops::Load(p + i + kLanes));
            const V e2 = Ops::Held(Ops::Load(p + i + 2 * kLanes)), e3 = Ops::Held(Ops::Load(p + i + 3 * kLanes));
            const auto nan = kFindNaN ? Ops::Unordered(e0, e1) | Ops::Unordered(e2, e3) : none;
            const auto in = InBandOfFour<Ops>(e0, e1, e2, e3, bandLow, bandHigh);
            if (!kRange && ahead < aheadEnd_) {
                __builtin_prefetch(reinterpret_cast<const void*>(ahead), 0, 2);
                __builtin_prefetch(reinterpret_cast<const void*>(ahead + 64), 0, 2);
                ahead += 128;
            }
            if (Ops::Any(in) || (kFindNaN && Ops::Any(nan))) [[unlikely]] {
                if (kFindNaN && Ops::Any(nan)) break;
                search.VisitVectors(i, 4);
                bandLow = search.band.low;
                bandHigh = search.band.high;
            }
            if constexpr (kRange) {
                low0 = Ops::Lower(Ops::Lower(low0, e0), e2);
                low1 = Ops::Lower(Ops::Lower(low1, e1), e3);
                high0 = Ops::Higher(Ops::Higher(high0, e0), e2);
                high1 = Ops::Higher(Ops::Higher(high1, e1), e3);
            }
        }
        if constexpr (!kRange) ahead_ = ahead;
        for (; n - i >= kLanes; i += kLanes) {
            const V e = Ops::Load(p + i);
            if (kFindNaN && Ops::Any(Ops::Unordered(e, e))) break;
            if (Ops::Any(Ops::InBand(e, bandLow, bandHigh))) search.VisitVectors(i, 1);
            if constexpr (kRange) {
                low0 = Ops::Lower(low0, e);
                high0 = Ops::Higher(high0, e);
            }
        }
        T lo = std::numeric_limits<T>::max(), hi = std::numeric_limits<T>::lowest();
        if constexpr (kRange) {
            if (i > 0) {
                lo = FoldLanes<Ops, Below<Ops>>(Ops::Lower(low0, low1))[0];
                hi = FoldLanes<Ops, Above<Ops>>(Ops::Higher(high0, high1))[0];
            }
        }
        for (; i < n; ++i) {
            if (kFindNaN && p[i] != p[i]) break;
            if (kRange && lo > p[i]) lo = p[i];
            if (kRange && p[i] > hi) hi = p[i];
            if (search.band.In(p[i])) search.Visit(i);
        }
        if constexpr (kRange) {
            *low = lo;
            *high = hi;
        }
        return i;
    }

    void Add(Piece& piece, const Record& record) {
        if (piece.count == kRecords) {
            for (std::int32_t r = 0; r < kRecords / 2; ++r) piece.records[r] = Merged(piece.records[2 * r], piece.records[2 * r + 1]);
            piece.count = kRecords / 2;
        }
        piece.records[piece.count++] = record;
    }

    // Two neighbours as one. Searched against one middle, the later one's
    // find replaces the earlier's only when strictly nearer, as in the walk;
    // otherwise the pair counts as not searched, and keeps a find only as a
    // distance to measure again.
    static Record Merged(const Record& a, const Record& b) {
        Record m{a.at, a.length + b.length, a.low < b.low ? a.low : b.low, a.high > b.high ? a.high : b.high,
                 false, a.mid, a.chosen, a.distance};
        if (a.searched && b.searched && a.mid == b.mid) {
            m.searched = true;
            if (b.chosen >= 0 && (a.chosen < 0 || a.distance > b.distance)) {
                m.chosen = b.chosen;
                m.distance = b.distance;
            }
        } else if (b.chosen >= 0) {
            m.chosen = b.chosen;
        }
        return m;
    }

    // The piece's answer against the final middle: records from the last
    // back, an earlier one taking over on an element at least as near.
    void Settle(std::int32_t k, double mid, std::int32_t& chosen) const {
        const Piece& piece = pieces_[k];
        // A distance some element of the piece reaches: nothing farther can win.
        double reached = DBL_MAX;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            const Record& record = piece.records[r];
            if (record.chosen < 0) continue;
            const double d = record.searched && record.mid == mid ? record.distance : DistanceToMid(y_[record.chosen], mid);
            if (reached > d) reached = d;
        }
        // Elements at `reached` itself may still win by coming first.
        const double cap = NextDistance<T>(reached);
        bool found = false;
        double best = DBL_MAX;
        const auto settled = [&](const Record& record) { return record.searched && record.mid == mid; };
        // Whether a record's values can come as near as the best found after
        // it, and as near as `reached`: one that cannot, a search could not
        // change.
        const auto open = [&](const Record& record) {
            const double least = LeastDistance(record.low, record.high, mid);
            return !(least > best) && !(least > reached);
        };
        for (std::int32_t r = piece.count - 1; r >= 0; --r) {
            const Record& record = piece.records[r];
            if (settled(record)) {
                if (record.chosen >= 0 && !(record.distance > best)) {
                    found = true;
                    best = record.distance;
                    chosen = record.chosen;
                }
                continue;
            }
            if (!open(record)) continue;
            // Neighbours to search as well go in the same pass: one setup
            // of the band, and the same first nearest as record by record.
            const std::int32_t end = record.at + record.length;
            std::int32_t start = record.at;
            while (r > 0 && !settled(piece.records[r - 1]) && open(piece.records[r - 1])) start = piece.records[--r].at;
            // Ties with what was found after it go to the earlier element.
            const double atLeastAsNear = found ? NextDistance<T>(best) : DBL_MAX;
            double bound = cap < atLeastAsNear ? cap : atLeastAsNear;
            std::int32_t at = -1;
            Pass<false>(start, end - start, mid, bound, at);
            if (at >= 0) {
                found = true;
                best = bound;
                chosen = at;
            }
        }
    }

    const T* y_;
    T min_ = std::numeric_limits<T>::max();
    T max_ = std::numeric_limits<T>::lowest();
    double mid_ = std::numeric_limits<double>::quiet_NaN();
    mutable std::uintptr_t ahead_ = 0, aheadEnd_ = 0;
    bool pastL1_ = false;  // whether the cached range is larger than L1
    Piece pieces_[2];
};

}  // namespace qm::scan
