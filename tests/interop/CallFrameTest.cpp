// The frame every export shares, and the run record the managed side fills.
// It catches a failure that escapes as an exception or reaches the wrong
// callback row or text, a registration that does not replace the earlier
// one, a string callback that gets called, a call with no callbacks that
// faults instead of returning its empty result; a record not made zeroed,
// two accessors sharing a field, HasNaN taken from its low byte only, a
// setter that faults on a null record; an allocation of a constructor that
// fails and escapes, or leaves a half-built object or a leak (which the
// sanitizer build sees). (The order of the reference checks and the one
// report per failure are the bad-input tables' part.)

#include "InterfaceTestSupport.h"
#include "support/FailingAllocator.h"

using namespace qmtest;

namespace {

class CallFrameTest : public InterfaceTest {};

std::vector<std::string> otherLog;
void OtherApplication(const char* m) { otherLog.push_back(std::string("application:") + m); }
void OtherArgumentNull(const char* m, const char*) { otherLog.push_back(std::string("null:") + m); }
void OtherException(const char*) { otherLog.push_back("wrong exception row"); }
void OtherArgument(const char*, const char*) { otherLog.push_back("wrong argument row"); }
char* OtherString(const char*) { return otherLog.push_back("string callback"), nullptr; }

TEST_F(CallFrameTest, EachFailureReachesTheLastRegisteredCallbackOnce) {
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OtherArgument, OtherArgumentNull, OtherArgument);
    SWIGRegisterExceptionCallbacks_QuillmapCore(OtherApplication, OtherException, OtherException, OtherException, OtherException,
                                                OtherException, OtherException, OtherException, OtherException, OtherException,
                                                OtherException);
    SWIGRegisterStringCallback_QuillmapCore(OtherString);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr), 0);
    EXPECT_EQ(CSharp_IntVector_Repeat(1, INT32_MAX), nullptr);
    EXPECT_EQ(otherLog, (std::vector<std::string>{"null:ResamplingArgs & type is null", "application:vector<T> too long"}));

    // With no callbacks there is nobody to tell; the call still returns its empty result.
    SWIGRegisterExceptionCallbacks_QuillmapCore(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                nullptr, nullptr);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(nullptr, nullptr, nullptr);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr), 0);
    EXPECT_EQ(CSharp_IntVector_Repeat(1, INT32_MAX), nullptr);
    EXPECT_EQ(CSharp_IntVector_Repeat(1, -1), nullptr);
    StartRecording();
    EXPECT_EQ(otherLog.size(), 2u);
}

TEST_F(CallFrameTest, RunRecordKeepsEachFieldAsSet) {
    ArgsPtr args(CSharp_new_ResamplingArgs());
#define QM_EXPECT_ZERO_(Field, Type) EXPECT_EQ(CSharp_ResamplingArgs_##Field##_get(args.get()), Type{}) << #Field;
    QM_RESAMPLING_ARGS_FIELDS(QM_EXPECT_ZERO_)
    // Every field is set before any is read back, so that two accessors sharing one field would show.
    int k = 0;
#define QM_SET_(Field, Type) CSharp_ResamplingArgs_##Field##_set(args.get(), static_cast<Type>(-1000 * ++k - 1));
    QM_RESAMPLING_ARGS_FIELDS(QM_SET_)
#define QM_GET_(Field, Type) \
    ++k;                     \
    EXPECT_EQ(CSharp_ResamplingArgs_##Field##_get(args.get()), std::string(#Field) == "HasNaN" ? Type{1} : static_cast<Type>(-1000 * k - 1)) << #Field;
    k = 0;
    QM_RESAMPLING_ARGS_FIELDS(QM_GET_)
    for (std::int32_t value : {256, 0x10000, 0}) {  // 256 has a zero low byte
        CSharp_ResamplingArgs_HasNaN_set(args.get(), value);
        EXPECT_EQ(CSharp_ResamplingArgs_HasNaN_get(args.get()), value != 0 ? 1 : 0) << value;
    }
#define QM_SET_ON_NULL_(Field, Type) CSharp_ResamplingArgs_##Field##_set(nullptr, Type{1});
    QM_RESAMPLING_ARGS_FIELDS(QM_SET_ON_NULL_)
    CSharp_delete_ResamplingArgs(nullptr);
}

// Every allocation a constructor makes fails in turn, and each must come back
// as one ApplicationException with a null handle. (Not under Windows: a DLL
// keeps its own operator new, which the test program cannot replace.)
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

TEST_F(CallFrameTest, ConstructorsWithoutMemoryReportEachFailure) {
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
