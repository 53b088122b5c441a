#include "SeriesGenerator.h"

#include <algorithm>
#include <cmath>
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
    s.holeAfter = static_cast<std::int32_t>(n * 0.35);
    const double hole = 0.04 * n * kSpacing;
    double x = 0.0;
    for (std::int32_t i = 0; i < n; ++i) {
        s.unevenX[i] = x;
        x += kSpacing * (0.25 + 1.5 * random.Unit());
        if (i == s.holeAfter) x += hole;
    }
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
    FillX(s, random);
    return s;
}

}  // namespace demo
