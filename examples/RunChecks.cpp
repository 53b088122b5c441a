#include "RunChecks.h"

#include <algorithm>

namespace demo {

namespace {

// A mode keeps an upward outlier if it keeps the maximum of its bucket, a
// downward one if it keeps the minimum. MinOrMax keeps both kinds: upward
// outliers lie above the zero line and downward ones below it, so a bucket
// holding one either crosses the line (both extremes kept) or lies wholly on
// the outlier's side (its extreme farthest from the line kept).
bool KeepsUp(std::int32_t mode) { return mode == kMinMax || mode == kMax || mode == kMinOrMax; }
bool KeepsDown(std::int32_t mode) { return mode == kMinMax || mode == kMin || mode == kMinOrMax; }

int CountKept(const std::vector<std::int32_t>& sortedIndices, const std::vector<std::int32_t>& spikes) {
    int kept = 0;
    for (std::int32_t at : spikes) kept += std::binary_search(sortedIndices.begin(), sortedIndices.end(), at) ? 1 : 0;
    return kept;
}

}  // namespace

RunCheck CheckRun(const RunResult& run, const std::vector<double>& x, const std::vector<double>& y,
                  const std::vector<std::int32_t>& upSpikes, const std::vector<std::int32_t>& downSpikes) {
    RunCheck check;
    const auto n = static_cast<std::int64_t>(x.size());
    for (std::size_t k = 0; k < run.indices.size(); ++k) {
        const std::int32_t i = run.indices[k];
        if (i < 0 || i >= n || run.x[k] != x[i] || run.y[k] != y[i]) check.realPoints = false;
        if (k > 0 && i < run.indices[k - 1]) check.ascending = false;
    }
    if (run.actualMode == kNone) return check;  // a visible stretch, not the whole series
    std::vector<std::int32_t> sorted = run.indices;
    std::sort(sorted.begin(), sorted.end());
    if (KeepsUp(run.actualMode)) {
        check.spikesExpected += static_cast<int>(upSpikes.size());
        check.spikesKept += CountKept(sorted, upSpikes);
    }
    if (KeepsDown(run.actualMode)) {
        check.spikesExpected += static_cast<int>(downSpikes.size());
        check.spikesKept += CountKept(sorted, downSpikes);
    }
    return check;
}

bool SamePoints(const RunResult& a, const RunResult& b) {
    return a.indices == b.indices && a.x == b.x && a.y == b.y;
}

}  // namespace demo
