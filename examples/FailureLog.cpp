#include "FailureLog.h"

#include <array>
#include <vector>

#include "quillmap/QuillmapCore.h"

namespace demo {

namespace {

// Names in the order of the kind codes of the two registration exports.
constexpr std::array<const char*, 11> kExceptionKinds = {
    "ApplicationException", "ArithmeticException",      "DivideByZeroException", "IndexOutOfRangeException",
    "InvalidCastException", "InvalidOperationException", "IOException",           "NullReferenceException",
    "OutOfMemoryException", "OverflowException",         "SystemException"};
constexpr std::array<const char*, 3> kArgumentKinds = {"ArgumentException", "ArgumentNullException",
                                                       "ArgumentOutOfRangeException"};

std::vector<Failure>& Log() {
    static std::vector<Failure> log;
    return log;
}

void Note(const char* kind, const char* message, const char* parameter) noexcept {
    try {
        Log().push_back({kind, message ? message : "(null)", parameter ? parameter : "(null)"});
    } catch (...) {
        // Out of memory while noting a failure: dropping the note is the only
        // option, since nothing may unwind into the library.
    }
}

template <std::size_t Code>
void OnException(const char* message) noexcept {
    Note(kExceptionKinds[Code], message, nullptr);
}

template <std::size_t Code>
void OnArgument(const char* message, const char* parameter) noexcept {
    Note(kArgumentKinds[Code], message, parameter);
}

// No export returns a string; the registration exists for the managed side.
char* OnString(const char*) noexcept { return nullptr; }

}  // namespace

void RegisterFailureCallbacks() {
    SWIGRegisterExceptionCallbacks_QuillmapCore(OnException<0>, OnException<1>, OnException<2>, OnException<3>,
                                                OnException<4>, OnException<5>, OnException<6>, OnException<7>,
                                                OnException<8>, OnException<9>, OnException<10>);
    SWIGRegisterExceptionArgumentCallbacks_QuillmapCore(OnArgument<0>, OnArgument<1>, OnArgument<2>);
    SWIGRegisterStringCallback_QuillmapCore(OnString);
}

std::size_t FailureCount() { return Log().size(); }

std::optional<Failure> FailureSince(std::size_t mark) {
    if (mark >= Log().size()) return std::nullopt;
    return Log()[mark];
}

}  // namespace demo
