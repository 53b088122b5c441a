#include "arrayops/GenericArrayOperations.h"

#include "arrayops/ExactLookup.h"
#include "arrayops/simd/IsaChoice.h"

namespace qm {

namespace {

template <class T>
simd::ExtremeScans<T> ScansOf(std::int32_t start, std::int32_t end) {
    return simd::ExtremeScansFor<T>(static_cast<std::int64_t>(end) - start);
}

}  // namespace

// The forms without an index run the indexed loops with a position of their
// own, which they drop.

template <class T>
void GenericArrayOperations<T>::Min(const T* data, std::int32_t start, std::int32_t end, T& min,
                                    std::int32_t& minIndex) const {
    ScansOf<T>(start, end).min(data, start, end, min, minIndex);
}

template <class T>
void GenericArrayOperations<T>::Min(const T* data, std::int32_t start, std::int32_t end, T& min) const {
    std::int32_t unused = -1;
    ScansOf<T>(start, end).min(data, start, end, min, unused);
}

template <class T>
void GenericArrayOperations<T>::Max(const T* data, std::int32_t start, std::int32_t end, T& max,
                                    std::int32_t& maxIndex) const {
    ScansOf<T>(start, end).max(data, start, end, max, maxIndex);
}

template <class T>
void GenericArrayOperations<T>::Max(const T* data, std::int32_t start, std::int32_t end, T& max) const {
    std::int32_t unused = -1;
    ScansOf<T>(start, end).max(data, start, end, max, unused);
}

template <class T>
void GenericArrayOperations<T>::MinMax(const T* data, std::int32_t start, std::int32_t end,
                                       MinMaxPointSearchResult<T>& result) const {
    ScansOf<T>(start, end).minMax(data, start, end, result);
}

template <class T>
void GenericArrayOperations<T>::MinMax(const T* data, std::int32_t start, std::int32_t end, T& min, T& max) const {
    MinMaxPointSearchResult<T> result{-1, -1, min, max};
    ScansOf<T>(start, end).minMax(data, start, end, result);
    min = result.Min;
    max = result.Max;
}

template <class T>
std::int32_t GenericArrayOperations<T>::FindIndexExactInUnsortedData(const T* data, std::int32_t start,
                                                                     std::int32_t end, T value) const {
    return scan::FindExactUnsorted(data, start, end, value);
}

template <class T>
std::int32_t GenericArrayOperations<T>::FindIndexExactInSortedData(const T* data, std::int32_t start,
                                                                   std::int32_t end, T value) const {
    return scan::FindExactSorted(data, start, end, value);
}

#define QM_INSTANTIATE_ARRAY_OPERATIONS_(ctx, W, T, N) template class GenericArrayOperations<T>;
QM_Y_TYPES(QM_INSTANTIATE_ARRAY_OPERATIONS_, _)
#undef QM_INSTANTIATE_ARRAY_OPERATIONS_

}  // namespace qm
