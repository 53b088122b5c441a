#pragma once
// Shared by the driver suites: building a run's arguments, running a
// strategy (or the engine) the way the caller does, and drivers whose
// reducer only records the buckets it is handed.

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <vector>

#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"
#include "resampling/ExtremeResampler.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/BucketOutput.h"

namespace qm::drivertest {

inline constexpr ResamplingMode kBucketModes[] = {MinMax, Min, Max, Mid, MinOrMax};
inline constexpr ResamplingData kBucketData[] = {Linear, Category, UnevenlySpaced};

inline ResamplingArgs Args(ResamplingData data, std::int32_t start, std::int32_t end, double minX, double maxX,
                           std::int32_t width, std::uint32_t precision = 0) {
    ResamplingArgs args{};
    args.Data = data;
    args.StartIndex = start;
    args.EndIndex = end;
    args.MinXInclusive = minX;
    args.MaxXInclusive = maxX;
    args.ViewportWidth = width;
    args.ResamplingPrecision = precision;
    return args;
}

inline ResamplingArgs InRing(ResamplingArgs args, std::int32_t size, std::int32_t baseIndex) {
    args.InputSize = size;
    args.InputBaseIndex = baseIndex;
    return args;
}

inline std::vector<double> Ramp(std::size_t n, double first, double spacing) {
    std::vector<double> v(n);
    for (std::size_t i = 0; i < n; ++i) v[i] = first + spacing * static_cast<double>(i);
    return v;
}

// Lays logical point i at slot (i + baseIndex) % size.
template <class T>
std::vector<T> ToRing(const std::vector<T>& logical, std::int32_t size, std::int32_t baseIndex) {
    std::vector<T> ring(static_cast<std::size_t>(size), logical.empty() ? T{} : logical.front());
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(logical.size()); ++i)
        ring[static_cast<std::size_t>((i + baseIndex) % size)] = logical[static_cast<std::size_t>(i)];
    return ring;
}

struct Output {
    std::int32_t reserved = 0;
    std::vector<std::int32_t> indices;
    std::vector<double> x;
    std::vector<double> y;
};

inline constexpr double kSentinel = -7.25e300;
inline constexpr std::int32_t kTail = 8;

// The caller's side of a run: UpdateIndices, output arrays sized by its
// count, Execute. Whatever lies behind the count must stay untouched.
template <class Update, class Execute>
Output RunSized(Update&& update, Execute&& execute) {
    IntVector indices;
    Output out;
    out.reserved = update(indices);
    const std::size_t room = static_cast<std::size_t>(out.reserved > 0 ? out.reserved : 0) + kTail;
    std::vector<double> outX(room, kSentinel);
    std::vector<double> outY(room, kSentinel);
    execute(outX.data(), outY.data(), indices);
    const std::int32_t produced = indices.size();
    EXPECT_LE(produced, out.reserved) << "a run made more points than it asked room for";
    for (std::size_t k = static_cast<std::size_t>(produced); k < room; ++k) {
        EXPECT_EQ(outX[k], kSentinel) << "outX written past the run's points at " << k;
        EXPECT_EQ(outY[k], kSentinel) << "outY written past the run's points at " << k;
    }
    out.indices.assign(indices.data(), indices.data() + produced);
    out.x.assign(outX.begin(), outX.begin() + produced);
    out.y.assign(outY.begin(), outY.begin() + produced);
    return out;
}

template <class TX, class TY>
Output Resample(const ResamplingMethod<TX, TY>& method, const TX* x, const TY* y, const ResamplingArgs& args) {
    return RunSized([&](IntVector& v) { return method.UpdateIndices(v, x, y, args); },
                    [&](double* ox, double* oy, IntVector& v) { method.Execute(x, y, ox, oy, v, args); });
}

template <class TX, class TY>
Output Resample(const ExtremeResampler<TX, TY>& engine, ResamplingMode mode, const TX* x, const TY* y,
           const ResamplingArgs& args) {
    return RunSized([&](IntVector& v) { return engine.UpdateIndices(v, x, y, mode, args); },
                    [&](double* ox, double* oy, IntVector& v) { engine.Execute(x, y, ox, oy, v, mode, args); });
}

struct Bucket {
    std::int32_t start;
    std::int32_t end;
    bool operator==(const Bucket&) const = default;
};

inline void PrintTo(const Bucket& b, std::ostream* os) { *os << '[' << b.start << ',' << b.end << ')'; }

// A driver whose reducer writes nothing and keeps [start, end): positions
// for a plain driver, slots for a ring driver. Only the overload the driver
// declares is called.
template <class Driver>
class Recorder final : public Driver {
    using TX = typename Driver::XType;
    using TY = typename Driver::YType;

public:
    explicit Recorder(std::int32_t pointsPerBucket) : Driver(nullptr, pointsPerBucket) {}

    void ReduceBucket(const TX*, const TY*, BucketOutput&, std::int32_t start, std::int32_t end) const {
        buckets.push_back({start, end});
    }
    void ReduceBucket(const TX*, const TY*, BucketOutput&, std::int32_t start, std::int32_t end, std::int32_t,
                      std::int32_t) const {
        buckets.push_back({start, end});
    }

    mutable std::vector<Bucket> buckets;
};

// The buckets a recording driver is handed in one run, sized as a real run
// is: the walk is bounded by the room UpdateIndices makes, and an unevenly
// spaced driver writes its gap edges itself.
template <class Recorder, class TX, class TY>
std::vector<Bucket> Record(Recorder& recorder, const TX* x, const TY* y, const ResamplingArgs& args) {
    Resample(recorder, x, y, args);
    return recorder.buckets;
}

}  // namespace qm::drivertest
