#include "IsoTimestamp.h"

#include <cstdio>

namespace demo {

namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kTicksPerDay = 86'400 * kTicksPerSecond;
// Days from 0001-01-01 to 1970-01-01 in the proleptic Gregorian calendar.
constexpr std::int64_t kUnixEpochDays = 719'162;

// Days since 1970-01-01 of a civil date (H. Hinnant's days_from_civil).
std::int64_t DaysFromCivil(std::int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const auto yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

void CivilFromDays(std::int64_t z, std::int64_t& y, unsigned& m, unsigned& d) {
    z += 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const auto doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = doy - (153 * mp + 2) / 5 + 1;
    m = mp < 10 ? mp + 3 : mp - 9;
    y = static_cast<std::int64_t>(yoe) + era * 400 + (m <= 2);
}

bool DaysInMonthOk(std::int64_t y, unsigned m, unsigned d) {
    static constexpr unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    const unsigned limit = kDays[m - 1] + (m == 2 && leap ? 1u : 0u);
    return d >= 1 && d <= limit;
}

// Reads exactly `count` digits at `pos`.
bool Digits(std::string_view s, std::size_t& pos, std::size_t count, unsigned& value) {
    if (pos + count > s.size()) return false;
    value = 0;
    for (std::size_t k = 0; k < count; ++k) {
        const char c = s[pos + k];
        if (c < '0' || c > '9') return false;
        value = value * 10 + static_cast<unsigned>(c - '0');
    }
    pos += count;
    return true;
}

bool Expect(std::string_view s, std::size_t& pos, char c) {
    if (pos < s.size() && s[pos] == c) {
        ++pos;
        return true;
    }
    return false;
}

}  // namespace

std::optional<ParsedTimestamp> ParseIsoTimestamp(std::string_view s) {
    std::size_t pos = 0;
    unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (!Digits(s, pos, 4, year) || !Expect(s, pos, '-') || !Digits(s, pos, 2, month) || !Expect(s, pos, '-') ||
        !Digits(s, pos, 2, day))
        return std::nullopt;
    if (year < 1 || month < 1 || month > 12 || !DaysInMonthOk(year, month, day)) return std::nullopt;

    std::int64_t fractionTicks = 0;
    if (pos < s.size() && (s[pos] == 'T' || s[pos] == ' ')) {
        ++pos;
        if (!Digits(s, pos, 2, hour) || !Expect(s, pos, ':') || !Digits(s, pos, 2, minute)) return std::nullopt;
        if (Expect(s, pos, ':')) {
            if (!Digits(s, pos, 2, second)) return std::nullopt;
            if (Expect(s, pos, '.') || Expect(s, pos, ',')) {
                std::int64_t scale = kTicksPerSecond / 10;
                std::size_t digits = 0;
                while (pos < s.size() && s[pos] >= '0' && s[pos] <= '9') {
                    fractionTicks += scale * (s[pos] - '0');
                    scale /= 10;
                    ++pos;
                    ++digits;
                }
                if (digits == 0) return std::nullopt;
            }
        }
        if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    }

    ParsedTimestamp result;
    std::int64_t offsetSeconds = 0;
    if (Expect(s, pos, 'Z') || Expect(s, pos, 'z')) {
        result.utc = true;
    } else if (pos < s.size() && (s[pos] == '+' || s[pos] == '-')) {
        const int sign = s[pos] == '-' ? -1 : 1;
        ++pos;
        unsigned offsetHours = 0, offsetMinutes = 0;
        if (!Digits(s, pos, 2, offsetHours)) return std::nullopt;
        Expect(s, pos, ':');
        if (!Digits(s, pos, 2, offsetMinutes) || offsetHours > 14 || offsetMinutes > 59) return std::nullopt;
        offsetSeconds = sign * static_cast<std::int64_t>(offsetHours * 3600 + offsetMinutes * 60);
        result.utc = true;
    }
    if (pos != s.size()) return std::nullopt;

    const std::int64_t days = DaysFromCivil(year, month, day) + kUnixEpochDays;
    const std::int64_t seconds = static_cast<std::int64_t>(hour) * 3600 + minute * 60 + second - offsetSeconds;
    result.ticks = days * kTicksPerDay + seconds * kTicksPerSecond + fractionTicks;
    if (result.ticks < 0) return std::nullopt;  // an offset took 0001-01-01 below the first tick
    return result;
}

std::uint64_t DateTimeWord(const ParsedTimestamp& timestamp) {
    const std::uint64_t kind = timestamp.utc ? 1u : 0u;
    return (kind << 62) | static_cast<std::uint64_t>(timestamp.ticks);
}

std::string FormatTicks(std::int64_t ticks) {
    const std::int64_t days = ticks / kTicksPerDay;
    const std::int64_t secondsOfDay = (ticks % kTicksPerDay) / kTicksPerSecond;
    std::int64_t y = 0;
    unsigned m = 0, d = 0;
    CivilFromDays(days - kUnixEpochDays, y, m, d);
    char text[40];
    std::snprintf(text, sizeof text, "%04lld-%02u-%02uT%02lld:%02lld:%02lld", static_cast<long long>(y), m, d,
                  static_cast<long long>(secondsOfDay / 3600), static_cast<long long>(secondsOfDay / 60 % 60),
                  static_cast<long long>(secondsOfDay % 60));
    return text;
}

}  // namespace demo
