#pragma once
// The Mid search in one read of the data: the element nearest to the middle
// of the range's values, (Max + Min) / 2, where the first of equally near
// elements wins and a piece with no distance below DBL_MAX answers its own
// start. Written once over a set of lane operations `Ops`.
//
// The middle is known only at the end, so the search is speculative. The
// range goes in stretches that fit in L1; each is read from memory once,
// for its own minimum and maximum and those of everything so far, and is
// searched while it is still in L1 against the middle so far, for elements
// nearer than the best one known (a packed test against the band of values
// that can be that near passes over most vectors). A record keeps each
// stretch's value range, the middle it was searched against and what it
// found.
//
// At the end each piece is settled in order. A stretch searched against the
// final middle gives its answer as it stands: it looked for everything
// nearer than an earlier element, and anything not nearer than that cannot
// be the first nearest. Any other stretch is searched again only if its
// value range could hold an element at least as near as the best distance
// known to be reached (an element of a valid stretch, or the answer of a
// stale one measured again); what it cannot hold, it cannot win.
//
// A range of two pieces (a ring buffer's wrapped bucket) has one middle but
// its own nearest element per piece, the second piece starting afresh. The
// variant that stops at NaN ends the range in front of its first NaN.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>

#include "arrayops/Midrange.h"
#include "arrayops/ScanKernels.h"
#include "arrayops/ScanTable.h"

namespace qm::scan {

template <class Ops, bool kStopAtNaN>
class NearestToMidScan {
public:
    using T = typename Ops::Element;
    using V = typename Ops::V;

    static NearestAnswer Run(const T* y, const ScanPieces& pieces) {
        NearestToMidScan scan(y);
        NearestAnswer answer{};
        answer.stop = pieces.end[pieces.count - 1];
        for (std::int32_t k = 0; k < pieces.count; ++k) {
            answer.chosen[k] = pieces.start[k];
            const std::int32_t stop = scan.Speculate(k, pieces.start[k], pieces.end[k]);
            if (stop != pieces.end[k]) {
                answer.stop = stop;
                break;
            }
        }
        answer.mid = Midpoint(scan.max_, scan.min_);
        for (std::int32_t k = 0; k < pieces.count; ++k) scan.Settle(k, answer.mid, answer.chosen[k]);
        return answer;
    }

private:
    static constexpr std::int32_t kLanes = Ops::kLanes;
    static constexpr std::int32_t kStretchLength = static_cast<std::int32_t>(4096 / sizeof(T));
    static constexpr std::int32_t kRecords = 64;

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

    explicit NearestToMidScan(const T* y) : y_(y) {}

    // Reads [start, end) once, stretch by stretch; returns where it stopped.
    std::int32_t Speculate(std::int32_t k, std::int32_t start, std::int32_t end) {
        Piece& piece = pieces_[k];
        std::int32_t at = start;
        while (at < end) {
            std::int32_t length = end - at > kStretchLength ? kStretchLength : end - at;
            if constexpr (kStopAtNaN) length = FirstNaN(at, length);
            if (length > 0) TakeStretch(piece, at, length);
            at += length;
            if (at < end && kStopAtNaN && y_[at] != y_[at]) return at;
        }
        return end;
    }

    std::int32_t FirstNaN(std::int32_t at, std::int32_t length) const {
        const std::int32_t whole = length / kLanes * kLanes;
        std::int32_t n = FirstNaNIn<Ops>(y_ + at, whole);
        if (n == whole)
            while (n < length && y_[at + n] == y_[at + n]) ++n;
        return n;
    }

    void TakeStretch(Piece& piece, std::int32_t at, std::int32_t length) {
        T low, high;
        RangeOf(y_ + at, length, low, high);
        if (min_ > low) min_ = low;
        if (high > max_) max_ = high;
        const double mid = Midpoint(max_, min_);
        double bound = DBL_MAX;
        if (piece.chosen >= 0) {
            if (!(mid == mid_)) piece.distance = DistanceToMid(y_[piece.chosen], mid);
            if (piece.distance < bound) bound = piece.distance;
        }
        mid_ = mid;
        Record record{at, length, low, high, true, mid, -1, bound};
        Search(at, length, mid, record.distance, record.chosen);
        if (record.chosen >= 0) {
            piece.chosen = record.chosen;
            piece.distance = record.distance;
        }
        Add(piece, record);
    }

    // The value range of p[0, n), NaN left out; the scans' seeds start it,
    // so a stretch of NaN only has low above high.
    static void RangeOf(const T* p, std::int32_t n, T& low, T& high) {
        low = std::numeric_limits<T>::max();
        high = std::numeric_limits<T>::lowest();
        std::int32_t i = 0;
        if (n >= kLanes) {
            V lanesLow[kChains], lanesHigh[kChains];
            for (std::int32_t c = 0; c < kChains; ++c) {
                lanesLow[c] = Ops::Splat(low);
                lanesHigh[c] = Ops::Splat(high);
            }
            for (; n - i >= kChains * kLanes; i += kChains * kLanes) {
                for (std::int32_t c = 0; c < kChains; ++c) {
                    const V e = Ops::Load(p + i + c * kLanes);
                    lanesLow[c] = Ops::Lower(lanesLow[c], e);
                    lanesHigh[c] = Ops::Higher(lanesHigh[c], e);
                }
            }
            for (; n - i >= kLanes; i += kLanes) {
                const V e = Ops::Load(p + i);
                lanesLow[0] = Ops::Lower(lanesLow[0], e);
                lanesHigh[0] = Ops::Higher(lanesHigh[0], e);
            }
            if (i < n) {  // the last vector, overlapping the one before
                const V e = Ops::Load(p + n - kLanes);
                lanesLow[1] = Ops::Lower(lanesLow[1], e);
                lanesHigh[1] = Ops::Higher(lanesHigh[1], e);
                i = n;
            }
            using Low = Below<Ops>;
            using High = Above<Ops>;
            const V l = FoldLanes<Ops, Low>(Low::Keep(Low::Keep(lanesLow[0], lanesLow[1]), Low::Keep(lanesLow[2], lanesLow[3])));
            const V h =
                FoldLanes<Ops, High>(High::Keep(High::Keep(lanesHigh[0], lanesHigh[1]), High::Keep(lanesHigh[2], lanesHigh[3])));
            low = l[0];
            high = h[0];
        }
        for (; i < n; ++i) {
            if (low > p[i]) low = p[i];
            if (p[i] > high) high = p[i];
        }
    }

    // The first element of [at, at + n) with the smallest distance to mid
    // below `bound`: `chosen` and `bound` become it and its distance; both
    // stay as they are when there is none.
    void Search(std::int32_t at, std::int32_t n, double mid, double& bound, std::int32_t& chosen) const {
        Band<T> band = BandOf<T>(mid, bound);
        if (band.empty) return;
        V low = Ops::Splat(band.low), high = Ops::Splat(band.high);
        const T* p = y_ + at;
        auto visit = [&](std::int32_t i) {
            const double d = DistanceToMid(p[i], mid);
            if (!(bound > d)) return false;
            bound = d;
            chosen = at + i;
            band = BandOf<T>(mid, bound);
            low = Ops::Splat(band.low);
            high = Ops::Splat(band.high);
            return band.empty;
        };
        constexpr std::int32_t kGroup = 4 * kLanes;
        std::int32_t i = 0;
        for (; n - i >= kLanes; i += kLanes) {
            // Four vectors to a test while nothing is in the band.
            if (n - i >= kGroup) {
                auto in = Ops::InBand(Ops::Load(p + i), low, high);
                for (std::int32_t c = 1; c < 4; ++c) in |= Ops::InBand(Ops::Load(p + i + c * kLanes), low, high);
                if (!Ops::Any(in)) {
                    i += kGroup - kLanes;
                    continue;
                }
            }
            std::uint64_t bits = Ops::ByteBits(Ops::InBand(Ops::Load(p + i), low, high));
            while (bits != 0) {
                const std::int32_t lane = Ops::LaneOf(bits);
                if (visit(i + lane)) return;
                const auto next = static_cast<unsigned>((lane + 1) * sizeof(T));
                bits = next >= 64 ? 0 : bits & (~std::uint64_t{0} << next);
            }
        }
        for (; i < n; ++i)
            if (!(band.low > p[i]) && !(p[i] > band.high) && p[i] == p[i] && visit(i)) return;
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

    // The piece's answer against the final middle, in order.
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
        double best = DBL_MAX;
        for (std::int32_t r = 0; r < piece.count; ++r) {
            const Record& record = piece.records[r];
            if (record.searched && record.mid == mid) {
                if (record.chosen >= 0 && best > record.distance) {
                    best = record.distance;
                    chosen = record.chosen;
                }
                continue;
            }
            const double least = LeastDistance(record.low, record.high, mid);
            if (!(best > least) || least > reached) continue;
            double bound = cap < best ? cap : best;
            std::int32_t found = -1;
            Search(record.at, record.length, mid, bound, found);
            if (found >= 0) {
                best = bound;
                chosen = found;
            }
        }
    }

    const T* y_;
    T min_ = std::numeric_limits<T>::max();
    T max_ = std::numeric_limits<T>::lowest();
    double mid_ = std::numeric_limits<double>::quiet_NaN();
    Piece pieces_[2];
};

}  // namespace qm::scan
