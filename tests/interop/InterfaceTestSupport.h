#pragma once
// Shared by the interface tests, which see the library as the managed side
// does, through its C header: callbacks that record each report as the
// managed side would raise it, owners of handles, a run's arguments, and a
// whole run of one type pair through its exports.

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "quillmap/QuillmapCore.h"

namespace qmtest {

using Ints = std::vector<std::int32_t>;
enum Mode : std::int32_t { None, MinMax, Min, Max, Mid, MinOrMax };
enum Data : std::int32_t { Linear, Category, UnevenlySpaced, NotResampled };

struct Report {
    enum Kind { Exception, Argument, ArgumentNull, ArgumentOutOfRange } kind;
    int code;                                       // the exception row; -1 for the argument rows
    std::optional<std::string> message, paramName;  // nullopt: the library passed null
    bool operator==(const Report&) const = default;
    friend void PrintTo(const Report& r, std::ostream* os) {
        *os << r.kind << "/" << r.code << " \"" << r.message.value_or("null") << "\" \"" << r.paramName.value_or("null") << "\"";
    }
};
inline Report App(const std::string& message) { return {Report::Exception, 0, message, std::nullopt}; }
inline Report NullRef(const std::string& message) { return {Report::Exception, 7, message, std::nullopt}; }
inline Report Null(const std::string& message) { return {Report::ArgumentNull, -1, message, std::nullopt}; }
inline Report OutOfRange(const std::string& name) { return {Report::ArgumentOutOfRange, -1, std::nullopt, name}; }

// Each thread its own, kept in a table: MinGW's threads crash at exit
// destroying a thread_local vector (and an inline one links twice there).
inline std::vector<Report>& Reports() {
    static std::mutex lock;
    static std::map<std::thread::id, std::vector<Report>> byThread;
    const std::lock_guard<std::mutex> hold(lock);
    return byThread[std::this_thread::get_id()];
}
inline std::optional<std::string> Text(const char* s) { return s ? std::optional<std::string>(s) : std::nullopt; }
template <int kCode>
void OnException(const char* message) { Reports().push_back({Report::Exception, kCode, Text(message), std::nullopt}); }
template <Report::Kind kKind>
void OnArgument(const char* message, const char* name) { Reports().push_back({kKind, -1, Text(message), Text(name)}); }

// Registers recording callbacks, each row its own, and forgets earlier reports.
inline void StartRecording() {
    SWIGRegisterExceptionCallbacks_QuillmapCore(OnException<0>, OnException<1>, OnException<2>, OnException<3>, OnException<4>,
                                                OnException<5>, OnException<6>, OnException<7>, OnException<8>, OnException<9>,
                                                OnException<10>);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OnArgument<Report::Argument>, OnArgument<Report::ArgumentNull>,
                                                        OnArgument<Report::ArgumentOutOfRange>);
    Reports().clear();
}

// Exactly these reports came since the last check; they are then forgotten.
inline void ExpectReports(const std::vector<Report>& expected) { EXPECT_EQ(Reports(), expected); Reports().clear(); }
inline void ExpectReport(const Report& expected) { ExpectReports({expected}); }

// A report no check consumed is one nobody expected.
class InterfaceTest : public ::testing::Test {
protected:
    void SetUp() override { StartRecording(); }
    void TearDown() override { ExpectReports({}); }
};

template <auto kDelete>
struct Deleter { void operator()(auto* p) const { kDelete(p); } };
using VectorPtr = std::unique_ptr<QmIntVector, Deleter<CSharp_delete_IntVector>>;
using ArgsPtr = std::unique_ptr<QmResamplingArgs, Deleter<CSharp_delete_ResamplingArgs>>;

inline VectorPtr MakeVector(const Ints& values) {
    VectorPtr v(CSharp_new_IntVector__SWIG_0());
    for (std::int32_t value : values) CSharp_IntVector_Add(v.get(), value);
    return v;
}
inline Ints Contents(QmIntVector* v) {
    Ints out(static_cast<std::size_t>(CSharp_IntVector_size(v)));
    CSharp_ExtremeResamplingHelpersWrapper_CopyVectorTo(v, out.data());
    return out;
}

// Logical point i goes to slot (i + base) % size; slots no point fills hold
// NaN (in floating types), so that reading one shows.
template <class T>
std::vector<T> ToRing(const std::vector<T>& logical, std::int32_t size, std::int32_t base) {
    std::vector<T> ring(static_cast<std::size_t>(size), std::numeric_limits<T>::quiet_NaN());
    for (std::size_t i = 0; i < logical.size(); ++i) ring[(i + base) % ring.size()] = logical[i];
    return ring;
}

// So that whole outputs compare at once, NaN equal to NaN.
inline std::vector<double> Comparable(std::vector<double> v) {
    for (double& d : v) d = d != d ? -1.5e-300 : d;
    return v;
}

// An element of any X or Y type from a small integer; a DateTime carries both
// kind bits, which no output may show.
template <class T>
T Element(int v) {
    if constexpr (std::is_same_v<T, QmDateTime>) return QmDateTime{static_cast<std::uint64_t>(v) | 0xC000000000000000u};
    else if constexpr (std::is_same_v<T, QmTimeSpan>) return QmTimeSpan{v};
    else return static_cast<T>(v);
}

struct Shape {
    std::int32_t data = 0, start = 0, end = 0, width = 0;
    double minX = 0, maxX = 0;
    std::int32_t size = 0, base = 0, hasNaN = 0, resampling = 0;
    std::uint32_t precision = 0;
    double zeroLine = 0;
};
inline ArgsPtr MakeArgs(const Shape& s) {
    ArgsPtr a(CSharp_new_ResamplingArgs());
    CSharp_ResamplingArgs_Data_set(a.get(), s.data), CSharp_ResamplingArgs_Resampling_set(a.get(), s.resampling);
    CSharp_ResamplingArgs_StartIndex_set(a.get(), s.start), CSharp_ResamplingArgs_EndIndex_set(a.get(), s.end);
    CSharp_ResamplingArgs_ViewportWidth_set(a.get(), s.width), CSharp_ResamplingArgs_ResamplingPrecision_set(a.get(), s.precision);
    CSharp_ResamplingArgs_MinXInclusive_set(a.get(), s.minX), CSharp_ResamplingArgs_MaxXInclusive_set(a.get(), s.maxX);
    CSharp_ResamplingArgs_InputSize_set(a.get(), s.size), CSharp_ResamplingArgs_InputBaseIndex_set(a.get(), s.base);
    CSharp_ResamplingArgs_HasNaN_set(a.get(), s.hasNaN), CSharp_ResamplingArgs_ZeroLineY_set(a.get(), s.zeroLine);
    return a;
}

struct Frame {
    std::int32_t count;
    Ints indices;
    std::vector<double> x, y;
};

// The exports of one type pair; Run makes a frame as the managed side does:
// UpdateIndices, outputs sized by its count, Execute with the same arguments.
template <class TX, class TY, auto New, auto Delete, auto Update, auto Execute, auto Copy>
struct PairExports {
    using X = TX;
    using Y = TY;
    using Engine = std::remove_pointer_t<decltype(New())>;
    static constexpr auto make = New;
    static constexpr auto destroy = Delete;
    static constexpr auto copy = Copy;

    static Frame Run(Engine* engine, const TX* x, const TY* y, std::int32_t mode, const QmResamplingArgs* args, QmIntVector* v) {
        Frame f{Update(engine, v, x, y, mode, args), {}, {}, {}};
        const auto room = static_cast<std::size_t>(std::max(f.count, 0));
        f.x.assign(room + 4, -7.25), f.y = f.x;
        Execute(engine, x, y, f.x.data(), f.y.data(), v, mode, args);
        EXPECT_EQ(std::vector<double>(f.x.begin() + room, f.x.end()), std::vector<double>(4, -7.25)) << "written past the room";
        EXPECT_EQ(std::vector<double>(f.y.begin() + room, f.y.end()), std::vector<double>(4, -7.25)) << "written past the room";
        f.x.resize(room), f.y.resize(room), f.indices = Contents(v);
        return f;
    }
};
#define QM_PAIR_EXPORTS(XW, XT, YW, YT)                                                                                   \
    PairExports<XT, YT, CSharp_new_ExtremeResampler##XW##YW, CSharp_delete_ExtremeResampler##XW##YW,                      \
                CSharp_ExtremeResampler##XW##YW##_UpdateIndices, CSharp_ExtremeResampler##XW##YW##_Execute,                 \
                CSharp_ExtremeResampler##XW##YW##_CopyValuesByIndices>

}  // namespace qmtest
