#pragma once
// The library's second job, shown once: a MinMax scan with positions over a
// whole series through the ArrayOperations exports, and a failure reported
// through a callback instead of a crash.

#include <vector>

namespace demo {

void ShowScan(const std::vector<double>& y);
void ShowReportedFailure();

}  // namespace demo
