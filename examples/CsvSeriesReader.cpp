#include "CsvSeriesReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <numeric>
#include <string_view>

#include "IsoTimestamp.h"

namespace demo {

namespace {

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t' || s.front() == '\r' || s.front() == '"'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r' || s.back() == '"'))
        s.remove_suffix(1);
    return s;
}

std::optional<double> ParseNumber(std::string_view s) {
    if (!s.empty() && s.front() == '+') s.remove_prefix(1);
    double value = 0.0;
    auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (ec != std::errc{} || end != s.data() + s.size() || s.empty()) return std::nullopt;
    return value;
}

// Splits at the first comma, semicolon or tab, so the usual spreadsheet
// exports all work; more columns than two are ignored.
bool SplitRow(std::string_view line, std::string_view& first, std::string_view& second) {
    const std::size_t cut = line.find_first_of(",;\t");
    if (cut == std::string_view::npos) return false;
    first = Trim(line.substr(0, cut));
    std::string_view rest = line.substr(cut + 1);
    second = Trim(rest.substr(0, rest.find_first_of(",;\t")));
    return true;
}

// The resampler needs X ascending; sort the rows by X if the file is not.
void SortByX(CsvSeries& series) {
    if (std::is_sorted(series.x.begin(), series.x.end())) return;
    std::vector<std::size_t> order(series.x.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return series.x[a] < series.x[b]; });
    auto permute = [&](auto& values) {
        auto copy = values;
        for (std::size_t k = 0; k < order.size(); ++k) values[k] = copy[order[k]];
    };
    permute(series.x);
    permute(series.y);
    if (series.timestampX) permute(series.dates);
    series.reordered = true;
}

}  // namespace

std::optional<CsvSeries> ReadCsvSeries(const std::string& path, std::string& error) {
    std::ifstream in(path);
    if (!in) {
        error = "cannot open '" + path + "'";
        return std::nullopt;
    }
    CsvSeries series;
    std::optional<bool> timestamps;  // decided by the first data row
    bool sawFirstLine = false;
    std::string line;
    while (std::getline(in, line)) {
        std::string_view first, second;
        if (Trim(line).empty()) continue;
        const bool split = SplitRow(line, first, second);
        const bool headerCandidate = !sawFirstLine;
        sawFirstLine = true;
        if (!split) {
            ++series.skippedRows;
            continue;
        }
        const std::optional<double> y = ParseNumber(second);
        std::optional<double> numericX;
        std::optional<ParsedTimestamp> stamp;
        if (timestamps != true) numericX = ParseNumber(first);
        if (timestamps != false && !numericX) stamp = ParseIsoTimestamp(first);
        if (!numericX && !stamp && headerCandidate) {
            series.xName = first.empty() ? "X" : std::string(first);
            series.yName = second.empty() ? "Y" : std::string(second);
            continue;
        }
        if ((!numericX && !stamp) || !y || !std::isfinite(*y) || (numericX && !std::isfinite(*numericX))) {
            ++series.skippedRows;
            continue;
        }
        if (!timestamps) timestamps = stamp.has_value();
        if (*timestamps) {
            series.dates.push_back(QmDateTime{DateTimeWord(*stamp)});
            series.x.push_back(static_cast<double>(stamp->ticks));
        } else {
            series.x.push_back(*numericX);
        }
        series.y.push_back(*y);
    }
    if (series.x.size() < 2) {
        error = "'" + path + "' holds fewer than two usable rows (X,Y)";
        return std::nullopt;
    }
    if (series.x.size() > 0x3FFFFFFF) {
        error = "'" + path + "' holds more rows than an index vector can carry";
        return std::nullopt;
    }
    series.timestampX = *timestamps;
    SortByX(series);
    return series;
}

}  // namespace demo
