#include "GapRuns.h"

#include <algorithm>
#include <cmath>

namespace demo {

std::vector<GapRun> FindGapRuns(const std::vector<double>& y) {
    std::vector<GapRun> gaps;
    const auto n = static_cast<std::int32_t>(y.size());
    for (std::int32_t i = 0; i < n; ++i) {
        if (!std::isnan(y[i])) continue;
        GapRun gap{i, i + 1};
        while (gap.end < n && std::isnan(y[gap.end])) ++gap.end;
        gaps.push_back(gap);
        i = gap.end;
    }
    return gaps;
}

bool GapBetween(const std::vector<GapRun>& gaps, std::int32_t a, std::int32_t b) {
    // The first gap that ends after a; it holds a NaN before b if it starts
    // before b and past a.
    const auto it = std::upper_bound(gaps.begin(), gaps.end(), a + 1,
                                     [](std::int32_t at, const GapRun& gap) { return at < gap.end; });
    return it != gaps.end() && std::max(it->begin, a + 1) < b;
}

}  // namespace demo
