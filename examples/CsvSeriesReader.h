#pragma once
// Reads a user's series from a CSV file: two columns X,Y, an optional
// header line, X either numeric or ISO-8601 timestamps. An empty or NaN Y
// cell is a gap and stays in the series as NaN; a row that cannot be read is
// skipped and noted with its line number and the reason.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "quillmap/QuillmapTypes.h"

namespace demo {

struct SkippedRow {
    std::size_t line = 0;  // 1-based line of the file
    std::string why;
};

struct CsvSeries {
    bool timestampX = false;         // X came as timestamps: use the DateTime engines
    std::vector<double> x;           // X as the library converts it (ticks for timestamps)
    std::vector<QmDateTime> dates;   // the DateTime words handed to the library, if timestampX
    std::vector<double> y;           // NaN where the row's Y cell was empty or NaN
    std::string xName = "X", yName = "Y";  // from the header line, if any
    char separator = ',';
    bool byteOrderMark = false;      // the file began with a UTF-8 BOM, which was dropped
    std::size_t gapRows = 0;         // rows kept with a NaN Y
    std::vector<SkippedRow> skipped;
    std::vector<std::string> warnings;
    bool reordered = false;          // X was not ascending and the rows were sorted by X
};

std::optional<CsvSeries> ReadCsvSeries(const std::string& path, std::string& error);

}  // namespace demo
