#pragma once
// The console lines of the demo: one per run, in aligned columns.

#include <string>

#include "ResamplingRun.h"
#include "RunChecks.h"

namespace demo {

void PrintRunHeader();
void PrintRunLine(const std::string& layout, std::int32_t requestedMode, const RunResult& run, const RunCheck& check,
                  const std::string& note = {});

// 10000000 -> "10,000,000"
std::string Grouped(long long value);

}  // namespace demo
