// ResamplingArgs exports and the three constants. Setters ignore a null
// record quietly; a getter reports it and answers 0.

#include "interop/ArgumentChecks.h"
#include "interop/ExportGuards.h"
#include "interop/Handles.h"

namespace qm::interop {
namespace {

// How a field crosses the interface: unchanged, except HasNaN, which is an
// int32 outside and a bool inside.
template <class Boundary, class Field>
Field ToField(Boundary value) {
    if constexpr (std::is_same_v<Field, bool>)
        return value != 0;
    else
        return value;
}

template <class Boundary, class Field>
Boundary ToBoundary(Field value) {
    if constexpr (std::is_same_v<Field, bool>)
        return value ? 1 : 0;
    else
        return value;
}

}  // namespace
}  // namespace qm::interop

using namespace qm;
using namespace qm::interop;

extern "C" {

QM_API QmResamplingArgs* CSharp_new_ResamplingArgs(void) {
    return GeneralGuard([] { return reinterpret_cast<QmResamplingArgs*>(new ResamplingArgs{}); });
}

QM_API void CSharp_delete_ResamplingArgs(QmResamplingArgs* self) { delete FromHandle(self); }

#define QM_DEFINE_ARGS_ACCESSORS_(Field, Boundary)                                               \
    QM_API void CSharp_ResamplingArgs_##Field##_set(QmResamplingArgs* self, Boundary value) {    \
        if (self == nullptr) return;                                                             \
        using FieldType = decltype(ResamplingArgs::Field);                                       \
        FromHandle(self)->Field = ToField<Boundary, FieldType>(value);                           \
    }                                                                                            \
    QM_API Boundary CSharp_ResamplingArgs_##Field##_get(const QmResamplingArgs* self) {          \
        if (IsNullPointer(self, "self")) return Boundary();                                      \
        using FieldType = decltype(ResamplingArgs::Field);                                       \
        return ToBoundary<Boundary, FieldType>(FromHandle(self)->Field);                         \
    }
QM_RESAMPLING_ARGS_FIELDS(QM_DEFINE_ARGS_ACCESSORS_)

QM_API int32_t CSharp_NORMALIZED_BASE_INDEX_get(void) { return NORMALIZED_BASE_INDEX; }
QM_API int32_t CSharp_RESAMPLING_MODE_COUNT_get(void) { return RESAMPLING_MODE_COUNT; }
QM_API int32_t CSharp_RESAMPLING_DATA_COUNT_get(void) { return RESAMPLING_DATA_COUNT; }

}  // extern "C"
