// The run of an AbCase through the engine of whichever library this file is
// compiled against: as QmAbRunA against this tree, and as QmAbRunB against
// the variant's headers with its namespace renamed (-Dqm=qmv), so that both
// libraries link into one program.

#include <vector>

#include "AbCase.h"
#include "resampling/ExtremeResampler.h"

namespace {

template <class TY>
std::int64_t Run(const bench::AbCase& c) {
    static const qm::ExtremeResampler<double, TY> engine;
    static qm::IntVector indices;
    static std::vector<double> outX, outY;
    qm::ResamplingArgs args{};
    args.Data = c.data;
    args.EndIndex = c.points - 1;
    args.ViewportWidth = c.width;
    args.MinXInclusive = c.data == 2 ? c.x[0] : 0.0;
    args.MaxXInclusive = c.data == 2 ? c.x[c.points - 1] : c.points - 1.0;
    args.InputSize = c.points;
    args.InputBaseIndex = c.ring ? c.baseIndex : 0;
    args.HasNaN = c.hasNaN;
    indices.Clear();
    const TY* y = static_cast<const TY*>(c.y);
    const std::int32_t count = engine.UpdateIndices(indices, c.x, y, c.mode, args);
    outX.resize(static_cast<std::size_t>(count));
    outY.resize(static_cast<std::size_t>(count));
    engine.Execute(c.x, y, outX.data(), outY.data(), indices, c.mode, args);
    // Each index weighted by its place, so that order counts too. A sum of
    // independent products vectorises; a chain of multiplies (hash * 31 +
    // index) would add about a tenth to an in-cache run's time.
    std::uint64_t hash = static_cast<std::uint64_t>(count);
    for (std::int32_t i = 0; i < indices.size(); ++i)
        hash += static_cast<std::uint64_t>(static_cast<std::int64_t>(indices[i])) * static_cast<std::uint64_t>(i + 1);
    return static_cast<std::int64_t>(hash);
}

}  // namespace

extern "C" std::int64_t QM_AB_RUNNER(const bench::AbCase& c) {
    switch (c.type) {
        case bench::AbY::Single:
            return Run<float>(c);
        case bench::AbY::Int32:
            return Run<std::int32_t>(c);
        case bench::AbY::Int16:
            return Run<std::int16_t>(c);
        case bench::AbY::Byte:
            return Run<std::uint8_t>(c);
        default:
            return Run<double>(c);
    }
}
