#include "SeriesGenerator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace demo {

namespace {

// splitmix64: fast and reproducible, so every run of the demo draws the
// same picture; the quality of <random> engines is not needed here.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }  // [0, 1)

private:
    std::uint64_t state_;
};

constexpr double kSpacing = 0.01;     // X units between neighbours (seconds, say)
constexpr int kSpikePairs = 12;       // outliers up and down, spread over the series
constexpr double kSpikeHeight = 9.0;  // far beyond the signal's own range of about +-4
constexpr double kHoleAt = 0.35;      // the hole in unevenX, as a share of the series

void FillSignal(GeneratedSeries& s, Random& random) {
    const auto n = static_cast<std::int32_t>(s.y.size());
    const double scale = 2.0 * std::numbers::pi / n;
    for (std::int32_t i = 0; i < n; ++i) {
        const double t = i * scale;
        // A slow swing that takes whole pixel columns above and below zero (so
        // MinOrMax has both cases), a faster ripple, and triangular noise.
        const double noise = (random.Unit() + random.Unit() - 1.0) * 0.8;
        s.y[i] = 2.2 * std::sin(3.0 * t) + 0.7 * std::sin(53.0 * t + 0.4) + noise;
    }
    s.flatBegin = static_cast<std::int32_t>(n * 0.62);
    s.flatEnd = static_cast<std::int32_t>(n * 0.66);
    std::fill(s.y.begin() + s.flatBegin, s.y.begin() + s.flatEnd, 1.25);
}

void PlaceSpikes(GeneratedSeries& s, Random& random) {
    const auto n = static_cast<std::int32_t>(s.y.size());
    const std::int32_t slot = n / (2 * kSpikePairs);
    for (int k = 0; k < 2 * kSpikePairs; ++k) {
        // One spike somewhere in the middle half of each slot, alternating in
        // direction; one of them lands in the flat stretch as well.
        const auto offset = static_cast<std::int32_t>(slot * (0.25 + 0.5 * random.Unit()));
        const std::int32_t at = k * slot + offset;
        const double height = kSpikeHeight + 2.0 * random.Unit();
        if (k % 2 == 0) {
            s.y[at] = height;
            s.upSpikes.push_back(at);
        } else {
            s.y[at] = -height;
            s.downSpikes.push_back(at);
        }
    }
}

void FillX(GeneratedSeries& s, Random& random) {
    const auto n = static_cast<std::int32_t>(s.y.size());
    for (std::int32_t i = 0; i < n; ++i) s.evenX[i] = i * kSpacing;
    // Uneven: each gap between 0.25 and 1.75 spacings, and after holeAfter a
    // jump of 4 % of the whole range, so a band of pixel columns has no point.
    s.holeAfter = static_cast<std::int32_t>(n * kHoleAt);
    const double hole = 0.04 * n * kSpacing;
    double x = 0.0;
    for (std::int32_t i = 0; i < n; ++i) {
        s.unevenX[i] = x;
        x += kSpacing * (0.25 + 1.5 * random.Unit());
        if (i == s.holeAfter) x += hole;
    }
}

// Dropouts of every size: single NaNs and a short one inside the visible
// stretch of mode None, some a few pixels wide at full view, one in the zoom
// on the hole, and one long outage. A dropout that would swallow a spike
// starts after it instead, so every spike stays to be found.
void PlaceDropouts(GeneratedSeries& s) {
    const auto n = static_cast<std::int32_t>(s.y.size());
    const auto share = [n](double f) { return static_cast<std::int32_t>(n * f); };
    const auto length = [n](std::int32_t divisor) { return std::max(1, n / divisor); };
    struct Planned {
        std::int32_t begin, size;
    };
    const Planned planned[] = {
        {s.upSpikes[1] + 120, 1},
        {s.upSpikes[1] + 260, 4},
        {share(0.12), 1},
        {share(kHoleAt) - length(60), length(1000)},
        {share(0.50), length(400)},
        {share(0.78), length(40)},
    };
    std::vector<std::int32_t> spikes = s.upSpikes;
    spikes.insert(spikes.end(), s.downSpikes.begin(), s.downSpikes.end());
    std::sort(spikes.begin(), spikes.end());
    for (const Planned& plan : planned) {
        GapRun gap{plan.begin, plan.begin + plan.size};
        for (std::int32_t at : spikes)
            if (at >= gap.begin && at < gap.end) gap = {at + 1, at + 1 + plan.size};
        gap.end = std::min(gap.end, n - 1);  // the last point stays real
        std::fill(s.y.begin() + gap.begin, s.y.begin() + gap.end, std::numeric_limits<double>::quiet_NaN());
    }
    s.dropouts = FindGapRuns(s.y);
}

}  // namespace

GeneratedSeries GenerateSeries(std::int32_t points) {
    GeneratedSeries s;
    s.y.resize(points);
    s.evenX.resize(points);
    s.unevenX.resize(points);
    Random random(20240102);
    FillSignal(s, random);
    PlaceSpikes(s, random);
    PlaceDropouts(s);
    FillX(s, random);
    return s;
}

}  // namespace demo
