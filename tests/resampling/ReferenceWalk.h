#pragma once
// Plain, obviously correct versions of the grid, the walks and the
// reductions, written from their rules with linear scans over logical
// indices, for the randomized comparisons. A ring is known here only by where
// its seam (slot 0) falls in logical indices.

#include <algorithm>
#include <cmath>

#include "interop/InterfaceTestSupport.h"
#include "support/PlainRules.h"

namespace qmtest::reference {

// The largest power of two at or below one pixel's width of X, halved
// `precision` times; a value snaps toward zero (fmod keeps its sign).
inline double GridStep(const Shape& a) { return std::pow(2.0, std::floor(std::log2((a.maxX - a.minX) / a.width)) - a.precision); }
inline double Snap(double v, double step) { return v - std::fmod(v, step); }
inline std::int32_t Cells(const Shape& a) {
    const double step = GridStep(a);
    return static_cast<std::int32_t>(((Snap(a.maxX, step) + step) - Snap(a.minX, step)) / step);
}

// A stretch [start, end) to reduce, or (end -1) the edge of a gap in X, kept as it is.
struct Stretch { std::int32_t start, end; };

// Linear and Category: each grid boundary, rounded to an index (on a Linear
// axis measured from the first point with the mean spacing), closes a bucket;
// the last bucket is cut at EndIndex.
inline std::vector<Stretch> EvenWalk(const std::vector<double>& x, const Shape& a) {
    std::vector<Stretch> steps;
    const bool category = a.data == Category;
    const double step = GridStep(a), x0 = category ? a.start : x[a.start], spacing = category ? 0 : (x[a.end] - x0) / (a.end - a.start);
    double cur = Snap(x0, step) + step;
    for (std::int32_t pos = a.start; pos <= a.end; pos = steps.back().end, cur += step) {
        const double last = category ? std::round(cur) : a.start + std::round((cur - x0) / spacing);
        steps.push_back({pos, static_cast<std::int32_t>(std::min<double>(a.end, last)) + 1});
    }
    return steps;
}

// Unevenly spaced: the first point at or above a boundary closes its bucket,
// and belongs to it when it lies on the boundary. Where a ring's seam falls in
// what is left, each side answers alone and the one nearer the boundary wins,
// the older on a tie. An empty bucket keeps the edges of its gap.
inline std::vector<Stretch> UnevenWalk(const std::vector<double>& x, const Shape& a, std::int32_t seam) {
    std::vector<Stretch> steps;
    const std::int32_t endEx = a.end + 1;
    const double step = GridStep(a);
    auto firstAtOrAbove = [&](std::int32_t from, std::int32_t to, double boundary) {
        while (from < to - 1 && x[from] < boundary) ++from;
        return from;
    };
    bool afterEmpty = true;
    double cur = Snap(a.minX, step) + step;
    for (std::int32_t pos = a.start, b; pos < endEx; pos = b, cur += step) {
        b = firstAtOrAbove(pos, endEx, cur);
        if (pos < seam && seam < endEx) {
            const std::int32_t b1 = firstAtOrAbove(pos, seam, cur), b2 = firstAtOrAbove(seam, endEx, cur);
            b = std::fabs(x[b1] - cur) > std::fabs(x[b2] - cur) ? b2 : b1;
        }
        b += cur >= x[b];
        if (b == pos && !afterEmpty) steps.push_back({pos - 1, -1});
        if (b != pos && afterEmpty) steps.push_back({pos, -1});
        if (b != pos) steps.push_back({pos, b});
        afterEmpty = b == pos;
    }
    return steps;
}

struct Pick { std::int32_t index; double y; bool found; };  // found false: a scan nobody beat

// One reduction of y[start, end) from its rule: strict comparisons against
// the type's extremes, so a NaN never wins and a position may stay -1
// (`unbeaten`, the logical index of slot -1 in a ring). A one-sided MinOrMax
// keeps the point farthest from the zero line, or the nearest if `nearest`.
template <class TY>
std::vector<Pick> Reduce(std::int32_t mode, bool nearest, const std::vector<TY>& y, std::int32_t start, std::int32_t end,
                         double zeroLine, std::int32_t unbeaten) {
    const Extremes<TY> m = Walk(y.data(), start, end);
    const Pick lo{m.loAt < 0 ? unbeaten : m.loAt, static_cast<double>(m.lo), m.loAt >= 0};
    const Pick hi{m.hiAt < 0 ? unbeaten : m.hiAt, static_cast<double>(m.hi), m.hiAt >= 0};
    const bool below = zeroLine > lo.y && zeroLine > hi.y, above = lo.y > zeroLine && hi.y > zeroLine;
    if (mode == Min) return {lo};
    if (mode == Max) return {hi};
    if (mode == MinMax || (mode == MinOrMax && !below && !above))
        return lo.index < hi.index ? std::vector{lo, hi} : hi.index < lo.index ? std::vector{hi, lo} : std::vector{lo};
    if (mode == MinOrMax) return {below != nearest ? (m.hi > m.lo ? lo : hi) : (m.lo > m.hi ? lo : hi)};  // minimum : maximum
    const std::int32_t chosen = Nearest(y.data(), start, end, Midpoint(m.hi, m.lo));
    return {{chosen, static_cast<double>(y[chosen]), true}};
}

struct Expectation {
    Ints indices;
    std::vector<double> x, y;
    bool predictable = true;
};

// The points a run of `mode` must make over the logical series x, y: each
// bucket's reduction; in a NaN-aware run each NaN-free stretch of a bucket
// reduced alone, one index (its first) per NaN stretch, and X and Y gathered
// by index, NaN where an index has no point; a plain NaN-aware MinOrMax keeps
// the nearest point. In a ring an empty evenly spaced bucket is the whole
// ring to the bucket walks, and so is an empty bucket at slot 0 to the
// NaN-aware ones: such runs are not `predictable` here.
template <class TY>
Expectation Expected(const std::vector<double>& x, const std::vector<TY>& y, const Shape& a, std::int32_t mode, bool nanAware) {
    Expectation e;
    const auto n = static_cast<std::int32_t>(y.size());
    const bool ring = a.base != 0, category = a.data == Category;
    const std::int32_t seam = ring ? a.size - a.base : INT32_MAX;
    auto add = [&](std::int32_t i, double xv, double yv) { e.indices.push_back(i), e.x.push_back(category ? i : xv), e.y.push_back(yv); };
    auto point = [&](std::int32_t i) { i >= 0 && i < n ? add(i, x[i], static_cast<double>(y[i])) : add(i, NAN, NAN); };
    auto reduce = [&](std::int32_t start, std::int32_t end) {
        for (const Pick& p : Reduce(mode, nanAware && !ring, y, start, end, a.zeroLine, ring ? seam - 1 : -1))
            nanAware ? point(p.index) : add(p.index, p.found ? x[p.index] : NAN, p.y);
    };
    for (std::int32_t i = a.start; mode == None && i <= a.end; ++i) point(i);
    if (mode == None) return e;
    for (const Stretch& s : a.data == UnevenlySpaced ? UnevenWalk(x, a, seam) : EvenWalk(x, a)) {
        if (s.end < 0) {
            point(s.start);
            continue;
        }
        if (ring && s.start == s.end && (!nanAware || s.start == seam)) e.predictable = false;
        if (!nanAware) reduce(s.start, s.end);
        for (std::int32_t i = s.start, j = i; nanAware && i < s.end; i = j) {
            const bool gap = std::isnan(static_cast<double>(y[i]));
            while (j < s.end && std::isnan(static_cast<double>(y[j])) == gap) ++j;
            gap ? point(i) : reduce(i, j);
        }
    }
    return e;
}

}  // namespace qmtest::reference
