#pragma once
// Index arithmetic is signed 32-bit and wraps, as the managed side's int does.
// Signed overflow is undefined in C++, so every wrapping operation goes
// through unsigned arithmetic here.

#include <cmath>
#include <cstdint>

namespace qm {

constexpr std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

constexpr std::int32_t WrappingSub(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

constexpr std::int32_t WrappingMul(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

// (a + b) >> 1 with a wrapping sum and an arithmetic shift, the midpoint of
// the binary searches.
constexpr std::int32_t WrappingMidpoint(std::int32_t a, std::int32_t b) {
    return WrappingAdd(a, b) >> 1;
}

// Drops the fraction. NaN, infinities and anything outside the int32 range
// give INT32_MIN, which is what the processor's truncating conversion does;
// the language leaves those cases undefined, so they are spelled out.
inline std::int32_t TruncateToInt32(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) return static_cast<std::int32_t>(value);
    return INT32_MIN;
}

// Rounds halves away from zero, as std::round does, without its call into
// the C library (a walk rounds once per bucket). Beyond 2^52 every double
// is whole; below, dropping the fraction through int64 is exact, and so is
// the fraction itself.
inline double RoundHalfAwayFromZero(double value) {
    if (!(std::fabs(value) < 4503599627370496.0)) return value;  // whole, infinite or NaN
    const double whole = static_cast<double>(static_cast<std::int64_t>(value));
    const double fraction = value - whole;
    const double rounded = fraction >= 0.5 ? whole + 1.0 : fraction <= -0.5 ? whole - 1.0 : whole;
    return std::copysign(rounded, value);
}

// The slot of logical index i in a ring of `size` slots whose oldest point is
// at `baseIndex`, with the truncating remainder.
constexpr std::int32_t SlotOf(std::int32_t logical, std::int32_t baseIndex, std::int32_t size) {
    return WrappingAdd(logical, baseIndex) % size;
}

// The way back from a slot to its logical index.
constexpr std::int32_t LogicalOf(std::int32_t slot, std::int32_t baseIndex, std::int32_t size) {
    return WrappingAdd(WrappingSub(slot, baseIndex), size) % size;
}

}  // namespace qm
