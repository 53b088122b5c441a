#pragma once
// The frame around an exported function: the null test of a reference
// argument and the two guarded regions. No failure the frame is meant to
// catch may unwind into the managed caller.

#include <exception>
#include <stdexcept>
#include <type_traits>
#include <typeinfo>

#include "interop/ExceptionCallbacks.h"

namespace qm::interop {

inline constexpr const char* kVectorNull = "std::vector< int > & type is null";
inline constexpr const char* kConstVectorNull = "std::vector< int > const & type is null";
inline constexpr const char* kArgsNull = "ResamplingArgs & type is null";

// True (after a report) when the reference argument is null.
inline bool IsNullReference(const void* reference, const char* message) {
    if (reference != nullptr) return false;
    ReportArgumentNull(message);
    return true;
}

// A plain std::exception carries no message of its own; the managed side
// expects the text "Unknown exception" for it.
inline const char* MessageOf(const std::exception& e) {
    return typeid(e) == typeid(std::exception) ? "Unknown exception" : e.what();
}

// Every empty result of the interface (null, 0, nothing) is a
// value-initialised R.

// General guard: any std::exception becomes an ApplicationException report
// and the call returns its empty result. Nothing else is caught.
template <class Body, class R = std::invoke_result_t<Body&>>
R GeneralGuard(Body&& body) {
    try {
        return body();
    } catch (const std::exception& e) {
        ReportApplicationException(MessageOf(e));
        return R();
    }
}

// IntVector guards: the range failures of the vector operations become the
// managed list's own argument reports; anything else the vector raises (its
// length failure, an exhausted heap) is reported like in the general guard,
// since an exception must never unwind into the managed caller.
template <class Body, class R = std::invoke_result_t<Body&>>
R RangeGuard(Body&& body) {
    try {
        return body();
    } catch (const std::out_of_range& e) {
        ReportArgumentOutOfRange(e.what());
        return R();
    } catch (const std::exception& e) {
        ReportApplicationException(MessageOf(e));
        return R();
    }
}

// IntVector guard for the operations that can also reject a range.
template <class Body, class R = std::invoke_result_t<Body&>>
R RangeOrArgumentGuard(Body&& body) {
    try {
        return body();
    } catch (const std::out_of_range& e) {
        ReportArgumentOutOfRange(e.what());
        return R();
    } catch (const std::invalid_argument& e) {
        ReportArgumentException(e.what());
        return R();
    } catch (const std::exception& e) {
        ReportApplicationException(MessageOf(e));
        return R();
    }
}

}  // namespace qm::interop
