// The frame every export shares: reference checks before anything else, in
// parameter order, and failures turned into one report plus the empty
// result, never into an exception in the managed caller.


#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class ExportedCallFrameTest : public InterfaceTest {
protected:
    // Precision 0xFFFFFFFF makes the step underflow to 0, so the Min column
    // asks for a reservation of INT32_MIN points, which the vector refuses
    // from inside the guarded region.
    static std::int32_t UpdateMinWithVanishingStep(QmIntVector* indices) {
        ArgsPtr args(CSharp_new_ResamplingArgs());
        CSharp_ResamplingArgs_EndIndex_set(args.get(), 1);
        CSharp_ResamplingArgs_ViewportWidth_set(args.get(), 10);
        CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), 1.0);
        CSharp_ResamplingArgs_ResamplingPrecision_set(args.get(), 0xFFFFFFFFu);
        const double xy[2] = {0.0, 1.0};
        QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
        const std::int32_t count =
            CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, indices, xy, xy, 2, args.get());
        CSharp_delete_ExtremeResamplerDoubleDouble(engine);
        return count;
    }
};

std::vector<std::string> otherLog;
void OtherApplication(const char* message) { otherLog.push_back(std::string("application:") + message); }
void OtherException(const char*) { otherLog.push_back("wrong exception row"); }
void OtherArgument(const char*, const char*) { otherLog.push_back("wrong argument row"); }
void OtherArgumentNull(const char* message, const char*) { otherLog.push_back(std::string("null:") + message); }
bool stringCallbackCalled = false;
char* StringCallback(const char*) { return stringCallbackCalled = true, nullptr; }

TEST_F(ExportedCallFrameTest, ReferenceChecksRunInParameterOrderAndReportOnlyTheFirst) {
    QmExtremeResamplerDoubleDouble* engine = CSharp_new_ExtremeResamplerDoubleDouble();
    VectorPtr indices = MakeVector({7});
    const double xy[2] = {0.0, 1.0};
    double out[2] = {-1.0, -1.0};
    EXPECT_EQ(CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, nullptr, xy, xy, 1, nullptr), 0);
    ExpectArgumentNull("std::vector< int > & type is null");
    EXPECT_EQ(CSharp_ExtremeResamplerDoubleDouble_UpdateIndices(engine, indices.get(), xy, xy, 1, nullptr), 0);
    ExpectArgumentNull("ResamplingArgs & type is null");
    // The checks come before the engine is touched, so even a null engine
    // gets no further than the report.
    CSharp_ExtremeResamplerDoubleDouble_Execute(nullptr, xy, xy, out, out, nullptr, 1, nullptr);
    ExpectArgumentNull("std::vector< int > & type is null");
    CSharp_ExtremeResamplerDoubleDouble_Execute(nullptr, xy, xy, out, out, indices.get(), 1, nullptr);
    ExpectArgumentNull("ResamplingArgs & type is null");
    EXPECT_EQ(Contents(indices.get()), Ints{7});
    EXPECT_EQ(out[0], -1.0);
    CSharp_delete_ExtremeResamplerDoubleDouble(engine);
}

TEST_F(ExportedCallFrameTest, FailureInsideTheGuardIsReportedWithItsTextAndGivesZero) {
    VectorPtr indices = MakeVector({1, 2});
    EXPECT_EQ(UpdateMinWithVanishingStep(indices.get()), 0);
    ExpectApplicationException("vector<T> too long");
    EXPECT_EQ(Contents(indices.get()), (Ints{1, 2}));
    EXPECT_EQ(CSharp_IntVector_capacity(indices.get()), 2);
}

TEST_F(ExportedCallFrameTest, AllocationFailureInAConstructorReportsAndGivesNull) {
    ExpectEveryAllocationFailureReported(&CSharp_new_ExtremeResamplerDoubleDouble,
                                         &CSharp_delete_ExtremeResamplerDoubleDouble);
    ExpectEveryAllocationFailureReported(&CSharp_new_ExtremeResamplerTimeSpanUInt16,
                                         &CSharp_delete_ExtremeResamplerTimeSpanUInt16);
    ExpectEveryAllocationFailureReported(&CSharp_new_ResamplingArgs, &CSharp_delete_ResamplingArgs);
}

TEST_F(ExportedCallFrameTest, LaterRegistrationReplacesTheEarlierOne) {
    otherLog.clear();
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OtherArgument, OtherArgumentNull, OtherArgument);
    SWIGRegisterExceptionCallbacks_QuillmapCore(OtherApplication, OtherException, OtherException, OtherException,
                                                OtherException, OtherException, OtherException, OtherException,
                                                OtherException, OtherException, OtherException);
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr), 0);
    VectorPtr indices = MakeVector({});
    EXPECT_EQ(UpdateMinWithVanishingStep(indices.get()), 0);
    EXPECT_TRUE(Reports().empty());
    EXPECT_EQ(otherLog, (std::vector<std::string>{"null:ResamplingArgs & type is null",
                                                  "application:vector<T> too long"}));
    // Registering the recorder again takes every row back.
    StartRecording();
    EXPECT_EQ(CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(nullptr), 0);
    ExpectArgumentNull("ResamplingArgs & type is null");
    EXPECT_EQ(otherLog.size(), 2u);
}

TEST_F(ExportedCallFrameTest, StringCallbackRegistrationChangesNothing) {
    stringCallbackCalled = false;
    SWIGRegisterStringCallback_QuillmapCore(StringCallback);
    SWIGRegisterStringCallback_QuillmapCore(nullptr);
    CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(nullptr, nullptr);
    ExpectArgumentNull("std::vector< int > & type is null");
    EXPECT_FALSE(stringCallbackCalled);
}

}  // namespace
