#include "CsvSeriesReader.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <numeric>
#include <string_view>
#include <utility>

#include "CsvCells.h"
#include "IsoTimestamp.h"

namespace demo {

namespace {

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

// "<before>'<cell>'<after>", built by appending (GCC 12 misreads
// `"text" + std::string` as an overlapping copy under -O3).
std::string Quoted(std::string_view before, std::string_view cell, std::string_view after) {
    std::string text(before);
    text += '\'';
    text += cell;
    text += '\'';
    text += after;
    return text;
}

// Reads the file row by row; the first row decides whether X holds numbers
// or timestamps, and a first row whose X is neither is the header.
class RowReader {
public:
    explicit RowReader(CsvSeries& series) : s_(series) {}

    void Read(std::string_view line, std::size_t lineNumber) {
        if (lineNumber == 1) s_.byteOrderMark = StripByteOrderMark(line);
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) return;
        if (!sawFirstRow_) s_.separator = DetectSeparator(line);
        const bool headerCandidate = !sawFirstRow_;
        sawFirstRow_ = true;
        const std::vector<std::string_view> cells = SplitCells(line, s_.separator);
        if (cells.size() < 2) return Skip(lineNumber, "one cell only; X and Y expected");
        const bool decimalCommas = s_.separator != ',';
        std::optional<CellNumber> numericX;
        std::optional<ParsedTimestamp> stamp;
        if (timestamps_ != true) numericX = ParseCellNumber(cells[0], decimalCommas);
        if (timestamps_ != false && !numericX) stamp = ParseIsoTimestamp(cells[0]);
        if (!numericX && !stamp && headerCandidate) {
            s_.xName = cells[0].empty() ? "X" : std::string(cells[0]);
            s_.yName = cells[1].empty() ? "Y" : std::string(cells[1]);
            headerCells_ = cells.size();
            return;
        }
        if (headerCells_ == 2 && cells.size() > 2) NoteExtraCells(lineNumber, line);
        if (!numericX && !stamp) return Skip(lineNumber, XProblem(cells[0]));
        if (numericX && !std::isfinite(numericX->value))
            return Skip(lineNumber, Quoted("X ", cells[0], " is not finite"));
        const std::optional<CellNumber> y = YCell(cells[1], decimalCommas);
        if (!y) return Skip(lineNumber, Quoted("Y ", cells[1], " is not a number (an empty or NaN cell is a gap)"));
        if (std::isinf(y->value)) return Skip(lineNumber, Quoted("Y ", cells[1], " is infinite"));
        if ((numericX && numericX->decimalComma) || y->decimalComma) NoteDecimalComma(lineNumber, line);
        Keep(numericX, stamp, y->value);
    }

private:
    void Skip(std::size_t lineNumber, std::string why) { s_.skipped.push_back({lineNumber, std::move(why)}); }

    std::string XProblem(std::string_view cell) const {
        if (cell.empty()) return "no X";
        if (timestamps_ == true) return Quoted("X ", cell, " is not an ISO-8601 timestamp like the rows before it");
        if (timestamps_ == false) return Quoted("X ", cell, " is not a number like the rows before it");
        return Quoted("X ", cell, " is neither a number nor an ISO-8601 timestamp");
    }

    // An empty cell is a gap, as is "NaN" (read as NaN by the number parser).
    static std::optional<CellNumber> YCell(std::string_view cell, bool decimalCommas) {
        if (cell.empty()) return CellNumber{std::numeric_limits<double>::quiet_NaN(), false};
        return ParseCellNumber(cell, decimalCommas);
    }

    void NoteDecimalComma(std::size_t lineNumber, std::string_view line) {
        if (warnedDecimalComma_) return;
        warnedDecimalComma_ = true;
        std::string warning = Quoted("line " + std::to_string(lineNumber) + " ", line, ": a ");
        warning += s_.separator == ';' ? "';'" : "tab";
        warning += "-separated file with decimal commas; ',' is read as the decimal point";
        s_.warnings.push_back(std::move(warning));
    }

    // "1,2,5" under the header "x,y": most likely a decimal comma that the
    // comma separator has cut; Y is read as 2, so say so.
    void NoteExtraCells(std::size_t lineNumber, std::string_view line) {
        if (warnedExtraCells_) return;
        warnedExtraCells_ = true;
        s_.warnings.push_back(Quoted("line " + std::to_string(lineNumber) + " ", line,
                                     ": more cells than the header has; cells after the second are ignored "
                                     "(decimal commas need ';' or tab as the separator)"));
    }

    void Keep(const std::optional<CellNumber>& numericX, const std::optional<ParsedTimestamp>& stamp, double y) {
        if (!timestamps_) timestamps_ = stamp.has_value();
        if (*timestamps_) {
            s_.dates.push_back(QmDateTime{DateTimeWord(*stamp)});
            s_.x.push_back(static_cast<double>(stamp->ticks));
        } else {
            s_.x.push_back(numericX->value);
        }
        s_.y.push_back(y);
        s_.gapRows += std::isnan(y) ? 1 : 0;
        s_.timestampX = *timestamps_;
    }

    CsvSeries& s_;
    std::optional<bool> timestamps_;  // decided by the first data row
    bool sawFirstRow_ = false;
    bool warnedDecimalComma_ = false;
    bool warnedExtraCells_ = false;
    std::size_t headerCells_ = 0;
};

}  // namespace

std::optional<CsvSeries> ReadCsvSeries(const std::string& path, std::string& error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot open '" + path + "'";
        return std::nullopt;
    }
    CsvSeries series;
    RowReader reader(series);
    std::string line;
    for (std::size_t lineNumber = 1; std::getline(in, line); ++lineNumber) reader.Read(line, lineNumber);
    if (series.x.size() < 2) {
        error = "'" + path + "' holds fewer than two usable rows (X,Y)";
        return std::nullopt;
    }
    if (series.x.size() > 0x3FFFFFFF) {
        error = "'" + path + "' holds more rows than an index vector can carry";
        return std::nullopt;
    }
    SortByX(series);
    return series;
}

}  // namespace demo
