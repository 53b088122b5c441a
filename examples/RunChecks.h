#pragma once
// What a person wants to know of a run besides its size and time: are the
// output points real source points, in order, and did the outliers survive?

#include <cstdint>
#include <vector>

#include "ResamplingRun.h"

namespace demo {

struct RunCheck {
    bool realPoints = true;  // every output (X, Y) is the source point at its index
    bool ascending = true;   // indices never step back
    int spikesExpected = 0;  // outliers this mode must keep
    int spikesKept = 0;
};

// x and y are the series in logical order (a ring's indices are logical too).
RunCheck CheckRun(const RunResult& run, const std::vector<double>& x, const std::vector<double>& y,
                  const std::vector<std::int32_t>& upSpikes, const std::vector<std::int32_t>& downSpikes);

// True when two runs gave the same points (a ring run against its plain twin).
bool SamePoints(const RunResult& a, const RunResult& b);

}  // namespace demo
