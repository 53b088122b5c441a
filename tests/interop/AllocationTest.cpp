// The heap, which the managed side cannot watch. Every allocation a
// constructor export makes fails in turn, and each must come back as one
// ApplicationException with the empty result (not as an exception in the
// caller, a half-built object or a leak, which the sanitizer build sees).
// This rests on the replaced operator new of support/FailingAllocator.cpp,
// so it is not in the portable subset. That steady runs allocate nothing is
// checked in every cell of the tables by WalkGuardTest.

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

}  // namespace
