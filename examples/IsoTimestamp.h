#pragma once
// ISO-8601 timestamps to .NET DateTime ticks (100 ns since 0001-01-01) and
// back, for CSV files whose X column holds dates.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace demo {

struct ParsedTimestamp {
    std::int64_t ticks = 0;  // UTC ticks when the text named a zone, else as written
    bool utc = false;        // 'Z' or an offset was given: DateTimeKind.Utc
};

// Accepts YYYY-MM-DD, optionally followed by 'T' or ' ' and hh:mm[:ss[.fffffff]],
// then optionally 'Z' or +hh:mm / -hh:mm. Digits past the seventh fractional
// one are dropped (a tick is the finest unit).
std::optional<ParsedTimestamp> ParseIsoTimestamp(std::string_view text);

// The 64-bit word of a .NET DateTime: ticks in the low 62 bits, the kind in
// the top two (1 = Utc, 0 = Unspecified).
std::uint64_t DateTimeWord(const ParsedTimestamp& timestamp);

// Ticks back to "YYYY-MM-DDThh:mm:ss" (fraction dropped), for axis labels.
std::string FormatTicks(std::int64_t ticks);

}  // namespace demo
