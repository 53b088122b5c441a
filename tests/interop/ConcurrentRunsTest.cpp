// Runs may overlap on one engine as long as each has its own vector and
// arrays. Eight threads run a mixed list of runs (every data kind, plain and
// ring, NaN-aware and pass-through) on engines of four pairs that all of them
// share, each thread in its own order, and every result must equal the one a
// single thread got. A strategy that keeps state of a run, a shared scratch
// buffer or an unsynchronised reference count shows as a mismatch, or as a
// race under ThreadSanitizer (tools/run-tsan.sh builds this file alone).

#include <atomic>
#include <functional>
#include <thread>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

constexpr int kPoints = 3000;

// The last two are too small to pay off and pass through.
const Shape kShapes[] = {
    {.data = 0, .end = 2999, .width = 40, .resampling = 1},
    {.data = 0, .start = 100, .end = 2500, .width = 33, .hasNaN = 1, .resampling = 2},
    {.data = 0, .end = 2999, .width = 64, .resampling = 4},
    {.data = 1, .start = 10, .end = 2990, .width = 50, .resampling = 5},
    {.data = 1, .end = 2999, .width = 30, .base = 1234, .resampling = 1},
    {.data = 1, .start = 200, .end = 2800, .width = 25, .base = 77, .hasNaN = 1, .resampling = 2},
    {.data = 2, .end = 2999, .width = 45, .resampling = 1},
    {.data = 2, .start = 500, .end = 1500, .width = 20, .hasNaN = 1, .resampling = 4},
    {.data = 2, .end = 2999, .width = 35, .base = 2999, .resampling = 3},
    {.data = 0, .start = 5, .end = 60, .width = 400, .resampling = 1},
    {.data = 3, .start = 40, .end = 90, .width = 10, .resampling = 1},
};

// An engine of a pair shared by every run of it, over X rising by 2 with
// jitter and Y a pseudo-random walk of small values.
template <class P>
std::function<Frame(const Shape&)> Runs() {
    auto engine = std::shared_ptr<typename P::Engine>(P::make(), P::destroy);
    auto x = std::make_shared<std::vector<typename P::X>>();
    auto y = std::make_shared<std::vector<typename P::Y>>();
    for (std::uint32_t i = 0, state = 12345; i < kPoints; ++i) {
        state = state * 1664525u + 1013904223u;
        x->push_back(Element<typename P::X>(static_cast<int>(2 * i + (state >> 31))));
        y->push_back(Element<typename P::Y>(static_cast<int>(state >> 25) - 60));
    }
    return [=](Shape shape) {
        shape.minX = shape.data == 1 ? shape.start : 2.0 * shape.start, shape.maxX = shape.data == 1 ? shape.end : 2.0 * shape.end + 1;
        shape.size = kPoints;
        const ArgsPtr args = MakeArgs(shape);
        VectorPtr indices(CSharp_new_IntVector__SWIG_0());
        return P::Run(engine.get(), x->data(), y->data(), CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get()),
                      args.get(), indices.get());
    };
}

TEST(ConcurrentRunsTest, OverlappingRunsOnSharedEnginesGiveTheSingleThreadResults) {
    StartRecording();
    const std::function<Frame(const Shape&)> pairs[] = {
        Runs<QM_PAIR_EXPORTS(Double, double, Double, double)>(), Runs<QM_PAIR_EXPORTS(Int32, int32_t, Int16, int16_t)>(),
        Runs<QM_PAIR_EXPORTS(DateTime, QmDateTime, Single, float)>(), Runs<QM_PAIR_EXPORTS(UInt16, uint16_t, Byte, uint8_t)>()};
    std::vector<std::function<Frame()>> jobs;
    std::vector<Frame> expected;
    for (const auto& pair : pairs)
        for (const Shape& shape : kShapes) jobs.push_back([&pair, &shape] { return pair(shape); }), expected.push_back(jobs.back()());
    std::atomic<int> mismatches{0};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < 8; ++t)
        threads.emplace_back([&, t] {
            for (std::size_t k = 0; k < 5 * jobs.size(); ++k) {  // each thread in its own order
                const std::size_t job = (k * (2 * t + 1) + k / jobs.size()) % jobs.size();
                if (!(jobs[job]() == expected[job])) ++mismatches;
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_TRUE(reports.empty());
}

}  // namespace
