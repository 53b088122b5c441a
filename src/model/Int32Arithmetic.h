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

// The int32 nearest to `value`, halves away from zero as std::round has
// them, or INT32_MIN where that lies outside int32 (NaN and infinities
// too), as TruncateToInt32 gives. A walk rounds once per bucket, and
// rounding through a whole double with branches cost small buckets a tenth
// of their time. Here the double just below 0.5, with the value's sign, is
// added and the sum truncated: a fraction below a half stays below the
// next whole number (0.5 - 2^-54 twice is 1 - 2^-53), one of a half or more
// reaches it (0.5 plus it rounds to 1).
inline std::int32_t RoundToInt32(double value) {
    if (!(value > -2147483648.5 && value < 2147483647.5)) return INT32_MIN;
    return static_cast<std::int32_t>(value + std::copysign(0.49999999999999994, value));
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
