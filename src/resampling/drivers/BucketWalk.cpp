#include "resampling/drivers/BucketWalk.h"

#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/ReduceWith.h"
#include "resampling/buckets/SmallBucketBatch.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/UnevenGridWalk.h"

namespace qm {

template <class TY, class Layout, ResamplingData kData>
void BucketWalk<TY, Layout, kData>::Execute(const ArrayOperations<TY>& operations, Reduction reduction,
                                            const XAxis& x, const TY* y, double* outX, double* outY,
                                            IntVector& indices, const ResamplingArgs& args) {
    const double step = GridStep(args);
    const std::int32_t room = RequireGridRoom(indices, args, step, MaxPointsPerBucket(reduction));
    const Layout layout = LayoutOf<Layout>(args);
    BucketOutput output(outX, outY, indices, args, room);
    const PointEmitter<kData == Category> emitter{x, outX};
    const ThroughOperations<TY> scans(operations, VisiblePoints(args));
    auto reduceBucket = [&](std::int32_t start, std::int32_t end) {
        const auto range = layout.Range(start, end);
        std::int32_t stop;
        emitter.Emit(output, range, ReduceWith(reduction, scans, y, range, args.ZeroLineY, stop));
    };
    if constexpr (kData == UnevenlySpaced) {
        WalkUnevenGrid(
            x, args, layout, step,
            [&](std::int32_t start, std::int32_t end, bool afterEmpty) {
                if (afterEmpty) emitter.Emit(output, layout.Range(start, end), start, ToDouble(y[start]));
                reduceBucket(start, end);
            },
            [&](std::int32_t lastBeforeGap) {
                const std::int32_t slot = layout.Slot(lastBeforeGap);
                emitter.Emit(output, layout.Range(slot, slot), slot, ToDouble(y[slot]));
            },
            [&] { return output.Full(); });
    } else {
        const std::int32_t budget = WalkBudget(args, step, output, MaxPointsPerBucket(reduction));
        const bool batching = BatchesSmallBuckets(reduction, scans);
        auto emit = [&](const auto& range, const Picks& picks) { emitter.Emit(output, range, picks); };
        SmallBucketBatch batch(reduction, scans, y, layout, args.ZeroLineY, emit);
        WalkEvenBuckets<kData>(x, args, layout, step, budget, [&](std::int32_t start, std::int32_t end) {
            if (!(batching && batch.Take(start, end))) reduceBucket(start, end);
        });
        batch.Flush();
    }
    emitter.Finish(output);
}

QM_Y_TYPES(QM_BUCKET_WALKS_, template)

}  // namespace qm
