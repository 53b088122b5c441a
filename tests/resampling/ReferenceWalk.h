#pragma once
// Plain, obviously correct versions of the bucket walks and reductions,
// written from their rules with linear scans over logical indices, for the
// randomized comparisons. A ring is described by where its seam falls in
// logical indices; nothing here knows about slots.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "model/ResamplingArgs.h"
#include "resampling/buckets/Grid.h"

namespace qm::reference {

// A stretch [start, end) to reduce, or (end == -1) one point kept as it is:
// the edge of a gap in X.
struct Step {
    std::int32_t start;
    std::int32_t end;
};

inline std::int32_t Round(double v) { return static_cast<std::int32_t>(std::round(v)); }

// Linear and Category: each grid boundary, rounded to an index (measured
// with the mean spacing from the first point on a Linear axis), closes a
// bucket; the last bucket is cut at EndIndex.
inline std::vector<Step> EvenWalk(bool category, const std::vector<double>& x, const ResamplingArgs& a) {
    std::vector<Step> steps;
    const std::int32_t s = a.StartIndex, e = a.EndIndex;
    const double step = GridStep(a);
    const double x0 = category ? s : x[s];
    const double spacing = category ? 0 : (x[e] - x0) / (e - s);
    double cur = SnapToGrid(x0, step) + step;
    for (std::int32_t pos = s; pos <= e; cur += step) {
        std::int32_t last = category ? Round(cur) : s + Round((cur - x0) / spacing);
        if (last > e) last = e;
        steps.push_back({pos, last + 1});
        pos = last + 1;
    }
    return steps;
}

// Unevenly spaced: the first point at or above a boundary closes its bucket,
// and belongs to it when it lies on the boundary. In a ring whose seam (the
// logical index of slot 0) falls inside what is left, each side of the seam
// answers alone and the answer nearer the boundary wins, the older on a tie.
inline std::vector<Step> UnevenWalk(const std::vector<double>& x, const ResamplingArgs& a, std::int32_t seam) {
    std::vector<Step> steps;
    const std::int32_t endEx = a.EndIndex + 1;
    const double step = GridStep(a);
    auto firstAtOrAbove = [&](std::int32_t from, std::int32_t to, double cur) {
        for (std::int32_t i = from; i < to; ++i)
            if (x[i] >= cur) return i;
        return to - 1;
    };
    double cur = SnapToGrid(a.MinXInclusive, step) + step;
    bool afterEmpty = true;
    for (std::int32_t pos = a.StartIndex; pos < endEx; cur += step) {
        std::int32_t b = firstAtOrAbove(pos, endEx, cur);
        if (pos < seam && seam < endEx) {
            const std::int32_t b1 = firstAtOrAbove(pos, seam, cur);
            const std::int32_t b2 = firstAtOrAbove(seam, endEx, cur);
            b = std::fabs(x[b1] - cur) > std::fabs(x[b2] - cur) ? b2 : b1;
        }
        if (cur >= x[b]) ++b;
        if (b == pos) {
            if (!afterEmpty) steps.push_back({pos - 1, -1});
        } else {
            if (afterEmpty) steps.push_back({pos, -1});
            steps.push_back({pos, b});
        }
        afterEmpty = b == pos;
        pos = b;
    }
    return steps;
}

struct Pick {
    std::int32_t index;
    double y;
    bool found = true;  // false: a scan nobody beat
};

enum class Sense { Farthest, Nearest };

// One reduction of y[start, end), from its rule: strict comparisons against
// the type's extreme values, so a NaN never wins and a position may stay -1
// (reported as `minusOne`, its logical index in a ring).
template <class TY>
std::vector<Pick> Reduce(ResamplingMode mode, Sense sense, const std::vector<TY>& y, std::int32_t start,
                         std::int32_t end, double zeroLine, std::int32_t minusOne = -1) {
    TY min = std::numeric_limits<TY>::max(), max = std::numeric_limits<TY>::lowest();
    std::int32_t minAt = -1, maxAt = -1;
    for (std::int32_t i = start; i < end; ++i) {
        if (y[i] < min) min = y[i], minAt = i;
        if (y[i] > max) max = y[i], maxAt = i;
    }
    const Pick lo{minAt < 0 ? minusOne : minAt, static_cast<double>(min), minAt >= 0};
    const Pick hi{maxAt < 0 ? minusOne : maxAt, static_cast<double>(max), maxAt >= 0};
    auto both = [&]() -> std::vector<Pick> {
        if (lo.index < hi.index) return {lo, hi};
        if (hi.index < lo.index) return {hi, lo};
        return {lo};
    };
    switch (mode) {
        case Min:
            return {lo};
        case Max:
            return {hi};
        case MinMax:
            return both();
        case MinOrMax: {
            const bool below = zeroLine > lo.y && zeroLine > hi.y;
            const bool above = lo.y > zeroLine && hi.y > zeroLine;
            if (!below && !above) return both();
            // Farthest: the minimum below the line, the maximum above it.
            const bool minimumSide = below == (sense == Sense::Farthest);
            if (minimumSide) return {max > min ? lo : hi};
            return {min > max ? lo : hi};
        }
        default: {
            const double mid = static_cast<double>(static_cast<TY>(max + min)) * 0.5;
            double best = DBL_MAX;
            std::int32_t chosen = start;
            for (std::int32_t i = start; i < end; ++i)
                if (best > std::fabs(static_cast<double>(y[i]) - mid)) best = std::fabs(y[i] - mid), chosen = i;
            return {{chosen, static_cast<double>(y[chosen])}};
        }
    }
}

}  // namespace qm::reference
