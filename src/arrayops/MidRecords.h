#pragma once
// What the Mid search (NearestToMidScan.h) keeps of a range it has read: a
// record per stretch, with its value range and what a search of it found,
// and per piece of the range (a ring's wrapped bucket has two) up to
// kMidRecords of them, neighbours merged in pairs when they run out.
//
// Templates of `Ops`, whose ISA tag keeps each translation unit's copies
// its own: a copy built for a wide ISA must never be the one the linker
// keeps for all.

#include <cfloat>
#include <cstdint>

namespace qm::scan {

// One stretch, or several neighbours merged when the records ran out.
template <class Ops>
struct MidRecord {
    using T = typename Ops::Element;

    std::int32_t at;
    std::int32_t length;
    T low;  // value range of its numbers; low above high if it has none
    T high;
    bool searched;  // against `mid`; merged neighbours with different middles are not
    double mid;
    std::int32_t chosen;  // what it found nearer than the bound it was searched with, or -1
    double distance;
};

// A cached range's stretches, with a short first one and a short last one.
inline constexpr std::int32_t kMidRecords = 72;

template <class Ops>
struct MidPiece {
    using Record = MidRecord<Ops>;

    Record records[kMidRecords];
    std::int32_t count = 0;
    std::int32_t chosen = -1;  // the nearest so far to the middle so far, and its distance
    double distance = DBL_MAX;

    void Add(const Record& record) {
        if (count == kMidRecords) {
            for (std::int32_t r = 0; r < kMidRecords / 2; ++r) records[r] = Merged(records[2 * r], records[2 * r + 1]);
            count = kMidRecords / 2;
        }
        records[count++] = record;
    }

    // How many elements the records cover.
    std::int64_t Elements() const {
        std::int64_t elements = 0;
        for (std::int32_t r = 0; r < count; ++r) elements += records[r].length;
        return elements;
    }

private:
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
};

}  // namespace qm::scan
