#pragma once
// The stretch of storage one bucket (or one run of a bucket) covers, and the
// order of its positions in the series. A plain range is one piece and its
// positions are the logical indices. A ring range whose start slot is not
// below its end slot wraps: it runs to the end of the storage and on from
// slot 0 (start == end is the whole ring; there is no empty ring range).
//
// Whatever searches a ring range does so piece by piece, the older piece
// first; of two answers the older piece's wins a tie.

#include <cstdint>

#include "arrayops/ScanTable.h"
#include "model/Int32Arithmetic.h"

namespace qm {

struct PlainRange {
    std::int32_t start;
    std::int32_t end;

    std::int32_t Order(std::int32_t position) const { return position; }

    template <class Scan>
    void ForEachPiece(Scan&& scan) const {
        scan(start, end);
    }

    // `find(a, b)` answers a position of [a, b).
    template <class Find, class Distance>
    std::int32_t NearestOfPieces(Find&& find, Distance&&) const {
        return find(start, end);
    }

    ScanPieces Pieces() const { return {{start, 0}, {end, 0}, 1}; }

    // The same range cut short at `stop` (a scan that stopped at NaN).
    PlainRange Until(std::int32_t stop) const { return {start, stop}; }

    // The answer of a Mid search over Pieces().
    template <class Distance>
    std::int32_t NearestOf(const NearestAnswer& answer, Distance&&) const {
        return answer.chosen[0];
    }

    // The first position that meets `condition`, or `end`.
    template <class Condition>
    std::int32_t FirstWhere(Condition&& condition) const {
        std::int32_t i = start;
        while (i < end && !condition(i)) ++i;
        return i;
    }
};

struct RingRange {
    std::int32_t start;
    std::int32_t end;
    std::int32_t size;
    std::int32_t baseIndex;

    bool Wraps() const { return !(start < end); }

    std::int32_t Order(std::int32_t slot) const { return LogicalOf(slot, baseIndex, size); }

    template <class Scan>
    void ForEachPiece(Scan&& scan) const {
        if (!Wraps()) {
            scan(start, end);
            return;
        }
        scan(start, size);
        scan(0, end);
    }

    // Of the answers of the two pieces, the one whose distance is smaller;
    // a tie (or NaN) stays with the older piece.
    template <class Find, class Distance>
    std::int32_t NearestOfPieces(Find&& find, Distance&& distance) const {
        if (!Wraps()) return find(start, end);
        if (size - start <= 0) return start;
        const std::int32_t first = find(start, size);
        if (end <= 0) return first;
        const std::int32_t second = find(0, end);
        return distance(first) > distance(second) ? second : first;
    }

    ScanPieces Pieces() const {
        if (!Wraps()) return {{start, 0}, {end, 0}, 1};
        return {{start, 0}, {size, end}, 2};
    }

    RingRange Until(std::int32_t stop) const { return {start, stop, size, baseIndex}; }

    // The answer of a Mid search over Pieces(), by the rule of
    // NearestOfPieces: each piece's own nearest, the older winning a tie.
    template <class Distance>
    std::int32_t NearestOf(const NearestAnswer& answer, Distance&& distance) const {
        if (!Wraps()) return answer.chosen[0];
        if (size - start <= 0) return start;
        if (end <= 0) return answer.chosen[0];
        return distance(answer.chosen[0]) > distance(answer.chosen[1]) ? answer.chosen[1] : answer.chosen[0];
    }

    template <class Condition>
    std::int32_t FirstWhere(Condition&& condition) const {
        if (!Wraps()) return PlainRange{start, end}.FirstWhere(condition);
        if (size - start < 1) return end;
        const std::int32_t first = PlainRange{start, size}.FirstWhere(condition);
        if (first != size) return first;
        return PlainRange{0, end}.FirstWhere(condition);
    }
};

// Where a series lies: the mapping between logical indices and slots, and
// the range a stretch of slots makes.
struct PlainLayout {
    static constexpr bool kRing = false;

    std::int32_t Slot(std::int32_t logical) const { return logical; }
    std::int32_t Logical(std::int32_t slot) const { return slot; }
    PlainRange Range(std::int32_t start, std::int32_t end) const { return {start, end}; }
    // Where a walk over [start, end) of slots stops.
    std::int32_t Stop(std::int32_t end) const { return end; }
    bool Before(std::int32_t position, std::int32_t stop) const { return position < stop; }
};

struct RingLayout {
    static constexpr bool kRing = true;

    std::int32_t size;
    std::int32_t baseIndex;

    std::int32_t Slot(std::int32_t logical) const { return SlotOf(logical, baseIndex, size); }
    std::int32_t Logical(std::int32_t slot) const { return LogicalOf(slot, baseIndex, size); }
    RingRange Range(std::int32_t start, std::int32_t end) const { return {start, end, size, baseIndex}; }
    // A stretch that ends at slot 0 ends at the end of the storage; it does
    // not wrap.
    std::int32_t Stop(std::int32_t end) const { return end == 0 ? size : end; }
    bool Before(std::int32_t position, std::int32_t stop) const { return position != stop; }
};

}  // namespace qm
