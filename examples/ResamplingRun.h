#pragma once
// One resampling run through the C exports, in the order a managed caller
// makes it: fill ResamplingArgs, ask GetActualResampling for the mode, let
// UpdateIndices say how much room the output needs, size the outputs by
// that, then Execute with the same mode and args. A NaN-aware run (HasNaN)
// takes the same calls: its UpdateIndices walks the series and returns the
// exact count, and its Execute only gathers X and Y by the indices.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "FailureLog.h"
#include "ModeInEffect.h"
#include "ResamplerExports.h"
#include "RunRequest.h"

namespace demo {

struct RunResult {
    std::int32_t actualMode = kNone;  // what GetActualResampling answered
    ModeInEffect ran;                 // the reducer that ran on that answer, and why if it differs
    std::int32_t pointsIn = 0;
    std::int32_t room = 0;  // what UpdateIndices asked the outputs to hold
    std::vector<double> x, y;
    std::vector<std::int32_t> indices;  // logical indices of the output points
    double milliseconds = 0.0;
    std::optional<Failure> failure;     // reported through a callback
    bool overran = false;               // Execute wrote past `room`
};

// Owns what a managed caller keeps for one series: the engine of its type
// pair, a ResamplingArgs and the index vector, all reused run after run.
template <class XT>
class Resampler {
    using Api = ResamplerExports<XT>;

public:
    Resampler()
        : engine_(Api::Create()), args_(CSharp_new_ResamplingArgs()), indices_(CSharp_new_IntVector__SWIG_0()) {
        if (!engine_ || !args_ || !indices_) throw std::runtime_error("the library could not make its objects");
    }
    ~Resampler() {
        CSharp_delete_IntVector(indices_);
        CSharp_delete_ResamplingArgs(args_);
        Api::Destroy(engine_);
    }
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    RunResult Run(const XT* x, const double* y, const RunRequest& request) {
        RunResult result;
        result.pointsIn = request.endIndex - request.startIndex + 1;
        const std::size_t mark = FailureCount();
        const auto started = std::chrono::steady_clock::now();

        FillArgs(args_, request);
        result.actualMode = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args_);
        result.ran = ResolveModeInEffect(request, result.actualMode);
        // Execute appends behind what the vector holds; a new frame starts empty.
        CSharp_IntVector_Clear(indices_);
        result.room = Api::UpdateIndices(engine_, indices_, x, y, result.actualMode, args_);
        if ((result.failure = FailureSince(mark))) return result;

        // A guard tail behind the room catches a run that writes more than
        // UpdateIndices announced.
        result.x.assign(static_cast<std::size_t>(result.room) + kGuard, kSentinel);
        result.y.assign(static_cast<std::size_t>(result.room) + kGuard, kSentinel);
        Api::Execute(engine_, x, y, result.x.data(), result.y.data(), indices_, result.actualMode, args_);
        const auto finished = std::chrono::steady_clock::now();
        result.milliseconds = std::chrono::duration<double, std::milli>(finished - started).count();
        if ((result.failure = FailureSince(mark))) return result;

        const std::int32_t produced = CSharp_IntVector_size(indices_);
        result.overran = produced > result.room || TouchedGuard(result.x, result.room) ||
                         TouchedGuard(result.y, result.room);
        const auto kept = static_cast<std::size_t>(std::min(produced, result.room));
        result.indices.resize(static_cast<std::size_t>(produced));
        CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(indices_, result.indices.data());
        result.indices.resize(kept);
        result.x.resize(kept);
        result.y.resize(kept);
        return result;
    }

private:
    static constexpr std::size_t kGuard = 64;
    static constexpr double kSentinel = -0x1.234567p-1000;  // a value no run produces

    static bool TouchedGuard(const std::vector<double>& values, std::int32_t room) {
        for (std::size_t k = static_cast<std::size_t>(room); k < values.size(); ++k)
            if (values[k] != kSentinel) return true;
        return false;
    }

    typename Api::Engine* engine_;
    QmResamplingArgs* args_;
    QmIntVector* indices_;
};

}  // namespace demo
