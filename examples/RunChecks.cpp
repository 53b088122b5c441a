#include "RunChecks.h"

#include <algorithm>
#include <cmath>

namespace demo {

namespace {

// A mode keeps an upward outlier if it keeps the maximum of its bucket, a
// downward one if it keeps the minimum. MinOrMax keeps both kinds: upward
// outliers lie above the zero line and downward ones below it, so a bucket
// holding one either crosses the line (both extremes kept) or lies wholly on
// the outlier's side (its extreme farthest from the line kept). The
// NaN-aware MinOrMax of plain arrays keeps the nearest instead: no promise.
bool KeepsUp(const ModeInEffect& ran) {
    return ran.mode == kMinMax || ran.mode == kMax || (ran.mode == kMinOrMax && !ran.keepsNearestToZero);
}
bool KeepsDown(const ModeInEffect& ran) {
    return ran.mode == kMinMax || ran.mode == kMin || (ran.mode == kMinOrMax && !ran.keepsNearestToZero);
}

int CountKept(const std::vector<std::int32_t>& sortedIndices, const std::vector<std::int32_t>& spikes) {
    int kept = 0;
    for (std::int32_t at : spikes) kept += std::binary_search(sortedIndices.begin(), sortedIndices.end(), at) ? 1 : 0;
    return kept;
}

bool SameValue(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

void CheckGaps(const RunResult& run, const RunRequest& request, const std::vector<GapRun>& gaps,
               const std::vector<std::int32_t>& sorted, RunCheck& check) {
    for (std::size_t k = 1; k < run.indices.size(); ++k)
        if (!std::isnan(run.y[k - 1]) && !std::isnan(run.y[k]) &&
            GapBetween(gaps, run.indices[k - 1], run.indices[k]))
            ++check.bridges;
    // A gap is kept when one of its own positions comes out (with its NaN).
    if (!request.hasNaN && run.actualMode != kNone) return;
    for (const GapRun& gap : gaps) {
        const std::int32_t first = std::max(gap.begin, request.startIndex);
        const std::int32_t last = std::min(gap.end - 1, request.endIndex);
        if (first > last) continue;
        ++check.gapsExpected;
        const auto it = std::lower_bound(sorted.begin(), sorted.end(), first);
        check.gapsKept += it != sorted.end() && *it <= last ? 1 : 0;
    }
}

}  // namespace

RunCheck CheckRun(const RunResult& run, const RunRequest& request, const std::vector<double>& x,
                  const std::vector<double>& y, const std::vector<std::int32_t>& upSpikes,
                  const std::vector<std::int32_t>& downSpikes, const std::vector<GapRun>& gaps) {
    RunCheck check;
    const auto n = static_cast<std::int64_t>(x.size());
    for (std::size_t k = 0; k < run.indices.size(); ++k) {
        const std::int32_t i = run.indices[k];
        if (i < 0 || i >= n || run.x[k] != x[i] || !SameValue(run.y[k], y[i])) check.realPoints = false;
        if (k > 0 && i < run.indices[k - 1]) check.ascending = false;
    }
    if (!check.realPoints) return check;  // the gap checks read the indices as positions
    std::vector<std::int32_t> sorted = run.indices;
    std::sort(sorted.begin(), sorted.end());
    CheckGaps(run, request, gaps, sorted, check);
    if (run.actualMode == kNone) return check;  // a visible stretch, not the whole series
    if (KeepsUp(run.ran)) {
        check.spikesExpected += static_cast<int>(upSpikes.size());
        check.spikesKept += CountKept(sorted, upSpikes);
    }
    if (KeepsDown(run.ran)) {
        check.spikesExpected += static_cast<int>(downSpikes.size());
        check.spikesKept += CountKept(sorted, downSpikes);
    }
    return check;
}

bool SamePoints(const RunResult& a, const RunResult& b) {
    const auto same = [](const std::vector<double>& u, const std::vector<double>& v) {
        return std::equal(u.begin(), u.end(), v.begin(), v.end(), SameValue);
    };
    return a.indices == b.indices && same(a.x, b.x) && same(a.y, b.y);
}

}  // namespace demo
