#include "SeriesArrays.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <type_traits>

namespace bench {

namespace {

constexpr std::int32_t kDefaultPoints = 100'000'000;

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    double Unit() {  // [0, 1)
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1.0p-53;
    }

private:
    std::uint64_t state_;
};

template <class T, class Fill>
const T* Made(std::unique_ptr<T[]>& array, Fill fill, std::int32_t n = SeriesPoints()) {
    if (!array) {
        array = std::make_unique_for_overwrite<T[]>(static_cast<std::size_t>(n));
        fill(array.get(), n);
    }
    return array.get();
}

// A walk that wanders within about +-1, with noise of +-0.25 on top.
class RandomWalk {
public:
    double Next() {
        walk_ = std::clamp(walk_ + (random_.Unit() - 0.5) * 0.01, -1.0, 1.0);
        return walk_ + (random_.Unit() - 0.5) * 0.5;
    }

private:
    Random random_{42};
    double walk_ = 0.0;
};

// Arrays of any length, one per (type, length), kept for the program.
template <class T, class Fill>
const T* MadeOnce(std::int32_t n, Fill fill) {
    static std::map<std::int32_t, std::unique_ptr<T[]>> arrays;
    return Made(arrays[n], fill, n);
}

// The walk's +-1.25 onto most of YT's range.
template <class YT>
YT Scaled(double w) {
    if constexpr (std::is_floating_point_v<YT>) return static_cast<YT>(w);
    else if constexpr (std::is_same_v<YT, std::int32_t>) return static_cast<YT>(std::lround(w * 1.6e9));
    else if constexpr (std::is_same_v<YT, std::int16_t>) return static_cast<YT>(std::lround(w * 25'000.0));
    else return static_cast<YT>(std::lround((w + 1.25) * 100.0));
}

}  // namespace

std::int32_t SeriesPoints() {
    static const std::int32_t points = [] {
        const char* text = std::getenv("QM_BENCH_POINTS");
        const long long value = text ? std::atoll(text) : kDefaultPoints;
        return static_cast<std::int32_t>(std::clamp(value, 100'000LL, 1'000'000'000LL));
    }();
    return points;
}

std::int32_t RingBaseIndex() { return SeriesPoints() / 3 + 7; }

const double* EvenX(std::int32_t n) {
    return MadeOnce<double>(n, [](double* v, std::int32_t count) {
        for (std::int32_t i = 0; i < count; ++i) v[i] = i;
    });
}

const double* RingX() {
    static std::unique_ptr<double[]> x;
    return Made(x, [](double* v, std::int32_t n) {
        const std::int32_t base = RingBaseIndex();
        for (std::int32_t i = 0; i < n; ++i) v[(static_cast<std::int64_t>(i) + base) % n] = i;
    });
}

const double* UnevenX() {
    static std::unique_ptr<double[]> x;
    return Made(x, [](double* v, std::int32_t n) {
        Random random(7);
        const std::int32_t holeAfter = static_cast<std::int32_t>(n * 0.4);
        double at = 0.0;
        for (std::int32_t i = 0; i < n; ++i) {
            v[i] = at;
            at += 0.25 + 1.5 * random.Unit();
            if (i == holeAfter) at += 0.02 * n;
        }
    });
}

template <class YT>
const YT* Walk(std::int32_t n) {
    return MadeOnce<YT>(n, [](YT* v, std::int32_t count) {
        RandomWalk walk;
        for (std::int32_t i = 0; i < count; ++i) v[i] = Scaled<YT>(walk.Next());
    });
}

template <class YT>
const YT* WalkWithGaps(std::int32_t n) {
    return MadeOnce<YT>(n, [](YT* v, std::int32_t count) {
        const double* walk = Walk<double>(count);
        std::copy(walk, walk + count, v);
        std::mt19937_64 rng(17);
        for (std::int64_t gaps = 0; gaps < count / 100;) {
            const std::int64_t at = static_cast<std::int64_t>(rng() % static_cast<std::uint64_t>(count));
            const std::int64_t length = 1 + static_cast<std::int64_t>(rng() % 199);
            for (std::int64_t i = at; i < std::min<std::int64_t>(count, at + length); ++i, ++gaps) v[i] = NAN;
        }
    });
}

template const double* Walk<double>(std::int32_t);
template const float* Walk<float>(std::int32_t);
template const std::int32_t* Walk<std::int32_t>(std::int32_t);
template const std::int16_t* Walk<std::int16_t>(std::int32_t);
template const std::uint8_t* Walk<std::uint8_t>(std::int32_t);
template const double* WalkWithGaps<double>(std::int32_t);
template const float* WalkWithGaps<float>(std::int32_t);

}  // namespace bench
