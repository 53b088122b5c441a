#pragma once
// The cell level of a CSV file as spreadsheets write it: a UTF-8 byte-order
// mark on the first line, one separator per file (comma, semicolon or tab),
// quoted cells, and, in semicolon or tab files, decimal commas.

#include <optional>
#include <string_view>
#include <vector>

namespace demo {

// Drops a UTF-8 byte-order mark from the start of the first line; true if
// there was one.
bool StripByteOrderMark(std::string_view& line);

// The separator of a file, from its first line: a tab if it has one, else a
// semicolon if it has one, else a comma.
char DetectSeparator(std::string_view firstLine);

// The cells of a line, trimmed of blanks, carriage returns and quotes.
std::vector<std::string_view> SplitCells(std::string_view line, char separator);

struct CellNumber {
    double value = 0.0;           // NaN for a "NaN" cell
    bool decimalComma = false;    // read "2,5" as 2.5
};

// A number cell; with `decimalCommas` a single comma and no point, as in
// "2,5", is the decimal separator. Nothing for an empty or malformed cell.
std::optional<CellNumber> ParseCellNumber(std::string_view cell, bool decimalCommas);

}  // namespace demo
