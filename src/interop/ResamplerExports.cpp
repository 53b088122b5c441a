// The 600 resampler exports (five per type pair) and the three helpers.
// Each export is a one-line forwarder into one generic body.

#include <algorithm>
#include <cstdint>

#include "interop/ExportGuards.h"
#include "interop/Handles.h"
#include "interop/ArgumentChecks.h"
#include "interop/RunChecks.h"
#include "model/ElementTypes.h"
#include "resampling/CopyValuesByIndices.h"
#include "resampling/ExtremeResampler.h"
#include "resampling/ExtremeResamplingHelpers.h"

namespace qm::interop {
namespace {

template <class TX, class TY, class Handle>
ExtremeResampler<TX, TY>* Engine(Handle* self) {
    return reinterpret_cast<ExtremeResampler<TX, TY>*>(self);
}

std::int32_t SpareRoom(const IntVector& indices) { return indices.capacity() - indices.size(); }

template <class TX, class TY, class Handle>
Handle* NewEngine() {
    return GeneralGuard([] { return reinterpret_cast<Handle*>(new ExtremeResampler<TX, TY>()); });
}

template <class TX, class TY, class Handle>
void DeleteEngine(Handle* self) {
    delete Engine<TX, TY>(self);
}

template <class TX, class TY, class Handle>
std::int32_t UpdateIndices(Handle* self, QmIntVector* indices, const TX* x, const TY* y, std::int32_t mode,
                           const QmResamplingArgs* args) {
    if (IsNullReference(indices, kVectorNull) || IsNullReference(args, kArgsNull)) return 0;
    if (IsRunRefused(RunCall::UpdateIndices, {self, x, y, nullptr, nullptr}, mode, *FromHandle(args),
                     kCanHoldNaN<TY>, FromHandle(indices)->size(), SpareRoom(*FromHandle(indices))))
        return 0;
    return GeneralGuard(
        [&] { return Engine<TX, TY>(self)->UpdateIndices(*FromHandle(indices), x, y, mode, *FromHandle(args)); });
}

template <class TX, class TY, class Handle>
void Execute(Handle* self, const TX* x, const TY* y, double* outX, double* outY, QmIntVector* indices,
             std::int32_t mode, const QmResamplingArgs* args) {
    if (IsNullReference(indices, kVectorNull) || IsNullReference(args, kArgsNull)) return;
    if (IsRunRefused(RunCall::Execute, {self, x, y, outX, outY}, mode, *FromHandle(args), kCanHoldNaN<TY>,
                     FromHandle(indices)->size(), SpareRoom(*FromHandle(indices))))
        return;
    GeneralGuard([&] {
        Engine<TX, TY>(self)->Execute(x, y, outX, outY, *FromHandle(indices), mode, *FromHandle(args));
    });
}

}  // namespace
}  // namespace qm::interop

using namespace qm;
using namespace qm::interop;

#define QM_DEFINE_RESAMPLER_EXPORTS_(XW, XT, YW, YT)                                                              \
    QM_API QmExtremeResampler##XW##YW* CSharp_new_ExtremeResampler##XW##YW(void) {                                \
        return NewEngine<XT, YT, QmExtremeResampler##XW##YW>();                                                   \
    }                                                                                                             \
    QM_API void CSharp_delete_ExtremeResampler##XW##YW(QmExtremeResampler##XW##YW* self) {                        \
        DeleteEngine<XT, YT>(self);                                                                               \
    }                                                                                                             \
    QM_API int32_t CSharp_ExtremeResampler##XW##YW##_UpdateIndices(QmExtremeResampler##XW##YW* self,              \
                                                                   QmIntVector* indices, const XT* x,             \
                                                                   const YT* y, int32_t mode,                     \
                                                                   const QmResamplingArgs* args) {                \
        return UpdateIndices<XT, YT>(self, indices, x, y, mode, args);                                            \
    }                                                                                                             \
    QM_API void CSharp_ExtremeResampler##XW##YW##_Execute(QmExtremeResampler##XW##YW* self, const XT* x,         \
                                                          const YT* y, double* outX, double* outY,                \
                                                          QmIntVector* indices, int32_t mode,                     \
                                                          const QmResamplingArgs* args) {                         \
        Execute<XT, YT>(self, x, y, outX, outY, indices, mode, args);                                             \
    }                                                                                                             \
    QM_API void CSharp_ExtremeResampler##XW##YW##_CopyValuesByIndices(                                            \
        const XT* x, const YT* y, const YT* y1, const int32_t* indices, double* outX, double* outY,              \
        double* outY1, int32_t count, int32_t size, int32_t baseIndex, int32_t useIndexAsX) {                    \
        if (IsCopyRefused(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex, useIndexAsX != 0))       \
            return;                                                                                               \
        CopyValuesByIndicesOperation<XT, YT>::Run(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex,  \
                                                  useIndexAsX != 0);                                              \
    }

extern "C" {

QM_FOR_EACH_PAIR(QM_DEFINE_RESAMPLER_EXPORTS_)

QM_API void CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(const QmIntVector* source, int32_t* destination) {
    if (IsNullReference(source, kVectorNull)) return;
    if (FromHandle(source)->size() > 0 && IsNullPointer(destination, "destination")) return;
    ExtremeResamplingHelpersWrapper::CopyVectorTo(*FromHandle(source), destination);
}

QM_API int32_t CSharp_ExtremeResamplingHelpersWrapper_MergeIndices(const QmIntVector* indices, int32_t firstCount,
                                                                   int32_t secondCount, int32_t* output) {
    if (IsNullReference(indices, kVectorNull)) return 0;
    // Both runs must lie inside the vector, and the union needs somewhere to go.
    const std::int64_t wanted = std::int64_t{std::max(firstCount, 0)} + std::max(secondCount, 0);
    if (Refuses(wanted > FromHandle(indices)->size(), "firstCount %d and secondCount %d pass the %d indices held",
                firstCount, secondCount, FromHandle(indices)->size()) ||
        (wanted > 0 && IsNullPointer(output, "output")))
        return 0;
    return ExtremeResamplingHelpersWrapper::MergeIndices(*FromHandle(indices), firstCount, secondCount, output);
}

QM_API int32_t CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(const QmResamplingArgs* args) {
    if (IsNullReference(args, kArgsNull)) return 0;
    return ExtremeResamplingHelpersWrapper::GetActualResampling(*FromHandle(args));
}

}  // extern "C"
