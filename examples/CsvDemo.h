#pragma once
// A user's own series from a CSV file, resampled as unevenly spaced X.

#include "DemoOptions.h"

namespace demo {

int RunCsvDemo(const DemoOptions& options);

}  // namespace demo
