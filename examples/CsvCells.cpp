#include "CsvCells.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace demo {

namespace {

bool IsPadding(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '"'; }

std::string_view Trim(std::string_view s) {
    while (!s.empty() && IsPadding(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsPadding(s.back())) s.remove_suffix(1);
    return s;
}

std::optional<double> ParseDouble(std::string_view s) {
    if (!s.empty() && s.front() == '+') s.remove_prefix(1);
    double value = 0.0;
    auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (s.empty() || ec != std::errc{} || end != s.data() + s.size()) return std::nullopt;
    return value;
}

}  // namespace

bool StripByteOrderMark(std::string_view& line) {
    if (!line.starts_with("\xEF\xBB\xBF")) return false;
    line.remove_prefix(3);
    return true;
}

char DetectSeparator(std::string_view firstLine) {
    if (firstLine.find('\t') != std::string_view::npos) return '\t';
    if (firstLine.find(';') != std::string_view::npos) return ';';
    return ',';
}

std::vector<std::string_view> SplitCells(std::string_view line, char separator) {
    std::vector<std::string_view> cells;
    for (;;) {
        const std::size_t cut = line.find(separator);
        cells.push_back(Trim(line.substr(0, cut)));
        if (cut == std::string_view::npos) return cells;
        line.remove_prefix(cut + 1);
    }
}

std::optional<CellNumber> ParseCellNumber(std::string_view cell, bool decimalCommas) {
    if (decimalCommas && std::count(cell.begin(), cell.end(), ',') == 1 && cell.find('.') == std::string_view::npos) {
        std::string dotted(cell);
        dotted[dotted.find(',')] = '.';
        if (auto value = ParseDouble(dotted)) return CellNumber{*value, true};
        return std::nullopt;
    }
    if (auto value = ParseDouble(cell)) return CellNumber{*value, false};
    return std::nullopt;
}

}  // namespace demo
