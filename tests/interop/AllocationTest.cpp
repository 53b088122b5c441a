// The heap, which the managed side cannot watch. Every allocation a
// constructor export makes fails in turn, and each must come back as one
// ApplicationException with the empty result (not as an exception in the
// caller, a half-built object or a leak, which the sanitizer build sees). A
// steady run that reuses its index vector allocates nothing, in any cell of
// the tables. Both rest on the replaced operator new of
// support/FailingAllocator.cpp, so none of this is in the portable subset.

#include <cmath>

#include "InterfaceTestSupport.h"
#include "support/FailingAllocator.h"

using namespace qmtest;

namespace {

class AllocationTest : public InterfaceTest {};

template <class H>
void ExpectEachFailureReported(H* (*make)(), void (*destroy)(H*)) {
    ResetAllocationCount();
    destroy(make());
    const long total = AllocationCount();
    ASSERT_GT(total, 0);
    for (int n = 0; n < total; ++n) {
        FailAllocation(n);
        H* made = make();
        StopFailing();
        EXPECT_EQ(made, nullptr) << "allocation " << n << " of " << total;
        ExpectReport(App(std::bad_alloc().what()));
    }
}

TEST_F(AllocationTest, EachFailedAllocationOfAConstructorIsReported) {
    ExpectEachFailureReported(CSharp_new_ExtremeResamplerDoubleDouble, CSharp_delete_ExtremeResamplerDoubleDouble);
    ExpectEachFailureReported(CSharp_new_ExtremeResamplerTimeSpanUInt16, CSharp_delete_ExtremeResamplerTimeSpanUInt16);
    ExpectEachFailureReported(CSharp_new_ResamplingArgs, CSharp_delete_ResamplingArgs);
    ExpectEachFailureReported(CSharp_new_IntVector__SWIG_0, CSharp_delete_IntVector);
    ExpectEachFailureReported(+[] { return CSharp_new_IntVector__SWIG_2(5); }, CSharp_delete_IntVector);
    ExpectEachFailureReported(+[] { return CSharp_IntVector_Repeat(1, 5); }, CSharp_delete_IntVector);
    ExpectEachFailureReported(CSharp_new_ArrayOperationsSingle, CSharp_delete_ArrayOperationsSingle);
    ExpectEachFailureReported(CSharp_new_MinMaxPointSearchResultUInt64, CSharp_delete_MinMaxPointSearchResultUInt64);
}

TEST_F(AllocationTest, SteadyRunsThatReuseTheirVectorAllocateNothing) {
    constexpr std::int32_t kSize = 200;
    std::vector<double> x(kSize), y(kSize), outX(1000), outY(1000);
    QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
    for (std::int32_t cell = 0; cell < 2 * 4 * 6 * 2; ++cell) {
        const std::int32_t base = cell % 2 * 150, data = cell / 2 % 4, mode = cell / 8 % 6, nan = cell / 48;
        for (std::int32_t i = 0; i < kSize; ++i) {  // X rising unevenly, Y with NaN gaps, laid into the ring
            x[static_cast<std::size_t>((i + base) % kSize)] = 10 + 1.5 * i + std::sin(i);
            y[static_cast<std::size_t>((i + base) % kSize)] = i % 17 == 0 ? NAN : 2 * std::sin(i / 9.0);
        }
        const ArgsPtr args = MakeArgs({.data = data, .start = 3, .end = 180, .width = 20, .minX = 14.5, .maxX = 290, .size = kSize,
                                       .base = base, .hasNaN = nan});
        VectorPtr indices(CSharp_new_IntVector__SWIG_0());
        for (int run = 0; run < 2; ++run) {
            CSharp_IntVector_Clear(indices.get());
            ResetAllocationCount();
            ASSERT_LE(CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, indices.get(), x.data(), y.data(), mode, args.get()), 1000);
            CSharp_ExtremeResamplerDoubleDouble_Execute(engine, x.data(), y.data(), outX.data(), outY.data(), indices.get(), mode, args.get());
        }
        EXPECT_EQ(AllocationCount(), 0) << "base " << base << " data " << data << " mode " << mode << " NaN " << nan;
    }
    CSharp_delete_ExtremeResamplerDoubleDouble(engine);
}

}  // namespace
