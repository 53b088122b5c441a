#pragma once
// Element types of the X and Y arrays and their one conversion to double.
// Every X read and every Y value that leaves for an output array goes through
// ToDouble; nothing else converts elements.

#include <cstdint>
#include <type_traits>

#include "quillmap/QuillmapTypes.h"

namespace qm {

using DateTime = QmDateTime;
using TimeSpan = QmTimeSpan;

// The top two bits of a DateTime word are the kind flags, not ticks.
inline constexpr std::uint64_t kDateTimeTicksMask = 0x3FFFFFFFFFFFFFFFull;

template <class T>
    requires std::is_arithmetic_v<T>
constexpr double ToDouble(T value) {
    // Exact for everything up to 32 bits; 64-bit integers round to nearest
    // once, with their own signedness.
    return static_cast<double>(value);
}

constexpr double ToDouble(DateTime value) {
    return static_cast<double>(static_cast<std::int64_t>(value.Word & kDateTimeTicksMask));
}

constexpr double ToDouble(TimeSpan value) { return static_cast<double>(value.Ticks); }

// Only floating-point Y can hold NaN gaps, so only those engines carry the
// NaN-aware strategy tables.
template <class TY>
inline constexpr bool kCanHoldNaN = std::is_floating_point_v<TY>;

}  // namespace qm
