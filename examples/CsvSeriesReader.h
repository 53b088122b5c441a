#pragma once
// Reads a user's series from a CSV file: two columns X,Y, an optional
// header line, X either numeric or ISO-8601 timestamps.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "quillmap/QuillmapTypes.h"

namespace demo {

struct CsvSeries {
    bool timestampX = false;         // X came as timestamps: use the DateTime engines
    std::vector<double> x;           // X as the library converts it (ticks for timestamps)
    std::vector<QmDateTime> dates;   // the DateTime words handed to the library, if timestampX
    std::vector<double> y;
    std::string xName = "X", yName = "Y";  // from the header line, if any
    std::size_t skippedRows = 0;     // rows without a usable X or a finite Y
    bool reordered = false;          // X was not ascending and the rows were sorted by X
};

std::optional<CsvSeries> ReadCsvSeries(const std::string& path, std::string& error);

}  // namespace demo
