#pragma once
// The stretch of storage one bucket covers. A plain bucket is one piece. A
// ring bucket whose start slot is not below its end slot wraps: it runs to
// the end of the storage and on from slot 0 (start == end is the whole
// ring; there is no empty ring bucket).

#include <cstdint>

namespace qm {

struct PlainRange {
    std::int32_t start;
    std::int32_t end;

    template <class Scan>
    void ForEachPiece(Scan&& scan) const {
        scan(start, end);
    }
};

struct RingRange {
    std::int32_t start;
    std::int32_t end;
    std::int32_t size;

    bool Wraps() const { return !(start < end); }

    // The older piece goes first, so it wins ties.
    template <class Scan>
    void ForEachPiece(Scan&& scan) const {
        if (!Wraps()) {
            scan(start, end);
            return;
        }
        scan(start, size);
        scan(0, end);
    }
};

}  // namespace qm
