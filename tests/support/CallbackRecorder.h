#pragma once
// Registers failure callbacks that record every report, so tests can check
// which callback fired, with which message and parameter name.

#include <optional>
#include <string>
#include <vector>

namespace qmtest {

struct Report {
    enum class Kind { Exception, Argument, ArgumentNull, ArgumentOutOfRange } kind;
    int exceptionCode;                  // for Kind::Exception: the table row
    std::optional<std::string> message;  // nullopt when the library passed null
    std::optional<std::string> paramName;
};

// Registers the recording callbacks (once per process is enough, calling
// again is harmless) and forgets earlier reports.
void StartRecording();
const std::vector<Report>& Reports();

}  // namespace qmtest
