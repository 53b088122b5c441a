#pragma once
// What a person wants to know of a run besides its size and time: are the
// output points real source points, in order, did the outliers survive, and
// did every NaN gap stay a gap?

#include <cstdint>
#include <vector>

#include "GapRuns.h"
#include "ResamplingRun.h"

namespace demo {

struct RunCheck {
    bool realPoints = true;  // every output (X, Y) is the source point at its index
    bool ascending = true;   // indices never step back
    int spikesExpected = 0;  // outliers this mode must keep
    int spikesKept = 0;
    int gapsExpected = 0;    // NaN gaps in the visible stretch, each of which must leave a NaN point
    int gapsKept = 0;
    int bridges = 0;         // neighbouring output points with a NaN of the source between them
};

// x and y are the series in logical order (a ring's indices are logical
// too); gaps are the NaN runs of y.
RunCheck CheckRun(const RunResult& run, const RunRequest& request, const std::vector<double>& x,
                  const std::vector<double>& y, const std::vector<std::int32_t>& upSpikes,
                  const std::vector<std::int32_t>& downSpikes, const std::vector<GapRun>& gaps);

// True when two runs gave the same points (a ring run against its plain twin).
bool SamePoints(const RunResult& a, const RunResult& b);

}  // namespace demo
