#pragma once
// A synthetic series that puts the resampler to the test: a noisy signal
// with single-point spikes up and down, a perfectly flat stretch, NaN
// dropouts (gaps in Y, from one point to a long outage), and (for the
// unevenly spaced layout) a hole in X where no point lies.

#include <cstdint>
#include <vector>

#include "GapRuns.h"

namespace demo {

struct GeneratedSeries {
    std::vector<double> y;
    std::vector<double> evenX;    // evenly spaced: the Linear and ring layouts
    std::vector<double> unevenX;  // jittered spacing with the hole in it
    std::vector<std::int32_t> upSpikes;    // indices of the upward outliers
    std::vector<std::int32_t> downSpikes;  // indices of the downward outliers
    std::int32_t flatBegin = 0;  // the flat stretch is [flatBegin, flatEnd)
    std::int32_t flatEnd = 0;
    std::int32_t holeAfter = 0;  // last index before the hole in unevenX
    std::vector<GapRun> dropouts;  // the NaN runs of y, ascending, none over a spike
};

GeneratedSeries GenerateSeries(std::int32_t points);

}  // namespace demo
