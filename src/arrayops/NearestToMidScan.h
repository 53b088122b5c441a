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
// 32 bits first measure every element's distance in their own lanes
// (MidSearchInLanes.h), which mostly settles the search.
//
// A range of two pieces (a ring buffer's wrapped bucket) has one middle but
// its own nearest element per piece, the second piece starting afresh. The
// variant that stops at NaN ends the range in front of its first NaN.

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "arrayops/LaneFolds.h"
#include "arrayops/MidBandSearch.h"
#include "arrayops/MidRecords.h"
#include "arrayops/MidSearchInLanes.h"
#include "arrayops/Midrange.h"
#include "arrayops/ScanKernels.h"
#include "arrayops/ScanStretches.h"
#include "arrayops/ScanTable.h"
#include "model/CacheSizes.h"

namespace qm::scan {

template <class Ops, bool kStopAtNaN>
class NearestToMidScan {
public:
    using T = typename Ops::Element;
    using V = typename Ops::V;
    using Record = MidRecord<Ops>;
    using Piece = MidPiece<Ops>;

    static NearestAnswer Run(const T* y, const ScanPieces& pieces) {
        std::int64_t total = 0;
        for (std::int32_t k = 0; k < pieces.count; ++k) total += pieces.end[k] - pieces.start[k];
        if (total * static_cast<std::int64_t>(sizeof(T)) <= MidCachedBytes()) {
            NearestAnswer answer{};
            if constexpr (kSearchesInRegisters)
                if (pieces.count == 1 && RunInRegisters(y, pieces.start[0], pieces.end[0], answer)) return answer;
            return RunFromCache(y, pieces);
        }
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

    // A range of up to 64 elements, what small buckets are, taken in
    // registers as the scans take theirs (ScanKernels.h): its value range,
    // and then the measures in lanes of MidSearchInLanes.h without records.
    // A bucket that small costs the records and the passes over them several
    // times its reading. False, with nothing answered, for any other range,
    // one with a NaN to stop at, or one those measures do not settle.
    struct RegisterSearch {
        NearestAnswer& answer;
        std::int32_t n;
        bool settled = false;

        template <std::size_t kCount>
        [[gnu::always_inline]] void TakeShort(const V (&e)[kCount], const std::int32_t (&at)[kCount], const T* p,
                                              std::int32_t position) {
            V low = Ops::Splat(std::numeric_limits<T>::max()), high = Ops::Splat(std::numeric_limits<T>::lowest());
            for (std::size_t v = 0; v < kCount; ++v) {
                low = Ops::Lower(low, e[v]);
                high = Ops::Higher(high, e[v]);
            }
            const T min = FoldLanes<Ops, Below<Ops>>(low)[0], max = FoldLanes<Ops, Above<Ops>>(high)[0];
            if (min > max) return;  // no number
            const double mid = Midpoint(max, min);
            std::int32_t k = 0;
            if (!MidSearchInLanes<Ops>::InRegisters(e, at, p, n, mid, min, max, k)) return;
            answer.mid = mid;
            answer.chosen[0] = position + k;
            settled = true;
        }
    };

    // Where the measures in lanes apply (not to 64-bit integers), and on
    // vectors of 32 bytes or more: on 16-byte ones eight registers hold
    // too little of a bucket to pay for the copies of this the library
    // would carry.
    static constexpr bool kSearchesInRegisters =
        (std::is_floating_point_v<T> || MidSearchInLanes<Ops>::kExactInLanes) && sizeof(V) >= 32;

    static bool RunInRegisters(const T* y, std::int32_t start, std::int32_t end, NearestAnswer& answer) {
        const std::int64_t count = static_cast<std::int64_t>(end) - start;
        RegisterSearch search{answer, static_cast<std::int32_t>(count < 64 ? count : 64)};
        if (!scan::RunInRegisters<Ops, kStopAtNaN>(search, y, start, end) || !search.settled) return false;
        answer.stop = end;
        return true;
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
        std::int64_t bytes = 0;
        for (std::int32_t k = 0; k < read; ++k)
            bytes += scan.pieces_[k].Elements() * static_cast<std::int64_t>(sizeof(T));
        scan.ahead_.next = reinterpret_cast<std::uintptr_t>(y + answer.stop);
        scan.ahead_.end = scan.ahead_.next + static_cast<std::uintptr_t>(bytes <= kL1Bytes ? bytes / 2 : 0);
        const MidSearchInLanes<Ops> lanes(y, scan.ahead_, bytes > kL1Bytes);
        const auto searchByBound = [&](std::int32_t at, std::int32_t n, double& bound, std::int32_t& chosen) {
            scan.Pass<false>(at, n, answer.mid, bound, chosen);
        };
        for (std::int32_t k = 0; k < read; ++k) {
            if constexpr (std::is_floating_point_v<T>) {
                if (lanes.FromLeastDistance(scan.pieces_[k], answer.mid, answer.chosen[k], searchByBound)) continue;
            } else if constexpr (MidSearchInLanes<Ops>::kExactInLanes) {
                if (lanes.Exactly(scan.pieces_[k], answer.mid, scan.min_, scan.max_, answer.chosen[k])) continue;
            }
            scan.SearchNearestRecord(k, answer.mid);
            scan.Settle(k, answer.mid, answer.chosen[k]);
        }
        return answer;
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
        static constexpr std::int32_t kSides = 2;
        template <std::int32_t kChain, std::int32_t kSide>
        [[gnu::always_inline]] void Take(V e) {
            if constexpr (kSide == 0) {
                V& low = kChain == 0 ? low0 : kChain == 1 ? low1 : kChain == 2 ? low2 : low3;
                low = Ops::Lower(low, e);
            } else {
                V& high = kChain == 0 ? high0 : kChain == 1 ? high1 : kChain == 2 ? high2 : high3;
                high = Ops::Higher(high, e);
            }
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
            pieces_[k].Add(record);
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
        piece.Add(record);
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
        // In registers, not in the object: a store and reload per group
        // would chain the loop's iterations.
        BandLanes<Ops> band = search.band;
        LinesAhead ahead = ahead_;
        std::int32_t i = 0;
        for (; n - i >= 4 * kLanes; i += 4 * kLanes) {
            // Held: each band test would otherwise read its vector twice.
            const V e0 = Ops::Held(Ops::Load(p + i)), e1 = Ops::Held(Ops::Load(p + i + kLanes));
            const V e2 = Ops::Held(Ops::Load(p + i + 2 * kLanes)), e3 = Ops::Held(Ops::Load(p + i + 3 * kLanes));
            const auto nan = kFindNaN ? Ops::Unordered(e0, e1) | Ops::Unordered(e2, e3) : none;
            const auto in = InBandOfFour<Ops>(e0, e1, e2, e3, band);
            if (!kRange) ahead.AskTwo();
            if (Ops::Any(in) || (kFindNaN && Ops::Any(nan))) [[unlikely]] {
                if (kFindNaN && Ops::Any(nan)) break;
                search.VisitVectors(i, 4);
                band = search.band;
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
            if (Ops::Any(band.In(e))) search.VisitVectors(i, 1);
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
    // What the caller reads next, asked for while a cached range is searched.
    mutable LinesAhead ahead_;
    MidPiece<Ops> pieces_[2];
};

}  // namespace qm::scan
