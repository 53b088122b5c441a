#pragma once
// The NaN gaps of a series as runs of logical indices, and the two questions
// the demo asks of a resampled line about them: does any stretch of the line
// jump over a gap, and does every gap leave a NaN point behind?

#include <cstdint>
#include <vector>

namespace demo {

struct GapRun {
    std::int32_t begin = 0;  // first NaN
    std::int32_t end = 0;    // one past the last NaN
};

// The maximal runs of NaN in y, ascending.
std::vector<GapRun> FindGapRuns(const std::vector<double>& y);

// True when a NaN of some gap lies strictly between logical indices a < b.
bool GapBetween(const std::vector<GapRun>& gaps, std::int32_t a, std::int32_t b);

}  // namespace demo
