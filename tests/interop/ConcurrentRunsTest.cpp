// Runs may overlap on one engine as long as each has its own vector and
// arrays. Eight threads run a mixed list of runs on engines that all of them
// share, and every result must equal the one a single thread got. Built
// under ThreadSanitizer by tools/run-tsan.sh, which also catches any race.

#include <atomic>
#include <thread>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

constexpr int kPoints = 3000;
constexpr int kThreads = 8;
constexpr int kRounds = 5;

struct Result {
    Ints indices;
    std::vector<double> x, y;
    bool operator==(const Result&) const = default;
};

// data, mode, visible range, width and ring base of one run.
struct Shape {
    std::int32_t data, mode, start, end, width, base;
};

const Shape kShapes[] = {
    {0, 1, 0, 2999, 40, 0},    {0, 2, 100, 2500, 33, 0},  {0, 4, 0, 2999, 64, 0},   {1, 5, 10, 2990, 50, 0},
    {1, 3, 0, 2999, 17, 0},    {2, 1, 0, 2999, 45, 0},    {2, 4, 500, 1500, 20, 0}, {1, 1, 0, 2999, 30, 1234},
    {1, 2, 200, 2800, 25, 77}, {2, 3, 0, 2999, 35, 2999}, {0, 0, 5, 60, 400, 0},    {3, 1, 40, 90, 10, 0},
};

// One engine of a pair and the series it runs over; a run is UpdateIndices,
// then Execute into arrays sized by its count.
class PairRuns {
public:
    virtual ~PairRuns() = default;
    virtual Result Run(const Shape& shape) const = 0;
};

template <class Engine, class TX, class TY, auto New, auto Delete, auto Update, auto Execute>
class PairRunsOf final : public PairRuns {
public:
    PairRunsOf() : engine_(New()) {
        std::uint32_t state = 12345;
        for (int i = 0; i < kPoints; ++i) {
            state = state * 1664525u + 1013904223u;
            x_.push_back(Element<TX>(2 * i + static_cast<int>(state >> 31)));
            y_.push_back(Element<TY>(static_cast<int>(state >> 25) - 60));
        }
    }
    ~PairRunsOf() override { Delete(engine_); }

    Result Run(const Shape& s) const override {
        ArgsPtr args(CSharp_new_ResamplingArgs());
        const bool category = s.data == 1;
        CSharp_ResamplingArgs_Data_set(args.get(), s.data);
        CSharp_ResamplingArgs_Resampling_set(args.get(), s.mode);
        CSharp_ResamplingArgs_StartIndex_set(args.get(), s.start);
        CSharp_ResamplingArgs_EndIndex_set(args.get(), s.end);
        CSharp_ResamplingArgs_ViewportWidth_set(args.get(), s.width);
        CSharp_ResamplingArgs_MinXInclusive_set(args.get(), category ? s.start : 2.0 * s.start);
        CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), category ? s.end : 2.0 * s.end + 1);
        CSharp_ResamplingArgs_InputSize_set(args.get(), kPoints);
        CSharp_ResamplingArgs_InputBaseIndex_set(args.get(), s.base);
        const std::int32_t mode = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get());
        VectorPtr indices(CSharp_new_IntVector__SWIG_0());
        const std::int32_t count = Update(engine_, indices.get(), x_.data(), y_.data(), mode, args.get());
        Result r{{}, std::vector<double>(static_cast<std::size_t>(count)), std::vector<double>(static_cast<std::size_t>(count))};
        Execute(engine_, x_.data(), y_.data(), r.x.data(), r.y.data(), indices.get(), mode, args.get());
        r.indices = Contents(indices.get());
        return r;
    }

private:
    Engine* engine_;
    std::vector<TX> x_;
    std::vector<TY> y_;
};

#define QM_PAIR_RUNS_(XW, XT, YW, YT)                                                                     \
    std::make_unique<PairRunsOf<QmExtremeResampler##XW##YW, XT, YT, CSharp_new_ExtremeResampler##XW##YW, \
                                CSharp_delete_ExtremeResampler##XW##YW,                                  \
                                CSharp_ExtremeResampler##XW##YW##_UpdateIndices,                         \
                                CSharp_ExtremeResampler##XW##YW##_Execute>>()

TEST(ConcurrentRunsTest, OverlappingRunsOnSharedEnginesGiveTheSingleThreadResults) {
    StartRecording();
    std::vector<std::unique_ptr<PairRuns>> pairs;
    pairs.push_back(QM_PAIR_RUNS_(Double, double, Double, double));
    pairs.push_back(QM_PAIR_RUNS_(Int32, int32_t, Int16, int16_t));
    pairs.push_back(QM_PAIR_RUNS_(DateTime, QmDateTime, Single, float));
    pairs.push_back(QM_PAIR_RUNS_(UInt16, uint16_t, Byte, uint8_t));

    const std::size_t shapes = std::size(kShapes);
    std::vector<Result> expected;
    for (const auto& pair : pairs)
        for (const Shape& shape : kShapes) expected.push_back(pair->Run(shape));

    std::atomic<int> mismatches{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            // Each thread walks the runs in its own order, so different
            // threads overlap on different strategies of one engine.
            for (int round = 0; round < kRounds; ++round)
                for (std::size_t k = 0; k < expected.size(); ++k) {
                    const std::size_t job = (k * (2 * t + 1) + round) % expected.size();
                    if (!(pairs[job / shapes]->Run(kShapes[job % shapes]) == expected[job])) ++mismatches;
                }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_TRUE(Reports().empty());
}

}  // namespace
