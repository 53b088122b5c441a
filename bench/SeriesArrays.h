#pragma once
// The series of the whole-run benchmarks: 10^8 points unless QM_BENCH_POINTS
// says otherwise, and smaller ones for the cache-resident runs. Each array
// is made on first use and kept for the whole program, so no case pays for
// another's data and a filtered run only allocates what it touches.

#include <cstdint>

namespace bench {

std::int32_t SeriesPoints();
// The whole runs draw SeriesPoints() to this many pixels.
inline constexpr std::int32_t kViewportWidth = 1920;
// The cache-resident run: 32 Ki points on 1000 pixels, 32.8 points a pixel,
// a grid step of 32.
inline constexpr std::int32_t kInCachePoints = 32 * 1024;
inline constexpr std::int32_t kInCacheWidth = 1000;
std::int32_t RingBaseIndex();  // slot of logical index 0 in the ring arrays

const double* EvenX(std::int32_t n);  // 0, 1, 2, ...: the Linear and Category layouts
const double* RingX();                // EvenX stored as a full ring starting at RingBaseIndex
const double* UnevenX();              // jittered spacing with a hole of 2 % of the range

// A noisy random walk of n points scaled to most of YT's range, so each
// bucket has its own extremes; the ring cases read the same array as a ring
// (only the layout of X matters to them). Defined for double, float,
// int32_t, int16_t and uint8_t.
template <class YT>
const YT* Walk(std::int32_t n);

// Walk<YT> of n points with NaN runs of 1 to 199 points laid over it until
// 1 % of the points are NaN: the series of the NaN-aware runs. Defined for
// double and float.
template <class YT>
const YT* WalkWithGaps(std::int32_t n);

}  // namespace bench
