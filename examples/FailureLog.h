#pragma once
// The failure callbacks of the library, as a managed caller would register
// them: each one notes what it was told and returns normally (a callback
// must never unwind into native code); the caller looks at the notes once
// the call has come back.

#include <cstddef>
#include <optional>
#include <string>

namespace demo {

struct Failure {
    std::string kind;       // the managed exception the caller would raise
    std::string message;    // "(null)" when the library passed none
    std::string parameter;  // the parameter name, for argument failures
};

// Registers all callbacks; must come before any other library call.
void RegisterFailureCallbacks();

// Number of failures reported so far; take it before a call and pass it to
// FailureSince afterwards to learn whether that call failed.
std::size_t FailureCount();
std::optional<Failure> FailureSince(std::size_t mark);

}  // namespace demo
