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
    const std::vector<GapRun>* gaps;      // the NaN runs of y
};

// The run of `twin` whose reducer is the one `run` ran: a ring layout must
// give exactly its points. The NaN-aware MinOrMax keeps the nearest point on
// plain arrays and the farthest in a ring, so those two are not compared.
inline std::string CompareWithPlain(const RunResult& run, const std::vector<RunResult>& twin) {
    for (const RunResult& plain : twin) {
        if (plain.failure || plain.ran.mode != run.ran.mode) continue;
        if (plain.ran.keepsNearestToZero != run.ran.keepsNearestToZero)
            return "not compared (plain MinOrMax keeps the nearest point)";
        return SamePoints(run, plain) ? "same points as plain" : "DIFFERS from plain";
    }
    return "no plain run of this reducer";
}

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
        const RunCheck check =
            CheckRun(run, request, *layout.x, *layout.y, layout.upSpikes, layout.downSpikes, *layout.gaps);
        const std::string note = twin && !run.failure ? CompareWithPlain(run, *twin) : std::string();
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
    PrintRunLine(layout.name, kNone, run, CheckRun(run, request, *layout.x, *layout.y, {}, {}, *layout.gaps),
                 "visible stretch " + Grouped(request.startIndex) + ".." + Grouped(request.endIndex));
    return run;
}

}  // namespace demo
