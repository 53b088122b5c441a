#pragma once
// The library reports failures through callbacks instead of unwinding; the
// benchmarks register ones that note the message, so a failing case is
// skipped with that message rather than timed as if it had worked.

#include <optional>
#include <string>

namespace bench {

void RegisterFailureCallbacks();

// The first failure noted since the last call, if any; clears the note.
std::optional<std::string> TakeFailure();

}  // namespace bench
