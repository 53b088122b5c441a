#pragma once
// The X array of a run, whatever its element type. Everything that walks a
// series is compiled once per Y type and reads X only through this, so the
// twelve X types add one small conversion each instead of a copy of every
// walk. A search reads X at a few places per bucket, an indirect call each;
// the X of the points a run keeps are read all at once when it is over
// (SlotsToX), and runs of consecutive X (a pass-through) convert in one
// call.

#include <cstddef>
#include <cstdint>

#include "model/CacheSizes.h"
#include "model/ElementTypes.h"

namespace qm {

class XAxis {
public:
    template <class TX>
    static XAxis Of(const TX* x) {
        return XAxis(x, &kConversion<TX>);
    }

    // X at slot i, converted to double.
    double At(std::int32_t i) const { return conversion_->at(data_, i); }

    // X of the slots [first, first + count), converted into out.
    void Copy(std::int32_t first, std::int32_t count, double* out) const {
        conversion_->copy(data_, first, count, out);
    }

    // Replaces each of values[0, count), a slot as a double, by X at that
    // slot; NaN (a point without a slot) stays NaN. The slots lie among
    // `span` consecutive points of X (a ring's may wrap).
    void SlotsToX(double* values, std::int32_t count, std::int64_t span) const {
        const bool near = span <= L2Bytes() / static_cast<std::int64_t>(conversion_->size);
        conversion_->slotsToX(data_, values, count, near);
    }

    // Asks for the cache lines around slot i (`lines` on either side),
    // where a search will read soon, so that their misses overlap the work
    // before it. A hint: it reads nothing and never faults, wherever it
    // points.
    void Prefetch(std::int32_t i, std::intptr_t lines = 8) const {
        constexpr std::intptr_t kLine = 64;
        const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(data_) +
                                  static_cast<std::uintptr_t>(i) * static_cast<std::uintptr_t>(conversion_->size);
        for (std::intptr_t line = -lines; line <= lines; ++line)
            __builtin_prefetch(reinterpret_cast<const void*>(at + static_cast<std::uintptr_t>(line * kLine)), 0, 3);
    }

private:
    struct Conversion {
        double (*at)(const void* data, std::int32_t i);
        void (*copy)(const void* data, std::int32_t first, std::int32_t count, double* out);
        void (*slotsToX)(const void* data, double* values, std::int32_t count, bool near);
        std::size_t size;  // of one X
    };

    template <class TX>
    static double AtOf(const void* data, std::int32_t i) {
        return ToDouble(static_cast<const TX*>(data)[i]);
    }

    template <class TX>
    static void CopyOf(const void* data, std::int32_t first, std::int32_t count, double* out) {
        const TX* x = static_cast<const TX*>(data) + first;
        for (std::int32_t k = 0; k < count; ++k) out[k] = ToDouble(x[k]);
    }

    // The kept points of a long series lie far apart in X, a cache miss
    // each: a group's lines are asked for before any is read, so that their
    // misses overlap. Points `near` each other (within one L2 of X)
    // are read straight away: their X is in cache, or soon is, and asking
    // for each line first only costs time.
    template <class TX>
    static void SlotsToXOf(const void* data, double* values, std::int32_t count, bool near) {
        constexpr std::int32_t kGroup = 32;
        const TX* x = static_cast<const TX*>(data);
        for (std::int32_t first = 0; first < count; first += kGroup) {
            const std::int32_t end = count - first > kGroup ? first + kGroup : count;
            if (!near)
                for (std::int32_t k = first; k < end; ++k)
                    if (values[k] == values[k]) __builtin_prefetch(x + static_cast<std::int32_t>(values[k]), 0, 3);
            for (std::int32_t k = first; k < end; ++k)
                if (values[k] == values[k]) values[k] = ToDouble(x[static_cast<std::int32_t>(values[k])]);
        }
    }

    template <class TX>
    static constexpr Conversion kConversion{&AtOf<TX>, &CopyOf<TX>, &SlotsToXOf<TX>, sizeof(TX)};

    XAxis(const void* data, const Conversion* conversion) : data_(data), conversion_(conversion) {}

    const void* data_;
    const Conversion* conversion_;
};

}  // namespace qm
