#include "ScanShowcase.h"

#include <chrono>
#include <cmath>
#include <cstdio>

#include "FailureLog.h"
#include "RunReport.h"
#include "quillmap/QuillmapCore.h"

namespace demo {

void ShowScan(const std::vector<double>& y) {
    QmArrayOperationsDouble* operations = CSharp_new_ArrayOperationsDouble();
    QmMinMaxPointSearchResultDouble* result = CSharp_new_MinMaxPointSearchResultDouble();
    // The library takes its seeds from the caller: seed with the first
    // number and its position, then scan the rest. A NaN seed would never
    // be beaten, while a NaN in the scan never wins.
    const auto end = static_cast<std::int32_t>(y.size());
    std::int32_t seed = 0;
    while (seed + 1 < end && std::isnan(y[seed])) ++seed;
    CSharp_MinMaxPointSearchResultDouble_Min_set(result, y[seed]);
    CSharp_MinMaxPointSearchResultDouble_Max_set(result, y[seed]);
    CSharp_MinMaxPointSearchResultDouble_MinIndex_set(result, seed);
    CSharp_MinMaxPointSearchResultDouble_MaxIndex_set(result, seed);
    const auto started = std::chrono::steady_clock::now();
    CSharp_ArrayOperationsDouble_MinMax__SWIG_1(operations, y.data(), seed + 1, end, result);
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
    std::printf("Scan: MinMax with positions over %s doubles: min %.4f at %d, max %.4f at %d (%.2f ms, %.1f GB/s)\n",
                Grouped(end).c_str(), CSharp_MinMaxPointSearchResultDouble_Min_get(result),
                CSharp_MinMaxPointSearchResultDouble_MinIndex_get(result),
                CSharp_MinMaxPointSearchResultDouble_Max_get(result),
                CSharp_MinMaxPointSearchResultDouble_MaxIndex_get(result), ms,
                static_cast<double>(y.size() * sizeof(double)) / (ms * 1e6));
    CSharp_delete_MinMaxPointSearchResultDouble(result);
    CSharp_delete_ArrayOperationsDouble(operations);
}

void ShowReportedFailure() {
    QmArrayOperationsDouble* operations = CSharp_new_ArrayOperationsDouble();
    const double values[] = {3.0, 1.0, 2.0};
    const std::size_t mark = FailureCount();
    // A managed caller that passes a null result record: the library reports
    // it through the ArgumentNull callback and returns without scanning.
    CSharp_ArrayOperationsDouble_MinMax__SWIG_1(operations, values, 0, 3, nullptr);
    if (auto failure = FailureSince(mark))
        std::printf("Failure report (intended: the demo passes a null result record on purpose; nothing is wrong):\n"
                    "  MinMax with a null result record -> %s: \"%s\"\n",
                    failure->kind.c_str(), failure->message.c_str());
    else
        std::printf("Failure report: MinMax with a null result record was NOT reported (it should have been)\n");
    CSharp_delete_ArrayOperationsDouble(operations);
}

}  // namespace demo
