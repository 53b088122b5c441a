#pragma once
// Opaque handles of the C interface and the internal objects behind them.

#include "arrayops/ArrayOperationsHandle.h"
#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"
#include "quillmap/QuillmapCore.h"

namespace qm::interop {

inline IntVector* FromHandle(QmIntVector* handle) { return reinterpret_cast<IntVector*>(handle); }
inline const IntVector* FromHandle(const QmIntVector* handle) {
    return reinterpret_cast<const IntVector*>(handle);
}
inline QmIntVector* ToHandle(IntVector* vector) { return reinterpret_cast<QmIntVector*>(vector); }

inline ResamplingArgs* FromHandle(QmResamplingArgs* handle) { return reinterpret_cast<ResamplingArgs*>(handle); }
inline const ResamplingArgs* FromHandle(const QmResamplingArgs* handle) {
    return reinterpret_cast<const ResamplingArgs*>(handle);
}

}  // namespace qm::interop
