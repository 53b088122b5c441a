#pragma once
// The abstract strategy of a run. Strategies are immutable after
// construction and hold no state of a run, so one object serves any number
// of runs, also at once.

#include <cstdint>

#include "arrayops/ArrayOperations.h"
#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"

namespace qm {

template <class TX, class TY>
class ResamplingMethod {
public:
    using XType = TX;
    using YType = TY;

    explicit ResamplingMethod(const ArrayOperations<TY>* arrayOperations) : _arrayOperations(arrayOperations) {}
    ResamplingMethod(const ResamplingMethod&) = delete;
    ResamplingMethod& operator=(const ResamplingMethod&) = delete;
    virtual ~ResamplingMethod() = default;

    // Returns how many output points the following Execute needs room for.
    virtual std::int32_t UpdateIndices(IntVector& indices, const TX* x, const TY* y,
                                       const ResamplingArgs& args) const = 0;
    virtual void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                         const ResamplingArgs& args) const = 0;

protected:
    const ArrayOperations<TY>& Operations() const { return *_arrayOperations; }

private:
    const ArrayOperations<TY>* _arrayOperations;  // the engine's; not owned
};

}  // namespace qm
