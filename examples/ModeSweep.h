#pragma once
// Runs one layout of a series through every bucket mode, and through mode
// None on a small visible stretch, printing a line per run.

#include <array>
#include <string>
#include <vector>

#include "ResamplingRun.h"
#include "RunChecks.h"
#include "RunReport.h"

namespace demo {

inline constexpr std::array<std::int32_t, 5> kBucketModes = {kMinMax, kMin, kMax, kMid, kMinOrMax};

struct Layout {
    std::string name;
    RunRequest request;                   // mode is set per run
    const std::vector<double>* x;         // the series in logical order, for the checks
    const std::vector<double>* y;
    std::vector<std::int32_t> upSpikes;   // outliers inside the visible stretch
    std::vector<std::int32_t> downSpikes;
};

// `twin`, if given, holds the runs of the same series in plain arrays: a ring
// layout must give exactly the same points.
template <class XT>
std::vector<RunResult> SweepModes(Resampler<XT>& resampler, const XT* x, const double* y, const Layout& layout,
                                  const std::vector<RunResult>* twin = nullptr) {
    std::vector<RunResult> runs;
    for (std::size_t m = 0; m < kBucketModes.size(); ++m) {
        RunRequest request = layout.request;
        request.mode = kBucketModes[m];
        RunResult run = resampler.Run(x, y, request);
        const RunCheck check = CheckRun(run, *layout.x, *layout.y, layout.upSpikes, layout.downSpikes);
        std::string note;
        if (twin && !run.failure) note = SamePoints(run, (*twin)[m]) ? "same points as plain" : "DIFFERS from plain";
        PrintRunLine(layout.name, request.mode, run, check, note);
        runs.push_back(std::move(run));
    }
    return runs;
}

// Mode None copies a visible stretch as it stands: what a caller runs when
// it is zoomed in so far that resampling would not pay off.
template <class XT>
RunResult RunVisibleStretch(Resampler<XT>& resampler, const XT* x, const double* y, const Layout& layout,
                            std::int32_t start, std::int32_t count) {
    RunRequest request = layout.request;
    request.mode = kNone;
    request.startIndex = start;
    request.endIndex = start + count - 1;
    request.minX = (*layout.x)[static_cast<std::size_t>(request.startIndex)];
    request.maxX = (*layout.x)[static_cast<std::size_t>(request.endIndex)];
    RunResult run = resampler.Run(x, y, request);
    PrintRunLine(layout.name, kNone, run, CheckRun(run, *layout.x, *layout.y, {}, {}),
                 "visible stretch " + Grouped(request.startIndex) + ".." + Grouped(request.endIndex));
    return run;
}

}  // namespace demo
