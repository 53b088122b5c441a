#include "interop/RunChecks.h"

#include <cstdint>

#include "interop/ArgumentChecks.h"
#include "model/Int32Arithmetic.h"
#include "resampling/buckets/Grid.h"

namespace qm::interop {
namespace {

// A ring holds `size` slots and the oldest point sits at `baseIndex`; every
// slot the drivers compute is (logical + baseIndex) % size, which stays in
// [0, size) only for a positive size, a base inside the ring and a sum that
// does not wrap.
bool IsBadRing(std::int32_t size, std::int32_t baseIndex, const char* sizeName, const char* baseName) {
    return Refuses(size <= 0, "%s %d must be above 0 in a ring run (%s %d)", sizeName, size, baseName, baseIndex) ||
           Refuses(baseIndex < 0 || baseIndex >= size, "%s %d is outside the ring of %s %d", baseName, baseIndex,
                   sizeName, size);
}

// The logical indices a run turns into positions. Only a non-empty range is
// walked, except that a pass-through counts EndIndex - StartIndex + 1 with
// a wrapping sum, which in a ring would walk slots from a wrapped sum.
bool IsBadVisibleRange(const ResamplingArgs& args, bool ring, bool passThrough) {
    if (args.StartIndex > args.EndIndex) {
        const std::int32_t count = WrappingAdd(WrappingSub(args.EndIndex, args.StartIndex), 1);
        return ring && passThrough &&
               Refuses(count > 0, "EndIndex %d below StartIndex %d wraps to a count of %d", args.EndIndex,
                       args.StartIndex, count);
    }
    if (Refuses(args.StartIndex < 0, "StartIndex %d is below 0", args.StartIndex)) return true;
    const std::int64_t lastSum = std::int64_t{args.EndIndex} + 1 + args.InputBaseIndex;
    return ring && Refuses(lastSum > INT32_MAX, "EndIndex %d with InputBaseIndex %d passes the largest slot sum",
                           args.EndIndex, args.InputBaseIndex);
}

}  // namespace

bool IsRunRefused(RunCall call, const RunPointers& pointers, std::int32_t mode, const ResamplingArgs& args,
                  bool nanTables, std::int32_t indexCount, std::int32_t room) {
    if (IsNullPointer(pointers.self, "self")) return true;
    if (Refuses(mode < 0 || mode >= RESAMPLING_MODE_COUNT, "mode %d is not a ResamplingMode (0 to %d)", mode,
                RESAMPLING_MODE_COUNT - 1) ||
        Refuses(args.Data < 0 || args.Data >= RESAMPLING_DATA_COUNT, "Data %d is not a ResamplingData (0 to %d)",
                args.Data, RESAMPLING_DATA_COUNT - 1))
        return true;
    const bool ring = args.InputBaseIndex != NORMALIZED_BASE_INDEX;
    const bool passThrough = mode == None || args.Data == NotResampled;
    if (ring && IsBadRing(args.InputSize, args.InputBaseIndex, "InputSize", "InputBaseIndex")) return true;
    if (IsBadVisibleRange(args, ring, passThrough)) return true;

    // Which arrays the selected strategy touches. Pass-through runs read
    // and write in Execute, for a non-empty range. Bucket runs read there
    // too, and write only into the room UpdateIndices left and only on a
    // grid with cells, so an Execute after a count of 0 may pass empty
    // (null) outputs. A NaN-aware run walks Y (and X) in UpdateIndices and
    // gathers by the whole index vector in Execute.
    const bool nanAware = nanTables && args.HasNaN && !passThrough;
    const bool nonEmpty = args.StartIndex <= args.EndIndex;
    bool reads = nonEmpty;
    bool writes = false;
    if (call == RunCall::UpdateIndices) {
        reads = nanAware && nonEmpty;
    } else if (nanAware) {
        reads = writes = indexCount > 0;
    } else if (passThrough) {
        writes = nonEmpty;
    } else {
        writes = nonEmpty && room > 0 && GridBucketCount(args, GridStep(args)) > 0;
    }
    const bool readsX = args.Data != Category;
    return (reads && readsX && IsNullPointer(pointers.x, "x")) || (reads && IsNullPointer(pointers.y, "y")) ||
           (writes && (IsNullPointer(pointers.outX, "outX") || IsNullPointer(pointers.outY, "outY")));
}

bool IsCopyRefused(const void* x, const void* y, const void* y1, const void* indices, const void* outX,
                   const void* outY, const void* outY1, std::int32_t count, std::int32_t size,
                   std::int32_t baseIndex, bool useIndexAsX) {
    if (count <= 0) return false;
    if (IsNullPointer(indices, "indices") || (!useIndexAsX && IsNullPointer(x, "x")) || IsNullPointer(y, "y") ||
        IsNullPointer(y1, "y1") || IsNullPointer(outX, "outX") || IsNullPointer(outY, "outY") ||
        IsNullPointer(outY1, "outY1"))
        return true;
    return baseIndex != NORMALIZED_BASE_INDEX && IsBadRing(size, baseIndex, "size", "baseIndex");
}

}  // namespace qm::interop
