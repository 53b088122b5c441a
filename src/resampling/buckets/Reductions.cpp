#include "resampling/buckets/Reductions.h"

#include "resampling/buckets/ReduceWith.h"

namespace qm {

template <class TY, class Range>
Picks Reduce(Reduction reduction, const ArrayOperations<TY>& operations, const TY* y, const Range& range,
             double zeroLine) {
    std::int32_t stop;
    return ReduceWith(reduction, ThroughOperations<TY>(operations), y, range, zeroLine, stop);
}

template <class TY, class Range>
Picks ReduceRun(Reduction reduction, const TY* y, const Range& range, double zeroLine, std::int32_t& runEnd) {
    return ReduceWith(reduction, StoppingAtNaN<TY>{}, y, range, zeroLine, runEnd);
}

#define QM_INSTANTIATE_REDUCE_(ctx, W, T, N)                                                                \
    template Picks Reduce<T, PlainRange>(Reduction, const ArrayOperations<T>&, const T*, const PlainRange&, \
                                         double);                                                          \
    template Picks Reduce<T, RingRange>(Reduction, const ArrayOperations<T>&, const T*, const RingRange&, double);
QM_Y_TYPES(QM_INSTANTIATE_REDUCE_, _)
#define QM_INSTANTIATE_REDUCE_RUN_(T)                                                                \
    template Picks ReduceRun<T, PlainRange>(Reduction, const T*, const PlainRange&, double, std::int32_t&); \
    template Picks ReduceRun<T, RingRange>(Reduction, const T*, const RingRange&, double, std::int32_t&);
QM_INSTANTIATE_REDUCE_RUN_(double)
QM_INSTANTIATE_REDUCE_RUN_(float)

}  // namespace qm
