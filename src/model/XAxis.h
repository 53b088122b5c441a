#pragma once
// The X array of a run, whatever its element type. Everything that walks a
// series is compiled once per Y type and reads X only through this, so the
// twelve X types add one small conversion each instead of a copy of every
// walk. A search reads X at a few places per bucket, an indirect call each;
// the X of the points a run keeps are read all at once when it is over
// (SlotsToX), and runs of consecutive X (a pass-through) convert in one
// call.

#include <cstdint>

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
    // slot; NaN (a point without a slot) stays NaN.
    void SlotsToX(double* values, std::int32_t count) const { conversion_->slotsToX(data_, values, count); }

private:
    struct Conversion {
        double (*at)(const void* data, std::int32_t i);
        void (*copy)(const void* data, std::int32_t first, std::int32_t count, double* out);
        void (*slotsToX)(const void* data, double* values, std::int32_t count);
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

    template <class TX>
    static void SlotsToXOf(const void* data, double* values, std::int32_t count) {
        const TX* x = static_cast<const TX*>(data);
        for (std::int32_t k = 0; k < count; ++k)
            if (values[k] == values[k]) values[k] = ToDouble(x[static_cast<std::int32_t>(values[k])]);
    }

    template <class TX>
    static constexpr Conversion kConversion{&AtOf<TX>, &CopyOf<TX>, &SlotsToXOf<TX>};

    XAxis(const void* data, const Conversion* conversion) : data_(data), conversion_(conversion) {}

    const void* data_;
    const Conversion* conversion_;
};

}  // namespace qm
