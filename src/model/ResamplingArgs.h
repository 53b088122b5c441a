#pragma once
// The plain record that describes one resampling run, and the two
// enumerations that index the strategy tables.

#include <cstdint>

namespace qm {

enum ResamplingMode : std::int32_t {
    None = 0,
    MinMax = 1,
    Min = 2,
    Max = 3,
    Mid = 4,
    MinOrMax = 5,
};

enum ResamplingData : std::int32_t {
    Linear = 0,
    Category = 1,
    UnevenlySpaced = 2,
    NotResampled = 3,
};

inline constexpr std::int32_t NORMALIZED_BASE_INDEX = 0;
inline constexpr std::int32_t RESAMPLING_MODE_COUNT = 6;
inline constexpr std::int32_t RESAMPLING_DATA_COUNT = 4;
inline constexpr std::int32_t kStrategyTableSize = RESAMPLING_MODE_COUNT * RESAMPLING_DATA_COUNT;

// Fields in record order; made zero-filled, never validated.
struct ResamplingArgs {
    std::int32_t Resampling;
    std::int32_t Data;
    std::int32_t StartIndex;  // inclusive, logical
    std::int32_t EndIndex;    // inclusive, logical
    std::int32_t ViewportWidth;
    std::uint32_t ResamplingPrecision;
    double MinXInclusive;
    double MaxXInclusive;
    std::int32_t InputSize;       // ring buffers only
    std::int32_t InputBaseIndex;  // slot of logical index 0; not 0 selects the ring tables
    bool HasNaN;
    double ZeroLineY;
};

// How many points lie from StartIndex to EndIndex, both included (0 or less
// when EndIndex is before StartIndex).
constexpr std::int64_t VisiblePoints(const ResamplingArgs& args) {
    return static_cast<std::int64_t>(args.EndIndex) - args.StartIndex + 1;
}

}  // namespace qm
