#pragma once
// Shared pieces of the interface tests: owners for the handles the tests
// make, and checks of the reports a call leaves with the recorder.

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "quillmap/QuillmapCore.h"
#include "support/CallbackRecorder.h"
#include "support/FailingAllocator.h"

namespace qmtest {

using Ints = std::vector<std::int32_t>;

struct VectorDeleter {
    void operator()(QmIntVector* v) const { CSharp_delete_IntVector(v); }
};
using VectorPtr = std::unique_ptr<QmIntVector, VectorDeleter>;
struct ArgsDeleter {
    void operator()(QmResamplingArgs* a) const { CSharp_delete_ResamplingArgs(a); }
};
using ArgsPtr = std::unique_ptr<QmResamplingArgs, ArgsDeleter>;

// An element of any X or Y type from a small integer.
template <class T>
T Element(int v) {
    if constexpr (std::is_same_v<T, QmDateTime>)
        return QmDateTime{static_cast<std::uint64_t>(v)};
    else if constexpr (std::is_same_v<T, QmTimeSpan>)
        return QmTimeSpan{v};
    else
        return static_cast<T>(v);
}

inline VectorPtr MakeVector(std::initializer_list<std::int32_t> values) {
    VectorPtr v(CSharp_new_IntVector__SWIG_0());
    for (std::int32_t value : values) CSharp_IntVector_Add(v.get(), value);
    return v;
}

inline Ints Contents(QmIntVector* v) {
    Ints out;
    for (std::int32_t i = 0; i < CSharp_IntVector_size(v); ++i) out.push_back(CSharp_IntVector_getitem(v, i));
    return out;
}

// Checks that exactly one report came in, then forgets it so that the next
// call starts clean.
inline void ExpectOneReport(Report::Kind kind, int code, const std::optional<std::string>& message,
                            const std::optional<std::string>& paramName) {
    const std::vector<Report> reports = Reports();
    StartRecording();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_TRUE(reports[0].kind == kind) << "kind " << static_cast<int>(reports[0].kind);
    EXPECT_EQ(reports[0].exceptionCode, code);
    EXPECT_EQ(reports[0].message, message);
    EXPECT_EQ(reports[0].paramName, paramName);
}
inline void ExpectArgumentNull(const char* message) {
    ExpectOneReport(Report::Kind::ArgumentNull, -1, message, std::nullopt);
}
inline void ExpectOutOfRange(const char* paramName) {
    ExpectOneReport(Report::Kind::ArgumentOutOfRange, -1, std::nullopt, paramName);
}
inline void ExpectInvalidRange() { ExpectOneReport(Report::Kind::Argument, -1, "invalid range", ""); }
inline void ExpectApplicationException(const std::string& message) {
    ExpectOneReport(Report::Kind::Exception, 0, message, std::nullopt);
}

// Fails each allocation a constructor export makes, one at a time: every
// partial construction must unwind into one ApplicationException report and
// a null result, never into an exception in the caller.
template <class H>
void ExpectEveryAllocationFailureReported(H* (*make)(), void (*destroy)(H*)) {
    ResetAllocationCount();
    destroy(make());
    const long total = AllocationCount();
    ASSERT_GT(total, 0);
    for (int n = 0; n < total; ++n) {
        FailAllocation(n);
        H* made = make();
        StopFailing();
        EXPECT_EQ(made, nullptr) << "allocation " << n << " of " << total;
        ExpectApplicationException(std::bad_alloc().what());
    }
}

// Every report a test provokes must be consumed by one of the checks above;
// anything left over at the end is a report nobody expected.
class InterfaceTest : public ::testing::Test {
protected:
    void SetUp() override { StartRecording(); }
    void TearDown() override {
        StopFailing();
        EXPECT_TRUE(Reports().empty()) << Reports().size() << " unexpected report(s)";
    }
};

}  // namespace qmtest
