#include "SeriesArrays.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

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
const T* Made(std::unique_ptr<T[]>& array, Fill fill) {
    if (!array) {
        array = std::make_unique_for_overwrite<T[]>(static_cast<std::size_t>(SeriesPoints()));
        fill(array.get(), SeriesPoints());
    }
    return array.get();
}

// A walk that wanders within about +-1, with noise of +-0.25 on top.
class Walk {
public:
    double Next() {
        walk_ = std::clamp(walk_ + (random_.Unit() - 0.5) * 0.01, -1.0, 1.0);
        return walk_ + (random_.Unit() - 0.5) * 0.5;
    }

private:
    Random random_{42};
    double walk_ = 0.0;
};

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

const double* EvenX() {
    static std::unique_ptr<double[]> x;
    return Made(x, [](double* v, std::int32_t n) {
        for (std::int32_t i = 0; i < n; ++i) v[i] = i;
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

const double* WalkDouble() {
    static std::unique_ptr<double[]> y;
    return Made(y, [](double* v, std::int32_t n) {
        Walk walk;
        for (std::int32_t i = 0; i < n; ++i) v[i] = walk.Next();
    });
}

const std::int16_t* WalkInt16() {
    static std::unique_ptr<std::int16_t[]> y;
    return Made(y, [](std::int16_t* v, std::int32_t n) {
        Walk walk;  // the same walk, scaled to most of the int16 range
        for (std::int32_t i = 0; i < n; ++i) v[i] = static_cast<std::int16_t>(std::lround(walk.Next() * 25'000.0));
    });
}

}  // namespace bench
