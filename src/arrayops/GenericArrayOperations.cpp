#include "arrayops/GenericArrayOperations.h"

#include "arrayops/ScanKernels.h"

namespace qm {

template <class T>
void GenericArrayOperations<T>::Min(const T* data, std::int32_t start, std::int32_t end, T& min,
                                    std::int32_t& minIndex) const {
    scan::MinScan<T> tracker{{min, minIndex}};
    scan::Run(tracker, data, start, end);
    min = tracker.side.value;
    minIndex = tracker.side.index;
}

template <class T>
void GenericArrayOperations<T>::Min(const T* data, std::int32_t start, std::int32_t end, T& min) const {
    scan::MinScan<T> tracker{{min, -1}};
    scan::Run(tracker, data, start, end);
    min = tracker.side.value;
}

template <class T>
void GenericArrayOperations<T>::Max(const T* data, std::int32_t start, std::int32_t end, T& max,
                                    std::int32_t& maxIndex) const {
    scan::MaxScan<T> tracker{{max, maxIndex}};
    scan::Run(tracker, data, start, end);
    max = tracker.side.value;
    maxIndex = tracker.side.index;
}

template <class T>
void GenericArrayOperations<T>::Max(const T* data, std::int32_t start, std::int32_t end, T& max) const {
    scan::MaxScan<T> tracker{{max, -1}};
    scan::Run(tracker, data, start, end);
    max = tracker.side.value;
}

template <class T>
void GenericArrayOperations<T>::MinMax(const T* data, std::int32_t start, std::int32_t end,
                                       MinMaxPointSearchResult<T>& result) const {
    scan::MinMaxScan<T> tracker{{result.Min, result.MinIndex}, {result.Max, result.MaxIndex}};
    scan::Run(tracker, data, start, end);
    result = {tracker.min.index, tracker.max.index, tracker.min.value, tracker.max.value};
}

template <class T>
void GenericArrayOperations<T>::MinMax(const T* data, std::int32_t start, std::int32_t end, T& min, T& max) const {
    scan::MinMaxScan<T> tracker{{min, -1}, {max, -1}};
    scan::Run(tracker, data, start, end);
    min = tracker.min.value;
    max = tracker.max.value;
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
